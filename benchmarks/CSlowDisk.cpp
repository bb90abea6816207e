#include "CSlowDisk.h"

#include "Measure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/fs.h>
#include <linux/loop.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <unistd.h>

static const int PATIENCE_MS = 10000;
static const int POLL_MS = 10;

/** As a disk on a cable has it; a loop device has more. */
static const char READ_AHEAD_KIB[] = "128";

static QByteArray Name(const QString& strPath) { return QFile::encodeName(strPath); }

/** Ends the program with what the last call to the system has failed of. */
static void RequireCall(bool bDone, const QString& strWhat)
{
    Require(bDone, strWhat + ": " + std::strerror(errno));
}

static QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    Require(file.open(QIODevice::ReadOnly), strPath);
    return file.readAll();
}

static bool Write(const QString& strPath, const QByteArray& baText)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(baText) == baText.size();
}

static QString Maker()
{
    return QStandardPaths::findExecutable(QStringLiteral("mkfs.ext4"),
                                          {QStringLiteral("/usr/sbin"), QStringLiteral("/sbin")});
}

/** Beside the program, in the same build folder. */
static QString HeadProgram()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/../tests/slowdisk/slow_disk");
}

CSlowDisk::CSlowDisk(const QString& strFolder, const QString& strName, const STDiskModel& stModel)
    : m_strFolder(strFolder + '/' + strName)
    , m_strPoint(m_strFolder + QStringLiteral("/disk"))
    , m_stModel(stModel)
{
    Require(QDir().mkpath(m_strFolder + "/head") && QDir().mkpath(m_strPoint), m_strFolder);
    MakeFileSystem();
    m_head.setProcessChannelMode(QProcess::ForwardedChannels);
    m_head.start(HeadProgram(), {m_strFolder + "/image", m_strFolder + "/head", "0", "0"});
    Require(m_head.waitForStarted(), HeadProgram());
    for (int nMs = 0; nMs < PATIENCE_MS && !QFile::exists(Control("model")); nMs += POLL_MS) {
        m_head.waitForFinished(POLL_MS);
    }
    Attach();
    Mount();
}

CSlowDisk::~CSlowDisk()
{
    SetSlow(false);
    Unmount();
    SetQueue(QStringLiteral("scheduler"), m_baScheduler);
    close(m_nLoop); // which detaches it
    umount2(Name(m_strFolder + "/head").constData(), MNT_DETACH);
    if (!m_head.waitForFinished(PATIENCE_MS)) {
        m_head.kill();
        m_head.waitForFinished();
    }
}

bool CSlowDisk::MakePrivateMounts()
{
    return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

QString CSlowDisk::Missing()
{
    if (geteuid() != 0) {
        return QStringLiteral("root");
    }
    if (Maker().isEmpty()) {
        return QStringLiteral("mkfs.ext4 (package e2fsprogs)");
    }
    for (const char* pszDevice : {"/dev/fuse", "/dev/loop-control"}) {
        // A container may show a device and refuse it all the same.
        const int nDevice = open(pszDevice, O_RDWR | O_CLOEXEC);
        if (nDevice == -1) {
            return QString::fromLatin1(pszDevice);
        }
        close(nDevice);
    }
    return QFile::exists(HeadProgram()) ? QString() : HeadProgram();
}

void CSlowDisk::SetSlow(bool bSlow)
{
    const QByteArray baModel
        = QByteArray::number(m_stModel.nSeekUs) + ' ' + QByteArray::number(m_stModel.nBytesPerSecond);
    Require(Write(Control("model"), bSlow ? baModel : QByteArrayLiteral("0 0")), Control("model"));
}

void CSlowDisk::Format()
{
    SetSlow(false);
    Unmount();
    MakeFileSystem();
    Mount();
}

void CSlowDisk::MountAnew()
{
    SetSlow(false);
    Unmount();
    Mount();
}

STDiskWork CSlowDisk::Work() const
{
    STDiskWork stWork;
    for (const QByteArray& baLine : Content(Control("statistics")).split('\n')) {
        const qint64 nValue = baLine.mid(baLine.indexOf(' ') + 1).toLongLong();
        const QByteArray baName = baLine.mid(baLine.indexOf('-') + 1).split(' ').constFirst();
        stWork.nRequests += baName == "requests" ? nValue : 0;
        stWork.nSeeks += baName == "seeks" ? nValue : 0;
        stWork.nBytes += baName == "bytes" ? nValue : 0;
        stWork.nBusyMs += baName == "busy-us" ? double(nValue) / 1000 : 0;
    }
    return stWork;
}

/** Nothing is left to be done when the disk is in use, and each disk is laid out alike. */
void CSlowDisk::MakeFileSystem() const
{
    const QString strImage = m_strFolder + "/image";
    QFile image(strImage);
    Require(image.open(QIODevice::ReadWrite) && image.resize(0)
                && image.resize(qint64(m_stModel.nMiB) * 1024 * 1024),
            strImage);
    const QString strSeed = QStringLiteral("7a0c1d56-5c2e-4d8f-9b13-3f6b1f0e2a44");
    Run(Maker(),
        {"-q", "-F", "-U", strSeed, "-E",
         "lazy_itable_init=0,lazy_journal_init=0,nodiscard,assume_storage_prezeroed=1,hash_seed=" + strSeed,
         strImage});
}

void CSlowDisk::Attach()
{
    const QString strDisk = Control("disk");
    const int nDisk = open(Name(strDisk).constData(), O_RDWR | O_CLOEXEC);
    RequireCall(nDisk != -1, strDisk);
    const int nControl = open("/dev/loop-control", O_RDWR | O_CLOEXEC);
    loop_config stConfig = {};
    stConfig.fd = static_cast<unsigned>(nDisk);
    stConfig.info.lo_flags = LO_FLAGS_AUTOCLEAR | LO_FLAGS_DIRECT_IO;
    bool bAttached = false;
    do { // until nobody else has taken the free one first
        const int nFree = ioctl(nControl, LOOP_CTL_GET_FREE);
        RequireCall(nFree >= 0, QStringLiteral("a free loop device"));
        m_strLoop = "loop" + QString::number(nFree);
        m_nLoop = open(Name("/dev/" + m_strLoop).constData(), O_RDWR | O_CLOEXEC);
        RequireCall(m_nLoop != -1, "/dev/" + m_strLoop);
        bAttached = ioctl(m_nLoop, LOOP_CONFIGURE, &stConfig) == 0;
        RequireCall(bAttached || errno == EBUSY, m_strLoop);
    } while (!bAttached && close(m_nLoop) == 0);
    close(nControl);
    close(nDisk);
    loop_info64 stInfo = {};
    Require(ioctl(m_nLoop, LOOP_GET_STATUS64, &stInfo) == 0 && (stInfo.lo_flags & LO_FLAGS_DIRECT_IO) != 0,
            m_strLoop + " goes past the cache");

    const QByteArray baSchedulers = Content("/sys/block/" + m_strLoop + "/queue/scheduler");
    m_baScheduler = baSchedulers.mid(baSchedulers.indexOf('[') + 1).split(']').constFirst();
    SetQueue(QStringLiteral("scheduler"), "mq-deadline");
    SetQueue(QStringLiteral("rotational"), m_stModel.bRotates ? "1" : "0");
    SetQueue(QStringLiteral("read_ahead_kb"), READ_AHEAD_KIB);
}

/** What a kernel does not offer is left as it is. */
void CSlowDisk::SetQueue(const QString& strName, const QByteArray& baValue) const
{
    Write("/sys/block/" + m_strLoop + "/queue/" + strName, baValue);
}

void CSlowDisk::Mount()
{
    ioctl(m_nLoop, BLKFLSBUF, 0);
    const unsigned long nFlags = m_stModel.bWritesThrough ? MS_SYNCHRONOUS : 0;
    RequireCall(mount(Name("/dev/" + m_strLoop).constData(), Name(m_strPoint).constData(), "ext4",
                      nFlags | MS_NOATIME, "")
                    == 0,
                m_strPoint);
}

void CSlowDisk::Unmount()
{
    RequireCall(umount2(Name(m_strPoint).constData(), 0) == 0, m_strPoint);
    // What is still in the cache is of the file system that is gone.
    ioctl(m_nLoop, BLKFLSBUF, 0);
}
