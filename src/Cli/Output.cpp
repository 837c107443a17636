#include "Cli/Output.h"

#include <cerrno>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace ludarium {

namespace {
constexpr qsizetype bufferSize = 64 * 1024;
constexpr int defaultColumns = 80;
} // namespace

Output::Output(int descriptor) : m_descriptor(descriptor) {
    if (!isatty(descriptor))
        return;
    winsize size{};
    m_columns = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : defaultColumns;
    m_colours = qgetenv("NO_COLOR").isEmpty() && qgetenv("TERM") != "dumb";
}

Output::~Output() {
    flush();
}

void Output::write(QByteArrayView bytes) {
    m_untouched = false;
    m_buffer.append(bytes);
    if (m_buffer.size() >= bufferSize)
        flush();
}

void Output::line(const QString &text, Style style) {
    const bool styled = m_colours && style != Style::plain;
    if (styled)
        write(style == Style::strong ? "\033[1m" : "\033[2m");
    write(text.toUtf8());
    if (styled)
        write("\033[0m");
    write("\n");
}

void Output::finish() {
    flush();
    if (const int error = std::exchange(m_error, 0))
        throw std::system_error(error, std::generic_category(), "Cannot write the output");
}

void Output::flush() {
    qsizetype done = 0;
    while (done < m_buffer.size() && !m_error && !m_readerGone) {
        const ssize_t written = ::write(m_descriptor, m_buffer.constData() + done, size_t(m_buffer.size() - done));
        if (written >= 0)
            done += written;
        else if (errno == EPIPE)
            m_readerGone = true;
        else if (errno != EINTR)
            m_error = errno;
    }
    m_buffer.clear();
}

} // namespace ludarium
