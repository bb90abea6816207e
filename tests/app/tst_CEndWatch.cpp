#include "app/CEndSignals.h"
#include "app/CEndWatch.h"
#include "support/LogFile.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <unistd.h>

static const int STATUS = 7;

/** Ends of processes: this executable plays the one that ends, by its argument. */
class tst_CEndWatch : public QObject
{
    Q_OBJECT

private slots:
    void endsWhatHangs();
    void leavesWhatEndsInTimeAlone();
    void signalIsHeardWhateverHangs_data();
    void signalIsHeardWhateverHangs();
    void ignoredSignalStaysIgnored();
};

/** Begins such an end, and waits until it says that it has. */
static void Start(QProcess& process, const QString& strEnd)
{
    process.start(QCoreApplication::applicationFilePath(), {strEnd});
    QVERIFY(process.waitForReadyRead(20000));
    QCOMPARE(process.readAllStandardOutput(), "begun\n");
}

static void VerifyStatus(QProcess& process, int nStatus)
{
    QVERIFY(process.waitForFinished(20000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), nStatus);
}

void tst_CEndWatch::endsWhatHangs()
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    Start(process, "hang");
    VerifyStatus(process, STATUS);
    QVERIFY2(timer.elapsed() >= CEndWatch::PATIENCE_MS, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(LogLines(), QStringList{"ended although something does not answer"});
}

void tst_CEndWatch::leavesWhatEndsInTimeAlone()
{
    QProcess process;
    QElapsedTimer timer;
    timer.start();
    Start(process, "end");
    VerifyStatus(process, 0);
    QVERIFY(timer.elapsed() < CEndWatch::PATIENCE_MS);
    QCOMPARE(LogLines(), QStringList());
}

void tst_CEndWatch::signalIsHeardWhateverHangs_data()
{
    QTest::addColumn<int>("nSignal");
    QTest::addColumn<QString>("strName");
    QTest::newRow("terminate") << SIGTERM << "SIGTERM";
    QTest::newRow("interrupt") << SIGINT << "SIGINT";
    QTest::newRow("hang up") << SIGHUP << "SIGHUP";
}

void tst_CEndWatch::signalIsHeardWhateverHangs()
{
    QFETCH(int, nSignal);
    QFETCH(QString, strName);
    QProcess process;
    Start(process, "signal");
    QCOMPARE(::kill(pid_t(process.processId()), nSignal), 0);
    VerifyStatus(process, nSignal);
    QCOMPARE(process.readAllStandardOutput(), strName + '\n');
}

void tst_CEndWatch::ignoredSignalStaysIgnored()
{
    const auto pfnOld = std::signal(SIGHUP, SIG_IGN);
    QProcess process;
    Start(process, "signal");
    std::signal(SIGHUP, pfnOld);
    QCOMPARE(::kill(pid_t(process.processId()), SIGHUP), 0);
    QCOMPARE(::kill(pid_t(process.processId()), SIGTERM), 0);
    VerifyStatus(process, SIGTERM);
}

/** The process that ends; its exit status is the signal's number where it hears one. */
static int End(const QString& strEnd)
{
    UseLogFile();
    if (strEnd == "signal") {
        CEndSignals::Install([](int nSignal) {
            std::puts(CEndSignals::Name(nSignal));
            std::fflush(stdout);
            CEndWatch::EndNow(nSignal);
        });
    } else {
        CEndWatch::Begin(STATUS);
        CEndWatch::Begin(STATUS + 1);
    }
    std::puts("begun");
    std::fflush(stdout);
    if (strEnd == "end") {
        return 0;
    }
    for (;;) {
        pause();
    }
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QString strEnd = application.arguments().value(1);
    if (strEnd == "hang" || strEnd == "end" || strEnd == "signal") {
        return End(strEnd);
    }
    tst_CEndWatch test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_CEndWatch.moc"
