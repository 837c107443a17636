#include "support/Measured.h"

#include <QFile>
#include <QStringList>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace ludarium {

ProgramRun runProgram(const QString &program, const QStringList &arguments) {
    std::vector<QByteArray> texts{QFile::encodeName(program)};
    for (const QString &argument : arguments)
        texts.push_back(QFile::encodeName(argument));
    std::vector<char *> pointers;
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0)
        qFatal("no pipe");
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    // Not by fork, which takes the longer the more memory this program holds.
    pid_t child = 0;
    const double start = milliseconds(CLOCK_MONOTONIC);
    if (::posix_spawn(&child, pointers[0], &actions, nullptr, pointers.data(), environ) != 0)
        qFatal("%s cannot be started", pointers[0]);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(ends[1]);

    ProgramRun run;
    char buffer[4096];
    ssize_t got = 0;
    while ((got = ::read(ends[0], buffer, sizeof buffer)) > 0) {
        if (run.output.isEmpty())
            run.time.wall = milliseconds(CLOCK_MONOTONIC) - start;
        run.output.append(buffer, got);
    }
    ::close(ends[0]);
    int status = 0;
    rusage usage{};
    ::wait4(child, &status, 0, &usage);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || run.output.isEmpty())
        qFatal("%s failed", pointers[0]);
    const auto asMilliseconds = [](const timeval &t) { return double(t.tv_sec) * 1e3 + double(t.tv_usec) / 1e3; };
    run.time.cpu = asMilliseconds(usage.ru_utime) + asMilliseconds(usage.ru_stime);
    return run;
}

} // namespace ludarium
