#include "Views/ThumbnailCaching.h"

#include "App/AppState.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/NotificationCenter.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Artwork/ImageLoader.h"
#include "Services/Library/GameLibrary.h"

#include <QPointer>

namespace ludarium {

ThumbnailCaching::ThumbnailCaching(AppState &state, QObject *parent) : QObject(parent), m_state(state) {
    connect(&state.imageLoader(), &ImageLoader::preCacheChanged, this, &ThumbnailCaching::changed);
    connect(&state.host().notifications, &NotificationCenter::posted, this, [this](const QString &name) {
        if (m_asking && name == Notifications::slowLoadDetected)
            spawn(offer(), "offering to cache thumbnails");
    });
}

bool ThumbnailCaching::isRunning() const {
    return m_state.imageLoader().isPreCaching();
}

double ThumbnailCaching::progress() const {
    return m_state.imageLoader().preCacheProgress();
}

QString ThumbnailCaching::status() const {
    return m_state.imageLoader().preCacheStatus();
}

QCoro::Task<> ThumbnailCaching::offer() {
    SettingsStore &settings = m_state.host().settings;
    if (settings.value(Settings::dismissSlowLoadAlertPermanently))
        co_return;
    const QString cacheNow = QStringLiteral("Cache Now");
    const QString never = QStringLiteral("Never Ask Again");
    Alert alert;
    alert.title = QStringLiteral("Cache Thumbnails");
    alert.text = QStringLiteral("Cache thumbnails on your local drive for faster browsing? This generates all "
                                "thumbnails at once so scrolling is instant.");
    // What changes nothing stands last: that is what closing the question means.
    alert.buttons.append(cacheNow);
    alert.buttons.append(never);
    alert.buttons.append(QStringLiteral("Not Now"));
    const QPointer<ThumbnailCaching> self(this);
    const int answer = co_await m_state.host().dialogs.ask(alert);
    if (!self)
        co_return;
    if (alert.buttons.value(answer) == cacheNow)
        start();
    else if (alert.buttons.value(answer) == never)
        keep(Settings::dismissSlowLoadAlertPermanently);
}

bool ThumbnailCaching::keep(const Setting<bool> &setting) {
    try {
        m_state.host().settings.setValue(setting, true);
        return true;
    } catch (const SettingsError &error) {
        Q_EMIT warned(QString::fromUtf8(error.what()));
        return false;
    }
}

void ThumbnailCaching::start() {
    spawn(copyAll(), "caching thumbnails");
}

QCoro::Task<> ThumbnailCaching::copyAll() {
    if (keep(Settings::enableThumbnailDiskCache))
        co_await m_state.imageLoader().preCacheAllThumbnails(m_state.gameLibrary().games(), m_state.collectionPath());
}

void ThumbnailCaching::cancel() {
    m_state.imageLoader().cancelPreCache();
}

} // namespace ludarium
