#pragma once

#include <QObject>

class QWidget;

/**
 * Keeps the second press of a double click from a control that has come up where
 * another one was: of two presses of the mouse soon after each other, the first of them
 * before the control came up, the second does not count. Keys count at once. GUI thread
 * only.
 */
class CEarlyPressGuard : public QObject
{
    Q_OBJECT

public:
    /** Guards the control, which owns it; before Begin every press counts. */
    explicit CEarlyPressGuard(QWidget* pControl);

    /** The control comes up now. */
    void Begin();

    /** How soon is too soon, in ms: three quarters of the system's double-click interval. */
    static int IntervalMs();

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    bool IsEarly(ulong nTimestamp) const;

    QWidget* const m_pControl;
    ulong m_nLastPress = 0; // ms of the window system's clock; 0 before the first press
    ulong m_nPressBefore = 0; // the last one before the control came up; 0 when there is none
};
