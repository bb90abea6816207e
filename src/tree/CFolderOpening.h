#pragma once

#include "tree/CListAhead.h"

#include <QVector>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <vector>

class CDirNode;

/** A folder of the tree, by its node and its row. */
struct STFolderRow
{
    CDirNode* pNode = nullptr;
    int nRow = 0; ///< below the node's parent
};

/** A folder of the tree whose listing has come. */
struct STListedRow
{
    STFolderRow stRow;
    STDirListing stListing;
};

/**
 * Some folders of the tree that are being listed aside, whose nodes are awaited ones
 * (ENListed) until their listings are taken. All lie in one folder, or are that
 * folder. To be destroyed before one of the nodes. GUI thread only.
 */
class CFolderOpening
{
public:
    using Clock = std::chrono::steady_clock;

    /** Begins to list those of the folders that nobody waits for yet. */
    CFolderOpening(const QVector<STFolderRow>& listRow, std::initializer_list<QLatin1String> listSkip);

    /**
     * The next listings, in the order of the rows; waits for one until `end`. A folder
     * that somebody else has listed meanwhile is left out. None after that time.
     */
    std::vector<STListedRow> Take(Clock::time_point end);

    /** Whether all listings have been taken. */
    bool IsDone() const { return m_listAhead.IsDone(); }

    /** Whether there are listings to come but of disks that do not answer. */
    bool IsComing() const;

    /** Whether the folders are or lie in the folder of that node. */
    bool IsBelow(const CDirNode* pNode) const;

    /** From now on fnReady runs, on any thread, when there is something to take. */
    void GoOnLater(std::function<void()> fnReady) { m_listAhead.GoOnLater(std::move(fnReady)); }

    /** Makes overdue the nodes whose disks have not answered for that long; the ones that were not yet. */
    std::vector<STFolderRow> MarkOverdue(std::chrono::milliseconds time);

private:
    QVector<STFolderRow> m_listRow;
    CListAhead m_listAhead;
    int m_nTaken = 0;
};
