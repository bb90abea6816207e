#include "copy/CVolumePath.h"

#include "copy/CVolumeRoot.h"
#include "files/CFileName.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

static const int FOLDER_FLAGS = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

QByteArray ReadLinkText(int nFolder, const char* pszName)
{
    QByteArray baText(PATH_MAX, Qt::Uninitialized);
    const ssize_t nLength = readlinkat(nFolder, pszName, baText.data(), size_t(baText.size()));
    if (nLength < 0) {
        return {};
    }
    baText.resize(int(nLength));
    return baText;
}

CVolumePath::CVolumePath(const CVolumeRoot& root, std::function<bool()> fnGoesOn)
    : m_root(root)
    , m_fnGoesOn(std::move(fnGoesOn))
{
    ToRoot();
}

CVolumePath::CVolumePath(const CVolumeRoot& root, const STVolumeFolder& stFolder,
                         std::function<bool()> fnGoesOn)
    : m_root(root)
    , m_fnGoesOn(std::move(fnGoesOn))
    , m_stFolder(stFolder)
{
}

ENPathEnd CVolumePath::Follow(const QByteArray& baText)
{
    m_bFollowLast = true;
    m_bOneFileSystem = true;
    if (baText.isEmpty()) {
        return ENPathEnd::NOTHING;
    }
    return BeginText(baText) ? Go() : ENPathEnd::OUTSIDE;
}

ENPathEnd CVolumePath::GoTo(const QByteArray& baBelow)
{
    m_baRest = baBelow;
    return Go();
}

QByteArray CVolumePath::Path() const
{
    if (m_baName == ".") {
        return m_stFolder.baPath;
    }
    return m_stFolder.baPath + (m_stFolder.baPath.endsWith('/') ? "" : "/") + m_baName;
}

QVector<STFileId> CVolumePath::Chain() const
{
    QVector<STFileId> listChain = m_stFolder.listChain;
    if (!m_baName.isEmpty() && m_baName != ".") {
        listChain.append(STFileId::Of(m_stState));
    }
    return listChain;
}

void CVolumePath::ToRoot()
{
    m_open.Reset();
    m_stFolder = {m_root.Descriptor(), m_root.Path(), {STFileId::Of(m_root.State())}};
}

/** Puts a link's text before what is still to go; false when it leads to another volume. */
bool CVolumePath::BeginText(const QByteArray& baText)
{
    m_baRest.prepend(baText);
    if (!baText.startsWith('/')) {
        return true;
    }
    ToRoot();
    if (m_root.Name().isEmpty()) {
        return true; // all volumes lie below this one, and their mount points are noticed
    }
    const QByteArray baAll = m_baRest;
    if (TakeName() == "Volumes") {
        const QByteArray baVolume = TakeName();
        if (!baVolume.isEmpty()) {
            const auto fnText = [](const QByteArray& baName) {
                return CFileName::Decode(baName).normalized(QString::NormalizationForm_C);
            };
            return fnText(baVolume).compare(fnText(m_root.Name()), Qt::CaseInsensitive) == 0;
        }
    }
    m_baRest = baAll;
    return true;
}

/** The next name of what is still to go; empty at the end. What follows keeps its separator. */
QByteArray CVolumePath::TakeName()
{
    int nBegin = 0;
    while (nBegin < m_baRest.size() && m_baRest.at(nBegin) == '/') {
        ++nBegin;
    }
    const int nFound = m_baRest.indexOf('/', nBegin);
    const int nEnd = nFound < 0 ? m_baRest.size() : nFound;
    const QByteArray baName = m_baRest.mid(nBegin, nEnd - nBegin);
    m_baRest.remove(0, nEnd);
    return baName;
}

ENPathEnd CVolumePath::Fail(int nError)
{
    m_nError = nError;
    return nError == ENOENT || nError == ENOTDIR ? ENPathEnd::NOTHING : ENPathEnd::FAILED;
}

ENPathEnd CVolumePath::Go()
{
    while (true) {
        if (!m_fnGoesOn()) {
            return ENPathEnd::STOPPED;
        }
        const QByteArray baName = TakeName();
        ENPathEnd enEnd = ENPathEnd::FOUND;
        if (baName.isEmpty()) {
            const std::optional<STFileState> stState = CCopyPlatform::GetOpenState(m_stFolder.nDescriptor);
            if (!stState) {
                return Fail(errno);
            }
            m_stState = *stState;
            m_baName = ".";
            return ENPathEnd::FOUND;
        }
        if (baName == "..") {
            enEnd = Up();
        } else if (baName != ".") {
            enEnd = Meet(baName, m_baRest.isEmpty());
        }
        if (enEnd == ENPathEnd::FAILED && (baName == ".." || m_baRest.contains(".."))) {
            m_stFolder.listChain.clear(); // it might have led up again
        }
        if (enEnd != ENPathEnd::FOUND || !m_baName.isEmpty()) {
            return enEnd;
        }
    }
}

/** Comes to an entry of the folder: goes on through it, or has found it, and then has its name. */
ENPathEnd CVolumePath::Meet(const QByteArray& baName, bool bLast)
{
    const std::optional<STFileState> stState
        = CCopyPlatform::GetEntryState(m_stFolder.nDescriptor, baName.constData());
    if (!stState) {
        return Fail(errno);
    }
    const bool bFolder = stState->enKind == ENFileKind::DIRECTORY;
    if (stState->enKind == ENFileKind::LINK && (!bLast || m_bFollowLast)) {
        return PassLink(baName);
    }
    if (bFolder && m_bOneFileSystem && stState->nDevice != m_stFolder.listChain.constLast().nDevice
        && CCopyPlatform::IsMountPoint(m_stFolder.nDescriptor, baName.constData())) {
        return ENPathEnd::OUTSIDE;
    }
    if (bLast) {
        m_stState = *stState;
        m_baName = baName;
        return ENPathEnd::FOUND;
    }
    return bFolder ? Enter(baName) : Fail(ENOTDIR);
}

ENPathEnd CVolumePath::PassLink(const QByteArray& baName)
{
    if (++m_nLinks > MOST_LINKS) {
        return ENPathEnd::TOO_MANY_LINKS;
    }
    const QByteArray baText = ReadLinkText(m_stFolder.nDescriptor, baName.constData());
    if (baText.isEmpty()) {
        return Fail(baText.isNull() ? errno : ENOENT);
    }
    return BeginText(baText) ? ENPathEnd::FOUND : ENPathEnd::OUTSIDE;
}

/** Opens a folder from here and is there; nothing on failure, the reason in errno. */
std::optional<STFileState> CVolumePath::Open(const char* pszName)
{
    const int nDescriptor = openat(m_stFolder.nDescriptor, pszName, FOLDER_FLAGS);
    if (nDescriptor == -1) {
        return std::nullopt;
    }
    m_open.Reset(nDescriptor);
    m_stFolder.nDescriptor = nDescriptor;
    return CCopyPlatform::GetOpenState(nDescriptor);
}

ENPathEnd CVolumePath::Enter(const QByteArray& baName)
{
    const std::optional<STFileState> stState = Open(baName.constData());
    if (!stState) {
        return Fail(errno);
    }
    m_stFolder.baPath += (m_stFolder.baPath.endsWith('/') ? "" : "/") + baName;
    m_stFolder.listChain.append(STFileId::Of(*stState));
    return ENPathEnd::FOUND;
}

/** To the folder above, which for the root is the root. */
ENPathEnd CVolumePath::Up()
{
    QVector<STFileId>& listChain = m_stFolder.listChain;
    if (listChain.size() < 2) {
        return ENPathEnd::FOUND;
    }
    const std::optional<STFileState> stState = Open("..");
    if (!stState) {
        return Fail(errno);
    }
    listChain.removeLast();
    m_stFolder.baPath.truncate(qMax(m_root.Path().size(), m_stFolder.baPath.lastIndexOf('/')));
    // It has been moved meanwhile, and nobody knows what is above it now.
    return STFileId::Of(*stState) == listChain.constLast() ? ENPathEnd::FOUND : Fail(ESTALE);
}
