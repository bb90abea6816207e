#pragma once

#include <chrono>
#include <cstdint>
#include <string>

/** Asks a mounted file system for its size, which only its disk knows. */
class CMountSize
{
public:
    /**
     * Size in bytes; 0 when the disk does not tell it within that time. A child
     * process asks: the kernel does not let go of who asks a disk that does not
     * answer, not even to end, and this process is waited for. Not for processes with
     * several threads.
     */
    static std::uint64_t Of(const std::string& strPoint, std::chrono::milliseconds time);
};
