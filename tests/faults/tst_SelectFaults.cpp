#include "CFailingCalls.h"
#include "files/CLeftBehind.h"
#include "pages/CNoticeLine.h"
#include "pages/CPageBed.h"
#include "pages/CSelectionCount.h"
#include "support/CGate.h"
#include "support/CModalAnswerer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using ENCall = CFailingCalls::ENCall;

Q_DECLARE_METATYPE(ENCall)

static const int GATE_MS = 60000;
// Beside what the page waits for a disk.
static const int NOTICE_MS = 20000;

/** Lets the calling thread, and each that it starts, be a user without privileges while it lives. */
class CPlainUser
{
public:
    CPlainUser() { syscall(SYS_setresuid, NOBODY, NOBODY, 0); }
    ~CPlainUser() { syscall(SYS_setresuid, 0, 0, 0); }
    CPlainUser(const CPlainUser&) = delete;
    CPlainUser& operator=(const CPlainUser&) = delete;

    /** False where the system has no other user to be. */
    static bool IsValid() { return getuid() == NOBODY; }

private:
    static const uid_t NOBODY = 65534;
};

/** The selection page over disks that do not answer, or refuse. */
class tst_SelectFaults : public CPageBed
{
    Q_OBJECT

private slots:
    void cleanup();

    void diskThatHangsWhenItIsShown();
    void diskThatHangsWhenItIsChosen();
    void diskThatHangsAtCopy_data();
    void diskThatHangsAtCopy();
    void diskThatHangsAfterTheCount();
    void diskThatHangsWhenItAppears();
    void diskInThePlaceOfOneThatHangs();
    void hangingDiskHoldsOneThread();
    void diskThatMayNotBeWritten();
    void folderThatMayNotBeRead();
    void countThatHangsIsLeftBehind();
    void countThatHangsIsGivenUp_data();
    void countThatHangsIsGivenUp();
    void countThatIsSlowGoesOn();
    void searchThatHangsIsLeftBehind();

private:
    void Hang(ENCall enCall, const QString& strEnd, int nGood = 0);
    void LetGo();
    QString Notice() const { return m_pPage->findChild<CNoticeLine*>()->Text(); }
    QString Space() const { return Label("bottomLab")->text(); }

    std::shared_ptr<CGate> m_pGate; // of the call that hangs
    std::atomic<bool> m_bHangs{false};
    std::atomic<bool> m_bHangsHere{false};
};

/** The next such call does not return before LetGo. */
void tst_SelectFaults::Hang(ENCall enCall, const QString& strEnd, int nGood)
{
    m_pGate = std::make_shared<CGate>();
    const auto fnHang = [this, pGate = m_pGate] {
        m_bHangsHere = QThread::currentThread() == qApp->thread();
        m_bHangs = true;
        if (!m_bHangsHere) {
            pGate->Pass(GATE_MS);
        }
    };
    CFailingCalls::Watch(enCall, strEnd, fnHang, nGood);
}

/** Lets the disk answer, and waits until nobody is with it any more. */
void tst_SelectFaults::LetGo()
{
    m_pGate->Open();
    QTRY_VERIFY(!CLeftBehind::Any());
}

void tst_SelectFaults::cleanup()
{
    QVERIFY2(!m_bHangsHere, "the window itself waits for the disk");
    if (m_pGate) {
        m_pGate->Open();
    }
    m_bHangs = false;
    CSelectionCount::SetPatience(std::chrono::seconds(20), std::chrono::seconds(60));
    CPageBed::cleanup();
    // What was left behind ends before the nodes and the volumes go.
    QTRY_VERIFY(!CLeftBehind::Any());
    CFailingCalls::Reset();
}

/** Whether the page deals with events within a moment. */
static bool Answers()
{
    bool bAnswered = false;
    QTimer::singleShot(0, qApp, [&bAnswered] { bAnswered = true; });
    QElapsedTimer timer;
    timer.start();
    QCoreApplication::processEvents();
    return bAnswered && timer.elapsed() < 1000;
}

void tst_SelectFaults::diskThatHangsWhenItIsShown()
{
    Hang(ENCall::SPACE, "/Volumes/STICK");
    MakePage({"STICK"});
    QVERIFY(m_bHangs);
    QCOMPARE(m_pPage->GetUsbName(), "STICK");
    QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/STICK");
    QCOMPARE(Space(), QString());
    QVERIFY(Shows(Label("m_pUSBPicLab"), ":/res/Label/usb_select.png"));
    QVERIFY(Answers());
    QTRY_COMPARE_WITH_TIMEOUT(Notice(), "STICK does not answer.", NOTICE_MS);
    LetGo();
    QTRY_VERIFY(Space().contains("0.01GB</span> Total"));
    QCOMPARE(Notice(), QString());
}

void tst_SelectFaults::diskThatHangsWhenItIsChosen()
{
    MakePage({"ONE"});
    Plug("TWO");
    Arrive("TWO");
    Hang(ENCall::SPACE, "/Volumes/TWO");
    Choose("TWO");
    QVERIFY(m_bHangs);
    QCOMPARE(m_pPage->GetUsbName(), "TWO");
    QCOMPARE(Space(), QString());
    QVERIFY(Answers());
    // Another disk can be chosen, and what the first one says later stays unseen.
    Choose("ONE");
    const QString strSpace = Space();
    QVERIFY(strSpace.contains("Available"));
    LetGo();
    QCoreApplication::processEvents();
    QCOMPARE(m_pPage->GetUsbName(), "ONE");
    QCOMPARE(Space(), strSpace);
    QCOMPARE(Notice(), QString());
}

void tst_SelectFaults::diskThatHangsAtCopy_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::newRow("its space") << ENCall::SPACE;
    QTest::newRow("whether it may be written") << ENCall::ACCESS;
}

void tst_SelectFaults::diskThatHangsAtCopy()
{
    QFETCH(ENCall, enCall);
    MakePage({"STICK"});
    QVERIFY(Tick());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    Hang(enCall, "/Volumes/STICK");
    QElapsedTimer timer;
    timer.start();
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    // Five seconds are meant; the rest is for a busy machine.
    QVERIFY2(timer.elapsed() < 15000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(m_bHangs);
    QCOMPARE(Notice(), "STICK does not answer.");
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(!QGuiApplication::overrideCursor());
    QVERIFY(!SizeThread()->isRunning());
    QVERIFY(!SizeThread()->isFinished());
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(Answers());
    LetGo();
    QTRY_COMPARE(Notice(), QString());
    CFailingCalls::Reset();
    // The disk is there again, and so is the copy.
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE(spyCopy.count(), 1);
}

void tst_SelectFaults::diskThatHangsAfterTheCount()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    Hang(ENCall::SPACE, "/Volumes/STICK", 1); // the first is for the press
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE_WITH_TIMEOUT(Notice(), "STICK does not answer.", NOTICE_MS);
    QVERIFY(m_bHangs);
    QCOMPARE(spyCopy.count(), 0);
    QCOMPARE(m_pPage->GetDstFolder(), QString());
    QVERIFY(!WaitView()->isVisible());
    QVERIFY(Tree()->model());
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(Answers());
    LetGo();
}

void tst_SelectFaults::diskThatHangsWhenItAppears()
{
    MakePage();
    Plug("STICK");
    QVERIFY(Tick());
    Hang(ENCall::SPACE, "/Volumes/STICK");
    Arrive("STICK");
    QVERIFY(m_bHangs);
    QCOMPARE(m_pPage->GetUsbName(), "STICK");
    QVERIFY(Answers());
    LetGo();
    QTRY_VERIFY(Space().contains("Available"));
    CFailingCalls::Reset();
    // Its device is known by now: one that is pulled unnoticed is found out.
    Stick("STICK").Pull();
    const CModalAnswerer answerer("OK");
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QVERIFY(LogLines().contains("the chosen disk is gone: /Volumes/STICK"));
}

void tst_SelectFaults::diskInThePlaceOfOneThatHangs()
{
    MakePage();
    Plug("STICK");
    Hang(ENCall::SPACE, "/Volumes/STICK");
    Arrive("STICK");
    QVERIFY(m_bHangs);
    QCOMPARE(Space(), QString());
    Stick("STICK").Pull();
    Leave("STICK");
    Plug("STICK", 100);
    Arrive("STICK");
    QVERIFY(Space().contains("0.10GB</span> Total"));
    QCOMPARE(Notice(), QString());
    LetGo();
    QCoreApplication::processEvents();
    QVERIFY(Space().contains("0.10GB</span> Total"));
}

void tst_SelectFaults::hangingDiskHoldsOneThread()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    Hang(ENCall::SPACE, "/Volumes/STICK");
    m_pPage->OnRefreshUSB();
    QVERIFY(m_bHangs);
    QElapsedTimer timer;
    timer.start();
    for (int n = 0; n < 20; ++n) {
        m_pPage->OnRefreshUSB();
    }
    // It has been waited for once; 20 times more would be 6 seconds.
    QVERIFY2(timer.elapsed() < 3000, qPrintable(QString::number(timer.elapsed())));
    m_pPage->SlotCopyBtnClick();
    QCOMPARE(Notice(), "STICK does not answer.");
    QCOMPARE(CFailingCalls::Calls(), 1);
    LetGo();
    QTRY_VERIFY(!Space().isEmpty());
}

void tst_SelectFaults::diskThatMayNotBeWritten()
{
    MakePage({"STICK"});
    QCOMPARE(chmod(qPrintable(Stick("STICK").Path()), 0755), 0);
    QVERIFY(Tick());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    {
        const CPlainUser user;
        if (!CPlainUser::IsValid()) {
            QSKIP("there is no other user to be");
        }
        const CModalAnswerer answerer("OK");
        QTest::mouseClick(CopyBtn(), Qt::LeftButton);
        QVERIFY(answerer.Answered());
        QCOMPARE(answerer.Text(), TEXT_READ_ONLY);
        QVERIFY(!SizeThread()->isRunning());
        QVERIFY(!SizeThread()->isFinished());
    }
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE(spyCopy.count(), 1);
}

void tst_SelectFaults::folderThatMayNotBeRead()
{
    WriteFile(m_pSource->Path("locked/photo.jpg"), "photo");
    CFailingCalls::Fail(ENCall::OPEN_FOLDER, "/locked", EACCES);
    MakePage({"STICK"});
    const CDirModel* pModel = CDirModel::GetInstence();
    Tree()->expand(pModel->index(0, 0));
    const QModelIndex index = pModel->index(1, 0, pModel->index(0, 0));
    QCOMPARE(index.data().toString(), "locked");
    QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier, Tree()->visualRect(index).center());
    QCOMPARE(Notice(), "locked: The folder cannot be read. Access is not permitted.");
}

void tst_SelectFaults::countThatHangsIsLeftBehind()
{
    WriteFile(m_pSource->Path("docs/one/two/three/photo.jpg"), "photo");
    MakePage({"STICK"});
    QVERIFY(Tick("docs"));
    Hang(ENCall::OPEN_FOLDER, "/docs/one/two");
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_VERIFY(m_bHangs);
    QVERIFY(WaitView()->isVisible());
    QVERIFY(Answers());
    QElapsedTimer timer;
    timer.start();
    m_pHost.reset();
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(CLeftBehind::Any()); // so the process ends without waiting for it
    LetGo();
}

void tst_SelectFaults::countThatHangsIsGivenUp_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::addColumn<QString>("strEnd");
    QTest::newRow("a folder") << ENCall::OPEN_FOLDER << "/docs/one/two";
    QTest::newRow("a size") << ENCall::STAT << "/docs/a.txt";
}

void tst_SelectFaults::countThatHangsIsGivenUp()
{
    QFETCH(ENCall, enCall);
    QFETCH(QString, strEnd);
    WriteFile(m_pSource->Path("docs/one/two/three/photo.jpg"), "photo");
    MakePage({"STICK"});
    QVERIFY(Tick("docs"));
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    Hang(enCall, strEnd);
    // Named at once, given up when the user has had time to read it.
    CSelectionCount::SetPatience(std::chrono::milliseconds(500), std::chrono::seconds(3));
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE(Notice(), "Macintosh HD does not answer.");
    QVERIFY(m_bHangs);
    QVERIFY(WaitView()->isVisible());
    QTRY_VERIFY(!WaitView()->isVisible());
    QVERIFY(!SizeThread()->isRunning());
    QCOMPARE(Notice(), "Macintosh HD does not answer.");
    QVERIFY(Answers());
    // The selection is what it was; without that disk in it, or with the disk in order, it can be copied.
    QVERIFY(Tree()->model());
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(Shows(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    m_pGate->Open();
    QTRY_VERIFY(!CLeftBehind::Any());
    CFailingCalls::Reset();
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(1505));
    QCOMPARE(Notice(), QString());
}

void tst_SelectFaults::countThatIsSlowGoesOn()
{
    MakePage({"STICK"});
    QVERIFY(Tick("docs"));
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    Hang(ENCall::STAT, "/docs/a.txt");
    CSelectionCount::SetPatience(std::chrono::milliseconds(1), std::chrono::seconds(60));
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE(Notice(), "Macintosh HD does not answer.");
    m_pGate->Open();
    QTRY_COMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(1500));
    QCOMPARE(Notice(), QString());
}

void tst_SelectFaults::searchThatHangsIsLeftBehind()
{
    MakePage({"STICK"});
    // It touches no volume; but the system may hang in anything that it is asked.
    Hang(ENCall::OPEN, "/self/mountinfo");
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QTRY_VERIFY(m_bHangs);
    QVERIFY(Answers());
    // The next search finds what is there, and the first one's news come too late.
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QTRY_VERIFY(Space().contains("Available"));
    QCOMPARE(Listed(), QStringList{"STICK"});
    QElapsedTimer timer;
    timer.start();
    m_pHost.reset();
    QVERIFY2(timer.elapsed() < 4000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(CLeftBehind::Any());
    LetGo();
}

QTEST_MAIN(tst_SelectFaults)
#include "tst_SelectFaults.moc"
