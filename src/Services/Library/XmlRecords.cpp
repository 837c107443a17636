#include "Services/Library/XmlRecords.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <libxml/parser.h>
#include <memory>
#include <string>

namespace ludarium {

namespace {

/// Depths of the elements, the root's being 1.
constexpr int recordDepth = 2;
constexpr int fieldDepth = 3;

std::string_view view(const xmlChar *text) {
    return reinterpret_cast<const char *>(text);
}

/// The state of one run of the parser, and libxml2's callbacks. No exception crosses libxml2's frames: the first is
/// kept, and nothing is called any more. (Stopping libxml2 is no way out: within a read it frees the buffer that is
/// being read into.)
class Run {
  public:
    Run(XmlSource &source, XmlRecordSink &sink) : m_source(source), m_sink(sink) {}

    XmlResult parse();

  private:
    template<typename Function>
    void guarded(Function function) noexcept {
        if (m_exception)
            return;
        try {
            function();
        } catch (...) {
            m_exception = std::current_exception();
        }
    }

    static Run &of(void *self) { return *static_cast<Run *>(self); }
    static int onRead(void *self, char *buffer, int size);
    static void onStart(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *, int, const xmlChar **,
                        int, int, const xmlChar **);
    static void onEnd(void *self, const xmlChar *, const xmlChar *, const xmlChar *);
    static void onText(void *self, const xmlChar *text, int length);
    static void onDocumentType(void *self, const xmlChar *, const xmlChar *, const xmlChar *);
    void keepError(const xmlError *error);

    XmlSource &m_source;
    XmlRecordSink &m_sink;
    xmlParserCtxtPtr m_context = nullptr;
    int m_depth = 0;
    bool m_inRecord = false;
    int m_field = -1;
    bool m_unreadable = false;
    std::string m_text;
    bool m_hasDocumentType = false;
    QString m_error;
    std::exception_ptr m_exception;
};

int Run::onRead(void *self, char *buffer, int size) {
    Run &run = of(self);
    // libxml2 looks ahead no further than what one call gave it, so that each call must give all that there is room
    // for: with short ones it takes the end of a piece for the end of the document.
    int count = 0;
    run.guarded([&] {
        while (count < size) {
            const qint64 more = run.m_source.read(buffer + count, size - count);
            if (more == 0)
                break;
            count += int(more);
        }
    });
    return run.m_exception ? -1 : count;
}

void Run::onStart(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *, int, const xmlChar **, int,
                  int, const xmlChar **) {
    Run &run = of(self);
    ++run.m_depth;
    if (run.m_depth == fieldDepth) {
        if (run.m_inRecord && !prefix) {
            run.guarded([&] { run.m_field = run.m_sink.field(view(name)); });
            run.m_text.clear();
            run.m_unreadable = false;
        }
    } else if (run.m_depth == recordDepth) {
        run.guarded([&] { run.m_inRecord = !prefix && run.m_sink.beginRecord(view(name)); });
    } else if (run.m_field >= 0) {
        run.m_unreadable = true;
    }
}

void Run::onEnd(void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
    Run &run = of(self);
    const int depth = run.m_depth--;
    if (depth == fieldDepth && run.m_field >= 0) {
        run.guarded([&] {
            if (run.m_unreadable)
                run.m_sink.fieldUnreadable(run.m_field);
            else
                run.m_sink.fieldText(run.m_field, trimmedUtf8(run.m_text));
        });
        run.m_field = -1;
    } else if (depth == recordDepth && run.m_inRecord) {
        run.guarded([&] { run.m_sink.endRecord(); });
        run.m_inRecord = false;
    }
}

void Run::onText(void *self, const xmlChar *text, int length) {
    Run &run = of(self);
    // Text inside an element of a field makes the field unreadable anyway.
    if (run.m_field >= 0 && run.m_depth == fieldDepth)
        run.guarded([&] { run.m_text.append(reinterpret_cast<const char *>(text), size_t(length)); });
}

void Run::onDocumentType(void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
    Run &run = of(self);
    run.m_hasDocumentType = true;
    xmlStopParser(run.m_context);
}

void Run::keepError(const xmlError *error) {
    if (m_error.isEmpty() && error->level == XML_ERR_FATAL)
        guarded([&] {
            m_error = QStringLiteral("line %1: %2").arg(error->line).arg(QString::fromUtf8(error->message).trimmed());
        });
}

XmlResult Run::parse() {
    [[maybe_unused]] static const bool initialised = (xmlInitParser(), true);

    xmlSAXHandler handler;
    std::memset(&handler, 0, sizeof handler);
    handler.initialized = XML_SAX2_MAGIC;
    handler.startElementNs = &Run::onStart;
    handler.endElementNs = &Run::onEnd;
    handler.characters = &Run::onText;
    handler.ignorableWhitespace = &Run::onText; // the same function spares libxml2 the question which of the two it is
    handler.cdataBlock = &Run::onText;
    handler.internalSubset = &Run::onDocumentType;
    // Newer libxml2 has a const here.
    handler.serror = [](void *self, auto *error) { of(self).keepError(error); };

    struct Free {
        void operator()(xmlParserCtxt *context) const { xmlFreeParserCtxt(context); }
    };
    const std::unique_ptr<xmlParserCtxt, Free> context(
        xmlCreateIOParserCtxt(&handler, this, &Run::onRead, nullptr, this, XML_CHAR_ENCODING_NONE));
    if (!context) {
        if (m_exception)
            std::rethrow_exception(m_exception);
        throw std::bad_alloc();
    }
    m_context = context.get();
    xmlCtxtUseOptions(m_context, XML_PARSE_NONET);
    xmlParseDocument(m_context);

    if (m_exception)
        std::rethrow_exception(m_exception);
    if (m_hasDocumentType)
        return {false, QStringLiteral("a document type declaration is not allowed")};
    if (!m_context->wellFormed)
        return {false, m_error.isEmpty() ? QStringLiteral("not well-formed") : m_error};
    return {true, {}};
}

/// Length of the white-space character at the front of a text, 0 when there is none.
size_t leadingSpace(std::string_view text) {
    const auto at = [&](size_t i) { return i < text.size() ? uint8_t(text[i]) : uint8_t(0); };
    const uint8_t c = at(0);
    if (c == ' ' || (c >= '\t' && c <= '\r'))
        return 1;
    if (c == 0xC2) // U+0085, U+00A0
        return at(1) == 0x85 || at(1) == 0xA0 ? 2 : 0;
    const uint32_t three = uint32_t(c) << 16 | uint32_t(at(1)) << 8 | at(2);
    const bool space = three == 0xE19A80 || (three >= 0xE28080 && three <= 0xE2808A) || three == 0xE280A8 ||
                       three == 0xE280A9 || three == 0xE280AF || three == 0xE2819F || three == 0xE38080;
    return space ? 3 : 0;
}

} // namespace

qint64 XmlTextSource::read(char *buffer, qint64 size) {
    for (std::string_view &piece : m_pieces) {
        if (piece.empty())
            continue;
        const size_t count = std::min(piece.size(), size_t(size));
        std::memcpy(buffer, piece.data(), count);
        piece.remove_prefix(count);
        return qint64(count);
    }
    return 0;
}

XmlResult readXmlRecords(XmlSource &source, XmlRecordSink &sink) {
    return Run(source, sink).parse();
}

std::string_view trimmedUtf8(std::string_view text) {
    while (const size_t length = leadingSpace(text))
        text.remove_prefix(length);
    // A character's first byte is one to three bytes before its end.
    const auto trailingSpace = [&]() -> size_t {
        for (size_t length = 1; length <= std::min<size_t>(3, text.size()); ++length)
            if (leadingSpace(text.substr(text.size() - length)) == length)
                return length;
        return 0;
    };
    while (const size_t length = trailingSpace())
        text.remove_suffix(length);
    return text;
}

} // namespace ludarium
