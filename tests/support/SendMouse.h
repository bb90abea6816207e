#pragma once

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(Qt::MouseButtons)

/**
 * Sends one mouse event with local and global position chosen apart, as a
 * window that moves under the cursor gets it. Like a real event it goes on to
 * the parent when the widget leaves it. Returns whether anyone took it.
 */
inline bool SendMouse(QWidget* pWidget, QEvent::Type type, const QPointF& ptLocal, const QPointF& ptGlobal,
                      Qt::MouseButton button, Qt::MouseButtons held)
{
    QMouseEvent event(type, ptLocal, ptLocal, ptGlobal, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(pWidget, &event);
    return event.isAccepted();
}

/** Presses one button at a point of the widget, wherever the widget is. */
inline bool SendPress(QWidget* pWidget, const QPoint& ptLocal, Qt::MouseButton button = Qt::LeftButton)
{
    return SendMouse(pWidget, QEvent::MouseButtonPress, ptLocal, pWidget->mapToGlobal(ptLocal), button,
                     button);
}

/** Moves the cursor to a point of the screen while buttons are held. */
inline bool SendMove(QWidget* pWidget, const QPoint& ptGlobal, Qt::MouseButtons held = Qt::LeftButton)
{
    return SendMouse(pWidget, QEvent::MouseMove, pWidget->mapFromGlobal(ptGlobal), ptGlobal, Qt::NoButton,
                     held);
}

/** Releases one button where the cursor is. */
inline bool SendRelease(QWidget* pWidget, const QPoint& ptGlobal, Qt::MouseButton button = Qt::LeftButton)
{
    return SendMouse(pWidget, QEvent::MouseButtonRelease, pWidget->mapFromGlobal(ptGlobal), ptGlobal, button,
                     Qt::NoButton);
}

/** Whether the widget accepts an event of the mouse with one button that comes to it as not accepted. */
inline bool Accepts(QWidget* pWidget, QEvent::Type type, Qt::MouseButton button)
{
    const QPoint ptLocal(9, 9);
    QMouseEvent event(type, ptLocal, pWidget->mapToGlobal(ptLocal), button, button, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(pWidget, &event);
    return event.isAccepted();
}
