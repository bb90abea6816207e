#pragma once

#include "copy/CCopyControl.h"
#include "copy/STCopyOutcome.h"
#include "flow/STExpectedFile.h"

#include <QVector>

#include <optional>

class CCopyDestination;
class CDescriptor;
class QFileInfo;
class QString;

/** What a walk asks of the copy that it walks for; called on the thread that copies. */
class CCopyWork : public CCopyControl
{
public:
    /** Whether the copy has been told to stop. */
    virtual bool IsStopped() const = 0;

    /** The copy comes to the item of that path at the source. */
    virtual void ItemBegins(const QString& strPath) = 0;

    /** Whether it helps to be told now which files come next. */
    virtual bool WantsMore() const { return false; }

    /** Whether nothing is left of what was told. */
    virtual bool WantsAnew() const { return WantsMore(); }

    /**
     * The next files, in the order in which they will be copied: behind those told
     * before, or, anew, in place of those that the disk was not asked for yet.
     */
    virtual void Expect(const QVector<STExpectedFile>& /*listFile*/, bool /*bAnew*/) { }

    /** What is copied into, for the time of the copy. */
    virtual const CCopyDestination& Destination() const = 0;

    /** Makes a folder below the destination, with its parents; the reason when it is not there afterwards. */
    virtual std::optional<STCopyReason> MakeFolder(const QString& strFolder) = 0;

    /** Copies a file of the tree into strFolder, which exists, under a free name, and books it. */
    virtual void CopyListedFile(const QFileInfo& source, const QString& strFolder, bool bListedAsLink) = 0;

    /** Copies a file's bytes to strTarget, which lies in strFolder, and books nothing. */
    virtual STCopyOutcome CopyBytes(const QFileInfo& source, const QString& strFolder,
                                    const QString& strTarget)
        = 0;

    /** The same to what target is: strTarget, open and empty; it is closed afterwards. */
    virtual STCopyOutcome CopyBytesTo(CDescriptor& /*target*/, const QFileInfo& source,
                                      const QString& strFolder, const QString& strTarget)
    {
        return CopyBytes(source, strFolder, strTarget);
    }

    /** A folder of the tree is left, in which nothing more is made. */
    virtual void FolderEnds(const QString& /*strSource*/, const QString& /*strTarget*/) { }

    /** Books what has become of a file. */
    virtual void BookFile(const STCopyOutcome& stOutcome) = 0;

    /** Books a link that was made again. */
    virtual void BookLink() = 0;

    /** Books an item of which nothing was copied. */
    virtual void BookProblem(const STCopyOutcome& stOutcome) = 0;

    /** Books a word about an item that is whole. */
    virtual void BookNote(const STCopyOutcome& stOutcome) = 0;
};
