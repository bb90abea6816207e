#include "copy/CGetFileSizeThread.h"
#include "kit/CClickableLabel.h"
#include "log/CClock.h"
#include "pages/CDiskSpace.h"
#include "pages/CPageTree.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CLogCapture.h"
#include "support/CModalAnswerer.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/WaitAside.h"
#include "tree/CFileTreeView.h"

#include <QAccessible>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFrame>
#include <QLayout>
#include <QListWidget>
#include <QMovie>
#include <QPushButton>
#include <QSignalSpy>
#include <QStorageInfo>
#include <QTest>
#include <QtConcurrent>

#include <atomic>
#include <fcntl.h>
#include <functional>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

static const QString PROMPT = QStringLiteral("Select Destination Disk:");
static const QString TEXT_READ_ONLY = QStringLiteral("Your drive may be damaged and Tarnwick can not write "
                                                     "to this drive, please change another one and retry.");
static const QString TEXT_NO_SPACE
    = QStringLiteral("No enough space, please select other Hard Disk or USB flash drive.");

Q_DECLARE_METATYPE(QAccessible::Role)

/** A line that the fake commands stand in until a test lets them pass, one at a time. */
class CGate
{
public:
    CGate()
    {
        if (::mkfifo(Path().constData(), 0600) != 0) {
            qFatal("fixture failed: no pipe");
        }
        // Opened for both directions, so that neither side waits for the other to open it.
        m_nPipe = ::open(Path().constData(), O_RDWR | O_CLOEXEC);
    }
    ~CGate() { ::close(m_nPipe); }

    /** Shell code that waits for the gate. */
    QString Wait() const { return QStringLiteral("read -r pass <'%1'").arg(QString::fromUtf8(Path())); }

    void Open(int nTimes)
    {
        const QByteArray baLines(nTimes, '\n');
        if (::write(m_nPipe, baLines.constData(), size_t(baLines.size())) != baLines.size()) {
            qFatal("fixture failed: pipe is full");
        }
    }

private:
    QByteArray Path() const { return QFile::encodeName(m_dir.filePath(QStringLiteral("gate"))); }

    QTemporaryDir m_dir;
    int m_nPipe = -1;
};

/** Answers the message box that comes after the waiting dialog, which is modal as well. */
class CAnswererAfterWait : public QObject
{
    Q_OBJECT

public:
    CAnswererAfterWait(QWidget* pWaitView, const QString& strButton)
        : m_strButton(strButton)
    {
        pWaitView->installEventFilter(this);
    }

    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::Hide && !m_pAnswerer) {
            m_pAnswerer = std::make_unique<CModalAnswerer>(m_strButton);
        }
        return false;
    }

    bool Answered() const { return m_pAnswerer && m_pAnswerer->Answered(); }
    QString Text() const { return m_pAnswerer ? m_pAnswerer->Text() : QString(); }
    QStringList Buttons() const { return m_pAnswerer ? m_pAnswerer->Buttons() : QStringList(); }

private:
    QString m_strButton;
    std::unique_ptr<CModalAnswerer> m_pAnswerer;
};

/** The selection page over volumes mounted for each test. */
class tst_CSelFileWidget : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void Texts_data();
    void Texts();
    void SharedNames_data();
    void SharedNames();
    void Layouts_data();
    void Layouts();
    void BothSidesStandOnOneGrid();
    void NothingMovesWhenADiskGoesOrHasALongName();
    void ListHasItsSizeAndIsAPopup();
    void RefreshAnimationShowsItsFirstFrame();
    void FontsComeFromTheSkin();

    void GigabyteText_data();
    void GigabyteText();
    void DestinationFolder_data();
    void DestinationFolder();

    void Bus_data();
    void Bus();
    void OwnMediumIsNeitherSourceNorDestination();
    void SourcesBecomeRootsOnce();
    void WithoutDiskThePromptStands();
    void WithADiskItsSpaceStands();
    void RebuildWritesItsNames();
    void FirstDiskIsChosenAfterEachRebuild();
    void TwoAppearancesListTwiceAndOneRemovalTakesBoth();
    void RemovalOfAnUnknownPathChangesNothing_data();
    void RemovalOfAnUnknownPathChangesNothing();
    void RemovedChoiceGivesWayToTheNextDisk();
    void PathFollowsTheTitle();
    void NamesAreText_data();
    void NamesAreText();

    void RescanOnThePoolWorksOnThisThread();
    void RefreshClickTurnsTheAnimation();
    void TwoClicksListOnce();
    void RescanHereReplacesOneThatHangs();
    void ArrivalDuringARescanIsListedOnce();
    void ArrivalBeforeTheFirstStepIsKept();
    void RemovalDuringARescanHolds();
    void ReturnDuringARescanHolds();
    void CopyWaitsForTheEndOfARescan();
    void PageGoesWhileTheCommandHangs();

    void TickAndDiskEnableCopy_data();
    void TickAndDiskEnableCopy();
    void NothingMovesWhenADiskComesOrGoes();
    void ListOpensOverItsAnchor();
    void ListMarksTheChosenDisk();
    void EitherClickOpensTheList_data();
    void EitherClickOpensTheList();
    void ClickLeavesTheFocusWhereItIs();
    void ClickElsewhereClosesTheList_data();
    void ClickElsewhereClosesTheList();
    void ChoosingADiskLeavesPictureAndCopy();
    void ChoosingADiskThatIsGoneShowsThePrompt();

    void ReadersHearEachControl_data();
    void ReadersHearEachControl();
    void ReadersHearTheDisk();
    void ReadersHearWhetherFilesAreTicked();
    void ReadersPassOverDecoration();
    void TabGoesByTheEye();
    void SpaceInTheTreeEnablesCopy();
    void RefreshAnswersKeys_data();
    void RefreshAnswersKeys();
    void DiskIsChosenByKeys();
    void EscapeLeavesTheDisk();
    void EmptyListOpensAndClosesByKeys();
    void CopyThatIsDisabledGivesTheFocusToTheTree();
    void RefusedCopyHasTheFocusAgain();

    void ReadOnlyDiskNeverStartsTheCount();
    void FreeBytesAreEnoughOneMoreIsNot();
    void AcceptedSelectionIsHandedOver();
    void FolderTakesTheTimeOfTheClock();
    void TooLargeSelectionIsRefusedAndKept();
    void WaitingDialogIsCentredAndLetsTheWindowClose();
    void SecondClickCountsNothing();
    void NothingTakesInputDuringTheCount();
    void RebuildDuringTheCountLeavesCopyOff();
    void CopyGoesToTheDiskChosenAtTheClick();
    void DiskRemovedDuringTheCountIsRefused();
    void DiskPulledDuringTheCountIsRefused();
    void DiskGoneBeforeTheClickIsRefused();
    void diskPulledUnnoticedIsRefused_data();
    void diskPulledUnnoticedIsRefused();
    void PageGoesDuringTheCount();
    void DiskChangeIsNeverTold();

private:
    void MakePage();
    void FakeDiskutil(const QString& strBefore = QString());
    bool TickFile() const;
    void Choose(const QString& strName);
    QStringList Listed() const;
    QMap<QString, QRect> Geometries() const;
    QStringList InFolderOrder(QStringList listName) const;
    bool Activate() const;
    bool CommandAsks(const QString& strNode) const;
    CClickableLabel* RefreshLabel() const
    {
        return m_pHost->findChild<CClickableLabel*>(QStringLiteral("RefreshLab"));
    }
    QLabel* Label(const char* pName) const { return m_pHost->findChild<QLabel*>(QLatin1String(pName)); }
    QPushButton* CopyBtn() const { return m_pHost->findChild<QPushButton*>(QStringLiteral("toolBtn")); }
    QListWidget* List() const { return m_pHost->findChild<QListWidget*>(); }
    CSearchWaitView* WaitView() const { return m_pHost->findChild<CSearchWaitView*>(); }
    CGetFileSizeThread* SizeThread() const { return m_pHost->findChild<CGetFileSizeThread*>(); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CVolume> m_pSource;
    std::unique_ptr<QWidget> m_pHost;
    CSelFileWidget* m_pPage = nullptr;
};

#define NEEDS_SOURCE()                                                                                       \
    do {                                                                                                     \
        if (!m_pSource->IsValid()) {                                                                         \
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

static bool SamePicture(const QLabel* pLabel, const char* pResource)
{
    return pLabel->pixmap(Qt::ReturnByValue).toImage() == QPixmap(QLatin1String(pResource)).toImage();
}

void tst_CSelFileWidget::initTestCase() { UseLogFile(); }

void tst_CSelFileWidget::init()
{
    CPageTree::Clear();
    m_pCommands = std::make_unique<CFakeCommands>();
    FakeDiskutil();
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 20);
    if (m_pSource->IsValid()) {
        WriteFile(m_pSource->Path(QStringLiteral("docs/a.txt")), 1000);
        WriteFile(m_pSource->Path(QStringLiteral("docs/b.txt")), 500);
        WriteFile(m_pSource->Path(QStringLiteral("pics/large.jpg")), 3 * 1024 * 1024);
    }
}

void tst_CSelFileWidget::cleanup()
{
    m_pHost.reset();
    CPageTree::Clear();
    m_pSource.reset();
    m_pCommands.reset();
    CClock::SetSource(std::function<qint64()>());
}

// A command that takes /dev/sd… for USB disks and everything else for internal ones.
void tst_CSelFileWidget::FakeDiskutil(const QString& strBefore)
{
    m_pCommands->Add(QStringLiteral("diskutil"), strBefore + QStringLiteral(R"(
bus=PCI-Express
case $3 in */sd*) bus=USB ;; esac
printf '<?xml version="1.0"?><plist version="1.0"><dict><key>BusProtocol</key><string>%s</string></dict></plist>' $bus)"));
}

void tst_CSelFileWidget::MakePage()
{
    m_pHost = std::make_unique<QWidget>();
    m_pHost->setFixedSize(1120, 649);
    m_pPage = new CSelFileWidget(m_pHost.get());
    m_pPage->resize(1120, 649);
    m_pHost->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pHost.get()));
}

bool tst_CSelFileWidget::TickFile() const
{
    const bool bTicked = CPageTree::Tick(m_pSource->Path(QStringLiteral("docs/a.txt")));
    m_pPage->SlotCheckFileSelected();
    return bTicked;
}

void tst_CSelFileWidget::Choose(const QString& strName)
{
    m_pPage->SlotListWidgetItemClick(List()->findItems(strName, Qt::MatchExactly).value(0));
}

QStringList tst_CSelFileWidget::Listed() const
{
    QStringList listName;
    for (int i = 0; i < List()->count(); ++i) {
        listName.append(List()->item(i)->text());
    }
    return listName;
}

// Names in the order in which the folder of volumes lists them.
QStringList tst_CSelFileWidget::InFolderOrder(QStringList listName) const
{
    QStringList listOrdered;
    const QStringList listAll
        = QDir(QStringLiteral("/Volumes")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QString& strName : listAll) {
        if (listName.contains(strName)) {
            listOrdered.append(strName);
        }
    }
    return listOrdered;
}

bool tst_CSelFileWidget::CommandAsks(const QString& strNode) const
{
    return m_pCommands->Calls(QStringLiteral("diskutil")).contains(QStringLiteral("info -plist ") + strNode);
}

QMap<QString, QRect> tst_CSelFileWidget::Geometries() const
{
    QMap<QString, QRect> mapRect;
    const QList<QWidget*> listWidget = m_pPage->findChildren<QWidget*>();
    for (const QWidget* pWidget : listWidget) {
        if (pWidget->isWindow() || pWidget->window() != m_pHost.get()
            || pWidget->objectName().startsWith(QLatin1String("qt_"))) {
            continue;
        }
        // Several widgets share a name, so the place in the list belongs to the key.
        mapRect.insert(QStringLiteral("%1 %2").arg(mapRect.size()).arg(pWidget->objectName()),
                       QRect(pWidget->mapTo(m_pPage, QPoint()), pWidget->size()));
    }
    return mapRect;
}

// ---------------------------------------------------------------- the form

void tst_CSelFileWidget::Texts_data()
{
    QTest::addColumn<QString>("strText");
    QTest::newRow("m_pSrcLab") << QStringLiteral("Source");
    QTest::newRow("m_pMacTitleLab") << QStringLiteral("Select File to Copy:");
    QTest::newRow("m_pDstLab") << QStringLiteral("Destination");
    QTest::newRow("m_pUSBTitleLab") << PROMPT;
    QTest::newRow("bottomLab") << PROMPT;
    QTest::newRow("m_pCopyLab") << QString();
    QTest::newRow("m_pUSBPicLab") << QString();
    QTest::newRow("RefreshLab") << QString();
}

void tst_CSelFileWidget::Texts()
{
    MakePage();
    const QLabel* pLabel = Label(QTest::currentDataTag());
    QVERIFY(pLabel);
    QTEST(pLabel->text(), "strText");
}

void tst_CSelFileWidget::SharedNames_data()
{
    QTest::addColumn<QByteArray>("baClass");
    QTest::addColumn<int>("nCount");
    QTest::newRow("driveWidget") << QByteArray("QWidget") << 2;
    QTest::newRow("m_pLineLab") << QByteArray("QLabel") << 2;
    QTest::newRow("bottomLab") << QByteArray("QLabel") << 1;
    QTest::newRow("toolBtn") << QByteArray("QPushButton") << 1;
    QTest::newRow("m_pTreeFrame") << QByteArray("QFrame") << 1;
    QTest::newRow("m_pFileTree") << QByteArray("CFileTreeView") << 1;
    QTest::newRow("m_pUSBTitleLab") << QByteArray("CClickableLabel") << 1;
    QTest::newRow("m_pDropBtn") << QByteArray("QPushButton") << 1;
    QTest::newRow("RefreshLab") << QByteArray("CClickableLabel") << 1;
    QTest::newRow("m_pUSBPicFrame") << QByteArray("QFrame") << 1;
    QTest::newRow("m_pBottomWidget") << QByteArray("QWidget") << 1;
}

void tst_CSelFileWidget::SharedNames()
{
    MakePage();
    QFETCH(QByteArray, baClass);
    const QList<QWidget*> listWidget
        = m_pPage->findChildren<QWidget*>(QLatin1String(QTest::currentDataTag()));
    QTEST(listWidget.size(), "nCount");
    for (const QWidget* pWidget : listWidget) {
        QVERIFY(pWidget->inherits(baClass.constData()));
    }
}

void tst_CSelFileWidget::Layouts_data()
{
    QTest::addColumn<QByteArray>("baClass");
    for (const char* pName : {"verticalLayout_6", "verticalLayout_3", "verticalLayout_4", "verticalLayout",
                              "verticalLayout_9", "verticalLayout_7", "verticalLayout_5", "verticalLayout_10",
                              "verticalLayout_2", "verticalLayout_8"}) {
        QTest::newRow(pName) << QByteArray("QVBoxLayout");
    }
    for (const char* pName :
         {"horizontalLayout_3", "horizontalLayout", "horizontalLayout_5", "horizontalLayout_4"}) {
        QTest::newRow(pName) << QByteArray("QHBoxLayout");
    }
    QTest::newRow("gridLayout") << QByteArray("QGridLayout");
}

void tst_CSelFileWidget::Layouts()
{
    MakePage();
    QFETCH(QByteArray, baClass);
    const auto* pLayout = m_pPage->findChild<QLayout*>(QLatin1String(QTest::currentDataTag()));
    QVERIFY(pLayout);
    QCOMPARE(QByteArray(pLayout->metaObject()->className()), baClass);
}

void tst_CSelFileWidget::BothSidesStandOnOneGrid()
{
    MakePage();
    const QList<QWidget*> listSide = m_pPage->findChildren<QWidget*>(QStringLiteral("driveWidget"));
    QCOMPARE(listSide.size(), 2);
    const QRect rectSource(listSide.at(0)->mapTo(m_pPage, QPoint()), listSide.at(0)->size());
    const QRect rectTarget(listSide.at(1)->mapTo(m_pPage, QPoint()), listSide.at(1)->size());
    QCOMPARE(rectSource.top(), rectTarget.top());
    QCOMPARE(rectSource.bottom(), rectTarget.bottom());
    QCOMPARE(rectSource.left(), m_pPage->width() - 1 - rectTarget.right());

    const QLabel* pTick = Label("m_pCopyLab");
    QCOMPARE(pTick->size(), QSize(88, 33));
    const QPoint ptTick = pTick->mapTo(m_pPage, QPoint());
    QCOMPARE(ptTick.x() - rectSource.right(), rectTarget.left() - (ptTick.x() + 88 - 1));
    QVERIFY(qAbs(QRect(ptTick, pTick->size()).center().y() - rectSource.center().y()) <= 1);

    QCOMPARE(Label("m_pSrcLab")->mapTo(m_pPage, QPoint()).x(), rectSource.left());
    QCOMPARE(Label("m_pDstLab")->mapTo(m_pPage, QPoint()).x(), rectTarget.left());
    QCOMPARE(CopyBtn()->size(), QSize(120, 32));
    QCOMPARE(CopyBtn()->mapTo(m_pPage, QPoint(119, 0)).x(), rectTarget.right());
    QVERIFY(CopyBtn()->mapTo(m_pPage, QPoint(0, 31)).y() < m_pPage->height());
}

void tst_CSelFileWidget::NothingMovesWhenADiskGoesOrHasALongName()
{
    NEEDS_SOURCE();
    MakePage();
    const QMap<QString, QRect> mapEmpty = Geometries();
    QVERIFY(mapEmpty.size() > 15);
    for (const QString& strName : {QStringLiteral("A"), QString(200, QLatin1Char('W'))}) {
        const CVolume stick(strName, QStringLiteral("/dev/sdb1"), 2);
        m_pPage->AddDisk(QFileInfo(stick.Path()));
        m_pPage->OnRefreshUSB();
        QCOMPARE(m_pPage->GetUsbName(), strName);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(Geometries(), mapEmpty);
        m_pPage->RemoveDisk(stick.Path());
    }
}

void tst_CSelFileWidget::ListHasItsSizeAndIsAPopup()
{
    MakePage();
    QCOMPARE(List()->minimumSize(), QSize(332, 180));
    QCOMPARE(List()->maximumSize(), QSize(332, 180));
    QCOMPARE(List()->windowType(), Qt::Popup);
    QVERIFY(!List()->isVisible());
}

void tst_CSelFileWidget::RefreshAnimationShowsItsFirstFrame()
{
    MakePage();
    const QMovie* pMovie = RefreshLabel()->movie();
    QVERIFY(pMovie);
    QCOMPARE(pMovie->fileName(), QStringLiteral(":/res/Gif/refalsh.gif"));
    QCOMPARE(pMovie->state(), QMovie::NotRunning);
    QCOMPARE(pMovie->currentFrameNumber(), 0);
    QVERIFY(!pMovie->currentPixmap().isNull());
}

void tst_CSelFileWidget::FontsComeFromTheSkin()
{
    MakePage();
    for (const char* pName : {"m_pSrcLab", "m_pDstLab", "m_pMacTitleLab", "m_pUSBTitleLab", "bottomLab"}) {
        QCOMPARE(Label(pName)->font().family(), QStringLiteral("Avenir"));
        QVERIFY(Label(pName)->styleSheet().contains(QStringLiteral("color:rgb(")));
    }
    QCOMPARE(CopyBtn()->font().family(), QStringLiteral("Avenir"));
    QCOMPARE(List()->font().family(), QStringLiteral("Avenir"));
    QCOMPARE(CopyBtn()->text(), QStringLiteral("Copy"));
    QVERIFY(!CopyBtn()->isEnabled());
}

// ---------------------------------------------------------------- pure texts

void tst_CSelFileWidget::GigabyteText_data()
{
    QTest::addColumn<qint64>("nBytes");
    QTest::addColumn<QString>("strText");
    QTest::newRow("nothing") << qint64(0) << QStringLiteral("0.00");
    QTest::newRow("invalid volume") << qint64(-1) << QStringLiteral("0.00");
    QTest::newRow("stick, total") << qint64(15931539456) << QStringLiteral("15.93");
    QTest::newRow("stick, free") << qint64(15900000000) << QStringLiteral("15.90");
    QTest::newRow("decimal, not binary") << qint64(1073741824) << QStringLiteral("1.07");
    QTest::newRow("one") << qint64(1000000000) << QStringLiteral("1.00");
    QTest::newRow("rounded up") << qint64(4999999999) << QStringLiteral("5.00");
    QTest::newRow("below a hundredth") << qint64(4000000) << QStringLiteral("0.00");
    QTest::newRow("half a hundredth up") << qint64(5500000) << QStringLiteral("0.01");
    // In double precision this one would read 0.01.
    QTest::newRow("single precision, down") << qint64(5000000) << QStringLiteral("0.00");
    QTest::newRow("single precision, terabytes") << qint64(2000398934016) << QStringLiteral("2000.40");
    QTest::newRow("largest") << std::numeric_limits<qint64>::max() << QStringLiteral("9223371776.00");
}

void tst_CSelFileWidget::GigabyteText()
{
    QFETCH(qint64, nBytes);
    QTEST(CDiskSpace::GigabyteText(nBytes), "strText");
}

void tst_CSelFileWidget::DestinationFolder_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QDateTime>("time");
    QTest::addColumn<QString>("strFolder");
    QTest::newRow("afternoon, two blanks on either side of at")
        << QStringLiteral("/Volumes/STICK") << QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9))
        << QStringLiteral("/Volumes/STICK/Tarnwick 2026-11-16  at  14.05.09");
    QTest::newRow("leading zeros") << QStringLiteral("/Volumes/A")
                                   << QDateTime(QDate(2027, 1, 2), QTime(3, 4, 5, 999))
                                   << QStringLiteral("/Volumes/A/Tarnwick 2027-01-02  at  03.04.05");
    QTest::newRow("name with place markers")
        << QStringLiteral("/Volumes/%2 %1 %5") << QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59))
        << QStringLiteral("/Volumes/%2 %1 %5/Tarnwick 2026-12-31  at  23.59.59");
}

void tst_CSelFileWidget::DestinationFolder()
{
    QFETCH(QString, strPath);
    QFETCH(QDateTime, time);
    QTEST(CSelFileWidget::DestinationFolder(strPath, time), "strFolder");
}

// ---------------------------------------------------------------- disks

void tst_CSelFileWidget::Bus_data()
{
    QTest::addColumn<QString>("strBody");
    QTest::addColumn<bool>("bDestination");
    const QString strPList
        = QStringLiteral("printf '<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>%1</dict></plist>'");
    const QString strBus = QStringLiteral("<key>BusProtocol</key><string>%1</string>");
    QTest::newRow("USB") << strPList.arg(strBus.arg(QStringLiteral("USB"))) << true;
    QTest::newRow("usb in small letters") << strPList.arg(strBus.arg(QStringLiteral("usb"))) << false;
    QTest::newRow("SATA") << strPList.arg(strBus.arg(QStringLiteral("SATA"))) << false;
    QTest::newRow("empty value") << strPList.arg(strBus.arg(QString())) << false;
    QTest::newRow("key missing") << strPList.arg(QString()) << false;
    QTest::newRow("junk") << QStringLiteral("echo junk") << false;
    QTest::newRow("nothing printed, failed") << QStringLiteral("exit 1") << false;
    QTest::newRow("USB printed, failed")
        << strPList.arg(strBus.arg(QStringLiteral("USB"))) + QStringLiteral("\nexit 3") << true;
}

void tst_CSelFileWidget::Bus()
{
    NEEDS_SOURCE();
    QFETCH(QString, strBody);
    QFETCH(bool, bDestination);
    m_pCommands->Add(QStringLiteral("diskutil"), strBody);
    MakePage();
    const QString strName = QStringLiteral("Macintosh HD");
    QCOMPARE(Listed(), bDestination ? QStringList{strName} : QStringList());
    QCOMPARE(CPageTree::Roots(), bDestination ? QStringList() : QStringList{m_pSource->Path()});
}

void tst_CSelFileWidget::OwnMediumIsNeitherSourceNorDestination()
{
    NEEDS_SOURCE();
    const QByteArray baOwn = QStorageInfo(QCoreApplication::applicationDirPath()).device();
    const CVolume own(QStringLiteral("OWN"), QFile::decodeName(baOwn), 2);
    m_pCommands->Add(
        QStringLiteral("diskutil"),
        QStringLiteral("printf '<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>BusProtocol</key>"
                       "<string>USB</string></dict></plist>'"));
    m_pSource->Pull(true);
    MakePage();
    QVERIFY(CommandAsks(QFile::decodeName(baOwn)));
    QCOMPARE(Listed(), QStringList());
    QCOMPARE(CPageTree::Roots(), QStringList());
    QCOMPARE(m_pPage->GetUsbName(), PROMPT);
    m_pSource
        = std::make_unique<CVolume>(QStringLiteral("Macintosh HD"), QStringLiteral("/dev/nvme0n1p1"), 2);
}

void tst_CSelFileWidget::SourcesBecomeRootsOnce()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    QCOMPARE(CPageTree::Roots(), QStringList{m_pSource->Path()});
    const CVolume late(QStringLiteral("Late"), QStringLiteral("/dev/nvme1n1"), 2);
    m_pPage->SlotRefreshUSB();
    QCOMPARE(CPageTree::Roots(), QStringList{m_pSource->Path()});
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::WithoutDiskThePromptStands()
{
    MakePage();
    QCOMPARE(Listed(), QStringList());
    QCOMPARE(m_pPage->GetUsbName(), PROMPT);
    QCOMPARE(m_pPage->GetUsbPath(), QString());
    QCOMPARE(Label("bottomLab")->text(), PROMPT);
    QVERIFY(SamePicture(Label("m_pUSBPicLab"), ":/res/Label/usb_unselect.png"));
    QVERIFY(!CopyBtn()->isEnabled());
}

void tst_CSelFileWidget::WithADiskItsSpaceStands()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 100);
    WriteFile(stick.Path(QStringLiteral("used")), 20 * 1024 * 1024);
    MakePage();
    QCOMPARE(m_pPage->GetUsbName(), QStringLiteral("STICK"));
    QCOMPARE(m_pPage->GetUsbPath(), stick.Path());
    QCOMPARE(Label("bottomLab")->text(),
             QStringLiteral("<span style=\"color:#ff7e17;\">0.08GB</span> Available, "
                            "<span style=\"color:#ff7e17;\">0.10GB</span> Total"));
    QVERIFY(SamePicture(Label("m_pUSBPicLab"), ":/res/Label/usb_select.png"));
}

void tst_CSelFileWidget::RebuildWritesItsNames()
{
    NEEDS_SOURCE();
    MakePage();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    const CLogCapture capture;
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    m_pPage->AddDisk(QFileInfo(QStringLiteral("/Volumes/gone")));
    m_pPage->OnRefreshUSB();
    QCOMPARE(capture.Lines(),
             (QStringList{QStringLiteral("STICK"), QStringLiteral("gone"),
                          QStringLiteral("FFFFFFFFFFFFFFFFFFF (\"STICK\", \"gone\")")}));
}

void tst_CSelFileWidget::FirstDiskIsChosenAfterEachRebuild()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 2);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 50);
    MakePage();
    const QStringList listName = InFolderOrder({QStringLiteral("ONE"), QStringLiteral("TWO")});
    QCOMPARE(Listed(), listName);
    QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
    Choose(listName.at(1));
    QCOMPARE(m_pPage->GetUsbName(), listName.at(1));
    m_pPage->OnRefreshUSB();
    QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
    Choose(listName.at(1));
    m_pPage->SlotRefreshUSB();
    QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
}

void tst_CSelFileWidget::TwoAppearancesListTwiceAndOneRemovalTakesBoth()
{
    NEEDS_SOURCE();
    MakePage();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    m_pPage->OnRefreshUSB();
    QCOMPARE(Listed(), (QStringList{QStringLiteral("STICK"), QStringLiteral("STICK")}));
    m_pPage->RemoveDisk(stick.Path());
    m_pPage->OnRefreshUSB();
    QCOMPARE(Listed(), QStringList());
}

void tst_CSelFileWidget::RemovalOfAnUnknownPathChangesNothing_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::newRow("placeholder") << QStringLiteral("USB");
    QTest::newRow("other case") << QStringLiteral("/Volumes/stick");
    QTest::newRow("name only") << QStringLiteral("STICK");
    QTest::newRow("beginning only") << QStringLiteral("/Volumes/STIC");
    QTest::newRow("empty") << QString();
}

void tst_CSelFileWidget::RemovalOfAnUnknownPathChangesNothing()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    QFETCH(QString, strPath);
    m_pPage->RemoveDisk(strPath);
    m_pPage->OnRefreshUSB();
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::RemovedChoiceGivesWayToTheNextDisk()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 2);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 2);
    MakePage();
    Choose(QStringLiteral("TWO"));
    m_pPage->RemoveDisk(two.Path());
    m_pPage->OnRefreshUSB();
    QCOMPARE(m_pPage->GetUsbPath(), one.Path());
    m_pPage->RemoveDisk(one.Path());
    m_pPage->OnRefreshUSB();
    QCOMPARE(m_pPage->GetUsbPath(), QString());
    QCOMPARE(m_pPage->GetUsbName(), PROMPT);
}

void tst_CSelFileWidget::PathFollowsTheTitle()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 2);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 2);
    MakePage();
    Choose(QStringLiteral("ONE"));
    QCOMPARE(m_pPage->GetUsbPath(), one.Path());
    Choose(QStringLiteral("TWO"));
    QCOMPARE(m_pPage->GetUsbPath(), two.Path());
    Label("m_pUSBTitleLab")->setText(PROMPT);
    QCOMPARE(m_pPage->GetUsbPath(), QString());
}

void tst_CSelFileWidget::NamesAreText_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("marks") << QStringLiteral("<b>bold<!b>");
    QTest::newRow("place markers") << QStringLiteral("%1 %2 %99");
    QTest::newRow("line break") << QStringLiteral("two\nlines");
    QTest::newRow("blank at the end") << QStringLiteral("blank ");
    QTest::newRow("leading dash") << QStringLiteral("-rf");
    QTest::newRow("another script") << QStringLiteral("\u5099\u4efd \u0424\u043b\u0435\u0448\u043a\u0430");
    QTest::newRow("the prompt itself") << PROMPT;
}

void tst_CSelFileWidget::NamesAreText()
{
    NEEDS_SOURCE();
    QFETCH(QString, strName);
    const CVolume stick(strName, QStringLiteral("/dev/sdb1"), 2);
    QVERIFY(stick.IsValid());
    MakePage();
    QCOMPARE(Listed(), QStringList{strName});
    QCOMPARE(m_pPage->GetUsbName(), strName);
    QCOMPARE(m_pPage->GetUsbPath(), stick.Path());
    QCOMPARE(Label("m_pUSBTitleLab")->textFormat(), Qt::PlainText);
    QCOMPARE(List()->item(0)->toolTip(), QStringLiteral("<p>%1</p>").arg(strName.toHtmlEscaped()));
    QVERIFY(LogLines().contains(QStringLiteral("diskName: ") + strName.split(QLatin1Char('\n')).first()));
}

// ---------------------------------------------------------------- rescans on the pool

void tst_CSelFileWidget::RescanOnThePoolWorksOnThisThread()
{
    NEEDS_SOURCE();
    MakePage();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    QStringList listSeen;
    int nEnds = 0;
    connect(
        m_pPage, &CSelFileWidget::SignalStopMovie, this,
        [this, &listSeen, &nEnds]() {
            QCOMPARE(QThread::currentThread(), qApp->thread());
            listSeen = Listed();
            ++nEnds;
        },
        Qt::DirectConnection);
    const QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    // No step is done before this thread comes to it.
    QVERIFY(WaitAside([&rescan]() { return rescan.isFinished(); }));
    QCOMPARE(nEnds, 0);
    QCOMPARE(Listed(), QStringList());
    QTRY_COMPARE(nEnds, 1);
    QCOMPARE(listSeen, QStringList{QStringLiteral("STICK")});
    disconnect(m_pPage, &CSelFileWidget::SignalStopMovie, this, nullptr);
}

void tst_CSelFileWidget::RefreshClickTurnsTheAnimation()
{
    NEEDS_SOURCE();
    MakePage();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QCOMPARE(RefreshLabel()->movie()->state(), QMovie::Running);
    QTRY_COMPARE(RefreshLabel()->movie()->state(), QMovie::NotRunning);
    QCOMPARE(RefreshLabel()->movie()->currentFrameNumber(), 0);
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::TwoClicksListOnce()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    CGate gate;
    FakeDiskutil(gate.Wait());
    const int nCallsBefore = m_pCommands->Calls(QStringLiteral("diskutil")).size();
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QTRY_VERIFY(m_pCommands->Calls(QStringLiteral("diskutil")).size() > nCallsBefore);
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    // The first one gives up by itself; the animation goes on for the second.
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(RefreshLabel()->movie()->state(), QMovie::Running);
    gate.Open(8);
    QTRY_COMPARE(spyEnd.count(), 2);
    QTRY_COMPARE(RefreshLabel()->movie()->state(), QMovie::NotRunning);
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::RescanHereReplacesOneThatHangs()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    const CGate gate;
    FakeDiskutil(gate.Wait());
    const int nCallsBefore = m_pCommands->Calls(QStringLiteral("diskutil")).size();
    QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    QVERIFY(WaitAside([this, nCallsBefore]() {
        return m_pCommands->Calls(QStringLiteral("diskutil")).size() > nCallsBefore;
    }));
    FakeDiskutil();
    m_pPage->SlotRefreshUSB();
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
    rescan.waitForFinished();
    QCoreApplication::processEvents();
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
    QCOMPARE(m_pPage->GetUsbPath(), stick.Path());
}

void tst_CSelFileWidget::ArrivalDuringARescanIsListedOnce()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    CGate gate;
    FakeDiskutil(gate.Wait());
    const int nCallsBefore = m_pCommands->Calls(QStringLiteral("diskutil")).size();
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QTRY_VERIFY(m_pCommands->Calls(QStringLiteral("diskutil")).size() > nCallsBefore);
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    gate.Open(1);
    // The first volume has been told of when the command is asked for the second.
    QTRY_COMPARE(m_pCommands->Calls(QStringLiteral("diskutil")).size(), nCallsBefore + 2);
    QCoreApplication::processEvents();
    m_pPage->OnRefreshUSB();
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
    // Two events more come when the search has told of the stick already.
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    gate.Open(4);
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::ArrivalBeforeTheFirstStepIsKept()
{
    NEEDS_SOURCE();
    MakePage();
    CGate gate;
    FakeDiskutil(gate.Wait());
    const int nCallsBefore = m_pCommands->Calls(QStringLiteral("diskutil")).size();
    QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    QVERIFY(WaitAside([this, nCallsBefore]() {
        return m_pCommands->Calls(QStringLiteral("diskutil")).size() > nCallsBefore;
    }));
    // The folder has been listed and the list of disks has not been cleared yet.
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    gate.Open(4);
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
    rescan.waitForFinished();
}

void tst_CSelFileWidget::RemovalDuringARescanHolds()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    const QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    QVERIFY(WaitAside([&rescan]() { return rescan.isFinished(); }));
    // It has been found, and this thread has not heard of it yet.
    m_pPage->RemoveDisk(stick.Path());
    m_pPage->OnRefreshUSB();
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(Listed(), QStringList());
    // The next search believes its eyes again.
    m_pPage->SlotRefreshUSB();
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::ReturnDuringARescanHolds()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    const QFuture<void> rescan = QtConcurrent::run(m_pPage, &CSelFileWidget::SlotRefreshUSB);
    QVERIFY(WaitAside([&rescan]() { return rescan.isFinished(); }));
    m_pPage->RemoveDisk(stick.Path());
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTRY_COMPARE(spyEnd.count(), 1);
    QCOMPARE(Listed(), QStringList{QStringLiteral("STICK")});
}

void tst_CSelFileWidget::CopyWaitsForTheEndOfARescan()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    QVERIFY(TickFile());
    QVERIFY(CopyBtn()->isEnabled());
    CGate gate;
    FakeDiskutil(gate.Wait());
    QSignalSpy spyEnd(m_pPage, &CSelFileWidget::SignalStopMovie);
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QTRY_VERIFY(!CopyBtn()->isEnabled());
    gate.Open(4);
    QTRY_COMPARE(spyEnd.count(), 1);
    QVERIFY(CopyBtn()->isEnabled());
}

void tst_CSelFileWidget::PageGoesWhileTheCommandHangs()
{
    NEEDS_SOURCE();
    MakePage();
    const CGate gate;
    FakeDiskutil(QStringLiteral("echo $$ >\"$CALLS/pid\"\n") + gate.Wait());
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QTRY_VERIFY(!m_pCommands->Written(QStringLiteral("pid")).isEmpty());
    QElapsedTimer timer;
    timer.start();
    m_pHost.reset();
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    const QByteArray baPid = m_pCommands->Written(QStringLiteral("pid")).trimmed();
    QVERIFY(!QFileInfo::exists(QStringLiteral("/proc/") + QString::fromLatin1(baPid)));
}

// ---------------------------------------------------------------- the user's choices

void tst_CSelFileWidget::TickAndDiskEnableCopy_data()
{
    QTest::addColumn<bool>("bTick");
    QTest::addColumn<bool>("bDisk");
    QTest::newRow("nothing ticked, no disk") << false << false;
    QTest::newRow("nothing ticked, disk") << false << true;
    QTest::newRow("ticked, no disk") << true << false;
    QTest::newRow("ticked, disk") << true << true;
}

void tst_CSelFileWidget::TickAndDiskEnableCopy()
{
    NEEDS_SOURCE();
    QFETCH(bool, bTick);
    QFETCH(bool, bDisk);
    MakePage();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    if (bDisk) {
        m_pPage->AddDisk(QFileInfo(stick.Path()));
        m_pPage->OnRefreshUSB();
    }
    // Ticked first in any case, so that "nothing ticked" is the state after unticking everything.
    QVERIFY(TickFile());
    if (!bTick) {
        QVERIFY(CPageTree::Tick(m_pSource->Path(QStringLiteral("docs/a.txt")), Qt::Unchecked));
        m_pPage->SlotCheckFileSelected();
    }
    QVERIFY(SamePicture(Label("m_pCopyLab"), bTick ? ":/res/Label/allow.png" : ":/res/Label/allow_deft.png"));
    QCOMPARE(CopyBtn()->isEnabled(), bTick && bDisk);
    m_pPage->OnRefreshUSB();
    QCOMPARE(CopyBtn()->isEnabled(), bTick && bDisk);
}

/** Where each part of the page stands, by the names that lead to it. */
static QMap<QString, QRect> Places(const QWidget& page)
{
    QMap<QString, QRect> mapPlace;
    const QList<QWidget*> listWidget = page.findChildren<QWidget*>();
    for (const QWidget* pWidget : listWidget) {
        if (!pWidget->isWindow() && pWidget->window() == page.window()) {
            mapPlace.insert(
                QStringLiteral("%1 %2").arg(QString::number(mapPlace.size()), pWidget->objectName()),
                QRect(pWidget->mapTo(&page, QPoint(0, 0)), pWidget->size()));
        }
    }
    return mapPlace;
}

void tst_CSelFileWidget::NothingMovesWhenADiskComesOrGoes()
{
    MakePage();
    m_pPage->grab();
    const QMap<QString, QRect> mapBefore = Places(*m_pPage);
    QVERIFY(mapBefore.size() > 12);
    for (const QString& strName : {QStringLiteral("A"), QString(200, QLatin1Char('W'))}) {
        m_pPage->AddDisk(QFileInfo(QStringLiteral("/Volumes/") + strName));
        m_pPage->OnRefreshUSB();
        m_pPage->grab();
        QCOMPARE(m_pPage->GetUsbName(), strName);
        QCOMPARE(Places(*m_pPage), mapBefore);
        m_pPage->RemoveDisk(QStringLiteral("/Volumes/") + strName);
        m_pPage->OnRefreshUSB();
        m_pPage->grab();
        QCOMPARE(Places(*m_pPage), mapBefore);
    }
}

void tst_CSelFileWidget::ListOpensOverItsAnchor()
{
    MakePage();
    const auto* pAnchor = m_pPage->findChild<QFrame*>(QStringLiteral("m_pUSBPicFrame"));
    m_pPage->SlotShowListWidget();
    QVERIFY(List()->isVisible());
    QCOMPARE(List()->pos(), pAnchor->mapToGlobal(QPoint(1, 0)));
    QCOMPARE(pAnchor->width(), List()->width() + 2);
    QVERIFY(pAnchor->height() >= List()->height());
    // The pointer is the list's now: the button must not stay lit.
    List()->hide();
    auto* pDrop = m_pPage->findChild<QWidget*>(QStringLiteral("m_pDropBtn"));
    pDrop->setAttribute(Qt::WA_UnderMouse);
    m_pPage->SlotShowListWidget();
    QVERIFY(!pDrop->underMouse());
}

void tst_CSelFileWidget::ListMarksTheChosenDisk()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 2);
    const CVolume two(QStringLiteral("one"), QStringLiteral("/dev/sdc1"), 2);
    MakePage();
    for (const QString& strName : {QStringLiteral("ONE"), QStringLiteral("one")}) {
        Choose(strName);
        m_pPage->SlotShowListWidget();
        QVERIFY(List()->currentItem());
        QCOMPARE(List()->currentItem()->text(), strName);
        QVERIFY(List()->currentItem()->isSelected());
        // The entry under the pointer has the same ground, so the letters tell.
        for (int i = 0; i < List()->count(); ++i) {
            QCOMPARE(List()->item(i)->font().bold(), List()->item(i)->text() == strName);
        }
        List()->hide();
    }
}

void tst_CSelFileWidget::EitherClickOpensTheList_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("title") << QStringLiteral("m_pUSBTitleLab");
    QTest::newRow("button") << QStringLiteral("m_pDropBtn");
}

void tst_CSelFileWidget::EitherClickOpensTheList()
{
    QFETCH(QString, strName);
    MakePage();
    QTest::mouseClick(m_pPage->findChild<QWidget*>(strName), Qt::LeftButton);
    QVERIFY(List()->isVisible());
}

void tst_CSelFileWidget::ClickLeavesTheFocusWhereItIs()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    auto* pTree = m_pPage->findChild<QWidget*>(QStringLiteral("m_pFileTree"));
    m_pPage->window()->activateWindow();
    pTree->setFocus();
    QTRY_VERIFY(pTree->hasFocus());
    QTest::mouseClick(m_pPage->findChild<QWidget*>(QStringLiteral("m_pDropBtn")), Qt::LeftButton);
    QVERIFY(List()->isVisible());
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      List()->visualItemRect(List()->item(0)).center());
    QVERIFY(!List()->isVisible());
    // A mark of the focus that nobody has moved by keys would only puzzle.
    QTRY_VERIFY(pTree->hasFocus());
}

void tst_CSelFileWidget::ClickElsewhereClosesTheList_data()
{
    EitherClickOpensTheList_data();
    QTest::newRow("tree") << QStringLiteral("m_pFileTree");
}

void tst_CSelFileWidget::ClickElsewhereClosesTheList()
{
    QFETCH(QString, strName);
    MakePage();
    QWidget* pWindow = m_pPage->window();
    QVERIFY(QTest::qWaitForWindowExposed(pWindow));
    m_pPage->SlotShowListWidget();
    QVERIFY(List()->isVisible());
    const auto* pWidget = m_pPage->findChild<QWidget*>(strName);
    // Through the window, as from the window system: a popup comes first there.
    QTest::mouseClick(pWindow->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      pWidget->mapTo(pWindow, pWidget->rect().center()));
    QCoreApplication::processEvents();
    QVERIFY(!List()->isVisible());
    m_pPage->SlotShowListWidget();
    QVERIFY(List()->isVisible());
}

void tst_CSelFileWidget::ChoosingADiskLeavesPictureAndCopy()
{
    NEEDS_SOURCE();
    const CVolume small(QStringLiteral("SMALL"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume large(QStringLiteral("LARGE"), QStringLiteral("/dev/sdc1"), 1000);
    MakePage();
    QVERIFY(CPageTree::Tick(m_pSource->Path(QStringLiteral("docs/a.txt")))); // not told to the page
    m_pPage->SlotShowListWidget();
    Label("m_pUSBPicLab")->clear();
    const QList<QListWidgetItem*> listItem = List()->findItems(QStringLiteral("LARGE"), Qt::MatchExactly);
    QCOMPARE(listItem.size(), 1);
    QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      List()->visualItemRect(listItem.at(0)).center());
    QCOMPARE(m_pPage->GetUsbName(), QStringLiteral("LARGE"));
    QVERIFY(!List()->isVisible());
    QVERIFY(Label("bottomLab")->text().contains(QStringLiteral(">1.05GB</span> Total")));
    QVERIFY(Label("m_pUSBPicLab")->pixmap(Qt::ReturnByValue).isNull());
    QVERIFY(!CopyBtn()->isEnabled());
}

void tst_CSelFileWidget::ChoosingADiskThatIsGoneShowsThePrompt()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 2);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 2);
    MakePage();
    m_pPage->RemoveDisk(two.Path());
    Choose(QStringLiteral("TWO"));
    QCOMPARE(m_pPage->GetUsbName(), QStringLiteral("TWO"));
    QCOMPARE(Label("bottomLab")->text(), PROMPT);
}

// ---------------------------------------------------------------- from Copy to the start of the copy

static QString Heard(QObject* pObject, QAccessible::Text enText = QAccessible::Name)
{
    return QAccessible::queryAccessibleInterface(pObject)->text(enText);
}

void tst_CSelFileWidget::ReadersHearEachControl_data()
{
    QTest::addColumn<QString>("strObject");
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QAccessible::Role>("enRole");
    const auto row = [](const char* pObject, const char* pName, QAccessible::Role enRole) {
        QTest::newRow(pObject) << QString::fromLatin1(pObject) << QString::fromLatin1(pName) << enRole;
    };
    row("m_pFileTree", "Select File to Copy", QAccessible::Tree);
    row("m_pDropBtn", "Select Destination Disk", QAccessible::ComboBox);
    row("RefreshLab", "Refresh List of Disks", QAccessible::PushButton);
    row("toolBtn", "Copy", QAccessible::PushButton);
    row("m_pUSBTitleLab", "Select Destination Disk:", QAccessible::StaticText);
    row("m_pCopyLab", "No files selected", QAccessible::Graphic);
}

void tst_CSelFileWidget::ReadersHearEachControl()
{
    QFETCH(QString, strObject);
    QFETCH(QAccessible::Role, enRole);
    MakePage();
    auto* pWidget = m_pPage->findChild<QWidget*>(strObject);
    QTEST(Heard(pWidget), "strName");
    QCOMPARE(QAccessible::queryAccessibleInterface(pWidget)->role(), enRole);
}

void tst_CSelFileWidget::ReadersHearTheDisk()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("<b>ONE"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 1000);
    MakePage();
    auto* pDrop = m_pPage->findChild<QPushButton*>(QStringLiteral("m_pDropBtn"));
    for (const QString& strName : {QStringLiteral("<b>ONE"), QStringLiteral("TWO")}) {
        Choose(strName);
        QCOMPARE(Heard(pDrop, QAccessible::Description), strName);
        QCOMPARE(Heard(Label("m_pUSBTitleLab")), strName);
    }
    QVERIFY(Heard(Label("bottomLab")).endsWith(QStringLiteral("1.05GB Total")));
    QVERIFY(!Heard(Label("bottomLab")).contains(QLatin1Char('<')));
    QCOMPARE(Heard(List()), QStringLiteral("Select Destination Disk"));
    m_pPage->RemoveDisk(one.Path());
    m_pPage->RemoveDisk(two.Path());
    m_pPage->OnRefreshUSB();
    QCOMPARE(Heard(pDrop, QAccessible::Description), QString());
}

void tst_CSelFileWidget::ReadersHearWhetherFilesAreTicked()
{
    NEEDS_SOURCE();
    MakePage();
    QVERIFY(TickFile());
    QCOMPARE(Heard(Label("m_pCopyLab")), QStringLiteral("Files selected"));
    QVERIFY(CPageTree::Tick(m_pSource->Path(QStringLiteral("docs/a.txt")), Qt::Unchecked));
    m_pPage->SlotCheckFileSelected();
    QCOMPARE(Heard(Label("m_pCopyLab")), QStringLiteral("No files selected"));
}

void tst_CSelFileWidget::ReadersPassOverDecoration()
{
    MakePage();
    const QList<QLabel*> listLine = m_pPage->findChildren<QLabel*>(QStringLiteral("m_pLineLab"));
    QCOMPARE(listLine.size(), 2);
    for (QLabel* pLabel : listLine + QList<QLabel*>{Label("m_pUSBPicLab")}) {
        QVERIFY(pLabel->isVisible());
        QVERIFY(QAccessible::queryAccessibleInterface(pLabel)->state().invisible);
    }
    QVERIFY(!QAccessible::queryAccessibleInterface(Label("m_pCopyLab"))->state().invisible);
}

bool tst_CSelFileWidget::Activate() const
{
    m_pHost->activateWindow();
    return QTest::qWaitForWindowActive(m_pHost.get());
}

void tst_CSelFileWidget::TabGoesByTheEye()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(Activate());
    QVERIFY(TickFile());
    m_pPage->setFocus();
    const QList<QWidget*> listStop{m_pPage->findChild<CFileTreeView*>(),
                                   m_pPage->findChild<QPushButton*>(QStringLiteral("m_pDropBtn")),
                                   RefreshLabel(), CopyBtn()};
    for (QWidget* pStop : listStop) {
        QCOMPARE(QApplication::focusWidget(), pStop);
        QTest::keyClick(pStop, Qt::Key_Tab);
    }
    QCOMPARE(QApplication::focusWidget(), listStop.first());
    for (int n = listStop.size() - 1; n >= 0; --n) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), listStop.at(n));
    }
}

void tst_CSelFileWidget::SpaceInTheTreeEnablesCopy()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(Activate());
    m_pPage->setFocus();
    auto* pTree = m_pPage->findChild<CFileTreeView*>();
    QTest::keyClick(pTree, Qt::Key_Space);
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(SamePicture(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    QTest::keyClick(pTree, Qt::Key_Space);
    QVERIFY(!CopyBtn()->isEnabled());
    QVERIFY(SamePicture(Label("m_pCopyLab"), ":/res/Label/allow_deft.png"));
}

void tst_CSelFileWidget::RefreshAnswersKeys_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Return") << Qt::Key_Return;
}

void tst_CSelFileWidget::RefreshAnswersKeys()
{
    QFETCH(Qt::Key, key);
    MakePage();
    QVERIFY(Activate());
    RefreshLabel()->setFocus();
    const int nCalls = m_pCommands->Calls(QStringLiteral("diskutil")).size();
    QTest::keyClick(RefreshLabel(), key);
    QCOMPARE(RefreshLabel()->movie()->state(), QMovie::Running);
    QTRY_COMPARE(RefreshLabel()->movie()->state(), QMovie::NotRunning);
    QVERIFY(m_pCommands->Calls(QStringLiteral("diskutil")).size() > nCalls);
    QVERIFY(RefreshLabel()->hasFocus());
}

void tst_CSelFileWidget::DiskIsChosenByKeys()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 1000);
    MakePage();
    QVERIFY(Activate());
    auto* pDrop = m_pPage->findChild<QPushButton*>(QStringLiteral("m_pDropBtn"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        m_pPage->OnRefreshUSB();
        const QString strFirst = List()->item(0)->text();
        const QString strSecond = List()->item(1)->text();
        QCOMPARE(m_pPage->GetUsbName(), strFirst);
        pDrop->setFocus();
        QTest::keyClick(pDrop, Qt::Key_Down, Qt::AltModifier);
        QVERIFY(List()->isVisible());
        QVERIFY(List()->hasFocus());
        QCOMPARE(List()->currentItem()->text(), strFirst);
        QTest::keyClick(List(), Qt::Key_Down);
        QTest::keyClick(List(), key);
        QCOMPARE(m_pPage->GetUsbName(), strSecond);
        QVERIFY(Label("bottomLab")
                    ->text()
                    .contains(strSecond == QLatin1String("TWO") ? QStringLiteral(">1.05GB</span> Total")
                                                                : QStringLiteral(">0.01GB</span> Total")));
        QVERIFY(!List()->isVisible());
        QVERIFY(pDrop->hasFocus());
    }
}

void tst_CSelFileWidget::EscapeLeavesTheDisk()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 10);
    MakePage();
    QVERIFY(Activate());
    const QString strBefore = m_pPage->GetUsbName();
    auto* pDrop = m_pPage->findChild<QPushButton*>(QStringLiteral("m_pDropBtn"));
    pDrop->setFocus();
    QTest::keyClick(pDrop, Qt::Key_Space);
    QVERIFY(List()->isVisible());
    QTest::keyClick(List(), Qt::Key_Down);
    QTest::keyClick(List(), Qt::Key_Escape);
    QVERIFY(!List()->isVisible());
    QCOMPARE(m_pPage->GetUsbName(), strBefore);
    QVERIFY(pDrop->hasFocus());
}

void tst_CSelFileWidget::EmptyListOpensAndClosesByKeys()
{
    MakePage();
    QVERIFY(Activate());
    auto* pDrop = m_pPage->findChild<QPushButton*>(QStringLiteral("m_pDropBtn"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
        pDrop->setFocus();
        QTest::keyClick(pDrop, Qt::Key_Down);
        QVERIFY(List()->isVisible());
        QTest::keyClick(List(), Qt::Key_Down);
        QTest::keyClick(List(), key);
        QVERIFY(!List()->isVisible());
        QVERIFY(pDrop->hasFocus());
        QCOMPARE(m_pPage->GetUsbName(), PROMPT);
    }
}

void tst_CSelFileWidget::CopyThatIsDisabledGivesTheFocusToTheTree()
{
    NEEDS_SOURCE();
    CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QPushButton next(m_pHost.get()); // which the focus would go to by itself
    next.show();
    QVERIFY(Activate());
    QVERIFY(TickFile());
    CopyBtn()->setFocus();
    m_pPage->RemoveDisk(stick.Path());
    m_pPage->OnRefreshUSB();
    QVERIFY(!CopyBtn()->isEnabled());
    QCOMPARE(QApplication::focusWidget(), m_pPage->findChild<CFileTreeView*>());
}

void tst_CSelFileWidget::RefusedCopyHasTheFocusAgain()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 1);
    MakePage();
    QVERIFY(Activate());
    QVERIFY(CPageTree::Tick(m_pSource->Path(QStringLiteral("pics"))));
    m_pPage->SlotCheckFileSelected();
    CopyBtn()->setFocus();
    CAnswererAfterWait answerer(WaitView(), QStringLiteral("OK"));
    QTest::keyClick(CopyBtn(), Qt::Key_Space);
    QVERIFY(!CopyBtn()->isEnabled());
    QCOMPARE(m_pHost->focusWidget(), m_pPage->findChild<CFileTreeView*>());
    // A second press while the sizes are counted arrives at the tree and does nothing.
    QTest::keyClick(m_pHost->focusWidget(), Qt::Key_Space);
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QTRY_COMPARE(m_pHost->focusWidget(), CopyBtn());
    QVERIFY(CopyBtn()->isEnabled());
}

void tst_CSelFileWidget::ReadOnlyDiskNeverStartsTheCount()
{
    NEEDS_SOURCE();
    CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    QVERIFY(stick.MakeReadOnly());
    MakePage();
    QVERIFY(TickFile());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CLogCapture capture;
    CModalAnswerer answerer(QStringLiteral("OK"));
    answerer.Meanwhile([this]() { QVERIFY(!WaitView()->isVisible()); });
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_READ_ONLY);
    QCOMPARE(answerer.Buttons(), QStringList{QStringLiteral("OK")});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(QStringLiteral(":/res/Tip/tips.png")).toImage());
    QVERIFY(capture.Has(TEXT_READ_ONLY));
    QCOMPARE(spyCopy.count(), 0);
    QVERIFY(!SizeThread()->isRunning());
    QVERIFY(!SizeThread()->isFinished()); // it has never been started
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(SamePicture(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    // It can be tried again.
    CModalAnswerer again(QStringLiteral("OK"));
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QVERIFY(again.Answered());
}

void tst_CSelFileWidget::FreeBytesAreEnoughOneMoreIsNot()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    const qint64 nFree = QStorageInfo(stick.Path()).bytesAvailable();
    QVERIFY(nFree > 1000000);
    QVERIFY(!m_pPage->ShowUsbNoEnoughDlg(nFree));

    const CLogCapture capture;
    const CModalAnswerer answerer(QStringLiteral("OK"));
    QVERIFY(m_pPage->ShowUsbNoEnoughDlg(nFree + 1));
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QCOMPARE(answerer.Buttons(), QStringList{QStringLiteral("OK")});
    QCOMPARE(answerer.Icon().toImage(), QPixmap(QStringLiteral(":/res/Tip/tips.png")).toImage());
    QVERIFY(capture.Has(TEXT_NO_SPACE));

    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    m_pPage->SlotGetFileSizeFinish(nFree);
    QCOMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pPage->GetTotalSize(), nFree);
    const CModalAnswerer second(QStringLiteral("OK"));
    m_pPage->SlotGetFileSizeFinish(nFree + 1);
    QVERIFY(second.Answered());
    QCOMPARE(spyCopy.count(), 1);
}

void tst_CSelFileWidget::AcceptedSelectionIsHandedOver()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(CPageTree::Tick(m_pSource->Path(QStringLiteral("docs"))));
    m_pPage->SlotCheckFileSelected();
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(0));
    QCOMPARE(m_pPage->GetDstFolder(), QString());
    QCOMPARE(WaitView()->findChild<QLabel*>(QStringLiteral("label_text"))->text(),
             QStringLiteral("Calculating files size..."));
    QCOMPARE(WaitView()->findChild<QLabel*>(QStringLiteral("label_gif"))->movie()->state(), QMovie::Running);
    QVERIFY(WaitView()->isVisible());
    QTRY_COMPARE(spyCopy.count(), 1);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(1500));
    QVERIFY(m_pPage->GetDstFolder().startsWith(stick.Path(QStringLiteral("Tarnwick 2"))));
    QCOMPARE(m_pPage->GetUsbName(), QStringLiteral("STICK"));
    QVERIFY(!WaitView()->isVisible());
    QCOMPARE(WaitView()->findChild<QLabel*>(QStringLiteral("label_gif"))->movie()->state(),
             QMovie::NotRunning);
    QVERIFY(CopyBtn()->isEnabled());
    QVERIFY(!SizeThread()->isRunning());
    QVERIFY(m_pPage->findChild<CFileTreeView*>()->model());
    // And once more, from the start.
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(0));
    QTRY_COMPARE(spyCopy.count(), 2);
    QCOMPARE(m_pPage->GetTotalSize(), qint64(1500));
}

void tst_CSelFileWidget::FolderTakesTheTimeOfTheClock()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    const QDateTime time(QDate(2026, 11, 16), QTime(14, 5, 9));
    CClock::SetSource([time]() { return time.toMSecsSinceEpoch(); });
    m_pPage->SlotGetFileSizeFinish(1);
    QCOMPARE(m_pPage->GetDstFolder(), stick.Path(QStringLiteral("Tarnwick 2026-11-16  at  14.05.09")));
}

void tst_CSelFileWidget::TooLargeSelectionIsRefusedAndKept()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    MakePage();
    QVERIFY(CPageTree::Tick(m_pSource->Path(QStringLiteral("pics"))));
    m_pPage->SlotCheckFileSelected();
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CAnswererAfterWait answerer(WaitView(), QStringLiteral("OK"));
    QTest::mouseClick(CopyBtn(), Qt::LeftButton);
    QTRY_VERIFY(answerer.Answered());
    QTRY_VERIFY(CopyBtn()->isEnabled());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QCOMPARE(spyCopy.count(), 0);
    QCOMPARE(m_pPage->GetDstFolder(), QString());
    QVERIFY(!WaitView()->isVisible());
    QVERIFY(SamePicture(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    QVERIFY(CDirModel::GetInstence()->HasCheckedEntry());
}

void tst_CSelFileWidget::WaitingDialogIsCentredAndLetsTheWindowClose()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(TickFile());
    m_pPage->SlotCopyBtnClick();
    QCOMPARE(WaitView()->windowModality(), Qt::NonModal);
    const QPoint ptOff = WaitView()->geometry().center() - m_pHost->geometry().center();
    QVERIFY2(ptOff.manhattanLength() <= 2, qPrintable(QStringLiteral("%1 %2").arg(ptOff.x()).arg(ptOff.y())));
    QTRY_VERIFY(!WaitView()->isVisible());
}

void tst_CSelFileWidget::SecondClickCountsNothing()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(TickFile());
    // Sent by the worker itself, so it is counted there.
    std::atomic<int> nStarts{0};
    connect(
        SizeThread(), &QThread::started, SizeThread(), [&nStarts]() { ++nStarts; }, Qt::DirectConnection);
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    m_pPage->SlotCopyBtnClick();
    QVERIFY(!CopyBtn()->isEnabled());
    QVERIFY(WaitAside([this]() { return SizeThread()->isFinished(); }));
    m_pPage->SlotCopyBtnClick();
    QTRY_COMPARE(spyCopy.count(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(nStarts.load(), 1);
    QCOMPARE(spyCopy.count(), 1);
}

void tst_CSelFileWidget::NothingTakesInputDuringTheCount()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 10);
    MakePage();
    Choose(QStringLiteral("ONE"));
    QVERIFY(TickFile());
    m_pPage->SlotCopyBtnClick();
    const auto* pTree = m_pPage->findChild<CFileTreeView*>();
    QVERIFY(!pTree->model());
    const int nCallsBefore = m_pCommands->Calls(QStringLiteral("diskutil")).size();
    QTest::mouseClick(RefreshLabel(), Qt::LeftButton);
    QCOMPARE(RefreshLabel()->movie()->state(), QMovie::NotRunning);
    QThreadPool::globalInstance()->waitForDone();
    QCOMPARE(m_pCommands->Calls(QStringLiteral("diskutil")).size(), nCallsBefore);
    m_pPage->SlotShowListWidget();
    QVERIFY(!List()->isVisible());
    Choose(QStringLiteral("TWO"));
    QCOMPARE(m_pPage->GetUsbName(), QStringLiteral("ONE"));
    QTRY_VERIFY(pTree->model());
    Choose(QStringLiteral("TWO"));
    QCOMPARE(m_pPage->GetUsbName(), QStringLiteral("TWO"));
}

void tst_CSelFileWidget::RebuildDuringTheCountLeavesCopyOff()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(TickFile());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    m_pPage->SlotCopyBtnClick();
    m_pPage->OnRefreshUSB();
    QVERIFY(!CopyBtn()->isEnabled());
    m_pPage->SlotCheckFileSelected();
    QVERIFY(!CopyBtn()->isEnabled());
    QVERIFY(SamePicture(Label("m_pCopyLab"), ":/res/Label/allow.png"));
    QTRY_COMPARE(spyCopy.count(), 1);
    QVERIFY(CopyBtn()->isEnabled());
}

void tst_CSelFileWidget::CopyGoesToTheDiskChosenAtTheClick()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 10);
    MakePage();
    const QStringList listName = Listed();
    QCOMPARE(listName.size(), 2);
    Choose(listName.at(1));
    QVERIFY(TickFile());
    QString strNameAtSignal;
    connect(m_pPage, &CSelFileWidget::SignalCopyFile, this,
            [this, &strNameAtSignal]() { strNameAtSignal = m_pPage->GetUsbName(); });
    m_pPage->SlotCopyBtnClick();
    // A disk event rebuilds the list, which chooses the first disk.
    m_pPage->OnRefreshUSB();
    QCOMPARE(m_pPage->GetUsbName(), listName.at(0));
    QTRY_COMPARE(strNameAtSignal, listName.at(1));
    QVERIFY(m_pPage->GetDstFolder().startsWith(QStringLiteral("/Volumes/%1/").arg(listName.at(1))));
    QCOMPARE(m_pPage->GetUsbPath(), QStringLiteral("/Volumes/") + listName.at(1));
}

void tst_CSelFileWidget::DiskRemovedDuringTheCountIsRefused()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 10);
    MakePage();
    Choose(QStringLiteral("TWO"));
    QVERIFY(TickFile());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CAnswererAfterWait answerer(WaitView(), QStringLiteral("OK"));
    m_pPage->SlotCopyBtnClick();
    m_pPage->RemoveDisk(two.Path());
    m_pPage->OnRefreshUSB();
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QTRY_VERIFY(CopyBtn()->isEnabled());
    QCOMPARE(spyCopy.count(), 0);
    QVERIFY(LogLines().contains(QStringLiteral("the chosen disk is gone: ") + two.Path()));
}

void tst_CSelFileWidget::DiskPulledDuringTheCountIsRefused()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 10);
    MakePage();
    Choose(QStringLiteral("TWO"));
    QVERIFY(TickFile());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CAnswererAfterWait answerer(WaitView(), QStringLiteral("OK"));
    m_pPage->SlotCopyBtnClick();
    two.Pull(); // its empty folder stays, on the disk below
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QTRY_VERIFY(CopyBtn()->isEnabled());
    QCOMPARE(spyCopy.count(), 0);
    QCOMPARE(Listed(), QStringList{QStringLiteral("ONE")});
}

void tst_CSelFileWidget::DiskGoneBeforeTheClickIsRefused()
{
    NEEDS_SOURCE();
    const CVolume one(QStringLiteral("ONE"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(TickFile());
    m_pPage->RemoveDisk(one.Path());
    QCOMPARE(m_pPage->GetUsbPath(), QString());
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    const CAnswererAfterWait answerer(WaitView(), QStringLiteral("OK"));
    m_pPage->SlotCopyBtnClick();
    // Another one arrives meanwhile; it has not been chosen for this copy.
    const CVolume two(QStringLiteral("TWO"), QStringLiteral("/dev/sdc1"), 10);
    m_pPage->AddDisk(QFileInfo(two.Path()));
    m_pPage->OnRefreshUSB();
    QTRY_VERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QTRY_VERIFY(CopyBtn()->isEnabled());
    QCOMPARE(spyCopy.count(), 0);
}

void tst_CSelFileWidget::diskPulledUnnoticedIsRefused_data()
{
    QTest::addColumn<bool>("bByEvent");
    QTest::addColumn<bool>("bAnother");
    QTest::newRow("found by the search, its folder is left") << false << false;
    QTest::newRow("arrived, its folder is left") << true << false;
    QTest::newRow("found by the search, another in its place") << false << true;
}

void tst_CSelFileWidget::diskPulledUnnoticedIsRefused()
{
    NEEDS_SOURCE();
    QFETCH(bool, bByEvent);
    QFETCH(bool, bAnother);
    if (bByEvent) {
        MakePage();
    }
    CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    if (bByEvent) {
        m_pPage->AddDisk(QFileInfo(stick.Path()));
        m_pPage->OnRefreshUSB();
    } else {
        MakePage();
    }
    QVERIFY(TickFile());
    stick.Pull();
    std::unique_ptr<CVolume> pAnother;
    if (bAnother) {
        pAnother = std::make_unique<CVolume>(QStringLiteral("STICK"), QStringLiteral("/dev/sdc1"), 10);
    }
    QSignalSpy spyCopy(m_pPage, &CSelFileWidget::SignalCopyFile);
    CModalAnswerer answerer(QStringLiteral("OK"));
    m_pPage->SlotCopyBtnClick();
    QTRY_VERIFY(!SizeThread()->isRunning());
    QCoreApplication::processEvents();
    QCOMPARE(spyCopy.count(), 0);
    QVERIFY(answerer.Answered());
    QCOMPARE(answerer.Text(), TEXT_NO_SPACE);
    QCOMPARE(Listed(), QStringList());
    QVERIFY(!CopyBtn()->isEnabled());
    QVERIFY(LogLines().contains(QStringLiteral("the chosen disk is gone: ") + stick.Path()));
}

void tst_CSelFileWidget::PageGoesDuringTheCount()
{
    NEEDS_SOURCE();
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 10);
    MakePage();
    QVERIFY(TickFile());
    // The worker counts for as long as nobody tells it to stop.
    std::atomic<bool> bTold{false};
    connect(
        SizeThread(), &QThread::started, SizeThread(),
        [&bTold]() {
            bTold = WaitAside([]() { return QThread::currentThread()->isInterruptionRequested(); });
        },
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

void tst_CSelFileWidget::DiskChangeIsNeverTold()
{
    NEEDS_SOURCE();
    MakePage();
    QSignalSpy spy(m_pPage, &CSelFileWidget::SignalDiskChange);
    QVERIFY(spy.isValid());
    const CVolume stick(QStringLiteral("STICK"), QStringLiteral("/dev/sdb1"), 2);
    m_pPage->AddDisk(QFileInfo(stick.Path()));
    m_pPage->OnRefreshUSB();
    m_pPage->SlotRefreshUSB();
    m_pPage->RemoveDisk(stick.Path());
    m_pPage->OnRefreshUSB();
    QCOMPARE(spy.count(), 0);
}

QTEST_MAIN(tst_CSelFileWidget)
#include "tst_CSelFileWidget.moc"
