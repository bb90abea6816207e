#include "files/CFileNameCodec.h"
#include "settings/PListParser.h"
#include "standin/CFakeSys.h"
#include "support/CVolume.h"
#include "support/VolumeNames.h"

#include <QBuffer>
#include <QProcess>
#include <QStorageInfo>
#include <QTest>

#include <memory>

namespace {

/** What one run of the command gave. */
struct STAnswer
{
    int nExit = -1;
    QByteArray baOutput;
    QByteArray baError;
    QVariantMap mapValue;
};

} // namespace

static STAnswer Run(const QStringList& listArgument, const QString& strOutputFile = QString())
{
    STAnswer answer;
    QProcess process;
    process.setStandardOutputFile(strOutputFile);
    process.start(TARNWICK_DISKUTIL, listArgument);
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

static STAnswer Info(const QString& strNode) { return Run({"info", "-plist", strNode}); }

static QString Text(const STAnswer& answer, const char* pszKey)
{
    return answer.mapValue.value(pszKey).toString();
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
    void volumeNames_data() { AddVolumeNames(); }
    void volumeNames();
    void readOnlyVolume();
    void volumeWithoutDisk();
    void outputThatCannotBeWritten();

private:
    std::unique_ptr<CFakeSys> m_pFake;
};

void tst_diskutil::initTestCase()
{
    CFileNameCodec::Install();
    m_pFake = std::make_unique<CFakeSys>();
    m_pFake->UsbStick("sdx", 240);
    m_pFake->Device("pci/nvme/nvme0", "nvme");
    m_pFake->Disk("pci/nvme/nvme0/nvme0n1", "259:0", 20000000000);
    m_pFake->Disk("virtual/block/dm-7", "254:7");
    m_pFake->MapperName("virtual/block/dm-7", "vault");
    const QString strStick = QFileInfo(m_pFake->Root() + "/class/block/sdx1").canonicalFilePath();
    m_pFake->Slave("virtual/block/dm-7", strStick.section("/devices/", 1));
    NEEDS_VOLUMES();
    QVERIFY(CVolume::Bind(QFile::encodeName(m_pFake->Root()), "/sys"));
}

void tst_diskutil::usage_data()
{
    QTest::addColumn<QStringList>("listArgument");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no node") << QStringList{"info", "-plist"};
    QTest::newRow("no property list") << QStringList{"info", "/dev/sdx1"};
    QTest::newRow("two nodes") << QStringList{"info", "-plist", "/dev/sdx1", "/dev/sdx1"};
    QTest::newRow("other order") << QStringList{"info", "/dev/sdx1", "-plist"};
    QTest::newRow("other verb") << QStringList{"eraseDisk", "-plist", "/dev/sdx1"};
}

void tst_diskutil::usage()
{
    QFETCH(QStringList, listArgument);
    const STAnswer answer = Run(listArgument);
    QCOMPARE(answer.nExit, 1);
    QCOMPARE(answer.baOutput, "");
    QCOMPARE(answer.baError, "Usage: diskutil info -plist DEVICENODE\n");
}

void tst_diskutil::unknownDisk_data()
{
    QTest::addColumn<QString>("strNode");
    QTest::newRow("no such disk") << "/dev/sdq1";
    QTest::newRow("empty") << QString();
    QTest::newRow("markup and a place for an argument") << "<b>%1%s";
    QTest::newRow("a file") << "/etc/passwd";
    QTest::newRow("very long") << QString(5000, 'x');
}

void tst_diskutil::unknownDisk()
{
    QFETCH(QString, strNode);
    const STAnswer answer = Info(strNode);
    QCOMPARE(answer.nExit, 1);
    QCOMPARE(answer.baOutput, "");
    QCOMPARE(answer.baError, "Could not find disk: " + strNode.toUtf8() + '\n');
}

void tst_diskutil::busOfNode_data()
{
    QTest::addColumn<QString>("strNode");
    QTest::addColumn<QString>("strIdentifier");
    QTest::addColumn<QString>("strBus");
    QTest::newRow("stick") << "/dev/sdx"
                           << "sdx"
                           << "USB";
    QTest::newRow("its partition") << "/dev/sdx1"
                                   << "sdx1"
                                   << "USB";
    QTest::newRow("bare name") << "sdx1"
                               << "sdx1"
                               << "USB";
    QTest::newRow("encrypted") << "/dev/mapper/vault"
                               << "dm-7"
                               << "USB";
    QTest::newRow("internal") << "/dev/nvme0n1"
                              << "nvme0n1"
                              << "PCI-Express";
}

void tst_diskutil::busOfNode()
{
    QFETCH(QString, strNode);
    QFETCH(QString, strIdentifier);
    const STAnswer answer = Info(strNode);
    QCOMPARE(answer.nExit, 0);
    QCOMPARE(answer.baError, "");
    QTEST(Text(answer, "BusProtocol"), "strBus");
    QCOMPARE(Text(answer, "DeviceIdentifier"), strIdentifier);
    QCOMPARE(Text(answer, "DeviceNode"), "/dev/" + strIdentifier);
    QCOMPARE(answer.mapValue.value("MountPoint"), QVariant(QString()));
    QCOMPARE(answer.mapValue.size(), 10);
}

void tst_diskutil::volume()
{
    const CVolume volume("STICK", "/dev/sdx1", 8);
    QVERIFY(volume.IsValid());
    // The node as the program learns it.
    const STAnswer answer = Info(QString::fromLocal8Bit(QStorageInfo(volume.Path()).device()));
    QCOMPARE(answer.nExit, 0);
    const QVariantMap expected = {
        {"BusProtocol", "USB"},           {"DeviceIdentifier", "sdx1"},
        {"DeviceNode", "/dev/sdx1"},      {"Ejectable", true},
        {"FilesystemType", "tmpfs"},      {"Internal", false},
        {"MountPoint", "/Volumes/STICK"}, {"TotalSize", 8 * 1024 * 1024},
        {"VolumeName", "STICK"},          {"WritableVolume", true},
    };
    QCOMPARE(answer.mapValue, expected);
}

void tst_diskutil::volumeNames()
{
    QFETCH(QByteArray, baName);
    const CVolume volume(QFile::decodeName(baName), "/dev/sdx1", 1);
    QVERIFY(volume.IsValid());
    const STAnswer answer = Info("/dev/sdx1");
    QCOMPARE(answer.nExit, 0);
    // What is no UTF-8 cannot stand in a property list.
    QCOMPARE(Text(answer, "VolumeName"), QString::fromUtf8(baName));
    QCOMPARE(Text(answer, "MountPoint"), "/Volumes/" + QString::fromUtf8(baName));
    QCOMPARE(Text(answer, "BusProtocol"), "USB");
}

void tst_diskutil::readOnlyVolume()
{
    CVolume volume("STICK", "/dev/sdx1", 1);
    QVERIFY(volume.MakeReadOnly());
    QCOMPARE(Info("sdx1").mapValue.value("WritableVolume"), QVariant(false));
}

void tst_diskutil::volumeWithoutDisk()
{
    const CVolume volume("SHARE", "in memory", 1);
    const STAnswer answer = Info("in memory");
    QCOMPARE(answer.nExit, 0);
    QCOMPARE(Text(answer, "BusProtocol"), "Virtual Interface");
    QCOMPARE(Text(answer, "DeviceNode"), "in memory");
    QCOMPARE(Text(answer, "VolumeName"), "SHARE");
}

void tst_diskutil::outputThatCannotBeWritten()
{
    const STAnswer answer = Run({"info", "-plist", "sdx1"}, "/dev/full");
    QCOMPARE(answer.nExit, 1);
    QCOMPARE(answer.baError, "Could not write the answer\n");
}

QTEST_GUILESS_MAIN(tst_diskutil)
#include "tst_diskutil.moc"
