#include "kit/KvStyleShadow.h"

#include <QBrush>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QWidget>

#include <cmath>

static const int RING_COUNT = 4;
static const qreal MARGIN = 4.0;
static const qreal RADIUS = 4.0;

// The outline of the panel, grown by some pixels on every side.
static QPainterPath Outline(const QWidget& widget, int nGrowth)
{
    const qreal lfTopLeft = MARGIN - nGrowth;
    const qreal lfWidth = widget.width() - 2 * MARGIN + 2 * nGrowth;
    const qreal lfHeight = widget.height() - 2 * MARGIN + 2 * nGrowth;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addRoundedRect(lfTopLeft, lfTopLeft, lfWidth, lfHeight, RADIUS, RADIUS);
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
    painter.fillPath(Outline(*pWidget, 0), QBrush(Qt::white));
    for (int nRing = 0; nRing < RING_COUNT; ++nRing) {
        painter.strokePath(Outline(*pWidget, nRing), QPen(RingColor(nRing)));
    }
}
