#pragma once

#include <QByteArray>
#include <QString>

namespace ludarium {

/// What a second start tells the instance that runs.
struct Handover {
    /// The desktop's permission to come to the front, which belongs to the start and not to the window; may be empty.
    QByteArray activationToken;
    QString folder; ///< absolute; empty when none was named

    /// The token, a line end, and the folder in UTF-8, which may hold any character.
    QByteArray message() const { return activationToken + '\n' + folder.toUtf8(); }
    static Handover fromMessage(const QByteArray &message) {
        const qsizetype end = message.indexOf('\n');
        return {message.first(std::max<qsizetype>(end, 0)), QString::fromUtf8(message.sliced(end + 1))};
    }
};

} // namespace ludarium
