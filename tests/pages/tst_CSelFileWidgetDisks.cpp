#include "pages/CPageBed.h"
#include "support/CLogCapture.h"
#include "support/WaitAside.h"

#include <QDir>
#include <QElapsedTimer>
#include <QMovie>
#include <QStorageInfo>
#include <QtConcurrent>

static const char HANGS[] = "sleep 100\n";

/** How the page finds its disks, follows them and lets the user choose one. */
class tst_CSelFileWidgetDisks : public CPageBed
{
    Q_OBJECT

private slots:
    void eachVolumeGoesWhereItBelongs();
    void promptOrSpaceStands();
    void rebuildWritesItsNames();
    void firstDiskIsChosenAfterEachRebuild();
    void removedChoiceGivesWayToTheNextDisk();
    void namesAreText_data();
    void namesAreText();

    void eventsDuringARescan_data();
    void eventsDuringARescan();
    void twoRescansListOnce();
    void manyRescansHoldFewThreads();
    void rescanHereReplacesOneThatHangs();
    void pageGoesWhileTheCommandHangs();

    void tickAndDiskEnableCopy_data();
    void tickAndDiskEnableCopy();
    void listOpensWithTheChosenDiskMarked();
    void clicksOpenAndCloseTheList();
    void choosingADiskLeavesPictureAndCopy();

private:
    void Click(const QString& strName) const;
};

// Of what the command says every case is held in tst_CDestinationDiscovery.
void tst_CSelFileWidgetDisks::eachVolumeGoesWhereItBelongs()
{
    const QString strOwn = QStorageInfo(QCoreApplication::applicationDirPath()).device();
    const CVolume own("OWN", strOwn, 2);
    m_pCommands->AddDiskutil(QString("[ \"$3\" = '%1' ] && set -- info -plist /dev/sdz\n").arg(strOwn));
    MakePage({"STICK"});
    QVERIFY(m_pCommands->Calls("diskutil").contains("info -plist " + strOwn));
    QCOMPARE(Listed(), QStringList{"STICK"});
    QCOMPARE(CPageTree::Roots(), QStringList{m_pSource->Path()});
    // The roots are set once.
    const CVolume late("Late", "/dev/nvme1n1", 2);
    m_pPage->SlotRefreshUSB();
    QCOMPARE(Listed(), QStringList{"STICK"});
    QCOMPARE(CPageTree::Roots(), QStringList{m_pSource->Path()});
}

void tst_CSelFileWidgetDisks::promptOrSpaceStands()
{
    MakePage();
    QCOMPARE(Listed(), QStringList());
    QCOMPARE(m_pPage->GetUsbName(), TEXT_PROMPT);
    QCOMPARE(m_pPage->GetUsbPath(), QString());
    QCOMPARE(Label("bottomLab")->text(), TEXT_PROMPT);
    QVERIFY(Shows(Label("m_pUSBPicLab"), ":/res/Label/usb_unselect.png"));
    WriteFile(Plug("STICK", 100).Path("used"), QByteArray(20 * 1024 * 1024, 'x'));
    Arrive("STICK");
    QCOMPARE(m_pPage->GetUsbName(), "STICK");
    QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/STICK");
    QCOMPARE(Label("bottomLab")->text(),
             "<span style=\"color:#ff7e17;\">0.08GB</span> Available, "
             "<span style=\"color:#ff7e17;\">0.10GB</span> Total");
    QVERIFY(Shows(Label("m_pUSBPicLab"), ":/res/Label/usb_select.png"));
}

void tst_CSelFileWidgetDisks::rebuildWritesItsNames()
{
    MakePage();
    m_pPage->AddDisk(QFileInfo("/Volumes/STICK"));
    const CLogCapture capture;
    Arrive("other");
    const QStringList listLine{"STICK", "other", "FFFFFFFFFFFFFFFFFFF (\"STICK\", \"other\")"};
    QCOMPARE(capture.Lines(), listLine);
}

void tst_CSelFileWidgetDisks::firstDiskIsChosenAfterEachRebuild()
{
    MakePage({"ONE", "TWO"});
    // In the order in which the folder of volumes lists them.
    QStringList listName = QDir("/Volumes").entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    listName.removeAll("Macintosh HD");
    QCOMPARE(Listed(), listName);
    for (const bool bSearch : {false, true}) {
        QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
        QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/" + listName.at(0));
        Choose(listName.at(1));
        QCOMPARE(m_pPage->GetUsbName(), listName.at(1));
        QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/" + listName.at(1));
        bSearch ? m_pPage->SlotRefreshUSB() : m_pPage->OnRefreshUSB();
        QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
    }
    Label("m_pUSBTitleLab")->setText(TEXT_PROMPT);
    QCOMPARE(m_pPage->GetUsbPath(), QString());
}

void tst_CSelFileWidgetDisks::removedChoiceGivesWayToTheNextDisk()
{
    MakePage({"ONE", "TWO"});
    m_pPage->RemoveDisk("/Volumes/TWO");
    Choose("TWO"); // which the drop-down still has
    QCOMPARE(m_pPage->GetUsbName(), "TWO");
    QCOMPARE(Label("bottomLab")->text(), TEXT_PROMPT);
    m_pPage->OnRefreshUSB();
    QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/ONE");
    Leave("ONE");
    QCOMPARE(m_pPage->GetUsbPath(), QString());
    QCOMPARE(m_pPage->GetUsbName(), TEXT_PROMPT);
    QVERIFY(Shows(Label("m_pUSBPicLab"), ":/res/Label/usb_unselect.png"));
}

void tst_CSelFileWidgetDisks::namesAreText_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("marks") << "<b>bold<!b>";
    QTest::newRow("place markers") << "%1 %2 %99";
    QTest::newRow("line break") << "two\nlines";
    QTest::newRow("blank at the end") << "blank ";
    QTest::newRow("leading dash") << "-rf";
    QTest::newRow("another script") << "備份 Флешка";
    QTest::newRow("the prompt itself") << TEXT_PROMPT;
}

void tst_CSelFileWidgetDisks::namesAreText()
{
    QFETCH(QString, strName);
    MakePage({strName});
    QVERIFY(Stick(strName).IsValid());
    QCOMPARE(Listed(), QStringList{strName});
    QCOMPARE(m_pPage->GetUsbName(), strName);
    QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/" + strName);
    QCOMPARE(Label("m_pUSBTitleLab")->textFormat(), Qt::PlainText);
    QCOMPARE(List()->item(0)->toolTip(), "<p>" + strName.toHtmlEscaped() + "</p>");
    QVERIFY(LogLines().contains("diskName: " + strName.split('\n').first()));
}

// ---------------------------------------------------------------- rescans on the pool

void tst_CSelFileWidgetDisks::eventsDuringARescan_data()
{
    QTest::addColumn<QStringList>("listBefore");
    QTest::addColumn<bool>("bFound"); // the search comes across the stick
    QTest::addColumn<QString>("strEvents");
    QTest::addColumn<QStringList>("listAfter");
    const QStringList listStick{"STICK"};
    QTest::newRow("none") << QStringList() << true << "" << listStick;
    QTest::newRow("removal") << listStick << true << "-" << QStringList();
    QTest::newRow("removal and return") << listStick << true << "-+" << listStick;
    QTest::newRow("arrival") << QStringList() << true << "+" << listStick;
    QTest::newRow("two arrivals") << listStick << true << "++" << listStick;
    QTest::newRow("arrival, not found") << QStringList() << false << "+" << listStick;
}

// The search is over and no step of it has come to this thread yet; tst_CDiskList has the other orders.
void tst_CSelFileWidgetDisks::eventsDuringARescan()
{
    QFETCH(QStringList, listBefore);
    QFETCH(bool, bFound);
    QFETCH(QString, strEvents);
    QFETCH(QStringList, listAfter);
    MakePage(listBefore);
    if (bFound && listBefore.isEmpty()) {
        Plug("STICK");
    }
    QStringList listAtEnd{"not ended"};
    QObject context;
    connect(
        m_pPage, &CSelFileWidget::SignalStopMovie, &context,
        [&]() {
            QCOMPARE(QThread::currentThread(), qApp->thread());
            listAtEnd = Listed();
        },
        Qt::DirectConnection);
    const QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    QVERIFY(WaitAside([&]() { return rescan.isFinished(); }));
    QCOMPARE(listAtEnd, QStringList{"not ended"});
    QCOMPARE(Listed(), listBefore);
    if (!bFound) {
        Plug("STICK");
    }
    for (const QChar cEvent : strEvents) {
        cEvent == '+' ? Arrive("STICK") : Leave("STICK");
    }
    QTRY_COMPARE(listAtEnd, listAfter);
    // The next search believes its eyes again.
    m_pPage->SlotRefreshUSB();
    QCOMPARE(Listed(), QStringList{"STICK"});
}

void tst_CSelFileWidgetDisks::twoRescansListOnce()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    QVERIFY(CopyBtn()->isEnabled());
    const QTemporaryDir dir;
    m_pCommands->AddDiskutil(QString("until [ -e '%1/go' ]; do sleep 0.01; done\n").arg(dir.path()));
    const int nAsked = Asked();
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QCOMPARE(Refresh()->movie()->state(), QMovie::Running);
    QTRY_VERIFY(Asked() > nAsked);
    QTRY_VERIFY(!CopyBtn()->isEnabled());
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    // The first one gives up by itself; the animation goes on for the second.
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(Refresh()->movie()->state(), QMovie::Running);
    QVERIFY(!CopyBtn()->isEnabled());
    WriteFile(dir.filePath("go"));
    QTRY_COMPARE(spyEnd.count(), 2);
    QTRY_COMPARE(Refresh()->movie()->state(), QMovie::NotRunning);
    QCOMPARE(Refresh()->movie()->currentFrameNumber(), 0);
    QCOMPARE(Listed(), QStringList{"STICK"});
    QVERIFY(CopyBtn()->isEnabled());
}

// Each may come upon a disk that holds its thread for ever.
void tst_CSelFileWidgetDisks::manyRescansHoldFewThreads()
{
    MakePage({"STICK"});
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    for (int n = 0; n < 20; ++n) {
        emit Refresh()->SignalLabelClicked();
    }
    QTRY_COMPARE(Refresh()->movie()->state(), QMovie::NotRunning);
    QCOMPARE(spyEnd.count(), 4);
    QCOMPARE(Listed(), QStringList{"STICK"});
    emit Refresh()->SignalLabelClicked();
    QTRY_COMPARE(spyEnd.count(), 5);
}

void tst_CSelFileWidgetDisks::rescanHereReplacesOneThatHangs()
{
    MakePage({"STICK"});
    m_pCommands->AddDiskutil(HANGS);
    const int nAsked = Asked();
    QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    QVERIFY(WaitAside([&]() { return Asked() > nAsked; }));
    m_pCommands->AddDiskutil();
    m_pPage->SlotRefreshUSB();
    QCOMPARE(Listed(), QStringList{"STICK"});
    rescan.waitForFinished();
    QCoreApplication::processEvents();
    QCOMPARE(Listed(), QStringList{"STICK"});
    QCOMPARE(m_pPage->GetUsbPath(), "/Volumes/STICK");
}

void tst_CSelFileWidgetDisks::pageGoesWhileTheCommandHangs()
{
    MakePage();
    m_pCommands->AddDiskutil(QString("echo $$ >\"$CALLS/pid\"\n") + HANGS);
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QTRY_VERIFY(!m_pCommands->Written("pid").isEmpty());
    QElapsedTimer timer;
    timer.start();
    m_pHost.reset();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(!QFileInfo::exists("/proc/" + m_pCommands->Written("pid").trimmed()));
}

// ---------------------------------------------------------------- the user's choices

void tst_CSelFileWidgetDisks::tickAndDiskEnableCopy_data()
{
    QTest::addColumn<bool>("bTick");
    QTest::addColumn<bool>("bDisk");
    QTest::newRow("nothing ticked, no disk") << false << false;
    QTest::newRow("nothing ticked, disk") << false << true;
    QTest::newRow("ticked, no disk") << true << false;
    QTest::newRow("ticked, disk") << true << true;
}

void tst_CSelFileWidgetDisks::tickAndDiskEnableCopy()
{
    QFETCH(bool, bTick);
    QFETCH(bool, bDisk);
    MakePage(bDisk ? QStringList{"STICK"} : QStringList());
    // Ticked first in any case, so that "nothing ticked" is the state after unticking everything.
    QVERIFY(Tick());
    QVERIFY(bTick || Tick("docs/a.txt", Qt::Unchecked));
    QVERIFY(Shows(Label("m_pCopyLab"), bTick ? ":/res/Label/allow.png" : ":/res/Label/allow_deft.png"));
    QCOMPARE(NameHeard(Label("m_pCopyLab")), bTick ? "Files selected" : "No files selected");
    QCOMPARE(CopyBtn()->isEnabled(), bTick && bDisk);
    m_pPage->OnRefreshUSB();
    QCOMPARE(CopyBtn()->isEnabled(), bTick && bDisk);
}

void tst_CSelFileWidgetDisks::listOpensWithTheChosenDiskMarked()
{
    MakePage({"ONE", "one"});
    QCOMPARE(List()->minimumSize(), QSize(332, 180));
    QCOMPARE(List()->maximumSize(), QSize(332, 180));
    QCOMPARE(List()->windowType(), Qt::Popup);
    QCOMPARE(List()->font().family(), "Avenir");
    QVERIFY(!List()->isVisible());
    const auto* pAnchor = m_pPage->findChild<QFrame*>("m_pUSBPicFrame");
    QCOMPARE(pAnchor->width(), List()->width() + 2);
    QVERIFY(pAnchor->height() >= List()->height());
    for (const char* pName : {"ONE", "one"}) {
        Choose(pName);
        DropBtn()->setAttribute(Qt::WA_UnderMouse);
        m_pPage->SlotShowListWidget();
        QVERIFY(List()->isVisible());
        QCOMPARE(List()->pos(), pAnchor->mapToGlobal(QPoint(1, 0)));
        // The pointer is the list's now: the button must not stay lit.
        QVERIFY(!DropBtn()->underMouse());
        QCOMPARE(List()->currentItem()->text(), pName);
        QVERIFY(List()->currentItem()->isSelected());
        // The entry under the pointer has the same ground, so the letters tell.
        for (int i = 0; i < List()->count(); ++i) {
            QCOMPARE(List()->item(i)->font().bold(), List()->item(i)->text() == pName);
        }
        List()->hide();
    }
}

// Through the window, as from the window system: a popup comes first there.
void tst_CSelFileWidgetDisks::Click(const QString& strName) const
{
    const QPoint pt = PlaceIn(m_pHost.get(), m_pPage->findChild<QWidget*>(strName)).center();
    QTest::mouseClick(m_pHost->windowHandle(), Qt::LeftButton, Qt::NoModifier, pt);
    QCoreApplication::processEvents();
}

void tst_CSelFileWidgetDisks::clicksOpenAndCloseTheList()
{
    MakePage({"STICK"});
    Tree()->setFocus();
    for (const char* pOpens : {"m_pUSBTitleLab", "m_pDropBtn"}) {
        for (const char* pCloses : {"m_pUSBTitleLab", "m_pDropBtn", "m_pFileTree"}) {
            Click(pOpens);
            QVERIFY(List()->isVisible());
            Click(pCloses);
            QVERIFY(!List()->isVisible());
        }
        Click(pOpens);
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          List()->visualItemRect(List()->item(0)).center());
        QVERIFY(!List()->isVisible());
        // A mark of the focus that nobody has moved by keys would only puzzle.
        QTRY_VERIFY(Tree()->hasFocus());
    }
}

void tst_CSelFileWidgetDisks::choosingADiskLeavesPictureAndCopy()
{
    Plug("SMALL");
    Plug("LARGE", 1000);
    MakePage();
    QVERIFY(CPageTree::Tick(m_pSource->Path("docs/a.txt"))); // not told to the page
    m_pPage->SlotShowListWidget();
    Label("m_pUSBPicLab")->clear();
    QListWidgetItem* pItem = List()->findItems("LARGE", Qt::MatchExactly).value(0);
    QVERIFY(pItem);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      List()->visualItemRect(pItem).center());
    QCOMPARE(m_pPage->GetUsbName(), "LARGE");
    QVERIFY(!List()->isVisible());
    QVERIFY(Label("bottomLab")->text().contains(">1.05GB</span> Total"));
    QVERIFY(Label("m_pUSBPicLab")->pixmap(Qt::ReturnByValue).isNull());
    QVERIFY(!CopyBtn()->isEnabled());
}

QTEST_MAIN(tst_CSelFileWidgetDisks)
#include "tst_CSelFileWidgetDisks.moc"
