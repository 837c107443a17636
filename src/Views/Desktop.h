#pragma once

#include "Views/Appearance.h"
#include "Views/Browse.h"
#include "Views/CoverStore.h"
#include "Views/DependencyListModel.h"
#include "Views/EmulatorListModel.h"
#include "Views/GameCommands.h"
#include "Views/GameDetail.h"
#include "Views/HintEnder.h"
#include "Views/LaunchStatus.h"
#include "Views/LibraryStatus.h"
#include "Views/LogModel.h"
#include "Views/LogUpload.h"
#include "Views/PictureProvider.h"
#include "Views/PlatformCommands.h"
#include "Views/QmlDialogs.h"
#include "Views/RunningStatus.h"
#include "Views/SettingsCatalog.h"
#include "Views/SidebarModel.h"
#include "Views/StartScreen.h"
#include "Views/Statistics.h"
#include "Views/SupportPages.h"
#include "Views/ThumbnailCaching.h"

#include <QQmlEngine>
#include <QUrl>
#include <memory>
#include <vector>

namespace ludarium {

class DesktopColorScheme;

/// Everything that the window is fed from, under the name `App`: one view model for each part of it, and the commands
/// that belong to no part.
class Desktop : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(App)
    QML_SINGLETON
    Q_PROPERTY(ludarium::Browse *browse READ browse CONSTANT)
    Q_PROPERTY(ludarium::SidebarModel *sidebar READ sidebar CONSTANT)
    Q_PROPERTY(ludarium::PlatformCommands *platforms READ platforms CONSTANT)
    Q_PROPERTY(ludarium::GameDetail *detail READ detail CONSTANT)
    Q_PROPERTY(ludarium::LibraryStatus *library READ library CONSTANT)
    Q_PROPERTY(ludarium::GameCommands *game READ game CONSTANT)
    Q_PROPERTY(ludarium::LaunchStatus *launch READ launch CONSTANT)
    Q_PROPERTY(ludarium::RunningStatus *running READ running CONSTANT)
    Q_PROPERTY(ludarium::QmlDialogs *dialogs READ dialogs CONSTANT)
    Q_PROPERTY(ludarium::LogModel *log READ log CONSTANT)
    Q_PROPERTY(ludarium::LogUpload *logUpload READ logUpload CONSTANT)
    Q_PROPERTY(ludarium::SupportPages *pages READ pages CONSTANT)
    Q_PROPERTY(ludarium::Appearance *appearance READ appearance CONSTANT)
    Q_PROPERTY(ludarium::StartScreen *start READ start CONSTANT)
    Q_PROPERTY(ludarium::SettingsCatalog *settings READ settings CONSTANT)
    Q_PROPERTY(ludarium::EmulatorListModel *emulators READ emulators CONSTANT)
    Q_PROPERTY(ludarium::DependencyListModel *dependencies READ dependencies CONSTANT)
    Q_PROPERTY(ludarium::Statistics *statistics READ statistics CONSTANT)
    Q_PROPERTY(ludarium::ThumbnailCaching *thumbnails READ thumbnails CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString fileManagerName READ fileManagerName CONSTANT)
  public:
    Desktop(AppState &state, QmlDialogs &dialogs, AppLogger &logger, QObject *parent = nullptr);
    ~Desktop() override;

    /// Makes this object the `App` of an engine and adds the image providers. The engine must not outlive it.
    void installInto(QQmlEngine &engine);
    /// Takes dark or light from the desktop, now and when it changes there.
    void followDesktopColors();
    static Desktop *create(QQmlEngine *engine, QJSEngine *);

    Browse *browse() { return &m_browse; }
    SidebarModel *sidebar() { return &m_sidebar; }
    PlatformCommands *platforms() { return &m_platforms; }
    GameDetail *detail() { return &m_detail; }
    GameCommands *game() { return &m_game; }
    LibraryStatus *library() { return &m_library; }
    LaunchStatus *launch() { return &m_launch; }
    RunningStatus *running() { return &m_running; }
    QmlDialogs *dialogs() { return &m_dialogs; }
    LogModel *log() { return &m_log; }
    LogUpload *logUpload() { return &m_logUpload; }
    SupportPages *pages() { return &m_pages; }
    Appearance *appearance() { return &m_appearance; }
    StartScreen *start() { return &m_start; }
    SettingsCatalog *settings() { return &m_settings; }
    EmulatorListModel *emulators() { return &m_emulators; }
    DependencyListModel *dependencies() { return &m_dependencies; }
    Statistics *statistics() { return &m_statistics; }
    ThumbnailCaching *thumbnails() { return &m_thumbnails; }
    QString version() const;
    /// "Finder", or what takes its place.
    QString fileManagerName() const;
    /// Pictures that QML has asked for and not yet got.
    int pendingPictures() const;

    /// Asks for a folder and opens it.
    Q_INVOKABLE void chooseCollection();
    Q_INVOKABLE void openCollection(const QString &folder);
    Q_INVOKABLE void refreshLibrary();
    /// Looks for the open collection once more, which was not there; tells when it still is not.
    Q_INVOKABLE void reopenCollection();
    /// Opens what was dropped on the window when it is one folder; anything else is refused with a word.
    Q_INVOKABLE void openDropped(const QList<QUrl> &urls);
    Q_INVOKABLE void copyText(const QString &text);
    Q_INVOKABLE void reveal(const QString &path);

  Q_SIGNALS:
    /// A short note about finished work.
    void toast(const QString &text);
    /// A short note about something that did not happen.
    void warned(const QString &text);
    /// A folder was chosen; it loads now.
    void collectionOpened();

  private:
    QCoro::Task<> askForCollection();
    QCoro::Task<> tryAgain();
    QCoro::Task<> openIfFolder(QString path);
    void libraryErrorChanged();
    /// What is on screen is asked for again, as other pictures may have taken its place.
    void showPicturesAnew();

    AppState &m_state;
    QmlDialogs &m_dialogs;
    std::shared_ptr<CoverStore> m_coverStore;
    std::vector<std::shared_ptr<PictureProvider::Requests>> m_pictureRequests;
    Browse m_browse;
    SidebarModel m_sidebar;
    PlatformCommands m_platforms;
    GameDetail m_detail;
    GameCommands m_game;
    LibraryStatus m_library;
    LaunchStatus m_launch;
    RunningStatus m_running;
    LogModel m_log;
    LogUpload m_logUpload;
    SupportPages m_pages;
    Appearance m_appearance;
    StartScreen m_start;
    SettingsCatalog m_settings;
    EmulatorListModel m_emulators;
    DependencyListModel m_dependencies;
    Statistics m_statistics;
    ThumbnailCaching m_thumbnails;
    HintEnder m_hintEnder;
    std::unique_ptr<DesktopColorScheme> m_colorScheme;
};

} // namespace ludarium
