#include "standin/CFakeLogin.h"

#include <QtTest>

#include <csignal>

static const char REQUEST[] = "sleep:idle|Tarnwick|Files are being rescued|block";

/** A process that finds the command by its name, as the program does, on the fake's bus. */
class CRunning : public QProcess
{
public:
    explicit CRunning(const CFakeLogin& login)
    {
        QProcessEnvironment environment = login.Environment();
        environment.insert(QStringLiteral("PATH"),
                           QStringLiteral(TARNWICK_COMMAND_FOLDER) + QLatin1Char(':')
                               + environment.value(QStringLiteral("PATH")));
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
        start(QStringLiteral(TARNWICK_COMMAND_FOLDER) + QStringLiteral("/caffeinate"), listArgument);
    }

    /** Hands the line to a shell, as the program does. */
    void RunByShell(const QByteArray& baLine)
    {
        start(QStringLiteral("bash"), QStringList());
        waitForStarted();
        write(baLine);
        closeWriteChannel();
    }

    /** Lets another process ask. */
    void RunByAsker(const QString& strHow, const QString& strOutput)
    {
        start(QCoreApplication::applicationDirPath() + QStringLiteral("/caffeinate_asker"),
              {strHow, strOutput, QStringLiteral("2592000")});
    }

    void Signal(int nSignal) { ::kill(pid_t(processId()), nSignal); }
};

class tst_caffeinate : public QObject
{
    Q_OBJECT

private slots:
    void asTheProgramAsks();
    void whatIsAskedFor_data();
    void whatIsAskedFor();
    void endsWithItsTime();
    void endsWithASignal_data();
    void endsWithASignal();
    void endsWhenItsShellIsKilled();
    void endsWhenTheAskerIsKilled_data();
    void endsWhenTheAskerIsKilled();
    void endsWhenNobodyReadsItsOutput();
    void goesOnWithoutThoseAboveTheAsker();
    void closedOutputIsNoReasonToEnd();
    void withoutLock_data();
    void withoutLock();
    void withoutBus();
    void usage();
};

void tst_caffeinate::asTheProgramAsks()
{
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.RunByShell("caffeinate -u -t 2592000  \n");
    QTRY_COMPARE(login.Requests(), QStringList{QString::fromLatin1(REQUEST)});
    QCOMPARE(login.Held(), 1);
    // It goes on holding: nothing of it ends in a second.
    QVERIFY(!running.waitForFinished(1000));
    QCoreApplication::processEvents();
    QCOMPARE(login.Held(), 1);
    QCOMPARE(running.readAllStandardError(), QByteArray());
}

void tst_caffeinate::whatIsAskedFor_data()
{
    QTest::addColumn<QString>("strFlags");
    QTest::addColumn<QString>("strWhat");
    QTest::newRow("user") << QStringLiteral("-u") << QStringLiteral("sleep:idle");
    QTest::newRow("system") << QStringLiteral("-s") << QStringLiteral("sleep");
    QTest::newRow("display") << QStringLiteral("-d") << QStringLiteral("idle");
    QTest::newRow("several") << QStringLiteral("-dims") << QStringLiteral("sleep:idle");
}

void tst_caffeinate::whatIsAskedFor()
{
    QFETCH(QString, strFlags);
    QFETCH(QString, strWhat);
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.Run({strFlags, QStringLiteral("-t"), QStringLiteral("100")});
    QTRY_COMPARE(login.Requests().size(), 1);
    QCOMPARE(login.Requests().first().section(QLatin1Char('|'), 0, 0), strWhat);
}

void tst_caffeinate::endsWithItsTime()
{
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.RunByShell("caffeinate -u -t 1  \n");
    QTRY_COMPARE(login.Held(), 1);
    QElapsedTimer timer;
    timer.start();
    QTRY_COMPARE(login.Held(), 0);
    QVERIFY2(timer.elapsed() > 800, qPrintable(QString::number(timer.elapsed())));
    QTRY_COMPARE(running.state(), QProcess::NotRunning);
    QCOMPARE(running.exitCode(), 0);
    QCOMPARE(running.readAllStandardError(), QByteArray());
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
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.Run({QStringLiteral("-u"), QStringLiteral("-t"), QStringLiteral("100")});
    QTRY_COMPARE(login.Held(), 1);
    running.Signal(nSignal);
    QTRY_COMPARE(running.state(), QProcess::NotRunning);
    QCOMPARE(running.exitStatus(), QProcess::NormalExit);
    QCOMPARE(running.exitCode(), 0);
    QTRY_COMPARE(login.Held(), 0);
}

void tst_caffeinate::endsWhenItsShellIsKilled()
{
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.RunByShell("caffeinate -u -t 2592000  \n");
    QTRY_COMPARE(login.Held(), 1);
    running.Signal(SIGKILL);
    QTRY_COMPARE(login.Held(), 0);
}

void tst_caffeinate::endsWhenTheAskerIsKilled_data()
{
    QTest::addColumn<QString>("strHow");
    QTest::addColumn<QString>("strOutput");
    QTest::newRow("as the program asks") << QStringLiteral("shell") << QStringLiteral("pipe");
    QTest::newRow("by a shell, output lost") << QStringLiteral("shell") << QStringLiteral("null");
    QTest::newRow("itself, output lost") << QStringLiteral("direct") << QStringLiteral("null");
}

void tst_caffeinate::endsWhenTheAskerIsKilled()
{
    QFETCH(QString, strHow);
    QFETCH(QString, strOutput);
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.RunByAsker(strHow, strOutput);
    QTRY_COMPARE(login.Held(), 1);
    QVERIFY(!running.waitForFinished(300));
    QCOMPARE(login.Held(), 1);
    running.Signal(SIGKILL);
    QTRY_COMPARE(login.Held(), 0);
}

void tst_caffeinate::endsWhenNobodyReadsItsOutput()
{
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.RunByAsker(QStringLiteral("direct"), QStringLiteral("pipe"));
    QTRY_COMPARE(login.Held(), 1);
    running.write("\n");
    QTRY_COMPARE(login.Held(), 0);
    QCOMPARE(running.state(), QProcess::Running);
}

void tst_caffeinate::goesOnWithoutThoseAboveTheAsker()
{
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    // The shell has started the asker, which asks for itself: only the asker counts.
    running.RunByShell(QFile::encodeName(QCoreApplication::applicationDirPath())
                       + "/caffeinate_asker direct null 2592000 </dev/null >/dev/null & echo $!; wait\n");
    QTRY_COMPARE(login.Held(), 1);
    QTRY_VERIFY(running.canReadLine());
    const pid_t nAsker = running.readLine().trimmed().toInt();
    QVERIFY(nAsker > 1);
    running.Signal(SIGKILL);
    QTRY_COMPARE(running.state(), QProcess::NotRunning);
    QVERIFY(!QTest::qWaitFor([&login] { return login.Held() == 0; }, 500));
    QCOMPARE(login.Held(), 1);
    ::kill(nAsker, SIGKILL);
    QTRY_COMPARE(login.Held(), 0);
}

void tst_caffeinate::closedOutputIsNoReasonToEnd()
{
    const CFakeLogin login;
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.RunByShell("caffeinate -u -t 2592000 <&- >&- 2>&-\n");
    QTRY_COMPARE(login.Held(), 1);
    QVERIFY(!running.waitForFinished(500));
    QCoreApplication::processEvents();
    QCOMPARE(login.Held(), 1);
    running.Signal(SIGKILL);
    QTRY_COMPARE(login.Held(), 0);
}

void tst_caffeinate::withoutLock_data()
{
    QTest::addColumn<int>("nManner");
    QTest::addColumn<QByteArray>("baError");
    QTest::newRow("no login manager")
        << int(CFakeLogin::MANNER_ABSENT)
        << QByteArray("caffeinate: no login manager: The name org.freedesktop.login1 "
                      "was not provided");
    QTest::newRow("refused") << int(CFakeLogin::MANNER_REFUSE)
                             << QByteArray("caffeinate: no login manager: not today\n");
    QTest::newRow("no answer") << int(CFakeLogin::MANNER_SILENT)
                               << QByteArray("caffeinate: no login manager: ");
}

void tst_caffeinate::withoutLock()
{
    QFETCH(int, nManner);
    QFETCH(QByteArray, baError);
    const CFakeLogin login(static_cast<CFakeLogin::ENManner>(nManner));
    QVERIFY(login.IsValid());
    CRunning running(login);
    running.Run({QStringLiteral("-u"), QStringLiteral("-t"), QStringLiteral("100")});
    QTRY_COMPARE_WITH_TIMEOUT(running.state(), QProcess::NotRunning, 20000);
    QCOMPARE(running.exitStatus(), QProcess::NormalExit);
    QCOMPARE(running.exitCode(), 1);
    const QByteArray baText = running.readAllStandardError();
    QVERIFY2(baText.startsWith(baError), baText.constData());
    QCOMPARE(baText.count('\n'), 1);
}

void tst_caffeinate::withoutBus()
{
    const CFakeLogin login;
    CRunning running(login);
    QProcessEnvironment environment = running.processEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), QStringLiteral("unix:path=/nowhere/bus"));
    running.setProcessEnvironment(environment);
    running.Run({QStringLiteral("-u"), QStringLiteral("-t"), QStringLiteral("100")});
    QTRY_COMPARE(running.state(), QProcess::NotRunning);
    QCOMPARE(running.exitCode(), 1);
    QVERIFY(running.readAllStandardError().startsWith("caffeinate: no "));
    QCOMPARE(login.Requests(), QStringList());
}

void tst_caffeinate::usage()
{
    const CFakeLogin login;
    CRunning running(login);
    running.Run({QStringLiteral("-x")});
    QTRY_COMPARE(running.state(), QProcess::NotRunning);
    QCOMPARE(running.exitCode(), 1);
    QCOMPARE(running.readAllStandardError(), QByteArray("Usage: caffeinate [-dimsu] [-t SECONDS]\n"));
    QCOMPARE(login.Requests(), QStringList());
}

QTEST_GUILESS_MAIN(tst_caffeinate)
#include "tst_caffeinate.moc"
