#include "app/CTarnwickMacPE.h"
#include "copy/CCopyFileThread.h"
#include "files/CFileNameCodec.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CNoticeLine.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CModalAnswerer.h"
#include "support/CVolume.h"
#include "support/Texts.h"
#include "support/Widgets.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStyleHints>
#include <QTest>

#include <memory>

Q_DECLARE_METATYPE(QMargins)

/** The main window over fake volumes; the disk events are handed to it directly. */
class tst_CTarnwickMacPE : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void formHasItsFixedSizes_data();
    void formHasItsFixedSizes();
    void formLayouts_data();
    void formLayouts();
    void windowIsFramelessWithTitle();
    void titleStandsInTheMiddle();
    void firstKeyGoesToTheTree();
    void readersHearTheProgram();
    void tabReachesEveryControl();
    void eachPageHasTheFocus();
    void keepAwakeIsAskedOfTheShell();
    void secondListenerKeepsTheFirst();

    void eventsWithoutSenseAreDropped();
    void arrivalAndRemoval_data();
    void arrivalAndRemoval();
    void pulledVolumeLeavesTheList_data();
    void pulledVolumeLeavesTheList();
    void pulledVolumeLeavesTheListWhereTheFolderIsALink();
    void volumesOfOneNameInTwoSpellingsStayApart();
    void removalWithoutAnyVolumeChangesNothing();
    void removalOfTheDestinationTellsBeforeTheDiskIsDropped();
    void removalOfAnotherDiskOnlyUpdatesTheList();

    void copyRequestShowsTheCopyPageAndItsEndTheFirst();
    void lastCopyIsNotedOnTheFirstPage();
    void closeAnswers_data();
    void closeAnswers();
    void copyBegunUnderTheExitQuestion_data();
    void copyBegunUnderTheExitQuestion();
    void exitQuestionUnderTheStopQuestion();
    void doubleClickOnCopyDoesNotCancel();

private:
    void Event(const QString& strPath, ENDiskEventType enType);
    QStringList Destinations() const;
    QWidget* Child(const char* pName) const { return m_pWindow->findChild<QWidget*>(pName); }
    QLabel* Title() const { return m_pWindow->findChild<QLabel*>("m_pTitleLab"); }
    QStackedWidget* Stack() const { return m_pWindow->findChild<QStackedWidget*>("m_pStackWidget"); }
    CSelFileWidget* SelectPage() const { return m_pWindow->findChild<CSelFileWidget*>("m_pSelFilePage"); }
    CCopyFileWidget* CopyPage() const { return m_pWindow->findChild<CCopyFileWidget*>("m_pCopyFilePage"); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<CVolume> m_pStick;
    std::unique_ptr<CTarnwickMacPE> m_pWindow;
    std::unique_ptr<QSignalSpy> m_pEvents;
};

void tst_CTarnwickMacPE::initTestCase()
{
    CFileNameCodec::Install();
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->Add("bash", "cat >\"$CALLS/stdin\"");
    m_pCommands->Add("rm");
    m_pCommands->AddDiskutil();
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 10);
    if (!m_pSource->IsValid()) {
        QSKIP("volumes cannot be mounted here");
    }
    // One window for all: the disk listener lives as long as the program and keeps its first receiver.
    // As on macOS, where the Tab key leaves out all but texts and lists by default.
    QGuiApplication::styleHints()->setTabFocusBehavior(Qt::TabFocusTextControls);
    m_pWindow = std::make_unique<CTarnwickMacPE>();
}

void tst_CTarnwickMacPE::init()
{
    // The window listens to the real mounts, too: a test begins when the events of its own are over.
    m_pEvents = std::make_unique<QSignalSpy>(m_pWindow.get(), &CTarnwickMacPE::SignalDiskChange);
    m_pStick = std::make_unique<CVolume>("STICK", "/dev/sdb1", 10);
    QTRY_COMPARE(m_pEvents->count(), 1);
    QCOMPARE(Destinations(), QStringList{"STICK"});
    m_pWindow->show();
}

void tst_CTarnwickMacPE::cleanup()
{
    Stack()->setCurrentIndex(0);
    m_pEvents->clear();
    const bool bMounted = m_pStick->IsValid();
    m_pStick.reset();
    if (bMounted) {
        QTRY_VERIFY(m_pEvents->count() > 0);
    }
    SelectPage()->SlotRefreshUSB();
    QCOMPARE(Destinations(), QStringList());
}

void tst_CTarnwickMacPE::cleanupTestCase()
{
    m_pWindow.reset();
    m_pSource.reset();
    m_pCommands.reset();
}

QStringList tst_CTarnwickMacPE::Destinations() const
{
    QStringList listName;
    for (const QWidget* pWidget : QApplication::allWidgets()) {
        if (const auto* pList = qobject_cast<const QListWidget*>(pWidget)) {
            for (int nRow = 0; nRow < pList->count(); ++nRow) {
                listName.append(pList->item(nRow)->text());
            }
        }
    }
    return listName;
}

void tst_CTarnwickMacPE::Event(const QString& strPath, ENDiskEventType enType)
{
    STDiskNotication notication{strPath, enType, 1};
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
}

void tst_CTarnwickMacPE::formHasItsFixedSizes_data()
{
    QTest::addColumn<QSize>("sizeMin");
    QTest::addColumn<QSize>("sizeMax");

    QTest::newRow("centralWidget") << QSize(1120, 690) << QSize(1120, 690);
    QTest::newRow("m_pTitleWidget") << QSize(0, 40) << QSize(16777215, 40);
    QTest::newRow("m_pCloseBtn") << QSize(12, 12) << QSize(12, 12);
    QTest::newRow("m_pMinBtn") << QSize(12, 12) << QSize(12, 12);
    QTest::newRow("m_pMaxBtn") << QSize(12, 12) << QSize(12, 12);
    QTest::newRow("m_pLogoLab") << QSize(34, 34) << QSize(34, 34);
    QTest::newRow("m_pLineLab") << QSize(0, 1) << QSize(16777215, 1);
}

void tst_CTarnwickMacPE::formHasItsFixedSizes()
{
    QTEST(Child(QTest::currentDataTag())->minimumSize(), "sizeMin");
    QTEST(Child(QTest::currentDataTag())->maximumSize(), "sizeMax");
}

void tst_CTarnwickMacPE::formLayouts_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nSpacing");
    QTest::addColumn<QMargins>("margins");

    QTest::newRow("window") << "verticalLayout" << 0 << QMargins(0, 0, 0, 0);
    QTest::newRow("title strip") << "horizontalLayout_3" << 15 << QMargins(5, 0, 75, 0);
    QTest::newRow("logo and title") << "horizontalLayout" << 8 << QMargins(0, 0, 0, 0);
}

void tst_CTarnwickMacPE::formLayouts()
{
    QFETCH(QString, strName);
    // The pages have layouts of the same names; the window's own are found from its own widgets.
    QLayout* pLayout = nullptr;
    for (QLayout* pOwn : {m_pWindow->centralWidget()->layout(), Child("m_pTitleWidget")->layout()}) {
        if (!pLayout) {
            pLayout = pOwn->objectName() == strName ? pOwn : pOwn->findChild<QLayout*>(strName);
        }
    }
    QVERIFY(pLayout);
    QTEST(pLayout->spacing(), "nSpacing");
    QTEST(pLayout->contentsMargins(), "margins");
}

void tst_CTarnwickMacPE::windowIsFramelessWithTitle()
{
    QVERIFY(m_pWindow->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!m_pWindow->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(m_pWindow->minimumSize(), QSize(1120, 690));
    QCOMPARE(m_pWindow->maximumSize(), QSize(1120, 690));
    QCOMPARE(m_pWindow->windowTitle(), "CTarnwickMacPE");
    QCOMPARE(Title()->text(), "Kelvane Tarnwick");
    QCOMPARE(Title()->font().pixelSize(), 16);
    QVERIFY(!Child("m_pMinBtn")->isEnabled());
    QVERIFY(!Child("m_pMaxBtn")->isEnabled());
    QVERIFY(Child("m_pCloseBtn")->isEnabled());
}

void tst_CTarnwickMacPE::titleStandsInTheMiddle()
{
    m_pWindow->ensurePolished();
    m_pWindow->layout()->activate();
    m_pWindow->grab();
    const int nLeft = PlaceIn(m_pWindow.get(), Child("m_pLogoLab")).left();
    const int nRight = PlaceIn(m_pWindow.get(), Title()).left()
        + Title()->fontMetrics().horizontalAdvance(Title()->text());
    QVERIFY2(qAbs((nLeft + nRight) / 2 - m_pWindow->width() / 2) <= 2,
             qPrintable(QString("%1 to %2").arg(nLeft).arg(nRight)));
}

void tst_CTarnwickMacPE::firstKeyGoesToTheTree() { QCOMPARE(m_pWindow->focusWidget(), Child("m_pFileTree")); }

void tst_CTarnwickMacPE::readersHearTheProgram()
{
    QCOMPARE(NameHeard(m_pWindow.get()), "Kelvane Tarnwick");
    QCOMPARE(NameHeard(Child("m_pCloseBtn")), "Close");
    QCOMPARE(NameHeard(Child("m_pMinBtn")), "Minimize");
    QCOMPARE(NameHeard(Child("m_pMaxBtn")), "Zoom");
    QVERIFY(Heard(Child("m_pLogoLab"))->state().invisible);
    const QWidget* pCentral = m_pWindow->centralWidget();
    QVERIFY(Heard(pCentral->findChild<QLabel*>("m_pLineLab", Qt::FindDirectChildrenOnly))->state().invisible);
}

void tst_CTarnwickMacPE::tabReachesEveryControl()
{
    QVERIFY(ShowActive(m_pWindow.get()));
    SelectPage()->setFocus();
    // Copy is disabled, and so passed over; the window's own button comes last.
    for (const char* pName :
         {"m_pFileTree", "m_pDropBtn", "RefreshLab", "m_pCompleteBox", "m_pCloseBtn", "m_pFileTree"}) {
        QCOMPARE(QApplication::focusWidget()->objectName(), pName);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

void tst_CTarnwickMacPE::eachPageHasTheFocus()
{
    QVERIFY(ShowActive(m_pWindow.get()));
    Child("m_pCloseBtn")->setFocus();
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(m_pWindow->focusWidget(), CopyPage());
    // The page takes no notice of the key that has pressed Copy, if it is still held.
    QTest::keyClick(CopyPage(), Qt::Key_Space);
    QVERIFY(!QApplication::activeModalWidget());
    QTest::keyClick(CopyPage(), Qt::Key_Tab);
    QCOMPARE(qobject_cast<QPushButton*>(m_pWindow->focusWidget())->text(), "Cancel");
    QVERIFY(CopyPage()->isAncestorOf(m_pWindow->focusWidget()));
    emit CopyPage()->SignalCopyFileFinish();
    QCOMPARE(m_pWindow->focusWidget()->objectName(), "m_pFileTree");
}

void tst_CTarnwickMacPE::keepAwakeIsAskedOfTheShell()
{
    QTRY_COMPARE(m_pCommands->Written("stdin"), QByteArray("caffeinate -u -t 2592000  \n"));
    QCOMPARE(m_pCommands->Written("bash"), QByteArray("\n")); // one call, without arguments
}

void tst_CTarnwickMacPE::secondListenerKeepsTheFirst()
{
    QVERIFY(CDiskListener::GetInstance().StartListener(nullptr, nullptr));
    CDiskListener::GetInstance().OnDiskChanged(DISK_EVENT_DISAPPEARED, "/Volumes/STICK");
    QCOMPARE(Destinations(), QStringList());
}

void tst_CTarnwickMacPE::eventsWithoutSenseAreDropped()
{
    const QSignalSpy spy(m_pWindow.get(), &CTarnwickMacPE::SignalDiskChange);
    STDiskNotication notication{QString(), DISK_EVENT_DISAPPEARED, 1};
    CTarnwickMacPE::DiskChange(nullptr, m_pWindow.get());
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
    notication.strDevicePath = "/Volumes/STICK";
    CTarnwickMacPE::DiskChange(&notication, nullptr);
    QCOMPARE(spy.count(), 0);
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
    QCOMPARE(spy.count(), 1);
}

void tst_CTarnwickMacPE::arrivalAndRemoval_data()
{
    QTest::addColumn<QString>("strMounted");
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QStringList>("listArrived");
    QTest::addColumn<QStringList>("listRemoved");
    const QString strName = "Müller 写真";
    QTest::newRow("a volume of that path")
        << "SECOND"
        << "/Volumes/SECOND" << QStringList{"STICK", "SECOND"} << QStringList{"STICK"};
    QTest::newRow("a name beyond ASCII arrives as bytes")
        << strName << QString::fromLatin1("/Volumes/" + strName.toUtf8()) << QStringList{"STICK", strName}
        << QStringList{"STICK"};
    QTest::newRow("two arrivals list twice, one removal drops both")
        << ""
        << "/Volumes/STICK" << QStringList{"STICK", "STICK"} << QStringList();
    QTest::newRow("no volume of that path")
        << ""
        << "IOUSB:/Root/Stick@1" << QStringList{"STICK"} << QStringList{"STICK"};
}

void tst_CTarnwickMacPE::arrivalAndRemoval()
{
    QFETCH(QString, strMounted);
    QFETCH(QString, strPath);
    std::unique_ptr<CVolume> pVolume;
    if (!strMounted.isEmpty()) {
        pVolume = std::make_unique<CVolume>(strMounted, "/dev/sdc1", 10);
    }
    Event(strPath, DISK_EVENT_APPEARED);
    QTEST(Destinations(), "listArrived");
    Event(strPath, DISK_EVENT_DISAPPEARED);
    QTEST(Destinations(), "listRemoved");
}

void tst_CTarnwickMacPE::pulledVolumeLeavesTheList_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::newRow("plain") << QByteArray("RESCUE");
    QTest::newRow("UTF-8") << QByteArray("M\xc3\xbcller");
    QTest::newRow("not UTF-8") << QByteArray("caf\xe9 \xff");
    QTest::newRow("what a volume is called whose UTF-8 was taken for Latin-1")
        << QByteArray("M\xc3\x83\xc2\xbcller");
}

/** Real mounts, through the listener. What they leave behind would take the next copy. */
void tst_CTarnwickMacPE::pulledVolumeLeavesTheList()
{
    QFETCH(QByteArray, baName);
    const QString strName = QFile::decodeName(baName);
    CVolume volume(strName, "/dev/sdc1", 10);
    QTRY_COMPARE(Destinations(), QStringList({"STICK", strName}));
    volume.Pull();
    QVERIFY(QFileInfo::exists(volume.Path()));
    QTRY_COMPARE(Destinations(), QStringList{"STICK"});
}

void tst_CTarnwickMacPE::pulledVolumeLeavesTheListWhereTheFolderIsALink()
{
    m_pStick.reset();
    m_pSource.reset();
    QVERIFY(CVolume::ClearAndLink("/run/media"));
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 10);
    CVolume volume("RESCUE", "/dev/sdc1", 10);
    QCoreApplication::processEvents();
    SelectPage()->SlotRefreshUSB();
    QCOMPARE(Destinations(), QStringList{"RESCUE"});
    volume.Pull();
    QTRY_COMPARE(Destinations(), QStringList());

    QVERIFY(CVolume::Mount("/dev/sdc1", "/run/media/LATER"));
    QTRY_COMPARE(Destinations(), QStringList{"LATER"});
    m_pSource.reset();
    QVERIFY(CVolume::Clear());
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 10);
    m_pStick = std::make_unique<CVolume>("STICK", "/dev/sdb1", 10);
    m_pEvents->clear();
    QTRY_VERIFY(m_pEvents->count() > 0);
}

/** This system takes them for two; on a Mac there is but one of them. */
void tst_CTarnwickMacPE::volumesOfOneNameInTwoSpellingsStayApart()
{
    const QString strComposed = QString::fromUtf8("B\xc3\xbc"
                                                  "cher");
    const QString strDecomposed = QString::fromUtf8("Bu\xcc\x88"
                                                    "cher");
    CVolume composed(strComposed, "/dev/sdc1", 10);
    QTRY_COMPARE(Destinations(), QStringList({"STICK", strComposed}));
    m_pEvents->clear();
    {
        const CVolume decomposed(strDecomposed, "/dev/nvme1n1p1", 10); // no stick
        QTRY_COMPARE(m_pEvents->count(), 1);
    }
    QTRY_COMPARE(m_pEvents->count(), 2);
    QCOMPARE(Destinations(), QStringList({"STICK", strComposed}));
    const QString strTold = QString::fromLatin1(("/Volumes/" + strDecomposed).toUtf8());
    for (const ENDiskEventType enType : {DISK_EVENT_DISAPPEARED, DISK_EVENT_APPEARED}) {
        Event(strTold, enType);
        QCOMPARE(Destinations(), QStringList({"STICK", strComposed}));
    }
}

void tst_CTarnwickMacPE::removalWithoutAnyVolumeChangesNothing()
{
    m_pEvents->clear();
    m_pSource->Pull(true);
    m_pStick->Pull(true);
    QTRY_COMPARE(m_pEvents->count(), 2);
    QVERIFY(QDir("/Volumes").isEmpty());
    Event("/Volumes/STICK", DISK_EVENT_DISAPPEARED);
    QCOMPARE(Destinations(), QStringList{"STICK"});
    m_pSource = std::make_unique<CVolume>("Macintosh HD", "/dev/nvme0n1p1", 10);
    QTRY_COMPARE(m_pEvents->count(), 4);
}

void tst_CTarnwickMacPE::removalOfTheDestinationTellsBeforeTheDiskIsDropped()
{
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(Stack()->currentIndex(), 1);
    CModalAnswerer answerer("OK");
    answerer.Meanwhile([&] {
        QCOMPARE(SelectPage()->GetUsbPath(), "/Volumes/STICK");
        QCOMPARE(Destinations(), QStringList{"STICK"});
        QCOMPARE(Stack()->currentIndex(), 1);
        // One pulled stick is told several times, the later ones without a volume path.
        Event("USB", DISK_EVENT_DISAPPEARED);
    });
    Event("/Volumes/STICK", DISK_EVENT_DISAPPEARED);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_REMOVED);
    QCOMPARE(Destinations(), QStringList());
    QCOMPARE(Stack()->currentIndex(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_CTarnwickMacPE::removalOfAnotherDiskOnlyUpdatesTheList()
{
    auto pOther = std::make_unique<CVolume>("OTHER", "/dev/sdc1", 10);
    Event("/Volumes/OTHER", DISK_EVENT_APPEARED);
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(CopyPage()->GetCopyUsbName(), "STICK");
    pOther->Pull(true);
    Event("/Volumes/OTHER", DISK_EVENT_DISAPPEARED);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(Stack()->currentIndex(), 1);
    QCOMPARE(CopyPage()->GetCopyStatus(), 0);
    QCOMPARE(Destinations(), QStringList{"STICK"});
}

void tst_CTarnwickMacPE::copyRequestShowsTheCopyPageAndItsEndTheFirst()
{
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(Stack()->currentIndex(), 1);
    QCOMPARE(CopyPage()->GetCopyUsbName(), SelectPage()->GetUsbName());
    emit CopyPage()->SignalCopyFileFinish();
    QCOMPARE(Stack()->currentIndex(), 0);
    m_pWindow->SlotStackPageChange(); // without a sender
    QCOMPARE(Stack()->currentIndex(), 0);
}

void tst_CTarnwickMacPE::lastCopyIsNotedOnTheFirstPage()
{
    // Of the copies of other tests nobody tells any more.
    QTRY_VERIFY(!CopyPage()->findChild<CCopyFileThread*>()->isRunning());
    QCoreApplication::processEvents();
    const auto fnNotice = [this] { return m_pWindow->findChild<CNoticeLine*>()->Text(); };
    emit SelectPage()->SignalCopyFile();
    STCopyAccount stAccount;
    stAccount.nFiles = 3;
    stAccount.nProblems = 2;
    stAccount.enFlush = ENCopyFlush::DONE;
    CopyPage()->SlotCopyAccount(stAccount);
    QCOMPARE(fnNotice(), QString());
    emit CopyPage()->SignalCopyFileFinish();
    QCOMPARE(fnNotice(), "STICK: 2 of 5 items were not copied whole.");
    emit SelectPage()->SignalCopyFile();
    stAccount.nProblems = 0;
    CopyPage()->SlotCopyAccount(stAccount);
    emit CopyPage()->SignalCopyFileFinish();
    QCOMPARE(fnNotice(), QString());
}

void tst_CTarnwickMacPE::closeAnswers_data()
{
    QTest::addColumn<bool>("bCopyPage");
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<bool>("bCloses");
    QTest::addColumn<int>("nStatusAfter");

    QTest::newRow("yes on the selection page") << false << "Yes" << true << -1;
    QTest::newRow("cancel on the selection page") << false << "Cancel" << false << -1;
    QTest::newRow("title button on the selection page")
        << false << CModalAnswerer::TitleButton() << false << -1;
    QTest::newRow("yes during a copy") << true << "Yes" << true << 1;
    QTest::newRow("cancel during a copy") << true << "Cancel" << false << 0;
    QTest::newRow("title button during a copy") << true << CModalAnswerer::TitleButton() << false << 0;
}

void tst_CTarnwickMacPE::closeAnswers()
{
    QFETCH(bool, bCopyPage);
    QFETCH(QString, strButton);
    if (bCopyPage) {
        emit SelectPage()->SignalCopyFile();
        QCOMPARE(CopyPage()->GetCopyStatus(), 0);
    }
    CModalAnswerer answerer(strButton);
    answerer.Meanwhile([&] { QVERIFY(!bCopyPage || CopyPage()->GetCopyStatus() == 1); });
    QTEST(m_pWindow->close(), "bCloses");
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_EXIT);
    QCOMPARE(answerer.Buttons(), QStringList({"Cancel", "Yes"}));
    if (bCopyPage) {
        QTEST(CopyPage()->GetCopyStatus(), "nStatusAfter");
    }
}

void tst_CTarnwickMacPE::copyBegunUnderTheExitQuestion_data()
{
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<int>("nStatusAfter");
    QTest::newRow("cancel") << "Cancel" << 0;
    QTest::newRow("yes") << "Yes" << 1;
}

// The selection was still being counted when the user was asked.
void tst_CTarnwickMacPE::copyBegunUnderTheExitQuestion()
{
    QFETCH(QString, strButton);
    CModalAnswerer answerer(strButton);
    answerer.Meanwhile([&] {
        emit SelectPage()->SignalCopyFile();
        QCOMPARE(CopyPage()->GetCopyStatus(), 1);
    });
    m_pWindow->close();
    QVERIFY(answerer.Answered());
    QTEST(CopyPage()->GetCopyStatus(), "nStatusAfter");
}

void tst_CTarnwickMacPE::exitQuestionUnderTheStopQuestion()
{
    emit SelectPage()->SignalCopyFile();
    CModalAnswerer stop("Cancel");
    stop.Meanwhile([&] {
        const CModalAnswerer leave("Cancel");
        QVERIFY(!m_pWindow->close());
        QCOMPARE(leave.Text(), TEXT_EXIT);
        QCOMPARE(CopyPage()->GetCopyStatus(), 1); // the stop is still being asked about
    });
    QVERIFY(!CopyPage()->SlotCancelBtnClick());
    QVERIFY(stop.Answered());
    QCOMPARE(CopyPage()->GetCopyStatus(), 0);
}

// Cancel comes up where Copy was.
void tst_CTarnwickMacPE::doubleClickOnCopyDoesNotCancel()
{
    const auto fnPress = [](QWidget* pButton, ulong nTimestamp) {
        for (const QEvent::Type enType : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(enType, QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            event.setTimestamp(nTimestamp);
            QCoreApplication::sendEvent(pButton, &event);
        }
    };
    fnPress(SelectPage()->findChild<QPushButton*>("toolBtn"), 1000);
    emit SelectPage()->SignalCopyFile();
    auto* pCancel = CopyPage()->findChild<QPushButton*>("toolBtn");
    CModalAnswerer answerer("Cancel");
    fnPress(pCancel, 1001);
    QVERIFY(!answerer.Answered());
    QCOMPARE(CopyPage()->GetCopyStatus(), 0);
    QTest::keyClick(pCancel, Qt::Key_Space);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_STOP);
}

QTEST_MAIN(tst_CTarnwickMacPE)
#include "tst_CTarnwickMacPE.moc"
