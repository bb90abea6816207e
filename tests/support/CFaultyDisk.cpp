#include "support/CFaultyDisk.h"

#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QTest>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

static dev_t DeviceOf(const QString& strPath)
{
    struct stat status = {};
    return stat(QFile::encodeName(strPath).constData(), &status) == 0 ? status.st_dev : 0;
}

CFaultyDisk::CFaultyDisk(const QString& strName, const QString& strDeviceNode, int nMiB)
    : m_strPath("/Volumes/" + strName)
    , m_strRules(m_dir.filePath("rules"))
{
    const QString strBehind = m_dir.filePath("behind");
    if (!CVolume::Mount("memory", QFile::encodeName(strBehind), "size=" + QByteArray::number(nMiB) + "m")) {
        return;
    }
    QDir().mkpath(m_strPath);
    const dev_t nBefore = DeviceOf(m_strPath);
    m_process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_process.start(BuildPath("tests/faultydisk/faulty_disk"),
                    {strBehind, m_strRules, m_strPath, strDeviceNode});
    m_bMounted = QTest::qWaitFor([&] { return DeviceOf(m_strPath) != nBefore; }, 10000);
}

CFaultyDisk::~CFaultyDisk()
{
    Heal();
    Pull();
    QDir().rmdir(m_strPath);
    CVolume::Unmount(QFile::encodeName(m_dir.filePath("behind")));
}

bool CFaultyDisk::IsPossible()
{
    // A container may show the device and refuse it all the same.
    const int nDevice = open("/dev/fuse", O_RDWR | O_CLOEXEC);
    if (nDevice == -1) {
        return false;
    }
    close(nDevice);
    return true;
}

bool CFaultyDisk::IsValid() const { return m_bMounted; }

QString CFaultyDisk::Path(const QString& strRelative) const
{
    return strRelative.isEmpty() ? m_strPath : m_strPath + '/' + strRelative;
}

QString CFaultyDisk::Behind(const QString& strRelative) const
{
    return m_dir.filePath(strRelative.isEmpty() ? QString("behind") : "behind/" + strRelative);
}

void CFaultyDisk::Rule(const QString& strCall, const QString& strWhat, qint64 nNumber, const QString& strEnd)
{
    AddRule(QString("%1 %2 %3 ").arg(strCall, strWhat, QString::number(nNumber)) + strEnd);
}

void CFaultyDisk::BadSectors(qint64 nFrom, qint64 nBytes, const QString& strEnd)
{
    AddRule(QString("sectors bad %1 %2 ").arg(nFrom).arg(nBytes) + strEnd);
}

void CFaultyDisk::SlowSectors(qint64 nFrom, qint64 nBytes, const QString& strEnd)
{
    AddRule(QString("sectors slow %1 %2 ").arg(nFrom).arg(nBytes) + strEnd);
}

QMap<qint64, int> CFaultyDisk::FailedReads(const QString& strEnd) const
{
    QMap<qint64, int> mapFailed;
    const QString strFailed = m_strRules + ".failed";
    for (const QByteArray& baLine : (QFile::exists(strFailed) ? Content(strFailed) : "").split('\n')) {
        if (!baLine.isEmpty() && baLine.endsWith(QFile::encodeName(strEnd))) {
            ++mapFailed[baLine.left(baLine.indexOf(' ')).toLongLong()];
        }
    }
    return mapFailed;
}

void CFaultyDisk::AddRule(const QString& strLine)
{
    const QByteArray baOthers = QFile::exists(m_strRules) ? Content(m_strRules) : QByteArray();
    QSaveFile file(m_strRules); // never seen half written
    if (!file.open(QIODevice::WriteOnly) || file.write(baOthers + strLine.toUtf8() + '\n') < 0
        || !file.commit()) {
        qFatal("fixture failed: %s", qPrintable(m_strRules));
    }
}

void CFaultyDisk::Heal() { QFile::remove(m_strRules); }

void CFaultyDisk::Pull()
{
    if (!m_bMounted) {
        return;
    }
    m_bMounted = false;
    umount2(QFile::encodeName(m_strPath).constData(), MNT_DETACH);
    m_process.kill();
    m_process.waitForFinished();
}
