#include "settings/PListParser.h"
#include "support/CLogCapture.h"

#include <QBuffer>
#include <QtTest>

#include <sys/resource.h>

static const char NO_PARSE[] = "PListParser Warning: Could not parse PList file!";

// No input may take more than this beyond what the process has used before it.
static const long MOST_KIB = 400 * 1024;

/** Highest memory use of the process so far, in KiB. */
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

/** Endless or huge input that is made as it is read, and counts what was taken of it. */
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

static const char DISKUTIL[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
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
    void refused_data();
    void refused();
    void tolerated_data();
    void tolerated();
    void hugeInputIsNotReadWhole_data();
    void hugeInputIsNotReadWhole();
    void memoryIsBounded_data();
    void memoryIsBounded();
    void deepNesting_data();
    void deepNesting();
};

void tst_PListParserWild::forms_data()
{
    QTest::addColumn<QByteArray>("baText");
    const QByteArray baText(DISKUTIL);
    const QString strText = QString::fromUtf8(baText);
    const auto replaced = [&baText](const char* pOld, const char* pNew) {
        QByteArray baNew = baText;
        Q_ASSERT(baNew.contains(pOld));
        return baNew.replace(pOld, pNew);
    };
    const auto utf16 = [&strText](bool bBig) {
        QByteArray baNew;
        for (const QChar ch : QString(QChar::ByteOrderMark)
                 + QString(strText).replace(QLatin1String("UTF-8"), QLatin1String("UTF-16"))) {
            baNew += char(bBig ? ch.row() : ch.cell());
            baNew += char(bBig ? ch.cell() : ch.row());
        }
        return baNew;
    };
    QTest::newRow("as diskutil prints it") << baText;
    QTest::newRow("on one line") << QByteArray(baText).replace('\n', "").replace('\t', "");
    QTest::newRow("CRLF") << QByteArray(baText).replace("\n", "\r\n");
    QTest::newRow("UTF-8 with byte-order mark") << "\xEF\xBB\xBF" + baText;
    QTest::newRow("UTF-16 with byte-order mark, little end first") << utf16(false);
    QTest::newRow("UTF-16 with byte-order mark, big end first") << utf16(true);
    QTest::newRow("no document type")
        << baText.left(baText.indexOf("<!DOCTYPE")) + baText.mid(baText.indexOf("<plist"));
    QTest::newRow("system document type") << replaced("PUBLIC \"-//Apple//DTD PLIST 1.0//EN\"", "SYSTEM");
    QTest::newRow("older name of the document type") << replaced("-//Apple//DTD", "-//Apple Computer//DTD");
    QTest::newRow("no declaration") << baText.mid(baText.indexOf('\n') + 1);
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
    QTest::newRow("blank lines at the end") << baText + "\n\n \t\n";
    QTest::newRow("other elements at the end")
        << replaced("</dict>\n</plist>", "</dict>\n<string>late</string>\n</plist>");
}

void tst_PListParserWild::forms()
{
    QFETCH(QByteArray, baText);
    CLogCapture capture;
    QCOMPARE(Parse(baText),
             QVariant(QVariantMap{{QStringLiteral("BusProtocol"), QStringLiteral("USB")},
                                  {QStringLiteral("Ejectable"), true},
                                  {QStringLiteral("TotalSize"), 0},
                                  {QStringLiteral("VolumeName"), QStringLiteral("Büro & Zuhause")}}));
    QCOMPARE(capture.Lines(), QStringList());
}

/** The process that prints was killed: whatever came is no property list, and says so. */
void tst_PListParserWild::truncatedAnywhere()
{
    const QByteArray baText(DISKUTIL);
    const int nWhole = baText.lastIndexOf('>') + 1;
    for (int n = 0; n < nWhole; ++n) {
        CLogCapture capture;
        QVERIFY2(!Parse(baText.left(n)).isValid(), qPrintable(QString::number(n)));
        QVERIFY2(capture.Has(QString::fromLatin1(NO_PARSE)), qPrintable(QString::number(n)));
        QCOMPARE(capture.Lines().size(), 4);
    }
    QVERIFY(Parse(baText.left(nWhole)).isValid());
}

/** A bit that fell over: an answer or a warning at every place of the text. */
void tst_PListParserWild::bytesChangedAnywhere()
{
    int nAnswered = 0;
    int nRefused = 0;
    for (const char ch : {'\0', '<', '>', '&', '"', '/', '!', '\xFF', '['}) {
        for (int n = 0; n < int(sizeof(DISKUTIL)) - 1; ++n) {
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

void tst_PListParserWild::refused_data()
{
    QTest::addColumn<QByteArray>("baText");
    const QByteArray baBegin("<plist version=\"1.0\">");
    const QByteArray baEnd("</plist>");
    QTest::newRow("document type with an internal subset")
        << "<!DOCTYPE plist [<!ELEMENT plist (string)>]>" + baBegin + "<string>a</string>" + baEnd;
    QTest::newRow("entity of its own")
        << "<!DOCTYPE plist [<!ENTITY a \"b\">]>" + baBegin + "<string>&a;</string>" + baEnd;
    QTest::newRow("entity that reads a file")
        << "<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>" + baBegin + "<string>&a;</string>"
            + baEnd;
    QTest::newRow("bare ampersand") << baBegin + "<string>a & b</string>" + baEnd;
    QTest::newRow("zero byte") << baBegin + QByteArray("<string>a\0b</string>", 20) + baEnd;
    QTest::newRow("overlapping elements") << baBegin + "<array><string></array></string>" + baEnd;
    QTest::newRow("two documents") << baBegin + "<true/>" + baEnd + baBegin + "<true/>" + baEnd;
    QTest::newRow("text behind the end") << baBegin + "<true/>" + baEnd + "Segmentation fault";
    QTest::newRow("message before the list") << "Could not find disk: disk9\n" + baBegin + "<true/>" + baEnd;
    QTest::newRow("message instead of a list") << QByteArray("Could not find disk: disk9\n");
    QTest::newRow("binary property list") << QByteArray("bplist00\xD1\x01\x02QaQb\x08\x0B\x0D", 17);
    QTest::newRow("JSON") << QByteArray("{\"AppleLanguages\": [\"de\"]}");
    QTest::newRow("old-style property list") << QByteArray("{ AppleLanguages = (de, en); }");
    QTest::newRow("blanks alone") << QByteArray("  \n\t");
    QTest::newRow("half of a UTF-16 character") << QByteArray("\xFF\xFE<\0p", 5);
}

void tst_PListParserWild::refused()
{
    QFETCH(QByteArray, baText);
    CLogCapture capture;
    QVERIFY(!Parse(baText).isValid());
    QVERIFY(capture.Has(QString::fromLatin1(NO_PARSE)));
    QCOMPARE(capture.Lines().size(), 4);
}

void tst_PListParserWild::tolerated_data()
{
    QTest::addColumn<QByteArray>("baString");
    QTest::addColumn<QString>("strValue");
    QTest::newRow("entity that is not declared") << QByteArray("a&nbsp;b") << QStringLiteral("ab");
    QTest::newRow("control character") << QByteArray("a\x07") << QStringLiteral("a\u0007");
    QTest::newRow("elements in a string") << QByteArray("a<b>c</b>d") << QStringLiteral("acd");
}

/** Not quite XML, or no value of a property list: read as well as can be. */
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

/** 50 MB: no more than a twelfth of it is read. */
void tst_PListParserWild::hugeInputIsNotReadWhole()
{
    QFETCH(QByteArray, baBegin);
    QFETCH(QByteArray, baRepeated);
    CStream stream(baBegin, baRepeated, 50 * 1000 * 1000);
    CLogCapture capture;
    QVERIFY(!PListParser::parsePList(&stream).isValid());
    QCOMPARE(capture.Lines().value(0), QString::fromLatin1(NO_PARSE));
    QCOMPARE(capture.Lines().size(), 4);
    QVERIFY2(stream.Taken() <= 50 * 1000 * 1000 / 11, qPrintable(QString::number(stream.Taken())));
}

void tst_PListParserWild::memoryIsBounded_data()
{
    QTest::addColumn<QByteArray>("baText");
    static const int MOST = 4 * 1000 * 1000;
    const QByteArray baBegin("<plist version=\"1.0\">");
    QByteArray baBomb("<!DOCTYPE plist [<!ENTITY a0 \"ha\">");
    for (int n = 1; n < 30; ++n) {
        const QByteArray baLower = "&a" + QByteArray::number(n - 1) + ";";
        baBomb += "<!ENTITY a" + QByteArray::number(n) + " \"" + baLower.repeated(10) + "\">";
    }
    QTest::newRow("entity bomb") << baBomb + "]>" + baBegin + "<string>&a29;</string></plist>";
    QTest::newRow("entity of 64 KiB, referred to often") << "<!DOCTYPE plist [<!ENTITY a \""
            + QByteArray(65536, 'x') + "\">]>" + baBegin + "<string>" + QByteArray("&a;").repeated(500000)
            + "</string></plist>";
    QTest::newRow("open elements") << baBegin + QByteArray("<array>").repeated(MOST / 7);
    QTest::newRow("text") << baBegin + "<string>" + QByteArray(MOST, 'x') + "</string></plist>";
    QTest::newRow("attributes") << "<plist" + QByteArray(" a='b'").repeated(MOST / 6) + ">";
    QTest::newRow("numbered characters")
        << baBegin + "<string>" + QByteArray("&#120;").repeated(MOST / 6) + "</string></plist>";
    // A list that is merely long costs some hundred bytes an element.
    QTest::newRow("elements") << baBegin + "<array>" + QByteArray("<true/>").repeated(100000)
            + "</array></plist>";
}

void tst_PListParserWild::memoryIsBounded()
{
    QFETCH(QByteArray, baText);
    const long nBefore = PeakKiB();
    const CLogCapture capture;
    Parse(baText);
    const long nTaken = PeakKiB() - nBefore;
    QVERIFY2(nTaken < MOST_KIB, qPrintable(QString::number(nTaken)));
}

void tst_PListParserWild::deepNesting_data()
{
    QTest::addColumn<QByteArray>("baOpen");
    QTest::addColumn<QByteArray>("baClose");
    QTest::newRow("arrays") << QByteArray("<array>") << QByteArray("</array>");
    QTest::newRow("dicts") << QByteArray("<dict><key>a</key>") << QByteArray("</dict>");
    QTest::newRow("unknown elements") << QByteArray("<x>") << QByteArray("</x>");
    QTest::newRow("strings") << QByteArray("<string>") << QByteArray("</string>");
}

void tst_PListParserWild::deepNesting()
{
    QFETCH(QByteArray, baOpen);
    QFETCH(QByteArray, baClose);
    for (const int nLevels : {300, 5000, 100000}) {
        CLogCapture capture;
        const QByteArray baText
            = "<plist version=\"1.0\">" + baOpen.repeated(nLevels) + baClose.repeated(nLevels) + "</plist>";
        QVERIFY(!Parse(baText).isValid());
        QCOMPARE(capture.Lines().value(0), QString::fromLatin1(NO_PARSE));
    }
}

QTEST_GUILESS_MAIN(tst_PListParserWild)
#include "tst_PListParserWild.moc"
