#include "Views/PlatformCommands.h"

#include "App/AppState.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Services/Library/GameLibrary.h"
#include "Services/Library/LibraryBrowser.h"
#include "Services/Library/PlatformGroupManager.h"
#include "Views/GroupChange.h"

#include <QPointer>
#include <QVariantMap>
#include <algorithm>

namespace ludarium {

namespace {

QCoro::Task<> tell(Dialogs &dialogs, QString title, QString text) {
    Alert alert{title, text, QStringList(QStringLiteral("OK")), Alert::Style::Warning};
    co_await dialogs.ask(alert);
}

} // namespace

PlatformCommands::PlatformCommands(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state.platformGroups(), &PlatformGroupManager::groupsChanged, this, &PlatformCommands::refresh);
    refresh();
}

/// A menu has an entry for each group: not all of them anew when one was only opened or got a platform.
void PlatformCommands::refresh() {
    QVariantList list;
    for (const PlatformGroup &group : m_state.platformGroups().groups())
        list.append(QVariantMap{{QStringLiteral("id"), group.id.toString(QUuid::WithoutBraces)},
                                {QStringLiteral("name"), group.name.simplified()}});
    if (std::exchange(m_groups, list) != list)
        Q_EMIT groupsChanged();
}

QString PlatformCommands::groupOf(const QString &platform) const {
    for (const PlatformGroup &group : m_state.platformGroups().groups())
        if (group.platformNames.contains(platform))
            return group.id.toString(QUuid::WithoutBraces);
    return {};
}

bool PlatformCommands::isTaken(const QString &name, const QString &exceptId) const {
    const QList<PlatformGroup> &groups = m_state.platformGroups().groups();
    return std::any_of(groups.cbegin(), groups.cend(), [&](const PlatformGroup &group) {
        return group.id != QUuid(exceptId) && group.name.compare(name.simplified(), Qt::CaseInsensitive) == 0;
    });
}

int PlatformCommands::place(const QString &id) const {
    const QList<PlatformGroup> &groups = m_state.platformGroups().groups();
    const auto found = std::find_if(groups.cbegin(), groups.cend(),
                                    [id = QUuid(id)](const PlatformGroup &group) { return group.id == id; });
    return found == groups.cend() ? -1 : int(found - groups.cbegin());
}

void PlatformCommands::change(const std::function<void()> &what) {
    changeGroups(m_state.host(), what);
}

void PlatformCommands::createGroup(const QString &name, const QString &platform) {
    if (name.simplified().isEmpty())
        return;
    change([&] {
        const QUuid id = m_state.platformGroups().createGroup(name.simplified());
        if (!platform.isEmpty())
            m_state.platformGroups().addPlatform(platform, id);
    });
}

void PlatformCommands::renameGroup(const QString &id, const QString &name) {
    if (!name.simplified().isEmpty())
        change([&] { m_state.platformGroups().renameGroup(QUuid(id), name.simplified()); });
}

bool PlatformCommands::canMoveGroup(const QString &id, int by) const {
    const int from = place(id);
    return from >= 0 && from + by >= 0 && from + by < m_state.platformGroups().groups().size();
}

void PlatformCommands::moveGroup(const QString &id, int by) {
    if (canMoveGroup(id, by))
        change([&] { m_state.platformGroups().moveGroup(QUuid(id), place(id) + by); });
}

void PlatformCommands::putInto(const QString &platform, const QString &group) {
    change([&] { m_state.platformGroups().addPlatform(platform, QUuid(group)); });
}

void PlatformCommands::takeOutOfGroup(const QString &platform) {
    change([&] { m_state.platformGroups().removePlatformFromGroup(platform); });
}

void PlatformCommands::deleteGroup(const QString &id) {
    spawn(askAndDeleteGroup(id), "deleting a platform group");
}

QCoro::Task<> PlatformCommands::askAndDeleteGroup(QString id) {
    const int row = place(id);
    if (row < 0 || std::exchange(m_asking, true))
        co_return;
    const QPointer<PlatformCommands> self(this);
    const PlatformGroup group = m_state.platformGroups().groups()[row];
    int answer = 0;
    if (!group.platformNames.isEmpty()) {
        Alert alert;
        alert.title = QStringLiteral("Delete Group");
        alert.text = QStringLiteral("Delete the group \"%1\"? Its platforms and their games stay in the library.")
                         .arg(group.name.simplified());
        alert.buttons = QStringList{QStringLiteral("Delete"), QStringLiteral("Cancel")};
        alert.destructive = 0;
        answer = co_await m_state.host().dialogs.ask(alert);
    }
    if (!self)
        co_return;
    m_asking = false;
    if (answer == 0)
        change([this, id = group.id] { m_state.platformGroups().deleteGroup(id); });
}

void PlatformCommands::deletePlatform(const QString &platform) {
    spawn(askAndDeletePlatform(platform), "deleting a platform");
}

QCoro::Task<> PlatformCommands::askAndDeletePlatform(QString platform) {
    GameLibrary &library = m_state.gameLibrary();
    if (platform.isEmpty() || library.isLoading() || std::exchange(m_asking, true))
        co_return;
    const QPointer<PlatformCommands> self(this);
    const int games = m_state.browser().counts().platforms.value(platform);
    const QString collection = library.collectionURL();
    Alert alert;
    alert.title = QStringLiteral("Delete Platform");
    alert.text =
        QStringLiteral("Delete \"%1\" and its %2 from the collection? The files of the games stay on the disk, "
                       "and the platform's file is kept beside its old place under another name.")
            .arg(platform.simplified(), games == 1 ? QStringLiteral("1 game") : QStringLiteral("%L1 games").arg(games));
    alert.buttons = QStringList{QStringLiteral("Delete"), QStringLiteral("Cancel")};
    alert.destructive = 0;
    alert.style = Alert::Style::Warning;
    const int answer = co_await m_state.host().dialogs.ask(alert);
    if (!self)
        co_return;
    m_asking = false;
    // What the question was about may be gone by the time it is answered.
    if (answer != 0 || m_state.gameLibrary().isLoading() || m_state.gameLibrary().collectionURL() != collection)
        co_return;
    QString reason;
    try {
        co_await m_state.gameLibrary().removePlatform(platform);
    } catch (const std::exception &error) {
        reason = QString::fromUtf8(error.what());
    }
    if (!self)
        co_return;
    if (!reason.isEmpty()) {
        Log::error(QStringLiteral("Failed to delete the platform %1: %2").arg(platform, reason));
        co_await tell(m_state.host().dialogs, QStringLiteral("The platform could not be deleted"), reason);
        co_return;
    }
    if (m_state.selectedPlatform() == platform)
        m_state.clearFilters();
}

} // namespace ludarium
