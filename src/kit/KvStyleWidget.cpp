#include "kit/KvStyleWidget.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QScreen>

// The bounds of a dragged window, fixed and uneven on purpose: it may hang far
// off to the left, but its top never goes under the menu bar of the screen and
// 200 x 100 pixels of it stay in reach at the right and at the bottom.
static const int LEAST_X = -799;
static const int LEAST_Y = 23;
static const int KEPT_AT_RIGHT = 200;
static const int KEPT_AT_BOTTOM = 100;

KvStyleWidget::KvStyleWidget(QWidget* parent)
    : QWidget(parent)
{
    initData();
}

void KvStyleWidget::initData()
{
    m_pDesktop = QApplication::desktop();
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    const QSize available = pScreen ? pScreen->availableGeometry().size() : QSize(0, 0);
    m_nScreenWidth = available.width();
    m_nScreenHeight = available.height();
}

void KvStyleWidget::setEnabledMouseDrag(QWidget* pTarget, QPoint ptOffset, bool bEnable)
{
    m_pTarget = pTarget;
    m_ptOffset = ptOffset;
    setAttribute(Qt::WA_MouseTracking, bEnable);
    m_bDragEnabled = bEnable;
}

void KvStyleWidget::setBackgroundImage(const QString& strPath)
{
    m_strImage = strPath;
    update();
}

void KvStyleWidget::slotClosePWidget()
{
    if (m_pTarget) {
        m_pTarget->close();
    }
}

void KvStyleWidget::mousePressEvent(QMouseEvent* pEvent)
{
    if (!m_bDragEnabled || pEvent->button() != Qt::LeftButton) {
        return;
    }
    if (m_pTarget) {
        m_pTarget->setFocus(Qt::OtherFocusReason);
    }
    m_bPressed = true;
    m_ptPress = pEvent->pos();
    pEvent->accept();
}

void KvStyleWidget::mouseMoveEvent(QMouseEvent* pEvent)
{
    pEvent->accept();
    if (!m_bPressed || pEvent->buttons() == Qt::NoButton) {
        return;
    }
    const QPoint ptNew = pEvent->globalPos() - m_ptOffset - m_ptPress;
    // A position out of bounds is passed over, not clamped: the window waits
    // where it is until the cursor is back within them.
    if (MayMoveTo(ptNew)) {
        m_pTarget->move(ptNew);
        m_pTarget->repaint();
    }
}

void KvStyleWidget::mouseReleaseEvent(QMouseEvent* pEvent)
{
    m_bPressed = false;
    pEvent->accept();
}

void KvStyleWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.drawPixmap(rect(), QPixmap(m_strImage));
}

bool KvStyleWidget::MayMoveTo(const QPoint& ptNew) const
{
    if (!m_pTarget || !m_pTarget->hasFocus()) {
        return false;
    }
    return ptNew.x() >= LEAST_X && ptNew.x() <= m_nScreenWidth - KEPT_AT_RIGHT && ptNew.y() >= LEAST_Y
        && ptNew.y() <= m_nScreenHeight - KEPT_AT_BOTTOM;
}
