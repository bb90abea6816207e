#pragma once

#include "copy/CCopyPlatform.h"
#include "copy/ENCopyStep.h"
#include "copy/STCopyOutcome.h"

#include <QtGlobal>

#include <optional>

class QString;

/** What a file's copy asks and tells while it goes on; called on the thread that copies. */
class CCopyControl
{
public:
    virtual ~CCopyControl() = default;

    /** Before each chunk: returns when the copy goes on, true, or when it is to stop, false. */
    virtual bool WaitWhilePaused() = 0;

    /** After each chunk: nBytes more of the file of that name are dealt with. */
    virtual void ChunkDone(const QString& strName, qint64 nBytes) = 0;

    /** Before each call to the system that may take long. */
    virtual void StepBegins(ENCopyStep enStep) = 0;

    /** After each piece: nBytes more have reached the destination, or fewer when a file begins anew. */
    virtual void BytesWritten(qint64 nBytes) = 0;

    /**
     * When the disk is full and nBytes more are needed, 0 when nobody knows: gives up
     * room that the copy has kept for itself. False when that cannot help.
     */
    virtual bool MakeRoom(qint64 nBytes) = 0;

    /**
     * Gives the open target the times of the state; false when the disk does not keep them,
     * with the reason in errno, 0 when it has only said that it does.
     */
    virtual bool KeepTimes(int nDescriptor, const STFileState& stState)
    {
        return CCopyPlatform::KeepTimes(nDescriptor, stState);
    }

    /**
     * Before its times are set: gives the open target what belongs to the open source of that
     * name beside its bytes. The reason when without it the file is not whole.
     */
    virtual std::optional<STCopyReason> KeepMetadata(const QString& /*strName*/, int /*nSource*/,
                                                     int /*nTarget*/)
    {
        return std::nullopt;
    }

    /**
     * After its times are set: gives the open target the date of creation, which they may have
     * moved, and what may forbid all other changes.
     */
    virtual void KeepLast(int /*nSource*/, int /*nTarget*/) { }

    /** The same for a folder in which nothing more is made, before its times are set. */
    virtual void KeepFolderMetadata(const QString& /*strSource*/, const QString& /*strTarget*/) { }

    /** The same, when they are. */
    virtual void KeepFolderLast(const QString& /*strSource*/, const QString& /*strTarget*/) { }

    /** The file of that path at the source was opened, before its first byte is read. */
    virtual void SourceOpened(const QString& /*strPath*/, quint64 /*nDevice*/, int /*nDescriptor*/) { }

    /** After each read: its number of bytes, negative when it failed, and how many microseconds it took. */
    virtual void SourceRead(qint64 /*nResult*/, qint64 /*nUs*/) { }

    /** After each piece: nBytes from nFrom on were written to the open target. May wait for the disk. */
    virtual void TargetWritten(int /*nDescriptor*/, qint64 /*nFrom*/, qint64 /*nBytes*/) { }

    /**
     * The target has all its bytes and its times: what the system tells of its bytes only to a flush of
     * this file is asked for before it is closed. False when they are not on the disk, with the
     * reason in errno. May wait for the disk.
     */
    virtual bool FlushTarget(int /*nDescriptor*/) { return true; }

    /** The target has all that it gets and will be closed next. */
    virtual void TargetEnds(int /*nDescriptor*/) { }
};
