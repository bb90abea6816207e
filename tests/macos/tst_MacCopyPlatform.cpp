#include "copy/CCopyPlatform.h"
#include "files/CDescriptor.h"
#include "macos/CFakeFiles.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>

Q_DECLARE_METATYPE(STDiskRules)

/** What macOS's calls make of what the copy asks of a disk. */
class tst_MacCopyPlatform : public QObject
{
    Q_OBJECT

private slots:
    void init() { CFakeFiles::Reset(); }
    void cleanup() { CFakeFiles::Reset(); }

    void flushOfAFileReachesTheDisk();
    void flushOfAFile_data();
    void flushOfAFile();
    void flushOfAVolume_data();
    void flushOfAVolume();
    void flushIsOfTheVolumeThatIsHeld();
    void roomIsTakenBehindTheFile();
    void roomThatCannotBeTaken();
    void readPastTheCache();
    void linkIsNotReadPastTheCache();
    void readAheadIsStopped();
    void timesOfAFile();
    void whatADiskCanHold_data();
    void whatADiskCanHold();
    void diskThatSaysNothing();
    void everyOtherDeviceIsAMount();

private:
    CTempTree m_tree;
};

void tst_MacCopyPlatform::flushOfAFileReachesTheDisk()
{
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForWrite(strFile));
    QVERIFY(file.IsOpen());
    QVERIFY(CCopyPlatform::FlushFile(file.Get()));
    QCOMPARE(CFakeFiles::TakeCalls(), QStringList("F_FULLFSYNC " + strFile));
}

void tst_MacCopyPlatform::flushOfAFile_data()
{
    QTest::addColumn<int>("nFullError");
    QTest::addColumn<int>("nSyncError");
    QTest::addColumn<int>("nError");
    QTest::addColumn<QStringList>("listCall");

    const QStringList listFull("F_FULLFSYNC");
    const QStringList listBoth({"F_FULLFSYNC", "fsync"});
    for (const int nError : {EIO, ENXIO, ENOSPC, EDQUOT, EROFS, EBADF}) {
        QTest::addRow("%s", strerror(nError)) << nError << 0 << nError << listFull;
    }
    for (const int nError : {ENOTSUP, ENOTTY, EINVAL, ENOSYS}) {
        QTest::addRow("%s", strerror(nError)) << nError << 0 << 0 << listBoth;
        QTest::addRow("%s, then a real one", strerror(nError)) << nError << EIO << EIO << listBoth;
    }
}

void tst_MacCopyPlatform::flushOfAFile()
{
    QFETCH(int, nFullError);
    QFETCH(int, nSyncError);
    QFETCH(int, nError);
    QFETCH(QStringList, listCall);
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForWrite(strFile));
    CFakeFiles::Fail("F_FULLFSYNC", strFile, nFullError);
    CFakeFiles::Fail("fsync", strFile, nSyncError);
    errno = 0;
    QCOMPARE(CCopyPlatform::FlushFile(file.Get()), nError == 0);
    QVERIFY(nError == 0 || errno == nError);
    QCOMPARE(CFakeFiles::TakeCalls().replaceInStrings(' ' + strFile, ""), listCall);
}

void tst_MacCopyPlatform::flushOfAVolume_data()
{
    QTest::addColumn<QStringList>("listFailing"); // "call error"
    QTest::addColumn<int>("nError");
    QTest::addColumn<QStringList>("listCall");

    const QString strFull = "fsync_volume_np 3";
    const QString strWait = "fsync_volume_np 2";
    const auto fnFails
        = [](const QString& strCall, int nError) { return strCall + ' ' + QString::number(nError); };

    QTest::newRow("as it should") << QStringList() << 0 << QStringList(strFull);
    for (const int nError : {EIO, ENXIO, ENOSPC, EPERM}) {
        QTest::addRow("%s", strerror(nError))
            << QStringList(fnFails("fsync_volume_np", nError)) << nError << QStringList(strFull);
    }
    for (const int nError : {ENOTSUP, ENOTTY, EINVAL, ENOSYS}) {
        QTest::addRow("%s", strerror(nError)) << QStringList(fnFails("fsync_volume_np", nError)) << 0
                                              << QStringList({strFull, strWait, "F_FULLFSYNC"});
        QTest::addRow("%s, of the folder, too", strerror(nError))
            << QStringList({fnFails("fsync_volume_np", nError), fnFails("F_FULLFSYNC", nError)}) << 0
            << QStringList({strFull, strWait, "F_FULLFSYNC", "fsync"});
        QTest::addRow("%s, and then a real one", strerror(nError))
            << QStringList({fnFails("fsync_volume_np", nError), fnFails("F_FULLFSYNC", EIO)}) << EIO
            << QStringList({strFull, strWait, "F_FULLFSYNC"});
        QTest::addRow("%s of every call", strerror(nError))
            << QStringList({fnFails("fsync_volume_np", nError), fnFails("F_FULLFSYNC", nError),
                            fnFails("fsync", nError)})
            << nError << QStringList({strFull, strWait, "F_FULLFSYNC", "fsync"});
    }
    // A driver that writes everything, but cannot tell the disk to empty its cache.
    QTest::newRow("no full flush") << QStringList(fnFails("fsync_volume_np 3", ENOTSUP)) << 0
                                   << QStringList({strFull, strWait, "F_FULLFSYNC"});
    QTest::newRow("no full flush at all") << QStringList(
        {fnFails("fsync_volume_np 3", ENOTSUP), fnFails("F_FULLFSYNC", ENOTTY), fnFails("fsync", ENOTSUP)})
                                          << 0 << QStringList({strFull, strWait, "F_FULLFSYNC", "fsync"});
    QTest::newRow("a real error of the second")
        << QStringList({fnFails("fsync_volume_np 3", ENOTSUP), fnFails("fsync_volume_np 2", EIO)}) << EIO
        << QStringList({strFull, strWait});
    QTest::newRow("a real error of the last")
        << QStringList(
               {fnFails("fsync_volume_np 3", ENOTSUP), fnFails("F_FULLFSYNC", ENOTTY), fnFails("fsync", EIO)})
        << EIO << QStringList({strFull, strWait, "F_FULLFSYNC", "fsync"});
}

void tst_MacCopyPlatform::flushOfAVolume()
{
    QFETCH(QStringList, listFailing);
    QFETCH(int, nError);
    QFETCH(QStringList, listCall);
    const QString strFolder = m_tree.MkDir("folder");
    for (const QString& strFailing : listFailing) {
        CFakeFiles::Fail(strFailing.section(' ', 0, -2), strFolder, strFailing.section(' ', -1).toInt());
    }
    errno = 0;
    QCOMPARE(CCopyPlatform::FlushFileSystem(strFolder), nError == 0);
    QVERIFY(nError == 0 || errno == nError);
    QCOMPARE(CFakeFiles::TakeCalls().replaceInStrings(' ' + strFolder, ""), listCall);
}

/** Another disk may take its path. */
void tst_MacCopyPlatform::flushIsOfTheVolumeThatIsHeld()
{
    const QString strFolder = m_tree.MkDir("held");
    const CDescriptor folder(CCopyPlatform::OpenFolder(strFolder));
    QVERIFY(QFile::rename(strFolder, m_tree.Path("elsewhere")));
    m_tree.MkDir("held");
    QVERIFY(CCopyPlatform::FlushFileSystem(folder.Get()));
    QCOMPARE(CFakeFiles::TakeCalls(), QStringList("fsync_volume_np " + m_tree.Path("elsewhere") + " 3"));
}

void tst_MacCopyPlatform::roomIsTakenBehindTheFile()
{
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForWrite(strFile));
    QVERIFY(CCopyPlatform::Reserve(file.Get(), 4, 65536));
    // All or nothing (4), from the physical end on (3).
    QCOMPARE(CFakeFiles::TakeCalls(),
             QStringList("F_PREALLOCATE " + strFile + " flags 4 mode 3 from 0 length 65536"));
}

void tst_MacCopyPlatform::roomThatCannotBeTaken()
{
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForWrite(strFile));
    CFakeFiles::Fail("F_PREALLOCATE", strFile, ENOSPC);
    QVERIFY(!CCopyPlatform::Reserve(file.Get(), 4, 65536));
    QCOMPARE(errno, ENOSPC);
}

void tst_MacCopyPlatform::readPastTheCache()
{
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForDirectRead(strFile));
    QVERIFY(file.IsOpen());
    QCOMPARE(CFakeFiles::TakeCalls(),
             QStringList({"F_NOCACHE " + strFile + " 1", "F_RDAHEAD " + strFile + " 0"}));
    QCOMPARE(CCopyPlatform::OpenForDirectRead(m_tree.Path("none")), -1);
    QCOMPARE(errno, ENOENT);
    QCOMPARE(CFakeFiles::TakeCalls(), QStringList());
}

void tst_MacCopyPlatform::linkIsNotReadPastTheCache()
{
    m_tree.Write("a", "text");
    m_tree.Link("link", m_tree.Path("a"));
    QCOMPARE(CCopyPlatform::OpenForDirectRead(m_tree.Path("link")), -1);
    QCOMPARE(errno, ELOOP);
}

void tst_MacCopyPlatform::readAheadIsStopped()
{
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForRead(strFile));
    CCopyPlatform::StopReadAhead(file.Get());
    QCOMPARE(CFakeFiles::TakeCalls(), QStringList("F_RDAHEAD " + strFile + " 0"));
}

void tst_MacCopyPlatform::timesOfAFile()
{
    const QString strFile = m_tree.Write("a", "text");
    const CDescriptor file(CCopyPlatform::OpenForWrite(strFile));
    STFileState stTimes;
    stTimes.nAccessedSec = 1500000001;
    stTimes.nAccessedNsec = 11;
    stTimes.nModifiedSec = 1400000002;
    stTimes.nModifiedNsec = 22;
    QVERIFY(CCopyPlatform::KeepTimes(file.Get(), stTimes));
    const std::optional<STFileState> stNow = CCopyPlatform::GetEntryState(strFile);
    QVERIFY(stNow);
    QCOMPARE(stNow->nAccessedSec, stTimes.nAccessedSec);
    QCOMPARE(stNow->nAccessedNsec, stTimes.nAccessedNsec);
    QCOMPARE(stNow->nModifiedSec, stTimes.nModifiedSec);
    QCOMPARE(stNow->nModifiedNsec, stTimes.nModifiedNsec);
}

void tst_MacCopyPlatform::whatADiskCanHold_data()
{
    QTest::addColumn<STDiskRules>("stRules");
    const qint64 nAny = std::numeric_limits<qint64>::max();
    QTest::newRow("apfs") << STDiskRules{4096, nAny, false, false};
    QTest::newRow("hfs") << STDiskRules{4096, nAny, false, false};
    QTest::newRow("exfat") << STDiskRules{4096, nAny, true, true};
    QTest::newRow("msdos") << STDiskRules{4096, 0xffffffffLL, true, true};
    QTest::newRow("ntfs") << STDiskRules{4096, nAny, false, false};
}

void tst_MacCopyPlatform::whatADiskCanHold()
{
    QFETCH(STDiskRules, stRules);
    CFakeFiles::SetVolume(QTest::currentDataTag());
    const STDiskRules stNow = CCopyPlatform::GetDiskRules(m_tree.Path());
    QCOMPARE(stNow.nBlockBytes, stRules.nBlockBytes);
    QCOMPARE(stNow.nMostFileBytes, stRules.nMostFileBytes);
    QCOMPARE(stNow.bTextNames, stRules.bTextNames);
    QCOMPARE(stNow.bDropsDots, stRules.bDropsDots);
}

void tst_MacCopyPlatform::diskThatSaysNothing()
{
    CFakeFiles::SetVolume("msdos");
    CFakeFiles::Fail("statfs", m_tree.Path(), EIO);
    const STDiskRules stNow = CCopyPlatform::GetDiskRules(m_tree.Path());
    QCOMPARE(stNow.nBlockBytes, qint64(1));
    QCOMPARE(stNow.nMostFileBytes, std::numeric_limits<qint64>::max());
    QVERIFY(!stNow.bTextNames && !stNow.bDropsDots);
}

void tst_MacCopyPlatform::everyOtherDeviceIsAMount()
{
    m_tree.MkDir("folder");
    const CDescriptor parent(CCopyPlatform::OpenFolder(m_tree.Path()));
    QVERIFY(CCopyPlatform::IsMountPoint(parent.Get(), "folder"));
}

QTEST_GUILESS_MAIN(tst_MacCopyPlatform)
#include "tst_MacCopyPlatform.moc"
