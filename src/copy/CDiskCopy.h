#pragma once

#include "copy/CBelongings.h"
#include "copy/CCopyWalk.h"
#include "copy/CDamagedFiles.h"
#include "copy/CDiskVisitor.h"
#include "copy/CTargetEntries.h"
#include "copy/CTickedItems.h"

#include <QVector>

#include <optional>

class CCopyWork;
class CDirNode;

/**
 * The walk that copies everything in what is ticked: over the disk, whatever the
 * tree knows of it, each entry to a name that the destination takes, with what belongs
 * to it. Reads no node after it was made.
 */
class CDiskCopy : public CCopyWalk, private CDiskVisitor
{
public:
    CDiskCopy(const CDirNode& root, CCopyWork& work, QString strDest);

    QStringList Sources() override;
    bool GivesPermissions() const override { return true; }
    void Walk() override;

private:
    /** A folder that the walk is in. */
    struct STOpenFolder
    {
        QString strSource; ///< the item's path where it lies in a folder above it
        QString strTarget; ///< empty when there is none
        std::optional<STCopyReason> stReason; ///< why there is none: nothing in it can be copied
        bool bDamaged = false; ///< a file in it, at any depth, is not finished yet
    };

    /** A folder that gets what belongs to it when the files in it are finished. */
    struct STLateFolder
    {
        QString strSource;
        STFileState stState;
        QString strTarget;
    };

    bool GoesOn() override;
    void BeginItem(const STTickedItem& stItem) override;
    bool BeginFolder(const STDiskEntry& stFolder) override;
    void EndFolder(const STDiskEntry& stFolder) override;
    void File(const STDiskEntry& stFile) override;
    void Link(const STDiskEntry& stLink, const QByteArray& baTarget) override;
    void LeftOut(const QString& strPath, const STCopyReason& stReason) override;
    bool WantsMore() const override;
    bool WantsAnew() const override;
    void Expect(const QVector<STExpectedFile>& listFile, bool bAnew) override;

    void CopyFile(const QString& strSource, const STFileState& stState, const QByteArray& baName);
    void MakeLink(const QString& strSource, const STDiskEntry& stLink, const QByteArray& baTarget);
    void BookCopied(const QString& strSource, const STFileState& stState, const QString& strTarget,
                    const STCopyOutcome& stOutcome);
    void BookMissing(const QString& strSource, const STCopyReason& stReason, qint64 nSize);
    void BookRenamed(const QString& strSource, const STTargetEntry& stEntry);
    void BookLost();
    void TellRest(const QString& strSource, qint64 nBytes);
    void FinishLate();
    void FinishAbove();

    CCopyWork& m_work;
    const QString m_strDest;
    const QVector<STTickedItem> m_listItem;
    CTargetEntries m_entries;
    CBelongings m_belongings;
    CDamagedFiles m_damaged;
    QVector<STOpenFolder> m_listFolder; // the first is what lies above the item
    QVector<STLateFolder> m_listLate; // the innermost first
    QVector<STLateFolder> m_listAbove; // above the items, the outermost first, states not known yet
};
