#include "pages/CNoticeLine.h"

#include "kit/CLinkButton.h"
#include "kit/SkinColor.h"
#include "kit/SkinFont.h"
#include "pages/CElidedLabel.h"

#include <QAccessible>
#include <QPainter>

#include <algorithm>

static const int MARK_SIZE = 16;
static const int GAP = 8; // behind the mark
static const int LINK_GAP = 8; // the link has a margin of its own
static const QSize FOCUS_ROOM(4, 6); // around the link, for the frame of the focus
static const int COPY_GAP = 20; // before what stands behind the line
static const int NAME_WIDTH = 160;
static const int SLACK = 2; // what shortens a text measures in fractions of a pixel

CNoticeLine::CNoticeLine(QWidget* pParent)
    : QWidget(pParent)
    , m_pText(new CElidedLabel(this))
    , m_pLink(new CLinkButton(this))
{
    m_pText->setObjectName(QStringLiteral("m_pNoticeLab"));
    m_pText->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    m_pText->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72));
    m_pText->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);

    m_pLink->setObjectName(QStringLiteral("m_pNoticeLink"));
    connect(m_pLink, &QPushButton::clicked, this, [this] { emit SignalLink(m_enLink); });
    Rebuild();
}

void CNoticeLine::Set(ENNotice enNotice, const QString& strText, const QString& strLink)
{
    const auto it = m_mapNotice.find(enNotice);
    const bool bKnown = it != m_mapNotice.end();
    if (strText.isEmpty() ? !bKnown : bKnown && it->second.strText == strText) {
        return;
    }
    if (strText.isEmpty()) {
        m_mapNotice.erase(it);
    } else {
        m_mapNotice[enNotice] = {strText, strLink};
    }
    Rebuild();
    Say(strText);
}

QString CNoticeLine::Text() const { return m_pText->text(); }

QString CNoticeLine::Shortened(const QString& strName) const
{
    return m_pText->fontMetrics().elidedText(strName, Qt::ElideMiddle, NAME_WIDTH);
}

QString CNoticeLine::NoAnswerText(const QString& strName) const
{
    return tr("%1 does not answer.").arg(Shortened(strName));
}

QString CNoticeLine::TextOf(const QString& strName, const QString& strText) const
{
    //: A name and what is said of it.
    return tr("%1: %2").arg(Shortened(strName), strText);
}

QWidget* CNoticeLine::TabStop() const { return m_pLink; }

void CNoticeLine::resizeEvent(QResizeEvent* pEvent)
{
    QWidget::resizeEvent(pEvent);
    Rebuild();
}

void CNoticeLine::Rebuild()
{
    const QFontMetrics metrics = m_pText->fontMetrics();
    QString strText;
    m_pLink->setText(QString());
    for (const auto& [enNotice, notice] : m_mapNotice) {
        const QString strLinkBefore = m_pLink->text();
        const QString strMore
            = strText.isEmpty() ? notice.strText : strText + QStringLiteral("  \u00b7  ") + notice.strText;
        if (strLinkBefore.isEmpty()) {
            m_pLink->setText(notice.strLink);
        }
        const ENNotice enLink = strLinkBefore.isEmpty() ? enNotice : m_enLink;
        const auto fnFits
            = [&] { return strText.isEmpty() || metrics.horizontalAdvance(strMore) <= RoomForText(); };
        if (!fnFits() && enLink == ENNotice::UNLISTED) {
            m_pLink->setText(QString()); // it only points at the box beside the line
        }
        if (!fnFits()) {
            m_pLink->setText(strLinkBefore);
            continue;
        }
        strText = strMore;
        if (!m_pLink->text().isEmpty()) {
            m_enLink = enLink;
        }
    }
    m_pText->setText(strText);
    m_pText->setVisible(!strText.isEmpty());
    m_pLink->setVisible(!m_pLink->text().isEmpty());
    Arrange();
}

// The link stands directly behind the text; without one the text has the whole line.
void CNoticeLine::Arrange()
{
    const int nText = m_pText->fontMetrics().horizontalAdvance(m_pText->text()) + SLACK;
    const int nRoom = RoomForText();
    m_pText->setGeometry(MARK_SIZE + GAP, 0, m_pLink->text().isEmpty() ? nRoom : std::min(nText, nRoom),
                         height());
    const QSize sizeLink = LinkSize();
    const QPoint ptLink(m_pText->geometry().right() + 1 + LINK_GAP, (height() - sizeLink.height()) / 2);
    m_pLink->setGeometry(QRect(ptLink, sizeLink));
    update();
}

QSize CNoticeLine::LinkSize() const { return m_pLink->sizeHint() + FOCUS_ROOM; }

int CNoticeLine::RoomForText() const
{
    const int nLink = m_pLink->text().isEmpty() ? 0 : LINK_GAP + LinkSize().width();
    return std::max(0, width() - MARK_SIZE - GAP - nLink - COPY_GAP);
}

void CNoticeLine::Say(const QString& strText)
{
    QAccessibleEvent name(m_pText, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&name);
    if (strText.isEmpty()) {
        return;
    }
    QAccessibleEvent alert(m_pText, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void CNoticeLine::paintEvent(QPaintEvent*)
{
    if (m_mapNotice.empty()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(SkinColor::ACCENT));
    // By whole pixels, so that the mark stays sharp.
    painter.translate(QPoint(0, (height() - MARK_SIZE) / 2));
    painter.drawEllipse(QRectF(0, 0, MARK_SIZE, MARK_SIZE));
    // An exclamation mark: no letter, which each face would set elsewhere.
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(7, 3.5, 2, 5.5), 1, 1);
    painter.drawEllipse(QRectF(6.9, 10.4, 2.2, 2.2));
}
