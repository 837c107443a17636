#include "Views/Desktop.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/Workspace.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Library/GameLibrary.h"
#include "Views/BadgeImageProvider.h"
#include "Views/CoverImageProvider.h"
#include "Views/DesktopColorScheme.h"
#include "Views/GalleryImageProvider.h"
#include "Views/IconImageProvider.h"
#include "Views/PlaceholderImageProvider.h"

#include <QFileInfo>
#include <QPointer>

namespace ludarium {

namespace {

constexpr char engineProperty[] = "ludarium.desktop";

QCoro::Task<> tell(Dialogs &dialogs, QString title, QString text) {
    Alert alert;
    alert.title = title;
    alert.text = text;
    alert.buttons.append(QStringLiteral("OK"));
    alert.style = Alert::Style::Warning;
    co_await dialogs.ask(alert);
}

} // namespace

Desktop::Desktop(AppState &state, QmlDialogs &dialogs, AppLogger &logger, QObject *parent)
    : QObject(parent), m_state(state), m_dialogs(dialogs), m_coverStore(std::make_shared<CoverStore>()),
      m_browse(state, m_coverStore), m_sidebar(state), m_platforms(state), m_detail(state, m_coverStore), m_game(state),
      m_library(state), m_launch(state), m_running(state), m_log(state.host(), logger),
      m_logUpload(state.host(), logger), m_pages(state.host().workspace), m_appearance(state.host()), m_start(state),
      m_settings(state, m_appearance), m_emulators(state.host(), state.emulators()),
      m_dependencies(state.host(), state.prerequisites()), m_statistics(state), m_thumbnails(state) {
    m_coverStore->setCollection(state.collectionPath());
    connect(&state, &AppState::collectionPathChanged, this, &Desktop::showPicturesAnew);
    connect(&state.imageLoader(), &ImageLoader::cleared, this, &Desktop::showPicturesAnew);
    connect(&state.gameLibrary(), &GameLibrary::errorMessageChanged, this, &Desktop::libraryErrorChanged);
    connect(&m_log, &LogModel::copied, this, [this] { Q_EMIT toast(QStringLiteral("Log copied to the clipboard")); });
    connect(&m_settings, &SettingsCatalog::toast, this, &Desktop::toast);
    connect(&m_settings, &SettingsCatalog::thumbnailsWanted, &m_thumbnails, &ThumbnailCaching::start);
    connect(&m_settings, &SettingsCatalog::warned, this, &Desktop::warned);
    connect(&m_settings, &SettingsCatalog::reloadWanted, this, &Desktop::refreshLibrary);
    connect(&m_launch, &LaunchStatus::refused, this, &Desktop::warned);
    connect(&m_running, &RunningStatus::warned, this, &Desktop::warned);
    connect(&m_browse, &Browse::warned, this, &Desktop::warned);
    connect(&m_sidebar, &SidebarModel::warned, this, &Desktop::warned);
    connect(&m_appearance, &Appearance::warned, this, &Desktop::warned);
    connect(&m_start, &StartScreen::warned, this, &Desktop::warned);
    connect(&state, &AppState::collectionPathRefused, this, [this](const QString &reason) {
        Q_EMIT warned(tr("The next start will not know this folder: %1").arg(reason));
    });
    connect(&m_emulators, &EmulatorListModel::warned, this, &Desktop::warned);
    connect(&m_thumbnails, &ThumbnailCaching::warned, this, &Desktop::warned);
    connect(&state.gameLibrary(), &GameLibrary::userDataRefused, this, &Desktop::warned);
    libraryErrorChanged();
}

Desktop::~Desktop() {
    for (const auto &requests : m_pictureRequests)
        requests->finish();
}

void Desktop::installInto(QQmlEngine &engine) {
    QQmlEngine::setObjectOwnership(this, QQmlEngine::CppOwnership);
    engine.setProperty(engineProperty, QVariant::fromValue<QObject *>(this));
    engine.addImportPath(QStringLiteral("qrc:/qml"));
    using Place = CoverImageProvider::Place;
    auto *covers = new CoverImageProvider(m_state.imageLoader(), m_coverStore, Place::grid);
    auto *coverflow = new CoverImageProvider(m_state.imageLoader(), m_coverStore, Place::coverflow);
    auto *gallery = new GalleryImageProvider(m_state.imageLoader());
    engine.addImageProvider(QStringLiteral("cover"), covers);
    engine.addImageProvider(QStringLiteral("coverflow"), coverflow);
    engine.addImageProvider(QStringLiteral("gallery"), gallery);
    m_pictureRequests = {covers->requests(), coverflow->requests(), gallery->requests()};
    engine.addImageProvider(QStringLiteral("icon"), new IconImageProvider);
    engine.addImageProvider(QStringLiteral("badge"), new BadgeImageProvider);
    engine.addImageProvider(QStringLiteral("placeholder"), new PlaceholderImageProvider);
}

int Desktop::pendingPictures() const {
    int pending = m_detail.isLookingForPictures() ? 1 : 0;
    for (const auto &requests : m_pictureRequests)
        pending += requests->pending();
    return pending;
}

Desktop *Desktop::create(QQmlEngine *engine, QJSEngine *) {
    return qobject_cast<Desktop *>(engine->property(engineProperty).value<QObject *>());
}

void Desktop::showPicturesAnew() {
    m_coverStore->setCollection(m_state.collectionPath());
    m_browse.games()->renewCovers();
    m_detail.showPicturesAnew();
}

void Desktop::followDesktopColors() {
    m_colorScheme = std::make_unique<DesktopColorScheme>();
    connect(m_colorScheme.get(), &DesktopColorScheme::darkChanged, &m_appearance, &Appearance::setDark);
}

QString Desktop::version() const {
    return QStringLiteral(LUDARIUM_VERSION);
}

QString Desktop::fileManagerName() const {
    return m_state.host().paths.layout() == HostLayout::MacOS ? QStringLiteral("Finder")
                                                              : QStringLiteral("File Manager");
}

void Desktop::chooseCollection() {
    spawn(askForCollection(), "choosing a collection folder");
}

QCoro::Task<> Desktop::askForCollection() {
    if (m_dialogs.isChoosingFolder())
        co_return;
    const QPointer<Desktop> self(this);
    const std::optional<QString> folder = co_await m_dialogs.chooseFolder(QStringLiteral("Select"));
    if (self && folder)
        openCollection(*folder);
}

void Desktop::openCollection(const QString &folder) {
    m_state.setSelectedGameId({});
    m_state.clearFilters();
    m_state.setSearchText({});
    m_state.setCollectionPath(folder);
    Q_EMIT collectionOpened();
}

void Desktop::reopenCollection() {
    spawn(tryAgain(), "looking for the collection again");
}

QCoro::Task<> Desktop::tryAgain() {
    const QPointer<Desktop> self(this);
    GameLibrary &library = m_state.gameLibrary();
    co_await library.loadCollection(m_state.collectionPath());
    if (!self)
        co_return;
    if (library.unavailable().isEmpty())
        Q_EMIT collectionOpened();
    else
        Q_EMIT warned(library.unavailable());
}

void Desktop::openDropped(const QList<QUrl> &urls) {
    if (urls.size() == 1 && urls.first().isLocalFile())
        spawn(openIfFolder(urls.first().toLocalFile()), "opening a dropped folder");
    else
        Q_EMIT warned(tr("Drop one folder to open it as a collection"));
}

QCoro::Task<> Desktop::openIfFolder(QString path) {
    const QPointer<Desktop> self(this);
    auto look = [path] { return QFileInfo(path).isDir(); };
    const bool isFolder = co_await runOnPool(look);
    if (!self)
        co_return;
    if (isFolder)
        openCollection(path);
    else
        Q_EMIT warned(tr("Drop one folder to open it as a collection"));
}

void Desktop::copyText(const QString &text) {
    m_state.host().workspace.copyToClipboard(text);
    Q_EMIT toast(tr("Copied to the clipboard"));
}

void Desktop::reveal(const QString &path) {
    m_state.host().workspace.reveal(path);
}

void Desktop::refreshLibrary() {
    if (m_state.collectionPath().isEmpty())
        return;
    // A disk that was away has left misses behind, and pictures may have come since.
    m_state.imageLoader().clearCache();
    spawn(m_state.gameLibrary().loadCollection(m_state.collectionPath()), "loading the collection again");
}

void Desktop::libraryErrorChanged() {
    const QString error = m_state.gameLibrary().errorMessage();
    // That the collection of the last run is away is told in the window, with the way to look again.
    const bool isAway = m_state.isCollectionRestored() && !m_state.gameLibrary().unavailable().isEmpty();
    if (!error.isEmpty() && !isAway)
        spawn(tell(m_dialogs, QStringLiteral("The collection could not be loaded"), error),
              "telling why a collection did not load");
}

} // namespace ludarium
