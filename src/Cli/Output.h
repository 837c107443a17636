#pragma once

#include <QByteArray>
#include <QString>

namespace ludarium {

/// One of the program's two streams, buffered. Nothing is lost silently: a write that fails is told by `finish`.
class Output {
  public:
    enum class Style { plain, strong, faint };

    /// `descriptor` stays open. Colours only on a terminal, and never with NO_COLOR set.
    explicit Output(int descriptor);
    ~Output();
    Output(const Output &) = delete;
    Output &operator=(const Output &) = delete;

    void write(QByteArrayView bytes);
    void line(const QString &text = {}, Style style = Style::plain);

    /// Columns of the terminal; 0 when the stream is none and lines may have any length.
    int columns() const { return m_columns; }
    /// Whether anything was written yet.
    bool isUntouched() const { return m_untouched; }
    /// The reader of a pipe has had enough: what is written now goes nowhere, and that is no failure.
    bool readerGone() const { return m_readerGone; }

    /// Writes what is buffered; a failure is kept for `finish`.
    void flush();
    /// The same. Throws std::system_error when anything written so far did not arrive.
    void finish();

  private:
    int m_descriptor;
    int m_columns = 0;
    bool m_colours = false;
    bool m_untouched = true;
    bool m_readerGone = false;
    int m_error = 0;
    QByteArray m_buffer;
};

} // namespace ludarium
