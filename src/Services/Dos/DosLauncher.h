#pragma once

#include "Host/ProcessRunner.h"
#include "Models/Game.h"
#include "Models/GameVersionOption.h"
#include "Models/LaunchPlan.h"

#include <QCoro/QCoroTask>
#include <functional>

namespace ludarium {

struct Host;

/// A correction that users have agreed on for a game that did not start.
struct CommunityFix {
    OptionalText versionLabel;
    OptionalText correctExecutable;
    OptionalText workingDirectory;
    std::optional<QStringList> setupCommands;
    std::optional<QMap<QString, QString>> configChanges;
};

/// What a launch by auto-detection leaves for the later question whether it worked.
struct LaunchFeedback {
    GamePtr game;
    QString executable;
    bool isFromDatabase = false;
    OptionalText versionLabel;
};

/// What the DOS launch needs of other rooms. Absent functions stand for "nothing known".
struct DosCollaborators {
    std::function<std::optional<QString>()> findDOSBox;
    std::function<QMap<QString, QString>(const QString &title)> configOverrides;
    /// For each key of `configOverrides`, the id of the exception that sets it.
    std::function<QMap<QString, QString>(const QString &title)> configOverrideOrigins;
    std::function<std::optional<CommunityFix>(const QString &title, const QString &versionLabel)> communityFix;
    std::function<void(const LaunchFeedback &)> scheduleLaunchFeedback;
};

/// One DOS game on its way into DOSBox.
struct DosLaunchRequest {
    GamePtr game;
    QString gameDataFolder; ///< {collection}/eXo/eXoDOS/{name}
    QString scriptFolder;   ///< {collection}/eXo/eXoDOS/!dos/{name}
    QString collection;
    std::optional<GameVersionOption> version;
};

/// The button that starts a game although its program was not found.
inline constexpr QStringView startAnywayButton = u"Start Anyway";

/// Turns a DOS game into a running DOSBox: finds its configuration, prepares its folder, writes the overlay and the
/// launch configuration and starts the emulator. Folder work runs on the thread pool.
class DosLauncher {
  public:
    DosLauncher(Host &host, DosCollaborators collaborators);
    ~DosLauncher();

    /// What `launch` would do. Writes and changes nothing. Throws LaunchError.
    QCoro::Task<LaunchPlan> plan(DosLaunchRequest request);

    struct Started {
        LaunchPlan plan;
        ProcessId process;
    };
    /// Prepares the folder, writes the files and starts the emulator; returns when it runs. A launch that is proved to
    /// lead to no program is asked about before anything changes. Throws LaunchError, LaunchCancelled, or
    /// std::system_error with the operating system's reason.
    QCoro::Task<Started> launch(DosLaunchRequest request);

  private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ludarium
