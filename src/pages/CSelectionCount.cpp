#include "pages/CSelectionCount.h"

#include "copy/CGetFileSizeThread.h"
#include "files/CLeftBehind.h"
#include "pages/CSearchWaitView.h"
#include "tree/CDirModel.h"
#include "tree/CFileTreeView.h"

#include <QDeadlineTimer>

CSelectionCount::CSelectionCount(CFileTreeView* pTree, CGetFileSizeThread* pThread,
                                 CSearchWaitView* pWaitView)
    : m_pTree(pTree)
    , m_pThread(pThread)
    , m_pWaitView(pWaitView)
{
}

void CSelectionCount::Begin(const QString& strText)
{
    const CDirModel* pModel = CDirModel::GetInstence();
    m_bTickedAtBegin = pModel->HasCheckedEntry();
    m_bRunning = true;
    m_pTree->LendNodes(true);

    m_pWaitView->SetText(strText, QString());
    m_pWaitView->ChangeGifStatus(true);
    m_pWaitView->show();

    m_pThread->SetRootNode(pModel->GetRootNode());
    m_pThread->start();
}

bool CSelectionCount::End()
{
    // The worker sends its result before it ends; the next count must not find
    // it still running.
    m_pThread->wait();
    m_pWaitView->ChangeGifStatus(false);
    m_pWaitView->hide();
    if (!m_bRunning) {
        return false;
    }
    m_bRunning = false;
    m_pTree->LendNodes(false);
    return true;
}

void CSelectionCount::Abandon(std::chrono::milliseconds time)
{
    m_pThread->requestInterruption();
    if (m_pThread->wait(QDeadlineTimer(time))) {
        return;
    }
    CLeftBehind::Add();
    m_pThread->setParent(nullptr);
    QObject::connect(
        m_pThread, &QThread::finished, m_pThread, [] { CLeftBehind::Remove(); }, Qt::DirectConnection);
    QObject::connect(m_pThread, &QThread::finished, m_pThread, &QObject::deleteLater);
}

bool CSelectionCount::IsSomethingTicked() const
{
    return m_bRunning ? m_bTickedAtBegin : CDirModel::GetInstence()->HasCheckedEntry();
}
