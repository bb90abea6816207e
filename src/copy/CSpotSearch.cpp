#include "copy/CSpotSearch.h"

#include <iterator>

// How much more is skipped behind each further bad place.
static const qint64 SKIP_GROWTH = 4;

static qint64 PageOf(qint64 nPos) { return nPos - nPos % CSpotSearch::SMALL_STEP; }

CSpotSearch::CSpotSearch(qint64 nFrom, qint64 nSize)
    : m_nSize(nSize)
    , m_nSkippedFrom(nSize)
{
    m_stSweep.stRange = {nFrom, nSize};
    m_stSweep.nSmallBytes = LARGE_STEP;
}

std::optional<STByteRange> CSpotSearch::Next() const
{
    if (IsSweeping()) {
        return NextOf(m_stSweep);
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
    const qint64 nStep = stPart.nSmallBytes > 0 ? SMALL_STEP : stPart.nStep;
    if (stPart.enWay == ENWay::FORWARDS) {
        return {stRange.nFrom, qMin(PageOf(stRange.nFrom) + nStep, stRange.nEnd)};
    }
    return {qMax(stRange.nFrom, PageOf(stRange.nEnd - 1) + SMALL_STEP - nStep), stRange.nEnd};
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

bool CSpotSearch::JumpToEnd()
{
    if (!IsSweeping()) {
        return false;
    }
    const qint64 nFrom = qMin(m_nSkippedFrom, m_stSweep.stRange.nFrom);
    m_nSkippedFrom = m_nSize;
    m_stSweep.stRange.nFrom = m_nSize;
    m_listPart.push_front({{nFrom, m_nSize}, ENWay::BACKWARDS});
    return true;
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

/** Whether what was tried is known to be bad; of a large step nobody knows where. */
bool CSpotSearch::IsBad(const STByteRange& stTried, qint64 nStop)
{
    return nStop == stTried.nFrom && stTried.Bytes() <= SMALL_STEP;
}

/** The next step, after nDone bytes of one: larger while all goes well, small where it failed. */
void CSpotSearch::SetStep(STPart& stPart, const STByteRange& stTried, qint64 nDone, bool bWell)
{
    if (bWell) {
        stPart.nSmallBytes = qMax<qint64>(0, stPart.nSmallBytes - nDone);
        stPart.nStep = qMin(stPart.nStep * 2, LARGE_STEP);
    } else {
        stPart.nSmallBytes = qMax(stPart.nSmallBytes, stTried.Bytes()) - nDone;
        stPart.nStep = SMALL_STEP;
    }
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
    const qint64 nFrom = qMin(nBadEnd + m_nSkip, m_nSize);
    m_nSkippedFrom = nBadEnd;
    m_stSweep.nStep = SMALL_STEP;
    m_stSweep.nSmallBytes = qMax<qint64>(0, m_stSweep.nSmallBytes - (nFrom - m_stSweep.stRange.nFrom));
    m_stSweep.stRange.nFrom = nFrom;
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

void CSpotSearch::AddPart(const STByteRange& stRange, ENWay enWay)
{
    if (stRange.Bytes() > 0) {
        m_listPart.push_back({stRange, enWay});
    }
}

void CSpotSearch::AddMiddle(const STByteRange& stRange)
{
    if (stRange.Bytes() > 0) {
        m_setMiddle.emplace(stRange.Bytes(), stRange.nFrom);
    }
}

/** The rest of the part comes next. */
void CSpotSearch::GoOn(STPart stPart, const STByteRange& stRest)
{
    stPart.stRange = stRest;
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
    SetStep(m_stSweep, stTried, nStop - stTried.nFrom, nStop == stTried.nEnd);
    m_stSweep.stRange.nFrom = nStop;
}

void CSpotSearch::DoneForwards(STPart stPart, const STByteRange& stTried, qint64 nStop)
{
    if (IsBad(stTried, nStop)) {
        AddMiddle({MarkBad(nStop), stPart.stRange.nEnd});
        return;
    }
    SetStep(stPart, stTried, nStop - stTried.nFrom, nStop == stTried.nEnd);
    GoOn(stPart, {nStop, stPart.stRange.nEnd});
}

void CSpotSearch::DoneBackwards(STPart stPart, const STByteRange& stTried, qint64 nStop)
{
    const STByteRange stRange = stPart.stRange;
    if (IsBad(stTried, nStop)) {
        AddMiddle({stRange.nFrom, stTried.nFrom});
        MarkBad(nStop);
        return;
    }
    if (nStop == stTried.nEnd) {
        SetStep(stPart, stTried, stTried.Bytes(), true);
        GoOn(stPart, {stRange.nFrom, stTried.nFrom});
        return;
    }
    SetStep(stPart, stTried, nStop - stTried.nFrom, false);
    if (nStop > stTried.nFrom) {
        AddPart({stRange.nFrom, stTried.nFrom}, ENWay::BACKWARDS);
        GoOn(stPart, {nStop, stRange.nEnd});
    } else {
        GoOn(stPart, stRange);
    }
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
