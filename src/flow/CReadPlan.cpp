#include "flow/CReadPlan.h"

#include "files/CLeftBehind.h"

#include <algorithm>
#include <chrono>
#include <iterator>

static const std::chrono::milliseconds LOOK_TIME(20);
static const int MOST_LOOKS = 100;
static const qint64 MEMORY_SHARE = 16; // a batch of the free memory; two are in flight
static const qint64 LEAST_BATCH = qint64(256) << 10; // with less memory nothing is asked for
static const qint64 WINDOW = qint64(8) << 20; // of a large file, ahead of where it is read
static const int MOST_UNKNOWN = 64;

using Lock = std::lock_guard<std::mutex>;

bool CReadPlan::IsKnown(quint64 nDevice) const
{
    const Lock lock(m_mutex);
    return m_mapDisk.count(nDevice) != 0;
}

void CReadPlan::AddDisk(quint64 nDevice, const CSourceDisk& disk)
{
    const Lock lock(m_mutex);
    m_mapDisk[nDevice] = disk;
}

void CReadPlan::Expect(const QVector<STExpectedFile>& listFile, bool bAnew)
{
    const Lock lock(m_mutex);
    if (!m_bHelps) {
        return;
    }
    if (bAnew) {
        m_listWaiting.clear();
    }
    const QSet<QByteArray> setAsked = bAnew ? Asked() : QSet<QByteArray>();
    for (const STExpectedFile& stFile : listFile) {
        if (!setAsked.contains(stFile.baPath)) {
            m_listWaiting.push_back(stFile);
        }
    }
    m_nWaiting = int(m_listWaiting.size());
    m_changed.notify_all();
}

/** The files that were asked for and not opened. */
QSet<QByteArray> CReadPlan::Asked() const
{
    QSet<QByteArray> setAsked;
    for (const STAskedFile& stAsked : m_listAsked) {
        setAsked.insert(stAsked.stFile.baPath);
    }
    return setAsked;
}

/** Takes the first files out of those asked for. */
void CReadPlan::Pop(size_t nAsked)
{
    for (size_t i = 0; i < nAsked; ++i) {
        m_nAskedBytes -= m_listAsked.front().nAdvised;
        m_listAsked.pop_front();
    }
}

std::optional<STAskedFile> CReadPlan::Opened(const QByteArray& baPath, quint64 nDevice)
{
    const Lock lock(m_mutex);
    m_nDevice = nDevice;
    m_bFirstRead = true;
    m_nPosition = 0;
    m_bHelps = Disk().MayHelp();
    EndIfOver();
    m_changed.notify_all();
    const auto fnIsIt = [&baPath](const STExpectedFile& stFile) { return stFile.baPath == baPath; };
    const auto itAsked = std::find_if(m_listAsked.begin(), m_listAsked.end(),
                                      [&](const STAskedFile& stAsked) { return fnIsIt(stAsked.stFile); });
    if (itAsked != m_listAsked.end()) {
        const STAskedFile stAsked = *itAsked;
        Pop(size_t(itAsked - m_listAsked.begin()) + 1);
        m_nOpened = stAsked.nNumber;
        m_nUnknown = 0;
        return stAsked;
    }
    const auto itWaiting = std::find_if(m_listWaiting.begin(), m_listWaiting.end(), fnIsIt);
    m_nUnknown = itWaiting != m_listWaiting.end() ? 0 : m_nUnknown + 1;
    if (itWaiting != m_listWaiting.end() || m_nUnknown >= MOST_UNKNOWN) {
        Pop(m_listAsked.size());
        m_nOpened = m_nNext++; // behind all that was asked for
        m_listWaiting.erase(m_listWaiting.begin(),
                            itWaiting != m_listWaiting.end() ? std::next(itWaiting) : itWaiting);
        m_nWaiting = int(m_listWaiting.size());
    }
    return std::nullopt;
}

void CReadPlan::NoteThere(const STAskedFile& stFile, bool bThere)
{
    const Lock lock(m_mutex);
    if (bThere || stFile.nNumber <= m_nAllArrived) {
        Disk().NoteAsked(bThere);
        EndIfOver();
        m_changed.notify_all();
    }
}

void CReadPlan::NoteRead(qint64 nBytes, qint64 nUs)
{
    const Lock lock(m_mutex);
    const bool bLearned = Disk().IsLearned();
    Disk().NoteRead(m_bFirstRead, nBytes, nUs);
    m_bFirstRead = false;
    m_nPosition += std::max<qint64>(0, nBytes);
    EndIfOver();
    if (!m_bHelps || bLearned != Disk().IsLearned() || m_nLarge == m_nOpened) {
        m_changed.notify_all();
    }
}

/** Forgets what was told when the device is to be left alone. */
void CReadPlan::EndIfOver()
{
    if (!Disk().MayHelp()) {
        m_bHelps = false;
        m_listWaiting.clear();
        m_nWaiting = 0;
    }
}

void CReadPlan::EndDisk()
{
    const Lock lock(m_mutex);
    Disk().End();
    EndIfOver();
}

bool CReadPlan::End(int nWaitMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_bEnd = true;
    m_bHelps = false;
    m_changed.notify_all();
    if (m_changed.wait_for(lock, std::chrono::milliseconds(nWaitMs), [this] { return m_bEnded; })) {
        return true;
    }
    m_bLeftBehind = true;
    CLeftBehind::Add();
    return false;
}

void CReadPlan::NoteEnded()
{
    const Lock lock(m_mutex);
    m_bEnded = true;
    m_changed.notify_all();
    if (m_bLeftBehind) {
        CLeftBehind::Remove();
    }
}

ENReadWork CReadPlan::Wait()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (Work() == ENReadWork::LOOK) {
        const bool bLooks = m_nArrived < m_nLastOfBatch && m_nLooks < MOST_LOOKS;
        if (!bLooks) {
            m_changed.wait(lock);
        } else if (m_changed.wait_for(lock, LOOK_TIME) == std::cv_status::timeout) {
            ++m_nLooks;
            return ENReadWork::LOOK;
        }
    }
    return Work();
}

/** What there is to do; LOOK for nothing else. */
ENReadWork CReadPlan::Work() const
{
    if (m_bEnd) {
        return ENReadWork::END;
    }
    if (m_nLarge != 0) {
        const bool bNeeded = m_nLarge == m_nOpened && m_nLargeTo < m_nPosition + WINDOW / 2;
        return bNeeded || m_nLarge < m_nOpened || !m_bHelps ? ENReadWork::LARGE : ENReadWork::LOOK;
    }
    const auto itDisk = m_mapDisk.find(m_nDevice);
    const bool bRoom = itDisk != m_mapDisk.end() && itDisk->second.IsLearned() && !m_listWaiting.empty()
        && m_nAskedBytes <= m_nBatchBytes / 2 * 3 && int(m_listAsked.size()) <= itDisk->second.BatchFiles();
    return bRoom && IsAsking() ? ENReadWork::BATCH : ENReadWork::LOOK;
}

bool CReadPlan::IsAsking() const { return m_bHelps && m_nOpened >= m_nElsewhere; }

qint64 CReadPlan::BeginBatch(qint64 nFree)
{
    const Lock lock(m_mutex);
    m_nBatchBytes = std::min(Disk().BatchBytes(), nFree / MEMORY_SHARE);
    if (m_nBatchBytes < LEAST_BATCH) {
        Disk().End();
        EndIfOver();
        m_nBatchBytes = 0;
    }
    return m_nBatchBytes;
}

int CReadPlan::BatchFiles() const
{
    const Lock lock(m_mutex);
    const auto itDisk = m_mapDisk.find(m_nDevice);
    return itDisk == m_mapDisk.end() ? 0 : itDisk->second.BatchFiles();
}

bool CReadPlan::Seeks() const
{
    const Lock lock(m_mutex);
    const auto itDisk = m_mapDisk.find(m_nDevice);
    return itDisk != m_mapDisk.end() && itDisk->second.Seeks();
}

std::optional<STAskedFile> CReadPlan::Take()
{
    const Lock lock(m_mutex);
    if (m_bEnd || !IsAsking() || m_listWaiting.empty()) {
        return std::nullopt;
    }
    STAskedFile stAsked;
    stAsked.stFile = m_listWaiting.front();
    m_listWaiting.pop_front();
    m_nWaiting = int(m_listWaiting.size());
    if (!stAsked.stFile.bFolder) {
        stAsked.nNumber = m_nNext++;
        m_listAsked.push_back(stAsked);
    }
    return stAsked;
}

void CReadPlan::Unfold(const QVector<STExpectedFile>& listEntry, bool bWhole)
{
    const Lock lock(m_mutex);
    if (!bWhole) {
        m_listWaiting.clear();
    }
    // What was told anew may hold a folder that was begun already.
    const QSet<QByteArray> setAsked = Asked();
    std::deque<STExpectedFile> listNew;
    std::copy_if(listEntry.begin(), listEntry.end(), std::back_inserter(listNew),
                 [&setAsked](const STExpectedFile& stFile) { return !setAsked.contains(stFile.baPath); });
    m_listWaiting.insert(m_listWaiting.begin(), listNew.begin(), listNew.end());
    m_nWaiting = int(m_listWaiting.size());
}

bool CReadPlan::IsWanted(qint64 nNumber) const
{
    const Lock lock(m_mutex);
    return !m_bEnd && m_bHelps && !m_listAsked.empty() && m_listAsked.front().nNumber <= nNumber;
}

bool CReadPlan::IsWantedOn(qint64 nNumber) const
{
    const Lock lock(m_mutex);
    return !m_bEnd && m_bHelps && nNumber >= m_nOpened;
}

quint64 CReadPlan::Device() const
{
    const Lock lock(m_mutex);
    return m_nDevice;
}

bool CReadPlan::IsOnDisk(qint64 nNumber, quint64 nDevice)
{
    const Lock lock(m_mutex);
    if (nDevice == m_nDevice) {
        return true;
    }
    m_nElsewhere = std::max(m_nElsewhere, nNumber);
    return false;
}

void CReadPlan::NoteAdvised(qint64 nNumber, qint64 nBytes, bool bWhole)
{
    const Lock lock(m_mutex);
    if (m_listAsked.empty() || m_listAsked.front().nNumber > nNumber) {
        return; // the copy was faster
    }
    STAskedFile& stAsked = m_listAsked[size_t(nNumber - m_listAsked.front().nNumber)];
    m_nAskedBytes += nBytes - stAsked.nAdvised;
    stAsked.nAdvised = nBytes;
    stAsked.bWhole = bWhole;
}

void CReadPlan::SetLarge(qint64 nNumber, qint64 nSize)
{
    const Lock lock(m_mutex);
    m_nLarge = nNumber;
    m_nLargeSize = nSize;
    m_nLargeTo = 0;
}

STLargeWork CReadPlan::TakeLarge()
{
    const Lock lock(m_mutex);
    if (m_nLarge < m_nOpened || !m_bHelps) {
        return {true, 0};
    }
    m_nLargeTo = std::min(m_nLargeSize, m_nPosition + WINDOW);
    return {false, m_nLargeTo};
}

void CReadPlan::DropLarge()
{
    const Lock lock(m_mutex);
    m_nLarge = 0;
}

void CReadPlan::EndBatch(qint64 nNumber)
{
    const Lock lock(m_mutex);
    m_nLastOfBatch = nNumber;
    m_nLooks = 0;
}

void CReadPlan::NoteArrived()
{
    const Lock lock(m_mutex);
    m_nAllArrived = m_nArrived;
    m_nArrived = m_nLastOfBatch;
}
