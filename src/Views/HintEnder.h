#pragma once

#include <QObject>

namespace ludarium {

/// Takes the pointer away from what lies under it when a key is pressed, until it moves again: a hint that it brought
/// up would stay in front of what the key opens.
class HintEnder : public QObject {
    Q_OBJECT
  public:
    /// Watches every window of the program.
    explicit HintEnder(QObject *parent = nullptr);

    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace ludarium
