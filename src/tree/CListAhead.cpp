#include "tree/CListAhead.h"

#include "files/CLeftBehind.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

using std::chrono::steady_clock;

// Enough to hide the time that a disk takes to answer; a disk with moving heads
// sorts this many questions by itself.
static const int HELPERS = 16;
// With those that a dead disk holds.
static const int MOST_HELPERS = 64;
// Listings that are kept ready; each helper may add one more.
static const size_t MOST_READY = 32;
// Who takes longer is no help any more.
static const std::chrono::milliseconds STUCK(500);
// After the first time that help was needed.
static const std::chrono::milliseconds LOOK_AGAIN(50);

// Folders that the system remembers take a fraction of a millisecond, and threads
// would only get into each other's way.
const std::chrono::milliseconds CListAhead::LONG(5);

/** What the threads share. It lives as long as the last of them. */
struct CListAhead::STShared
{
    int Size() const { return listFolder.size(); }
    bool IsAllTaken() const { return nTaken == listFolder.size(); }
    int CountUnderWaySince(steady_clock::time_point begin) const;

    QVector<STFolderToList> listFolder;
    std::initializer_list<QLatin1String> listSkip;

    std::mutex mutex; // guards what follows
    std::condition_variable room; // for helpers
    std::condition_variable changed; // for the caller
    std::vector<STListedFolder> listReady;
    std::map<int, steady_clock::time_point> mapUnderWay; // when each folder was asked for
    int nClaimed = 0; // folders that somebody lists or has listed
    int nTaken = 0; // listings that were handed out
    int nHelpers = 0;
    bool bLater = false; // nobody waits: who asks a disk is left behind
    bool bEnd = false;
    std::function<void()> fnReady;
};

int CListAhead::STShared::CountUnderWaySince(steady_clock::time_point begin) const
{
    return int(std::count_if(mapUnderWay.begin(), mapUnderWay.end(),
                             [begin](const auto& asked) { return asked.second <= begin; }));
}

CListAhead::CListAhead(QVector<STFolderToList> listFolder, std::initializer_list<QLatin1String> listSkip,
                       std::chrono::milliseconds longTime)
    : m_longTime(longTime)
    , m_pShared(std::make_shared<STShared>())
{
    m_pShared->listFolder = std::move(listFolder);
    m_pShared->listSkip = listSkip;
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    if (m_pShared->Size() > 0) {
        StartHelper();
    }
}

CListAhead::~CListAhead()
{
    GoOnLater({});
    std::unique_lock<std::mutex> lock(m_pShared->mutex);
    m_pShared->bEnd = true;
    m_pShared->room.notify_all();
    // Those that ask no disk end at once.
    m_pShared->changed.wait(lock,
                            [this] { return m_pShared->nHelpers == int(m_pShared->mapUnderWay.size()); });
}

std::vector<STListedFolder> CListAhead::Take(std::chrono::milliseconds time)
{
    const steady_clock::time_point end = steady_clock::now() + time;
    steady_clock::duration patience = m_longTime;
    std::unique_lock<std::mutex> lock(m_pShared->mutex);
    while (m_pShared->listReady.empty() && !m_pShared->IsAllTaken()) {
        const steady_clock::duration left = end - steady_clock::now();
        if (left <= steady_clock::duration::zero()) {
            break;
        }
        if (m_pShared->nHelpers == 0 && !StartHelper()) {
            ListNext(*m_pShared, lock);
        } else if (m_pShared->changed.wait_for(lock, std::min(left, patience)) == std::cv_status::timeout) {
            StartHelpers();
            patience = LOOK_AGAIN;
        }
    }
    std::vector<STListedFolder> listTaken = std::exchange(m_pShared->listReady, {});
    m_pShared->nTaken += int(listTaken.size());
    m_pShared->room.notify_all();
    lock.unlock();
    std::sort(
        listTaken.begin(), listTaken.end(),
        [](const STListedFolder& left, const STListedFolder& right) { return left.nFolder < right.nFolder; });
    return listTaken;
}

bool CListAhead::IsDone() const
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    return m_pShared->IsAllTaken();
}

void CListAhead::GoOnLater(std::function<void()> fnReady)
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    for (size_t n = m_pShared->bLater ? 0 : m_pShared->mapUnderWay.size(); n > 0; --n) {
        CLeftBehind::Add();
    }
    m_pShared->bLater = true;
    m_pShared->fnReady = std::move(fnReady);
    if (m_pShared->fnReady && !m_pShared->listReady.empty()) {
        m_pShared->fnReady();
    }
}

std::vector<int> CListAhead::Overdue(std::chrono::milliseconds time)
{
    const std::lock_guard<std::mutex> lock(m_pShared->mutex);
    StartHelpers();
    std::vector<int> listOverdue;
    const steady_clock::time_point begin = steady_clock::now() - time;
    for (const auto& [nFolder, asked] : m_pShared->mapUnderWay) {
        if (asked <= begin) {
            listOverdue.push_back(nFolder);
        }
    }
    return listOverdue;
}

/** One more thread; false when the system gives none. Under the lock. */
bool CListAhead::StartHelper()
{
    try {
        std::thread([pShared = m_pShared] { Help(pShared); }).detach();
    } catch (const std::system_error&) {
        return false; // those that there are do as well
    }
    ++m_pShared->nHelpers;
    return true;
}

void CListAhead::StartHelpers()
{
    const int nUnclaimed = m_pShared->Size() - m_pShared->nClaimed;
    // Who is at work takes the last folder as well, unless it has been at work for long.
    const bool bLast = nUnclaimed == 1;
    const int nMoving = m_pShared->nHelpers
        - m_pShared->CountUnderWaySince(steady_clock::now() - (bLast ? LOOK_AGAIN : STUCK));
    const int nWanted = bLast ? 1 : std::min(HELPERS, nMoving + nUnclaimed);
    for (int n = nMoving; n < nWanted && m_pShared->nHelpers < MOST_HELPERS; ++n) {
        if (!StartHelper()) {
            return;
        }
    }
}

void CListAhead::Help(const std::shared_ptr<STShared>& pShared)
{
    std::unique_lock<std::mutex> lock(pShared->mutex);
    while (!pShared->bEnd && pShared->nClaimed < pShared->Size()) {
        if (pShared->listReady.size() >= MOST_READY) {
            pShared->room.wait(lock);
            continue;
        }
        ListNext(*pShared, lock);
    }
    --pShared->nHelpers;
    pShared->changed.notify_all();
}

void CListAhead::ListNext(STShared& stShared, std::unique_lock<std::mutex>& lock)
{
    const int nFolder = stShared.nClaimed++;
    stShared.mapUnderWay.emplace(nFolder, steady_clock::now());
    if (stShared.bLater) {
        CLeftBehind::Add();
    }
    lock.unlock();
    STDirListing stListing = CDirListing::List(stShared.listFolder.at(nFolder), stShared.listSkip);
    lock.lock();
    stShared.mapUnderWay.erase(nFolder);
    if (stShared.bLater) {
        CLeftBehind::Remove();
    }
    stShared.listReady.push_back({nFolder, std::move(stListing)});
    if (stShared.fnReady && stShared.listReady.size() == 1) {
        stShared.fnReady();
    }
    stShared.changed.notify_all();
}
