#include "support/LogFile.h"

#include "log/CLogTarnwick.h"
#include "support/TestFiles.h"

#include <QCoreApplication>
#include <QDir>

static const int STAMP_LENGTH = int(sizeof("yyyy-MM-dd hh:mm:ss.zzz: ")) - 1;

static QString Folder() { return QCoreApplication::applicationDirPath() + "/Log"; }

QString UseLogFile()
{
    QDir(Folder()).removeRecursively();
    if (!g_TarnwickLog.InitFolder("Log", 5242880, "TarnwickMacPE", ".log")) {
        qFatal("fixture failed: no log");
    }
    return Folder();
}

QStringList LogLines()
{
    QStringList listLine;
    const QDir dir(Folder());
    const QStringList listName = dir.entryList(QDir::Files, QDir::Name);
    for (const QString& strName : listName) {
        const QList<QByteArray> listRaw = Content(dir.filePath(strName)).split('\n');
        for (const QByteArray& baLine : listRaw) {
            if (!baLine.isEmpty()) {
                listLine.append(QString::fromUtf8(baLine).mid(STAMP_LENGTH));
            }
        }
    }
    return listLine;
}

QString Problem(const QString& strPath, const QString& strRest)
{
    return "Not copied whole: \"" + strPath + "\": " + strRest;
}

QStringList ProblemLines() { return LogLines().filter("Not copied whole: "); }

QString Summary() { return LogLines().isEmpty() ? QString() : LogLines().last(); }
