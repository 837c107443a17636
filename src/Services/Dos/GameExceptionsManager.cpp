#include "Services/Dos/GameExceptionsManager.h"

#include "Host/Clock.h"
#include "Host/Host.h"
#include "Host/IcuPattern.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Severity = GameException::Severity;

QList<GameException> builtInExceptions(const QDateTime &now, const QString &discSwapKeys) {
    QList<GameException> list;
    const auto add = [&](const QString &id, const QStringList &patterns, std::optional<EmulatorOverride> emulator,
                         const QMap<QString, QString> &overrides, Severity severity, const QString &notes) {
        GameException exception;
        exception.id = id;
        exception.patterns = patterns;
        exception.emulator = emulator;
        exception.configOverrides = overrides;
        exception.notes = notes;
        exception.severity = severity;
        exception.addedDate = now;
        exception.testedVersion = u"eXoDOS v6"_s;
        list.append(exception);
    };
    add(u"eob1"_s, {u"Eye of the Beholder"_s}, EmulatorOverride::ece, {}, Severity::recommended,
        u"Eye of the Beholder games may have timing issues with DOSBox Staging. ECE recommended for authentic experience."_s);
    add(u"dune2"_s, {u"Dune II"_s, u"Dune 2"_s}, std::nullopt, {{u"cycles"_s, u"max"_s}}, Severity::optional,
        u"Dune 2 runs best with max CPU cycles. Some versions may need mouse sensitivity adjustment."_s);
    add(u"warcraft"_s, {u"WarCraft"_s, u"Warcraft"_s}, std::nullopt, {{u"cycles"_s, u"fixed 20000"_s}},
        Severity::recommended, u"WarCraft games can have timing issues. Fixed cycles may help with game speed."_s);
    add(u"wingcommander"_s, {u"Wing Commander"_s}, std::nullopt, {{u"cycles"_s, u"fixed 30000"_s}},
        Severity::recommended, u"Wing Commander games are timing sensitive. Fixed cycles recommended."_s);
    add(u"sierra-sci"_s,
        {u"King's Quest [IV-VII]"_s, u"Space Quest [IV-VI]"_s, u"Police Quest [2-4]"_s, u"Quest for Glory [II-IV]"_s,
         u"Leisure Suit Larry [2-7]"_s, u"Gabriel Knight"_s},
        EmulatorOverride::scummvm, {}, Severity::recommended,
        u"Sierra SCI games run better in ScummVM with save management and bug fixes."_s);
    add(u"lucasarts-scumm"_s,
        {u"Maniac Mansion"_s, u"Zak McKracken"_s, u"Indiana Jones and the Last Crusade"_s,
         u"Indiana Jones and the Fate of Atlantis"_s, u"Loom"_s, u"The Secret of Monkey Island"_s, u"Monkey Island 2"_s,
         u"Day of the Tentacle"_s, u"Sam & Max"_s, u"Full Throttle"_s, u"The Dig"_s},
        EmulatorOverride::scummvm, {}, Severity::recommended,
        u"LucasArts SCUMM games run better in ScummVM with enhanced features."_s);
    add(u"dosbox-x-printer"_s, {u"Print Shop"_s, u"The Print Shop"_s, u"PrintMaster"_s}, EmulatorOverride::dosboxX, {},
        Severity::critical, u"Printing software needs DOSBox-X for printer emulation support."_s);
    add(u"mt32-issues"_s, {u"Space Quest III"_s}, std::nullopt, {{u"mididevice"_s, u"fluidsynth"_s}}, Severity::info,
        u"Some games have MT-32 compatibility issues. FluidSynth may provide better results."_s);
    add(u"cdrom-games"_s, {u"The 7th Guest"_s, u"The 11th Hour"_s, u"Myst"_s, u"Phantasmagoria"_s}, std::nullopt,
        {{u"label"_s, u"CDROM"_s}}, Severity::info,
        u"Multi-disc game. Press %1 to swap discs when prompted."_s.arg(discSwapKeys));
    add(u"svga-games"_s, {u"Command & Conquer"_s, u"Red Alert"_s, u"Warcraft II"_s}, std::nullopt,
        {{u"machine"_s, u"svga_s3"_s}, {u"memsize"_s, u"16"_s}}, Severity::optional,
        u"SVGA games benefit from S3 graphics emulation and more memory."_s);
    return list;
}

/// One pattern of an exception, ready to be tested.
struct Pattern {
    QString text;
    std::optional<IcuPattern> expression; ///< none when the text is no regular expression

    bool fits(const QString &title) const {
        return (expression && expression->matches(title)) || title.contains(text, Qt::CaseInsensitive);
    }
};

} // namespace

struct GameExceptionsManager::Private {
    QList<GameException> exceptions;
    QList<GameException> customExceptions;
    QList<QList<Pattern>> patterns; ///< of `exceptions`, then of `customExceptions`

    void compile(const QList<GameException> &list) {
        for (const GameException &exception : list) {
            QList<Pattern> compiled;
            for (const QString &text : exception.patterns)
                compiled.append({text, IcuPattern::compile(text, IcuPattern::Case::Insensitive)});
            patterns.append(compiled);
        }
    }

    template<typename Function>
    void forEach(const QString &title, Function function) const {
        for (qsizetype i = 0; i < patterns.size(); ++i) {
            const GameException &exception =
                i < exceptions.size() ? exceptions[i] : customExceptions[i - exceptions.size()];
            if (std::any_of(patterns[i].cbegin(), patterns[i].cend(),
                            [&](const Pattern &pattern) { return pattern.fits(title); }))
                function(exception);
        }
    }
};

GameExceptionsManager::GameExceptionsManager(const Host &host) : d(std::make_unique<Private>()) {
    d->exceptions = builtInExceptions(host.clock.now(), host.paths.discSwapKeys());
    d->customExceptions = GameException::listFromJson(host.settings.value(Settings::customGameExceptions))
                              .value_or(QList<GameException>());
    d->compile(d->exceptions);
    d->compile(d->customExceptions);
}

GameExceptionsManager::GameExceptionsManager(GameExceptionsManager &&) noexcept = default;
GameExceptionsManager::~GameExceptionsManager() = default;

const QList<GameException> &GameExceptionsManager::exceptions() const {
    return d->exceptions;
}

const QList<GameException> &GameExceptionsManager::customExceptions() const {
    return d->customExceptions;
}

QList<GameException> GameExceptionsManager::getExceptions(const QString &title) const {
    QList<GameException> found;
    d->forEach(title, [&](const GameException &exception) { found.append(exception); });
    return found;
}

std::optional<EmulatorOverride> GameExceptionsManager::getEmulatorOverride(const QString &title) const {
    std::optional<EmulatorOverride> emulator;
    d->forEach(title, [&](const GameException &exception) {
        if (!emulator)
            emulator = exception.emulator;
    });
    return emulator;
}

QMap<QString, QString> GameExceptionsManager::getConfigOverrides(const QString &title) const {
    QMap<QString, QString> overrides;
    d->forEach(title, [&](const GameException &exception) { overrides.insert(exception.configOverrides); });
    return overrides;
}

QMap<QString, QString> GameExceptionsManager::configOverrideOrigins(const QString &title) const {
    QMap<QString, QString> origins;
    d->forEach(title, [&](const GameException &exception) {
        for (const QString &key : exception.configOverrides.keys())
            origins.insert(key, exception.id);
    });
    return origins;
}

} // namespace ludarium
