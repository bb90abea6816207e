#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QtGlobal>

#include <optional>

/** Whether a byte of a file is in the system's memory. */
enum class ENThere
{
    YES,
    NO,
    UNKNOWN ///< the file system does not tell
};

/** What the system knows of a device without asking it. */
struct STSourceDisk
{
    bool bInMemory = false; ///< nothing is gained by reading it ahead
    bool bKeeps = false; ///< what was read of a file stays in memory when it is closed and opened again
    std::optional<bool> bSeeks = {}; ///< whether it turns, as it says itself
};

/** A file that was opened to ask for its bytes; who has it closes it. */
struct STSourceFile
{
    int nDescriptor = -1; ///< -1 when it was not opened
    int nError = 0; ///< why it could not be; 0 of what has no bytes, is no file, or lies elsewhere
    quint64 nDevice = 0;
    quint64 nInode = 0;
    qint64 nSize = 0; ///< bytes
};

/** The names in a folder, in its own order. */
struct STSourceFolder
{
    int nError = 0; ///< why it could not be listed, or not to its end; 0 of what is no folder there
    QByteArrayList listFile = {}; ///< what is or may be a file
    QByteArrayList listFolder = {};
    bool bWhole = false; ///< there are no more
};

/**
 * What the system can be told and asked about reads to come. Every function may be called
 * on any thread; only Open and List may wait for the disk.
 */
class CReadAdvice
{
public:
    /** What is known of that device; of one that is not known nothing is promised. */
    static STSourceDisk DiskOf(quint64 nDevice);

    /**
     * Opens a file as the copy does: no link, and nothing that is no file or has no bytes, or lies
     * on another device, whose number is told. It is looked at first, as opening may set
     * something off.
     */
    static STSourceFile Open(const QByteArray& baPath, quint64 nDevice);

    /**
     * The first entries of a folder on that device. A link and what lies on another device have
     * none: nothing is opened there, as that may mount it.
     */
    static STSourceFolder List(const QByteArray& baPath, quint64 nDevice, int nMost);

    /** Closes what Open has given. */
    static void Close(int nDescriptor);

    /** Where the file begins on its disk, for a comparison; its number where that is not told. */
    static quint64 PlaceOf(const STSourceFile& stFile);

    /** Asks for bytes of an open file and does not wait; false when the system takes no such advice. */
    static bool WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes);

    /** Whether that byte of an open file can be read without its disk. */
    static ENThere IsThere(int nDescriptor, qint64 nFrom);

    /** Lets the system read no more of an open file than what is asked for. */
    static void StopReadAhead(int nDescriptor);

    /** Bytes of memory that nobody needs at present; 0 when that is not known. */
    static qint64 FreeMemory();
};
