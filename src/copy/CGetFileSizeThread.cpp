#include "copy/CGetFileSizeThread.h"

#include "tree/CDirNode.h"

#include <QDebug>
#include <QStorageInfo>

#include <limits>

// Asking whether to end takes a lock, so it is asked once for this many entries.
static const int ENTRIES_PER_LOOK = 256;

CGetFileSizeThread::CGetFileSizeThread(QObject* pParent)
    : QThread(pParent)
{
}

void CGetFileSizeThread::SetRootNode(CDirNode* pRootNode) { m_pRootNode = pRootNode; }

void CGetFileSizeThread::run()
{
    m_nTotalSize = 0;
    GetDiskSize();
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
        if (pEntry->m_chkState == Qt::Checked) {
            // Deliberate: walking a whole volume would take as long as the copy
            // itself, and its capacity is never less than what it holds.
            AddSize(QStorageInfo(pEntry->m_fileInfo.absoluteFilePath()).bytesTotal());
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
        pNode->LoadChild();
    }
    int nEntry = 0;
    for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
        if (nEntry++ % ENTRIES_PER_LOOK == 0 && isInterruptionRequested()) {
            return;
        }
        if (pChild->m_bDir) {
            GetSelFileSize(pChild);
        } else if (pChild->m_chkState == Qt::Checked) {
            AddSize(pChild->m_fileInfo.size());
        }
    }
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
