#include "copy/CTargetEntries.h"

#include "copy/CCopyDestination.h"
#include "copy/CCopyReport.h"
#include "copy/CCopyWalk.h"
#include "copy/CCopyWork.h"
#include "files/CFileName.h"
#include "files/CFolderReader.h"

#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

static int MakeFolder(const char* pszPath) { return mkdir(pszPath, 0777) == 0 ? 0 : errno; }

static int MakeLink(const QByteArray& baText, const char* pszPath)
{
    return symlink(baText.constData(), pszPath) == 0 ? 0 : errno;
}

/** Whether a folder holds an entry of exactly that name: a disk may take several for one. */
static bool HasName(const QByteArray& baFolder, const QByteArray& baName)
{
    CFolderReader folder(baFolder.constData());
    while (folder.Next()) {
        if (baName == folder.Name()) {
            return true;
        }
    }
    return false;
}

/** Whether the disk says that it can hold no links. */
static bool IsNoLinks(int nError)
{
    return nError == EPERM || nError == ENOSYS || nError == EOPNOTSUPP || nError == ENOTSUP;
}

CTargetEntries::CTargetEntries(CCopyWork& work, QString strDest)
    : m_work(work)
    , m_strDest(std::move(strDest))
{
}

STTargetEntry CTargetEntries::Above(const QString& strPath, const Begun& fnBegun)
{
    STTargetEntry stFolder;
    stFolder.stReason = MakeRoot();
    stFolder.strPath = stFolder.stReason ? QString() : m_strDest;
    int nBegin = strPath.size() - CCopyWalk::PlaceOf(strPath).size();
    for (int nEnd = strPath.indexOf('/', nBegin); nEnd >= 0 && !stFolder.stReason;
         nEnd = strPath.indexOf('/', nBegin)) {
        if (nEnd > nBegin) {
            stFolder = AboveOne(stFolder.strPath, strPath.left(nEnd), fnBegun);
        }
        nBegin = nEnd + 1;
    }
    return stFolder;
}

/** Makes the folder of the copy. */
std::optional<STCopyReason> CTargetEntries::MakeRoot()
{
    if (m_bRoot) {
        return m_work.Destination().IsGone() ? std::make_optional(STCopyReason::DestinationGone())
                                             : std::nullopt;
    }
    std::optional<STCopyReason> stReason = m_work.MakeFolder(m_strDest);
    if (!stReason) {
        m_bRoot = true;
        m_work.StepBegins(ENCopyStep::WRITING);
        m_stRoot = CCopyPlatform::GetPathState(m_strDest);
        m_stRules = CCopyPlatform::GetDiskRules(m_strDest);
        m_name.SetRules(m_stRules);
    }
    return stReason;
}

/** The folder for one above an item: one that lies there already will do. */
STTargetEntry CTargetEntries::AboveOne(const QString& strFolder, const QString& strSource,
                                       const Begun& fnBegun)
{
    const auto itMade = m_mapAbove.constFind(strSource);
    if (itMade != m_mapAbove.cend()) {
        return {*itMade, false, std::nullopt};
    }
    const auto fnMake = [this](const QByteArray& baPath) {
        const int nError = MakeFolder(baPath.constData());
        return nError == EEXIST && IsShared(baPath) ? 0 : nError;
    };
    const QByteArray baName = CFileName::Encode(strSource.mid(strSource.lastIndexOf('/') + 1));
    STTargetEntry stEntry = Make(strFolder, baName, ENCopyProblem::TARGET_FOLDER, fnMake);
    if (!stEntry.stReason) {
        m_mapAbove.insert(strSource, stEntry.strPath);
        fnBegun(strSource, stEntry);
    }
    return stEntry;
}

/** Whether the path is a folder of exactly that name, which stands for no other folder of the source. */
bool CTargetEntries::IsShared(const QByteArray& baPath) const
{
    const QString strPath = CFileName::Decode(baPath);
    const std::optional<STFileState> stState = CCopyPlatform::GetEntryState(strPath);
    if (!stState || stState->enKind != ENFileKind::DIRECTORY) {
        return false;
    }
    for (const QString& strMade : m_mapAbove) {
        if (strMade == strPath) {
            return false;
        }
    }
    const int nSlash = baPath.lastIndexOf('/');
    return HasName(baPath.left(nSlash), baPath.mid(nSlash + 1));
}

STTargetEntry CTargetEntries::Folder(const QString& strFolder, const QByteArray& baName)
{
    return Make(strFolder, baName, ENCopyProblem::TARGET_FOLDER,
                [](const QByteArray& baPath) { return MakeFolder(baPath.constData()); });
}

STTargetEntry CTargetEntries::File(const QString& strFolder, const QByteArray& baName, CDescriptor& made)
{
    return Make(strFolder, baName, ENCopyProblem::TARGET_CREATE, [&made](const QByteArray& baPath) {
        made.Reset(CCopyPlatform::CreateNew(baPath));
        return made.IsOpen() ? 0 : errno;
    });
}

STTargetEntry CTargetEntries::Link(const QString& strFolder, const QByteArray& baName,
                                   const QByteArray& baText)
{
    if (!m_bLinks) {
        return {QString(), false, LinkLost(baText)};
    }
    STTargetEntry stEntry
        = Make(strFolder, baName, ENCopyProblem::TARGET_CREATE, [&baText](const QByteArray& baPath) {
              const int nError = MakeLink(baText, baPath.constData());
              return IsNoLinks(nError) ? ENOTSUP : nError;
          });
    const int nError = stEntry.stReason ? stEntry.stReason->nError : 0;
    m_bLinks = nError != ENOTSUP;
    // It may be the text that is refused, whatever the name is.
    if (!m_bLinks || nError == EINVAL || nError == EILSEQ) {
        stEntry.stReason = LinkLost(baText);
    }
    return stEntry;
}

STCopyReason CTargetEntries::LinkLost(const QByteArray& baText)
{
    const QString strText = CFileName::Decode(baText);
    STCopyReason stReason{ENCopyProblem::LINK_LOST,
                          "the disk cannot hold links, it leads to " + CCopyReport::Quoted(strText)};
    stReason.strDetail = CCopyReport::Shown(strText);
    return stReason;
}

STTargetEntry CTargetEntries::Make(const QString& strFolder, const QByteArray& baName,
                                   ENCopyProblem enProblem, const CTargetName::FnMake& fnMake)
{
    const STMadeEntry stMade
        = m_name.Make(CFileName::Encode(strFolder), baName,
                      [this, &fnMake](const QByteArray& baPath) { return WithRoom(fnMake, baPath); });
    const QString strPath = CFileName::Decode(stMade.baPath);
    if (stMade.nError == 0) {
        return {strPath, stMade.bRenamed, std::nullopt};
    }
    return {QString(), false, Reason(strFolder, enProblem, stMade.nError, strPath)};
}

/** The errno value of making it, after everything that can give it room. */
int CTargetEntries::WithRoom(const CTargetName::FnMake& fnMake, const QByteArray& baPath)
{
    int nError = ECANCELED;
    do {
        if (m_work.IsStopped()) {
            return ECANCELED;
        }
        m_work.StepBegins(ENCopyStep::WRITING);
        nError = fnMake(baPath);
    } while (IsNoRoom(nError) && m_work.MakeRoom(0));
    return nError;
}

STCopyReason CTargetEntries::Reason(const QString& strFolder, ENCopyProblem enProblem, int nError,
                                    const QString& strPath) const
{
    m_work.StepBegins(ENCopyStep::WRITING);
    if (m_work.Destination().IsGone() || !CCopyPlatform::Exists(strFolder)) {
        return STCopyReason::DestinationGone();
    }
    if (enProblem == ENCopyProblem::TARGET_FOLDER) {
        return {enProblem, QStringLiteral("its target folder cannot be created"), nError, strPath};
    }
    return {enProblem, QStringLiteral("its target cannot be created"), nError, strPath};
}

bool CTargetEntries::IsRoot(const QString& strPath, const STFileState& stState) const
{
    // Not every file system gives a folder the same number each time that it is looked up.
    return m_stRoot && (m_stRoot->IsSameFile(stState) || strPath == m_strDest);
}

QString CTargetEntries::Below(const QString& strTarget) const { return strTarget.mid(m_strDest.size() + 1); }
