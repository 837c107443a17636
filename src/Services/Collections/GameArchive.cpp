#include "Services/Collections/GameArchive.h"

#include "Host/AppLogger.h"
#include "Host/SafeFiles.h"
#include "Services/Collections/ArchiveListing.h"
#include "Services/Collections/CollectionLayout.h"
#include "Services/Collections/ExoPackSetupManager.h"
#include "Services/Collections/TitleMatching.h"

#include <QFileInfo>
#include <QSet>
#include <algorithm>

namespace ludarium::GameArchive {

using namespace Qt::StringLiterals;

namespace {

struct Replacement {
    QString from;
    QString to;
};

/// What the collections' archives have in place of characters that no file name can hold.
QString cleanedTitle(QString title) {
    static const Replacement table[]{{u":"_s, u" -"_s}, {u" & "_s, u" and "_s}, {u","_s, {}},     {u"/"_s, u"-"_s},
                                     {u"?"_s, {}},      {u"*"_s, {}},           {u"\""_s, u"'"_s}};
    for (const Replacement &row : table)
        title.replace(row.from, row.to);
    return title;
}

/// With the first numeral of the table that occurs in Arabic digits; null when there is none.
QString withArabicNumeral(const QString &title) {
    static const Replacement table[]{
        {u" VIII "_s, u" 8 "_s}, {u" VIII"_s, u" 8"_s}, {u" VII "_s, u" 7 "_s}, {u" VII"_s, u" 7"_s},
        {u" VI "_s, u" 6 "_s},   {u" VI"_s, u" 6"_s},   {u" IV "_s, u" 4 "_s},  {u" IV"_s, u" 4"_s},
        {u" IX "_s, u" 9 "_s},   {u" IX"_s, u" 9"_s},   {u" V "_s, u" 5 "_s},   {u" V"_s, u" 5"_s},
        {u" III "_s, u" 3 "_s},  {u" III"_s, u" 3"_s},  {u" II "_s, u" 2 "_s},  {u" II"_s, u" 2"_s}};
    for (const Replacement &row : table)
        if (title.contains(row.from))
            return QString(title).replace(row.from, row.to);
    return {};
}

/// "Foo, The" for "The Foo"; null without an article.
QString moveArticleToEnd(const QString &title) {
    for (const QString &article : {u"The"_s, u"A"_s, u"An"_s})
        if (title.startsWith(article + u' '))
            return title.sliced(article.size() + 1).trimmed() + u", "_s + article;
    return {};
}

/// Number words as digits, without a leading article. A word that begins like a numeral is taken for one.
QString normalizeForMatching(QString title) {
    if (title.startsWith("the "_L1, Qt::CaseInsensitive))
        title = title.sliced(4);
    // Longer ones before those that they begin with.
    static const Replacement table[]{
        {u"Three"_s, u"3"_s}, {u"Seven"_s, u"7"_s}, {u"Eight"_s, u"8"_s}, {u"Four"_s, u"4"_s}, {u"Five"_s, u"5"_s},
        {u"Nine"_s, u"9"_s},  {u"One"_s, u"1"_s},   {u"Two"_s, u"2"_s},   {u"Six"_s, u"6"_s},  {u"Ten"_s, u"10"_s},
        {u"III"_s, u"3"_s},   {u"II"_s, u"2"_s},    {u"IV"_s, u"4"_s},    {u"V"_s, u"5"_s},    {u"I"_s, u"1"_s}};
    for (const auto &[word, digit] : table) {
        title.replace(u' ' + word + u' ', u' ' + digit + u' ');
        title.replace(u' ' + word, u' ' + digit);
        title.replace(u':' + word, u' ' + digit);
    }
    title.remove(u':');
    title.replace(u" - "_s, u" "_s);
    title.replace(u"  "_s, u" "_s);
    while (title.startsWith(u' '))
        title.remove(0, 1);
    while (title.endsWith(u' '))
        title.chop(1);
    return title;
}

/// Without a parenthesis at the end that is no year; null when there is none.
QString withoutEdition(const QString &title) {
    const QString rest = TitleMatching::withoutTrailingParenthesis(title);
    if (rest == title || TitleMatching::withoutTrailingYear(title) != title)
        return {};
    const QString kept = rest.trimmed();
    return kept.isEmpty() ? QString() : kept;
}

/// Series whose first game has a number in the name of its archive, though not in its title.
const QList<Replacement> &numberedSeries() {
    static const QList<Replacement> list{{u"leisure suit larry"_s, u"leisure suit larry 1"_s},
                                         {u"space quest"_s, u"space quest 1"_s},
                                         {u"king's quest"_s, u"king's quest 1"_s},
                                         {u"police quest"_s, u"police quest 1"_s},
                                         {u"quest for glory"_s, u"quest for glory 1"_s},
                                         {u"monkey island"_s, u"monkey island 1"_s},
                                         {u"gabriel knight"_s, u"gabriel knight 1"_s},
                                         {u"zork"_s, u"zork 1"_s},
                                         {u"ultima"_s, u"ultima 1"_s},
                                         {u"wizardry"_s, u"wizardry 1"_s}};
    return list;
}

/// The forms of a game's title that archives are named by. What does not exist is null.
struct TitleForms {
    QString title;
    QString titleYear;
    QString roman;
    QString romanYear;
    QString article;
    QString articleYear;
    QString normal;
    QString base;     ///< up to the first " - "
    QString subtitle; ///< behind it
    QString edition;  ///< without the edition

    explicit TitleForms(const Game &game)
        : title(cleanedTitle(game.title)), roman(withArabicNumeral(title)), article(moveArticleToEnd(title)),
          normal(normalizeForMatching(game.title)), edition(withoutEdition(title)) {
        const QString year = game.releaseYear ? u" (%1)"_s.arg(*game.releaseYear) : QString();
        titleYear = title + year;
        if (!roman.isNull())
            romanYear = roman + year;
        if (!article.isNull() && game.releaseYear)
            articleYear = article + year;
        const qsizetype cut = title.indexOf(u" - "_s);
        base = cut < 0 ? title : title.first(cut);
        if (cut >= 0)
            subtitle = title.sliced(cut + 3);
    }

    QStringList exactNames(const QString &folder) const {
        QStringList names;
        for (const QString &name : {articleYear, titleYear, title, folder, romanYear, roman, article})
            if (!name.isEmpty())
                names << name + u".zip"_s << name + u".7z"_s;
        return names;
    }

    int score(const QString &name) const {
        const QString lower = name.toLower();
        if (name.startsWith(title + u" ("_s) || name.startsWith(title + u'.'))
            return 100;
        if (!article.isNull() && name.startsWith(article + u" ("_s))
            return 90;
        if (name.startsWith(titleYear + u'.'))
            return 95;
        if (name.startsWith(normal + u' '))
            return 85;
        if (name.startsWith(base + u' ') || name.startsWith(base + u'('))
            return !subtitle.isEmpty() && lower.contains(subtitle.toLower()) ? 80 : 10;
        if (!edition.isNull() && lower.startsWith(edition.toLower() + u' '))
            return 65;
        if (!subtitle.isNull()) {
            const QString text = subtitle.toLower();
            return lower.startsWith(text + u" ("_s) || lower.startsWith(text + u'.') ? 75 : 0;
        }
        const QString lowerTitle = title.toLower();
        for (const auto &[series, first] : numberedSeries()) {
            if (!lowerTitle.startsWith(series) || !lower.startsWith(first))
                continue;
            const QString rest = lowerTitle.sliced(series.size()).trimmed();
            if (!rest.isEmpty() && lower.contains(rest.left(15)))
                return 70;
        }
        return 0;
    }
};

/// The name of the game's folder as installing takes it.
QString folderName(const QString &configurationPath) {
    const QStringList pieces = pathComponents(configurationPath);
    if (pieces.isEmpty())
        return u"unknown"_s;
    for (qsizetype i = 0; i + 1 < pieces.size(); ++i)
        if (pieces[i].startsWith(u'!'))
            return pieces[i + 1];
    if (pieces.size() >= 2 && !pieces[pieces.size() - 2].contains(u'.'))
        return pieces[pieces.size() - 2];
    return pieces.last();
}

QString scummVMFolder(const QString &configurationPath) {
    for (const QString &piece : pathComponents(configurationPath))
        if (piece.startsWith("eXoScummVM"_L1) && isSafeName(piece))
            return piece;
    return u"eXoScummVM"_s;
}

/// Relative to the collection.
QString archiveFolder(const Game &game) {
    const QString &platform = game.platform;
    if (platform == "ScummVM"_L1 || platform == "ScummVM SVN"_L1)
        return u"eXo/"_s + scummVMFolder(game.configurationPath);
    if (game.isDREAMMGame())
        return u"eXo/eXoDREAMM"_s;
    if (platform == "Windows 3x"_L1 || platform == "Windows 3.x"_L1)
        return u"eXo/eXoWin3x"_s;
    if (platform == "Windows 9x"_L1 || platform == "Windows 9.x"_L1)
        return game.releaseYear ? u"eXo/eXoWin9x/%1"_s.arg(*game.releaseYear) : u"eXo/eXoWin9x"_s;
    if (platform == "Apple IIGS"_L1)
        return u"eXo/eXoAppleIIGS"_s;
    return u"eXo/eXoDOS"_s;
}

/// The files of a folder with one of the names that archives of the game have, the best first.
QStringList exactCandidates(const TitleForms &forms, const QString &gameFolder, const QString &folder) {
    QStringList paths;
    for (const QString &name : forms.exactNames(gameFolder))
        if (isSafeName(name) && QFileInfo::exists(folder + u'/' + name))
            paths << folder + u'/' + name;
    return paths;
}

/// The archives of a folder whose names come near, the nearest first.
QStringList looseCandidates(const TitleForms &forms, const QString &folder) {
    struct Scored {
        QString name;
        int score;
    };
    QList<Scored> found;
    for (const QString &name : listFolder(folder).value_or(QStringList())) {
        if (!name.endsWith(".zip"_L1) && !name.endsWith(".7z"_L1))
            continue;
        if (const int score = forms.score(name); score > 0)
            found.append({name, score});
    }
    std::stable_sort(found.begin(), found.end(), [](const Scored &a, const Scored &b) { return a.score > b.score; });
    QStringList paths;
    for (const Scored &file : found)
        paths << folder + u'/' + file.name;
    return paths;
}

/// Where archives of the game may lie besides the folder that installing takes them from.
QStringList furtherFolders(const Game &game, const QString &folder) {
    if (folder == "eXo/eXoDOS"_L1)
        return {u"eXoDOS"_s, u"DOWNLOAD"_s};
    if (folder.startsWith("eXo/eXoScummVM"_L1) && folder != "eXo/eXoScummVM"_L1)
        return {u"eXo/eXoScummVM"_s};
    if (folder.startsWith("eXo/eXoWin9x"_L1) && game.releaseYear)
        return {u"eXo/eXoWin9x"_s};
    return {};
}

bool isLite(const QString &collection) {
    if (QFileInfo::exists(collection + u'/' + CollectionLayout::aria + "/index.txt"_L1))
        return true;
    const SetupStatus status = ExoPackSetupManager().getSetupStatus(collection);
    return std::any_of(status.collections.begin(), status.collections.end(),
                       [](const CollectionSetupStatus &set) { return set.hasXOMetadata; });
}

/// Why a game whose folder is `folder` cannot come back from this archive; empty when it can.
QString problemOf(const QString &archive, const QString &folder, bool lite) {
    const QString real = QFileInfo(archive).canonicalFilePath();
    if (real.isEmpty())
        return u"leads nowhere"_s;
    const QString doomed = QFileInfo(folder).canonicalFilePath();
    if (!doomed.isEmpty() && (real + u'/').startsWith(doomed + u'/'))
        return u"lies in the folder itself"_s;
    if (QFileInfo::exists(archive + ".aria2"_L1))
        return u"is still being downloaded"_s;
    if (lite && QFileInfo(real).size() <= CollectionLayout::maxPlaceholderSize)
        return u"only holds the place of one"_s;
    const ArchiveListing listing = listArchive(real);
    if (!listing.problem.isEmpty())
        return listing.problem;
    const QString name = folder.sliced(folder.lastIndexOf(u'/') + 1);
    return listing.folders.contains(name.toCaseFolded()) ? QString() : u"holds no folder \"%1\""_s.arg(name);
}

} // namespace

Proof proofOfCopy(const Game &game, const QString &folder, const QString &collection) {
    const TitleForms forms(game);
    const QString gameFolder = folderName(game.configurationPath);
    const QString ownFolder = archiveFolder(game);
    const bool lite = isLite(collection);
    Proof proof;
    QSet<QString> seen;
    const auto look = [&](const QStringList &archives) {
        for (const QString &archive : archives) {
            if (seen.contains(archive))
                continue;
            seen.insert(archive);
            const QString problem = problemOf(archive, folder, lite);
            if (problem.isEmpty()) {
                proof = {archive, {}};
                return true;
            }
            Log::info(u"%1 is no copy of %2: it %3"_s.arg(archive, folder, problem));
            // The nearest name tells the user most.
            if (proof.problem.isEmpty())
                proof.problem = u"its archive %1 %2"_s.arg(archive.sliced(archive.lastIndexOf(u'/') + 1), problem);
        }
        return false;
    };
    const QStringList places = QStringList(ownFolder) + furtherFolders(game, ownFolder);
    // Listing whole folders is for games that have none of the usual names.
    for (const QString &place : places)
        if (look(exactCandidates(forms, gameFolder, collection + u'/' + place)))
            return proof;
    for (const QString &place : places)
        if (look(looseCandidates(forms, collection + u'/' + place)))
            return proof;
    if (proof.problem.isEmpty())
        proof.problem = u"it has no archive"_s;
    return proof;
}

} // namespace ludarium::GameArchive
