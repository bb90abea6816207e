#include "journeys/CJourneyBed.h"

#include <QTemporaryDir>

#include <sys/mount.h>

static const int PAGE_SELECT = 0;
static const int PAGE_COPY = 1;

/** The whole program in its real window, one story a function. */
class tst_Journeys : public CJourneyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void rescueCopiesEveryTickedFile();
    void questionPausesAndResumes_data();
    void questionPausesAndResumes();
    void cancelAnsweredYesStops();
    void stickIsRefused_data();
    void stickIsRefused();
    void pulledDestinationShowsOnlyTheRemovalMessage();
    void otherStickPulledLeavesTheCopyAlone();
    void arrivingStickBecomesADestination();
    void exitOnSelectionPageCanBeDeclined();
    void exitOnCopyPageEndsTheProgram();
    void windowAnswersWhileAStickIsSlow();
    void exitWhileSizesAreCountedEndsTheProgram();
    void exitDuringAHangingSearchEndsAtOnce();
    void clickElsewhereClosesTheDropDown();

private:
    void TickUsersAndChoose(const QString& strStick);
    void StartCopyTo(const QString& strStick);
    void StartSlowCopy();
    void VerifyCopyStands();
    QString ProgramLog() const;
};

void tst_Journeys::init()
{
    Make();
    const QString strUser = m_pSource->Path("Users/anna/");
    WriteFile(strUser + "Documents/letter.txt", "Dear grandma,\n");
    WriteFile(strUser + "Documents/empty.txt");
    WriteFile(strUser + ".hidden", "hidden");
    WriteFile(strUser + "100%1 <b>bold</b>.txt", "percent");
    WriteFile(strUser + "写真/夏.jpg", QByteArray(300000, 'j'));
    QDir(BuildPath("bin/Log")).removeRecursively();
}

void tst_Journeys::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_pJourney->Picture("failed");
        qWarning().noquote() << m_pJourney->Errors();
    }
    Clear();
}

QString tst_Journeys::ProgramLog() const
{
    const QDir dir(BuildPath("bin/Log"));
    QString strLog;
    for (const QString& strName : dir.entryList(QDir::Files)) {
        strLog += Content(dir.filePath(strName));
    }
    return strLog;
}

void tst_Journeys::TickUsersAndChoose(const QString& strStick)
{
    QVERIFY(m_pJourney->Open(m_listVolume));
    QVERIFY(m_pJourney->TickWhole(m_listUsers));
    QCOMPARE(m_pJourney->Row(m_listVolume).value("state").toInt(), int(Qt::PartiallyChecked));
    m_pJourney->Picture("ticked");
    QVERIFY(m_pJourney->OpenList("m_pUSBTitleLab"));
    m_pJourney->Picture("sticks");
    QVERIFY2(m_pJourney->ChooseDisk(strStick), qPrintable(m_pJourney->ListTexts().join(',')));
}

void tst_Journeys::StartCopyTo(const QString& strStick)
{
    Start();
    m_pJourney->Picture("window");
    TickUsersAndChoose(strStick);
    const QJsonObject objCopy = m_pJourney->Widget("toolBtn", "m_pSelFilePage");
    QVERIFY(objCopy.value("enabled").toBool());
    m_pJourney->Click(objCopy);
}

/** To the large stick, up to where some of it is copied. */
void tst_Journeys::StartSlowCopy()
{
    m_pJourney->SlowWrites(SLOW_MS);
    StartCopyTo("LARGE");
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Page() == PAGE_COPY && m_pJourney->Progress() > 5; }));
    m_pJourney->Picture("copying");
}

void tst_Journeys::VerifyCopyStands()
{
    // Unpaused and at full speed the copy would be over in a moment.
    m_pJourney->SlowWrites(0);
    int nBefore = -1;
    QVERIFY(CJourney::WaitFor([&] {
        const int nLast = nBefore;
        nBefore = m_pJourney->Progress();
        return nBefore == nLast;
    }));
    QVERIFY(nBefore < 100);
    QVERIFY(!CJourney::WaitFor([&] { return m_pJourney->Progress() != nBefore; }, 500));
}

void tst_Journeys::rescueCopiesEveryTickedFile()
{
    StartCopyTo("LARGE");
    QVERIFY(m_pJourney->WaitForBox(TEXT_COMPLETED));
    m_pJourney->Picture("completed");
    QVERIFY(m_pJourney->Text("m_pTimeLab").contains("00:00:00"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Page() == PAGE_SELECT; }));
    VerifyRescued();
    QVERIFY2(ProgramLog().contains("start TarnwickMacPE"), qPrintable(ProgramLog()));
    QVERIFY2(ProgramLog().contains("problems 0"), qPrintable(ProgramLog()));
}

void tst_Journeys::questionPausesAndResumes_data()
{
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<QString>("strPage");
    QTest::addColumn<QString>("strQuestion");
    QTest::newRow("cancel") << "toolBtn"
                            << "m_pCopyFilePage" << TEXT_STOP;
    QTest::newRow("exit") << "m_pCloseBtn"
                          << "" << TEXT_EXIT;
}

void tst_Journeys::questionPausesAndResumes()
{
    QFETCH(QString, strButton);
    QFETCH(QString, strPage);
    QFETCH(QString, strQuestion);
    StartSlowCopy();
    m_pJourney->Click(strButton, strPage);
    QVERIFY(m_pJourney->WaitForBox(strQuestion));
    m_pJourney->Picture("question");
    VerifyCopyStands();
    QVERIFY(m_pJourney->AnswerBox(strQuestion, "Cancel"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    VerifyRescued();
}

void tst_Journeys::cancelAnsweredYesStops()
{
    StartSlowCopy();
    m_pJourney->Click("toolBtn", "m_pCopyFilePage");
    QVERIFY(m_pJourney->AnswerBox(TEXT_STOP, "Yes"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Page() == PAGE_SELECT; }));
    QVERIFY(CTreeCompare::FileCount(Rescue()) > 0);
    QVERIFY(CTreeCompare::FileCount(Rescue()) < CTreeCompare::FileCount(m_pSource->Path("Users")));
    QVERIFY2(ProgramLog().contains("stopped"), qPrintable(ProgramLog()));
}

void tst_Journeys::stickIsRefused_data()
{
    QTest::addColumn<QString>("strStick");
    QTest::addColumn<QString>("strText");
    QTest::newRow("read-only") << "LARGE" << TEXT_READ_ONLY;
    QTest::newRow("no-space") << "SMALL" << TEXT_NO_SPACE;
}

void tst_Journeys::stickIsRefused()
{
    QFETCH(QString, strStick);
    QFETCH(QString, strText);
    // The large one cannot be written to, the small one has no room.
    QVERIFY(m_pLarge->MakeReadOnly());
    StartCopyTo(strStick);
    QVERIFY(m_pJourney->WaitForBox(strText));
    m_pJourney->Picture("refused");
    QVERIFY(m_pJourney->AnswerBox(strText, "OK"));
    QCOMPARE(m_pJourney->Page(), PAGE_SELECT);
    QCOMPARE(m_pJourney->Row(m_listUsers).value("state").toInt(), int(Qt::Checked));
    QVERIFY(QDir("/Volumes/" + strStick).isEmpty());
}

void tst_Journeys::pulledDestinationShowsOnlyTheRemovalMessage()
{
    StartSlowCopy();
    m_pLarge->Pull();
    QVERIFY(m_pJourney->WaitForBox(TEXT_REMOVED));
    m_pJourney->Picture("removed");
    QVERIFY(m_pJourney->AnswerBox(TEXT_REMOVED, "OK"));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Page() == PAGE_SELECT; }));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->ListTexts() == QStringList{"SMALL"}; }));
    QVERIFY(!m_pJourney->Modal().value("open").toBool());
    // Nothing was written to where the stick had been, and nothing else was cleaned away.
    QVERIFY(QDir("/Volumes/LARGE").isEmpty());
    QVERIFY(QFile::exists(m_pSource->Path("Users/anna/Documents/letter.txt")));

    // A second removal message, or the completion, would stand in the way of the exit question.
    m_pJourney->SlowWrites(0);
    m_pJourney->Click("m_pCloseBtn");
    Exit();
}

void tst_Journeys::otherStickPulledLeavesTheCopyAlone()
{
    StartSlowCopy();
    m_pSmall->Pull();
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->ListTexts() == QStringList{"LARGE"}; }));
    QVERIFY(!m_pJourney->Modal().value("open").toBool());
    QCOMPARE(m_pJourney->Page(), PAGE_COPY);
    m_pJourney->SlowWrites(0);
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
    VerifyRescued();
}

void tst_Journeys::arrivingStickBecomesADestination()
{
    m_pSmall.reset();
    m_pLarge.reset();
    Start();
    QCOMPARE(m_pJourney->Text("m_pUSBTitleLab"), TEXT_PROMPT);
    PlugInLarge();
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Text("m_pUSBTitleLab") == "LARGE"; }));
    m_pJourney->Picture("arrived");
    m_pLarge->Pull(true);
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Text("m_pUSBTitleLab") == TEXT_PROMPT; }));
}

void tst_Journeys::exitOnSelectionPageCanBeDeclined()
{
    Start();
    m_pJourney->Click("m_pCloseBtn");
    QVERIFY(m_pJourney->WaitForBox(TEXT_EXIT));
    m_pJourney->Picture("exit");
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, "Cancel"));
    QVERIFY(m_pJourney->IsRunning());
    QVERIFY(m_pJourney->Shows("CTarnwickMacPE"));
    m_pJourney->Click("m_pCloseBtn");
    Exit();
}

void tst_Journeys::exitOnCopyPageEndsTheProgram()
{
    StartSlowCopy();
    m_pJourney->Click("m_pCloseBtn");
    Exit();
    QVERIFY2(ProgramLog().contains("stopped"), qPrintable(ProgramLog()));
}

void tst_Journeys::windowAnswersWhileAStickIsSlow()
{
    StartSlowCopy();
    m_pJourney->SlowWrites(3000);
    // Each block now hangs for seconds; the window must answer all the same.
    for (int n = 0; n < 20; ++n) {
        QVERIFY(m_pJourney->Ask({{"ask", "modal"}}, 1000).contains("open"));
    }
    m_pJourney->SlowWrites(0);
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, "OK"));
}

void tst_Journeys::exitWhileSizesAreCountedEndsTheProgram()
{
    for (int n = 0; n < 40; ++n) {
        WriteFile(m_pSource->Path(QString("Users/anna/Letters/%1/letter.txt").arg(n)), "text");
    }
    Start();
    TickUsersAndChoose("LARGE");
    m_pJourney->SlowListing(200);
    m_pJourney->Click("toolBtn", "m_pSelFilePage");
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->Shows("CSearchWaitView"); }));
    m_pJourney->Picture("counting");
    m_pJourney->Click("m_pCloseBtn");
    Exit();
    QVERIFY(QDir("/Volumes/LARGE").isEmpty());
}

void tst_Journeys::exitDuringAHangingSearchEndsAtOnce()
{
    Start();
    // The command is found anew for each search: from now on it hangs.
    const QTemporaryDir dirCommand;
    const QString strHang = dirCommand.filePath("hang");
    WriteFile(strHang, "#!/bin/sh\nexec tail -f /dev/null\n");
    QVERIFY(QFile::setPermissions(strHang, QFile::ReadOwner | QFile::ExeOwner));
    const QString strCommand = BuildPath("libexec/tarnwick/diskutil");
    QCOMPARE(mount(qPrintable(strHang), qPrintable(strCommand), nullptr, MS_BIND, nullptr), 0);
    m_pJourney->Click("RefreshLab");
    m_pJourney->Click("m_pCloseBtn");
    const bool bAnswered = m_pJourney->AnswerBox(TEXT_EXIT, "Yes");
    const bool bEnded = m_pJourney->WaitForEnd(3000);
    QCOMPARE(umount2(qPrintable(strCommand), MNT_DETACH), 0);
    QVERIFY(bAnswered);
    QVERIFY(bEnded);
    QCOMPARE(m_pJourney->ExitCode(), 0);
    QCOMPARE(QProcess::execute("pgrep", {"-f", "tail -f /dev/null"}), 1);
}

void tst_Journeys::clickElsewhereClosesTheDropDown()
{
    Start();
    const auto fnClosed = [this] { return !m_pJourney->List().value("visible").toBool(); };
    QVERIFY(m_pJourney->OpenList("m_pDropBtn"));
    m_pJourney->Click("m_pSrcLab");
    QVERIFY(CJourney::WaitFor(fnClosed));

    // The arrow too only closes what it has opened. The press and release are
    // through as soon as the next click has opened the list again.
    QVERIFY(m_pJourney->OpenList("m_pDropBtn"));
    m_pJourney->Click("m_pDropBtn");
    QVERIFY(CJourney::WaitFor(fnClosed));
    QVERIFY(m_pJourney->OpenList("m_pDropBtn"));
    m_pJourney->Picture("open-again");
}

QTEST_MAIN(tst_Journeys)
#include "tst_Journeys.moc"
