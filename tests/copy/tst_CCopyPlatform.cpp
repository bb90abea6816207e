#include "copy/CCopyPlatform.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

class tst_CCopyPlatform : public QObject
{
    Q_OBJECT

private slots:
    void leastTimerSlackIsOfTheCallingThread();
    void pathState_data();
    void pathState();
    void pathStateOfNothingGivesErrno();
    void openStateTellsRemovedFile();
    void openingAPipeDoesNotHang();
    void openFilesAreKeptFromChildren();
    void bothTimesKeepNanoseconds();
    void flushOfAFolderOnly();
    void entryStateOfALink();
    void entryStateInAnOpenFolder();
    void mountPointsAmongFolders();
    void linksAreNotFollowedUnlessAsked();
    void folderThatTakesNoEntries();
};

static int TimerSlack() { return prctl(PR_GET_TIMERSLACK, 0UL, 0UL, 0UL, 0UL); }

static QString MakePipe(const CTempTree& tree)
{
    const QString strPath = tree.Path("pipe");
    return mkfifo(QFile::encodeName(strPath).constData(), 0600) == 0 ? strPath : QString();
}

void tst_CCopyPlatform::leastTimerSlackIsOfTheCallingThread()
{
    const int nOurs = TimerSlack();
    QVERIFY(nOurs > 1);
    int nWorkers = 0;
    std::thread worker([&nWorkers] {
        CCopyPlatform::SetLeastTimerSlack();
        nWorkers = TimerSlack();
    });
    worker.join();
    QCOMPARE(nWorkers, 1);
    QCOMPARE(TimerSlack(), nOurs);
}

void tst_CCopyPlatform::pathState_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::addColumn<int>("nKind");
    QTest::newRow("file") << "file" << int(ENFileKind::REGULAR);
    QTest::newRow("folder") << "folder" << int(ENFileKind::DIRECTORY);
    QTest::newRow("pipe") << "pipe" << int(ENFileKind::SPECIAL);
    QTest::newRow("link to a device") << "device" << int(ENFileKind::SPECIAL);
    QTest::newRow("link to a file") << "link" << int(ENFileKind::REGULAR);
}

void tst_CCopyPlatform::pathState()
{
    QFETCH(QString, strPath);
    CTempTree tree;
    tree.Write("file", "12345");
    tree.MkDir("folder");
    tree.Link("link", "file");
    tree.Link("device", "/dev/null");
    MakePipe(tree);
    const std::optional<STFileState> stState = CCopyPlatform::GetPathState(tree.Path(strPath));
    QVERIFY(stState);
    QTEST(int(stState->enKind), "nKind");
    if (stState->enKind == ENFileKind::REGULAR) {
        QCOMPARE(stState->nSize, 5);
    }
}

void tst_CCopyPlatform::pathStateOfNothingGivesErrno()
{
    QVERIFY(!CCopyPlatform::GetPathState("/nowhere/at/all"));
    QCOMPARE(errno, ENOENT);
}

void tst_CCopyPlatform::openStateTellsRemovedFile()
{
    CTempTree tree;
    const QString strPath = tree.Write("file", "123");
    const int nDescriptor = CCopyPlatform::OpenForRead(strPath);
    QVERIFY(nDescriptor != -1);
    QVERIFY(!CCopyPlatform::GetOpenState(nDescriptor).value().bRemoved);
    QVERIFY(QFile::remove(strPath));
    QVERIFY(CCopyPlatform::GetOpenState(nDescriptor).value().bRemoved);
    close(nDescriptor);
    QVERIFY(!CCopyPlatform::GetOpenState(nDescriptor));
}

void tst_CCopyPlatform::openingAPipeDoesNotHang()
{
    CTempTree tree;
    const int nDescriptor = CCopyPlatform::OpenForRead(MakePipe(tree));
    QVERIFY(nDescriptor != -1);
    QCOMPARE(int(CCopyPlatform::GetOpenState(nDescriptor).value().enKind), int(ENFileKind::SPECIAL));
    close(nDescriptor);
}

void tst_CCopyPlatform::openFilesAreKeptFromChildren()
{
    CTempTree tree;
    const QString strPath = tree.Write("file");
    const int nSource = CCopyPlatform::OpenForRead(strPath);
    QCOMPARE(fcntl(nSource, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    close(nSource);
    const int nTarget = open(QFile::encodeName(strPath).constData(), O_WRONLY);
    QCOMPARE(fcntl(nTarget, F_GETFD) & FD_CLOEXEC, 0);
    CCopyPlatform::KeepFromChildren(nTarget);
    QCOMPARE(fcntl(nTarget, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    close(nTarget);
}

void tst_CCopyPlatform::bothTimesKeepNanoseconds()
{
    CTempTree tree;
    const int nDescriptor = open(QFile::encodeName(tree.Write("file")).constData(), O_WRONLY);
    STFileState stState;
    stState.nAccessedSec = 1334567890;
    stState.nAccessedNsec = 987654321;
    stState.nModifiedSec = 1234567890;
    stState.nModifiedNsec = 123456789;
    QVERIFY(CCopyPlatform::SetTimes(nDescriptor, stState));
    struct stat stAfter;
    QCOMPARE(fstat(nDescriptor, &stAfter), 0);
    QCOMPARE(qint64(stAfter.st_mtim.tv_sec), 1234567890);
    QCOMPARE(qint64(stAfter.st_mtim.tv_nsec), 123456789);
    QCOMPARE(qint64(stAfter.st_atim.tv_sec), 1334567890);
    QCOMPARE(qint64(stAfter.st_atim.tv_nsec), 987654321);
    close(nDescriptor);
    QVERIFY(!CCopyPlatform::SetTimes(nDescriptor, stState));
}

void tst_CCopyPlatform::flushOfAFolderOnly()
{
    CTempTree tree;
    const QString strFile = tree.Write("file", "data");
    QVERIFY(CCopyPlatform::FlushFileSystem(tree.Path()));
    QVERIFY(!CCopyPlatform::FlushFileSystem("/nowhere/at/all"));
    QCOMPARE(errno, ENOENT);
    QVERIFY(!CCopyPlatform::FlushFileSystem(strFile));
    QCOMPARE(errno, ENOTDIR);
}

void tst_CCopyPlatform::entryStateOfALink()
{
    CTempTree tree;
    const QString strFile = tree.Write("file", "12345");
    const QString strLink = tree.Link("link", "file");
    QCOMPARE(CCopyPlatform::GetEntryState(strLink)->enKind, ENFileKind::LINK);
    QCOMPARE(CCopyPlatform::GetEntryState(strFile)->enKind, ENFileKind::REGULAR);
    QCOMPARE(CCopyPlatform::GetPathState(strLink)->nInode, CCopyPlatform::GetEntryState(strFile)->nInode);
    QVERIFY(!CCopyPlatform::GetEntryState(tree.Path("nothing")));
    QCOMPARE(errno, ENOENT);
}

void tst_CCopyPlatform::entryStateInAnOpenFolder()
{
    CTempTree tree;
    const QString strFile = tree.Write("sub/file", "12345");
    tree.Link("sub/link", "file");
    const int nFolder = CCopyPlatform::OpenFolder(tree.Path("sub"));
    QVERIFY(nFolder != -1);
    QCOMPARE(CCopyPlatform::GetEntryState(nFolder, "file")->nInode,
             CCopyPlatform::GetEntryState(strFile)->nInode);
    QCOMPARE(CCopyPlatform::GetEntryState(nFolder, "link")->enKind, ENFileKind::LINK);
    QCOMPARE(CCopyPlatform::GetEntryState(nFolder, ".")->enKind, ENFileKind::DIRECTORY);
    QVERIFY(!CCopyPlatform::GetEntryState(nFolder, "nothing"));
    QCOMPARE(errno, ENOENT);
    close(nFolder);
}

void tst_CCopyPlatform::mountPointsAmongFolders()
{
    const CVolume volume("Stick", "/dev/disk8s4", 1);
    if (!volume.IsValid()) {
        QSKIP("no volumes here");
    }
    QVERIFY(QDir(volume.Path()).mkdir("folder"));
    const QByteArray baFolder = QFile::encodeName(volume.Path("folder"));
    QVERIFY(!CCopyPlatform::IsMountPoint(AT_FDCWD, baFolder.constData()));
    QVERIFY(CCopyPlatform::IsMountPoint(AT_FDCWD, QFile::encodeName(volume.Path()).constData()));
    QVERIFY(CVolume::Mount("other", baFolder));
    QVERIFY(CCopyPlatform::IsMountPoint(AT_FDCWD, baFolder.constData()));
    QVERIFY(CVolume::Unmount(baFolder));
}

void tst_CCopyPlatform::linksAreNotFollowedUnlessAsked()
{
    CTempTree tree;
    tree.Write("file", "12345");
    const QString strLink = tree.Link("link", "file");
    QCOMPARE(CCopyPlatform::OpenForRead(strLink, false), -1);
    QCOMPARE(errno, ELOOP);
    const int nDescriptor = CCopyPlatform::OpenForRead(strLink);
    QVERIFY(nDescriptor != -1);
    close(nDescriptor);
}

void tst_CCopyPlatform::folderThatTakesNoEntries()
{
    CTempTree tree;
    QVERIFY(CCopyPlatform::CanWrite(tree.Path()));
    QVERIFY(!CCopyPlatform::CanWrite(tree.Path("nowhere")));
    QCOMPARE(errno, ENOENT);
    CVolume volume("Stick", "/dev/disk8s4", 1);
    if (!volume.IsValid() || !volume.MakeReadOnly()) {
        QSKIP("no volumes here");
    }
    QVERIFY(!CCopyPlatform::CanWrite(volume.Path()));
    QCOMPARE(errno, EROFS);
}

QTEST_GUILESS_MAIN(tst_CCopyPlatform)
#include "tst_CCopyPlatform.moc"
