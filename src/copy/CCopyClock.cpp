#include "copy/CCopyClock.h"

#include "log/CClock.h"

#include <limits>

static const qint64 REPORT_MS = 999; // a report once more than this has passed

__extension__ typedef __int128 int128; // NOLINT: -Wpedantic takes no alias declaration here

void CCopyClock::Start()
{
    m_nStartTime = m_nLastTime = CClock::SteadyMs();
    m_nPauseTime = 0;
}

void CCopyClock::BeginPause() { m_nPauseBegin = CClock::SteadyMs(); }

void CCopyClock::EndPause() { m_nPauseTime += CClock::SteadyMs() - m_nPauseBegin; }

qint64 CCopyClock::UsedMs() const { return CClock::SteadyMs() - m_nStartTime - m_nPauseTime; }

bool CCopyClock::IsReportDue()
{
    const qint64 nNow = CClock::SteadyMs();
    if (nNow - m_nLastTime <= REPORT_MS) {
        return false;
    }
    m_nLastTime = nNow;
    return true;
}

qint64 CCopyClock::RemainingSeconds(qint64 nTotal, qint64 nCopied, qint64 nUsedMs)
{
    if (nCopied <= 0 || nCopied >= nTotal || nUsedMs <= 0) {
        return 0;
    }
    // Exabytes times days do not fit into 64 bits.
    const int128 nLeftMs = int128(nTotal - nCopied) * nUsedMs / nCopied;
    return qint64(qMin(nLeftMs / 1000, int128(std::numeric_limits<qint64>::max())));
}
