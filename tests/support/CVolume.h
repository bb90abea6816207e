#pragma once

#include <QByteArray>
#include <QString>

/**
 * A volume that is mounted while the object lives: a file system in memory with
 * a device node text of one's choice. Works in the sandbox only, where a test
 * may mount and nobody else sees it.
 *
 * The static members mount by hand, for tests of what mounts look like. They take
 * names as bytes, so that any name can be tried, and warn when the system refuses.
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

    /** Gives the test an empty "/Volumes", whatever is mounted there; false outside the sandbox. */
    static bool Clear();

    /** The same, with "/Volumes" being a link to the folder baReal, which is made. */
    static bool ClearAndLink(const QByteArray& baReal);

    /** Mounts an empty volume with that device node text until somebody unmounts it, making its folder. */
    static bool Mount(const QByteArray& baDeviceNode, const QByteArray& baPoint,
                      const QByteArray& baOptions = QByteArray());

    /** Mounts the folder baFrom a second time, at baPoint. */
    static bool Bind(const QByteArray& baFrom, const QByteArray& baPoint);

    /** Gives what is mounted at baFrom another mount point. */
    static bool Move(const QByteArray& baFrom, const QByteArray& baTo);

    /** Makes what is mounted there read-only. */
    static bool MakeReadOnly(const QByteArray& baPoint);

    /** Unmounts what is on top there, also when it is in use; the folder stays. */
    static bool Unmount(const QByteArray& baPoint);

private:
    QString m_strPath;
    bool m_bMounted = false;
};

/** Gives the test function an empty "/Volumes", or skips it where nothing may be mounted. */
#define NEEDS_VOLUMES()                                                                                      \
    do {                                                                                                     \
        if (!CVolume::Clear()) {                                                                             \
            QSKIP("volumes can be mounted in tests/support/sandbox only");                                   \
        }                                                                                                    \
    } while (false)
