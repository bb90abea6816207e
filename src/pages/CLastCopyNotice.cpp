#include "pages/CLastCopyNotice.h"

#include "copy/CCopyText.h"
#include "pages/CItemListDialog.h"
#include "pages/CNoticeLine.h"

#include <QWidget>

CLastCopyNotice::CLastCopyNotice(CNoticeLine* pNotice, QWidget* pPage)
    : QObject(pPage)
    , m_pNotice(pNotice)
    , m_pPage(pPage)
{
    connect(pNotice, &CNoticeLine::SignalLink, this, [this](ENNotice enNotice) {
        if (enNotice == ENNotice::LAST_COPY) {
            ShowItems();
        }
    });
}

void CLastCopyNotice::Show(const STCopyAccount& stAccount, const QString& strUsbName)
{
    m_stAccount = stAccount;
    if (stAccount.IsWhole()) {
        m_pNotice->Clear(ENNotice::LAST_COPY);
        return;
    }
    QString strWhat = CCopyText::Summary(stAccount);
    if (stAccount.bReportMissing) {
        strWhat += QLatin1Char(' ') + CCopyText::ReportMissing();
    }
    m_pNotice->Set(ENNotice::LAST_COPY, m_pNotice->TextOf(strUsbName, strWhat),
                   stAccount.listItem.isEmpty() ? QString() : tr("Show the list"));
}

void CLastCopyNotice::ShowItems()
{
    CItemListDialog dialog(m_stAccount, m_pPage);
    dialog.exec();
}
