#include "CFakeAdvice.h"
#include "files/CLeftBehind.h"
#include "flow/CReadAhead.h"
#include "support/CGate.h"

#include <QFile>
#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <optional>

static const quint64 DISK = 1;
static const quint64 OTHER_DISK = 2;
static const qint64 SEEK_US = 8000; // of a disk that turns
static const qint64 MIB = qint64(1) << 20;
static const int LEARN = CSourceDisk::SAMPLES; // files that are read without advice
static const int PATIENCE_MS = 10000;

Q_DECLARE_METATYPE(std::optional<bool>)

/** Whether, in what order and how far the disk is asked for what the copy reads next. */
class tst_CReadAhead : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void asksForAllInTheOrderOfTheDisk();
    void asksInTheOrderOfTheCopyWhereSeeksAreCheap_data();
    void asksInTheOrderOfTheCopyWhereSeeksAreCheap();
    void nothingIsToldBeforeTheDeviceIsKnown();
    void devicesThatCannotHelp_data();
    void devicesThatCannotHelp();
    void askedInVain();
    void lastOneMayComeFirst();
    void comingLateIsNotInVain();
    void troubleEndsIt_data();
    void troubleEndsIt();
    void littleMemory_data();
    void littleMemory();
    void nothingMoreWhileNothingIsOpened();
    void goesOnAsTheCopyDoes();
    void onlyWhatWasAskedForWholeIsReadWithoutTheSystemsOwn();
    void largeFileIsAskedForAsItIsRead();
    void largeFileThatIsLeftIsClosed();
    void anotherVolume();
    void fileOnAnotherDeviceIsWaitedFor();
    void foldersAreListed();
    void foldersAreAskedForOnce();
    void longFolderHidesWhatIsBehindIt();
    void toldAnew();
    void filesThatNobodyTold();
    void endClosesAll();
    void hungDiskIsLeftBehind();

private:
    void Begin(qint64 nFirstReadUs = SEEK_US);
    QByteArrayList Tell(int nFiles, qint64 nSize = 4096);
    void Open(const QByteArray& baPath, quint64 nDevice = DISK);
    void OpenAndRead(const QByteArray& baPath, qint64 nUs = SEEK_US, quint64 nDevice = DISK);
    CFakeAdvice& Fake() { return CFakeAdvice::Get(); }

    std::unique_ptr<CReadAhead> m_pAhead;
    int m_nMade = 0; // files
};

void tst_CReadAhead::init()
{
    CFakeAdvice::Reset();
    m_nMade = 0;
    Fake().m_mapDisk[DISK].bKeeps = true;
    Fake().m_mapDisk[OTHER_DISK].bKeeps = true;
    m_pAhead = std::make_unique<CReadAhead>();
}

void tst_CReadAhead::cleanup()
{
    m_pAhead.reset();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
}

void tst_CReadAhead::Open(const QByteArray& baPath, quint64 nDevice)
{
    m_pAhead->SourceOpened(QFile::decodeName(baPath), nDevice, Fake().OpenForCopy(baPath));
}

void tst_CReadAhead::OpenAndRead(const QByteArray& baPath, qint64 nUs, quint64 nDevice)
{
    Open(baPath, nDevice);
    m_pAhead->SourceRead(4096, nUs);
}

/** The copy reads the files from which the device is learned, and finds that asking helps. */
void tst_CReadAhead::Begin(qint64 nFirstReadUs)
{
    for (int i = 0; i < LEARN; ++i) {
        OpenAndRead("/v/first " + QByteArray::number(i), nFirstReadUs);
    }
    Fake().Add("/v/proof", {});
    m_pAhead->Expect({{"/v/proof"}}, false);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles(), QByteArrayList{QByteArray("/v/proof")}, PATIENCE_MS);
    // It is closed when it was seen to have come.
    QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 0, PATIENCE_MS);
    Open("/v/proof");
    QCOMPARE(Fake().Stopped(), QByteArrayList{QByteArray("/v/proof")});
}

/** Tells so many files, each of which lies before the one that was made before it. */
QByteArrayList tst_CReadAhead::Tell(int nFiles, qint64 nSize)
{
    QVector<STExpectedFile> listFile;
    QByteArrayList listPath;
    for (int i = 0; i < nFiles; ++i) {
        ++m_nMade;
        const QByteArray baPath = "/v/file " + QByteArray::number(m_nMade);
        Fake().Add(baPath, {nSize, quint64(100000 - m_nMade)});
        listFile.append(STExpectedFile{baPath});
        listPath.append(baPath);
    }
    m_pAhead->Expect(listFile, false);
    return listPath;
}

void tst_CReadAhead::asksForAllInTheOrderOfTheDisk()
{
    Begin();
    const QByteArrayList listTold = Tell(20);
    QByteArrayList listDisk = {"/v/proof"};
    for (const QByteArray& baPath : listTold) {
        listDisk.insert(1, baPath);
    }
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles(), listDisk, PATIENCE_MS);
}

void tst_CReadAhead::asksInTheOrderOfTheCopyWhereSeeksAreCheap_data()
{
    QTest::addColumn<std::optional<bool>>("bTurns");
    QTest::addColumn<qint64>("nFirstReadUs");
    QTest::addColumn<bool>("bCopyOrder");
    const qint64 nCheap = 300;
    const qint64 nDear = 3 * CSourceDisk::SEEK_US;
    QTest::newRow("nothing is said, cheap") << std::optional<bool>() << nCheap << true;
    QTest::newRow("nothing is said, dear") << std::optional<bool>() << nDear << false;
    QTest::newRow("does not turn, cheap") << std::make_optional(false) << nCheap << true;
    QTest::newRow("does not turn, dear") << std::make_optional(false) << nDear << false;
    QTest::newRow("does not turn, from memory") << std::make_optional(false) << qint64(0) << true;
    QTest::newRow("turns, files lie side by side") << std::make_optional(true) << nCheap << false;
}

void tst_CReadAhead::asksInTheOrderOfTheCopyWhereSeeksAreCheap()
{
    QFETCH(std::optional<bool>, bTurns);
    QFETCH(qint64, nFirstReadUs);
    QFETCH(bool, bCopyOrder);
    Fake().m_mapDisk[DISK].bSeeks = bTurns;
    Begin(nFirstReadUs);
    QByteArrayList listExpected = Tell(20);
    if (!bCopyOrder) {
        std::reverse(listExpected.begin(), listExpected.end());
    }
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1), listExpected, PATIENCE_MS);
}

void tst_CReadAhead::nothingIsToldBeforeTheDeviceIsKnown()
{
    QVERIFY(!m_pAhead->WantsMore());
    Open("/v/first");
    QVERIFY(m_pAhead->WantsMore());
    Tell(5);
    m_pAhead.reset(); // until then nothing was learned of the device
    QCOMPARE(Fake().Calls(), 0);
}

void tst_CReadAhead::devicesThatCannotHelp_data()
{
    QTest::addColumn<bool>("bInMemory");
    QTest::addColumn<bool>("bKeeps");
    QTest::addColumn<int>("nThere");
    QTest::addColumn<bool>("bHelps");
    const int nNo = int(ENThere::NO);
    const int nUnknown = int(ENThere::UNKNOWN);
    QTest::newRow("memory") << true << true << nUnknown << false;
    QTest::newRow("memory that tells what is there") << true << false << int(ENThere::YES) << false;
    QTest::newRow("driver that may forget and does not tell") << false << false << nUnknown << false;
    QTest::newRow("driver that may forget and tells") << false << false << nNo << true;
    QTest::newRow("disk that does not tell") << false << true << nUnknown << true;
    QTest::newRow("disk that tells") << false << true << nNo << true;
}

void tst_CReadAhead::devicesThatCannotHelp()
{
    QFETCH(bool, bInMemory);
    QFETCH(bool, bKeeps);
    QFETCH(int, nThere);
    QFETCH(bool, bHelps);
    Fake().m_mapDisk[DISK] = {bInMemory, bKeeps, std::nullopt};
    Fake().m_fnIsThere = [nThere](const QByteArray&, bool) { return ENThere(nThere); };
    for (int i = 0; i < LEARN; ++i) {
        OpenAndRead("/v/first " + QByteArray::number(i));
        QCOMPARE(m_pAhead->WantsMore(), bHelps);
    }
    Tell(5);
    if (bHelps) {
        QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().count(), 5, PATIENCE_MS);
    }
    m_pAhead.reset();
    QCOMPARE(Fake().Calls() == 0, !bHelps);
}

/** A file system that forgets what it has in memory when the copy opens a file. */
void tst_CReadAhead::askedInVain()
{
    bool bForgets = false;
    QByteArray baLast;
    // The helper's own file has its bytes; the copy's has not.
    Fake().m_fnIsThere = [&](const QByteArray& baPath, bool bAsked) {
        return bAsked && !(bForgets && baPath != baLast) ? ENThere::YES : ENThere::NO;
    };
    for (int i = 0; i < LEARN; ++i) {
        OpenAndRead("/v/first " + QByteArray::number(i), 300);
    }
    bForgets = true;
    // Two batches: what is missing when the last file of its own has come may only be served later.
    QByteArrayList listTold;
    for (int nBatch = 1; nBatch <= 2; ++nBatch) {
        baLast = "/v/file " + QByteArray::number(nBatch * CSourceDisk::TRIAL_FILES);
        listTold += Tell(CSourceDisk::TRIAL_FILES);
        QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles(), listTold, PATIENCE_MS);
        QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 0, PATIENCE_MS); // it has seen the last one come
    }
    for (int i = 0; i < CSourceDisk::MOST_MISSED; ++i) {
        QVERIFY2(m_pAhead->WantsMore(), qPrintable(QString::number(i)));
        Open(listTold.at(i));
    }
    QVERIFY(!m_pAhead->WantsMore());
    const int nCalls = Fake().Calls();
    Tell(5);
    Open(listTold.at(CSourceDisk::MOST_MISSED));
    m_pAhead.reset();
    QCOMPARE(Fake().Calls(), nCalls);
}

/** A disk that serves what it was asked for last first. */
void tst_CReadAhead::lastOneMayComeFirst()
{
    const QByteArray baLast = "/v/file " + QByteArray::number(CSourceDisk::TRIAL_FILES);
    Fake().m_fnIsThere = [&](const QByteArray& baPath, bool bAsked) {
        return bAsked && baPath == baLast ? ENThere::YES : ENThere::NO;
    };
    for (int i = 0; i < LEARN; ++i) {
        OpenAndRead("/v/first " + QByteArray::number(i), 300);
    }
    const QByteArrayList listTold = Tell(CSourceDisk::TRIAL_FILES);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles(), listTold, PATIENCE_MS);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 0, PATIENCE_MS); // it has seen the last one come
    for (const QByteArray& baPath : listTold) {
        Open(baPath);
        QVERIFY2(m_pAhead->WantsMore(), baPath.constData());
    }
}

void tst_CReadAhead::comingLateIsNotInVain()
{
    Fake().m_fnIsThere = [](const QByteArray&, bool) { return ENThere::NO; };
    for (int i = 0; i < LEARN; ++i) {
        OpenAndRead("/v/first " + QByteArray::number(i), 300);
    }
    const QByteArrayList listTold = Tell(CSourceDisk::TRIAL_FILES);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles(), listTold, PATIENCE_MS);
    for (const QByteArray& baPath : listTold) {
        Open(baPath);
    }
    QVERIFY(m_pAhead->WantsMore());
}

void tst_CReadAhead::troubleEndsIt_data()
{
    QTest::addColumn<QString>("strTrouble");
    for (const char* pszTrouble : {"read fails", "read takes long", "file cannot be read",
                                   "folder cannot be read", "advice is refused"}) {
        QTest::newRow(pszTrouble) << QString(pszTrouble);
    }
}

void tst_CReadAhead::troubleEndsIt()
{
    QFETCH(QString, strTrouble);
    Begin();
    if (strTrouble == "read fails") {
        m_pAhead->SourceRead(-2, 100);
    } else if (strTrouble == "read takes long") {
        m_pAhead->SourceRead(4096, CSourceDisk::STALL_US);
    } else if (strTrouble == "file cannot be read") {
        Fake().Add("/v/bad", {4096, 0, DISK, EIO});
        m_pAhead->Expect({{"/v/bad"}}, false);
    } else if (strTrouble == "folder cannot be read") {
        Fake().m_mapFolder["/v/bad"] = {DISK, {"1"}, {}, true, EIO};
        m_pAhead->Expect({{"/v/bad", -1, true}}, false);
    } else {
        Fake().m_bTakesAdvice = false;
        Tell(1);
    }
    QTRY_VERIFY_WITH_TIMEOUT(!m_pAhead->WantsMore(), PATIENCE_MS);
    const int nCalls = Fake().Calls();
    Tell(5);
    OpenAndRead("/v/next");
    QVERIFY(!m_pAhead->WantsMore());
    m_pAhead.reset();
    QCOMPARE(Fake().Calls(), nCalls);
    QCOMPARE(Fake().HeldOpen(), 0);
}

void tst_CReadAhead::littleMemory_data()
{
    QTest::addColumn<qint64>("nFree");
    QTest::addColumn<int>("nAskedMiB"); // of one file after the other, at first
    QTest::newRow("plenty") << 64 * 1024 * MIB << 32;
    QTest::newRow("a share of it in two batches") << 128 * MIB << 16;
    QTest::newRow("hardly any") << 3 * MIB << 0;
    QTest::newRow("not known") << qint64(0) << 0;
}

void tst_CReadAhead::littleMemory()
{
    QFETCH(qint64, nFree);
    QFETCH(int, nAskedMiB);
    Begin();
    Fake().m_nFreeMemory = nFree;
    const int nBefore = Fake().AskedFiles().count();
    Tell(200, MIB);
    QTRY_VERIFY_WITH_TIMEOUT(Fake().AskedFiles().count() - nBefore >= nAskedMiB, PATIENCE_MS);
    QTRY_COMPARE_WITH_TIMEOUT(m_pAhead->WantsMore(), nAskedMiB > 0, PATIENCE_MS);
    m_pAhead.reset();
    QCOMPARE(Fake().AskedFiles().count() - nBefore, nAskedMiB);
}

void tst_CReadAhead::nothingMoreWhileNothingIsOpened()
{
    Begin();
    int nTold = 0;
    const int nMost = 2 * CSourceDisk::MOST_FILES + CReadPlan::MOST_WAITING;
    QTRY_VERIFY_WITH_TIMEOUT(
        [&] {
            while (m_pAhead->WantsMore() && nTold <= 2 * nMost) {
                nTold += Tell(CReadPlan::MOST_WAITING / 2).count();
            }
            return Fake().AskedFiles().count() > CSourceDisk::MOST_FILES;
        }(),
        PATIENCE_MS);
    QTRY_VERIFY_WITH_TIMEOUT(!m_pAhead->WantsMore(), PATIENCE_MS);
    QVERIFY2(nTold <= nMost, qPrintable(QString::number(nTold)));
}

void tst_CReadAhead::goesOnAsTheCopyDoes()
{
    Begin();
    const int nFiles = 2000;
    int nTold = 0;
    for (int i = 1; i <= nFiles; ++i) {
        while (m_pAhead->WantsMore() && nTold < nFiles) {
            nTold += Tell(500).count();
        }
        const QByteArray baPath = "/v/file " + QByteArray::number(i);
        QTRY_VERIFY_WITH_TIMEOUT(Fake().AskedFiles().contains(baPath), PATIENCE_MS);
        Open(baPath);
    }
    QCOMPARE(Fake().AskedFiles().count(), 1 + nFiles);
}

void tst_CReadAhead::onlyWhatWasAskedForWholeIsReadWithoutTheSystemsOwn()
{
    Begin(300);
    QByteArrayList listTold = Tell(1);
    listTold += Tell(1, 100 * MIB);
    listTold += Tell(1);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1), listTold.mid(0, 2), PATIENCE_MS);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 1, PATIENCE_MS); // the large one
    for (const QByteArray& baPath : listTold) {
        Open(baPath);
    }
    QCOMPARE(Fake().Stopped(), QByteArrayList({"/v/proof", listTold.at(0)}));
}

void tst_CReadAhead::largeFileIsAskedForAsItIsRead()
{
    Begin();
    const qint64 nSize = 100 * MIB;
    const QByteArray baPath = Tell(1, nSize).constFirst();
    const auto fnAskedTo = [this] { return Fake().Asked().constLast().split('-').constLast().toLongLong(); };
    QTRY_COMPARE_WITH_TIMEOUT(fnAskedTo(), CSourceDisk::MOST_BYTES, PATIENCE_MS);
    Open(baPath);
    for (qint64 nRead = 0; nRead < nSize; nRead += 2 * MIB) {
        m_pAhead->SourceRead(2 * MIB, 100);
        QTRY_VERIFY_WITH_TIMEOUT(fnAskedTo() >= qMin(nSize, nRead + 5 * MIB), PATIENCE_MS);
        QVERIFY(fnAskedTo() <= qMax(CSourceDisk::MOST_BYTES, nRead + 11 * MIB));
    }
    QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 0, PATIENCE_MS);
}

void tst_CReadAhead::largeFileThatIsLeftIsClosed()
{
    Begin();
    QByteArrayList listTold = Tell(1, 300 * MIB);
    listTold += Tell(1);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 1, PATIENCE_MS);
    Open(listTold.at(0));
    Open(listTold.at(1));
    QTRY_COMPARE_WITH_TIMEOUT(Fake().HeldOpen(), 0, PATIENCE_MS);
}

void tst_CReadAhead::anotherVolume()
{
    Begin();
    m_pAhead->SourceRead(-2, 100);
    QVERIFY(!m_pAhead->WantsMore());
    for (int i = 0; i < LEARN; ++i) {
        OpenAndRead("/w/first " + QByteArray::number(i), SEEK_US, OTHER_DISK);
        QVERIFY(m_pAhead->WantsMore());
    }
    Fake().Add("/w/file", {4096, 0, OTHER_DISK});
    m_pAhead->Expect({{"/w/file"}}, false);
    QTRY_VERIFY_WITH_TIMEOUT(Fake().AskedFiles().contains("/w/file"), PATIENCE_MS);
    Open("/v/again");
    QVERIFY(!m_pAhead->WantsMore());
}

void tst_CReadAhead::fileOnAnotherDeviceIsWaitedFor()
{
    Begin();
    Fake().Add("/w/one", {4096, 0, OTHER_DISK});
    Fake().Add("/w/two", {4096, 0, OTHER_DISK});
    m_pAhead->Expect({{"/w/one"}, {"/w/two"}}, false);
    QTRY_VERIFY_WITH_TIMEOUT(Fake().Opened().contains("/w/one"), PATIENCE_MS);
    m_pAhead.reset();
    QVERIFY(!Fake().AskedFiles().contains("/w/one"));
    QVERIFY(!Fake().Opened().contains("/w/two"));
    QCOMPARE(Fake().HeldOpen(), 0);
}

void tst_CReadAhead::foldersAreListed()
{
    Begin(300);
    Fake().m_mapFolder["/v/a"] = {DISK, {"1", "2"}, {"inner"}, true, 0};
    Fake().m_mapFolder["/v/a/inner"] = {DISK, {"3"}, {}, true, 0};
    Fake().m_mapFolder["/v/mounted"] = {OTHER_DISK, {"x"}, {}, true, 0};
    for (const char* pszPath : {"/v/a/1", "/v/a/2", "/v/a/inner/3", "/v/last"}) {
        Fake().Add(pszPath, {});
    }
    m_pAhead->Expect({{"/v/a", -1, true}, {"/v/mounted", -1, true}, {"/v/gone", -1, true}, {"/v/last"}},
                     false);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1),
                              QByteArrayList({"/v/a/1", "/v/a/2", "/v/a/inner/3", "/v/last"}), PATIENCE_MS);
}

/** What is told anew begins where the copy is, and the disk was asked further than that. */
void tst_CReadAhead::foldersAreAskedForOnce()
{
    Begin(300);
    Fake().m_mapFolder["/v/a"] = {DISK, {"1", "2"}, {}, true, 0};
    for (const char* pszPath : {"/v/a/1", "/v/a/2", "/v/last"}) {
        Fake().Add(pszPath, {});
    }
    m_pAhead->Expect({{"/v/a", -1, true}}, false);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1), QByteArrayList({"/v/a/1", "/v/a/2"}), PATIENCE_MS);
    QTRY_VERIFY_WITH_TIMEOUT(m_pAhead->WantsAnew(), PATIENCE_MS);
    m_pAhead->Expect({{"/v/a", -1, true}, {"/v/last"}}, true);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1), QByteArrayList({"/v/a/1", "/v/a/2", "/v/last"}),
                              PATIENCE_MS);
}

void tst_CReadAhead::longFolderHidesWhatIsBehindIt()
{
    Begin(300);
    Fake().m_mapFolder["/v/a"] = {DISK, {"1"}, {"inner"}, false, 0};
    Fake().Add("/v/a/1", {});
    Fake().Add("/v/last", {});
    m_pAhead->Expect({{"/v/a", -1, true}, {"/v/last"}}, false);
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1), QByteArrayList{QByteArray("/v/a/1")}, PATIENCE_MS);
    m_pAhead.reset();
    QCOMPARE(Fake().AskedFiles().mid(1), QByteArrayList{QByteArray("/v/a/1")});
}

void tst_CReadAhead::toldAnew()
{
    Begin(300);
    CGate asking;
    CGate goOn;
    Fake().m_fnAsk = [&](const QByteArray& baPath) {
        if (baPath == "/v/file 1") {
            asking.Open();
            goOn.Pass(PATIENCE_MS);
        }
    };
    Tell(3);
    QVERIFY(asking.Pass(PATIENCE_MS));
    Fake().Add("/v/new", {});
    m_pAhead->Expect({{"/v/file 1"}, {"/v/new"}}, true);
    goOn.Open();
    QTRY_COMPARE_WITH_TIMEOUT(Fake().AskedFiles().mid(1), QByteArrayList({"/v/file 1", "/v/new"}),
                              PATIENCE_MS);
    m_pAhead.reset();
    QCOMPARE(Fake().AskedFiles().count(), 3);
}

/** When the copy goes another way than it was told, that is noticed. */
void tst_CReadAhead::filesThatNobodyTold()
{
    Begin();
    Tell(4000);
    QTRY_VERIFY_WITH_TIMEOUT(Fake().AskedFiles().count() > 500, PATIENCE_MS);
    QVERIFY(!m_pAhead->WantsMore());
    for (int i = 0; i < 100; ++i) {
        OpenAndRead("/v/untold " + QByteArray::number(i));
    }
    QVERIFY(m_pAhead->WantsMore());
}

void tst_CReadAhead::endClosesAll()
{
    Begin();
    Tell(300, 3 * MIB);
    QTRY_VERIFY_WITH_TIMEOUT(Fake().AskedFiles().count() > 10, PATIENCE_MS);
    m_pAhead.reset();
    QCOMPARE(Fake().HeldOpen(), 0);
    QVERIFY(!CLeftBehind::Any());
}

void tst_CReadAhead::hungDiskIsLeftBehind()
{
    Begin();
    CGate asking;
    CGate goOn;
    Fake().m_fnAsk = [&](const QByteArray&) {
        asking.Open();
        goOn.Pass(PATIENCE_MS);
    };
    const QByteArray baPath = Tell(1).constFirst();
    QVERIFY(asking.Pass(PATIENCE_MS));
    OpenAndRead(baPath); // the copy does not wait
    m_pAhead.reset();
    QVERIFY(CLeftBehind::Any());
    QCOMPARE(Fake().HeldOpen(), 1);
    goOn.Open();
    QTRY_VERIFY_WITH_TIMEOUT(!CLeftBehind::Any(), PATIENCE_MS);
    QCOMPARE(Fake().HeldOpen(), 0);
}

QTEST_GUILESS_MAIN(tst_CReadAhead)
#include "tst_CReadAhead.moc"
