#include "Services/Dos/GuestDrives.h"

#include "Services/Dos/CueSheet.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosNames.h"

#include <QDir>
#include <QFile>
#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

/// The value behind a switch, which is taken out of the words.
QByteArray takeOption(QByteArrayList &words, const char *name) {
    for (qsizetype i = 0; i < words.size(); ++i)
        if (words[i].toLower() == name) {
            words.removeAt(i);
            return i < words.size() ? words.takeAt(i) : QByteArray();
        }
    return {};
}

/// "c" and "c:" name a drive; 0 for anything else.
char driveOf(const QByteArray &word) {
    const char letter = word.isEmpty() ? '\0' : QByteArray(1, word[0]).toUpper()[0];
    const bool isDrive = letter >= 'A' && letter <= 'Y' && (word.size() == 1 || (word.size() == 2 && word[1] == ':'));
    return isDrive ? letter : '\0';
}

} // namespace

QByteArrayList guestArguments(const QByteArray &line) {
    QByteArrayList words;
    QByteArray word;
    bool isQuoted = false, isWord = false;
    for (const char c : line) {
        if (c == '"') {
            isQuoted = !isQuoted;
            isWord = true;
        } else if ((c == ' ' || c == '\t') && !isQuoted) {
            if (isWord)
                words.append(word);
            word.clear();
            isWord = false;
        } else {
            word += c;
            isWord = true;
        }
    }
    if (isWord)
        words.append(word);
    return words;
}

GuestDrives::GuestDrives(FolderView &view, DosBoxFamily family, QString workingDirectory)
    : m_view(view), m_family(family), m_workingDirectory(std::move(workingDirectory)) {}

QString GuestDrives::hostPath(const QByteArray &text) {
    QString path = QFile::decodeName(text);
    if (path.startsWith("~/"_L1))
        path = QDir::homePath() + path.mid(1);
    const auto absolute = [&](const QString &p) {
        return QDir::cleanPath(p.startsWith(u'/') ? p : childPath(m_workingDirectory, p));
    };
    if (path.isEmpty())
        return {};
    if (const QString found = absolute(path); m_view.exists(found))
        return found;
    if (m_family == DosBoxFamily::vanilla || m_family == DosBoxFamily::svn)
        return {};
    QString base = u"/"_s;
    for (const QString &piece : absolute(path.replace(u'\\', u'/')).split(u'/', Qt::SkipEmptyParts)) {
        const QString exact = childPath(base, piece);
        const QString found = m_view.exists(exact) ? piece : m_view.find(base, piece);
        if (found.isNull())
            return {};
        base = childPath(base, found);
    }
    return base;
}

QString GuestDrives::hostFile(const QByteArray &text) {
    if (const QString path = hostPath(text); !path.isNull())
        return path;
    const Found found = find(text);
    return found.entry == GuestEntry::file ? found.hostPath : QString();
}

void GuestDrives::mount(const QByteArray &arguments) {
    QByteArrayList words = guestArguments(arguments);
    for (const char *option : {"-t", "-label", "-size", "-freesize", "-usecd", "-z", "-o"})
        takeOption(words, option);
    const bool isUnmount = words.removeIf([](const QByteArray &word) { return word.toLower() == "-u"; }) > 0;
    words.removeIf([](const QByteArray &word) { return word.startsWith('-'); });
    const char letter = driveOf(words.value(0));
    if (letter == '\0')
        return;
    if (isUnmount) {
        m_drives.erase(letter);
        return;
    }
    const QString folder = hostPath(words.value(1));
    if (!isMounted(letter) && m_view.isDirectory(folder))
        m_drives[letter].folder = folder;
}

void GuestDrives::mountImage(const QByteArray &arguments) {
    QByteArrayList words = guestArguments(arguments);
    QByteArray type = takeOption(words, "-t").toLower();
    QByteArray fileSystem = takeOption(words, "-fs").toLower();
    takeOption(words, "-size");
    words.removeIf([](const QByteArray &word) { return word.startsWith('-'); });
    const char letter = driveOf(words.value(0));
    if (letter == '\0' || isMounted(letter) || words.size() < 2)
        return;
    const bool isDisc = type == "iso" || type == "cdrom" || fileSystem == "iso";
    QStringList images;
    for (const QByteArray &word : words.mid(1)) {
        const QString image = hostFile(word);
        if (!m_view.isFile(image))
            return;
        images.append(image);
    }
    if (!isDisc && images.size() > 1 && capabilitiesOf(m_family).oneFloppyImage)
        return;
    // A sheet whose file is gone mounts nothing.
    if (isDisc && images.constFirst().endsWith(".cue"_L1, Qt::CaseInsensitive))
        if (const auto track = firstDataTrack(m_view, images.constFirst()); track && track->path.isNull())
            return;
    m_drives[letter].image =
        isDisc ? DiskImage::openDisc(m_view, images.constFirst()) : DiskImage::openDisk(images.constFirst());
}

bool GuestDrives::setDrive(char letter) {
    if (letter != 'Z' && !isMounted(letter))
        return false;
    m_current = letter;
    return true;
}

bool GuestDrives::changeFolder(const QByteArray &path) {
    const auto parsed = parse(path);
    if (!parsed || parsed->drive == 'Z')
        return false;
    const Found found = find(*parsed);
    if (found.isKnown && found.entry != GuestEntry::folder)
        return false;
    m_drives[parsed->drive].current = parsed->pieces;
    return true;
}

std::optional<GuestDrives::Path> GuestDrives::parse(const QByteArray &path) const {
    QByteArray text = path;
    text.replace('/', '\\');
    Path result{m_current, {}};
    if (text.size() > 1 && text[1] == ':') {
        result.drive = text.left(1).toUpper()[0];
        text.remove(0, 2);
    }
    const auto drive = m_drives.find(result.drive);
    if (drive == m_drives.end() && result.drive != 'Z')
        return std::nullopt;
    if (!text.startsWith('\\') && drive != m_drives.end())
        result.pieces = drive->second.current;
    for (const QByteArray &piece : text.split('\\')) {
        if (piece.isEmpty() || piece == ".")
            continue;
        if (piece.count('.') == piece.size()) {
            for (qsizetype up = 1; up < piece.size() && !result.pieces.isEmpty(); ++up)
                result.pieces.removeLast();
            continue;
        }
        const auto name = dosPiece(piece);
        if (!name)
            return std::nullopt;
        if (!name->isEmpty())
            result.pieces.append(*name);
    }
    return result;
}

const QHash<QByteArray, QString> &GuestDrives::names(const QString &folder) {
    const auto known = m_names.constFind(folder);
    return known != m_names.constEnd() ? *known : *m_names.insert(folder, guestNames(m_view.names(folder)));
}

GuestDrives::Found GuestDrives::find(const Path &path) {
    Found result;
    result.guestPath = QByteArray(1, path.drive) + ":\\" + path.pieces.join('\\');
    const auto drive = m_drives.find(path.drive);
    if (drive == m_drives.end())
        return result;
    if (drive->second.folder.isNull()) {
        result.isKnown = drive->second.image != nullptr;
        if (result.isKnown)
            result.entry = drive->second.image->find(path.pieces);
        return result;
    }
    QString host = drive->second.folder;
    for (const QByteArray &piece : path.pieces) {
        const QString name = names(host).value(piece);
        if (name.isNull())
            return result;
        host = childPath(host, name);
    }
    result.hostPath = host;
    if (m_view.isDirectory(host))
        result.entry = GuestEntry::folder;
    else if (m_view.exists(host))
        result.entry = GuestEntry::file;
    return result;
}

GuestDrives::Found GuestDrives::find(const QByteArray &path) {
    const auto parsed = parse(path);
    return parsed ? find(*parsed) : Found();
}

QByteArray GuestDrives::currentFolder() const {
    const auto drive = m_drives.find(m_current);
    return QByteArray(1, m_current) + ":\\" +
           (drive == m_drives.end() ? QByteArray() : drive->second.current.join('\\'));
}

} // namespace ludarium
