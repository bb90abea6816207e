#include "kit/CClickableLabel.h"

#include "kit/SkinColor.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

// Of the corners of the mark, as the style sheet has it for the drop-down button.
static const int RADIUS = 3;

CClickableLabel::CClickableLabel(QWidget* parent, Qt::WindowFlags)
    : QLabel(parent)
{
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_Hover);
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

void CClickableLabel::keyPressEvent(QKeyEvent* pEvent)
{
    switch (pEvent->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!pEvent->isAutoRepeat()) {
            emit SignalLabelClicked();
        }
        return;
    default:
        QLabel::keyPressEvent(pEvent);
    }
}

// A background would be hidden behind the white of an animation, so the tint
// goes over it and leaves all that is darker as it is.
void CClickableLabel::paintEvent(QPaintEvent* pEvent)
{
    QLabel::paintEvent(pEvent);
    if (!hasFocus() && !underMouse()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(SkinColor::TINT));
    painter.drawRoundedRect(rect(), RADIUS, RADIUS);
    if (hasFocus()) {
        painter.setPen(QColor(SkinColor::FOCUS_RING));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), RADIUS, RADIUS);
    }
}
