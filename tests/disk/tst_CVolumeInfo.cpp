#include "disk/platform/CVolumeInfo.h"
#include "files/CFileNameCodec.h"
#include "support/CVolume.h"
#include "support/VolumeNames.h"

#include <QDir>
#include <QtTest>

/** Which device a path lies on, whatever its volume is called. */
class tst_CVolumeInfo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void DeviceByName_data();
    void DeviceByName();
    void DeviceOfAFolderInsideAVolume();
    void DeviceThroughALink();
    void DeviceOfTheVolumeOnTop();
    void DeviceOfOneNameThatBeginsLikeAnother();
    void NoDeviceForAPathThatIsNotThere();
    void MountPointsAreAbsolutePaths();
};

void tst_CVolumeInfo::init() { NEEDS_VOLUMES(); }

void tst_CVolumeInfo::DeviceByName_data() { AddVolumeNames(); }

void tst_CVolumeInfo::DeviceByName()
{
    QFETCH(QByteArray, baName);
    const QByteArray baPoint = "/Volumes/" + baName;
    QVERIFY(CVolume::Mount("/dev/disk7s1", baPoint));
    QCOMPARE(CVolumeInfo::DeviceOf(QFile::decodeName(baPoint)), QByteArray("/dev/disk7s1"));
}

void tst_CVolumeInfo::DeviceOfAFolderInsideAVolume()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    QVERIFY(QDir().mkpath(QStringLiteral("/Volumes/STICK/a/b")));
    QCOMPARE(CVolumeInfo::DeviceOf(QStringLiteral("/Volumes/STICK/a/b")), QByteArray("/dev/disk7s1"));
}

void tst_CVolumeInfo::DeviceThroughALink()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    QVERIFY(QFile::link(QStringLiteral("/Volumes/STICK"), QStringLiteral("/Volumes/link")));
    QCOMPARE(CVolumeInfo::DeviceOf(QStringLiteral("/Volumes/link")), QByteArray("/dev/disk7s1"));
}

void tst_CVolumeInfo::DeviceOfTheVolumeOnTop()
{
    QVERIFY(CVolume::Mount("/dev/below", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/top", "/Volumes/STICK"));
    QCOMPARE(CVolumeInfo::DeviceOf(QStringLiteral("/Volumes/STICK")), QByteArray("/dev/top"));
}

void tst_CVolumeInfo::DeviceOfOneNameThatBeginsLikeAnother()
{
    QVERIFY(CVolume::Mount("/dev/short", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/long", "/Volumes/STICK 1"));
    QVERIFY(QDir().mkpath(QStringLiteral("/Volumes/STICK 2")));
    QCOMPARE(CVolumeInfo::DeviceOf(QStringLiteral("/Volumes/STICK 1")), QByteArray("/dev/long"));
    QCOMPARE(CVolumeInfo::DeviceOf(QStringLiteral("/Volumes/STICK 2")), QByteArray("volumes"));
}

void tst_CVolumeInfo::NoDeviceForAPathThatIsNotThere()
{
    QCOMPARE(CVolumeInfo::DeviceOf(QStringLiteral("/Volumes/gone")), QByteArray());
    QCOMPARE(CVolumeInfo::DeviceOf(QString()), QByteArray());
}

void tst_CVolumeInfo::MountPointsAreAbsolutePaths()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/line\nbreak"));
    const QByteArrayList listPoint = CVolumeInfo::MountPoints().value_or(QByteArrayList());
    QVERIFY(listPoint.contains("/Volumes/line\nbreak"));
    QVERIFY(listPoint.contains("/proc"));
}

QTEST_GUILESS_MAIN(tst_CVolumeInfo)
#include "tst_CVolumeInfo.moc"
