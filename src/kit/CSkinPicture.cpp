#include "kit/CSkinPicture.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>

QPixmap CSkinPicture::Pixmap(const QString& strPath)
{
    return QIcon(strPath).pixmap(QImageReader(strPath).size());
}

QString CSkinPicture::MoviePath(const QString& strPath)
{
    if (qApp->devicePixelRatio() <= 1) {
        return strPath;
    }
    const QFileInfo info(strPath);
    const QString strDouble
        = QStringLiteral("%1/%2@2x.%3").arg(info.path(), info.completeBaseName(), info.suffix());
    return QFile::exists(strDouble) ? strDouble : strPath;
}
