#include "Services/Library/BatchOperation.h"

#include <algorithm>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

struct TypeRow {
    BatchOperationType type;
    QString name;
    QString title;
};

const TypeRow &row(BatchOperationType type) {
    using enum BatchOperationType;
    static const TypeRow rows[] = {
        {install, u"install"_s, u"Install Games"_s},
        {uninstall, u"uninstall"_s, u"Uninstall Games"_s},
        {addToFavorites, u"addToFavorites"_s, u"Add to Favorites"_s},
        {removeFromFavorites, u"removeFromFavorites"_s, u"Remove from Favorites"_s},
        {addToPlaylist, u"addToPlaylist"_s, u"Add to Playlist"_s},
        {exportMetadata, u"exportMetadata"_s, u"Export Metadata"_s},
        {verifyFiles, u"verifyFiles"_s, u"Verify Files"_s},
    };
    return *std::find_if(std::begin(rows), std::end(rows), [&](const TypeRow &known) { return known.type == type; });
}

} // namespace

const QList<BatchOperationType> &batchOperationTypes() {
    using enum BatchOperationType;
    static const QList<BatchOperationType> types{install,       uninstall,      addToFavorites, removeFromFavorites,
                                                 addToPlaylist, exportMetadata, verifyFiles};
    return types;
}

QString batchOperationName(BatchOperationType type) {
    return row(type).name;
}

QString batchOperationTitle(BatchOperationType type) {
    return row(type).title;
}

QString batchOperationStatusName(BatchOperationStatus status) {
    switch (status) {
    case BatchOperationStatus::pending:
        return u"pending"_s;
    case BatchOperationStatus::inProgress:
        return u"inProgress"_s;
    case BatchOperationStatus::completed:
        return u"completed"_s;
    case BatchOperationStatus::failed:
        return u"failed"_s;
    case BatchOperationStatus::skipped:
        return u"skipped"_s;
    }
    Q_UNREACHABLE();
}

qsizetype BatchOperation::count(BatchOperationStatus status) const {
    return std::count_if(results.cbegin(), results.cend(),
                         [&](const BatchOperationResult &result) { return result.status == status; });
}

} // namespace ludarium
