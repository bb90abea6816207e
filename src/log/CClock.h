#pragma once

#include <QDateTime>

#include <functional>

/**
 * The one place where the program reads a clock.
 *
 * Log dates, retention and the name of the destination folder ask for the wall
 * clock, whatever measures how long something takes for the steady one, so that
 * a test can move the time instead of waiting. Safe to call on any thread.
 */
class CClock
{
public:
    /** Present time, in ms since the epoch. */
    static qint64 NowMs();

    /** Time in ms since a moment that stays the same while the program runs; it never jumps. */
    static qint64 SteadyMs();

    /** Present local date and time, with milliseconds. */
    static QDateTime Now();

    /**
     * Replaces both clocks by a function that returns ms since the epoch; an
     * empty function brings the system's clocks back. Call it while no other
     * thread is asking for the time.
     */
    static void SetSource(std::function<qint64()> fnMsSinceEpoch);

    /** Replaces the wall clock and the steady one by a function each, as when the wall clock is set. */
    static void SetSources(std::function<qint64()> fnMsSinceEpoch, std::function<qint64()> fnSteadyMs);
};
