#include "flow/CWriteBack.h"
#include "flow/CWritePace.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QTest>
#include <QVector>

#include <cerrno>
#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

static unsigned s_nFlags = 0;
static int s_nError = 0;
static QVector<quint64> s_listSynced; // inodes

int fstatfs(int, struct statfs* pVolume)
{
    pVolume->f_flags = s_nFlags;
    return s_nError == 0 ? 0 : -1;
}

extern "C" int fsync(int nDescriptor)
{
    struct stat stRaw = {};
    fstat(nDescriptor, &stRaw);
    s_listSynced.append(quint64(stRaw.st_ino));
    errno = s_nError;
    return s_nError == 0 ? 0 : -1;
}

/** What macOS can be told of bytes that were written. */
class tst_MacWriteBack : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void kinds();
    void flushIsOfTheFile();
    void bigFilesAreFlushed();
    void failedFlushIsKept();
    void settledFilesAreFlushed();
    void settledFileThatFailsIsTold();

private:
    int Open(const QString& strName);
    quint64 Write(CWritePace& pace, const QString& strName, qint64 nBytes);

    CTempTree m_tree;
};

void tst_MacWriteBack::init()
{
    s_nFlags = MNT_LOCAL;
    s_nError = 0;
    s_listSynced.clear();
}

int tst_MacWriteBack::Open(const QString& strName)
{
    return open(QFile::encodeName(m_tree.Write(strName)).constData(), O_WRONLY | O_CLOEXEC);
}

/** The inode of a file of which the pace is told. */
quint64 tst_MacWriteBack::Write(CWritePace& pace, const QString& strName, qint64 nBytes)
{
    const int nDescriptor = Open(strName);
    struct stat stRaw = {};
    fstat(nDescriptor, &stRaw);
    pace.Written(nDescriptor, 0, nBytes);
    pace.Ends(nDescriptor);
    close(nDescriptor);
    return quint64(stRaw.st_ino);
}

void tst_MacWriteBack::kinds()
{
    const CWriteBack writeBack;
    QCOMPARE(writeBack.KindOf(0), ENWriteBack::FILES);
    s_nFlags = 0; // on another computer
    QCOMPARE(writeBack.KindOf(0), ENWriteBack::NONE);
    s_nFlags = MNT_LOCAL;
    s_nError = EIO;
    QCOMPARE(writeBack.KindOf(0), ENWriteBack::NONE);
}

void tst_MacWriteBack::flushIsOfTheFile()
{
    const CWriteBack writeBack;
    const int nDescriptor = Open("file");
    const int nAgain = writeBack.OpenAgain(nDescriptor);
    close(nDescriptor);
    QVERIFY(nAgain != -1);
    QCOMPARE(fcntl(nAgain, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    QVERIFY(writeBack.Start(nAgain, 0, 1));
    QCOMPARE(s_listSynced.size(), 0);
    QVERIFY(writeBack.Wait(nAgain, 0, 1));
    QVERIFY(writeBack.Flush(nAgain));
    QCOMPARE(s_listSynced.size(), 2);
    s_nError = EIO;
    QVERIFY(!writeBack.Flush(nAgain));
    QCOMPARE(errno, EIO);
    close(nAgain);
}

void tst_MacWriteBack::bigFilesAreFlushed()
{
    const qint64 nMiB = 1024 * 1024;
    CWritePace pace([](bool) { return true; }, [] { return 0; });
    pace.Begin();
    Write(pace, "small", nMiB / 2);
    QCOMPARE(s_listSynced.size(), 0);
    const quint64 nFirst = Write(pace, "first", nMiB); // the next flush is due after two
    const quint64 nSecond = Write(pace, "second", nMiB + nMiB / 2);
    QCOMPARE(s_listSynced, QVector<quint64>({nFirst}));
    const quint64 nThird = Write(pace, "third", nMiB);
    QCOMPARE(s_listSynced, QVector<quint64>({nFirst, nSecond, nThird}));
    pace.End();
}

void tst_MacWriteBack::failedFlushIsKept()
{
    CWritePace pace([](bool) { return true; }, [] { return 0; });
    pace.Begin();
    const int nDescriptor = Open("file");
    pace.Written(nDescriptor, 0, 1); // tells what disk it is
    s_nError = ENOSPC;
    pace.Written(nDescriptor, 1, 4 * 1024 * 1024);
    pace.Ends(nDescriptor);
    close(nDescriptor);
    pace.End();
    QCOMPARE(pace.FlushError(), ENOSPC);
}

void tst_MacWriteBack::settledFilesAreFlushed()
{
    CWritePace pace([](bool) { return true; }, [] { return 0; });
    pace.Begin();
    QVector<quint64> listWritten;
    for (const char* pszName : {"one", "two"}) {
        const int nDescriptor = Open(pszName);
        struct stat stRaw = {};
        fstat(nDescriptor, &stRaw);
        listWritten.append(quint64(stRaw.st_ino));
        pace.Written(nDescriptor, 0, 1000);
        QVERIFY(pace.Settle(nDescriptor));
        pace.Ends(nDescriptor);
        close(nDescriptor);
        pace.Booked([](int) {});
    }
    QCOMPARE(s_listSynced.size(), 0); // they are small, and wait
    pace.End();
    QCOMPARE(s_listSynced, listWritten);
}

void tst_MacWriteBack::settledFileThatFailsIsTold()
{
    CWritePace pace([](bool) { return true; }, [] { return 0; });
    pace.Begin();
    const int nDescriptor = Open("file");
    pace.Written(nDescriptor, 0, CWritePace::BIG_BYTES);
    s_nError = EIO;
    QVERIFY(!pace.Settle(nDescriptor));
    QCOMPARE(errno, EIO);
    close(nDescriptor);
    pace.End();
    QCOMPARE(pace.FlushError(), 0); // the file is named instead
}

QTEST_GUILESS_MAIN(tst_MacWriteBack)
#include "tst_MacWriteBack.moc"
