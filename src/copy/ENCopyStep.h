#pragma once

/** What the copy waits for at a moment. */
enum class ENCopyStep
{
    IDLE, ///< no copy runs
    LISTING, ///< a folder of the source is listed
    READING, ///< a file of the source is looked at, opened or read
    WRITING, ///< a folder or file of the destination is looked at, made, written or closed
    FLUSHING, ///< the destination writes its last bytes to the disk
    PAUSED ///< nothing: the user, or a question that is open, holds the copy
};
