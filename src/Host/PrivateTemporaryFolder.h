#pragma once

#include <QString>
#include <QStringList>
#include <mutex>

namespace ludarium {

/// The folder for the temporary files of one run: `{parent}/ludarium-{uid}/run-XXXXXX`, both 0700 and this user's own.
/// The run's folder is locked for as long as this object lives, which tells a later run that its files are in use.
class PrivateTemporaryFolder {
  public:
    /// `parents` are tried in order: the next one is used where another user holds our name in a shared folder.
    explicit PrivateTemporaryFolder(QStringList parents);
    /// Removes the run's folder when nothing is left in it; what an emulator may still read stays for the next sweep.
    ~PrivateTemporaryFolder();
    PrivateTemporaryFolder(const PrivateTemporaryFolder &) = delete;
    PrivateTemporaryFolder &operator=(const PrivateTemporaryFolder &) = delete;

    /// Makes the folder on first use, and again when a cleaner of the system took it. Any thread. Throws
    /// std::system_error when no parent will do.
    QString path();

  private:
    void close();

    const QStringList m_parents;
    std::mutex m_mutex;
    QString m_path;
    int m_lock = -1;
};

} // namespace ludarium
