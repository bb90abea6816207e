#pragma once

#include "disk/CDestinationDiscovery.h"
#include "files/CAsideQuestion.h"
#include "pages/CDiskList.h"

#include <QObject>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

class QDeadlineTimer;

/** The searches for disks that run aside. GUI thread only. */
class CAsideSearches : public QObject
{
    Q_OBJECT

public:
    /** Is told of the end of each, on the GUI thread. */
    using Ended = std::function<void(const STDiskSearch&, const QVector<STVolume>&)>;

    /** Nothing runs yet. */
    CAsideSearches(Ended fnEnded, QObject* pParent);

    /** Searches that no disk answers; more would not be answered either. */
    bool IsFull() const;

    /** Begins one more. */
    void Begin(const STDiskSearch& search);

    /** Waits until all have ended, or that time is over. What has not ended by then is left behind. */
    void Wait(const QDeadlineTimer& deadline) const;

    /** What a search finds; the calling thread waits for each disk. Any thread. */
    static QVector<STVolume> Volumes(const STDiskSearch& search);

private:
    /** A search that runs; what asks keeps all that it needs. */
    struct STRunning
    {
        STDiskSearch search;
        std::unique_ptr<CAsideQuestion<QVector<STVolume>>> pQuestion; ///< what it has found
    };

    void End();

    const Ended m_fnEnded;
    std::vector<STRunning> m_listRunning;
};
