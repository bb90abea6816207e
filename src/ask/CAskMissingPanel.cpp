#include "ask/CAskMissingPanel.h"

#include "copy/CCopyText.h"
#include "kit/SkinFont.h"
#include "pages/CElidedLabel.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

static const QMargins LIST_MARGINS(16, 10, 16, 10);
static const int VOLUME_SPACING = 10;
static const int LINE_SPACING = 2;
static const int SIZE_SPACING = 16;

// Faces for Chinese and Japanese are higher than the one that the line is measured with.
static const int LEAST_TEXT_HEIGHT = 20;

// With the longest texts this leaves a screen of 600 lines room; a row that is cut says that more follow.
static const int MOST_LIST_HEIGHT = 190;

static QString WhyText(ENMissing enWhy)
{
    switch (enWhy) {
    case ENMissing::LOCKED:
        return CAskMissingPanel::tr("Locked with a password");
    case ENMissing::DAMAGED:
        return CAskMissingPanel::tr("Cannot be read, perhaps damaged");
    case ENMissing::SILENT:
        return CAskMissingPanel::tr("Does not answer");
    case ENMissing::APART:
        return CAskMissingPanel::tr("One of several disks that belong together");
    case ENMissing::LOST:
        return CAskMissingPanel::tr("Needs more memory than this computer has");
    default:
        return CAskMissingPanel::tr("Of a kind that Tarnwick cannot read");
    }
}

static QStringList HelpTexts(const QVector<STMissingVolume>& listMissing)
{
    bool bLocked = false;
    bool bSilent = false;
    bool bUnread = false;
    for (const STMissingVolume& stMissing : listMissing) {
        bLocked = bLocked || stMissing.enWhy == ENMissing::LOCKED;
        bSilent = bSilent || stMissing.enWhy == ENMissing::SILENT;
        bUnread = bUnread || (stMissing.enWhy != ENMissing::LOCKED && stMissing.enWhy != ENMissing::SILENT);
    }
    QStringList listHelp;
    if (bUnread) {
        listHelp += CAskMissingPanel::tr(
            "Another computer or a specialist may still be able to read what cannot be read here. "
            "Do not format or repair it before.");
    }
    if (bSilent) {
        listHelp += CAskMissingPanel::tr("A disk that answers later appears by itself.");
    }
    if (bLocked) {
        listHelp
            += CAskMissingPanel::tr("To type a password, restart the computer and start Tarnwick again.");
    }
    return listHelp;
}

static void Dress(QLabel* pLabel, CSkinMgr::FontStyle enFont, CSkinMgr::ColorStyle enColor)
{
    pLabel->setTextFormat(Qt::PlainText);
    pLabel->setMinimumHeight(LEAST_TEXT_HEIGHT);
    pLabel->setFont(SkinFont(enFont));
    pLabel->setStyleSheet(CSkinMgr::GetColorStyle(enColor));
}

/** Name and size, and below them why it is missing and the disk that it is on. */
static QLayout* RowOf(const STMissingVolume& stMissing)
{
    auto* pName = new CElidedLabel;
    pName->setObjectName(QStringLiteral("m_pMissingNameLab"));
    pName->setText(stMissing.strName.isEmpty() ? stMissing.strDisk : stMissing.strName);
    Dress(pName, CSkinMgr::FONT_STYLE_PX_15_BOLD, CSkinMgr::COLOR_STYLE_GREY_72);
    auto* pSize = new QLabel(stMissing.nSize > 0 ? CCopyText::Bytes(stMissing.nSize) : QString());
    Dress(pSize, CSkinMgr::FONT_STYLE_PX_14, CSkinMgr::COLOR_STYLE_GREY_88);
    QStringList listFact{WhyText(stMissing.enWhy), stMissing.strDisk};
    listFact.removeAll(QString());
    auto* pFacts = new CElidedLabel;
    pFacts->setObjectName(QStringLiteral("m_pMissingFactsLab"));
    pFacts->setText(listFact.join(QStringLiteral("  ·  ")));
    Dress(pFacts, CSkinMgr::FONT_STYLE_PX_14, CSkinMgr::COLOR_STYLE_GREY_88);
    auto* pFirst = new QHBoxLayout;
    pFirst->setSpacing(SIZE_SPACING);
    pFirst->addWidget(pName, 1);
    pFirst->addWidget(pSize);
    auto* pRow = new QVBoxLayout;
    pRow->setSpacing(LINE_SPACING);
    pRow->addLayout(pFirst);
    pRow->addWidget(pFacts);
    return pRow;
}

CAskMissingPanel::CAskMissingPanel(const QVector<STMissingVolume>& listMissing)
    : CAskPanel(tr("Not everything can be shown"))
{
    AddText(tr("Nothing can be copied from these disks or parts of disks:"));
    AddList(listMissing);
    AddText(HelpTexts(listMissing).join(QLatin1Char('\n')));
    m_pContinueBtn = AddButton(tr("Continue"), true);
    connect(m_pContinueBtn, &QPushButton::clicked, this, [this] { Answer({STATUS_CONTINUE, {}}); });
}

QWidget* CAskMissingPanel::FirstFocus() const { return m_pContinueBtn; }

void CAskMissingPanel::AddList(const QVector<STMissingVolume>& listMissing)
{
    auto* pList = new QWidget;
    pList->setObjectName(QStringLiteral("missingList"));
    auto* pRows = new QVBoxLayout(pList);
    pRows->setContentsMargins(LIST_MARGINS);
    pRows->setSpacing(VOLUME_SPACING);
    for (const STMissingVolume& stMissing : listMissing) {
        pRows->addLayout(RowOf(stMissing));
    }
    m_pListArea = new QScrollArea;
    m_pListArea->setObjectName(QStringLiteral("m_pMissingArea"));
    m_pListArea->setAccessibleName(accessibleName());
    m_pListArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pListArea->setWidgetResizable(true);
    m_pListArea->setWidget(pList);
    const int nHeight = pList->sizeHint().height() + 2 * m_pListArea->frameWidth();
    m_pListArea->setFixedHeight(std::min(nHeight, MOST_LIST_HEIGHT));
    // What needs no scrolling is no stop for Tab.
    m_pListArea->setFocusPolicy(nHeight > MOST_LIST_HEIGHT ? Qt::StrongFocus : Qt::NoFocus);
    Body()->addWidget(m_pListArea);
}

void CAskMissingPanel::keyPressEvent(QKeyEvent* pEvent)
{
    QScrollBar* pBar = m_pListArea->verticalScrollBar();
    switch (pEvent->key()) {
    case Qt::Key_PageUp:
        pBar->triggerAction(QAbstractSlider::SliderPageStepSub);
        return;
    case Qt::Key_PageDown:
        pBar->triggerAction(QAbstractSlider::SliderPageStepAdd);
        return;
    case Qt::Key_Home:
        pBar->triggerAction(QAbstractSlider::SliderToMinimum);
        return;
    case Qt::Key_End:
        pBar->triggerAction(QAbstractSlider::SliderToMaximum);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!pEvent->isAutoRepeat()) {
            m_pContinueBtn->click();
        }
        return;
    default:
        CAskPanel::keyPressEvent(pEvent);
    }
}
