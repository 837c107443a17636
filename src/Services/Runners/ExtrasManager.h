#pragma once

#include "Models/Game.h"

#include <QCoro/QCoroTask>
#include <QMap>
#include <QSet>
#include <QUuid>
#include <optional>
#include <stop_token>

namespace ludarium {

struct Host;

/// What a file beside a game is, by its name.
enum class ExtraType { manual, document, image, video, audio, hint, launcher, archive, other };

/// Stored text: "manual", "document", …
QString extraTypeText(ExtraType type);
/// By the extension, in any case. Never `manual`, which only the look-up of manuals gives.
ExtraType extraTypeOf(const QString &fileName);

/// A file beside a game. Identity is `id`.
struct ExtraItem {
    QUuid id = QUuid::createUuid();
    QString url; ///< path of the file
    QString name;
    ExtraType type = ExtraType::other;
    qint64 size = 0; ///< bytes

    bool operator==(const ExtraItem &other) const { return id == other.id; }
};

/// Finds what lies in a game's `Extras` folder and its manual in the collection's `Manuals`.
class ExtrasManager {
  public:
    using Extras = QMap<ExtraType, QList<ExtraItem>>;
    static const QSet<QString> &audioExtensions();

    explicit ExtrasManager(Host &host) : m_host(host) {}

    /// By type, each list by name. Windows programs are left out; archives of music stand under `audio`. Looks at the
    /// disk on the thread pool. What is left to find when `stop` is requested is left out.
    QCoro::Task<Extras> getExtras(GamePtr game, QString collection, std::stop_token stop = {});
    /// The game's `Extras` folder, when there is one. Looks at the disk.
    static std::optional<QString> getExtrasURL(const Game &game, const QString &collection);
    /// Whether a ".zip" lists a track of music; false for what cannot be read.
    QCoro::Task<bool> zipContainsAudio(QString path, std::stop_token stop = {});

  private:
    Host &m_host;
};

inline size_t qHash(const ExtraItem &item, size_t seed = 0) {
    return qHash(item.id, seed);
}

} // namespace ludarium
