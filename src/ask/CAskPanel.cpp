#include "ask/CAskPanel.h"

#include "app/CTarnwickMacPE.h"
#include "ask/STAskRequest.h"
#include "copy/CCopyText.h"
#include "kit/CDecorationAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/SkinFont.h"
#include "pages/CElidedLabel.h"

#include <QAbstractButton>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

static const QMargins MARGINS(36, 22, 36, 28);
static const int ROOM_ABOVE_BUTTONS = 8;
static const QMargins DISK_MARGINS(16, 10, 16, 10);
static const int SPACING = 16;
static const int DISK_SPACING = 2;
static const int LOGO_SPACING = 8;
static const int BUTTON_SPACING = 24;
static const QSize BUTTON_SIZE(150, 36);

// Padding and border of the style sheet on both sides, with some air.
static const int BUTTON_EDGES = 2 * (12 + 2 + 2);

// Faces for Chinese and Japanese are higher than the one that the line is measured with.
static const int LEAST_LINE_HEIGHT = 20;

static QLabel* TextOf(const QString& strText, CSkinMgr::FontStyle enFont, CSkinMgr::ColorStyle enColor)
{
    auto* pLabel = new QLabel(strText);
    pLabel->setTextFormat(Qt::PlainText);
    pLabel->setWordWrap(true);
    pLabel->setFont(SkinFont(enFont));
    pLabel->setStyleSheet(CSkinMgr::GetColorStyle(enColor));
    return pLabel;
}

static CElidedLabel* LineOf(const QString& strText, CSkinMgr::FontStyle enFont, CSkinMgr::ColorStyle enColor)
{
    auto* pLabel = new CElidedLabel;
    pLabel->setText(strText);
    pLabel->setMinimumHeight(LEAST_LINE_HEIGHT);
    pLabel->setFont(SkinFont(enFont));
    pLabel->setStyleSheet(CSkinMgr::GetColorStyle(enColor));
    return pLabel;
}

/** Logo and name as in the window's title strip. */
static QLayout* NameRow()
{
    auto* pLogo = new QLabel;
    pLogo->setPixmap(CSkinPicture::Pixmap(QStringLiteral(":/res/Title/tarnwick_logo_34.png")));
    CDecorationAccess::Mark({pLogo});
    auto* pName = TextOf(CTarnwickMacPE::tr("Kelvane Tarnwick"), CSkinMgr::FONT_STYLE_PX_16,
                         CSkinMgr::COLOR_STYLE_GREY_72);
    pName->setWordWrap(false);
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(LOGO_SPACING);
    pRow->addWidget(pLogo);
    pRow->addWidget(pName);
    pRow->addStretch();
    return pRow;
}

CAskPanel::CAskPanel(const QString& strTitle)
    : m_pBody(new QVBoxLayout)
    , m_pButtons(new QHBoxLayout)
{
    setObjectName(QStringLiteral("askPanel"));
    setAccessibleName(strTitle);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(MARGINS);
    pLayout->setSpacing(SPACING);
    pLayout->addLayout(NameRow());
    m_pBody->setSpacing(SPACING);
    m_pBody->addWidget(TextOf(strTitle, CSkinMgr::FONT_STYLE_PX_22_BOLD, CSkinMgr::COLOR_STYLE_GREY_72));
    pLayout->addLayout(m_pBody);
    m_pButtons->setSpacing(BUTTON_SPACING);
    m_pButtons->setContentsMargins(0, ROOM_ABOVE_BUTTONS, 0, 0);
    m_pButtons->addStretch();
    pLayout->addLayout(m_pButtons);
}

QLabel* CAskPanel::AddText(const QString& strText)
{
    QLabel* pLabel = TextOf(strText, CSkinMgr::FONT_STYLE_PX_15, CSkinMgr::COLOR_STYLE_GREY_72);
    m_pBody->addWidget(pLabel);
    return pLabel;
}

void CAskPanel::AddDisk(const STAskRequest& stRequest, const QString& strKind)
{
    QStringList listFact{strKind};
    if (stRequest.nSize >= 0) {
        listFact.append(CCopyText::Bytes(stRequest.nSize));
    }
    listFact.append(stRequest.strDisk);
    listFact.removeAll(QString());
    auto* pFrame = new QFrame;
    pFrame->setObjectName(QStringLiteral("askDisk"));
    auto* pLayout = new QVBoxLayout(pFrame);
    pLayout->setContentsMargins(DISK_MARGINS);
    pLayout->setSpacing(DISK_SPACING);
    CElidedLabel* pName
        = LineOf(stRequest.strName, CSkinMgr::FONT_STYLE_PX_16_BOLD, CSkinMgr::COLOR_STYLE_GREY_72);
    pName->setObjectName(QStringLiteral("m_pNameLab"));
    pName->setVisible(!stRequest.strName.isEmpty());
    pLayout->addWidget(pName);
    CElidedLabel* pFacts = LineOf(listFact.join(QStringLiteral("  ·  ")), CSkinMgr::FONT_STYLE_PX_14,
                                  CSkinMgr::COLOR_STYLE_GREY_88);
    pFacts->setObjectName(QStringLiteral("m_pFactsLab"));
    pFacts->setVisible(!listFact.isEmpty());
    pLayout->addWidget(pFacts);
    pFrame->setVisible(!stRequest.strName.isEmpty() || !listFact.isEmpty());
    m_pBody->addWidget(pFrame);
}

QPushButton* CAskPanel::AddButton(const QString& strText, bool bMain)
{
    auto* pButton = new QPushButton(strText);
    pButton->setObjectName(bMain ? QStringLiteral("toolBtn") : QStringLiteral("toolBtnEx"));
    pButton->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    const int nText = pButton->fontMetrics().horizontalAdvance(strText);
    pButton->setMinimumSize(qMax(BUTTON_SIZE.width(), nText + BUTTON_EDGES), BUTTON_SIZE.height());
    m_pButtons->addWidget(pButton);
    return pButton;
}

void CAskPanel::Answer(const STAskAnswer& stAnswer)
{
    if (!m_bAnswered) {
        m_bAnswered = true;
        emit SignalAnswer(stAnswer);
    }
}

void CAskPanel::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bReturn = pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter;
    if (!bReturn) {
        QFrame::keyPressEvent(pEvent);
        return;
    }
    // A key that is held since the question before does not answer this one.
    auto* pButton = qobject_cast<QAbstractButton*>(focusWidget());
    if (pButton && pButton->hasFocus() && !pEvent->isAutoRepeat()) {
        pButton->click();
    }
}
