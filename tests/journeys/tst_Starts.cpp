#include "journeys/CJourneyBed.h"
#include "support/CFakeCommands.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <csignal>

/** The start of the whole program beside disks and commands that do not answer. */
class tst_Starts : public CJourneyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void windowComesWhateverADiskDoes_data();
    void windowComesWhateverADiskDoes();
    void commandThatHangsIsWaitedForByName();
    void quickStartShowsNoSplash();
    void signalEndsAStartThatWaits();
    void linesOfTheStartReachTheLog();

private:
    QString ProgramLog() const;

    std::unique_ptr<CFakeCommands> m_pCommands;
};

// Three seconds are the bound; the rest is for a machine that is busy with other tests.
static const int MOST_MS = 5000;

void tst_Starts::init()
{
    m_pCommands = std::make_unique<CFakeCommands>();
    Make();
    QDir(BuildPath("bin/Log")).removeRecursively();
}

void tst_Starts::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_pJourney->Picture("failed");
        qWarning().noquote() << m_pJourney->Errors() << ProgramLog();
    }
    m_pJourney->Hang({});
    Clear();
    m_pCommands.reset();
}

QString tst_Starts::ProgramLog() const
{
    const QDir dir(BuildPath("bin/Log"));
    QString strLog;
    for (const QString& strName : dir.entryList(QDir::Files)) {
        strLog += Content(dir.filePath(strName));
    }
    return strLog;
}

void tst_Starts::windowComesWhateverADiskDoes_data()
{
    QTest::addColumn<QStringList>("listCall");
    const auto row = [](const char* pName, const QString& strVolume) {
        QStringList listCall;
        for (const char* pCall : {"open", "read", "readdir", "stat", "statvfs", "opendir"}) {
            listCall.append(QString("%1 %2").arg(pCall, strVolume));
        }
        QTest::newRow(pName) << listCall;
    };
    row("nothing hangs", "/Volumes/NONE");
    row("a stick", "/Volumes/LARGE");
    row("the source", "/Volumes/Macintosh HD");
}

void tst_Starts::windowComesWhateverADiskDoes()
{
    QFETCH(QStringList, listCall);
    m_pJourney->Hang(listCall);
    QElapsedTimer timer;
    timer.start();
    Start();
    QVERIFY2(timer.elapsed() < MOST_MS, qPrintable(QString::number(timer.elapsed())));
    m_pJourney->Picture("window");
    // Every stick is known as one: the command has answered.
    QStringList listDisk = m_pJourney->ListTexts();
    listDisk.sort();
    QCOMPARE(listDisk, (QStringList{"LARGE", "SMALL"}));
}

void tst_Starts::commandThatHangsIsWaitedForByName()
{
    const QTemporaryDir dir;
    m_pCommands->AddDiskutil(QString("while [ \"$3\" = /dev/nvme0n1p1 ] && [ ! -e '%1' ]; do sleep 0.1; done")
                                 .arg(dir.filePath("go")));
    // The environment was taken before the commands stood in front.
    m_pJourney->SetVariable("PATH", qEnvironmentVariable("PATH"));
    m_pJourney->Launch(BuildPath("bin/TarnwickMacPE"));
    QVERIFY(m_pJourney->WaitForWidget("CStartSplash"));
    m_pJourney->Picture("searching");
    QVERIFY(CJourney::WaitFor(
        [&] { return m_pJourney->Text("label_wait", "CStartSplash") == "Waiting for Macintosh HD…"; }));
    m_pJourney->Picture("waiting");
    QVERIFY(!m_pJourney->Shows("CTarnwickMacPE"));
    // The other disks are asked meanwhile.
    QVERIFY(CJourney::WaitFor([&] { return m_pCommands->Calls("diskutil").size() == 3; }));
    WriteFile(dir.filePath("go"));
    QVERIFY(m_pJourney->WaitForWidget("CTarnwickMacPE"));
    QVERIFY(!m_pJourney->Shows("CStartSplash"));
    m_pJourney->Picture("window");
    QCOMPARE(m_pJourney->ListTexts().size(), 2);
    QVERIFY(m_pJourney->Row(m_listVolume).value("visible").toBool());
}

void tst_Starts::quickStartShowsNoSplash()
{
    Start();
    QVERIFY(!m_pJourney->Shows("CStartSplash"));
    m_pJourney->Click("m_pCloseBtn");
    Exit();
}

void tst_Starts::signalEndsAStartThatWaits()
{
    m_pCommands->AddDiskutil("exec sleep 600");
    m_pJourney->SetVariable("PATH", qEnvironmentVariable("PATH"));
    m_pJourney->Launch(BuildPath("bin/TarnwickMacPE"));
    QVERIFY(m_pJourney->WaitForWidget("CStartSplash"));
    m_pJourney->Send(SIGTERM);
    QVERIFY(m_pJourney->WaitForEnd(6500));
    QCOMPARE(m_pJourney->ExitCode(), 128 + SIGTERM);
    QVERIFY2(ProgramLog().contains("ended by signal 15"), qPrintable(ProgramLog()));
    QCOMPARE(QProcess::execute("pgrep", {"-f", "sleep 600"}), 1);
}

void tst_Starts::linesOfTheStartReachTheLog()
{
    Start();
    const QString strLog = ProgramLog();
    QVERIFY2(strLog.contains("diskName: LARGE") && strLog.contains(": /Volumes/Macintosh HD"),
             qPrintable(strLog));
    QVERIFY(strLog.indexOf("start TarnwickMacPE") < strLog.indexOf("diskName: LARGE"));
}

QTEST_MAIN(tst_Starts)
#include "tst_Starts.moc"
