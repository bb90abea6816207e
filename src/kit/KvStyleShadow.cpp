#include "kit/KvStyleShadow.h"

#include <QBrush>
#include <QPainter>
#include <QPen>
#include <QWidget>

#include <cmath>

static const int RING_COUNT = 4;
static const qreal MARGIN = 4.0;
static const qreal PANEL_RADIUS = 4.0;

// The outline of the panel, grown by some pixels on every side.
static QPainterPath Outline(const QSize& size, int nGrowth)
{
    const qreal lfTopLeft = MARGIN - nGrowth;
    const qreal lfWidth = size.width() - 2 * MARGIN + 2 * nGrowth;
    const qreal lfHeight = size.height() - 2 * MARGIN + 2 * nGrowth;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(lfTopLeft, lfTopLeft, lfWidth, lfHeight, PANEL_RADIUS, PANEL_RADIUS);
    return path;
}

// 100, 50, 29 and 13 from the inside out: the root makes the shadow fade fast at first.
static QColor RingColor(int nRing)
{
    const int nAlpha = static_cast<int>((2.0 - std::sqrt(static_cast<double>(nRing))) * 50.0);
    return QColor(10, 10, 10, nAlpha);
}

void KvStyleShadow::Paint(QWidget* pWidget)
{
    if (!pWidget || pWidget->size().isEmpty()) {
        return;
    }
    QPainter painter(pWidget);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.fillPath(Panel(pWidget->size()), QBrush(Qt::white));
    for (int nRing = 0; nRing < RING_COUNT; ++nRing) {
        painter.strokePath(Outline(pWidget->size(), nRing), QPen(RingColor(nRing)));
    }
}

QPainterPath KvStyleShadow::Panel(const QSize& size) { return Outline(size, 0); }
