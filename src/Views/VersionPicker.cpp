#include "Views/VersionPicker.h"

#include <utility>

namespace ludarium {

VersionPicker::VersionPicker(QObject *parent) : QAbstractListModel(parent) {}

void VersionPicker::show(GameVersionMenu menu, OnSelect onSelect, OnCancel onCancel) {
    cancel();
    beginResetModel();
    m_menu = std::move(menu);
    m_onSelect = std::move(onSelect);
    m_onCancel = std::move(onCancel);
    m_active = true;
    endResetModel();
    Q_EMIT changed();
}

int VersionPicker::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant VersionPicker::data(const QModelIndex &index, int role) const {
    if (!index.isValid() || index.row() >= count())
        return {};
    const GameVersionOption &option = m_menu.options[index.row()];
    switch (role) {
    case Qt::DisplayRole:
    case labelRole:
        return option.label;
    case versionTypeRole:
        return versionTypeText(option.versionType);
    case audioTypeRole:
        return option.audioType ? audioTypeText(*option.audioType) : QString();
    default:
        return {};
    }
}

QHash<int, QByteArray> VersionPicker::roleNames() const {
    return {{labelRole, "label"}, {versionTypeRole, "versionType"}, {audioTypeRole, "audioType"}};
}

void VersionPicker::launch(int row) {
    if (!m_active || row < 0 || row >= count())
        return;
    const GameVersionOption option = m_menu.options[row];
    const OnSelect answer = std::exchange(m_onSelect, {});
    close();
    if (answer)
        answer(option);
}

void VersionPicker::cancel() {
    if (!m_active)
        return;
    const OnCancel answer = std::exchange(m_onCancel, {});
    close();
    if (answer)
        answer();
}

/// The options stay for the dialog's way out.
void VersionPicker::close() {
    m_onSelect = {};
    m_onCancel = {};
    m_active = false;
    Q_EMIT changed();
}

} // namespace ludarium
