#pragma once

#include <QObject>
#include <QVariant>
#include <memory>

class QQmlEngine;

namespace ludarium::test {

class DesktopFixture;

/// Gives the engine of Qt Quick Test the program's `App`, with the fixture collection open, and a handle to what a
/// test of a component cannot reach by itself.
class QuickSetup : public QObject {
    Q_OBJECT
  public:
    QuickSetup();
    ~QuickSetup() override;

    /// Asks a question as a service does; the answer comes by `answered`.
    Q_INVOKABLE void ask(const QString &title, const QString &text, const QStringList &buttons);
    Q_INVOKABLE void askForFolder();
    /// Opens the collection of details, once, and selects a game of it.
    Q_INVOKABLE bool showDetails(const QString &title);
    /// What the desktop was asked to open, and forgets it.
    Q_INVOKABLE QStringList takeOpened();
    /// Whether a game is installed, is an archive or neither of the two but can be downloaded, by "installed",
    /// "compressed" and "downloadable".
    Q_INVOKABLE void setStatus(const QString &gameId, const QString &status);
    /// Games that the main view's filters let through, whether they are grouped there or not.
    Q_INVOKABLE int shownGames() const;
    /// The version that the launcher was last started with, as the log tells, and forgets it; empty for none.
    Q_INVOKABLE QString takeLaunchedVersion();
    Q_INVOKABLE QString savedNotes(const QString &gameId) const;
    /// What the settings store holds under a key.
    Q_INVOKABLE QVariant stored(const QString &key) const;
    /// Plays the first game of the library for so long.
    Q_INVOKABLE void play(double seconds);
    /// Opens the collection with variants and titles that are hard to show.
    Q_INVOKABLE void openVariants();

  public Q_SLOTS:
    void qmlEngineAvailable(QQmlEngine *engine);
    void cleanupTestCase();

  Q_SIGNALS:
    void answered(int button);
    void folderAnswered(const QString &folder);

  private:
    std::unique_ptr<DesktopFixture> m_fixture;
    qsizetype m_logRead = 0;
};

} // namespace ludarium::test
