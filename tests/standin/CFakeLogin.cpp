#include "standin/CFakeLogin.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QSocketNotifier>

#include <fcntl.h>
#include <unistd.h>

static const char CONFIGURATION[]
    = "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
      "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
      "<busconfig><type>session</type><listen>unix:path=%1/bus</listen><auth>EXTERNAL</auth>"
      "<policy context=\"default\"><allow send_destination=\"*\"/><allow receive_sender=\"*\"/><allow "
      "own=\"*\"/></policy></busconfig>";

CFakeLogin::CFakeLogin(ENManner enManner)
    : m_enManner(enManner)
{
    static int s_nConnection = 0;
    m_strConnection = QString("fake-login-%1").arg(++s_nConnection);
    if (!StartBus()) {
        return;
    }
    QDBusConnection bus = QDBusConnection::connectToBus(m_strAddress, m_strConnection);
    m_bValid = bus.isConnected();
    if (m_enManner != MANNER_ABSENT) {
        m_bValid = m_bValid
            && bus.registerObject("/org/freedesktop/login1", this, QDBusConnection::ExportAllSlots)
            && bus.registerService("org.freedesktop.login1");
    }
}

CFakeLogin::~CFakeLogin()
{
    QDBusConnection::disconnectFromBus(m_strConnection);
    m_bus.kill();
    m_bus.waitForFinished();
}

bool CFakeLogin::IsValid() const { return m_bValid; }

QProcessEnvironment CFakeLogin::Environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SYSTEM_BUS_ADDRESS", m_strAddress);
    return environment;
}

QStringList CFakeLogin::Requests() const { return m_listRequest; }

int CFakeLogin::Held() const { return m_nHeld; }

QDBusUnixFileDescriptor CFakeLogin::Inhibit(const QString& strWhat, const QString& strWho,
                                            const QString& strWhy, const QString& strMode)
{
    m_listRequest.append(QStringList{strWhat, strWho, strWhy, strMode}.join('|'));
    int ends[2] = {-1, -1};
    if (m_enManner == MANNER_SILENT) {
        setDelayedReply(true);
        return QDBusUnixFileDescriptor();
    }
    if (m_enManner == MANNER_REFUSE || pipe2(ends, O_CLOEXEC) != 0) {
        sendErrorReply(QDBusError::AccessDenied, "not today");
        return QDBusUnixFileDescriptor();
    }
    ++m_nHeld;
    // The other end of the pipe is readable, at its end, when no copy of the lock is open any more.
    auto* pNotifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(pNotifier, &QSocketNotifier::activated, this, [this, pNotifier, nEnd = ends[0]] {
        pNotifier->setEnabled(false);
        close(nEnd);
        --m_nHeld;
    });
    QDBusUnixFileDescriptor lock;
    lock.giveFileDescriptor(ends[1]);
    return lock;
}

bool CFakeLogin::StartBus()
{
    const QString strConfiguration = m_dir.filePath("bus.conf");
    QFile file(strConfiguration);
    if (!file.open(QIODevice::WriteOnly)
        || file.write(QString::fromLatin1(CONFIGURATION).arg(m_dir.path()).toUtf8()) < 0) {
        return false;
    }
    file.close();
    m_bus.start("dbus-daemon", {"--nofork", "--print-address", "--config-file=" + strConfiguration});
    while (!m_bus.canReadLine()) {
        if (!m_bus.waitForReadyRead(10000)) {
            return false;
        }
    }
    m_strAddress = QString::fromLatin1(m_bus.readLine()).trimmed();
    return !m_strAddress.isEmpty();
}
