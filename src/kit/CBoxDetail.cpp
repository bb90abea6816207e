#include "kit/CBoxDetail.h"

#include "kit/BalancedWidth.h"
#include "kit/CLinkButton.h"
#include "kit/SkinColor.h"
#include "kit/SkinFont.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

static const int MOST_TEXT_WIDTH = 430;
static const int MOST_HEIGHT
    = 96; // of the whole detail, what the box has for it beside a message of one line
static const int SIGN_SIZE = 16;
static const int SIGN_GAP = 10;
static const int MARGIN_SIDE = 12;
static const int MARGIN_TOP = 5;
static const int DETAIL_SPACING = 3;

static QRgb InkOf(ENDetail enKind)
{
    switch (enKind) {
    case ENDetail::WARNING:
        return SkinColor::WARNING;
    case ENDetail::GOOD:
        return SkinColor::TEXT;
    default:
        return SkinColor::QUIET_TEXT;
    }
}

static QString InkStyle(ENDetail enKind)
{
    return QStringLiteral("color: %1;").arg(QColor(InkOf(enKind)).name());
}

static QString GroundStyle(ENDetail enKind)
{
    if (enKind != ENDetail::WARNING) {
        return QString();
    }
    return QStringLiteral("CBoxDetail { border: 1px solid %1; border-radius: 4px; background-color: %2; }")
        .arg(QColor(SkinColor::FOCUS_RING).name(), QColor(SkinColor::TINT).name());
}

CBoxDetail::CBoxDetail(QWidget* parent)
    : QFrame(parent)
    , m_pText(new QLabel(this))
    , m_pLink(new CLinkButton(this))
{
    setObjectName(QStringLiteral("m_pDetail"));
    m_pText->setObjectName(QStringLiteral("label_detail"));
    m_pText->setTextFormat(Qt::PlainText);
    m_pText->setAlignment(Qt::AlignCenter);
    m_pText->setWordWrap(true);
    m_pLink->setObjectName(QStringLiteral("m_pDetailLink"));
    m_pLink->hide();
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(MARGIN_SIDE, MARGIN_TOP, MARGIN_SIDE, MARGIN_TOP);
    pLayout->setSpacing(DETAIL_SPACING);
    pLayout->addWidget(m_pText, 0, Qt::AlignHCenter);
    pLayout->addWidget(m_pLink, 0, Qt::AlignHCenter);
    connect(m_pLink, &QPushButton::clicked, this, &CBoxDetail::SignalLink);
    hide();
}

void CBoxDetail::SetText(const QString& strText, ENDetail enKind)
{
    m_enKind = enKind;
    m_pText->setText(strText);
    setStyleSheet(GroundStyle(enKind));
    m_pText->setStyleSheet(InkStyle(enKind));
    Fit();
    setVisible(!strText.isEmpty());
    update();
}

void CBoxDetail::SetLink(const QString& strText)
{
    m_pLink->setText(strText);
    m_pLink->setVisible(!strText.isEmpty());
    Fit();
}

// Four lines of Chinese need more room than there is, unless their letters are smaller.
void CBoxDetail::Fit()
{
    const bool bBold = m_enKind == ENDetail::WARNING;
    const int nLink = m_pLink->text().isEmpty() ? 0 : m_pLink->sizeHint().height() + DETAIL_SPACING;
    for (const CSkinMgr::FontStyle enStyle :
         {CSkinMgr::FONT_STYLE_PX_13, CSkinMgr::FONT_STYLE_PX_12, CSkinMgr::FONT_STYLE_PX_11}) {
        QFont font = SkinFont(enStyle);
        font.setBold(bBold);
        m_pText->setFont(font);
        FitText();
        if (m_pText->height() + nLink <= MOST_HEIGHT) {
            break;
        }
    }
}

// A wrapped label asks for a size of its own taste, so it is given the one that its lines need.
void CBoxDetail::FitText()
{
    const int nSign = m_enKind == ENDetail::PLAIN ? 0 : SIGN_SIZE + SIGN_GAP;
    m_pText->setContentsMargins(0, 0, 0, 0);
    // The size of the text before counts for its measure, too.
    m_pText->setMinimumSize(0, 0);
    m_pText->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const int nWidth = BalancedWidth(*m_pText, 0, MOST_TEXT_WIDTH - nSign);
    const int nHeight = qMax(m_pText->heightForWidth(nWidth), SIGN_SIZE);
    m_pText->setContentsMargins(nSign, 0, 0, 0);
    m_pText->setFixedSize(nSign + nWidth, nHeight);
}

QString CBoxDetail::Text() const { return m_pText->text(); }

ENDetail CBoxDetail::Kind() const { return m_enKind; }

QWidget* CBoxDetail::Link() const { return m_pLink; }

void CBoxDetail::paintEvent(QPaintEvent* pEvent)
{
    QFrame::paintEvent(pEvent);
    QRectF rect(m_pText->geometry().topLeft(), QSize(SIGN_SIZE, SIGN_SIZE));
    rect.moveTop(m_pText->geometry().center().y() + 0.5 - SIGN_SIZE / 2.0);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_enKind == ENDetail::WARNING) {
        PaintWarning(painter, rect);
    } else if (m_enKind == ENDetail::GOOD) {
        PaintTick(painter, rect);
    }
}

// A filled triangle with an exclamation mark.
void CBoxDetail::PaintWarning(QPainter& painter, const QRectF& rect) const
{
    QPainterPath triangle;
    triangle.addPolygon(
        QPolygonF({rect.bottomLeft() + QPointF(1, -2), QPointF(rect.center().x(), rect.top() + 2),
                   rect.bottomRight() + QPointF(-1, -2)}));
    triangle.closeSubpath();
    const QColor ink(SkinColor::FOCUS_RING);
    painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(ink);
    painter.drawPath(triangle);
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap));
    const qreal dMiddle = rect.center().x();
    painter.drawLine(QPointF(dMiddle, rect.top() + 6), QPointF(dMiddle, rect.top() + 9.5));
    painter.drawPoint(QPointF(dMiddle, rect.top() + 12.7));
}

void CBoxDetail::PaintTick(QPainter& painter, const QRectF& rect) const
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(SkinColor::GOOD));
    painter.drawEllipse(rect.adjusted(1, 1, -1, -1));
    painter.setPen(QPen(Qt::white, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({rect.topLeft() + QPointF(4.8, 8.2), rect.topLeft() + QPointF(7.2, 10.6),
                                    rect.topLeft() + QPointF(11.2, 5.8)}));
}
