#include "support/CToolCompare.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

/** What the tool writes to both its outputs; whoever looks for differences sees what went wrong, too. */
static QByteArray Output(const QString& strTool, const QStringList& listArgument)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C");
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(strTool, listArgument, QIODevice::ReadOnly);
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit) {
        return "cannot run " + strTool.toUtf8();
    }
    return process.readAll();
}

static QStringList Split(const QByteArray& baText, char cEnd)
{
    QStringList listPart;
    for (const QByteArray& baPart : baText.split(cEnd)) {
        if (!baPart.isEmpty()) {
            listPart.append(QFile::decodeName(baPart));
        }
    }
    return listPart;
}

bool CToolCompare::IsAvailable()
{
    for (const char* pszTool : {"rsync", "diff", "find", "md5sum"}) {
        if (QStandardPaths::findExecutable(pszTool).isEmpty()) {
            return false;
        }
    }
    return true;
}

QStringList CToolCompare::RsyncDifferences(const QString& strSource, const QString& strCopy, bool bAttributes)
{
    // -O and -J are not given: times of folders and links count. A window of -1 counts nanoseconds.
    QStringList listArgument{"-n", "-c", "-a", "-x", "-i", "--delete", "--modify-window=-1"};
    if (bAttributes) {
        listArgument.append("-X");
    }
    return Split(Output("rsync", listArgument + QStringList{"--", strSource + '/', strCopy + '/'}), '\n');
}

QStringList CToolCompare::DiffDifferences(const QString& strSource, const QString& strCopy)
{
    return Split(Output("diff", {"-r", "-q", "--no-dereference", "--", strSource, strCopy}), '\n');
}

STToolCount CToolCompare::Count(const QString& strFolder)
{
    STToolCount stCount;
    const QStringList listArgument{strFolder, "-xdev", "-mindepth", "1", "-printf", "%y %s\n"};
    for (const QString& strLine : Split(Output("find", listArgument), '\n')) {
        switch (strLine.at(0).toLatin1()) {
        case 'f':
            ++stCount.nFiles;
            stCount.nBytes += strLine.mid(2).toLongLong();
            break;
        case 'd':
            ++stCount.nFolders;
            break;
        case 'l':
            ++stCount.nLinks;
            break;
        default:
            ++stCount.nOthers;
        }
    }
    return stCount;
}

QStringList CToolCompare::Contents(const QString& strFolder)
{
    static const char SCRIPT[] = "cd \"$1\" && find . -type f -print0 | xargs -0 -r md5sum -z";
    QStringList listSum;
    for (const QString& strLine : Split(Output("sh", {"-c", SCRIPT, "sh", strFolder}), '\0')) {
        listSum.append(strLine.section(' ', 0, 0));
    }
    listSum.sort();
    return listSum;
}

QStringList CToolCompare::Links(const QString& strFolder)
{
    QStringList listLink
        = Split(Output("find", {strFolder, "-xdev", "-type", "l", "-printf", "%P -> %l\\0"}), '\0');
    listLink.sort();
    return listLink;
}

QString CToolCompare::Digest(const QString& strFolder)
{
    static const char SCRIPT[] = "cd \"$1\" && export LC_ALL=C && {"
                                 " find . -type f -print0 | sort -z | xargs -0 -r md5sum;"
                                 " find . -type f -printf '%m %p\\0' | sort -z;"
                                 " find . -type f ! -newermt 2020-01-01 -printf '%T@ %p\\0' | sort -z;"
                                 " find . ! -type f -printf '%y %l %p\\0' | sort -z; } | md5sum";
    return QString::fromLatin1(Output("sh", {"-c", SCRIPT, "sh", strFolder}).left(32));
}
