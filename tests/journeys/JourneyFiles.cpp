#include "journeys/JourneyFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

QString BuildPath(const QString& strRelative)
{
    return QFile::decodeName(qgetenv("TARNWICK_BUILD_DIR")) + QLatin1Char('/') + strRelative;
}

void WriteFile(const QString& strPath, const QByteArray& baContent)
{
    QDir().mkpath(QFileInfo(strPath).path());
    QFile file(strPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(baContent) != baContent.size()) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
}
