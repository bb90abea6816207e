#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/**
 * A disk with a file system as sticks and drives have it: an image file, mounted by
 * its driver for user space while the object lives. In the sandbox only, and only
 * where the system has /dev/fuse and the tools.
 */
class CImageDisk
{
public:
    /** The file systems that there are. */
    enum class ENKind
    {
        EXFAT,
        NTFS,
        FAT
    };

    /** Makes an image of nMiB and mounts it at "/Volumes/" + strName. */
    CImageDisk(ENKind enKind, const QString& strName, int nMiB);
    ~CImageDisk();
    CImageDisk(const CImageDisk&) = delete;
    CImageDisk& operator=(const CImageDisk&) = delete;

    /** What this system lacks for it; empty when it can be mounted. */
    static QString Missing(ENKind enKind);

    /** True while it is mounted. */
    bool IsValid() const { return m_bMounted; }

    /** Mount point, or the path of an entry below it. */
    QString Path(const QString& strRelative = QString()) const;

    /** Takes it out and puts it in again: what is there afterwards is on the disk. */
    bool MountAnew();

private:
    bool Mount();
    void Unmount();
    QString Image() const { return m_dir.filePath("image"); }

    const ENKind m_enKind;
    const QString m_strPath;
    QTemporaryDir m_dir;
    QProcess m_driver;
    bool m_bMounted = false;
};
