#include "disk/CDiskListener.h"
#include "disk/CForbiddenCall.h"
#include "disk/platform/IDiskEventSource.h"
#include "files/CFileNameCodec.h"
#include "support/CLogCapture.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/VolumeNames.h"

#include <QDir>
#include <QThread>
#include <QtTest>

/** The record that each event becomes, and who gets it. The functions build on each other in this order. */
class tst_CDiskListener : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void TheSourcesStayAliveWithoutTheTableOfMounts();
    void SaysNothingBeforeTheStart();
    void StartsWithCallbackAndContext();
    void ASecondStartKeepsTheFirstCallback();
    void IsOneInstance();
    void HasPath_data();
    void HasPath();
    void DropsANullPath();
    void WritesOneDebugLine_data();
    void WritesOneDebugLine();
    void TakesTheBytesAsLatin1();
    void pathOfAnEvent_data();
    void pathOfAnEvent();
    void pathOfAnEventThatNamesTheRealFolder_data();
    void pathOfAnEventThatNamesTheRealFolder();
    void DestroysTheRecordAfterTheCallback();
    void SurvivesAnEventWithinAnEvent();
    void deliversRealMountsOnTheThreadThatStarted_data() { AddVolumeNames(); }
    void deliversRealMountsOnTheThreadThatStarted();
    void TheSourcesStayAliveWithoutDeviceEvents();
};

static QVector<STDiskNotication> s_listSeen;
static void* s_pContext = nullptr;
static Qt::HANDLE s_hThread = nullptr;
static std::function<void()> s_fnInside;

static void Record(STDiskNotication* pRecord, void* pContext)
{
    s_listSeen.append(*pRecord);
    s_pContext = pContext;
    s_hThread = QThread::currentThreadId();
    if (s_fnInside) {
        s_fnInside();
    }
}

static int s_nOther = 0;
static void Other(STDiskNotication*, void*) { ++s_nOther; }

static int s_nAnchor = 0;

static CDiskListener& Listener() { return CDiskListener::GetInstance(); }

void tst_CDiskListener::init()
{
    s_listSeen.clear();
    s_pContext = nullptr;
    s_hThread = nullptr;
    s_fnInside = nullptr;
}

/** Done before anything else watches: /proc is out of sight for a moment. */
void tst_CDiskListener::TheSourcesStayAliveWithoutTheTableOfMounts()
{
    NEEDS_VOLUMES();
    UseLogFile();
    const std::unique_ptr<IDiskEventSource> pSource = IDiskEventSource::Create();
    const CLogCapture capture;
    QVERIFY(CVolume::Mount("hidden", "/proc"));
    pSource->Start(Listener());
    QVERIFY(CVolume::Unmount("/proc"));
    const QStringList listExpected{
        QStringLiteral("No table of mounts: volumes that come or go are not noticed")};
    QCOMPARE(capture.Lines(), listExpected);
    QTRY_COMPARE(LogLines(), listExpected);
}

void tst_CDiskListener::SaysNothingBeforeTheStart()
{
    const CLogCapture capture;
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    QCOMPARE(capture.Lines(), QStringList());
    QCOMPARE(s_listSeen.size(), 0);
}

void tst_CDiskListener::StartsWithCallbackAndContext()
{
    QCOMPARE(Listener().StartListener(&Record, &s_nAnchor), true);
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    QCOMPARE(s_listSeen.size(), 1);
    QCOMPARE(s_pContext, static_cast<void*>(&s_nAnchor));
}

void tst_CDiskListener::ASecondStartKeepsTheFirstCallback()
{
    int nOther = 0;
    QCOMPARE(Listener().StartListener(&Other, &nOther), true);
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    QCOMPARE(s_nOther, 0);
    QCOMPARE(s_listSeen.size(), 1);
    QCOMPARE(s_pContext, static_cast<void*>(&s_nAnchor));
    QCOMPARE(Listener().StartListener(nullptr, nullptr), true);
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    QCOMPARE(s_listSeen.size(), 2);
}

void tst_CDiskListener::IsOneInstance()
{
    QCOMPARE(&CDiskListener::GetInstance(), &CDiskListener::GetInstance());
}

void tst_CDiskListener::HasPath_data()
{
    QTest::addColumn<int>("nType");
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<int>("nHasPath");
    QTest::newRow("removal without a path") << 1 << QByteArray("USB") << 0;
    QTest::newRow("removal of a volume") << 1 << QByteArray("/Volumes/STICK") << 1;
    QTest::newRow("removal in other case") << 1 << QByteArray("usb") << 1;
    QTest::newRow("removal, longer") << 1 << QByteArray("USB ") << 1;
    QTest::newRow("removal, shorter") << 1 << QByteArray("US") << 1;
    QTest::newRow("removal of a volume of that name") << 1 << QByteArray("/Volumes/USB") << 1;
    QTest::newRow("removal, empty path") << 1 << QByteArray("") << 1;
    QTest::newRow("arrival named USB") << 0 << QByteArray("USB") << 1;
    QTest::newRow("arrival of a device") << 0 << QByteArray("/sys/devices/usb1/block/sdb") << 1;
    QTest::newRow("arrival of a volume") << 0 << QByteArray("/Volumes/STICK") << 1;
    QTest::newRow("arrival, empty path") << 0 << QByteArray("") << 1;
}

void tst_CDiskListener::HasPath()
{
    QFETCH(int, nType);
    QFETCH(QByteArray, baPath);
    Listener().OnDiskChanged(ENDiskEventType(nType), baPath.constData());
    QCOMPARE(s_listSeen.size(), 1);
    QCOMPARE(int(s_listSeen[0].enType), nType);
    QCOMPARE(s_listSeen[0].strDevicePath, QString::fromLatin1(baPath));
    QTEST(int(s_listSeen[0].nHasPath), "nHasPath");
}

void tst_CDiskListener::DropsANullPath()
{
    const CLogCapture capture;
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, nullptr);
    Listener().OnDiskChanged(DISK_EVENT_DISAPPEARED, nullptr);
    QCOMPARE(s_listSeen.size(), 0);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CDiskListener::WritesOneDebugLine_data()
{
    QTest::addColumn<int>("nType");
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<QString>("strLine");
    QTest::newRow("arrival") << 0 << QByteArray("/Volumes/STICK")
                             << QStringLiteral("OnDiskChanged:0 devicePath:/Volumes/STICK!");
    QTest::newRow("removal") << 1 << QByteArray("USB") << QStringLiteral("OnDiskChanged:1 devicePath:USB!");
    QTest::newRow("percent signs") << 1 << QByteArray("/Volumes/%1 %2")
                                   << QStringLiteral("OnDiskChanged:1 devicePath:/Volumes/%1 %2!");
    QTest::newRow("quotation marks") << 0 << QByteArray("/Volumes/\"x\"")
                                     << QStringLiteral("OnDiskChanged:0 devicePath:/Volumes/\"x\"!");
}

void tst_CDiskListener::WritesOneDebugLine()
{
    QFETCH(int, nType);
    QFETCH(QByteArray, baPath);
    QFETCH(QString, strLine);
    const CLogCapture capture;
    Listener().OnDiskChanged(ENDiskEventType(nType), baPath.constData());
    QCOMPARE(capture.Lines(), QStringList{strLine});
}

void tst_CDiskListener::TakesTheBytesAsLatin1()
{
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/\xc3\xa4\xff");
    QCOMPARE(s_listSeen[0].strDevicePath.toLatin1(), QByteArray("/Volumes/\xc3\xa4\xff"));
    QCOMPARE(s_listSeen[0].strDevicePath.size(), 12);
}

void tst_CDiskListener::pathOfAnEvent_data()
{
    QTest::addColumn<QByteArray>("baPath");
    for (const char* pszPath : {"USB", "", "/", "/STICK", "/Volumes", "/Volumes/STICK",
                                "/Volumes/B\xc3\xbc"
                                "cher",
                                "/Volumes/caf\xe9\xff", "/Volumes/%1", "/sys/devices/usb1/block/sdb"}) {
        QTest::newRow(pszPath) << QByteArray(pszPath);
    }
}

void tst_CDiskListener::pathOfAnEvent()
{
    QFETCH(QByteArray, baPath);
    QCOMPARE(DiskEventPath({QString::fromLatin1(baPath), DISK_EVENT_APPEARED, 1}), QFile::decodeName(baPath));
}

void tst_CDiskListener::pathOfAnEventThatNamesTheRealFolder_data()
{
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<QByteArray>("baExpected");
    QTest::newRow("volume") << QByteArray("/run/media/STICK") << QByteArray("/Volumes/STICK");
    QTest::newRow("name that is not UTF-8") << QByteArray("/run/media/\xe9") << QByteArray("/Volumes/\xe9");
    QTest::newRow("through the link") << QByteArray("/Volumes/STICK") << QByteArray("/Volumes/STICK");
    QTest::newRow("inside a volume") << QByteArray("/run/media/STICK/a") << QByteArray("/run/media/STICK/a");
    QTest::newRow("folder itself") << QByteArray("/run/media") << QByteArray("/run/media");
    QTest::newRow("folder of similar name") << QByteArray("/run/media2/S") << QByteArray("/run/media2/S");
}

void tst_CDiskListener::pathOfAnEventThatNamesTheRealFolder()
{
    QFETCH(QByteArray, baPath);
    QFETCH(QByteArray, baExpected);
    NEEDS_VOLUMES();
    QVERIFY(CVolume::ClearAndLink("/run/media"));
    const STDiskNotication stNotication{QString::fromLatin1(baPath), DISK_EVENT_DISAPPEARED, 1};
    QCOMPARE(DiskEventPath(stNotication), QFile::decodeName(baExpected));
}

void tst_CDiskListener::DestroysTheRecordAfterTheCallback()
{
    bool bSharedInside = false;
    s_fnInside = [&bSharedInside] { bSharedInside = !s_listSeen.last().strDevicePath.isDetached(); };
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    // Our copy shares its text with the record as long as there is one.
    QVERIFY(bSharedInside);
    QVERIFY(s_listSeen.last().strDevicePath.isDetached());
}

void tst_CDiskListener::SurvivesAnEventWithinAnEvent()
{
    s_fnInside = [] {
        s_fnInside = nullptr;
        Listener().OnDiskChanged(DISK_EVENT_DISAPPEARED, "/Volumes/INNER");
    };
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/OUTER");
    QCOMPARE(s_listSeen.size(), 2);
    QCOMPARE(s_listSeen[0].strDevicePath, QStringLiteral("/Volumes/OUTER"));
    QCOMPARE(s_listSeen[1].strDevicePath, QStringLiteral("/Volumes/INNER"));
    QCOMPARE(int(s_listSeen[1].enType), 1);
}

void tst_CDiskListener::deliversRealMountsOnTheThreadThatStarted()
{
    NEEDS_VOLUMES();
    QFETCH(QByteArray, baName);
    const QByteArray baPath = "/Volumes/" + baName;
    QVERIFY(CVolume::Mount("/dev/disk7s1", baPath));
    QTRY_COMPARE(s_listSeen.size(), 1);
    QCOMPARE(s_listSeen[0].strDevicePath, QString::fromLatin1(baPath));
    QCOMPARE(DiskEventPath(s_listSeen[0]),
             QDir("/Volumes").entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot).at(0).filePath());
    QCOMPARE(int(s_listSeen[0].enType), 0);
    QCOMPARE(int(s_listSeen[0].nHasPath), 1);
    QCOMPARE(s_hThread, QThread::currentThreadId());

    QVERIFY(CVolume::Unmount(baPath));
    QTRY_COMPARE(s_listSeen.size(), 2);
    QCOMPARE(s_listSeen[1].strDevicePath, QString::fromLatin1(baPath));
    QCOMPARE(int(s_listSeen[1].enType), 1);
    QCOMPARE(int(s_listSeen[1].nHasPath), 1);
}

/** Done last: this thread gets no more sockets. */
void tst_CDiskListener::TheSourcesStayAliveWithoutDeviceEvents()
{
    NEEDS_VOLUMES();
    if (!ForbidCall(__NR_socket, EAFNOSUPPORT)) {
        QSKIP("sockets cannot be forbidden here");
    }
    UseLogFile();
    const std::unique_ptr<IDiskEventSource> pSource = IDiskEventSource::Create();
    const QString strExpected
        = QStringLiteral("No device events: USB disks are noticed when they are mounted");
    {
        const CLogCapture capture;
        pSource->Start(Listener());
        QCOMPARE(capture.Lines(), QStringList{strExpected});
    }
    QTRY_COMPARE(LogLines(), QStringList{strExpected});
    // Once from the source that the listener started, once from this one.
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK B"));
    QTRY_COMPARE(s_listSeen.size(), 2);
}

QTEST_GUILESS_MAIN(tst_CDiskListener)
#include "tst_CDiskListener.moc"
