#include "Views/GameExtras.h"

#include "App/AppState.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Services/Launch/GameLauncher.h"
#include "Services/Runners/CollectionDocument.h"

#include <QFileInfo>
#include <QLocale>
#include <QPointer>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// Archives of music are played after they were unpacked, hints with a program of their own.
QString whyNotOpened(const ExtraItem &item) {
    if (item.type == ExtraType::hint)
        return u"Hint files cannot be opened by this version yet"_s;
    if (item.type == ExtraType::audio && extraTypeOf(item.name) == ExtraType::archive)
        return u"Soundtrack archives cannot be played by this version yet"_s;
    return {};
}

QString kindOf(ApplicationType type) {
    switch (type) {
    case ApplicationType::manual:
        return u"manual"_s;
    case ApplicationType::extras:
        return u"extras"_s;
    case ApplicationType::setup:
        return u"setup"_s;
    case ApplicationType::document:
        return u"document"_s;
    case ApplicationType::application:
        return u"application"_s;
    }
    Q_UNREACHABLE();
}

QVariantMap entry(const QString &name, const QString &kind, const QString &detail, const QString &reason) {
    return {{u"name"_s, name}, {u"kind"_s, kind}, {u"detail"_s, detail}, {u"reason"_s, reason}};
}

} // namespace

GameExtras::GameExtras(AppState &state, QObject *parent) : QObject(parent), m_state(state), m_manager(state.host()) {}

GameExtras::~GameExtras() {
    m_stop.request_stop();
}

void GameExtras::setGame(const GamePtr &game) {
    m_stop.request_stop();
    m_stop = {};
    const bool another = !game || !m_game || m_game->id != game->id;
    m_game = game;
    if (another)
        m_found.clear();
    m_loading = game != nullptr;
    refresh();
    if (game)
        spawn(lookUp(game, m_state.collectionPath(), m_stop.get_token()), "looking for the extras of a game");
}

QCoro::Task<> GameExtras::lookUp(GamePtr game, QString collection, std::stop_token stop) {
    const QPointer<GameExtras> self(this);
    ExtrasManager manager = m_manager;
    const ExtrasManager::Extras found = co_await manager.getExtras(game, collection, stop);
    if (!self || stop.stop_requested())
        co_return;
    m_found.clear();
    for (const QList<ExtraItem> &items : found)
        m_found.append(items);
    m_loading = false;
    refresh();
}

void GameExtras::setShownElsewhere(const QString &path) {
    if (std::exchange(m_shownElsewhere, path) != path)
        refresh();
}

void GameExtras::refresh() {
    m_files = m_found;
    m_files.removeIf([this](const ExtraItem &item) { return item.url == m_shownElsewhere; });
    Q_EMIT changed();
}

QVariantList GameExtras::applications() const {
    QVariantList list;
    if (m_game)
        for (const AdditionalApplication &application : m_game->additionalApplications)
            list.append(entry(application.name, kindOf(application.applicationType()), {},
                              m_state.gameLauncher().whyNotLaunched(application)));
    return list;
}

QVariantList GameExtras::files() const {
    QVariantList list;
    for (const ExtraItem &item : m_files)
        list.append(entry(item.name, extraTypeText(item.type),
                          QLocale().formattedDataSize(item.size, 1, QLocale::DataSizeTraditionalFormat),
                          whyNotOpened(item)));
    return list;
}

void GameExtras::openApplication(int index) {
    if (m_game && index >= 0 && index < m_game->additionalApplications.size())
        spawn(launch(m_game->additionalApplications[index], m_game), "starting an additional application");
}

void GameExtras::openFile(int index) {
    if (index >= 0 && index < m_files.size() && whyNotOpened(m_files[index]).isEmpty())
        openMedia(m_files[index].url);
}

void GameExtras::openMedia(const QString &path) {
    spawn(open(path, m_state.collectionPath()), "opening a file of a game");
}

QCoro::Task<> GameExtras::launch(AdditionalApplication application, GamePtr game) {
    const QPointer<GameExtras> self(this);
    QString failure;
    try {
        co_await m_state.gameLauncher().launchAdditionalApp(application, game);
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!self || failure.isEmpty())
        co_return;
    Log::error(u"Additional application not started: %1: %2"_s.arg(application.name, failure));
    const QString title = u"\"%1\" could not be started"_s.arg(application.name);
    co_await tell(title, failure);
}

QCoro::Task<> GameExtras::open(QString path, QString collection) {
    const QPointer<GameExtras> self(this);
    const QString reason = co_await CollectionDocument::open(&m_state.host(), path, collection);
    if (!self || reason.isEmpty())
        co_return;
    const QString title = u"\"%1\" was not opened"_s.arg(QFileInfo(path).fileName());
    const QString text = u"The file was not opened, as %1.\n\n%2"_s.arg(reason, path);
    co_await tell(title, text);
}

QCoro::Task<> GameExtras::tell(QString title, QString text) {
    Alert alert;
    alert.title = title;
    alert.text = text;
    alert.buttons.append(u"OK"_s);
    alert.style = Alert::Style::Warning;
    co_await m_state.host().dialogs.ask(alert);
}

} // namespace ludarium
