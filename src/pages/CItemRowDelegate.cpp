#include "pages/CItemRowDelegate.h"

#include "kit/SkinColor.h"
#include "kit/SkinFont.h"
#include "pages/CElidedLabel.h"

#include <QColor>
#include <QPainter>

static const int ROW_HEIGHT = 46;
static const int MARGIN_SIDE = 12;
static const int MARGIN_TOP = 4;
static const int AMOUNT_GAP = 16;

CItemRowDelegate::CItemRowDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

QSize CItemRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    return QSize(option.rect.width(), ROW_HEIGHT);
}

static void DrawLine(QPainter& painter, const QRect& rect, const QString& strText, Qt::TextElideMode enElide)
{
    const QString strLine = CElidedLabel::OneLine(strText);
    painter.drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(strLine, enElide, rect.width()));
}

void CItemRowDelegate::paint(QPainter* pPainter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const
{
    pPainter->save();
    const bool bFocus = option.state & QStyle::State_HasFocus;
    if (option.state & (QStyle::State_Selected | QStyle::State_MouseOver)) {
        pPainter->fillRect(option.rect, QColor(SkinColor::TINT));
    }
    if (bFocus) {
        pPainter->setPen(QColor(SkinColor::FOCUS_RING));
        pPainter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QRect rect = option.rect.adjusted(MARGIN_SIDE, MARGIN_TOP, -MARGIN_SIDE, -MARGIN_TOP);
    QRect rectUpper = rect;
    rectUpper.setHeight(rect.height() / 2);
    pPainter->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    pPainter->setPen(QColor(SkinColor::TEXT));
    DrawLine(*pPainter, rectUpper, index.data(Qt::DisplayRole).toString(), Qt::ElideMiddle);

    QRect rectLower = rect;
    rectLower.setTop(rectUpper.bottom() + 1);
    pPainter->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_12));
    pPainter->setPen(QColor(SkinColor::QUIET_TEXT));
    const QString strAmount = index.data(AMOUNT_ROLE).toString();
    pPainter->drawText(rectLower, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, strAmount);
    rectLower.setWidth(rectLower.width() - pPainter->fontMetrics().horizontalAdvance(strAmount) - AMOUNT_GAP);
    pPainter->setPen(QColor(index.data(NOTE_ROLE).toBool() ? SkinColor::QUIET_TEXT : SkinColor::WARNING));
    DrawLine(*pPainter, rectLower, index.data(REASON_ROLE).toString(), Qt::ElideRight);
    pPainter->restore();
}
