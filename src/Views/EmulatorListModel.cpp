#include "Views/EmulatorListModel.h"

#include "Host/AppLogger.h"
#include "Host/Async.h"
#include "Host/Host.h"
#include "Host/Settings.h"
#include "Host/SettingsStore.h"
#include "Services/Emulators/PackageManager.h"
#include "Services/Emulators/ToolVersion.h"

#include <QPointer>
#include <algorithm>

namespace ludarium {

EmulatorListModel::EmulatorListModel(Host &host, EmulatorManager &emulators, QObject *parent)
    : QAbstractListModel(parent), m_host(host), m_emulators(emulators) {
    connect(&emulators, &EmulatorManager::statusChanged, this, &EmulatorListModel::rowsChanged);
}

int EmulatorListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(emulatorPrograms().size());
}

QHash<int, QByteArray> EmulatorListModel::roleNames() const {
    return {{nameRole, "name"},       {stateRole, "status"},      {pathRole, "path"},
            {versionRole, "version"}, {settableRole, "settable"}, {customPathRole, "customPath"},
            {commandRole, "command"}};
}

QVariant EmulatorListModel::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const EmulatorProgram program = emulatorPrograms()[index.row()];
    const EmulatorStatus status = m_emulators.status(program);
    switch (role) {
    case nameRole:
        return emulatorProgramName(program);
    case stateRole:
        return status.state == EmulatorStatus::State::installed      ? QStringLiteral("installed")
               : status.state == EmulatorStatus::State::notInstalled ? QStringLiteral("notInstalled")
                                                                     : QStringLiteral("unknown");
    case pathRole:
        return status.path;
    case versionRole:
        return m_versions.value(status.path);
    case settableRole:
        return emulatorPathSetting(program, m_host.paths.layout()) != nullptr;
    case customPathRole:
        return customPath(program);
    case commandRole:
        return emulatorInstallCommand(program, m_host.paths.layout());
    default:
        return {};
    }
}

QString EmulatorListModel::customPath(EmulatorProgram program) const {
    const Setting<QString> *setting = emulatorPathSetting(program, m_host.paths.layout());
    return setting ? m_host.settings.value(*setting) : QString();
}

int EmulatorListModel::foundCount() const {
    return int(std::count_if(emulatorPrograms().cbegin(), emulatorPrograms().cend(), [this](EmulatorProgram program) {
        return m_emulators.status(program).state == EmulatorStatus::State::installed;
    }));
}

void EmulatorListModel::check() {
    if (m_checking)
        m_again = true; // a path changed meanwhile
    else
        spawn(run(), "looking for emulators");
}

QCoro::Task<> EmulatorListModel::run() {
    const QPointer<EmulatorListModel> self(this);
    m_checking = true;
    Q_EMIT checkingChanged();
    do {
        m_again = false;
        m_emulators.forgetFastLookups();
        co_await m_emulators.checkEmulatorStatus();
        if (self)
            co_await askVersions();
        if (!self)
            co_return;
    } while (m_again);
    m_checking = false;
    rowsChanged();
    Q_EMIT checkingChanged();
}

QCoro::Task<> EmulatorListModel::askVersions() {
    const QPointer<EmulatorListModel> self(this);
    m_versions.clear();
    for (const EmulatorProgram program : emulatorPrograms()) {
        const QString path = m_emulators.status(program).path;
        if (path.isEmpty() || m_versions.contains(path))
            continue;
        const QString version = co_await emulatorVersion(m_host, program, path);
        if (!self || m_again)
            co_return;
        m_versions.insert(path, version);
        rowsChanged();
    }
}

void EmulatorListModel::rowsChanged() {
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

void EmulatorListModel::setPath(int row, const QUrl &file) {
    if (file.isLocalFile())
        storePath(row, file.toLocalFile());
}

void EmulatorListModel::searchUsualPlaces(int row) {
    storePath(row, {});
}

void EmulatorListModel::storePath(int row, const QString &path) {
    if (row < 0 || row >= rowCount())
        return;
    if (const auto *setting = emulatorPathSetting(emulatorPrograms()[row], m_host.paths.layout())) {
        try {
            if (path.isEmpty())
                m_host.settings.remove(*setting);
            else
                m_host.settings.setValue(*setting, path);
        } catch (const SettingsError &error) {
            const QString reason = QString::fromUtf8(error.what());
            Log::error(QStringLiteral("Failed to save the path of an emulator: %1").arg(reason));
            Q_EMIT warned(reason);
        }
    }
    rowsChanged();
    check();
}

} // namespace ludarium
