#pragma once

#include <QString>
#include <QTemporaryDir>

/**
 * An ext4 file system of the kernel's own on a loop device over a file, mounted while the object
 * lives: what reads of the file fail with, a disk's reads fail with. In the sandbox only, and
 * only for root where the system lets it have loop devices.
 */
class CLoopDisk
{
public:
    /** What this system lacks for it; empty when it can be mounted. */
    static QString Missing();

    /** Makes the file system in that file, of nMiB. */
    static bool Format(const QString& strImage, int nMiB);

    /** Mounts what is in the file at "/Volumes/" + strName. */
    CLoopDisk(const QString& strImage, const QString& strName);
    ~CLoopDisk();
    CLoopDisk(const CLoopDisk&) = delete;
    CLoopDisk& operator=(const CLoopDisk&) = delete;

    /** True while it is mounted. */
    bool IsValid() const { return m_bMounted; }

    /** Mount point, or the path of an entry below it. */
    QString Path(const QString& strRelative = QString()) const;

    /** Takes it out; false while something of it is in use. */
    bool Unmount();

private:
    bool Attach(const QString& strImage);

    const QString m_strPath;
    QTemporaryDir m_dir;
    QString m_strLoop; // the device
    int m_nLoop = -1; // its descriptor
    bool m_bMounted = false;
};
