#include "files/CLeftBehind.h"
#include "pages/CNoticeLine.h"
#include "pages/CPageBed.h"
#include "pages/CSourceNotice.h"
#include "support/CFaultyDisk.h"

#include <QDir>
#include <QElapsedTimer>

static const char VERSION[] = "System/Library/CoreServices/SystemVersion.plist";
static const char LOCKED[] = "The users' files of Macintosh HD may be locked: unlock them with their "
                             "password, then start Tarnwick again.";
static const char ON_DATA[] = "The users' files are on Data, not on Macintosh HD.";
static const char COME[] = "Data is there now: press the round arrow to list it.";

/** What the page says of the volumes to be rescued, and what the round arrow adds to them. */
class tst_CSelFileWidgetSources : public CPageBed
{
    Q_OBJECT

private slots:
    void systemWithItsUsersSaysNothing();
    void lockedVolumeIsToldUntilItIsThere();
    void otherVolumeIsNamed();
    void noticeOfNewSource();
    void newSourceThatIsADestination();
    void noticeGivesWayToWhatIsMissingInTheCopy();
    void whatLastsGivesWayToWhatHasHappened();
    void searchTakesItBack();
    void volumeThatHangs();
    void arrowDuringACountAddsAfterwards();
    void copyAfterTheCountFindsNothingNew();

private:
    QString Notice() const { return m_pPage->findChild<CNoticeLine*>()->Text(); }
    void PressArrow();
    void MakeSealed();
    static std::unique_ptr<CVolume> Data();
};

void tst_CSelFileWidgetSources::PressArrow()
{
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QTRY_COMPARE(spyEnd.count(), 1);
}

/** Makes the source a start-up volume as another system sees it. */
void tst_CSelFileWidgetSources::MakeSealed()
{
    WriteFile(m_pSource->Path(VERSION), QByteArray());
    QVERIFY(QDir(m_pSource->Path()).mkpath("Users"));
}

std::unique_ptr<CVolume> tst_CSelFileWidgetSources::Data()
{
    auto pData = std::make_unique<CVolume>("Data", "/dev/nvme0n1p1", 5);
    WriteFile(pData->Path("Users/anna/Pictures/photo.jpg"), QByteArray(100, 'p'));
    return pData;
}

void tst_CSelFileWidgetSources::systemWithItsUsersSaysNothing()
{
    MakeSealed();
    MakePage();
    QTRY_COMPARE(Notice(), LOCKED);
    QVERIFY(QDir(m_pSource->Path()).mkpath("Users/anna"));
    PressArrow();
    QTRY_COMPARE(Notice(), QString());
}

void tst_CSelFileWidgetSources::lockedVolumeIsToldUntilItIsThere()
{
    MakeSealed();
    MakePage({"STICK"});
    QTRY_COMPARE(Notice(), LOCKED);
    QVERIFY(Tick());
    const auto pData = Data();
    PressArrow();
    QTRY_COMPARE(Notice(), ON_DATA);
    // It can be ticked now, and what was ticked before still is.
    QCOMPARE(CPageTree::Roots(), QStringList({m_pSource->Path(), pData->Path()}));
    QCOMPARE(Tree()->model()->index(1, 0).data().toString(), pData->Path());
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(CPageTree::Tick(pData->Path("Users/anna/Pictures/photo.jpg")));
    QCOMPARE(Listed(), QStringList{"STICK"});
    // Once more adds nothing.
    PressArrow();
    QCOMPARE(CPageTree::Roots().size(), 2);
}

void tst_CSelFileWidgetSources::otherVolumeIsNamed()
{
    MakeSealed();
    const auto pData = Data();
    MakePage();
    QTRY_COMPARE(Notice(), ON_DATA);
    m_pPage->RemoveDisk("/Volumes/other");
    m_pPage->RemoveDisk("USB");
    QCOMPARE(Notice(), ON_DATA);
    m_pPage->RemoveDisk(pData->Path());
    QCOMPARE(Notice(), LOCKED);
    m_pPage->RemoveDisk(m_pSource->Path());
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetSources::noticeOfNewSource()
{
    MakeSealed();
    MakePage();
    QTRY_COMPARE(Notice(), LOCKED);
    m_pPage->NoteNewSource(m_pSource->Path()); // which is listed
    QCOMPARE(Notice(), LOCKED);
    const auto pData = Data();
    m_pPage->NoteNewSource(pData->Path());
    QCOMPARE(Notice(), COME);
    m_pPage->RemoveDisk(pData->Path());
    QCOMPARE(Notice(), LOCKED);
    m_pPage->NoteNewSource(pData->Path());
    PressArrow();
    QTRY_COMPARE(Notice(), ON_DATA);
}

/** The command that the search asks has the last word. */
void tst_CSelFileWidgetSources::newSourceThatIsADestination()
{
    MakePage();
    const CVolume stick("Data", "/dev/sdc1", 5);
    m_pPage->NoteNewSource(stick.Path());
    QCOMPARE(Notice(), COME);
    PressArrow();
    QCOMPARE(Listed(), QStringList("Data"));
    QCOMPARE(Notice(), QString());
}

void tst_CSelFileWidgetSources::noticeGivesWayToWhatIsMissingInTheCopy()
{
    WriteFile(m_pSource->Path("docs/inner/deep/file"), QByteArray());
    MakeSealed();
    MakePage();
    QTRY_COMPARE(Notice(), LOCKED);
    QVERIFY(Tick(QString()));
    QVERIFY2(Notice().startsWith("Only opened folders"), qPrintable(Notice()));
}

void tst_CSelFileWidgetSources::whatLastsGivesWayToWhatHasHappened()
{
    MakeSealed();
    const auto pData = Data();
    MakePage();
    QTRY_COMPARE(Notice(), ON_DATA);
    auto* pLine = m_pPage->findChild<CNoticeLine*>();
    const QString strNews(80, 'x'); // beside which there is no room
    for (const ENNotice enNews : {ENNotice::LARGE_FILES, ENNotice::FOLDER, ENNotice::DESTINATION}) {
        pLine->Set(enNews, strNews);
        QCOMPARE(Notice(), strNews);
        pLine->Clear(enNews);
        QCOMPARE(Notice(), ON_DATA);
    }
    m_pPage->RemoveDisk(pData->Path());
    pLine->Set(ENNotice::DESTINATION, strNews);
    QCOMPARE(Notice(), LOCKED);
}

void tst_CSelFileWidgetSources::searchTakesItBack()
{
    MakeSealed();
    MakePage();
    QTRY_COMPARE(Notice(), LOCKED);
    const QTemporaryDir dir;
    m_pCommands->AddDiskutil(QString("until [ -e '%1/go' ]; do sleep 0.01; done\n").arg(dir.path()));
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTest::mouseClick(Refresh(), Qt::LeftButton);
    QCOMPARE(Notice(), QString());
    WriteFile(dir.filePath("go"));
    QTRY_COMPARE(spyEnd.count(), 1);
    QTRY_COMPARE(Notice(), LOCKED);
}

void tst_CSelFileWidgetSources::volumeThatHangs()
{
    NEEDS_FAULTY_DISKS();
    MakeSealed();
    CFaultyDisk data("Data", "/dev/nvme0n1p1", 5);
    if (!data.IsValid()) {
        QSKIP("the failing file system is not built for the sanitizers");
    }
    WriteFile(data.Behind("Users/anna/photo.jpg"), QByteArray(10, 'p'));
    data.Rule("opendir", "hang", 0, "/Users");
    data.Rule("readdir", "hang", 0, "/Users");
    QElapsedTimer time;
    time.start();
    MakePage();
    // Whoever calls it locked before may be wrong; nobody waits for ever either.
    QTRY_COMPARE_WITH_TIMEOUT(Notice(), LOCKED, 20000);
    QVERIFY(time.elapsed() >= CSourceNotice::PATIENCE.count() / 2); // the timer is a coarse one
    for (int n = 0; n < 3; ++n) {
        PressArrow();
    }
    data.Heal();
    QTRY_COMPARE_WITH_TIMEOUT(Notice(), ON_DATA, 20000);
    m_pHost.reset();
    QTRY_VERIFY(!CLeftBehind::Any());
}

void tst_CSelFileWidgetSources::arrowDuringACountAddsAfterwards()
{
    MakePage({"STICK"});
    const auto pData = Data();
    QVERIFY(Tick());
    Tree()->LendNodes(true);
    Tree()->AddRoots({m_pSource->Path(), pData->Path()}); // as a search that ends during a count
    Tree()->LendNodes(false);
    QTRY_COMPARE(CPageTree::Roots(), QStringList({m_pSource->Path(), pData->Path()}));
    // While a copy runs its worker reads the nodes, and the page is hidden.
    const CVolume third("Third", "/dev/nvme0n1p3", 2);
    m_pPage->hide();
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    emit Refresh()->SignalLabelClicked();
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(CPageTree::Roots().size(), 2);
    m_pPage->show();
    QCOMPARE(CPageTree::Roots().size(), 3);
}

/** What is copied is what was counted. */
void tst_CSelFileWidgetSources::copyAfterTheCountFindsNothingNew()
{
    MakePage({"STICK"});
    const CVolume empty("Empty", "/dev/nvme0n1p4", 2);
    PressArrow();
    QVERIFY(CPageTree::Tick(empty.Path()));
    Tree()->LendNodes(true);
    WriteFile(empty.Path("folder/inner/photo.jpg"), "late");
    Tree()->AddRoots({m_pSource->Path(), empty.Path()});
    Tree()->LendNodes(false);
    m_pPage->hide(); // as when the copy begins
    QCoreApplication::processEvents();
    const QModelIndex index = Tree()->model()->index(1, 0);
    QCOMPARE(index.data().toString(), empty.Path());
    QCOMPARE(Tree()->model()->rowCount(index), 0);
    QCOMPARE(Notice(), QString());
    m_pPage->show();
    QCOMPARE(Tree()->model()->rowCount(index), 1);
    QVERIFY2(Notice().startsWith("Only opened folders"), qPrintable(Notice()));
}

QTEST_MAIN(tst_CSelFileWidgetSources)
#include "tst_CSelFileWidgetSources.moc"
