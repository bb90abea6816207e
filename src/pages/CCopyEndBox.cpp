#include "pages/CCopyEndBox.h"

#include "copy/CCopyText.h"
#include "pages/CItemListDialog.h"

#include <QCoreApplication>

// A stop chosen by the user is told in the same words: what was asked for has been done.
// The texts are the copy page's.
CCopyEndBox::CCopyEndBox(QWidget* parent)
    : KvMessageBox(QCoreApplication::translate("CCopyFileWidget", "Copy file completed!"), Style_Ok, parent)
{
    SetBtnText(Style_Ok, QCoreApplication::translate("CCopyFileWidget", "OK"));
    setIcon(QStringLiteral(":/res/Tip/tips_completed.png"));
    connect(this, &KvMessageBox::SignalDetailLink, this, &CCopyEndBox::ShowList);
}

void CCopyEndBox::SetAccount(const std::optional<STCopyAccount>& stAccount)
{
    m_stAccount = stAccount;
    if (!m_stAccount) {
        SetDetailLink(QString());
        SetDetail(QString(), ENDetail::PLAIN);
        return;
    }
    QString strDetail = CCopyText::Summary(*m_stAccount);
    if (m_stAccount->bReportMissing) {
        strDetail += QLatin1Char('\n') + CCopyText::ReportMissing();
    }
    const ENDetail enWhole = m_stAccount->nFiles + m_stAccount->nLinks > 0 ? ENDetail::GOOD : ENDetail::PLAIN;
    SetDetailLink(m_stAccount->listItem.isEmpty() ? QString() : tr("Show the list"));
    SetDetail(strDetail, m_stAccount->IsWhole() ? enWhole : ENDetail::WARNING);
}

bool CCopyEndBox::SaysAllIsOnTheDisk() const
{
    return isVisible() && m_stAccount && m_stAccount->IsWhole() && m_stAccount->enFlush == ENCopyFlush::DONE;
}

void CCopyEndBox::TakeAway()
{
    if (m_pList) {
        m_pList->hide();
    }
    hide();
}

void CCopyEndBox::ShowList()
{
    if (!m_stAccount) {
        return;
    }
    CItemListDialog list(*m_stAccount, this);
    m_pList = &list;
    list.exec();
    m_pList = nullptr;
}
