#include "disk/CInfoQuery.h"

#include <QDebug>
#include <QProcess>

#include <csignal>
#include <sys/types.h>
#include <unistd.h>

// How long a killed child may take to be gone.
static const int REAP_MS = 500;

// A description of a volume is a few kilobytes. A command that prints more than
// this is not describing one, and must not fill the memory.
static const int MAX_OUTPUT_BYTES = 4 * 1024 * 1024;

namespace {

/** A child process in a process group of its own, so that it can be ended with all that it started. */
class CGroupProcess : public QProcess
{
protected:
    void setupChildProcess() override { ::setpgid(0, 0); }
};

} // namespace

static void KillGroup(QProcess& process)
{
    const auto nGroup = pid_t(process.processId());
    if (nGroup > 0) {
        ::kill(-nGroup, SIGKILL);
    }
    process.kill();
}

CInfoQuery::CInfoQuery() = default;

CInfoQuery::~CInfoQuery() { End(); }

bool CInfoQuery::IsRunning() const { return m_pProcess && m_pProcess->state() != QProcess::NotRunning; }

void CInfoQuery::Start(const QString& strCommand, const QStringList& listArgument, int nTimeoutMs)
{
    if (!m_pProcess) {
        m_pProcess = std::make_unique<CGroupProcess>();
        // Its complaints are for whoever reads ours, and must not pile up in the pipe.
        m_pProcess->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    m_strDeviceNode = listArgument.last();
    m_nTimeoutMs = nTimeoutMs;
    m_baOutput.clear();
    m_enPhase = ENPhase::FIRST_OUTPUT;
    m_timerAll.start();
    m_timerPhase.start();
    m_pProcess->start(strCommand, listArgument, QIODevice::ReadWrite);
}

void CInfoQuery::Proceed(int nMs)
{
    Judge();
    if (IsOver()) {
        return;
    }
    m_pProcess->waitForReadyRead(nMs);
    Judge();
}

// A time-out is no error: what has been printed by then counts.
void CInfoQuery::Judge()
{
    if (IsOver()) {
        return;
    }
    m_baOutput += m_pProcess->readAllStandardOutput();
    if (!IsRunning() || m_baOutput.size() > MAX_OUTPUT_BYTES) {
        m_enPhase = ENPhase::OVER;
        return;
    }
    const bool bLate = m_timerPhase.hasExpired(m_nTimeoutMs);
    if (m_enPhase == ENPhase::FIRST_OUTPUT && (bLate || !m_baOutput.isEmpty())) {
        m_enPhase = ENPhase::END;
        m_timerPhase.start();
    } else if (bLate) {
        m_enPhase = ENPhase::OVER;
    }
}

QByteArray CInfoQuery::TakeOutput()
{
    if (IsRunning()) {
        qDebug().noquote() << QStringLiteral("Disk query ended early:") << m_strDeviceNode;
    } else if (HasFailed()) {
        qDebug().noquote() << QStringLiteral("Disk query failed:") << m_strDeviceNode
                           << m_pProcess->errorString() << m_pProcess->exitCode();
    }
    End();
    return m_baOutput;
}

bool CInfoQuery::HasFailed() const
{
    return m_pProcess->error() == QProcess::FailedToStart || m_pProcess->exitStatus() != QProcess::NormalExit
        || m_pProcess->exitCode() != 0;
}

void CInfoQuery::End()
{
    m_enPhase = ENPhase::OVER;
    if (!IsRunning()) {
        return;
    }
    KillGroup(*m_pProcess);
    if (m_pProcess->waitForFinished(REAP_MS)) {
        return;
    }
    // A child stuck in a broken disk's driver cannot be killed, and destroying its
    // object would wait for it. The object is given up, the next start gets another.
    qWarning().noquote() << QStringLiteral("Disk query cannot be ended, process") << m_pProcess->processId();
    static_cast<void>(m_pProcess.release());
}
