#include "Views/SettingsCatalog.h"

#include "App/AppState.h"
#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Host/Workspace.h"
#include "Models/ViewSettings.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Emulators/EmulatorManager.h"
#include "Services/Library/GameLibrary.h"
#include "Views/Appearance.h"

#include <QPointer>

namespace ludarium {

namespace {

const QString general = QStringLiteral("General");
const QString advanced = QStringLiteral("Advanced");

QString percent(double scale) {
    return QLocale().toString(qRound(scale * 100)) + QStringLiteral(" %");
}

// As they are stored.
const QString platformsByName = QStringLiteral("alphabetical");
const QString platformsByGameCount = QStringLiteral("byGameCount");

constexpr double textScales[] = {1, 1.25, 1.5, 1.75, 2};

} // namespace

void SettingsCatalog::addGeneral(Appearance &appearance) {
    SettingItem *folder = add({.key = QString::fromUtf8(Settings::collectionPath.key),
                               .tab = general,
                               .section = tr("Collection"),
                               .label = tr("Collection folder"),
                               .help = tr("The folder that holds Data, eXo and Images. Another one is loaded at once."),
                               .kind = Kind::folder,
                               .read = [this] { return m_state.collectionPath(); }});
    connect(&m_state, &AppState::collectionPathChanged, folder, &SettingItem::valueChanged);
    addFlag(Settings::skipInstallCheck,
            {.tab = general,
             .section = tr("Collection"),
             .label = tr("Skip installation check on load (faster)"),
             .help = tr("Significantly faster first-time load (~3-4x). Installation status will be checked on-demand "
                        "when launching games.")});
    addAction(QStringLiteral("clearCache"),
              {.tab = general,
               .section = tr("Collection"),
               .label = tr("Library cache"),
               .help = tr("Reads the whole collection again. Nothing of yours is lost."),
               .choices = {tr("Clear Cache & Refresh")}},
              [this] { clearCache(); });

    const QString look = tr("Look");
    SettingItem *theme =
        add({.key = QString::fromUtf8(Settings::appTheme.key),
             .tab = general,
             .section = look,
             .label = tr("Theme"),
             .help = tr("The colours of every window. System follows the desktop's dark or light mode."),
             .kind = Kind::choice,
             .choices = {QStringLiteral("System"), QStringLiteral("Retro Purple"), QStringLiteral("Ocean Blue"),
                         QStringLiteral("Forest Green"), QStringLiteral("Midnight Glass")},
             .defaultText = Settings::appTheme.defaultValue(),
             .read = [&appearance] { return appearance.theme(); },
             .write = [&appearance](const QVariant &value) { appearance.setTheme(value.toString()); }});
    QStringList scales;
    for (const double scale : textScales)
        scales.append(percent(scale));
    SettingItem *textSize = add({.key = QString::fromUtf8(Settings::textScale.key),
                                 .tab = general,
                                 .section = look,
                                 .label = tr("Text size"),
                                 .help = tr("The size of text and of the controls around it."),
                                 .kind = Kind::choice,
                                 .choices = scales,
                                 .defaultText = scales.first(),
                                 .read = [&appearance] { return percent(appearance.textScale()); },
                                 .write =
                                     [&appearance](const QVariant &value) {
                                         for (const double scale : textScales)
                                             if (percent(scale) == value.toString())
                                                 appearance.setTextScale(scale);
                                     }});
    SettingItem *motion =
        add({.key = QString::fromUtf8(Settings::reducedMotion.key),
             .tab = general,
             .section = look,
             .label = tr("Reduce motion"),
             .help = tr("Windows and covers change at once instead of moving or fading."),
             .kind = Kind::flag,
             .defaultText = tr("off"),
             .read = [&appearance] { return appearance.hasReducedMotion(); },
             .write = [&appearance](const QVariant &value) { appearance.setReducedMotion(value.toBool()); }});
    for (SettingItem *item : {theme, textSize, motion})
        connect(&appearance, &Appearance::changed, item, &SettingItem::valueChanged);
}

void SettingsCatalog::addViews() {
    const QString section = tr("Library");
    const auto save = [this] { m_state.saveViewSettings(); };
    SettingItem *mode =
        add({.key = QString::fromUtf8(Settings::viewMode.key),
             .tab = general,
             .section = section,
             .label = tr("View"),
             .help = tr("How the games are shown, now and at the next start."),
             .kind = Kind::choice,
             .choices = {viewModeText(ViewMode::list), viewModeText(ViewMode::grid), viewModeText(ViewMode::coverflow)},
             .defaultText = Settings::viewMode.defaultValue(),
             .read = [this] { return viewModeText(m_state.viewMode()); },
             .write =
                 [this, save](const QVariant &value) {
                     if (const auto wanted = viewModeFromText(value.toString())) {
                         m_state.setViewMode(*wanted);
                         save();
                     }
                 }});
    SettingItem *size = add({.key = QString::fromUtf8(Settings::gridSize.key),
                             .tab = general,
                             .section = section,
                             .label = tr("Size of covers"),
                             .help = tr("The width of a cover in the grid."),
                             .kind = Kind::choice,
                             .choices = {gridSizeText(GridSize::small), gridSizeText(GridSize::medium),
                                         gridSizeText(GridSize::large), gridSizeText(GridSize::extraLarge)},
                             .defaultText = Settings::gridSize.defaultValue(),
                             .read = [this] { return gridSizeText(m_state.gridSize()); },
                             .write =
                                 [this, save](const QVariant &value) {
                                     if (const auto wanted = gridSizeFromText(value.toString())) {
                                         m_state.setGridSize(*wanted);
                                         save();
                                     }
                                 }});
    QStringList orders;
    for (const SortOrder order : {SortOrder::title, SortOrder::year, SortOrder::developer, SortOrder::rating,
                                  SortOrder::recentlyPlayed, SortOrder::playCount})
        orders.append(sortOrderText(order));
    SettingItem *order = add({.key = QString::fromUtf8(Settings::sortOrder.key),
                              .tab = general,
                              .section = section,
                              .label = tr("Sort by"),
                              .help = tr("The order of the games."),
                              .kind = Kind::choice,
                              .choices = orders,
                              .defaultText = Settings::sortOrder.defaultValue(),
                              .read = [this] { return sortOrderText(m_state.sortOrder()); },
                              .write =
                                  [this, save](const QVariant &value) {
                                      if (const auto wanted = sortOrderFromText(value.toString())) {
                                          m_state.setSortOrder(*wanted);
                                          save();
                                      }
                                  }});
    SettingItem *group = add({.key = QString::fromUtf8(Settings::groupDuplicateGames.key),
                              .tab = general,
                              .section = section,
                              .label = tr("Group duplicates"),
                              .help = tr("Versions of one game on several platforms count as one entry."),
                              .kind = Kind::flag,
                              .defaultText = tr("on"),
                              .read = [this] { return m_state.groupDuplicateGames(); },
                              .write =
                                  [this, save](const QVariant &value) {
                                      m_state.setGroupDuplicateGames(value.toBool());
                                      save();
                                  }});
    addPlatformOrder(section);
    for (SettingItem *item : {mode, size, order, group})
        connect(&m_state, &AppState::viewSettingsChanged, item, &SettingItem::valueChanged);
}

void SettingsCatalog::addPlatformOrder(const QString &section) {
    SettingsStore &settings = m_state.host().settings;
    const QString byName = tr("By name");
    const QString byCount = tr("By number of games");
    add({.key = QString::fromUtf8(Settings::platformSortOrder.key),
         .tab = general,
         .section = section,
         .label = tr("Order of platforms"),
         .help = tr("How the sidebar sorts the platforms."),
         .kind = Kind::choice,
         .choices = {byName, byCount},
         .defaultText = byName,
         .read =
             [&settings, byName, byCount] {
                 return settings.value(Settings::platformSortOrder) == platformsByGameCount ? byCount : byName;
             },
         .write =
             [&settings, byCount](const QVariant &value) {
                 settings.setValue(Settings::platformSortOrder,
                                   value.toString() == byCount ? platformsByGameCount : platformsByName);
             }});
}

void SettingsCatalog::addEmulators() {
    const QString tab = QStringLiteral("Emulators");
    const QString starting = tr("Starting games");
    addFlag(Settings::launchFullscreen, {.tab = tab,
                                         .section = starting,
                                         .label = tr("Start games in full screen"),
                                         .help = tr("DOS games take the whole screen, from the next start on.")});
    addFlag(Settings::disableCRTEffects,
            {.tab = tab,
             .section = starting,
             .label = tr("Switch CRT effects off"),
             .help = tr("DOS games are drawn sharp, without the look of an old monitor.")});
    addFlag(Settings::mt32NotificationsDisabled,
            {.tab = tab,
             .section = starting,
             .label = tr("No notes about MT-32 music"),
             .help = tr("Does not tell before a start that a game can play through a Roland MT-32.")});
    for (const EmulatorProgram program : emulatorPrograms())
        add({.key = QStringLiteral("emulator:") + emulatorProgramName(program),
             .tab = tab,
             .section = tr("Emulators"),
             .label = emulatorProgramName(program),
             .help = tr("Path and version of the program"),
             .kind = Kind::elsewhere});
}

void SettingsCatalog::addDependencies() {
    const QString tab = QStringLiteral("Dependencies");
    add({.key = QStringLiteral("dependency:tools"),
         .tab = tab,
         .label = tr("Tools"),
         .help = tr("%1, GNU sed, aria2, wget, bash")
                     .arg(m_state.host().paths.layout() == HostLayout::MacOS ? tr("Homebrew") : tr("Package manager")),
         .kind = Kind::elsewhere});
    add({.key = QStringLiteral("dependency:mt32"),
         .tab = tab,
         .label = tr("MT-32 Audio"),
         .help = tr("The ROM files of the Roland MT-32"),
         .kind = Kind::elsewhere});
}

void SettingsCatalog::addArtwork() {
    const QString tab = QStringLiteral("Artwork");
    const QString section = tr("Thumbnails");
    addFlag(Settings::enableThumbnailDiskCache,
            {.tab = tab,
             .section = section,
             .label = tr("Keep thumbnails on this disk"),
             .help = tr("Small copies of covers are kept, so that a collection on a slow drive scrolls at once.")});
    // Without a choice nothing is kept.
    SettingsStore &settings = m_state.host().settings;
    m_items.last()->setRead(
        [&settings] { return settings.storedValue(Settings::enableThumbnailDiskCache).value_or(false); }, tr("off"));
    addAction(QStringLiteral("cacheThumbnails"),
              {.tab = tab,
               .section = section,
               .label = tr("All thumbnails"),
               .help = tr("Makes the copies of every cover of the open collection now."),
               .choices = {tr("Cache Now")}},
              [this] { Q_EMIT thumbnailsWanted(); });
    addAction(QStringLiteral("clearThumbnails"),
              {.tab = tab,
               .section = section,
               .label = tr("Kept thumbnails"),
               .help = tr("Removes the copies from this disk. The collection's own pictures stay."),
               .choices = {tr("Clear Thumbnails")}},
              [this] { clearThumbnails(); });
}

void SettingsCatalog::addAdvanced() {
    addAction(QStringLiteral("resetWarnings"),
              {.tab = advanced,
               .section = tr("Notes and assistant"),
               .label = tr("Notes that were shown"),
               .help = tr("The notes about MT-32 music and the question about thumbnails come once more."),
               .choices = {tr("Reset Warnings")}},
              [this] { resetWarnings(); });
    addAction(QStringLiteral("showAssistant"),
              {.tab = advanced,
               .section = tr("Notes and assistant"),
               .label = tr("First-run assistant"),
               .help = tr("Goes through dependencies, emulators and MT-32 audio again."),
               .choices = {tr("Show Assistant")}},
              [this] { Q_EMIT assistantWanted(); });

    const QString log = tr("Log");
    addFlag(Settings::logUploadConsent,
            {.tab = advanced,
             .section = log,
             .label = tr("Upload logs without asking"),
             .help = tr("Upload Logs for Analysis starts at once. Names of user and machine are always taken out.")});
    addText(Settings::logUploadURL, {.tab = advanced,
                                     .section = log,
                                     .label = tr("Address for logs"),
                                     .help = tr("An HTTPS address of your own. Empty: the built-in one."),
                                     .defaultText = tr("the built-in one")});
    const QString logs = m_state.host().paths.logs();
    addAction(QStringLiteral("logFolder"),
              {.tab = advanced,
               .section = log,
               .label = tr("Log folder"),
               .help = logs + QStringLiteral("\n") +
                       tr("Every level is written: DEBUG, INFO, WARN and ERROR; up to 5 MB, and one older file."),
               .choices = {tr("Show Folder")}},
              [this, logs] { m_state.host().workspace.reveal(logs); });
    addAction(QStringLiteral("resetForTesting"),
              {.tab = advanced,
               .section = tr("Reset"),
               .label = tr("Reset Ludarium"),
               .help = tr("Forgets the collection folder, favourites, play times, notes, ratings and progress. The "
                          "collection itself is not touched."),
               .choices = {tr("Reset...")}},
              [this] { spawn(reset(), "resetting the program"); });
}

void SettingsCatalog::addAbout() {
    const HostPaths &paths = m_state.host().paths;
    const QString section = tr("About this installation");
    const auto fact = [&](const char *key, const QString &label, const QString &text) {
        add({.key = QString::fromLatin1(key),
             .tab = advanced,
             .section = section,
             .label = label,
             .kind = Kind::info,
             .read = [text] { return text; }});
    };
    fact("info:version", tr("Ludarium"), QStringLiteral(LUDARIUM_VERSION));
    fact("info:qt", tr("Qt"), QString::fromLatin1(qVersion()));
    fact("info:system", tr("System"), MachineInfo::current().systemVersion);
    fact("info:settings", tr("Settings"), paths.settingsFolder());
    fact("info:data", tr("Data"), paths.applicationSupport());
    fact("info:cache", tr("Cache"), paths.caches());
    fact("info:logs", tr("Log"), paths.logs());
}

void SettingsCatalog::clearCache() {
    const QString reason = m_state.gameLibrary().clearCache(m_state.collectionPath());
    if (reason.isEmpty())
        Q_EMIT reloadWanted();
    else
        Q_EMIT warned(tr("The cache stays, as the collection cannot be read again: %1").arg(reason));
}

void SettingsCatalog::clearThumbnails() {
    const auto work = [](QPointer<SettingsCatalog> self, ThumbnailDiskCache cache) -> QCoro::Task<> {
        auto clear = [cache] { cache.clearDiskCache(); };
        co_await runOnPool(clear);
        if (self)
            Q_EMIT self->toast(tr("The thumbnails are removed"));
    };
    spawn(work(this, m_state.imageLoader().diskCache()), "clearing the thumbnails");
}

void SettingsCatalog::resetWarnings() {
    SettingsStore &settings = m_state.host().settings;
    QByteArray prefix;
    Settings::mt32NotificationShown(prefix, QString());
    const QStringList shown = settings.keys().filter(QString::fromUtf8(prefix));
    try {
        settings.transaction([&] {
            for (const QString &key : shown)
                if (key.startsWith(QString::fromUtf8(prefix)))
                    settings.remove(key);
            settings.remove(Settings::dismissSlowLoadAlertPermanently);
        });
        Q_EMIT toast(tr("Every note will be shown once more"));
    } catch (const SettingsError &error) {
        Q_EMIT warned(QString::fromUtf8(error.what()));
    }
}

QCoro::Task<> SettingsCatalog::reset() {
    const QPointer<SettingsCatalog> self(this);
    Alert alert;
    alert.title = tr("Reset Ludarium?");
    alert.text = tr("Favourites, play times, notes, ratings and progress of every collection are forgotten, and the "
                    "next start is a first one. This cannot be undone.\n\nThe collection's own files stay as they "
                    "are.");
    alert.buttons = QStringList{tr("Reset"), tr("Cancel")};
    alert.destructive = 0;
    alert.style = Alert::Style::Critical;
    const int answer = co_await m_state.host().dialogs.ask(alert);
    if (!self || answer != 0)
        co_return;
    try {
        m_state.gameLibrary().resetForTesting();
        Log::info(QStringLiteral("The program was reset"));
        Q_EMIT toast(tr("Ludarium is reset. The next start is a first one."));
    } catch (const SettingsError &error) {
        Q_EMIT warned(QString::fromUtf8(error.what()));
    }
}

} // namespace ludarium
