#include "copy/CCopyPlatform.h"
#include "support/CTempTree.h"

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
    void LeastTimerSlackIsOfTheCallingThread();
    void PathState_data();
    void PathState();
    void PathStateOfNothingGivesErrno();
    void OpenStateTellsRemovedFile();
    void OpeningAPipeDoesNotHang();
    void OpenFilesAreKeptFromChildren();
    void ModifiedTimeKeepsNanoseconds();
    void FlushOfNothingGivesErrno();
    void FlushOfAFolder();
};

void tst_CCopyPlatform::LeastTimerSlackIsOfTheCallingThread()
{
    const int nOurs = prctl(PR_GET_TIMERSLACK, 0UL, 0UL, 0UL, 0UL);
    QVERIFY(nOurs > 1);
    int nWorkers = 0;
    std::thread worker([&nWorkers] {
        CCopyPlatform::SetLeastTimerSlack();
        nWorkers = prctl(PR_GET_TIMERSLACK, 0UL, 0UL, 0UL, 0UL);
    });
    worker.join();
    QCOMPARE(nWorkers, 1);
    QCOMPARE(prctl(PR_GET_TIMERSLACK, 0UL, 0UL, 0UL, 0UL), nOurs);
}

void tst_CCopyPlatform::PathState_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("expected");
    QTest::newRow("file") << "file" << int(ENFileKind::REGULAR);
    QTest::newRow("folder") << "folder" << int(ENFileKind::DIRECTORY);
    QTest::newRow("pipe") << "pipe" << int(ENFileKind::SPECIAL);
    QTest::newRow("device") << "device" << int(ENFileKind::SPECIAL);
    QTest::newRow("link to a file") << "link" << int(ENFileKind::REGULAR);
}

void tst_CCopyPlatform::PathState()
{
    QFETCH(QString, kind);
    QFETCH(int, expected);
    CTempTree tree;
    tree.Write("file", "12345");
    tree.MkDir("folder");
    tree.Link("link", "file");
    QCOMPARE(mkfifo(QFile::encodeName(tree.Path("pipe")).constData(), 0600), 0);
    const QString strPath = kind == QLatin1String("device") ? QStringLiteral("/dev/null") : tree.Path(kind);
    const std::optional<STFileState> stState = CCopyPlatform::GetPathState(strPath);
    QVERIFY(stState);
    QCOMPARE(int(stState->enKind), expected);
    if (expected == int(ENFileKind::REGULAR)) {
        QCOMPARE(stState->nSize, 5);
    }
}

void tst_CCopyPlatform::PathStateOfNothingGivesErrno()
{
    QVERIFY(!CCopyPlatform::GetPathState("/nowhere/at/all"));
    QCOMPARE(errno, ENOENT);
}

void tst_CCopyPlatform::OpenStateTellsRemovedFile()
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

void tst_CCopyPlatform::OpeningAPipeDoesNotHang()
{
    CTempTree tree;
    QCOMPARE(mkfifo(QFile::encodeName(tree.Path("pipe")).constData(), 0600), 0);
    const int nDescriptor = CCopyPlatform::OpenForRead(tree.Path("pipe"));
    QVERIFY(nDescriptor != -1);
    QCOMPARE(int(CCopyPlatform::GetOpenState(nDescriptor).value().enKind), int(ENFileKind::SPECIAL));
    close(nDescriptor);
}

void tst_CCopyPlatform::OpenFilesAreKeptFromChildren()
{
    CTempTree tree;
    const QString strPath = tree.Write("file");
    const int nSource = CCopyPlatform::OpenForRead(strPath);
    QCOMPARE(fcntl(nSource, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    const int nTarget = open(QFile::encodeName(strPath).constData(), O_WRONLY);
    QCOMPARE(fcntl(nTarget, F_GETFD) & FD_CLOEXEC, 0);
    CCopyPlatform::KeepFromChildren(nTarget);
    QCOMPARE(fcntl(nTarget, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    close(nSource);
    close(nTarget);
}

void tst_CCopyPlatform::ModifiedTimeKeepsNanoseconds()
{
    CTempTree tree;
    const QByteArray baPath = QFile::encodeName(tree.Write("file"));
    const int nDescriptor = open(baPath.constData(), O_WRONLY);
    struct stat stBefore;
    QCOMPARE(fstat(nDescriptor, &stBefore), 0);
    STFileState stState;
    stState.nModifiedSec = 1234567890;
    stState.nModifiedNsec = 123456789;
    QVERIFY(CCopyPlatform::SetModifiedTime(nDescriptor, stState));
    struct stat stAfter;
    QCOMPARE(fstat(nDescriptor, &stAfter), 0);
    QCOMPARE(qint64(stAfter.st_mtim.tv_sec), 1234567890);
    QCOMPARE(qint64(stAfter.st_mtim.tv_nsec), 123456789);
    QCOMPARE(stAfter.st_atim.tv_sec, stBefore.st_atim.tv_sec);
    close(nDescriptor);
    QVERIFY(!CCopyPlatform::SetModifiedTime(nDescriptor, stState));
}

void tst_CCopyPlatform::FlushOfNothingGivesErrno()
{
    errno = 0;
    QVERIFY(!CCopyPlatform::FlushFileSystem(QStringLiteral("/nowhere/at/all")));
    QCOMPARE(errno, ENOENT);
}

void tst_CCopyPlatform::FlushOfAFolder()
{
    CTempTree tree;
    tree.Write("file", "data");
    QVERIFY(CCopyPlatform::FlushFileSystem(tree.Path()));
    errno = 0;
    QVERIFY(!CCopyPlatform::FlushFileSystem(tree.Path("file")));
    QCOMPARE(errno, ENOTDIR);
}

QTEST_GUILESS_MAIN(tst_CCopyPlatform)
#include "tst_CCopyPlatform.moc"
