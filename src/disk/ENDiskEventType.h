#pragma once

#include <QtGlobal>

/** What happened to a disk or a volume. */
enum ENDiskEventType : qint32
{
    DISK_EVENT_APPEARED = 0,
    DISK_EVENT_DISAPPEARED = 1
};
