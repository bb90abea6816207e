#include "app/CCommandPath.h"

#include <QCoreApplication>
#include <QDir>

void CCommandPath::Append()
{
    const QString strFolder = QDir::cleanPath(QCoreApplication::applicationDirPath()
                                              + QStringLiteral("/../" TARNWICK_COMMAND_DIR));
    qputenv("PATH", qgetenv("PATH") + ':' + QFile::encodeName(strFolder));
}
