#include "standin/CFakeLogin.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <memory>

namespace {

/** A process that finds the command by its name, as the program does, on the fake's bus. */
class CRunning : public QProcess
{
public:
    explicit CRunning(const CFakeLogin& login)
    {
        QProcessEnvironment environment = login.Environment();
        environment.insert("PATH", QString(TARNWICK_COMMAND_FOLDER) + ':' + environment.value("PATH"));
        setProcessEnvironment(environment);
    }

    ~CRunning() override
    {
        kill();
        waitForFinished();
    }

    /** Runs the command itself. */
    void Run(const QStringList& listArgument)
    {
        start(QString(TARNWICK_COMMAND_FOLDER) + "/caffeinate", listArgument);
    }

    /** Hands the line to a shell, as the program does. */
    void RunByShell(const QByteArray& baLine)
    {
        start("bash", QStringList());
        waitForStarted();
        write(baLine);
        closeWriteChannel();
    }

    /** Lets another process ask. */
    void RunByAsker(const QString& strHow, const QString& strOutput)
    {
        start(QCoreApplication::applicationDirPath() + "/caffeinate_asker", {strHow, strOutput, "2592000"});
    }

    void Signal(int nSignal) { ::kill(pid_t(processId()), nSignal); }
};

} // namespace

class tst_caffeinate : public QObject
{
    Q_OBJECT

private slots:
    void init() { UseLogin(CFakeLogin::MANNER_GRANT); }
    void asTheProgramAsks_data();
    void asTheProgramAsks();
    void whatIsAskedFor_data();
    void whatIsAskedFor();
    void endsWithItsTime();
    void endsWithASignal_data();
    void endsWithASignal();
    void endsWhenTheAskerIsKilled_data();
    void endsWhenTheAskerIsKilled();
    void endsWhenNobodyReadsItsOutput();
    void goesOnWithoutThoseAboveTheAsker();
    void withoutLock_data();
    void withoutLock();

private:
    void UseLogin(CFakeLogin::ENManner enManner);

    std::unique_ptr<CFakeLogin> m_pLogin;
    std::unique_ptr<CRunning> m_pRunning;
};

void tst_caffeinate::UseLogin(CFakeLogin::ENManner enManner)
{
    m_pRunning.reset();
    m_pLogin = std::make_unique<CFakeLogin>(enManner);
    QVERIFY(m_pLogin->IsValid());
    m_pRunning = std::make_unique<CRunning>(*m_pLogin);
}

void tst_caffeinate::asTheProgramAsks_data()
{
    QTest::addColumn<QByteArray>("baLine");
    QTest::newRow("its own line") << QByteArray("caffeinate -u -t 2592000  \n");
    QTest::newRow("input and output closed") << QByteArray("caffeinate -u -t 2592000 <&- >&- 2>&-\n");
}

void tst_caffeinate::asTheProgramAsks()
{
    QFETCH(QByteArray, baLine);
    m_pRunning->RunByShell(baLine);
    QTRY_COMPARE(m_pLogin->Requests(), QStringList{"sleep:idle|Tarnwick|Files are being rescued|block"});
    QCOMPARE(m_pLogin->Held(), 1);
    // It goes on holding: nothing of it ends in a second.
    QVERIFY(!m_pRunning->waitForFinished(1000));
    QCoreApplication::processEvents();
    QCOMPARE(m_pLogin->Held(), 1);
    QCOMPARE(m_pRunning->readAllStandardError(), "");
    m_pRunning->Signal(SIGKILL); // the shell alone
    QTRY_COMPARE(m_pLogin->Held(), 0);
}

void tst_caffeinate::whatIsAskedFor_data()
{
    QTest::addColumn<QString>("strFlags");
    QTest::addColumn<QString>("strWhat");
    QTest::newRow("user") << "-u"
                          << "sleep:idle";
    QTest::newRow("system") << "-s"
                            << "sleep";
    QTest::newRow("display") << "-d"
                             << "idle";
    QTest::newRow("several") << "-dims"
                             << "sleep:idle";
}

void tst_caffeinate::whatIsAskedFor()
{
    QFETCH(QString, strFlags);
    m_pRunning->Run({strFlags, "-t", "100"});
    QTRY_COMPARE(m_pLogin->Requests().size(), 1);
    QTEST(m_pLogin->Requests().first().section('|', 0, 0), "strWhat");
}

void tst_caffeinate::endsWithItsTime()
{
    m_pRunning->RunByShell("caffeinate -u -t 1  \n");
    QTRY_COMPARE(m_pLogin->Held(), 1);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE(m_pLogin->Held(), 0);
    QVERIFY2(timer.elapsed() > 800, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(m_pRunning->state(), QProcess::NotRunning);
    QCOMPARE(m_pRunning->exitCode(), 0);
    QCOMPARE(m_pRunning->readAllStandardError(), "");
}

void tst_caffeinate::endsWithASignal_data()
{
    QTest::addColumn<int>("nSignal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_caffeinate::endsWithASignal()
{
    QFETCH(int, nSignal);
    m_pRunning->Run({"-u", "-t", "100"});
    QTRY_COMPARE(m_pLogin->Held(), 1);
    m_pRunning->Signal(nSignal);
    QTRY_COMPARE(m_pRunning->state(), QProcess::NotRunning);
    QCOMPARE(m_pRunning->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_pRunning->exitCode(), 0);
    QTRY_COMPARE(m_pLogin->Held(), 0);
}

void tst_caffeinate::endsWhenTheAskerIsKilled_data()
{
    QTest::addColumn<QString>("strHow");
    QTest::addColumn<QString>("strOutput");
    QTest::newRow("as the program asks") << "shell"
                                         << "pipe";
    QTest::newRow("by a shell, output lost") << "shell"
                                             << "null";
    QTest::newRow("itself, output lost") << "direct"
                                         << "null";
}

void tst_caffeinate::endsWhenTheAskerIsKilled()
{
    QFETCH(QString, strHow);
    QFETCH(QString, strOutput);
    m_pRunning->RunByAsker(strHow, strOutput);
    QTRY_COMPARE(m_pLogin->Held(), 1);
    QVERIFY(!m_pRunning->waitForFinished(300));
    QCOMPARE(m_pLogin->Held(), 1);
    m_pRunning->Signal(SIGKILL);
    QTRY_COMPARE(m_pLogin->Held(), 0);
}

void tst_caffeinate::endsWhenNobodyReadsItsOutput()
{
    m_pRunning->RunByAsker("direct", "pipe");
    QTRY_COMPARE(m_pLogin->Held(), 1);
    m_pRunning->write("\n");
    QTRY_COMPARE(m_pLogin->Held(), 0);
    QCOMPARE(m_pRunning->state(), QProcess::Running);
}

void tst_caffeinate::goesOnWithoutThoseAboveTheAsker()
{
    // The shell has started the asker, which asks for itself: only the asker counts.
    m_pRunning->RunByShell(QFile::encodeName(QCoreApplication::applicationDirPath())
                           + "/caffeinate_asker direct null 2592000 </dev/null >/dev/null & echo $!; wait\n");
    QTRY_COMPARE(m_pLogin->Held(), 1);
    QTRY_VERIFY(m_pRunning->canReadLine());
    const pid_t nAsker = m_pRunning->readLine().trimmed().toInt();
    QVERIFY(nAsker > 1);
    m_pRunning->Signal(SIGKILL);
    QTRY_COMPARE(m_pRunning->state(), QProcess::NotRunning);
    QVERIFY(!QTest::qWaitFor([this] { return m_pLogin->Held() == 0; }, 500));
    QCOMPARE(m_pLogin->Held(), 1);
    ::kill(nAsker, SIGKILL);
    QTRY_COMPARE(m_pLogin->Held(), 0);
}

void tst_caffeinate::withoutLock_data()
{
    QTest::addColumn<int>("nManner");
    QTest::addColumn<QString>("strBus"); // the login manager's own when it is empty
    QTest::addColumn<QString>("strFlag");
    QTest::addColumn<QByteArray>("baError"); // how the one line begins
    const auto row = [](const char* pszName, CFakeLogin::ENManner enManner, const char* pszBus,
                        const char* pszFlag, const char* pszError) {
        QTest::newRow(pszName) << int(enManner) << pszBus << pszFlag << QByteArray(pszError);
    };
    row("no login manager", CFakeLogin::MANNER_ABSENT, "", "-u",
        "caffeinate: no login manager: The name org.freedesktop.login1 was not provided");
    row("refused", CFakeLogin::MANNER_REFUSE, "", "-u", "caffeinate: no login manager: not today\n");
    row("no answer", CFakeLogin::MANNER_SILENT, "", "-u", "caffeinate: no login manager: ");
    row("no bus", CFakeLogin::MANNER_GRANT, "unix:path=/nowhere/bus", "-u", "caffeinate: no ");
    row("not understood", CFakeLogin::MANNER_GRANT, "", "-x", "Usage: caffeinate [-dimsu] [-t SECONDS]\n");
}

void tst_caffeinate::withoutLock()
{
    QFETCH(int, nManner);
    QFETCH(QString, strBus);
    QFETCH(QString, strFlag);
    QFETCH(QByteArray, baError);
    UseLogin(static_cast<CFakeLogin::ENManner>(nManner));
    if (!strBus.isEmpty()) {
        QProcessEnvironment environment = m_pRunning->processEnvironment();
        environment.insert("DBUS_SYSTEM_BUS_ADDRESS", strBus);
        m_pRunning->setProcessEnvironment(environment);
    }
    m_pRunning->Run({strFlag, "-t", "100"});
    QTRY_COMPARE_WITH_TIMEOUT(m_pRunning->state(), QProcess::NotRunning, 20000);
    QCOMPARE(m_pRunning->exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_pRunning->exitCode(), 1);
    const QByteArray baText = m_pRunning->readAllStandardError();
    QVERIFY2(baText.startsWith(baError), baText.constData());
    QCOMPARE(baText.count('\n'), 1);
    const bool bAsked = nManner == CFakeLogin::MANNER_REFUSE || nManner == CFakeLogin::MANNER_SILENT;
    QCOMPARE(m_pLogin->Requests().size(), bAsked ? 1 : 0);
}

QTEST_GUILESS_MAIN(tst_caffeinate)
#include "tst_caffeinate.moc"
