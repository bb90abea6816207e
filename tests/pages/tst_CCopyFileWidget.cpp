#include "copy/CCopyFileThread.h"
#include "copy/CCopyText.h"
#include "kit/CBoxDetail.h"
#include "kit/KvMessageBox.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CElidedLabel.h"
#include "pages/CPageTree.h"
#include "support/CFakeCommands.h"
#include "support/CGate.h"
#include "support/CLogCapture.h"
#include "support/CModalAnswerer.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/TestFiles.h"
#include "support/Texts.h"
#include "support/WaitAside.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QMap>
#include <QMovie>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

static const char PROGRESS_STYLE[]
    = "QProgressBar::chunk{border-radius: "
      "3px;background:qlineargradient(spread:pad,x1:0,y1:0,x2:1,y2:0,stop:0 "
      "#ffaa17,stop:1 #ff7f17);}\nQProgressBar {color: transparent; border: 1px ; border-radius: 3px; "
      "background-color: #d0d0d0; text-align: none;};\n";
static const int LARGE_FILE = 12 * 1024 * 1024;

/** The copy page with a real worker between two volumes mounted for each test. */
class tst_CCopyFileWidget : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void formSizes_data();
    void formSizes();
    void formMargins();
    void formLook();
    void readersHearEachPart();
    void groupIsCentred();

    void remainTimeText_data();
    void remainTimeText();
    void percent_data();
    void percent();
    void namesAreText_data();
    void namesAreText();
    void longNameLeavesThePageAsItIs();
    void floodOfFilesIsPaintedNowAndThen();

    void stories_data();
    void stories();
    void newCopyStartsFromTheBeginning();
    void copyIsDoneAndTold();
    void completionBoxIsKept();
    void accountIsTold_data();
    void accountIsTold();
    void accountOfAnEarlierCopyIsDropped();
    void accountOfAPulledDiskIsNotRelied_data();
    void accountOfAPulledDiskIsNotRelied();
    void stateLineMovesNothing();
    void cancelAnswers_data();
    void cancelAnswers();
    void copyEndsWhileTheQuestionIsOpen();
    void questionGoesWithItsCopy();
    void removalIsAllThatIsTold();
    void removalTakesTheBoxAway_data();
    void removalTakesTheBoxAway();

    void cleanUp_data();
    void cleanUp();

    void pageGoesDuringACopy_data();
    void pageGoesDuringACopy();

private:
    void StartCopy(const QString& strFolder = "out");
    void StartPausedCopy();
    bool WorkerEnds();
    void DoStep(const QString& strStep);
    qint64 CopiedBytes(const QString& strFolder = "out") const;
    CCopyFileThread* Worker() const { return m_pPage->findChild<CCopyFileThread*>(); }
    CElidedLabel* Title() const { return m_pPage->findChild<CElidedLabel*>("m_pCopyTitleLab"); }
    QLabel* TimeLab() const { return m_pPage->findChild<QLabel*>("m_pTimeLab"); }
    QLabel* GifLab() const { return m_pPage->findChild<QLabel*>("m_pGifLab"); }
    QProgressBar* Progress() const { return m_pPage->findChild<QProgressBar*>(); }
    QPushButton* CancelBtn() const { return m_pPage->findChild<QPushButton*>("toolBtn"); }
    const QMovie* Movie() const { return GifLab()->movie(); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pStick;
    std::unique_ptr<CCopyFileWidget> m_pPage;
    std::unique_ptr<QSignalSpy> m_pFinished;
};

void tst_CCopyFileWidget::init()
{
    NEEDS_VOLUMES();
    UseLogFile();
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->Add("rm");
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 40);
    m_pStick = std::make_unique<CVolume>("STICK", "/dev/sdb1", 60);
    WriteFile(m_pSource->Path("docs/a.txt"), QByteArray(1000, 'x'));
    WriteFile(m_pSource->Path("docs/large.bin"), QByteArray(LARGE_FILE, 'x'));
    CPageTree::Add(m_pSource->Path());
    CPageTree::Tick(m_pSource->Path("docs/a.txt"));
    CPageTree::Tick(m_pSource->Path("docs/large.bin"));
    m_pPage = std::make_unique<CCopyFileWidget>();
    m_pPage->resize(1120, 649);
    m_pPage->show();
    m_pFinished = std::make_unique<QSignalSpy>(m_pPage.get(), &CCopyFileWidget::SignalCopyFileFinish);
}

void tst_CCopyFileWidget::cleanup()
{
    m_pFinished.reset();
    m_pPage.reset();
    CPageTree::Clear();
    m_pStick.reset();
    m_pSource.reset();
    m_pCommands.reset();
}

void tst_CCopyFileWidget::StartCopy(const QString& strFolder)
{
    m_pPage->OnCopyFile(LARGE_FILE + 1000, m_pStick->Path(strFolder), "STICK");
}

// A worker that has copied nothing and runs until somebody lets it go on or end.
void tst_CCopyFileWidget::StartPausedCopy()
{
    CGate begun;
    CCopyFileThread* pWorker = Worker();
    const auto pause = [&begun, pWorker] {
        pWorker->SetCopyStatus(COPY_STATUS_PAUSE);
        begun.Open();
    };
    const QMetaObject::Connection connection
        = connect(pWorker, &QThread::started, pWorker, pause, Qt::DirectConnection);
    StartCopy();
    QVERIFY(begun.Pass(10000));
    disconnect(connection);
    m_pPage->SetCopyStatus(COPY_STATUS_PAUSE);
}

// Waits for the worker and lets the page hear what it had to say. A copy that has waited begins then.
bool tst_CCopyFileWidget::WorkerEnds()
{
    for (int i = 0; i < 2; ++i) {
        if (!QTest::qWaitFor([this] { return !Worker()->isRunning(); })) {
            return false;
        }
        QCoreApplication::processEvents();
    }
    return true;
}

qint64 tst_CCopyFileWidget::CopiedBytes(const QString& strFolder) const
{
    return QFileInfo(m_pStick->Path(strFolder + "/Macintosh HD/docs/large.bin")).size();
}

// ---------------------------------------------------------------- the form

void tst_CCopyFileWidget::formSizes_data()
{
    QTest::addColumn<QSize>("sizeMin");
    QTest::addColumn<QSize>("sizeMax");
    const QSize sizeAny(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QTest::newRow("driveWidget") << QSize(1060, 500) << QSize(1060, 500);
    QTest::newRow("m_pGifLab") << QSize(247, 146) << QSize(247, 146);
    QTest::newRow("m_pProgress") << QSize(860, 6) << QSize(860, 6);
    QTest::newRow("toolBtn") << QSize(120, 32) << sizeAny;
}

void tst_CCopyFileWidget::formSizes()
{
    const auto* pWidget = m_pPage->findChild<QWidget*>(QTest::currentDataTag());
    QVERIFY(pWidget);
    QTEST(pWidget->minimumSize(), "sizeMin");
    QTEST(pWidget->maximumSize(), "sizeMax");
}

void tst_CCopyFileWidget::formMargins()
{
    QCOMPARE(m_pPage->layout()->contentsMargins(), QMargins(30, 69, 30, 14));
    QCOMPARE(m_pPage->layout()->spacing(), 20);
    const auto* pFrame = m_pPage->findChild<QFrame*>("driveWidget");
    QCOMPARE(pFrame->layout()->contentsMargins(), QMargins(100, 100, 100, 90));
    QCOMPARE(pFrame->pos(), QPoint(30, 69));
}

void tst_CCopyFileWidget::formLook()
{
    QCOMPARE(Progress()->styleSheet(), PROGRESS_STYLE);
    QCOMPARE(Progress()->value(), 0);
    QCOMPARE(Progress()->minimum(), 0);
    QCOMPARE(Progress()->maximum(), 100);
    QCOMPARE(CancelBtn()->text(), "Cancel");
    QCOMPARE(TimeLab()->text(), "Remaining Time: Calculating...");
    QCOMPARE(Movie()->fileName(), ":/res/Gif/copy.gif");
    QVERIFY(Movie()->isValid());
    for (const QWidget* pWidget : std::initializer_list<QWidget*>{Title(), TimeLab(), CancelBtn()}) {
        QCOMPARE(pWidget->font().family(), "Avenir");
    }
}

void tst_CCopyFileWidget::readersHearEachPart()
{
    m_pPage->SlotGetCopyInfo("<b>a.txt", 42);
    QCOMPARE(NameHeard(m_pPage.get()), "Copy Progress");
    QCOMPARE(NameHeard(Progress()), "Copy Progress");
    QCOMPARE(Heard(Progress())->role(), QAccessible::ProgressBar);
    QCOMPARE(Heard(Progress())->valueInterface()->currentValue().toInt(), 42);
    QCOMPARE(NameHeard(CancelBtn()), "Cancel");
    QVERIFY(NameHeard(Title()).endsWith(": <b>a.txt"));
    QVERIFY(Heard(GifLab())->state().invisible);
    QVERIFY(GifLab()->isVisible());
    QVERIFY(!Heard(TimeLab())->state().invisible);
}

void tst_CCopyFileWidget::groupIsCentred()
{
    for (const QWidget* pWidget : std::initializer_list<QWidget*>{GifLab(), Progress()}) {
        const int nCentre = PlaceIn(m_pPage.get(), pWidget).center().x();
        QVERIFY(qAbs(nCentre - m_pPage->rect().center().x()) <= 1);
    }
    const QPoint ptButton = PlaceIn(m_pPage.get(), CancelBtn()).bottomRight();
    QCOMPARE(ptButton.x(), 1120 - 30 - 1);
    QVERIFY(ptButton.y() < 649);
}

// ---------------------------------------------------------------- news of the worker

void tst_CCopyFileWidget::remainTimeText_data()
{
    QTest::addColumn<qint64>("nSeconds");
    QTest::addColumn<QString>("strText");
    QTest::newRow("0") << qint64(0) << "00:00:00";
    QTest::newRow("1") << qint64(1) << "00:00:01";
    QTest::newRow("59") << qint64(59) << "00:00:59";
    QTest::newRow("60") << qint64(60) << "00:01:00";
    QTest::newRow("3599") << qint64(3599) << "00:59:59";
    QTest::newRow("3600") << qint64(3600) << "01:00:00";
    QTest::newRow("86399") << qint64(86399) << "23:59:59";
    QTest::newRow("86400, days are dropped") << qint64(86400) << "00:00:00";
    QTest::newRow("90061, a day, an hour, a minute, a second") << qint64(90061) << "01:01:01";
    QTest::newRow("a year less a second") << qint64(31535999) << "23:59:59";
    QTest::newRow("beyond 32 bits") << qint64(8640000045296) << "12:34:56";
}

void tst_CCopyFileWidget::remainTimeText()
{
    QFETCH(qint64, nSeconds);
    QFETCH(QString, strText);
    QCOMPARE(CCopyFileWidget::RemainTimeText(nSeconds), strText);
    m_pPage->SlotCopyRemainTime(nSeconds);
    m_pPage->SlotCopyRemainTime(0); // nothing new is known
    QCOMPARE(TimeLab()->text(), "Remaining Time: " + (nSeconds == 0 ? "Calculating..." : strText));
}

void tst_CCopyFileWidget::percent_data()
{
    QTest::addColumn<int>("nPercent");
    QTest::addColumn<int>("nShown");
    QTest::newRow("below") << -5 << 0;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("50") << 50 << 50;
    QTest::newRow("100") << 100 << 100;
    QTest::newRow("above") << 120 << 100;
}

void tst_CCopyFileWidget::percent()
{
    QFETCH(int, nPercent);
    m_pPage->SlotGetCopyInfo("a", 30);
    m_pPage->SlotGetCopyInfo("a", nPercent);
    QTEST(Progress()->value(), "nShown");
}

void tst_CCopyFileWidget::namesAreText_data()
{
    QTest::addColumn<QString>("strDisk");
    QTest::addColumn<QString>("strFile");
    QTest::newRow("plain") << "STICK"
                           << "IMG_0042.JPG";
    QTest::newRow("place markers") << "%2"
                                   << "%1 %2 %3";
    QTest::newRow("marks") << "<b>A</b>"
                           << "<img src=x>&amp;.txt";
    QTest::newRow("line break") << "A\nB"
                                << "two\nlines.txt";
}

void tst_CCopyFileWidget::namesAreText()
{
    QFETCH(QString, strDisk);
    QFETCH(QString, strFile);
    m_pPage->OnCopyFile(1, QString(), strDisk);
    QCOMPARE(m_pPage->GetCopyUsbName(), strDisk);
    m_pPage->SlotGetCopyInfo(strFile, 1);
    QCOMPARE(Title()->text(), "Copying files to (" + strDisk + "): " + strFile);
    QCOMPARE(Title()->textFormat(), Qt::PlainText);
}

void tst_CCopyFileWidget::longNameLeavesThePageAsItIs()
{
    const QSize sizeLeast = m_pPage->minimumSizeHint();
    const QRect rectTitle = Title()->geometry();
    m_pPage->SlotGetCopyInfo(QString(255, 'W') + ".jpg", 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(m_pPage->minimumSizeHint(), sizeLeast);
    QCOMPARE(Title()->geometry(), rectTitle);
    QVERIFY(Title()->ShownText().startsWith("Copying files to"));
    QVERIFY(Title()->ShownText().endsWith(".jpg"));
    QVERIFY(Title()->ShownText().size() < Title()->text().size());
}

void tst_CCopyFileWidget::floodOfFilesIsPaintedNowAndThen()
{
    struct CPaintCount : QObject
    {
        bool eventFilter(QObject* pObject, QEvent* pEvent) override
        {
            if (pEvent->type() == QEvent::Paint) {
                ++m_nPaints;
                m_strPainted = static_cast<QLabel*>(pObject)->text();
            }
            return false;
        }
        int m_nPaints = 0;
        QString m_strPainted;
    } count;
    QVERIFY(QTest::qWaitForWindowExposed(m_pPage.get()));
    auto* pTimer = m_pPage->findChild<QTimer*>("m_pFrameTimer");
    QCOMPARE(pTimer->interval(), 16);
    pTimer->setInterval(3600000); // the screen's next picture comes when the test says so
    m_pPage->SlotGetCopyInfo("first", 0);
    QTRY_VERIFY(pTimer->isActive());
    QCoreApplication::processEvents();
    Title()->installEventFilter(&count);
    for (int i = 1; i <= 100; ++i) {
        m_pPage->SlotGetCopyInfo(QString::number(i), i);
        // What is told is true at once, painted or not.
        QVERIFY(Title()->text().endsWith(": " + QString::number(i)));
        QCOMPARE(Progress()->value(), i);
        QCoreApplication::processEvents();
    }
    QCOMPARE(count.m_nPaints, 0);
    pTimer->start(0);
    QTRY_COMPARE(count.m_nPaints, 1);
    QVERIFY(count.m_strPainted.endsWith(": 100"));
    QVERIFY(Title()->updatesEnabled());
}

// ---------------------------------------------------------------- a copy

// What happens, step by step, what the user reads meanwhile, how often the page says
// that it is free again, and where a whole copy stands in the end.
void tst_CCopyFileWidget::stories_data()
{
    QTest::addColumn<QString>("strSteps");
    QTest::addColumn<QString>("strTold");
    QTest::addColumn<int>("nFinished");
    QTest::addColumn<QString>("strWhole");
    const auto row
        = [](const char* pName, const char* pSteps, const char* pTold, int nFinished, const char* pWhole) {
              QTest::newRow(pName) << pSteps << pTold << nFinished << pWhole;
          };
    row("done", "copy ends", "completed", 1, "out");
    row("paused and resumed", "hold run ends", "completed", 1, "out");
    row("stopped, in the words of completion", "hold stop stopped ends", "completed", 1, "");
    row("stopped, exit question opens", "hold stop pause stopped ends", "completed", 1, "");
    row("stopped, exit question closes", "hold stop run stopped ends", "completed", 1, "");
    row("stopped, button pressed", "hold stop Yes stopped ends", "completed", 1, "");
    row("never began, cancelled", "nowhere ends Yes", "asked", 1, "");
    row("removed", "hold remove stopped ends", "removed", 1, "");
    row("removed, told once", "hold remove remove ends", "removed", 1, "");
    row("removed without worker, next copy", "remove copy ends", "removed completed", 2, "out");
    row("removed, only the next finish is silent", "remove finish finish", "removed completed", 2, "");
    row("removed again", "hold remove ends hold remove ends", "removed removed", 2, "");
    row("waits", "hold second paused release ends", "completed", 1, "second");
    row("waits, paused", "hold second pause release begun paused run ends", "completed", 1, "second");
    row("waits, cancelled", "hold second Yes paused release ends", "asked", 1, "");
    row("waits, not cancelled", "hold second Cancel paused release ends", "asked completed", 1, "second");
    row("waits, removed", "hold second remove paused release ends", "removed", 1, "");
    row("waits, removed while the one before ends", "hold second release remove ends", "removed", 1, "");
}

void tst_CCopyFileWidget::stories()
{
    QFETCH(QString, strSteps);
    QFETCH(QString, strWhole);
    const QMap<QString, QString> mapTold{
        {TEXT_COMPLETED, "completed"}, {TEXT_STOP, "asked"}, {TEXT_REMOVED, "removed"}};
    QStringList listTold;
    for (const QString& strStep : strSteps.split(' ')) {
        const CModalAnswerer answerer(strStep[0].isUpper() ? strStep : "OK");
        DoStep(strStep);
        if (QTest::currentTestFailed()) {
            return;
        }
        if (answerer.Answered()) {
            listTold.append(mapTold.value(answerer.Text(), answerer.Text()));
        }
    }
    QTEST(listTold.join(' '), "strTold");
    QTEST(m_pFinished->count(), "nFinished");
    QVERIFY(!QApplication::activeModalWidget());
    // What no worker ends the page ends itself.
    QCOMPARE(LogLines().contains("copy ended before it began"), listTold == QStringList{"asked"});
    QCOMPARE(CopiedBytes("out") == LARGE_FILE, strWhole == "out");
    QCOMPARE(CopiedBytes("second") == LARGE_FILE, strWhole == "second");
    // A copy that did not begin has left nothing.
    QCOMPARE(QFileInfo::exists(m_pStick->Path("second")), strWhole == "second");
}

void tst_CCopyFileWidget::DoStep(const QString& strStep)
{
    const QMap<QString, std::function<void()>> mapStep{
        {"copy", [this] { StartCopy(); }},
        {"hold", [this] { StartPausedCopy(); }},
        {"second", [this] { StartCopy("second"); }},
        // The worker ends at once and says nothing.
        {"nowhere", [this] { m_pPage->OnCopyFile(1000, QString(), "STICK"); }},
        {"run", [this] { m_pPage->SetCopyStatus(COPY_STATUS_RUN); }},
        {"pause", [this] { m_pPage->SetCopyStatus(COPY_STATUS_PAUSE); }},
        {"stop", [this] { m_pPage->SetCopyStatus(COPY_STATUS_STOP); }},
        {"Yes", [this] { QVERIFY(m_pPage->SlotCancelBtnClick()); }},
        {"Cancel", [this] { QVERIFY(!m_pPage->SlotCancelBtnClick()); }},
        {"remove", [this] { m_pPage->USBExtract(); }},
        {"finish", [this] { m_pPage->SlotCopyFinish(); }},
        // Past the page, as a disk that answers at last.
        {"release", [this] { Worker()->SetCopyStatus(COPY_STATUS_STOP); }},
        {"ends", [this] { QVERIFY(WorkerEnds()); }},
        {"begun", [this] { QTRY_VERIFY(QFileInfo::exists(m_pStick->Path("second"))); }},
        {"paused", [this] { QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_PAUSE); }},
        {"stopped",
         [this] {
             QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_STOP);
             QCOMPARE(m_pPage->GetCopyStatus(), COPY_STATUS_STOP);
         }},
    };
    QVERIFY(mapStep.contains(strStep));
    mapStep[strStep]();
}

void tst_CCopyFileWidget::newCopyStartsFromTheBeginning()
{
    m_pPage->SlotGetCopyInfo("old", 77);
    m_pPage->SlotCopyRemainTime(60);
    StartPausedCopy();
    QCOMPARE(Movie()->state(), QMovie::Running);
    QCOMPARE(m_pPage->GetCopyUsbName(), "STICK");
    QCOMPARE(Worker()->priority(), QThread::TimeCriticalPriority);
    for (int i = 1; i <= 2; ++i) {
        QCOMPARE(Progress()->value(), 0);
        QCOMPARE(Title()->text(), "");
        QCOMPARE(TimeLab()->text(), "Remaining Time: Calculating...");
        QElapsedTimer timer;
        timer.start();
        StartCopy("second");
        QVERIFY(timer.elapsed() < 100);
        // News of the one before are not shown under the name of the new one.
        m_pPage->SlotGetCopyInfo("old", 99);
        m_pPage->SlotCopyRemainTime(99);
    }
    QVERIFY(!QFileInfo::exists(m_pStick->Path("second")));
}

void tst_CCopyFileWidget::copyIsDoneAndTold()
{
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([this] { QCOMPARE(TimeLab()->text(), "Remaining Time: 00:00:00"); });
    QElapsedTimer timer;
    timer.start();
    StartCopy();
    QVERIFY(timer.elapsed() < 100);
    QCOMPARE(m_pPage->GetCopyStatus(), COPY_STATUS_RUN);
    QTRY_COMPARE(m_pFinished->count(), 1);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
    QCOMPARE(answerer.Buttons(), QStringList{"OK"});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(":/res/Tip/tips_completed.png").toImage());
    QCOMPARE(Progress()->value(), 100);
    QVERIFY(Title()->text().startsWith("Copying files to (STICK): "));
    QCOMPARE(QFileInfo(m_pStick->Path("out/Macintosh HD/docs/a.txt")).size(), 1000);
    QCOMPARE(CopiedBytes(), LARGE_FILE);
}

void tst_CCopyFileWidget::completionBoxIsKept()
{
    KvMessageBox* pFirst = nullptr;
    for (int i = 1; i <= 2; ++i) {
        const CModalAnswerer answerer("OK");
        m_pPage->SlotCopyFinish();
        QVERIFY(answerer.Answered());
        QCOMPARE(answerer.Text(), TEXT_COMPLETED);
        const QList<KvMessageBox*> listBox = m_pPage->findChildren<KvMessageBox*>();
        QCOMPARE(listBox.size(), 1);
        QVERIFY(!pFirst || pFirst == listBox.at(0));
        pFirst = listBox.at(0);
        QCOMPARE(m_pFinished->count(), i);
    }
}

void tst_CCopyFileWidget::accountIsTold_data()
{
    QTest::addColumn<STCopyAccount>("stAccount");
    QTest::addColumn<int>("nKind");
    QTest::addColumn<bool>("bLink");
    STCopyAccount stAccount;
    QTest::newRow("nothing copied") << stAccount << int(ENDetail::PLAIN) << false;
    stAccount.nFiles = 1204;
    stAccount.nBytes = 3200000000;
    stAccount.enFlush = ENCopyFlush::DONE;
    QTest::newRow("whole") << stAccount << int(ENDetail::GOOD) << false;
    STCopyAccount stNote = stAccount;
    stNote.nNotes = 1;
    stNote.listItem.append(STCopyItem());
    QTest::newRow("whole, with a note") << stNote << int(ENDetail::GOOD) << true;
    STCopyAccount stProblem = stNote;
    stProblem.nProblems = 38;
    QTest::newRow("not whole") << stProblem << int(ENDetail::WARNING) << true;
    stProblem.bReportMissing = true;
    QTest::newRow("not whole, no report") << stProblem << int(ENDetail::WARNING) << true;
    STCopyAccount stStopped = stAccount;
    stStopped.bStopped = true;
    QTest::newRow("stopped") << stStopped << int(ENDetail::WARNING) << false;
    STCopyAccount stUnsure = stAccount;
    stUnsure.enFlush = ENCopyFlush::FAILED;
    QTest::newRow("not confirmed") << stUnsure << int(ENDetail::WARNING) << false;
}

void tst_CCopyFileWidget::accountIsTold()
{
    QFETCH(STCopyAccount, stAccount);
    QFETCH(int, nKind);
    m_pPage->SlotCopyAccount(stAccount);
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&] {
        const auto* pDetail = QApplication::activeModalWidget()->findChild<CBoxDetail*>();
        const QString strMissing = stAccount.bReportMissing ? '\n' + CCopyText::ReportMissing() : QString();
        QVERIFY(pDetail->isVisible());
        QCOMPARE(pDetail->Text(), CCopyText::Summary(stAccount) + strMissing);
        QCOMPARE(int(pDetail->Kind()), nKind);
        QTEST(pDetail->Link()->isVisible(), "bLink");
    });
    m_pPage->SlotCopyFinish();
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
    QCOMPARE(answerer.Icon().toImage(), QPixmap(":/res/Tip/tips_completed.png").toImage());
    QCOMPARE(m_pPage->LastAccount().nFiles, stAccount.nFiles);
}

void tst_CCopyFileWidget::accountOfAnEarlierCopyIsDropped()
{
    STCopyAccount stAccount;
    stAccount.nFiles = 7;
    StartPausedCopy();
    StartCopy("second");
    m_pPage->SlotCopyAccount(stAccount); // of the first, which the second waits for
    QCOMPARE(m_pPage->LastAccount().nFiles, 0);
    Worker()->SetCopyStatus(COPY_STATUS_STOP);
    CModalAnswerer answerer("OK");
    QTRY_COMPARE(m_pFinished->count(), 1);
    QCOMPARE(m_pPage->LastAccount().nFiles, 2);
    // What is told of the third has nothing to do with the second.
    m_pPage->OnCopyFile(1000, QString(), "STICK");
    QCOMPARE(m_pPage->LastAccount().nFiles, 0);
    CModalAnswerer bare("OK");
    bare.Meanwhile(
        [] { QVERIFY(!QApplication::activeModalWidget()->findChild<CBoxDetail*>()->isVisible()); });
    m_pPage->SlotCopyFinish();
    QVERIFY(bare.Answered());
}

void tst_CCopyFileWidget::accountOfAPulledDiskIsNotRelied_data()
{
    QTest::addColumn<bool>("bStopped");
    QTest::newRow("whole before the page heard of the removal") << false;
    QTest::newRow("stopped by the removal") << true;
}

// It comes while the user reads of the removal.
void tst_CCopyFileWidget::accountOfAPulledDiskIsNotRelied()
{
    QFETCH(bool, bStopped);
    STCopyAccount stAccount;
    stAccount.nFiles = 2;
    stAccount.enFlush = ENCopyFlush::DONE; // of what its caches held
    stAccount.bStopped = bStopped;
    CModalAnswerer removal("OK");
    removal.Meanwhile([&] { m_pPage->SlotCopyAccount(stAccount); });
    m_pPage->USBExtract();
    QVERIFY(removal.Answered());
    QCOMPARE(m_pPage->LastAccount().nFiles, 2);
    QCOMPARE(m_pPage->LastAccount().bGone, bStopped);
    QCOMPARE(m_pPage->LastAccount().enFlush == ENCopyFlush::DONE, !bStopped);
}

void tst_CCopyFileWidget::stateLineMovesNothing()
{
    auto* pState = m_pPage->findChild<CElidedLabel*>("m_pStateLab");
    QCOMPARE(pState->text(), QString());
    const QImage imgBefore = m_pPage->grab().toImage();
    const QRect place = PlaceIn(m_pPage.get(), pState);
    QVERIFY(place.top() > PlaceIn(m_pPage.get(), TimeLab()).bottom());
    QVERIFY(!pState->isVisible()); // nothing to be read out
    pState->setText(QString(400, 'W'));
    pState->show();
    QCoreApplication::sendPostedEvents();
    QImage imgAfter = m_pPage->grab().toImage();
    QVERIFY(imgAfter != imgBefore);
    QPainter painter(&imgAfter);
    painter.drawImage(place.topLeft(), imgBefore, place);
    painter.end();
    QCOMPARE(imgAfter, imgBefore);
}

void tst_CCopyFileWidget::cancelAnswers_data()
{
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<bool>("bStops");
    QTest::newRow("cancel resumes") << "Cancel" << false;
    QTest::newRow("title button resumes") << CModalAnswerer::TitleButton() << false;
    QTest::newRow("yes stops") << "Yes" << true;
}

void tst_CCopyFileWidget::cancelAnswers()
{
    QFETCH(QString, strButton);
    QFETCH(bool, bStops);
    StartPausedCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_RUN);
    CModalAnswerer answerer(strButton);
    answerer.Meanwhile([this] {
        QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_PAUSE);
        QCOMPARE(m_pPage->GetCopyStatus(), COPY_STATUS_PAUSE);
        QCOMPARE(Movie()->state(), QMovie::Paused);
    });
    const bool bEnded = m_pPage->SlotCancelBtnClick();
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_STOP);
    QCOMPARE(answerer.Buttons(), QStringList({"Cancel", "Yes"}));
    QCOMPARE(answerer.Icon().toImage(), QPixmap(":/res/Tip/tips_mark.png").toImage());
    QCOMPARE(bEnded, bStops);
    QCOMPARE(m_pPage->GetCopyStatus(), bStops ? COPY_STATUS_STOP : COPY_STATUS_RUN);
    QCOMPARE(Worker()->GetCopyStatus(), bStops ? COPY_STATUS_STOP : COPY_STATUS_RUN);
    QCOMPARE(Movie()->state(), bStops ? QMovie::Paused : QMovie::Running);

    const CModalAnswerer end("OK");
    QTRY_COMPARE(m_pFinished->count(), 1);
    QCOMPARE(CopiedBytes() == LARGE_FILE, !bStops);
}

void tst_CCopyFileWidget::copyEndsWhileTheQuestionIsOpen()
{
    StartCopy();
    QVERIFY(WaitAside([this] { return Worker()->isFinished(); }));
    // The worker is done and the page does not know it yet.
    const CModalAnswerer answerer("OK");
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(Movie()->state() != QMovie::Running);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_CCopyFileWidget::questionGoesWithItsCopy()
{
    StartPausedCopy();
    CModalAnswerer question("Yes");
    question.Meanwhile([this] {
        const QWidget* pQuestion = QApplication::activeModalWidget();
        StartCopy("second");
        QVERIFY(!pQuestion->isVisible());
    });
    QVERIFY(m_pPage->SlotCancelBtnClick());
    // It was about the first copy and does not reach the second.
    QCOMPARE(m_pPage->GetCopyStatus(), COPY_STATUS_RUN);
    QCOMPARE(m_pFinished->count(), 0);
}

void tst_CCopyFileWidget::removalIsAllThatIsTold()
{
    StartPausedCopy();
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([this] { m_pPage->USBExtract(); }); // another event of the same removal
    m_pPage->USBExtract();
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_REMOVED);
    QCOMPARE(answerer.Buttons(), QStringList{"OK"});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(":/res/Tip/tips.png").toImage());
    QVERIFY(WorkerEnds());
    QCOMPARE(m_pFinished->count(), 1);
    QVERIFY(TimeLab()->text() != "Remaining Time: 00:00:00");
}

void tst_CCopyFileWidget::removalTakesTheBoxAway_data()
{
    QTest::addColumn<bool>("bQuestion");
    QTest::newRow("the question") << true;
    QTest::newRow("the completion") << false;
}

void tst_CCopyFileWidget::removalTakesTheBoxAway()
{
    QFETCH(bool, bQuestion);
    CModalAnswerer before(bQuestion ? "Cancel" : "OK");
    before.Meanwhile([this] {
        const QWidget* pBox = QApplication::activeModalWidget();
        CModalAnswerer removal("OK");
        removal.Meanwhile([pBox] { QVERIFY(!pBox->isVisible()); });
        m_pPage->USBExtract();
        QCOMPARE(removal.Text(), TEXT_REMOVED);
    });
    if (bQuestion) {
        StartPausedCopy();
        m_pPage->SetCopyStatus(COPY_STATUS_RUN);
        QVERIFY(m_pPage->SlotCancelBtnClick());
        QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_STOP);
    } else {
        StartCopy();
        QTRY_COMPARE(m_pFinished->count(), 1);
    }
    QCOMPARE(before.Text(), bQuestion ? TEXT_STOP : TEXT_COMPLETED);
    QCOMPARE(m_pPage->GetCopyStatus(), COPY_STATUS_STOP);
    QVERIFY(Movie()->state() != QMovie::Running);
    QVERIFY(WorkerEnds());
    QCOMPARE(m_pFinished->count(), 1);
    // The next one is told as usual.
    const CModalAnswerer answerer("OK");
    StartCopy("second");
    QTRY_COMPARE(m_pFinished->count(), 2);
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
}

// ---------------------------------------------------------------- the clean-up

void tst_CCopyFileWidget::cleanUp_data()
{
    QTest::addColumn<bool>("bSource"); // what is left below the folder of all volumes
    QTest::addColumn<bool>("bFolder");
    QTest::addColumn<bool>("bFile");
    QTest::addColumn<QString>("strLog"); // the one line that speaks of it
    const QString strKept = "left-over mount point kept, \"/Volumes\" is not empty: ";
    QTest::newRow("another volume") << true << true << false << strKept + "\"/Volumes/Macintosh HD\" is";
    QTest::newRow("a file") << false << true << true << strKept + "\"/Volumes/STICK/precious\" is a file";
    QTest::newRow("empty folder") << false << true << false
                                  << "cleaning left-over mount points in \"/Volumes\"";
    QTest::newRow("nothing") << false << false << false << "";
}

void tst_CCopyFileWidget::cleanUp()
{
    QFETCH(bool, bSource);
    QFETCH(bool, bFolder);
    QFETCH(bool, bFile);
    QFETCH(QString, strLog);
    m_pPage->OnCopyFile(1, QString(), "STICK");
    QVERIFY(WorkerEnds());
    if (!bSource) {
        m_pSource->Pull(true);
    }
    m_pStick->Pull(!bFolder);
    if (bFile) {
        WriteFile("/Volumes/STICK/precious");
    }
    const CLogCapture capture;
    const CModalAnswerer removal("OK");
    m_pPage->USBExtract();
    QVERIFY(removal.Answered());
    const QStringList listLine = LogLines().filter("mount point");
    QCOMPARE(listLine.size(), strLog.isEmpty() ? 0 : 1);
    QCOMPARE(listLine.filter(strLog), listLine);
    const bool bStarts = strLog.startsWith("cleaning");
    QCOMPARE(capture.HasPart("Destroyed while process (\"rm\")"), bStarts);
    // It is ended at once, so it seldom comes far enough to be recorded.
    const QStringList listCall = m_pCommands->Calls("rm");
    QVERIFY(listCall.isEmpty() || (bStarts && listCall == QStringList{"-rf /Volumes"}));
    QVERIFY(!bFile || QFile::remove("/Volumes/STICK/precious"));
}

// ---------------------------------------------------------------- the end

void tst_CCopyFileWidget::pageGoesDuringACopy_data()
{
    QTest::addColumn<int>("nStatus");
    QTest::addColumn<bool>("bAnotherWaits");
    QTest::newRow("running") << int(COPY_STATUS_RUN) << false;
    QTest::newRow("paused") << int(COPY_STATUS_PAUSE) << false;
    QTest::newRow("paused, another one waits") << int(COPY_STATUS_PAUSE) << true;
}

void tst_CCopyFileWidget::pageGoesDuringACopy()
{
    QFETCH(int, nStatus);
    QFETCH(bool, bAnotherWaits);
    StartPausedCopy();
    m_pPage->SetCopyStatus(nStatus);
    if (bAnotherWaits) {
        StartCopy("second");
    }
    QElapsedTimer timer;
    timer.start();
    m_pFinished.reset();
    m_pPage.reset();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(CopiedBytes() < LARGE_FILE);
    QVERIFY(!QFileInfo::exists(m_pStick->Path("second")));
}

QTEST_MAIN(tst_CCopyFileWidget)
#include "tst_CCopyFileWidget.moc"
