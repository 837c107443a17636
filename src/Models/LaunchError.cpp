#include "Models/LaunchError.h"

namespace ludarium {

namespace {

constexpr char16_t linuxPatchPage[] =
    u"eXoDOS Linux Patch Required\n\nLudarium requires the Linux/Mac scripts from the eXoDOS Linux patch to run "
    u"games.\n\nTo install:\n1. Download the Linux patch from eXoDOS\n2. Extract it to your eXoDOS collection "
    u"folder\n3. The patch adds .bsh (bash) scripts needed for macOS\n\nWhat the patch provides:\n• .bsh launch "
    u"scripts for all games\n• .command files for macOS Terminal\n• dosbox_linux.conf files\n• Shared utility "
    u"scripts\n\nWhere to get it:\n• Check the eXoDOS download page\n• Look for \"Linux patch\" or \"eXoGUI "
    u"files\"\n• Or search for \"eXoDOS Linux compatibility\"\n\nAfter installing the patch, restart Ludarium.";

} // namespace

LaunchError::LaunchError(Case kind, QString detail) : m_case(kind), m_detail(std::move(detail)) {
    m_what = text().toUtf8();
}

QString LaunchError::text() const {
    switch (m_case) {
    case Case::fileNotFound:
        return QStringLiteral("File not found: %1").arg(m_detail);
    case Case::emulatorNotFound:
        return QStringLiteral("%1 not found. Please install %1 to run this game.").arg(m_detail);
    case Case::launchFailed:
        return QStringLiteral("Failed to launch: %1").arg(m_detail);
    case Case::scriptError:
        return QStringLiteral("Script error: %1").arg(m_detail);
    case Case::scriptExecutionFailed:
        return QStringLiteral("Failed to execute script: %1").arg(m_detail);
    case Case::unsupportedFileType:
    case Case::custom:
        return m_detail;
    case Case::noCollectionPath:
        return QStringLiteral("No collection path configured. Please select your eXoDOS folder in Settings.");
    case Case::noApplicationPath:
        return QStringLiteral("This game does not have a configured launch path.");
    case Case::linuxPatchNotInstalled:
        return QString::fromUtf16(linuxPatchPage);
    }
    Q_UNREACHABLE();
}

} // namespace ludarium
