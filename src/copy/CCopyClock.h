#pragma once

#include <QtGlobal>

#include <atomic>

/**
 * The time of one copy: how long it has taken, pauses left out, and how long it
 * will still take. All times are in ms of CClock, which cannot jump. Used on the
 * thread that copies; UsedMs on any.
 */
class CCopyClock
{
public:
    /** The copy begins now, without any pause so far. */
    void Start();

    /** A pause begins now; EndPause comes before anything else. */
    void BeginPause();

    /** The pause ends now: it does not count as time of the copy. */
    void EndPause();

    /** Time since Start without the pauses that have ended. Any thread. */
    qint64 UsedMs() const;

    /** Whether the remaining time is to be told now: true at most once a second. */
    bool IsReportDue();

    /**
     * Whole seconds that the rest of nTotal bytes takes, when nCopied of them took
     * nUsedMs; 0 when nothing is left, or nothing known of it yet.
     */
    static qint64 RemainingSeconds(qint64 nTotal, qint64 nCopied, qint64 nUsedMs);

private:
    std::atomic<qint64> m_nStartTime{0};
    qint64 m_nLastTime = 0; // of the last report
    qint64 m_nPauseBegin = 0;
    std::atomic<qint64> m_nPauseTime{0}; // of all pauses that have ended
};
