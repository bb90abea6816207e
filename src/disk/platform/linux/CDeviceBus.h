#pragma once

#include "disk/platform/linux/CSysBlock.h"

#include <optional>
#include <string>

/** Tells from sysfs whether what is mounted may be one to copy to. No state; any thread. */
class CDeviceBus
{
public:
    /**
     * Whether a device node, as the table of mounts names it, stands for a USB disk; nothing
     * for what is no disk or has an unknown bus, and for a disk image, which only who
     * wants it mounts.
     */
    static std::optional<bool> IsUsb(const CSysBlock& sys, const std::string& strNode);
};
