#include "tree/CListAhead.h"

#include "tree/CDirNode.h"

#include <algorithm>
#include <system_error>
#include <utility>

// Enough to hide the time that a disk takes to answer; a disk with moving heads
// sorts this many questions by itself.
static const int HELPERS = 16;

// Folders that the system remembers take a fraction of a millisecond, and threads
// would only get into each other's way.
const std::chrono::milliseconds CListAhead::LONG(5);

CListAhead::CListAhead(QVector<const CDirNode*> listNode, std::initializer_list<QLatin1String> listSkip,
                       std::chrono::milliseconds longTime)
    : m_listNode(std::move(listNode))
    , m_listSkip(listSkip)
    , m_longTime(longTime)
{
}

CListAhead::~CListAhead()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bEnd = true;
    }
    m_room.notify_all();
    for (std::thread& helper : m_listHelper) {
        helper.join();
    }
}

STDirListing CListAhead::Next()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const int nFolder = m_nTaken;
    Q_ASSERT_X(nFolder < m_listNode.size(), "CListAhead", "there is no such folder");
    if (m_nClaimed == nFolder) {
        // Nobody has begun with it: listing it here is faster than waiting.
        ++m_nClaimed;
        ++m_nTaken;
        lock.unlock();
        return ListHere(nFolder);
    }
    const size_t nPlace = size_t(nFolder % AHEAD);
    m_ready.wait(lock, [this, nPlace] { return m_bReady[nPlace]; });
    STDirListing stListing = std::exchange(m_listing[nPlace], STDirListing());
    m_bReady[nPlace] = false;
    ++m_nTaken;
    lock.unlock();
    m_room.notify_one();
    return stListing;
}

STDirListing CListAhead::ListHere(int nFolder)
{
    const auto begin = std::chrono::steady_clock::now();
    STDirListing stListing = m_listNode.at(nFolder)->List(m_listSkip);
    if (m_listHelper.empty() && std::chrono::steady_clock::now() - begin >= m_longTime) {
        StartHelpers();
    }
    return stListing;
}

void CListAhead::StartHelpers()
{
    const int nLeft = m_listNode.size() - m_nClaimed;
    // The caller can list a single folder itself.
    const int nHelpers = nLeft > 1 ? std::min(HELPERS, nLeft) : 0;
    for (int i = 0; i < nHelpers; ++i) {
        try {
            m_listHelper.emplace_back([this] { Help(); });
        } catch (const std::system_error&) {
            return; // the system gives no more threads: those that there are do as well
        }
    }
}

void CListAhead::Help()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_bEnd && m_nClaimed < m_listNode.size()) {
        if (!HasRoom()) {
            m_room.wait(lock);
            continue;
        }
        const int nFolder = m_nClaimed++;
        lock.unlock();
        STDirListing stListing = m_listNode.at(nFolder)->List(m_listSkip);
        lock.lock();
        m_listing[size_t(nFolder % AHEAD)] = std::move(stListing);
        m_bReady[size_t(nFolder % AHEAD)] = true;
        if (nFolder == m_nTaken) {
            m_ready.notify_one();
        }
    }
}
