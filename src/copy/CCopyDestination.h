#pragma once

#include "copy/STCopyOutcome.h"
#include "files/CDescriptor.h"

#include <QFileInfo>
#include <QString>

#include <memory>
#include <optional>

/** The folder that a copy goes into; used on the thread that copies. */
class CCopyDestination
{
public:
    /** No folder yet: whatever is asked for is made. */
    CCopyDestination() = default;

    /** Remembers the disk that holds the folder, or would hold it once it is made, and keeps hold of it. */
    explicit CCopyDestination(QString strPath);

    /** Whether another disk is in its place, or none. False when the disk does not say. */
    bool IsGone() const;

    /**
     * Returns when everything written there since this object was made is on the disk;
     * false when it is not, with the reason in errno.
     */
    bool Flush() const;

    /** The folder that holds the folder of the copy; null when it cannot be opened or is not there. */
    std::shared_ptr<const CDescriptor> Parent() const;

    /**
     * Makes a folder below this one, with its parents. Gives the reason when it is
     * not there afterwards; a destination on another disk than before is gone. The disk
     * is asked once for the many files of a folder: a tenth of a second long the folder that
     * was made last is taken to be there.
     */
    std::optional<STCopyReason> MakeFolder(const QString& strFolder);

    /**
     * Something could not be made in strFolder: no folder is taken to be there any more.
     * Returns whether that one was, so that it may have to be made again.
     */
    bool ForgetFolder(const QString& strFolder);

    /**
     * The name for the copy of source: strTarget when nothing readable has it, else
     * the first free one in strFolder that is made of the source's name.
     */
    static QString FreeName(const QString& strTarget, const QString& strFolder, const QFileInfo& source);

private:
    QString m_strPath;
    std::optional<quint64> m_nDevice; // file system that holds the folder
    std::shared_ptr<const CDescriptor> m_pParent; // null when it cannot be opened
    QString m_strMade; // the folder that was made last
    qint64 m_nMadeMs = 0; // when that was, by the steady clock
};
