#include "copy/CWalkChoice.h"

#include "copy/CCopyWork.h"
#include "copy/CDiskCopy.h"
#include "copy/CNodeWalk.h"
#include "tree/CDirNode.h"

std::unique_ptr<CCopyWalk> CWalkChoice::Of(CDirNode& root, CCopyWork& work, const QString& strDest)
{
    // After a stop the nodes are not the copy's any more.
    if (!work.IsStopped() && root.m_bComplete) {
        return std::make_unique<CDiskCopy>(root, work, strDest);
    }
    return std::make_unique<CNodeWalk>(root, work, strDest);
}
