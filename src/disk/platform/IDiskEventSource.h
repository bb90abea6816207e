#pragma once

#include <memory>

class CDiskListener;

/**
 * Where disk events come from on this system: the one thing that the disk
 * listener asks of a platform. Each platform folder brings its own.
 */
class IDiskEventSource
{
public:
    virtual ~IDiskEventSource() = default;

    /**
     * Starts watching on the calling thread, which must run an event loop, and
     * from then on calls the listener's OnDiskChanged there for each device or
     * volume that comes or goes. What is present already is not reported. A
     * watch that the system refuses is left out with a line in the log; the
     * others stay. The listener must outlive the source.
     */
    virtual void Start(CDiskListener& listener) = 0;

    /** Makes the source of the platform that the program is built for. */
    static std::unique_ptr<IDiskEventSource> Create();
};
