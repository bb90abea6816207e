#include "CFailingCalls.h"
#include "copy/CCopyFileThread.h"
#include "copy/CCopyText.h"
#include "files/CLeftBehind.h"
#include "kit/CBoxDetail.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CCopyWatch.h"
#include "pages/CElidedLabel.h"
#include "pages/CItemRowDelegate.h"
#include "pages/CPageTree.h"
#include "support/CFakeCommands.h"
#include "support/CGate.h"
#include "support/CModalAnswerer.h"
#include "support/CMovedClock.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/TestFiles.h"
#include "support/Texts.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>

#include <cerrno>
#include <memory>

using ENCall = CFailingCalls::ENCall;

static const int LARGE_FILE = 12 * 1024 * 1024;
static const int PATIENCE_MS = 30000;

/** What the user reads in a box: its message, its detail and the list behind its link. */
struct STRead
{
    QString strMessage;
    QString strDetail;
    ENDetail enKind = ENDetail::PLAIN;
    bool bDetailShown = false;
    QStringList listRow; ///< "path: reason"

    bool IsWarning() const { return bDetailShown && enKind == ENDetail::WARNING; }
};

/** The copy page with a real worker, whose disks fail or do not answer: what the user reads then. */
class tst_PageFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void wholeCopyMayBeUnplugged();
    void endsAreTold_data();
    void endsAreTold();
    void fullDiskIsTold();
    void goneSourceIsTold();
    void nothingOfTheCopyBefore();

    void hangIsLeft_data();
    void hangIsLeft();
    void lastBytesHaveTheirTime();
    void noAnswerIsToldWithTheFile();
    void stopIsShown();
    void removalWithAStuckWorker();
    void pageGoesWithAStuckWorker();

    void removal_data();
    void removal();
    void removalWhileTheBoxIsOpen_data();
    void removalWhileTheBoxIsOpen();

private:
    void StartCopy(const QString& strFolder = "out");
    void StartAndHold(ENCall enCall, const QString& strEnd, int nGood = 0);
    void LetGo();
    void CancelWithYes();
    bool ReadEnd(STRead& stRead);
    static STRead Read(QWidget* pBox);
    static QStringList ReadList();
    void VerifyNextCopyIsWhole();
    void VerifyLost();
    CCopyFileThread* Worker() const { return m_pPage->findChild<CCopyFileThread*>(); }
    QString StateLine() const { return m_pPage->findChild<CElidedLabel*>("m_pStateLab")->text(); }
    QPushButton* CancelBtn() const { return m_pPage->findChild<QPushButton*>("toolBtn"); }
    qint64 Copied(const QString& strFolder, const QString& strName) const
    {
        return QFileInfo(m_pStick->Path(strFolder + "/Macintosh HD/docs/" + strName)).size();
    }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pStick;
    std::unique_ptr<CCopyFileWidget> m_pPage;
    std::unique_ptr<QSignalSpy> m_pFinished;
    CGate m_held; // opened when the worker has come to the call that does not return
    CGate m_go; // lets it return
    bool m_bHolds = false;
};

void tst_PageFaults::init()
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
    QVERIFY(CPageTree::Tick(m_pSource->Path("docs")));
    m_pPage = std::make_unique<CCopyFileWidget>();
    m_pPage->resize(1120, 649);
    m_pPage->show();
    m_pFinished = std::make_unique<QSignalSpy>(m_pPage.get(), &CCopyFileWidget::SignalCopyFileFinish);
}

void tst_PageFaults::cleanup()
{
    LetGo();
    QTRY_VERIFY(!CLeftBehind::Any());
    m_pFinished.reset();
    m_pPage.reset();
    CFailingCalls::Reset();
    CPageTree::Clear();
    m_pStick.reset();
    m_pSource.reset();
    m_pCommands.reset();
}

void tst_PageFaults::StartCopy(const QString& strFolder)
{
    m_pPage->OnCopyFile(LARGE_FILE + 1000, m_pStick->Path(strFolder), "STICK");
}

// The worker comes to the call and stays in it until LetGo.
void tst_PageFaults::StartAndHold(ENCall enCall, const QString& strEnd, int nGood)
{
    m_bHolds = true;
    const auto fnHang = [this] {
        m_held.Open();
        m_go.Pass(10 * PATIENCE_MS);
    };
    CFailingCalls::Watch(enCall, strEnd, fnHang, nGood);
    StartCopy();
    QVERIFY(m_held.Pass(PATIENCE_MS));
}

void tst_PageFaults::LetGo()
{
    if (m_bHolds) {
        m_go.Open();
        m_bHolds = false;
    }
}

void tst_PageFaults::CancelWithYes()
{
    const CModalAnswerer answerer("Yes");
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_STOP);
}

QStringList tst_PageFaults::ReadList()
{
    const auto* pList = QApplication::activeModalWidget()->findChild<QListWidget*>("m_pItemList");
    QStringList listRow;
    for (int n = 0; pList && n < pList->count(); ++n) {
        listRow.append(pList->item(n)->text() + ": "
                       + pList->item(n)->data(CItemRowDelegate::REASON_ROLE).toString());
    }
    return listRow;
}

STRead tst_PageFaults::Read(QWidget* pBox)
{
    STRead stRead;
    const auto* pDetail = pBox->findChild<CBoxDetail*>();
    const auto* pText = pBox->findChild<QLabel*>("label_detail");
    stRead.bDetailShown = pText->isVisible();
    stRead.strDetail = pText->text();
    stRead.enKind = pDetail->Kind();
    if (pDetail->Link()->isVisible()) {
        CModalAnswerer list("Close");
        list.Meanwhile([&stRead] { stRead.listRow = ReadList(); });
        QTest::mouseClick(pDetail->Link(), Qt::LeftButton);
    }
    return stRead;
}

// Waits for the copy's end and reads what the box says of it.
bool tst_PageFaults::ReadEnd(STRead& stRead)
{
    const int nBefore = m_pFinished->count();
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&stRead] { stRead = Read(QApplication::activeModalWidget()); });
    const bool bEnds
        = QTest::qWaitFor([this, nBefore] { return m_pFinished->count() > nBefore; }, PATIENCE_MS);
    stRead.strMessage = answerer.Text();
    return bEnds && answerer.Answered();
}

void tst_PageFaults::VerifyNextCopyIsWhole()
{
    StartCopy("second");
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QCOMPARE(stRead.strMessage, TEXT_COMPLETED);
    QCOMPARE(stRead.enKind, ENDetail::GOOD);
    QCOMPARE(Copied("second", "a.txt"), 1000);
    QCOMPARE(Copied("second", "large.bin"), LARGE_FILE);
}

// Nobody is told to rely on what a pulled disk holds.
void tst_PageFaults::VerifyLost()
{
    const STCopyAccount stAccount = m_pPage->LastAccount();
    QVERIFY(stAccount.bGone);
    QVERIFY(!stAccount.IsWhole());
    QCOMPARE(CCopyText::Summary(stAccount),
             QString("The disk did not confirm that everything is on it. Do not rely on this copy."));
}

// ---------------------------------------------------------------- ends

void tst_PageFaults::wholeCopyMayBeUnplugged()
{
    StartCopy();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QCOMPARE(stRead.strMessage, TEXT_COMPLETED);
    QVERIFY(stRead.bDetailShown);
    QCOMPARE(stRead.strDetail, QString("2 files, 12.58 MB are on the disk. It can be unplugged now."));
    QCOMPARE(stRead.enKind, ENDetail::GOOD);
    QCOMPARE(stRead.listRow, QStringList());
    QVERIFY(m_pPage->LastAccount().IsWhole());
}

void tst_PageFaults::endsAreTold_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<QString>("strEnd");
    QTest::addColumn<int>("nError");
    QTest::addColumn<int>("nGood");
    QTest::addColumn<QString>("strReason");
    QTest::addColumn<QString>("strDetail");
    const QString strOne = "1 of 2 items was not copied whole.";
    const auto row = [](const char* pName, ENCall enCall, const QString& strEnd, int nError, int nGood,
                        const QString& strReason, const QString& strDetail) {
        QTest::newRow(pName) << int(enCall) << strEnd << nError << nGood << strReason << strDetail;
    };
    row("write", ENCall::WRITE, "docs/large.bin", EIO, 1, "The disk reports an error.", strOne);
    row("no space", ENCall::WRITE, "docs/large.bin", ENOSPC, 1, "The disk is full.", strOne);
    row("size limit", ENCall::WRITE, "docs/large.bin", EFBIG, 1,
        "Too large for the file system of this disk.", strOne);
    row("close", ENCall::CLOSE, "docs/large.bin", EIO, 0, "The disk reports an error.", strOne);
    row("read", ENCall::READ, "docs/large.bin", EIO, 1, "The disk reports an error.", strOne);
    row("open", ENCall::OPEN, "docs/a.txt", EACCES, 0, "Access is not permitted.", strOne);
    row("flush", ENCall::FLUSH, "", EIO, 0, "",
        "The disk did not confirm that everything is on it. Do not rely on this copy.");
}

void tst_PageFaults::endsAreTold()
{
    QFETCH(int, nCall);
    QFETCH(QString, strEnd);
    QFETCH(int, nError);
    QFETCH(int, nGood);
    QFETCH(QString, strReason);
    QFETCH(QString, strDetail);
    CFailingCalls::Fail(ENCall(nCall), strEnd, nError, nGood);
    StartCopy();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QVERIFY(CFailingCalls::Calls() > nGood);
    QCOMPARE(stRead.strMessage, TEXT_COMPLETED);
    QCOMPARE(stRead.strDetail.section('\n', 0, 0), strDetail);
    QVERIFY(stRead.IsWarning());
    QVERIFY(!m_pPage->LastAccount().IsWhole());
    if (!strReason.isEmpty()) {
        QCOMPARE(stRead.listRow.size(), 1);
        QVERIFY2(stRead.listRow.at(0).startsWith(m_pSource->Path(strEnd) + ": "),
                 qPrintable(stRead.listRow.at(0)));
        QVERIFY2(stRead.listRow.at(0).contains(strReason), qPrintable(stRead.listRow.at(0)));
    }
    // The page serves the next copy as ever.
    CFailingCalls::Reset();
    VerifyNextCopyIsWhole();
}

void tst_PageFaults::fullDiskIsTold()
{
    m_pStick.reset();
    m_pStick = std::make_unique<CVolume>("STICK", "/dev/sdb1", 4);
    StartCopy();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QCOMPARE(stRead.strMessage, TEXT_COMPLETED);
    QVERIFY(stRead.IsWarning());
    QVERIFY2(stRead.strDetail.startsWith("1 of 2 items was not copied whole."), qPrintable(stRead.strDetail));
    QCOMPARE(stRead.listRow, QStringList{m_pSource->Path("docs/large.bin") + ": The disk is full."});
}

void tst_PageFaults::goneSourceIsTold()
{
    m_pSource->Pull();
    StartCopy();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QCOMPARE(stRead.strMessage, TEXT_COMPLETED);
    QVERIFY(stRead.IsWarning());
    QCOMPARE(stRead.strDetail.section('\n', 0, 0), QString("Nothing was copied."));
    QVERIFY(stRead.listRow.size() >= 2);
    QVERIFY(stRead.listRow.filter("docs/large.bin").size() == 1);
}

// An account shows up for its own copy alone, also when the next one has none.
void tst_PageFaults::nothingOfTheCopyBefore()
{
    StartCopy();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QVERIFY(stRead.bDetailShown);
    m_pPage->OnCopyFile(1000, QString(), "STICK"); // its worker ends without a word
    QCOMPARE(m_pPage->LastAccount().nFiles, 0);
    const CModalAnswerer stop("Yes");
    QVERIFY(QTest::qWaitFor([this] { return !Worker()->isRunning(); }));
    QCoreApplication::processEvents();
    QVERIFY(m_pPage->SlotCancelBtnClick());
    QCOMPARE(m_pFinished->count(), 2);
    QVERIFY(m_pPage->LastAccount().bStopped);
    QCOMPARE(m_pPage->LastAccount().nFiles, 0);
}

// ---------------------------------------------------------------- no answer

void tst_PageFaults::hangIsLeft_data()
{
    QTest::addColumn<int>("nCall");
    QTest::addColumn<QString>("strEnd");
    QTest::newRow("read") << int(ENCall::READ) << "Macintosh HD/docs/large.bin";
    QTest::newRow("open") << int(ENCall::OPEN) << "Macintosh HD/docs/large.bin";
    QTest::newRow("write") << int(ENCall::WRITE) << "docs/large.bin";
    QTest::newRow("close") << int(ENCall::CLOSE) << "docs/large.bin";
    QTest::newRow("make a folder") << int(ENCall::MAKE_FOLDER) << "Macintosh HD/docs";
    QTest::newRow("list") << int(ENCall::LIST) << "Macintosh HD/docs";
    QTest::newRow("stat") << int(ENCall::STAT) << "Macintosh HD/docs/large.bin";
}

void tst_PageFaults::hangIsLeft()
{
    QFETCH(int, nCall);
    QFETCH(QString, strEnd);
    StartAndHold(ENCall(nCall), strEnd);
    if (QTest::currentTestFailed()) {
        return;
    }
    const CCopyFileThread* pStuck = Worker();
    QElapsedTimer timer;
    timer.start();
    CancelWithYes();
    QTRY_COMPARE_WITH_TIMEOUT(m_pFinished->count(), 1, PATIENCE_MS);
    // 3 s are promised; the rest is for a busy machine.
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(CLeftBehind::Any());
    QVERIFY(Worker() && Worker() != pStuck);
    QCOMPARE(LogLines().filter("the copy's worker is left behind: ").size(), 1);

    const STCopyAccount stAccount = m_pPage->LastAccount();
    QVERIFY(stAccount.bStopped);
    QVERIFY(!stAccount.IsWhole());
    QVERIFY(!stAccount.listItem.isEmpty());
    QCOMPARE(stAccount.listItem.last().enProblem, ENCopyProblem::NO_ANSWER);
    VerifyNextCopyIsWhole();

    // What comes of it late is heard by nobody.
    LetGo();
    QTRY_VERIFY(!CLeftBehind::Any());
    QCoreApplication::processEvents();
    QCOMPARE(m_pFinished->count(), 2);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_PageFaults::lastBytesHaveTheirTime()
{
    CMovedClock clock;
    StartAndHold(ENCall::FLUSH, "");
    QTRY_COMPARE(StateLine(), QString("The last bytes are being written to the disk…"));
    CancelWithYes();
    clock.Move(CCopyWatch::STOP_MS);
    const QSignalSpy looks(m_pPage->findChild<CCopyWatch*>()->findChild<QTimer*>(), &QTimer::timeout);
    QTRY_VERIFY(looks.count() >= 2);
    QCOMPARE(m_pFinished->count(), 0);
    QCOMPARE(StateLine(), QString("The last bytes are being written to the disk…"));
    clock.Move(CCopyWatch::FLUSH_MS);
    QTRY_COMPARE(m_pFinished->count(), 1);
    QCOMPARE(m_pPage->LastAccount().enFlush, ENCopyFlush::FAILED);
    QVERIFY(!QApplication::activeModalWidget());
    VerifyNextCopyIsWhole();
}

void tst_PageFaults::noAnswerIsToldWithTheFile()
{
    CMovedClock clock;
    StartAndHold(ENCall::READ, "Macintosh HD/docs/large.bin", 1);
    clock.Move(19000);
    const QSignalSpy looks(m_pPage->findChild<CCopyWatch*>()->findChild<QTimer*>(), &QTimer::timeout);
    QTRY_VERIFY(looks.count() >= 2);
    QVERIFY2(!StateLine().contains("not answered"), qPrintable(StateLine()));
    clock.Move(2000);
    QTRY_COMPARE(StateLine(),
                 "The disk has not answered for 21 seconds: " + m_pSource->Path("docs/large.bin"));
    LetGo();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QCOMPARE(stRead.enKind, ENDetail::GOOD);
    QCOMPARE(StateLine(), QString());
}

void tst_PageFaults::stopIsShown()
{
    CMovedClock clock; // nobody is given up
    StartAndHold(ENCall::READ, "Macintosh HD/docs/large.bin", 1);
    QVERIFY(CancelBtn()->isEnabled());
    CancelWithYes();
    QVERIFY(!CancelBtn()->isEnabled());
    QCOMPARE(CancelBtn()->text(), QString("Cancel"));
    QCOMPARE(StateLine(), QString("The copy is being stopped…"));
    LetGo();
    STRead stRead;
    QVERIFY(ReadEnd(stRead));
    QCOMPARE(stRead.strMessage, TEXT_COMPLETED);
    QVERIFY(stRead.IsWarning());
    QVERIFY2(stRead.strDetail.startsWith("The copy was stopped. "), qPrintable(stRead.strDetail));
    QCOMPARE(StateLine(), QString());
    StartCopy("second");
    QVERIFY(CancelBtn()->isEnabled());
    QVERIFY(ReadEnd(stRead));
}

// The next copy waits no longer than promised for the one whose disk was pulled.
void tst_PageFaults::removalWithAStuckWorker()
{
    StartAndHold(ENCall::WRITE, "docs/large.bin");
    CModalAnswerer removal("OK");
    m_pPage->USBExtract();
    QCOMPARE(removal.Text(), TEXT_REMOVED);
    QCOMPARE(m_pFinished->count(), 1);
    VerifyLost();
    QElapsedTimer timer;
    timer.start();
    VerifyNextCopyIsWhole();
    QVERIFY2(timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(CLeftBehind::Any());
}

void tst_PageFaults::pageGoesWithAStuckWorker()
{
    StartAndHold(ENCall::READ, "Macintosh HD/docs/large.bin");
    QElapsedTimer timer;
    timer.start();
    m_pFinished.reset();
    m_pPage.reset();
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(CLeftBehind::Any());
    QCOMPARE(LogLines().filter("the copy's worker is left behind: ").size(), 1);
}

// ---------------------------------------------------------------- unplugged

void tst_PageFaults::removal_data()
{
    QTest::addColumn<bool>("bPaused");
    QTest::newRow("copying") << false;
    QTest::newRow("paused") << true;
}

void tst_PageFaults::removal()
{
    QFETCH(bool, bPaused);
    StartAndHold(ENCall::WRITE, "docs/large.bin", 1);
    if (bPaused) {
        m_pPage->SetCopyStatus(COPY_STATUS_PAUSE);
    }
    m_pStick->Pull(true);
    STRead stRead;
    CModalAnswerer removal("OK");
    removal.Meanwhile([&] {
        LetGo();
        stRead = Read(QApplication::activeModalWidget());
    });
    m_pPage->USBExtract();
    QCOMPARE(removal.Text(), TEXT_REMOVED);
    QVERIFY(!stRead.bDetailShown);
    QCOMPARE(m_pFinished->count(), 1);
    VerifyLost();
    QTRY_VERIFY(Worker()->isFinished());
    QCoreApplication::processEvents();
    VerifyLost();
}

void tst_PageFaults::removalWhileTheBoxIsOpen_data()
{
    QTest::addColumn<bool>("bWhole");
    QTest::addColumn<bool>("bList");
    QTest::newRow("whole") << true << false;
    QTest::newRow("not whole") << false << false;
    QTest::newRow("not whole, list open") << false << true;
}

void tst_PageFaults::removalWhileTheBoxIsOpen()
{
    QFETCH(bool, bWhole);
    QFETCH(bool, bList);
    if (!bWhole) {
        CFailingCalls::Fail(ENCall::READ, "docs/a.txt", EIO);
    }
    STRead stRead;
    QString strRemoved;
    const auto fnPull = [&] {
        m_pStick->Pull(true);
        const QWidget* pBefore = QApplication::activeModalWidget();
        CModalAnswerer removal("OK");
        removal.Meanwhile([&stRead, pBefore] {
            QVERIFY(!pBefore->isVisible());
            stRead = Read(QApplication::activeModalWidget());
        });
        m_pPage->USBExtract();
        strRemoved = removal.Text();
    };
    CModalAnswerer end("OK");
    end.Meanwhile([&] {
        if (!bList) {
            fnPull();
            return;
        }
        CModalAnswerer list("Close");
        list.Meanwhile(fnPull);
        QTest::mouseClick(QApplication::activeModalWidget()->findChild<CBoxDetail*>()->Link(),
                          Qt::LeftButton);
    });
    StartCopy();
    QTRY_COMPARE_WITH_TIMEOUT(m_pFinished->count(), 1, PATIENCE_MS);
    QTRY_COMPARE(strRemoved, TEXT_REMOVED);
    QTRY_VERIFY(!QApplication::activeModalWidget());
    QCOMPARE(stRead.bDetailShown, bWhole);
    if (bWhole) {
        QCOMPARE(stRead.strDetail, QString("Everything was on the disk before it was removed."));
        QCOMPARE(stRead.enKind, ENDetail::GOOD);
    }
    QCOMPARE(m_pPage->LastAccount().IsWhole(), bWhole);
}

QTEST_MAIN(tst_PageFaults)
#include "tst_PageFaults.moc"
