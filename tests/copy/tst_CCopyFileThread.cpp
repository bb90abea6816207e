#include "copy/CCopyFileThread.h"
#include "files/CFileNameCodec.h"
#include "support/CAnotherUser.h"
#include "support/CGate.h"
#include "support/CLogCapture.h"
#include "support/CMovedClock.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "support/LogFile.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

static const qint64 MIB = 1024 * 1024;
static const qint64 LARGEST = std::numeric_limits<qint64>::max();

/** Longer than any wait of a test that passes. */
static const int PATIENCE_MS = 20000;

/** Content that shows a swapped, lost or repeated piece. */
static QByteArray Pattern(qint64 nSize)
{
    QByteArray baContent(int(nSize), Qt::Uninitialized);
    quint32 nState = 12345;
    for (int nPos = 0; nPos < baContent.size(); ++nPos) {
        nState = nState * 1664525 + 1013904223;
        baContent[nPos] = char(nState >> 24);
    }
    return baContent;
}

static QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<cannot be read>");
}

static struct stat State(const QString& strPath)
{
    struct stat stRaw = {};
    if (stat(QFile::encodeName(strPath).constData(), &stRaw) != 0) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
    return stRaw;
}

static QStringList ProblemLines() { return LogLines().filter(QStringLiteral("Not copied whole: ")); }

static QString Problem(const QString& strPath, const QString& strRest)
{
    return QStringLiteral("Not copied whole: \"") + strPath + QStringLiteral("\": ") + strRest;
}

class tst_CCopyFileThread : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void ChunkSize_data();
    void ChunkSize();
    void ChunkSizeInsideTheCopy_data();
    void ChunkSizeInsideTheCopy();
    void ChunkOfNoBytesStillEnds();

    void RemainingTime_data();
    void RemainingTime();
    void RemainingTimeIsZeroUntilBytesAreCopied();
    void RemainingTimeAtMostOnceASecond_data();
    void RemainingTimeAtMostOnceASecond();
    void PauseDoesNotRaiseRemainingTime();
    void ClockSetBackGivesNoNegativeTime();

    void Percent_data();
    void Percent();
    void ProgressAfterEveryChunk();

    void ReadFile_data();
    void ReadFile();
    void TrimPoint_data();
    void TrimPoint();

    void NoDestinationOnlyWritesItsLine();
    void NoRootOnlyWritesItsLine();
    void BadCopyFileParametersStop();
    void UntickedRootCopiesNothing();

    void Layout_data();
    void Layout();
    void DoubleSeparatorIsKept();
    void OnlyTickedChildrenAreCopied();
    void EmptyTickedFolderIsCreated();
    void TickedFolderNeverLoadedIsCreatedEmptyAndLogged();
    void TickedFolderThatCannotBeListedIsLogged();
    void TickedLinkThatLeadsBackIsLogged();
    void EntriesMissingInATickedFolderAreLogged();
    void PartlyTickedFolderLogsNothingMissing();

    void ContentOfEverySize_data();
    void ContentOfEverySize();
    void EmptyFileSendsNoProgress();
    void ModifiedTimeIsKept();
    void HostileName_data();
    void HostileName();
    void LongPathIsCopiedOrLogged();

    void ConflictName_data();
    void ConflictName();
    void FreeNameIsKept();
    void UnreadableTargetCountsAsFree();
    void PipeOfTheTargetsNameIsTaken();
    void ConflictOfALongestNameIsLogged();
    void CopyNeverOverwrites();

    void PauseHoldsAndResumeCompletes();
    void StopInPauseEndsFileAndWalk();
    void StopWhileRunningEndsFileAndWalk();
    void StopBeforeTheFirstChild();
    void NodesAreNotTouchedAfterAStop();
    void CopyFileAfterAStopTouchesNothing();
    void DestroyedAfterStopAndWait();

    void SummaryOfACompletedCopy();
    void SummaryLeavesPausesOut();
    void SecondRunStartsAfresh();
};

void tst_CCopyFileThread::initTestCase() { CFileNameCodec::Install(); }

void tst_CCopyFileThread::init() { UseLogFile(); }

// ---- chunk size

void tst_CCopyFileThread::ChunkSize_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("chunk");
    QTest::newRow("negative") << qint64(-1) << qint64(1048576);
    QTest::newRow("nothing") << qint64(0) << qint64(1048576);
    QTest::newRow("one below 50 MiB") << qint64(52428799) << qint64(1048576);
    QTest::newRow("exactly 50 MiB jumps") << qint64(52428800) << qint64(8388608);
    QTest::newRow("one above 50 MiB") << qint64(52428801) << qint64(4194304);
    QTest::newRow("one below 200 MiB") << qint64(209715199) << qint64(4194304);
    QTest::newRow("exactly 200 MiB") << qint64(209715200) << qint64(8388608);
    QTest::newRow("one above 200 MiB") << qint64(209715201) << qint64(8388608);
    QTest::newRow("largest") << LARGEST << qint64(8388608);
}

void tst_CCopyFileThread::ChunkSize()
{
    QFETCH(qint64, total);
    QFETCH(qint64, chunk);
    CNodeTree nodes;
    CCopyFileThread worker;
    worker.SetCopyParam(total, nodes.Root(), QStringLiteral("/nowhere"), COPY_STATUS_RUN);
    QCOMPARE(worker.CopySpeed(), chunk);
}

void tst_CCopyFileThread::ChunkSizeInsideTheCopy_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<int>("signalCount");
    QTest::newRow("1 MiB chunks") << qint64(52428799) << 3 * MIB << 3;
    QTest::newRow("1 MiB chunks and a rest") << qint64(52428799) << 3 * MIB + 1 << 4;
    QTest::newRow("8 MiB chunks at exactly 50 MiB") << qint64(52428800) << 9 * MIB << 2;
    QTest::newRow("4 MiB chunks") << qint64(52428801) << 9 * MIB << 3;
    QTest::newRow("4 MiB chunks below 200 MiB") << qint64(209715199) << 8 * MIB << 2;
    QTest::newRow("8 MiB chunks") << qint64(209715200) << 8 * MIB << 1;
}

void tst_CCopyFileThread::ChunkSizeInsideTheCopy()
{
    QFETCH(qint64, total);
    QFETCH(qint64, size);
    QFETCH(int, signalCount);
    CTempTree tree;
    const QByteArray baContent = Pattern(size);
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", baContent));
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyCopyInfo);
    worker.SetCopyParam(total, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(spy.count(), signalCount);
    QVERIFY(Content(tree.Path("dst") + tree.Path("src/f")) == baContent);
}

void tst_CCopyFileThread::ChunkOfNoBytesStillEnds()
{
    CTempTree tree;
    const QFileInfo source(tree.Write("f", "123"));
    QString strTarget = tree.Path("g");
    CCopyFileThread worker;
    worker.DealCopyFile(strTarget, tree.Path(), source, 0);
    QCOMPARE(tree.Read("g"), QByteArray("123"));
}

// ---- remaining time

void tst_CCopyFileThread::RemainingTime_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<int>("copied");
    QTest::addColumn<qint64>("usedMs");
    QTest::addColumn<qint64>("seconds");
    QTest::newRow("nine times what it took") << qint64(10000) << 1000 << qint64(5000) << qint64(45);
    QTest::newRow("division truncates") << qint64(10) << 3 << qint64(1000) << qint64(2);
    QTest::newRow("milliseconds truncate") << qint64(2000) << 1000 << qint64(1999) << qint64(1);
    QTest::newRow("less than a second left") << qint64(1001) << 1000 << qint64(5000) << qint64(0);
    QTest::newRow("all copied") << qint64(1000) << 1000 << qint64(5000) << qint64(0);
    QTest::newRow("more than the total") << qint64(500) << 1000 << qint64(5000) << qint64(0);
    QTest::newRow("no total") << qint64(0) << 1000 << qint64(5000) << qint64(0);
    QTest::newRow("product beyond 64 bits")
        << LARGEST << 1000000 << qint64(1000000) << qint64(9223372036853775);
    QTest::newRow("result beyond 64 bits") << LARGEST << 1 << qint64(10000) << LARGEST;
}

void tst_CCopyFileThread::RemainingTime()
{
    QFETCH(qint64, total);
    QFETCH(int, copied);
    QFETCH(qint64, usedMs);
    QFETCH(qint64, seconds);
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", QByteArray(copied, 'x')));
    CMovedClock clock;
    CCopyFileThread worker;
    connect(&worker, &CCopyFileThread::SignalCopyCopyInfo, &worker, [&] { clock.Move(usedMs); });
    QSignalSpy spy(&worker, &CCopyFileThread::SignalRemainTime);
    worker.SetCopyParam(total, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toLongLong(), seconds);
    worker.CalculateRemainTime();
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(1).at(0).toLongLong(), seconds);
}

void tst_CCopyFileThread::RemainingTimeIsZeroUntilBytesAreCopied()
{
    CNodeTree nodes;
    CMovedClock clock;
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalRemainTime);
    worker.SetCopyParam(1000000, nodes.Root(), QStringLiteral("/nowhere"), COPY_STATUS_RUN);
    worker.CalculateRemainTime();
    worker.run();
    clock.Move(5000);
    worker.CalculateRemainTime();
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(0).toLongLong(), 0);
    QCOMPARE(spy.at(1).at(0).toLongLong(), 0);
}

void tst_CCopyFileThread::RemainingTimeAtMostOnceASecond_data()
{
    QTest::addColumn<qint64>("stepMs");
    QTest::addColumn<int>("reports"); // in six chunks
    QTest::newRow("never") << qint64(0) << 0;
    QTest::newRow("999 ms are too few") << qint64(999) << 3;
    QTest::newRow("1000 ms are enough") << qint64(1000) << 6;
    QTest::newRow("every second chunk") << qint64(500) << 3;
    QTest::newRow("every third chunk") << qint64(334) << 2;
}

void tst_CCopyFileThread::RemainingTimeAtMostOnceASecond()
{
    QFETCH(qint64, stepMs);
    QFETCH(int, reports);
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", QByteArray(int(6 * MIB), 'x')));
    CMovedClock clock;
    CCopyFileThread worker;
    connect(&worker, &CCopyFileThread::SignalCopyCopyInfo, &worker, [&] { clock.Move(stepMs); });
    QSignalSpy spy(&worker, &CCopyFileThread::SignalRemainTime);
    worker.SetCopyParam(12 * MIB, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(spy.count(), reports);
}

void tst_CCopyFileThread::PauseDoesNotRaiseRemainingTime()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", QByteArray(int(2 * MIB), 'x')));
    CMovedClock clock;
    CCopyFileThread worker;
    CGate paused;
    std::atomic<int> nLooksBeforePause{0};
    QVector<qint64> listSeconds; // the worker's until it has ended
    connect(
        &worker, &CCopyFileThread::SignalCopyCopyInfo, &worker, [&] { clock.Move(1000); },
        Qt::DirectConnection);
    connect(
        &worker, &CCopyFileThread::SignalRemainTime, &worker,
        [&](qint64 nSeconds) {
            listSeconds.append(nSeconds);
            if (nLooksBeforePause == 0) {
                nLooksBeforePause = clock.Looks();
                worker.SetCopyStatus(COPY_STATUS_PAUSE);
                paused.Open();
            }
        },
        Qt::DirectConnection);
    worker.SetCopyParam(4 * MIB, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    CGate ended;
    connect(
        &worker, &CCopyFileThread::SignalCopyFinish, &worker, [&ended] { ended.Open(); },
        Qt::DirectConnection);
    worker.start();
    QVERIFY(paused.Pass(PATIENCE_MS));
    // The next look at the clock is the one that begins the pause.
    QTRY_COMPARE(clock.Looks(), nLooksBeforePause + 1);
    clock.Move(10000);
    worker.SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(ended.Pass(PATIENCE_MS));
    QVERIFY(worker.wait(PATIENCE_MS));
    // 3 MiB left after 1 s for 1 MiB, then 2 MiB left after 2 s for 2 MiB.
    QCOMPARE(listSeconds, (QVector<qint64>{3, 2}));
}

void tst_CCopyFileThread::ClockSetBackGivesNoNegativeTime()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", "12345"));
    CMovedClock clock;
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalRemainTime);
    worker.SetCopyParam(1000, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    clock.Move(-3600000);
    worker.CalculateRemainTime();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toLongLong(), 0);
}

// ---- progress

void tst_CCopyFileThread::Percent_data()
{
    QTest::addColumn<qint64>("total");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("percent");
    QTest::newRow("a third truncates") << qint64(300) << 100 << 33;
    QTest::newRow("two thirds truncate") << qint64(300) << 200 << 66;
    QTest::newRow("all") << qint64(300) << 300 << 100;
    QTest::newRow("just not all") << qint64(100000) << 99999 << 99;
    QTest::newRow("next to nothing") << LARGEST << 1 << 0;
    QTest::newRow("total too small") << qint64(10) << 300 << 100;
    QTest::newRow("total of nothing") << qint64(0) << 300 << 100;
    QTest::newRow("total unknown") << qint64(-1) << 300 << 100;
}

void tst_CCopyFileThread::Percent()
{
    QFETCH(qint64, total);
    QFETCH(int, size);
    QFETCH(int, percent);
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f.bin", QByteArray(size, 'x')));
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyCopyInfo);
    worker.SetCopyParam(total, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral("f.bin"));
    QCOMPARE(spy.at(0).at(1).toInt(), percent);
}

void tst_CCopyFileThread::ProgressAfterEveryChunk()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/a", QByteArray(int(2 * MIB), 'x')));
    nodes.Add(tree.Write("src/b", QByteArray(int(2 * MIB), 'x')));
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyCopyInfo);
    worker.SetCopyParam(4 * MIB, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QStringList listSeen;
    for (const QList<QVariant>& listArgument : qAsConst(spy)) {
        listSeen.append(listArgument.at(0).toString() + QLatin1Char(' ') + listArgument.at(1).toString());
    }
    const QStringList listExpected{"a 25", "a 50", "b 75", "b 100"};
    QCOMPARE(listSeen, listExpected);
}

// ---- small operations

void tst_CCopyFileThread::ReadFile_data()
{
    QTest::addColumn<bool>("readable");
    QTest::addColumn<qint64>("pos");
    QTest::addColumn<int>("len");
    QTest::addColumn<int>("result");
    QTest::addColumn<QByteArray>("read");
    QTest::newRow("from the start") << true << qint64(0) << 4 << 0 << QByteArray("0123");
    QTest::newRow("from the middle") << true << qint64(5) << 3 << 0 << QByteArray("567");
    QTest::newRow("short at the end") << true << qint64(8) << 4 << 0 << QByteArray("89");
    QTest::newRow("nothing behind the end") << true << qint64(20) << 4 << 0 << QByteArray();
    QTest::newRow("seek fails") << true << qint64(-5) << 4 << -1 << QByteArray();
    QTest::newRow("read fails") << false << qint64(0) << 4 << -2 << QByteArray();
}

void tst_CCopyFileThread::ReadFile()
{
    QFETCH(bool, readable);
    QFETCH(qint64, pos);
    QFETCH(int, len);
    QFETCH(int, result);
    QFETCH(QByteArray, read);
    CTempTree tree;
    QFile file(tree.Write("f", "0123456789"));
    const QIODevice::OpenMode mode = readable ? QIODevice::ReadOnly : QIODevice::Append;
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    char buf[16] = {};
    qint64 nReadLen = 0;
    CCopyFileThread worker;
    QCOMPARE(worker.ReadFile(&file, buf, len, pos, nReadLen), result);
    QCOMPARE(QByteArray(buf, int(nReadLen)), read);
}

void tst_CCopyFileThread::TrimPoint_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("trimmed");
    QTest::newRow("nothing to do") << "/a/b.txt"
                                   << "/a/b.txt";
    QTest::newRow("hidden file") << "/a/.b"
                                 << "/a/b";
    QTest::newRow("every place") << "/.a/.b"
                                 << "/a/b";
    QTest::newRow("several points") << "/a/...b"
                                    << "/a/b";
    QTest::newRow("points and separators") << "/./.a"
                                           << "//a";
    QTest::newRow("point at the start stays") << ".a"
                                              << ".a";
    QTest::newRow("empty") << ""
                           << "";
}

void tst_CCopyFileThread::TrimPoint()
{
    QFETCH(QString, path);
    QFETCH(QString, trimmed);
    CCopyFileThread worker;
    worker.TrimPoint(path);
    QCOMPARE(path, trimmed);
}

// ---- bad parameters

void tst_CCopyFileThread::NoDestinationOnlyWritesItsLine()
{
    const QString strLine = QStringLiteral("CCopyFileThread::run() path failed");
    CNodeTree nodes;
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyFinish);
    worker.SetCopyParam(1, nodes.Root(), QString(), COPY_STATUS_RUN);
    const CLogCapture capture;
    worker.run();
    QCOMPARE(capture.Lines(), QStringList{strLine});
    QCOMPARE(LogLines(), QStringList());
    QCOMPARE(spy.count(), 0);
}

void tst_CCopyFileThread::NoRootOnlyWritesItsLine()
{
    const QString strLine = QStringLiteral("CCopyFileThread::run() dirnode failed");
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyFinish);
    worker.SetCopyParam(1, nullptr, QStringLiteral("/nowhere"), COPY_STATUS_RUN);
    const CLogCapture capture;
    worker.run();
    QCOMPARE(capture.Lines(), QStringList{strLine});
    QCOMPARE(LogLines(), QStringList());
    QCOMPARE(spy.count(), 0);
}

void tst_CCopyFileThread::BadCopyFileParametersStop()
{
    CNodeTree nodes;
    CCopyFileThread worker;
    QCOMPARE(worker.GetCopyStatus(), COPY_STATUS_RUN);
    worker.CopyFile(nullptr, QStringLiteral("/nowhere"));
    QCOMPARE(worker.GetCopyStatus(), COPY_STATUS_STOP);
    worker.SetCopyStatus(COPY_STATUS_RUN);
    worker.CopyFile(nodes.Root(), QString());
    QCOMPARE(worker.GetCopyStatus(), COPY_STATUS_STOP);
}

void tst_CCopyFileThread::UntickedRootCopiesNothing()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", "123"));
    nodes.Root()->m_chkState = Qt::Unchecked;
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyFinish);
    worker.SetCopyParam(3, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QVERIFY(!tree.Has("dst"));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(worker.GetCopyStatus(), COPY_STATUS_RUN);
}

// ---- layout

void tst_CCopyFileThread::Layout_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("below");
    QTest::newRow("volume's name becomes the first folder") << "/Volumes/Data/a/b.txt"
                                                            << "Data/a/b.txt";
    QTest::newRow("top of a volume") << "/Volumes/Data/b.txt"
                                     << "Data/b.txt";
    QTest::newRow("start-up volume keeps its separator") << "/Users/x/c.txt"
                                                         << "/Users/x/c.txt";
    QTest::newRow("directly in the folder of volumes") << "/Volumes/c.txt"
                                                       << "/Volumes/c.txt";
    QTest::newRow("other case") << "/volumes/Data/c.txt"
                                << "/volumes/Data/c.txt";
    QTest::newRow("longer name") << "/Volumes2/Data/c.txt"
                                 << "/Volumes2/Data/c.txt";
    QTest::newRow("only at the beginning") << "/Users/Volumes/c.txt"
                                           << "/Users/Volumes/c.txt";
    QTest::newRow("only once") << "/Volumes/Volumes/c.txt"
                               << "Volumes/c.txt";
}

void tst_CCopyFileThread::Layout()
{
    QFETCH(QString, source);
    QFETCH(QString, below);
    QDir().mkpath(QFileInfo(source).path());
    QFile file(source);
    if (!file.open(QIODevice::WriteOnly)) {
        QSKIP(qPrintable(QStringLiteral("needs the sandbox to create ") + source));
    }
    QCOMPARE(file.write("data"), 4);
    file.close();
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(source);
    CCopyFileThread worker;
    worker.SetCopyParam(4, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(Content(tree.Path("dst") + QLatin1Char('/') + below), QByteArray("data"));
    QCOMPARE(ProblemLines(), QStringList{});
    QVERIFY(file.remove());
}

void tst_CCopyFileThread::DoubleSeparatorIsKept()
{
    // A folder has the file's name already and any other name is too long, so the
    // line in the log shows the path of the target.
    CTempTree tree;
    CNodeTree nodes;
    const QString strName(255, QLatin1Char('n'));
    nodes.Add(tree.Write("src/" + strName, "data"));
    QVERIFY(QDir().mkpath(tree.Path("dst") + tree.Path("src/" + strName)));
    CCopyFileThread worker;
    worker.SetCopyParam(4, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(ProblemLines().count(), 1);
    const QString strTarget = tree.Path("dst") + "/" + tree.Path("src/" + strName) + "_1";
    QVERIFY2(strTarget.contains(QLatin1String("dst//")), qPrintable(strTarget));
    QVERIFY2(ProblemLines().at(0).contains(strTarget), qPrintable(ProblemLines().at(0)));
}

void tst_CCopyFileThread::OnlyTickedChildrenAreCopied()
{
    CTempTree tree;
    CNodeTree nodes;
    CDirNode* pTop = nodes.Add(tree.MkDir("src"), Qt::PartiallyChecked);
    nodes.Add(tree.Write("src/ticked", "1"), Qt::Checked, pTop);
    nodes.Add(tree.Write("src/unticked", "2"), Qt::Unchecked, pTop);
    CDirNode* pPartly = nodes.Add(tree.MkDir("src/partly"), Qt::PartiallyChecked, pTop);
    nodes.Add(tree.Write("src/partly/in", "3"), Qt::Checked, pPartly);
    nodes.Add(tree.Write("src/partly/out", "4"), Qt::Unchecked, pPartly);
    CDirNode* pOff = nodes.Add(tree.MkDir("src/off"), Qt::Unchecked, pTop);
    nodes.Add(tree.Write("src/off/never", "5"), Qt::Checked, pOff);
    CCopyFileThread worker;
    worker.SetCopyParam(2, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    const QDir dir(tree.Path("dst") + tree.Path("src"));
    QCOMPARE(dir.entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
             (QStringList{"partly", "ticked"}));
    QCOMPARE(QDir(dir.filePath("partly")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{"in"});
    QCOMPARE(Content(dir.filePath("partly/in")), QByteArray("3"));
}

void tst_CCopyFileThread::EmptyTickedFolderIsCreated()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.MkDir("src/empty"));
    CCopyFileThread worker;
    worker.SetCopyParam(0, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QVERIFY(QFileInfo(tree.Path("dst") + tree.Path("src/empty")).isDir());
    QCOMPARE(ProblemLines(), QStringList{});
}

void tst_CCopyFileThread::TickedFolderNeverLoadedIsCreatedEmptyAndLogged()
{
    CTempTree tree;
    tree.Write("src/sub/f", "1");
    CNodeTree nodes;
    nodes.Add(tree.Path("src/sub"));
    CCopyFileThread worker;
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    const QDir dir(tree.Path("dst") + tree.Path("src/sub"));
    QVERIFY(dir.exists());
    QVERIFY(dir.isEmpty());
    QCOMPARE(ProblemLines(),
             QStringList{Problem(tree.Path("src/sub"),
                                 "its contents were never listed (0 of unknown bytes copied)")});
}

void tst_CCopyFileThread::TickedFolderThatCannotBeListedIsLogged()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.MkDir("src/sub"));
    QVERIFY(QDir().rmdir(tree.Path("src/sub")));
    CCopyFileThread worker;
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(ProblemLines(),
             QStringList{Problem(tree.Path("src/sub"),
                                 "its contents cannot be listed: No such file or directory (0 of unknown "
                                 "bytes copied)")});
}

void tst_CCopyFileThread::TickedLinkThatLeadsBackIsLogged()
{
    CTempTree tree;
    tree.MkDir("src");
    tree.Link("src/back", tree.Path("src"));
    CNodeTree nodes;
    nodes.AddListed(tree.Path("src"));
    CCopyFileThread worker;
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(
        ProblemLines(),
        QStringList{Problem(tree.Path("src/back"),
                            "a link to a folder that it lies in, not followed (0 of unknown bytes copied)")});
}

void tst_CCopyFileThread::EntriesMissingInATickedFolderAreLogged()
{
    CTempTree tree;
    tree.Write("src/known", "1");
    tree.Write("src/developer.txt", "12345");
    tree.Write("src/homes/f", "1");
    CNodeTree nodes;
    nodes.AddListed(tree.Path("src"));
    tree.Write("src/new\nfile", "123");
    CCopyFileThread worker;
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QStringList listLine = ProblemLines();
    listLine.sort();
    const QString strReason
        = QStringLiteral("not in the tree: left out for its name, or newer than the list (0 of ");
    const QStringList listExpected{
        Problem(tree.Path("src/developer.txt"), strReason + "5 bytes copied)"),
        Problem(tree.Path("src/homes"), strReason + "unknown bytes copied)"),
        Problem(tree.Path("src/new\\nfile"), strReason + "3 bytes copied)"),
    };
    QCOMPARE(listLine, listExpected);
    QCOMPARE(Content(tree.Path("dst") + tree.Path("src/known")), QByteArray("1"));
}

void tst_CCopyFileThread::PartlyTickedFolderLogsNothingMissing()
{
    CTempTree tree;
    tree.Write("src/known", "1");
    tree.Write("src/developer.txt", "12345");
    CNodeTree nodes;
    CDirNode* pTop = nodes.Add(tree.Path("src"), Qt::PartiallyChecked);
    nodes.Add(tree.Path("src/known"), Qt::Checked, pTop);
    CCopyFileThread worker;
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(ProblemLines(), QStringList{});
}

// ---- content, times, names

void tst_CCopyFileThread::ContentOfEverySize_data()
{
    QTest::addColumn<qint64>("size");
    QTest::newRow("1") << qint64(1);
    QTest::newRow("one below a piece") << 256 * 1024 - qint64(1);
    QTest::newRow("a piece") << 256 * qint64(1024);
    QTest::newRow("one above a piece") << 256 * 1024 + qint64(1);
    QTest::newRow("one below a chunk") << MIB - 1;
    QTest::newRow("a chunk") << MIB;
    QTest::newRow("one above a chunk") << MIB + 1;
    QTest::newRow("chunks, pieces and a rest") << 3 * MIB + 256 * 1024 + 17;
}

void tst_CCopyFileThread::ContentOfEverySize()
{
    QFETCH(qint64, size);
    CTempTree tree;
    const QByteArray baContent = Pattern(size);
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", baContent));
    CCopyFileThread worker;
    worker.SetCopyParam(size, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QVERIFY(Content(tree.Path("dst") + tree.Path("src/f")) == baContent);
    QCOMPARE(ProblemLines(), QStringList{});
}

void tst_CCopyFileThread::EmptyFileSendsNoProgress()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f"));
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyCopyInfo);
    QSignalSpy finished(&worker, &CCopyFileThread::SignalCopyFinish);
    worker.SetCopyParam(0, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(Content(tree.Path("dst") + tree.Path("src/f")), QByteArray());
    QVERIFY(QFileInfo::exists(tree.Path("dst") + tree.Path("src/f")));
    QCOMPARE(spy.count(), 0);
    QCOMPARE(finished.count(), 1);
}

void tst_CCopyFileThread::ModifiedTimeIsKept()
{
    CTempTree tree;
    CNodeTree nodes;
    const timespec listOld[2] = {{1100000000, 0}, {1100000000, 123456789}};
    for (const QString strName : {"src/full", "src/empty"}) {
        nodes.Add(tree.Write(strName, strName == "src/full" ? "123" : ""));
        QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(tree.Path(strName)).constData(), listOld, 0), 0);
    }
    CCopyFileThread worker;
    worker.SetCopyParam(3, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    for (const QString strName : {"src/full", "src/empty"}) {
        const struct stat stCopy = State(tree.Path("dst") + tree.Path(strName));
        QCOMPARE(qint64(stCopy.st_mtim.tv_sec), 1100000000);
        QCOMPARE(qint64(stCopy.st_mtim.tv_nsec), 123456789);
    }
    QCOMPARE(ProblemLines(), QStringList{});
}

void tst_CCopyFileThread::HostileName_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("placeholder") << QByteArray("%1 %2 %s");
    QTest::newRow("markup") << QByteArray("<b>bold</b> &amp;").replace('/', '|');
    QTest::newRow("newline") << QByteArray("a\nb");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("255 bytes of three each") << QByteArray("\xe3\x81\x82").repeated(85);
    QTest::newRow("not UTF-8") << QByteArray("a\xff\xfe\x80.txt");
    QTest::newRow("Latin-1") << QByteArray("caf\xe9");
    QTest::newRow("leading dash") << QByteArray("-rf");
    QTest::newRow("trailing blank") << QByteArray("a ");
    QTest::newRow("only a blank") << QByteArray(" ");
    QTest::newRow("backslash") << QByteArray("a\\b");
    QTest::newRow("quotes") << QByteArray("a\"b'c`d$e");
    QTest::newRow("control characters") << QByteArray("\x01\x1b[2J\x7f");
    QTest::newRow("hidden") << QByteArray(".hidden");
    QTest::newRow("three points") << QByteArray("...");
    QTest::newRow("outside the basic plane") << QByteArray("\xf0\x9f\x98\x80");
    QTest::newRow("decomposed") << QByteArray("e\xcc\x81");
    QTest::newRow("colon and star") << QByteArray("C:*?|");
}

void tst_CCopyFileThread::HostileName()
{
    QFETCH(QByteArray, name);
    // Once as the name of a file, once as the name of the folder that holds it.
    CTempTree tree;
    const QByteArray baSource = QFile::encodeName(tree.MkDir("src")) + '/';
    QCOMPARE(mkdir((baSource + name).constData(), 0700), 0);
    const QByteArray baFile = baSource + name + '/' + name;
    const int nDescriptor = open(baFile.constData(), O_WRONLY | O_CREAT, 0600);
    QVERIFY(nDescriptor != -1);
    QCOMPARE(write(nDescriptor, "data", 4), ssize_t(4));
    QCOMPARE(close(nDescriptor), 0);
    CNodeTree nodes;
    nodes.AddListed(tree.Path("src"));
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyCopyInfo);
    worker.SetCopyParam(4, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(ProblemLines(), QStringList{});
    const QByteArray baCopy = QFile::encodeName(tree.Path("dst")) + baFile;
    struct stat stCopy;
    QVERIFY2(lstat(baCopy.constData(), &stCopy) == 0, baCopy.constData());
    QCOMPARE(qint64(stCopy.st_size), 4);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(QFile::encodeName(spy.at(0).at(0).toString()), name);
}

void tst_CCopyFileThread::LongPathIsCopiedOrLogged()
{
    // The source is as long as a path can be, so the destination in front makes it too long.
    const int nLongest = 4090;
    CTempTree tree;
    QString strFolder = tree.Path("src");
    while (strFolder.size() < nLongest - 3) {
        strFolder += QLatin1Char('/') + QString(qMin(250, nLongest - 3 - strFolder.size()), QLatin1Char('p'));
    }
    QVERIFY(QDir().mkpath(strFolder));
    QFile file(strFolder + QStringLiteral("/f"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("123"), 3);
    file.close();
    CTempTree destination;
    const QString strDest = destination.Path();
    CNodeTree nodes;
    nodes.Add(file.fileName());
    nodes.Add(tree.Write("after", "1"));
    CCopyFileThread worker;
    worker.SetCopyParam(4, nodes.Root(), strDest, COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(ProblemLines(),
             QStringList{
                 Problem(file.fileName(),
                         "its target folder cannot be created: File name too long (0 of 3 bytes copied)")});
    QCOMPARE(Content(strDest + tree.Path("after")), QByteArray("1"));
}

// ---- conflicts

void tst_CCopyFileThread::ConflictName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QString>("expected");
    QTest::newRow("suffix without its point") << "report.pdf" << QStringList{"report.pdf"} << "report_1pdf";
    QTest::newRow("two suffixes") << "archive.tar.gz" << QStringList{"archive.tar.gz"} << "archive.tar_1gz";
    QTest::newRow("no suffix") << "README" << QStringList{"README"} << "README_1";
    QTest::newRow("first number taken") << "a.txt" << QStringList{"a.txt", "a_1txt"} << "a_2txt";
    QTest::newRow("number with a point is another name")
        << "a.txt" << QStringList{"a.txt", "a_1.txt"} << "a_1txt";
    QTest::newRow("first gap") << "a.txt" << QStringList{"a.txt", "a_1txt", "a_3txt"} << "a_2txt";
    QTest::newRow("two digits") << "n" << QStringList{"n",   "n_1", "n_2", "n_3", "n_4",
                                                      "n_5", "n_6", "n_7", "n_8", "n_9"}
                                << "n_10";
    QTest::newRow("hidden") << ".profile" << QStringList{".profile"} << "_1profile";
    QTest::newRow("trailing point") << "name." << QStringList{"name."} << "name._1";
    QTest::newRow("placeholder in the name") << "%1.txt" << QStringList{"%1.txt"} << "%1_1txt";
    QTest::newRow("placeholder in the suffix") << "a.%1" << QStringList{"a.%1"} << "a_1%1";
    QTest::newRow("blank") << "a b.txt " << QStringList{"a b.txt "} << "a b_1txt ";
}

void tst_CCopyFileThread::ConflictName()
{
    QFETCH(QString, name);
    QFETCH(QStringList, existing);
    QFETCH(QString, expected);
    CTempTree tree;
    const QString strFolder = tree.MkDir("dst");
    for (const QString& strName : qAsConst(existing)) {
        tree.Write("dst/" + strName, "old");
    }
    CCopyFileThread worker;
    QString strTarget = strFolder + QLatin1Char('/') + name;
    worker.DealExistingFile(strTarget, strFolder, QFileInfo(tree.Write("src/" + name, "new")));
    QCOMPARE(strTarget, strFolder + QLatin1Char('/') + expected);
}

void tst_CCopyFileThread::FreeNameIsKept()
{
    CTempTree tree;
    tree.Write("dst/other", "old");
    CCopyFileThread worker;
    QString strTarget = tree.Path("dst/a.txt");
    worker.DealExistingFile(strTarget, tree.Path("dst"), QFileInfo(tree.Write("src/a.txt", "new")));
    QCOMPARE(strTarget, tree.Path("dst/a.txt"));
}

void tst_CCopyFileThread::UnreadableTargetCountsAsFree()
{
    CTempTree tree;
    const QString strOld = tree.Write("dst/a.txt", "old and longer");
    const QByteArray baOld = QFile::encodeName(strOld);
    QCOMPARE(chmod(baOld.constData(), 0200), 0);
    const QFileInfo source(tree.Write("src/a.txt", "new"));
    if (geteuid() == 0) {
        QCOMPARE(chmod(QFile::encodeName(tree.Path()).constData(), 0755), 0);
        if (chown(baOld.constData(), CAnotherUser::NOBODY, gid_t(-1)) != 0) {
            QSKIP("cannot give the file to another user here");
        }
    }
    QString strTarget = strOld;
    {
        const CAnotherUser user;
        if (!user.IsValid()) {
            QSKIP("cannot look at files as another user here");
        }
        CCopyFileThread worker;
        worker.DealExistingFile(strTarget, tree.Path("dst"), source);
        worker.DealCopyFile(strTarget, tree.Path("dst"), source, MIB);
    }
    QCOMPARE(strTarget, strOld);
    QCOMPARE(chmod(baOld.constData(), 0600), 0);
    QCOMPARE(tree.Read("dst/a.txt"), QByteArray("new"));
}

void tst_CCopyFileThread::PipeOfTheTargetsNameIsTaken()
{
    CTempTree tree;
    tree.MkDir("dst");
    QCOMPARE(mkfifo(QFile::encodeName(tree.Path("dst/a.txt")).constData(), 0600), 0);
    CCopyFileThread worker;
    QString strTarget = tree.Path("dst/a.txt");
    worker.DealExistingFile(strTarget, tree.Path("dst"), QFileInfo(tree.Write("src/a.txt", "new")));
    QCOMPARE(strTarget, tree.Path("dst/a_1txt"));
}

void tst_CCopyFileThread::ConflictOfALongestNameIsLogged()
{
    CTempTree tree;
    const QString strName(255, QLatin1Char('n'));
    CNodeTree nodes;
    nodes.Add(tree.Write("src/" + strName, "new"));
    nodes.Add(tree.Write("src/after", "1"));
    const QString strFolder = tree.Path("dst") + tree.Path("src");
    QVERIFY(QDir().mkpath(strFolder));
    tree.Write("dst" + tree.Path("src/" + strName), "old");
    CCopyFileThread worker;
    worker.SetCopyParam(4, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(ProblemLines().count(), 1);
    QVERIFY(ProblemLines().at(0).contains(QLatin1String("its target cannot be created: File name too long")));
    QVERIFY(ProblemLines().at(0).endsWith(QLatin1String("(0 of 3 bytes copied)")));
    QCOMPARE(Content(strFolder + QLatin1Char('/') + strName), QByteArray("old"));
    QCOMPARE(Content(strFolder + QStringLiteral("/after")), QByteArray("1"));
}

void tst_CCopyFileThread::CopyNeverOverwrites()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/a.txt", "new"));
    const QString strFolder = tree.Path("dst") + tree.Path("src");
    tree.Write("dst" + tree.Path("src/a.txt"), "old");
    CCopyFileThread worker;
    worker.SetCopyParam(3, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    worker.run();
    QCOMPARE(Content(strFolder + QStringLiteral("/a.txt")), QByteArray("old"));
    QCOMPARE(Content(strFolder + QStringLiteral("/a_1txt")), QByteArray("new"));
    QCOMPARE(Content(strFolder + QStringLiteral("/a_2txt")), QByteArray("new"));
}

// ---- pause and stop

namespace {

/** A copy of two files on the worker's thread that waits after its first chunk until the test has looked. */
class CHeldCopy
{
public:
    explicit CHeldCopy(qint64 nFirstSize)
        : m_baFirst(Pattern(nFirstSize))
    {
        m_nodes.Add(m_tree.Write("src/first", m_baFirst));
        m_nodes.Add(m_tree.Write("src/second", "2"));
        const auto fnHold = [this] {
            m_chunks.Open();
            if (!m_bHeld.exchange(true)) {
                m_go.Pass(PATIENCE_MS);
            }
        };
        QObject::connect(&m_worker, &CCopyFileThread::SignalCopyCopyInfo, &m_worker, fnHold,
                         Qt::DirectConnection);
        QObject::connect(
            &m_worker, &CCopyFileThread::SignalCopyFinish, &m_worker, [this] { m_ends.Open(); },
            Qt::DirectConnection);
        m_worker.SetCopyParam(nFirstSize + 1, m_nodes.Root(), m_tree.Path("dst"), COPY_STATUS_RUN);
    }

    /** Ends the worker, also when a check has failed in between. */
    ~CHeldCopy()
    {
        m_worker.SetCopyStatus(COPY_STATUS_STOP);
        LetGo();
        m_worker.wait();
    }

    /** Starts the copy and returns once its first chunk is written; the worker waits for LetGo. */
    bool StartAndHold()
    {
        m_worker.start();
        return m_chunks.Pass(PATIENCE_MS);
    }

    void LetGo() { m_go.Open(); }

    QString Copy(const QString& strName) const { return m_tree.Path("dst") + m_tree.Path("src/" + strName); }

    QByteArray m_baFirst;
    CTempTree m_tree;
    CNodeTree m_nodes;
    CGate m_chunks; // one for each chunk written, the first is taken by StartAndHold
    CGate m_ends; // one for each SignalCopyFinish
    CCopyFileThread m_worker;

private:
    std::atomic<bool> m_bHeld{false};
    CGate m_go;
};

} // namespace

void tst_CCopyFileThread::PauseHoldsAndResumeCompletes()
{
    CHeldCopy copy(3 * MIB);
    QVERIFY(copy.StartAndHold());
    copy.m_worker.SetCopyStatus(COPY_STATUS_PAUSE);
    copy.LetGo();
    QVERIFY2(!copy.m_chunks.Pass(100), "copied on in the pause");
    QCOMPARE(copy.m_ends.Left(), 0);
    QCOMPARE(QFileInfo(copy.Copy("first")).size(), MIB);
    QVERIFY(copy.m_worker.isRunning());
    copy.m_worker.SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(copy.m_ends.Pass(PATIENCE_MS));
    QVERIFY(copy.m_worker.wait(PATIENCE_MS));
    QCOMPARE(copy.m_ends.Left(), 0);
    QVERIFY(Content(copy.Copy("first")) == copy.m_baFirst);
    QCOMPARE(Content(copy.Copy("second")), QByteArray("2"));
    QCOMPARE(ProblemLines(), QStringList{});
}

void tst_CCopyFileThread::StopInPauseEndsFileAndWalk()
{
    CHeldCopy copy(3 * MIB);
    QVERIFY(copy.StartAndHold());
    copy.m_worker.SetCopyStatus(COPY_STATUS_PAUSE);
    copy.LetGo();
    QVERIFY2(!copy.m_chunks.Pass(50), "copied on in the pause");
    copy.m_worker.SetCopyStatus(COPY_STATUS_STOP);
    QVERIFY(copy.m_ends.Pass(PATIENCE_MS));
    QVERIFY(copy.m_worker.wait(PATIENCE_MS));
    QCOMPARE(copy.m_ends.Left(), 0);
    QCOMPARE(QFileInfo(copy.Copy("first")).size(), MIB);
    QVERIFY(!QFileInfo::exists(copy.Copy("second")));
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.m_tree.Path("src/first"),
                                 "the copy was stopped (1048576 of 3145728 bytes copied)")});
    const QString strSummary = LogLines().last();
    QVERIFY2(strSummary.startsWith(QLatin1String("Copy stopped: files 0, bytes 1048576, seconds ")),
             qPrintable(strSummary));
    QVERIFY2(strSummary.endsWith(", problems 1, half-copied \"" + copy.m_tree.Path("src/first") + '"'),
             qPrintable(strSummary));
}

void tst_CCopyFileThread::StopWhileRunningEndsFileAndWalk()
{
    CHeldCopy copy(3 * MIB);
    QVERIFY(copy.StartAndHold());
    copy.m_worker.SetCopyStatus(COPY_STATUS_STOP);
    copy.LetGo();
    QVERIFY(copy.m_ends.Pass(PATIENCE_MS));
    QVERIFY(copy.m_worker.wait(PATIENCE_MS));
    QCOMPARE(copy.m_ends.Left(), 0);
    QCOMPARE(copy.m_chunks.Left(), 0);
    QCOMPARE(Content(copy.Copy("first")), copy.m_baFirst.left(int(MIB)));
    QVERIFY(!QFileInfo::exists(copy.Copy("second")));
    QCOMPARE(copy.m_worker.GetCopyStatus(), COPY_STATUS_STOP);
    QCOMPARE(ProblemLines().count(), 1);
    // A half-copied file must not look like its source.
    QVERIFY(State(copy.Copy("first")).st_mtim.tv_sec + 1
            >= State(copy.m_tree.Path("src/first")).st_mtim.tv_sec);
}

void tst_CCopyFileThread::StopBeforeTheFirstChild()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/f", "123"));
    CCopyFileThread worker;
    QSignalSpy finished(&worker, &CCopyFileThread::SignalCopyFinish);
    worker.SetCopyParam(3, nodes.Root(), tree.Path("dst"), COPY_STATUS_STOP);
    worker.run();
    QCOMPARE(finished.count(), 1);
    QVERIFY(!tree.Has("dst"));
    QVERIFY(LogLines().last().startsWith(QLatin1String("Copy stopped: files 0, bytes 0, seconds ")));
    QVERIFY(LogLines().last().endsWith(QLatin1String(", problems 0")));
}

void tst_CCopyFileThread::NodesAreNotTouchedAfterAStop()
{
    // The nodes are gone when the worker goes on, and two levels of the walk are
    // still to be left: a worker that looked at them would crash or copy on.
    CTempTree tree;
    tree.Write("src/a/b/first", QByteArray(int(2 * MIB), 'x'));
    tree.Write("src/a/second", "2");
    tree.Write("src/third", "3");
    CNodeTree nodes;
    nodes.AddListed(tree.Path("src"));
    CCopyFileThread worker;
    CGate reached;
    CGate go;
    connect(
        &worker, &CCopyFileThread::SignalCopyCopyInfo, &worker,
        [&] {
            reached.Open();
            go.Pass(PATIENCE_MS);
        },
        Qt::DirectConnection);
    worker.SetCopyParam(2 * MIB + 2, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    CGate ended;
    connect(
        &worker, &CCopyFileThread::SignalCopyFinish, &worker, [&ended] { ended.Open(); },
        Qt::DirectConnection);
    worker.start();
    QVERIFY(reached.Pass(PATIENCE_MS));
    worker.SetCopyStatus(COPY_STATUS_STOP);
    nodes.Clear();
    nodes.Root()->m_chkState = Qt::Unchecked;
    go.Open();
    QVERIFY(ended.Pass(PATIENCE_MS));
    QVERIFY(worker.wait(PATIENCE_MS));
    const QString strCopy = tree.Path("dst") + tree.Path("src");
    QCOMPARE(QFileInfo(strCopy + QStringLiteral("/a/b/first")).size(), MIB);
    QVERIFY(!QFileInfo::exists(strCopy + QStringLiteral("/a/second")));
    QVERIFY(!QFileInfo::exists(strCopy + QStringLiteral("/third")));
    QCOMPARE(LogLines().count(), 2);
}

void tst_CCopyFileThread::CopyFileAfterAStopTouchesNothing()
{
    CTempTree tree;
    tree.Write("src/sub/f", "1");
    CNodeTree nodes;
    nodes.Add(tree.Path("src/sub"));
    CCopyFileThread worker;
    worker.SetCopyStatus(COPY_STATUS_STOP);
    worker.CopyFile(nodes.Root(), tree.Path("dst"));
    QCOMPARE(LogLines(), QStringList{});
    QVERIFY(!tree.Has("dst"));
}

void tst_CCopyFileThread::DestroyedAfterStopAndWait()
{
    for (const ENCopyStatus enBefore : {COPY_STATUS_RUN, COPY_STATUS_PAUSE}) {
        CHeldCopy copy(4 * MIB);
        QVERIFY(copy.StartAndHold());
        copy.m_worker.SetCopyStatus(enBefore);
        copy.LetGo();
        copy.m_worker.SetCopyStatus(COPY_STATUS_STOP);
        QVERIFY(copy.m_ends.Pass(1000));
        QVERIFY(copy.m_worker.wait(1000));
    }
}

// ---- summary

void tst_CCopyFileThread::SummaryOfACompletedCopy()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/a", "123"));
    nodes.Add(tree.Write("src/b", "4567"));
    nodes.Add(tree.Link("src/broken", "nowhere"));
    CMovedClock clock;
    CCopyFileThread worker;
    connect(&worker, &CCopyFileThread::SignalCopyCopyInfo, &worker, [&] { clock.Move(600); });
    worker.SetCopyParam(7, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    const CLogCapture capture;
    worker.run();
    const QStringList listExpected{
        Problem(tree.Path("src/broken"), "open file failed: No such file or directory (0 of 0 bytes copied)"),
        "Copy completed: files 2, bytes 7, seconds 1.200, problems 1",
    };
    QCOMPARE(LogLines(), listExpected);
    QCOMPARE(capture.Lines(), QStringList{"open file failed"});
    // The empty target of a source that cannot be opened stays.
    QVERIFY(QFileInfo::exists(tree.Path("dst") + tree.Path("src/broken")));
}

void tst_CCopyFileThread::SummaryLeavesPausesOut()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/a", QByteArray(int(2 * MIB), 'x')));
    CMovedClock clock;
    CCopyFileThread worker;
    CGate reached;
    int nLooks = 0;
    connect(
        &worker, &CCopyFileThread::SignalCopyCopyInfo, &worker,
        [&] {
            if (nLooks == 0) {
                worker.SetCopyStatus(COPY_STATUS_PAUSE);
                nLooks = clock.Looks();
                reached.Open();
            }
        },
        Qt::DirectConnection);
    worker.SetCopyParam(2 * MIB, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    CGate ended;
    connect(
        &worker, &CCopyFileThread::SignalCopyFinish, &worker, [&ended] { ended.Open(); },
        Qt::DirectConnection);
    worker.start();
    QVERIFY(reached.Pass(PATIENCE_MS));
    // One look after the chunk, one at the beginning of the pause.
    QTRY_COMPARE(clock.Looks(), nLooks + 2);
    clock.Move(30000);
    worker.SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(ended.Pass(PATIENCE_MS));
    QVERIFY(worker.wait(PATIENCE_MS));
    worker.run();
    const QString strSummary
        = QStringLiteral("Copy completed: files 1, bytes 2097152, seconds 0.000, problems 0");
    QCOMPARE(LogLines(), (QStringList{strSummary, strSummary}));
}

void tst_CCopyFileThread::SecondRunStartsAfresh()
{
    CTempTree tree;
    CNodeTree nodes;
    nodes.Add(tree.Write("src/a", "123"));
    CMovedClock clock;
    CCopyFileThread worker;
    QSignalSpy spy(&worker, &CCopyFileThread::SignalCopyCopyInfo);
    worker.SetCopyParam(6, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    worker.run();
    QCOMPARE(spy.at(0).at(1).toInt(), 50);
    QCOMPARE(spy.at(1).at(1).toInt(), 50);
    const QString strSummary = QStringLiteral("Copy completed: files 1, bytes 3, seconds 0.000, problems 0");
    QCOMPARE(LogLines(), (QStringList{strSummary, strSummary}));
}

QTEST_GUILESS_MAIN(tst_CCopyFileThread)
#include "tst_CCopyFileThread.moc"
