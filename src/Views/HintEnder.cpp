#include "Views/HintEnder.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QQuickWindow>

namespace ludarium {

namespace {

bool isModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr;
}

} // namespace

HintEnder::HintEnder(QObject *parent) : QObject(parent) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool HintEnder::eventFilter(QObject *watched, QEvent *event) {
    // What is a shortcut arrives as no press, and at the item that has the focus.
    const bool pressed = event->type() == QEvent::KeyPress && qobject_cast<QQuickWindow *>(watched);
    if ((pressed || event->type() == QEvent::ShortcutOverride) && !isModifier(static_cast<QKeyEvent *>(event)->key()))
        if (QWindow *window = QGuiApplication::focusWindow()) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(window, &leave);
        }
    return false;
}

} // namespace ludarium
