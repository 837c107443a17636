#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace ludarium {

/// The last good copies of a settings store, beside it: `{store}.kept-{revision}`.
class SettingsGenerations {
  public:
    static constexpr int kept = 3;

    explicit SettingsGenerations(QString storeFile) : m_storeFile(std::move(storeFile)) {}

    struct Generation {
        qint64 revision = 0;
        QString file;
        QByteArray read() const; ///< empty when it cannot be read
    };
    /// The newest first.
    QList<Generation> all() const;

    /// Keeps a copy of the store at `revision` and removes the oldest beyond three. Returns the operating system's
    /// reason when it could not be kept; then the older ones stay.
    QString keep(const QByteArray &image, qint64 revision);

  private:
    const QString m_storeFile;
};

} // namespace ludarium
