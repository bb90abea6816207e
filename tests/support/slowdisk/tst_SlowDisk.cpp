// The disk with a head does what it says, so that what is measured with it is true.

#include "support/CFaultyDisk.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QVector>

#include <fcntl.h>
#include <sys/mount.h>
#include <thread>
#include <unistd.h>

static const int PATIENCE_MS = 10000;
static const qint64 SEEK_US = 2000;
static const int BYTES_PER_SECOND = 4000000;
static const qint64 PAGE = 4096;
static const qint64 PAGE_US = 1024;
static const int PAGES = 1024;

namespace {

/** A disk of 4 MiB that takes 2 ms for a seek and 250 ns for a byte. */
class CDisk
{
public:
    CDisk()
    {
        QDir(m_dir.path()).mkdir("head");
        QFile image(m_dir.filePath("image"));
        if (image.open(QIODevice::WriteOnly) && image.resize(PAGES * PAGE)) {
            m_head.start(BuildPath("tests/slowdisk/slow_disk"),
                         {image.fileName(), m_dir.filePath("head"), QString::number(SEEK_US),
                          QString::number(BYTES_PER_SECOND)});
        }
        m_bServed = QTest::qWaitFor([this] { return QFile::exists(Path("disk")); }, PATIENCE_MS);
        m_nDisk = open(QFile::encodeName(Path("disk")).constData(), O_RDWR | O_CLOEXEC);
    }

    ~CDisk()
    {
        close(m_nDisk);
        umount2(QFile::encodeName(m_dir.filePath("head")).constData(), MNT_DETACH);
        m_head.waitForFinished(PATIENCE_MS);
    }

    CDisk(const CDisk&) = delete;
    CDisk& operator=(const CDisk&) = delete;

    bool IsValid() const { return m_bServed && m_nDisk != -1; }

    QString Path(const QString& strName) const { return m_dir.filePath("head/" + strName); }

    QString Image() const { return m_dir.filePath("image"); }

    /** Reads, or writes, whole pages. */
    bool Ask(bool bWrite, int nPage, int nPages) const
    {
        QByteArray baPages(int(nPages * PAGE), 'w');
        const off_t nFrom = nPage * PAGE;
        const ssize_t nDone = bWrite ? pwrite(m_nDisk, baPages.constData(), size_t(baPages.size()), nFrom)
                                     : pread(m_nDisk, baPages.data(), size_t(baPages.size()), nFrom);
        return nDone == baPages.size();
    }

    /** What the file "statistics" says. */
    QMap<QByteArray, qint64> Statistics() const
    {
        QMap<QByteArray, qint64> mapValue;
        for (const QByteArray& baLine : Content(Path("statistics")).split('\n')) {
            const QList<QByteArray> listWord = baLine.split(' ');
            mapValue[listWord.constFirst()] = listWord.constLast().toLongLong();
        }
        return mapValue;
    }

private:
    QTemporaryDir m_dir;
    QProcess m_head;
    bool m_bServed = false;
    int m_nDisk = -1;
};

/** Whole pages that are asked for. */
struct STAsked
{
    bool bWrite = false;
    int nPage = 0;
    int nPages = 0;
};

}

Q_DECLARE_METATYPE(QVector<STAsked>)

class tst_SlowDisk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { NEEDS_FAULTY_DISKS(); }

    void eachJumpIsASeek_data()
    {
        QTest::addColumn<QVector<STAsked>>("listAsked");
        QTest::addColumn<int>("nReadSeeks");
        QTest::addColumn<int>("nWriteSeeks");
        using List = QVector<STAsked>;
        QTest::newRow("one after the other") << List{{false, 7, 1}, {false, 8, 2}, {false, 10, 1}} << 1 << 0;
        QTest::newRow("the same again") << List{{false, 7, 1}, {false, 7, 1}} << 2 << 0;
        QTest::newRow("a page left out") << List{{false, 7, 1}, {false, 9, 1}} << 2 << 0;
        QTest::newRow("backwards") << List{{true, 9, 1}, {true, 8, 1}, {true, 7, 1}} << 0 << 3;
        QTest::newRow("a write where a read ended") << List{{false, 7, 1}, {true, 8, 1}} << 1 << 0;
        QTest::newRow("a write in between") << List{{false, 7, 1}, {true, 90, 1}, {false, 8, 1}} << 2 << 1;
        QTest::newRow("a large one") << List{{false, 0, 700}, {true, 700, 300}} << 1 << 0;
    }

    void eachJumpIsASeek()
    {
        QFETCH(QVector<STAsked>, listAsked);
        QFETCH(int, nReadSeeks);
        QFETCH(int, nWriteSeeks);
        const CDisk disk;
        QVERIFY(disk.IsValid());

        qint64 nRead = 0;
        qint64 nWritten = 0;
        for (const STAsked& stAsked : listAsked) {
            QVERIFY(disk.Ask(stAsked.bWrite, stAsked.nPage, stAsked.nPages));
            (stAsked.bWrite ? nWritten : nRead) += stAsked.nPages;
        }

        const QMap<QByteArray, qint64> mapValue = disk.Statistics();
        QCOMPARE(mapValue["read-seeks"], qint64(nReadSeeks));
        QCOMPARE(mapValue["write-seeks"], qint64(nWriteSeeks));
        QCOMPARE(mapValue["read-bytes"], nRead * PAGE);
        QCOMPARE(mapValue["write-bytes"], nWritten * PAGE);
        QCOMPARE(mapValue["read-busy-us"], nReadSeeks * SEEK_US + nRead * PAGE_US);
        QCOMPARE(mapValue["write-busy-us"], nWriteSeeks * SEEK_US + nWritten * PAGE_US);
    }

    void anAnswerDoesNotComeBeforeItsTime()
    {
        const CDisk disk;
        QVERIFY(disk.IsValid());
        QElapsedTimer timer;
        timer.start();
        QVERIFY(disk.Ask(false, 0, 50));
        QVERIFY(disk.Ask(true, 0, 50));
        QVERIFY(timer.nsecsElapsed() >= 1000LL * (2 * SEEK_US + 100 * PAGE_US));
    }

    void whoeverAsksSharesOneHead()
    {
        const CDisk disk;
        QVERIFY(disk.IsValid());
        QElapsedTimer timer;
        timer.start();
        bool bRead = false;
        std::thread reader([&] { bRead = disk.Ask(false, 0, 50); });
        const bool bWritten = disk.Ask(true, 500, 50);
        reader.join();
        QVERIFY(bRead && bWritten);
        QVERIFY(timer.nsecsElapsed() >= 1000LL * (2 * SEEK_US + 100 * PAGE_US));
    }

    void theBytesAreThoseOfTheImage()
    {
        const CDisk disk;
        QVERIFY(disk.IsValid());
        QVERIFY(disk.Ask(true, 3, 2));
        QCOMPARE(Content(disk.Image()).mid(int(2 * PAGE), int(4 * PAGE)),
                 QByteArray(int(PAGE), 0) + QByteArray(int(2 * PAGE), 'w') + QByteArray(int(PAGE), 0));
        QCOMPARE(Content(disk.Path("disk")), Content(disk.Image()));
    }

    void theModelCanBeChanged()
    {
        const CDisk disk;
        QVERIFY(disk.IsValid());
        QCOMPARE(Content(disk.Path("model")), QByteArray("2000 4000000\n"));
        QFile model(disk.Path("model"));
        QVERIFY(model.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        QCOMPARE(model.write("0 0"), qint64(3));
        QVERIFY(disk.Ask(false, 9, 9));
        QCOMPARE(disk.Statistics()["read-busy-us"], qint64(0));
        QCOMPARE(model.write("nonsense"), qint64(-1));
        QCOMPARE(Content(disk.Path("model")), QByteArray("0 0\n"));
    }
};

QTEST_GUILESS_MAIN(tst_SlowDisk)
#include "tst_SlowDisk.moc"
