#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

/**
 * Lets one thread wait for another; any thread may call anything.
 *
 * Made from the standard library, not from QSemaphore: the thread sanitizer sees
 * the order that it makes, while Qt's libraries are not built for it.
 */
class CGate
{
public:
    /** Lets one more Pass through. */
    void Open()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_nOpen;
        m_condition.notify_all();
    }

    /** Waits for an Open that nobody has used; false when none came in time. */
    bool Pass(int nMs)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        if (!m_condition.wait_for(lock, std::chrono::milliseconds(nMs), [this] { return m_nOpen > 0; })) {
            return false;
        }
        --m_nOpen;
        return true;
    }

    /** How many Opens are left unused. */
    int Left() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_nOpen;
    }

private:
    mutable std::mutex m_mutex;
    std::condition_variable m_condition;
    int m_nOpen = 0;
};
