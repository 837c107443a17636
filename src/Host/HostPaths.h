#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <memory>

namespace ludarium {

class PrivateTemporaryFolder;

/// Which machine's conventions for folders and programs hold.
enum class HostLayout { MacOS, Linux };

/// Where things are on this machine, as data for two layouts. Every path of a table of programs or folders goes
/// through `resolve`, so that tests can put a fake machine of either layout under a root of their own.
class HostPaths {
  public:
    /// The layout, home and environment of the running process. `homeOverride`, when given, is used as the home and
    /// everything that the program keeps goes below it (the XDG variables are then ignored).
    static HostPaths native(const QString &homeOverride = {});

    /// `root` is put before every absolute path ("" on a real machine). `home` is an absolute path as the process
    /// sees it, already below `root`.
    HostPaths(HostLayout layout, QString home, QString root, QProcessEnvironment environment);

    HostLayout layout() const { return m_layout; }
    QString home() const { return m_home; }
    QString root() const { return m_root; }
    const QProcessEnvironment &environment() const { return m_environment; }

    /// The absolute path of a table entry on this machine: a leading "~" becomes the home, anything else goes under
    /// the root. Relative text and a path that already lies under the root are returned unchanged.
    QString resolve(const QString &path) const;

    /// Settings store and other small state. macOS: `~/Library/Application Support/Ludarium`; Linux:
    /// `$XDG_CONFIG_HOME/ludarium`.
    QString settingsFolder() const;
    /// What the program keeps for the user. macOS: `~/Library/Application Support/Ludarium`; Linux:
    /// `$XDG_DATA_HOME/ludarium`.
    QString applicationSupport() const;
    /// What can be made again. macOS: `~/Library/Caches/com.ludarium.app`; Linux: `$XDG_CACHE_HOME/ludarium`.
    QString caches() const;
    /// macOS: `~/Library/Logs/Ludarium`; Linux: `$XDG_STATE_HOME/ludarium/logs`.
    QString logs() const;
    /// Window frame and session journals. macOS: Application Support; Linux: `$XDG_STATE_HOME/ludarium`.
    QString state() const;
    QString documents() const;

    /// A private folder (0700) of this user, program and run, made on first use. Generated configurations and scripts
    /// go to its subfolder `Ludarium`. What earlier runs left is swept when the folder is made, except what is
    /// younger than an hour, which an emulator may still be reading. Throws std::system_error when no private folder
    /// can be made. Copies of this object share the folder.
    QString temporaryDirectory() const;

    /// The system as texts for the user call it: "macOS" or "Linux".
    QString systemName() const;
    /// Extension of a libretro core: "dylib" or "so".
    QString coreExtension() const;
    /// Name of the key combination that makes DOSBox change to the next disc image.
    QString discSwapKeys() const;

    /// Address that opens the system's own settings; empty where there is none.
    QString systemSettingsAddress() const;

    /// Folders that programs are looked for in, by name: `PATH` plus those that a program started from a file
    /// manager lacks. Already resolved under the root, each once.
    QStringList programFolders() const;
    /// First executable file called `name` in `programFolders()`; the twin of `/usr/bin/which`. Empty when none.
    QString which(const QString &name) const;
    /// Environment for child processes: the process's own with `PATH` widened. On macOS the Homebrew folders are put
    /// in front, followed by ":" and the old value; on Linux only missing standard folders are added at the end.
    QProcessEnvironment childEnvironment() const;

  private:
    QString xdgFolder(const char *variable, const QString &fallback) const;
    QStringList addedProgramFolders() const;

    HostLayout m_layout;
    QString m_home;
    QString m_root;
    QProcessEnvironment m_environment;
    bool m_homeOverridden = false;
    std::shared_ptr<PrivateTemporaryFolder> m_temporary;
};

/// Facts about the machine for the log's banner.
struct MachineInfo {
    QString systemVersion;
    QString hardwareModel;
    double memoryGigabytes = 0;
    QString hostName;
    QString userName;
    QString userHome; ///< as the machine's list of users has it, whatever the environment says
    static MachineInfo current();
};

} // namespace ludarium
