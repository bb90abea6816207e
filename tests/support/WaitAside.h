#pragma once

#include <QElapsedTimer>
#include <QThread>

#include <functional>

/**
 * Waits until fnDone is true without handling events, so that what another
 * thread has posted stays posted; false after ten seconds.
 */
inline bool WaitAside(const std::function<bool()>& fnDone)
{
    const int nPatienceMs = 10000;
    QElapsedTimer timer;
    timer.start();
    while (!fnDone()) {
        if (timer.hasExpired(nPatienceMs)) {
            return false;
        }
        QThread::yieldCurrentThread();
    }
    return true;
}
