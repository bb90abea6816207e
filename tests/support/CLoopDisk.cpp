#include "support/CLoopDisk.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <cerrno>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/loop.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

static QByteArray Name(const QString& strPath) { return QFile::encodeName(strPath); }

static QString Maker()
{
    return QStandardPaths::findExecutable("mkfs.ext4", {"/usr/sbin", "/sbin", "/usr/bin"});
}

/** The sandbox shows no disks; root may see them where it asks for them. */
static bool ShowDevices(const QString& strFolder)
{
    return mount("devices", Name(strFolder).constData(), "devtmpfs", 0, "") == 0;
}

QString CLoopDisk::Missing()
{
    if (Maker().isEmpty()) {
        return "this system has no mkfs.ext4";
    }
    const QTemporaryDir dir;
    if (!ShowDevices(dir.path())) {
        return "this system lets nobody see its devices";
    }
    const int nControl = open(Name(dir.filePath("loop-control")).constData(), O_RDWR | O_CLOEXEC);
    const bool bFree = nControl != -1 && ioctl(nControl, LOOP_CTL_GET_FREE) >= 0;
    close(nControl);
    umount2(Name(dir.path()).constData(), MNT_DETACH);
    return bFree ? QString() : "this system has no free loop device";
}

bool CLoopDisk::Format(const QString& strImage, int nMiB)
{
    QFile image(strImage);
    if (!image.open(QIODevice::WriteOnly) || !image.resize(qint64(nMiB) * 1024 * 1024)) {
        return false;
    }
    image.close();
    return QProcess::execute(Maker(), {"-q", "-F", "-E", "lazy_itable_init=0,nodiscard", strImage}) == 0;
}

CLoopDisk::CLoopDisk(const QString& strImage, const QString& strName)
    : m_strPath("/Volumes/" + strName)
{
    QDir().mkpath(m_strPath);
    m_bMounted = ShowDevices(m_dir.path()) && Attach(strImage)
        && mount(Name(m_strLoop).constData(), Name(m_strPath).constData(), "ext4", MS_NOATIME, "") == 0;
}

CLoopDisk::~CLoopDisk()
{
    if (!Unmount()) {
        umount2(Name(m_strPath).constData(), MNT_DETACH);
    }
    if (m_nLoop != -1) {
        ioctl(m_nLoop, BLKFLSBUF, 0); // nothing of it stays in memory
        close(m_nLoop); // which detaches it
    }
    umount2(Name(m_dir.path()).constData(), MNT_DETACH);
    QDir().rmdir(m_strPath);
}

QString CLoopDisk::Path(const QString& strRelative) const
{
    return strRelative.isEmpty() ? m_strPath : m_strPath + '/' + strRelative;
}

bool CLoopDisk::Unmount()
{
    m_bMounted = m_bMounted && umount2(Name(m_strPath).constData(), 0) != 0;
    return !m_bMounted;
}

/** Takes a free device; others may be at the same. */
bool CLoopDisk::Attach(const QString& strImage)
{
    const int nImage = open(Name(strImage).constData(), O_RDWR | O_CLOEXEC);
    const int nControl = open(Name(m_dir.filePath("loop-control")).constData(), O_RDWR | O_CLOEXEC);
    loop_config stConfig = {};
    stConfig.fd = static_cast<unsigned>(nImage);
    stConfig.info.lo_flags = LO_FLAGS_AUTOCLEAR;
    for (bool bBusy = true; bBusy;) {
        m_strLoop = m_dir.filePath("loop" + QString::number(ioctl(nControl, LOOP_CTL_GET_FREE)));
        m_nLoop = open(Name(m_strLoop).constData(), O_RDWR | O_CLOEXEC);
        const bool bAttached = m_nLoop != -1 && ioctl(m_nLoop, LOOP_CONFIGURE, &stConfig) == 0;
        bBusy = m_nLoop != -1 && !bAttached && errno == EBUSY;
        if (!bAttached && m_nLoop != -1) {
            close(m_nLoop);
            m_nLoop = -1;
        }
    }
    close(nControl);
    close(nImage);
    return m_nLoop != -1;
}
