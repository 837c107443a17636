#include "Services/Dos/LaunchProof.h"

#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosNames.h"
#include "Services/Dos/GuestDrives.h"

#include <QHash>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

// A batch file that calls itself, or jumps back for ever, ends here.
constexpr int mostLines = 10000;
constexpr int deepestCall = 20;

bool isProgram(const QByteArray &path) {
    const QByteArray lower = path.toLower();
    return lower.endsWith(".com") || lower.endsWith(".exe") || lower.endsWith(".bat");
}

/// The line without what goes to or comes from another file or program.
QByteArray withoutRedirection(const QByteArray &line) {
    bool isQuoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && (line[i] == '>' || line[i] == '<' || line[i] == '|'))
            return line.left(i);
    }
    return line;
}

class Walk {
  public:
    Walk(const QString &workingDirectory, DosBoxFamily family, FolderView &view)
        : m_view(view), m_drives(view, family, workingDirectory) {
        m_variables.insert("PATH", "Z:\\");
        m_variables.insert("COMSPEC", "Z:\\COMMAND.COM");
    }

    LaunchProof prove(const QByteArray &configuration) {
        QByteArrayList lines = splitAutoexec(configuration).autoexec.split('\n');
        lines.removeIf([](const QByteArray &line) { return line.trimmed().startsWith('#'); });
        runBatch(lines, {}, 0);
        if (m_result)
            return *m_result;
        using Verdict = LaunchProof::Verdict;
        if (m_missing && m_changesFiles)
            return {Verdict::unknown, m_missing->program, u"the commands before it may put it there"_s};
        if (m_missing)
            return *m_missing;
        return {Verdict::missing, {}, u"no program is started"_s};
    }

  private:
    enum class Flow { next, leave, end };

    void conclude(LaunchProof::Verdict verdict, const QByteArray &program, const QString &detail) {
        m_result = LaunchProof{verdict, hostNameFrom(program), detail};
    }
    Flow cannotTell(const QByteArray &line, const QString &why) {
        conclude(LaunchProof::Verdict::unknown, line, why);
        return Flow::end;
    }

    /// The line with the arguments and variables that it names. A percent sign alone vanishes, as in DOSBox.
    QByteArray expanded(const QByteArray &line, const QByteArrayList &arguments) const {
        QByteArray result;
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (line[i] != '%') {
                result += line[i];
                continue;
            }
            const char next = i + 1 < line.size() ? line[i + 1] : '\0';
            if (next == '%') {
                result += '%';
                ++i;
            } else if (next >= '0' && next <= '9') {
                result += arguments.value(next - '0');
                ++i;
            } else if (const qsizetype end = line.indexOf('%', i + 1); end > 0) {
                result += m_variables.value(line.mid(i + 1, end - i - 1).toUpper());
                i = end;
            }
        }
        return result;
    }

    /// Runs the lines of a batch file; `leave` when it was left by "exit" or replaced by another one.
    Flow runBatch(const QByteArrayList &lines, const QByteArrayList &arguments, int depth) {
        if (depth > deepestCall)
            return cannotTell({}, u"the batch files call each other for ever"_s);
        for (qsizetype i = 0; i < lines.size(); ++i) {
            if (++m_lines > mostLines)
                return cannotTell({}, u"the batch files go round in a circle"_s);
            const QByteArray line = lines[i].trimmed();
            if (line.isEmpty() || line.startsWith(':'))
                continue;
            m_label.clear();
            const Flow flow = run(expanded(line, arguments), false, depth);
            if (flow != Flow::next)
                return flow;
            if (m_label.isEmpty())
                continue;
            const QByteArray label = m_label;
            i = -1;
            for (qsizetype j = 0; j < lines.size() && i < 0; ++j)
                if (const QByteArray at = lines[j].trimmed().toLower();
                    at.startsWith(':') && at.mid(1).simplified().split(' ').value(0) == label)
                    i = j;
            if (i < 0)
                return Flow::leave; // DOSBox ends a batch file whose label it does not find
        }
        return Flow::next;
    }

    Flow run(QByteArray line, bool isCalled, int depth) {
        line = withoutRedirection(line).trimmed();
        while (line.startsWith('@'))
            line = line.mid(1).trimmed();
        const QByteArray word = dosCommandWord(line);
        if (word.isEmpty())
            return Flow::next;
        const QByteArray rest = line.mid(word.size());
        if (word.size() <= 3 && word.size() >= 2 && word[1] == ':' && (word.size() == 2 || word[2] == '\\')) {
            m_drives.setDrive(word.toUpper()[0]);
            return Flow::next;
        }
        if (word == "cd" || word == "chdir") {
            m_drives.changeFolder(rest.trimmed());
            return Flow::next;
        }
        if (word == "call")
            return run(rest, true, depth);
        if (word == "lh" || word == "loadhigh")
            return run(rest, isCalled, depth);
        if (word == "exit")
            return Flow::end;
        if (word == "goto") {
            m_label = rest.trimmed().toLower();
            if (m_label.startsWith(':'))
                m_label.remove(0, 1);
            return Flow::next;
        }
        if (word == "if")
            return runCondition(rest.trimmed(), isCalled, depth);
        if (word == "for")
            return cannotTell(line, u"it is chosen by a \"for\""_s);
        if (word == "choice") {
            m_asksUser = true;
            return Flow::next;
        }
        if (word == "set" || word == "path") {
            setVariable(word == "path" ? "PATH=" + rest : rest);
            return Flow::next;
        }
        if (word == "copy" || word == "ren" || word == "rename" || word == "md" || word == "mkdir" || word == "move" ||
            word == "xcopy" || word == "subst") {
            m_changesFiles = true;
            return Flow::next;
        }
        if (isShellCommand(word) && !word.contains('.'))
            return Flow::next;
        return runProgram(line, isCalled, depth);
    }

    void setVariable(const QByteArray &text) {
        const qsizetype equals = text.indexOf('=');
        if (equals < 0)
            return;
        QByteArray value = text.mid(equals + 1).trimmed();
        if (value.startsWith('='))
            value.remove(0, 1);
        m_variables.insert(text.left(equals).trimmed().toUpper(), value);
    }

    Flow runCondition(QByteArray text, bool isCalled, int depth) {
        bool wanted = true;
        if (text.toLower().startsWith("not ")) {
            wanted = false;
            text = text.mid(4).trimmed();
        }
        const QByteArray lower = text.toLower();
        if (lower.startsWith("errorlevel"))
            return m_asksUser || m_runsLoader ? cannotTell(text, u"it depends on an answer or on an exit status"_s)
                   : wanted                   ? Flow::next // nothing ran yet, so the status is 0
                                              : run(text.mid(10).trimmed().mid(1).trimmed(), isCalled, depth);
        if (lower.startsWith("exist ")) {
            const QByteArray behind = text.mid(6).trimmed();
            const qsizetype blank = behind.indexOf(' ');
            const QByteArray name = behind.left(blank);
            if (blank < 0)
                return Flow::next;
            if (name.contains('*') || name.contains('?') || name.toLower().endsWith("\\nul"))
                return cannotTell(text, u"it depends on the files that are there"_s);
            const GuestDrives::Found found = m_drives.find(name);
            if (!found.isKnown)
                return cannotTell(text, u"it depends on the files of a drive that cannot be read"_s);
            return (found.entry == GuestEntry::file) == wanted ? run(behind.mid(blank + 1), isCalled, depth)
                                                               : Flow::next;
        }
        const qsizetype equals = text.indexOf("==");
        if (equals < 0)
            return Flow::next;
        const QByteArray left = text.left(equals).trimmed();
        const QByteArray behind = text.mid(equals + 2).trimmed();
        const qsizetype blank = behind.indexOf(' ');
        if (blank < 0)
            return Flow::next;
        return (left == behind.left(blank)) == wanted ? run(behind.mid(blank + 1), isCalled, depth) : Flow::next;
    }

    /// The file that a command's name stands for: in the current folder, then in those of the search path.
    GuestDrives::Found lookUp(const QByteArray &name) {
        GuestDrives::Found none;
        const auto tried = [&](const QByteArray &base) {
            for (const char *ending : {"", ".com", ".exe", ".bat"}) {
                const GuestDrives::Found found = m_drives.find(base + ending);
                if (!found.isKnown)
                    return found;
                if (found.entry == GuestEntry::file && isProgram(found.guestPath))
                    return found;
            }
            return GuestDrives::Found();
        };
        if (none = tried(name); !none.isKnown || none.entry == GuestEntry::file)
            return none;
        if (!name.contains('\\') && !name.contains(':'))
            for (QByteArray folder : m_variables.value("PATH").split(';')) {
                folder = folder.trimmed();
                if (folder.isEmpty() || folder.toUpper().startsWith("Z:"))
                    continue;
                none = tried(folder.endsWith('\\') ? folder + name : folder + '\\' + name);
                if (!none.isKnown || none.entry == GuestEntry::file)
                    return none;
            }
        return none;
    }

    Flow runProgram(const QByteArray &line, bool isCalled, int depth) {
        qsizetype end = 0;
        while (end < line.size() && line[end] != ' ' && line[end] != '/' && line[end] != '\t' && line[end] != '=')
            ++end;
        const QByteArray name = line.left(end);
        const QByteArray rest = line.mid(end).trimmed();
        QByteArray stem = name.mid(name.lastIndexOf('\\') + 1).toLower();
        if (const qsizetype dot = stem.indexOf('.'); dot >= 0)
            stem.truncate(dot);
        const GuestDrives::Found found = lookUp(name);
        if (!found.isKnown)
            return cannotTell(name, u"the image of its drive cannot be read"_s);
        if (found.entry == GuestEntry::file) {
            if (isLoader(stem)) {
                m_runsLoader = true;
                return Flow::next;
            }
            if (found.guestPath.toLower().endsWith(".bat"))
                if (const auto text = m_view.read(found.hostPath)) {
                    const Flow flow = runBatch(text->split('\n'), guestArguments(name + ' ' + rest), depth + 1);
                    // Without a "call" nothing comes back to what stood behind it.
                    return flow == Flow::end ? flow : isCalled ? Flow::next : Flow::leave;
                }
            conclude(LaunchProof::Verdict::found, found.guestPath, found.hostPath);
            return Flow::end;
        }
        if (stem == "mount")
            m_drives.mount(rest);
        else if (stem == "imgmount")
            m_drives.mountImage(rest);
        else if (stem == "boot")
            return runBoot(line, rest);
        else if (stem == "loadfix")
            return runLoadfix(rest, isCalled, depth);
        else if (!isGuestCommand(stem) && !isLoader(stem) && !m_missing)
            m_missing = LaunchProof{LaunchProof::Verdict::missing, hostNameFrom(name),
                                    u"not in %1"_s.arg(hostNameFrom(m_drives.currentFolder()))};
        return Flow::next;
    }

    Flow runLoadfix(const QByteArray &arguments, bool isCalled, int depth) {
        QByteArray rest = arguments;
        while (rest.startsWith('-') || rest.startsWith('/'))
            rest = rest.indexOf(' ') < 0 ? QByteArray() : rest.mid(rest.indexOf(' ')).trimmed();
        return rest.isEmpty() ? Flow::next : run(rest, isCalled, depth);
    }

    Flow runBoot(const QByteArray &line, const QByteArray &arguments) {
        QByteArrayList words = guestArguments(arguments);
        for (qsizetype i = 0; i + 1 < words.size(); ++i)
            if (words[i].toLower() == "-l") {
                if (!m_drives.isMounted(words[i + 1].toUpper().at(0))) {
                    m_missing = LaunchProof{LaunchProof::Verdict::missing, hostNameFrom(line),
                                            u"nothing is mounted on that drive"_s};
                    return Flow::end;
                }
                conclude(LaunchProof::Verdict::found, line, u"a mounted disk"_s);
                return Flow::end;
            }
        for (const QByteArray &word : std::as_const(words))
            if (const QString image = m_drives.hostFile(word); !word.startsWith('-') && m_view.isFile(image)) {
                conclude(LaunchProof::Verdict::found, line, image);
                return Flow::end;
            }
        m_missing = LaunchProof{LaunchProof::Verdict::missing, hostNameFrom(line), u"no such disk image"_s};
        return Flow::end;
    }

    FolderView &m_view;
    GuestDrives m_drives;
    QHash<QByteArray, QByteArray> m_variables;
    QByteArray m_label; ///< that a "goto" names
    int m_lines = 0;
    bool m_asksUser = false;
    bool m_runsLoader = false;
    bool m_changesFiles = false;
    std::optional<LaunchProof> m_missing; ///< the first program that is not there
    std::optional<LaunchProof> m_result;
};

} // namespace

LaunchProof proveLaunch(const QByteArray &configuration, const QString &workingDirectory, DosBoxFamily family,
                        FolderView &view) {
    return Walk(workingDirectory, family, view).prove(configuration);
}

} // namespace ludarium
