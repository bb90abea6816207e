#include "copy/CCopyFileThread.h"
#include "kit/KvMessageBox.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CElidedLabel.h"
#include "pages/CPageTree.h"
#include "support/CFakeCommands.h"
#include "support/CLogCapture.h"
#include "support/CModalAnswerer.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/WaitAside.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QMovie>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

static const QString TEXT_QUESTION
    = QStringLiteral("Your data might not be copied completely, are you sure to stop the copying process?");
static const QString TEXT_COMPLETED = QStringLiteral("Copy file completed!");
static const QString TEXT_REMOVED = QStringLiteral("The destination storage device has been removed! Please "
                                                   "check and connect the storage device then try again.");
static const QString PROGRESS_STYLE = QStringLiteral(
    "QProgressBar::chunk{border-radius: 3px;background:qlineargradient(spread:pad,x1:0,y1:0,x2:1,y2:0,stop:0 "
    "#ffaa17,stop:1 #ff7f17);}\nQProgressBar {color: transparent; border: 1px ; border-radius: 3px; "
    "background-color: #d0d0d0; text-align: none;};\n");
static const int LARGE_FILE = 12 * 1024 * 1024;

/** The copy page with a real worker between two volumes mounted for each test. */
class tst_CCopyFileWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void FormSizes_data();
    void FormSizes();
    void FormMargins();
    void FormLook();
    void ReadersHearEachPart();
    void GroupIsCentred();

    void RemainTimeText_data();
    void RemainTimeText();
    void RemainTimeIsShown();
    void NothingKnownLeavesTheTime_data();
    void NothingKnownLeavesTheTime();
    void Percent_data();
    void Percent();
    void NamesAreText_data();
    void NamesAreText();
    void LongNameLeavesThePageAsItIs();
    void FloodOfFilesIsPaintedNowAndThen();

    void NewCopyStartsFromTheBeginning();
    void CopyIsDoneAndTold();
    void CompletionBoxIsKept();
    void CancelAnswers_data();
    void CancelAnswers();
    void StopEndsInTheWordsOfCompletion();
    void CopyEndsWhileTheQuestionIsOpen();
    void StopIsNeverUndone_data();
    void StopIsNeverUndone();
    void CancelAfterAStopAsksNothing();
    void CopyThatNeverBeganCanBeCancelled();

    void RemovalIsAllThatIsTold();
    void RemovalIsToldOnce();
    void RemovalWhileTheQuestionIsOpen();
    void RemovalWhileTheCompletionIsOpen();
    void RemovalWithoutWorkerLeavesTheNextCopyAlone();
    void RemovalAfterRemovalIsToldAgain();

    void NextCopyWaitsForTheWorker();
    void CancelWhileWaiting_data();
    void CancelWhileWaiting();
    void RemovalWhileWaiting();

    void CleanUpKeepsItsHandsOffOtherVolumes();
    void CleanUpKeepsItsHandsOffFiles();
    void CleanUpOfEmptyFoldersIsStarted();
    void CleanUpNeedsAMountPoint();

    void PageGoesDuringACopy_data();
    void PageGoesDuringACopy();

private:
    void StartCopy(const QString& strFolder = QStringLiteral("out"));
    void StartPausedCopy();
    CCopyFileThread* Worker() const { return m_pPage->findChild<CCopyFileThread*>(); }
    QLabel* Label(const char* pName) const { return m_pPage->findChild<QLabel*>(QLatin1String(pName)); }
    QProgressBar* Progress() const { return m_pPage->findChild<QProgressBar*>(); }
    QPushButton* CancelBtn() const { return m_pPage->findChild<QPushButton*>(QStringLiteral("toolBtn")); }
    const QMovie* Movie() const { return Label("m_pGifLab")->movie(); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pStick;
    std::unique_ptr<CCopyFileWidget> m_pPage;
    std::unique_ptr<QSignalSpy> m_pSpyFinish;
};

#define NEEDS_VOLUMES()                                                                                      \
    do {                                                                                                     \
        if (!m_pSource->IsValid() || !m_pStick->IsValid()) {                                                 \
            QSKIP("mounting is not permitted here");                                                         \
        }                                                                                                    \
    } while (false)

static void WriteFile(const QString& strPath, int nBytes)
{
    QDir().mkpath(QFileInfo(strPath).path());
    QFile file(strPath);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(nBytes, 'x')) != nBytes) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
}

void tst_CCopyFileWidget::initTestCase() { UseLogFile(); }

void tst_CCopyFileWidget::init()
{
    CPageTree::Clear();
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->Add(QStringLiteral("rm"));
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 40);
    m_pStick = std::make_unique<CVolume>(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 60);
    if (m_pSource->IsValid()) {
        WriteFile(m_pSource->Path(QStringLiteral("docs/a.txt")), 1000);
        WriteFile(m_pSource->Path(QStringLiteral("docs/large.bin")), LARGE_FILE);
        CPageTree::Add(m_pSource->Path());
        CPageTree::Tick(m_pSource->Path(QStringLiteral("docs/a.txt")));
        CPageTree::Tick(m_pSource->Path(QStringLiteral("docs/large.bin")));
    }
    m_pPage = std::make_unique<CCopyFileWidget>();
    m_pPage->resize(1120, 649);
    m_pPage->show();
    m_pSpyFinish = std::make_unique<QSignalSpy>(m_pPage.get(), &CCopyFileWidget::SignalCopyFileFinish);
}

void tst_CCopyFileWidget::cleanup()
{
    m_pSpyFinish.reset();
    m_pPage.reset();
    CPageTree::Clear();
    m_pStick.reset();
    m_pSource.reset();
    m_pCommands.reset();
}

void tst_CCopyFileWidget::StartCopy(const QString& strFolder)
{
    m_pPage->OnCopyFile(LARGE_FILE + 1000, m_pStick->Path(strFolder), QStringLiteral("STICK"));
}

// A worker that runs until somebody lets it go on or end.
void tst_CCopyFileWidget::StartPausedCopy()
{
    StartCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_PAUSE);
    QVERIFY(Worker()->isRunning());
}

// ---------------------------------------------------------------- the form

void tst_CCopyFileWidget::FormSizes_data()
{
    QTest::addColumn<QSize>("sizeMin");
    QTest::addColumn<QSize>("sizeMax");
    const QSize sizeAny(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    QTest::newRow("driveWidget") << QSize(1060, 500) << QSize(1060, 500);
    QTest::newRow("m_pGifLab") << QSize(247, 146) << QSize(247, 146);
    QTest::newRow("m_pProgress") << QSize(860, 6) << QSize(860, 6);
    QTest::newRow("toolBtn") << QSize(120, 32) << sizeAny;
}

void tst_CCopyFileWidget::FormSizes()
{
    const auto* pWidget = m_pPage->findChild<QWidget*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(pWidget);
    QTEST(pWidget->minimumSize(), "sizeMin");
    QTEST(pWidget->maximumSize(), "sizeMax");
}

void tst_CCopyFileWidget::FormMargins()
{
    QCOMPARE(m_pPage->layout()->contentsMargins(), QMargins(30, 69, 30, 14));
    QCOMPARE(m_pPage->layout()->spacing(), 20);
    const auto* pFrame = m_pPage->findChild<QFrame*>(QStringLiteral("driveWidget"));
    QCOMPARE(pFrame->layout()->contentsMargins(), QMargins(100, 100, 100, 90));
    QCOMPARE(pFrame->pos(), QPoint(30, 69));
}

void tst_CCopyFileWidget::FormLook()
{
    QCOMPARE(Progress()->styleSheet(), PROGRESS_STYLE);
    QCOMPARE(Progress()->value(), 0);
    QCOMPARE(Progress()->minimum(), 0);
    QCOMPARE(Progress()->maximum(), 100);
    QCOMPARE(CancelBtn()->text(), QStringLiteral("Cancel"));
    QCOMPARE(Label("m_pTimeLab")->text(), QStringLiteral("Remaining Time: Calculating..."));
    QCOMPARE(Movie()->fileName(), QStringLiteral(":/res/Gif/copy.gif"));
    QVERIFY(Movie()->isValid());
    for (const QWidget* pWidget :
         {static_cast<QWidget*>(Label("m_pCopyTitleLab")), static_cast<QWidget*>(Label("m_pTimeLab")),
          static_cast<QWidget*>(CancelBtn())}) {
        QCOMPARE(pWidget->font().family(), QStringLiteral("Avenir"));
    }
}

void tst_CCopyFileWidget::ReadersHearEachPart()
{
    const auto heard = [](QObject* pObject) { return QAccessible::queryAccessibleInterface(pObject); };
    m_pPage->SlotGetCopyInfo(QStringLiteral("<b>a.txt"), 42);
    QCOMPARE(heard(m_pPage.get())->text(QAccessible::Name), QStringLiteral("Copy Progress"));
    QCOMPARE(heard(Progress())->text(QAccessible::Name), QStringLiteral("Copy Progress"));
    QCOMPARE(heard(Progress())->role(), QAccessible::ProgressBar);
    QCOMPARE(heard(Progress())->valueInterface()->currentValue().toInt(), 42);
    QCOMPARE(heard(CancelBtn())->text(QAccessible::Name), QStringLiteral("Cancel"));
    QVERIFY(heard(Label("m_pCopyTitleLab"))->text(QAccessible::Name).endsWith(QStringLiteral(": <b>a.txt")));
    QVERIFY(heard(Label("m_pGifLab"))->state().invisible);
    QVERIFY(Label("m_pGifLab")->isVisible());
    QVERIFY(!heard(Label("m_pTimeLab"))->state().invisible);
}

void tst_CCopyFileWidget::GroupIsCentred()
{
    for (const QWidget* pWidget :
         {static_cast<QWidget*>(Label("m_pGifLab")), static_cast<QWidget*>(Progress())}) {
        const QRect rect(pWidget->mapTo(m_pPage.get(), QPoint()), pWidget->size());
        QVERIFY(qAbs(rect.center().x() - m_pPage->rect().center().x()) <= 1);
    }
    const QPoint ptButton = CancelBtn()->mapTo(m_pPage.get(), CancelBtn()->rect().bottomRight());
    QCOMPARE(ptButton.x(), 1120 - 30 - 1);
    QVERIFY(ptButton.y() < 649);
}

// ---------------------------------------------------------------- news of the worker

void tst_CCopyFileWidget::RemainTimeText_data()
{
    QTest::addColumn<qint64>("nSeconds");
    QTest::addColumn<QString>("strText");
    QTest::newRow("0") << qint64(0) << QStringLiteral("00:00:00");
    QTest::newRow("1") << qint64(1) << QStringLiteral("00:00:01");
    QTest::newRow("59") << qint64(59) << QStringLiteral("00:00:59");
    QTest::newRow("60") << qint64(60) << QStringLiteral("00:01:00");
    QTest::newRow("3599") << qint64(3599) << QStringLiteral("00:59:59");
    QTest::newRow("3600") << qint64(3600) << QStringLiteral("01:00:00");
    QTest::newRow("86399") << qint64(86399) << QStringLiteral("23:59:59");
    QTest::newRow("86400, days are dropped") << qint64(86400) << QStringLiteral("00:00:00");
    QTest::newRow("90061, a day, an hour, a minute, a second") << qint64(90061) << QStringLiteral("01:01:01");
    QTest::newRow("a year less a second") << qint64(31535999) << QStringLiteral("23:59:59");
    QTest::newRow("beyond 32 bits") << qint64(8640000045296) << QStringLiteral("12:34:56");
}

void tst_CCopyFileWidget::RemainTimeText()
{
    QFETCH(qint64, nSeconds);
    QTEST(CCopyFileWidget::RemainTimeText(nSeconds), "strText");
}

void tst_CCopyFileWidget::RemainTimeIsShown()
{
    m_pPage->SlotCopyRemainTime(90061);
    QCOMPARE(Label("m_pTimeLab")->text(), QStringLiteral("Remaining Time: 01:01:01"));
}

void tst_CCopyFileWidget::NothingKnownLeavesTheTime_data()
{
    QTest::addColumn<qint64>("nBefore");
    QTest::addColumn<QString>("strText");
    QTest::newRow("at the start") << qint64(0) << QStringLiteral("Remaining Time: Calculating...");
    QTest::newRow("later") << qint64(125) << QStringLiteral("Remaining Time: 00:02:05");
}

void tst_CCopyFileWidget::NothingKnownLeavesTheTime()
{
    QFETCH(qint64, nBefore);
    m_pPage->SlotCopyRemainTime(nBefore);
    m_pPage->SlotCopyRemainTime(0);
    QTEST(Label("m_pTimeLab")->text(), "strText");
}

void tst_CCopyFileWidget::Percent_data()
{
    QTest::addColumn<int>("nPercent");
    QTest::addColumn<int>("nShown");
    QTest::newRow("below") << -5 << 0;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("50") << 50 << 50;
    QTest::newRow("100") << 100 << 100;
    QTest::newRow("above") << 120 << 100;
}

void tst_CCopyFileWidget::Percent()
{
    QFETCH(int, nPercent);
    m_pPage->SlotGetCopyInfo(QStringLiteral("a"), 30);
    m_pPage->SlotGetCopyInfo(QStringLiteral("a"), nPercent);
    QTEST(Progress()->value(), "nShown");
}

void tst_CCopyFileWidget::NamesAreText_data()
{
    QTest::addColumn<QString>("strDisk");
    QTest::addColumn<QString>("strFile");
    QTest::newRow("plain") << QStringLiteral("STICK") << QStringLiteral("IMG_0042.JPG");
    QTest::newRow("place markers") << QStringLiteral("%2") << QStringLiteral("%1 %2 %3");
    QTest::newRow("marks") << QStringLiteral("<b>A</b>") << QStringLiteral("<img src=x>&amp;.txt");
    QTest::newRow("line break") << QStringLiteral("A\nB") << QStringLiteral("two\nlines.txt");
}

void tst_CCopyFileWidget::NamesAreText()
{
    QFETCH(QString, strDisk);
    QFETCH(QString, strFile);
    m_pPage->OnCopyFile(1, QString(), strDisk);
    QCOMPARE(m_pPage->GetCopyUsbName(), strDisk);
    m_pPage->SlotGetCopyInfo(strFile, 1);
    QCOMPARE(Label("m_pCopyTitleLab")->text(),
             QStringLiteral("Copying files to (") + strDisk + QStringLiteral("): ") + strFile);
    QCOMPARE(Label("m_pCopyTitleLab")->textFormat(), Qt::PlainText);
}

void tst_CCopyFileWidget::LongNameLeavesThePageAsItIs()
{
    const QSize sizeLeast = m_pPage->minimumSizeHint();
    const QRect rectTitle = Label("m_pCopyTitleLab")->geometry();
    m_pPage->SlotGetCopyInfo(QString(255, QLatin1Char('W')) + QStringLiteral(".jpg"), 1);
    QCoreApplication::sendPostedEvents();
    QCOMPARE(m_pPage->minimumSizeHint(), sizeLeast);
    QCOMPARE(Label("m_pCopyTitleLab")->geometry(), rectTitle);
    const auto* pTitle = m_pPage->findChild<CElidedLabel*>(QStringLiteral("m_pCopyTitleLab"));
    QVERIFY(pTitle->ShownText().startsWith(QStringLiteral("Copying files to")));
    QVERIFY(pTitle->ShownText().endsWith(QStringLiteral(".jpg")));
    QVERIFY(pTitle->ShownText().size() < pTitle->text().size());
}

void tst_CCopyFileWidget::FloodOfFilesIsPaintedNowAndThen()
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
    QLabel* pTitle = Label("m_pCopyTitleLab");
    auto* pTimer = m_pPage->findChild<QTimer*>(QStringLiteral("m_pFrameTimer"));
    QCOMPARE(pTimer->interval(), 16);
    pTimer->setInterval(3600000); // the screen's next picture comes when the test says so
    m_pPage->SlotGetCopyInfo(QStringLiteral("first"), 0);
    QTRY_VERIFY(pTimer->isActive());
    QCoreApplication::processEvents();
    pTitle->installEventFilter(&count);
    for (int i = 1; i <= 100; ++i) {
        m_pPage->SlotGetCopyInfo(QString::number(i), i);
        // What is told is true at once, painted or not.
        QVERIFY(pTitle->text().endsWith(QStringLiteral(": ") + QString::number(i)));
        QCOMPARE(Progress()->value(), i);
        QCoreApplication::processEvents();
    }
    QCOMPARE(count.m_nPaints, 0);
    pTimer->start(0);
    QTRY_COMPARE(count.m_nPaints, 1);
    QVERIFY(count.m_strPainted.endsWith(QStringLiteral(": 100")));
    QVERIFY(pTitle->updatesEnabled());
}

// ---------------------------------------------------------------- a copy

void tst_CCopyFileWidget::NewCopyStartsFromTheBeginning()
{
    NEEDS_VOLUMES();
    m_pPage->SlotGetCopyInfo(QStringLiteral("old"), 77);
    m_pPage->SlotCopyRemainTime(60);
    StartPausedCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_PAUSE);
    QCOMPARE(Progress()->value(), 0);
    QCOMPARE(Label("m_pCopyTitleLab")->text(), QString());
    QCOMPARE(Label("m_pTimeLab")->text(), QStringLiteral("Remaining Time: Calculating..."));
    QCOMPARE(Movie()->state(), QMovie::Running);
    QCOMPARE(m_pPage->GetCopyUsbName(), QStringLiteral("STICK"));
    QCOMPARE(Worker()->priority(), QThread::TimeCriticalPriority);
}

void tst_CCopyFileWidget::CopyIsDoneAndTold()
{
    NEEDS_VOLUMES();
    CModalAnswerer answerer(QStringLiteral("OK"));
    QString strTime;
    answerer.Meanwhile([this, &strTime]() { strTime = Label("m_pTimeLab")->text(); });
    QElapsedTimer timer;
    timer.start();
    StartCopy();
    QVERIFY(timer.elapsed() < 100);
    QCOMPARE(m_pPage->GetCopyStatus(), int(COPY_STATUS_RUN));
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
    QCOMPARE(answerer.Buttons(), QStringList{QStringLiteral("OK")});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(QStringLiteral(":/res/Tip/tips_completed.png")).toImage());
    QCOMPARE(strTime, QStringLiteral("Remaining Time: 00:00:00"));
    QCOMPARE(Progress()->value(), 100);
    QVERIFY(Label("m_pCopyTitleLab")->text().startsWith(QStringLiteral("Copying files to (STICK): ")));
    QCOMPARE(QFileInfo(m_pStick->Path(QStringLiteral("out/Macintosh HD/docs/a.txt"))).size(), qint64(1000));
    QCOMPARE(QFileInfo(m_pStick->Path(QStringLiteral("out/Macintosh HD/docs/large.bin"))).size(),
             qint64(LARGE_FILE));
}

void tst_CCopyFileWidget::CompletionBoxIsKept()
{
    KvMessageBox* pFirst = nullptr;
    for (int i = 0; i < 2; ++i) {
        CModalAnswerer answerer(QStringLiteral("OK"));
        m_pPage->SlotCopyFinish();
        QVERIFY(answerer.Answered());
        QCOMPARE(answerer.Text(), TEXT_COMPLETED);
        const QList<KvMessageBox*> listBox = m_pPage->findChildren<KvMessageBox*>();
        QCOMPARE(listBox.size(), 1);
        QVERIFY(!pFirst || pFirst == listBox.at(0));
        pFirst = listBox.at(0);
    }
    QCOMPARE(m_pSpyFinish->count(), 2);
}

void tst_CCopyFileWidget::CancelAnswers_data()
{
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<bool>("bStops");
    QTest::newRow("cancel resumes") << QStringLiteral("Cancel") << false;
    QTest::newRow("title button resumes") << CModalAnswerer::TitleButton() << false;
    QTest::newRow("yes stops") << QStringLiteral("Yes") << true;
}

void tst_CCopyFileWidget::CancelAnswers()
{
    NEEDS_VOLUMES();
    QFETCH(QString, strButton);
    QFETCH(bool, bStops);
    StartPausedCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_RUN);
    CModalAnswerer answerer(strButton);
    ENCopyStatus enWorker = COPY_STATUS_RUN;
    int nPage = COPY_STATUS_RUN;
    QMovie::MovieState enMovie = QMovie::Running;
    answerer.Meanwhile([&]() {
        enWorker = Worker()->GetCopyStatus();
        nPage = m_pPage->GetCopyStatus();
        enMovie = Movie()->state();
    });
    const bool bEnded = m_pPage->SlotCancelBtnClick();
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_QUESTION);
    QCOMPARE(answerer.Buttons(), (QStringList{QStringLiteral("Cancel"), QStringLiteral("Yes")}));
    QCOMPARE(answerer.Icon().toImage(), QPixmap(QStringLiteral(":/res/Tip/tips_mark.png")).toImage());
    QCOMPARE(enWorker, COPY_STATUS_PAUSE);
    QCOMPARE(nPage, int(COPY_STATUS_PAUSE));
    QCOMPARE(enMovie, QMovie::Paused);

    QCOMPARE(bEnded, bStops);
    QCOMPARE(m_pPage->GetCopyStatus(), int(bStops ? COPY_STATUS_STOP : COPY_STATUS_RUN));
    QCOMPARE(Worker()->GetCopyStatus(), bStops ? COPY_STATUS_STOP : COPY_STATUS_RUN);
    QCOMPARE(Movie()->state(), bStops ? QMovie::Paused : QMovie::Running);

    const CModalAnswerer end(QStringLiteral("OK"));
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
    const qint64 nCopied
        = QFileInfo(m_pStick->Path(QStringLiteral("out/Macintosh HD/docs/large.bin"))).size();
    QCOMPARE(nCopied == LARGE_FILE, !bStops);
}

void tst_CCopyFileWidget::StopEndsInTheWordsOfCompletion()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    const CModalAnswerer answerer(QStringLiteral("OK"));
    m_pPage->SetCopyStatus(COPY_STATUS_STOP);
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
}

void tst_CCopyFileWidget::CopyEndsWhileTheQuestionIsOpen()
{
    NEEDS_VOLUMES();
    StartCopy();
    QVERIFY(WaitAside([this]() { return Worker()->isFinished(); }));
    // The worker is done and the page does not know it yet.
    const CModalAnswerer answerer(QStringLiteral("OK"));
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
    QCOMPARE(m_pSpyFinish->count(), 1);
    QVERIFY(Movie()->state() != QMovie::Running);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_CCopyFileWidget::StopIsNeverUndone_data()
{
    QTest::addColumn<int>("nStatus");
    QTest::newRow("by the pause of the exit question") << int(COPY_STATUS_PAUSE);
    QTest::newRow("by its resume") << int(COPY_STATUS_RUN);
}

void tst_CCopyFileWidget::StopIsNeverUndone()
{
    NEEDS_VOLUMES();
    QFETCH(int, nStatus);
    StartPausedCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_STOP);
    m_pPage->SetCopyStatus(nStatus);
    QCOMPARE(m_pPage->GetCopyStatus(), int(COPY_STATUS_STOP));
    QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_STOP);
    const CModalAnswerer answerer(QStringLiteral("OK"));
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
    QVERIFY(QFileInfo(m_pStick->Path(QStringLiteral("out/Macintosh HD/docs/large.bin"))).size() < LARGE_FILE);
}

void tst_CCopyFileWidget::CancelAfterAStopAsksNothing()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_STOP);
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_STOP);
    const CModalAnswerer answerer(QStringLiteral("OK"));
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
}

void tst_CCopyFileWidget::CopyThatNeverBeganCanBeCancelled()
{
    // Without a folder the worker ends at once and sends nothing.
    m_pPage->OnCopyFile(1000, QString(), QStringLiteral("STICK"));
    QTRY_VERIFY(!Worker()->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(m_pSpyFinish->count(), 0);
    const CModalAnswerer answerer(QStringLiteral("Yes"));
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QVERIFY(answerer.Answered());
    QCOMPARE(m_pSpyFinish->count(), 1);
    QVERIFY(LogLines().contains(QStringLiteral("copy ended before it began")));
}

// ---------------------------------------------------------------- the destination goes

void tst_CCopyFileWidget::RemovalIsAllThatIsTold()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    const CModalAnswerer answerer(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_REMOVED);
    QCOMPARE(answerer.Buttons(), QStringList{QStringLiteral("OK")});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(QStringLiteral(":/res/Tip/tips.png")).toImage());
    QCOMPARE(m_pSpyFinish->count(), 1);
    QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_STOP);

    const CModalAnswerer another(QStringLiteral("OK"));
    QTRY_VERIFY(!Worker()->isRunning());
    QCoreApplication::processEvents();
    QVERIFY(!another.Answered());
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(m_pSpyFinish->count(), 1);
    QVERIFY(Label("m_pTimeLab")->text() != QStringLiteral("Remaining Time: 00:00:00"));
}

void tst_CCopyFileWidget::RemovalIsToldOnce()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    CModalAnswerer answerer(QStringLiteral("OK"));
    answerer.Meanwhile([this]() { m_pPage->USBExtract(); });
    m_pPage->USBExtract();
    QVERIFY(answerer.Answered());
    // Another entry of the folder of volumes, another call.
    m_pPage->USBExtract();
    QCOMPARE(m_pSpyFinish->count(), 1);
}

void tst_CCopyFileWidget::RemovalWhileTheQuestionIsOpen()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    m_pPage->SetCopyStatus(COPY_STATUS_RUN);
    CModalAnswerer question(QStringLiteral("Cancel"));
    QString strTold;
    bool bQuestionGone = false;
    question.Meanwhile([&]() {
        const QWidget* pQuestion = QApplication::activeModalWidget();
        CModalAnswerer removal(QStringLiteral("OK"));
        removal.Meanwhile([&]() { bQuestionGone = !pQuestion->isVisible(); });
        m_pPage->USBExtract();
        strTold = removal.Text();
    });
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QCOMPARE(question.Text(), TEXT_QUESTION);
    QCOMPARE(strTold, TEXT_REMOVED);
    QVERIFY(bQuestionGone);
    QCOMPARE(m_pPage->GetCopyStatus(), int(COPY_STATUS_STOP));
    QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_STOP);
    QVERIFY(Movie()->state() != QMovie::Running);
    QTRY_VERIFY(!Worker()->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(m_pSpyFinish->count(), 1);
}

void tst_CCopyFileWidget::RemovalWhileTheCompletionIsOpen()
{
    NEEDS_VOLUMES();
    CModalAnswerer completion(QStringLiteral("OK"));
    QString strTold;
    bool bCompletionGone = false;
    completion.Meanwhile([&]() {
        const QWidget* pCompletion = QApplication::activeModalWidget();
        CModalAnswerer removal(QStringLiteral("OK"));
        removal.Meanwhile([&]() { bCompletionGone = !pCompletion->isVisible(); });
        m_pPage->USBExtract();
        strTold = removal.Text();
    });
    StartCopy();
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
    QCOMPARE(completion.Text(), TEXT_COMPLETED);
    QCOMPARE(strTold, TEXT_REMOVED);
    QVERIFY(bCompletionGone);
    QTRY_VERIFY(!Worker()->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(m_pSpyFinish->count(), 1);
    // The next one is told as usual.
    const CModalAnswerer answerer(QStringLiteral("OK"));
    StartCopy(QStringLiteral("second"));
    QTRY_COMPARE(m_pSpyFinish->count(), 2);
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
}

void tst_CCopyFileWidget::RemovalWithoutWorkerLeavesTheNextCopyAlone()
{
    NEEDS_VOLUMES();
    const CModalAnswerer removal(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QCOMPARE(removal.Text(), TEXT_REMOVED);
    QCOMPARE(m_pSpyFinish->count(), 1);
    const CModalAnswerer answerer(QStringLiteral("OK"));
    StartCopy();
    QTRY_COMPARE(m_pSpyFinish->count(), 2);
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
}

void tst_CCopyFileWidget::RemovalAfterRemovalIsToldAgain()
{
    NEEDS_VOLUMES();
    for (int i = 1; i <= 2; ++i) {
        StartPausedCopy();
        const CModalAnswerer removal(QStringLiteral("OK"));
        m_pPage->USBExtract();
        QCOMPARE(removal.Text(), TEXT_REMOVED);
        QCOMPARE(m_pSpyFinish->count(), i);
        QTRY_VERIFY(!Worker()->isRunning());
    }
}

// ---------------------------------------------------------------- a worker that takes its time to end

void tst_CCopyFileWidget::NextCopyWaitsForTheWorker()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    QElapsedTimer timer;
    timer.start();
    StartCopy(QStringLiteral("second"));
    QVERIFY(timer.elapsed() < 100);
    // News of the one before are not shown under the name of the new one.
    m_pPage->SlotGetCopyInfo(QStringLiteral("old"), 99);
    m_pPage->SlotCopyRemainTime(99);
    QCOMPARE(Progress()->value(), 0);
    QCOMPARE(Label("m_pCopyTitleLab")->text(), QString());
    QCOMPARE(Label("m_pTimeLab")->text(), QStringLiteral("Remaining Time: Calculating..."));
    QVERIFY(!QFileInfo::exists(m_pStick->Path(QStringLiteral("second"))));

    const CModalAnswerer answerer(QStringLiteral("OK"));
    Worker()->SetCopyStatus(COPY_STATUS_STOP);
    QTRY_COMPARE(m_pSpyFinish->count(), 1);
    QCOMPARE(answerer.Text(), TEXT_COMPLETED);
    QCOMPARE(QFileInfo(m_pStick->Path(QStringLiteral("second/Macintosh HD/docs/large.bin"))).size(),
             qint64(LARGE_FILE));
    QTRY_VERIFY(!Worker()->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(m_pSpyFinish->count(), 1);
}

void tst_CCopyFileWidget::CancelWhileWaiting_data()
{
    QTest::addColumn<bool>("bYes");
    QTest::newRow("yes drops the new copy") << true;
    QTest::newRow("cancel keeps it") << false;
}

void tst_CCopyFileWidget::CancelWhileWaiting()
{
    NEEDS_VOLUMES();
    QFETCH(bool, bYes);
    StartPausedCopy();
    StartCopy(QStringLiteral("second"));
    const CModalAnswerer question(bYes ? QStringLiteral("Yes") : QStringLiteral("Cancel"));
    QCOMPARE(m_pPage->SlotCancelBtnClick(), bYes);
    // The answer is about the new copy and does not reach the worker of the one before.
    QCOMPARE(Worker()->GetCopyStatus(), COPY_STATUS_PAUSE);
    QCOMPARE(m_pSpyFinish->count(), bYes ? 1 : 0);
    const CModalAnswerer answerer(QStringLiteral("OK"));
    Worker()->SetCopyStatus(COPY_STATUS_STOP);
    if (bYes) {
        QTRY_VERIFY(!Worker()->isRunning());
        QCoreApplication::processEvents();
    } else {
        QTRY_COMPARE(m_pSpyFinish->count(), 1);
    }
    QCOMPARE(m_pSpyFinish->count(), 1);
    QCOMPARE(QFileInfo::exists(m_pStick->Path(QStringLiteral("second"))), !bYes);
}

void tst_CCopyFileWidget::RemovalWhileWaiting()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    StartCopy(QStringLiteral("second"));
    Worker()->SetCopyStatus(COPY_STATUS_STOP);
    const CModalAnswerer removal(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QCOMPARE(removal.Text(), TEXT_REMOVED);
    QCOMPARE(m_pSpyFinish->count(), 1);
    QTRY_VERIFY(!Worker()->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(m_pSpyFinish->count(), 1);
    QVERIFY(!QFileInfo::exists(m_pStick->Path(QStringLiteral("second"))));
}

// ---------------------------------------------------------------- the clean-up

static bool CommandWasStarted(const CLogCapture& capture)
{
    return capture.HasPart(QStringLiteral("Destroyed while process (\"rm\")"));
}

void tst_CCopyFileWidget::CleanUpKeepsItsHandsOffOtherVolumes()
{
    NEEDS_VOLUMES();
    StartPausedCopy();
    QVERIFY(WaitAside([this]() { return QFileInfo::exists(m_pStick->Path(QStringLiteral("out"))); }));
    m_pStick->Pull(); // its folder stays; the source is still mounted beside it
    UseLogFile();
    const CLogCapture capture;
    const CModalAnswerer removal(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QVERIFY(removal.Answered());
    QVERIFY(!CommandWasStarted(capture));
    QCOMPARE(m_pCommands->Calls(QStringLiteral("rm")), QStringList());
    QCOMPARE(
        LogLines().filter(QStringLiteral("left-over mount point kept, \"/Volumes\" is not empty: ")).size(),
        1);
}

void tst_CCopyFileWidget::CleanUpKeepsItsHandsOffFiles()
{
    NEEDS_VOLUMES();
    m_pPage->OnCopyFile(1, QString(), QStringLiteral("STICK"));
    m_pSource->Pull(true);
    m_pStick->Pull();
    WriteFile(QStringLiteral("/Volumes/STICK/precious"), 1);
    UseLogFile();
    const CLogCapture capture;
    const CModalAnswerer removal(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QVERIFY(!CommandWasStarted(capture));
    QCOMPARE(LogLines().filter(QStringLiteral("precious")).size(), 1);
    QVERIFY(QFile::remove(QStringLiteral("/Volumes/STICK/precious")));
}

void tst_CCopyFileWidget::CleanUpOfEmptyFoldersIsStarted()
{
    NEEDS_VOLUMES();
    m_pPage->OnCopyFile(1, QString(), QStringLiteral("STICK"));
    m_pSource->Pull(true);
    m_pStick->Pull();
    UseLogFile();
    const CLogCapture capture;
    const CModalAnswerer removal(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QVERIFY(removal.Answered());
    QVERIFY(CommandWasStarted(capture));
    QVERIFY(LogLines().contains(QStringLiteral("cleaning left-over mount points in \"/Volumes\"")));
    // It is ended at once, so it seldom comes far enough to be recorded.
    const QStringList listCall = m_pCommands->Calls(QStringLiteral("rm"));
    QVERIFY(listCall.isEmpty() || listCall == QStringList{QStringLiteral("-rf /Volumes")});
}

void tst_CCopyFileWidget::CleanUpNeedsAMountPoint()
{
    NEEDS_VOLUMES();
    m_pPage->OnCopyFile(1, QString(), QStringLiteral("STICK"));
    m_pSource->Pull(true);
    m_pStick->Pull(true);
    UseLogFile();
    const CLogCapture capture;
    const CModalAnswerer removal(QStringLiteral("OK"));
    m_pPage->USBExtract();
    QVERIFY(removal.Answered());
    QVERIFY(!CommandWasStarted(capture));
    QCOMPARE(LogLines().filter(QStringLiteral("mount point")), QStringList());
}

// ---------------------------------------------------------------- the end

void tst_CCopyFileWidget::PageGoesDuringACopy_data()
{
    QTest::addColumn<int>("nStatus");
    QTest::addColumn<bool>("bAnotherWaits");
    QTest::newRow("running") << int(COPY_STATUS_RUN) << false;
    QTest::newRow("paused") << int(COPY_STATUS_PAUSE) << false;
    QTest::newRow("paused, another one waits") << int(COPY_STATUS_PAUSE) << true;
}

void tst_CCopyFileWidget::PageGoesDuringACopy()
{
    NEEDS_VOLUMES();
    QFETCH(int, nStatus);
    QFETCH(bool, bAnotherWaits);
    StartPausedCopy();
    m_pPage->SetCopyStatus(nStatus);
    if (bAnotherWaits) {
        StartCopy(QStringLiteral("second"));
    }
    QElapsedTimer timer;
    timer.start();
    m_pSpyFinish.reset();
    m_pPage.reset();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    const QFileInfo half(m_pStick->Path(QStringLiteral("out/Macintosh HD/docs/large.bin")));
    QVERIFY(!half.exists() || half.size() < LARGE_FILE);
    QVERIFY(!QFileInfo::exists(m_pStick->Path(QStringLiteral("second"))));
}

QTEST_MAIN(tst_CCopyFileWidget)
#include "tst_CCopyFileWidget.moc"
