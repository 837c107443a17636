#include "Services/Runners/CollectionDocument.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/OpenableFile.h"
#include "Host/Workspace.h"

#include <QFileInfo>

namespace ludarium::CollectionDocument {

using namespace Qt::StringLiterals;

bool isInside(const QString &path, const QString &collection) {
    const QString file = QFileInfo(path).canonicalFilePath();
    const QString root = QFileInfo(collection).canonicalFilePath();
    return !file.isEmpty() && !root.isEmpty() && file.startsWith(root.endsWith(u'/') ? root : root + u'/');
}

QCoro::Task<QString> open(Host *host, QString path, QString collection) {
    const auto check = [path, collection]() -> QString {
        if (!QFileInfo::exists(path))
            return u"it does not exist"_s;
        return isInside(path, collection) ? whyNotOpenable(path) : u"it lies outside the collection"_s;
    };
    QString reason = co_await runOnPool(check);
    if (reason.isEmpty() && !host->workspace.openFile(path))
        reason = u"no program for files of its type was found"_s;
    if (reason.isEmpty())
        Log::info(u"Opened %1"_s.arg(path));
    else
        Log::warning(u"Not opened, as %1: %2"_s.arg(reason, path));
    co_return reason;
}

} // namespace ludarium::CollectionDocument
