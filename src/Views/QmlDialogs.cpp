#include "Views/QmlDialogs.h"

#include <QCoro/QCoroFuture>

namespace ludarium {

namespace {

template<typename T>
void finish(QPromise<T> &promise, T value) {
    promise.addResult(std::move(value));
    promise.finish();
}

int lastButton(const Alert &alert) {
    return std::max(0, int(alert.buttons.size()) - 1);
}

} // namespace

QmlDialogs::~QmlDialogs() {
    for (const Question &question : std::exchange(m_alerts, {}))
        finish(*question.answer, lastButton(question.alert));
    for (const FolderQuestion &question : std::exchange(m_folders, {}))
        finish(*question.answer, std::optional<QString>());
}

QCoro::Task<int> QmlDialogs::ask(Alert alert) {
    if (alert.buttons.isEmpty())
        alert.buttons.append(QStringLiteral("OK"));
    auto promise = std::make_shared<QPromise<int>>();
    promise->start();
    m_alerts.enqueue({alert, promise});
    if (m_alerts.size() == 1)
        Q_EMIT currentChanged();
    co_return co_await promise->future();
}

QCoro::Task<std::optional<QString>> QmlDialogs::chooseFolder(QString prompt) {
    auto promise = std::make_shared<QPromise<std::optional<QString>>>();
    promise->start();
    m_folders.enqueue({prompt, promise});
    if (m_folders.size() == 1)
        Q_EMIT folderChanged();
    co_return co_await promise->future();
}

QString QmlDialogs::title() const {
    return isActive() ? m_alerts.head().alert.title : QString();
}

QString QmlDialogs::text() const {
    return isActive() ? m_alerts.head().alert.text : QString();
}

QStringList QmlDialogs::buttons() const {
    return isActive() ? m_alerts.head().alert.buttons : QStringList();
}

QString QmlDialogs::style() const {
    if (!isActive())
        return QStringLiteral("informational");
    switch (m_alerts.head().alert.style) {
    case Alert::Style::Warning:
        return QStringLiteral("warning");
    case Alert::Style::Critical:
        return QStringLiteral("critical");
    case Alert::Style::Informational:
        break;
    }
    return QStringLiteral("informational");
}

int QmlDialogs::preferred() const {
    return destructive() < 0 ? 0 : lastButton(m_alerts.head().alert);
}

void QmlDialogs::answer(int button) {
    if (!isActive() || button < 0 || button >= m_alerts.head().alert.buttons.size())
        return;
    const Question question = m_alerts.dequeue();
    Q_EMIT currentChanged();
    finish(*question.answer, button);
}

void QmlDialogs::dismiss() {
    if (isActive())
        answer(lastButton(m_alerts.head().alert));
}

QString QmlDialogs::folderPrompt() const {
    return isChoosingFolder() ? m_folders.head().prompt : QString();
}

void QmlDialogs::folderChosen(const QUrl &folder) {
    answerFolder(folder.isLocalFile() ? std::optional(folder.toLocalFile()) : std::nullopt);
}

void QmlDialogs::folderCancelled() {
    answerFolder(std::nullopt);
}

void QmlDialogs::answerFolder(std::optional<QString> folder) {
    if (!isChoosingFolder())
        return;
    const FolderQuestion question = m_folders.dequeue();
    Q_EMIT folderChanged();
    finish(*question.answer, std::move(folder));
}

} // namespace ludarium
