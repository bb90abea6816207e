#include "disk/platform/CVolumeInfo.h"

#include <QTest>
#include <QVector>

#include <algorithm>
#include <sys/mount.h>

struct STVolume
{
    QByteArray baPoint;
    QByteArray baDevice;
};

static QVector<STVolume> s_listVolume;
static bool s_bWaits = false; // for disks

static void Fill(const STVolume& volume, struct statfs* pVolume)
{
    qstrncpy(pVolume->f_mntonname, volume.baPoint.constData(), sizeof(pVolume->f_mntonname));
    qstrncpy(pVolume->f_mntfromname, volume.baDevice.constData(), sizeof(pVolume->f_mntfromname));
}

/** Knows the mount points themselves only. */
int statfs(const char* pPath, struct statfs* pVolume)
{
    for (const STVolume& volume : qAsConst(s_listVolume)) {
        if (volume.baPoint == pPath) {
            Fill(volume, pVolume);
            return 0;
        }
    }
    return -1;
}

int getfsstat(struct statfs* pVolumes, int nBytes, int nFlags)
{
    s_bWaits = s_bWaits || nFlags != MNT_NOWAIT;
    const int nRoom = nBytes / int(sizeof(struct statfs));
    const int nCount = std::min(nRoom, s_listVolume.size());
    for (int i = 0; i < nCount; ++i) {
        Fill(s_listVolume[i], &pVolumes[i]);
    }
    return s_listVolume.isEmpty() ? -1 : nCount;
}

/** What macOS's BSD calls say of volumes. */
class tst_MacVolumeInfo : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void deviceOfAVolume();
    void devicesOfDriversInUserSpace_data();
    void devicesOfDriversInUserSpace();
    void mountPoints_data();
    void mountPoints();
    void noTable();
};

void tst_MacVolumeInfo::init() { s_listVolume.clear(); }

void tst_MacVolumeInfo::cleanup() { QVERIFY(!s_bWaits); }

void tst_MacVolumeInfo::deviceOfAVolume()
{
    s_listVolume = {{"/", "/dev/disk1s5"}, {"/Volumes/Bücher", "/dev/disk2s1"}};
    QCOMPARE(CVolumeInfo::DeviceOf("/"), QByteArray("/dev/disk1s5"));
    QCOMPARE(CVolumeInfo::DeviceOf("/Volumes/Bücher"), QByteArray("/dev/disk2s1"));
    QCOMPARE(CVolumeInfo::DeviceOf("/Volumes/gone"), QByteArray());
}

void tst_MacVolumeInfo::devicesOfDriversInUserSpace_data()
{
    QTest::addColumn<QByteArray>("baMounted");
    QTest::addColumn<QByteArray>("baDevice");
    const auto fnRow = [](const char* pRow, const char* pMounted, const char* pDevice) {
        QTest::newRow(pRow) << QByteArray(pMounted) << QByteArray(pDevice);
    };
    fnRow("FAT", "msdos://disk4s1/NO%20NAME/", "/dev/disk4s1");
    fnRow("exFAT, whole disk", "exfat://disk14/", "/dev/disk14");
    fnRow("cut short", "msdos://disk4s1", "msdos://disk4s1");
    fnRow("another host", "smb://server/disk4s1/", "smb://server/disk4s1/");
    fnRow("network", "//somebody@server/share", "//somebody@server/share");
    fnRow("automatic", "map auto_home", "map auto_home");
}

void tst_MacVolumeInfo::devicesOfDriversInUserSpace()
{
    QFETCH(QByteArray, baMounted);
    s_listVolume = {{"/Volumes/STICK", baMounted}};
    QTEST(CVolumeInfo::DeviceOf("/Volumes/STICK"), "baDevice");
}

void tst_MacVolumeInfo::mountPoints_data()
{
    QTest::addColumn<int>("nCount");
    for (const int nCount : {1, 15, 16, 17, 32, 100}) {
        QTest::addRow("%d volumes", nCount) << nCount;
    }
}

void tst_MacVolumeInfo::mountPoints()
{
    QFETCH(int, nCount);
    QByteArrayList listExpected;
    for (int i = 0; i < nCount; ++i) {
        s_listVolume.append({"/Volumes/V" + QByteArray::number(i), "/dev/disk" + QByteArray::number(i)});
        listExpected.append(s_listVolume.last().baPoint);
    }
    QCOMPARE(CVolumeInfo::MountPoints().value_or(QByteArrayList()), listExpected);
}

void tst_MacVolumeInfo::noTable() { QVERIFY(!CVolumeInfo::MountPoints().has_value()); }

QTEST_GUILESS_MAIN(tst_MacVolumeInfo)
#include "tst_MacVolumeInfo.moc"
