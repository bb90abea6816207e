#include "copy/CCopyPlatform.h"
#include "copy/CCopyWork.h"
#include "copy/CFileAttributes.h"
#include "copy/CFileMetadata.h"
#include "copy/CLastMetadata.h"
#include "files/CDescriptor.h"
#include "files/CFileName.h"

#include <QList>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <sys/attr.h>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

// Other flags are the system's, or would keep the copy from being finished or thrown away.
static const unsigned KEPT_FLAGS = UF_NODUMP | UF_HIDDEN;
static const unsigned LOCKS = UF_IMMUTABLE | UF_APPEND | SF_IMMUTABLE | SF_APPEND;

// A fork is given in pieces, as it may be as large as a film.
static const qint64 FORK_PIECE = qint64(4) * 1024 * 1024;

// Of the Finder's information: where its flags stand, and the one that hides an item.
static const int FINDER_FLAGS_AT = 8;
static const char FINDER_HIDDEN = 0x40;

namespace {

// What getattrlist answers is packed to four bytes.
#pragma pack(push, 4)
struct STCapabilities
{
    quint32 nBytes = 0;
    vol_capabilities_attr_t stCapabilities = {};
};
#pragma pack(pop)

} // namespace

/** Whether the system keeps it for itself, refuses it to programs, and it says nothing of the file. */
static bool IsSystems(const QByteArray& baName)
{
    return baName == "com.apple.provenance" || baName == "com.apple.macl" || baName == "com.apple.rootless";
}

static bool IsFinders(const QByteArray& baName)
{
    return baName == XATTR_FINDERINFO_NAME || baName == "com.apple.metadata:_kMDItemUserTags";
}

static std::optional<QVector<QByteArray>> NamesOf(int nDescriptor)
{
    const std::optional<QByteArray> baAll = CFileAttributes::Filled(
        [nDescriptor](char* pBuf, size_t nSize) { return flistxattr(nDescriptor, pBuf, nSize, 0); });
    if (!baAll && errno != ENOTSUP) {
        return std::nullopt;
    }
    QVector<QByteArray> listName;
    for (const QByteArray& baName : baAll.value_or(QByteArray()).split('\0')) {
        if (!baName.isEmpty() && !IsSystems(baName)) {
            listName.append(baName);
        }
    }
    return listName;
}

/** Sets a part of an attribute, with room that the copy gives up where there is none. */
static bool SetPart(CCopyControl& control, int nDescriptor, const char* pszName, const QByteArray& baPart,
                    qint64 nFrom, qint64 nMissing)
{
    do {
        control.StepBegins(ENCopyStep::WRITING);
        if (fsetxattr(nDescriptor, pszName, baPart.constData(), size_t(baPart.size()), quint32(nFrom), 0)
            == 0) {
            return true;
        }
    } while (IsNoRoom(errno) && control.MakeRoom(nMissing));
    return false;
}

/** Lets who may read the copy execute it as well, where that held for the source. */
static bool GiveExecutable(int nTarget, unsigned nMode)
{
    struct stat stTarget = {};
    if ((nMode & 0111U) == 0 || fstat(nTarget, &stTarget) != 0) {
        return true;
    }
    const unsigned nOld = unsigned(stTarget.st_mode) & 07777U;
    const unsigned nNew = nOld | (nMode & ((nOld & 0444U) >> 2));
    return nNew == nOld || fchmod(nTarget, mode_t(nNew)) == 0;
}

static bool GiveFlags(int nTarget, unsigned nFlags)
{
    struct stat stTarget = {};
    return nFlags == 0
        || (fstat(nTarget, &stTarget) == 0 && fchflags(nTarget, unsigned(stTarget.st_flags) | nFlags) == 0);
}

std::optional<STCopyReason> CFileMetadata::GiveToFile(CCopyControl& control, const QString& strName,
                                                      int nSource, int nTarget)
{
    m_listItem = {};
    control.StepBegins(ENCopyStep::READING);
    std::optional<STPair> stPair = Look(nSource, nTarget);
    if (!stPair) {
        return std::nullopt;
    }
    stPair->bFolderIcon = strName == QLatin1String("Icon\r");
    return Give(control, *stPair);
}

void CFileMetadata::GiveToFolder(CCopyControl& control, const QString& strSource, const QString& strTarget)
{
    m_listItem = {};
    control.StepBegins(ENCopyStep::READING);
    const std::optional<STFileState> stState = CCopyPlatform::GetPathState(strSource);
    if (stState && stState->bOnlyInCloud) {
        return; // opened, it might be fetched
    }
    const CDescriptor source(CCopyPlatform::OpenFolder(strSource));
    control.StepBegins(ENCopyStep::WRITING);
    const CDescriptor target(CCopyPlatform::OpenFolder(strTarget));
    const std::optional<STPair> stPair = Look(source.Get(), target.Get());
    if (stPair) {
        Give(control, *stPair);
    }
}

void CFileMetadata::FinishFolder(CCopyWork& work, const QString& strSource, const QString& strTarget)
{
    work.ItemBegins(strSource);
    GiveToFolder(work, strSource, strTarget);
    work.StepBegins(ENCopyStep::READING);
    const std::optional<STFileState> stSource = CCopyPlatform::GetPathState(strSource);
    work.StepBegins(ENCopyStep::WRITING);
    const bool bSet = stSource && CCopyPlatform::SetTimes(strTarget, *stSource);
    const std::optional<STFileState> stTarget = CCopyPlatform::GetPathState(strTarget);
    if (!stSource || !stTarget) {
        return; // whose disk has gone is told of that
    }
    Count(LOST_FOLDER_TIMES, bSet && CCopyPlatform::IsModifiedAlike(*stSource, *stTarget));
    GiveFolderLast(work, strSource, strTarget);
}

static bool IsOneOf(const struct statfs& stVolume, std::initializer_list<const char*> listKind)
{
    return std::any_of(listKind.begin(), listKind.end(), [&stVolume](const char* pszKind) {
        return std::strcmp(stVolume.f_fstypename, pszKind) == 0;
    });
}

/** What the disk that holds the open file says of itself. */
CFileMetadata::STHolds CFileMetadata::HoldsOf(int nDescriptor)
{
    struct statfs stVolume;
    if (fstatfs(nDescriptor, &stVolume) != 0) {
        return {};
    }
    const bool bForeign = IsOneOf(stVolume, {"msdos", "exfat", "ntfs"});
    struct attrlist stWanted = {};
    stWanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    stWanted.volattr = ATTR_VOL_INFO | ATTR_VOL_CAPABILITIES;
    STCapabilities stAnswer;
    if (getattrlist(stVolume.f_mntonname, &stWanted, &stAnswer, sizeof(stAnswer), 0) != 0) {
        const bool bMacs = IsOneOf(stVolume, {"apfs", "hfs"});
        return {bMacs, bMacs, !bForeign};
    }
    const auto fnValid = [&stAnswer](int nWhich) {
        return stAnswer.stCapabilities.capabilities[nWhich] & stAnswer.stCapabilities.valid[nWhich];
    };
    const quint32 nHolds = fnValid(VOL_CAPABILITIES_INTERFACES);
    const bool bNone = (fnValid(VOL_CAPABILITIES_FORMAT) & VOL_CAP_FMT_NO_PERMISSIONS) != 0;
    return {(nHolds & VOL_CAP_INT_EXTENDED_ATTR) != 0, (nHolds & VOL_CAP_INT_EXTENDED_SECURITY) != 0,
            !bNone && !bForeign};
}

/** Nothing when one of them is not open, or gone. */
std::optional<CFileMetadata::STPair> CFileMetadata::Look(int nSource, int nTarget)
{
    struct stat stSource = {};
    if (nTarget == -1 || fstat(nSource, &stSource) != 0) {
        return std::nullopt;
    }
    STPair stPair;
    stPair.nSource = nSource;
    stPair.nTarget = nTarget;
    stPair.nDevice = quint64(stSource.st_dev);
    stPair.nBytes = stSource.st_size;
    stPair.nMode = unsigned(stSource.st_mode);
    stPair.nFlags = unsigned(stSource.st_flags);
    stPair.bFolder = S_ISDIR(stSource.st_mode);
    return stPair;
}

/**
 * Whether both disks hold the attributes of a file in a second one of the name "._": that is there as
 * a file on both, and is copied as any other. Looks at each disk once.
 */
bool CFileMetadata::HasOwnFiles(const STPair& stPair)
{
    if (!m_stSource || m_nSourceDevice != stPair.nDevice) {
        m_stSource = HoldsOf(stPair.nSource);
        m_nSourceDevice = stPair.nDevice;
    }
    if (!m_stTarget) {
        m_stTarget = HoldsOf(stPair.nTarget);
        m_bTakesAttributes = m_stTarget->bAttributes || qgetenv("TARNWICK_APPLEDOUBLE") == "1";
    }
    return !m_stSource->bAttributes && !m_stTarget->bAttributes;
}

std::optional<STCopyReason> CFileMetadata::Give(CCopyControl& control, const STPair& stPair)
{
    const std::optional<STCopyReason> stReason
        = HasOwnFiles(stPair) ? std::nullopt : GiveAttributes(control, stPair);
    if (stReason && stReason->enProblem == ENCopyProblem::STOPPED) {
        return stReason;
    }
    control.StepBegins(ENCopyStep::WRITING);
    // Where no permissions are kept every file looks like a program.
    const bool bExecutable = m_bPermissions && !stPair.bFolder && m_stSource->bPermissions;
    Count(LOST_PERMISSIONS, !bExecutable || GiveExecutable(stPair.nTarget, stPair.nMode));
    const unsigned nKept = stPair.bFolder ? KEPT_FLAGS & ~unsigned(UF_HIDDEN) : KEPT_FLAGS;
    Count(LOST_ATTRIBUTES, GiveFlags(stPair.nTarget, stPair.nFlags & nKept));
    Count(LOST_LOCKS, (stPair.nFlags & LOCKS) == 0);
    return stReason;
}

std::optional<STCopyReason> CFileMetadata::GiveAttributes(CCopyControl& control, const STPair& stPair)
{
    control.StepBegins(ENCopyStep::READING);
    const std::optional<QVector<QByteArray>> listName = NamesOf(stPair.nSource);
    std::optional<STCopyReason> stReason;
    bool bFinder = true;
    bool bOthers = listName.has_value();
    for (const QByteArray& baName : listName.value_or(QVector<QByteArray>())) {
        if (baName == XATTR_RESOURCEFORK_NAME) {
            stReason = GiveFork(control, stPair);
        } else if (!GiveAttribute(control, stPair, baName)) {
            (IsFinders(baName) ? bFinder : bOthers) = false;
        }
    }
    Count(LOST_FINDER, bFinder);
    Count(LOST_ATTRIBUTES, bOthers);
    return stReason;
}

bool CFileMetadata::GiveAttribute(CCopyControl& control, const STPair& stPair, const QByteArray& baName) const
{
    if (!m_bTakesAttributes) {
        return false;
    }
    control.StepBegins(ENCopyStep::READING);
    std::optional<QByteArray> baValue = CFileAttributes::Filled([&](char* pBuf, size_t nSize) {
        return fgetxattr(stPair.nSource, baName.constData(), pBuf, nSize, 0, 0);
    });
    if (!baValue) {
        return false;
    }
    if (stPair.bFolder && baName == XATTR_FINDERINFO_NAME && baValue->size() > FINDER_FLAGS_AT) {
        // Who looks for what was in a hidden folder has to see it.
        (*baValue)[FINDER_FLAGS_AT] = char(baValue->at(FINDER_FLAGS_AT) & ~FINDER_HIDDEN);
    }
    return SetPart(control, stPair.nTarget, baName.constData(), *baValue, 0, baValue->size());
}

/** A fork that the disk does not hold: what that means for the file. */
std::optional<STCopyReason> CFileMetadata::ForkNotHeld(const STPair& stPair)
{
    if (stPair.nBytes == 0 && !stPair.bFolder && !stPair.bFolderIcon) {
        return STCopyReason{ENCopyProblem::FORK_NEEDED,
                            QStringLiteral("all it has is a resource fork, which the disk cannot hold")};
    }
    Count(LOST_FORKS, false);
    return std::nullopt;
}

/** A fork that could not be written to its end: a part of one would be taken for the whole. */
std::optional<STCopyReason> CFileMetadata::ForkNotWritten(const STPair& stPair, int nError)
{
    fremovexattr(stPair.nTarget, XATTR_RESOURCEFORK_NAME, 0);
    if (nError == ENOTSUP || nError == EPERM || nError == EACCES) {
        return ForkNotHeld(stPair);
    }
    return STCopyReason{ENCopyProblem::TARGET_WRITE, QStringLiteral("its resource fork cannot be written"),
                        nError};
}

static STCopyReason ForkUnread(int nError)
{
    return {ENCopyProblem::FORK_READ, QStringLiteral("its resource fork cannot be read"), nError};
}

std::optional<STCopyReason> CFileMetadata::GiveFork(CCopyControl& control, const STPair& stPair)
{
    control.StepBegins(ENCopyStep::READING);
    const qint64 nSize = fgetxattr(stPair.nSource, XATTR_RESOURCEFORK_NAME, nullptr, 0, 0, 0);
    if (nSize == 0 || (nSize < 0 && errno == ENOATTR)) {
        return std::nullopt;
    }
    if (nSize < 0) {
        return ForkUnread(errno);
    }
    if (!m_bTakesAttributes || nSize > std::numeric_limits<quint32>::max()) {
        return ForkNotHeld(stPair);
    }
    return CopyFork(control, stPair, nSize);
}

std::optional<STCopyReason> CFileMetadata::CopyFork(CCopyControl& control, const STPair& stPair, qint64 nSize)
{
    for (qint64 nDone = 0; nDone < nSize;) {
        if (!control.WaitWhilePaused()) {
            return STCopyReason{ENCopyProblem::STOPPED, QStringLiteral("the copy was stopped")};
        }
        control.StepBegins(ENCopyStep::READING);
        QByteArray baPiece(int(qMin(nSize - nDone, FORK_PIECE)), Qt::Uninitialized);
        errno = 0;
        const qint64 nRead = fgetxattr(stPair.nSource, XATTR_RESOURCEFORK_NAME, baPiece.data(),
                                       size_t(baPiece.size()), quint32(nDone), 0);
        if (nRead <= 0) {
            return ForkUnread(errno);
        }
        baPiece.truncate(int(nRead));
        if (!SetPart(control, stPair.nTarget, XATTR_RESOURCEFORK_NAME, baPiece, nDone, nSize - nDone)) {
            return ForkNotWritten(stPair, errno);
        }
        nDone += nRead;
    }
    control.StepBegins(ENCopyStep::WRITING);
    const qint64 nKept = fgetxattr(stPair.nTarget, XATTR_RESOURCEFORK_NAME, nullptr, 0, 0, 0);
    return nKept == nSize ? std::nullopt : ForkNotWritten(stPair, 0);
}

void CFileMetadata::GiveLast(CCopyControl& control, int nSource, int nTarget)
{
    const bool bHolds = m_stTarget && m_stTarget->bAccessLists;
    const STLastEntry stSource = {nSource, QByteArray()};
    const STLastEntry stTarget = {nTarget, QByteArray()};
    Count(LOST_CREATION_DATES, CLastMetadata::GiveCreationDate(control, stSource, stTarget));
    Count(LOST_ACCESS_LISTS, CLastMetadata::GiveAccessList(control, stSource, stTarget, bHolds));
}

void CFileMetadata::GiveFolderLast(CCopyControl& control, const QString& strSource, const QString& strTarget)
{
    const bool bHolds = m_stTarget && m_stTarget->bAccessLists;
    const STLastEntry stSource = {-1, CFileName::Encode(strSource)};
    const STLastEntry stTarget = {-1, CFileName::Encode(strTarget)};
    Count(LOST_CREATION_DATES, CLastMetadata::GiveCreationDate(control, stSource, stTarget));
    Count(LOST_ACCESS_LISTS, CLastMetadata::GiveAccessList(control, stSource, stTarget, bHolds));
    FileEnds();
}
