#include "copy/CGetFileSizeThread.h"

#include "tree/CDirListing.h"
#include "tree/CDirNode.h"

#include <QDebug>
#include <QStorageInfo>
#include <QVector>

#include <chrono>
#include <limits>
#include <utility>

// Asking whether to end takes a lock, and asking a disk the change to another
// thread, so both is done once for this many entries.
static const int ENTRIES_PER_LOOK = 256;

CGetFileSizeThread::CGetFileSizeThread(QObject* pParent)
    : QThread(pParent)
{
}

CGetFileSizeThread::~CGetFileSizeThread() = default;

void CGetFileSizeThread::SetRootNode(CDirNode* pRootNode) { m_pRootNode = pRootNode; }

void CGetFileSizeThread::SetDiskRules(const STDiskRules& stRules) { m_stRules = stRules; }

qint64 CGetFileSizeThread::RoomNeeded() const { return m_nTotalSize; }

void CGetFileSizeThread::run()
{
    m_nTotalSize = 0;
    NoteProgress();
    GetDiskSize();
    m_pAside.reset();
    if (!isInterruptionRequested()) {
        emit SignalGetSizeFinish(m_nTotalSize);
    }
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
        {
            const std::lock_guard<std::mutex> lock(m_mutexEntry);
            m_strEntry = pEntry->m_fileInfo.fileName();
        }
        if (pEntry->m_chkState == Qt::Checked) {
            // Deliberate: walking a whole volume would take as long as the copy
            // itself, and its capacity is never less than what it holds.
            const auto fnTotal = [strPath = pEntry->m_fileInfo.absoluteFilePath()] {
                return QStorageInfo(strPath).bytesTotal();
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
    if (pNode->m_bDir && pNode->m_listChild.isEmpty()) {
        const auto fnList = [stFolder = pNode->ToList()] { return CDirNode::ListForCopy(stFolder); };
        if (const std::optional<STDirListing> stListing = Ask<STDirListing>(fnList)) {
            pNode->TakeListing(*stListing);
        }
    }
    QStringList listFile;
    int nEntry = 0;
    for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
        if (nEntry++ % ENTRIES_PER_LOOK == 0 && isInterruptionRequested()) {
            return;
        }
        if (pChild->m_bDir) {
            GetSelFileSize(pChild);
        } else if (pChild->m_chkState == Qt::Checked) {
            listFile.append(pChild->m_fileInfo.filePath());
            if (listFile.size() == ENTRIES_PER_LOOK) {
                AddFiles(listFile);
            }
        }
    }
    AddFiles(listFile);
}

void CGetFileSizeThread::AddFiles(QStringList& listFile)
{
    if (listFile.isEmpty()) {
        return;
    }
    const auto fnSizes = [listPath = std::exchange(listFile, QStringList())] {
        QVector<qint64> listSize;
        for (const QString& strPath : listPath) {
            listSize.append(QFileInfo(strPath).size());
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
    if (!m_pAside) {
        m_pAside = std::make_unique<CAsideThread>();
    }
    NoteProgress();
    return m_pAside->Ask<Answer>(std::move(fnAsk), [this] { return isInterruptionRequested(); });
}

static qint64 SteadyMs()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

void CGetFileSizeThread::NoteProgress() { m_nProgressMs = SteadyMs(); }

qint64 CGetFileSizeThread::SinceProgressMs() const { return SteadyMs() - m_nProgressMs; }

QString CGetFileSizeThread::CurrentEntry() const
{
    const std::lock_guard<std::mutex> lock(m_mutexEntry);
    return m_strEntry;
}

void CGetFileSizeThread::AddSize(qint64 nBytes)
{
    // A volume that has just gone has the capacity -1, and files with holes may
    // claim more than a disk can hold.
    if (nBytes <= 0) {
        return;
    }
    const qint64 nRoom = std::numeric_limits<qint64>::max() - m_nTotalSize;
    m_nTotalSize += qMin(nBytes, nRoom);
}
