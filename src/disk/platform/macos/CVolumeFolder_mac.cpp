#include "disk/platform/CVolumeFolder.h"

#include <QDir>

// The system hides volumes by a flag of their own as well.
QStringList CVolumeFolder::Names(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
}
