#include "copy/CSpotSearch.h"

#include <QtTest>

#include <algorithm>
#include <random>
#include <set>

static const qint64 PAGE = CSpotSearch::SMALL_STEP;
static const qint64 MIB = 1024 * 1024;

namespace {

/** Pages, by number. */
using Pages = std::set<qint64>;

/** A file on a disk with bad pages, and what a search does with it. */
class CFakeFile
{
public:
    CFakeFile(qint64 nSize, Pages setBad, bool bCuts)
        : m_nSize(nSize)
        , m_setBad(std::move(setBad))
        , m_bCuts(bCuts)
    {
    }

    /** First byte that cannot be read in a range; its end when there is none. */
    qint64 FirstBad(const STByteRange& stRange) const
    {
        const auto itBad = m_setBad.lower_bound(stRange.nFrom / PAGE);
        return itBad == m_setBad.end() ? stRange.nEnd : qBound(stRange.nFrom, *itBad * PAGE, stRange.nEnd);
    }

    /** Reads the range as the search has it done; not every system gives what lies before the bad page. */
    qint64 Read(const STByteRange& stRange)
    {
        const qint64 nStop = FirstBad(stRange);
        const bool bAll = nStop == stRange.nEnd;
        m_listTried.append(stRange);
        const qint64 nRead = bAll || m_bCuts ? nStop - stRange.nFrom : 0;
        m_nRead += nRead;
        m_nFailed += bAll ? 0 : 1;
        m_nGivenTwice += m_read.Text(INT_MAX) == Joined({stRange.nFrom, stRange.nFrom + nRead}) ? 1 : 0;
        m_read.Add({stRange.nFrom, stRange.nFrom + nRead});
        if (nRead == 0 && stRange.Bytes() <= PAGE) {
            ++m_mapFailed[stRange.nFrom / PAGE];
        }
        return nRead;
    }

    /** Goes through a whole search that begins at the first bad page, nMost steps at most. */
    CSpotSearch Search(qint64 nMost = LLONG_MAX)
    {
        const qint64 nBad = FirstBad({0, m_nSize});
        CSpotSearch search(nBad, m_nSize);
        for (qint64 n = 0; n < nMost; ++n) {
            const auto stNext = search.Next();
            if (!stNext) {
                break;
            }
            if (stNext->Bytes() <= 0 || stNext->nFrom < nBad || stNext->nEnd > m_nSize) {
                m_listWrong.append(*stNext);
            }
            m_nDealt += search.Done(Read(*stNext));
        }
        return search;
    }

    /** Bytes of the bad pages. */
    QString BadText() const
    {
        CByteRanges bad;
        for (const qint64 nPage : m_setBad) {
            bad.Add({nPage * PAGE, qMin((nPage + 1) * PAGE, m_nSize)});
        }
        return bad.Text(INT_MAX);
    }

    qint64 BytesFromFirstBad() const { return m_nSize - FirstBad({0, m_nSize}); }

    qint64 BadBytes() const
    {
        qint64 nBytes = 0;
        for (const qint64 nPage : m_setBad) {
            nBytes += qMin((nPage + 1) * PAGE, m_nSize) - nPage * PAGE;
        }
        return nBytes;
    }

    int MostFailures() const
    {
        int nMost = 0;
        for (const auto& [nPage, nTimes] : m_mapFailed) {
            nMost = qMax(nMost, nTimes);
        }
        return nMost;
    }

    QVector<STByteRange> m_listTried;
    QVector<STByteRange> m_listWrong; // outside of what is to be read
    qint64 m_nRead = 0;
    qint64 m_nDealt = 0; // as the search told
    int m_nFailed = 0; // reads that did not give all
    int m_nGivenTwice = 0;

private:
    /** What is read already together with that. */
    QString Joined(const STByteRange& stRange) const
    {
        CByteRanges all = m_read;
        all.Add(stRange);
        return stRange.Bytes() == 0 ? QString("none") : all.Text(INT_MAX);
    }

    const qint64 m_nSize;
    const Pages m_setBad;
    const bool m_bCuts; // a read gives what lies before the bad page
    CByteRanges m_read;
    std::map<qint64, int> m_mapFailed; // how often the page alone has failed
};

} // namespace

/** Pages from nFrom to before nEnd. */
static Pages Row(qint64 nFrom, qint64 nEnd)
{
    Pages setPage;
    for (qint64 nPage = nFrom; nPage < nEnd; ++nPage) {
        setPage.insert(nPage);
    }
    return setPage;
}

class tst_CSpotSearch : public QObject
{
    Q_OBJECT

private slots:
    void everythingElseIsRead_data();
    void everythingElseIsRead();
    void anyFile_data();
    void anyFile();
    void whatCanBeReadIsReadInLargeSteps();
    void aBadAreaIsLeftSoon();
    void theWayToTheEndComesFirst();
    void whatWasSkippedIsReadBackwards();
    void halvesOfWhatIsLeft();
    void untriedIsWhatWasNotRead();
    void failedLargeReadTellsNoBadPage();
    void goodAfterAll();
};

void tst_CSpotSearch::everythingElseIsRead_data()
{
    QTest::addColumn<qint64>("nSize");
    QTest::addColumn<QVector<qint64>>("listBad");
    const auto fnRow = [](const char* pszRow, qint64 nSize, const Pages& setBad) {
        QVector<qint64> listBad;
        std::copy(setBad.begin(), setBad.end(), std::back_inserter(listBad));
        QTest::newRow(pszRow) << nSize << listBad;
    };
    fnRow("one byte", 1, {0});
    fnRow("one page", PAGE, {0});
    fnRow("first page", 10 * PAGE, {0});
    fnRow("last page", 10 * PAGE, {9});
    fnRow("last odd bytes", 10 * PAGE + 17, {10});
    fnRow("last but the odd bytes", 10 * PAGE + 17, {9});
    fnRow("all", 100 * PAGE, Row(0, 100));
    fnRow("all, odd", 100 * PAGE - 1, Row(0, 100));
    fnRow("one in the middle", 1000 * PAGE, {500});
    fnRow("two neighbours", 1000 * PAGE, {500, 501});
    fnRow("every second", 301 * PAGE, {0, 2, 4, 6, 8, 10, 100, 102, 104, 200, 300});
    fnRow("a row", 1000 * PAGE, Row(100, 400));
    fnRow("two rows", 1000 * PAGE, {100, 101, 102, 103, 104, 105, 106, 600, 601, 602, 603, 604, 605, 606});
    fnRow("good ones in a row", 40 * PAGE, {1, 2, 3, 5, 6, 7, 9, 10, 11, 12, 13, 14, 20, 39});
    fnRow("from the middle to the end", 3000 * PAGE, Row(1500, 3000));
}

void tst_CSpotSearch::everythingElseIsRead()
{
    QFETCH(qint64, nSize);
    QFETCH(QVector<qint64>, listBad);
    for (const bool bCuts : {true, false}) {
        CFakeFile file(nSize, Pages(listBad.begin(), listBad.end()), bCuts);
        const CSpotSearch search = file.Search();
        QCOMPARE(search.Bad().Text(INT_MAX), file.BadText());
        QCOMPARE(search.Untried().Text(INT_MAX), QString());
        QCOMPARE(file.m_nRead, file.BytesFromFirstBad() - file.BadBytes());
        QCOMPARE(file.m_nDealt, file.BytesFromFirstBad());
        QCOMPARE(file.MostFailures(), 1);
        QCOMPARE(file.m_nGivenTwice, 0);
        QVERIFY(file.m_listWrong.isEmpty());
    }
}

void tst_CSpotSearch::anyFile_data()
{
    QTest::addColumn<int>("nSeed");
    for (int nSeed = 0; nSeed < 60; ++nSeed) {
        QTest::newRow(QByteArray::number(nSeed).constData()) << nSeed;
    }
}

void tst_CSpotSearch::anyFile()
{
    QFETCH(int, nSeed);
    std::mt19937 random(static_cast<unsigned>(nSeed));
    const auto fnUpTo = [&random](qint64 nMost) { return qint64(random() % quint64(nMost + 1)); };
    const qint64 nSize = 1 + fnUpTo(nSeed % 3 == 0 ? 20 * PAGE : 4000 * PAGE);
    const qint64 nLast = (nSize - 1) / PAGE;
    Pages setBad{fnUpTo(nLast)};
    for (qint64 nRow = fnUpTo(12); nRow > 0; --nRow) {
        const qint64 nFrom = fnUpTo(nLast);
        setBad.merge(Row(nFrom, qMin(nLast + 1, nFrom + 1 + fnUpTo(nRow % 2 == 0 ? 2 : 200))));
    }
    CFakeFile file(nSize, setBad, nSeed % 2 == 0);
    const CSpotSearch search = file.Search();
    QCOMPARE(search.Bad().Text(INT_MAX), file.BadText());
    QCOMPARE(search.Untried().Text(INT_MAX), QString());
    QCOMPARE(file.m_nRead, file.BytesFromFirstBad() - file.BadBytes());
    QCOMPARE(file.m_nDealt, file.BytesFromFirstBad());
    QCOMPARE(file.MostFailures(), 1);
    QCOMPARE(file.m_nGivenTwice, 0);
    QVERIFY(file.m_listWrong.isEmpty());
}

void tst_CSpotSearch::whatCanBeReadIsReadInLargeSteps()
{
    CFakeFile file(64 * MIB, {100}, true);
    file.Search();
    QCOMPARE(file.m_listTried.first().nFrom, 100 * PAGE);
    QCOMPARE(file.m_listTried.first().Bytes(), PAGE);
    // Small ones where the large read failed that came before, and then of 256 KiB each.
    QVERIFY(file.m_listTried.count() < 64 + 64 * 4 + 10);
    QCOMPARE(file.m_nFailed, 1);
}

void tst_CSpotSearch::aBadAreaIsLeftSoon()
{
    // 64 MiB of a film of 1 GiB: out of them before a slow disk has used up its time.
    CFakeFile file(1024 * MIB, Row(100, 100 + 64 * MIB / PAGE), true);
    file.Search(13);
    QVERIFY(file.m_nRead > 0);
    QVERIFY(file.m_nFailed <= 11);
}

void tst_CSpotSearch::theWayToTheEndComesFirst()
{
    // Many bad places: whatever lies behind them comes before the search between them.
    Pages setBad = Row(10, 200);
    setBad.merge(Row(5000, 5200));
    CFakeFile file(40 * MIB, setBad, true);
    file.Search();
    int nStep = 0;
    while (file.m_listTried.at(nStep + 1).nFrom > file.m_listTried.at(nStep).nFrom) {
        ++nStep;
    }
    QCOMPARE(file.m_listTried.at(nStep).nEnd, 40 * MIB);
    QVERIFY(nStep < 250);
    QVERIFY(file.m_listTried.count() > nStep + 100);
}

void tst_CSpotSearch::whatWasSkippedIsReadBackwards()
{
    // The pages 10 to 13 are bad; 4 + 16 pages behind them are skipped on the way.
    CFakeFile file(1000 * PAGE, Row(10, 14), true);
    file.Search();
    const auto itBack = std::adjacent_find(file.m_listTried.begin(), file.m_listTried.end(),
                                           [](const STByteRange& stFirst, const STByteRange& stSecond) {
                                               return stSecond.nFrom < stFirst.nFrom;
                                           });
    QVERIFY(itBack != file.m_listTried.end());
    // From its far end, in growing steps, down to the bad page.
    const STByteRange stFirst = *std::next(itBack);
    const STByteRange stSecond = *std::next(itBack, 2);
    QCOMPARE(stFirst.Bytes(), PAGE);
    QCOMPARE(stSecond.nEnd, stFirst.nFrom);
    QVERIFY(stFirst.nEnd < 100 * PAGE);
}

void tst_CSpotSearch::halvesOfWhatIsLeft()
{
    // All bad: once the way to the end is through, the largest part is halved.
    CFakeFile file(256 * MIB, Row(0, 256 * MIB / PAGE), true);
    CSpotSearch search(0, 256 * MIB);
    for (int n = 0; n < 100; ++n) {
        search.Done(file.Read(*search.Next()));
    }
    // A hundred tries have left no untried part as large as 16 MiB.
    qint64 nLargest = 0;
    for (const QString& strRange : search.Untried().Text(INT_MAX).split(", ")) {
        nLargest = qMax(nLargest,
                        strRange.section('-', 1).toLongLong() - strRange.section('-', 0, 0).toLongLong());
    }
    QVERIFY2(nLargest < 8 * MIB, QByteArray::number(nLargest).constData());
    QCOMPARE(file.MostFailures(), 1);
}

void tst_CSpotSearch::untriedIsWhatWasNotRead()
{
    CFakeFile file(1000 * PAGE, Row(10, 500), true);
    for (int nSteps = 0; nSteps < 300; nSteps += 7) {
        CFakeFile other(1000 * PAGE, Row(10, 500), true);
        const CSpotSearch search = other.Search(nSteps);
        CByteRanges all = search.Untried();
        all.Add(search.Bad());
        for (const STByteRange& stTried : qAsConst(other.m_listTried)) {
            all.Add({stTried.nFrom, other.FirstBad(stTried)});
        }
        QCOMPARE(all.Text(INT_MAX), QString("40960-4095999"));
        QCOMPARE(search.Untried().IsEmpty(), !search.Next());
    }
}

void tst_CSpotSearch::failedLargeReadTellsNoBadPage()
{
    // The read that broke off may have failed at any of its pages: each is tried by itself,
    // and none in a large step again.
    CSpotSearch search(1 * MIB, 4 * MIB);
    qint64 nFrom = 1 * MIB;
    for (; nFrom < 1 * MIB + CSpotSearch::LARGE_STEP; nFrom += PAGE) {
        QCOMPARE(search.Next()->nFrom, nFrom);
        QCOMPARE(search.Next()->Bytes(), PAGE);
        search.Done(PAGE);
    }
    QVERIFY(search.Next()->Bytes() > PAGE);
    const STByteRange stLarge = *search.Next();
    search.Done(0);
    QVERIFY(search.Bad().IsEmpty());
    for (; nFrom < stLarge.nEnd; nFrom += PAGE) {
        QCOMPARE(search.Next()->nFrom, nFrom);
        QCOMPARE(search.Next()->Bytes(), PAGE);
        search.Done(PAGE);
    }
    QVERIFY(search.Next()->Bytes() > PAGE);
}

void tst_CSpotSearch::goodAfterAll()
{
    CFakeFile file(4 * MIB, {}, false);
    CSpotSearch search(1 * MIB, 4 * MIB);
    while (const auto stNext = search.Next()) {
        search.Done(file.Read(*stNext));
    }
    QVERIFY(search.Bad().IsEmpty());
    QCOMPARE(file.m_nRead, 3 * MIB);
}

QTEST_GUILESS_MAIN(tst_CSpotSearch)
#include "tst_CSpotSearch.moc"
