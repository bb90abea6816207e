#pragma once

#include "copy/CCopyPlatform.h"
#include "files/CDescriptor.h"

#include <QByteArray>
#include <QString>

/** The topmost folder of a volume, held open. */
class CVolumeRoot
{
public:
    /** Opens it, also through a link, which it may be to where it is mounted. */
    explicit CVolumeRoot(const QString& strPath);

    /** Why it could not be opened; 0 when it was. */
    int Error() const { return m_nError; }

    int Descriptor() const { return m_folder.Get(); }
    const STFileState& State() const { return m_stState; }

    /** As it was given, in the bytes of the disk. */
    const QByteArray& Path() const { return m_baPath; }

    /** The last part of the path. */
    QByteArray Name() const;

private:
    const QByteArray m_baPath;
    CDescriptor m_folder;
    STFileState m_stState;
    int m_nError = 0;
};
