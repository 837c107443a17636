#pragma once

#include <QByteArray>
#include <QString>
#include <string_view>

namespace ludarium {

/// Bytes of a document, read front to back.
class XmlSource {
  public:
    virtual ~XmlSource() = default;
    /// Fills up to `size` bytes; 0 at the end. A failure throws.
    virtual qint64 read(char *buffer, qint64 size) = 0;
};

/// A document in memory that goes through the reader piece by piece, as if the pieces were joined.
class XmlTextSource : public XmlSource {
  public:
    explicit XmlTextSource(std::string_view first, std::string_view second = {}, std::string_view third = {})
        : m_pieces{first, second, third} {}
    qint64 read(char *buffer, qint64 size) override;

  private:
    std::string_view m_pieces[3];
};

/// Receives the records of a document of the shape root > record > field, in order. The name of the root and everything
/// that the sink does not ask for is passed over.
class XmlRecordSink {
  public:
    virtual ~XmlRecordSink() = default;
    /// Whether the record (a child of the root) is wanted.
    virtual bool beginRecord(std::string_view name) = 0;
    /// The number of a field of the current record, -1 when it is not wanted.
    virtual int field(std::string_view name) = 0;
    /// The text of a field, UTF-8, without surrounding white space.
    virtual void fieldText(int field, std::string_view text) = 0;
    /// The field holds elements, so that it cannot be read as text.
    virtual void fieldUnreadable(int field) = 0;
    virtual void endRecord() = 0;
};

struct XmlResult {
    bool wellFormed = false;
    QString error; ///< why not, with the line
};

/// Streams a document into `sink`. What the sink has received of a document that turns out not to be well-formed is for
/// the caller to drop. Entities other than the five of XML are errors, and so is a document type declaration: nothing
/// is expanded and nothing else is read. Exceptions of the source and the sink pass through.
XmlResult readXmlRecords(XmlSource &source, XmlRecordSink &sink);

/// Without the white space of Unicode around it.
std::string_view trimmedUtf8(std::string_view text);

} // namespace ludarium
