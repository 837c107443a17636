#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <QStringList>
#include <optional>

namespace ludarium {

/// A modal question or notice. The answer is the index of the pressed button; closing the dialog counts as the last.
struct Alert {
    enum class Style { Informational, Warning, Critical };
    QString title;
    QString text;
    QStringList buttons;
    Style style = Style::Informational;
    /// Index of the button that destroys what nothing brings back; -1 where none does. That one is drawn in red, and
    /// the last button has the focus instead of the first.
    int destructive = -1;
};

/// Questions to the user, answered asynchronously on the main thread.
class Dialogs {
  public:
    virtual ~Dialogs() = default;
    virtual QCoro::Task<int> ask(Alert alert) = 0;
    /// One folder, or none when cancelled. `prompt` is the text of the confirming button.
    virtual QCoro::Task<std::optional<QString>> chooseFolder(QString prompt) = 0;
};

/// Without a window: logs each question and gives the answer that changes nothing (the last button, no folder).
class SilentDialogs : public Dialogs {
  public:
    QCoro::Task<int> ask(Alert alert) override;
    QCoro::Task<std::optional<QString>> chooseFolder(QString prompt) override;
};

} // namespace ludarium
