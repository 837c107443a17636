#include "Host/SettingsGenerations.h"

#include "Host/SafeFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace ludarium {

QByteArray SettingsGenerations::Generation::read() const {
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

QList<SettingsGenerations::Generation> SettingsGenerations::all() const {
    const QFileInfo store(m_storeFile);
    const QString prefix = store.fileName() + QLatin1String(".kept-");
    QList<Generation> found;
    for (const QString &name : store.dir().entryList({prefix + QLatin1Char('*')}, QDir::Files)) {
        bool isNumber = false;
        const qint64 revision = QStringView(name).sliced(prefix.size()).toLongLong(&isNumber);
        if (isNumber)
            found.append({revision, store.dir().filePath(name)});
    }
    std::sort(found.begin(), found.end(),
              [](const Generation &left, const Generation &right) { return left.revision > right.revision; });
    return found;
}

QString SettingsGenerations::keep(const QByteArray &image, qint64 revision) {
    const QString problem = writeAtomically(QStringLiteral("%1.kept-%2").arg(m_storeFile).arg(revision), image, true);
    if (!problem.isEmpty())
        return problem;
    const QList<Generation> generations = all();
    for (qsizetype i = kept; i < generations.size(); ++i)
        QFile::remove(generations[i].file);
    return {};
}

} // namespace ludarium
