#include "pages/CSelFileForm.h"

#include "kit/CDecorationAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/SkinFont.h"
#include "pages/CDiskSpace.h"
#include "pages/CEmptyHint.h"

void CSelFileForm::Dress()
{
    InitNames();
    InitTexts();
    InitAccess();
    ShowTicked(false);
    ShowDisk(m_pUSBTitleLab->text(), false);
    m_pCopyBtn->setEnabled(false);
}

// These names are the style sheet's: several widgets share one look.
void CSelFileForm::InitNames()
{
    m_pMacWidget->setObjectName(QStringLiteral("driveWidget"));
    m_pUSBWidget->setObjectName(QStringLiteral("driveWidget"));
    m_pLine1Lab->setObjectName(QStringLiteral("m_pLineLab"));
    m_pLine2Lab->setObjectName(QStringLiteral("m_pLineLab"));
    m_pUSBBottomLab->setObjectName(QStringLiteral("bottomLab"));
    m_pCopyBtn->setObjectName(QStringLiteral("toolBtn"));
}

void CSelFileForm::InitTexts()
{
    const QString strColor = CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72);
    const auto fnSet = [&strColor](QLabel* pLabel, const QString& strText, CSkinMgr::FontStyle enFont) {
        pLabel->setText(strText);
        pLabel->setFont(SkinFont(enFont));
        pLabel->setStyleSheet(strColor);
    };
    fnSet(m_pSrcLab, tr("Source"), CSkinMgr::FONT_STYLE_PX_15_BOLD);
    fnSet(m_pDstLab, tr("Destination"), CSkinMgr::FONT_STYLE_PX_15_BOLD);
    fnSet(m_pMacTitleLab, tr("Select File to Copy:"), CSkinMgr::FONT_STYLE_PX_14);
    fnSet(m_pUSBTitleLab, tr("Select Destination Disk:"), CSkinMgr::FONT_STYLE_PX_14);
    fnSet(m_pUSBBottomLab, tr("Select Destination Disk:"), CSkinMgr::FONT_STYLE_PX_13);
    m_pCopyBtn->setText(tr("Copy"));
    m_pCopyBtn->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13_BOLD));
    m_pCompleteBox->setText(tr("Complete rescue"));
    m_pCompleteBox->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    new CEmptyHint(tr("No disk to copy files from was found."), m_pFileTree);
}

// A prompt as the name of what it stands at.
static QString WithoutColon(QString strText)
{
    while (strText.endsWith(QLatin1Char(':')) || strText.endsWith(QChar(0xff1a))
           || (!strText.isEmpty() && strText.at(strText.size() - 1).isSpace())) {
        strText.chop(1);
    }
    return strText;
}

// What screen readers say of that which has no text of its own.
void CSelFileForm::InitAccess()
{
    m_pFileTree->setAccessibleName(WithoutColon(tr("Select File to Copy:")));
    m_pDropBtn->setAccessibleName(WithoutColon(tr("Select Destination Disk:")));
    RefreshLab->setAccessibleName(tr("Refresh List of Disks"));
    const QString strComplete = tr("Copies everything in what is ticked, whether the list shows it or not.");
    m_pCompleteBox->setAccessibleDescription(strComplete);
    // As HTML it is broken into lines.
    m_pCompleteBox->setToolTip(QStringLiteral("<p>%1</p>").arg(strComplete.toHtmlEscaped()));
    // The picture of the disk says what the name above it says.
    CDecorationAccess::Mark({m_pLine1Lab, m_pLine2Lab, m_pUSBPicLab});
    QWidget::setTabOrder(RefreshLab, m_pNoticeLine->TabStop());
}

void CSelFileForm::ShowTicked(bool bTicked)
{
    m_pCopyLab->setPixmap(CSkinPicture::Pixmap(bTicked ? QStringLiteral(":/res/Label/allow.png")
                                                       : QStringLiteral(":/res/Label/allow_deft.png")));
    m_pCopyLab->setAccessibleName(bTicked ? tr("Files selected") : tr("No files selected"));
}

void CSelFileForm::ShowDisk(const QString& strName, bool bDisk)
{
    ShowName(strName, bDisk);
    m_pUSBPicLab->setPixmap(CSkinPicture::Pixmap(bDisk ? QStringLiteral(":/res/Label/usb_select.png")
                                                       : QStringLiteral(":/res/Label/usb_unselect.png")));
}

void CSelFileForm::ShowName(const QString& strName, bool bDisk)
{
    m_pUSBTitleLab->setText(strName);
    m_pDropBtn->setAccessibleDescription(bDisk ? strName : QString());
    if (!bDisk) {
        m_pUSBBottomLab->setText(tr("Select Destination Disk:"));
    }
}

void CSelFileForm::ShowSpace(qint64 nFreeBytes, qint64 nTotalBytes)
{
    m_pUSBBottomLab->setText(
        tr("<span style=\"color:#ff7e17;\">%1GB</span> Available, "
           "<span style=\"color:#ff7e17;\">%2GB</span> Total")
            .arg(CDiskSpace::GigabyteText(nFreeBytes), CDiskSpace::GigabyteText(nTotalBytes)));
}

void CSelFileForm::HideSpace() { m_pUSBBottomLab->clear(); }
