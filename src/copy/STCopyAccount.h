#pragma once

#include <QMetaType>
#include <QString>
#include <QVector>
#include <QtGlobal>

/** Why an item is not whole, or is worth a word although it is. */
enum class ENCopyProblem
{
    TARGET_FOLDER, ///< its folder cannot be made at the destination
    TARGET_CREATE, ///< its file cannot be made there
    TARGET_WRITE, ///< its bytes cannot be written
    TARGET_CLOSE, ///< the destination refused its bytes when the file was closed
    SOURCE_OPEN, ///< it cannot be opened
    SOURCE_READ, ///< its bytes cannot be read
    SOURCE_SHORTER, ///< it became shorter while it was copied
    SOURCE_CHANGED, ///< it changed while it was copied
    SOURCE_REMOVED, ///< it was removed while it was copied
    SOURCE_REPLACED, ///< another file or a link is in its place
    SPECIAL_FILE, ///< a pipe, socket or device
    NOT_LISTED, ///< a ticked folder whose contents the tree does not hold
    LEFT_OUT, ///< an entry that the tree leaves out for its name, or that is newer than the list
    LEADS_BACK, ///< a link to a folder that it lies in
    FOLDER_READ, ///< a folder that cannot be listed, or not to the end
    TIME_LOST, ///< its time cannot be kept
    DESTINATION_GONE, ///< the destination is not reached any more
    STOPPED, ///< the copy was stopped
    NO_MEMORY, ///< there is not enough memory
    NOT_FLUSHED, ///< the destination has not confirmed that everything is on it
    LEAVES_VOLUME, ///< a link that leads to another volume, copied as it resolves
    NO_ANSWER, ///< its disk does not answer
    TOO_LARGE, ///< the file system of the destination cannot hold a file of its size
    DAMAGED, ///< parts of it cannot be read, and zeros stand for them
    OTHER_FILE_SYSTEM, ///< another file system is mounted there, and was not entered
    ENTERED_BEFORE, ///< a folder that was copied already where it lies, too
    LINK_LOST, ///< the destination cannot hold links
    NAME_CHANGED, ///< the destination does not take its name
    PERMISSIONS_LOST, ///< what the destination cannot hold, counted for the whole copy
    ATTRIBUTES_LOST, ///< the same of extended attributes
    FOLDER_TIMES_LOST, ///< the same of times of folders
    FORK_READ, ///< its resource fork, the second part of a file of a Mac, cannot be read
    FORK_NEEDED, ///< it has nothing but its resource fork, and the destination cannot hold that
    FORKS_LOST, ///< the same as PERMISSIONS_LOST of resource forks beside a file's bytes
    FINDER_LOST, ///< the same of what the Finder keeps of a file: tags, colours, icons
    ACCESS_LISTS_LOST, ///< the same of access lists
    CREATION_DATES_LOST, ///< the same of dates of creation
    LOCKS_LOST, ///< locks that were left, counted for the whole copy
    ONLY_IN_CLOUD ///< the system keeps its contents elsewhere and would fetch them from there
};

/** One line of a copy's account: an item that is not whole, or that is worth a note. */
struct STCopyItem
{
    QString strPath; ///< at the source
    ENCopyProblem enProblem = ENCopyProblem::STOPPED;
    int nError = 0; ///< errno value that goes with it, 0 when the system gave none
    qint64 nCopied = 0; ///< bytes that reached the destination
    qint64 nExpected = -1; ///< bytes at the source; -1 when nobody has measured them
    QString strDetail = {}; ///< byte ranges, new name, link's target or number of items, as the problem wants
    bool bNote = false; ///< the item is whole: this only says something about it
};

/** Whether the destination's disk has confirmed what was written. */
enum class ENCopyFlush
{
    NOT_NEEDED, ///< nothing was written
    DONE, ///< everything is on the disk
    FAILED ///< the disk reported an error, or was gone
};

/** What became of a copy: handed from the worker to the window when it has ended. */
struct STCopyAccount
{
    static constexpr int LISTED_ITEMS = 1000; ///< the most that listItem holds; the report has all

    qint64 nFiles = 0; ///< copied whole
    qint64 nLinks = 0; ///< made again as links
    qint64 nBytes = 0; ///< that reached the destination
    qint64 nProblems = 0; ///< items that are not whole
    qint64 nNotes = 0; ///< items that are whole and have a line all the same
    qint64 nMs = 0; ///< time spent copying, pauses left out
    bool bStopped = false; ///< told to stop before its end
    bool bGone = false; ///< the destination was lost on the way
    ENCopyFlush enFlush = ENCopyFlush::NOT_NEEDED;
    QVector<STCopyItem> listItem; ///< the first LISTED_ITEMS, in order; notes only where problems leave room
    QString strReport; ///< path of the report beside the copy; empty when there is none (any more)
    bool bReportMissing = false; ///< the report was needed and could not be written

    /** Whether every item is whole and confirmed by the disk. */
    bool IsWhole() const { return nProblems == 0 && !bStopped && !bGone && enFlush != ENCopyFlush::FAILED; }
};

Q_DECLARE_METATYPE(STCopyAccount)
