#include "support/CFakeCommands.h"

#include <QDir>
#include <QFile>

CFakeCommands::CFakeCommands()
    : m_baPathBefore(qgetenv("PATH"))
{
    if (!m_dir.isValid() || !QDir(m_dir.path()).mkdir("calls")) {
        qFatal("fixture failed: %s", qPrintable(m_dir.errorString()));
    }
    qputenv("PATH", QFile::encodeName(m_dir.path()) + ':' + m_baPathBefore);
}

CFakeCommands::~CFakeCommands() { qputenv("PATH", m_baPathBefore); }

void CFakeCommands::Add(const QString& strName, const QString& strBody)
{
    QFile file(m_dir.filePath(strName));
    const QString strScript
        = QString("#!/bin/sh\nCALLS='%1/calls'\nprintf '%s\\n' \"$*\" >>\"$CALLS/%2\"\n%3\n")
              .arg(m_dir.path(), strName, strBody);
    if (!file.open(QIODevice::WriteOnly) || file.write(strScript.toUtf8()) < 0
        || !file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner)) {
        qFatal("fixture failed: %s", qPrintable(file.fileName()));
    }
}

void CFakeCommands::AddDiskutil(const QString& strBefore)
{
    Add("diskutil", strBefore + R"(
bus=PCI-Express
case $3 in */sd*) bus=USB ;; esac
printf '<?xml version="1.0"?><plist version="1.0"><dict><key>BusProtocol</key><string>%s</string></dict></plist>' $bus)");
}

QStringList CFakeCommands::Calls(const QString& strName) const
{
    const QString strRecord = QString::fromUtf8(Written(strName));
    return strRecord.split('\n', Qt::SkipEmptyParts);
}

QByteArray CFakeCommands::Written(const QString& strFile) const
{
    QFile file(m_dir.filePath("calls/" + strFile));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
