#include "Host/SettingsStore.h"

#include "Host/AppLogger.h"

namespace ludarium {

void SettingsStore::setAside(const QString &key) {
    const QVariant value = rawValue(key);
    if (!value.isValid())
        return;
    const QString aside = QStringLiteral("%1.corrupt-%2")
                              .arg(key, QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddHHmmsszzz")));
    Log::error(QStringLiteral("⚠️ The setting %1 cannot be understood and was kept as %2").arg(key, aside));
    try {
        transaction([&] {
            setRawValue(aside, value);
            remove(key);
        });
    } catch (const std::exception &error) {
        Log::error(QString::fromUtf8(error.what()));
    }
}

} // namespace ludarium
