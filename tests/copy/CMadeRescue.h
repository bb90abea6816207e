#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/CGetFileSizeThread.h"
#include "support/CCopyBed.h"
#include "support/CMadeMac.h"
#include "support/CToolCompare.h"
#include "support/CVolume.h"

#include <QStorageInfo>

/**
 * What the tests of a complete copy stand on: a made volume, a stick, ticks, the count
 * that comes before a copy, and the copy, each on the thread that it has in the program.
 */
class CMadeRescue : public CCopyBed
{
protected:
    /** Before each test: both disks in memory, each nMiB large, and the volume made on one. */
    void MakeVolume(int nFiles, int nMiB = 400)
    {
        MakeDisks(nMiB);
        m_pMac = std::make_unique<CMadeMac>(m_pSource->Path(), nFiles);
    }

    /** The disks alone. */
    void MakeDisks(int nMiB)
    {
        Make();
        m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", nMiB);
        m_pStick = std::make_unique<CVolume>("STICK", "/dev/sdb1", nMiB);
        QVERIFY(m_pSource->IsValid() && m_pStick->IsValid());
        m_strDest = m_pStick->Path("Tarnwick");
    }

    /** After each test. */
    void ClearVolume()
    {
        Clear();
        m_pMac.reset();
        m_pStick.reset();
        m_pSource.reset();
    }

    /**
     * Ticks entries of the volume, "" for itself and "*" for all that its row shows below
     * it, as a person does who has opened nOpened levels of the tree, and what leads to them.
     */
    void Tick(const QStringList& listEntry, int nOpened = 0)
    {
        m_pNodes->Root()->m_chkState = Qt::Unchecked;
        CDirNode* pVolume = m_pNodes->Add(m_pSource->Path(), Qt::Unchecked);
        Open(pVolume, nOpened);
        for (const QString& strEntry : listEntry) {
            if (strEntry == "*") {
                Open(pVolume, 1);
                for (CDirNode* pChild : qAsConst(pVolume->m_listChild)) {
                    TickNode(pChild);
                }
            } else {
                TickNode(NodeOf(pVolume, strEntry));
            }
        }
    }

    /** Counts what is ticked and copies it; the choice as given. */
    void CountAndCopy(bool bComplete)
    {
        m_pNodes->Root()->m_bComplete = bComplete;
        CGetFileSizeThread count;
        connect(
            &count, &CGetFileSizeThread::SignalGetSizeFinish, &count,
            [this](qint64 nSize) { m_nCounted = nSize; }, Qt::DirectConnection);
        count.SetRootNode(m_pNodes->Root());
        count.SetDiskRules(CCopyPlatform::GetDiskRules(QFileInfo(m_strDest).path()));
        count.start();
        QVERIFY(count.wait(WAIT_MS));
        m_nRoom = count.RoomNeeded();
        const qint64 nFree = FreeBytes();
        Start(m_nCounted);
        QVERIFY(WaitForEnd(WAIT_MS));
        m_nTaken = nFree - FreeBytes();
    }

    /** The copy of an entry of the volume, or of all of it. */
    QString Arrived(const QString& strEntry = {}) const
    {
        return m_strDest + "/Macintosh HD" + (strEntry.isEmpty() ? QString() : '/' + strEntry);
    }

    /** The paths of the account's items that are not whole, or of its notes. */
    QStringList Said(bool bNotes) const
    {
        QStringList listPath;
        const STCopyAccount stAccount = Account();
        for (const STCopyItem& stItem : stAccount.listItem) {
            if (stItem.bNote == bNotes) {
                listPath.append(stItem.strPath);
            }
        }
        listPath.sort();
        return listPath;
    }

    static constexpr int WAIT_MS = 100000;

    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pStick;
    std::unique_ptr<CMadeMac> m_pMac;
    qint64 m_nCounted = -1; // bytes
    qint64 m_nRoom = -1; // bytes, said to be needed
    qint64 m_nTaken = -1; // bytes, of the stick

private:
    qint64 FreeBytes() const { return QStorageInfo(QFileInfo(m_strDest).path()).bytesFree(); }

    static void Open(CDirNode* pNode, int nLevels)
    {
        if (nLevels == 0 || !pNode->m_bDir) {
            return;
        }
        if (pNode->m_listChild.isEmpty()) {
            pNode->LoadChild();
        }
        for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
            Open(pChild, nLevels - 1);
        }
    }

    static CDirNode* NodeOf(CDirNode* pVolume, const QString& strEntry)
    {
        CDirNode* pNode = pVolume;
        for (const QString& strName : strEntry.split('/', Qt::SkipEmptyParts)) {
            Open(pNode, 1);
            CDirNode* pFound = nullptr;
            for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
                pFound = pChild->m_strName == strName ? pChild : pFound;
            }
            if (pFound == nullptr) {
                qFatal("the tree does not show %s", qPrintable(strEntry));
            }
            pNode = pFound;
        }
        return pNode;
    }

    static void TickNode(CDirNode* pNode)
    {
        pNode->m_chkState = Qt::Checked;
        CNodeTree::Walk(pNode, [](CDirNode* pBelow) { pBelow->m_chkState = Qt::Checked; });
        for (CDirNode* pUp = pNode->m_pParent; pUp != nullptr; pUp = pUp->m_pParent) {
            int nChecked = 0;
            for (const CDirNode* pChild : qAsConst(pUp->m_listChild)) {
                nChecked += pChild->m_chkState == Qt::Checked ? 1 : 0;
            }
            pUp->m_chkState = nChecked == pUp->m_listChild.size() ? Qt::Checked : Qt::PartiallyChecked;
        }
    }
};
