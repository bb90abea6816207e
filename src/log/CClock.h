#pragma once

#include <QDateTime>

#include <functional>

/**
 * The one place where the program reads the wall clock.
 *
 * Log dates, retention, the remaining time and the name of the destination
 * folder all ask here, so that a test can move the time instead of waiting.
 * Safe to call on any thread.
 */
class CClock
{
public:
    /** Present time, in ms since the epoch. */
    static qint64 NowMs();

    /** Present local date and time, with milliseconds. */
    static QDateTime Now();

    /**
     * Replaces the clock by a function that returns ms since the epoch; an
     * empty function brings the system's clock back. Call it while no other
     * thread is asking for the time.
     */
    static void SetSource(std::function<qint64()> fnMsSinceEpoch);
};
