#include "log/CClock.h"

#include <utility>

static std::function<qint64()>& Source()
{
    static std::function<qint64()> s_fnSource;
    return s_fnSource;
}

qint64 CClock::NowMs()
{
    const std::function<qint64()>& fnSource = Source();
    return fnSource ? fnSource() : QDateTime::currentMSecsSinceEpoch();
}

QDateTime CClock::Now() { return QDateTime::fromMSecsSinceEpoch(NowMs()); }

void CClock::SetSource(std::function<qint64()> fnMsSinceEpoch) { Source() = std::move(fnMsSinceEpoch); }
