#include "pages/CSelectionCount.h"

#include "copy/CGetFileSizeThread.h"
#include "files/CLeftBehind.h"
#include "pages/CNoticeLine.h"
#include "pages/CSearchWaitView.h"
#include "tree/CDirModel.h"
#include "tree/CFileTreeView.h"

#include <QDeadlineTimer>

#include <utility>

using namespace std::chrono_literals;

static const auto LOOK_TIME = 250ms;

static std::chrono::milliseconds s_notice = 20s;
static std::chrono::milliseconds s_end = 60s;

CSelectionCount::CSelectionCount(CFileTreeView* pTree, CGetFileSizeThread* pThread,
                                 CSearchWaitView* pWaitView, CNoticeLine* pNotice,
                                 std::function<void()> fnGivenUp)
    : m_pTree(pTree)
    , m_pThread(pThread)
    , m_pWaitView(pWaitView)
    , m_pNotice(pNotice)
    , m_fnGivenUp(std::move(fnGivenUp))
{
    m_timer.setInterval(LOOK_TIME);
    QObject::connect(&m_timer, &QTimer::timeout, [this] { Look(); });
}

void CSelectionCount::SetPatience(std::chrono::milliseconds notice, std::chrono::milliseconds end)
{
    s_notice = notice;
    s_end = end;
}

void CSelectionCount::Begin(const QString& strText, const STDiskRules& stRules)
{
    const CDirModel* pModel = CDirModel::GetInstence();
    m_bTickedAtBegin = pModel->HasCheckedEntry();
    m_bRunning = true;
    m_bNamed = false;
    m_pTree->LendNodes(true);

    m_pWaitView->SetText(strText, QString());
    m_pWaitView->ChangeGifStatus(true);
    m_pWaitView->show();

    m_pThread->SetRootNode(pModel->GetRootNode());
    m_pThread->SetDiskRules(stRules);
    m_pThread->start();
    m_timer.start();
}

void CSelectionCount::Look()
{
    const std::chrono::milliseconds since(m_pThread->SinceProgressMs());
    if (m_pThread->isFinished() || since < s_notice) {
        if (m_bNamed) {
            m_pNotice->Clear(ENNotice::NO_ANSWER);
        }
        m_bNamed = false;
        return;
    }
    m_bNamed = true;
    m_pNotice->Set(ENNotice::NO_ANSWER, m_pNotice->NoAnswerText(m_pThread->CurrentEntry()));
    if (since >= s_end) {
        // It holds no nodes where it waits, so it ends at once and they can be taken back.
        m_pThread->requestInterruption();
        m_fnGivenUp();
    }
}

bool CSelectionCount::End()
{
    // The worker sends its result before it ends; the next count must not find
    // it still running.
    m_pThread->wait();
    m_timer.stop();
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
