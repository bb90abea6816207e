#include "copy/CCopyDestination.h"

#include "copy/CCopyPlatform.h"
#include "log/CClock.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

// A disk that is put in place of another one takes longer to be there. Where one was only
// taken away nothing can be made below the folder, as that went with it.
static const qint64 TRUST_MS = 100;

/** The file system that holds the path, or would hold it once it is made. */
static std::optional<quint64> NearestDevice(QString strPath)
{
    std::optional<STFileState> stState = CCopyPlatform::GetPathState(strPath);
    while (!stState) {
        const int nSlash = strPath.lastIndexOf('/');
        if ((errno != ENOENT && errno != ENOTDIR) || nSlash < 0 || strPath.size() == 1) {
            return std::nullopt;
        }
        strPath.truncate(qMax(nSlash, 1));
        stState = CCopyPlatform::GetPathState(strPath);
    }
    return stState->nDevice;
}

/** True when fopen(…, "r") would succeed; a pipe of that name is not waited for. */
static bool CanBeRead(const QString& strPath)
{
    const int nDescriptor = CCopyPlatform::OpenForRead(strPath);
    if (nDescriptor == -1) {
        return false;
    }
    close(nDescriptor);
    return true;
}

/** The folder that holds the path; null when it cannot be opened. */
static std::shared_ptr<const CDescriptor> OpenParent(const QString& strPath)
{
    const int nDescriptor = CCopyPlatform::OpenFolder(strPath.left(qMax(strPath.lastIndexOf('/'), 1)));
    return nDescriptor == -1 ? nullptr : std::make_shared<const CDescriptor>(nDescriptor);
}

CCopyDestination::CCopyDestination(QString strPath)
    : m_strPath(std::move(strPath))
    , m_nDevice(NearestDevice(m_strPath))
    , m_pParent(OpenParent(m_strPath))
{
}

bool CCopyDestination::IsGone() const
{
    return m_nDevice && NearestDevice(m_strPath).value_or(*m_nDevice) != *m_nDevice;
}

bool CCopyDestination::Flush() const
{
    return m_pParent ? CCopyPlatform::FlushFileSystem(m_pParent->Get())
                     : CCopyPlatform::FlushFileSystem(m_strPath);
}

std::shared_ptr<const CDescriptor> CCopyDestination::Parent() const { return m_pParent; }

std::optional<STCopyReason> CCopyDestination::MakeFolder(const QString& strFolder)
{
    if (strFolder == m_strMade && CClock::SteadyMs() - m_nMadeMs < TRUST_MS) {
        return std::nullopt;
    }
    m_strMade.clear();
    // Where the stick was mounted an empty folder may be left: making the path
    // again would fill the disk that the machine runs from.
    if (IsGone()) {
        return STCopyReason::DestinationGone();
    }
    errno = 0;
    if (!CCopyPlatform::MakePath(strFolder)) {
        return STCopyReason{ENCopyProblem::TARGET_FOLDER,
                            QStringLiteral("its target folder cannot be created"), errno};
    }
    const qint64 nMadeMs = CClock::SteadyMs();
    // A disk that went meanwhile has left the folder to be made on the machine's own.
    if (IsGone()) {
        return STCopyReason::DestinationGone();
    }
    m_strMade = strFolder;
    m_nMadeMs = nMadeMs;
    return std::nullopt;
}

bool CCopyDestination::ForgetFolder(const QString& strFolder)
{
    const bool bMade = strFolder == m_strMade;
    m_strMade.clear();
    return bMade;
}

QString CCopyDestination::FreeName(const QString& strTarget, const QString& strFolder,
                                   const QFileInfo& source)
{
    // What cannot be read counts as free and is truncated later: it is most
    // likely the broken remains of an earlier attempt.
    if (!CanBeRead(strTarget)) {
        return strTarget;
    }
    // No dot before the suffix: docs/behaviour.md.
    const QString strSuffix = source.suffix();
    const QString strStem
        = strFolder + '/' + (strSuffix.isEmpty() ? source.fileName() : source.completeBaseName()) + '_';
    for (qint64 nNumber = 1;; ++nNumber) {
        QString strName = strStem + QString::number(nNumber) + strSuffix;
        if (!CanBeRead(strName)) {
            return strName;
        }
    }
}
