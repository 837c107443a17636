#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonObject>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <map>
#include <optional>

namespace ludarium::test {

/// How a run of the command line program ended.
struct CliResult {
    int status = -1; ///< -1 when it crashed or did not end
    QByteArray output;
    QByteArray errors;
    int errorLines() const { return int(errors.count('\n')); }
};

/// The document that a run printed; fails the test when it is none of ours.
QJsonObject json(const CliResult &result);
/// One member of each object of a list.
QStringList members(const QJsonArray &objects, const char *key);
bool hasDosbox();
/// The dosbox that the process with this id has started, waited for up to 30 s.
std::optional<qint64> startedDosbox(qint64 parent);

/// Runs the real command line program with a home of its own.
class CliRun {
  public:
    CliRun();

    static QString program();
    QString home() const { return m_home.path(); }
    /// Has every game count as installed when its collection is first loaded, so that a test does not depend on the
    /// look at the disk.
    void trustInstalled() const;
    QStringList arguments(const QStringList &rest) const;
    CliResult run(const QStringList &rest) const;
    /// Runs `program` with `arguments` in the environment of these runs.
    CliResult runProgram(const QString &program, const QStringList &arguments) const;

    QProcessEnvironment environment;

  private:
    QTemporaryDir m_home;
};

/// A small collection in a temporary folder, with two DOS games of a few bytes.
class TinyCollection {
  public:
    TinyCollection();
    QString path() const { return m_folder.path(); }
    QString file(const QString &relative) const { return m_folder.filePath(relative); }
    void put(const QString &relative, const QByteArray &content) const;

  private:
    QTemporaryDir m_folder;
};

/// Every file and folder below a folder with its content's hash, size and time of change.
std::map<QString, QString> snapshot(const QString &folder);

} // namespace ludarium::test
