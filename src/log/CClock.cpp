#include "log/CClock.h"

#include <chrono>
#include <utility>

static std::function<qint64()>& Source()
{
    static std::function<qint64()> s_fnSource;
    return s_fnSource;
}

static std::function<qint64()>& SteadySource()
{
    static std::function<qint64()> s_fnSource;
    return s_fnSource;
}

qint64 CClock::NowMs()
{
    const std::function<qint64()>& fnSource = Source();
    return fnSource ? fnSource() : QDateTime::currentMSecsSinceEpoch();
}

qint64 CClock::SteadyMs()
{
    const std::function<qint64()>& fnSource = SteadySource();
    if (fnSource) {
        return fnSource();
    }
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

QDateTime CClock::Now() { return QDateTime::fromMSecsSinceEpoch(NowMs()); }

void CClock::SetSource(std::function<qint64()> fnMsSinceEpoch)
{
    Source() = fnMsSinceEpoch;
    SteadySource() = std::move(fnMsSinceEpoch);
}

void CClock::SetSources(std::function<qint64()> fnMsSinceEpoch, std::function<qint64()> fnSteadyMs)
{
    Source() = std::move(fnMsSinceEpoch);
    SteadySource() = std::move(fnSteadyMs);
}
