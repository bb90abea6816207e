#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/**
 * The tests' side of macOS's calls on files and volumes, which work on this system's
 * own files: what they answer, and what the program asked. Any thread.
 *
 * A call is noted as its name, the path of the file and, where it has one, its argument: "fsync
 * /a/b", "F_FULLFSYNC /a", "fsync_volume_np /a 3".
 */
class CFakeFiles
{
public:
    /** Nothing was called, nothing fails, no file has flags, and the disk is an APFS one. */
    static void Reset();

    /**
     * From now on that call fails for files whose path ends so; 0 lets it work again. With an
     * argument behind its name ("fsync_volume_np 3") only that one of the calls does. "fstat" can
     * fail as well, and is not noted.
     */
    static void Fail(const QString& strCall, const QString& strPathEnd, int nError);

    /** Runs with each call, as it is noted, before it returns; on the thread that calls. */
    static void Watch(std::function<void(const QString& strCall)> fnWatch);

    /** The calls since the last time. */
    static QStringList TakeCalls();

    /** What "st_flags" says of the file that has the path now, as long as it exists. */
    static void SetFlags(const QString& strPath, unsigned nFlags);

    /** What the system says of each volume: the name of its kind, and whether it is of this machine. */
    static void SetVolume(const char* pszKind, bool bLocal = true);

    /** Notes a call; what it is to fail with, 0 when it is to work. For the fakes. */
    static int Called(const QString& strCall, const QString& strPath, const QString& strArgument = QString());

    /** Path of an open file. For the fakes. */
    static QString PathOf(int nDescriptor);
};
