#pragma once

#include "Host/Dialogs.h"

#include <QObject>
#include <QPromise>
#include <QQueue>
#include <QUrl>
#include <memory>
#include <qqmlregistration.h>

namespace ludarium {

/// Questions shown in the window, one after another in the order in which they were asked. The window binds to the
/// current one and answers by the index of the button.
class QmlDialogs : public QObject, public Dialogs {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool active READ isActive NOTIFY currentChanged)
    Q_PROPERTY(QString title READ title NOTIFY currentChanged)
    Q_PROPERTY(QString text READ text NOTIFY currentChanged)
    Q_PROPERTY(QStringList buttons READ buttons NOTIFY currentChanged)
    Q_PROPERTY(QString style READ style NOTIFY currentChanged)
    Q_PROPERTY(int destructive READ destructive NOTIFY currentChanged)
    Q_PROPERTY(int preferred READ preferred NOTIFY currentChanged)
    Q_PROPERTY(bool choosingFolder READ isChoosingFolder NOTIFY folderChanged)
    Q_PROPERTY(QString folderPrompt READ folderPrompt NOTIFY folderChanged)
  public:
    explicit QmlDialogs(QObject *parent = nullptr) : QObject(parent) {}
    /// Whatever is still asked is answered as if it had been closed.
    ~QmlDialogs() override;

    QCoro::Task<int> ask(Alert alert) override;
    QCoro::Task<std::optional<QString>> chooseFolder(QString prompt) override;

    bool isActive() const { return !m_alerts.isEmpty(); }
    QString title() const;
    QString text() const;
    QStringList buttons() const;
    /// "informational", "warning" or "critical".
    QString style() const;
    /// The button that destroys something; -1 where none does.
    int destructive() const { return isActive() ? m_alerts.head().alert.destructive : -1; }
    /// The button that has the focus, and that Return presses: the first, and the last where one destroys something.
    int preferred() const;
    bool isChoosingFolder() const { return !m_folders.isEmpty(); }
    QString folderPrompt() const;

    Q_INVOKABLE void answer(int button);
    /// As closing the window of the dialog does: the last button.
    Q_INVOKABLE void dismiss();
    Q_INVOKABLE void folderChosen(const QUrl &folder);
    Q_INVOKABLE void folderCancelled();

  Q_SIGNALS:
    void currentChanged();
    void folderChanged();

  private:
    struct Question {
        Alert alert;
        std::shared_ptr<QPromise<int>> answer;
    };
    struct FolderQuestion {
        QString prompt;
        std::shared_ptr<QPromise<std::optional<QString>>> answer;
    };
    void answerFolder(std::optional<QString> folder);

    QQueue<Question> m_alerts;
    QQueue<FolderQuestion> m_folders;
};

} // namespace ludarium
