#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/** One line of the kernel's table of mounts; names are the system's own bytes, escapes resolved. */
struct STMount
{
    std::int64_t nId = 0;
    std::int64_t nParentId = 0; ///< the mount that this one is mounted on
    std::string strNumber; ///< "MAJOR:MINOR" of the file system; a major of 0 is no disk
    std::string strRoot; ///< folder of the file system that is mounted, most often "/"
    std::string strPoint; ///< where it is mounted
    std::string strType; ///< of the file system, for example "vfat"
    std::string strSource; ///< device node text; "tmpfs" and the like without a device
    bool bReadOnly = false; ///< the mount, or the file system as a whole
};

/** The kernel's table of mounts, as this process sees it. No state; any thread. */
class CMountTable
{
public:
    /** The file that holds the table, and that signals its changes to poll(). */
    static const char* FileName();

    /** What is mounted now, of one moment and in the kernel's order; nothing when it cannot be read. */
    static std::optional<std::vector<STMount>> Mounts();

    /** The mounts of such a table's text in its order; lines that are none are left out. */
    static std::vector<STMount> Parse(const std::string& strText);
};
