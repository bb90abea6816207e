#include "pages/CEarlyPressGuard.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>

CEarlyPressGuard::CEarlyPressGuard(QWidget* pControl)
    : QObject(pControl)
    , m_pControl(pControl)
{
    // The first press is another control's.
    qApp->installEventFilter(this);
}

void CEarlyPressGuard::Begin() { m_nPressBefore = m_nLastPress; }

// Hardly any second press takes longer; who presses later may have seen the page come up.
int CEarlyPressGuard::IntervalMs() { return QApplication::doubleClickInterval() * 3 / 4; }

bool CEarlyPressGuard::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    if (pEvent->type() != QEvent::MouseButtonPress && pEvent->type() != QEvent::MouseButtonDblClick) {
        return false;
    }
    const ulong nTimestamp = static_cast<QMouseEvent*>(pEvent)->timestamp();
    if (pWatched == m_pControl && IsEarly(nTimestamp)) {
        return true;
    }
    m_nLastPress = nTimestamp;
    return false;
}

// By the clock of the window system, which knows when the mouse was pressed, however
// late the press is dealt with.
bool CEarlyPressGuard::IsEarly(ulong nTimestamp) const
{
    return m_nPressBefore != 0 && nTimestamp >= m_nPressBefore
        && nTimestamp - m_nPressBefore < ulong(IntervalMs());
}
