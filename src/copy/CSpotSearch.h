#pragma once

#include "copy/CByteRanges.h"

#include <QtGlobal>

#include <deque>
#include <optional>
#include <set>
#include <utility>

/**
 * The order in which a file with places that cannot be read is read, so that as much
 * as possible comes as early as possible and no place is tried again that has failed:
 *
 * First forwards to the end of the file, in steps that are small behind a bad place and
 * grow while all goes well; where the places stay bad, ever more is skipped. Then what
 * was skipped, from its far end backwards until it meets a bad place. Then what is left
 * between bad places, its largest part first, from its middle to both sides.
 *
 * It only counts: who reads tells it what came of each step.
 */
class CSpotSearch
{
public:
    /**
     * The least that is read, in bytes. Disks keep their data in sectors of that size,
     * and the system reads in pages of it: anything smaller would try the same bad
     * sector once more.
     */
    static constexpr qint64 SMALL_STEP = 4096;

    static constexpr qint64 LARGE_STEP = qint64(256) * 1024; ///< the most that is read at once
    static constexpr qint64 LARGE_SKIP = qint64(16) * 1024 * 1024; ///< the most that is skipped at once

    /**
     * For a file of nSize bytes of which those before nFrom are there, and a large read
     * from nFrom on has failed. It does not tell where: the system's cache may ask the disk for many
     * pages at once, of which none is given when one is bad.
     */
    CSpotSearch(qint64 nFrom, qint64 nSize);

    /** What is to be read now; nothing when all of the file has been tried. */
    std::optional<STByteRange> Next() const;

    /** What came of Next: nRead bytes from its beginning. Returns how many bytes are dealt with by that. */
    qint64 Done(qint64 nRead);

    /**
     * Breaks off the way to the end of the file: that end comes next, as far from the bad
     * place as can be, and what lies before it, backwards. False, and nothing else, where the
     * way was gone already.
     */
    bool JumpToEnd();

    /** Where the last small step of a file of nSize bytes begins. */
    static qint64 LastStep(qint64 nSize) { return (nSize - 1) / SMALL_STEP * SMALL_STEP; }

    /** What could not be read. */
    const CByteRanges& Bad() const { return m_bad; }

    /** What has not been tried yet. */
    CByteRanges Untried() const;

private:
    enum class ENWay
    {
        FORWARDS, ///< what lies before it was read
        BACKWARDS ///< what lies behind it was read
    };

    struct STPart
    {
        STByteRange stRange;
        ENWay enWay = ENWay::FORWARDS;
        qint64 nStep = SMALL_STEP;
        qint64 nSmallBytes = 0; // a large step has failed there
    };

    static STByteRange NextOf(const STPart& stPart);
    static STByteRange MiddleOf(const STByteRange& stRange);
    bool IsSweeping() const { return m_stSweep.stRange.Bytes() > 0; }
    static bool IsBad(const STByteRange& stTried, qint64 nStop);
    static void SetStep(STPart& stPart, const STByteRange& stTried, qint64 nDone, bool bWell);
    qint64 MarkBad(qint64 nFrom);
    void Skip(qint64 nBadEnd);
    void EndSkip(qint64 nEnd, bool bFarEndRead);
    void AddPart(const STByteRange& stRange, ENWay enWay);
    void AddMiddle(const STByteRange& stRange);
    void GoOn(STPart stPart, const STByteRange& stRest);
    void DoneSweep(const STByteRange& stTried, qint64 nStop);
    void DoneForwards(STPart stPart, const STByteRange& stTried, qint64 nStop);
    void DoneBackwards(STPart stPart, const STByteRange& stTried, qint64 nStop);
    void DoneMiddle(const STByteRange& stPart, const STByteRange& stTried, qint64 nStop);

    const qint64 m_nSize;
    STPart m_stSweep; // what lies before the first way to the end of the file
    qint64 m_nSkip = 0; // bytes to leave out behind the next bad place
    qint64 m_nSkippedFrom; // what was left out since the last place that was tried begins here
    std::deque<STPart> m_listPart; // beside what was read
    std::set<std::pair<qint64, qint64>> m_setMiddle; // between bad places: bytes and beginning
    CByteRanges m_bad;
    qint64 m_nMarked = 0; // bytes of m_bad
};
