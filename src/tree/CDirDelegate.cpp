#include "tree/CDirDelegate.h"

#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CFolderTrouble.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCoreApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmapCache>
#include <QToolTip>

static const int BOX_SIDE = 14;
static const int ICON_SIDE = 16;
// From the last pixel of the box.
static const int ICON_GAP = 6;
static const int TEXT_GAP = 31;
// The part of a row, from its left edge, on which a press ticks.
static const int CLICK_WIDTH = 16;

static const QRgb GROUND_COLOUR = qRgb(0xff, 0xf2, 0xe7); // of a row that is selected or under the pointer
static const QRgb NAME_COLOUR = qRgb(0x48, 0x48, 0x48);

/** Where the box and the icon begin: in the middle of rows that are higher than the box. */
static int VerticalOffset(int nBoxHeight, int nRowHeight)
{
    return nRowHeight > nBoxHeight ? (nRowHeight - nBoxHeight) / 2 : 0;
}

static QString BoxKey(QStyle::State state, int nCheckState)
{
    return QStringLiteral("CHECKBOX:%1.%2")
        .arg(QString::number(uint(state & QStyle::State_Selected)), QString::number(nCheckState));
}

static QPixmap RenderBox(QCheckBox* pCheckBox, qreal rRatio)
{
    QPixmap pixmap(pCheckBox->size() * rRatio);
    pixmap.setDevicePixelRatio(rRatio);
    pixmap.fill(Qt::transparent);
    pCheckBox->render(&pixmap, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    return pixmap;
}

/** The icon at its size in the tree, with as many pixels as the device has for it. */
static QPixmap IconPixmap(const QIcon& icon, qreal rRatio)
{
    const QSize size(ICON_SIDE, ICON_SIDE);
    if (QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps)) {
        return icon.pixmap(size, QIcon::Normal, QIcon::Off);
    }
    QPixmap pixmap = icon.pixmap(size * rRatio, QIcon::Normal, QIcon::Off);
    // An icon that has no picture so large is shown as large, not as sharp.
    const int nSide = qMax(pixmap.width(), pixmap.height());
    pixmap.setDevicePixelRatio(qMax(1.0, double(nSide) / ICON_SIDE));
    return pixmap;
}

static void DrawName(QPainter* pPainter, const QRect& rect, const QString& strName)
{
    pPainter->setFont(QFont(QStringLiteral("Avenir")));
    pPainter->setPen(QColor(NAME_COLOUR));
    const QString strShown = pPainter->fontMetrics().elidedText(strName, Qt::ElideMiddle, rect.width());
    pPainter->drawText(rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, strShown);
}

CDirDelegate::CDirDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
    , m_pCheckBox(new QCheckBox)
{
    m_pCheckBox->setFixedSize(BOX_SIDE, BOX_SIDE);
    // What the box's image leaves free shows the row behind it, not the grey of a window.
    QPalette palette = m_pCheckBox->palette();
    palette.setColor(QPalette::Window, Qt::transparent);
    m_pCheckBox->setPalette(palette);
}

CDirDelegate::~CDirDelegate() { delete m_pCheckBox; }

Qt::CheckState CDirDelegate::NextState(int nState)
{
    return nState == Qt::Unchecked || nState == Qt::PartiallyChecked ? Qt::Checked : Qt::Unchecked;
}

void CDirDelegate::paint(QPainter* pPainter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    if (index.column() != 0) {
        QStyledItemDelegate::paint(pPainter, option, index);
        return;
    }
    const qreal rRatio = pPainter->device()->devicePixelRatioF();
    const QRect rect = option.rect;
    pPainter->save();
    pPainter->setRenderHint(QPainter::SmoothPixmapTransform);
    if (option.state & (QStyle::State_Selected | QStyle::State_MouseOver)) {
        QBrush brush = option.palette.highlight();
        brush.setColor(QColor(GROUND_COLOUR));
        pPainter->fillRect(rect, brush);
    }
    const int nCheckState = index.data(Qt::CheckStateRole).toInt();
    m_pCheckBox->setCheckState(Qt::CheckState(nCheckState));
    const QString strKey = BoxKey(option.state, nCheckState);
    QPixmap pixBox;
    // The key says nothing of the screen, so a picture made for one of another
    // resolution is made anew.
    if (!QPixmapCache::find(strKey, &pixBox) || !qFuzzyCompare(pixBox.devicePixelRatioF(), rRatio)) {
        pixBox = RenderBox(m_pCheckBox, rRatio);
        QPixmapCache::insert(strKey, pixBox);
    }
    const int nTop = rect.top() + VerticalOffset(m_pCheckBox->height(), rect.height());
    const int nBoxRight = rect.left() + m_pCheckBox->width() - 1;
    pPainter->drawPixmap(QRect(QPoint(rect.left(), nTop), m_pCheckBox->size()), pixBox);
    const auto icon = index.data(Qt::DecorationRole).value<QIcon>();
    const QRect rectIcon(nBoxRight + ICON_GAP, nTop, ICON_SIDE, ICON_SIDE);
    pPainter->drawPixmap(rectIcon.topLeft(), IconPixmap(icon, rRatio));
    if (const auto* pModel = qobject_cast<const CDirModel*>(index.model())) {
        CFolderTrouble::DrawBadge(pPainter, rectIcon, CFolderTrouble::Of(*pModel->nodeFromIndex(index)));
    }
    DrawName(pPainter, QRect(QPoint(nBoxRight + TEXT_GAP, rect.top()), rect.bottomRight()),
             displayText(index.data(Qt::DisplayRole), option.locale));
    pPainter->restore();
}

QSize CDirDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    return QSize(qMax(size.width(), LEAST_WIDTH), size.height());
}

bool CDirDelegate::editorEvent(QEvent* pEvent, QAbstractItemModel* pModel, const QStyleOptionViewItem& option,
                               const QModelIndex& index)
{
    const bool bPress
        = pEvent->type() == QEvent::MouseButtonPress || pEvent->type() == QEvent::MouseButtonDblClick;
    if (!bPress || index.column() != 0) {
        return QStyledItemDelegate::editorEvent(pEvent, pModel, option, index);
    }
    const int nX = qRound(static_cast<QMouseEvent*>(pEvent)->localPos().x());
    const int nLeft = option.rect.left();
    if (nX <= nLeft || nX >= nLeft + CLICK_WIDTH) {
        return QStyledItemDelegate::editorEvent(pEvent, pModel, option, index);
    }
    // A double click comes here twice, as a press and as a double click, and so
    // leaves the tick as it was: each of the two clicks ticks.
    pModel->setData(index, NextState(index.data(Qt::CheckStateRole).toInt()), Qt::CheckStateRole);
    return true;
}

bool CDirDelegate::helpEvent(QHelpEvent* pEvent, QAbstractItemView* pView, const QStyleOptionViewItem& option,
                             const QModelIndex& index)
{
    const auto* pModel = qobject_cast<const CDirModel*>(index.model());
    if (!pModel || pEvent->type() != QEvent::ToolTip) {
        return QStyledItemDelegate::helpEvent(pEvent, pView, option, index);
    }
    const CDirNode* pNode = pModel->nodeFromIndex(index);
    // A tip that looks like HTML is rendered as HTML, so the path is always
    // handed over as HTML that says nothing but this text.
    QString strTip = QLatin1String("<p style='white-space:pre'>")
        + pNode->m_fileInfo.absoluteFilePath().toHtmlEscaped() + QLatin1String("</p>");
    const QString strTrouble = CFolderTrouble::Text(*pNode);
    if (!strTrouble.isEmpty()) {
        strTip += QLatin1String("<p>") + strTrouble.toHtmlEscaped() + QLatin1String("</p>");
    }
    QToolTip::showText(pEvent->globalPos(), strTip, pView, pView->visualRect(index));
    return true;
}

QString CDirDelegate::displayText(const QVariant& value, const QLocale& locale) const
{
    QString strText = QStyledItemDelegate::displayText(value, locale);
    for (QChar& c : strText) {
        if (c == QLatin1Char('\n') || c == QLatin1Char('\r') || c == QChar::LineSeparator
            || c == QChar::ParagraphSeparator) {
            c = QLatin1Char(' ');
        }
    }
    return strText;
}
