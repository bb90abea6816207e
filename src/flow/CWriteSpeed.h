#pragma once

#include <QtGlobal>

#include <optional>

/**
 * How fast a disk writes, from what it was seen to have written: only time in which it had
 * something to write counts, and what was long ago counts less. Times are in ms of any
 * steady clock.
 */
class CWriteSpeed
{
public:
    /** The disk gets something to write, having had nothing before. */
    void Begins(qint64 nNowMs) { m_nSinceMs = nNowMs; }

    /** It has written nBytes more, of those that it got first. */
    void Done(qint64 nBytes, qint64 nNowMs);

    /** Bytes that it writes in that time; nothing before enough was seen. */
    std::optional<qint64> BytesIn(qint64 nMs) const;

private:
    qint64 m_nSinceMs = 0; // up to here its time is counted
    double m_dBytes = 0;
    double m_dMs = 0;
};
