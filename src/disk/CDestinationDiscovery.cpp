#include "disk/CDestinationDiscovery.h"

#include "disk/platform/CVolumeInfo.h"
#include "log/CLogTarnwick.h"
#include "settings/PListParser.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>

#include <csignal>
#include <memory>
#include <sys/types.h>
#include <unistd.h>

// How often a wait looks at the wish to cancel.
static const int SLICE_MS = 50;

// How long a killed child may take to be gone.
static const int REAP_MS = 500;

// A description of a volume is a few kilobytes. A command that prints more than
// this is not describing one, and must not fill the memory.
static const int MAX_OUTPUT_BYTES = 4 * 1024 * 1024;

static const int DEFAULT_TIMEOUT_MS = 30000;
static std::atomic<int> s_nTimeoutMs{DEFAULT_TIMEOUT_MS};

namespace {

/** A child process in a process group of its own, so that it can be ended with all that it started. */
class CGroupProcess : public QProcess
{
public:
    void KillGroup()
    {
        const auto nGroup = pid_t(processId());
        if (nGroup > 0) {
            ::kill(-nGroup, SIGKILL);
        }
        kill();
    }

protected:
    void setupChildProcess() override { ::setpgid(0, 0); }
};

/** Runs the command for one device node after the other in one process object. */
class CInfoQuery
{
public:
    explicit CInfoQuery(const std::atomic<bool>& bCancelled)
        : m_bCancelled(bCancelled)
    {
    }
    ~CInfoQuery() { End(); }

    /** What the command printed within its time. */
    QByteArray Ask(const QString& strDeviceNode);

private:
    void Start(const QString& strDeviceNode);
    void Wait(bool bForFirstOutput);
    void End();
    bool HasFailed() const;
    bool IsRunning() const { return m_pProcess->state() != QProcess::NotRunning; }

    const std::atomic<bool>& m_bCancelled;
    std::unique_ptr<CGroupProcess> m_pProcess;
    QByteArray m_baOutput;
};

} // namespace

QByteArray CInfoQuery::Ask(const QString& strDeviceNode)
{
    m_baOutput.clear();
    Start(strDeviceNode);
    Wait(true);
    // A time-out is no error: what has been printed by then counts.
    Wait(false);
    if (IsRunning()) {
        qDebug().noquote() << QStringLiteral("Disk query ended early:") << strDeviceNode;
    } else if (HasFailed()) {
        qDebug().noquote() << QStringLiteral("Disk query failed:") << strDeviceNode
                           << m_pProcess->errorString() << m_pProcess->exitCode();
    }
    End();
    return m_baOutput;
}

void CInfoQuery::Start(const QString& strDeviceNode)
{
    if (!m_pProcess) {
        m_pProcess = std::make_unique<CGroupProcess>();
        // Its complaints are for whoever reads ours, and must not pile up in the pipe.
        m_pProcess->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    m_pProcess->start(CDestinationDiscovery::InfoCommand(),
                      CDestinationDiscovery::InfoArguments(strDeviceNode), QIODevice::ReadWrite);
}

/** Reads until the child has ended (or has printed something), its time is over, or nobody wants to know. */
void CInfoQuery::Wait(bool bForFirstOutput)
{
    QElapsedTimer timer;
    timer.start();
    const int nTimeoutMs = CDestinationDiscovery::CommandTimeoutMs();
    for (;;) {
        m_baOutput += m_pProcess->readAllStandardOutput();
        const bool bEnough = m_baOutput.size() > (bForFirstOutput ? 0 : MAX_OUTPUT_BYTES);
        if (bEnough || m_bCancelled || !IsRunning() || timer.hasExpired(nTimeoutMs)) {
            return;
        }
        m_pProcess->waitForReadyRead(SLICE_MS);
    }
}

bool CInfoQuery::HasFailed() const
{
    return m_pProcess->error() == QProcess::FailedToStart || m_pProcess->exitStatus() != QProcess::NormalExit
        || m_pProcess->exitCode() != 0;
}

void CInfoQuery::End()
{
    if (!m_pProcess || !IsRunning()) {
        return;
    }
    m_pProcess->KillGroup();
    if (m_pProcess->waitForFinished(REAP_MS)) {
        return;
    }
    // A child stuck in a broken disk's driver cannot be killed, and destroying its
    // object would wait for it. The object is given up, the next volume gets another.
    qWarning().noquote() << QStringLiteral("Disk query cannot be ended, process") << m_pProcess->processId();
    static_cast<void>(m_pProcess.release());
}

QString CDestinationDiscovery::VolumesFolder() { return QStringLiteral("/Volumes"); }

QString CDestinationDiscovery::InfoCommand() { return QStringLiteral("diskutil"); }

QStringList CDestinationDiscovery::InfoArguments(const QString& strDeviceNode)
{
    return {QStringLiteral("info"), QStringLiteral("-plist"), strDeviceNode};
}

int CDestinationDiscovery::CommandTimeoutMs() { return s_nTimeoutMs; }

void CDestinationDiscovery::SetCommandTimeoutMs(int nTimeoutMs)
{
    s_nTimeoutMs = nTimeoutMs > 0 ? nTimeoutMs : DEFAULT_TIMEOUT_MS;
}

QString CDestinationDiscovery::BusProtocol(const QByteArray& baPList)
{
    QBuffer buffer;
    buffer.setData(baPList);
    buffer.open(QIODevice::ReadOnly);
    return PListParser::parsePList(&buffer).toMap().value(QStringLiteral("BusProtocol")).toString();
}

ENVolumeRole CDestinationDiscovery::RoleOf(const QString& strBusProtocol, const QByteArray& baDevice,
                                           const QByteArray& baOwnDevice)
{
    if (strBusProtocol != QLatin1String("USB")) {
        return VOLUME_ROLE_SOURCE;
    }
    return baDevice == baOwnDevice ? VOLUME_ROLE_OWN_MEDIUM : VOLUME_ROLE_DESTINATION;
}

static void LogVolume(const STVolume& volume)
{
    switch (volume.enRole) {
    case VOLUME_ROLE_DESTINATION:
        // The template has a %2 and no %1; it is the lowest number, so arg() fills it.
        g_TarnwickLog.LogExt(QStringLiteral("diskName: %2").arg(volume.strName));
        break;
    case VOLUME_ROLE_SOURCE:
        g_TarnwickLog.LogExt(volume.strPath);
        break;
    case VOLUME_ROLE_OWN_MEDIUM:
        g_TarnwickLog.LogExt(QStringLiteral("skipped, the program runs from it: ") + volume.strPath);
        break;
    }
}

bool CDestinationDiscovery::Scan(const std::function<void(const STVolume&)>& fnFound,
                                 const std::atomic<bool>& bCancelled)
{
    const QFileInfoList listEntry
        = QDir(VolumesFolder()).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    const QByteArray baOwnDevice = CVolumeInfo::DeviceOf(QCoreApplication::applicationDirPath());
    CInfoQuery query(bCancelled);
    for (const QFileInfo& entry : listEntry) {
        const QByteArray baDevice = CVolumeInfo::DeviceOf(entry.absoluteFilePath());
        const QByteArray baPList = bCancelled ? QByteArray() : query.Ask(QFile::decodeName(baDevice));
        if (bCancelled) {
            return false;
        }
        const STVolume volume{entry.filePath(), entry.fileName(), baDevice,
                              RoleOf(BusProtocol(baPList), baDevice, baOwnDevice)};
        LogVolume(volume);
        fnFound(volume);
    }
    return !bCancelled;
}
