#pragma once

#include "files/CDescriptor.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

/**
 * Small files that are copied and are flushed together later: each is held open, and when its
 * flush fails its copy is told, which has booked it by then. Used on the thread that copies,
 * but where it says any thread.
 */
class CLateFlush
{
public:
    using Files = std::vector<std::shared_ptr<const CDescriptor>>;

    /** Gets the errno value for which a file could not be flushed. */
    using Lost = std::function<void(int nError)>;

    /** One more file, which is not booked yet; it takes the place of another one that never was. */
    void Add(std::shared_ptr<const CDescriptor> pFile);

    /** The file that was added last is booked; without fnLost it is not whole for other reasons. */
    void Booked(Lost fnLost);

    /** Number of files. */
    int Count() const;

    /** Flushes all of them by fnFlush, which gives the errno value, or 0 when it has done it. */
    void Flush(const std::function<int(int nDescriptor)>& fnFlush);

    /** All of them, for somebody else to flush; nothing while some are being flushed. Any thread. */
    std::optional<Files> Take();

private:
    struct STFile
    {
        std::shared_ptr<const CDescriptor> pFile;
        Lost fnLost; // none before it is booked
    };

    mutable std::mutex m_mutex; // guards what follows
    std::vector<STFile> m_listFile;
    bool m_bNewest = false; // the last one is not booked yet
    bool m_bFlushes = false;
};
