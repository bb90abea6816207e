#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <ctime>
#include <limits>
#include <optional>

struct stat;

/** What a name or an open descriptor stands for. */
enum class ENFileKind
{
    REGULAR,
    DIRECTORY,
    LINK, ///< a symbolic link; of an entry only
    SPECIAL ///< pipe, socket or device: reading it may hang or do something
};

/** What the copy needs to know of a file before and after it moves the bytes. */
struct STFileState
{
    ENFileKind enKind = ENFileKind::REGULAR;
    bool bRemoved = false; ///< no name leads to the file any more
    bool bOnlyInCloud = false; ///< what it holds is not on this machine, and is not to be read
    quint64 nDevice = 0; ///< identifies the file system while it is mounted
    quint64 nInode = 0; ///< identifies the file there while it exists
    unsigned nPermissions = 0; ///< the bits for owner, group and others, 0 to 0777
    qint64 nSize = 0; ///< bytes
    qint64 nAccessedSec = 0; ///< seconds since the epoch
    qint64 nAccessedNsec = 0; ///< rest of the second, in ns
    qint64 nModifiedSec = 0; ///< seconds since the epoch
    qint64 nModifiedNsec = 0; ///< rest of the second, in ns

    /** Whether both are of one file on one file system. */
    bool IsSameFile(const STFileState& stOther) const
    {
        return nDevice == stOther.nDevice && nInode == stOther.nInode;
    }

    /** Whether size and time of the last change are the same. */
    bool IsSameContent(const STFileState& stOther) const
    {
        return nSize == stOther.nSize && nModifiedSec == stOther.nModifiedSec
            && nModifiedNsec == stOther.nModifiedNsec;
    }
};

/** What a disk can hold, as far as it says so. */
struct STDiskRules
{
    qint64 nBlockBytes = 1; ///< the room that a file takes is a multiple of this
    qint64 nMostFileBytes = std::numeric_limits<qint64>::max(); ///< size of the largest file
    bool bTextNames = false; ///< names are UTF-8, and one that is none may do harm
    bool bDropsDots = false; ///< dots and blanks at the end of a name may be dropped without a word
};

/** How much a disk holds; what nobody could tell is -1. */
struct STDiskSpace
{
    qint64 nFreeBytes = -1; ///< of them for this user
    qint64 nTotalBytes = -1;
    bool bReadOnly = false; ///< it was mounted so
};

/**
 * The system calls of the copy; those that differ between systems stand in one file each.
 * Every function may be called on any thread; those that return false or nothing
 * leave the reason in errno.
 */
class CCopyPlatform
{
public:
    /** Lets the short sleeps of the calling thread end as exactly as the system can. */
    static void SetLeastTimerSlack();

    /** State of what the path leads to, links followed, without opening it. */
    static std::optional<STFileState> GetPathState(const QString& strPath);

    /** State of the entry itself, a link not followed. */
    static std::optional<STFileState> GetEntryState(const QString& strPath);

    /** The same of the entry pszName of an open folder, or of the current one for AT_FDCWD. */
    static std::optional<STFileState> GetEntryState(int nFolder, const char* pszName);

    /**
     * Whether another file system is mounted on the folder, which is the entry pszName
     * of an open one and has another device than that: some file systems give a device
     * to parts of themselves. True where the system does not say.
     */
    static bool IsMountPoint(int nFolder, const char* pszName);

    /** State of an open descriptor. */
    static std::optional<STFileState> GetOpenState(int nDescriptor);

    /** What the disk that holds the path can hold; the initial values where it does not say. */
    static STDiskRules GetDiskRules(const QString& strPath);

    /**
     * Bytes that a read of what the path leads to gives: none of what is only in the cloud, or
     * cannot be asked for.
     */
    static qint64 SizeOf(const QString& strPath);

    /** The same of the entry pszName of an open folder. */
    static qint64 SizeOf(int nFolder, const char* pszName);

    /** The space of the disk that holds the path. */
    static STDiskSpace GetDiskSpace(const QString& strPath);

    /** Whether the path leads to anything, links followed. */
    static bool Exists(const QString& strPath);

    /** Whether this user may make entries in the folder; what keeps him from it is in errno. */
    static bool CanWrite(const QString& strFolder);

    /**
     * Opens a file for reading; never waits for a pipe's other end. -1 on failure; a
     * link that is not to be followed fails with ELOOP.
     */
    static int OpenForRead(const QString& strPath, bool bFollowLink = true);

    /**
     * The same past the system's cache: each read goes to the disk, as it is and once. Reads
     * then need pages of 4096 bytes, in memory too; EINVAL, here or from a read, where the
     * file system cannot do that.
     */
    static int OpenForDirectRead(const QString& strPath);

    /** Makes an empty file and opens it for writing. -1 on failure, EEXIST when anything has that name. */
    static int CreateNew(const QByteArray& baPath);

    /** Makes a folder, and those that it lies in; one that is there already will do. */
    static bool MakePath(const QString& strFolder);

    /** Opens a file that is there for writing, no link, and leaves it as it is. -1 on failure. */
    static int OpenForWrite(const QString& strPath);

    /** Lets reads of the descriptor touch no more of the disk than what is read. */
    static void StopReadAhead(int nDescriptor);

    /** Opens a folder, to make entries in it and to flush its disk. -1 on failure. */
    static int OpenFolder(const QString& strPath);

    /** Keeps the descriptor out of the programs that are started while it is open. */
    static void KeepFromChildren(int nDescriptor);

    /** Gives the open file the times of the state, of its last access and its last change. */
    static bool SetTimes(int nDescriptor, const STFileState& stState);

    /** The same for what the path names, a link itself. */
    static bool SetTimes(const QString& strPath, const STFileState& stState);

    /** Whether two times of the last change are the same for a file system with coarse times. */
    static bool IsModifiedAlike(const STFileState& stOne, const STFileState& stOther);

    /**
     * The same, and looks whether the file system has done it: some only say so, which
     * leaves 0 in errno. What a coarse file system makes of the times is good enough.
     */
    static bool KeepTimes(int nDescriptor, const STFileState& stState);

    /**
     * Takes nBytes of room on the disk for what will be written to the file behind
     * nSize; its size stays. Not every file system can.
     */
    static bool Reserve(int nDescriptor, qint64 nSize, qint64 nBytes);

    /** Returns when the file, or the entries of the folder, are on the disk. */
    static bool FlushFile(int nDescriptor);

    /**
     * Returns when everything written to the file system that holds the folder
     * is on its disk. It may take as long as the disk needs.
     */
    static bool FlushFileSystem(const QString& strFolder);

    /**
     * The same by a descriptor in the file system. What could not be written since the
     * descriptor was opened is an error, whoever has been told of it meanwhile, where
     * the system keeps account of that.
     */
    static bool FlushFileSystem(int nDescriptor);

private:
    static struct timespec AccessTime(const struct stat& stRaw);
    static struct timespec ModifiedTime(const struct stat& stRaw);
    static STFileState State(const struct stat& stRaw);
};
