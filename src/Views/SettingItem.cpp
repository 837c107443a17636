#include "Views/SettingItem.h"

#include "Host/AppLogger.h"
#include "Host/SettingsStore.h"

#include <array>

namespace ludarium {

SettingItem::SettingItem(Description description, QObject *parent)
    : QObject(parent), m_description(std::move(description)) {}

QString SettingItem::kind() const {
    static constexpr std::array names{"flag", "choice", "text", "folder", "action", "info", "elsewhere"};
    return QString::fromLatin1(names.at(size_t(m_description.kind)));
}

void SettingItem::setRead(std::function<QVariant()> read, const QString &defaultText) {
    m_description.read = std::move(read);
    m_description.defaultText = defaultText;
}

QVariant SettingItem::value() const {
    return m_description.read ? m_description.read() : QVariant();
}

void SettingItem::setValue(const QVariant &value) {
    if (!m_description.write || value == this->value())
        return;
    try {
        m_description.write(value);
    } catch (const SettingsError &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(QStringLiteral("Failed to save the setting %1: %2").arg(key(), reason));
        Q_EMIT refused(reason);
    }
    // Also after a refusal, so that the control shows again what holds.
    Q_EMIT valueChanged();
}

void SettingItem::activate() {
    if (m_description.kind == Kind::action && m_description.write)
        m_description.write({});
}

} // namespace ludarium
