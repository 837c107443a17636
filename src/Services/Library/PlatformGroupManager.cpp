#include "Services/Library/PlatformGroupManager.h"

#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Models/Platform.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
        for (const QJsonValue &platform : names.toArray())
            group.platformNames.append(platform.toString());
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

} // namespace

PlatformGroupManager::PlatformGroupManager(SettingsStore &settings, QObject *parent)
    : QObject(parent), m_settings(settings) {
    m_groups = decodeGroups(settings.value(Settings::platformGroups)).value_or(QList<PlatformGroup>());
}

PlatformGroup *PlatformGroupManager::find(const QUuid &id) {
    for (PlatformGroup &group : m_groups)
        if (group.id == id)
            return &group;
    return nullptr;
}

void PlatformGroupManager::save() {
    m_settings.setValue(Settings::platformGroups, encodeGroups(m_groups));
    Q_EMIT groupsChanged();
}

QUuid PlatformGroupManager::createGroup(const QString &name) {
    PlatformGroup group;
    group.name = name;
    m_groups.append(group);
    save();
    return group.id;
}

void PlatformGroupManager::renameGroup(const QUuid &id, const QString &name) {
    if (PlatformGroup *group = find(id)) {
        group->name = name;
        save();
    }
}

void PlatformGroupManager::deleteGroup(const QUuid &id) {
    m_groups.removeIf([&](const PlatformGroup &group) { return group.id == id; });
    save();
}

void PlatformGroupManager::setExpanded(const QUuid &id, bool expanded) {
    if (PlatformGroup *group = find(id)) {
        group->isExpanded = expanded;
        save();
    }
}

void PlatformGroupManager::addPlatform(const QString &platform, const QUuid &id) {
    if (!find(id))
        return;
    for (PlatformGroup &group : m_groups)
        group.platformNames.removeAll(platform);
    find(id)->platformNames.append(platform);
    save();
}

void PlatformGroupManager::removePlatformFromGroup(const QString &platform) {
    for (PlatformGroup &group : m_groups)
        group.platformNames.removeAll(platform);
    save();
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
