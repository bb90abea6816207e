#include "pages/CPopupCloser.h"

#include <QAbstractScrollArea>
#include <QMouseEvent>

CPopupCloser::CPopupCloser(QAbstractScrollArea* pPopup)
    : QObject(pPopup)
    , m_pPopup(pPopup)
{
    pPopup->installEventFilter(this);
}

bool CPopupCloser::eventFilter(QObject*, QEvent* pEvent)
{
    // The second of two quick clicks begins with a double click instead of a press.
    const bool bPress
        = pEvent->type() == QEvent::MouseButtonPress || pEvent->type() == QEvent::MouseButtonDblClick;
    // Presses inside go to the viewport and never come here.
    if (!bPress || m_pPopup->rect().contains(static_cast<QMouseEvent*>(pEvent)->pos())) {
        return false;
    }
    m_pPopup->hide();
    return true;
}
