#include <QDir>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <sys/types.h>

/** The program as the session starts it. */
class tst_TarnwickAsk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void wrongLineIsToldAtOnce_data();
    void wrongLineIsToldAtOnce();
    void signalEndsIt_data();
    void signalEndsIt();
    void withoutAScreenItDoesNotHang();
    void nothingMissingNeedsNoScreen();
};

void tst_TarnwickAsk::initTestCase()
{
    // Of a whole program sanitizers tell what Qt leaves at its end, and its locks that they do not see.
    qputenv("ASAN_OPTIONS", "detect_leaks=0");
    qputenv("TSAN_OPTIONS", "report_bugs=0");
}

void tst_TarnwickAsk::wrongLineIsToldAtOnce_data()
{
    QTest::addColumn<QStringList>("listArgument");
    QTest::addColumn<QByteArray>("baError");
    QTest::newRow("none") << QStringList()
                          << QByteArray("nothing to ask: wait, password, source, missing, end or again");
    QTest::newRow("unknown") << QStringList("what") << QByteArray("unknown question: what");
    QTest::newRow("no value") << QStringList({"source", "--name"}) << QByteArray("no value for --name");
}

void tst_TarnwickAsk::wrongLineIsToldAtOnce()
{
    QFETCH(QStringList, listArgument);
    QFETCH(QByteArray, baError);
    QProcess process;
    process.start(TARNWICK_ASK, listArgument);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 2);
    QCOMPARE(process.readAllStandardError(), "TarnwickAsk: " + baError + '\n');
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

void tst_TarnwickAsk::signalEndsIt_data()
{
    QTest::addColumn<QStringList>("listArgument");
    QTest::newRow("wait") << QStringList("wait");
    QTest::newRow("password") << QStringList({"password", "--name", "-platform", "--disk", "--help"});
    QTest::newRow("end") << QStringList("end");
}

void tst_TarnwickAsk::signalEndsIt()
{
    QFETCH(QStringList, listArgument);
    QProcess process;
    process.start(TARNWICK_ASK, listArgument);
    QVERIFY(process.waitForStarted());
    process.setReadChannel(QProcess::StandardError);
    // It names its language when there is an application.
    QByteArray baErrors;
    while (!baErrors.contains("strSystemLanguage")) {
        QVERIFY2(process.waitForReadyRead(), baErrors.constData());
        baErrors += process.readAllStandardError();
    }
    QCOMPARE(kill(pid_t(process.processId()), SIGTERM), 0);
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + SIGTERM);
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
}

static QProcessEnvironment EnvironmentWithoutScreen()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "linuxfb:fb=/nowhere");
    return environment;
}

void tst_TarnwickAsk::withoutAScreenItDoesNotHang()
{
    QProcess process;
    process.setProcessEnvironment(EnvironmentWithoutScreen());
    process.start(TARNWICK_ASK, {"wait"});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 4);
    QVERIFY(process.readAllStandardError().endsWith("TarnwickAsk: there is no screen\n"));
}

void tst_TarnwickAsk::nothingMissingNeedsNoScreen()
{
    for (const auto& pair : {qMakePair(QByteArray("\n"), 0), qMakePair(QByteArray("silent\ta\t1\tb\n"), 4)}) {
        QProcess process;
        process.setProcessEnvironment(EnvironmentWithoutScreen());
        process.start(TARNWICK_ASK, {"missing"});
        process.write(pair.first);
        process.closeWriteChannel();
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), pair.second);
    }
}

QTEST_GUILESS_MAIN(tst_TarnwickAsk)
#include "tst_TarnwickAsk.moc"
