#pragma once

#include "support/CTempTree.h"

#include <QString>

/**
 * A folder in the layout of /sys, with the disks that a test describes.
 * Devices are named by their path below "devices/".
 */
class CFakeSys
{
public:
    CFakeSys();

    /** Makes a device belong to a subsystem, for example "usb". */
    void Device(const QString& strPath, const QString& strSubsystem);

    /** Adds a whole disk, whose name is the last part of the path. */
    void Disk(const QString& strPath, const QString& strNumber, qint64 nSectors = 2048,
              bool bRemovable = false);

    /** Adds a partition inside the folder of its disk. */
    void Partition(const QString& strPath, const QString& strNumber, qint64 nSectors = 1024);

    /** Notes that a disk is made of another. */
    void Slave(const QString& strPath, const QString& strSlavePath);

    /** Gives a mapped disk its name. */
    void MapperName(const QString& strPath, const QString& strName);

    /** A stick "/dev/<name>1" behind a USB bridge that answers as SCSI. */
    void UsbStick(const QString& strName, int nMinor);

    /** Folder that stands for /sys. */
    QString Root() const;

    /** Folder of a device. */
    QString Path(const QString& strPath) const;

private:
    void Block(const QString& strPath, const QString& strNumber, qint64 nSectors);

    CTempTree m_tree;
};
