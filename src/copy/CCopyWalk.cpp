#include "copy/CCopyWalk.h"

QString CCopyWalk::PlaceOf(QString strPath)
{
    const QLatin1String volumes("/Volumes/");
    if (strPath.startsWith(volumes)) {
        strPath.remove(0, volumes.size());
    }
    return strPath;
}
