#pragma once

#include <QList>
#include <QObject>
#include <QStringList>
#include <QUuid>
#include <functional>

namespace ludarium {

class SettingsStore;
struct Platform;

/// A folder of platforms that the user made in the sidebar.
struct PlatformGroup {
    QUuid id = QUuid::createUuid();
    QString name;
    QStringList platformNames;
    bool isExpanded = true;
    bool operator==(const PlatformGroup &) const = default;
};

/// The user's platform groups, kept as a JSON list in the settings whatever the collection is. A platform stands in
/// one group at most. Stored data that cannot be read counts as no groups and is set aside.
class PlatformGroupManager : public QObject {
    Q_OBJECT
  public:
    explicit PlatformGroupManager(SettingsStore &settings, QObject *parent = nullptr);

    const QList<PlatformGroup> &groups() const { return m_groups; }
    // A store that cannot keep a change throws SettingsError, and nothing changes.
    QUuid createGroup(const QString &name);
    void renameGroup(const QUuid &id, const QString &name);
    void deleteGroup(const QUuid &id);
    void setExpanded(const QUuid &id, bool expanded);
    /// Puts the group at `place` of the list; a place past the end is the last.
    void moveGroup(const QUuid &id, qsizetype place);
    /// Moves the platform out of any other group. An unknown group does nothing.
    void addPlatform(const QString &platform, const QUuid &id);
    void removePlatformFromGroup(const QString &platform);
    QList<Platform> getUngroupedPlatforms(const QList<Platform> &platforms) const;

  Q_SIGNALS:
    void groupsChanged();

  private:
    using Groups = QList<PlatformGroup>;
    /// Makes a change to the groups that the store holds; `edit` returns false when there is nothing to change.
    void change(const std::function<bool(Groups &)> &edit);
    void loadAgain(const QString &key);

    SettingsStore &m_settings;
    QList<PlatformGroup> m_groups;
};

} // namespace ludarium
