#include "Services/Dos/VariantDetector.h"

#include "Host/IcuPattern.h"

#include <array>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

struct Row {
    VariantType type;
    IcuPattern pattern;
    QString name;
};

const QList<Row> &rows() {
    static const QList<Row> list = [] {
        QList<Row> rows;
        VariantType type = VariantType::media;
        const auto add = [&](const char *pattern, const char *name) {
            rows.append({type, IcuPattern(QString::fromLatin1(pattern), IcuPattern::Case::Insensitive),
                         QString::fromLatin1(name)});
        };
        add(R"(\(Disk ?(\d+)\))", "Disk $1");
        add(R"(\(CD[- ]?(?:ROM|Version)?\))", "CD Version");
        add(R"(\(CD (\d+)\))", "CD $1");
        add(R"(\(Floppy[- ]?(?:Version)?\))", "Floppy Version");
        add(R"(\(DVD[- ]?(?:ROM|Version)?\))", "DVD Version");
        type = VariantType::audio;
        add(R"(\(Sound ?Blaster\))", "SoundBlaster");
        add(R"(\(SB\))", "SoundBlaster");
        add(R"(\(AdLib\))", "AdLib");
        add(R"(\(MT-?32\))", "MT-32");
        add(R"(\(Roland\))", "Roland");
        add(R"(\(GUS\))", "Gravis UltraSound");
        add(R"(\(Gravis\))", "Gravis UltraSound");
        add(R"(\(PC Speaker\))", "PC Speaker");
        add(R"(\(General MIDI\))", "General MIDI");
        type = VariantType::graphics;
        add(R"(\(VGA\))", "VGA");
        add(R"(\(SVGA\))", "SVGA");
        add(R"(\(EGA\))", "EGA");
        add(R"(\(CGA\))", "CGA");
        add(R"(\(MCGA\))", "MCGA");
        add(R"(\(Tandy\))", "Tandy");
        add(R"(\(Hercules\))", "Hercules");
        type = VariantType::language;
        add(R"(\(English\))", "English");
        add(R"(\(German\))", "German");
        add(R"(\(French\))", "French");
        add(R"(\(Spanish\))", "Spanish");
        add(R"(\(Italian\))", "Italian");
        add(R"(\(Multi-?[Ll]anguage\))", "Multi-Language");
        add(R"(\(Multi-?[Pp]latform\))", "Multi-Platform");
        type = VariantType::version;
        add(R"(\(v?(\d+\.\d+[a-z]?)\))", "Version $1");
        add(R"(\(Patched\))", "Patched");
        add(R"(\(Unpatched\))", "Unpatched");
        add(R"(\(Enhanced\))", "Enhanced");
        add(R"(\(Deluxe\))", "Deluxe");
        add(R"(\(Gold\))", "Gold Edition");
        add(R"(\(Special Edition\))", "Special Edition");
        add(R"(\(Director'?s Cut\))", "Director's Cut");
        add(R"(\(Talkie\))", "Talkie");
        return rows;
    }();
    return list;
}

QString platformName(const QString &platform) {
    if (platform == "ScummVM"_L1 || platform == "ScummVM SVN"_L1)
        return u"ScummVM"_s;
    if (platform.contains("dreamm"_L1, Qt::CaseInsensitive))
        return u"DREAMM"_s;
    return {};
}

} // namespace

const QList<VariantType> &variantTypes() {
    static const QList<VariantType> types{VariantType::media,    VariantType::audio,   VariantType::graphics,
                                          VariantType::language, VariantType::version, VariantType::platform,
                                          VariantType::other};
    return types;
}

QString variantTypeText(VariantType type) {
    switch (type) {
    case VariantType::media:
        return u"media"_s;
    case VariantType::audio:
        return u"audio"_s;
    case VariantType::graphics:
        return u"graphics"_s;
    case VariantType::language:
        return u"language"_s;
    case VariantType::version:
        return u"version"_s;
    case VariantType::platform:
        return u"platform"_s;
    case VariantType::other:
        return u"other"_s;
    }
    Q_UNREACHABLE();
}

std::optional<VariantType> variantTypeFromText(const QString &text) {
    for (const VariantType type : variantTypes())
        if (variantTypeText(type) == text)
            return type;
    return std::nullopt;
}

std::optional<GameVariant> VariantDetector::detectVariant(const GamePtr &game) {
    // Every pattern begins with a bracket, and few titles have one.
    if (game->title.contains(u'('))
        for (const Row &row : rows())
            if (const auto match = row.pattern.find(game->title)) {
                QString name = row.name;
                if (const QString number = match->groups.value(1); !number.isNull())
                    name.replace("$1"_L1, number);
                return GameVariant{game->id, game, row.type, name, match->groups.first()};
            }
    const QString platform = platformName(game->platform);
    if (platform.isEmpty())
        return std::nullopt;
    return GameVariant{game->id, game, VariantType::platform, platform, u""_s};
}

} // namespace ludarium
