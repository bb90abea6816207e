#include "copy/CVolumeRoot.h"

#include "files/CFileName.h"

#include <cerrno>

static QByteArray WithoutEnd(QByteArray baPath)
{
    while (baPath.size() > 1 && baPath.endsWith('/')) {
        baPath.chop(1);
    }
    return baPath;
}

CVolumeRoot::CVolumeRoot(const QString& strPath)
    : m_baPath(WithoutEnd(CFileName::Encode(strPath)))
    , m_folder(CCopyPlatform::OpenFolder(strPath))
{
    const std::optional<STFileState> stState
        = m_folder.IsOpen() ? CCopyPlatform::GetOpenState(m_folder.Get()) : std::nullopt;
    if (!stState) {
        m_nError = errno;
        return;
    }
    m_stState = *stState;
}

QByteArray CVolumeRoot::Name() const { return m_baPath.mid(m_baPath.lastIndexOf('/') + 1); }
