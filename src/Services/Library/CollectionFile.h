#pragma once

#include "Services/Library/XmlRecords.h"

#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

namespace ludarium {

/// A file of the collection, open for reading; several threads may read it at once.
class CollectionFile {
  public:
    /// Throws std::system_error with the reason. Anything but a regular file is refused, so that a pipe of that name
    /// does not hang the load.
    explicit CollectionFile(const QString &path);
    ~CollectionFile();
    CollectionFile(const CollectionFile &) = delete;
    CollectionFile &operator=(const CollectionFile &) = delete;

    qint64 size() const { return m_size; }
    /// Bytes read at `offset`, 0 at the end; throws std::system_error.
    qint64 readAt(qint64 offset, char *buffer, qint64 size) const;

  private:
    int m_descriptor;
    qint64 m_size;
};

/// A stretch of a file as a document of its own: `head`, the bytes from `begin` to `end`, `tail`.
struct XmlPart {
    qint64 begin;
    qint64 end;
    QByteArray head;
    QByteArray tail;
};

/// Cuts a file behind `</Game>` tags into parts of about `partSize` bytes that can be read at the same time: each
/// begins with the start of the file up to the root's start tag and ends with the root's end tag. A file that is too
/// small or of an unexpected kind gives one part, the whole file.
///
/// If every part is well-formed, so is the file, and its records are those of the parts in order: the parts' added end
/// tag closes the root only where the reader stands between two children of the root, which is also where it stands
/// behind the head of the next part. If any part is not (the cut fell into a comment, a CDATA section or a nested
/// element, or the file is broken), the parts say nothing, and the file must be read as a whole.
std::vector<XmlPart> xmlParts(const CollectionFile &file, qint64 partSize);

/// Reads a part, a block at a time.
class XmlPartSource : public XmlSource {
  public:
    XmlPartSource(const CollectionFile &file, XmlPart part);
    qint64 read(char *buffer, qint64 size) override;

  private:
    static constexpr qint64 largestBlock = 128 * 1024;

    const CollectionFile &m_file;
    XmlPart m_part;
    qint64 m_blockSize; ///< a small file takes a small block
    std::unique_ptr<char[]> m_block;
    std::string_view m_rest; ///< of the head, the block or the tail
    enum class Stage { body, tail } m_stage = Stage::body;
};

} // namespace ludarium
