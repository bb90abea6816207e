#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

void WriteFile(const QString& strPath, const QByteArray& baContent)
{
    QFile file(strPath);
    if (!QDir().mkpath(QFileInfo(strPath).path()) || !file.open(QIODevice::WriteOnly)
        || file.write(baContent) != baContent.size()) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
}

QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<cannot be read>");
}

QByteArray Pattern(qint64 nSize)
{
    QByteArray baContent(int(nSize), Qt::Uninitialized);
    quint32 nState = 12345;
    for (char& cByte : baContent) {
        nState = nState * 1664525 + 1013904223;
        cByte = char(nState >> 24);
    }
    return baContent;
}

QString BuildPath(const QString& strRelative)
{
    return QFile::decodeName(qgetenv("TARNWICK_BUILD_DIR")) + '/' + strRelative;
}
