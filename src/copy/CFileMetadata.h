#pragma once

#include "copy/STCopyOutcome.h"

#include <QByteArray>
#include <QString>
#include <QVector>
#include <QtGlobal>

#include <array>
#include <optional>

class CCopyControl;
class CCopyWork;

/**
 * Gives the copies of files and folders what belongs to their sources beside bytes and
 * permissions, by open descriptors: extended attributes with the Finder's information, resource
 * forks, dates of creation, flags and access lists. Counts what the disk cannot hold. Only
 * macOS has such things; elsewhere nothing here asks the system for anything. Used on the
 * thread that copies.
 */
class CFileMetadata
{
public:
    /**
     * A copy begins: nothing is known of its disks, and nothing is lost. The executable bit is
     * left to whoever gives all permissions, when there is one.
     */
    void Begin(bool bOtherGivesPermissions)
    {
        *this = CFileMetadata();
        m_bPermissions = !bOtherGivesPermissions;
    }

    /**
     * Gives it to the open copy of a file of that name, which has all its bytes, before its times
     * are set. The reason when the file is not whole without what could not be given. A file
     * may be copied anew before FileEnds; only the last time counts.
     */
    std::optional<STCopyReason> GiveToFile(CCopyControl& control, const QString& strName, int nSource,
                                           int nTarget);

    /**
     * Gives the open copy what comes when its times are set: the date of creation, which an older
     * date of change takes along with it, and the access list, which may forbid all the rest.
     */
    void GiveLast(CCopyControl& control, int nSource, int nTarget);

    /** Nothing more is given to the file. */
    void FileEnds();

    /** Gives it to a folder in which nothing more is made, but for what comes last. */
    void GiveToFolder(CCopyControl& control, const QString& strSource, const QString& strTarget);

    /** The same as GiveLast of a folder, to which nothing more is given. */
    void GiveFolderLast(CCopyControl& control, const QString& strSource, const QString& strTarget);

    /** All of that with the folder's times, for a walk that keeps no others. */
    void FinishFolder(CCopyWork& work, const QString& strSource, const QString& strTarget);

    /** What was lost: one for each kind, its detail is the number of items. */
    QVector<STCopyReason> Lost() const;

    /** Books a note of each, about the item of that path. */
    void BookLost(CCopyWork& work, const QString& strPath) const;

private:
    enum ENLost
    {
        LOST_PERMISSIONS,
        LOST_ATTRIBUTES,
        LOST_FINDER,
        LOST_FORKS,
        LOST_ACCESS_LISTS,
        LOST_CREATION_DATES,
        LOST_LOCKS,
        LOST_FOLDER_TIMES,
        LOST_KINDS
    };

    /** What a disk holds by itself, without a second file beside each. */
    struct STHolds
    {
        bool bAttributes = false; ///< extended attributes and resource forks
        bool bAccessLists = false;
        bool bPermissions = false; ///< what it shows was given to the item
    };

    /** Two open files or folders. */
    struct STPair
    {
        int nSource = -1;
        int nTarget = -1;
        quint64 nDevice = 0; ///< of the source
        qint64 nBytes = 0; ///< of the source
        unsigned nMode = 0; ///< st_mode of the source
        unsigned nFlags = 0; ///< st_flags of the source
        bool bFolder = false;
        bool bFolderIcon = false; ///< the picture of the folder that it lies in, and nothing else
    };

    static STHolds HoldsOf(int nDescriptor);
    static std::optional<STPair> Look(int nSource, int nTarget);
    bool HasOwnFiles(const STPair& stPair);
    std::optional<STCopyReason> Give(CCopyControl& control, const STPair& stPair);
    std::optional<STCopyReason> GiveAttributes(CCopyControl& control, const STPair& stPair);
    bool GiveAttribute(CCopyControl& control, const STPair& stPair, const QByteArray& baName) const;
    std::optional<STCopyReason> GiveFork(CCopyControl& control, const STPair& stPair);
    std::optional<STCopyReason> CopyFork(CCopyControl& control, const STPair& stPair, qint64 nSize);
    std::optional<STCopyReason> ForkNotHeld(const STPair& stPair);
    std::optional<STCopyReason> ForkNotWritten(const STPair& stPair, int nError);
    void Count(ENLost enLost, bool bKept) { m_listItem[enLost] = m_listItem[enLost] || !bKept; }

    std::array<qint64, LOST_KINDS> m_listLost = {}; // items
    std::array<bool, LOST_KINDS> m_listItem = {}; // of the item that is dealt with
    std::optional<STHolds> m_stTarget; // once a file was looked at
    std::optional<STHolds> m_stSource; // of the disk m_nSourceDevice
    quint64 m_nSourceDevice = 0;
    bool m_bPermissions = true; // the executable bit is given here
    bool m_bTakesAttributes = false; // the target does, by itself or since second files are wanted
};
