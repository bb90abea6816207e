#include "CFailingCalls.h"
#include "copy/CCopyFileThread.h"
#include "files/CFileNameCodec.h"
#include "support/CAnotherUser.h"
#include "support/CGate.h"
#include "support/CLogCapture.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/LogFile.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QtTest>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using ENCall = CFailingCalls::ENCall;

static const int MIB = 1024 * 1024;
static const int PIECE = 256 * 1024;

static QStringList ProblemLines() { return LogLines().filter(QStringLiteral("Not copied whole: ")); }

static QString Problem(const QString& strPath, const QString& strRest)
{
    return QStringLiteral("Not copied whole: \"") + strPath + QStringLiteral("\": ") + strRest;
}

static QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<cannot be read>");
}

/** A copy of "src/before", "src/file" and "src/after", run on the test's own thread. */
class CFaultyCopy
{
public:
    explicit CFaultyCopy(int nSize = 3 * MIB)
        : m_baContent(nSize, 'x')
    {
        for (int nPos = 0; nPos < nSize; nPos += 4096) {
            m_baContent[nPos] = char(nPos / 4096);
        }
        m_nodes.Add(m_tree.Write("src/before", "before"));
        m_nodes.Add(m_tree.Write("src/file", m_baContent));
        m_nodes.Add(m_tree.Write("src/after", "after"));
        m_strDest = m_tree.Path("dst");
    }

    void Run()
    {
        m_worker.SetCopyParam(m_baContent.size() + 11, m_nodes.Root(), m_strDest, COPY_STATUS_RUN);
        m_worker.run();
    }

    /** Runs the action after nChunk chunks of "file" were written, while it is open. */
    void AfterChunk(int nChunk, std::function<void()> fnAction)
    {
        QObject::connect(&m_worker, &CCopyFileThread::SignalCopyCopyInfo, &m_worker,
                         [this, nChunk, fnAction](const QString& strName) {
                             if (strName == QLatin1String("file") && ++m_nChunks == nChunk) {
                                 fnAction();
                             }
                         });
    }

    QString Source(const QString& strName = QStringLiteral("file")) const
    {
        return m_tree.Path("src/" + strName);
    }

    QString Copy(const QString& strName = QStringLiteral("file")) const
    {
        return m_strDest + Source(strName);
    }

    /** What is wrong with the files around the faulty one; empty when they were copied and the copy ended. */
    QString OthersFault() const
    {
        if (Content(Copy("before")) != "before") {
            return QStringLiteral("the file before was not copied");
        }
        if (Content(Copy("after")) != "after") {
            return QStringLiteral("the file after did not get its chance");
        }
        return m_finished.count() == 1 ? QString() : QStringLiteral("the end was not told");
    }

    CTempTree m_tree;
    QByteArray m_baContent;
    CNodeTree m_nodes;
    QString m_strDest;
    CCopyFileThread m_worker;
    QSignalSpy m_finished{&m_worker, &CCopyFileThread::SignalCopyFinish};

private:
    int m_nChunks = 0;
};

class tst_CopyFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void FailingCall_data();
    void FailingCall();
    void FailedReadWritesItsLine_data();
    void FailedReadWritesItsLine();
    void FailedReadCountsWhatCameBefore();
    void ListingThatBreaksOff();
    void SourceThatCannotBeOpened();
    void UnreadableFileOfAnotherUser();

    void SourceThatShrinks_data();
    void SourceThatShrinks();
    void SourceThatGrows();
    void SourceThatChanges_data();
    void SourceThatChanges();
    void SourceThatGrewSinceTheCountIsCopiedWhole();
    void SourceThatIsRemovedWhileCopied();
    void SourceThatVanishesBefore();
    void SourceThatBecameAFolder();
    void SourceThatBecomesAPipeWhenOpened();
    void SourceDiskThatVanishes();
    void SpecialFileIsSkipped_data();
    void SpecialFileIsSkipped();

    void FullDestination();
    void FileSizeLimit();
    void ReadOnlyDestination();
    void FileInTheWayOfAFolder();
    void TargetIsALinkToNowhere();

    void VanishedDestination_data();
    void VanishedDestination();
    void OtherDiskInThePlaceOfTheDestination();
    void VanishedBetweenFolderAndFile();
    void DestinationFolderDeletedIsMadeAgain();

    void StopWhileAFolderIsMade_data();
    void StopWhileAFolderIsMade();
    void WorkersSleepsAreExact();
    void ChildrenOfTheProgramInheritNoFile();
    void FlushComesBeforeTheFinish();
    void NoFlushAfterAStop();
    void FailedFlushIsLogged();
    void NothingCopiedNothingFlushed();
    void LostDestinationIsNotFlushed();
};

void tst_CopyFaults::initTestCase() { CFileNameCodec::Install(); }

void tst_CopyFaults::init() { UseLogFile(); }

void tst_CopyFaults::cleanup() { CFailingCalls::Reset(); }

// ---- calls that fail

void tst_CopyFaults::FailingCall_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<bool>("source"); // else the target
    QTest::addColumn<int>("error");
    QTest::addColumn<int>("good");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<int>("copied");
    // Every piece is one read and one write.
    QTest::newRow("read, at once") << int(ENCall::READ) << true << EIO << 0
                                   << "ReadFile ret = -2: Input/output error" << 0;
    QTest::newRow("read, second piece")
        << int(ENCall::READ) << true << EIO << 1 << "ReadFile ret = -2: Input/output error" << PIECE;
    QTest::newRow("read, second chunk")
        << int(ENCall::READ) << true << EIO << 4 << "ReadFile ret = -2: Input/output error" << MIB;
    QTest::newRow("read, last piece") << int(ENCall::READ) << true << EIO << 11
                                      << "ReadFile ret = -2: Input/output error" << 3 * MIB - PIECE;
    QTest::newRow("write, full disk at once") << int(ENCall::WRITE) << false << ENOSPC << 0
                                              << "its target cannot be written: No space left on device" << 0;
    QTest::newRow("write, full disk in the middle")
        << int(ENCall::WRITE) << false << ENOSPC << 5
        << "its target cannot be written: No space left on device" << 5 * PIECE;
    QTest::newRow("write, broken disk") << int(ENCall::WRITE) << false << EIO << 1
                                        << "its target cannot be written: Input/output error" << PIECE;
    QTest::newRow("write, largest file of FAT") << int(ENCall::WRITE) << false << EFBIG << 1
                                                << "its target cannot be written: File too large" << PIECE;
    QTest::newRow("close") << int(ENCall::CLOSE) << false << ENOSPC << 0
                           << "its target cannot be closed: No space left on device" << 3 * MIB;
    QTest::newRow("close, quota") << int(ENCall::CLOSE) << false << EDQUOT << 0
                                  << "its target cannot be closed: Disk quota exceeded" << 3 * MIB;
    QTest::newRow("time") << int(ENCall::SET_TIME) << false << EPERM << 0
                          << "its time cannot be kept: Operation not permitted" << 3 * MIB;
    QTest::newRow("open source, permission")
        << int(ENCall::OPEN) << true << EACCES << 0 << "open file failed: Permission denied" << 0;
    QTest::newRow("open source, broken disk")
        << int(ENCall::OPEN) << true << EIO << 0 << "open file failed: Input/output error" << 0;
}

void tst_CopyFaults::FailingCall()
{
    QFETCH(int, call);
    QFETCH(bool, source);
    QFETCH(int, error);
    QFETCH(int, good);
    QFETCH(QString, reason);
    QFETCH(int, copied);
    CFaultyCopy copy;
    // The target's path ends with the source's, which is told by "/src" alone: what
    // fails is done to the source only, but for opening, where the look whether the
    // target is free fails as well and leaves it free.
    CFailingCalls::Fail(ENCall(call), source ? QStringLiteral("/src/file") : copy.Copy(), error, good);
    copy.Run();
    CFailingCalls::Reset();
    const QString strBytes = QStringLiteral(" (%1 of 3145728 bytes copied)").arg(copied);
    QCOMPARE(ProblemLines(), QStringList{Problem(copy.Source(), reason + strBytes)});
    QCOMPARE(QFileInfo(copy.Copy()).size(), qint64(copied));
    QCOMPARE(Content(copy.Copy()), copy.m_baContent.left(copied));
    QCOMPARE(copy.OthersFault(), QString());
    QVERIFY(LogLines().last().startsWith(
        QStringLiteral("Copy completed: files 2, bytes %1, seconds ").arg(copied + 11)));
    QVERIFY(LogLines().last().endsWith(QLatin1String(", problems 1")));
}

void tst_CopyFaults::FailedReadWritesItsLine_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<QString>("line");
    QTest::newRow("seek") << int(ENCall::SEEK) << "ReadFile ret = -1";
    QTest::newRow("read") << int(ENCall::READ) << "ReadFile ret = -2";
}

void tst_CopyFaults::FailedReadWritesItsLine()
{
    QFETCH(int, call);
    QFETCH(QString, line);
    CFaultyCopy copy;
    CFailingCalls::Fail(ENCall(call), QStringLiteral("/src/file"), EIO);
    const CLogCapture capture;
    copy.Run();
    // Qt has a warning of its own for a seek.
    QCOMPARE(capture.Lines().filter(QStringLiteral("ReadFile")), QStringList{line});
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(), line + ": Input/output error (0 of 3145728 bytes copied)")});
    QVERIFY(QFileInfo::exists(copy.Copy()));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::FailedReadCountsWhatCameBefore()
{
    // Two pieces, then a bad place: they are told as one large read would tell them.
    CFaultyCopy copy;
    QSignalSpy progress(&copy.m_worker, &CCopyFileThread::SignalCopyCopyInfo);
    CFailingCalls::Fail(ENCall::READ, QStringLiteral("/src/file"), EIO, 2);
    copy.Run();
    QCOMPARE(progress.count(), 3);
    QCOMPARE(progress.at(1).at(0).toString(), QStringLiteral("file"));
    QCOMPARE(progress.at(1).at(1).toInt(), 16); // 512 KiB of 3 MiB
}

void tst_CopyFaults::ListingThatBreaksOff()
{
    CTempTree tree;
    tree.Write("src/a", "1");
    CNodeTree nodes;
    nodes.AddListed(tree.Path("src"));
    CFailingCalls::Fail(ENCall::LIST, tree.Path("src"), EIO);
    CCopyFileThread worker;
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    CFailingCalls::Reset();
    QCOMPARE(ProblemLines(),
             QStringList{Problem(tree.Path("src"),
                                 "its contents cannot be listed to the end: Input/output error (0 of unknown "
                                 "bytes copied)")});
    QCOMPARE(Content(tree.Path("dst") + tree.Path("src/a")), QByteArray("1"));
}

void tst_CopyFaults::SourceThatCannotBeOpened()
{
    CFaultyCopy copy;
    CFailingCalls::Fail(ENCall::OPEN, QStringLiteral("/src/file"), EACCES);
    const CLogCapture capture;
    copy.Run();
    QCOMPARE(capture.Lines(), QStringList{"open file failed"});
    QVERIFY2(QFileInfo::exists(copy.Copy()), "the empty target has to stay");
    QCOMPARE(QFileInfo(copy.Copy()).size(), 0);
}

void tst_CopyFaults::UnreadableFileOfAnotherUser()
{
    CFaultyCopy copy;
    QCOMPARE(chmod(QFile::encodeName(copy.Source()).constData(), 0), 0);
    if (geteuid() == 0) {
        QCOMPARE(chmod(QFile::encodeName(copy.m_tree.Path()).constData(), 0777), 0);
    }
    const CLogCapture capture;
    {
        const CAnotherUser user;
        if (!user.IsValid()) {
            QSKIP("cannot look at files as another user here");
        }
        copy.Run();
    }
    // Not the log's lines: its file may be out of that user's reach.
    QCOMPARE(capture.Lines(), QStringList{"open file failed"});
    QCOMPARE(QFileInfo(copy.Copy()).size(), 0);
    QCOMPARE(copy.OthersFault(), QString());
}

// ---- sources that move

void tst_CopyFaults::SourceThatShrinks_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("copied");
    QTest::newRow("to nothing") << 0 << MIB;
    QTest::newRow("to what is copied already") << MIB << MIB;
    QTest::newRow("to the middle of a piece") << MIB + PIECE + 10 << MIB + PIECE + 10;
    QTest::newRow("to the border of a piece") << MIB + 2 * PIECE << MIB + 2 * PIECE;
    QTest::newRow("by one byte") << 3 * MIB - 1 << 3 * MIB - 1;
}

void tst_CopyFaults::SourceThatShrinks()
{
    QFETCH(int, size);
    QFETCH(int, copied);
    CFaultyCopy copy;
    QSignalSpy progress(&copy.m_worker, &CCopyFileThread::SignalCopyCopyInfo);
    copy.AfterChunk(1, [&] { QCOMPARE(truncate(QFile::encodeName(copy.Source()).constData(), size), 0); });
    copy.Run();
    const QString strBytes = QStringLiteral(" (%1 of 3145728 bytes copied)").arg(copied);
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(), "became shorter while it was copied" + strBytes)});
    QCOMPARE(QFileInfo(copy.Copy()).size(), qint64(copied));
    QCOMPARE(copy.OthersFault(), QString());
    // The rest counts as done, so that the last file still ends at 100.
    QCOMPARE(progress.last().at(1).toInt(), 100);
}

void tst_CopyFaults::SourceThatGrows()
{
    CFaultyCopy copy;
    copy.AfterChunk(1, [&] {
        QFile file(copy.Source());
        QVERIFY(file.open(QIODevice::Append));
        QCOMPARE(file.write(QByteArray(5000, 'y')), 5000);
    });
    copy.Run();
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(),
                                 "changed while it was copied, it has 3150728 bytes now (3145728 of 3145728 "
                                 "bytes copied)")});
    QCOMPARE(Content(copy.Copy()), copy.m_baContent);
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::SourceThatChanges_data()
{
    QTest::addColumn<int>("grownBy");
    QTest::addColumn<qint64>("sec");
    QTest::addColumn<qint64>("nsec");
    QTest::newRow("size alone") << 7 << qint64(1100000000) << qint64(5);
    QTest::newRow("seconds alone") << 0 << qint64(1100000001) << qint64(5);
    QTest::newRow("nanoseconds alone") << 0 << qint64(1100000000) << qint64(6);
}

void tst_CopyFaults::SourceThatChanges()
{
    QFETCH(int, grownBy);
    QFETCH(qint64, sec);
    QFETCH(qint64, nsec);
    CFaultyCopy copy;
    const QByteArray baPath = QFile::encodeName(copy.Source());
    const timespec listBefore[2] = {{1100000000, 0}, {1100000000, 5}};
    QCOMPARE(utimensat(AT_FDCWD, baPath.constData(), listBefore, 0), 0);
    copy.AfterChunk(3, [&] {
        QCOMPARE(truncate(baPath.constData(), 3 * MIB + grownBy), 0);
        const timespec listAfter[2] = {{1100000000, 0}, {time_t(sec), long(nsec)}};
        QCOMPARE(utimensat(AT_FDCWD, baPath.constData(), listAfter, 0), 0);
    });
    copy.Run();
    const QString strReason
        = QStringLiteral("changed while it was copied, it has %1 bytes now").arg(3 * MIB + grownBy);
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(), strReason + " (3145728 of 3145728 bytes copied)")});
    // The copy is as old as what it holds.
    struct stat stCopy;
    QCOMPARE(stat(QFile::encodeName(copy.Copy()).constData(), &stCopy), 0);
    QCOMPARE(qint64(stCopy.st_mtim.tv_sec), 1100000000);
    QCOMPARE(qint64(stCopy.st_mtim.tv_nsec), 5);
}

void tst_CopyFaults::SourceThatGrewSinceTheCountIsCopiedWhole()
{
    CFaultyCopy copy(1000);
    QCOMPARE(copy.m_nodes.Root()->Child(1)->m_fileInfo.size(), 1000);
    QFile file(copy.Source());
    QVERIFY(file.open(QIODevice::Append));
    QCOMPARE(file.write(QByteArray(5000, 'y')), 5000);
    file.close();
    copy.Run();
    QCOMPARE(Content(copy.Copy()), copy.m_baContent + QByteArray(5000, 'y'));
    QCOMPARE(ProblemLines(), QStringList{});
}

void tst_CopyFaults::SourceThatIsRemovedWhileCopied()
{
    CFaultyCopy copy;
    copy.AfterChunk(1, [&] { QVERIFY(QFile::remove(copy.Source())); });
    copy.Run();
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(),
                                 "was removed while it was copied (3145728 of 3145728 bytes copied)")});
    QCOMPARE(Content(copy.Copy()), copy.m_baContent);
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::SourceThatVanishesBefore()
{
    CFaultyCopy copy;
    // The size is known from the count, as it is in the program.
    QCOMPARE(copy.m_nodes.Root()->Child(1)->m_fileInfo.size(), qint64(3 * MIB));
    QVERIFY(QFile::remove(copy.Source()));
    copy.Run();
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(),
                                 "open file failed: No such file or directory (0 of 3145728 bytes copied)")});
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::SourceThatBecameAFolder()
{
    CFaultyCopy copy;
    QVERIFY(QFile::remove(copy.Source()));
    QVERIFY(QDir().mkdir(copy.Source()));
    copy.Run();
    QCOMPARE(ProblemLines().count(), 1);
    QVERIFY(ProblemLines().at(0).startsWith(Problem(copy.Source(), "no longer a file (0 of ")));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::SourceThatBecomesAPipeWhenOpened()
{
    CFaultyCopy copy;
    // Between the look at the file and its opening; the target's look comes first.
    CFailingCalls::Watch(
        ENCall::OPEN, QStringLiteral("/src/file"),
        [&] {
            QVERIFY(QFile::remove(copy.Source()));
            QCOMPARE(mkfifo(QFile::encodeName(copy.Source()).constData(), 0600), 0);
        },
        1);
    copy.Run();
    QCOMPARE(ProblemLines().count(), 1);
    QVERIFY2(ProblemLines().at(0).startsWith(Problem(copy.Source(), "no longer a file (0 of ")),
             qPrintable(ProblemLines().at(0)));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::SourceDiskThatVanishes()
{
    CVolume volume(QStringLiteral("Source"), QStringLiteral("/dev/disk8s1"), 4);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CFaultyCopy copy;
    for (const QString strName : {"one", "two"}) {
        QFile file(volume.Path(strName));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write("1234"), 4);
        file.close();
        QCOMPARE(copy.m_nodes.Add(file.fileName())->m_fileInfo.size(), 4);
    }
    copy.m_nodes.Add(copy.m_tree.Write("src/last", "last"));
    copy.AfterChunk(1, [&] { volume.Pull(); });
    copy.Run();
    const QString strReason
        = QStringLiteral("open file failed: No such file or directory (0 of 4 bytes copied)");
    QCOMPARE(ProblemLines(),
             (QStringList{Problem(volume.Path("one"), strReason), Problem(volume.Path("two"), strReason)}));
    QCOMPARE(Content(copy.Copy("last")), QByteArray("last"));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::SpecialFileIsSkipped_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("pipe") << "pipe";
    QTest::newRow("socket") << "socket";
    QTest::newRow("device") << "device";
    QTest::newRow("link to a pipe") << "link";
}

void tst_CopyFaults::SpecialFileIsSkipped()
{
    QFETCH(QString, name);
    CFaultyCopy copy(100);
    const QString strPath = copy.Source(name);
    const QByteArray baPath = QFile::encodeName(strPath);
    if (name == QLatin1String("pipe")) {
        QCOMPARE(mkfifo(baPath.constData(), 0600), 0);
    } else if (name == QLatin1String("link")) {
        QCOMPARE(mkfifo(QFile::encodeName(copy.m_tree.Path("elsewhere")).constData(), 0600), 0);
        copy.m_tree.Link("src/link", copy.m_tree.Path("elsewhere"));
    } else if (name == QLatin1String("socket")) {
        const int nSocket = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_un stAddress = {};
        stAddress.sun_family = AF_UNIX;
        qstrncpy(stAddress.sun_path, baPath.constData(), sizeof(stAddress.sun_path));
        QCOMPARE(bind(nSocket, reinterpret_cast<sockaddr*>(&stAddress), sizeof(stAddress)), 0);
        close(nSocket);
    } else {
        // A real device for everybody; the link's own name is what is copied.
        copy.m_tree.Link("src/device", QStringLiteral("/dev/zero"));
    }
    copy.m_nodes.Add(strPath);
    copy.m_nodes.Add(copy.m_tree.Write("src/last", "last"));
    CFailingCalls::Watch(
        ENCall::OPEN, strPath, [] {}, 0);
    copy.Run();
    QCOMPARE(ProblemLines(), QStringList{Problem(strPath, "a pipe, socket or device (0 of 0 bytes copied)")});
    QVERIFY2(!QFileInfo(copy.Copy(name)).exists(), "nothing may be created for it");
    QCOMPARE(Content(copy.Copy("last")), QByteArray("last"));
    QCOMPARE(copy.OthersFault(), QString());
}

// ---- destinations that do not take it

void tst_CopyFaults::FullDestination()
{
    const CVolume volume(QStringLiteral("Full"), QStringLiteral("/dev/disk8s2"), 1);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CFaultyCopy copy;
    copy.m_strDest = volume.Path("Tarnwick");
    copy.m_nodes.Add(copy.m_tree.Write("src/empty"));
    copy.Run();
    // The big file takes all the room there is; the small one after it finds none,
    // and an empty one needs none.
    const qint64 nRoom = QFileInfo(copy.Copy()).size();
    QVERIFY(nRoom > MIB / 2 && nRoom < MIB);
    const QString strReason = QStringLiteral("its target cannot be written: No space left on device");
    const QStringList listExpected{
        Problem(copy.Source(), strReason + QStringLiteral(" (%1 of 3145728 bytes copied)").arg(nRoom)),
        Problem(copy.Source("after"), strReason + " (0 of 5 bytes copied)"),
    };
    QCOMPARE(ProblemLines(), listExpected);
    QCOMPARE(Content(copy.Copy("before")), QByteArray("before"));
    QVERIFY(QFileInfo::exists(copy.Copy("empty")));
    QCOMPARE(copy.m_finished.count(), 1);
    QVERIFY(LogLines().last().startsWith("Copy completed: files 2, bytes " + QString::number(nRoom + 6)));
}

void tst_CopyFaults::FileSizeLimit()
{
    // Stands in for the 4 GiB of FAT, which gives the same error.
    rlimit stOld;
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &stOld), 0);
    const rlimit stLimit = {MIB + 1000, stOld.rlim_max};
    CFaultyCopy copy;
    const auto pfnOld = signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &stLimit), 0);
    copy.Run();
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &stOld), 0);
    signal(SIGXFSZ, pfnOld);
    QCOMPARE(ProblemLines(),
             QStringList{
                 Problem(copy.Source(),
                         "its target cannot be written: File too large (1049576 of 3145728 bytes copied)")});
    QCOMPARE(QFileInfo(copy.Copy()).size(), qint64(MIB + 1000));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::ReadOnlyDestination()
{
    CVolume volume(QStringLiteral("ReadOnly"), QStringLiteral("/dev/disk8s3"), 1);
    if (!volume.IsValid() || !volume.MakeReadOnly()) {
        QSKIP("cannot mount here");
    }
    CTempTree tree;
    tree.Write("top/sub/a", "123");
    tree.Write("top/b", "4567");
    CNodeTree nodes;
    CDirNode* pTop = nodes.AddListed(tree.Path("top"));
    pTop->m_chkState = Qt::PartiallyChecked;
    nodes.Add(tree.Write("top/unticked"), Qt::Unchecked, pTop);
    nodes.Add(tree.Write("c", "89"));
    CCopyFileThread worker;
    QSignalSpy finished(&worker, &CCopyFileThread::SignalCopyFinish);
    worker.SetCopyParam(9, nodes.Root(), volume.Path("Tarnwick"), COPY_STATUS_RUN);
    worker.run();
    const QString strReason = QStringLiteral("its target folder cannot be created: Read-only file system");
    const QStringList listExpected{
        Problem(tree.Path("top"), strReason + " (0 of unknown bytes copied)"),
        Problem(tree.Path("top/sub"), strReason + " (0 of unknown bytes copied)"),
        Problem(tree.Path("top/sub/a"), strReason + " (0 of 3 bytes copied)"),
        Problem(tree.Path("top/b"), strReason + " (0 of 4 bytes copied)"),
        Problem(tree.Path("c"), strReason + " (0 of 2 bytes copied)"),
    };
    QCOMPARE(ProblemLines(), listExpected);
    QCOMPARE(finished.count(), 1);
}

void tst_CopyFaults::FileInTheWayOfAFolder()
{
    CTempTree tree;
    tree.Write("src/sub/a", "123");
    tree.Write("src/zero", "0");
    CNodeTree nodes;
    nodes.AddListed(tree.Path("src"));
    tree.Write("dst" + tree.Path("src/sub"), "in the way");
    CCopyFileThread worker;
    worker.SetCopyParam(4, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    const QString strReason = QStringLiteral("its target folder cannot be created: File exists");
    const QStringList listExpected{
        Problem(tree.Path("src/sub"), strReason + " (0 of unknown bytes copied)"),
        Problem(tree.Path("src/sub/a"), strReason + " (0 of 3 bytes copied)"),
    };
    QCOMPARE(ProblemLines(), listExpected);
    QCOMPARE(Content(tree.Path("dst") + tree.Path("src/zero")), QByteArray("0"));
    QCOMPARE(Content(tree.Path("dst") + tree.Path("src/sub")), QByteArray("in the way"));
}

void tst_CopyFaults::TargetIsALinkToNowhere()
{
    CFaultyCopy copy;
    copy.m_tree.Link("dst" + copy.Source(), QStringLiteral("/nowhere/at/all"));
    copy.Run();
    QCOMPARE(
        ProblemLines(),
        QStringList{Problem(copy.Source(),
                            "its target cannot be created: No such file or directory, \"" + copy.m_strDest
                                + '/' + copy.Source() + "\" (0 of 3145728 bytes copied)")});
    QCOMPARE(copy.OthersFault(), QString());
}

// ---- destinations that go away

void tst_CopyFaults::VanishedDestination_data()
{
    QTest::addColumn<bool>("folderStays");
    QTest::newRow("mount point stays as an empty folder") << true;
    QTest::newRow("mount point is removed") << false;
}

void tst_CopyFaults::VanishedDestination()
{
    QFETCH(bool, folderStays);
    CVolume volume(QStringLiteral("Stick"), QStringLiteral("/dev/disk8s4"), 8);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CFaultyCopy copy;
    CDirNode* pFolder = copy.m_nodes.Add(copy.m_tree.MkDir("folder"));
    copy.m_nodes.Add(copy.m_tree.Write("folder/in", "1"), Qt::Checked, pFolder);
    copy.m_strDest = volume.Path("Tarnwick");
    copy.AfterChunk(1, [&] { volume.Pull(!folderStays); });
    copy.Run();
    const QString strReason = QStringLiteral("destination gone");
    const QStringList listExpected{
        // One more chunk has gone to the disk that is no longer reached.
        Problem(copy.Source(), strReason + " (2097152 of 3145728 bytes copied)"),
        Problem(copy.Source("after"), strReason + " (0 of 5 bytes copied)"),
        Problem(copy.m_tree.Path("folder"), strReason + " (0 of unknown bytes copied)"),
        Problem(copy.m_tree.Path("folder/in"), strReason + " (0 of 1 bytes copied)"),
    };
    QCOMPARE(ProblemLines().mid(0, 4), listExpected);
    QCOMPARE(ProblemLines().count(), 5);
    QVERIFY(ProblemLines().at(4).contains(QLatin1String("the data may not be on the disk")));
    QCOMPARE(QFileInfo::exists(volume.Path()), folderStays);
    QVERIFY2(!QFileInfo::exists(volume.Path("Tarnwick")), "the machine's own disk was written to");
    QCOMPARE(copy.m_finished.count(), 1);
}

void tst_CopyFaults::OtherDiskInThePlaceOfTheDestination()
{
    CVolume volume(QStringLiteral("Stick"), QStringLiteral("/dev/disk8s4"), 8);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CFaultyCopy copy;
    copy.m_strDest = volume.Path("Tarnwick");
    std::unique_ptr<CVolume> pOther;
    // What is open keeps the pulled disk alive, so the other one has another identity.
    copy.AfterChunk(1, [&] {
        volume.Pull();
        pOther = std::make_unique<CVolume>(QStringLiteral("Stick"), QStringLiteral("/dev/disk9s9"), 8);
    });
    copy.Run();
    QVERIFY(pOther->IsValid());
    QVERIFY(QDir(pOther->Path()).isEmpty());
    QCOMPARE(ProblemLines().count(), 3);
    QVERIFY(ProblemLines().at(1).startsWith(Problem(copy.Source("after"), "destination gone (0 of 5")));
}

void tst_CopyFaults::VanishedBetweenFolderAndFile()
{
    CVolume volume(QStringLiteral("Stick"), QStringLiteral("/dev/disk8s4"), 8);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CFaultyCopy copy;
    copy.m_strDest = volume.Path("Tarnwick");
    // The look whether the name is free comes between the folder and the file.
    CFailingCalls::Watch(ENCall::OPEN, copy.m_strDest + '/' + copy.Source(), [&] { volume.Pull(); });
    copy.Run();
    QVERIFY(!ProblemLines().isEmpty());
    QCOMPARE(ProblemLines().at(0), Problem(copy.Source(), "destination gone (0 of 3145728 bytes copied)"));
    QVERIFY(!QFileInfo::exists(volume.Path("Tarnwick")));
}

void tst_CopyFaults::DestinationFolderDeletedIsMadeAgain()
{
    // A plain folder on the same disk may be made again: the walk goes on.
    CFaultyCopy copy;
    copy.AfterChunk(1, [&] { QVERIFY(QDir(copy.m_strDest).removeRecursively()); });
    copy.Run();
    QCOMPARE(ProblemLines(),
             QStringList{Problem(copy.Source(), "destination gone (2097152 of 3145728 bytes copied)")});
    QCOMPARE(Content(copy.Copy("after")), QByteArray("after"));
    QVERIFY(!QFileInfo::exists(copy.Copy()));
    QCOMPARE(copy.m_finished.count(), 1);
}

// ---- the worker as a thread of the program

void tst_CopyFaults::StopWhileAFolderIsMade_data()
{
    QTest::addColumn<QString>("ticked");
    QTest::addColumn<bool>("made");
    QTest::newRow("folder") << "src/sub" << true;
    QTest::newRow("folder that cannot be made") << "src/sub" << false;
    QTest::newRow("file") << "src/sub/f" << true;
}

void tst_CopyFaults::StopWhileAFolderIsMade()
{
    // A slow disk may take long for it, and the nodes are the window's again afterwards.
    QFETCH(QString, ticked);
    QFETCH(bool, made);
    CTempTree tree;
    tree.Write("src/sub/f", "1");
    CNodeTree nodes;
    nodes.Add(tree.Path(ticked));
    if (!made) {
        tree.Write("dst" + tree.Path("src/sub"), "in the way");
    }
    CCopyFileThread worker;
    QSignalSpy finished(&worker, &CCopyFileThread::SignalCopyFinish);
    CFailingCalls::Watch(ENCall::MAKE_FOLDER, QStringLiteral("/src/sub"), [&] {
        worker.SetCopyStatus(COPY_STATUS_STOP);
        nodes.Clear();
    });
    worker.SetCopyParam(1, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QVERIFY(CFailingCalls::Calls() > 0);
    QCOMPARE(ProblemLines(), QStringList{});
    QVERIFY(!QFileInfo::exists(tree.Path("dst") + tree.Path("src/sub/f")));
    QCOMPARE(finished.count(), 1);
}

void tst_CopyFaults::WorkersSleepsAreExact()
{
    CFaultyCopy copy(100);
    int nSlack = 0;
    connect(
        &copy.m_worker, &CCopyFileThread::SignalCopyCopyInfo, &copy.m_worker,
        [&nSlack] { nSlack = prctl(PR_GET_TIMERSLACK, 0UL, 0UL, 0UL, 0UL); }, Qt::DirectConnection);
    copy.m_worker.SetCopyParam(111, copy.m_nodes.Root(), copy.m_strDest, COPY_STATUS_RUN);
    CGate ended;
    connect(
        &copy.m_worker, &CCopyFileThread::SignalCopyFinish, &copy.m_worker, [&ended] { ended.Open(); },
        Qt::DirectConnection);
    copy.m_worker.start();
    QVERIFY(ended.Pass(10000));
    QVERIFY(copy.m_worker.wait(10000));
    QCOMPARE(nSlack, 1);
}

void tst_CopyFaults::ChildrenOfTheProgramInheritNoFile()
{
    // A command that runs on would keep the stick busy with a file that it never asked for.
    CFaultyCopy copy;
    int nOpen = 0;
    int nInherited = 0;
    copy.AfterChunk(1, [&] {
        const QStringList listName
            = QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::AllEntries | QDir::System);
        for (const QString& strName : listName) {
            if (QFile::symLinkTarget(QStringLiteral("/proc/self/fd/") + strName)
                    .startsWith(copy.m_tree.Path())) {
                ++nOpen;
                nInherited += (fcntl(strName.toInt(), F_GETFD) & FD_CLOEXEC) == 0 ? 1 : 0;
            }
        }
    });
    copy.Run();
    QCOMPARE(nOpen, 2);
    QCOMPARE(nInherited, 0);
}

// ---- the end of a copy

void tst_CopyFaults::FlushComesBeforeTheFinish()
{
    CFaultyCopy copy(100);
    int nFinishedAtFlush = -1;
    QByteArray baAtFlush;
    CFailingCalls::Watch(ENCall::FLUSH, copy.m_strDest, [&] {
        nFinishedAtFlush = copy.m_finished.count();
        baAtFlush = Content(copy.Copy("after"));
    });
    copy.Run();
    QCOMPARE(CFailingCalls::Calls(), 1);
    QCOMPARE(nFinishedAtFlush, 0);
    QCOMPARE(baAtFlush, QByteArray("after"));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::NoFlushAfterAStop()
{
    CFaultyCopy copy;
    CFailingCalls::Watch(ENCall::FLUSH, QString(), [] {});
    copy.AfterChunk(1, [&] { copy.m_worker.SetCopyStatus(COPY_STATUS_STOP); });
    copy.Run();
    QCOMPARE(CFailingCalls::Calls(), 0);
    QCOMPARE(copy.m_finished.count(), 1);
}

void tst_CopyFaults::FailedFlushIsLogged()
{
    CFaultyCopy copy(100);
    CFailingCalls::Fail(ENCall::FLUSH, copy.m_strDest, EIO);
    copy.Run();
    QCOMPARE(ProblemLines(),
             QStringList{
                 Problem(copy.m_strDest,
                         "the data may not be on the disk: Input/output error (111 of 111 bytes copied)")});
    QVERIFY(LogLines().last().endsWith(QLatin1String("problems 1")));
    QCOMPARE(copy.OthersFault(), QString());
}

void tst_CopyFaults::NothingCopiedNothingFlushed()
{
    CTempTree tree;
    CNodeTree nodes;
    CCopyFileThread worker;
    CFailingCalls::Watch(ENCall::FLUSH, QString(), [] {});
    worker.SetCopyParam(0, nodes.Root(), tree.Path("dst"), COPY_STATUS_RUN);
    worker.run();
    QCOMPARE(CFailingCalls::Calls(), 0);
    QCOMPARE(ProblemLines(), QStringList{});
}

void tst_CopyFaults::LostDestinationIsNotFlushed()
{
    CVolume volume(QStringLiteral("Stick"), QStringLiteral("/dev/disk8s4"), 8);
    if (!volume.IsValid()) {
        QSKIP("cannot mount here");
    }
    CFaultyCopy copy;
    copy.m_strDest = volume.Path("Tarnwick");
    CFailingCalls::Watch(ENCall::FLUSH, QString(), [] {});
    copy.AfterChunk(3, [&] { volume.Pull(); });
    copy.Run();
    QCOMPARE(CFailingCalls::Calls(), 0);
    QVERIFY(ProblemLines().last().startsWith(
        Problem(copy.m_strDest, "the data may not be on the disk: No such file or directory (")));
}

QTEST_GUILESS_MAIN(tst_CopyFaults)
#include "tst_CopyFaults.moc"
