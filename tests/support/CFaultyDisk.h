#pragma once

#include <QMap>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/**
 * A volume that fails and hangs as it is told, mounted while the object lives: what
 * tests/support/faultydisk shows of a folder in memory. In the sandbox only, and
 * only where the system has /dev/fuse.
 */
class CFaultyDisk
{
public:
    /** Mounts at "/Volumes/" + strName; nMiB is the room that is told and that there is. */
    CFaultyDisk(const QString& strName, const QString& strDeviceNode, int nMiB);

    /** Lets go whatever hangs, and unmounts. */
    ~CFaultyDisk();
    CFaultyDisk(const CFaultyDisk&) = delete;
    CFaultyDisk& operator=(const CFaultyDisk&) = delete;

    /** Whether this system can mount such a volume. */
    static bool IsPossible();

    /** True while it is mounted. */
    bool IsValid() const;

    /** Mount point, or the path of an entry below it. */
    QString Path(const QString& strRelative = QString()) const;

    /** The same entry where it really lies and no rule stands before it. */
    QString Behind(const QString& strRelative = QString()) const;

    /** One rule more, as in tests/support/faultydisk; a path without end means every path. */
    void Rule(const QString& strCall, const QString& strWhat, qint64 nNumber = 0,
              const QString& strEnd = QString());

    /** Makes bytes of the files whose path ends with strEnd unreadable; whole sectors of 4096 bytes. */
    void BadSectors(qint64 nFrom, qint64 nBytes, const QString& strEnd);

    /** Lets each sector of these bytes take 100 ms more. */
    void SlowSectors(qint64 nFrom, qint64 nBytes, const QString& strEnd);

    /** How often reads failed at each bad sector of such files, by where it begins. */
    QMap<qint64, int> FailedReads(const QString& strEnd) const;

    /** Takes all rules away: whatever hangs goes on. */
    void Heal();

    /** Takes it away as a stick that is pulled: what is open fails from now on. */
    void Pull();

private:
    void AddRule(const QString& strLine);

    const QString m_strPath;
    QTemporaryDir m_dir;
    const QString m_strRules; // their file
    QProcess m_process;
    bool m_bMounted = false;
};

/** Skips the test function where no such volume can be mounted. */
#define NEEDS_FAULTY_DISKS()                                                                                 \
    do {                                                                                                     \
        if (!CFaultyDisk::IsPossible()) {                                                                    \
            QSKIP("this system has no /dev/fuse");                                                           \
        }                                                                                                    \
    } while (false)
