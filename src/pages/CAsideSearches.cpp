#include "pages/CAsideSearches.h"

#include <QDeadlineTimer>

#include <utility>

static const size_t MOST_SEARCHES = 4;

CAsideSearches::CAsideSearches(Ended fnEnded, QObject* pParent)
    : QObject(pParent)
    , m_fnEnded(std::move(fnEnded))
{
}

QVector<STVolume> CAsideSearches::Volumes(const STDiskSearch& search)
{
    QVector<STVolume> listVolume;
    CDestinationDiscovery::Scan([&listVolume](const STVolume& volume) { listVolume.append(volume); },
                                *search.pReplaced);
    return listVolume;
}

bool CAsideSearches::IsFull() const { return m_listRunning.size() >= MOST_SEARCHES; }

void CAsideSearches::Begin(const STDiskSearch& search)
{
    const auto fnAsk = [search] { return Volumes(search); };
    const auto fnAnswered = [this] {
        QMetaObject::invokeMethod(
            this, [this] { End(); }, Qt::QueuedConnection);
    };
    m_listRunning.push_back({search, std::make_unique<CAsideQuestion<QVector<STVolume>>>(fnAsk, fnAnswered)});
}

void CAsideSearches::End()
{
    std::vector<STRunning> listWaiting;
    std::vector<STRunning> listOver;
    for (STRunning& running : m_listRunning) {
        (running.pQuestion->Get() ? listOver : listWaiting).push_back(std::move(running));
    }
    m_listRunning = std::move(listWaiting);
    for (const STRunning& running : listOver) {
        m_fnEnded(running.search, *running.pQuestion->Get());
    }
}

void CAsideSearches::Wait(const QDeadlineTimer& deadline) const
{
    for (const STRunning& running : m_listRunning) {
        running.pQuestion->Wait(std::chrono::milliseconds(deadline.remainingTime()));
    }
}
