#pragma once

#include "tree/CDirListing.h"

#include <QVector>

#include <chrono>
#include <functional>
#include <initializer_list>
#include <memory>
#include <mutex>
#include <vector>

/** The listing of one of several folders. */
struct STListedFolder
{
    int nFolder = 0; ///< its place among the folders
    STDirListing stListing;
};

/**
 * Lists many folders on threads of its own, for a caller that takes the listings as
 * they come. A disk that does not answer holds up nobody but who waits for it.
 *
 * One thread lists one folder after the other. As soon as one takes long, others help
 * and ask the disk for several folders at once, so that the caller waits for it a few
 * times and not once for each folder. Only a few listings are kept ready, however
 * many folders there are.
 *
 * The threads hold copies of all that they need. One that is still asking a disk when
 * this object ends, or after GoOnLater(), is left behind (CLeftBehind). Where the system
 * gives no thread the caller lists. Made, asked and destroyed on one thread.
 */
class CListAhead
{
public:
    /** A listing that takes this long brings the helpers in. */
    static const std::chrono::milliseconds LONG;

    /**
     * Begins to list the folders, leaving out names as CDirListing does. What `listSkip`
     * refers to has to live as long as the process.
     */
    CListAhead(QVector<STFolderToList> listFolder, std::initializer_list<QLatin1String> listSkip,
               std::chrono::milliseconds longTime = LONG);

    /** Waits for nobody. */
    ~CListAhead();

    CListAhead(const CListAhead&) = delete;
    CListAhead& operator=(const CListAhead&) = delete;

    /**
     * The listings that have come since the last call, by their places. Waits up to that
     * time for the first of them; none when none came by then, or all have been taken.
     */
    std::vector<STListedFolder> Take(std::chrono::milliseconds time);

    /** Whether all listings have been taken. */
    bool IsDone() const;

    /**
     * To be called when the caller waits no longer: from now on fnReady runs on any thread
     * as soon as there is something to take. It must not call this object.
     */
    void GoOnLater(std::function<void()> fnReady);

    /**
     * The folders whose disks have been asked for so long without an answer, by their
     * places. Brings in helpers for others that wait behind them.
     */
    std::vector<int> Overdue(std::chrono::milliseconds time);

private:
    struct STShared;

    static void Help(const std::shared_ptr<STShared>& pShared);
    static void ListNext(STShared& stShared, std::unique_lock<std::mutex>& lock);
    bool StartHelper();
    void StartHelpers();

    const std::chrono::milliseconds m_longTime;
    const std::shared_ptr<STShared> m_pShared;
};
