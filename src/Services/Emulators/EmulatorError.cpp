#include "Services/Emulators/EmulatorError.h"

namespace ludarium {

EmulatorError::EmulatorError(Case kind, QString detail) : m_case(kind), m_detail(std::move(detail)) {
    m_what = text().toUtf8();
}

QString EmulatorError::text() const {
    switch (m_case) {
    case Case::installationFailed:
        return QStringLiteral("Installation failed: %1").arg(m_detail);
    case Case::notFound:
        return QStringLiteral("%1 not found").arg(m_detail);
    case Case::invalidPath:
        return QStringLiteral("Invalid path: %1").arg(m_detail);
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
