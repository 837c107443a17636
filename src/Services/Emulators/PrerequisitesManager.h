#pragma once

#include "Services/Emulators/PackageManager.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QString>

namespace ludarium {

struct Host;

/// What is there of the tools that a collection's scripts and this program's generated ones need.
struct Prerequisites {
    PackageManager packageManager; ///< Homebrew, or on Linux the distribution's own
    bool gsedInstalled = false;    ///< GNU sed: `gsed` on macOS, plain `sed` on Linux
    bool aria2Installed = false;
    bool wgetInstalled = false;
    bool python3Installed = false;
    bool unzipInstalled = false;
    QString bashVersion; ///< "5.2"; null when no bash tells one
    bool bashVersionOK = false;
    bool mt32RomsInstalled = false;
    QString mt32RomPath; ///< the folder of the ROMs, empty when they are not there
    bool homebrewInstalled() const { return !packageManager.path.isEmpty(); }
    bool allRequiredInstalled() const { return homebrewInstalled() && gsedInstalled && aria2Installed; }
    bool allOptionalInstalled() const {
        return wgetInstalled && python3Installed && bashVersionOK && mt32RomsInstalled;
    }
};

/// Looks for the tools. Nothing of it is kept from run to run; installing is the user's affair.
class PrerequisitesManager : public QObject {
    Q_OBJECT
  public:
    explicit PrerequisitesManager(Host &host, QObject *parent = nullptr);

    /// Looks for everything, off the main thread, and publishes it at once. A call during another does nothing.
    QCoro::Task<> checkAll();
    bool isChecking() const { return m_isChecking; }
    /// False before the first check has ended.
    bool isChecked() const { return m_isChecked; }
    const Prerequisites &found() const { return m_found; }

    /// Shows the folder that MT-32 ROMs belong in, made when it is missing.
    QCoro::Task<> openMT32RomFolder();
    QString mt32RomFolder() const;

  Q_SIGNALS:
    void changed();

  private:
    QCoro::Task<QString> bashVersionOf(QString program);

    Host &m_host;
    Prerequisites m_found;
    bool m_isChecking = false;
    bool m_isChecked = false;
};

} // namespace ludarium
