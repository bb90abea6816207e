#include "copy/CSpotSearch.h"
#include "copy/CSpotSource.h"
#include "log/CClock.h"
#include "support/CCopyBed.h"
#include "support/CFaultyDisk.h"
#include "support/CVolume.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdlib>
#include <memory>

static const qint64 SECTOR = 4096;
static const qint64 MIB = 1024 * 1024;
static const qint64 FILM_BYTES = 9 * MIB + 1234;

/**
 * Complete copies from a disk with bad sectors: a film has some, and the photos
 * before and behind it have none.
 */
class tst_DamagedDisk : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everythingElseArrives_data();
    void everythingElseArrives();
    void nothingIsReadAhead();
    void whatReadsWellComesFirst();
    void slowSectorsUseUpTheTime();
    void stopInTheSecondPass();
    void pauseInTheSecondPass();
    void pulledInTheSecondPass();

private:
    struct STBad
    {
        qint64 nFirst; ///< sector
        qint64 nSectors;
    };

    void Break(const QVector<STBad>& listBad, const QString& strName = "film.mov");
    QString Arrived(const QString& strName) const { return m_strDest + "/Macintosh HD/Anna/" + strName; }
    void AddOther();
    QString Other() const { return m_strSecond == "film.mov" ? "other.mov" : "film.mov"; }
    void AfterSecondPassChunk(int nChunk, const std::function<void()>& fnAction);
    STCopyItem ItemOf(const QString& strName) const;

    std::unique_ptr<CFaultyDisk> m_pSource;
    QByteArray m_baExpected; // of the film's copy
    int m_nFilms = 1; // with bad places
    QString m_strSecond; // the film that is finished first
};

void tst_DamagedDisk::init()
{
    NEEDS_VOLUMES();
    NEEDS_FAULTY_DISKS();
    Make();
    m_pSource = std::make_unique<CFaultyDisk>("Macintosh HD", "/dev/nvme0n1p1", 64);
    QVERIFY(m_pSource->IsValid());
    for (const QString strName : {"a.jpg", "m.jpg", "z.jpg"}) {
        WriteFile(m_pSource->Behind("Anna/" + strName), strName.toUtf8() + Pattern(300000));
    }
    m_nFilms = 1;
    m_strSecond.clear();
    m_baExpected = Pattern(FILM_BYTES);
    WriteFile(m_pSource->Behind("Anna/film.mov"), m_baExpected);
    m_pNodes->Root()->m_bComplete = true;
    m_pNodes->Add(m_pSource->Path("Anna"));
}

void tst_DamagedDisk::cleanup()
{
    CClock::SetSource(std::function<qint64()>());
    if (m_pSource) {
        m_pSource->Heal();
    }
    Clear();
    m_pSource.reset();
}

void tst_DamagedDisk::Break(const QVector<STBad>& listBad, const QString& strName)
{
    for (const STBad& stBad : listBad) {
        m_pSource->BadSectors(stBad.nFirst * SECTOR, stBad.nSectors * SECTOR, strName);
        const qint64 nFrom = stBad.nFirst * SECTOR;
        const qint64 nBytes = qMin(stBad.nSectors * SECTOR, FILM_BYTES - nFrom);
        m_baExpected.replace(int(nFrom), int(nBytes), QByteArray(int(nBytes), '\0'));
    }
}

/** One more film like the first. */
void tst_DamagedDisk::AddOther()
{
    WriteFile(m_pSource->Behind("Anna/other.mov"), Pattern(FILM_BYTES));
    m_nFilms = 2;
}

/**
 * Runs fnAction on the worker after that chunk, from 1, of the second pass. Before it comes
 * one chunk of each photo and, up to its bad place, one of each film.
 */
void tst_DamagedDisk::AfterSecondPassChunk(int nChunk, const std::function<void()>& fnAction)
{
    AfterEachChunk([this, nLeft = nChunk + 3 + m_nFilms, fnAction]() mutable {
        if (--nLeft == 0) {
            m_strSecond = m_pProgress->last().at(0).toString();
            fnAction();
        }
    });
}

STCopyItem tst_DamagedDisk::ItemOf(const QString& strName) const
{
    for (const STCopyItem& stItem : Account().listItem) {
        if (stItem.strPath == m_pSource->Path("Anna/" + strName)) {
            return stItem;
        }
    }
    return STCopyItem();
}

void tst_DamagedDisk::everythingElseArrives_data()
{
    QTest::addColumn<bool>("bCache");
    QTest::addColumn<int>("nMostFailures"); // of 207 bad sectors
    // Each once by itself, and a few where a large step happens to begin.
    QTest::newRow("disk that says where a read breaks off") << false << 207 + 10;
    // The cache asks for what a large step spans, and then for each page of it.
    QTest::newRow("disk behind the system's cache") << true << 207 + 40;
}

void tst_DamagedDisk::everythingElseArrives()
{
    QFETCH(bool, bCache);
    QFETCH(int, nMostFailures);
    if (!bCache) {
        m_pSource->Rule("open", "direct");
    }
    Break({{1, 1}, {300, 1}, {302, 3}, {1000, 200}, {2000, 1}, {2304, 1}});
    Run(FILM_BYTES + 3 * 300005);
    QVERIFY(Content(Arrived("film.mov")) == m_baExpected);
    for (const QString strName : {"a.jpg", "m.jpg", "z.jpg"}) {
        QVERIFY(Content(Arrived(strName)) == strName.toUtf8() + Pattern(300000));
    }
    const QString strRanges
        = "4096-8191, 1228800-1232895, 1236992-1249279, 4096000-4915199, 8192000-8196095, "
          "9437184-9438417";
    const STCopyItem stItem = ItemOf("film.mov");
    QCOMPARE(stItem.enProblem, ENCopyProblem::DAMAGED);
    QCOMPARE(stItem.strDetail, strRanges);
    QCOMPARE(stItem.nError, EIO);
    QCOMPARE(stItem.nCopied, FILM_BYTES - 206 * SECTOR - 1234);
    QCOMPARE(stItem.nExpected, FILM_BYTES);
    QCOMPARE(Account().nProblems, 1);
    QCOMPARE(Account().nFiles, 3);
    QVERIFY(ProblemLines().value(0).contains("parts of it cannot be read, zeros stand for the bytes "
                                             + strRanges + ": Input/output error ("));
    QVERIFY(ReportLines()
                .filter("film.mov")
                .value(0)
                .contains("Parts of it cannot be read; zeros stand for the bytes " + strRanges
                          + ". The disk reports an error."));
    QCOMPARE(m_pProgress->last().at(1).toInt(), 100);
    const QMap<qint64, int> mapFailed = m_pSource->FailedReads("film.mov");
    QCOMPARE(mapFailed.count(), 207); // each of them, and none else
    int nFailed = 0;
    for (const int nTimes : mapFailed) {
        nFailed += nTimes;
    }
    QVERIFY2(nFailed <= nMostFailures, QByteArray::number(nFailed).constData());
    // The one that ended the first pass has not been tried by itself there.
    QVERIFY(bCache || mapFailed.value(SECTOR) == 1);
}

void tst_DamagedDisk::nothingIsReadAhead()
{
    // Behind the system's cache, which would ask for what comes behind the second piece.
    static const qint64 PIECE = CSpotSearch::LARGE_STEP;
    Break({{2 * PIECE / SECTOR, 1}});
    const QString strFilm = m_pSource->Path("Anna/film.mov");
    CSpotSource source;
    QVERIFY(!source.Open(strFilm, CCopyPlatform::GetEntryState(strFilm).value_or(STFileState())));
    void* pBuf = nullptr;
    QCOMPARE(posix_memalign(&pBuf, size_t(SECTOR), size_t(PIECE)), 0);
    const std::unique_ptr<void, void (*)(void*)> buffer(pBuf, std::free);
    QCOMPARE(source.Read({0, PIECE}, static_cast<char*>(pBuf)), PIECE);
    QCOMPARE(source.Read({PIECE, 2 * PIECE}, static_cast<char*>(pBuf)), PIECE);
    QVERIFY(QByteArray(static_cast<char*>(pBuf), int(PIECE)) == m_baExpected.mid(int(PIECE), int(PIECE)));
    QCOMPARE(m_pSource->FailedReads("film.mov").count(), 0);
}

void tst_DamagedDisk::whatReadsWellComesFirst()
{
    Break({{10, 1}});
    QStringList listWhole;
    AfterSecondPassChunk(1, [&] {
        for (const QString strName : {"a.jpg", "m.jpg", "z.jpg", "film.mov"}) {
            listWhole.append(QString("%1 %2").arg(strName).arg(QFileInfo(Arrived(strName)).size()));
        }
    });
    Run();
    QCOMPARE(listWhole, (QStringList{"a.jpg 300005", "m.jpg 300005", "z.jpg 300005", "film.mov 40960"}));
    QCOMPARE(m_pProgress->last().at(0).toString(), QString("film.mov"));
    QVERIFY(Content(Arrived("film.mov")) == m_baExpected);
}

void tst_DamagedDisk::slowSectorsUseUpTheTime()
{
    // Each minute that a file has for its bad places passes in 60 ms, and each of these sectors takes 100.
    CClock::SetSources(std::function<qint64()>(), [] {
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        return qint64(std::chrono::duration_cast<std::chrono::microseconds>(time).count());
    });
    m_pSource->Rule("open", "direct");
    Break({{512, 100}});
    m_pSource->SlowSectors(512 * SECTOR, 100 * SECTOR, "film.mov");
    Run();
    const STCopyItem stItem = ItemOf("film.mov");
    QCOMPARE(stItem.enProblem, ENCopyProblem::DAMAGED);
    // From its end it is read until a step takes too long, which by this clock half a millisecond is.
    const qint64 nLost = FILM_BYTES - stItem.nCopied;
    const qint64 nSlow = 100 * SECTOR;
    QVERIFY2(nLost >= nSlow && nLost < FILM_BYTES - 2 * MIB, qPrintable(stItem.strDetail));
    QCOMPARE(stItem.strDetail, QString("2097152-%1").arg(2 * MIB + nLost - 1));
    QVERIFY(ProblemLines().value(0).contains(
        QString("; not tried any more: 2101248-%1").arg(2 * MIB + nLost - 1)));
    QVERIFY(Content(Arrived("film.mov"))
            == QByteArray(m_baExpected).replace(int(2 * MIB), int(nLost), QByteArray(int(nLost), '\0')));
}

void tst_DamagedDisk::stopInTheSecondPass()
{
    AddOther();
    Break({{256, 1}}, ".mov");
    AfterSecondPassChunk(3, [&] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run();
    QVERIFY(Account().bStopped);
    const STCopyItem stFilm = ItemOf(m_strSecond);
    QCOMPARE(stFilm.enProblem, ENCopyProblem::STOPPED);
    QCOMPARE(stFilm.nCopied, MIB + 2 * SECTOR);
    const STCopyItem stOther = ItemOf(Other());
    QCOMPARE(stOther.enProblem, ENCopyProblem::SOURCE_READ);
    QCOMPARE(stOther.nCopied, MIB);
    QCOMPARE(Account().nFiles, 3);
    QVERIFY(Summary().contains("half-copied"));
    QVERIFY(Content(Arrived(m_strSecond)) == m_baExpected.left(int(MIB + 3 * SECTOR)));
}

void tst_DamagedDisk::pauseInTheSecondPass()
{
    Break({{256, 1}});
    AfterSecondPassChunk(3, [&] { m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE); });
    Start(1);
    QTRY_COMPARE_WITH_TIMEOUT(m_pWorker->CurrentStep(), ENCopyStep::PAUSED, PATIENCE_MS);
    QCOMPARE(QFileInfo(Arrived("film.mov")).size(), MIB + 3 * SECTOR);
    QVERIFY(m_pWorker->CurrentPath().endsWith("/film.mov"));
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(WaitForEnd());
    QVERIFY(Content(Arrived("film.mov")) == m_baExpected);
    QCOMPARE(ItemOf("film.mov").enProblem, ENCopyProblem::DAMAGED);
}

void tst_DamagedDisk::pulledInTheSecondPass()
{
    AddOther();
    m_pSource->Rule("open", "direct");
    Break({{256, 1}}, ".mov");
    AfterSecondPassChunk(3, [&] { m_pSource->Pull(); });
    Run();
    // What came before is told with the ranges; of the other nothing came after the bad place.
    const STCopyItem stFilm = ItemOf(m_strSecond);
    QCOMPARE(stFilm.enProblem, ENCopyProblem::DAMAGED);
    QCOMPARE(stFilm.nError, ENOTCONN);
    QCOMPARE(stFilm.strDetail, QString("1048576-1052671, 1060864-%1").arg(FILM_BYTES - 1));
    const STCopyItem stOther = ItemOf(Other());
    QCOMPARE(stOther.enProblem, ENCopyProblem::SOURCE_OPEN);
    QCOMPARE(stOther.nCopied, MIB);
    QCOMPARE(Account().nFiles, 3);
}

QTEST_GUILESS_MAIN(tst_DamagedDisk)
#include "tst_DamagedDisk.moc"
