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
    connect(&settings, &SettingsStore::changed, this, &PlatformGroupManager::loadAgain);
}

/// Another process may have written the groups; of what this one wrote nothing is new.
void PlatformGroupManager::loadAgain(const QString &key) {
    if (key != QLatin1StringView(Settings::platformGroups.key))
        return;
    Groups groups = decodeGroups(m_settings.value(Settings::platformGroups)).value_or(Groups());
    if (groups == m_groups)
        return;
    m_groups = std::move(groups);
    Q_EMIT groupsChanged();
}

void PlatformGroupManager::change(const std::function<bool(Groups &)> &edit) {
    Groups groups;
    bool edited = false;
    m_settings.transaction([&] {
        const auto stored = decodeGroups(m_settings.value(Settings::platformGroups));
        if (!stored)
            m_settings.setAside(QString::fromUtf8(Settings::platformGroups.key));
        groups = stored.value_or(Groups());
        edited = edit(groups);
        if (edited)
            m_settings.setValue(Settings::platformGroups, encodeGroups(groups));
    });
    // The store has told of its new value by now, unless that is the old one.
    if (edited && groups != m_groups) {
        m_groups = std::move(groups);
        Q_EMIT groupsChanged();
    }
}

QUuid PlatformGroupManager::createGroup(const QString &name) {
    PlatformGroup group;
    group.name = name;
    change([&](Groups &groups) {
        groups.append(group);
        return true;
    });
    return group.id;
}

void PlatformGroupManager::renameGroup(const QUuid &id, const QString &name) {
    change([&](Groups &groups) {
        PlatformGroup *group = find(groups, id);
        if (group)
            group->name = name;
        return group != nullptr;
    });
}

void PlatformGroupManager::deleteGroup(const QUuid &id) {
    change([&](Groups &groups) {
        return groups.removeIf([&](const PlatformGroup &group) { return group.id == id; }) > 0;
    });
}

void PlatformGroupManager::setExpanded(const QUuid &id, bool expanded) {
    change([&](Groups &groups) {
        PlatformGroup *group = find(groups, id);
        if (group)
            group->isExpanded = expanded;
        return group != nullptr;
    });
}

void PlatformGroupManager::moveGroup(const QUuid &id, qsizetype place) {
    change([&](Groups &groups) {
        const PlatformGroup *group = find(groups, id);
        if (group)
            groups.move(group - groups.constData(), std::clamp<qsizetype>(place, 0, groups.size() - 1));
        return group != nullptr;
    });
}

void PlatformGroupManager::addPlatform(const QString &platform, const QUuid &id) {
    change([&](Groups &groups) {
        if (!find(groups, id))
            return false;
        groups = withoutPlatform(std::move(groups), platform);
        find(groups, id)->platformNames.append(platform);
        return true;
    });
}

void PlatformGroupManager::removePlatformFromGroup(const QString &platform) {
    change([&](Groups &groups) {
        groups = withoutPlatform(std::move(groups), platform);
        return true;
    });
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
