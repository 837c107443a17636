#pragma once

#include "Models/GameVersionOption.h"

#include <QAbstractListModel>
#include <functional>
#include <qqmlregistration.h>

namespace ludarium {

/// The question which version of a game to launch, and the options to choose from.
class VersionPicker : public QAbstractListModel {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(bool active READ isActive NOTIFY changed)
    Q_PROPERTY(QString gameTitle READ gameTitle NOTIFY changed)
    Q_PROPERTY(int count READ count NOTIFY changed)
  public:
    enum Role {
        labelRole = Qt::UserRole,
        versionTypeRole, ///< "Floppy", "CD", …
        audioTypeRole,   ///< "MT-32", …; empty when the option names none
    };

    explicit VersionPicker(QObject *parent = nullptr);

    using OnSelect = std::function<void(const GameVersionOption &)>;
    using OnCancel = std::function<void()>;
    /// Asks. A question that is still open is cancelled.
    void show(GameVersionMenu menu, OnSelect onSelect, OnCancel onCancel = {});

    bool isActive() const { return m_active; }
    QString gameTitle() const { return m_menu.gameTitle; }
    int count() const { return int(m_menu.options.size()); }
    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Answers with an option. A row that there is not changes nothing.
    Q_INVOKABLE void launch(int row);
    Q_INVOKABLE void cancel();

  Q_SIGNALS:
    void changed();

  private:
    void close();

    GameVersionMenu m_menu;
    OnSelect m_onSelect;
    OnCancel m_onCancel;
    bool m_active = false;
};

} // namespace ludarium
