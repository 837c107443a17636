#include "Services/Dos/DOSBoxRequirementsManager.h"

#include "Host/AppLogger.h"

#include <QFile>
#include <QFileInfo>
#include <QMutexLocker>
#include <QStringDecoder>

namespace ludarium {

namespace {

using namespace Qt::StringLiterals;

// The real file has some hundred kilobytes.
constexpr qint64 largestDatabase = 64 << 20;

std::optional<QString> readText(const QString &path, QString &problem) {
    QFile file(path);
    if (!QFileInfo(path).isFile()) {
        problem = u"it is no file"_s;
    } else if (!file.open(QIODevice::ReadOnly)) {
        problem = file.errorString();
    } else if (file.size() > largestDatabase) {
        problem = u"it is too large"_s;
    } else {
        const QByteArray bytes = file.read(largestDatabase);
        QStringDecoder decoder(QStringDecoder::Utf8);
        const QString text = decoder.decode(bytes);
        if (file.error() != QFileDevice::NoError)
            problem = file.errorString();
        else if (decoder.hasError())
            problem = u"it is not UTF-8 text"_s;
        else
            return text;
    }
    return std::nullopt;
}

} // namespace

DOSBoxRequirementsManager::DOSBoxRequirementsManager() : m_table(std::make_shared<const RequirementTable>()) {}

void DOSBoxRequirementsManager::loadDatabase(const QString &collection) {
    const QString path = collection + u"/eXo/util/dosbox.txt"_s;
    if (!QFileInfo::exists(path)) {
        Log::warning(u"⚠️ DOSBox requirements database not found at: %1"_s.arg(path));
        return;
    }
    QString problem;
    const std::optional<QString> text = readText(path, problem);
    if (!text) {
        Log::warning(u"⚠️ DOSBox requirements database %1 could not be read: %2"_s.arg(path, problem));
        const QMutexLocker lock(&m_mutex);
        m_databasePath = path;
        return;
    }
    const auto table = std::make_shared<const RequirementTable>(RequirementTable::parse(*text));
    const RequirementStats &stats = table->stats();
    Log::info(
        u"DOSBox requirements: %1 games (%2 Staging, %3 DOSBox-X, %4 ECE, %5 vanilla, %6 custom)"_s.arg(stats.total)
            .arg(stats.staging)
            .arg(stats.dosboxX)
            .arg(stats.ece)
            .arg(stats.vanilla)
            .arg(stats.custom));
    const QMutexLocker lock(&m_mutex);
    m_databasePath = path;
    m_table = table;
}

std::optional<EmulatorRequirement> DOSBoxRequirementsManager::getRequirement(const QString &title) const {
    const std::shared_ptr<const RequirementTable> table = requirements();
    const EmulatorRequirement *found = table->find(title);
    return found ? std::optional(*found) : std::nullopt;
}

std::shared_ptr<const RequirementTable> DOSBoxRequirementsManager::requirements() const {
    const QMutexLocker lock(&m_mutex);
    return m_table;
}

QString DOSBoxRequirementsManager::databasePath() const {
    const QMutexLocker lock(&m_mutex);
    return m_databasePath;
}

} // namespace ludarium
