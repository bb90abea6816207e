#include "copy/CSpotSearch.h"

#include <iterator>

// How much more is skipped behind each further bad place.
static const qint64 SKIP_GROWTH = 4;

static qint64 PageOf(qint64 nPos) { return nPos - nPos % CSpotSearch::SMALL_STEP; }

CSpotSearch::CSpotSearch(qint64 nBad, qint64 nSize, bool bExact)
    : m_nSize(nSize)
    , m_bExact(bExact)
    , m_nSkippedFrom(nSize)
{
    m_stSweep.stRange = {nBad, nSize};
    if (nBad >= nSize) {
        return;
    }
    if (bExact) {
        Skip(MarkBad(nBad));
    } else {
        m_nSmallUntil = nBad + LARGE_STEP;
    }
}

std::optional<STByteRange> CSpotSearch::Next() const
{
    if (IsSweeping()) {
        STPart stPart = m_stSweep;
        if (stPart.stRange.nFrom < m_nSmallUntil) {
            stPart.nStep = SMALL_STEP;
        }
        return NextOf(stPart);
    }
    if (!m_listPart.empty()) {
        return NextOf(m_listPart.front());
    }
    if (!m_setMiddle.empty()) {
        const auto& [nBytes, nFrom] = *m_setMiddle.rbegin();
        return MiddleOf({nFrom, nFrom + nBytes});
    }
    return std::nullopt;
}

STByteRange CSpotSearch::NextOf(const STPart& stPart)
{
    const STByteRange& stRange = stPart.stRange;
    if (stPart.enWay == ENWay::FORWARDS) {
        return {stRange.nFrom, qMin(PageOf(stRange.nFrom) + stPart.nStep, stRange.nEnd)};
    }
    return {qMax(stRange.nFrom, PageOf(stRange.nEnd - 1) + SMALL_STEP - stPart.nStep), stRange.nEnd};
}

STByteRange CSpotSearch::MiddleOf(const STByteRange& stRange)
{
    const qint64 nPage = PageOf(stRange.nFrom + stRange.Bytes() / 2);
    return {qMax(stRange.nFrom, nPage), qMin(nPage + SMALL_STEP, stRange.nEnd)};
}

qint64 CSpotSearch::Done(qint64 nRead)
{
    const std::optional<STByteRange> stTried = Next();
    if (!stTried) {
        return 0;
    }
    const qint64 nStop = stTried->nFrom + qBound<qint64>(0, nRead, stTried->Bytes());
    const qint64 nMarked = m_nMarked;
    if (IsSweeping()) {
        DoneSweep(*stTried, nStop);
    } else if (!m_listPart.empty()) {
        const STPart stPart = m_listPart.front();
        m_listPart.pop_front();
        if (stPart.enWay == ENWay::FORWARDS) {
            DoneForwards(stPart, *stTried, nStop);
        } else {
            DoneBackwards(stPart, *stTried, nStop);
        }
    } else {
        const auto itLargest = std::prev(m_setMiddle.end());
        const STByteRange stPart = {itLargest->second, itLargest->second + itLargest->first};
        m_setMiddle.erase(itLargest);
        DoneMiddle(stPart, *stTried, nStop);
    }
    return nStop - stTried->nFrom + m_nMarked - nMarked;
}

CByteRanges CSpotSearch::Untried() const
{
    CByteRanges untried;
    untried.Add(m_stSweep.stRange);
    if (IsSweeping()) {
        untried.Add({m_nSkippedFrom, m_stSweep.stRange.nFrom});
    }
    for (const STPart& stPart : m_listPart) {
        untried.Add(stPart.stRange);
    }
    for (const auto& [nBytes, nFrom] : m_setMiddle) {
        untried.Add({nFrom, nFrom + nBytes});
    }
    return untried;
}

/** Whether what was tried begins with a bad page; a read that ends early leaves that to the next one. */
bool CSpotSearch::IsBad(const STByteRange& stTried, qint64 nStop) const
{
    return nStop == stTried.nFrom && (m_bExact || stTried.Bytes() <= SMALL_STEP);
}

/** Books the rest of the page as bad and returns its end. */
qint64 CSpotSearch::MarkBad(qint64 nFrom)
{
    const qint64 nEnd = qMin(PageOf(nFrom) + SMALL_STEP, m_nSize);
    m_bad.Add({nFrom, nEnd});
    m_nMarked += nEnd - nFrom;
    return nEnd;
}

/** Goes on behind a bad place, the further away the more there were without a good one. */
void CSpotSearch::Skip(qint64 nBadEnd)
{
    m_nSkippedFrom = nBadEnd;
    m_stSweep.nStep = SMALL_STEP;
    m_stSweep.stRange.nFrom = qMin(nBadEnd + m_nSkip, m_nSize);
    m_nSkip = m_nSkip == 0 ? SMALL_STEP : qMin(m_nSkip * SKIP_GROWTH, LARGE_SKIP);
    if (!IsSweeping()) {
        // Nobody knows what lies there; its end is as far from the bad place as can be.
        EndSkip(m_nSize, true);
    }
}

/** What was skipped ends there, at a place that was read or at a bad one. */
void CSpotSearch::EndSkip(qint64 nEnd, bool bFarEndRead)
{
    const STByteRange stSkipped = {m_nSkippedFrom, nEnd};
    m_nSkippedFrom = m_nSize;
    if (bFarEndRead) {
        AddPart(stSkipped, ENWay::BACKWARDS);
    } else {
        AddMiddle(stSkipped);
    }
}

void CSpotSearch::AddPart(const STByteRange& stRange, ENWay enWay, qint64 nMostStep)
{
    if (stRange.Bytes() > 0) {
        m_listPart.push_back({stRange, enWay, SMALL_STEP, nMostStep});
    }
}

void CSpotSearch::AddMiddle(const STByteRange& stRange)
{
    if (stRange.Bytes() > 0) {
        m_setMiddle.emplace(stRange.Bytes(), stRange.nFrom);
    }
}

/** The rest of the part comes next, in larger steps while all goes well. */
void CSpotSearch::GoOn(STPart stPart, const STByteRange& stRest, bool bWell)
{
    stPart.stRange = stRest;
    stPart.nStep = bWell ? qMin(stPart.nStep * 2, stPart.nMostStep) : SMALL_STEP;
    if (!bWell && !m_bExact) {
        stPart.nMostStep = SMALL_STEP;
    }
    if (stRest.Bytes() > 0) {
        m_listPart.push_front(stPart);
    }
}

void CSpotSearch::DoneSweep(const STByteRange& stTried, qint64 nStop)
{
    if (nStop > stTried.nFrom) {
        EndSkip(stTried.nFrom, true);
        m_nSkip = 0;
    }
    if (IsBad(stTried, nStop)) {
        EndSkip(stTried.nFrom, false);
        Skip(MarkBad(nStop));
        return;
    }
    const bool bWell = nStop == stTried.nEnd;
    m_stSweep.stRange.nFrom = nStop;
    m_stSweep.nStep = bWell ? qMin(m_stSweep.nStep * 2, LARGE_STEP) : SMALL_STEP;
    if (!bWell && !m_bExact) {
        m_nSmallUntil = stTried.nEnd;
    }
    if (!IsSweeping()) {
        m_nSkippedFrom = m_nSize;
    }
}

void CSpotSearch::DoneForwards(const STPart& stPart, const STByteRange& stTried, qint64 nStop)
{
    if (IsBad(stTried, nStop)) {
        AddMiddle({MarkBad(nStop), stPart.stRange.nEnd});
        return;
    }
    GoOn(stPart, {nStop, stPart.stRange.nEnd}, nStop == stTried.nEnd);
}

void CSpotSearch::DoneBackwards(const STPart& stPart, const STByteRange& stTried, qint64 nStop)
{
    const STByteRange& stRange = stPart.stRange;
    if (nStop == stTried.nEnd) {
        GoOn(stPart, {stRange.nFrom, stTried.nFrom}, true);
        return;
    }
    if (IsBad(stTried, nStop)) {
        AddMiddle({stRange.nFrom, stTried.nFrom});
        GoOn(stPart, {MarkBad(nStop), stRange.nEnd}, false);
        return;
    }
    if (nStop > stTried.nFrom) {
        AddPart({stRange.nFrom, stTried.nFrom}, ENWay::BACKWARDS, stPart.nMostStep);
        GoOn(stPart, {nStop, stRange.nEnd}, false);
        return;
    }
    GoOn(stPart, stRange, false);
}

void CSpotSearch::DoneMiddle(const STByteRange& stPart, const STByteRange& stTried, qint64 nStop)
{
    if (nStop == stTried.nFrom) {
        AddMiddle({stPart.nFrom, stTried.nFrom});
        AddMiddle({MarkBad(nStop), stPart.nEnd});
        return;
    }
    AddPart({nStop, stPart.nEnd}, ENWay::FORWARDS);
    AddPart({stPart.nFrom, stTried.nFrom}, ENWay::BACKWARDS);
}
