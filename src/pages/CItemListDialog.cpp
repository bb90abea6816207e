#include "pages/CItemListDialog.h"

#include "copy/CCopyText.h"
#include "kit/SkinColor.h"
#include "kit/SkinFont.h"
#include "pages/CElidedLabel.h"
#include "pages/CItemRowDelegate.h"

#include <QColor>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

static const QSize DIALOG_SIZE(760, 500);
static const int EDGE = 5; // kept free for the shadow
static const int TITLE_HEIGHT = 35;
static const QSize TITLE_BUTTON(12, 12);
static const QSize BUTTON(120, 32);
static const int LINE_HEIGHT = 20; // for letters that are higher than those of the first face, too
static const int MARGIN = 24;
static const int SPACING = 12;

CItemListDialog::CItemListDialog(const STCopyAccount& stAccount, QWidget* parent)
    : KvStyleDialog(parent)
{
    setObjectName(QStringLiteral("CItemListDialog"));
    setFixedSize(DIALOG_SIZE);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(EDGE, EDGE, EDGE, EDGE);
    pLayout->setSpacing(0);
    pLayout->addWidget(MakeTitle());
    pLayout->addWidget(MakeBody(stAccount), 1);
    FillList(stAccount);
    m_pList->setFocus();
}

// As the message box has it: one button that closes, two dots.
QWidget* CItemListDialog::MakeTitle()
{
    auto* pTitle = new QFrame(this);
    pTitle->setObjectName(QStringLiteral("frame_title"));
    pTitle->setFixedHeight(TITLE_HEIGHT);
    auto* pLayout = new QHBoxLayout(pTitle);
    pLayout->setContentsMargins(10, 0, 0, 0);
    pLayout->setSpacing(8);
    const auto fnButton = [pLayout, pTitle](const char* pName, const QString& strHeard) {
        auto* pButton = new QPushButton(pTitle);
        pButton->setObjectName(QLatin1String(pName));
        pButton->setAccessibleName(strHeard);
        pButton->setFixedSize(TITLE_BUTTON);
        pLayout->addWidget(pButton);
        return pButton;
    };
    connect(fnButton("btnClose", tr("Close")), &QPushButton::clicked, this, &QDialog::close);
    fnButton("btnMin", tr("Minimize"))->setEnabled(false);
    fnButton("btnZoom", tr("Zoom"))->setEnabled(false);
    pLayout->addStretch();
    return pTitle;
}

QWidget* CItemListDialog::MakeBody(const STCopyAccount& stAccount)
{
    auto* pBody = new QWidget(this);
    auto* pLayout = new QVBoxLayout(pBody);
    pLayout->setContentsMargins(MARGIN, SPACING, MARGIN, SPACING + EDGE);
    pLayout->setSpacing(SPACING);

    auto* pHead = new QLabel(tr("Items of this copy that need your attention"), pBody);
    pHead->setObjectName(QStringLiteral("label_title"));
    pHead->setMinimumHeight(LINE_HEIGHT);
    pHead->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14_BOLD));
    pHead->setTextFormat(Qt::PlainText);
    setAccessibleName(pHead->text());
    pLayout->addWidget(pHead);

    m_pList = new QListWidget(pBody);
    m_pList->setObjectName(QStringLiteral("m_pItemList"));
    m_pList->setAccessibleName(pHead->text());
    m_pList->setItemDelegate(new CItemRowDelegate(m_pList));
    m_pList->setUniformItemSizes(true);
    m_pList->setMouseTracking(true);
    m_pList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_pList->setStyleSheet(QStringLiteral("QListWidget { border: 1px solid %1; border-radius: 2px; }")
                               .arg(QColor(SkinColor::LINE).name()));
    pLayout->addWidget(m_pList, 1);

    auto* pFooter = new CElidedLabel(pBody);
    pFooter->setObjectName(QStringLiteral("m_pFooterLab"));
    pFooter->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    pFooter->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72));
    pFooter->setMinimumHeight(LINE_HEIGHT);
    pFooter->setText(Footer(stAccount));
    pFooter->setVisible(!pFooter->text().isEmpty());
    pLayout->addWidget(pFooter);

    auto* pClose = new QPushButton(tr("Close"), pBody);
    pClose->setObjectName(QStringLiteral("toolBtn"));
    pClose->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    pClose->setMinimumSize(BUTTON);
    connect(pClose, &QPushButton::clicked, this, &QDialog::close);
    pLayout->addWidget(pClose, 0, Qt::AlignHCenter);
    return pBody;
}

void CItemListDialog::FillList(const STCopyAccount& stAccount)
{
    for (const STCopyItem& stItem : stAccount.listItem) {
        auto* pItem = new QListWidgetItem(stItem.strPath);
        const QString strReason = CCopyText::Reason(stItem);
        const QString strAmount = CCopyText::Amount(stItem);
        pItem->setToolTip(CElidedLabel::ToolTipText(stItem.strPath) + CElidedLabel::ToolTipText(strReason));
        pItem->setData(Qt::AccessibleTextRole,
                       QStringList({stItem.strPath, strReason, strAmount}).join(QStringLiteral(" – ")));
        pItem->setData(CItemRowDelegate::REASON_ROLE, strReason);
        pItem->setData(CItemRowDelegate::AMOUNT_ROLE, strAmount);
        pItem->setData(CItemRowDelegate::NOTE_ROLE, stItem.bNote);
        m_pList->addItem(pItem);
    }
    m_pList->setCurrentRow(0);
}

QString CItemListDialog::Footer(const STCopyAccount& stAccount)
{
    const qint64 nMore = stAccount.nProblems + stAccount.nNotes - stAccount.listItem.size();
    const QString strMore = QLocale().toString(nMore);
    // One that could not be completed may lie there all the same.
    const bool bReport = !stAccount.strReport.isEmpty() && !stAccount.bReportMissing;
    if (nMore > 0 && bReport) {
        return tr("and %1 more, see %2").arg(strMore, stAccount.strReport);
    }
    if (nMore > 0) {
        return tr("and %1 more").arg(strMore);
    }
    if (stAccount.bReportMissing) {
        return CCopyText::ReportMissing();
    }
    return bReport ? tr("This list is also in %1").arg(stAccount.strReport) : QString();
}

void CItemListDialog::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Return || pEvent->key() == Qt::Key_Enter) {
        close();
        return;
    }
    KvStyleDialog::keyPressEvent(pEvent);
}
