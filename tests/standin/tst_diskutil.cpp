#include "settings/PListParser.h"
#include "standin/CFakeSys.h"
#include "support/CVolume.h"

#include <QBuffer>
#include <QProcess>
#include <QStorageInfo>
#include <QtTest>

#include <memory>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

/** What one run of the command gave. */
struct STAnswer
{
    int nExit = -1;
    QByteArray baOutput;
    QByteArray baError;
    QVariantMap mapValue;
};

static STAnswer Run(const QStringList& listArgument)
{
    STAnswer answer;
    QProcess process;
    process.start(QStringLiteral(TARNWICK_DISKUTIL), listArgument);
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit) {
        return answer;
    }
    answer.nExit = process.exitCode();
    answer.baOutput = process.readAllStandardOutput();
    answer.baError = process.readAllStandardError();
    if (!answer.baOutput.isEmpty()) {
        QBuffer buffer(&answer.baOutput);
        answer.mapValue = PListParser::parsePList(&buffer).toMap();
    }
    return answer;
}

static STAnswer Info(const QString& strNode)
{
    return Run({QStringLiteral("info"), QStringLiteral("-plist"), strNode});
}

/** Lays other disks over /sys, in a view of the mounts that this process alone has. */
static bool UseSysfs(const QString& strRoot)
{
    return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && mount(strRoot.toLocal8Bit().constData(), "/sys", nullptr, MS_BIND | MS_REC, nullptr) == 0;
}

class tst_diskutil : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void usage_data();
    void usage();
    void unknownDisk_data();
    void unknownDisk();
    void busOfNode_data();
    void busOfNode();
    void volume();
    void volumeNames_data();
    void volumeNames();
    void readOnlyVolume();
    void volumeWithoutDisk();
    void outputThatCannotBeWritten();

private:
    std::unique_ptr<CFakeSys> m_pFake;
};

void tst_diskutil::initTestCase()
{
    m_pFake = std::make_unique<CFakeSys>();
    m_pFake->UsbStick(QStringLiteral("sdx"), 240);
    m_pFake->Device(QStringLiteral("pci/nvme/nvme0"), QStringLiteral("nvme"));
    m_pFake->Disk(QStringLiteral("pci/nvme/nvme0/nvme0n1"), QStringLiteral("259:0"), 20000000000);
    m_pFake->Disk(QStringLiteral("virtual/block/dm-7"), QStringLiteral("254:7"));
    m_pFake->MapperName(QStringLiteral("virtual/block/dm-7"), QStringLiteral("vault"));
    const QString strStick
        = QFileInfo(m_pFake->Root() + QStringLiteral("/class/block/sdx1")).canonicalFilePath();
    m_pFake->Slave(QStringLiteral("virtual/block/dm-7"), strStick.section(QStringLiteral("/devices/"), 1));
    if (!UseSysfs(m_pFake->Root())) {
        QSKIP("disks cannot be described here: no private view of the mounts");
    }
}

void tst_diskutil::usage_data()
{
    QTest::addColumn<QStringList>("listArgument");
    const QString strInfo = QStringLiteral("info");
    const QString strPlist = QStringLiteral("-plist");
    const QString strNode = QStringLiteral("/dev/sdx1");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no node") << QStringList{strInfo, strPlist};
    QTest::newRow("no property list") << QStringList{strInfo, strNode};
    QTest::newRow("two nodes") << QStringList{strInfo, strPlist, strNode, strNode};
    QTest::newRow("other order") << QStringList{strInfo, strNode, strPlist};
    QTest::newRow("other verb") << QStringList{QStringLiteral("eraseDisk"), strPlist, strNode};
}

void tst_diskutil::usage()
{
    QFETCH(QStringList, listArgument);
    const STAnswer answer = Run(listArgument);
    QCOMPARE(answer.nExit, 1);
    QCOMPARE(answer.baOutput, QByteArray());
    QCOMPARE(answer.baError, QByteArray("Usage: diskutil info -plist DEVICENODE\n"));
}

void tst_diskutil::unknownDisk_data()
{
    QTest::addColumn<QString>("strNode");
    QTest::newRow("no such disk") << QStringLiteral("/dev/sdq1");
    QTest::newRow("empty") << QString();
    QTest::newRow("markup and a place for an argument") << QStringLiteral("<b>%1%s");
    QTest::newRow("a file") << QStringLiteral("/etc/passwd");
    QTest::newRow("very long") << QString(5000, QLatin1Char('x'));
}

void tst_diskutil::unknownDisk()
{
    QFETCH(QString, strNode);
    const STAnswer answer = Info(strNode);
    QCOMPARE(answer.nExit, 1);
    QCOMPARE(answer.baOutput, QByteArray());
    QCOMPARE(answer.baError, "Could not find disk: " + strNode.toUtf8() + '\n');
}

void tst_diskutil::busOfNode_data()
{
    QTest::addColumn<QString>("strNode");
    QTest::addColumn<QString>("strIdentifier");
    QTest::addColumn<QString>("strBus");
    QTest::newRow("stick") << QStringLiteral("/dev/sdx") << QStringLiteral("sdx") << QStringLiteral("USB");
    QTest::newRow("its partition") << QStringLiteral("/dev/sdx1") << QStringLiteral("sdx1")
                                   << QStringLiteral("USB");
    QTest::newRow("bare name") << QStringLiteral("sdx1") << QStringLiteral("sdx1") << QStringLiteral("USB");
    QTest::newRow("encrypted") << QStringLiteral("/dev/mapper/vault") << QStringLiteral("dm-7")
                               << QStringLiteral("USB");
    QTest::newRow("internal") << QStringLiteral("/dev/nvme0n1") << QStringLiteral("nvme0n1")
                              << QStringLiteral("PCI-Express");
}

void tst_diskutil::busOfNode()
{
    QFETCH(QString, strNode);
    QFETCH(QString, strIdentifier);
    QFETCH(QString, strBus);
    const STAnswer answer = Info(strNode);
    QCOMPARE(answer.nExit, 0);
    QCOMPARE(answer.baError, QByteArray());
    QCOMPARE(answer.mapValue.value(QStringLiteral("BusProtocol")).toString(), strBus);
    QCOMPARE(answer.mapValue.value(QStringLiteral("DeviceIdentifier")).toString(), strIdentifier);
    QCOMPARE(answer.mapValue.value(QStringLiteral("DeviceNode")).toString(),
             QStringLiteral("/dev/") + strIdentifier);
    QCOMPARE(answer.mapValue.value(QStringLiteral("MountPoint")), QVariant(QString()));
    QCOMPARE(answer.mapValue.size(), 10);
}

void tst_diskutil::volume()
{
    const CVolume volume(QStringLiteral("STICK"), QStringLiteral("/dev/sdx1"), 8);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    // The node as the program learns it.
    const STAnswer answer = Info(QString::fromLocal8Bit(QStorageInfo(volume.Path()).device()));
    QCOMPARE(answer.nExit, 0);
    const QVariantMap expected = {
        {QStringLiteral("BusProtocol"), QStringLiteral("USB")},
        {QStringLiteral("DeviceIdentifier"), QStringLiteral("sdx1")},
        {QStringLiteral("DeviceNode"), QStringLiteral("/dev/sdx1")},
        {QStringLiteral("Ejectable"), true},
        {QStringLiteral("FilesystemType"), QStringLiteral("tmpfs")},
        {QStringLiteral("Internal"), false},
        {QStringLiteral("MountPoint"), QStringLiteral("/Volumes/STICK")},
        {QStringLiteral("TotalSize"), 8 * 1024 * 1024},
        {QStringLiteral("VolumeName"), QStringLiteral("STICK")},
        {QStringLiteral("WritableVolume"), true},
    };
    QCOMPARE(answer.mapValue, expected);
}

void tst_diskutil::volumeNames_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QString>("strName");
    const auto row = [](const char* pName, const QByteArray& baName) {
        QTest::newRow(pName) << baName << QString::fromUtf8(baName);
    };
    row("blanks", " My  Stick ");
    row("markup", "<b>&amp;\"'");
    row("place for an argument", "%1 %s");
    row("line end", "a\nb");
    row("backslash", "a\\040b");
    row("any script", "文件 ملف ü 🗂");
    row("leading dash", "-plist");
    row("255 bytes", QByteArray(255, 'n'));
    QTest::newRow("bytes that are no UTF-8") << QByteArray("M\xFCller") << QStringLiteral("M\uFFFDller");
}

void tst_diskutil::volumeNames()
{
    QFETCH(QByteArray, baName);
    QFETCH(QString, strName);
    const QByteArray baPath = "/Volumes/" + baName;
    if (mkdir(baPath.constData(), 0755) != 0
        || mount("/dev/sdx1", baPath.constData(), "tmpfs", 0, "size=1m") != 0) {
        QSKIP("cannot mount here");
    }
    const STAnswer answer = Info(QStringLiteral("/dev/sdx1"));
    QCOMPARE(umount(baPath.constData()), 0);
    QCOMPARE(rmdir(baPath.constData()), 0);
    QCOMPARE(answer.nExit, 0);
    QCOMPARE(answer.mapValue.value(QStringLiteral("VolumeName")).toString(), strName);
    QCOMPARE(answer.mapValue.value(QStringLiteral("MountPoint")).toString(),
             QStringLiteral("/Volumes/") + strName);
    QCOMPARE(answer.mapValue.value(QStringLiteral("BusProtocol")).toString(), QStringLiteral("USB"));
}

void tst_diskutil::readOnlyVolume()
{
    CVolume volume(QStringLiteral("STICK"), QStringLiteral("/dev/sdx1"), 1);
    if (!volume.IsValid() || !volume.MakeReadOnly()) {
        QSKIP("cannot mount here");
    }
    QCOMPARE(Info(QStringLiteral("sdx1")).mapValue.value(QStringLiteral("WritableVolume")), QVariant(false));
}

void tst_diskutil::volumeWithoutDisk()
{
    const CVolume volume(QStringLiteral("SHARE"), QStringLiteral("in memory"), 1);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    const STAnswer answer = Info(QStringLiteral("in memory"));
    QCOMPARE(answer.nExit, 0);
    QCOMPARE(answer.mapValue.value(QStringLiteral("BusProtocol")).toString(),
             QStringLiteral("Virtual Interface"));
    QCOMPARE(answer.mapValue.value(QStringLiteral("DeviceNode")).toString(), QStringLiteral("in memory"));
    QCOMPARE(answer.mapValue.value(QStringLiteral("VolumeName")).toString(), QStringLiteral("SHARE"));
}

void tst_diskutil::outputThatCannotBeWritten()
{
    QProcess process;
    process.setStandardOutputFile(QStringLiteral("/dev/full"));
    process.start(QStringLiteral(TARNWICK_DISKUTIL),
                  {QStringLiteral("info"), QStringLiteral("-plist"), QStringLiteral("sdx1")});
    QVERIFY(process.waitForFinished(30000));
    QCOMPARE(process.exitCode(), 1);
    QCOMPARE(process.readAllStandardError(), QByteArray("Could not write the answer\n"));
}

QTEST_GUILESS_MAIN(tst_diskutil)
#include "tst_diskutil.moc"
