#include "support/CImageDisk.h"

#include "support/CFaultyDisk.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QTest>

#include <sys/mount.h>
#include <sys/stat.h>

static const int PATIENCE_MS = 20000;

/** The program that makes an image, with what it wants to be told first. */
static QStringList Maker(CImageDisk::ENKind enKind)
{
    switch (enKind) {
    case CImageDisk::ENKind::EXFAT:
        return {"mkfs.exfat"};
    case CImageDisk::ENKind::NTFS:
        return {"mkntfs", "-q", "-F"};
    case CImageDisk::ENKind::FAT:
        break;
    }
    return {"mkfs.vfat"};
}

/** The one that mounts it and stays in the foreground. */
static QStringList Mounter(CImageDisk::ENKind enKind)
{
    switch (enKind) {
    case CImageDisk::ENKind::EXFAT:
        return {"mount.exfat-fuse", "-d"};
    case CImageDisk::ENKind::NTFS:
        return {"ntfs-3g", "-o", "no_detach"};
    case CImageDisk::ENKind::FAT:
        break;
    }
    return {"fusefat", "-f", "-o", "rw+"};
}

static QString Program(const QString& strName)
{
    const QString strFound = QStandardPaths::findExecutable(strName);
    return strFound.isEmpty() ? QStandardPaths::findExecutable(strName, {"/usr/sbin", "/sbin"}) : strFound;
}

static void Start(QProcess& process, const QStringList& listCommand, const QStringList& listMore)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LD_PRELOAD", BuildPath("tests/plainfuse/libplainfuse.so"));
    process.setProcessEnvironment(environment);

    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(Program(listCommand.constFirst()), listCommand.mid(1) + listMore);
}

static bool IsMade(CImageDisk::ENKind enKind, const QString& strImage)
{
    QProcess process;
    Start(process, Maker(enKind), {strImage});
    return process.waitForFinished(PATIENCE_MS) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
}

static dev_t DeviceOf(const QString& strPath)
{
    struct stat status = {};
    return stat(QFile::encodeName(strPath).constData(), &status) == 0 ? status.st_dev : 0;
}

CImageDisk::CImageDisk(ENKind enKind, const QString& strName, int nMiB)
    : m_enKind(enKind)
    , m_strPath("/Volumes/" + strName)
{
    QFile image(Image());
    if (image.open(QIODevice::WriteOnly) && image.resize(qint64(nMiB) * 1024 * 1024)) {
        image.close();
        QDir().mkpath(m_strPath);
        m_bMounted = IsMade(m_enKind, Image()) && Mount();
    }
}

CImageDisk::~CImageDisk()
{
    Unmount();
    QDir().rmdir(m_strPath);
}

QString CImageDisk::Missing(ENKind enKind)
{
    if (!CFaultyDisk::IsPossible()) {
        return "this system has no /dev/fuse";
    }
    for (const QString& strProgram : {Maker(enKind).constFirst(), Mounter(enKind).constFirst()}) {
        if (Program(strProgram).isEmpty()) {
            return "this system has no " + strProgram;
        }
    }
    return QString();
}

QString CImageDisk::Path(const QString& strRelative) const
{
    return strRelative.isEmpty() ? m_strPath : m_strPath + '/' + strRelative;
}

bool CImageDisk::MountAnew()
{
    Unmount();
    m_bMounted = Mount();
    return m_bMounted;
}

bool CImageDisk::Mount()
{
    const dev_t nBefore = DeviceOf(m_strPath);
    Start(m_driver, Mounter(m_enKind), {Image(), m_strPath});
    return QTest::qWaitFor([&] { return DeviceOf(m_strPath) != nBefore; }, PATIENCE_MS);
}

/** Returns when the driver has written everything and let go of the image. */
void CImageDisk::Unmount()
{
    if (!m_bMounted) {
        return;
    }
    m_bMounted = false;
    umount2(QFile::encodeName(m_strPath).constData(), MNT_DETACH);
    if (!m_driver.waitForFinished(PATIENCE_MS)) {
        m_driver.kill();
        m_driver.waitForFinished();
    }
}
