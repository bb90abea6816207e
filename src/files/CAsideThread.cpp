#include "files/CAsideThread.h"

#include "files/CLeftBehind.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>

static constexpr std::chrono::milliseconds LOOK_TIME{50};

struct CAsideThread::STShared
{
    std::mutex mutex;
    std::condition_variable changed;
    std::function<void()> fnWork; ///< not begun yet
    bool bBusy = false; ///< from the handing over of work to its end
    bool bEnded = false; ///< nobody hands over work any more
};

CAsideThread::CAsideThread()
    : m_pShared(std::make_shared<STShared>())
{
    try {
        std::thread([pShared = m_pShared] { Serve(pShared); }).detach();
    } catch (const std::system_error&) {
        m_bThread = false;
    }
}

CAsideThread::~CAsideThread()
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    m_pShared->bEnded = true;
    if (m_pShared->bBusy) {
        CLeftBehind::Add();
    }
    m_pShared->changed.notify_all();
}

bool CAsideThread::Run(std::function<void()> fnWork, const std::function<bool()>& fnGiveUp)
{
    if (!m_bThread) {
        fnWork();
        return true;
    }
    std::unique_lock<std::mutex> lock(m_pShared->mutex);
    if (m_pShared->bBusy) {
        return false;
    }
    m_pShared->fnWork = std::move(fnWork);
    m_pShared->bBusy = true;
    m_pShared->changed.notify_all();
    while (!m_pShared->changed.wait_for(lock, LOOK_TIME, [this] { return !m_pShared->bBusy; })) {
        if (fnGiveUp()) {
            return false;
        }
    }
    return true;
}

void CAsideThread::Serve(const std::shared_ptr<STShared>& pShared)
{
    std::unique_lock<std::mutex> lock(pShared->mutex);
    while (!pShared->bEnded || pShared->fnWork) {
        if (!pShared->fnWork) {
            pShared->changed.wait(lock);
            continue;
        }
        {
            const std::function<void()> fnWork = std::move(pShared->fnWork);
            pShared->fnWork = nullptr;
            lock.unlock();
            fnWork();
        }
        lock.lock();
        pShared->bBusy = false;
        pShared->changed.notify_all();
        if (pShared->bEnded) {
            CLeftBehind::Remove();
        }
    }
}
