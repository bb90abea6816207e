#include "CFailingCalls.h"
#include "disk/CDestinationDiscovery.h"
#include "disk/CLeftoverFolder.h"
#include "disk/platform/CVolumeFolder.h"
#include "disk/platform/CVolumeInfo.h"
#include "diskutil/CDiskQuery.h"
#include "files/CFileNameCodec.h"
#include "files/CLeftBehind.h"
#include "support/CFakeCommands.h"
#include "support/CGate.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>

#include <atomic>
#include <memory>

using ENCall = CFailingCalls::ENCall;
Q_DECLARE_METATYPE(ENCall)

/** Looking for disks while one of them does not answer. */
class tst_DiskFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup();

    void searchTouchesNoVolume_data();
    void searchTouchesNoVolume();
    void linkToADiskThatHangsCountsAsAVolume();
    void sizeThatNeverComesIsLeftOut();
    void nodeOnADiskThatHangsIsNoDevice();

private:
    std::unique_ptr<CFakeCommands> m_pCommands;
};

static const char STICK[] = "/Volumes/STICK";

void tst_DiskFaults::init()
{
    if (!CVolume::Clear()) {
        QSKIP("volumes cannot be mounted here");
    }
    m_pCommands = std::make_unique<CFakeCommands>();
    m_pCommands->AddDiskutil();
    UseLogFile();
    QVERIFY(CVolume::Mount("/dev/sdb1", STICK));
}

void tst_DiskFaults::cleanup()
{
    CFailingCalls::Reset();
    m_pCommands.reset();
}

void tst_DiskFaults::searchTouchesNoVolume_data()
{
    QTest::addColumn<ENCall>("enCall");
    QTest::newRow("stat") << ENCall::STAT;
    QTest::newRow("open") << ENCall::OPEN;
    QTest::newRow("opendir") << ENCall::OPEN_FOLDER;
    QTest::newRow("readdir") << ENCall::LIST;
    QTest::newRow("statvfs") << ENCall::SPACE;
}

/** So a volume that never answers holds neither the start nor a disk event. */
void tst_DiskFaults::searchTouchesNoVolume()
{
    QFETCH(ENCall, enCall);
    CFailingCalls::Watch(enCall, "/STICK", [] {});
    QStringList listFound;
    const std::atomic<bool> bCancelled{false};
    QVERIFY(CDestinationDiscovery::Scan(
        [&listFound](const STVolume& volume) { listFound.append(volume.strName + volume.baDevice); },
        bCancelled));
    QCOMPARE(listFound, QStringList{"STICK/dev/sdb1"});
    QCOMPARE(CVolumeFolder::Names("/Volumes"), QStringList{"STICK"});
    QCOMPARE(CVolumeInfo::DeviceOf("/Volumes/STICK"), "/dev/sdb1");
    QCOMPARE(CVolumeInfo::DeviceOf("/Volumes/STICK/"), "/dev/sdb1");
    CLeftoverFolder::CleanMountPoint("STICK");
    QVERIFY(LogLines().last().startsWith("left-over mount point kept"));
    QCOMPARE(CFailingCalls::Calls(), 0);
}

void tst_DiskFaults::linkToADiskThatHangsCountsAsAVolume()
{
    QVERIFY(QFile::link(STICK, "/Volumes/link"));
    CGate gate;
    CFailingCalls::Watch(ENCall::STAT, "/link", [&gate] { gate.Pass(30000); });
    QElapsedTimer timer;
    timer.start();
    QStringList listName = CVolumeFolder::Names("/Volumes");
    QVERIFY(timer.elapsed() < 10000);
    listName.sort();
    QCOMPARE(listName, (QStringList{"STICK", "link"}));
    QCOMPARE(CFailingCalls::Calls(), 1);
    QVERIFY(CLeftBehind::Any());
    gate.Open();
    QTRY_VERIFY(!CLeftBehind::Any());
}

/** What the command that stands in for "diskutil" tells, then, and at once. */
void tst_DiskFaults::sizeThatNeverComesIsLeftOut()
{
    STMount mount;
    mount.strPoint = STICK;
    mount.strType = "tmpfs";
    mount.strSource = "share";
    const CDiskQuery query(CSysBlock(), CMountList({mount}));
    QVERIFY(query.Describe("share")->nTotalSize > 0);
    CGate gate; // of the child that asks, which nobody lets go on
    CFailingCalls::Watch(ENCall::SPACE, STICK, [&gate] { gate.Pass(30000); });
    QElapsedTimer timer;
    timer.start();
    const std::optional<STDiskInfo> info = query.Describe("share");
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(info);
    QCOMPARE(info->nTotalSize, std::uint64_t(0));
    QCOMPARE(info->strBus, std::string("Virtual Interface"));
    QCOMPARE(info->strMountPoint, std::string(STICK));
}

void tst_DiskFaults::nodeOnADiskThatHangsIsNoDevice()
{
    CGate gate;
    CFailingCalls::Watch(ENCall::STAT, "/STICK/image", [&gate] { gate.Pass(30000); });
    QElapsedTimer timer;
    timer.start();
    QVERIFY(CSysBlock().Find("/Volumes/STICK/image").empty());
    QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(CFailingCalls::Calls(), 1);
    gate.Open();
    QTRY_VERIFY(!CLeftBehind::Any());
}

QTEST_GUILESS_MAIN(tst_DiskFaults)
#include "tst_DiskFaults.moc"
