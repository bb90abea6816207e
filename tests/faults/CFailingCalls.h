#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/**
 * Makes one system call fail for one file, as a broken disk does.
 *
 * The test executable holds functions of the same names as the C library's,
 * which the program's code and Qt then call. Linking CFailingCalls.cpp is
 * enough; without a fault every call goes to the C library.
 */
class CFailingCalls
{
public:
    /** What can fail. */
    enum class ENCall
    {
        NONE,
        OPEN,
        SEEK,
        READ,
        WRITE, ///< fwrite
        WRITE_AT, ///< pwrite
        CLOSE, ///< fclose
        MAKE_FOLDER, ///< mkdir
        LIST, ///< readdir
        OPEN_FOLDER, ///< opendir, and openat of a folder
        STAT, ///< stat, lstat, fstatat and statx
        READ_LINK, ///< readlinkat
        SPACE, ///< statvfs
        ACCESS, ///< access
        SYNC_FILE, ///< fsync
        SET_TIME, ///< futimens
        SET_PATH_TIME, ///< utimensat
        SET_MODE, ///< chmod
        SET_ATTRIBUTE, ///< lsetxattr
        LINK, ///< symlink
        FLUSH ///< syncfs
    };

    /** For Fail: the call does nothing and says that it is done. */
    static constexpr int IGNORED = -1;

    /**
     * From now on the call fails with nError for files whose path ends with
     * strEnd, after nGood calls that succeed. Not while a worker runs.
     */
    static void Fail(ENCall enCall, const QString& strEnd, int nError, int nGood = 0);

    /**
     * Runs fnAction once, on the calling thread, before the call is carried out; it
     * does not fail. An action that waits is a disk that does not answer.
     */
    static void Watch(ENCall enCall, const QString& strEnd, std::function<void()> fnAction, int nGood = 0);

    /** The same with every such call, on several threads at once where the program makes them so. */
    static void WatchAll(ENCall enCall, const QString& strEnd, std::function<void()> fnAction);

    /** Back to the C library. Not while a worker runs. */
    static void Reset();

    /** How often the call was made for such a file since Fail or Watch. */
    static int Calls();
};
