#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

namespace ludarium::demo {

/// The folder that the collection is made in. Both throw std::runtime_error with the reason.
class Tree {
  public:
    explicit Tree(QString root) : m_root(std::move(root)) {}
    /// Writes a file, `path` relative to the root with "/".
    void add(const QString &path, const QByteArray &content) const;
    void addFolder(const QString &path) const;

  private:
    QString m_root;
};

/// Reads a file of the sources; throws std::runtime_error.
QByteArray readFile(const QString &path);

/// Files with their path in an archive or on a disc.
using Files = QList<QPair<QString, QByteArray>>;

/// A zip archive that is the same every time; all files bear the date.
QByteArray zipArchive(const Files &files, qint64 secondsSinceEpoch);

/// An ISO 9660 image (level 1, one folder, upper-case 8.3 names), 2,048 bytes a sector.
QByteArray discImage(const QString &volume, const Files &files, int year);

} // namespace ludarium::demo
