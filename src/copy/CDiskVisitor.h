#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/STCopyOutcome.h"
#include "flow/STExpectedFile.h"

#include <QByteArray>
#include <QString>
#include <QVector>

struct STTickedItem;

/**
 * An entry that the walk over the disk has come to. A link that is followed is what
 * it leads to: the descriptor, the name and the state are of that, and the place is the
 * link's. Valid while the call lasts.
 */
struct STDiskEntry
{
    int nFolder = -1; ///< descriptor of the folder that it lies in
    const char* pszName = ""; ///< its name there, in the bytes of the disk
    QByteArray baPath = {}; ///< path to read it by, no link in it is left to be followed
    QByteArray baPlace = {}; ///< name that it has where it was found: the link's, or else its own
    STFileState stState = {}; ///< of the entry itself
};

/** What is done on a walk over the disk; called on the thread that walks. */
class CDiskVisitor
{
public:
    virtual ~CDiskVisitor() = default;

    /** Asked before each entry and each call that may take long: false ends the walk. */
    virtual bool GoesOn() = 0;

    /** The entries from here on belong to that ticked item, which is the first of them. */
    virtual void BeginItem(const STTickedItem& stItem) = 0;

    /** A folder, before what is in it; false leaves all of that out, and its end is not told. */
    virtual bool BeginFolder(const STDiskEntry& stFolder) = 0;

    /**
     * A folder that was begun, when all that is in it was handed over; not after a walk
     * that was ended. Its name is "." then, and the descriptor its own.
     */
    virtual void EndFolder(const STDiskEntry& stFolder) = 0;

    /** A file with bytes. */
    virtual void File(const STDiskEntry& stFile) = 0;

    /** A link that is not followed, with the text that it consists of. */
    virtual void Link(const STDiskEntry& stLink, const QByteArray& baTarget) = 0;

    /** What is not gone into, or is no file, or cannot be looked at, and why. */
    virtual void LeftOut(const QString& strPath, const STCopyReason& stReason) = 0;

    /** Whether it helps to be told now what comes next. */
    virtual bool WantsMore() const { return false; }

    /** Whether nothing is left of what was told, so that it helps to be told anew where the walk is. */
    virtual bool WantsAnew() const { return WantsMore(); }

    /**
     * What comes next, as far as names tell: in the order of the walk, behind what was
     * told before, or, anew, in its place. Some of it may be left out or be something else.
     */
    virtual void Expect(const QVector<STExpectedFile>& /*listFile*/, bool /*bAnew*/) { }
};
