#include "Services/Emulators/ProgramLocator.h"

#include "Host/Settings.h"
#include "Host/SettingsStore.h"

#include <QDir>
#include <QFileInfo>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;
using Kind = ProgramCandidate::Kind;

bool isFile(const QString &path) {
    return QFileInfo(path).isFile();
}

std::optional<QString> ifFile(const QString &path) {
    return isFile(path) ? std::optional(path) : std::nullopt;
}

} // namespace

ProgramLocator::ProgramLocator(const HostPaths &paths, const SettingsStore &settings)
    : m_paths(paths), m_collection(settings.value(Settings::collectionPath)) {
    for (LocatedProgram program : locatedPrograms())
        if (const Setting<QString> *setting = programRow(program, paths.layout()).setting)
            if (const QString path = settings.value(*setting); !path.isEmpty())
                m_userPaths.insert(program, path);
}

std::optional<QString> ProgramLocator::find(LocatedProgram program) const {
    // What the user chose is a path of the machine as it is and not one of the table, so it is not resolved. On macOS
    // it may be an application's folder.
    if (const QString path = m_userPaths.value(program); !path.isEmpty()) {
        const QFileInfo info(path);
        const bool isBundle = m_paths.layout() == HostLayout::MacOS && info.isDir() && path.endsWith(u".app"_s);
        if (info.isFile() || isBundle)
            return path;
    }
    for (const ProgramCandidate &candidate : programRow(program, m_paths.layout()).candidates)
        if (std::optional<QString> path = look(candidate))
            return path;
    return std::nullopt;
}

std::optional<QString> ProgramLocator::look(const ProgramCandidate &candidate) const {
    switch (candidate.kind) {
    case Kind::file: {
        const QString path = m_paths.resolve(candidate.text);
        if (candidate.wrapped.isEmpty())
            return ifFile(path);
        return isFile(path) ? ifFile(m_paths.resolve(candidate.wrapped)) : std::nullopt;
    }
    case Kind::inCollection:
        return m_collection.isEmpty() ? std::nullopt : ifFile(m_collection + u'/' + candidate.text);
    case Kind::onPath: {
        const QString path = m_paths.which(candidate.text);
        return path.isEmpty() ? std::nullopt : std::optional(path);
    }
    case Kind::appImage:
        return newestAppImage(candidate.text);
    case Kind::bundle: {
        const QString path = m_paths.resolve(candidate.text);
        return QFileInfo(path).isDir() ? std::optional(path) : std::nullopt;
    }
    case Kind::spotlight:
        return std::nullopt;
    }
    Q_UNREACHABLE();
}

std::optional<QString> ProgramLocator::newestAppImage(const QString &pattern) const {
    // Several versions may lie side by side; the one that came last is meant. Patterns ignore case.
    const QDir folder(m_paths.resolve(u"~/Applications"_s));
    const QFileInfoList found = folder.entryInfoList({pattern}, QDir::Files | QDir::Executable, QDir::Time);
    return found.isEmpty() ? std::nullopt : std::optional(found.first().filePath());
}

QList<ProgramCandidate> ProgramLocator::spotlightQueries(LocatedProgram program) const {
    QList<ProgramCandidate> queries;
    for (const ProgramCandidate &candidate : programRow(program, m_paths.layout()).candidates)
        if (candidate.kind == Kind::spotlight)
            queries.append(candidate);
    return queries;
}

std::optional<QString> ProgramLocator::fromSpotlight(const ProgramCandidate &query, const QByteArray &output) {
    const QStringList hits = QString::fromUtf8(output).trimmed().split(u'\n');
    QString bundle = hits.first();
    if (query.bundlesOnly) {
        const auto hit = std::find_if(hits.begin(), hits.end(), [](const QString &h) { return h.endsWith(u".app"_s); });
        bundle = hit == hits.end() ? QString() : *hit;
    }
    if (bundle.isEmpty())
        return std::nullopt;
    for (const QString &executable : query.executables)
        if (std::optional<QString> path = ifFile(bundle + u'/' + executable))
            return path;
    return std::nullopt;
}

} // namespace ludarium
