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
};

} // namespace ludarium::test
