#pragma once

#include <QObject>
#include <QVariant>

namespace ludarium {

/// Notifications by name, delivered at once to whoever listens. Main thread only.
class NotificationCenter : public QObject {
    Q_OBJECT
  public:
    using QObject::QObject;
    void post(const QString &name, const QVariantMap &info = {}) { Q_EMIT posted(name, info); }
  Q_SIGNALS:
    void posted(const QString &name, const QVariantMap &info);
};

/// Names of the notifications that rooms send one another.
namespace Notifications {
inline constexpr QLatin1StringView gameStatusesUpdated{"GameStatusesUpdated"};
inline constexpr QLatin1StringView gameLibraryDidUpdate{"GameLibraryDidUpdate"};
inline constexpr QLatin1StringView gameDownloadProgress{"GameDownloadProgress"};
inline constexpr QLatin1StringView gameDownloadComplete{"GameDownloadComplete"};
inline constexpr QLatin1StringView gameExtractionStarted{"GameExtractionStarted"};
inline constexpr QLatin1StringView slowLoadDetected{"ImageLoader.slowLoadDetected"};
inline constexpr QLatin1StringView openDependenciesSettings{"OpenDependenciesSettings"};
} // namespace Notifications

} // namespace ludarium
