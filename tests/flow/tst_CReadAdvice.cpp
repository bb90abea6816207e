#include "files/CDescriptor.h"
#include "flow/CReadAdvice.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

static const int PATIENCE_MS = 10000;

/** The device that an entry lies on. */
static quint64 DeviceOf(const QByteArray& baPath)
{
    struct stat stRaw = {};
    return lstat(baPath.constData(), &stRaw) == 0 ? quint64(stRaw.st_dev) : 0;
}

/** What the system really does when it is asked for bytes ahead. */
class tst_CReadAdvice : public QObject
{
    Q_OBJECT

private slots:
    void bytesThatWereAskedForCome();
    void memoryIsKnown();
    void opensFilesOnly_data();
    void opensFilesOnly();
    void listsAFolder();
    void nothingIsOpenedOnAnotherDevice();
    void freeMemoryIsKnown();

private:
    CTempTree m_tree; // in memory
};

/** On the disk of the build folder, where it is one that can forget and tell. */
void tst_CReadAdvice::bytesThatWereAskedForCome()
{
    const QTemporaryDir dir(QString::fromLocal8Bit(qgetenv("TARNWICK_BUILD_DIR")) + "/advice-XXXXXX");
    QVERIFY(dir.isValid());
    const qint64 nBytes = 300 * 1024;
    const QByteArray baPath = QFile::encodeName(dir.filePath("file"));
    QFile file(dir.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QByteArray(int(nBytes), 'x')) == nBytes
            && file.flush());
    QCOMPARE(fsync(file.handle()), 0);
    file.close();
    const STSourceFile stFile = CReadAdvice::Open(baPath, DeviceOf(baPath));
    const CDescriptor descriptor(stFile.nDescriptor);
    QVERIFY(descriptor.IsOpen());
    QCOMPARE(stFile.nSize, nBytes);
    QVERIFY(CReadAdvice::PlaceOf(stFile) != 0);
    posix_fadvise(descriptor.Get(), 0, 0, POSIX_FADV_DONTNEED);
    if (CReadAdvice::IsThere(descriptor.Get(), nBytes - 1) != ENThere::NO) {
        QSKIP("the build folder's file system does not forget, or does not tell");
    }
    QVERIFY(CReadAdvice::WillNeed(descriptor.Get(), 128 * 1024, nBytes - 128 * 1024));
    QTRY_COMPARE_WITH_TIMEOUT(CReadAdvice::IsThere(descriptor.Get(), nBytes - 1), ENThere::YES, PATIENCE_MS);
}

void tst_CReadAdvice::memoryIsKnown()
{
    struct stat stRaw;
    QCOMPARE(stat(QFile::encodeName(m_tree.Path("")).constData(), &stRaw), 0);
    QVERIFY(CReadAdvice::DiskOf(stRaw.st_dev).bInMemory);
    const STSourceDisk stNone = CReadAdvice::DiskOf(0);
    QVERIFY(!stNone.bInMemory && !stNone.bKeeps && !stNone.bSeeks);
}

void tst_CReadAdvice::opensFilesOnly_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bOpen");
    QTest::addColumn<int>("nError");
    m_tree.Write("kinds/file", "x");
    m_tree.Write("kinds/empty", "");
    QVERIFY(mkfifo(QFile::encodeName(m_tree.Path("kinds/pipe")).constData(), 0600) == 0);
    QVERIFY(symlink("file", QFile::encodeName(m_tree.Path("kinds/link")).constData()) == 0);
    QTest::newRow("file") << "kinds/file" << true << 0;
    QTest::newRow("empty file") << "kinds/empty" << false << 0;
    QTest::newRow("pipe") << "kinds/pipe" << false << 0;
    QTest::newRow("link") << "kinds/link" << false << 0;
    QTest::newRow("folder") << "kinds" << false << 0;
    QTest::newRow("nothing") << "kinds/gone" << false << ENOENT;
}

void tst_CReadAdvice::opensFilesOnly()
{
    QFETCH(QString, strName);
    QFETCH(bool, bOpen);
    QFETCH(int, nError);
    const QByteArray baPath = QFile::encodeName(m_tree.Path(strName));
    const STSourceFile stFile = CReadAdvice::Open(baPath, DeviceOf(baPath));
    const CDescriptor descriptor(stFile.nDescriptor);
    QCOMPARE(descriptor.IsOpen(), bOpen);
    QCOMPARE(stFile.nError, nError);
    QVERIFY(!bOpen || (fcntl(descriptor.Get(), F_GETFD) & FD_CLOEXEC) != 0);
}

void tst_CReadAdvice::listsAFolder()
{
    m_tree.Write("list/one", "x");
    m_tree.Write("list/inner/two", "x");
    const QByteArray baPath = QFile::encodeName(m_tree.Path("list"));
    const quint64 nDevice = DeviceOf(baPath);
    const STSourceFolder stFolder = CReadAdvice::List(baPath, nDevice, 10);
    QVERIFY(stFolder.bWhole && stFolder.nError == 0);
    QCOMPARE(stFolder.listFile, QByteArrayList{QByteArray("one")});
    QCOMPARE(stFolder.listFolder, QByteArrayList{QByteArray("inner")});
    QVERIFY(!CReadAdvice::List(baPath, nDevice, 1).bWhole);
    QVERIFY(CReadAdvice::List(baPath + "/one", nDevice, 1).listFile.isEmpty());
    QCOMPARE(CReadAdvice::List(baPath + "/gone", nDevice, 1).nError, ENOENT);
}

/** As looking into a mount point may mount something, and the copy does not enter it. */
void tst_CReadAdvice::nothingIsOpenedOnAnotherDevice()
{
    const QByteArray baFile = QFile::encodeName(m_tree.Write("apart/one", "x"));
    const QByteArray baFolder = QFile::encodeName(m_tree.Path("apart"));
    const quint64 nDevice = DeviceOf(baFolder);
    const int nWatch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    const CDescriptor watch(nWatch);
    QVERIFY(inotify_add_watch(nWatch, baFolder.constData(), IN_OPEN) != -1);
    const STSourceFile stFile = CReadAdvice::Open(baFile, nDevice + 1);
    QCOMPARE(stFile.nDescriptor, -1);
    QCOMPARE(stFile.nDevice, nDevice);
    const STSourceFolder stFolder = CReadAdvice::List(baFolder, nDevice + 1, 10);
    QVERIFY(stFolder.listFile.isEmpty() && stFolder.bWhole);
    char szEvent[1024];
    QCOMPARE(int(read(nWatch, szEvent, sizeof szEvent)), -1);
    const CDescriptor opened(CReadAdvice::Open(baFile, nDevice).nDescriptor);
    QVERIFY(opened.IsOpen() && read(nWatch, szEvent, sizeof szEvent) > 0);
}

void tst_CReadAdvice::freeMemoryIsKnown() { QVERIFY(CReadAdvice::FreeMemory() > 0); }

QTEST_GUILESS_MAIN(tst_CReadAdvice)
#include "tst_CReadAdvice.moc"
