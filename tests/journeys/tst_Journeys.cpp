#include "journeys/CJourney.h"
#include "support/CTreeCompare.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"
#include "support/Texts.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/mount.h>

static const int PAGE_SELECT = 0;
static const int PAGE_COPY = 1;
static const int SLOW_MS = 20;

/** The whole program in its real window, one story a function. */
class tst_Journeys : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void RescueCopiesEveryTickedFile();
    void CancelAnsweredCancelPausesAndResumes();
    void CancelAnsweredYesStops();
    void ReadOnlyStickIsRefused();
    void StickTooSmallIsRefused();
    void DestinationPulledShowsOnlyTheRemovalMessage();
    void OtherStickPulledLeavesTheCopyAlone();
    void ArrivingStickBecomesADestination();
    void ExitOnSelectionPageCanBeDeclined();
    void ExitOnCopyPagePausesAndResumes();
    void ExitOnCopyPageEndsTheProgram();
    void WindowAnswersWhileAStickIsSlow();
    void ExitWhileSizesAreCountedEndsTheProgram();
    void ExitDuringAHangingSearchEndsAtOnce();
    void ClickElsewhereClosesTheDropDown();

private:
    void FillSource();
    void Begin();
    void TickUsersAndChoose(const QString& strStick);
    void StartCopyTo(const QString& strStick, bool bSlow);
    int Page();
    int Progress();
    void VerifyCopyStands();
    void VerifyRescued();
    QString Text(const QString& strWidget);
    QString Destination(const QString& strStick);
    QString ProgramLog();

    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pSmall;
    std::unique_ptr<CVolume> m_pLarge;
    std::unique_ptr<CJourney> m_pJourney;
};

void tst_Journeys::FillSource()
{
    const QString strUser = m_pSource->Path(QStringLiteral("Users/anna/"));
    WriteFile(strUser + QStringLiteral("Documents/letter.txt"), "Dear grandma,\n");
    WriteFile(strUser + QStringLiteral("Documents/empty.txt"), QByteArray());
    WriteFile(strUser + QStringLiteral(".hidden"), "hidden");
    WriteFile(strUser + QStringLiteral("100%1 <b>bold</b>.txt"), "percent");
    WriteFile(strUser + QStringLiteral("写真/夏.jpg"), QByteArray(300000, 'j'));
    for (int n = 0; n < 24; ++n) {
        WriteFile(strUser + QStringLiteral("Pictures/IMG_%1.jpg").arg(n), QByteArray(1 << 20, char('a' + n)));
    }
    WriteFile(m_pSource->Path(QStringLiteral("Other/left.txt")), "not ticked");
}

void tst_Journeys::init()
{
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 200);
    m_pSmall = std::make_unique<CVolume>(QStringLiteral("SMALL"), QStringLiteral("/dev/sdb1"), 4);
    m_pLarge = std::make_unique<CVolume>(QStringLiteral("LARGE"), QStringLiteral("/dev/sdc1"), 500);
    QVERIFY2(m_pSource->IsValid() && m_pSmall->IsValid() && m_pLarge->IsValid(), "volumes can be mounted");
    FillSource();
    QDir(BuildPath(QStringLiteral("bin/Log"))).removeRecursively();
    m_pJourney = std::make_unique<CJourney>(
        BuildPath(QStringLiteral("pictures/") + QLatin1String(QTest::currentTestFunction())));
}

void tst_Journeys::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_pJourney->Picture(QStringLiteral("failed"));
        qWarning().noquote() << m_pJourney->Errors();
    }
    m_pJourney.reset();
    m_pLarge.reset();
    m_pSmall.reset();
    m_pSource.reset();
}

void tst_Journeys::Begin()
{
    QVERIFY(m_pJourney->Start(BuildPath(QStringLiteral("bin/TarnwickMacPE"))));
    m_pJourney->Picture(QStringLiteral("window"));
}

int tst_Journeys::Page()
{
    return m_pJourney->Widget(QStringLiteral("m_pStackWidget"))
        .value(QStringLiteral("currentIndex"))
        .toInt(-1);
}

int tst_Journeys::Progress()
{
    return m_pJourney->Widget(QStringLiteral("m_pProgress")).value(QStringLiteral("value")).toInt(-1);
}

QString tst_Journeys::Text(const QString& strWidget)
{
    return m_pJourney->Widget(strWidget).value(QStringLiteral("text")).toString();
}

QString tst_Journeys::Destination(const QString& strStick)
{
    const QDir dir(QStringLiteral("/Volumes/") + strStick);
    const QStringList listFolder = dir.entryList({QStringLiteral("Tarnwick *  at  *")}, QDir::Dirs);
    return listFolder.size() == 1 ? dir.filePath(listFolder.first()) : QString();
}

QString tst_Journeys::ProgramLog()
{
    const QDir dir(BuildPath(QStringLiteral("bin/Log")));
    QString strLog;
    for (const QString& strName : dir.entryList(QDir::Files)) {
        QFile file(dir.filePath(strName));
        if (file.open(QIODevice::ReadOnly)) {
            strLog += QString::fromUtf8(file.readAll());
        }
    }
    return strLog;
}

void tst_Journeys::TickUsersAndChoose(const QString& strStick)
{
    const QStringList listVolume{QStringLiteral("/Volumes/Macintosh HD")};
    const QStringList listUsers{QStringLiteral("/Volumes/Macintosh HD"), QStringLiteral("Users")};
    m_pJourney->Expand(listVolume);
    QVERIFY(CJourney::WaitFor(
        [&] { return m_pJourney->Row(listVolume).value(QStringLiteral("expanded")).toBool(); }));
    m_pJourney->Tick(listUsers);
    QVERIFY(CJourney::WaitFor(
        [&] { return m_pJourney->Row(listUsers).value(QStringLiteral("state")).toInt() == 2; }));
    QCOMPARE(m_pJourney->Row(listVolume).value(QStringLiteral("state")).toInt(), 1);
    m_pJourney->Picture(QStringLiteral("ticked"));

    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pUSBTitleLab")));
    QVERIFY(CJourney::WaitFor([&] { return m_pJourney->List().value(QStringLiteral("visible")).toBool(); }));
    const int nItem = m_pJourney->ListTexts().indexOf(strStick);
    QVERIFY2(nItem >= 0, qPrintable(m_pJourney->ListTexts().join(QLatin1Char(','))));
    m_pJourney->Picture(QStringLiteral("sticks"));
    m_pJourney->Click(m_pJourney->List().value(QStringLiteral("items")).toArray().at(nItem).toObject());
    QVERIFY(CJourney::WaitFor([&] { return Text(QStringLiteral("m_pUSBTitleLab")) == strStick; }));
}

void tst_Journeys::StartCopyTo(const QString& strStick, bool bSlow)
{
    TickUsersAndChoose(strStick);
    m_pJourney->SlowWrites(bSlow ? SLOW_MS : 0);
    const QJsonObject objCopy
        = m_pJourney->Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pSelFilePage"));
    QVERIFY(objCopy.value(QStringLiteral("enabled")).toBool());
    m_pJourney->Click(objCopy);
    if (bSlow) {
        QVERIFY(CJourney::WaitFor([&] { return Page() == PAGE_COPY && Progress() > 5; }));
        m_pJourney->Picture(QStringLiteral("copying"));
    }
}

void tst_Journeys::VerifyCopyStands()
{
    // Unpaused and at full speed the copy would be over in a moment.
    m_pJourney->SlowWrites(0);
    int nBefore = -1;
    QVERIFY(CJourney::WaitFor([&] {
        const int nNow = Progress();
        const bool bStands = nNow == nBefore;
        nBefore = nNow;
        return bStands;
    }));
    QVERIFY(nBefore < 100);
    QVERIFY(!CJourney::WaitFor([&] { return Progress() != nBefore; }, 500));
}

void tst_Journeys::VerifyRescued()
{
    const QString strCopy = Destination(QStringLiteral("LARGE"));
    QVERIFY(!strCopy.isEmpty());
    QCOMPARE(CTreeCompare::Differences(m_pSource->Path(QStringLiteral("Users")),
                                       strCopy + QStringLiteral("/Macintosh HD/Users")),
             QStringList());
}

void tst_Journeys::RescueCopiesEveryTickedFile()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), false);
    QVERIFY(m_pJourney->WaitForBox(TEXT_COMPLETED));
    m_pJourney->Picture(QStringLiteral("completed"));
    QVERIFY(Text(QStringLiteral("m_pTimeLab")).contains(QLatin1String("00:00:00")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, QStringLiteral("OK")));
    QVERIFY(CJourney::WaitFor([&] { return Page() == PAGE_SELECT; }));

    const QString strCopy = Destination(QStringLiteral("LARGE"));
    QVERIFY(!strCopy.isEmpty());
    QCOMPARE(CTreeCompare::Differences(m_pSource->Path(QStringLiteral("Users")),
                                       strCopy + QStringLiteral("/Macintosh HD/Users")),
             QStringList());
    QVERIFY(!QFile::exists(strCopy + QStringLiteral("/Macintosh HD/Other")));
    const QString strLog = ProgramLog();
    QVERIFY2(strLog.contains(QLatin1String("start TarnwickMacPE")), qPrintable(strLog));
    QVERIFY2(strLog.contains(QLatin1String("problems 0")), qPrintable(strLog));
}

void tst_Journeys::CancelAnsweredCancelPausesAndResumes()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pCopyFilePage")));
    QVERIFY(m_pJourney->WaitForBox(TEXT_STOP));
    m_pJourney->Picture(QStringLiteral("question"));
    VerifyCopyStands();
    QVERIFY(m_pJourney->AnswerBox(TEXT_STOP, QStringLiteral("Cancel")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, QStringLiteral("OK")));
    VerifyRescued();
}

void tst_Journeys::CancelAnsweredYesStops()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pCopyFilePage")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_STOP, QStringLiteral("Yes")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, QStringLiteral("OK")));
    QVERIFY(CJourney::WaitFor([&] { return Page() == PAGE_SELECT; }));
    const QString strCopy = Destination(QStringLiteral("LARGE"));
    QVERIFY(CTreeCompare::FileCount(strCopy) > 0);
    QVERIFY(CTreeCompare::FileCount(strCopy)
            < CTreeCompare::FileCount(m_pSource->Path(QStringLiteral("Users"))));
    QVERIFY2(ProgramLog().contains(QLatin1String("stopped")), qPrintable(ProgramLog()));
}

void tst_Journeys::ReadOnlyStickIsRefused()
{
    QVERIFY(m_pLarge->MakeReadOnly());
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), false);
    QVERIFY(m_pJourney->WaitForBox(TEXT_READ_ONLY));
    m_pJourney->Picture(QStringLiteral("read-only"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_READ_ONLY, QStringLiteral("OK")));
    QCOMPARE(Page(), PAGE_SELECT);
    QCOMPARE(m_pJourney->Row({QStringLiteral("/Volumes/Macintosh HD"), QStringLiteral("Users")})
                 .value(QStringLiteral("state"))
                 .toInt(),
             2);
}

void tst_Journeys::StickTooSmallIsRefused()
{
    Begin();
    StartCopyTo(QStringLiteral("SMALL"), false);
    QVERIFY(m_pJourney->WaitForBox(TEXT_NO_SPACE));
    m_pJourney->Picture(QStringLiteral("no-space"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_NO_SPACE, QStringLiteral("OK")));
    QCOMPARE(Page(), PAGE_SELECT);
    QVERIFY(QDir(QStringLiteral("/Volumes/SMALL")).isEmpty());
}

void tst_Journeys::DestinationPulledShowsOnlyTheRemovalMessage()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pLarge->Pull();
    QVERIFY(m_pJourney->WaitForBox(TEXT_REMOVED));
    m_pJourney->Picture(QStringLiteral("removed"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_REMOVED, QStringLiteral("OK")));
    QVERIFY(CJourney::WaitFor([&] { return Page() == PAGE_SELECT; }));
    QVERIFY(
        CJourney::WaitFor([&] { return m_pJourney->ListTexts() == QStringList{QStringLiteral("SMALL")}; }));
    QVERIFY(!m_pJourney->Modal().value(QStringLiteral("open")).toBool());
    // Nothing was written to where the stick had been, and nothing else was cleaned away.
    QVERIFY(QDir(QStringLiteral("/Volumes/LARGE")).isEmpty());
    QVERIFY(QFile::exists(m_pSource->Path(QStringLiteral("Users/anna/Documents/letter.txt"))));

    // A second removal message, or the completion, would stand in the way of the exit question.
    m_pJourney->SlowWrites(0);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Yes")));
    QVERIFY(m_pJourney->WaitForEnd());
    QCOMPARE(m_pJourney->ExitCode(), 0);
}

void tst_Journeys::OtherStickPulledLeavesTheCopyAlone()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pSmall->Pull();
    QVERIFY(
        CJourney::WaitFor([&] { return m_pJourney->ListTexts() == QStringList{QStringLiteral("LARGE")}; }));
    QVERIFY(!m_pJourney->Modal().value(QStringLiteral("open")).toBool());
    QCOMPARE(Page(), PAGE_COPY);
    m_pJourney->SlowWrites(0);
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, QStringLiteral("OK")));
    VerifyRescued();
}

void tst_Journeys::ArrivingStickBecomesADestination()
{
    m_pSmall.reset();
    m_pLarge.reset();
    Begin();
    QCOMPARE(Text(QStringLiteral("m_pUSBTitleLab")), TEXT_PROMPT);
    m_pLarge = std::make_unique<CVolume>(QStringLiteral("LARGE"), QStringLiteral("/dev/sdc1"), 500);
    QVERIFY(
        CJourney::WaitFor([&] { return Text(QStringLiteral("m_pUSBTitleLab")) == QLatin1String("LARGE"); }));
    m_pJourney->Picture(QStringLiteral("arrived"));
    m_pLarge->Pull(true);
    QVERIFY(CJourney::WaitFor([&] { return Text(QStringLiteral("m_pUSBTitleLab")) == TEXT_PROMPT; }));
}

void tst_Journeys::ExitOnSelectionPageCanBeDeclined()
{
    Begin();
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->WaitForBox(TEXT_EXIT));
    m_pJourney->Picture(QStringLiteral("exit"));
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Cancel")));
    QVERIFY(m_pJourney->IsRunning());
    QVERIFY(m_pJourney->Widget(QStringLiteral("CTarnwickMacPE")).value(QStringLiteral("visible")).toBool());

    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Yes")));
    QVERIFY(m_pJourney->WaitForEnd());
    QCOMPARE(m_pJourney->ExitCode(), 0);
}

void tst_Journeys::ExitOnCopyPagePausesAndResumes()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->WaitForBox(TEXT_EXIT));
    m_pJourney->Picture(QStringLiteral("exit"));
    VerifyCopyStands();
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Cancel")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, QStringLiteral("OK")));
    VerifyRescued();
}

void tst_Journeys::ExitOnCopyPageEndsTheProgram()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Yes")));
    QVERIFY(m_pJourney->WaitForEnd());
    QCOMPARE(m_pJourney->ExitCode(), 0);
    QVERIFY2(ProgramLog().contains(QLatin1String("stopped")), qPrintable(ProgramLog()));
}

void tst_Journeys::WindowAnswersWhileAStickIsSlow()
{
    Begin();
    StartCopyTo(QStringLiteral("LARGE"), true);
    m_pJourney->SlowWrites(3000);
    // Each block now hangs for seconds; the window must answer all the same.
    for (int n = 0; n < 20; ++n) {
        const QJsonObject objAnswer
            = m_pJourney->Ask({{QStringLiteral("ask"), QStringLiteral("modal")}}, 1000);
        QVERIFY(objAnswer.contains(QStringLiteral("open")));
    }
    m_pJourney->SlowWrites(0);
    QVERIFY(m_pJourney->AnswerBox(TEXT_COMPLETED, QStringLiteral("OK")));
}

void tst_Journeys::ExitWhileSizesAreCountedEndsTheProgram()
{
    for (int n = 0; n < 40; ++n) {
        WriteFile(m_pSource->Path(QStringLiteral("Users/anna/Letters/%1/letter.txt").arg(n)), "text");
    }
    Begin();
    TickUsersAndChoose(QStringLiteral("LARGE"));
    m_pJourney->SlowListing(200);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("toolBtn"), QStringLiteral("m_pSelFilePage")));
    QVERIFY(CJourney::WaitFor([&] {
        return m_pJourney->Widget(QStringLiteral("CSearchWaitView"))
            .value(QStringLiteral("visible"))
            .toBool();
    }));
    m_pJourney->Picture(QStringLiteral("counting"));
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    QVERIFY(m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Yes")));
    QVERIFY(m_pJourney->WaitForEnd());
    QCOMPARE(m_pJourney->ExitCode(), 0);
    QVERIFY(QDir(QStringLiteral("/Volumes/LARGE")).isEmpty());
}

void tst_Journeys::ExitDuringAHangingSearchEndsAtOnce()
{
    Begin();
    // The command is found anew for each search: from now on it hangs.
    QTemporaryDir dirCommand;
    WriteFile(dirCommand.filePath(QStringLiteral("hang")), "#!/bin/sh\nexec tail -f /dev/null\n");
    QVERIFY(QFile::setPermissions(dirCommand.filePath(QStringLiteral("hang")),
                                  QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray baCommand = QFile::encodeName(BuildPath(QStringLiteral("libexec/tarnwick/diskutil")));
    QCOMPARE(mount(QFile::encodeName(dirCommand.filePath(QStringLiteral("hang"))).constData(),
                   baCommand.constData(), nullptr, MS_BIND, nullptr),
             0);
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("RefreshLab")));
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pCloseBtn")));
    const bool bAnswered = m_pJourney->AnswerBox(TEXT_EXIT, QStringLiteral("Yes"));
    const bool bEnded = m_pJourney->WaitForEnd(3000);
    QCOMPARE(umount2(baCommand.constData(), MNT_DETACH), 0);
    QVERIFY(bAnswered);
    QVERIFY(bEnded);
    QCOMPARE(m_pJourney->ExitCode(), 0);
    QCOMPARE(QProcess::execute(QStringLiteral("pgrep"),
                               {QStringLiteral("-f"), QStringLiteral("tail -f /dev/null")}),
             1);
}

void tst_Journeys::ClickElsewhereClosesTheDropDown()
{
    Begin();
    const auto fnIsOpen = [this] { return m_pJourney->List().value(QStringLiteral("visible")).toBool(); };
    const QJsonObject objArrow = m_pJourney->Widget(QStringLiteral("m_pDropBtn"));
    m_pJourney->Click(objArrow);
    QVERIFY(CJourney::WaitFor(fnIsOpen));
    m_pJourney->Click(m_pJourney->Widget(QStringLiteral("m_pSrcLab")));
    QVERIFY(CJourney::WaitFor([&] { return !fnIsOpen(); }));

    // The arrow too only closes what it has opened. The press and release are
    // through as soon as the next click has opened the list again.
    m_pJourney->Click(objArrow);
    QVERIFY(CJourney::WaitFor(fnIsOpen));
    m_pJourney->Click(objArrow);
    QVERIFY(CJourney::WaitFor([&] { return !fnIsOpen(); }));
    m_pJourney->Click(objArrow);
    QVERIFY(CJourney::WaitFor(fnIsOpen));
    m_pJourney->Picture(QStringLiteral("open-again"));
}

QTEST_MAIN(tst_Journeys)
#include "tst_Journeys.moc"
