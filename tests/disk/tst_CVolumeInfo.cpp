#include "disk/platform/CVolumeInfo.h"
#include "files/CFileNameCodec.h"
#include "support/CVolume.h"
#include "support/VolumeNames.h"

#include <QDir>
#include <QTest>

/** Which device a path lies on, whatever its volume is called. */
class tst_CVolumeInfo : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void deviceByName_data() { AddVolumeNames(); }
    void deviceByName();
    void deviceOfAPath_data();
    void deviceOfAPath();
    void mountPointsAreAbsolutePaths();
};

void tst_CVolumeInfo::init() { NEEDS_VOLUMES(); }

void tst_CVolumeInfo::deviceByName()
{
    QFETCH(QByteArray, baName);
    const QByteArray baPoint = "/Volumes/" + baName;
    QVERIFY(CVolume::Mount("/dev/disk7s1", baPoint));
    QCOMPARE(CVolumeInfo::DeviceOf(QFile::decodeName(baPoint)), "/dev/disk7s1");
}

void tst_CVolumeInfo::deviceOfAPath_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<QByteArray>("baDevice");
    QTest::newRow("volume on top of another") << "/Volumes/STICK" << QByteArray("/dev/top");
    QTest::newRow("folder in a volume") << "/Volumes/STICK/a/b" << QByteArray("/dev/top");
    QTest::newRow("link to a volume") << "/Volumes/link" << QByteArray("/dev/top");
    QTest::newRow("volume whose name begins alike") << "/Volumes/STICK 1" << QByteArray("/dev/long");
    QTest::newRow("folder whose name begins alike") << "/Volumes/STICK 2" << QByteArray("volumes");
    QTest::newRow("path that is not there") << "/Volumes/gone" << QByteArray();
    QTest::newRow("no path") << QString() << QByteArray();
}

void tst_CVolumeInfo::deviceOfAPath()
{
    QFETCH(QString, strPath);
    QVERIFY(CVolume::Mount("/dev/below", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/top", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/long", "/Volumes/STICK 1"));
    QVERIFY(QDir().mkpath("/Volumes/STICK/a/b"));
    QVERIFY(QDir().mkpath("/Volumes/STICK 2"));
    QVERIFY(QFile::link("/Volumes/STICK", "/Volumes/link"));
    QTEST(CVolumeInfo::DeviceOf(strPath), "baDevice");
}

void tst_CVolumeInfo::mountPointsAreAbsolutePaths()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/line\nbreak"));
    const QByteArrayList listPoint = CVolumeInfo::MountPoints().value_or(QByteArrayList());
    QVERIFY(listPoint.contains("/Volumes/line\nbreak"));
    QVERIFY(listPoint.contains("/proc"));
}

QTEST_GUILESS_MAIN(tst_CVolumeInfo)
#include "tst_CVolumeInfo.moc"
