// What comes before the first game of a load is read.

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Dialogs.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Library/LoadSteps.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <unistd.h>

namespace ludarium {

namespace {

void logLinuxPatch(const QString &collection) {
    const QDir dos(collection + QStringLiteral("/eXo/eXoDOS"));
    if (!dos.exists()) {
        Log::info(QStringLiteral(
            "ℹ️ No eXoDOS folder found - skipping Linux patch check (standalone non-DOS collection)"));
        return;
    }
    if (!dos.exists(QStringLiteral("!dos"))) {
        Log::warning(
            QStringLiteral("⚠️ eXoDOS present but !dos folder not found - Linux patch may not be installed"));
        return;
    }
    // One folder tells: the patch adds scripts to every game. The folders, of which there are thousands, are not
    // listed.
    QDirIterator folders(dos.filePath(QStringLiteral("!dos")), QDir::Dirs | QDir::NoDotAndDotDot);
    for (int looked = 0; looked < 20 && folders.hasNext(); ++looked)
        if (!QDir(folders.next()).entryList({QStringLiteral("*.bsh")}, QDir::Files).isEmpty()) {
            Log::info(QStringLiteral("✅ Linux patch detected - .bsh scripts found"));
            return;
        }
    Log::warning(QStringLiteral("⚠️ No .bsh files found in eXoDOS game folders"));
}

} // namespace

bool GameLibrary::validateCollectionStructure(const QString &collection) {
    const QDir folder(collection);
    if (!folder.exists(QStringLiteral("Data")) && !folder.exists(QStringLiteral("xml"))) {
        Log::error(QStringLiteral("❌ Validation failed: No Data or xml folder found"));
        return false;
    }
    if (folder.exists(QStringLiteral("Data/Platforms")))
        return true;
    if (folder.exists(QStringLiteral("xml/all"))) {
        Log::info(QStringLiteral("✅ Lite collection structure detected: xml/all/"));
        return true;
    }
    for (const char *name : {"eXo", "Images", "Videos", "Manuals"})
        if (folder.exists(QLatin1StringView(name)))
            return true;
    return false;
}

QCoro::Task<bool> GameLibrary::mayUseReadOnly(QString collection) {
    const QPointer<GameLibrary> self(this);
    // A folder that is gone is not a read-only one: a cached library is shown all the same.
    auto testWritable = [collection] {
        return !QFileInfo::exists(collection) || ::access(QFile::encodeName(collection).constData(), W_OK) == 0;
    };
    const bool writable = co_await runOnPool(testWritable);
    requireAlive(self);
    if (writable)
        co_return true;
    Log::warning(QStringLiteral("Collection volume is read-only: %1").arg(collection));
    Alert alert;
    alert.title = QStringLiteral("Read-Only Collection");
    alert.text = QStringLiteral("The collection at \"%1\" is on a read-only volume. Games may not launch correctly "
                                "because the app needs to write configuration files.\n\nPlease copy the collection to "
                                "a writable drive, or remount the volume with write access.")
                     .arg(QFileInfo(collection).fileName());
    alert.buttons = QStringList{QStringLiteral("Continue Anyway"), QStringLiteral("Cancel")};
    alert.style = Alert::Style::Warning;
    const int answer = co_await m_host.dialogs.ask(alert);
    requireAlive(self);
    co_return answer == 0;
}

QCoro::Task<> GameLibrary::offerSetup(QString collection) {
    const QPointer<GameLibrary> self(this);
    if (!m_services.setupStatus || !m_services.promptSetup || !m_services.runSetup ||
        (m_services.isSettingUp && m_services.isSettingUp()))
        co_return;
    const auto status = m_services.setupStatus;
    auto readStatus = [=] { return status(collection); };
    const LibraryServices::Setup setup = co_await runOnPool(readStatus);
    requireAlive(self);
    if (!setup.needsSetup)
        co_return;
    co_await step(QStringLiteral("Collection needs setup..."), m_loadingProgress);
    const bool wanted = co_await m_services.promptSetup(collection);
    requireAlive(self);
    if (!wanted)
        co_return;
    co_await step(QStringLiteral("Running collection setup..."), m_loadingProgress);
    QString failure;
    try {
        co_await m_services.runSetup(collection);
    } catch (...) {
        failure = currentExceptionText();
    }
    requireAlive(self);
    if (!failure.isEmpty()) {
        Log::error(QStringLiteral("Collection setup failed: %1").arg(failure));
        co_return;
    }
    clearCache(collection);
    Log::info(QStringLiteral("✅ Cache cleared after setup to force re-parsing"));
}

QCoro::Task<> GameLibrary::offerRepair(QString collection) {
    const QPointer<GameLibrary> self(this);
    if (!m_services.setupStatus || !m_services.promptRepair || !m_services.repairMetadataExtraction ||
        (m_services.isSettingUp && m_services.isSettingUp()))
        co_return;
    const auto status = m_services.setupStatus;
    auto readStatus = [=] { return status(collection); };
    const LibraryServices::Setup setup = co_await runOnPool(readStatus);
    requireAlive(self);
    if (setup.incomplete.isEmpty())
        co_return;
    co_await step(QStringLiteral("Checking metadata extraction..."), m_loadingProgress);
    Log::info(QStringLiteral("Detected incomplete metadata extraction - prompting for repair"));
    for (const QString &name : setup.incomplete) {
        Log::info(QStringLiteral("Collection %1 needs metadata repair").arg(name));
        const bool wanted = co_await m_services.promptRepair(collection, name);
        requireAlive(self);
        if (!wanted)
            continue;
        co_await step(QStringLiteral("Repairing %1 metadata...").arg(name), m_loadingProgress);
        QString failure;
        try {
            co_await m_services.repairMetadataExtraction(collection, name);
        } catch (...) {
            failure = currentExceptionText();
        }
        requireAlive(self);
        if (failure.isEmpty())
            Log::info(QStringLiteral("Metadata repair completed for %1").arg(name));
        else
            Log::error(QStringLiteral("Metadata repair failed for %1: %2").arg(name, failure));
    }
}

/// Everything that comes before the first game is read; false when the user cancelled.
QCoro::Task<bool> GameLibrary::prepare(QString collection) {
    const QPointer<GameLibrary> self(this);
    const bool goOn = co_await mayUseReadOnly(collection);
    if (!goOn) {
        setLoading(false);
        setStatus({}, m_loadingProgress);
        co_return false;
    }
    co_await offerSetup(collection);
    co_await offerRepair(collection);
    const LibraryServices services = m_services;
    auto loadDatabases = [collection, services] {
        logLinuxPatch(collection);
        if (services.loadScummVMDatabase)
            services.loadScummVMDatabase(collection);
    };
    co_await runOnPool(loadDatabases);
    requireAlive(self);
    co_await step(QStringLiteral("Checking download-on-demand support..."), m_loadingProgress);
    if (services.ensureDownloadIndex)
        co_await services.ensureDownloadIndex(collection);
    requireAlive(self);
    auto loadIndexes = [collection, services] {
        if (services.loadDownloadIndex)
            services.loadDownloadIndex(collection);
        if (services.loadRequirements)
            services.loadRequirements(collection);
    };
    co_await runOnPool(loadIndexes);
    requireAlive(self);
    co_return true;
}

} // namespace ludarium
