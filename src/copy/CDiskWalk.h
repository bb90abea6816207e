#pragma once

#include "copy/CDiskVisitor.h"
#include "copy/CFileIdSet.h"
#include "copy/CTickedItems.h"
#include "copy/CTickedPath.h"
#include "copy/CVolumePath.h"

#include <QVector>

#include <functional>
#include <memory>
#include <vector>

class CNamesAhead;
struct STWalkFolder;

/**
 * Goes over the disk below what is ticked and hands each entry to a visitor: all
 * names, hidden ones included, each folder once, no other file system. Links are not
 * followed, unless they lead to something of the same volume that is not ticked itself.
 * The files of a folder come before the folders in it.
 * Memory is needed for the folders, not for the files. One object, one walk, one thread.
 */
class CDiskWalk
{
public:
    CDiskWalk(QVector<STTickedItem> listItem, CDiskVisitor& visitor);
    ~CDiskWalk();

    CDiskWalk(const CDiskWalk&) = delete;
    CDiskWalk& operator=(const CDiskWalk&) = delete;

    /** Walks to the end, or until the visitor does not go on. */
    void Walk();

private:
    bool GoesOn();
    void NoteTicked();
    void WalkItem(const STTickedItem& stItem);
    void LeaveOutItem(const STTickedItem& stItem);
    void MeetItem(const STTickedItem& stItem, const CVolumePath& path);
    void HandOver(const STDiskEntry& stEntry);
    void MeetLink(const STDiskEntry& stLink, const STVolumeFolder& stIn, bool bListing);
    void Follow(const STDiskEntry& stLink, const CVolumePath& path);
    bool IsCopiedAnyway(const QVector<STFileId>& listChain) const;
    bool IsAround(const STFileId& stId) const;
    bool MayEnter(const STDiskEntry& stFolder, bool bItem);
    bool IsOtherFileSystem(const STDiskEntry& stFolder) const;
    void Enter(const STDiskEntry& stFolder, const QVector<STFileId>& listChain);
    void List(STWalkFolder& stFolder);
    void TellNames(CNamesAhead& names, bool bAnew);
    QVector<STExpectedFile> Waiting(std::size_t nDepth) const;
    void GoOn();
    void Leave();
    bool Reopen(STWalkFolder& stFolder, const STWalkFolder& stBelow);
    STVolumeFolder Here() const;
    void LeaveOut(const QByteArray& baPath, const STCopyReason& stReason);

    const QVector<STTickedItem> m_listItem;
    CDiskVisitor& m_visitor;
    const std::function<bool()> m_fnGoesOn;
    CTickedPath m_items;
    CFileIdSet m_setTicked; // items that are no links
    CFileIdSet m_setFollowed; // what links have led to
    CFileIdSet m_setEntered;
    QVector<STFileId> m_listAbove; // the folders that the item lies in
    std::vector<std::unique_ptr<STWalkFolder>> m_listFolder; // gone into, from the item on
    bool m_bEnded = false;
};
