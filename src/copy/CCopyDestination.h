#pragma once

#include "copy/STCopyOutcome.h"

#include <QFileInfo>
#include <QString>

#include <optional>

/** The folder that a copy goes into; used on the thread that copies. */
class CCopyDestination
{
public:
    /** No folder yet: whatever is asked for is made. */
    CCopyDestination() = default;

    /** Remembers the disk that holds the folder, or would hold it once it is made. */
    explicit CCopyDestination(QString strPath);

    /**
     * Makes a folder below this one, with its parents. Gives the reason when it is
     * not there afterwards; a destination on another disk than before is gone.
     */
    std::optional<STCopyReason> MakeFolder(const QString& strFolder) const;

    /**
     * The name for the copy of source: strTarget when nothing readable has it, else
     * the first free one in strFolder that is made of the source's name.
     */
    static QString FreeName(const QString& strTarget, const QString& strFolder, const QFileInfo& source);

private:
    QString m_strPath;
    std::optional<quint64> m_nDevice; // file system that holds the folder
};
