#include "support/CTreeCompare.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QSet>

static const QDir::Filters ALL_ENTRIES
    = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

static bool IsSameContent(const QString& strLeft, const QString& strRight)
{
    QFile fileLeft(strLeft);
    QFile fileRight(strRight);
    if (!fileLeft.open(QIODevice::ReadOnly) || !fileRight.open(QIODevice::ReadOnly)) {
        return false;
    }
    if (fileLeft.size() != fileRight.size()) {
        return false;
    }
    const qint64 nBlock = 1 << 20;
    while (!fileLeft.atEnd()) {
        if (fileLeft.read(nBlock) != fileRight.read(nBlock)) {
            return false;
        }
    }
    return true;
}

static QString FileDifference(const QFileInfo& infoSource, const QFileInfo& infoCopy)
{
    if (!infoCopy.isFile()) {
        return "is no file: " + infoCopy.filePath();
    }
    if (!IsSameContent(infoSource.filePath(), infoCopy.filePath())) {
        return "other bytes: " + infoCopy.filePath();
    }
    if (infoSource.lastModified().toSecsSinceEpoch() != infoCopy.lastModified().toSecsSinceEpoch()) {
        return "other time: " + infoCopy.filePath();
    }
    return {};
}

QStringList CTreeCompare::Differences(const QString& strSource, const QString& strCopy)
{
    QStringList listDifference;
    const QStringList listSourceName = QDir(strSource).entryList(ALL_ENTRIES, QDir::Name);
    const QStringList listCopyName = QDir(strCopy).entryList(ALL_ENTRIES, QDir::Name);
    const QSet<QString> setSource(listSourceName.begin(), listSourceName.end());
    for (const QString& strName : listCopyName) {
        if (!setSource.contains(strName)) {
            listDifference.append(QString("not in the source: %1/%2").arg(strCopy, strName));
        }
    }
    for (const QString& strName : listSourceName) {
        const QFileInfo infoSource(strSource + '/' + strName);
        const QFileInfo infoCopy(strCopy + '/' + strName);
        if (!infoCopy.exists()) {
            listDifference.append("missing: " + infoCopy.filePath());
        } else if (infoSource.isDir()) {
            listDifference += Differences(infoSource.filePath(), infoCopy.filePath());
        } else {
            const QString strDifference = FileDifference(infoSource, infoCopy);
            if (!strDifference.isEmpty()) {
                listDifference.append(strDifference);
            }
        }
    }
    return listDifference;
}

int CTreeCompare::FileCount(const QString& strFolder)
{
    int nCount = 0;
    QDirIterator it(strFolder, QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    for (; it.hasNext(); it.next()) {
        ++nCount;
    }
    return nCount;
}
