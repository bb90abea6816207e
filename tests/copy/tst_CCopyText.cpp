#include "copy/CCopyReport.h"
#include "copy/CCopyReportText.h"
#include "copy/CCopyText.h"

#include <QLocale>
#include <QtTest>

#include <cerrno>
#include <limits>

Q_DECLARE_METATYPE(STCopyItem)

static const qint64 LARGEST = std::numeric_limits<qint64>::max();

class tst_CCopyText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void cleanup() { QLocale::setDefault(QLocale::c()); }
    void reason_data();
    void reason();
    void eachProblemHasWordsOfItsOwn();
    void detail_data();
    void detail();
    void detailIsNoPattern_data();
    void detailIsNoPattern();
    void amount_data();
    void amount();
    void bytes_data();
    void bytes();
    void numbersFollowTheLocale();
    void summary_data();
    void summary();
};

void tst_CCopyText::reason_data()
{
    QTest::addColumn<int>("nProblem");
    QTest::addColumn<int>("nError");
    QTest::addColumn<QString>("strReason");
    const auto fnRow = [](const char* pszRow, ENCopyProblem enProblem, int nError, const char* pszReason) {
        QTest::newRow(pszRow) << int(enProblem) << nError << pszReason;
    };
    fnRow("full disk", ENCopyProblem::TARGET_WRITE, ENOSPC, "The disk is full.");
    fnRow("full disk, told at the end", ENCopyProblem::TARGET_CLOSE, EDQUOT, "The disk is full.");
    fnRow("size limit", ENCopyProblem::TARGET_WRITE, EFBIG, "Too large for the file system of this disk.");
    fnRow("write-protected", ENCopyProblem::TARGET_FOLDER, EROFS, "The disk is write-protected.");
    fnRow("no permission to read", ENCopyProblem::SOURCE_OPEN, EACCES,
          "It cannot be opened. Access is not permitted.");
    fnRow("no permission to write", ENCopyProblem::TARGET_CREATE, EPERM,
          "It cannot be created on the disk. Access is not permitted.");
    fnRow("broken source", ENCopyProblem::SOURCE_READ, EIO, "It cannot be read. The disk reports an error.");
    fnRow("broken destination", ENCopyProblem::TARGET_WRITE, EIO,
          "It cannot be written to the disk. The disk reports an error.");
    fnRow("source gone", ENCopyProblem::SOURCE_OPEN, ENOENT,
          "It cannot be opened. It is not there any more.");
    fnRow("disk gone", ENCopyProblem::SOURCE_READ, ENODEV,
          "It cannot be read. The disk is not connected any more.");
    fnRow("name not allowed", ENCopyProblem::TARGET_CREATE, EINVAL,
          "It cannot be created on the disk. The file system of this disk does not allow its name.");
    fnRow("the same error of a read", ENCopyProblem::SOURCE_READ, EINVAL,
          "It cannot be read. Invalid argument");
    fnRow("what has no words of ours", ENCopyProblem::SOURCE_READ, EMFILE,
          "It cannot be read. Too many open files");
    fnRow("no error of the system", ENCopyProblem::STOPPED, 0, "The copy was stopped.");
}

void tst_CCopyText::reason()
{
    QFETCH(int, nProblem);
    QFETCH(int, nError);
    STCopyItem stItem;
    stItem.enProblem = ENCopyProblem(nProblem);
    stItem.nError = nError;
    QTEST(CCopyText::Reason(stItem), "strReason");
}

void tst_CCopyText::eachProblemHasWordsOfItsOwn()
{
    QStringList listReason;
    for (int nProblem = 0; nProblem <= int(ENCopyProblem::NO_ANSWER); ++nProblem) {
        STCopyItem stItem;
        stItem.enProblem = ENCopyProblem(nProblem);
        const QString strReason = CCopyText::Reason(stItem);
        QVERIFY2(strReason.endsWith('.'), qPrintable(QString::number(nProblem)));
        listReason.append(strReason);
    }
    QCOMPARE(listReason.removeDuplicates(), 0);
}

void tst_CCopyText::detail_data()
{
    QTest::addColumn<int>("nProblem");
    QTest::addColumn<QString>("strDetail");
    QTest::addColumn<QString>("strReason");
    const auto fnRow = [](ENCopyProblem enProblem, const char* pszDetail, const char* pszReason) {
        QTest::newRow(pszReason) << int(enProblem) << QString(pszDetail) << pszReason;
    };
    fnRow(ENCopyProblem::DAMAGED, "4096-8191, 12288-16383",
          "Parts of it cannot be read; zeros stand for the bytes 4096-8191, 12288-16383.");
    fnRow(ENCopyProblem::LINK_LOST, "../Shared",
          "It is a link to ../Shared, and this disk cannot hold links.");
    fnRow(ENCopyProblem::NAME_CHANGED, "HD/a_b",
          "The disk does not take its name. There it is called HD/a_b.");
    fnRow(ENCopyProblem::PERMISSIONS_LOST, "12", "Items whose permissions this disk cannot hold: 12");
    fnRow(ENCopyProblem::ATTRIBUTES_LOST, "3", "Items whose extended attributes this disk cannot hold: 3");
    fnRow(ENCopyProblem::FOLDER_TIMES_LOST, "1", "Folders whose dates this disk cannot hold: 1");
    fnRow(ENCopyProblem::FORK_READ, "", "Its resource fork, a part of it, cannot be read.");
    fnRow(ENCopyProblem::FORK_NEEDED, "",
          "Its contents are in its resource fork, and this disk cannot hold that.");
    fnRow(ENCopyProblem::FORKS_LOST, "7", "Items whose resource forks this disk cannot hold: 7");
    fnRow(ENCopyProblem::FINDER_LOST, "7", "Items whose Finder tags and icons this disk cannot hold: 7");
    fnRow(ENCopyProblem::ACCESS_LISTS_LOST, "7", "Items whose access lists this disk cannot hold: 7");
    fnRow(ENCopyProblem::CREATION_DATES_LOST, "7", "Items whose creation dates this disk cannot hold: 7");
    fnRow(ENCopyProblem::LOCKS_LOST, "7", "Locked items whose copies are not locked: 7");
    fnRow(ENCopyProblem::ONLY_IN_CLOUD, "", "Its contents are only in iCloud, not on this Mac.");
    fnRow(ENCopyProblem::TOO_LARGE, "", "Too large for the file system of this disk.");
    fnRow(ENCopyProblem::OTHER_FILE_SYSTEM, "",
          "Another disk is mounted here. What is on it was not copied.");
    fnRow(ENCopyProblem::ENTERED_BEFORE, "",
          "It is the same folder as another one in this copy, or the copy itself.");
}

void tst_CCopyText::detail()
{
    QFETCH(int, nProblem);
    QFETCH(QString, strDetail);
    STCopyItem stItem;
    stItem.enProblem = ENCopyProblem(nProblem);
    stItem.strDetail = strDetail;
    QTEST(CCopyText::Reason(stItem), "strReason");
}

void tst_CCopyText::detailIsNoPattern_data()
{
    QTest::addColumn<QString>("strDetail");
    for (const char* pszDetail : {"%1", "100%2 %1 %L1", "<b>bold</b> & more", "two\nlines"}) {
        QTest::newRow(pszDetail) << QString(pszDetail);
    }
}

// A name from a disk may hold anything; with and without a second sentence behind it.
void tst_CCopyText::detailIsNoPattern()
{
    QFETCH(QString, strDetail);
    STCopyItem stItem;
    stItem.enProblem = ENCopyProblem::NAME_CHANGED;
    stItem.strDetail = strDetail;
    const QString strFirst = "The disk does not take its name. There it is called " + strDetail + '.';
    QCOMPARE(CCopyText::Reason(stItem), strFirst);
    stItem.nError = EIO;
    QCOMPARE(CCopyText::Reason(stItem), strFirst + " The disk reports an error.");
    stItem.nError = 0;
    // In the report an item is one line, whatever it is called.
    stItem.strDetail = CCopyReport::Shown(strDetail);
    const QByteArray baLine = CCopyReportText::Line(stItem);
    QCOMPARE(baLine.count('\n'), 1);
    QVERIFY(baLine.endsWith('\n'));
}

void tst_CCopyText::amount_data()
{
    QTest::addColumn<qint64>("nCopied");
    QTest::addColumn<qint64>("nExpected");
    QTest::addColumn<bool>("bNote");
    QTest::addColumn<QString>("strAmount");
    QTest::newRow("some of it") << qint64(1200000) << qint64(3400000) << false << "1.20 MB of 3.40 MB";
    QTest::newRow("nothing of it") << qint64(0) << qint64(1) << false << "0 bytes of 1 byte";
    QTest::newRow("nobody knows how much") << qint64(5) << qint64(-1) << false << "5 bytes";
    QTest::newRow("nothing known") << qint64(0) << qint64(-1) << false << "";
    QTest::newRow("nothing, as it is gone") << qint64(0) << qint64(0) << false << "";
    QTest::newRow("whole") << qint64(5) << qint64(5) << true << "";
}

void tst_CCopyText::amount()
{
    STCopyItem stItem;
    QFETCH(qint64, nCopied);
    QFETCH(qint64, nExpected);
    QFETCH(bool, bNote);
    stItem.nCopied = nCopied;
    stItem.nExpected = nExpected;
    stItem.bNote = bNote;
    QTEST(CCopyText::Amount(stItem), "strAmount");
}

void tst_CCopyText::bytes_data()
{
    QTest::addColumn<qint64>("nBytes");
    QTest::addColumn<QString>("strBytes");
    QTest::newRow("none") << qint64(0) << "0 bytes";
    QTest::newRow("one") << qint64(1) << "1 byte";
    QTest::newRow("below a thousand") << qint64(999) << "999 bytes";
    QTest::newRow("a thousand") << qint64(1000) << "1.00 KB";
    QTest::newRow("rounds up within the unit") << qint64(999994) << "999.99 KB";
    QTest::newRow("rounds up to the next unit") << qint64(999995) << "1.00 MB";
    QTest::newRow("a stick") << qint64(3200000000) << "3.20 GB";
    QTest::newRow("a disk") << qint64(22000000000000) << "22.00 TB";
    QTest::newRow("the largest unit stays") << LARGEST << "9223372.04 TB";
}

void tst_CCopyText::bytes()
{
    QFETCH(qint64, nBytes);
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    QLocale::setDefault(locale);
    QTEST(CCopyText::Bytes(nBytes), "strBytes");
}

void tst_CCopyText::numbersFollowTheLocale()
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    QCOMPARE(CCopyText::Bytes(3200000000), QString("3,20 GB"));
    QCOMPARE(CCopyText::Files(1204), QString("1.204 files"));
    QCOMPARE(CCopyText::Files(1), QString("1 file"));
    STCopyItem stItem;
    stItem.strDetail = "1204";
    stItem.enProblem = ENCopyProblem::PERMISSIONS_LOST;
    QVERIFY(CCopyText::Reason(stItem).endsWith(": 1.204"));
    stItem.enProblem = ENCopyProblem::LINK_LOST; // a name
    QVERIFY(CCopyText::Reason(stItem).contains(" 1204,"));
}

void tst_CCopyText::summary_data()
{
    QTest::addColumn<STCopyAccount>("stAccount");
    QTest::addColumn<QString>("strSummary");
    STCopyItem stStopped;
    STCopyItem stBroken;
    stBroken.enProblem = ENCopyProblem::SOURCE_READ;
    STCopyItem stNote;
    stNote.enProblem = ENCopyProblem::LEAVES_VOLUME;
    stNote.bNote = true;

    STCopyAccount stAccount;
    stAccount.enFlush = ENCopyFlush::DONE;
    QTest::newRow("nothing") << stAccount << "Nothing was copied.";
    stAccount.nLinks = 3;
    QTest::newRow("links alone") << stAccount << "0 files, 0 bytes are on the disk. It can be unplugged now.";
    stAccount.nLinks = 0;
    stAccount.nFiles = 1204;
    stAccount.nBytes = 3200000000;
    QTest::newRow("whole") << stAccount << "1,204 files, 3.20 GB are on the disk. It can be unplugged now.";
    stAccount.nNotes = 1;
    stAccount.listItem = {stNote};
    QTest::newRow("whole with a note")
        << stAccount << "1,204 files, 3.20 GB are on the disk. It can be unplugged now.";
    STCopyAccount stOnlyStopped = stAccount;
    stOnlyStopped.bStopped = true;
    stOnlyStopped.nProblems = 1;
    stOnlyStopped.listItem = {stNote, stStopped};
    QTest::newRow("stopped") << stOnlyStopped
                             << "The copy was stopped. 1,204 files, 3.20 GB are on the disk.";
    stAccount.nProblems = 1;
    stAccount.listItem = {stBroken};
    QTest::newRow("one not whole") << stAccount << "1 of 1,205 items was not copied whole.";
    stAccount.nProblems = 38;
    QTest::newRow("some not whole") << stAccount << "38 of 1,242 items were not copied whole.";
    stAccount.bStopped = true;
    QTest::newRow("stopped after something else") << stAccount
                                                  << "The copy was stopped. 1,204 files, 3.20 GB are on the "
                                                     "disk. 38 of 1,242 items were not copied whole.";
    stAccount.enFlush = ENCopyFlush::FAILED;
    QTest::newRow("not confirmed")
        << stAccount << "The disk did not confirm that everything is on it. Do not rely on this copy.";
    stAccount.enFlush = ENCopyFlush::NOT_NEEDED;
    stAccount.nFiles = 0;
    QTest::newRow("nothing but problems") << stAccount << "Nothing was copied.";
}

void tst_CCopyText::summary()
{
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QFETCH(STCopyAccount, stAccount);
    QTEST(CCopyText::Summary(stAccount), "strSummary");
}

QTEST_GUILESS_MAIN(tst_CCopyText)
#include "tst_CCopyText.moc"
