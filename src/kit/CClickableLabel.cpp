#include "kit/CClickableLabel.h"

#include <QMouseEvent>

CClickableLabel::CClickableLabel(QWidget* parent, Qt::WindowFlags)
    : QLabel(parent)
{
    setAttribute(Qt::WA_MouseTracking);
}

// Neither handler calls QLabel's: that one leaves the press to the parent, and
// the release would never come back here.
void CClickableLabel::mousePressEvent(QMouseEvent* pEvent) { m_ptPress = pEvent->pos(); }

void CClickableLabel::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (pEvent->pos() == m_ptPress) {
        emit SignalLabelClicked();
    }
}
