#include "app/CCommandPath.h"

#include <QCoreApplication>
#include <QFile>

void CCommandPath::Append()
{
    // The folder of the executable itself, also when a link elsewhere has started it.
    qputenv("PATH", qgetenv("PATH") + ':' + QFile::encodeName(QCoreApplication::applicationDirPath()));
}
