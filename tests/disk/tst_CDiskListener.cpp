#include "disk/CDiskListener.h"
#include "disk/CForbiddenCall.h"
#include "disk/platform/IDiskEventSource.h"
#include "files/CFileNameCodec.h"
#include "support/CLogCapture.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/VolumeNames.h"

#include <QDir>
#include <QTest>
#include <QThread>

/** The record that each event becomes, and who gets it. The functions build on each other in this order. */
class tst_CDiskListener : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();

    void sourceLivesWithoutTheTableOfMounts();
    void saysNothingBeforeTheStart();
    void startsOnce();
    void isOneInstance();
    void record_data();
    void record();
    void dropsANullPath();
    void pathOfAnEvent_data();
    void pathOfAnEvent();
    void destroysTheRecordAfterTheCallback();
    void survivesAnEventWithinAnEvent();
    void deliversRealMountsOnTheThreadThatStarted_data() { AddVolumeNames(); }
    void deliversRealMountsOnTheThreadThatStarted();
    void sourceLivesWithoutDeviceEvents();
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
void tst_CDiskListener::sourceLivesWithoutTheTableOfMounts()
{
    NEEDS_VOLUMES();
    UseLogFile();
    const std::unique_ptr<IDiskEventSource> pSource = IDiskEventSource::Create();
    const CLogCapture capture;
    QVERIFY(CVolume::Mount("hidden", "/proc"));
    pSource->Start(Listener());
    QVERIFY(CVolume::Unmount("/proc"));
    const QStringList listExpected{"No table of mounts: volumes that come or go are not noticed"};
    QCOMPARE(capture.Lines(), listExpected);
    QTRY_COMPARE(LogLines(), listExpected);
}

void tst_CDiskListener::saysNothingBeforeTheStart()
{
    const CLogCapture capture;
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    QCOMPARE(capture.Lines(), QStringList());
    QCOMPARE(s_listSeen.size(), 0);
}

void tst_CDiskListener::startsOnce()
{
    QCOMPARE(Listener().StartListener(&Record, &s_nAnchor), true);
    int nOther = 0;
    for (const PFNDiskCallback pfnLater : {&Record, &Other, PFNDiskCallback(nullptr)}) {
        Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
        QCOMPARE(s_pContext, static_cast<void*>(&s_nAnchor));
        QCOMPARE(Listener().StartListener(pfnLater, &nOther), true);
    }
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    QCOMPARE(s_listSeen.size(), 4);
    QCOMPARE(s_pContext, static_cast<void*>(&s_nAnchor));
    QCOMPARE(s_nOther, 0);
}

void tst_CDiskListener::isOneInstance()
{
    QCOMPARE(&CDiskListener::GetInstance(), &CDiskListener::GetInstance());
}

void tst_CDiskListener::record_data()
{
    QTest::addColumn<int>("nType");
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<int>("nHasPath");
    const auto row = [](const char* pszName, int nType, const char* pszPath, int nHasPath) {
        QTest::newRow(pszName) << nType << QByteArray(pszPath) << nHasPath;
    };
    row("removal without a path", 1, "USB", 0);
    row("removal of a volume", 1, "/Volumes/STICK", 1);
    row("removal in other case", 1, "usb", 1);
    row("removal, longer", 1, "USB ", 1);
    row("removal, shorter", 1, "US", 1);
    row("removal of a volume of that name", 1, "/Volumes/USB", 1);
    row("removal, empty path", 1, "", 1);
    row("arrival named USB", 0, "USB", 1);
    row("arrival of a device", 0, "/sys/devices/usb1/block/sdb", 1);
    row("arrival of a volume", 0, "/Volumes/STICK", 1);
    row("arrival, empty path", 0, "", 1);
    row("percent signs", 1, "/Volumes/%1 %2", 1);
    row("quotation marks", 0, "/Volumes/\"x\"", 1);
    row("bytes beyond ASCII", 0, "/Volumes/\xc3\xa4\xff", 1);
}

void tst_CDiskListener::record()
{
    QFETCH(int, nType);
    QFETCH(QByteArray, baPath);
    const CLogCapture capture;
    Listener().OnDiskChanged(ENDiskEventType(nType), baPath.constData());
    QCOMPARE(s_listSeen.size(), 1);
    QCOMPARE(int(s_listSeen[0].enType), nType);
    QCOMPARE(s_listSeen[0].strDevicePath, QString::fromLatin1(baPath));
    QTEST(int(s_listSeen[0].nHasPath), "nHasPath");
    const QString strLine = "OnDiskChanged:" + QString::number(nType) + " devicePath:";
    QCOMPARE(capture.Lines(), QStringList{strLine + QString::fromLatin1(baPath) + "!"});
}

void tst_CDiskListener::dropsANullPath()
{
    const CLogCapture capture;
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, nullptr);
    Listener().OnDiskChanged(DISK_EVENT_DISAPPEARED, nullptr);
    QCOMPARE(s_listSeen.size(), 0);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CDiskListener::pathOfAnEvent_data()
{
    QTest::addColumn<QByteArray>("baPath");
    QTest::addColumn<QByteArray>("baWhereALink"); // where "/Volumes" is a link to "/run/media"
    const auto row = [](const QByteArray& baPath, const QByteArray& baWhereALink) {
        QTest::newRow(baPath.isEmpty() ? "(empty)" : baPath.constData()) << baPath << baWhereALink;
    };
    for (const char* pszSame : {"USB", "", "/", "/STICK", "/Volumes", "/Volumes/STICK", "/Volumes/\xc3\xbc",
                                "/Volumes/\xe9\xff", "/Volumes/%1", "/sys/devices/usb1/block/sdb"}) {
        row(pszSame, pszSame);
    }
    row("/run/media/STICK", "/Volumes/STICK");
    row("/run/media/\xc3\xbc", "/Volumes/\xc3\xbc");
    row("/run/media/\xe9\xff", "/Volumes/\xe9\xff");
    row("/run/media/STICK/inside", "/run/media/STICK/inside");
    row("/run/media", "/run/media");
    row("/run/media2/STICK", "/run/media2/STICK");
}

void tst_CDiskListener::pathOfAnEvent()
{
    QFETCH(QByteArray, baPath);
    QFETCH(QByteArray, baWhereALink);
    NEEDS_VOLUMES();
    const STDiskNotication stNotication{QString::fromLatin1(baPath), DISK_EVENT_DISAPPEARED, 1};
    QCOMPARE(DiskEventPath(stNotication), QFile::decodeName(baPath));
    QVERIFY(CVolume::ClearAndLink("/run/media"));
    QCOMPARE(DiskEventPath(stNotication), QFile::decodeName(baWhereALink));
    QVERIFY(QFile::remove("/Volumes")); // the link: now there is no such folder
    QCOMPARE(DiskEventPath(stNotication), QFile::decodeName(baPath));
}

void tst_CDiskListener::destroysTheRecordAfterTheCallback()
{
    bool bSharedInside = false;
    s_fnInside = [&bSharedInside] { bSharedInside = !s_listSeen.last().strDevicePath.isDetached(); };
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/STICK");
    // Our copy shares its text with the record as long as there is one.
    QVERIFY(bSharedInside);
    QVERIFY(s_listSeen.last().strDevicePath.isDetached());
}

void tst_CDiskListener::survivesAnEventWithinAnEvent()
{
    s_fnInside = [] {
        s_fnInside = nullptr;
        Listener().OnDiskChanged(DISK_EVENT_DISAPPEARED, "/Volumes/INNER");
    };
    Listener().OnDiskChanged(DISK_EVENT_APPEARED, "/Volumes/OUTER");
    QCOMPARE(s_listSeen.size(), 2);
    QCOMPARE(s_listSeen[0].strDevicePath, "/Volumes/OUTER");
    QCOMPARE(s_listSeen[1].strDevicePath, "/Volumes/INNER");
    QCOMPARE(int(s_listSeen[1].enType), 1);
}

void tst_CDiskListener::deliversRealMountsOnTheThreadThatStarted()
{
    NEEDS_VOLUMES();
    QFETCH(QByteArray, baName);
    const QByteArray baPath = "/Volumes/" + baName;
    QVERIFY(CVolume::Mount("/dev/disk7s1", baPath));
    QTRY_COMPARE(s_listSeen.size(), 1);
    QVERIFY(CVolume::Unmount(baPath));
    QTRY_COMPARE(s_listSeen.size(), 2);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(int(s_listSeen[i].enType), i);
        QCOMPARE(int(s_listSeen[i].nHasPath), 1);
        QCOMPARE(s_listSeen[i].strDevicePath, QString::fromLatin1(baPath));
        const QFileInfoList listEntry = QDir("/Volumes").entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(DiskEventPath(s_listSeen[i]), listEntry.at(0).filePath());
    }
    QCOMPARE(s_hThread, QThread::currentThreadId());
}

/** Done last: this thread gets no more sockets. */
void tst_CDiskListener::sourceLivesWithoutDeviceEvents()
{
    NEEDS_VOLUMES();
    if (!ForbidCall(__NR_socket, EAFNOSUPPORT)) {
        QSKIP("sockets cannot be forbidden here");
    }
    UseLogFile();
    const std::unique_ptr<IDiskEventSource> pSource = IDiskEventSource::Create();
    const QStringList listExpected{"No device events: USB disks are noticed when they are mounted"};
    {
        const CLogCapture capture;
        pSource->Start(Listener());
        QCOMPARE(capture.Lines(), listExpected);
    }
    QTRY_COMPARE(LogLines(), listExpected);
    // Once from the source that the listener started, once from this one.
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK B"));
    QTRY_COMPARE(s_listSeen.size(), 2);
}

QTEST_GUILESS_MAIN(tst_CDiskListener)
#include "tst_CDiskListener.moc"
