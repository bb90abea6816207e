#include "copy/CCopyWalk.h"

#include "copy/CDiskCopy.h"
#include "copy/CNodeWalk.h"
#include "tree/CDirNode.h"

std::unique_ptr<CCopyWalk> CCopyWalk::Of(CDirNode& root, CCopyWork& work, const QString& strDest)
{
    if (root.m_bComplete) {
        return std::make_unique<CDiskCopy>(root, work, strDest);
    }
    return std::make_unique<CNodeWalk>(root, work, strDest);
}

QString CCopyWalk::PlaceOf(QString strPath)
{
    const QLatin1String volumes("/Volumes/");
    if (strPath.startsWith(volumes)) {
        strPath.remove(0, volumes.size());
    }
    return strPath;
}
