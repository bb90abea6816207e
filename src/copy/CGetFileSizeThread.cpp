#include "copy/CGetFileSizeThread.h"

#include "copy/CCopyPlatform.h"
#include "tree/CDirListing.h"
#include "tree/CDirNode.h"

#include <QDebug>
#include <QVector>

#include <atomic>
#include <chrono>
#include <limits>
#include <mutex>
#include <utility>

// Asking whether to end takes a lock, and asking a disk the change to another
// thread, so both is done once for this many entries.
static const int ENTRIES_PER_LOOK = 256;

static const int HANGS_MS = 20; // what asking a disk takes at most when all is well

namespace {

/** What a folder holds that was never opened. */
struct STListed
{
    STDirListing stListing;
    qint64 nBytes = 0; ///< of its files, where they are counted
};

}

static qint64 SteadyMs()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

/** The sum, at most what fits. */
static qint64 Sum(qint64 nTotal, qint64 nBytes)
{
    // A volume that has just gone has the capacity -1, and files with holes may
    // claim more than a disk can hold.
    return nTotal + qBound(qint64(0), nBytes, std::numeric_limits<qint64>::max() - nTotal);
}

/** How far the count is; shared with what asks disks, which may outlast the worker. */
struct CGetFileSizeThread::STProgress
{
    std::atomic<qint64> nAnsweredMs{0}; ///< when a disk has answered last, by the steady clock
    mutable std::mutex mutex;
    QString strEntry; ///< under the mutex

    void Note() { nAnsweredMs = SteadyMs(); }

    void SetEntry(const QString& strName)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        strEntry = strName;
    }
};

CGetFileSizeThread::CGetFileSizeThread(QObject* pParent)
    : QThread(pParent)
    , m_pProgress(std::make_shared<STProgress>())
{
}

CGetFileSizeThread::~CGetFileSizeThread() = default;

void CGetFileSizeThread::SetRootNode(CDirNode* pRootNode) { m_pRootNode = pRootNode; }

void CGetFileSizeThread::SetDiskRules(const STDiskRules& stRules) { m_stRules = stRules; }

qint64 CGetFileSizeThread::RoomNeeded() const { return m_stComplete ? m_stComplete->nRoom : m_nTotalSize; }

qint64 CGetFileSizeThread::TooLarge() const { return m_stComplete ? m_stComplete->nTooLarge : 0; }

void CGetFileSizeThread::run()
{
    m_nTotalSize = 0;
    m_stComplete.reset();
    NoteProgress();
    if (m_pRootNode != nullptr && m_pRootNode->m_bComplete) {
        CountComplete();
    } else {
        GetDiskSize();
    }
    m_pAside.reset();
    if (!isInterruptionRequested()) {
        emit SignalGetSizeFinish(m_nTotalSize);
    }
}

// Runs where the disks are asked, and outlasts the worker when one does not answer.
STDiskSize CGetFileSizeThread::CountOnDisk(const QVector<STTickedItem>& listItem, const STDiskRules& stRules,
                                           STProgress& stProgress, const std::atomic<bool>& bEnded)
{
    unsigned nStep = 0;
    const auto fnGoesOn = [&] {
        // Where the system gives no other thread this is the worker's own.
        const bool bLook = nStep++ % ENTRIES_PER_LOOK == 0;
        if (bEnded || (bLook && QThread::currentThread()->isInterruptionRequested())) {
            return false;
        }
        stProgress.Note();
        return true;
    };
    const auto fnVolume
        = [&](const QString& strVolume) { stProgress.SetEntry(QFileInfo(strVolume).fileName()); };
    return CDiskSize::Of(listItem, stRules, {fnGoesOn, fnVolume});
}

/** Counts on the disk what the ticks mean; the nodes are read before that. */
void CGetFileSizeThread::CountComplete()
{
    const auto fnStopped = [this] { return isInterruptionRequested(); };
    const auto pEnded = std::make_shared<std::atomic<bool>>(false);
    const auto fnCount
        = [listItem = CTickedItems::Of(*m_pRootNode, fnStopped), stRules = m_stRules, pProgress = m_pProgress,
           pEnded] { return CountOnDisk(listItem, stRules, *pProgress, *pEnded); };
    m_stComplete = Ask<STDiskSize>(fnCount, [&] { return IsToGiveUp(*pEnded); });
    AddSize(m_stComplete ? m_stComplete->nBytes : 0);
}

// What is told to end does so before the next look, unless it waits for a disk.
bool CGetFileSizeThread::IsToGiveUp(std::atomic<bool>& bEnded) const
{
    return isInterruptionRequested() && (bEnded.exchange(true) || SinceProgressMs() > HANGS_MS);
}

void CGetFileSizeThread::GetDiskSize()
{
    if (m_pRootNode == nullptr) {
        return;
    }
    for (CDirNode* pEntry : qAsConst(m_pRootNode->m_listChild)) {
        if (isInterruptionRequested()) {
            return;
        }
        m_pProgress->SetEntry(pEntry->m_fileInfo.fileName());
        if (pEntry->m_chkState == Qt::Checked) {
            // Deliberate: walking a whole volume would take as long as the copy
            // itself, and its capacity is never less than what it holds.
            const auto fnTotal = [strPath = pEntry->m_fileInfo.absoluteFilePath()] {
                return CCopyPlatform::GetDiskSpace(strPath).nTotalBytes;
            };
            AddSize(Ask<qint64>(fnTotal).value_or(0));
            continue;
        }
        GetSelFileSize(pEntry);
    }
}

void CGetFileSizeThread::GetSelFileSize(CDirNode* pNode)
{
    if (pNode == nullptr) {
        qDebug("FFFFFFFFFFFFFFaile dirNode == nullptr");
        return;
    }
    if (pNode->m_bDir && pNode->m_chkState == Qt::Unchecked) {
        return;
    }
    const bool bCounted = pNode->m_bDir && pNode->m_listChild.isEmpty() && ListFolder(*pNode);
    QStringList listFile;
    int nEntry = 0;
    for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
        if (nEntry++ % ENTRIES_PER_LOOK == 0 && isInterruptionRequested()) {
            return;
        }
        if (pChild->m_bDir) {
            GetSelFileSize(pChild);
        } else if (!bCounted && pChild->m_chkState == Qt::Checked) {
            listFile.append(pChild->m_fileInfo.filePath());
            if (listFile.size() == ENTRIES_PER_LOOK) {
                AddFiles(listFile);
            }
        }
    }
    AddFiles(listFile);
}

/**
 * Lists a folder that was never opened. The files of a ticked one are counted while it is
 * open, which spares the disk their paths; returns whether they are.
 */
bool CGetFileSizeThread::ListFolder(CDirNode& node)
{
    const bool bTicked = node.m_chkState == Qt::Checked;
    const auto pEnded = std::make_shared<std::atomic<bool>>(false);
    const auto fnList = [stFolder = node.ToList(), bTicked, pProgress = m_pProgress, pEnded] {
        STListed stListed;
        unsigned nFile = 0;
        const auto fnAdd = [&](int nFolder, const char* pszName) {
            if (++nFile % ENTRIES_PER_LOOK == 0) {
                pProgress->Note();
                *pEnded = *pEnded || QThread::currentThread()->isInterruptionRequested();
            }
            stListed.nBytes = Sum(stListed.nBytes, *pEnded ? 0 : CCopyPlatform::SizeOf(nFolder, pszName));
        };
        stListed.stListing
            = CDirNode::ListForCopy(stFolder, bTicked ? PFNListedFile(fnAdd) : PFNListedFile());
        return stListed;
    };
    if (std::optional<STListed> stListed = Ask<STListed>(fnList, [&] { return IsToGiveUp(*pEnded); })) {
        node.TakeListing(std::move(stListed->stListing));
        AddSize(stListed->nBytes);
    }
    return bTicked;
}

void CGetFileSizeThread::AddFiles(QStringList& listFile)
{
    if (listFile.isEmpty()) {
        return;
    }
    const auto fnSizes = [listPath = std::exchange(listFile, QStringList())] {
        QVector<qint64> listSize;
        for (const QString& strPath : listPath) {
            listSize.append(CCopyPlatform::SizeOf(strPath));
        }
        return listSize;
    };
    for (const qint64 nSize : Ask<QVector<qint64>>(fnSizes).value_or(QVector<qint64>())) {
        AddSize(nSize);
    }
}

// Nothing when this thread was interrupted before the disk has answered.
template <typename Answer> std::optional<Answer> CGetFileSizeThread::Ask(std::function<Answer()> fnAsk)
{
    return Ask<Answer>(std::move(fnAsk), [this] { return isInterruptionRequested(); });
}

template <typename Answer>
std::optional<Answer> CGetFileSizeThread::Ask(std::function<Answer()> fnAsk,
                                              const std::function<bool()>& fnGiveUp)
{
    if (!m_pAside) {
        m_pAside = std::make_unique<CAsideThread>();
    }
    NoteProgress();
    return m_pAside->Ask<Answer>(std::move(fnAsk), fnGiveUp);
}

void CGetFileSizeThread::NoteProgress() { m_pProgress->Note(); }

qint64 CGetFileSizeThread::SinceProgressMs() const { return SteadyMs() - m_pProgress->nAnsweredMs; }

QString CGetFileSizeThread::CurrentEntry() const
{
    const std::lock_guard<std::mutex> lock(m_pProgress->mutex);
    return m_pProgress->strEntry;
}

void CGetFileSizeThread::AddSize(qint64 nBytes) { m_nTotalSize = Sum(m_nTotalSize, nBytes); }
