#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

#include <optional>

/** What the system's table of mounts says, read afresh by each call. Any thread. */
class CVolumeInfo
{
public:
    /**
     * The device node text of the volume that holds the path, for example
     * "/dev/disk2s1" ("tmpfs" and the like for volumes without a device). Empty
     * when the path does not exist or its volume is not known.
     */
    static QByteArray DeviceOf(const QString& strPath);

    /** Every mount point as absolute path, in the system's own bytes; nothing when they cannot be read. */
    static std::optional<QByteArrayList> MountPoints();
};
