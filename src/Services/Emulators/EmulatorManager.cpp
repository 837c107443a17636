#include "Services/Emulators/EmulatorManager.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Clock.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/ProcessRunner.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Host/Workspace.h"
#include "Services/Emulators/EmulatorError.h"
#include "Services/Emulators/InstallTexts.h"
#include "Services/Emulators/ProgramLocator.h"

#include <QFileInfo>
#include <QPointer>

#include <chrono>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

LocatedProgram located(EmulatorProgram program) {
    switch (program) {
    case EmulatorProgram::dosbox:
        return LocatedProgram::dosbox;
    case EmulatorProgram::scummvm:
        return LocatedProgram::scummvm;
    case EmulatorProgram::gzdoom:
        return LocatedProgram::gzdoom;
    case EmulatorProgram::dosboxX:
        return LocatedProgram::dosboxX;
    case EmulatorProgram::wine:
        return LocatedProgram::wine;
    case EmulatorProgram::retroArch:
        return LocatedProgram::retroArch;
    case EmulatorProgram::mame:
        return LocatedProgram::mame;
    case EmulatorProgram::gsplus:
        return LocatedProgram::gsplus;
    case EmulatorProgram::ryujinx:
        return LocatedProgram::ryujinx;
    case EmulatorProgram::cemu:
        return LocatedProgram::cemu;
    case EmulatorProgram::rpcs3:
        return LocatedProgram::rpcs3;
    case EmulatorProgram::vita3k:
        return LocatedProgram::vita3k;
    case EmulatorProgram::pcsx2:
        return LocatedProgram::pcsx2;
    case EmulatorProgram::lime3ds:
        return LocatedProgram::lime3ds;
    }
    Q_UNREACHABLE();
}

/// One of the two summary lines of the status check.
QString summary(const QMap<EmulatorProgram, EmulatorStatus> &statuses, EmulatorProgram first, EmulatorProgram last) {
    QStringList parts;
    for (EmulatorProgram program : emulatorPrograms()) {
        if (program < first || program > last)
            continue;
        const EmulatorStatus status = statuses.value(program);
        const bool isInstalled = status.state == EmulatorStatus::State::installed;
        parts.append(emulatorProgramName(program) + u'=' + (isInstalled ? status.path : u"not installed"_s));
    }
    return u"Emulator status: "_s + parts.join(u", "_s);
}

} // namespace

const QList<EmulatorProgram> &emulatorPrograms() {
    static const QList<EmulatorProgram> programs = [] {
        QList<EmulatorProgram> list;
        for (int i = 0; i <= int(EmulatorProgram::lime3ds); ++i)
            list.append(EmulatorProgram(i));
        return list;
    }();
    return programs;
}

QString emulatorProgramName(EmulatorProgram program) {
    switch (program) {
    case EmulatorProgram::dosbox:
        return u"DOSBox"_s;
    case EmulatorProgram::scummvm:
        return u"ScummVM"_s;
    case EmulatorProgram::gzdoom:
        return u"GZDoom"_s;
    case EmulatorProgram::dosboxX:
        return u"DOSBox-X"_s;
    case EmulatorProgram::wine:
        return u"Wine"_s;
    case EmulatorProgram::retroArch:
        return u"RetroArch"_s;
    case EmulatorProgram::mame:
        return u"MAME"_s;
    case EmulatorProgram::gsplus:
        return u"GSplus"_s;
    case EmulatorProgram::ryujinx:
        return u"Ryujinx"_s;
    case EmulatorProgram::cemu:
        return u"Cemu"_s;
    case EmulatorProgram::rpcs3:
        return u"RPCS3"_s;
    case EmulatorProgram::vita3k:
        return u"Vita3K"_s;
    case EmulatorProgram::pcsx2:
        return u"PCSX2"_s;
    case EmulatorProgram::lime3ds:
        return u"Lime3DS"_s;
    }
    Q_UNREACHABLE();
}

const Setting<QString> *emulatorPathSetting(EmulatorProgram program, HostLayout layout) {
    return programRow(located(program), layout).setting;
}

EmulatorManager::EmulatorManager(Host &host, QObject *parent) : QObject(parent), m_host(host) {}

std::optional<QString> EmulatorManager::look(LocatedProgram program) const {
    return ProgramLocator(m_host.paths, m_host.settings).find(program);
}

std::optional<QString> EmulatorManager::find(EmulatorProgram program) const {
    if (program == EmulatorProgram::gsplus)
        return findGSplusFast();
    if (std::optional<QString> path = look(located(program)))
        return path;
    const QString answer = m_spotlightAnswers.value(program);
    return QFileInfo(answer).isFile() ? std::optional(answer) : std::nullopt;
}

std::optional<QString> EmulatorManager::findDOSBox() const {
    return find(EmulatorProgram::dosbox);
}
std::optional<QString> EmulatorManager::findDOSBoxStaging() const {
    return look(LocatedProgram::dosboxStaging);
}
std::optional<QString> EmulatorManager::findScummVM() const {
    return find(EmulatorProgram::scummvm);
}
std::optional<QString> EmulatorManager::findGZDoom() const {
    return find(EmulatorProgram::gzdoom);
}
std::optional<QString> EmulatorManager::findDOSBoxX() const {
    return find(EmulatorProgram::dosboxX);
}
std::optional<QString> EmulatorManager::findWine() const {
    return find(EmulatorProgram::wine);
}
std::optional<QString> EmulatorManager::findRetroArch() const {
    return find(EmulatorProgram::retroArch);
}
std::optional<QString> EmulatorManager::findMAME() const {
    return find(EmulatorProgram::mame);
}
std::optional<QString> EmulatorManager::findGSplus() const {
    return find(EmulatorProgram::gsplus);
}
std::optional<QString> EmulatorManager::findRyujinx() const {
    return find(EmulatorProgram::ryujinx);
}
std::optional<QString> EmulatorManager::findCemu() const {
    return find(EmulatorProgram::cemu);
}
std::optional<QString> EmulatorManager::findRPCS3() const {
    return find(EmulatorProgram::rpcs3);
}
std::optional<QString> EmulatorManager::findVita3K() const {
    return find(EmulatorProgram::vita3k);
}
std::optional<QString> EmulatorManager::findPCSX2() const {
    return find(EmulatorProgram::pcsx2);
}
std::optional<QString> EmulatorManager::findLime3DS() const {
    return find(EmulatorProgram::lime3ds);
}

std::optional<QString> EmulatorManager::findMAMEFast() const {
    if (!m_fastMAME)
        m_fastMAME = look(LocatedProgram::mameFast);
    return *m_fastMAME;
}

std::optional<QString> EmulatorManager::findGSplusFast() const {
    if (!m_fastGSplus)
        m_fastGSplus = look(LocatedProgram::gsplus);
    return *m_fastGSplus;
}

void EmulatorManager::forgetFastLookups() {
    m_fastMAME.reset();
    m_fastGSplus.reset();
}

QCoro::Task<std::optional<QString>> EmulatorManager::locate(EmulatorProgram program) {
    if (program == EmulatorProgram::gsplus)
        co_return findGSplusFast();
    const QPointer<EmulatorManager> self(this);
    // Named, as g++ 12 destroys the captures of a lambda made inside a co_await expression twice.
    const auto search = [locator = ProgramLocator(m_host.paths, m_host.settings), program] {
        return locator.find(located(program));
    };
    std::optional<QString> path = co_await runOnPool(search);
    if (!path && self)
        path = co_await askSpotlight(program);
    co_return path;
}

QCoro::Task<std::optional<QString>> EmulatorManager::askSpotlight(EmulatorProgram program) {
    const QPointer<EmulatorManager> self(this);
    const QList<ProgramCandidate> queries =
        ProgramLocator(m_host.paths, m_host.settings).spotlightQueries(located(program));
    std::optional<QString> path;
    for (const ProgramCandidate &query : queries) {
        ProcessSpec spec;
        spec.program = m_host.paths.resolve(u"/usr/bin/mdfind"_s);
        spec.arguments = QStringList{query.text};
        try {
            const ProcessResult result = co_await m_host.processes.run(spec);
            path = ProgramLocator::fromSpotlight(query, result.standardOutput);
        } catch (const ProcessError &) {
            Log::warning(u"Failed to search for %1: %2"_s.arg(emulatorProgramName(program), currentExceptionText()));
        }
        if (!self || path)
            break;
    }
    if (self)
        m_spotlightAnswers.insert(program, path.value_or(QString()));
    co_return path;
}

WineVariant EmulatorManager::getWineVariant() const {
    const std::optional<QString> wine = findWine();
    if (!wine)
        return WineVariant::none;
    const auto contains = [&wine](const QString &text) { return wine->contains(text); };
    if (contains(u"CrossOver.app"_s) || contains(u"/cxoffice/"_s))
        return WineVariant::crossOver;
    if (contains(u"Wine Stable.app"_s) || contains(u"/opt/wine-stable/"_s))
        return WineVariant::wineStable;
    if (contains(u"/opt/homebrew/"_s) || contains(u"/usr/local/"_s))
        return WineVariant::homebrew;
    if (contains(u"Whisky"_s))
        return WineVariant::whisky;
    // The settings view stores an emptied field as an empty text, which means the same as no setting.
    return m_host.settings.value(Settings::winePath).isEmpty() ? WineVariant::none : WineVariant::custom;
}

EmulatorStatus EmulatorManager::status(EmulatorProgram program) const {
    return m_status.value(program);
}

QCoro::Task<> EmulatorManager::checkEmulatorStatus() {
    using Found = QMap<EmulatorProgram, std::optional<QString>>;
    const QPointer<EmulatorManager> self(this);
    const auto start = m_host.clock.monotonic();
    Log::info(u"Checking emulator status..."_s);

    const bool isGSplusKnown = m_fastGSplus.has_value();
    const auto search = [locator = ProgramLocator(m_host.paths, m_host.settings), isGSplusKnown] {
        Found paths;
        for (EmulatorProgram program : emulatorPrograms())
            if (program != EmulatorProgram::gsplus || !isGSplusKnown)
                paths.insert(program, locator.find(located(program)));
        return paths;
    };
    Found found = co_await runOnPool(search);
    if (!self)
        co_return;
    if (!m_fastGSplus)
        m_fastGSplus = found.value(EmulatorProgram::gsplus);
    found.insert(EmulatorProgram::gsplus, *m_fastGSplus);
    for (EmulatorProgram program : emulatorPrograms()) {
        if (found.value(program) || program == EmulatorProgram::gsplus)
            continue;
        found.insert(program, co_await askSpotlight(program));
        if (!self)
            co_return;
    }

    for (auto it = found.cbegin(); it != found.cend(); ++it)
        m_status.insert(it.key(), *it ? EmulatorStatus{EmulatorStatus::State::installed, **it}
                                      : EmulatorStatus{EmulatorStatus::State::notInstalled, {}});
    const double seconds = std::chrono::duration<double>(m_host.clock.monotonic() - start).count();
    Log::info(u"⏱️ Emulator check took %1s"_s.arg(seconds, 0, 'f', 2));
    Log::info(summary(m_status, EmulatorProgram::dosbox, EmulatorProgram::wine));
    Log::info(summary(m_status, EmulatorProgram::retroArch, EmulatorProgram::lime3ds));
    Q_EMIT statusChanged();
}

QCoro::Task<> EmulatorManager::install(EmulatorProgram program) {
    if (!installer)
        throw EmulatorError(EmulatorError::Case::installationFailed,
                            u"Ludarium cannot install %1 by itself yet."_s.arg(emulatorProgramName(program)));
    co_await installer(program);
}

QCoro::Task<bool> EmulatorManager::promptInstall(EmulatorProgram program) {
    const QPointer<EmulatorManager> self(this);
    const InstallTexts texts = installTexts(program, m_host.paths.layout());
    Dialogs &dialogs = m_host.dialogs;

    // Every alert is named before it is asked: g++ 12 destroys an aggregate made inside a co_await expression twice.
    const Alert question{texts.title,
                         texts.question,
                         {u"Install Automatically"_s, u"Manual Instructions"_s, u"Cancel"_s},
                         Alert::Style::Warning};
    const int choice = co_await dialogs.ask(question);
    if (!self)
        co_return false;
    if (choice == 1) {
        co_await showInstructions(program);
        co_return false;
    }
    if (choice != 0) {
        Log::info(u"   User cancelled %1 installation"_s.arg(texts.name));
        co_return false;
    }

    std::optional<QString> failure;
    try {
        co_await install(program);
    } catch (...) {
        failure = currentExceptionText();
    }
    if (!self)
        co_return false;
    if (!failure) {
        const Alert done{texts.name + u" Installed"_s, texts.installed, {u"OK"_s}, Alert::Style::Informational};
        co_await dialogs.ask(done);
        co_return true;
    }
    Log::error(u"❌ %1 installation error: %2"_s.arg(texts.name, *failure));
    const Alert failed{u"Installation Failed"_s,
                       *failure + u"\n\nWould you like to see manual installation instructions?"_s,
                       {u"Show Instructions"_s, u"Cancel"_s},
                       Alert::Style::Warning};
    const int way = co_await dialogs.ask(failed);
    if (self && way == 0)
        co_await showInstructions(program);
    co_return false;
}

QCoro::Task<> EmulatorManager::showInstructions(EmulatorProgram program) {
    const InstallTexts texts = installTexts(program, m_host.paths.layout());
    QStringList buttons;
    for (const PageButton &page : texts.pages)
        buttons.append(page.text);
    buttons.append(u"OK"_s);
    Workspace &workspace = m_host.workspace;
    const Alert instructions{texts.instructionsTitle, texts.instructions, buttons, Alert::Style::Informational};
    const int button = co_await m_host.dialogs.ask(instructions);
    if (button >= 0 && button < texts.pages.size() && !workspace.openUrl(texts.pages.at(button).page))
        Log::warning(u"Could not open %1"_s.arg(texts.pages.at(button).page.toString()));
}

QCoro::Task<bool> EmulatorManager::promptInstallDOSBox() {
    return promptInstall(EmulatorProgram::dosbox);
}
QCoro::Task<bool> EmulatorManager::promptInstallDOSBoxX() {
    return promptInstall(EmulatorProgram::dosboxX);
}
QCoro::Task<bool> EmulatorManager::promptInstallWine() {
    return promptInstall(EmulatorProgram::wine);
}
QCoro::Task<bool> EmulatorManager::promptInstallRetroArch() {
    return promptInstall(EmulatorProgram::retroArch);
}
QCoro::Task<bool> EmulatorManager::promptInstallMAME() {
    return promptInstall(EmulatorProgram::mame);
}

} // namespace ludarium
