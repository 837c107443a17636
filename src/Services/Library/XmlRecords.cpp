#include "Services/Library/XmlRecords.h"

#include "Host/AppLogger.h"

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

// What is beyond is no file of a collection. libxml2 has no limit to the attributes of an element, whose names it
// compares each with each, and limits to the depth that differ from version to version.
constexpr size_t longestText = 10u << 20;
constexpr int mostAttributes = 256;
constexpr int greatestDepth = 256;
constexpr int mostInLongTag = 8192;

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
    void refuse(const QString &reason);
    /// Counts the attributes of an element that is longer than what libxml2 reads at a time: it tells of an element
    /// when it has all of it.
    void watchLongTag(std::string_view bytes);

    XmlSource &m_source;
    XmlRecordSink &m_sink;
    xmlParserCtxtPtr m_context = nullptr;
    int m_depth = 0;
    bool m_inRecord = false;
    int m_field = -1;
    bool m_unreadable = false;
    std::string m_text;
    bool m_textIsCut = false;
    bool m_cutIsTold = false;
    bool m_hasDocumentType = false;
    bool m_failed = false;
    bool m_heard = false; ///< something was told since the last read
    int m_attributesInTag = 0;
    QString m_error;
    std::exception_ptr m_exception;
};

int Run::onRead(void *self, char *buffer, int size) {
    Run &run = of(self);
    // libxml2 looks ahead no further than what one call gave it, so that each call must give all that there is room
    // for: with short ones it takes the end of a piece for the end of the document.
    int count = 0;
    if (run.m_failed)
        return -1; // the rest says nothing any more
    run.guarded([&] {
        while (count < size) {
            const qint64 more = run.m_source.read(buffer + count, size - count);
            if (more == 0)
                break;
            count += int(more);
        }
    });
    if (count > 0)
        run.watchLongTag({buffer, size_t(count)});
    return run.m_exception || run.m_failed ? -1 : count;
}

void Run::watchLongTag(std::string_view bytes) {
    if (std::exchange(m_heard, false))
        m_attributesInTag = 0;
    const auto state = m_context ? m_context->instate : XML_PARSER_START;
    if (state == XML_PARSER_COMMENT || state == XML_PARSER_PI || state == XML_PARSER_CDATA_SECTION)
        return;
    // What stands in one piece with the start of the element counts too, so the limit here is a wider one.
    for (size_t at = bytes.find('='); at != std::string_view::npos; at = bytes.find('=', at + 1))
        if (at + 1 < bytes.size() && (bytes[at + 1] == '"' || bytes[at + 1] == '\''))
            ++m_attributesInTag;
    if (m_attributesInTag > mostInLongTag)
        refuse(QStringLiteral("an element has too many attributes"));
}

void Run::refuse(const QString &reason) {
    if (m_error.isEmpty())
        m_error = reason;
    m_failed = true;
}

void Run::onStart(void *self, const xmlChar *name, const xmlChar *prefix, const xmlChar *, int namespaces,
                  const xmlChar **, int attributes, int, const xmlChar **) {
    Run &run = of(self);
    run.m_heard = true;
    ++run.m_depth;
    if (namespaces + attributes > mostAttributes || run.m_depth > greatestDepth) {
        run.guarded([&] {
            run.refuse(run.m_depth > greatestDepth ? QStringLiteral("the elements are nested too deep")
                                                   : QStringLiteral("an element has too many attributes"));
        });
        return;
    }
    if (run.m_depth == fieldDepth) {
        if (run.m_inRecord && !prefix) {
            run.guarded([&] { run.m_field = run.m_sink.field(view(name)); });
            run.m_text.clear();
            run.m_unreadable = false;
            run.m_textIsCut = false;
        }
    } else if (run.m_depth == recordDepth) {
        run.guarded([&] { run.m_inRecord = !prefix && run.m_sink.beginRecord(view(name)); });
    } else if (run.m_field >= 0) {
        run.m_unreadable = true;
    }
}

void Run::onEnd(void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
    Run &run = of(self);
    run.m_heard = true;
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
    run.m_heard = true;
    // Text inside an element of a field makes the field unreadable anyway.
    if (run.m_field < 0 || run.m_depth != fieldDepth || run.m_textIsCut)
        return;
    std::string_view more(reinterpret_cast<const char *>(text), size_t(length));
    if (run.m_text.size() + more.size() > longestText) {
        size_t room = longestText - run.m_text.size();
        while (room > 0 && (uint8_t(more[room]) & 0xC0) == 0x80)
            --room; // not within a character
        more = more.substr(0, room);
        run.m_textIsCut = true;
        if (!std::exchange(run.m_cutIsTold, true))
            Log::warning(QStringLiteral("⚠️ A text of more than 10 MiB was cut there"));
    }
    run.guarded([&] { run.m_text += more; });
}

void Run::onDocumentType(void *self, const xmlChar *, const xmlChar *, const xmlChar *) {
    Run &run = of(self);
    run.m_hasDocumentType = true;
    xmlStopParser(run.m_context);
}

void Run::keepError(const xmlError *error) {
    if (error->level == XML_ERR_FATAL)
        m_failed = true;
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
    if (!m_context->wellFormed || m_failed)
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
