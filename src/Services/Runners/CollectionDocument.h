#pragma once

#include <QCoro/QCoroTask>
#include <QString>

namespace ludarium {

struct Host;

/// A file of a collection that is opened with the desktop's program for its type.
namespace CollectionDocument {

/// Whether the file, with all links followed, lies in the collection's folder. Looks at the disk.
bool isInside(const QString &path, const QString &collection);
/// Opens it and returns why it was not opened, empty on success. A file outside the collection, a program, a script
/// and what makes a desktop run a command are refused. Looks at the disk on the thread pool.
QCoro::Task<QString> open(Host *host, QString path, QString collection);

} // namespace CollectionDocument

} // namespace ludarium
