#include "tree/CFolderTrouble.h"

#include "tree/CDirNode.h"

#include <QPainter>
#include <QPainterPath>

#include <cerrno>

// Of the icon's side; it hangs over by the halo.
static const qreal BADGE_PART = 0.6875;
static const qreal HALO_WIDTH = 2.0;

static const QRgb LOCK_COLOUR = qRgb(0x48, 0x48, 0x48);
static const QRgb WARNING_COLOUR = qRgb(0xd6, 0x33, 0x16);
static const QRgb WAIT_COLOUR = qRgb(0x6b, 0x6b, 0x6b);

ENFolderTrouble CFolderTrouble::Of(const CDirNode& node)
{
    if (node.m_enListed == ENListed::OVERDUE) {
        return ENFolderTrouble::NO_ANSWER;
    }
    switch (node.m_nListError) {
    case 0:
        return ENFolderTrouble::NONE;
    case EACCES:
    case EPERM:
        return ENFolderTrouble::LOCKED;
    case ELOOP:
        return ENFolderTrouble::LEADS_BACK;
    default:
        return node.m_listChild.isEmpty() ? ENFolderTrouble::UNREADABLE : ENFolderTrouble::CUT_SHORT;
    }
}

QString CFolderTrouble::Text(const CDirNode& node)
{
    switch (Of(node)) {
    case ENFolderTrouble::NONE:
        return QString();
    case ENFolderTrouble::LOCKED:
        return tr("This folder may not be read, nothing of it is copied.");
    case ENFolderTrouble::UNREADABLE:
        return tr("This folder cannot be read: %1").arg(Reason(node.m_nListError));
    case ENFolderTrouble::CUT_SHORT:
        return tr("Only a part of this folder can be read: %1").arg(Reason(node.m_nListError));
    case ENFolderTrouble::LEADS_BACK:
        return tr("This link leads back to a folder that it lies in.");
    case ENFolderTrouble::NO_ANSWER:
        return tr("The disk does not answer. What is in this folder appears as soon as it does.");
    }
    return QString();
}

QString CFolderTrouble::Reason(int nError)
{
    switch (nError) {
    case EIO:
        return tr("The disk reports an error.");
    case ENOENT:
    case ENODEV:
    case ENXIO:
    case ENOTCONN:
    case ESTALE:
        return tr("It is not there any more.");
    case EDEADLK: // a Mac is not to fetch what it keeps elsewhere
        return tr("Its contents are only in iCloud, not on this Mac.");
    default:
        return qt_error_string(nError);
    }
}

// The shapes stand in a square of 10 by 10.

static void DrawLock(QPainter* pPainter)
{
    QPainterPath shackle;
    shackle.moveTo(3.0, 5.0);
    shackle.lineTo(3.0, 3.2);
    shackle.arcTo(QRectF(3.0, 1.2, 4.0, 4.0), 180.0, -180.0);
    shackle.lineTo(7.0, 5.0);
    QPainterPath body;
    body.addRoundedRect(QRectF(1.5, 4.6, 7.0, 5.0), 1.0, 1.0);
    pPainter->setBrush(Qt::NoBrush);
    pPainter->setPen(QPen(Qt::white, 1.4 + HALO_WIDTH));
    pPainter->drawPath(shackle);
    pPainter->setPen(QPen(Qt::white, HALO_WIDTH));
    pPainter->drawPath(body);
    pPainter->setPen(QPen(QColor(LOCK_COLOUR), 1.4));
    pPainter->drawPath(shackle);
    pPainter->fillPath(body, QColor(LOCK_COLOUR));
}

static void DrawWarning(QPainter* pPainter)
{
    QPainterPath triangle;
    triangle.moveTo(5.0, 0.8);
    triangle.lineTo(9.7, 9.2);
    triangle.lineTo(0.3, 9.2);
    triangle.closeSubpath();
    pPainter->setBrush(QColor(WARNING_COLOUR));
    pPainter->setPen(QPen(Qt::white, HALO_WIDTH, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    pPainter->drawPath(triangle);
    pPainter->fillPath(triangle, QColor(WARNING_COLOUR));
    pPainter->fillRect(QRectF(4.4, 3.6, 1.2, 2.8), Qt::white);
    pPainter->fillRect(QRectF(4.4, 7.1, 1.2, 1.2), Qt::white);
}

static void DrawClock(QPainter* pPainter)
{
    const QRectF face(1.0, 1.0, 8.0, 8.0);
    pPainter->setBrush(Qt::white);
    pPainter->setPen(QPen(Qt::white, 1.2 + HALO_WIDTH));
    pPainter->drawEllipse(face);
    pPainter->setPen(QPen(QColor(WAIT_COLOUR), 1.2));
    pPainter->drawEllipse(face);
    pPainter->drawLine(QPointF(5.0, 5.0), QPointF(5.0, 2.9));
    pPainter->drawLine(QPointF(5.0, 5.0), QPointF(6.7, 5.0));
}

void CFolderTrouble::DrawBadge(QPainter* pPainter, const QRectF& icon, ENFolderTrouble enTrouble)
{
    if (enTrouble == ENFolderTrouble::NONE) {
        return;
    }
    const qreal rSide = icon.width() * BADGE_PART;
    pPainter->save();
    pPainter->setRenderHint(QPainter::Antialiasing);
    pPainter->translate(icon.right() - rSide + HALO_WIDTH / 2, icon.bottom() - rSide + HALO_WIDTH / 2);
    pPainter->scale(rSide / 10, rSide / 10);
    if (enTrouble == ENFolderTrouble::LOCKED) {
        DrawLock(pPainter);
    } else if (enTrouble == ENFolderTrouble::NO_ANSWER) {
        DrawClock(pPainter);
    } else {
        DrawWarning(pPainter);
    }
    pPainter->restore();
}
