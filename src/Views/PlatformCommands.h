#pragma once

#include <QCoro/QCoroTask>
#include <QObject>
#include <QVariantList>
#include <functional>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// What the sidebar's menus do to platforms and to the groups that the user made of them. Groups go by their id.
class PlatformCommands : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QVariantList groups READ groups NOTIFY groupsChanged)
  public:
    explicit PlatformCommands(AppState &state, QObject *parent = nullptr);

    /// Maps with "id" and "name", in the user's order.
    QVariantList groups() const { return m_groups; }
    /// The id of the platform's group; empty when it has none.
    Q_INVOKABLE QString groupOf(const QString &platform) const;
    /// Whether another group has the name; letters count alike in both cases.
    Q_INVOKABLE bool isTaken(const QString &name, const QString &exceptId) const;
    /// A new group, with the platform in it unless that is empty.
    Q_INVOKABLE void createGroup(const QString &name, const QString &platform);
    Q_INVOKABLE void renameGroup(const QString &id, const QString &name);
    /// Asks first when the group holds platforms.
    Q_INVOKABLE void deleteGroup(const QString &id);
    /// Up or down the list of groups.
    Q_INVOKABLE void moveGroup(const QString &id, int by);
    Q_INVOKABLE bool canMoveGroup(const QString &id, int by) const;
    Q_INVOKABLE void putInto(const QString &platform, const QString &group);
    Q_INVOKABLE void takeOutOfGroup(const QString &platform);
    /// Asks first.
    Q_INVOKABLE void deletePlatform(const QString &platform);

  Q_SIGNALS:
    void groupsChanged();

  private:
    void refresh();
    int place(const QString &id) const;
    void change(const std::function<void()> &what);
    QCoro::Task<> askAndDeleteGroup(QString id);
    QCoro::Task<> askAndDeletePlatform(QString platform);

    AppState &m_state;
    QVariantList m_groups;
    bool m_asking = false;
};

} // namespace ludarium
