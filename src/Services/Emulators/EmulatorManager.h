#pragma once

#include "Host/Setting.h"

#include <QCoro/QCoroTask>
#include <QMap>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace ludarium {

struct Host;
enum class HostLayout;
enum class LocatedProgram;

/// The outside programs whose presence is watched, in the order of the status report.
enum class EmulatorProgram {
    dosbox,
    scummvm,
    gzdoom,
    dosboxX,
    wine,
    retroArch,
    mame,
    gsplus,
    ryujinx,
    cemu,
    rpcs3,
    vita3k,
    pcsx2,
    lime3ds,
};

/// State of one program. `path` is set when installed.
struct EmulatorStatus {
    enum class State { unknown, notInstalled, installed, installing };
    State state = State::unknown;
    QString path;
    bool operator==(const EmulatorStatus &) const = default;
};

enum class WineVariant { crossOver, wineStable, homebrew, whisky, custom, none };

/// Knows which outside programs are on the machine. A lookup never fails: it gives no path.
///
/// The lookups look at the disk and return at once. What only Spotlight knows is known to them after `locate` or
/// `checkEmulatorStatus` has asked it.
class EmulatorManager : public QObject {
    Q_OBJECT
  public:
    explicit EmulatorManager(Host &host, QObject *parent = nullptr);

    std::optional<QString> findDOSBox() const;
    std::optional<QString> findDOSBoxStaging() const;
    std::optional<QString> findScummVM() const;
    std::optional<QString> findGZDoom() const;
    std::optional<QString> findDOSBoxX() const;
    std::optional<QString> findWine() const;
    std::optional<QString> findRetroArch() const;
    std::optional<QString> findMAME() const;
    std::optional<QString> findGSplus() const;
    std::optional<QString> findRyujinx() const;
    std::optional<QString> findCemu() const;
    std::optional<QString> findRPCS3() const;
    std::optional<QString> findVita3K() const;
    std::optional<QString> findPCSX2() const;
    std::optional<QString> findLime3DS() const;
    std::optional<QString> find(EmulatorProgram program) const;
    /// The Apple IIGS runner's own answers. Both stand for the process, as does that of `findGSplus`, until
    /// `forgetFastLookups`.
    std::optional<QString> findMAMEFast() const;
    std::optional<QString> findGSplusFast() const;
    void forgetFastLookups();

    /// The whole lookup of a program, Spotlight included, off the main thread.
    QCoro::Task<std::optional<QString>> locate(EmulatorProgram program);

    WineVariant getWineVariant() const;

    /// Looks for every program on the thread pool and publishes all statuses at once.
    QCoro::Task<> checkEmulatorStatus();
    EmulatorStatus status(EmulatorProgram program) const;

    /// Installs a program and throws EmulatorError when that fails. Without one every installation fails.
    std::function<QCoro::Task<>(EmulatorProgram)> installer;

    /// Ask whether to install a missing program; true when it is installed now.
    QCoro::Task<bool> promptInstallDOSBox();
    QCoro::Task<bool> promptInstallDOSBoxX();
    QCoro::Task<bool> promptInstallWine();
    QCoro::Task<bool> promptInstallRetroArch();
    QCoro::Task<bool> promptInstallMAME();

  Q_SIGNALS:
    void statusChanged();

  private:
    std::optional<QString> look(LocatedProgram program) const;
    QCoro::Task<std::optional<QString>> askSpotlight(EmulatorProgram program);
    QCoro::Task<> install(EmulatorProgram program);
    QCoro::Task<bool> promptInstall(EmulatorProgram program);
    QCoro::Task<> showInstructions(EmulatorProgram program);

    Host &m_host;
    QMap<EmulatorProgram, EmulatorStatus> m_status;
    QMap<EmulatorProgram, QString> m_spotlightAnswers;
    // The outer optional tells whether the answer was looked for, the inner one whether there is a program.
    mutable std::optional<std::optional<QString>> m_fastMAME;
    mutable std::optional<std::optional<QString>> m_fastGSplus;
};

/// "DOSBox", "ScummVM", … as the interface shows it.
QString emulatorProgramName(EmulatorProgram program);
/// The setting in which the user names a program's path; null for a program without one.
const Setting<QString> *emulatorPathSetting(EmulatorProgram program, HostLayout layout);
/// All watched programs, in the order of the status report.
const QList<EmulatorProgram> &emulatorPrograms();

} // namespace ludarium
