#pragma once

#include <QString>
#include <QStringList>

/** The folder that volumes are mounted in. */
class CVolumeFolder
{
public:
    /**
     * The folders in it, and the links to folders, in the order of the listing; names
     * that begin with a dot are left out. Nothing that is mounted there is touched, so
     * that a disk that does not answer holds nobody up. Any thread.
     */
    static QStringList Names(const QString& strFolder);

    /** Whether the system takes both for one name; a Mac does where they mean the same letters. */
    static bool IsSameName(const QString& strOne, const QString& strOther);
};
