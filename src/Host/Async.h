#pragma once

#include <QCoro/QCoroFuture>
#include <QCoro/QCoroTask>
#include <QThreadPool>
#include <QtConcurrent/QtConcurrentRun>
#include <exception>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace ludarium {

namespace detail {

template<typename Function>
auto runShared(QThreadPool *pool, std::shared_ptr<Function> function) -> QCoro::Task<std::invoke_result_t<Function>> {
    using Result = std::invoke_result_t<Function>;
    // The exception travels as data: QFuture carries only what was thrown as a QException on Qt 6.4.
    struct Outcome {
        std::conditional_t<std::is_void_v<Result>, bool, std::optional<Result>> value{};
        std::exception_ptr error;
    };
    auto outcome = std::make_shared<Outcome>();
    auto work = [outcome, function] {
        try {
            if constexpr (std::is_void_v<Result>)
                (*function)();
            else
                outcome->value.emplace((*function)());
        } catch (...) {
            outcome->error = std::current_exception();
        }
    };
    QFuture<void> future = QtConcurrent::run(pool, work);
    co_await future;
    if (outcome->error)
        std::rethrow_exception(outcome->error);
    if constexpr (!std::is_void_v<Result>)
        co_return std::move(*outcome->value);
}

} // namespace detail

/// Runs `function` on the thread pool and resumes the awaiting coroutine on its own thread. An exception thrown by
/// `function` is thrown again from the `co_await`.
///
/// The function is moved from, and has to have a name: g++ 12 destroys the captures of a lambda twice that is written
/// inside a `co_await` expression, whatever it is passed to. So: `auto work = [=] { … }; co_await runOnPool(work);`.
template<typename Function>
auto runOnPool(Function &function) {
    return detail::runShared(QThreadPool::globalInstance(), std::make_shared<Function>(std::move(function)));
}

/// The same on a pool of its owner's. Work that is queued must not be cleared from it: the coroutine would never
/// resume.
template<typename Function>
auto runOnPool(QThreadPool &pool, Function &function) {
    return detail::runShared(&pool, std::make_shared<Function>(std::move(function)));
}

/// The one place for a task that nobody awaits: whatever it throws is logged with `what`, never lost.
void spawn(QCoro::Task<> task, const char *what);

/// Text of the exception that is being handled, for logs and for errors that a user sees.
QString currentExceptionText();

} // namespace ludarium
