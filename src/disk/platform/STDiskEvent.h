#pragma once

#include "disk/ENDiskEventType.h"

#include <QByteArray>

/** One arrival or removal, before it is handed to the disk listener. */
struct STDiskEvent
{
    ENDiskEventType enType = DISK_EVENT_APPEARED;
    QByteArray baPath; ///< device path or mount point, in the system's own bytes
};

inline bool operator==(const STDiskEvent& first, const STDiskEvent& second)
{
    return first.enType == second.enType && first.baPath == second.baPath;
}
