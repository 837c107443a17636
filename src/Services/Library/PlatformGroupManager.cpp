#include "Services/Library/PlatformGroupManager.h"

#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Models/Platform.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

namespace ludarium {

namespace {

/// All groups, or none when the data is not a list of complete groups.
std::optional<QList<PlatformGroup>> decodeGroups(const QByteArray &data) {
    const QJsonDocument document = QJsonDocument::fromJson(data);
    if (!document.isArray())
        return std::nullopt;
    QList<PlatformGroup> groups;
    for (const QJsonValue &value : document.array()) {
        const QJsonObject object = value.toObject();
        const QUuid id(object[QLatin1StringView("id")].toString());
        const QJsonValue names = object[QLatin1StringView("platformNames")];
        const QJsonValue name = object[QLatin1StringView("name")];
        const QJsonValue expanded = object[QLatin1StringView("isExpanded")];
        if (id.isNull() || !names.isArray() || !name.isString() || !expanded.isBool())
            return std::nullopt;
        PlatformGroup group{id, name.toString(), {}, expanded.toBool()};
        for (const QJsonValue &platform : names.toArray()) {
            if (!platform.isString())
                return std::nullopt;
            group.platformNames.append(platform.toString());
        }
        groups.append(group);
    }
    return groups;
}

QByteArray encodeGroups(const QList<PlatformGroup> &groups) {
    QJsonArray array;
    for (const PlatformGroup &group : groups)
        array.append(QJsonObject{
            {QStringLiteral("id"), group.id.toString(QUuid::WithoutBraces).toUpper()},
            {QStringLiteral("name"), group.name},
            {QStringLiteral("platformNames"), QJsonArray::fromStringList(group.platformNames)},
            {QStringLiteral("isExpanded"), group.isExpanded},
        });
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

PlatformGroup *find(QList<PlatformGroup> &groups, const QUuid &id) {
    for (PlatformGroup &group : groups)
        if (group.id == id)
            return &group;
    return nullptr;
}

QList<PlatformGroup> withoutPlatform(QList<PlatformGroup> groups, const QString &platform) {
    for (PlatformGroup &group : groups)
        group.platformNames.removeAll(platform);
    return groups;
}

} // namespace

PlatformGroupManager::PlatformGroupManager(SettingsStore &settings, QObject *parent)
    : QObject(parent), m_settings(settings) {
    const auto groups = decodeGroups(settings.value(Settings::platformGroups));
    if (groups)
        m_groups = *groups;
    else
        settings.setAside(QString::fromUtf8(Settings::platformGroups.key));
}

// Each change is written first and taken over afterwards: a write that throws leaves memory and store alike.
void PlatformGroupManager::save(QList<PlatformGroup> groups) {
    m_settings.setValue(Settings::platformGroups, encodeGroups(groups));
    m_groups = std::move(groups);
    Q_EMIT groupsChanged();
}

QUuid PlatformGroupManager::createGroup(const QString &name) {
    PlatformGroup group;
    group.name = name;
    save(m_groups + QList<PlatformGroup>{group});
    return group.id;
}

void PlatformGroupManager::renameGroup(const QUuid &id, const QString &name) {
    QList<PlatformGroup> groups = m_groups;
    if (PlatformGroup *group = find(groups, id)) {
        group->name = name;
        save(std::move(groups));
    }
}

void PlatformGroupManager::deleteGroup(const QUuid &id) {
    QList<PlatformGroup> groups = m_groups;
    groups.removeIf([&](const PlatformGroup &group) { return group.id == id; });
    save(std::move(groups));
}

void PlatformGroupManager::setExpanded(const QUuid &id, bool expanded) {
    QList<PlatformGroup> groups = m_groups;
    if (PlatformGroup *group = find(groups, id)) {
        group->isExpanded = expanded;
        save(std::move(groups));
    }
}

void PlatformGroupManager::moveGroup(const QUuid &id, qsizetype place) {
    QList<PlatformGroup> groups = m_groups;
    if (const PlatformGroup *group = find(groups, id)) {
        groups.move(group - groups.constData(), std::clamp<qsizetype>(place, 0, groups.size() - 1));
        save(std::move(groups));
    }
}

void PlatformGroupManager::addPlatform(const QString &platform, const QUuid &id) {
    QList<PlatformGroup> groups = withoutPlatform(m_groups, platform);
    if (PlatformGroup *group = find(groups, id)) {
        group->platformNames.append(platform);
        save(std::move(groups));
    }
}

void PlatformGroupManager::removePlatformFromGroup(const QString &platform) {
    save(withoutPlatform(m_groups, platform));
}

QList<Platform> PlatformGroupManager::getUngroupedPlatforms(const QList<Platform> &platforms) const {
    QList<Platform> result;
    for (const Platform &platform : platforms) {
        const bool grouped = std::any_of(m_groups.cbegin(), m_groups.cend(), [&](const PlatformGroup &group) {
            return group.platformNames.contains(platform.name);
        });
        if (!grouped)
            result.append(platform);
    }
    return result;
}

} // namespace ludarium
