#include "app/CTarnwickMacPE.h"
#include "files/CFileNameCodec.h"
#include "macos/CFakeMac.h"
#include "macos/CMountBed.h"
#include "pages/CSelFileWidget.h"
#include "support/CFakeCommands.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QApplication>
#include <QDir>
#include <QTest>

#include <memory>

/** The whole window with a Mac's events: each volume is offered once, and only where it lies on USB. */
class tst_MacArrivals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();
    void withoutNotices();
    void noticeAndLook();
    void lookAndNotice();
    void searchAndLook();
    void searchAndNotice();
    void lookAndSearchAndNotice();
    void searchThatIsNotAnswered_data();
    void searchThatIsNotAnswered();
    void aFoundVolumeThatGoesBeforeALook();
    void namesThatMeanTheSame();
    void anUnlockedVolumeIsNoDestination();

private:
    QStringList Paths() const { return m_pWindow->findChild<CSelFileWidget*>()->DiskPaths(); }
    void Search() const { m_pWindow->findChild<CSelFileWidget*>()->SlotRefreshUSB(); }

    std::unique_ptr<CFakeCommands> m_pCommands;
    std::unique_ptr<CTarnwickMacPE> m_pWindow;
    std::unique_ptr<CMountBed> m_pBed;
};

static const QByteArray STICK = "/Volumes/STICK";
static const QByteArray NODE = "/dev/sdb1"; // of which the command says that it is on USB
static const QStringList LISTED{STICK};

void tst_MacArrivals::initTestCase()
{
    CFileNameCodec::Install();
    UseLogFile();
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->Add("bash");
    m_pCommands->AddDiskutil();
    NEEDS_VOLUMES();
    m_pBed = std::make_unique<CMountBed>();
    // One window for all: the disk listener lives as long as the program and keeps its first receiver.
    m_pWindow = std::make_unique<CTarnwickMacPE>();
    CMountBed::Timer()->setInterval(3600000);
}

void tst_MacArrivals::init()
{
    QVERIFY(QDir().mkpath(STICK));
    m_pBed->Mount(STICK, NODE);
}

void tst_MacArrivals::cleanup()
{
    m_pBed->Unmount(STICK);
    QVERIFY(QDir().mkpath("/Volumes/Macintosh HD")); // a removal is told for each volume that is left
    CMountBed::Look();
    QCOMPARE(Paths(), QStringList());
    QCOMPARE(CFakeMac::Problems(), QStringList());
    QCOMPARE(CFakeMac::Held(), (QMap<QString, int>{{"iterator", 2}, {"port", 2}}));
}

void tst_MacArrivals::cleanupTestCase() { m_pWindow.reset(); }

void tst_MacArrivals::withoutNotices()
{
    QCOMPARE(Paths(), QStringList());
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::noticeAndLook()
{
    CFakeMac::Mount(STICK);
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::lookAndNotice()
{
    CMountBed::Look();
    CFakeMac::Mount(STICK);
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::searchAndLook()
{
    Search();
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::searchAndNotice()
{
    Search();
    CFakeMac::Mount(STICK);
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::lookAndSearchAndNotice()
{
    CMountBed::Look();
    Search();
    CFakeMac::Mount(STICK);
    QCOMPARE(Paths(), LISTED);
    Search();
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::searchThatIsNotAnswered_data()
{
    QTest::addColumn<bool>("bNotice");
    QTest::newRow("then a notice") << true;
    QTest::newRow("then a look") << false;
}

/** It has not come across a destination, which the stick is all the same. */
void tst_MacArrivals::searchThatIsNotAnswered()
{
    QFETCH(bool, bNotice);
    m_pCommands->Add("diskutil", "exit 1");
    Search();
    m_pCommands->AddDiskutil();
    QCOMPARE(Paths(), QStringList());
    if (bNotice) {
        CFakeMac::Mount(STICK);
    }
    CMountBed::Look();
    QCOMPARE(Paths(), LISTED);
}

void tst_MacArrivals::aFoundVolumeThatGoesBeforeALook()
{
    Search();
    QCOMPARE(Paths(), LISTED);
    m_pBed->Unmount(STICK);
    CMountBed::Look();
    QCOMPARE(Paths(), QStringList());
}

void tst_MacArrivals::namesThatMeanTheSame()
{
    const QByteArray baMounted = "/Volumes/Bu\xcc\x88"
                                 "cher";
    const QString strListed = QString::fromUtf8("/Volumes/B\xc3\xbc"
                                                "cher");
    QVERIFY(QDir().mkpath(strListed));
    m_pBed->Unmount(STICK);
    m_pBed->Mount(baMounted, NODE);
    CMountBed::Look();
    QCOMPARE(Paths(), QStringList{strListed});
    m_pBed->Unmount(baMounted);
    CMountBed::Look();
    QCOMPARE(Paths(), QStringList());
    QVERIFY(QDir().rmdir(strListed));
}

void tst_MacArrivals::anUnlockedVolumeIsNoDestination()
{
    const QByteArray baPoint = "/Volumes/Data";
    const auto fnMedia = [](const QByteArray& baBus) -> QVector<STFakeEntry> {
        return {{"AppleAPFSVolume", {}}, {"IOMedia", {}}, {"IOBlockStorageDevice", {"SSD", "", baBus}}};
    };
    QVERIFY(QDir().mkpath(baPoint));
    m_pBed->Unmount(STICK);
    CFakeMac::SetMedia("disk3s5", fnMedia("Apple Fabric"));
    m_pBed->Mount(baPoint, "/dev/disk3s5");
    CFakeMac::Mount(baPoint);
    CMountBed::Look();
    QCOMPARE(Paths(), QStringList());
    QCOMPARE(LogLines().filter("not on USB, no destination: /Volumes/Data").size(), 1);
    CFakeMac::Unmount(baPoint);
    CFakeMac::SetMedia("disk3s5", fnMedia("USB"));
    CFakeMac::Mount(baPoint);
    QCOMPARE(Paths(), QStringList{baPoint});
    m_pBed->Unmount(baPoint);
    CFakeMac::Unmount(baPoint);
    QVERIFY(QDir().rmdir(baPoint));
}

QTEST_MAIN(tst_MacArrivals)
#include "tst_MacArrivals.moc"
