#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

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

    /**
     * Fills in every mount point as absolute path, in the system's own bytes.
     * False when the table cannot be read.
     */
    static bool MountPoints(QList<QByteArray>* pListPoints);
};
