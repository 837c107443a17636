#include "Services/Library/CollectionFile.h"

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ludarium {

CollectionFile::CollectionFile(const QString &path)
    : m_descriptor(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    const auto fail = [](int error) { throw std::system_error(error, std::generic_category()); };
    if (m_descriptor < 0)
        fail(errno);
    struct stat status;
    const int error = ::fstat(m_descriptor, &status) != 0 ? errno
                      : S_ISDIR(status.st_mode)           ? EISDIR
                      : !S_ISREG(status.st_mode)          ? EINVAL
                                                          : 0;
    if (error != 0) {
        ::close(m_descriptor);
        fail(error);
    }
    m_size = status.st_size;
}

CollectionFile::~CollectionFile() {
    ::close(m_descriptor);
}

qint64 CollectionFile::readAt(qint64 offset, char *buffer, qint64 size) const {
    for (;;) {
        const ssize_t count = ::pread(m_descriptor, buffer, size_t(size), offset);
        if (count >= 0)
            return count;
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category());
    }
}

namespace {

constexpr qint64 headLimit = 64 * 1024;
constexpr qint64 largestCut = 2LL << 30;
constexpr std::string_view gameEnd = "</Game>";

/// Accepts everything; asks only whether a document is well-formed.
class NullSink : public XmlRecordSink {
    bool beginRecord(std::string_view) override { return false; }
    int field(std::string_view) override { return -1; }
    void fieldText(int, std::string_view) override {}
    void fieldUnreadable(int) override {}
    void endRecord() override {}
};

/// Whether an XML declaration names an encoding in which tags can be searched for byte by byte.
bool isUtf8Declaration(std::string_view declaration) {
    const size_t encoding = declaration.find("encoding");
    if (encoding == std::string_view::npos)
        return true;
    const size_t open = declaration.find_first_of("'\"", encoding);
    if (open == std::string_view::npos)
        return false;
    const size_t close = declaration.find(declaration[open], open + 1);
    const std::string_view name = declaration.substr(open + 1, close - open - 1);
    return QByteArray::fromRawData(name.data(), qsizetype(name.size())).compare("utf-8", Qt::CaseInsensitive) == 0;
}

/// The start of a document up to its root's start tag, and the root's end tag; empty when the start looks unusual.
/// What this finds is only proposed: the caller has it checked by the XML reader.
std::pair<QByteArray, QByteArray> proposedFrame(std::string_view start) {
    size_t at = start.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    if (start.substr(at).starts_with("<?xml")) {
        const size_t end = start.find("?>", at);
        if (end == std::string_view::npos || !isUtf8Declaration(start.substr(at, end - at)))
            return {};
        at = end + 2;
    }
    for (;;) {
        at = start.find('<', at);
        if (at == std::string_view::npos)
            return {};
        if (!start.substr(at).starts_with("<!--"))
            break;
        at = start.find("-->", at);
        if (at == std::string_view::npos)
            return {};
    }
    const size_t nameEnd = start.find_first_of(" \t\r\n/>", at);
    const size_t close = start.find('>', at);
    if (nameEnd == std::string_view::npos || close == std::string_view::npos || start[at + 1] == '!' ||
        start[at + 1] == '?' || start[close - 1] == '/')
        return {};
    const std::string_view name = start.substr(at + 1, nameEnd - at - 1);
    const std::string_view head = start.substr(0, close + 1);
    return {QByteArray(head.data(), qsizetype(head.size())),
            "</" + QByteArray(name.data(), qsizetype(name.size())) + ">"};
}

/// The first offset behind a `</Game>` at or after `from`, searched for up to `limit`; `limit` when there is none.
qint64 behindGame(const CollectionFile &file, qint64 from, qint64 limit) {
    std::vector<char> block(64 * 1024);
    while (from < limit) {
        const qint64 count = file.readAt(from, block.data(), std::min<qint64>(qint64(block.size()), limit - from));
        const std::string_view text(block.data(), size_t(count));
        if (const size_t found = text.find(gameEnd); found != std::string_view::npos)
            return from + qint64(found + gameEnd.size());
        if (count < qint64(gameEnd.size()))
            break;
        from += count - qint64(gameEnd.size() - 1);
    }
    return limit;
}

} // namespace

std::vector<XmlPart> xmlParts(const CollectionFile &file, qint64 partSize) {
    const XmlPart whole{0, file.size(), {}, {}};
    const qint64 count = file.size() / partSize;
    // No file of a collection is that long; one that claims to be is not searched for places to cut it.
    if (count < 2 || file.size() > largestCut)
        return {whole};

    std::vector<char> start(headLimit);
    const qint64 startSize = file.readAt(0, start.data(), headLimit);
    const auto [head, tail] = proposedFrame({start.data(), size_t(startSize)});
    XmlTextSource frame({head.constData(), size_t(head.size())}, {tail.constData(), size_t(tail.size())});
    NullSink ignore;
    if (head.isEmpty() || !readXmlRecords(frame, ignore).wellFormed)
        return {whole};

    std::vector<XmlPart> parts;
    qint64 begin = 0;
    for (qint64 i = 1; i <= count; ++i) {
        const qint64 target = std::max<qint64>(begin, file.size() / count * i);
        const qint64 end = i == count ? file.size() : behindGame(file, target, file.size());
        parts.push_back({begin, end, begin == 0 ? QByteArray() : head, end == file.size() ? QByteArray() : tail});
        if (end == file.size())
            break;
        begin = end;
    }
    return parts;
}

XmlPartSource::XmlPartSource(const CollectionFile &file, XmlPart part)
    : m_file(file), m_part(std::move(part)),
      m_blockSize(std::clamp<qint64>(m_part.end - m_part.begin, 1, largestBlock)),
      m_block(std::make_unique_for_overwrite<char[]>(size_t(m_blockSize))),
      m_rest(m_part.head.constData(), size_t(m_part.head.size())) {}

qint64 XmlPartSource::read(char *buffer, qint64 size) {
    if (m_rest.empty() && m_stage == Stage::body) {
        const qint64 wanted = std::min(m_blockSize, m_part.end - m_part.begin);
        const qint64 count = wanted > 0 ? m_file.readAt(m_part.begin, m_block.get(), wanted) : 0;
        m_part.begin += count;
        m_rest = {m_block.get(), size_t(count)};
        if (count == 0) {
            m_stage = Stage::tail;
            m_rest = {m_part.tail.constData(), size_t(m_part.tail.size())};
        }
    }
    const size_t count = std::min(m_rest.size(), size_t(size));
    std::memcpy(buffer, m_rest.data(), count);
    m_rest.remove_prefix(count);
    return qint64(count);
}

} // namespace ludarium
