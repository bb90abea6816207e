#include "macos/CFakeMetadata.h"

#include "macos/CFakeFiles.h"
#include "sdk/FileCalls.h"
#include "sdk/sys/acl.h"
#include "sdk/sys/attr.h"
#include "sdk/sys/xattr.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QMutex>
#include <QPair>
#include <QVector>

#include <cerrno>
#include <cstring>
#include <dlfcn.h>
#include <sys/stat.h>

struct _acl_entry
{
    QByteArray baWho;
    acl_tag_t enTag = ACL_UNDEFINED_TAG;
    acl_permset_mask_t nRights = 0;
};

struct _acl
{
    QVector<_acl_entry> listEntry;
    int nLast = -1; // that was got
};

namespace {

struct STBelongings
{
    QMap<QByteArray, QByteArray> mapAttribute;
    qint64 nCreatedSec = 0;
    QByteArray baList;
};

struct STHeld
{
    QString strPart;
    bool bAttributes = true;
    bool bAccessLists = true;
    bool bDates = true;
    bool bPermissions = true;
};

struct STRight
{
    const char* pszName;
    acl_perm_t enRight;
};

const STRight RIGHTS[] = {{"read", ACL_READ_DATA},
                          {"delete", ACL_DELETE},
                          {"delete_child", ACL_DELETE_CHILD},
                          {"writeattr", ACL_WRITE_ATTRIBUTES}};

using Key = QPair<quint64, quint64>; // device and inode

struct STAll
{
    QMutex lock;
    QMap<Key, STBelongings> mapFile;
    QVector<STHeld> listHeld;
};

} // namespace

static STAll& All()
{
    static STAll s_all;
    return s_all;
}

static Key KeyOf(const QString& strPath)
{
    struct stat stRaw = {};
    lstat(QFile::encodeName(strPath).constData(), &stRaw);
    return {quint64(stRaw.st_dev), quint64(stRaw.st_ino)};
}

static STHeld HeldAt(const QString& strPath)
{
    STHeld stFound;
    for (const STHeld& stHeld : qAsConst(All().listHeld)) {
        if (strPath.contains(stHeld.strPart)) {
            stFound = stHeld;
        }
    }
    return stFound;
}

static int End(int nError)
{
    if (nError != 0) {
        errno = nError;
    }
    return nError == 0 ? 0 : -1;
}

/** Whether the file has a list that forbids to change what belongs to it. */
static bool IsForbidden(const QString& strPath)
{
    const QMutexLocker locker(&All().lock);
    return All().mapFile[KeyOf(strPath)].baList.contains("deny writeattr");
}

static acl_t ListOfText(const QByteArray& baList)
{
    const acl_t pList = new _acl;
    for (const QByteArray& baEntry : baList.split(';')) {
        const QList<QByteArray> listPart = baEntry.trimmed().split(' ');
        const bool bDeny = listPart.value(1) == "deny";
        _acl_entry stEntry{listPart.value(0), bDeny ? ACL_EXTENDED_DENY : ACL_EXTENDED_ALLOW, 0};
        for (const STRight& stRight : RIGHTS) {
            const bool bHas = listPart.value(2).split(',').contains(stRight.pszName);
            stEntry.nRights |= bHas ? unsigned(stRight.enRight) : 0U;
        }
        pList->listEntry.append(stEntry);
    }
    return pList;
}

static QByteArray TextOf(const _acl& stList)
{
    QList<QByteArray> listText;
    for (const _acl_entry& stEntry : stList.listEntry) {
        QList<QByteArray> listRight;
        for (const STRight& stRight : RIGHTS) {
            if ((stEntry.nRights & stRight.enRight) != 0) {
                listRight.append(stRight.pszName);
            }
        }
        const char* const pszTag = stEntry.enTag == ACL_EXTENDED_DENY ? " deny " : " allow ";
        listText.append(stEntry.baWho + pszTag + listRight.join(','));
    }
    return listText.join("; ");
}

static acl_t ListOf(const QString& strPath)
{
    const QMutexLocker locker(&All().lock);
    const QByteArray baList = All().mapFile[KeyOf(strPath)].baList;
    errno = ENOENT;
    return baList.isEmpty() ? nullptr : ListOfText(baList);
}

static int SetList(const QString& strPath, acl_t pList)
{
    const int nError = CFakeFiles::Called("acl_set", strPath);
    const QMutexLocker locker(&All().lock);
    if (nError == 0) {
        All().mapFile[KeyOf(strPath)].baList = TextOf(*pList);
    }
    return End(nError);
}

/** What both calls of that answer. */
static int CreationDate(const QString& strPath, void* pAnswer, size_t nSize)
{
    const QMutexLocker locker(&All().lock);
    const struct timespec stDate = {time_t(All().mapFile[KeyOf(strPath)].nCreatedSec), 0};
    const quint32 nBytes = sizeof(quint32) + sizeof(stDate);
    const QByteArray baAnswer = QByteArray(reinterpret_cast<const char*>(&nBytes), sizeof(nBytes))
        + QByteArray(reinterpret_cast<const char*>(&stDate), sizeof(stDate));
    std::memcpy(pAnswer, baAnswer.constData(), qMin(nSize, size_t(baAnswer.size())));
    return 0;
}

static int SetCreationDate(const QString& strCall, const QString& strPath, const void* pWanted,
                           const void* pValues, size_t nSize)
{
    const int nError = CFakeFiles::Called(strCall, strPath);
    struct timespec stDate = {};
    if (nError != 0 || static_cast<const attrlist*>(pWanted)->commonattr != ATTR_CMN_CRTIME
        || nSize != sizeof(stDate)) {
        return End(nError != 0 ? nError : EINVAL);
    }
    std::memcpy(&stDate, pValues, sizeof(stDate));
    const QMutexLocker locker(&All().lock);
    // Some disks say that they have done it.
    if (HeldAt(strPath).bDates) {
        All().mapFile[KeyOf(strPath)].nCreatedSec = stDate.tv_sec;
    }
    return 0;
}

/** Nothing was created after its last change: an older one takes the date of creation along. */
static int TimesSet(int nResult, const QString& strPath, const struct timespec* pTimes)
{
    const QMutexLocker locker(&All().lock);
    if (nResult == 0 && HeldAt(strPath).bDates) {
        qint64& nCreatedSec = All().mapFile[KeyOf(strPath)].nCreatedSec;
        nCreatedSec = qMin(nCreatedSec, qint64(pTimes[1].tv_sec));
    }
    return nResult;
}

/** A call that gives permissions, which not every disk has. */
template <typename Call> static int SetPermissions(const QString& strPath, Call fnCall)
{
    const QMutexLocker locker(&All().lock);
    return HeldAt(strPath).bPermissions ? fnCall() : End(EPERM);
}

void CFakeMetadata::Reset()
{
    const QMutexLocker locker(&All().lock);
    All().mapFile.clear();
    All().listHeld.clear();
}

void CFakeMetadata::SetHolds(const QString& strPart, bool bAttributes, bool bAccessLists, bool bDates,
                             bool bPermissions)
{
    const QMutexLocker locker(&All().lock);
    All().listHeld.append({strPart, bAttributes, bAccessLists, bDates, bPermissions});
}

void CFakeMetadata::SetAttribute(const QString& strPath, const QByteArray& baName, const QByteArray& baValue)
{
    const QMutexLocker locker(&All().lock);
    All().mapFile[KeyOf(strPath)].mapAttribute[baName] = baValue;
}

QByteArray CFakeMetadata::Attribute(const QString& strPath, const QByteArray& baName)
{
    const QMutexLocker locker(&All().lock);
    return All().mapFile[KeyOf(strPath)].mapAttribute.value(baName);
}

QStringList CFakeMetadata::Attributes(const QString& strPath)
{
    const QMutexLocker locker(&All().lock);
    QStringList listName;
    for (const QByteArray& baName : All().mapFile[KeyOf(strPath)].mapAttribute.keys()) {
        listName.append(QString(baName));
    }
    return listName;
}

void CFakeMetadata::SetCreated(const QString& strPath, qint64 nSec)
{
    const QMutexLocker locker(&All().lock);
    All().mapFile[KeyOf(strPath)].nCreatedSec = nSec;
}

qint64 CFakeMetadata::Created(const QString& strPath)
{
    const QMutexLocker locker(&All().lock);
    return All().mapFile[KeyOf(strPath)].nCreatedSec;
}

void CFakeMetadata::SetAccessList(const QString& strPath, const QByteArray& baList)
{
    const QMutexLocker locker(&All().lock);
    All().mapFile[KeyOf(strPath)].baList = baList;
}

QByteArray CFakeMetadata::AccessList(const QString& strPath)
{
    const QMutexLocker locker(&All().lock);
    return All().mapFile[KeyOf(strPath)].baList;
}

unsigned CFakeMetadata::Flags(const QString& strPath)
{
    struct stat stRaw = {};
    lstat(QFile::encodeName(strPath).constData(), &stRaw);
    return unsigned(stRaw.st_flags);
}

extern "C" {

ssize_t flistxattr(int nDescriptor, char* pNames, size_t nSize, int /*nOptions*/)
{
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    if (const int nError = CFakeFiles::Called("flistxattr", strPath)) {
        return End(nError);
    }
    const QMutexLocker locker(&All().lock);
    QByteArray baAll;
    for (const QByteArray& baName : All().mapFile[KeyOf(strPath)].mapAttribute.keys()) {
        baAll += baName + '\0';
    }
    if (pNames != nullptr && nSize < size_t(baAll.size())) {
        return End(ERANGE);
    }
    if (pNames != nullptr) {
        std::memcpy(pNames, baAll.constData(), size_t(baAll.size()));
    }
    return baAll.size();
}

ssize_t fgetxattr(int nDescriptor, const char* pszName, void* pValue, size_t nSize, u_int32_t nPosition,
                  int /*nOptions*/)
{
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    const bool bFork = qstrcmp(pszName, XATTR_RESOURCEFORK_NAME) == 0;
    const QString strCall = QStringLiteral("fgetxattr ") + pszName;
    const int nError = pValue == nullptr ? CFakeFiles::Called(QStringLiteral("size of ") + pszName, strPath)
                                         : CFakeFiles::Called(strCall, strPath, QString::number(nPosition));
    if (nError != 0 || (nPosition != 0 && !bFork)) {
        return End(nError != 0 ? nError : EINVAL);
    }
    const QMutexLocker locker(&All().lock);
    const QMap<QByteArray, QByteArray>& mapAttribute = All().mapFile[KeyOf(strPath)].mapAttribute;
    if (!mapAttribute.contains(pszName)) {
        return End(ENOATTR);
    }
    const QByteArray baValue = mapAttribute.value(pszName);
    if (pValue == nullptr) {
        return baValue.size();
    }
    const QByteArray baPart = baValue.mid(int(nPosition), bFork ? int(nSize) : -1);
    if (size_t(baPart.size()) > nSize) {
        return End(ERANGE);
    }
    std::memcpy(pValue, baPart.constData(), size_t(baPart.size()));
    return baPart.size();
}

int fsetxattr(int nDescriptor, const char* pszName, const void* pValue, size_t nSize, u_int32_t nPosition,
              int /*nOptions*/)
{
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    const QString strWhere = QString::number(nPosition) + '+' + QString::number(nSize);
    const bool bFork = qstrcmp(pszName, XATTR_RESOURCEFORK_NAME) == 0;
    const int nError = CFakeFiles::Called(QStringLiteral("fsetxattr ") + pszName, strPath, strWhere);
    if (nError != 0 || (nPosition != 0 && !bFork)) {
        return End(nError != 0 ? nError : EINVAL);
    }
    if (IsForbidden(strPath)) {
        return End(EPERM);
    }
    const QMutexLocker locker(&All().lock);
    if (!HeldAt(strPath).bAttributes) {
        const QFileInfo info(strPath);
        QFile(info.path() + "/._" + info.fileName()).open(QIODevice::WriteOnly);
    }
    QByteArray& baValue = All().mapFile[KeyOf(strPath)].mapAttribute[pszName];
    if (!bFork) {
        baValue.clear();
    }
    baValue.replace(int(nPosition), int(nSize), QByteArray(static_cast<const char*>(pValue), int(nSize)));
    return 0;
}

int fremovexattr(int nDescriptor, const char* pszName, int /*nOptions*/)
{
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    if (const int nError = CFakeFiles::Called(QStringLiteral("fremovexattr ") + pszName, strPath)) {
        return End(nError);
    }
    const QMutexLocker locker(&All().lock);
    return End(All().mapFile[KeyOf(strPath)].mapAttribute.remove(pszName) > 0 ? 0 : ENOATTR);
}

int fchflags(int nDescriptor, __uint32_t nFlags)
{
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    const int nError = CFakeFiles::Called("fchflags", strPath, QString::number(nFlags, 16));
    if (nError == 0) {
        CFakeFiles::SetFlags(strPath, nFlags);
    }
    return End(nError);
}

int getattrlist(const char* pszPath, void* pWanted, void* pAnswer, size_t nSize, unsigned /*nOptions*/)
{
    const QString strPath = QFile::decodeName(pszPath);
    const int nError = CFakeFiles::Called("getattrlist", strPath);
    const auto* const pList = static_cast<const attrlist*>(pWanted);
    if (nError == 0 && pList->commonattr == ATTR_CMN_CRTIME) {
        return CreationDate(strPath, pAnswer, nSize);
    }
    if (nError != 0 || pList->bitmapcount != ATTR_BIT_MAP_COUNT
        || pList->volattr != (ATTR_VOL_INFO | ATTR_VOL_CAPABILITIES)) {
        return End(nError != 0 ? nError : EINVAL);
    }
    const QMutexLocker locker(&All().lock);
    const STHeld stHeld = HeldAt(strPath);
    const unsigned nKnown = VOL_CAP_INT_EXTENDED_ATTR | VOL_CAP_INT_EXTENDED_SECURITY;
    const quint32 nBytes = sizeof(quint32) + sizeof(vol_capabilities_attr_t);
    vol_capabilities_attr_t stCapabilities = {};
    // What is not valid means nothing.
    stCapabilities.valid[VOL_CAPABILITIES_INTERFACES] = (stHeld.bAttributes ? VOL_CAP_INT_EXTENDED_ATTR : 0)
        | (stHeld.bAccessLists ? VOL_CAP_INT_EXTENDED_SECURITY : 0);
    stCapabilities.capabilities[VOL_CAPABILITIES_INTERFACES] = nKnown;
    stCapabilities.valid[VOL_CAPABILITIES_FORMAT] = stHeld.bPermissions ? 0 : VOL_CAP_FMT_NO_PERMISSIONS;
    stCapabilities.capabilities[VOL_CAPABILITIES_FORMAT] = VOL_CAP_FMT_NO_PERMISSIONS;
    const QByteArray baAnswer = QByteArray(reinterpret_cast<const char*>(&nBytes), sizeof(nBytes))
        + QByteArray(reinterpret_cast<const char*>(&stCapabilities), sizeof(stCapabilities));
    std::memcpy(pAnswer, baAnswer.constData(), qMin(nSize, size_t(baAnswer.size())));
    return 0;
}

int fgetattrlist(int nDescriptor, void* pWanted, void* pAnswer, size_t nSize, unsigned /*nOptions*/)
{
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    const int nError = CFakeFiles::Called("fgetattrlist", strPath);
    if (nError != 0 || static_cast<const attrlist*>(pWanted)->commonattr != ATTR_CMN_CRTIME) {
        return End(nError != 0 ? nError : EINVAL);
    }
    return CreationDate(strPath, pAnswer, nSize);
}

int fsetattrlist(int nDescriptor, void* pWanted, void* pValues, size_t nSize, unsigned /*nOptions*/)
{
    return SetCreationDate("fsetattrlist", CFakeFiles::PathOf(nDescriptor), pWanted, pValues, nSize);
}

int setattrlist(const char* pszPath, void* pWanted, void* pValues, size_t nSize, unsigned /*nOptions*/)
{
    return SetCreationDate("setattrlist", QFile::decodeName(pszPath), pWanted, pValues, nSize);
}

acl_t acl_get_fd_np(int nDescriptor, acl_type_t /*enType*/)
{
    return ListOf(CFakeFiles::PathOf(nDescriptor));
}

acl_t acl_get_file(const char* pszPath, acl_type_t /*enType*/) { return ListOf(QFile::decodeName(pszPath)); }

int acl_set_fd_np(int nDescriptor, acl_t pList, acl_type_t /*enType*/)
{
    return SetList(CFakeFiles::PathOf(nDescriptor), pList);
}

int acl_set_file(const char* pszPath, acl_type_t /*enType*/, acl_t pList)
{
    return SetList(QFile::decodeName(pszPath), pList);
}

int acl_get_entry(acl_t pList, int nEntry, acl_entry_t* pEntry)
{
    const int nAt = nEntry == ACL_NEXT_ENTRY ? pList->nLast + 1 : nEntry;
    if (nAt < 0 || nAt >= pList->listEntry.count()) {
        return End(EINVAL);
    }
    pList->nLast = nAt;
    *pEntry = &pList->listEntry[nAt];
    return 0;
}

int acl_delete_entry(acl_t pList, acl_entry_t pEntry)
{
    const int nAt = int(pEntry - pList->listEntry.constData());
    pList->listEntry.remove(nAt);
    pList->nLast -= pList->nLast >= nAt ? 1 : 0;
    return 0;
}

int acl_get_tag_type(acl_entry_t pEntry, acl_tag_t* pTag)
{
    *pTag = pEntry->enTag;
    return 0;
}

int acl_get_permset_mask_np(acl_entry_t pEntry, acl_permset_mask_t* pMask)
{
    *pMask = pEntry->nRights;
    return 0;
}

int acl_set_permset_mask_np(acl_entry_t pEntry, acl_permset_mask_t nMask)
{
    pEntry->nRights = nMask;
    return 0;
}

int acl_free(void* pList)
{
    delete static_cast<_acl*>(pList);
    return 0;
}

int futimens(int nDescriptor, const struct timespec* pTimes) noexcept
{
    using PFN = int (*)(int, const struct timespec*);
    static const auto s_pfn = reinterpret_cast<PFN>(dlsym(RTLD_NEXT, "futimens"));
    const QString strPath = CFakeFiles::PathOf(nDescriptor);
    return IsForbidden(strPath) ? End(EPERM) : TimesSet(s_pfn(nDescriptor, pTimes), strPath, pTimes);
}

int utimensat(int nFolder, const char* pszPath, const struct timespec* pTimes, int nFlags) noexcept
{
    using PFN = int (*)(int, const char*, const struct timespec*, int);
    static const auto s_pfn = reinterpret_cast<PFN>(dlsym(RTLD_NEXT, "utimensat"));
    const QString strPath = QFile::decodeName(pszPath);
    return IsForbidden(strPath) ? End(EPERM)
                                : TimesSet(s_pfn(nFolder, pszPath, pTimes, nFlags), strPath, pTimes);
}

int fchmod(int nDescriptor, mode_t nMode) noexcept
{
    using PFN = int (*)(int, mode_t);
    static const auto s_pfn = reinterpret_cast<PFN>(dlsym(RTLD_NEXT, "fchmod"));
    return SetPermissions(CFakeFiles::PathOf(nDescriptor), [&] { return s_pfn(nDescriptor, nMode); });
}

int chmod(const char* pszPath, mode_t nMode) noexcept
{
    using PFN = int (*)(const char*, mode_t);
    static const auto s_pfn = reinterpret_cast<PFN>(dlsym(RTLD_NEXT, "chmod"));
    return SetPermissions(QFile::decodeName(pszPath), [&] { return s_pfn(pszPath, nMode); });
}
}
