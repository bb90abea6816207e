#include "journeys/CJourneyBed.h"

#include <QElapsedTimer>

#include <csignal>

/** The whole program closed, ended by a signal, without its display, and beside disks that hang. */
class tst_Ends : public CJourneyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void signalEndsInOrder_data();
    void signalEndsInOrder();
    void lostDisplayEndsInOrder();
    void sizeLimitIsAnErrorOfTheFile();
    void nothingThatHangsHoldsTheEnd_data();
    void nothingThatHangsHoldsTheEnd();

private:
    enum ENStage
    {
        SELECTION,
        EXIT_QUESTION,
        SIZING,
        COPYING,
        STOP_QUESTION
    };

    void Reach(int nStage);
    void StartCopy();
    QString ProgramLog() const;
    QString Report() const;
};

// Leaving may take 5 s; the rest is for a machine that is busy with other tests.
static const int MOST_MS = 6500;

void tst_Ends::init()
{
    Make();
    for (int n = 0; n < 40; ++n) {
        WriteFile(m_pSource->Path(QString("Users/anna/Letters/%1/letter.txt").arg(n)), "text");
    }
    QDir(BuildPath("bin/Log")).removeRecursively();
}

void tst_Ends::cleanup()
{
    if (QTest::currentTestFailed()) {
        qWarning().noquote() << m_pJourney->Errors() << ProgramLog();
    }
    m_pJourney->Hang({});
    Clear();
}

QString tst_Ends::ProgramLog() const
{
    const QDir dir(BuildPath("bin/Log"));
    QString strLog;
    for (const QString& strName : dir.entryList(QDir::Files)) {
        strLog += Content(dir.filePath(strName));
    }
    return strLog;
}

/** What stands beside the copy. */
QString tst_Ends::Report() const
{
    const QDir dir(m_pLarge->Path());
    const QStringList listName = dir.entryList({"Tarnwick *.txt"}, QDir::Files);
    return listName.size() == 1 ? Content(dir.filePath(listName.first())) : QString();
}

void tst_Ends::StartCopy()
{
    QVERIFY(m_pJourney->Open(m_listVolume));
    QVERIFY(m_pJourney->TickWhole(m_listUsers));
    QVERIFY(m_pJourney->OpenList("m_pUSBTitleLab"));
    QVERIFY(m_pJourney->ChooseDisk("LARGE"));
    m_pJourney->Click("toolBtn", "m_pSelFilePage");
}

void tst_Ends::Reach(int nStage)
{
    if (nStage == EXIT_QUESTION) {
        m_pJourney->Click("m_pCloseBtn");
        QVERIFY(m_pJourney->WaitForBox(TEXT_EXIT));
    }
    if (nStage == SIZING) {
        m_pJourney->SlowListing(200);
        StartCopy();
        QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Shows("CSearchWaitView"); }));
    }
    if (nStage == COPYING || nStage == STOP_QUESTION) {
        m_pJourney->SlowWrites(SLOW_MS);
        StartCopy();
        QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Progress() > 5; }));
    }
    if (nStage == STOP_QUESTION) {
        // The first moments after Copy belong to its second click.
        QVERIFY(CJourney::WaitFor([&] {
            m_pJourney->Click("toolBtn", "m_pCopyFilePage");
            return m_pJourney->WaitForBox(TEXT_STOP, 500);
        }));
    }
}

void tst_Ends::signalEndsInOrder_data()
{
    QTest::addColumn<int>("nSignal");
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nStage");
    QTest::newRow("selection") << SIGTERM << "15 (SIGTERM)" << int(SELECTION);
    QTest::newRow("interrupted") << SIGINT << "2 (SIGINT)" << int(SELECTION);
    QTest::newRow("hung up at the exit question") << SIGHUP << "1 (SIGHUP)" << int(EXIT_QUESTION);
    QTest::newRow("sizing") << SIGTERM << "15 (SIGTERM)" << int(SIZING);
    QTest::newRow("copying") << SIGTERM << "15 (SIGTERM)" << int(COPYING);
    QTest::newRow("paused at the stop question") << SIGTERM << "15 (SIGTERM)" << int(STOP_QUESTION);
}

void tst_Ends::signalEndsInOrder()
{
    QFETCH(int, nSignal);
    QFETCH(QString, strName);
    QFETCH(int, nStage);
    Start();
    Reach(nStage);
    if (QTest::currentTestFailed()) {
        return;
    }
    m_pJourney->Send(nSignal);
    QVERIFY(m_pJourney->WaitForEnd(MOST_MS));
    QCOMPARE(m_pJourney->ExitCode(), 128 + nSignal);
    QVERIFY2(ProgramLog().contains("ended by signal " + strName), qPrintable(ProgramLog()));
    QVERIFY(!ProgramLog().contains("does not answer"));
    const bool bCopy = nStage == COPYING || nStage == STOP_QUESTION;
    QCOMPARE(ProgramLog().contains("Copy stopped"), bCopy);
    QVERIFY2(!bCopy || Report().contains("The copy was stopped."), qPrintable(Report()));
}

void tst_Ends::lostDisplayEndsInOrder()
{
    const QByteArray baDisplay = qgetenv("DISPLAY");
    QProcess server;
    server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "1440x900x24", "-nolisten", "tcp", "-noreset"});
    QVERIFY(server.waitForReadyRead(20000));
    const QString strDisplay = ":" + QString::fromLatin1(server.readLine()).trimmed();
    m_pJourney->SetVariable("DISPLAY", strDisplay);
    qputenv("DISPLAY", strDisplay.toLatin1()); // the mouse goes there, too
    Start();
    Reach(COPYING);
    qputenv("DISPLAY", baDisplay);
    server.kill();
    QVERIFY(server.waitForFinished());
    QVERIFY(m_pJourney->WaitForEnd(MOST_MS));
    QCOMPARE(m_pJourney->ExitCode(), 1);
    QVERIFY2(ProgramLog().contains("ended by the loss of the display"), qPrintable(ProgramLog()));
    QVERIFY(ProgramLog().contains("Copy stopped"));
    QVERIFY2(Report().contains("The copy was stopped."), qPrintable(Report()));
}

/** The system sends a signal that would end the program, beside the error. */
void tst_Ends::sizeLimitIsAnErrorOfTheFile()
{
    QVERIFY(m_pJourney->Start("prlimit", {"--fsize=1000000", BuildPath("bin/TarnwickMacPE")}));
    StartCopy();
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    QVERIFY2(ProgramLog().contains("File too large"), qPrintable(ProgramLog()));
    m_pJourney->Click("m_pCloseBtn");
    Exit();
}

void tst_Ends::nothingThatHangsHoldsTheEnd_data()
{
    QTest::addColumn<QString>("strHang");
    QTest::addColumn<int>("nStage");
    QTest::addColumn<bool>("bSignal");
    for (const bool bSignal : {false, true}) {
        const char* const pHow = bSignal ? "by a signal" : "closed";
        QTest::addRow("write, %s", pHow) << "write /Volumes/LARGE" << int(COPYING) << bSignal;
        QTest::addRow("read, %s", pHow) << "read /Volumes/Macintosh HD" << int(COPYING) << bSignal;
        QTest::addRow("listing, %s", pHow) << "opendir /Volumes/Macintosh HD" << int(SIZING) << bSignal;
    }
}

void tst_Ends::nothingThatHangsHoldsTheEnd()
{
    QFETCH(QString, strHang);
    QFETCH(int, nStage);
    QFETCH(bool, bSignal);
    Start();
    Reach(nStage);
    if (QTest::currentTestFailed()) {
        return;
    }
    m_pJourney->Hang({strHang});
    if (!bSignal) {
        m_pJourney->Click("m_pCloseBtn");
        QVERIFY(m_pJourney->WaitForBox(TEXT_EXIT));
    }
    QElapsedTimer timer;
    timer.start();
    if (bSignal) {
        m_pJourney->Send(SIGTERM);
    } else {
        QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, "Yes"));
    }
    QVERIFY(m_pJourney->WaitForEnd(MOST_MS));
    QVERIFY2(timer.elapsed() < MOST_MS, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(m_pJourney->ExitCode(), bSignal ? 128 + SIGTERM : 0);
    QVERIFY2(ProgramLog().contains("does not answer"), qPrintable(ProgramLog()));
    QVERIFY(!ProgramLog().contains("ended although"));
    const bool bCopy = nStage == COPYING;
    QVERIFY2(!bCopy || Report().contains("\nEnded: "), qPrintable(Report()));
}

QTEST_MAIN(tst_Ends)
#include "tst_Ends.moc"
