#pragma once

#include <QElapsedTimer>
#include <QObject>

class QWidget;

/**
 * Keeps the second press of a double click from a control that has just come up
 * where another one was: presses of the mouse count only once the double-click
 * interval has passed. Keys count at once. GUI thread only.
 */
class CEarlyPressGuard : public QObject
{
    Q_OBJECT

public:
    /** Guards the control, which owns it; before Begin every press counts. */
    explicit CEarlyPressGuard(QWidget* pControl);

    /** The control comes up now. */
    void Begin();

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    QElapsedTimer m_sinceBegin;
};
