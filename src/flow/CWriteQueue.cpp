#include "flow/CWriteQueue.h"

#include "files/CLeftBehind.h"
#include "flow/CWriteSpeed.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

static constexpr std::chrono::milliseconds ANSWER_LOOK_TIME{50};
static constexpr std::chrono::milliseconds END_TIME{1000};

struct CWriteQueue::STShared
{
    std::shared_ptr<const CWriteBack> pWriteBack;
    std::function<qint64()> fnSteadyMs;

    std::mutex mutex; ///< guards what follows
    std::condition_variable changed;
    std::deque<STWriteJob> listNext; ///< not started
    std::deque<STWriteJob> listStarted; ///< the first one's last part is what is left of it
    CWriteSpeed speed;
    qint64 nWaiting = 0; ///< bytes of both lists
    qint64 nAtDisk = 0; ///< bytes of listStarted
    qint64 nAnswers = 0; ///< calls that have returned
    bool bEnds = false;
    bool bEnded = false;
    bool bLeftBehind = false;
};

/** What the thread does; it knows only what it shares with the queue. */
class CWriteQueue::CServer
{
public:
    explicit CServer(std::shared_ptr<STShared> pShared)
        : m_shared(*pShared)
        , m_pShared(std::move(pShared))
        , m_lock(m_shared.mutex)
    {
    }

    void Serve()
    {
        while (!m_shared.bEnds) {
            const bool bRoom = m_shared.listStarted.empty() || m_shared.nAtDisk < DEPTH_BYTES;
            if (!m_shared.listNext.empty() && bRoom) {
                StartNext();
            } else if (!m_shared.listStarted.empty()) {
                WaitForFirst();
            } else {
                m_shared.changed.wait(m_lock);
            }
        }
        CloseAll();
        m_shared.bEnded = true;
        m_shared.changed.notify_all();
        if (m_shared.bLeftBehind) {
            CLeftBehind::Remove();
        }
    }

private:
    void Answered()
    {
        ++m_shared.nAnswers;
        m_shared.changed.notify_all();
    }

    void StartNext()
    {
        if (m_shared.listStarted.empty()) {
            m_shared.speed.Begins(m_shared.fnSteadyMs());
        }
        STWriteJob stJob = std::move(m_shared.listNext.front());
        m_shared.listNext.pop_front();
        for (size_t nPart = 0; nPart < stJob.listPart.size() && !m_shared.bEnds; ++nPart) {
            const STWritePart& stPart = stJob.listPart[nPart];
            m_lock.unlock();
            m_shared.pWriteBack->Start(stPart.pFile->Get(), stPart.nFrom, stPart.nBytes);
            m_lock.lock();
            Answered();
        }
        m_lock.unlock();
        stJob.listPart = {stJob.listPart.back()}; // closes the others
        m_lock.lock();
        m_shared.nAtDisk += stJob.nBytes;
        m_shared.listStarted.push_back(std::move(stJob));
    }

    void WaitForFirst()
    {
        STWriteJob& stJob = m_shared.listStarted.front(); // only this thread changes the list
        STWritePart& stPart = stJob.listPart.back();
        const qint64 nBytes = std::min(stPart.nBytes, WAIT_BYTES);
        m_lock.unlock();
        m_shared.pWriteBack->Wait(stPart.pFile->Get(), stPart.nFrom, nBytes);
        m_lock.lock();
        const bool bLast = nBytes == stPart.nBytes;
        const qint64 nDone = bLast ? stJob.nBytes : std::min(nBytes, stJob.nBytes);
        stPart.nFrom += nBytes;
        stPart.nBytes -= nBytes;
        stJob.nBytes -= nDone;
        m_shared.nAtDisk -= nDone;
        m_shared.nWaiting -= nDone;
        m_shared.speed.Done(nDone, m_shared.fnSteadyMs());
        if (bLast) {
            CloseFirst();
        }
        Answered();
    }

    void CloseFirst()
    {
        STWriteJob stDone = std::move(m_shared.listStarted.front());
        m_shared.listStarted.pop_front();
        m_lock.unlock();
        stDone.listPart.clear(); // closes, which may take long
        m_lock.lock();
    }

    void CloseAll()
    {
        std::deque<STWriteJob> listStarted;
        listStarted.swap(m_shared.listStarted);
        m_lock.unlock();
        listStarted.clear();
        m_lock.lock();
    }

    STShared& m_shared;
    const std::shared_ptr<STShared> m_pShared;
    std::unique_lock<std::mutex> m_lock;
};

CWriteQueue::CWriteQueue(std::shared_ptr<const CWriteBack> pWriteBack, std::function<qint64()> fnSteadyMs)
    : m_pShared(std::make_shared<STShared>())
{
    m_pShared->pWriteBack = std::move(pWriteBack);
    m_pShared->fnSteadyMs = std::move(fnSteadyMs);
    try {
        std::thread([pShared = m_pShared] { CServer(pShared).Serve(); }).detach();
    } catch (const std::system_error&) {
        m_bThread = false;
    }
}

CWriteQueue::~CWriteQueue()
{
    if (!m_bThread) {
        return;
    }
    std::deque<STWriteJob> listNext;
    std::unique_lock<std::mutex> lock(m_pShared->mutex);
    listNext.swap(m_pShared->listNext); // closed whatever the thread waits for
    m_pShared->bEnds = true;
    m_pShared->changed.notify_all();
    if (!m_pShared->changed.wait_for(lock, END_TIME, [this] { return m_pShared->bEnded; })) {
        m_pShared->bLeftBehind = true;
        CLeftBehind::Add();
    }
}

void CWriteQueue::Add(STWriteJob stJob)
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    m_pShared->nWaiting += stJob.nBytes;
    m_pShared->listNext.push_back(std::move(stJob));
    m_pShared->changed.notify_all();
}

qint64 CWriteQueue::WaitingBytes() const
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    return m_pShared->nWaiting;
}

std::optional<qint64> CWriteQueue::BytesIn(qint64 nMs) const
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    return m_pShared->speed.BytesIn(nMs);
}

bool CWriteQueue::WaitForAnswer()
{
    std::unique_lock<std::mutex> lock(m_pShared->mutex);
    const auto fnAnswered = [this] { return m_pShared->nAnswers != m_nSeen; };
    const bool bAnswered = m_pShared->changed.wait_for(lock, ANSWER_LOOK_TIME, fnAnswered);
    m_nSeen = m_pShared->nAnswers;
    return bAnswered;
}
