#include "copy/CCopyControl.h"
#include "copy/CFileCopy.h"
#include "files/CFileNameCodec.h"
#include "support/CAnotherUser.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <fcntl.h>
#include <functional>
#include <numeric>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

static const qint64 MIB = 1024 * 1024;
static const qint64 PIECE = 256 * 1024;

/** Seconds and nanoseconds since the epoch. */
using STTime = std::pair<qint64, qint64>;
static const STTime OLD{1100000000, 123456789};

static void SetModified(const QString& strPath, const STTime& time)
{
    const timespec listTime[2] = {{time_t(time.first), 0}, {time_t(time.first), long(time.second)}};
    if (utimensat(AT_FDCWD, QFile::encodeName(strPath).constData(), listTime, 0) != 0) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
}

static STTime Modified(const QString& strPath)
{
    struct stat stRaw = {};
    stat(QFile::encodeName(strPath).constData(), &stRaw);
    return {stRaw.st_mtim.tv_sec, stRaw.st_mtim.tv_nsec};
}

/** An outcome in one line. */
static QString Text(const STCopyOutcome& stOutcome)
{
    const QStringList listEnd{"whole", "stopped: ", "not whole: "};
    QString strText = listEnd.at(int(stOutcome.enEnd)) + stOutcome.stReason.strText;
    if (stOutcome.stReason.nError != 0) {
        strText += ": " + qt_error_string(stOutcome.stReason.nError);
    }
    return strText + QString(", %1 of %2").arg(stOutcome.nCopied).arg(stOutcome.nExpected);
}

namespace {

/** One file and its copy, and what the control is asked and told meanwhile. */
class CFileBed : private CCopyControl
{
public:
    explicit CFileBed(const QByteArray& baContent)
        : m_baContent(baContent)
        , m_strSource(m_tree.Write("src/file", baContent))
        , m_strTarget(m_tree.MkDir("dst") + "/target")
    {
        SetModified(m_strSource, OLD);
        m_source.setFile(m_strSource);
        m_source.size(); // known from the count, as it is in the program
    }

    STCopyOutcome Copy(qint64 nChunk = MIB)
    {
        return CFileCopy(m_source, m_tree.Path("dst"), nChunk, *this).Copy(m_strTarget);
    }

    /** Bytes that were told of, all chunks together. */
    qint64 Told() const { return std::accumulate(m_listTold.cbegin(), m_listTold.cend(), qint64(0)); }

    CTempTree m_tree;
    const QByteArray m_baContent;
    const QString m_strSource;
    const QString m_strTarget;
    QFileInfo m_source;
    int m_nAllowed = 1000; // chunks until it is to stop
    int m_nAsked = 0;
    qint64 m_nWritten = 0;
    QVector<qint64> m_listTold; // bytes of each chunk
    std::function<void()> m_fnAfterFirst; // after the first chunk

private:
    bool WaitWhilePaused() override { return ++m_nAsked <= m_nAllowed; }

    void ChunkDone(const QString& strName, qint64 nBytes) override
    {
        QCOMPARE(strName, m_source.fileName());
        m_listTold.append(nBytes);
        if (m_listTold.count() == 1 && m_fnAfterFirst) {
            m_fnAfterFirst();
        }
    }

    void StepBegins(ENCopyStep /*enStep*/) override { }

    void BytesWritten(qint64 nBytes) override { m_nWritten += nBytes; }

    bool MakeRoom(qint64 /*nBytes*/) override { return false; }
};

} // namespace

class tst_CFileCopy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void sizes_data();
    void sizes();
    void stopLeavesTheFileWhereItStands_data();
    void stopLeavesTheFileWhereItStands();

    void sourceThatChangesMeanwhile_data();
    void sourceThatChangesMeanwhile();
    void sourceThatGrewSinceTheCountIsCopiedWhole();
    void sourceThatIsNoFileAnyMore_data();
    void sourceThatIsNoFileAnyMore();
    void sourceOfAnotherUser();
    void specialFileIsSkipped_data();
    void specialFileIsSkipped();

    void targetIsALinkToNowhere();
};

void tst_CFileCopy::sizes_data()
{
    QTest::addColumn<qint64>("nSize");
    QTest::addColumn<qint64>("nChunk");
    QTest::addColumn<int>("nChunks");
    QTest::newRow("empty") << qint64(0) << MIB << 0;
    QTest::newRow("1") << qint64(1) << MIB << 1;
    QTest::newRow("one below a piece") << PIECE - 1 << MIB << 1;
    QTest::newRow("a piece") << PIECE << MIB << 1;
    QTest::newRow("one above a piece") << PIECE + 1 << MIB << 1;
    QTest::newRow("one below a chunk") << MIB - 1 << MIB << 1;
    QTest::newRow("a chunk") << MIB << MIB << 1;
    QTest::newRow("one above a chunk") << MIB + 1 << MIB << 2;
    QTest::newRow("chunks, pieces and a rest") << 3 * MIB + PIECE + 17 << MIB << 4;
    QTest::newRow("chunk of no bytes still ends") << qint64(3) << qint64(0) << 3;
}

void tst_CFileCopy::sizes()
{
    QFETCH(qint64, nSize);
    QFETCH(qint64, nChunk);
    CFileBed bed(Pattern(nSize));
    bed.m_tree.Write("dst/target", QByteArray(int(nSize) + 10, 'o')); // what was there goes
    const STCopyOutcome stOutcome = bed.Copy(nChunk);
    QCOMPARE(Text(stOutcome), QString("whole, %1 of %1").arg(nSize));
    QCOMPARE(stOutcome.strPath, bed.m_strSource);
    QVERIFY(Content(bed.m_strTarget) == bed.m_baContent);
    QCOMPARE(Modified(bed.m_strTarget), OLD);
    QTEST(bed.m_nAsked, "nChunks");
    QTEST(bed.m_listTold.count(), "nChunks");
    QCOMPARE(bed.Told(), nSize);
}

void tst_CFileCopy::stopLeavesTheFileWhereItStands_data()
{
    QTest::addColumn<int>("nAllowed");
    QTest::newRow("before the first chunk") << 0;
    QTest::newRow("after the first chunk") << 1;
    QTest::newRow("before the last chunk") << 2;
}

void tst_CFileCopy::stopLeavesTheFileWhereItStands()
{
    QFETCH(int, nAllowed);
    CFileBed bed(Pattern(3 * MIB));
    bed.m_nAllowed = nAllowed;
    const QString strText = "stopped: the copy was stopped, %1 of 3145728";
    QCOMPARE(Text(bed.Copy()), strText.arg(nAllowed * MIB));
    QVERIFY(Content(bed.m_strTarget) == bed.m_baContent.left(int(nAllowed * MIB)));
    // A half-copied file must not look like its source.
    QVERIFY(Modified(bed.m_strTarget) != OLD);
}

void tst_CFileCopy::sourceThatChangesMeanwhile_data()
{
    QTest::addColumn<qint64>("nSize"); // after the first of three chunks
    QTest::addColumn<STTime>("time");
    QTest::addColumn<qint64>("nCopied");
    QTest::addColumn<QString>("strReason");
    const auto fnShrinks = [](const char* pszRow, qint64 nSize, qint64 nCopied) {
        QTest::newRow(pszRow) << nSize << OLD << nCopied << "became shorter while it was copied";
    };
    fnShrinks("shrinks to nothing", 0, MIB);
    fnShrinks("shrinks to what is copied already", MIB, MIB);
    fnShrinks("shrinks to the middle of a piece", MIB + PIECE + 10, MIB + PIECE + 10);
    fnShrinks("shrinks to the border of a piece", MIB + 2 * PIECE, MIB + 2 * PIECE);
    fnShrinks("shrinks by one byte", 3 * MIB - 1, 3 * MIB - 1);
    const auto fnChanges = [](const char* pszRow, qint64 nSize, const STTime& time) {
        QTest::newRow(pszRow) << nSize << time << 3 * MIB
                              << QString("changed while it was copied, it has %1 bytes now").arg(nSize);
    };
    fnChanges("grows", 3 * MIB + 7, OLD);
    fnChanges("another second", 3 * MIB, {OLD.first + 1, OLD.second});
    fnChanges("another nanosecond", 3 * MIB, {OLD.first, OLD.second + 1});
    QTest::newRow("is removed") << qint64(-1) << OLD << 3 * MIB << "was removed while it was copied";
}

void tst_CFileCopy::sourceThatChangesMeanwhile()
{
    QFETCH(qint64, nSize);
    QFETCH(STTime, time);
    QFETCH(qint64, nCopied);
    QFETCH(QString, strReason);
    CFileBed bed(Pattern(3 * MIB));
    bed.m_fnAfterFirst = [&] {
        QVERIFY(nSize < 0 ? QFile::remove(bed.m_strSource) : QFile::resize(bed.m_strSource, nSize));
        if (nSize >= 0) {
            SetModified(bed.m_strSource, time);
        }
    };
    QCOMPARE(Text(bed.Copy()), QString("not whole: %1, %2 of 3145728").arg(strReason).arg(nCopied));
    QVERIFY(Content(bed.m_strTarget) == bed.m_baContent.left(int(nCopied)));
    // The copy is as old as what it holds, but when it is cut short.
    QCOMPARE(Modified(bed.m_strTarget) == OLD, nCopied == 3 * MIB);
    // The rest counts as done, so that the last file still ends at 100 percent.
    QCOMPARE(bed.Told(), 3 * MIB);
}

void tst_CFileCopy::sourceThatGrewSinceTheCountIsCopiedWhole()
{
    CFileBed bed(Pattern(1000));
    QCOMPARE(bed.m_source.size(), 1000);
    QVERIFY(QFile::resize(bed.m_strSource, 6000));
    QCOMPARE(Text(bed.Copy()), QString("whole, 6000 of 6000"));
    QCOMPARE(Content(bed.m_strTarget), bed.m_baContent + QByteArray(5000, '\0'));
}

void tst_CFileCopy::sourceThatIsNoFileAnyMore_data()
{
    QTest::addColumn<bool>("bFolder");
    QTest::addColumn<QString>("strReason");
    QTest::newRow("gone") << false << "open file failed: No such file or directory";
    QTest::newRow("a folder") << true << "no longer a file";
}

void tst_CFileCopy::sourceThatIsNoFileAnyMore()
{
    QFETCH(bool, bFolder);
    QFETCH(QString, strReason);
    CFileBed bed("123");
    QVERIFY(QFile::remove(bed.m_strSource));
    QVERIFY(!bFolder || QDir().mkdir(bed.m_strSource));
    const CLogCapture capture;
    QCOMPARE(Text(bed.Copy()), "not whole: " + strReason + ", 0 of 3");
    QCOMPARE(capture.Has("open file failed"), !bFolder);
    QCOMPARE(Content(bed.m_strTarget), QByteArray()); // the empty target stays
}

void tst_CFileCopy::sourceOfAnotherUser()
{
    CFileBed bed("123");
    QCOMPARE(chmod(QFile::encodeName(bed.m_strSource).constData(), 0), 0);
    for (const QString strName : {"", "dst"}) {
        QCOMPARE(chmod(QFile::encodeName(bed.m_tree.Path(strName)).constData(), 0777), 0);
    }
    const CLogCapture capture;
    const CAnotherUser user;
    if (!user.IsValid()) {
        QSKIP("cannot look at files as another user here");
    }
    QCOMPARE(Text(bed.Copy()), QString("not whole: open file failed: Permission denied, 0 of 3"));
    QCOMPARE(capture.Lines(), QStringList{"open file failed"});
    QCOMPARE(QFileInfo(bed.m_strTarget).size(), 0);
}

void tst_CFileCopy::specialFileIsSkipped_data()
{
    QTest::addColumn<QString>("strName");
    for (const char* pszName : {"pipe", "socket", "device", "link to a pipe"}) {
        QTest::newRow(pszName) << pszName;
    }
}

void tst_CFileCopy::specialFileIsSkipped()
{
    QFETCH(QString, strName);
    CFileBed bed("");
    QCOMPARE(mkfifo(QFile::encodeName(bed.m_tree.Path("pipe")).constData(), 0600), 0);
    const int nSocket = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un stAddress = {};
    stAddress.sun_family = AF_UNIX;
    qstrncpy(stAddress.sun_path, QFile::encodeName(bed.m_tree.Path("socket")).constData(),
             sizeof(stAddress.sun_path));
    QCOMPARE(bind(nSocket, reinterpret_cast<sockaddr*>(&stAddress), sizeof(stAddress)), 0);
    close(nSocket);
    bed.m_tree.Link("device", "/dev/zero"); // a real device for everybody
    bed.m_tree.Link("link to a pipe", "pipe");
    bed.m_source.setFile(bed.m_tree.Path(strName));
    QCOMPARE(Text(bed.Copy()), QString("not whole: a pipe, socket or device, 0 of 0"));
    QVERIFY2(!QFileInfo::exists(bed.m_strTarget), "nothing may be created for it");
}

void tst_CFileCopy::targetIsALinkToNowhere()
{
    CFileBed bed("123");
    bed.m_tree.Link("dst/target", "/nowhere/at/all");
    const STCopyOutcome stOutcome = bed.Copy();
    QCOMPARE(Text(stOutcome),
             QString("not whole: its target cannot be created: No such file or directory, 0 of 3"));
    QCOMPARE(stOutcome.stReason.strTarget, bed.m_strTarget);
}

QTEST_GUILESS_MAIN(tst_CFileCopy)
#include "tst_CFileCopy.moc"
