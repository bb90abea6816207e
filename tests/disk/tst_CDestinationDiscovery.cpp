#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeInfo.h"
#include "files/CFileNameCodec.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/LogFile.h"
#include "support/ProcessUse.h"
#include "support/VolumeNames.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <csignal>

Q_DECLARE_METATYPE(ENVolumeRole)

/** Volumes of our own, and a "diskutil" of our own that describes them. */
class tst_CDestinationDiscovery : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup();

    void constants();
    void busProtocol_data();
    void busProtocol();
    void roleOf_data();
    void roleOf();
    void commandsAndTheirVolumes_data();
    void commandsAndTheirVolumes();
    void commandThatCannotBeStarted_data();
    void commandThatCannotBeStarted();
    void namesAreText_data();
    void namesAreText();
    void ownVolume_data();
    void ownVolume();
    void keepsTheOrderOfTheFolderAndWritesTheLog();
    void onlyFoldersCount();
    void noVolumes();
    void ignoredEndKillsTheChildrenAsWell();
    void closedOutputCostsNoProcessorTime();
    void endlessOutputEndsEarly();
    void nextVolumeIsAskedAfterAHang();
    void lateAnswerHasAllTheOthersAskedAtOnce();
    void waiterHearsWhatIsWaitedFor();
    void cancelledBeforeTheStart();
    void cancelledDuringAHang_data();
    void cancelledDuringAHang();
    void cancelledByTheReceiver_data();
    void cancelledByTheReceiver();

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

static const QByteArray PRINTS_USB = Prints(Bus("USB"));

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
        = m_pTree->Write("bin/diskutil",
                         "#!/bin/bash\nhere=${0%/bin/diskutil}\necho $$ >> \"$here/pids\"\n"
                         "printf '%s|' $# \"$@\" >> \"$here/asked\"; printf '\\0' >> \"$here/asked\"\n"
                             + baScript);
    QVERIFY(QFile::setPermissions(strCommand, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    qputenv("PATH", QFile::encodeName(m_pTree->Path("bin")) + ':' + m_baPath);
}

QByteArrayList tst_CDestinationDiscovery::Asked() const
{
    QByteArrayList listCall = m_pTree->Read("asked").split('\0');
    listCall.removeLast();
    return listCall;
}

/** Looks for the commands, their children as far as they noted them, and whatever else is in their groups. */
bool tst_CDestinationDiscovery::NothingLeftRunning() const
{
    QByteArrayList listPid = m_pTree->Read("pids").split('\n');
    listPid.removeLast();
    return !listPid.isEmpty() && std::all_of(listPid.cbegin(), listPid.cend(), [](const QByteArray& baPid) {
        return ::kill(-baPid.toInt(), 0) != 0 && ::kill(baPid.toInt(), 0) != 0;
    });
}

void tst_CDestinationDiscovery::constants()
{
    QCOMPARE(CDestinationDiscovery::VolumesFolder(), "/Volumes");
    QCOMPARE(CDestinationDiscovery::InfoCommand(), "diskutil");
    QCOMPARE(CDestinationDiscovery::CommandTimeoutMs(), 30000);
    CDestinationDiscovery::SetCommandTimeoutMs(7);
    QCOMPARE(CDestinationDiscovery::CommandTimeoutMs(), 7);
    CDestinationDiscovery::SetCommandTimeoutMs(0);
    QCOMPARE(CDestinationDiscovery::CommandTimeoutMs(), 30000);
}

void tst_CDestinationDiscovery::busProtocol_data()
{
    QTest::addColumn<QByteArray>("baPList");
    QTest::addColumn<QString>("strBus");
    const auto row = [](const char* pszName, const QByteArray& baPList, const char* pszBus) {
        QTest::newRow(pszName) << baPList << pszBus;
    };
    row("USB", Bus("USB"), "USB");
    row("other case", Bus("usb"), "usb");
    row("SATA", Bus("SATA"), "SATA");
    row("two words", Bus("Disk Image"), "Disk Image");
    row("empty value", Bus(""), "");
    row("no such key", PList(""), "");
    row("key of other case", PList("<key>busprotocol</key><string>USB</string>"), "");
    row("key in an inner dict",
        PList("<key>Inner</key><dict><key>BusProtocol</key><string>USB</string></dict>"), "");
    row("the last of two counts",
        PList("<key>BusProtocol</key><string>SATA</string><key>BusProtocol</key><string>USB</string>"),
        "USB");
    row("a list on top", "<plist version=\"1.0\"><array><string>USB</string></array></plist>", "");
    row("a dict as value", PList("<key>BusProtocol</key><dict><key>USB</key><string>USB</string></dict>"),
        "");
    row("nothing", "", "");
    row("junk", "Could not find disk: USB\n", "");
    row("cut short", Bus("USB").chopped(20), "");
    row("zero bytes", QByteArray(100, '\0'), "");
}

void tst_CDestinationDiscovery::busProtocol()
{
    QFETCH(QByteArray, baPList);
    QTEST(CDestinationDiscovery::BusProtocol(baPList), "strBus");
}

void tst_CDestinationDiscovery::roleOf_data()
{
    QTest::addColumn<QString>("strBus");
    QTest::addColumn<QByteArray>("baDevice");
    QTest::addColumn<ENVolumeRole>("enRole");
    const auto row = [](const char* pszBus, const char* pszDevice, ENVolumeRole enRole) {
        QTest::addRow("%s on \"%s\"", pszDevice, pszBus) << pszBus << QByteArray(pszDevice) << enRole;
    };
    row("USB", "/dev/disk7s1", VOLUME_ROLE_DESTINATION);
    row("USB", "/dev/own", VOLUME_ROLE_OWN_MEDIUM);
    row("usb", "/dev/disk7s1", VOLUME_ROLE_SOURCE);
    row("USB ", "/dev/disk7s1", VOLUME_ROLE_SOURCE);
    row("SATA", "/dev/disk7s1", VOLUME_ROLE_SOURCE);
    row("SATA", "/dev/own", VOLUME_ROLE_SOURCE);
    row("", "/dev/disk7s1", VOLUME_ROLE_SOURCE);
    row("USB", "/dev/own2", VOLUME_ROLE_DESTINATION); // another partition of the own disk
}

void tst_CDestinationDiscovery::roleOf()
{
    QFETCH(QString, strBus);
    QFETCH(QByteArray, baDevice);
    QTEST(CDestinationDiscovery::RoleOf(strBus, baDevice, "/dev/own"), "enRole");
}

void tst_CDestinationDiscovery::commandsAndTheirVolumes_data()
{
    QTest::addColumn<QByteArray>("baScript");
    QTest::addColumn<bool>("bUsb");
    QTest::addColumn<QString>("strTold"); // of the query, in the program's own output
    const auto row = [](const char* pszName, const QByteArray& baScript, bool bUsb,
                        const char* pszTold = "") { QTest::newRow(pszName) << baScript << bUsb << pszTold; };
    const char* const pszFailed = "Disk query failed: /dev/disk7s1";
    const char* const pszEarly = "Disk query ended early: /dev/disk7s1";
    const QByteArray baPartial = Prints(Bus("USB").chopped(12) + "\n");
    const QByteArray baPadding = PList("<key>BusProtocol</key><string>USB</string><key>Pad</key><string>");
    const QByteArray baMegabytes = "head -c 9000000 /dev/zero | tr '\\0' x\n";
    row("USB", PRINTS_USB, true);
    row("usb", Prints(Bus("usb")), false);
    row("SATA", Prints(Bus("SATA")), false);
    row("no BusProtocol", Prints(PList("")), false);
    row("junk", "echo this is no property list: USB\n", false);
    row("binary junk", "head -c 100000 /dev/urandom\n", false);
    row("nothing", "exit 0\n", false);
    row("slow, but in time", "sleep 0.2\n" + PRINTS_USB, true);
    row("fails without output", "echo no such disk >&2; exit 1\n", false, pszFailed);
    row("fails after its output", PRINTS_USB + "exit 3\n", true, pszFailed);
    row("crashes", "kill -SEGV $$\n", false, pszFailed);
    row("crashes after its output", PRINTS_USB + "kill -SEGV $$\n", true, pszFailed);
    row("hangs without output", HANGS, false, pszEarly);
    row("hangs after its output", PRINTS_USB + HANGS, true, pszEarly);
    row("hangs in the middle of its output", baPartial + HANGS, false, pszEarly);
    row("ends in the middle of its output", baPartial, false);
    row("prints in two pieces",
        "printf %s '" + Bus("USB").left(100) + "'\nsleep 0.2\nprintf %s '" + Bus("USB").mid(100) + "'\n",
        true);
    row("closes its output and hangs", "exec >&-\n" + HANGS, false, pszEarly);
    row("prints, closes its output and hangs", PRINTS_USB + "exec >&-\n" + HANGS, true, pszEarly);
    row("more than a pipe holds",
        "cat <<'END'\n" + baPadding.chopped(int(qstrlen("</dict>\n</plist>\n")))
            + "\nEND\nhead -c 1000000 /dev/zero | tr '\\0' x\necho '</string></dict></plist>'\n",
        true);
    row("megabytes of junk", baMegabytes, false, pszEarly);
    row("USB, then megabytes of junk", PRINTS_USB + baMegabytes, false, pszEarly);
    row("prints for ever", "exec yes '<plist>'\n", false, pszEarly);
}

void tst_CDestinationDiscovery::commandsAndTheirVolumes()
{
    QFETCH(QByteArray, baScript);
    QFETCH(bool, bUsb);
    QFETCH(QString, strTold);
    CDestinationDiscovery::SetCommandTimeoutMs(1500);
    UseCommand(baScript);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));

    const CLogCapture capture;
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QCOMPARE(listVolume[0].strPath, "/Volumes/STICK");
    QCOMPARE(listVolume[0].strName, "STICK");
    QCOMPARE(listVolume[0].baDevice, "/dev/disk7s1");
    QCOMPARE(listVolume[0].enRole, bUsb ? VOLUME_ROLE_DESTINATION : VOLUME_ROLE_SOURCE);
    QCOMPARE(LogLines(), QStringList{bUsb ? "diskName: STICK" : "/Volumes/STICK"});
    QVERIFY2(capture.HasPart(strTold.isEmpty() ? "Disk query" : strTold) != strTold.isEmpty(),
             qPrintable(capture.Lines().join('\n')));
    QTRY_VERIFY(NothingLeftRunning());
}

void tst_CDestinationDiscovery::commandThatCannotBeStarted_data()
{
    QTest::addColumn<bool>("bThere");
    QTest::newRow("missing") << false;
    QTest::newRow("no program") << true;
}

void tst_CDestinationDiscovery::commandThatCannotBeStarted()
{
    QFETCH(bool, bThere);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/B"));
    qputenv("PATH", QFile::encodeName(m_pTree->MkDir("bin")));
    if (bThere) {
        const QString strCommand = m_pTree->Write("bin/diskutil",
                                                  "\x7f"
                                                  "ELF is not all it takes");
        QVERIFY(QFile::setPermissions(strCommand, QFile::ReadOwner | QFile::ExeOwner));
    }
    QElapsedTimer timer;
    timer.start();
    const CLogCapture capture;
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 2);
    QCOMPARE(listVolume[0].enRole, VOLUME_ROLE_SOURCE);
    QCOMPARE(listVolume[1].enRole, VOLUME_ROLE_SOURCE);
    QVERIFY(timer.elapsed() < 5000);
    QVERIFY(capture.HasPart("Disk query failed: /dev/disk7s1"));
    QVERIFY(!capture.HasPart("QIODevice"));
}

void tst_CDestinationDiscovery::namesAreText_data()
{
    AddVolumeNames();
    QTest::newRow("path of a share") << QByteArray("//nas/my  share");
}

/** The same name as a volume's, as far as it can be one, and as a device's. */
void tst_CDestinationDiscovery::namesAreText()
{
    QFETCH(QByteArray, baName);
    UseCommand(PRINTS_USB);
    const QByteArray baPoint = "/Volumes/" + baName.mid(baName.lastIndexOf('/') + 1);
    QVERIFY(CVolume::Mount(baName, baPoint));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QCOMPARE(listVolume[0].strPath, QFile::decodeName(baPoint));
    QCOMPARE(listVolume[0].strName, listVolume[0].strPath.mid(int(qstrlen("/Volumes/"))));
    QCOMPARE(Asked(), QByteArrayList{"3|info|-plist|" + baName + "|"});
    // The log is read as UTF-8; a line end makes two lines of it.
    const QString strLine = QString::fromUtf8("diskName: " + QFile::encodeName(listVolume[0].strName));
    QCOMPARE(LogLines().first(), strLine.section('\n', 0, 0));
}

void tst_CDestinationDiscovery::ownVolume_data()
{
    QTest::addColumn<QByteArray>("baBus");
    QTest::addColumn<ENVolumeRole>("enRole");
    QTest::addColumn<QString>("strLog");
    QTest::newRow("never a destination")
        << QByteArray("USB") << VOLUME_ROLE_OWN_MEDIUM << "skipped, the program runs from it: /Volumes/OWN";
    QTest::newRow("source on another bus") << QByteArray("SATA") << VOLUME_ROLE_SOURCE << "/Volumes/OWN";
}

void tst_CDestinationDiscovery::ownVolume()
{
    QFETCH(QByteArray, baBus);
    QFETCH(QString, strLog);
    UseCommand(Prints(Bus(baBus)));
    const QByteArray baOwn = CVolumeInfo::DeviceOf(QCoreApplication::applicationDirPath());
    QVERIFY(!baOwn.isEmpty());
    QVERIFY(CVolume::Mount(baOwn, "/Volumes/OWN"));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 1);
    QTEST(listVolume[0].enRole, "enRole");
    QCOMPARE(listVolume[0].baDevice, baOwn);
    QCOMPARE(LogLines(), QStringList{strLog});
}

void tst_CDestinationDiscovery::keepsTheOrderOfTheFolderAndWritesTheLog()
{
    UseCommand("case $3 in *u) bus=USB ;; *) bus=SATA ;; esac\ncat <<END\n" + Bus("$bus") + "END\n");
    const QStringList listName{"m", "b", "z", "a", "k"};
    for (int i = 0; i < listName.size(); ++i) {
        const QByteArray baName = listName[i].toLatin1();
        QVERIFY(CVolume::Mount("/dev/" + baName + (i % 2 == 0 ? "u" : "s"), "/Volumes/" + baName));
    }
    const QDir folder("/Volumes");
    const QStringList listFolder = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    // This folder lists backwards, so that neither sorting goes unnoticed.
    QCOMPARE(listFolder.size(), listName.size());
    QVERIFY(listFolder != folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot));

    QStringList listFound;
    QStringList listLog;
    for (const STVolume& volume : Scanned()) {
        listFound.append(volume.strName);
        const bool bUsb = listName.indexOf(volume.strName) % 2 == 0;
        QCOMPARE(volume.enRole, bUsb ? VOLUME_ROLE_DESTINATION : VOLUME_ROLE_SOURCE);
        listLog.append(bUsb ? "diskName: " + volume.strName : volume.strPath);
    }
    QCOMPARE(listFound, listFolder);
    QCOMPARE(LogLines(), listLog);
    QCOMPARE(Asked().size(), 5);
}

void tst_CDestinationDiscovery::onlyFoldersCount()
{
    UseCommand(PRINTS_USB);
    QFile file("/Volumes/file");
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    QVERIFY(CVolume::Mount("/dev/disk8s1", "/Volumes/.hidden"));
    QVERIFY(QFile::link("/Volumes/STICK", "/Volumes/link"));
    QStringList listFound;
    for (const STVolume& volume : Scanned()) {
        listFound.append(volume.strName);
    }
    listFound.sort();
    QCOMPARE(listFound, (QStringList{"STICK", "link"}));
    QCOMPARE(Asked(), (QByteArrayList{"3|info|-plist|/dev/disk7s1|", "3|info|-plist|/dev/disk7s1|"}));
}

void tst_CDestinationDiscovery::noVolumes()
{
    UseCommand(PRINTS_USB);
    const std::atomic<bool> bCancelled{false};
    int nFound = 0;
    QVERIFY(CDestinationDiscovery::Scan([&nFound](const STVolume&) { ++nFound; }, bCancelled));
    QCOMPARE(nFound, 0);
    QVERIFY(!m_pTree->Has("asked"));
}

void tst_CDestinationDiscovery::ignoredEndKillsTheChildrenAsWell()
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

void tst_CDestinationDiscovery::closedOutputCostsNoProcessorTime()
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

void tst_CDestinationDiscovery::endlessOutputEndsEarly()
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

void tst_CDestinationDiscovery::nextVolumeIsAskedAfterAHang()
{
    CDestinationDiscovery::SetCommandTimeoutMs(300);
    UseCommand("[ \"$3\" = /dev/good ] || exec sleep 600\n" + PRINTS_USB);
    QVERIFY(CVolume::Mount("/dev/bad1", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/good", "/Volumes/B"));
    QVERIFY(CVolume::Mount("/dev/bad2", "/Volumes/C"));
    const QVector<STVolume> listVolume = Scanned();
    QCOMPARE(listVolume.size(), 3);
    for (const STVolume& volume : listVolume) {
        QCOMPARE(volume.enRole, volume.strName == "B" ? VOLUME_ROLE_DESTINATION : VOLUME_ROLE_SOURCE);
    }
    QTRY_VERIFY(NothingLeftRunning());
}

/** Three disks that do not answer cost one wait, and nothing changes its order. */
void tst_CDestinationDiscovery::lateAnswerHasAllTheOthersAskedAtOnce()
{
    CDestinationDiscovery::SetCommandTimeoutMs(3000);
    UseCommand("case $3 in /dev/bad*) exec sleep 600;; esac\n" + PRINTS_USB);
    for (const char* pszName : {"a", "bad1", "b", "bad2", "c", "bad3"}) {
        QVERIFY(CVolume::Mount(QByteArray("/dev/") + pszName, QByteArray("/Volumes/") + pszName));
    }
    const QStringList listFolder
        = QDir("/Volumes").entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Unsorted);
    QElapsedTimer timer;
    timer.start();
    QStringList listFound;
    QStringList listLog;
    for (const STVolume& volume : Scanned()) {
        const bool bBad = volume.strName.startsWith("bad");
        QCOMPARE(volume.enRole, bBad ? VOLUME_ROLE_SOURCE : VOLUME_ROLE_DESTINATION);
        QCOMPARE(volume.baDevice, "/dev/" + volume.strName.toLatin1());
        listFound.append(volume.strName);
        listLog.append(bBad ? volume.strPath : "diskName: " + volume.strName);
    }
    // One after the other takes 18 s.
    QVERIFY2(timer.elapsed() < 12000, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(listFound, listFolder);
    QCOMPARE(LogLines(), listLog);
    QCOMPARE(Asked().size(), 6);
    QTRY_VERIFY(NothingLeftRunning());
}

void tst_CDestinationDiscovery::waiterHearsWhatIsWaitedFor()
{
    CDestinationDiscovery::SetCommandTimeoutMs(300);
    UseCommand("[ \"$3\" = /dev/good ] || exec sleep 600\n" + PRINTS_USB);
    QVERIFY(CVolume::Mount("/dev/good", "/Volumes/A"));
    QVERIFY(CVolume::Mount("/dev/bad", "/Volumes/B"));
    qint64 nMs = -1;
    CDestinationDiscovery::SetWaiter(
        [&nMs](const STDiskWait& wait) { nMs = wait.strName == "B" ? wait.nMs : nMs; });
    QCOMPARE(Scanned().size(), 2);
    CDestinationDiscovery::SetWaiter({});
    QVERIFY2(nMs >= 500, qPrintable(QString::number(nMs)));
}

void tst_CDestinationDiscovery::cancelledBeforeTheStart()
{
    UseCommand(PRINTS_USB);
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK"));
    const std::atomic<bool> bCancelled{true};
    const CLogCapture capture;
    int nFound = 0;
    QVERIFY(!CDestinationDiscovery::Scan([&nFound](const STVolume&) { ++nFound; }, bCancelled));
    QCOMPARE(nFound, 0);
    QVERIFY(!m_pTree->Has("asked"));
    QCOMPARE(LogLines(), QStringList());
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CDestinationDiscovery::cancelledDuringAHang_data()
{
    QTest::addColumn<QByteArray>("baScript");
    QTest::addColumn<int>("nProcesses");
    QTest::newRow("before any output") << HANGS << 1;
    QTest::newRow("after its output") << PRINTS_USB + HANGS << 1;
    QTest::newRow("with its output closed") << "exec >&-\n" + HANGS << 1;
    QTest::newRow("with a child of its own") << CHILD_HANGS << 2;
    QTest::newRow("ignoring the polite end") << "trap '' TERM\n" + CHILD_HANGS << 2;
}

void tst_CDestinationDiscovery::cancelledDuringAHang()
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
    QTRY_VERIFY(m_pTree->Has("asked"));
    QTRY_COMPARE(m_pTree->Read("pids").count('\n'), nProcesses);
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

void tst_CDestinationDiscovery::cancelledByTheReceiver_data()
{
    QTest::addColumn<QByteArrayList>("listName");
    QTest::newRow("between two volumes") << QByteArrayList{"A", "B"};
    QTest::newRow("after the last") << QByteArrayList{"A"};
}

void tst_CDestinationDiscovery::cancelledByTheReceiver()
{
    QFETCH(QByteArrayList, listName);
    UseCommand(PRINTS_USB);
    for (const QByteArray& baName : listName) {
        QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/" + baName));
    }
    std::atomic<bool> bCancelled{false};
    int nFound = 0;
    const auto fnFound = [&nFound, &bCancelled](const STVolume&) {
        ++nFound;
        bCancelled = true;
    };
    QVERIFY(!CDestinationDiscovery::Scan(fnFound, bCancelled));
    QCOMPARE(nFound, 1);
    QCOMPARE(Asked().size(), 1);
}

QTEST_GUILESS_MAIN(tst_CDestinationDiscovery)
#include "tst_CDestinationDiscovery.moc"
