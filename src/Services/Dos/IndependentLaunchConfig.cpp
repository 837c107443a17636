#include "Services/Dos/IndependentLaunchConfig.h"

#include "Host/AppLogger.h"
#include "Services/Dos/BatchBypass.h"
#include "Services/Dos/DiscImages.h"
#include "Services/Dos/DiskImage.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosNames.h"
#include "Services/Dos/ExecutableDetection.h"
#include "Services/Dos/GuestDrives.h"
#include "Services/Dos/ProgramPlace.h"

#include <QDir>
#include <QFile>
#include <array>

namespace ludarium {

namespace {

constexpr std::array programExtensions{"exe", "bat", "com", "EXE", "BAT", "COM"};

bool startsWithCall(const QByteArray &command) {
    return command.toLower().startsWith("call ");
}

/// The bytes of a name or path that the guest looks up on the host: those on disk when it is there.
QByteArray guestPath(const QString &path) {
    return QFile::encodeName(path);
}

/// The images of a floppy line whose paths have been made absolute.
QStringList floppyImagesOf(const QByteArray &line) {
    QStringList images;
    for (const QByteArray &word : guestArguments(line).mid(2)) {
        if (word.startsWith('-'))
            break;
        images.append(QFile::decodeName(QByteArray(word).replace("%%", "%")));
    }
    return images;
}

class Builder {
  public:
    Builder(const IndependentLaunchInput &input, FolderView &view)
        : m_input(input), m_view(view), m_version(input.version), m_gameName(lastPathComponent(input.gameDataFolder)),
          m_hasExecutable(!input.version.executable.trimmed().isEmpty()), m_command(parsedCommand(called())) {}

    IndependentLaunch build() {
        const AutoexecSplit original = splitAutoexec(m_input.baseConfig);
        decideMount();
        if (m_input.isMended && m_hasExecutable)
            m_place = findProgramPlace(m_view, m_command.program, cdFolder(), m_input.gameDataFolder, m_mountFolder);
        append("MOUNT C: " + quotedHostPath(m_place ? m_place->hardDisk : m_mountFolder));
        mountDiscs();
        mountFloppies(original);
        if (m_place && !floppyHoldsProgram()) {
            startFromPlace();
        } else {
            decideDrive();
            changeDrive();
            appendSetupCommands();
            if (m_hasExecutable)
                startProgram();
        }
        append("exit");

        IndependentLaunch result;
        result.text = original.kept + "\n[autoexec]\n" + m_lines.join('\n');
        result.mountedPaths = m_images + QStringList{m_place ? m_place->hardDisk : m_mountFolder};
        result.decisions = m_decisions;
        return result;
    }

  private:
    enum class Drive { hardDisk, cd };

    void append(const QByteArray &line) {
        m_lines.append(checkedText(line, QStringLiteral("A command of the launch configuration")));
    }
    void decide(const QString &subject, const QString &choice, const QString &reason) {
        m_decisions.append({subject, choice, reason});
    }

    /// What becomes C: and where on it the game runs.
    void decideMount() {
        const QString folder = m_input.gameDataFolder;
        const QString working = m_version.workingDirectory;
        if (m_version.mountAtGameLevel) {
            m_mountFolder = folder;
            m_cdPath = working;
            decide(QStringLiteral("mount"), m_mountFolder, QStringLiteral("the version puts C: at the game's folder"));
            return;
        }
        m_mountFolder = parentPath(folder);
        m_cdPath = m_gameName;
        QString reason = QStringLiteral("C: is the folder above the game's");
        if (!working.isEmpty()) {
            if (m_view.isDirectory(m_view.resolve(folder, working))) {
                m_cdPath = m_gameName + u'/' + working;
            } else if (working == m_gameName) {
                // The folder given is the version's own already: its game's folder has to be on C: too.
                m_cdPath = lastPathComponent(m_mountFolder) + u'/' + working;
                m_mountFolder = parentPath(m_mountFolder);
                reason = QStringLiteral("C: is the folder above the game's, the version's folder being given");
            }
        }
        decide(QStringLiteral("mount"), m_mountFolder, reason);
    }

    QString cdFolder() { return m_cdPath.isEmpty() ? QString() : m_view.resolve(m_mountFolder, m_cdPath); }

    void mountDiscs() {
        const auto [images, source] =
            findLaunchDiscs(m_view, {m_mountFolder, m_cdPath, m_input.gameDataFolder, m_input.collection});
        if (images.isEmpty())
            return;
        m_images = images;
        QByteArray line = "IMGMOUNT D:";
        QStringList names;
        for (const QString &image : images) {
            line += ' ' + quotedHostPath(image);
            names.append(lastPathComponent(image));
        }
        append(line + " -t cdrom");
        decide(QStringLiteral("discs"), names.join(QStringLiteral(", ")),
               QStringLiteral("found in the %1").arg(source));
        if (images.size() < 2)
            return;
        append("@echo.");
        append("@echo This game has " + QByteArray::number(images.size()) + " discs. Press " +
               dosText(m_input.discSwapKeys) + " to swap discs when prompted.");
        append("@echo.");
        append("@pause");
    }

    void mountFloppies(const AutoexecSplit &original) {
        QByteArray floppy;
        for (const QByteArray &line : trimmedLines(original.autoexec)) {
            if (isFloppyLine(line))
                floppy = line;
            const QByteArray lower = line.toLower();
            if (lower == "a:" || lower == "@a:")
                Log::info(QStringLiteral("   Game runs from floppy drive (A:)"));
        }
        if (floppy.isEmpty())
            return;
        m_floppy = true;
        const QByteArray line =
            absoluteFloppyLine(m_view, floppy, m_input.collection, parentPath(m_input.gameDataFolder));
        m_floppyImages = floppyImagesOf(line);
        if (!m_input.isMended || !m_input.oneFloppyImage || m_floppyImages.size() < 2) {
            append(line);
            decide(QStringLiteral("floppy"), QStringLiteral("A:"),
                   QStringLiteral("the game's own configuration mounts floppy images"));
            return;
        }
        append("imgmount a " + quotedHostPath(m_floppyImages.constFirst()) + " -t floppy");
        QStringList others;
        for (const QString &image : m_floppyImages.mid(1))
            others.append(lastPathComponent(image));
        append("@echo This game has " + QByteArray::number(m_floppyImages.size()) +
               " floppy disks, of which this DOSBox can use the first. The others: " +
               dosText(others.join(QStringLiteral(", ")))
                   .replace('%', "%%")
                   .replace('|', '_')
                   .replace('>', '_')
                   .replace('<', '_'));
        decide(
            QStringLiteral("floppy"), lastPathComponent(m_floppyImages.constFirst()),
            QStringLiteral("this DOSBox mounts one floppy image; left out: %1").arg(others.join(QStringLiteral(", "))));
    }

    /// Whether the program is on the floppy in A: rather than among the game's files.
    bool floppyHoldsProgram() {
        if (m_floppyImages.isEmpty())
            return false;
        const auto image = DiskImage::openDisk(m_floppyImages.constFirst());
        if (!image)
            return false;
        const QByteArray name = dosPiece(dosText(m_command.program)).value_or(QByteArray());
        for (const char *ending : {"", ".COM", ".EXE", ".BAT"})
            if (image->find({name + ending}) == GuestEntry::file)
                return true;
        return false;
    }

    /// From where the program lies, whatever the game's configuration and the version say about it.
    void startFromPlace() {
        append("C:");
        if (!m_place->folder.isEmpty())
            append("cd " + QByteArray(m_place->folder).replace("%", "%%"));
        appendSetupCommands();
        QByteArray command = QByteArray(m_place->program).replace("%", "%%");
        if (!m_command.loader.isEmpty())
            command.prepend(dosText(m_command.loader) + ' ');
        if (!m_command.arguments.isEmpty())
            command += ' ' + dosText(m_command.arguments);
        append("call " + command);
        decide(QStringLiteral("program"), hostNameFrom(m_place->program),
               QStringLiteral("started from where it lies: the usual way does not lead there"));
    }

    /// The version's command. The "@" that keeps a batch file from showing it has no meaning behind a "call".
    QString command() const {
        const QString text = m_version.executable.trimmed();
        return text.startsWith(u'@') ? text.mid(1).trimmed() : text;
    }

    /// The same without its "call".
    QString called() const {
        const QString text = command();
        return text.startsWith(QStringLiteral("call "), Qt::CaseInsensitive) ? text.mid(5).trimmed() : text;
    }

    /// The program's name alone, without what starts it and without its arguments.
    QString token() const { return m_command.program; }

    /// Whether `folder`/`name` is a folder that holds a program of its own name.
    bool isExecutableFolder(const QString &folder, const QString &name) {
        const QString inside = m_view.resolve(folder, name);
        if (!m_view.isDirectory(inside))
            return false;
        for (const char *extension : programExtensions)
            if (!m_view.find(inside, lastPathComponent(name) + u'.' + QLatin1StringView(extension)).isNull())
                return true;
        return false;
    }

    bool listsProgram(const QString &folder, const QString &name) {
        for (const QLatin1StringView ending :
             {QLatin1StringView(""), QLatin1StringView(".exe"), QLatin1StringView(".bat"), QLatin1StringView(".com")})
            if (!m_view.find(folder, name + ending).isNull() || m_view.isFile(m_view.resolve(folder, name + ending)))
                return true;
        return false;
    }

    void decideDrive() {
        if (!m_hasExecutable)
            return;
        const QString name = token();
        if (m_images.isEmpty()) {
            m_executableFolder = isExecutableFolder(m_mountFolder, name);
            return;
        }
        const QString inside = cdFolder();
        const QString searched = inside.isNull() ? m_mountFolder : inside;
        QString reason;
        if (!m_view.isFile(m_view.resolve(searched, name)) && isExecutableFolder(searched, name)) {
            m_executableFolder = true;
            reason = QStringLiteral("a folder of that name holds the program");
        } else if (listsProgram(searched, name)) {
            reason = QStringLiteral("the program lies in %1").arg(lastPathComponent(searched));
        } else if (isDiscOrDiskFolder(m_version.workingDirectory) && searched != m_input.gameDataFolder &&
                   listsProgram(m_input.gameDataFolder, name)) {
            m_executableInParent = true;
            reason = QStringLiteral("the program lies in the game's folder, above the disc's");
        } else {
            m_drive = Drive::cd;
            reason = QStringLiteral("the program is not among the game's files");
        }
        decide(QStringLiteral("drive"), m_drive == Drive::cd ? QStringLiteral("D:") : QStringLiteral("C:"), reason);
    }

    void changeDrive() {
        if (m_floppy) {
            append("A:");
        } else if (m_drive == Drive::cd) {
            append("D:");
            if (!m_version.workingDirectory.isEmpty() && !isDiscFolder(m_version.workingDirectory))
                append("cd " + folderText(m_version.workingDirectory));
        } else {
            append("C:");
            append("cd " + (m_executableInParent ? guestPath(m_gameName) : folderText(m_cdPath)));
            if (m_executableFolder)
                append("cd " + folderText(token()));
        }
    }

    /// A folder to change to: the bytes on disk when it names one there, otherwise those of a DOS text.
    QByteArray folderText(const QString &path) {
        return m_view.resolve(m_mountFolder, path).isNull() && m_view.resolve(m_input.gameDataFolder, path).isNull()
                   ? dosText(path)
                   : guestPath(path);
    }

    void appendSetupCommands() {
        // At the other level the deletions among them have been done on the real files.
        if (m_version.mountAtGameLevel && m_version.setupCommands)
            for (const QString &command : *m_version.setupCommands)
                append(dosText(command));
    }

    void startProgram() {
        const QString given = this->command();
        QByteArray command = dosText(given);
        if (startsWithCall(command))
            enterBatchFolder(given.mid(5).trimmed());
        else
            command = resolvedCommand(given);
        command = withoutBatch(command);
        append(startsWithCall(command) ? command : "call " + command);
        decide(QStringLiteral("program"), hostNameFrom(command), m_programReason);
    }

    /// A "call" whose batch file lies in a subfolder is made from there.
    void enterBatchFolder(const QString &target) {
        const QString folder = m_input.gameDataFolder;
        if (!m_view.canList(folder)) {
            Log::warning(QStringLiteral("   Cannot list %1 to find the batch file '%2'").arg(folder, target));
            return;
        }
        const bool isBatch = target.endsWith(QStringLiteral(".bat"), Qt::CaseInsensitive);
        const QStringList wanted{target, isBatch ? target : target + QStringLiteral(".BAT"),
                                 target + QStringLiteral(".bat")};
        const auto holds = [&](const QString &searched) {
            for (const QString &name : m_view.names(searched))
                for (const QString &want : wanted)
                    if (name.compare(want, Qt::CaseInsensitive) == 0 && !m_view.isDirectory(childPath(searched, name)))
                        return true;
            return false;
        };
        if (holds(folder))
            return;
        for (const QString &subfolder : m_view.names(folder)) {
            const QString searched = childPath(folder, subfolder);
            if (!m_view.isDirectory(searched) || !holds(searched))
                continue;
            if (!m_floppy && m_drive == Drive::cd) {
                m_lines.removeAll("D:");
                append("C:");
                append("cd " + guestPath(m_gameName));
            }
            append("cd " + guestPath(subfolder));
            m_programReason = QStringLiteral("the batch file lies in %1").arg(subfolder);
            return;
        }
    }

    QByteArray resolvedCommand(const QString &given) {
        const auto resolved =
            resolveCommandCase(m_view, m_command.program, m_input.gameDataFolder, m_version.workingDirectory);
        if (!resolved)
            return dosText(given);
        if (!resolved->subfolder.isNull())
            append("cd " + guestPath(resolved->subfolder));
        m_programReason = QStringLiteral("spelled as on disk");
        const QString &loader = m_command.loader, &arguments = m_command.arguments;
        return (loader.isEmpty() ? QByteArray() : dosText(loader) + ' ') + guestPath(resolved->name) +
               (arguments.isEmpty() ? QByteArray() : ' ' + dosText(arguments));
    }

    /// What a batch file starts, when it first changes to a folder that is the game's root only on the machine that it
    /// was written for. Any other command comes back unchanged.
    QByteArray withoutBatch(const QByteArray &command) {
        const QByteArray name = command.left(command.indexOf(' ') < 0 ? command.size() : command.indexOf(' '));
        if (!name.toLower().endsWith(".bat"))
            return command;
        const QString inside = m_view.resolve(m_input.gameDataFolder, m_version.workingDirectory);
        const QString folder = inside.isNull() ? m_input.gameDataFolder : inside;
        const auto batch = m_view.read(m_view.resolve(folder, hostNameFrom(name)));
        if (!batch)
            return command;
        const auto bypass = bypassOf(*batch, childPath(m_mountFolder, m_gameName), m_view);
        if (!bypass)
            return command;
        for (qsizetype i = m_lines.size() - 1; i >= 0; --i)
            if (m_lines[i].toLower().startsWith("cd ")) {
                m_lines[i] = "cd " + guestPath(m_gameName) + '/' + bypass->folder;
                break;
            }
        m_programReason = QStringLiteral("what %1 starts, from the folder that it means").arg(hostNameFrom(name));
        return bypass->command;
    }

    const IndependentLaunchInput &m_input;
    FolderView &m_view;
    const GameVersionOption &m_version;
    const QString m_gameName;
    const bool m_hasExecutable;
    const GameCommand m_command;

    std::optional<ProgramPlace> m_place; ///< where the program is started from, when the usual way is left
    QStringList m_floppyImages;
    QString m_mountFolder;
    QString m_cdPath; ///< below the mount folder, with "/"
    Drive m_drive = Drive::hardDisk;
    QStringList m_images;
    bool m_floppy = false;
    bool m_executableFolder = false;
    bool m_executableInParent = false;
    QByteArrayList m_lines;
    QString m_programReason = QStringLiteral("as the version names it");
    QList<LaunchDecision> m_decisions;
};

} // namespace

IndependentLaunch createIndependentLaunchConfig(const IndependentLaunchInput &input, FolderView &view) {
    return Builder(input, view).build();
}

} // namespace ludarium
