#include "Views/DependencyListModel.h"

#include "Host/Async.h"
#include "Host/Host.h"
#include "Services/Emulators/PrerequisitesManager.h"

#include <algorithm>

namespace ludarium {

namespace {

// Homebrew's package script, as its own page tells to run it.
const QString homebrewInstall =
    QStringLiteral("/bin/bash -c \"$(curl -fsSL https://raw.githubusercontent.com/Homebrew/install/HEAD/install.sh)\"");

} // namespace

DependencyListModel::DependencyListModel(Host &host, PrerequisitesManager &prerequisites, QObject *parent)
    : QAbstractListModel(parent), m_host(host), m_prerequisites(prerequisites) {
    connect(&prerequisites, &PrerequisitesManager::changed, this, [this] {
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
        Q_EMIT changed();
    });
}

QList<DependencyListModel::Row> DependencyListModel::rows() const {
    const Prerequisites &found = m_prerequisites.found();
    const bool mac = m_host.paths.layout() == HostLayout::MacOS;
    const QString manager = mac ? QStringLiteral("Homebrew") : tr("Package manager");
    const QString sed = mac ? QStringLiteral("gnu-sed") : QStringLiteral("GNU sed");
    const QString sedPackage = mac ? QStringLiteral("gnu-sed") : QStringLiteral("sed");
    return {
        {manager,
         tr("Installs everything else"),
         {},
         true,
         found.homebrewInstalled(),
         mac ? QString() : found.packageManager.name},
        {sed, tr("Edits the configuration of games before a start"), sedPackage, false, found.gsedInstalled, {}},
        {QStringLiteral("aria2"),
         tr("Downloads games of a lite collection"),
         QStringLiteral("aria2"),
         false,
         found.aria2Installed,
         {}},
        {QStringLiteral("wget"),
         tr("Fetches what a collection's own scripts ask for"),
         QStringLiteral("wget"),
         false,
         found.wgetInstalled,
         {}},
        {QStringLiteral("bash"), tr("Runs the scripts of a collection; version 5 or later"), QStringLiteral("bash"),
         false, found.bashVersionOK, found.bashVersion},
    };
}

int DependencyListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(rows().size());
}

QHash<int, QByteArray> DependencyListModel::roleNames() const {
    return {{nameRole, "name"},
            {purposeRole, "purpose"},
            {requiredRole, "required"},
            {installedRole, "installed"},
            {detailRole, "detail"}};
}

QVariant DependencyListModel::data(const QModelIndex &index, int role) const {
    const QList<Row> all = rows();
    if (!index.isValid() || index.row() >= all.size())
        return {};
    const Row &row = all[index.row()];
    switch (role) {
    case nameRole:
        return row.name;
    case purposeRole:
        return row.purpose;
    case requiredRole:
        return row.required;
    case installedRole:
        return row.installed;
    case detailRole:
        return row.detail;
    default:
        return {};
    }
}

bool DependencyListModel::isChecking() const {
    return m_prerequisites.isChecking();
}

bool DependencyListModel::isChecked() const {
    return m_prerequisites.isChecked();
}

bool DependencyListModel::isComplete() const {
    const QList<Row> all = rows();
    return std::all_of(all.cbegin(), all.cend(), [](const Row &row) { return row.installed; });
}

QString DependencyListModel::command() const {
    if (!isChecked())
        return {};
    const PackageManager &manager = m_prerequisites.found().packageManager;
    if (manager.path.isEmpty())
        return m_host.paths.layout() == HostLayout::MacOS ? homebrewInstall : QString();
    QStringList packages;
    for (const Row &row : rows())
        if (!row.installed && !row.package.isEmpty())
            packages.append(row.package);
    return packages.isEmpty() ? QString() : installCommand(manager.kind, packages);
}

bool DependencyListModel::isMt32Installed() const {
    return m_prerequisites.found().mt32RomsInstalled;
}

QString DependencyListModel::mt32Folder() const {
    return m_prerequisites.mt32RomFolder();
}

void DependencyListModel::check() {
    spawn(m_prerequisites.checkAll(), "looking for tools");
}

void DependencyListModel::openMt32Folder() {
    spawn(m_prerequisites.openMT32RomFolder(), "showing the folder of the MT-32 ROMs");
}

} // namespace ludarium
