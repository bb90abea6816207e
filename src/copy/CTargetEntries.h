#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/CTargetName.h"
#include "copy/STCopyOutcome.h"
#include "files/CDescriptor.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <optional>

class CCopyWork;

/** What was made at the destination, or why it was not. */
struct STTargetEntry
{
    QString strPath = {}; ///< empty when nothing was made
    bool bRenamed = false; ///< it has another name than its source
    std::optional<STCopyReason> stReason = {}; ///< why nothing was made
};

/**
 * Makes the entries of a copy at the destination, each new and under a free name
 * that the disk takes; nothing that is there is touched. Where the disk is full it asks
 * for room; a destination that is gone is told as such. Used on the thread that copies.
 */
class CTargetEntries
{
public:
    using Begun = std::function<void(const QString& strSource, const STTargetEntry& stEntry)>;

    /** For a copy into strDest; work outlives it. */
    CTargetEntries(CCopyWork& work, QString strDest);

    /**
     * The folder for what lies below strPath's folder at the source: the folder of the
     * copy with the folders above the item, each made once for all items. fnBegun gets the
     * path of each at the source once it is there.
     */
    STTargetEntry Above(const QString& strPath, const Begun& fnBegun);

    /** Makes a folder. */
    STTargetEntry Folder(const QString& strFolder, const QByteArray& baName);

    /** Makes an empty file and opens it for its bytes. */
    STTargetEntry File(const QString& strFolder, const QByteArray& baName, CDescriptor& made);

    /** Makes a link that consists of baText; LINK_LOST is the reason where the disk cannot hold it. */
    STTargetEntry Link(const QString& strFolder, const QByteArray& baName, const QByteArray& baText);

    /** The path below the folder of the copy. */
    QString Below(const QString& strTarget) const;

    /** Whether a folder of the source is the folder of the copy, which would go on into itself. */
    bool IsRoot(const QString& strPath, const STFileState& stState) const;

    /** What is known of the disk once there is a folder on it. */
    const STDiskRules& Rules() const { return m_stRules; }

private:
    std::optional<STCopyReason> MakeRoot();
    STTargetEntry AboveOne(const QString& strFolder, const QString& strSource, const Begun& fnBegun);
    STTargetEntry Make(const QString& strFolder, const QByteArray& baName, ENCopyProblem enProblem,
                       const CTargetName::FnMake& fnMake);
    static STCopyReason LinkLost(const QByteArray& baText);
    STCopyReason Reason(const QString& strFolder, ENCopyProblem enProblem, int nError,
                        const QString& strPath) const;
    int WithRoom(const CTargetName::FnMake& fnMake, const QByteArray& baPath);
    bool IsShared(const QByteArray& baPath) const;

    CCopyWork& m_work;
    const QString m_strDest;
    CTargetName m_name;
    STDiskRules m_stRules;
    bool m_bRoot = false; // the folder of the copy is there
    std::optional<STFileState> m_stRoot; // its state
    QHash<QString, QString> m_mapAbove; // target folder by path at the source
    bool m_bLinks = true; // the disk has not refused one
};
