#include "copy/STCopyAccount.h"
#include "pages/CNoticeLine.h"
#include "pages/CPageBed.h"
#include "support/CModalAnswerer.h"
#include "support/WaitAside.h"

#include <QApplication>
#include <QSet>

#include <atomic>
#include <dlfcn.h>
#include <linux/magic.h>
#include <sys/vfs.h>

static const char UNLISTED[] = "Only opened folders of a fully ticked volume are copied.";
static const char NOT_LISTED[] = "Entries that are not in the list are not copied.";
static const char LEFT_OUT[] = "Entries left out of docs because of their names: 1";
static const char LIMIT[] = "STICK cannot hold a file of 4.29 GB or more.";
static const char VARIABLE[] = "TARNWICK_COMPLETE_RESCUE";

// Volumes that say that they are FAT; set while no thread asks.
static QSet<QByteArray> s_setFat;
static std::atomic<bool> s_bAskedByWindow{false};

extern "C" int statfs(const char* pszPath, struct statfs* pstRaw) noexcept
{
    const auto pfnReal = reinterpret_cast<decltype(&statfs)>(dlsym(RTLD_NEXT, "statfs"));
    const int nResult = pfnReal(pszPath, pstRaw);
    if (s_setFat.contains(pszPath)) {
        pstRaw->f_type = MSDOS_SUPER_MAGIC;
        if (QThread::currentThread() == qApp->thread()) {
            s_bAskedByWindow = true;
        }
    }
    return nResult;
}

Q_DECLARE_METATYPE(std::function<void(QCheckBox*)>)

/** The choice whether a tick means everything in it. */
class tst_CSelFileWidgetComplete : public CPageBed
{
    Q_OBJECT

private slots:
    void cleanup();

    void environmentChoosesAtTheStart_data();
    void environmentChoosesAtTheStart();
    void boxIsPressed_data();
    void boxIsPressed();
    void readersHearTheChoice();
    void tipIsOneSentence();
    void nextPageBeginsAnew();

    void notices_data();
    void notices();
    void folderTickedInPartLeavesOut();
    void lastCopyKeepsItsLink();
    void linkGivesWayToANotice();
    void linkIsOfItsNotice();
    void linkGivesTheFocusToTheBox();
    void linkMovesNothingElse();

    void diskThatCannotHoldLargeFiles();
    void otherDiskHoldsThem();
    void diskIsAskedAside();

    void nothingIsChosenDuringTheCount_data();
    void nothingIsChosenDuringTheCount();
    void focusComesBackAfterTheCount();
    void everythingIsCountedAsItIs();
    void roomIsCountedInBlocks_data();
    void roomIsCountedInBlocks();
    void fileThatTheDiskCannotHoldNeedsNoRoom();

private:
    QString Notice() const { return Line()->Text(); }
    CNoticeLine* Line() const { return m_pPage->findChild<CNoticeLine*>(); }
    QPushButton* Link() const { return m_pPage->findChild<QPushButton*>("m_pNoticeLink"); }
    void TickVolume() const { Tree()->ToggleTick(CDirModel::GetInstence()->index(0, 0)); }
    void PressBox() const { QTest::mouseClick(CompleteBox(), Qt::LeftButton); }
    static bool IsMeant() { return CDirModel::GetInstence()->IsComplete(); }
};

void tst_CSelFileWidgetComplete::cleanup()
{
    qunsetenv(VARIABLE);
    CPageBed::cleanup();
    s_setFat.clear();
    QVERIFY2(!s_bAskedByWindow, "the window itself waits for the disk");
}

void tst_CSelFileWidgetComplete::environmentChoosesAtTheStart_data()
{
    QTest::addColumn<QByteArray>("baValue"); // null: not set
    QTest::addColumn<bool>("bOn");
    QTest::newRow("not set") << QByteArray() << false;
    QTest::newRow("1") << QByteArray("1") << true;
    for (const char* pValue : {"", "0", "11", "1 ", "yes", "true"}) {
        QTest::addRow("\"%s\"", pValue) << QByteArray(pValue) << false;
    }
}

void tst_CSelFileWidgetComplete::environmentChoosesAtTheStart()
{
    QFETCH(QByteArray, baValue);
    if (!baValue.isNull()) {
        qputenv(VARIABLE, baValue);
    }
    MakePage({"STICK"});
    QTEST(CompleteBox()->isChecked(), "bOn");
    QTEST(IsMeant(), "bOn");
    TickVolume();
    QTEST(Notice().isEmpty(), "bOn");
    QTEST(LogLines().contains("Complete rescue: on"), "bOn");
}

void tst_CSelFileWidgetComplete::boxIsPressed_data()
{
    QTest::addColumn<std::function<void(QCheckBox*)>>("fnPress");
    const auto row = [](const char* pName, const std::function<void(QCheckBox*)>& fnPress) {
        QTest::newRow(pName) << fnPress;
    };
    row("on its picture",
        [](QCheckBox* pBox) { QTest::mouseClick(pBox, Qt::LeftButton, Qt::NoModifier, QPoint(10, 12)); });
    row("on its text", [](QCheckBox* pBox) {
        QTest::mouseClick(pBox, Qt::LeftButton, Qt::NoModifier, pBox->rect().center());
    });
    row("Space", [](QCheckBox* pBox) {
        pBox->setFocus(Qt::TabFocusReason);
        QTest::keyClick(pBox, Qt::Key_Space);
    });
    row("a reader", [](QCheckBox* pBox) {
        QAccessibleActionInterface* pAction = Heard(pBox)->actionInterface();
        pAction->doAction(QAccessibleActionInterface::toggleAction());
    });
}

void tst_CSelFileWidgetComplete::boxIsPressed()
{
    QFETCH(std::function<void(QCheckBox*)>, fnPress);
    MakePage({"STICK"});
    QVERIFY(!CompleteBox()->isChecked());
    QVERIFY(!IsMeant());
    for (const bool bOn : {true, false, true}) {
        fnPress(CompleteBox());
        QCOMPARE(CompleteBox()->isChecked(), bOn);
        QCOMPARE(IsMeant(), bOn);
        QVERIFY(LogLines().last().endsWith(bOn ? "Complete rescue: on" : "Complete rescue: off"));
    }
}

void tst_CSelFileWidgetComplete::readersHearTheChoice()
{
    MakePage();
    const QAccessibleInterface* pHeard = Heard(CompleteBox());
    QCOMPARE(pHeard->role(), QAccessible::CheckBox);
    QCOMPARE(pHeard->text(QAccessible::Name), "Complete rescue");
    QCOMPARE(pHeard->text(QAccessible::Description),
             "Copies everything in what is ticked, whether the list shows it or not.");
    QVERIFY(!pHeard->state().checked);
    PressBox();
    QVERIFY(pHeard->state().checked);
}

void tst_CSelFileWidgetComplete::tipIsOneSentence()
{
    MakePage();
    QCOMPARE(CompleteBox()->toolTip(),
             "<p>Copies everything in what is ticked, whether the list shows it or not.</p>");
}

// The tree outlives a page; what the last one has chosen is nobody's choice any more.
void tst_CSelFileWidgetComplete::nextPageBeginsAnew()
{
    MakePage();
    PressBox();
    QVERIFY(IsMeant());
    MakePage();
    QVERIFY(!CompleteBox()->isChecked());
    QVERIFY(!IsMeant());
}

// ---------------------------------------------------------------- notices

void tst_CSelFileWidgetComplete::notices_data()
{
    QTest::addColumn<QStringList>("listOpened"); // folders, after the volume itself
    QTest::addColumn<bool>("bTicked"); // the volume, as a whole
    QTest::addColumn<QString>("strOff");
    QTest::addColumn<QString>("strOn");
    QTest::addColumn<bool>("bLink");
    const QStringList listNone;
    QTest::newRow("nothing is ticked") << listNone << false << ""
                                       << "" << false;
    QTest::newRow("folders were never opened") << listNone << true << UNLISTED << "" << true;
    QTest::newRow("all were opened") << QStringList{"docs", "docs/sub", "docs/sub/deep", "pics"} << true
                                     << NOT_LISTED << "" << true;
    QTest::newRow("entries are left out") << QStringList{"docs"} << false << LEFT_OUT << "" << false;
    QTest::newRow("a link that leads back")
        << QStringList{"docs", "docs/loop"} << false << "loop: It is a link to a folder that it lies in."
        << "loop: It is a link to a folder that it lies in." << false;
}

/** The row of that path below the volume. */
static QModelIndex Row(const QString& strPath)
{
    const CDirModel* pModel = CDirModel::GetInstence();
    QModelIndex index = pModel->index(0, 0);
    for (const QString& strName : strPath.split('/')) {
        const QModelIndexList listRow
            = pModel->match(pModel->index(0, 0, index), Qt::DisplayRole, strName, 1, Qt::MatchExactly);
        index = listRow.value(0);
    }
    return index;
}

void tst_CSelFileWidgetComplete::notices()
{
    QFETCH(QStringList, listOpened);
    QFETCH(bool, bTicked);
    QFETCH(bool, bLink);
    WriteFile(m_pSource->Path("docs/homework.txt"));
    WriteFile(m_pSource->Path("docs/sub/deep/end/d.txt"));
    QVERIFY(QFile::link(m_pSource->Path("docs"), m_pSource->Path("docs/loop")));
    MakePage({"STICK"});
    Tree()->expand(CDirModel::GetInstence()->index(0, 0));
    for (const QString& strPath : listOpened) {
        Tree()->expand(Row(strPath));
        QTest::mouseClick(Tree()->viewport(), Qt::LeftButton, Qt::NoModifier,
                          Tree()->visualRect(Row(strPath)).center());
    }
    if (bTicked) {
        TickVolume();
    }
    // Off, on, and off again.
    for (int n = 0; n < 2; ++n) {
        QTEST(Notice(), "strOff");
        QCOMPARE(Link()->isVisible(), bLink);
        PressBox();
        QTEST(Notice(), "strOn");
        QVERIFY(!Link()->isVisible());
        PressBox();
    }
    if (bLink) {
        QCOMPARE(Link()->text(), CompleteBox()->text());
        QTest::mouseClick(Link(), Qt::LeftButton);
        QVERIFY(CompleteBox()->isChecked());
        QVERIFY(IsMeant());
        QTEST(Notice(), "strOn");
    }
}

// What the list does not show cannot be ticked there, and only what is ticked is copied.
void tst_CSelFileWidgetComplete::folderTickedInPartLeavesOut()
{
    WriteFile(m_pSource->Path("docs/homework.txt"));
    WriteFile(m_pSource->Path("docs/letter.txt"));
    MakePage({"STICK"});
    PressBox();
    Tree()->expand(CDirModel::GetInstence()->index(0, 0));
    Tree()->expand(Row("docs"));
    QCOMPARE(Notice(), QString());
    Tree()->ToggleTick(Row("docs/letter.txt"));
    QCOMPARE(Notice(), QString(LEFT_OUT));
    Tree()->LendNodes(true);
    QVERIFY(Tree()->IsToldFolderTickedInPart());
    Tree()->LendNodes(false);
    Tree()->ToggleTick(CDirModel::GetInstence()->index(0, 0));
    QCOMPARE(Row("docs").data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    QCOMPARE(Notice(), QString());
}

static STCopyAccount NotWhole()
{
    STCopyItem stItem;
    stItem.strPath = "/Volumes/Macintosh HD/docs/b.txt";
    stItem.enProblem = ENCopyProblem::SOURCE_READ;
    STCopyAccount stAccount;
    stAccount.nFiles = 4;
    stAccount.nProblems = 1;
    stAccount.listItem = {stItem};
    return stAccount;
}

void tst_CSelFileWidgetComplete::lastCopyKeepsItsLink()
{
    MakePage({"STICK"});
    TickVolume();
    m_pPage->ShowLastCopy(NotWhole(), "STICK");
    QVERIFY(Notice().endsWith(UNLISTED));
    QCOMPARE(Link()->text(), "Show the list");
    bool bList = false;
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&bList] { bList = QApplication::activeModalWidget() != nullptr; });
    QTest::mouseClick(Link(), Qt::LeftButton);
    QVERIFY(bList);
    QVERIFY(!CompleteBox()->isChecked());
}

void tst_CSelFileWidgetComplete::linkGivesWayToANotice()
{
    MakePage({"STICK"});
    TickVolume();
    QString strOther;
    while (Link()->isVisible() && strOther.size() < 300) {
        strOther += 'x';
        Line()->Set(ENNotice::DESTINATION, strOther);
    }
    QVERIFY(!Link()->isVisible());
    QVERIFY(Notice().startsWith(UNLISTED));
    QVERIFY(Notice().endsWith("  " + strOther));
    // Without room for the notice either there is none to make.
    Line()->Set(ENNotice::DESTINATION, QString(300, 'x'));
    QCOMPARE(Notice(), QString(UNLISTED));
    QCOMPARE(Link()->text(), CompleteBox()->text());
    QTest::mouseClick(Link(), Qt::LeftButton);
    QVERIFY(IsMeant());
}

void tst_CSelFileWidgetComplete::linkIsOfItsNotice()
{
    MakePage({"STICK"});
    qRegisterMetaType<ENNotice>();
    QSignalSpy spy(Line(), &CNoticeLine::SignalLink);
    m_pPage->ShowLastCopy(NotWhole(), "STICK");
    m_pPage->ShowLastCopy(STCopyAccount(), "STICK");
    TickVolume();
    bool bList = false;
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&bList] { bList = true; });
    QTest::mouseClick(Link(), Qt::LeftButton);
    QVERIFY(!bList);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<ENNotice>(), ENNotice::UNLISTED);
}

// The link is gone once it was pressed; the next key is to undo what it did, not to start the copy.
void tst_CSelFileWidgetComplete::linkGivesTheFocusToTheBox()
{
    MakePage({"STICK"});
    TickVolume();
    Link()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(Link(), Qt::Key_Space);
    QVERIFY(CompleteBox()->isChecked());
    QCOMPARE(QApplication::focusWidget(), CompleteBox());
    QTest::keyClick(CompleteBox(), Qt::Key_Space);
    QVERIFY(!CompleteBox()->isChecked());
    QCOMPARE(Notice(), QString(UNLISTED));
}

void tst_CSelFileWidgetComplete::linkMovesNothingElse()
{
    MakePage({"STICK"});
    const QRect rectBox = PlaceIn(m_pPage, CompleteBox());
    TickVolume();
    m_pPage->grab();
    QCOMPARE(PlaceIn(m_pPage, CompleteBox()), rectBox);
    QVERIFY(PlaceIn(m_pPage, Link()).right() < rectBox.left());
    QVERIFY(rectBox.right() < PlaceIn(m_pPage, CopyBtn()).left());
    QTest::mouseClick(Link(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), Tree());
    m_pPage->grab();
    QCOMPARE(PlaceIn(m_pPage, CompleteBox()), rectBox);
}

// ---------------------------------------------------------------- what the disk can hold

void tst_CSelFileWidgetComplete::diskThatCannotHoldLargeFiles()
{
    s_setFat = {"/Volumes/STICK"};
    MakePage({"STICK"});
    QCOMPARE(Notice(), QString());
    PressBox();
    QCOMPARE(Notice(), QString(LIMIT));
    PressBox();
    QCOMPARE(Notice(), QString());
    PressBox();
    Leave("STICK");
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetComplete::otherDiskHoldsThem()
{
    qputenv(VARIABLE, "1");
    s_setFat = {"/Volumes/STICK"};
    MakePage({"STICK"});
    QCOMPARE(Notice(), QString(LIMIT));
    Plug("OTHER");
    Arrive("OTHER");
    QCOMPARE(Notice(), QString(LIMIT));
    Choose("OTHER");
    QCOMPARE(Notice(), QString());
    Choose("STICK");
    QCOMPARE(Notice(), QString(LIMIT));
}

// By cleanup(): no question came from this thread.
void tst_CSelFileWidgetComplete::diskIsAskedAside()
{
    qputenv(VARIABLE, "1");
    s_setFat = {"/Volumes/STICK"};
    MakePage({"STICK"});
    QVERIFY(Tick());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_COMPARE(spyCopy.count(), 1);
    QCOMPARE(Notice(), QString(LIMIT));
}

// ---------------------------------------------------------------- the count

void tst_CSelFileWidgetComplete::nothingIsChosenDuringTheCount_data()
{
    QTest::addColumn<bool>("bOn");
    QTest::newRow("off") << false;
    QTest::newRow("on") << true;
}

void tst_CSelFileWidgetComplete::nothingIsChosenDuringTheCount()
{
    QFETCH(bool, bOn);
    MakePage({"STICK"});
    CompleteBox()->setChecked(bOn);
    QVERIFY(Tick("docs"));
    std::atomic<bool> bGoOn{false};
    connect(
        SizeThread(), &QThread::started, SizeThread(), [&] { WaitAside([&] { return bGoOn.load(); }); },
        Qt::DirectConnection);
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    m_pPage->SlotCopyBtnClick();
    QVERIFY(!CompleteBox()->isEnabled());
    PressBox();
    QTest::keyClick(CompleteBox(), Qt::Key_Space);
    emit Line()->SignalLink(ENNotice::UNLISTED);
    QCOMPARE(CompleteBox()->isChecked(), bOn);
    QCOMPARE(IsMeant(), bOn);
    // An event of the disks meanwhile changes nothing of that.
    m_pPage->OnRefreshUSB();
    QVERIFY(!CompleteBox()->isEnabled());
    bGoOn = true;
    QTRY_COMPARE(spyCopy.count(), 1);
    QVERIFY(CompleteBox()->isEnabled());
    QCOMPARE(CompleteBox()->isChecked(), bOn);
    PressBox();
    QCOMPARE(IsMeant(), !bOn);
}

void tst_CSelFileWidgetComplete::focusComesBackAfterTheCount()
{
    MakePage({"STICK"});
    QVERIFY(Tick());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    CompleteBox()->setFocus();
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QCOMPARE(m_pHost->focusWidget(), Tree());
    QTRY_COMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pHost->focusWidget(), CompleteBox());
    // Who goes elsewhere meanwhile stays there.
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    Refresh()->setFocus();
    QTRY_COMPARE(spyCopy.count(), 2);
    QCOMPARE(m_pHost->focusWidget(), Refresh());
}

/** Presses Copy and waits for the copy (true) or for the message that there is no room. */
static bool IsAccepted(CSelFileWidget* pPage, QPushButton* pCopy)
{
    QSignalSpy spyCopy(pPage, &CSelFileWidget::SignalCopyFile);
    const CModalAnswerer answerer("OK");
    QTest::mouseClick(pCopy, Qt::LeftButton);
    const bool bEnded = QTest::qWaitFor([&] { return spyCopy.count() > 0 || answerer.Answered(); }, 30000);
    return bEnded && spyCopy.count() == 1 && !answerer.Answered();
}

// Of a volume that is ticked as a whole, which is larger than the stick.
void tst_CSelFileWidgetComplete::everythingIsCountedAsItIs()
{
    WriteFile(m_pSource->Path("docs/homework.txt"), QByteArray(70, 'x'));
    WriteFile(m_pSource->Path("docs/sub/deep/end/d.txt"), QByteArray(7, 'x'));
    MakePage({"STICK"});
    TickVolume();
    QVERIFY(!IsAccepted(m_pPage, CopyBtn()));
    PressBox();
    QVERIFY(IsAccepted(m_pPage, CopyBtn()));
    QCOMPARE(m_pPage->GetTotalSize(), qint64(1000 + 500 + 3 * 1024 * 1024 + 70 + 7));
    PressBox();
    QVERIFY(!IsAccepted(m_pPage, CopyBtn()));
}

void tst_CSelFileWidgetComplete::roomIsCountedInBlocks_data()
{
    QTest::addColumn<bool>("bOn");
    QTest::newRow("off") << false;
    QTest::newRow("on") << true;
}

// 3000 files of a byte need more than the 10 MiB of the stick.
void tst_CSelFileWidgetComplete::roomIsCountedInBlocks()
{
    QFETCH(bool, bOn);
    const int nFiles = 3000;
    for (int n = 0; n < nFiles; ++n) {
        WriteFile(m_pSource->Path(QString("small/%1").arg(n)), "x");
    }
    MakePage({"STICK"});
    CompleteBox()->setChecked(bOn);
    QVERIFY(Tick("small"));
    QCOMPARE(IsAccepted(m_pPage, CopyBtn()), !bOn);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(bOn ? 0 : nFiles));
}

void tst_CSelFileWidgetComplete::fileThatTheDiskCannotHoldNeedsNoRoom()
{
    s_setFat = {"/Volumes/STICK"};
    WriteFile(m_pSource->Path("films/short.mov"), QByteArray(2000, 'x'));
    WriteFile(m_pSource->Path("films/long.mov"));
    QVERIFY(QFile::resize(m_pSource->Path("films/long.mov"), qint64(5) << 30)); // a hole
    MakePage({"STICK"});
    QVERIFY(Tick("films"));
    QVERIFY(!IsAccepted(m_pPage, CopyBtn()));
    PressBox();
    QVERIFY(IsAccepted(m_pPage, CopyBtn()));
    QCOMPARE(m_pPage->GetTotalSize(), qint64(2000));
}

QTEST_MAIN(tst_CSelFileWidgetComplete)
#include "tst_CSelFileWidgetComplete.moc"
