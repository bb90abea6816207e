#pragma once

#include "copy/STCopyAccount.h"

#include <QString>
#include <QtGlobal>

#include <cerrno>

/** How the copy of one item ended. */
enum class ENCopyEnd
{
    WHOLE, ///< every byte and the time of the source
    STOPPED, ///< left where it stood, because the copy was told to stop
    NOT_WHOLE ///< something kept it from being whole
};

/** Why an item was not copied whole, in parts; CCopyReport makes a sentence of them. */
struct STCopyReason
{
    ENCopyProblem enProblem = ENCopyProblem::STOPPED; ///< for the window, which has its own words
    QString strText = {}; ///< in plain English words, to stand behind the item's path
    int nError = 0; ///< errno value that goes with it, 0 when the system gave none
    QString strTarget = {}; ///< the path at the destination that it is about, when its name matters
    QString strDetail = {}; ///< as STCopyItem has it

    /** The destination is not reached any more, or another disk is in its place. */
    static STCopyReason DestinationGone()
    {
        return {ENCopyProblem::DESTINATION_GONE, QStringLiteral("destination gone")};
    }

    /** What the item holds is not on this machine, and nothing of it is asked for. */
    static STCopyReason OnlyInCloud()
    {
        return {ENCopyProblem::ONLY_IN_CLOUD, QStringLiteral("only in iCloud")};
    }

    /** The target has taken all bytes, and they cannot be brought to its disk for that errno value. */
    static STCopyReason NotOnDisk(int nError)
    {
        return {ENCopyProblem::TARGET_CLOSE, QStringLiteral("its target cannot be brought to the disk"),
                nError};
    }

    /** The contents of a folder cannot be listed, or, when that was begun, not to the end. */
    static STCopyReason CannotList(bool bBegun, int nError)
    {
        if (nError == EDEADLK) { // by which a system says that it would have to fetch them
            return OnlyInCloud();
        }
        return {ENCopyProblem::FOLDER_READ,
                bBegun ? QStringLiteral("its contents cannot be listed to the end")
                       : QStringLiteral("its contents cannot be listed"),
                nError};
    }

    /** The source has another content than when it was begun, and nSize bytes now. */
    static STCopyReason SourceChanged(qint64 nSize)
    {
        return {ENCopyProblem::SOURCE_CHANGED,
                QStringLiteral("changed while it was copied, it has ") + QString::number(nSize)
                    + QStringLiteral(" bytes now")};
    }
};

/** Whether the errno value says that there is no room. */
inline bool IsNoRoom(int nError) { return nError == ENOSPC || nError == EDQUOT; }

/** Whether the errno value says that the disk itself is not there any more. */
inline bool IsDiskLost(int nError)
{
    return nError == ENODEV || nError == ENXIO || nError == ENOTCONN || nError == ESTALE;
}

/** What became of one item, a file or a folder. */
struct STCopyOutcome
{
    static constexpr qint64 UNKNOWN_SIZE = -1; ///< for nExpected when nobody has measured the item

    ENCopyEnd enEnd = ENCopyEnd::WHOLE;
    QString strPath = {}; ///< at the source
    STCopyReason stReason = {}; ///< empty when the item is whole
    qint64 nCopied = 0; ///< bytes that reached the destination
    qint64 nExpected = UNKNOWN_SIZE; ///< bytes at the source
    bool bLeavesVolume = false; ///< a link that leads to another volume, copied as it resolves
    qint64 nTold = 0; ///< bytes of it that the progress counts as dealt with
    QString strStandsFor = {}; ///< path of a file that is in iCloud alone, and this one in its place

    /** For an item of which nothing was copied. */
    static STCopyOutcome Missing(const QString& strPath, const STCopyReason& stReason,
                                 qint64 nExpected = UNKNOWN_SIZE)
    {
        return {ENCopyEnd::NOT_WHOLE, strPath, stReason, 0, nExpected};
    }

    /** The note on a link that leads to another volume. */
    static STCopyOutcome LeavesVolume(const QString& strPath)
    {
        return Missing(strPath,
                       {ENCopyProblem::LEAVES_VOLUME,
                        QStringLiteral("a link to another volume, copied as it resolves")});
    }

    /** Whether all its bytes are there, even where its time is not. */
    bool HasAllBytes() const
    {
        return enEnd == ENCopyEnd::WHOLE || stReason.enProblem == ENCopyProblem::TIME_LOST;
    }
};
