#include "pages/CEarlyPressGuard.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

CEarlyPressGuard::CEarlyPressGuard(QWidget* pControl)
    : QObject(pControl)
{
    pControl->installEventFilter(this);
}

void CEarlyPressGuard::Begin() { m_sinceBegin.start(); }

bool CEarlyPressGuard::eventFilter(QObject*, QEvent* pEvent)
{
    const bool bPress
        = pEvent->type() == QEvent::MouseButtonPress || pEvent->type() == QEvent::MouseButtonDblClick;
    return bPress && m_sinceBegin.isValid() && !m_sinceBegin.hasExpired(QApplication::doubleClickInterval());
}
