#include "Host/InterruptWatch.h"

#include <QSocketNotifier>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

namespace {

// A signal handler may do little more than write to a pipe; the event loop reads its other end.
int pipeEnds[2] = {-1, -1};

void tellEventLoop(int) {
    const int error = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(pipeEnds[1], &byte, 1);
    errno = error;
}

} // namespace

InterruptWatch::InterruptWatch(QList<int> signalNumbers) : m_signalNumbers(std::move(signalNumbers)) {
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "Cannot watch for signals");
    auto *notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        Q_EMIT interrupted();
    });
    struct sigaction action {};
    action.sa_handler = tellEventLoop;
    action.sa_flags = SA_RESTART;
    for (const int number : m_signalNumbers)
        ::sigaction(number, &action, nullptr);
}

InterruptWatch::~InterruptWatch() {
    for (const int number : m_signalNumbers)
        ::signal(number, SIG_DFL);
    delete findChild<QSocketNotifier *>(); // before its descriptor closes
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
}

} // namespace ludarium
