#pragma once

#include "disk/platform/linux/CSysBlock.h"
#include "diskutil/CMountList.h"

#include <cstdint>
#include <optional>
#include <string>

/** What is known of one disk or volume. Texts are the bytes that the system gave. */
struct STDiskInfo
{
    std::string strNode;
    std::string strIdentifier;
    std::string strMountPoint; ///< empty when it is not mounted
    std::string strVolumeName; ///< last part of the mount point
    std::string strFilesystem; ///< empty when it is not mounted
    std::string strBus;
    std::uint64_t nTotalSize = 0; ///< bytes, 0 when unknown
    bool bInternal = false;
    bool bEjectable = false;
    bool bWritable = false; ///< false when it is not mounted
};

/** Answers what a device node stands for, from sysfs and the table of mounts. */
class CDiskQuery
{
public:
    CDiskQuery(CSysBlock sys, CMountList mounts);

    /**
     * Describes the disk of a node, or the mount that has the text as its source
     * (a network share, a file system in memory). Nothing when there is neither.
     */
    std::optional<STDiskInfo> Describe(const std::string& strNode) const;

private:
    const STMount* FindMount(const std::string& strNode, const std::filesystem::path& device) const;

    CSysBlock m_sys;
    CMountList m_mounts;
};
