#pragma once

#include "Models/Game.h"

#include <QObject>
#include <QVariantList>
#include <qqmlregistration.h>

namespace ludarium {

class AppState;

/// The entries of the selected game's group, while duplicates are grouped: a button each.
class GameVariants : public QObject {
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(QVariantList list READ list NOTIFY changed)
  public:
    explicit GameVariants(AppState &state, QObject *parent = nullptr);

    /// `id`, `text`, `help`, `platform`, `installed` and `selected`; empty for a game that stands alone.
    QVariantList list() const { return m_list; }
    Q_INVOKABLE void select(const QString &gameId);

    /// The help text of a variant's button.
    static QString helpText(const GamePtr &game);

  Q_SIGNALS:
    void changed();

  private:
    void refresh();

    AppState &m_state;
    QVariantList m_list;
};

} // namespace ludarium
