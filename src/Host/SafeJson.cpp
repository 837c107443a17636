#include "Host/SafeJson.h"

#include <QString>

namespace ludarium {

namespace {

/// Whether brackets nest deeper than allowed, without recursion and before anything is built.
bool isTooDeep(const QByteArray &bytes) {
    int depth = 0;
    bool inText = false;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char c = bytes[i];
        if (inText) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inText = false;
        } else if (c == '"') {
            inText = true;
        } else if (c == '{' || c == '[') {
            if (++depth > JsonLimit::levels)
                return true;
        } else if (c == '}' || c == ']') {
            --depth;
        }
    }
    return false;
}

} // namespace

std::optional<QJsonDocument> parseJson(const QByteArray &bytes, QString *problem) {
    QString reason;
    if (bytes.size() > JsonLimit::bytes) {
        reason = QStringLiteral("the JSON is larger than 16 MiB");
    } else if (isTooDeep(bytes)) {
        reason = QStringLiteral("the JSON is nested too deeply");
    } else {
        QJsonParseError error;
        QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
        if (error.error == QJsonParseError::NoError)
            return document;
        reason = QStringLiteral("%1 at byte %2").arg(error.errorString()).arg(error.offset);
    }
    if (problem)
        *problem = reason;
    return std::nullopt;
}

} // namespace ludarium
