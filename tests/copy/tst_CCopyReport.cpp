#include "copy/CCopyReport.h"
#include "files/CFileNameCodec.h"
#include "support/LogFile.h"

#include <QFile>
#include <QtTest>

class tst_CCopyReport : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void Quoted_data();
    void Quoted();
    void ProblemIsOneLine_data();
    void ProblemIsOneLine();
    void SummaryOfCompletedCopy();
    void SummaryOfStoppedCopyNamesHalfCopiedFile();
    void ResetForgets();
};

void tst_CCopyReport::initTestCase() { CFileNameCodec::Install(); }

void tst_CCopyReport::init() { UseLogFile(); }

void tst_CCopyReport::Quoted_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("quoted");
    QTest::newRow("plain") << QByteArray("/a/b.txt") << "\"/a/b.txt\"";
    QTest::newRow("empty") << QByteArray("") << "\"\"";
    QTest::newRow("newline") << QByteArray("a\nb") << R"("a\nb")";
    QTest::newRow("carriage return") << QByteArray("a\rb") << R"("a\u000db")";
    QTest::newRow("escape character") << QByteArray("\x1b[31m") << R"("\u001b[31m")";
    QTest::newRow("delete character") << QByteArray("a\x7f") << R"("a\u007f")";
    QTest::newRow("C1 control") << QByteArray("a\xc2\x85") << R"("a\u0085")";
    QTest::newRow("line separator") << QByteArray("a\xe2\x80\xa8") << R"("a\u2028")";
    QTest::newRow("paragraph separator") << QByteArray("a\xe2\x80\xa9") << R"("a\u2029")";
    QTest::newRow("quotation mark") << QByteArray("a\"b") << R"("a\"b")";
    QTest::newRow("backslash and n") << QByteArray("a\\nb") << R"("a\\nb")";
    QTest::newRow("placeholder") << QByteArray("%1 %2") << "\"%1 %2\"";
    QTest::newRow("trailing blank") << QByteArray("a ") << "\"a \"";
    QTest::newRow("two bytes") << QByteArray("\xc3\xa4") << QString::fromUtf8("\"\xc3\xa4\"");
    QTest::newRow("three bytes") << QByteArray("\xe3\x81\x82") << QString::fromUtf8("\"\xe3\x81\x82\"");
    QTest::newRow("four bytes") << QByteArray("\xf0\x9f\x98\x80")
                                << QString::fromUtf8("\"\xf0\x9f\x98\x80\"");
    QTest::newRow("replacement character")
        << QByteArray("\xef\xbf\xbd") << QString::fromUtf8("\"\xef\xbf\xbd\"");
    QTest::newRow("byte order mark") << QByteArray("a\xef\xbb\xbf") << R"("a\ufeff")";
    QTest::newRow("not UTF-8") << QByteArray("a\xff\xfe.txt") << R"("a\xff\xfe.txt")";
    QTest::newRow("cut short") << QByteArray("a\xe3\x81") << R"("a\xe3\x81")";
}

void tst_CCopyReport::Quoted()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, quoted);
    QCOMPARE(CCopyReport::Quoted(QFile::decodeName(name)), quoted);
}

void tst_CCopyReport::ProblemIsOneLine_data()
{
    QTest::addColumn<qint64>("copied");
    QTest::addColumn<qint64>("expected");
    QTest::addColumn<QString>("line");
    QTest::newRow("some of it") << qint64(5) << qint64(9)
                                << R"(Not copied whole: "/a%1\nb": it broke (5 of 9 bytes copied))";
    QTest::newRow("size unknown") << qint64(0) << STCopyOutcome::UNKNOWN_SIZE
                                  << R"(Not copied whole: "/a%1\nb": it broke (0 of unknown bytes copied))";
}

void tst_CCopyReport::ProblemIsOneLine()
{
    QFETCH(qint64, copied);
    QFETCH(qint64, expected);
    QFETCH(QString, line);
    CCopyReport report;
    report.AddProblem({ENCopyEnd::NOT_WHOLE, "/a%1\nb", {"it broke"}, copied, expected});
    QCOMPARE(LogLines(), QStringList{line});
    QCOMPARE(report.Problems(), 1);
}

void tst_CCopyReport::SummaryOfCompletedCopy()
{
    CCopyReport report;
    report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 1000, 1000});
    report.AddFile({ENCopyEnd::WHOLE, "/b", {}, 234, 234});
    report.WriteSummary(false, 61005);
    QCOMPARE(LogLines(), QStringList{"Copy completed: files 2, bytes 1234, seconds 61.005, problems 0"});
}

void tst_CCopyReport::SummaryOfStoppedCopyNamesHalfCopiedFile()
{
    CCopyReport report;
    report.AddFile({ENCopyEnd::STOPPED, "/x\ny", {"it was stopped"}, 7, 9});
    report.WriteSummary(true, 0);
    const QStringList listExpected{
        R"(Not copied whole: "/x\ny": it was stopped (7 of 9 bytes copied))",
        R"(Copy stopped: files 0, bytes 7, seconds 0.000, problems 1, half-copied "/x\ny")",
    };
    QCOMPARE(LogLines(), listExpected);
}

void tst_CCopyReport::ResetForgets()
{
    CCopyReport report;
    report.AddFile({ENCopyEnd::WHOLE, "/a", {}, 3, 3});
    report.AddFile({ENCopyEnd::STOPPED, "/x", {"it was stopped"}, 1, 2});
    report.Reset();
    report.WriteSummary(false, 0);
    QCOMPARE(LogLines().last(),
             QStringLiteral("Copy completed: files 0, bytes 0, seconds 0.000, problems 0"));
    QCOMPARE(report.Files(), 0);
    QCOMPARE(report.Bytes(), 0);
    QCOMPARE(report.Problems(), 0);
}

QTEST_GUILESS_MAIN(tst_CCopyReport)
#include "tst_CCopyReport.moc"
