#include "copy/CCopyReport.h"
#include "files/CFileNameCodec.h"
#include "support/LogFile.h"

#include <QFile>
#include <QtTest>

#include <cerrno>

Q_DECLARE_METATYPE(STCopyOutcome)

class tst_CCopyReport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init() { UseLogFile(); }
    void quoted_data();
    void quoted();
    void problemIsOneLine_data();
    void problemIsOneLine();
    void summaryOfCompletedCopy();
    void summaryOfStoppedCopyNamesHalfCopiedFile();
    void resetForgets();
    void accountOfWholeAndOthers();
    void fileIsTakenBack_data();
    void fileIsTakenBack();
    void listIsBoundAndPrefersProblems();
    void closedBooksTakeNothing();
};

void tst_CCopyReport::quoted_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baQuoted"); // without its quotation marks
    const auto fnRow = [](const char* pszRow, const char* pszName, const char* pszQuoted) {
        QTest::newRow(pszRow) << QByteArray(pszName) << QByteArray(pszQuoted);
    };
    fnRow("plain", "/a/b.txt", "/a/b.txt");
    fnRow("empty", "", "");
    fnRow("newline", "a\nb", R"(a\nb)");
    fnRow("carriage return", "a\rb", R"(a\u000db)");
    fnRow("escape character", "\x1b[31m", R"(\u001b[31m)");
    fnRow("delete character", "a\x7f", R"(a\u007f)");
    fnRow("C1 control", "a\xc2\x85", R"(a\u0085)");
    fnRow("line separator", "a\xe2\x80\xa8", R"(a\u2028)");
    fnRow("paragraph separator", "a\xe2\x80\xa9", R"(a\u2029)");
    fnRow("quotation mark", "a\"b", R"(a\"b)");
    fnRow("backslash and n", "a\\nb", R"(a\\nb)");
    fnRow("placeholder", "%1 %2", "%1 %2");
    fnRow("trailing blank", "a ", "a ");
    fnRow("two bytes", "\xc3\xa4", "\xc3\xa4");
    fnRow("three bytes", "\xe3\x81\x82", "\xe3\x81\x82");
    fnRow("four bytes", "\xf0\x9f\x98\x80", "\xf0\x9f\x98\x80");
    fnRow("replacement character", "\xef\xbf\xbd", "\xef\xbf\xbd");
    fnRow("byte order mark", "a\xef\xbb\xbf", R"(a\ufeff)");
    fnRow("not UTF-8", "a\xff\xfe.txt", R"(a\xff\xfe.txt)");
    fnRow("cut short", "a\xe3\x81", R"(a\xe3\x81)");
}

void tst_CCopyReport::quoted()
{
    QFETCH(QByteArray, baName);
    QFETCH(QByteArray, baQuoted);
    QCOMPARE(CCopyReport::Quoted(QFile::decodeName(baName)), QString::fromUtf8('"' + baQuoted + '"'));
}

void tst_CCopyReport::problemIsOneLine_data()
{
    QTest::addColumn<STCopyOutcome>("stOutcome");
    QTest::addColumn<QString>("strRest");
    const auto fnRow
        = [](const char* pszRow, const STCopyReason& stReason, qint64 nExpected, const char* pszRest) {
              QTest::newRow(pszRow) << STCopyOutcome{ENCopyEnd::NOT_WHOLE, "/a%1\nb", stReason, 5, nExpected}
                                    << pszRest;
          };
    fnRow("some of it", {ENCopyProblem::SOURCE_READ, "it broke"}, 9, "it broke (5 of 9 bytes copied)");
    fnRow("size unknown", {ENCopyProblem::SOURCE_READ, "it broke"}, STCopyOutcome::UNKNOWN_SIZE,
          "it broke (5 of unknown bytes copied)");
    fnRow("with an error", {ENCopyProblem::SOURCE_READ, "it broke", EIO}, 9,
          "it broke: Input/output error (5 of 9 bytes copied)");
    fnRow("with a target", {ENCopyProblem::SOURCE_READ, "it broke", EIO, "/c\nd"}, 9,
          R"(it broke: Input/output error, "/c\nd" (5 of 9 bytes copied))");
}

void tst_CCopyReport::problemIsOneLine()
{
    QFETCH(STCopyOutcome, stOutcome);
    QFETCH(QString, strRest);
    CCopyReport report;
    report.AddProblem(stOutcome);
    QCOMPARE(LogLines(), QStringList{Problem(R"(/a%1\nb)", strRest)});
    QCOMPARE(report.Problems(), 1);
    QCOMPARE(report.Bytes(), 0);
}

void tst_CCopyReport::summaryOfCompletedCopy()
{
    CCopyReport report;
    report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 1000, 1000});
    report.AddFile({ENCopyEnd::NOT_WHOLE, "/b", {ENCopyProblem::SOURCE_READ, "it broke"}, 200, 300});
    report.AddFile({ENCopyEnd::WHOLE, "/c", {}, 34, 34});
    report.WriteSummary(false, 61005);
    QCOMPARE(Summary(), QString("Copy completed: files 2, bytes 1234, seconds 61.005, problems 1"));
}

void tst_CCopyReport::summaryOfStoppedCopyNamesHalfCopiedFile()
{
    CCopyReport report;
    report.AddFile({ENCopyEnd::STOPPED, "/x\ny", {ENCopyProblem::STOPPED, "it was stopped"}, 7, 9});
    report.WriteSummary(true, 0);
    const QStringList listExpected{
        R"(Not copied whole: "/x\ny": it was stopped (7 of 9 bytes copied))",
        R"(Copy stopped: files 0, bytes 7, seconds 0.000, problems 1, half-copied "/x\ny")",
    };
    QCOMPARE(LogLines(), listExpected);
}

void tst_CCopyReport::resetForgets()
{
    CCopyReport report;
    report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 3, 3});
    report.AddFile({ENCopyEnd::STOPPED, "/x", {ENCopyProblem::STOPPED, "it was stopped"}, 1, 2});
    report.Reset();
    report.WriteSummary(false, 0);
    QCOMPARE(Summary(), QString("Copy completed: files 0, bytes 0, seconds 0.000, problems 0"));
    QCOMPARE(report.Files(), 0);
    QCOMPARE(report.Bytes(), 0);
    QCOMPARE(report.Problems(), 0);
}

void tst_CCopyReport::accountOfWholeAndOthers()
{
    CCopyReport report;
    QVERIFY(report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 1000, 1000}));
    QVERIFY(report.AddFile({ENCopyEnd::NOT_WHOLE, "/b", {ENCopyProblem::SOURCE_READ, "x", EIO}, 200, 300}));
    QVERIFY(report.AddFile({ENCopyEnd::NOT_WHOLE, "/c", {ENCopyProblem::TIME_LOST, "y"}, 34, 34}));
    QVERIFY(report.AddNote({ENCopyEnd::WHOLE, "/d", {ENCopyProblem::LEAVES_VOLUME, "z"}}));
    const STCopyAccount stAccount = report.Account();
    QCOMPARE(stAccount.nFiles, 2); // the date is not among the bytes
    QCOMPARE(stAccount.nBytes, 1234);
    QCOMPARE(stAccount.nProblems, 1);
    QCOMPARE(stAccount.nNotes, 2);
    QCOMPARE(stAccount.listItem.count(), 3);
    const STCopyItem stItem = stAccount.listItem.at(0);
    QCOMPARE(stItem.strPath, QString("/b"));
    QCOMPARE(stItem.enProblem, ENCopyProblem::SOURCE_READ);
    QCOMPARE(stItem.nError, EIO);
    QCOMPARE(stItem.nCopied, 200);
    QCOMPARE(stItem.nExpected, 300);
    QVERIFY(!stItem.bNote);
    QVERIFY(stAccount.listItem.at(1).bNote);
    QCOMPARE(LogLines().last(), QString("Note: \"/d\": z"));
    QCOMPARE(report.Problems(), 2); // in the words of the log
}

void tst_CCopyReport::fileIsTakenBack_data()
{
    QTest::addColumn<STCopyOutcome>("stBooked");
    QTest::addColumn<int>("nNotes");
    QTest::newRow("whole") << STCopyOutcome{ENCopyEnd::WHOLE, "/b", {}, 200, 200} << 0;
    QTest::newRow("without its time")
        << STCopyOutcome{ENCopyEnd::NOT_WHOLE, "/b", {ENCopyProblem::TIME_LOST, "y"}, 200, 200} << 1;
}

void tst_CCopyReport::fileIsTakenBack()
{
    QFETCH(STCopyOutcome, stBooked);
    QFETCH(int, nNotes);
    CCopyReport report;
    report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 1000, 1000});
    report.AddFile(stBooked);
    QVERIFY(report.TakeBack(stBooked, STCopyReason::NotOnDisk(EIO)));
    const STCopyAccount stAccount = report.Account();
    QCOMPARE(stAccount.nFiles, 1);
    QCOMPARE(report.Files(), 1);
    QCOMPARE(stAccount.nBytes, 1200); // as of any file that the disk did not take at its end
    QCOMPARE(stAccount.nProblems, 1);
    QCOMPARE(stAccount.nNotes, nNotes);
    QCOMPARE(stAccount.listItem.last().strPath, QString("/b"));
    QCOMPARE(stAccount.listItem.last().enProblem, ENCopyProblem::TARGET_CLOSE);
    QCOMPARE(stAccount.listItem.last().nError, EIO);
    QVERIFY(!stAccount.IsWhole());
    QCOMPARE(
        LogLines().last(),
        Problem("/b",
                "its target cannot be brought to the disk: Input/output error (200 of 200 bytes copied)"));
    report.Close(STCopyEnd());
    QVERIFY(!report.TakeBack(stBooked, STCopyReason::NotOnDisk(EIO)));
    QCOMPARE(report.Account().nFiles, 1);
}

void tst_CCopyReport::listIsBoundAndPrefersProblems()
{
    CCopyReport report;
    report.AddProblem(STCopyOutcome::Missing("first", {ENCopyProblem::SOURCE_OPEN, "x"}));
    for (int nNote = 0; nNote < STCopyAccount::LISTED_ITEMS; ++nNote) {
        report.AddNote({ENCopyEnd::WHOLE, QString::number(nNote), {ENCopyProblem::LEAVES_VOLUME, "z"}});
    }
    report.AddProblem(STCopyOutcome::Missing("last", {ENCopyProblem::SOURCE_OPEN, "x"}));
    const STCopyAccount stAccount = report.Account();
    QCOMPARE(stAccount.nProblems, 2);
    QCOMPARE(stAccount.nNotes, STCopyAccount::LISTED_ITEMS);
    QCOMPARE(stAccount.listItem.count(), STCopyAccount::LISTED_ITEMS);
    QCOMPARE(stAccount.listItem.first().strPath, QString("first"));
    QCOMPARE(stAccount.listItem.last().strPath, QString("last"));
}

void tst_CCopyReport::closedBooksTakeNothing()
{
    CCopyReport report;
    STCopyEnd stEnd;
    stEnd.enFlush = ENCopyFlush::DONE;
    QVERIFY(report.Close(stEnd));
    const QStringList listLine = LogLines();
    QVERIFY(!report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 1000, 1000}));
    QVERIFY(!report.AddProblem(STCopyOutcome::Missing("/b", {ENCopyProblem::SOURCE_OPEN, "x"})));
    QVERIFY(!report.AddNote({ENCopyEnd::WHOLE, "/c", {ENCopyProblem::LEAVES_VOLUME, "z"}}));
    QVERIFY(!report.CloseWith(STCopyOutcome::Missing("/d", {ENCopyProblem::NO_ANSWER, "x"}), STCopyEnd()));
    QVERIFY(!report.Close(STCopyEnd()));
    QCOMPARE(LogLines(), listLine);
    QVERIFY(report.Account().IsWhole());
    QCOMPARE(report.Account().nBytes, 0);
    QCOMPARE(report.Account().enFlush, ENCopyFlush::DONE);
}

QTEST_GUILESS_MAIN(tst_CCopyReport)
#include "tst_CCopyReport.moc"
