#include "tree/CDirListing.h"

#include "files/CFolderReader.h"
#include "tree/CDirNode.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

/** A name with the kind of its entry and what it is sorted by. */
struct STFoundName
{
    QString m_strName;
    QString m_strKey;
    bool m_bDir;
    bool m_bLink;
};

static bool BeginsWithAny(const char* pszName, std::initializer_list<QLatin1String> listSkip)
{
    return std::any_of(listSkip.begin(), listSkip.end(), [pszName](QLatin1String strPrefix) {
        return std::strncmp(pszName, strPrefix.data(), size_t(strPrefix.size())) == 0;
    });
}

static QVector<STFoundName> ReadNames(CFolderReader& folder, std::initializer_list<QLatin1String> listSkip)
{
    QVector<STFoundName> listFound;
    while (folder.Next()) {
        if (BeginsWithAny(folder.Name(), listSkip)) {
            continue;
        }
        // Qt's own listing is not used: it drops names that are not valid UTF-8
        // where no codec is asked, and in it names that differ only in case come
        // in an order that changes from call to call.
        const QString strName = QFile::decodeName(folder.Name());
        listFound.append({strName, strName.toLower(), folder.IsFolder(), folder.IsLink()});
    }
    return listFound;
}

static bool ComesBefore(const STFoundName& stLeft, const STFoundName& stRight)
{
    if (stLeft.m_bDir != stRight.m_bDir) {
        return stLeft.m_bDir;
    }
    const int nOrder = stLeft.m_strKey.compare(stRight.m_strKey);
    return nOrder != 0 ? nOrder < 0 : stLeft.m_strName < stRight.m_strName;
}

static bool Contains(const QString& strFolder, const QString& strPath)
{
    if (strFolder == QLatin1String("/") || strFolder == strPath) {
        return true;
    }
    return strPath.startsWith(strFolder) && strPath.at(strFolder.size()) == QLatin1Char('/');
}

/** Where `node` really is, all links resolved; empty when it has no path or is gone. */
static QString RealPath(const CDirNode& node)
{
    const QString strPath = node.m_fileInfo.filePath();
    return strPath.isEmpty() ? QString() : QFileInfo(strPath).canonicalFilePath();
}

/** One path of exactly its length: the usual ways to join strings leave room for more in every node. */
static QString Joined(const QString& strPrefix, const QString& strName)
{
    QString strPath(strPrefix.size() + strName.size(), Qt::Uninitialized);
    std::copy(strPrefix.begin(), strPrefix.end(), strPath.begin());
    std::copy(strName.begin(), strName.end(), strPath.begin() + strPrefix.size());
    return strPath;
}

STDirListing CDirListing::List(const CDirNode& node, std::initializer_list<QLatin1String> listSkip)
{
    STDirListing stListing;
    if (LeadsBack(node)) {
        stListing.m_nError = ELOOP;
        return stListing;
    }
    const QString strFolder = node.m_fileInfo.absoluteFilePath();
    CFolderReader folder(QFile::encodeName(strFolder).constData());
    QVector<STFoundName> listFound = ReadNames(folder, listSkip);
    stListing.m_nError = folder.Error();
    std::sort(listFound.begin(), listFound.end(), ComesBefore);

    const QString strPrefix = strFolder.endsWith(QLatin1Char('/')) ? strFolder : strFolder + QLatin1Char('/');
    stListing.m_listEntry.reserve(listFound.size());
    for (const STFoundName& stFound : qAsConst(listFound)) {
        stListing.m_listEntry.append({QFileInfo(Joined(strPrefix, stFound.m_strName)), stFound.m_strName,
                                      stFound.m_bDir, stFound.m_bLink});
    }
    return stListing;
}

bool CDirListing::LeadsBack(const CDirNode& node)
{
    if (!node.m_fileInfo.isSymLink()) {
        return false;
    }
    const QString strTarget = RealPath(node);
    if (strTarget.isEmpty()) {
        return false;
    }
    for (const CDirNode* pAbove = node.m_pParent; pAbove; pAbove = pAbove->m_pParent) {
        const QString strAbove = RealPath(*pAbove);
        if (!strAbove.isEmpty() && Contains(strTarget, strAbove)) {
            return true;
        }
    }
    return false;
}
