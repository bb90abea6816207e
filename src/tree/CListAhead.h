#pragma once

#include "tree/CDirListing.h"

#include <QVector>

#include <array>
#include <chrono>
#include <condition_variable>
#include <initializer_list>
#include <mutex>
#include <thread>
#include <vector>

class CDirNode;

/**
 * Lists many folders for a caller that takes the listings one after the other.
 *
 * Listings that take no time are made as they are asked for. As soon as one takes
 * long, helper threads ask the disk for several folders at once, so that the
 * caller waits for it a few times and not once for each folder. Only a few listings
 * are kept ready, however many folders there are.
 *
 * Made, asked and destroyed on one thread. Until it is destroyed the nodes, and those
 * above them, stay where they are and their m_fileInfo belongs to this object.
 */
class CListAhead
{
public:
    /** A listing that takes this long brings the helpers in. */
    static const std::chrono::milliseconds LONG;

    /**
     * Will list the folders of `listNode`, leaving out names as CDirNode::List does.
     * What `listSkip` refers to has to live longer than this object.
     */
    CListAhead(QVector<const CDirNode*> listNode, std::initializer_list<QLatin1String> listSkip,
               std::chrono::milliseconds longTime = LONG);

    /** Waits for the listings that are under way. */
    ~CListAhead();

    CListAhead(const CListAhead&) = delete;
    CListAhead& operator=(const CListAhead&) = delete;

    /** The listing of the next folder; waits for it. To be called at most once for each folder. */
    STDirListing Next();

private:
    // Listings that may be under way or ready beyond the ones that were taken.
    static const int AHEAD = 32;

    STDirListing ListHere(int nFolder);
    void StartHelpers();
    void Help();
    bool HasRoom() const { return m_nClaimed < m_nTaken + AHEAD; }

    const QVector<const CDirNode*> m_listNode;
    const std::initializer_list<QLatin1String> m_listSkip;
    const std::chrono::milliseconds m_longTime;

    std::mutex m_mutex; // guards what follows, but for the threads
    std::condition_variable m_room; // for helpers
    std::condition_variable m_ready; // for the caller
    std::array<STDirListing, AHEAD> m_listing; // of folder n at n % AHEAD
    std::array<bool, AHEAD> m_bReady{};
    int m_nClaimed = 0; // folders that somebody lists or has listed
    int m_nTaken = 0; // listings that were handed out
    bool m_bEnd = false;

    std::vector<std::thread> m_listHelper;
};
