#include "app/CTarnwickMacPE.h"
#include "files/CFileNameCodec.h"
#include "pages/CCopyFileWidget.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CModalAnswerer.h"
#include "support/CVolume.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QStyleHints>
#include <QTest>

#include <memory>

static const QString TEXT_EXIT
    = QStringLiteral("Your computer will restart if you exit the program. Are you sure you want to exit?");
static const QString TEXT_REMOVED = QStringLiteral("The destination storage device has been removed! Please "
                                                   "check and connect the storage device then try again.");

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

    void FormHasItsFixedSizes_data();
    void FormHasItsFixedSizes();
    void FormLayouts_data();
    void FormLayouts();
    void WindowIsFramelessWithTitle();
    void TitleStandsInTheMiddle();
    void FirstKeyGoesToTheTree();
    void ReadersHearTheProgram();
    void TabReachesEveryControl();
    void EachPageHasTheFocus();
    void KeepAwakeIsAskedOfTheShell();
    void SecondListenerKeepsTheFirst();

    void EventsWithoutSenseAreDropped();
    void ArrivalAddsTheVolumeOfThatPath();
    void ArrivalOfAnUnknownPathAddsNothing();
    void TwoArrivalsListTwiceAndOneRemovalDropsBoth();
    void NameBeyondAsciiArrivesAsBytes();
    void pulledVolumeLeavesTheList_data();
    void pulledVolumeLeavesTheList();
    void pulledVolumeLeavesTheListWhereTheFolderIsALink();
    void RemovalWithoutAnyVolumeChangesNothing();
    void RemovalOfTheDestinationTellsBeforeTheDiskIsDropped();
    void RemovalOfAnotherDiskOnlyUpdatesTheList();
    void EventDuringTheRemovalMessageDoesNotReplaceTheFirst();

    void CopyRequestShowsTheCopyPageAndItsEndTheFirst();
    void CloseAnswers_data();
    void CloseAnswers();

private:
    void Event(const QString& strPath, ENDiskEventType enType);
    QStringList Destinations() const;
    QStackedWidget* Stack() const;
    CSelFileWidget* SelectPage() const;
    CCopyFileWidget* CopyPage() const;

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
    m_pCommands->Add(QStringLiteral("bash"), QStringLiteral("cat >\"$CALLS/stdin\""));
    m_pCommands->Add(QStringLiteral("rm"));
    m_pCommands->Add(QStringLiteral("diskutil"), QStringLiteral(R"(
bus=PCI-Express
case $3 in */sd*) bus=USB ;; esac
printf '<?xml version="1.0"?><plist version="1.0"><dict><key>BusProtocol</key><string>%s</string></dict></plist>' $bus)"));
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 10);
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
    m_pStick = std::make_unique<CVolume>(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    QTRY_COMPARE(m_pEvents->count(), 1);
    QCOMPARE(Destinations(), QStringList{QStringLiteral("STICK")});
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

QStackedWidget* tst_CTarnwickMacPE::Stack() const
{
    return m_pWindow->findChild<QStackedWidget*>(QStringLiteral("m_pStackWidget"));
}

CSelFileWidget* tst_CTarnwickMacPE::SelectPage() const
{
    return m_pWindow->findChild<CSelFileWidget*>(QStringLiteral("m_pSelFilePage"));
}

CCopyFileWidget* tst_CTarnwickMacPE::CopyPage() const
{
    return m_pWindow->findChild<CCopyFileWidget*>(QStringLiteral("m_pCopyFilePage"));
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

void tst_CTarnwickMacPE::FormHasItsFixedSizes_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QSize>("sizeMin");
    QTest::addColumn<QSize>("sizeMax");

    QTest::newRow("content") << QStringLiteral("centralWidget") << QSize(1120, 690) << QSize(1120, 690);
    QTest::newRow("title") << QStringLiteral("m_pTitleWidget") << QSize(0, 40) << QSize(16777215, 40);
    QTest::newRow("close") << QStringLiteral("m_pCloseBtn") << QSize(12, 12) << QSize(12, 12);
    QTest::newRow("minimise") << QStringLiteral("m_pMinBtn") << QSize(12, 12) << QSize(12, 12);
    QTest::newRow("zoom") << QStringLiteral("m_pMaxBtn") << QSize(12, 12) << QSize(12, 12);
    QTest::newRow("logo") << QStringLiteral("m_pLogoLab") << QSize(34, 34) << QSize(34, 34);
    QTest::newRow("line") << QStringLiteral("m_pLineLab") << QSize(0, 1) << QSize(16777215, 1);
}

void tst_CTarnwickMacPE::FormHasItsFixedSizes()
{
    QFETCH(QString, strName);
    const auto* pWidget = m_pWindow->findChild<QWidget*>(strName);
    QVERIFY(pWidget);
    QTEST(pWidget->minimumSize(), "sizeMin");
    QTEST(pWidget->maximumSize(), "sizeMax");
}

void tst_CTarnwickMacPE::FormLayouts_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nSpacing");
    QTest::addColumn<QMargins>("margins");

    QTest::newRow("window") << QStringLiteral("verticalLayout") << 0 << QMargins(0, 0, 0, 0);
    QTest::newRow("title strip") << QStringLiteral("horizontalLayout_3") << 15 << QMargins(5, 0, 75, 0);
    QTest::newRow("logo and title") << QStringLiteral("horizontalLayout") << 8 << QMargins(0, 0, 0, 0);
}

void tst_CTarnwickMacPE::FormLayouts()
{
    QFETCH(QString, strName);
    // The pages have layouts of the same names; the window's own are found from its own widgets.
    const QWidget* pCentral = m_pWindow->centralWidget();
    const auto* pTitle = pCentral->findChild<QWidget*>(QStringLiteral("m_pTitleWidget"));
    QLayout* pLayout = pCentral->layout()->objectName() == strName ? pCentral->layout() : nullptr;
    if (!pLayout) {
        pLayout = pTitle->layout()->objectName() == strName ? pTitle->layout()
                                                            : pTitle->layout()->findChild<QLayout*>(strName);
    }
    QVERIFY(pLayout);
    QTEST(pLayout->spacing(), "nSpacing");
    QTEST(pLayout->contentsMargins(), "margins");
}

void tst_CTarnwickMacPE::WindowIsFramelessWithTitle()
{
    QVERIFY(m_pWindow->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!m_pWindow->testAttribute(Qt::WA_TranslucentBackground));
    QCOMPARE(m_pWindow->minimumSize(), QSize(1120, 690));
    QCOMPARE(m_pWindow->maximumSize(), QSize(1120, 690));
    QCOMPARE(m_pWindow->windowTitle(), QStringLiteral("CTarnwickMacPE"));
    QCOMPARE(m_pWindow->findChild<QLabel*>(QStringLiteral("m_pTitleLab"))->text(),
             QStringLiteral("Kelvane Tarnwick"));
    QCOMPARE(m_pWindow->findChild<QLabel*>(QStringLiteral("m_pTitleLab"))->font().pixelSize(), 16);
    QVERIFY(!m_pWindow->findChild<QPushButton*>(QStringLiteral("m_pMinBtn"))->isEnabled());
    QVERIFY(!m_pWindow->findChild<QPushButton*>(QStringLiteral("m_pMaxBtn"))->isEnabled());
    QVERIFY(m_pWindow->findChild<QPushButton*>(QStringLiteral("m_pCloseBtn"))->isEnabled());
}

void tst_CTarnwickMacPE::TitleStandsInTheMiddle()
{
    m_pWindow->ensurePolished();
    m_pWindow->layout()->activate();
    m_pWindow->grab();
    const auto* pLogo = m_pWindow->findChild<QLabel*>(QStringLiteral("m_pLogoLab"));
    const auto* pTitle = m_pWindow->findChild<QLabel*>(QStringLiteral("m_pTitleLab"));
    const int nLeft = pLogo->mapTo(m_pWindow.get(), QPoint(0, 0)).x();
    const int nRight = pTitle->mapTo(m_pWindow.get(), QPoint(0, 0)).x()
        + pTitle->fontMetrics().horizontalAdvance(pTitle->text());
    QVERIFY2(qAbs((nLeft + nRight) / 2 - m_pWindow->width() / 2) <= 2,
             qPrintable(QStringLiteral("%1 to %2").arg(QString::number(nLeft), QString::number(nRight))));
}

void tst_CTarnwickMacPE::FirstKeyGoesToTheTree()
{
    QCOMPARE(m_pWindow->focusWidget(), m_pWindow->findChild<QWidget*>(QStringLiteral("m_pFileTree")));
}

void tst_CTarnwickMacPE::ReadersHearTheProgram()
{
    const auto heard = [this](const char* pName) {
        return QAccessible::queryAccessibleInterface(m_pWindow->findChild<QWidget*>(QLatin1String(pName)));
    };
    QCOMPARE(QAccessible::queryAccessibleInterface(m_pWindow.get())->text(QAccessible::Name),
             QStringLiteral("Kelvane Tarnwick"));
    QCOMPARE(heard("m_pCloseBtn")->text(QAccessible::Name), QStringLiteral("Close"));
    QCOMPARE(heard("m_pMinBtn")->text(QAccessible::Name), QStringLiteral("Minimize"));
    QCOMPARE(heard("m_pMaxBtn")->text(QAccessible::Name), QStringLiteral("Zoom"));
    QVERIFY(heard("m_pLogoLab")->state().invisible);
    QVERIFY(
        QAccessible::queryAccessibleInterface(m_pWindow->centralWidget()->findChild<QLabel*>(
                                                  QStringLiteral("m_pLineLab"), Qt::FindDirectChildrenOnly))
            ->state()
            .invisible);
}

void tst_CTarnwickMacPE::TabReachesEveryControl()
{
    m_pWindow->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    SelectPage()->setFocus();
    // Copy is disabled, and so passed over; the window's own button comes last.
    for (const char* pName : {"m_pFileTree", "m_pDropBtn", "RefreshLab", "m_pCloseBtn", "m_pFileTree"}) {
        QCOMPARE(QApplication::focusWidget()->objectName(), QLatin1String(pName));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

void tst_CTarnwickMacPE::EachPageHasTheFocus()
{
    m_pWindow->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    m_pWindow->findChild<QPushButton*>(QStringLiteral("m_pCloseBtn"))->setFocus();
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(m_pWindow->focusWidget(), CopyPage());
    // The page takes no notice of the key that has pressed Copy, if it is still held.
    QTest::keyClick(CopyPage(), Qt::Key_Space);
    QVERIFY(!QApplication::activeModalWidget());
    QTest::keyClick(CopyPage(), Qt::Key_Tab);
    QVERIFY(m_pWindow->focusWidget()->parentWidget() != nullptr);
    QCOMPARE(qobject_cast<QPushButton*>(m_pWindow->focusWidget())->text(), QStringLiteral("Cancel"));
    QVERIFY(CopyPage()->isAncestorOf(m_pWindow->focusWidget()));
    emit CopyPage()->SignalCopyFileFinish();
    QCOMPARE(m_pWindow->focusWidget()->objectName(), QStringLiteral("m_pFileTree"));
}

void tst_CTarnwickMacPE::KeepAwakeIsAskedOfTheShell()
{
    QTRY_COMPARE(m_pCommands->Written(QStringLiteral("stdin")), QByteArray("caffeinate -u -t 2592000  \n"));
    QCOMPARE(m_pCommands->Written(QStringLiteral("bash")), QByteArray("\n")); // one call, without arguments
}

void tst_CTarnwickMacPE::SecondListenerKeepsTheFirst()
{
    QVERIFY(CDiskListener::GetInstance().StartListener(nullptr, nullptr));
    CDiskListener::GetInstance().OnDiskChanged(DISK_EVENT_DISAPPEARED, "/Volumes/STICK");
    QCOMPARE(Destinations(), QStringList());
}

void tst_CTarnwickMacPE::EventsWithoutSenseAreDropped()
{
    const QSignalSpy spy(m_pWindow.get(), &CTarnwickMacPE::SignalDiskChange);
    STDiskNotication notication{QString(), DISK_EVENT_DISAPPEARED, 1};
    CTarnwickMacPE::DiskChange(nullptr, m_pWindow.get());
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
    notication.strDevicePath = QStringLiteral("/Volumes/STICK");
    CTarnwickMacPE::DiskChange(&notication, nullptr);
    QCOMPARE(spy.count(), 0);
    CTarnwickMacPE::DiskChange(&notication, m_pWindow.get());
    QCOMPARE(spy.count(), 1);
}

void tst_CTarnwickMacPE::ArrivalAddsTheVolumeOfThatPath()
{
    const CVolume volume(QStringLiteral("SECOND"), QStringLiteral("/dev/sdc1"), 10);
    Event(QStringLiteral("/Volumes/SECOND"), DISK_EVENT_APPEARED);
    QCOMPARE(Destinations(), QStringList({QStringLiteral("STICK"), QStringLiteral("SECOND")}));
}

void tst_CTarnwickMacPE::ArrivalOfAnUnknownPathAddsNothing()
{
    Event(QStringLiteral("IOUSB:/Root/Stick@1"), DISK_EVENT_APPEARED);
    QCOMPARE(Destinations(), QStringList{QStringLiteral("STICK")});
}

void tst_CTarnwickMacPE::TwoArrivalsListTwiceAndOneRemovalDropsBoth()
{
    Event(QStringLiteral("/Volumes/STICK"), DISK_EVENT_APPEARED); // the second one
    QCOMPARE(Destinations(), QStringList({QStringLiteral("STICK"), QStringLiteral("STICK")}));
    Event(QStringLiteral("/Volumes/STICK"), DISK_EVENT_DISAPPEARED);
    QCOMPARE(Destinations(), QStringList());
}

void tst_CTarnwickMacPE::NameBeyondAsciiArrivesAsBytes()
{
    const QString strName = QStringLiteral("Müller 写真");
    const CVolume volume(strName, QStringLiteral("/dev/sdc1"), 10);
    const QByteArray baPath = volume.Path().toUtf8();
    Event(QString::fromLatin1(baPath), DISK_EVENT_APPEARED);
    QCOMPARE(Destinations(), QStringList({QStringLiteral("STICK"), strName}));
    Event(QString::fromLatin1(baPath), DISK_EVENT_DISAPPEARED);
    QCOMPARE(Destinations(), QStringList{QStringLiteral("STICK")});
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

void tst_CTarnwickMacPE::RemovalWithoutAnyVolumeChangesNothing()
{
    m_pEvents->clear();
    m_pSource->Pull(true);
    m_pStick->Pull(true);
    QTRY_COMPARE(m_pEvents->count(), 2);
    QVERIFY(QDir(QStringLiteral("/Volumes")).isEmpty());
    Event(QStringLiteral("/Volumes/STICK"), DISK_EVENT_DISAPPEARED);
    QCOMPARE(Destinations(), QStringList{QStringLiteral("STICK")});
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 10);
    QTRY_COMPARE(m_pEvents->count(), 4);
}

void tst_CTarnwickMacPE::RemovalOfTheDestinationTellsBeforeTheDiskIsDropped()
{
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(Stack()->currentIndex(), 1);
    CModalAnswerer answerer(QStringLiteral("OK"));
    QStringList listWhileTelling;
    int nPageWhileTelling = -1;
    QString strPathWhileTelling;
    answerer.Meanwhile([&] {
        strPathWhileTelling = SelectPage()->GetUsbPath();
        listWhileTelling = Destinations();
        nPageWhileTelling = Stack()->currentIndex();
    });
    Event(QStringLiteral("/Volumes/STICK"), DISK_EVENT_DISAPPEARED);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_REMOVED);
    QCOMPARE(listWhileTelling.join(QLatin1Char(',')), QStringLiteral("STICK"));
    QCOMPARE(strPathWhileTelling, QStringLiteral("/Volumes/STICK"));
    QCOMPARE(nPageWhileTelling, 1);
    QCOMPARE(Destinations(), QStringList());
    QCOMPARE(Stack()->currentIndex(), 0);
}

void tst_CTarnwickMacPE::RemovalOfAnotherDiskOnlyUpdatesTheList()
{
    auto pOther = std::make_unique<CVolume>(QStringLiteral("OTHER"), QStringLiteral("/dev/sdc1"), 10);
    Event(QStringLiteral("/Volumes/OTHER"), DISK_EVENT_APPEARED);
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(CopyPage()->GetCopyUsbName(), QStringLiteral("STICK"));
    pOther->Pull(true);
    Event(QStringLiteral("/Volumes/OTHER"), DISK_EVENT_DISAPPEARED);
    QVERIFY(!QApplication::activeModalWidget());
    QCOMPARE(Stack()->currentIndex(), 1);
    QCOMPARE(CopyPage()->GetCopyStatus(), 0);
    QCOMPARE(Destinations(), QStringList{QStringLiteral("STICK")});
}

void tst_CTarnwickMacPE::EventDuringTheRemovalMessageDoesNotReplaceTheFirst()
{
    emit SelectPage()->SignalCopyFile();
    CModalAnswerer answerer(QStringLiteral("OK"));
    // One pulled stick is told several times, the later ones without a volume path.
    answerer.Meanwhile([&] { Event(QStringLiteral("USB"), DISK_EVENT_DISAPPEARED); });
    Event(QStringLiteral("/Volumes/STICK"), DISK_EVENT_DISAPPEARED);
    QVERIFY(answerer.Answered());
    QCOMPARE(Destinations(), QStringList());
    QCOMPARE(Stack()->currentIndex(), 0);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_CTarnwickMacPE::CopyRequestShowsTheCopyPageAndItsEndTheFirst()
{
    emit SelectPage()->SignalCopyFile();
    QCOMPARE(Stack()->currentIndex(), 1);
    QCOMPARE(CopyPage()->GetCopyUsbName(), SelectPage()->GetUsbName());
    emit CopyPage()->SignalCopyFileFinish();
    QCOMPARE(Stack()->currentIndex(), 0);
    m_pWindow->SlotStackPageChange(); // without a sender
    QCOMPARE(Stack()->currentIndex(), 0);
}

void tst_CTarnwickMacPE::CloseAnswers_data()
{
    QTest::addColumn<bool>("bCopyPage");
    QTest::addColumn<QString>("strButton");
    QTest::addColumn<bool>("bCloses");
    QTest::addColumn<int>("nStatusAfter");

    QTest::newRow("yes on the selection page") << false << QStringLiteral("Yes") << true << -1;
    QTest::newRow("cancel on the selection page") << false << QStringLiteral("Cancel") << false << -1;
    QTest::newRow("title button on the selection page")
        << false << CModalAnswerer::TitleButton() << false << -1;
    QTest::newRow("yes during a copy") << true << QStringLiteral("Yes") << true << 1;
    QTest::newRow("cancel during a copy") << true << QStringLiteral("Cancel") << false << 0;
    QTest::newRow("title button during a copy") << true << CModalAnswerer::TitleButton() << false << 0;
}

void tst_CTarnwickMacPE::CloseAnswers()
{
    QFETCH(bool, bCopyPage);
    QFETCH(QString, strButton);
    QFETCH(int, nStatusAfter);
    if (bCopyPage) {
        emit SelectPage()->SignalCopyFile();
        QCOMPARE(CopyPage()->GetCopyStatus(), 0);
    }
    CModalAnswerer answerer(strButton);
    int nStatusMeanwhile = -1;
    answerer.Meanwhile([&] { nStatusMeanwhile = CopyPage()->GetCopyStatus(); });
    QTEST(m_pWindow->close(), "bCloses");
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_EXIT);
    QCOMPARE(answerer.Buttons(), QStringList({QStringLiteral("Cancel"), QStringLiteral("Yes")}));
    if (bCopyPage) {
        QCOMPARE(nStatusMeanwhile, 1);
        QCOMPARE(CopyPage()->GetCopyStatus(), nStatusAfter);
    }
}

QTEST_MAIN(tst_CTarnwickMacPE)
#include "tst_CTarnwickMacPE.moc"
