#pragma once

#include <QProcess>
#include <QString>

/** What a disk takes its time for, and what the system knows of it. */
struct STDiskModel
{
    int nSeekUs = 0; ///< for each request that does not begin where the last one ended
    qint64 nBytesPerSecond = 0;
    bool bRotates = false;
    bool bWritesThrough = false; ///< each write waits for the disk
    int nMiB = 2048; ///< its size
};

/** What the head of a disk has done so far. */
struct STDiskWork
{
    qint64 nRequests = 0;
    qint64 nSeeks = 0;
    qint64 nBytes = 0;
    double nBusyMs = 0;
};

/**
 * A disk with a time model and an ext4 file system, mounted while the object lives:
 * tests/support/slowdisk under a loop device that goes past the system's cache. Only for
 * root, where there is /dev/fuse. What does not work ends the program.
 */
class CSlowDisk
{
public:
    /** Makes the disk below strFolder, which is to be in memory, and mounts it. */
    CSlowDisk(const QString& strFolder, const QString& strName, const STDiskModel& stModel);
    ~CSlowDisk();
    CSlowDisk(const CSlowDisk&) = delete;
    CSlowDisk& operator=(const CSlowDisk&) = delete;

    /** Gives this process mounts of its own, that are gone with it; false where that is refused. */
    static bool MakePrivateMounts();

    /** What this system lacks for such disks; empty when nothing. */
    static QString Missing();

    /** Where it is mounted. */
    QString Path() const { return m_strPoint; }

    /** The file of slow_disk by that name: "model" or "statistics". */
    QString Control(const QString& strName) const { return m_strFolder + "/head/" + strName; }

    /** Lets the disk take its time, or none. */
    void SetSlow(bool bSlow);

    /** Empties the disk. It is mounted anew, and takes no time until SetSlow. */
    void Format();

    /** Takes it out and puts it in again: nothing of it is in the cache. It takes no time until SetSlow. */
    void MountAnew();

    /** What its head has done since it was made; reads and writes together. */
    STDiskWork Work() const;

private:
    void MakeFileSystem() const;
    void Attach();
    void SetQueue(const QString& strName, const QByteArray& baValue) const;
    void Mount();
    void Unmount();

    const QString m_strFolder;
    const QString m_strPoint;
    const STDiskModel m_stModel;
    QProcess m_head;
    int m_nLoop = -1; // descriptor of the loop device
    QString m_strLoop; // its name
    QByteArray m_baScheduler; // that the device had
};
