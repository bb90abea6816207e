#pragma once

#include "log/CClock.h"

#include <atomic>
#include <functional>

/** A clock that stands still until the test moves it; the system's clock comes back at the end. */
class CMovedClock
{
public:
    CMovedClock()
    {
        CClock::SetSource([this] { return m_nNow.load(); });
    }

    ~CMovedClock() { CClock::SetSource(std::function<qint64()>()); }

    CMovedClock(const CMovedClock&) = delete;
    CMovedClock& operator=(const CMovedClock&) = delete;

    /** Moves the time forwards, or backwards when nMs is negative. Any thread. */
    void Move(qint64 nMs) { m_nNow += nMs; }

private:
    std::atomic<qint64> m_nNow{1795000000000};
};
