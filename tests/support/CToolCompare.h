#pragma once

#include <QString>
#include <QStringList>

/** What "find" counts below a folder, the folder itself not counted. */
struct STToolCount
{
    qint64 nFiles = 0; ///< names of regular files
    qint64 nFolders = 0;
    qint64 nLinks = 0; ///< symbolic ones
    qint64 nOthers = 0; ///< pipes, sockets and devices
    qint64 nBytes = 0; ///< sizes of the files, name by name
};

/**
 * Compares a copied folder with its source by the tools of the system alone: what
 * they find equal is so, whatever the program and the other helpers of the tests think
 * of the disk. Links are links to them. Other file systems below are not entered.
 */
class CToolCompare
{
public:
    /** Whether the tools are there: rsync, diff and find. */
    static bool IsAvailable();

    /**
     * What "rsync" would have to do to make strCopy the same as strSource, one line for
     * each entry: kind, bytes, permissions, owner, times of files and folders to the
     * nanosecond, links' texts, extended attributes too if bAttributes.
     */
    static QStringList RsyncDifferences(const QString& strSource, const QString& strCopy,
                                        bool bAttributes = false);

    /** What "diff" finds to be different or missing, one line for each. */
    static QStringList DiffDifferences(const QString& strSource, const QString& strCopy);

    /** Counts what is below the folder. */
    static STToolCount Count(const QString& strFolder);

    /** A sum of each file's content, sorted: what is there whatever its name and place. */
    static QStringList Contents(const QString& strFolder);

    /** Paths below the folder that lead to symbolic links, in their order by bytes. */
    static QStringList Links(const QString& strFolder);

    /**
     * One line that is the same for two folders only when names, kinds, bytes, links'
     * texts and the permissions of their files are, and the times of those that are older
     * than the test.
     */
    static QString Digest(const QString& strFolder);
};

/** Leaves the test function out where the tools are missing. */
#define NEEDS_COMPARE_TOOLS()                                                                                \
    do {                                                                                                     \
        if (!CToolCompare::IsAvailable()) {                                                                  \
            QSKIP("rsync, diff and find are needed (packages rsync, diffutils, findutils)");                 \
        }                                                                                                    \
    } while (false)
