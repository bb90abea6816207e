#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeInfo.h"
#include "files/CFileNameCodec.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

/** Volumes of our own, and a "diskutil" of our own that describes them. */
class tst_CDestinationDiscovery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup();
    void Constants();
    void BusProtocol_data();
    void BusProtocol();
    void RoleOf_data();
    void RoleOf();
    void CommandsAndTheirVolumes_data();
    void CommandsAndTheirVolumes();
    void MissingCommand();
    void CommandThatIsNoProgram();
    void DiagnosticsSayWhatFailed_data();
    void DiagnosticsSayWhatFailed();
    void CommandIsAskedForTheDeviceInOneArgument_data();
    void CommandIsAskedForTheDeviceInOneArgument();
    void NamesThatAreText_data();
    void NamesThatAreText();
    void OwnMediumIsNeverListed();
    void OwnVolumeOnAnotherBusIsASource();
    void KeepsTheOrderOfTheFolderAndWritesTheLog();
    void OnlyFoldersCount();
    void NoVolumes();
    void CommandThatIgnoresTheEndIsKilledWithItsChildren();
    void CommandThatHangsWithClosedOutputCostsNoProcessorTime();
    void CommandThatPrintsForEverEndsLongBeforeItsTime();
    void TheNextVolumeIsAskedAfterAHang();
    void CancelledBeforeTheStart();
    void CancelledDuringAHang_data();
    void CancelledDuringAHang();
    void CancelledBetweenTwoVolumes();
    void CancelledAfterTheLastVolume();

private:
    void UseCommand(const QByteArray& baScript);
    QByteArrayList Asked() const;
    bool NothingLeftRunning() const;

    std::unique_ptr<CTempTree> m_pTree;
    QByteArray m_baPath;
};

static QByteArray PList(const QByteArray& baEntries)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
           "<plist version=\"1.0\">\n<dict>\n<key>DeviceNode</key><string>/dev/disk7s1</string>\n"
        + baEntries + "</dict>\n</plist>\n";
}

static QByteArray Bus(const QByteArray& baBus)
{
    return PList("<key>BusProtocol</key><string>" + baBus + "</string>\n");
}

/** A script line that prints such a text. */
static QByteArray Prints(const QByteArray& baText) { return "cat <<'END'\n" + baText + "END\n"; }

static const QByteArray HANGS = "exec sleep 600\n";

static const QByteArray CHILD_HANGS = "sleep 600 &\necho $! >> \"$here/pids\"\nwhile :; do wait; done\n";

static QVector<STVolume> Scanned()
{
    QVector<STVolume> listVolume;
    const std::atomic<bool> bCancelled{false};
    const bool bWhole = CDestinationDiscovery::Scan(
        [&listVolume](const STVolume& volume) { listVolume.append(volume); }, bCancelled);
    return bWhole ? listVolume : QVector<STVolume>();
}

void tst_CDestinationDiscovery::init()
{
    NEEDS_VOLUMES();
    m_pTree = std::make_unique<CTempTree>();
    m_baPath = qgetenv("PATH");
    UseLogFile();
}

void tst_CDestinationDiscovery::cleanup()
{
    if (m_pTree) {
        qputenv("PATH", m_baPath);
        m_pTree.reset();
    }
    CDestinationDiscovery::SetCommandTimeoutMs(0);
}

/** Puts a command in front of the PATH that notes how it was called, and then does what the script says. */
void tst_CDestinationDiscovery::UseCommand(const QByteArray& baScript)
{
    const QString strCommand
        = m_pTree->Write(QStringLiteral("bin/diskutil"),
                         "#!/bin/bash\nhere=${0%/bin/diskutil}\necho $$ >> \"$here/pids\"\n"
                         "printf '%s|' $# \"$@\" >> \"$here/asked\"; printf '\\0' >> \"$here/asked\"\n"
                             + baScript);
    QVERIFY(QFile::setPermissions(strCommand, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_pTree->Path(QStringLiteral("bin"))) + ':' + m_baPath);
}

QByteArrayList tst_CDestinationDiscovery::Asked() const
{
    QByteArrayList listCall = m_pTree->Read(QStringLiteral("asked")).split('\0');
    listCall.removeLast();
    return listCall;
}

/** Looks for the commands, their children as far as they noted them, and whatever else is in their groups. */
bool tst_CDestinationDiscovery::NothingLeftRunning() const
{
    QByteArrayList listPid = m_pTree->Read(QStringLiteral("pids")).split('\n');
    listPid.removeLast();
    return !listPid.isEmpty() && std::all_of(listPid.cbegin(), listPid.cend(), [](const QByteArray& baPid) {
        return ::kill(-baPid.toInt(), 0) != 0 && ::kill(baPid.toInt(), 0) != 0;
    });
}

void tst_CDestinationDiscovery::Constants()
{
    QCOMPARE(CDestinationDiscovery::VolumesFolder(), QStringLiteral("/Volumes"));
    QCOMPARE(CDestinationDiscovery::InfoCommand(), QStringLiteral("diskutil"));
    QCOMPARE(CDestinationDiscovery::CommandTimeoutMs(), 30000);
    CDestinationDiscovery::SetCommandTimeoutMs(7);
    QCOMPARE(CDestinationDiscovery::CommandTimeoutMs(), 7);
    CDestinationDiscovery::SetCommandTimeoutMs(0);
    QCOMPARE(CDestinationDiscovery::CommandTimeoutMs(), 30000);
}

void tst_CDestinationDiscovery::BusProtocol_data()
{
    QTest::addColumn<QByteArray>("baPList");
    QTest::addColumn<QString>("strBus");
    QTest::newRow("USB") << Bus("USB") << QStringLiteral("USB");
    QTest::newRow("other case") << Bus("usb") << QStringLiteral("usb");
    QTest::newRow("SATA") << Bus("SATA") << QStringLiteral("SATA");
    QTest::newRow("two words") << Bus("Disk Image") << QStringLiteral("Disk Image");
    QTest::newRow("empty value") << Bus("") << QString();
    QTest::newRow("no such key") << PList("") << QString();
    QTest::newRow("key of other case") << PList("<key>busprotocol</key><string>USB</string>") << QString();
    QTest::newRow("key in an inner dict")
        << PList("<key>Inner</key><dict><key>BusProtocol</key><string>USB</string></dict>") << QString();
    QTest::newRow("the last of two counts")
        << PList("<key>BusProtocol</key><string>SATA</string><key>BusProtocol</key><string>USB</string>")
        << QStringLiteral("USB");
    QTest::newRow("a list on top") << QByteArray(
        "<plist version=\"1.0\"><array><string>USB</string></array></plist>")
                                   << QString();
    QTest::newRow("a dict as value") << PList(
        "<key>BusProtocol</key><dict><key>USB</key><string>USB</string></dict>")
                                     << QString();
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("junk") << QByteArray("Could not find disk: USB\n") << QString();
    QTest::newRow("cut short") << Bus("USB").chopped(20) << QString();
    QTest::newRow("zero bytes") << QByteArray(100, '\0') << QString();
}

void tst_CDestinationDiscovery::BusProtocol()
{
    QFETCH(QByteArray, baPList);
    QTEST(CDestinationDiscovery::BusProtocol(baPList), "strBus");
}

void tst_CDestinationDiscovery::RoleOf_data()
{
    QTest::addColumn<QString>("strBus");
    QTest::addColumn<QByteArray>("baDevice");
    QTest::addColumn<int>("nRole");
    QTest::newRow("USB") << QStringLiteral("USB") << QByteArray("/dev/disk7s1")
                         << int(VOLUME_ROLE_DESTINATION);
    QTest::newRow("USB, own") << QStringLiteral("USB") << QByteArray("/dev/own")
                              << int(VOLUME_ROLE_OWN_MEDIUM);
    QTest::newRow("other case") << QStringLiteral("usb") << QByteArray("/dev/disk7s1")
                                << int(VOLUME_ROLE_SOURCE);
    QTest::newRow("trailing blank") << QStringLiteral("USB ") << QByteArray("/dev/x")
                                    << int(VOLUME_ROLE_SOURCE);
    QTest::newRow("SATA") << QStringLiteral("SATA") << QByteArray("/dev/disk7s1") << int(VOLUME_ROLE_SOURCE);
    QTest::newRow("SATA, own") << QStringLiteral("SATA") << QByteArray("/dev/own") << int(VOLUME_ROLE_SOURCE);
    QTest::newRow("no bus") << QString() << QByteArray("/dev/disk7s1") << int(VOLUME_ROLE_SOURCE);
    QTest::newRow("USB, another partition of the own disk")
        << QStringLiteral("USB") << QByteArray("/dev/own2") << int(VOLUME_ROLE_DESTINATION);
}

void tst_CDestinationDiscovery::RoleOf()
{
    QFETCH(QString, strBus);
    QFETCH(QByteArray, baDevice);
    QTEST(int(CDestinationDiscovery::RoleOf(strBus, baDevice, "/dev/own")), "nRole");
}

void tst_CDestinationDiscovery::CommandsAndTheirVolumes_data()
{
    QTest::addColumn<QByteArray>("baScript");
    QTest::addColumn<int>("nRole");

    const int nSource = int(VOLUME_ROLE_SOURCE);
    const int nDestination = int(VOLUME_ROLE_DESTINATION);
    const QByteArray baUsb = Prints(Bus("USB"));
    const QByteArray baPartial = Prints(Bus("USB").chopped(12));
    QTest::newRow("USB") << baUsb << nDestination;
    QTest::newRow("usb") << Prints(Bus("usb")) << nSource;
    QTest::newRow("SATA") << Prints(Bus("SATA")) << nSource;
    QTest::newRow("no BusProtocol") << Prints(PList("")) << nSource;
    QTest::newRow("junk") << QByteArray("echo this is no property list: USB\n") << nSource;
    QTest::newRow("binary junk") << QByteArray("head -c 100000 /dev/urandom\n") << nSource;
    QTest::newRow("nothing") << QByteArray("exit 0\n") << nSource;
    QTest::newRow("fails without output") << QByteArray("echo no such disk >&2; exit 1\n") << nSource;
    QTest::newRow("fails after its output") << baUsb + "exit 1\n" << nDestination;
    QTest::newRow("crashes") << QByteArray("kill -SEGV $$\n") << nSource;
    QTest::newRow("hangs without output") << HANGS << nSource;
    QTest::newRow("hangs after its output") << baUsb + HANGS << nDestination;
    QTest::newRow("hangs in the middle of its output") << baPartial + HANGS << nSource;
    QTest::newRow("ends in the middle of its output") << baPartial << nSource;
    QTest::newRow("prints in two pieces")
        << "printf %s '" + Bus("USB").left(100) + "'\nsleep 0.2\nprintf %s '" + Bus("USB").mid(100) + "'\n"
        << nDestination;
    QTest::newRow("closes its output and hangs") << QByteArray("exec >&-\n") + HANGS << nSource;
    QTest::newRow("prints, closes its output and hangs") << baUsb + "exec >&-\n" + HANGS << nDestination;
    QTest::newRow("more than a pipe holds") << "cat <<'END'\n"
            + PList("<key>BusProtocol</key><string>USB</string><key>Pad</key><string>")
                  .chopped(int(qstrlen("</dict>\n</plist>\n")))
            + "\nEND\nhead -c 1000000 /dev/zero | tr '\\0' x\necho '</string></dict></plist>'\n"
                                            << nDestination;
    QTest::newRow("megabytes of junk") << QByteArray("head -c 9000000 /dev/zero | tr '\\0' x\n") << nSource;
    QTest::newRow("USB, then megabytes of junk") << baUsb + "head -c 9000000 /dev/zero | tr '\\0' x\n"
                                                 << nSource;
    QTest::newRow("prints for ever") << QByteArray("exec yes '<plist>'\n") << nSource;
}

void tst_CDestinationDiscovery::CommandsAndTheirVolumes()
{
    QFETCH(QByteArray, baScript);
    QFETCH(int, nRole);
    CDestinationDiscovery::SetCommandTimeoutMs(1500);
    UseCommand(baScript);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));

    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QCOMPARE(listVolume[0].strPath, QStringLiteral("/Volumes/STICK"));
    QCOMPARE(listVolume[0].strName, QStringLiteral("STICK"));
    QCOMPARE(listVolume[0].baDevice, QByteArray("/dev/disk7s1"));
    QCOMPARE(int(listVolume[0].enRole), nRole);
    QCOMPARE(LogLines(),
             QStringList{nRole == VOLUME_ROLE_SOURCE ? QStringLiteral("/Volumes/STICK")
                                                     : QStringLiteral("diskName: STICK")});
    QTRY_VERIFY(NothingLeftRunning());
}

void tst_CDestinationDiscovery::MissingCommand()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/B"));
    qputenv("PATH", QFile::encodeName(m_pTree->MkDir(QStringLiteral("empty"))));
    QElapsedTimer timer;
    timer.start();
    const CLogCapture capture;
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 2);
    QCOMPARE(int(listVolume[0].enRole), int(VOLUME_ROLE_SOURCE));
    QCOMPARE(int(listVolume[1].enRole), int(VOLUME_ROLE_SOURCE));
    QVERIFY(timer.elapsed() < 5000);
    QVERIFY(capture.HasPart(QStringLiteral("Disk query failed: /dev/disk7s1")));
    QVERIFY(!capture.HasPart(QStringLiteral("QIODevice")));
}

void tst_CDestinationDiscovery::CommandThatIsNoProgram()
{
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    const QString strCommand = m_pTree->Write(QStringLiteral("bin/diskutil"),
                                              "\x7f"
                                              "ELF is not all it takes");
    QVERIFY(QFile::setPermissions(strCommand, QFile::ReadOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_pTree->Path(QStringLiteral("bin"))));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QCOMPARE(int(listVolume[0].enRole), int(VOLUME_ROLE_SOURCE));
}

void tst_CDestinationDiscovery::DiagnosticsSayWhatFailed_data()
{
    QTest::addColumn<QByteArray>("baScript");
    QTest::addColumn<QString>("strPart");
    const QByteArray baUsb = Prints(Bus("USB"));
    QTest::newRow("nothing failed") << baUsb << QString();
    QTest::newRow("slow, but in time") << "sleep 0.2\n" + baUsb << QString();
    QTest::newRow("exit status") << baUsb + "exit 3\n" << QStringLiteral("Disk query failed: /dev/disk7s1");
    QTest::newRow("crash") << baUsb + "kill -SEGV $$\n" << QStringLiteral("Disk query failed: /dev/disk7s1");
    QTest::newRow("hang") << baUsb + HANGS << QStringLiteral("Disk query ended early: /dev/disk7s1");
}

void tst_CDestinationDiscovery::DiagnosticsSayWhatFailed()
{
    QFETCH(QByteArray, baScript);
    QFETCH(QString, strPart);
    CDestinationDiscovery::SetCommandTimeoutMs(700);
    UseCommand(baScript);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    const CLogCapture capture;
    QCOMPARE(Scanned().size(), 1);
    QVERIFY2(capture.HasPart(strPart.isEmpty() ? QStringLiteral("Disk query") : strPart) != strPart.isEmpty(),
             qPrintable(capture.Lines().join(QLatin1Char('\n'))));
}

void tst_CDestinationDiscovery::CommandIsAskedForTheDeviceInOneArgument_data()
{
    QTest::addColumn<QByteArray>("baDevice");
    QTest::newRow("plain") << QByteArray("/dev/disk7s1");
    QTest::newRow("blanks") << QByteArray("//nas/my  share");
    QTest::newRow("quotation marks") << QByteArray("a\"b'c");
    QTest::newRow("shell signs") << QByteArray("$(id);`id`|x>y*");
    QTest::newRow("percent signs") << QByteArray("%1 %2");
    QTest::newRow("hash and backslash") << QByteArray("a#b\\040c");
}

void tst_CDestinationDiscovery::CommandIsAskedForTheDeviceInOneArgument()
{
    QFETCH(QByteArray, baDevice);
    UseCommand(Prints(Bus("USB")));
    QVERIFY(CVolume::Mount(baDevice, "/Volumes/STICK"));
    QCOMPARE(Scanned().size(), 1);
    QCOMPARE(Asked(), QByteArrayList{"3|info|-plist|" + baDevice + "|"});
}

void tst_CDestinationDiscovery::NamesThatAreText_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("blank") << QStringLiteral("STICK A");
    QTest::newRow("trailing blank") << QStringLiteral("STICK ");
    QTest::newRow("percent signs") << QStringLiteral("%1 and %2");
    QTest::newRow("markup") << QStringLiteral("<b>bold");
    QTest::newRow("hash") << QStringLiteral("#1");
    QTest::newRow("leading dash") << QStringLiteral("-plist");
    QTest::newRow("several scripts") << QStringLiteral("Größe 磁盘");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('n'));
}

void tst_CDestinationDiscovery::NamesThatAreText()
{
    QFETCH(QString, strName);
    UseCommand("[ \"$3\" = /dev/disk7s1 ] || exit 1\n" + Prints(Bus("USB")));
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/" + strName.toUtf8()));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/line\nbreak"));
    QStringList listFound;
    for (const STVolume& volume : Scanned()) {
        listFound.append(QString::number(volume.enRole) + volume.strName + volume.strPath);
    }
    listFound.sort();
    QStringList listExpected{QStringLiteral("0line\nbreak/Volumes/line\nbreak"),
                             QStringLiteral("1") + strName + QStringLiteral("/Volumes/") + strName};
    listExpected.sort();
    QCOMPARE(listFound, listExpected);
    QVERIFY(LogLines().contains(QStringLiteral("diskName: ") + strName));
}

void tst_CDestinationDiscovery::OwnMediumIsNeverListed()
{
    UseCommand(Prints(Bus("USB")));
    const QByteArray baOwn = CVolumeInfo::DeviceOf(QCoreApplication::applicationDirPath());
    QVERIFY(!baOwn.isEmpty());
    QVERIFY(CVolume::Mount(baOwn, "/Volumes/OWN"));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QCOMPARE(int(listVolume[0].enRole), int(VOLUME_ROLE_OWN_MEDIUM));
    QCOMPARE(listVolume[0].baDevice, baOwn);
    QCOMPARE(LogLines(), QStringList{"skipped, the program runs from it: /Volumes/OWN"});
}

void tst_CDestinationDiscovery::OwnVolumeOnAnotherBusIsASource()
{
    UseCommand(Prints(Bus("SATA")));
    const QByteArray baOwn = CVolumeInfo::DeviceOf(QCoreApplication::applicationDirPath());
    QVERIFY(CVolume::Mount(baOwn, "/Volumes/OWN"));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QCOMPARE(int(listVolume[0].enRole), int(VOLUME_ROLE_SOURCE));
    QCOMPARE(LogLines(), QStringList{QStringLiteral("/Volumes/OWN")});
}

void tst_CDestinationDiscovery::KeepsTheOrderOfTheFolderAndWritesTheLog()
{
    UseCommand("case $3 in *u) bus=USB ;; *) bus=SATA ;; esac\ncat <<END\n" + Bus("$bus") + "END\n");
    const QByteArrayList listName{"m", "b", "z", "a", "k"};
    for (int i = 0; i < listName.size(); ++i) {
        QVERIFY(CVolume::Mount("/dev/" + listName[i] + (i % 2 == 0 ? "u" : "s"), "/Volumes/" + listName[i]));
    }
    const QStringList listFolder
        = QDir(QStringLiteral("/Volumes")).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    // This folder lists backwards, so that neither sorting goes unnoticed.
    QCOMPARE(listFolder.size(), listName.size());
    QVERIFY(listFolder != QDir(QStringLiteral("/Volumes")).entryList(QDir::Dirs | QDir::NoDotAndDotDot));

    QStringList listFound;
    QStringList listLog;
    for (const STVolume& volume : Scanned()) {
        listFound.append(volume.strName);
        const bool bUsb = listName.indexOf(volume.strName.toUtf8()) % 2 == 0;
        QCOMPARE(int(volume.enRole), int(bUsb ? VOLUME_ROLE_DESTINATION : VOLUME_ROLE_SOURCE));
        listLog.append(bUsb ? QStringLiteral("diskName: ") + volume.strName : volume.strPath);
    }
    QCOMPARE(listFound, listFolder);
    QCOMPARE(LogLines(), listLog);
    QCOMPARE(Asked().size(), 5);
}

void tst_CDestinationDiscovery::OnlyFoldersCount()
{
    UseCommand(Prints(Bus("USB")));
    QFile file(QStringLiteral("/Volumes/file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/.hidden"));
    QVERIFY(QFile::link(QStringLiteral("/Volumes/STICK"), QStringLiteral("/Volumes/link")));
    QStringList listFound;
    for (const STVolume& volume : Scanned()) {
        listFound.append(volume.strName);
    }
    listFound.sort();
    QCOMPARE(listFound, (QStringList{QStringLiteral("STICK"), QStringLiteral("link")}));
    QCOMPARE(Asked(), (QByteArrayList{"3|info|-plist|/dev/disk7s1|", "3|info|-plist|/dev/disk7s1|"}));
}

void tst_CDestinationDiscovery::NoVolumes()
{
    UseCommand(Prints(Bus("USB")));
    const std::atomic<bool> bCancelled{false};
    int nFound = 0;
    QVERIFY(CDestinationDiscovery::Scan([&nFound](const STVolume&) { ++nFound; }, bCancelled));
    QCOMPARE(nFound, 0);
    QVERIFY(!m_pTree->Has(QStringLiteral("asked")));
}

void tst_CDestinationDiscovery::CommandThatIgnoresTheEndIsKilledWithItsChildren()
{
    CDestinationDiscovery::SetCommandTimeoutMs(200);
    UseCommand("trap '' TERM HUP INT\n" + CHILD_HANGS);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Scanned().size(), 1);
    QVERIFY(timer.elapsed() < 2000);
    QTRY_VERIFY(NothingLeftRunning());
}

static qint64 ProcessorTimeMs()
{
    rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    return (usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000
        + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000;
}

void tst_CDestinationDiscovery::CommandThatHangsWithClosedOutputCostsNoProcessorTime()
{
    CDestinationDiscovery::SetCommandTimeoutMs(500);
    UseCommand("exec >&-\n" + HANGS);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    const qint64 nBefore = ProcessorTimeMs();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Scanned().size(), 1);
    QVERIFY(timer.elapsed() >= 1000);
    QVERIFY2(ProcessorTimeMs() - nBefore < 300, qPrintable(QString::number(ProcessorTimeMs() - nBefore)));
}

static qint64 PeakMemoryMiB()
{
    rusage usage;
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

void tst_CDestinationDiscovery::CommandThatPrintsForEverEndsLongBeforeItsTime()
{
    CDestinationDiscovery::SetCommandTimeoutMs(20000);
    UseCommand("exec yes '<plist>'\n");
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    const qint64 nBefore = PeakMemoryMiB();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Scanned().size(), 1);
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString::number(timer.elapsed())));
    const qint64 nGrowth = PeakMemoryMiB() - nBefore;
    QVERIFY2(nGrowth < 500, qPrintable(QString::number(nGrowth)));
    QTRY_VERIFY(NothingLeftRunning());
}

void tst_CDestinationDiscovery::TheNextVolumeIsAskedAfterAHang()
{
    CDestinationDiscovery::SetCommandTimeoutMs(300);
    UseCommand("[ \"$3\" = /dev/good ] || exec sleep 600\n" + Prints(Bus("USB")));
    QVERIFY(CVolume::Mount("/dev/bad1", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/good", "/Volumes/B"));
    QVERIFY(CVolume::Mount("/dev/bad2", "/Volumes/C"));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 3);
    for (const STVolume& volume : listVolume) {
        const bool bGood = volume.strName == QLatin1String("B");
        QCOMPARE(int(volume.enRole), int(bGood ? VOLUME_ROLE_DESTINATION : VOLUME_ROLE_SOURCE));
    }
    QTRY_VERIFY(NothingLeftRunning());
}

void tst_CDestinationDiscovery::CancelledBeforeTheStart()
{
    UseCommand(Prints(Bus("USB")));
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    const std::atomic<bool> bCancelled{true};
    const CLogCapture capture;
    int nFound = 0;
    QVERIFY(!CDestinationDiscovery::Scan([&nFound](const STVolume&) { ++nFound; }, bCancelled));
    QCOMPARE(nFound, 0);
    QVERIFY(!m_pTree->Has(QStringLiteral("asked")));
    QCOMPARE(LogLines(), QStringList());
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CDestinationDiscovery::CancelledDuringAHang_data()
{
    QTest::addColumn<QByteArray>("baScript");
    QTest::addColumn<int>("nProcesses");
    QTest::newRow("before any output") << HANGS << 1;
    QTest::newRow("after its output") << Prints(Bus("USB")) + HANGS << 1;
    QTest::newRow("with its output closed") << "exec >&-\n" + HANGS << 1;
    QTest::newRow("with a child of its own") << CHILD_HANGS << 2;
    QTest::newRow("ignoring the polite end") << "trap '' TERM\n" + CHILD_HANGS << 2;
}

void tst_CDestinationDiscovery::CancelledDuringAHang()
{
    QFETCH(QByteArray, baScript);
    QFETCH(int, nProcesses);
    UseCommand(baScript);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/B"));
    std::atomic<bool> bCancelled{false};
    std::atomic<int> nFound{0};
    std::atomic<bool> bWhole{true};
    const std::unique_ptr<QThread> pThread(QThread::create([&bCancelled, &nFound, &bWhole] {
        bWhole = CDestinationDiscovery::Scan([&nFound](const STVolume&) { ++nFound; }, bCancelled);
    }));
    pThread->start();
    QTRY_VERIFY(m_pTree->Has(QStringLiteral("asked")));
    QTRY_COMPARE(m_pTree->Read(QStringLiteral("pids")).count('\n'), nProcesses);
    QElapsedTimer timer;
    timer.start();
    bCancelled = true;
    QVERIFY(pThread->wait(5000));
    QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(bWhole.load(), false);
    QCOMPARE(nFound.load(), 0);
    QTRY_VERIFY(NothingLeftRunning());
    QCOMPARE(Asked().size(), 1);
}

void tst_CDestinationDiscovery::CancelledBetweenTwoVolumes()
{
    UseCommand(Prints(Bus("USB")));
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/B"));
    std::atomic<bool> bCancelled{false};
    int nFound = 0;
    const bool bWhole = CDestinationDiscovery::Scan(
        [&nFound, &bCancelled](const STVolume&) {
            ++nFound;
            bCancelled = true;
        },
        bCancelled);
    QVERIFY(!bWhole);
    QCOMPARE(nFound, 1);
    QCOMPARE(Asked().size(), 1);
}

void tst_CDestinationDiscovery::CancelledAfterTheLastVolume()
{
    UseCommand(Prints(Bus("USB")));
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    std::atomic<bool> bCancelled{false};
    QVERIFY(!CDestinationDiscovery::Scan([&bCancelled](const STVolume&) { bCancelled = true; }, bCancelled));
}

QTEST_GUILESS_MAIN(tst_CDestinationDiscovery)
#include "tst_CDestinationDiscovery.moc"
