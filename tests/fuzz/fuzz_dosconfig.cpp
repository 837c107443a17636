// Any bytes as a game's DOSBox configuration and as a batch file that it calls: nothing may crash or hang, and what is
// made of them is a configuration of a bounded size that starts something.

#include "FuzzCheck.h"
#include "Models/LaunchError.h"
#include "Services/Dos/DosConfigText.h"
#include "Services/Dos/DosSettings.h"
#include "Services/Dos/IndependentLaunchConfig.h"
#include "Services/Dos/ScriptFolderConfig.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace ludarium;
using namespace Qt::StringLiterals;

namespace {

void write(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    check(file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size());
}

/// A collection with one game, whose batch file changes from run to run.
struct Collection {
    QTemporaryDir folder{u"/dev/shm/ludarium-fuzz-XXXXXX"_s};
    QString game = folder.filePath(u"eXo/eXoDOS/Quest"_s);

    Collection() {
        check(folder.isValid());
        for (const QLatin1StringView name : {"CD"_L1, "DATA"_L1})
            check(QDir().mkpath(game + u'/' + name));
        write(game + u"/QUEST.EXE"_s, "MZ");
        write(game + u"/DATA/PLAY.COM"_s, "\xC3");
        write(game + u"/CD/QUEST.CUE"_s, "FILE");
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    static const Collection collection;
    const QList<QByteArray> files = filesOf(data, size);
    const QByteArray configuration = files.value(0);
    write(collection.game + u"/RUN.BAT"_s, files.value(1));

    const AutoexecSplit split = splitAutoexec(configuration);
    check(split.kept.size() + split.autoexec.size() <= configuration.size());
    check(split.found || split.kept == configuration);
    if (const auto program = extractExecutableFromOriginalConfig(configuration, u"Quest"_s))
        check(split.found && !program->executable.isEmpty());
    if (const auto cycles = extractCyclesFromConfig(configuration))
        check(!cycles->isEmpty() && cycles->size() <= configuration.size());

    // A path that is made absolute grows by the collection's, once each.
    const qsizetype most = 4096 + configuration.size() * 4 +
                           (configuration.count(".\\eXoDOS\\") + 1) * (collection.folder.path().size() + 64);
    try {
        FolderView view;
        const QByteArray adapted =
            adaptScriptFolderConfig(configuration, DosSettings(), collection.game, collection.folder.path(), view);
        check(adapted.size() <= most);
    } catch (const LaunchError &) {
    }
    try {
        FolderView view;
        IndependentLaunchInput input{configuration, collection.game, collection.folder.path(), {}, u"Ctrl+F4"_s};
        input.version.executable = files.size() > 2 ? QString::fromUtf8(files[2]) : QString();
        if (files.size() > 3)
            input.version.setupCommands = QString::fromUtf8(files[3]).split(u'\n');
        const IndependentLaunch launch = createIndependentLaunchConfig(input, view);
        check(splitAutoexec(launch.text).found && launch.text.size() <= most + qsizetype(size) * 8);
    } catch (const LaunchError &) {
    }
    return 0;
}
