#include "tree/CDirListing.h"

#include "files/CFileName.h"
#include "files/CFolderReader.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <vector>

namespace {

/** A name with the kind of its entry and what it is sorted by. */
struct STFoundName
{
    QString strName;
    QString strKey;
    bool bDir = false;
    bool bLink = false;
};

}

static bool BeginsWithAny(const char* pszName, std::initializer_list<QLatin1String> listSkip)
{
    return std::any_of(listSkip.begin(), listSkip.end(), [pszName](QLatin1String strPrefix) {
        return std::strncmp(pszName, strPrefix.data(), size_t(strPrefix.size())) == 0;
    });
}

/** The names that are kept; counts the others in nLeftOut. */
static std::vector<STFoundName> ReadNames(CFolderReader& folder,
                                          std::initializer_list<QLatin1String> listSkip,
                                          const PFNListedFile& fnFile, int& nLeftOut)
{
    std::vector<STFoundName> listFound;
    while (folder.Next()) {
        if (BeginsWithAny(folder.Name(), listSkip)) {
            ++nLeftOut;
            continue;
        }
        // Qt's own listing is not used: it drops names that are not valid UTF-8
        // where no codec is asked, and in it names that differ only in case come
        // in an order that changes from call to call.
        const QString strName = CFileName::Decode(folder.Name());
        listFound.push_back({strName, strName.toLower(), folder.IsFolder(), folder.IsLink()});
        if (fnFile && !listFound.back().bDir) {
            fnFile(folder.Descriptor(), folder.Name());
        }
    }
    return listFound;
}

static bool ComesBefore(const STFoundName& stLeft, const STFoundName& stRight)
{
    if (stLeft.bDir != stRight.bDir) {
        return stLeft.bDir;
    }
    const int nOrder = stLeft.strKey.compare(stRight.strKey);
    return nOrder != 0 ? nOrder < 0 : stLeft.strName < stRight.strName;
}

/** Whether a path is the folder or lies in it. */
static bool Contains(const QByteArray& baFolder, const QByteArray& baPath)
{
    return baFolder == "/" || baFolder == baPath || baPath.startsWith(baFolder + '/');
}

static bool IsLink(const QByteArray& baPath)
{
    struct stat stRaw;
    return lstat(baPath.constData(), &stRaw) == 0 && S_ISLNK(stRaw.st_mode);
}

/** The path with all links resolved; empty when there is nothing. */
static QByteArray Resolved(const QByteArray& baPath)
{
    const std::unique_ptr<char, void (*)(void*)> pResolved(realpath(baPath.constData(), nullptr), std::free);
    return QByteArray(pResolved.get());
}

STDirListing CDirListing::List(const QString& strFolder, std::initializer_list<QLatin1String> listSkip,
                               const PFNListedFile& fnFile)
{
    CFolderReader folder(CFileName::Encode(strFolder).constData());
    STDirListing stListing;
    std::vector<STFoundName> listFound = ReadNames(folder, listSkip, fnFile, stListing.nLeftOut);
    std::sort(listFound.begin(), listFound.end(), ComesBefore);

    stListing.nError = folder.Error();
    const QString strPrefix = strFolder.endsWith(QLatin1Char('/')) ? strFolder : strFolder + QLatin1Char('/');
    stListing.listEntry.reserve(int(listFound.size()));
    for (const STFoundName& stFound : listFound) {
        stListing.listEntry.append(
            {CNodeFileInfo(strPrefix, stFound.strName), stFound.strName, stFound.bDir, stFound.bLink});
    }
    return stListing;
}

STDirListing CDirListing::List(const STFolderToList& stFolder, std::initializer_list<QLatin1String> listSkip,
                               const PFNListedFile& fnFile)
{
    if (LeadsBack(stFolder)) {
        STDirListing stRefused;
        stRefused.nError = ELOOP;
        return stRefused;
    }
    return List(stFolder.strPath, listSkip, fnFile);
}

STEntryKind CDirListing::KindOf(const QString& strPath)
{
    const QByteArray baPath = CFileName::Encode(strPath);
    struct stat stRaw;
    const bool bDir = stat(baPath.constData(), &stRaw) == 0 && S_ISDIR(stRaw.st_mode);
    return {bDir, IsLink(baPath)};
}

bool CDirListing::LeadsBack(const STFolderToList& stFolder)
{
    const QByteArray baFolder = CFileName::Encode(stFolder.strPath);
    if (stFolder.listAbove.isEmpty() || !IsLink(baFolder)) {
        return false;
    }
    const QByteArray baTarget = Resolved(baFolder);
    if (baTarget.isEmpty()) {
        return false;
    }
    return std::any_of(stFolder.listAbove.begin(), stFolder.listAbove.end(), [&](const QString& strPath) {
        const QByteArray baAbove = Resolved(CFileName::Encode(strPath));
        return !baAbove.isEmpty() && Contains(baTarget, baAbove);
    });
}
