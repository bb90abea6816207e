#pragma once

#include <QString>

/**
 * A volume that is mounted while the object lives: a file system in memory with
 * a device node text of one's choice. Works in the sandbox only, where a test
 * may mount.
 */
class CVolume
{
public:
    /**
     * Mounts at "/Volumes/" + strName, nMiB large. A volume that cannot be
     * mounted is not valid; the test then has to say that it was skipped.
     */
    CVolume(const QString& strName, const QString& strDeviceNode, int nMiB);
    ~CVolume();
    CVolume(const CVolume&) = delete;
    CVolume& operator=(const CVolume&) = delete;

    /** True while it is mounted. */
    bool IsValid() const;

    /** Mount point, or the path of an entry below it. */
    QString Path(const QString& strRelative = QString()) const;

    /** Makes it read-only. */
    bool MakeReadOnly();

    /** Takes it away as a stick that is pulled; the empty folder stays unless bRemoveFolder. */
    void Pull(bool bRemoveFolder = false);

private:
    QString m_strPath;
    bool m_bMounted = false;
};
