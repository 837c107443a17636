#pragma once

#include "Host/AppLogger.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"

namespace ludarium {

/// Keeps what the user chose in the window, which holds for this run even when the store refuses it. Returns why it
/// does; empty when it is kept.
template<typename T>
QString keepSetting(SettingsStore &settings, const Setting<T> &setting, const T &value) {
    try {
        settings.setValue(setting, value);
        return {};
    } catch (const std::exception &error) {
        const QString reason = QString::fromUtf8(error.what());
        Log::error(QStringLiteral("Failed to save the setting %1: %2").arg(QString::fromUtf8(setting.key), reason));
        return reason;
    }
}

} // namespace ludarium
