#include "pages/CPageBed.h"
#include "support/CLogCapture.h"
#include "support/CModalAnswerer.h"
#include "support/WaitAside.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QMovie>
#include <QStorageInfo>
#include <QThreadPool>

#include <atomic>

/** From the press of Copy to the start of the copy, or to the message that says why there is none. */
class tst_CSelFileWidgetCopy : public CPageBed
{
    Q_OBJECT

private slots:
    void destinationFolder_data();
    void destinationFolder();
    void freeBytesAreEnoughOneMoreIsNot();
    void acceptedSelectionIsHandedOver();
    void copyBeginsAfterTheWorkersEnd();
    void refused_data();
    void refused();
    void nothingTakesInputDuringTheCount();
    void diskEventDuringTheCountLeavesItsDisk();
    void pageGoesDuringTheCount();

private:
    void Do(const QString& strStep);
    QLabel* WaitLabel(const char* pName) const { return WaitView()->findChild<QLabel*>(pName); }
};

void tst_CSelFileWidgetCopy::destinationFolder_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QString>("strTime");
    QTest::addColumn<QString>("strFolder");
    QTest::newRow("afternoon, two blanks on either side of at")
        << "/Volumes/STICK"
        << "2026-11-16T14:05:09"
        << "/Volumes/STICK/Tarnwick 2026-11-16  at  14.05.09";
    QTest::newRow("leading zeros") << "/Volumes/A"
                                   << "2027-01-02T03:04:05.999"
                                   << "/Volumes/A/Tarnwick 2027-01-02  at  03.04.05";
    QTest::newRow("name with place markers") << "/Volumes/%2 %1 %5"
                                             << "2026-12-31T23:59:59"
                                             << "/Volumes/%2 %1 %5/Tarnwick 2026-12-31  at  23.59.59";
}

void tst_CSelFileWidgetCopy::destinationFolder()
{
    QFETCH(QString, strPath);
    QFETCH(QString, strTime);
    const QDateTime time = QDateTime::fromString(strTime, Qt::ISODateWithMs);
    QTEST(CSelFileWidget::DestinationFolder(strPath, time), "strFolder");
}

void tst_CSelFileWidgetCopy::freeBytesAreEnoughOneMoreIsNot()
{
    MakePage({"STICK"});
    const qint64 nFree = QStorageInfo("/Volumes/STICK").bytesAvailable();
    QVERIFY(nFree > 1000000);
    const CModalAnswerer answerer("OK");
    QVERIFY(!m_pPage->ShowUsbNoEnoughDlg(nFree));
    QVERIFY(!answerer.Answered());
    QVERIFY(m_pPage->ShowUsbNoEnoughDlg(nFree + 1));
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);

    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CModalAnswerer second("OK");
    m_pPage->SlotGetFileSizeFinish(nFree);
    QCOMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pPage->GetTotalSize(), nFree);
    m_pPage->SlotGetFileSizeFinish(nFree + 1);
    QVERIFY(second.Answered());
    QCOMPARE(spyCopy.count(), 1);
}

void tst_CSelFileWidgetCopy::acceptedSelectionIsHandedOver()
{
    MakePage({"STICK"});
    QVERIFY(Tick("docs"));
    const qint64 nNow = QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9)).toMSecsSinceEpoch();
    CClock::SetSource([nNow]() { return nNow; });
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    // The second time everything begins anew.
    for (const int nCopy : {1, 2}) {
        QTest::mouseClick(CopyBtn(), Qt::LeftButton);
        QCOMPARE(m_pPage->GetTotalSize(), qint64(0));
        QCOMPARE(m_pPage->GetDstFolder(), QString());
        QVERIFY(WaitView()->isVisible());
        QCOMPARE(WaitView()->windowModality(), Qt::NonModal); // the window can be closed
        const QPoint ptOff = WaitView()->geometry().center() - m_pHost->geometry().center();
        QVERIFY(ptOff.manhattanLength() <= 2);
        QCOMPARE(WaitLabel("label_text")->text(), "Calculating files size...");
        QCOMPARE(WaitLabel("label_gif")->movie()->state(), QMovie::Running);
        QTRY_COMPARE(spyCopy.count(), nCopy);
        QCOMPARE(m_pPage->GetTotalSize(), qint64(1500));
        QCOMPARE(m_pPage->GetDstFolder(), "/Volumes/STICK/Tarnwick 2026-11-16  at  14.05.09");
        QCOMPARE(m_pPage->GetUsbName(), "STICK");
        QVERIFY(!WaitView()->isVisible());
        QCOMPARE(WaitLabel("label_gif")->movie()->state(), QMovie::NotRunning);
        QVERIFY(CopyBtn()->isEnabled());
        QVERIFY(!SizeThread()->isRunning());
        QVERIFY(Tree()->model());
    }
}

// "press" is Copy's; "pull X" leaves its empty folder, on the disk below; "arrive X",
// "leave X" and "forget X" are what the page is told, the last without a rebuild.
void tst_CSelFileWidgetCopy::Do(const QString& strStep)
{
    const QString strVerb = strStep.section(' ', 0, 0);
    const QString strName = strStep.section(' ', 1);
    if (strVerb == "press") {
        QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    } else if (strVerb == "plug") {
        Plug(strName);
    } else if (strVerb == "pull") {
        Stick(strName).Pull();
    } else if (strVerb == "lock") {
        QVERIFY(Stick(strName).MakeReadOnly());
    } else if (strVerb == "fill") {
        WriteFile(Stick(strName).Path("used"), QByteArray(8 * 1024 * 1024, 'x'));
    } else if (strVerb == "arrive") {
        Arrive(strName);
        Choose(strName);
    } else if (strVerb == "leave") {
        Leave(strName);
    } else if (strVerb == "forget") {
        m_pPage->RemoveDisk("/Volumes/" + strName);
    } else {
        QFAIL(qPrintable("no such step: " + strStep));
    }
}

// The worker sends its result before it ends; the next count must not find it still running.
void tst_CSelFileWidgetCopy::copyBeginsAfterTheWorkersEnd()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    // Between its result, which the page was connected to first, and its end.
    connect(
        SizeThread(), &CGetFileSizeThread::SignalGetSizeFinish, SizeThread(), []() { QThread::msleep(100); },
        Qt::DirectConnection);
    bool bEnded = false;
    connect(m_pPage, &CSelFileWidget::SignalCopyFile, this, [&]() { bEnded = SizeThread()->isFinished(); });
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    m_pPage->SlotCopyBtnClick();
    QTRY_COMPARE(spyCopy.count(), 1);
    QVERIFY(bEnded);
}

void tst_CSelFileWidgetCopy::refused_data()
{
    QTest::addColumn<QString>("strSteps"); // after TWO of ONE and TWO was chosen and 3 MiB were ticked
    QTest::addColumn<QString>("strText");
    QTest::addColumn<bool>("bCounted");
    QTest::addColumn<bool>("bGone");
    QTest::addColumn<QStringList>("listLeft");
    const auto row = [](const char* pName, const char* pSteps, const QString& strText, bool bCounted,
                        const QStringList& listLeft) {
        QTest::newRow(pName) << QString(pSteps) << strText << bCounted << false << listLeft;
    };
    row("read-only", "lock TWO; press", TEXT_READ_ONLY, false, {"ONE", "TWO"});
    row("too large", "fill TWO; press", TEXT_NO_SPACE, true, {"ONE", "TWO"});
    row("none chosen, another arrives", "forget TWO; press; plug THREE; arrive THREE", TEXT_NO_SPACE, true,
        {"ONE", "THREE"});
    const auto gone
        = [](const char* pName, const char* pSteps, bool bCounted, const QStringList& listLeft = {"ONE"}) {
              QTest::newRow(pName) << QString(pSteps) << TEXT_NO_SPACE << bCounted << true << listLeft;
          };
    gone("removed during the count", "press; leave TWO", true);
    gone("pulled during the count, nobody told", "press; pull TWO", true);
    gone("another in its place, nobody told", "press; pull TWO; plug TWO", true);
    gone("another in its place", "press; pull TWO; leave TWO; plug TWO; arrive TWO", true, {"ONE", "TWO"});
    gone("pulled before the press, nobody told", "pull TWO; press", false);
    gone("arrived, then pulled, nobody told", "leave TWO; arrive TWO; pull TWO; press", false);
    gone("another in its place before the press, nobody told", "pull TWO; plug TWO; press", false);
    gone("a read-only one in its place", "pull TWO; plug TWO; lock TWO; press", false);
}

void tst_CSelFileWidgetCopy::refused()
{
    QFETCH(QString, strSteps);
    QFETCH(QString, strText);
    MakePage({"ONE", "TWO"});
    Choose("TWO");
    QVERIFY(Tick("pics"));
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CLogCapture capture;
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([this]() { QVERIFY(!WaitView()->isVisible()); });
    for (const QString& strStep : strSteps.split("; ")) {
        Do(strStep);
    }
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), strText);
    QCOMPARE(answerer.Buttons(), QStringList{"OK"});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(":/res/Tip/tips.png").toImage());
    QVERIFY(capture.Has(strText));
    QTEST(LogLines().contains("the chosen disk is gone: /Volumes/TWO"), "bGone");
    QVERIFY(!SizeThread()->isRunning());
    QTEST(SizeThread()->isFinished(), "bCounted");
    QStringList listLeft = Listed();
    listLeft.sort();
    QTEST(listLeft, "listLeft");
    QCOMPARE(spyCopy.count(), 0);
    QCOMPARE(m_pPage->GetDstFolder(), QString());
    // The selection is kept, and another disk can be tried.
    QVERIFY(Shows(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    QTRY_VERIFY(CopyBtn()->isEnabled());
    Choose("ONE");
    Do("press");
    QTRY_COMPARE(spyCopy.count(), 1);
}

void tst_CSelFileWidgetCopy::nothingTakesInputDuringTheCount()
{
    MakePage({"ONE", "TWO"});
    Choose("ONE");
    QVERIFY(Tick());
    // Sent by the worker itself, so it is counted there.
    std::atomic<int> nStarts{0};
    connect(
        SizeThread(), &QThread::started, SizeThread(), [&]() { ++nStarts; }, Qt::DirectConnection);
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    m_pPage->SlotCopyBtnClick();
    QVERIFY(!Tree()->model());
    QVERIFY(!CopyBtn()->isEnabled());
    const int nAsked = Asked();
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QCOMPARE(Refresh()->movie()->state(), QMovie::NotRunning);
    QThreadPool::globalInstance()->waitForDone();
    QCOMPARE(Asked(), nAsked);
    m_pPage->SlotShowListWidget();
    QVERIFY(!List()->isVisible());
    Choose("TWO");
    QCOMPARE(m_pPage->GetUsbName(), "ONE");
    QVERIFY(WaitAside([this]() { return SizeThread()->isFinished(); }));
    m_pPage->SlotCopyBtnClick();
    QTRY_COMPARE(spyCopy.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(nStarts.load(), 1);
    QCOMPARE(spyCopy.count(), 1);
    QVERIFY(Tree()->model());
    Choose("TWO");
    QCOMPARE(m_pPage->GetUsbName(), "TWO");
}

void tst_CSelFileWidgetCopy::diskEventDuringTheCountLeavesItsDisk()
{
    MakePage({"ONE", "TWO"});
    const QStringList listName = Listed();
    Choose(listName.at(1));
    QVERIFY(Tick());
    QString strNameAtSignal;
    connect(m_pPage, &CSelFileWidget::SignalCopyFile, this,
            [&]() { strNameAtSignal = m_pPage->GetUsbName(); });
    m_pPage->SlotCopyBtnClick();
    m_pPage->OnRefreshUSB(); // chooses the first disk
    QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
    QVERIFY(!CopyBtn()->isEnabled());
    m_pPage->SlotCheckFileSelected();
    QVERIFY(!CopyBtn()->isEnabled());
    QVERIFY(Shows(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    QTRY_COMPARE(strNameAtSignal, listName.at(1));
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(m_pPage->GetDstFolder().startsWith("/Volumes/" + listName.at(1) + '/'));
    QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/" + listName.at(1));
}

void tst_CSelFileWidgetCopy::pageGoesDuringTheCount()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    // The worker counts for as long as nobody tells it to stop.
    std::atomic<bool> bTold{false};
    connect(
        SizeThread(), &QThread::started, SizeThread(),
        [&]() { bTold = WaitAside([]() { return QThread::currentThread()->isInterruptionRequested(); }); },
        Qt::DirectConnection);
    m_pPage->SlotCopyBtnClick();
    const QPointer<CGetFileSizeThread> pThread = SizeThread();
    QElapsedTimer timer;
    timer.start();
    m_pHost.reset();
    QVERIFY(bTold);
    QVERIFY(pThread.isNull());
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
}

QTEST_MAIN(tst_CSelFileWidgetCopy)
#include "tst_CSelFileWidgetCopy.moc"
