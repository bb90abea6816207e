#include "settings/PListParser.h"
#include "support/CLogCapture.h"

#include <QBuffer>
#include <QtTest>

#include <ctime>
#include <sys/resource.h>

static const QString NO_PARSE = "PListParser Warning: Could not parse PList file!";

// No input may take more than this beyond what the process has used before it.
#ifdef __SANITIZE_THREAD__
// The sanitizer keeps several bytes of its own for each byte of the program's.
static const long MOST_KIB = 4 * 400 * 1024;
#else
static const long MOST_KIB = 400 * 1024;
#endif

// Highest memory use of the process so far, in KiB.
static long PeakKiB()
{
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

static QVariant Parse(QByteArray baText)
{
    QBuffer buffer(&baText);
    buffer.open(QIODevice::ReadOnly);
    return PListParser::parsePList(&buffer);
}

// Endless or huge input that is made as it is read, and counts what was taken of it.
class CStream : public QIODevice
{
public:
    CStream(const QByteArray& baBegin, const QByteArray& baRepeated, qint64 nSize)
        : m_baBegin(baBegin)
        , m_baRepeated(baRepeated)
        , m_nSize(nSize)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }
    qint64 Taken() const { return m_nTaken; }

protected:
    qint64 readData(char* pData, qint64 nMost) override
    {
        const qint64 nCount = qMin(nMost, m_nSize - m_nTaken);
        for (qint64 n = 0; n < nCount; ++n, ++m_nTaken) {
            pData[n] = m_nTaken < m_baBegin.size()
                ? m_baBegin.at(int(m_nTaken))
                : m_baRepeated.at(int((m_nTaken - m_baBegin.size()) % m_baRepeated.size()));
        }
        return nCount;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_baBegin;
    QByteArray m_baRepeated;
    qint64 m_nSize;
    qint64 m_nTaken = 0;
};

static const QByteArray DISKUTIL = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                   "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                                   "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                                   "<plist version=\"1.0\">\n"
                                   "<dict>\n"
                                   "\t<key>BusProtocol</key>\n"
                                   "\t<string>USB</string>\n"
                                   "\t<key>Ejectable</key>\n"
                                   "\t<true/>\n"
                                   "\t<key>TotalSize</key>\n"
                                   "\t<integer>31914983424</integer>\n"
                                   "\t<key>VolumeName</key>\n"
                                   "\t<string>Büro &amp; Zuhause</string>\n"
                                   "</dict>\n"
                                   "</plist>\n";

/** What the tools and hands of the world make of property lists. */
class tst_PListParserWild : public QObject
{
    Q_OBJECT

private slots:
    void forms_data();
    void forms();
    void truncatedAnywhere();
    void bytesChangedAnywhere();
    void tolerated_data();
    void tolerated();
    void hugeInputIsNotReadWhole_data();
    void hugeInputIsNotReadWhole();
    void hostileInputCostsLittle_data();
    void hostileInputCostsLittle();
};

void tst_PListParserWild::forms_data()
{
    QTest::addColumn<QByteArray>("baText");
    const auto replaced = [](const char* pOld, const char* pNew) {
        QByteArray baNew = DISKUTIL;
        Q_ASSERT(baNew.contains(pOld));
        return baNew.replace(pOld, pNew);
    };
    const auto utf16 = [](bool bBig) {
        QByteArray baNew;
        for (const QChar ch : QChar(QChar::ByteOrderMark) + QString(DISKUTIL).replace("UTF-8", "UTF-16")) {
            baNew += char(bBig ? ch.row() : ch.cell());
            baNew += char(bBig ? ch.cell() : ch.row());
        }
        return baNew;
    };
    QTest::newRow("as diskutil prints it") << DISKUTIL;
    QTest::newRow("on one line") << QByteArray(DISKUTIL).replace('\n', "").replace('\t', "");
    QTest::newRow("CRLF") << QByteArray(DISKUTIL).replace("\n", "\r\n");
    QTest::newRow("UTF-8 with byte-order mark") << "\xEF\xBB\xBF" + DISKUTIL;
    QTest::newRow("UTF-16 with byte-order mark, little end first") << utf16(false);
    QTest::newRow("UTF-16 with byte-order mark, big end first") << utf16(true);
    QTest::newRow("no document type")
        << DISKUTIL.left(DISKUTIL.indexOf("<!DOCTYPE")) + DISKUTIL.mid(DISKUTIL.indexOf("<plist"));
    QTest::newRow("system document type") << replaced("PUBLIC \"-//Apple//DTD PLIST 1.0//EN\"", "SYSTEM");
    QTest::newRow("older name of the document type") << replaced("-//Apple//DTD", "-//Apple Computer//DTD");
    QTest::newRow("no declaration") << DISKUTIL.mid(DISKUTIL.indexOf('\n') + 1);
    QTest::newRow("comments between and inside")
        << replaced("<true/>", "<!-- a --><true/><!-- <string>b</string> -->")
               .replace("USB", "U<!-- c -->SB");
    QTest::newRow("comment before and behind") << replaced("<plist", "<!-- a -->\n<plist") + "<!-- b -->\n";
    QTest::newRow("instructions") << replaced("<true/>", "<?a b?><true/>");
    QTest::newRow("CDATA") << replaced("B\xC3\xBCro &amp; Zuhause", "<![CDATA[B\xC3\xBCro & Zuhause]]>");
    QTest::newRow("CDATA in the middle") << replaced(" &amp; ", "<![CDATA[ & ]]>");
    QTest::newRow("numbered characters") << replaced("B\xC3\xBCro &amp;", "B&#252;ro &#x26;");
    QTest::newRow("attributes on elements")
        << replaced("<string>USB", "<string id=\"1\" a='&lt;'>USB").replace("<dict>", "<dict ID=\"x\">");
    QTest::newRow("blanks in tags")
        << replaced("</string>", "</string >").replace("<true/>", "<true />").replace("<key>", "<key >");
    QTest::newRow("pairs of tags for empty elements") << replaced("<true/>", "<true></true>");
    QTest::newRow("blank lines at the end") << DISKUTIL + "\n\n \t\n";
    QTest::newRow("other elements at the end")
        << replaced("</dict>\n</plist>", "</dict>\n<string>late</string>\n</plist>");
}

void tst_PListParserWild::forms()
{
    QFETCH(QByteArray, baText);
    CLogCapture capture;
    QCOMPARE(Parse(baText),
             QVariant(QVariantMap{{"BusProtocol", "USB"},
                                  {"Ejectable", true},
                                  {"TotalSize", 0},
                                  {"VolumeName", "Büro & Zuhause"}}));
    QCOMPARE(capture.Lines(), QStringList());
}

// The process that prints was killed: whatever came is no property list, and says so.
void tst_PListParserWild::truncatedAnywhere()
{
    const int nWhole = DISKUTIL.lastIndexOf('>') + 1;
    for (int n = 0; n < nWhole; ++n) {
        CLogCapture capture;
        QVERIFY2(!Parse(DISKUTIL.left(n)).isValid(), qPrintable(QString::number(n)));
        QVERIFY2(capture.Has(NO_PARSE), qPrintable(QString::number(n)));
        QCOMPARE(capture.Lines().size(), 4);
    }
    QVERIFY(Parse(DISKUTIL.left(nWhole)).isValid());
}

// A bit that fell over: an answer or a warning at every place of the text.
void tst_PListParserWild::bytesChangedAnywhere()
{
    int nAnswered = 0;
    int nRefused = 0;
    for (const char ch : {'\0', '<', '>', '&', '"', '/', '!', '\xFF', '['}) {
        for (int n = 0; n < DISKUTIL.size(); ++n) {
            QByteArray baText(DISKUTIL);
            baText[n] = ch;
            CLogCapture capture;
            const bool bAnswered = Parse(baText).isValid();
            QVERIFY2(bAnswered || !capture.Lines().isEmpty(), qPrintable(QString::number(n)));
            ++(bAnswered ? nAnswered : nRefused);
        }
    }
    QVERIFY(nAnswered > 500);
    QVERIFY(nRefused > 500);
}

void tst_PListParserWild::tolerated_data()
{
    QTest::addColumn<QByteArray>("baString");
    QTest::addColumn<QString>("strValue");
    QTest::newRow("entity that is not declared") << QByteArray("a&nbsp;b") << "ab";
    QTest::newRow("control character") << QByteArray("a\x07") << "a\u0007";
    QTest::newRow("elements in a string") << QByteArray("a<b>c</b>d") << "acd";
}

// Not quite XML, or no value of a property list: read as well as can be.
void tst_PListParserWild::tolerated()
{
    QFETCH(QByteArray, baString);
    QFETCH(QString, strValue);
    CLogCapture capture;
    QCOMPARE(Parse("<plist version=\"1.0\"><string>" + baString + "</string></plist>"), QVariant(strValue));
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParserWild::hugeInputIsNotReadWhole_data()
{
    QTest::addColumn<QByteArray>("baBegin");
    QTest::addColumn<QByteArray>("baRepeated");
    const QByteArray baBegin("<plist version=\"1.0\">");
    QTest::newRow("one text") << baBegin + "<string>" << QByteArray("x");
    QTest::newRow("a long list") << baBegin + "<array>" << QByteArray("<string>abcdef</string>\n");
    QTest::newRow("arrays in arrays") << baBegin << QByteArray("<array>");
    QTest::newRow("a comment") << baBegin + "<!-- " << QByteArray("-");
    QTest::newRow("blanks") << QByteArray() << QByteArray(" ");
    QTest::newRow("zero bytes") << QByteArray() << QByteArray(1, '\0');
}

// 50 MB: no more than a twelfth of it is read.
void tst_PListParserWild::hugeInputIsNotReadWhole()
{
    QFETCH(QByteArray, baBegin);
    QFETCH(QByteArray, baRepeated);
    CStream stream(baBegin, baRepeated, 50 * 1000 * 1000);
    CLogCapture capture;
    QVERIFY(!PListParser::parsePList(&stream).isValid());
    QCOMPARE(capture.Lines().value(0), NO_PARSE);
    QCOMPARE(capture.Lines().size(), 4);
    QVERIFY2(stream.Taken() <= 50 * 1000 * 1000 / 11, qPrintable(QString::number(stream.Taken())));
}

void tst_PListParserWild::hostileInputCostsLittle_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<bool>("bRead");
    const auto row = [](const char* pName, const QByteArray& baText, bool bRead = false) {
        QTest::newRow(pName) << baText << bRead;
    };
    const int nMuch = 20 * 1000 * 1000;
    const int nMost = 4 * 1024 * 1024 - 100; // just small enough to be looked at
    const QByteArray baBegin("<plist version=\"1.0\">");
    const QByteArray baString = baBegin + "<string>";
    const QByteArray baEnd("</string></plist>");
    QByteArray baLaughs("<!DOCTYPE plist [<!ENTITY a0 \"ha\">");
    for (int i = 1; i < 30; ++i) {
        const QByteArray baLower = "&a" + QByteArray::number(i - 1) + ";";
        baLaughs += "<!ENTITY a" + QByteArray::number(i) + " \"" + baLower.repeated(10) + "\">";
    }
    const QByteArray baLong = "<!DOCTYPE plist [<!ENTITY a \"" + QByteArray(65536, 'x') + "\">]>" + baString;

    row("a zero byte", QByteArray("<plist><string>a\0b</string></plist>", 35));
    row("ends, within the bound", QByteArray("</a>").repeated(nMost / 4));
    row("brackets, within the bound", QByteArray(nMost, '<'));
    row("open arrays, within the bound", baBegin + QByteArray("<array>").repeated(nMost / 7));
    row("open comments, within the bound", baBegin + QByteArray("<!-- ").repeated(nMost / 6));
    row("open CDATA, within the bound", baBegin + QByteArray("<![CDATA[").repeated(nMost / 10));
    row("open quotes, within the bound", baBegin + QByteArray("<a b='<").repeated(nMost / 8));
    row("attributes, within the bound", "<plist" + QByteArray(" a='b'").repeated(nMost / 7));
    row("attributes and an end, within the bound", "<plist" + QByteArray(" a='b'").repeated(nMost / 7) + ">");
    row("unknown siblings, within the bound", baBegin + QByteArray("<a/>").repeated(nMost / 4));
    row("content model without end",
        "<!DOCTYPE plist [<!ELEMENT plist " + QByteArray(1000000, '(') + "]>" + baBegin + "<true/></plist>");
    row("entity bomb", baLaughs + "]>" + baString + "&a29;" + baEnd);
    row("entity of 64 KiB, referred to often", baLong + QByteArray("&a;").repeated(1000000) + baEnd);
    // What is long and no more costs some hundred bytes an element.
    row("text", baString + QByteArray(nMost, 'x') + baEnd, true);
    row("numbered characters", baString + QByteArray("&#120;").repeated(nMost / 6) + baEnd, true);
    row("elements", baBegin + "<array>" + QByteArray("<true/>").repeated(100000) + "</array></plist>", true);
    row("letters", QByteArray(nMuch, 'A'));
    row("zero bytes", QByteArray(nMuch, '\0'));
    row("brackets", QByteArray(nMuch, '<'));
    row("one long text", baString + QByteArray(nMuch, 'A') + baEnd);
    row("open arrays", QByteArray("<array>").repeated(nMuch / 7));
}

void tst_PListParserWild::hostileInputCostsLittle()
{
    QFETCH(QByteArray, baText);
    QFETCH(bool, bRead);
    const long nBefore = PeakKiB();
    const std::clock_t nBegin = std::clock();
    CLogCapture capture;
    QCOMPARE(Parse(baText).isValid(), bRead);
    // Of the processor, which is all that a parser takes, some tenths of a second; the
    // bound leaves room for sanitizers.
    const double fSeconds = double(std::clock() - nBegin) / CLOCKS_PER_SEC;
    QVERIFY2(fSeconds < 5, qPrintable(QString::number(fSeconds)));
    const long nTaken = PeakKiB() - nBefore;
    QVERIFY2(nTaken < MOST_KIB, qPrintable(QString::number(nTaken)));
    QCOMPARE(capture.Has(NO_PARSE), !bRead);
    QCOMPARE(capture.Lines().size(), bRead ? 0 : 4);
}

QTEST_GUILESS_MAIN(tst_PListParserWild)
#include "tst_PListParserWild.moc"
