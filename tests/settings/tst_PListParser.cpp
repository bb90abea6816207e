#include "settings/PListParser.h"
#include "support/CLogCapture.h"

#include <QBuffer>
#include <QDomDocument>
#include <QTemporaryFile>
#include <QtTest>

static const char HEAD[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                           "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";
static const char NO_PARSE[] = "PListParser Warning: Could not parse PList file!";
static const char UNKNOWN_VERSION[]
    = "PListParser Warning: plist is using an unknown format version, parsing might fail unexpectedly";

Q_DECLARE_METATYPE(QMetaType::Type)

static QVariant Parse(QByteArray baText)
{
    QBuffer buffer(&baText);
    buffer.open(QIODevice::ReadOnly);
    return PListParser::parsePList(&buffer);
}

/** Value of one element inside a whole property list. */
static QVariant ParseValue(const QByteArray& baElement)
{
    return Parse(HEAD + QByteArray("<plist version=\"1.0\">\n") + baElement + "\n</plist>\n");
}

static QByteArray Nested(const QByteArray& baTag, int nLevels, const QByteArray& baInner = QByteArray())
{
    return QByteArray("<" + baTag + ">").repeated(nLevels) + baInner
        + QByteArray("</" + baTag + ">").repeated(nLevels);
}

static int Depth(QVariant value)
{
    int nDepth = 0;
    for (; value.type() == QVariant::List; ++nDepth) {
        const QVariantList list = value.toList();
        value = list.isEmpty() ? QVariant() : list.first();
    }
    return nDepth;
}

class tst_PListParser : public QObject
{
    Q_OBJECT

private slots:
    void types_data();
    void types();
    void unknownTag_data();
    void unknownTag();
    void unknownTagInArrayIsAnEntry();
    void diskutilAnswer();

    void dict_data();
    void dict();
    void array_data();
    void array();

    void version_data();
    void version();
    void firstChild_data();
    void firstChild();

    void malformed_data();
    void malformed();
    void devices();
    void encodings_data();
    void encodings();

    void nesting_data();
    void nesting();
    void markupThatIsNoNesting_data();
    void markupThatIsNoNesting();
    void declarations_data();
    void declarations();
    void size_data();
    void size();
    void hostileInputIsAnsweredAtOnce_data();
    void hostileInputIsAnsweredAtOnce();
};

void tst_PListParser::types_data()
{
    QTest::addColumn<QByteArray>("baElement");
    QTest::addColumn<QMetaType::Type>("enType");
    QTest::addColumn<QVariant>("expected");
    const auto row
        = [](const char* pName, const QByteArray& baElement, QMetaType::Type enType,
             const QVariant& expected) { QTest::newRow(pName) << baElement << enType << expected; };

    row("dict", "<dict><key>k</key><string>v</string></dict>", QMetaType::QVariantMap,
        QVariantMap{{QStringLiteral("k"), QStringLiteral("v")}});
    row("dict, empty", "<dict/>", QMetaType::QVariantMap, QVariantMap());
    row("array", "<array><integer>2</integer><integer>1</integer></array>", QMetaType::QVariantList,
        QVariantList{2, 1});
    row("array, empty", "<array></array>", QMetaType::QVariantList, QVariantList());
    row("string", "<string>USB</string>", QMetaType::QString, QStringLiteral("USB"));
    row("string, empty", "<string/>", QMetaType::QString, QString());
    row("string, escaped", "<string>&lt;b&gt; &amp; &#x4E2D;&#10;x</string>", QMetaType::QString,
        QStringLiteral("<b> & 中\nx"));
    row("string, blanks kept", "<string> a  b </string>", QMetaType::QString, QStringLiteral(" a  b "));
    row("string, CDATA", "<string><![CDATA[<b>]]></string>", QMetaType::QString, QStringLiteral("<b>"));
    row("data", "<data>aGVsbG8=</data>", QMetaType::QByteArray, QByteArray("hello"));
    row("data, wrapped", "<data>\n\taGVs\n\tbG8=\n</data>", QMetaType::QByteArray, QByteArray("hello"));
    row("data, invalid Base64", "<data>a!b?%c=</data>", QMetaType::QByteArray,
        QByteArray::fromBase64("a!b?%c="));
    row("data, empty", "<data/>", QMetaType::QByteArray, QByteArray());
    row("integer", "<integer>42</integer>", QMetaType::Int, 42);
    row("integer, negative", "<integer>-42</integer>", QMetaType::Int, -42);
    row("integer, largest", "<integer>2147483647</integer>", QMetaType::Int, 2147483647);
    row("integer, one too large", "<integer>2147483648</integer>", QMetaType::Int, 0);
    row("integer, 4294967296", "<integer>4294967296</integer>", QMetaType::Int, 0);
    row("integer, blanks around", "<integer> 7 </integer>", QMetaType::Int, 7);
    row("integer, base 10 only", "<integer>0x10</integer>", QMetaType::Int, 0);
    row("integer, leading zero is not octal", "<integer>010</integer>", QMetaType::Int, 10);
    row("integer, no number", "<integer>seven</integer>", QMetaType::Int, 0);
    row("integer, empty", "<integer/>", QMetaType::Int, 0);
    row("real", "<real>2.5</real>", QMetaType::Float, 2.5F);
    row("real, single precision", "<real>0.1234567890123</real>", QMetaType::Float, 0.1234567890123F);
    row("real, exponent", "<real>1e3</real>", QMetaType::Float, 1000.0F);
    row("real, decimal comma", "<real>1,5</real>", QMetaType::Float, 0.0F);
    row("real, no number", "<real>pi</real>", QMetaType::Float, 0.0F);
    row("true", "<true/>", QMetaType::Bool, true);
    row("false", "<false/>", QMetaType::Bool, false);
    row("date", "<date>2026-11-16T12:30:45Z</date>", QMetaType::QDateTime,
        QDateTime(QDate(2026, 11, 16), QTime(12, 30, 45), Qt::UTC));
    row("date, day alone", "<date>2026-11-16</date>", QMetaType::QDateTime,
        QDateTime(QDate(2026, 11, 16), QTime(0, 0)));
    row("date, none", "<date>yesterday</date>", QMetaType::QDateTime, QDateTime());
}

void tst_PListParser::types()
{
    QFETCH(QByteArray, baElement);
    QFETCH(QMetaType::Type, enType);
    QFETCH(QVariant, expected);
    CLogCapture capture;
    const QVariant value = ParseValue(baElement);
    QCOMPARE(int(value.type()), int(enType));
    QCOMPARE(value, expected);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParser::unknownTag_data()
{
    QTest::addColumn<QByteArray>("baElement");
    QTest::addColumn<QString>("strName");
    QTest::newRow("other name") << QByteArray("<uid>3</uid>") << QStringLiteral("uid");
    QTest::newRow("other case") << QByteArray("<String>a</String>") << QStringLiteral("String");
    QTest::newRow("key outside a dict") << QByteArray("<key>a</key>") << QStringLiteral("key");
    QTest::newRow("prefix") << QByteArray("<p:string>a</p:string>") << QStringLiteral("p:string");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("text") << QByteArray("USB") << QString();
}

void tst_PListParser::unknownTag()
{
    QFETCH(QByteArray, baElement);
    QFETCH(QString, strName);
    CLogCapture capture;
    QVERIFY(!ParseValue(baElement).isValid());
    QCOMPARE(capture.Lines(),
             QStringList{QStringLiteral("PListParser Warning: Invalid tag found: ") + strName});
}

void tst_PListParser::unknownTagInArrayIsAnEntry()
{
    CLogCapture capture;
    const QVariantList list = ParseValue("<array><string>a</string><uid/><true/></array>").toList();
    QCOMPARE(list, (QVariantList{QStringLiteral("a"), QVariant(), true}));
    QCOMPARE(capture.Lines(), QStringList{QStringLiteral("PListParser Warning: Invalid tag found: uid")});
}

void tst_PListParser::diskutilAnswer()
{
    CLogCapture capture;
    const QVariantMap map
        = ParseValue("<dict>\n\t<key>BusProtocol</key>\n\t<string>USB</string>\n"
                     "\t<key>Ejectable</key>\n\t<true/>\n"
                     "\t<key>TotalSize</key>\n\t<integer>15931539456</integer>\n"
                     "\t<key>SMARTStatus</key>\n\t<dict>\n\t\t<key>a</key>\n\t\t<array/>\n\t</dict>\n"
                     "</dict>")
              .toMap();
    QCOMPARE(map.keys(),
             (QStringList{QStringLiteral("BusProtocol"), QStringLiteral("Ejectable"),
                          QStringLiteral("SMARTStatus"), QStringLiteral("TotalSize")}));
    QCOMPARE(map.value(QStringLiteral("BusProtocol")).toString(), QStringLiteral("USB"));
    QCOMPARE(map.value(QStringLiteral("Ejectable")), QVariant(true));
    QCOMPARE(map.value(QStringLiteral("SMARTStatus")),
             QVariant(QVariantMap{{QStringLiteral("a"), QVariantList()}}));
    QCOMPARE(map.value(QStringLiteral("TotalSize")), QVariant(0));
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParser::dict_data()
{
    QTest::addColumn<QByteArray>("baInner");
    QTest::addColumn<QVariantMap>("mapExpected");
    const QString k = QStringLiteral("k");
    QTest::newRow("value before the first key, two values for one key")
        << QByteArray("<string>a</string><key>k</key><integer>1</integer><integer>2</integer>")
        << QVariantMap{{k, 2}};
    QTest::newRow("repeated key keeps the last value")
        << QByteArray("<key>k</key><integer>1</integer><key>k</key><integer>2</integer>")
        << QVariantMap{{k, 2}};
    QTest::newRow("value behind an empty key is dropped")
        << QByteArray("<key>k</key><integer>1</integer><key></key><integer>2</integer>")
        << QVariantMap{{k, 1}};
    QTest::newRow("key without value") << QByteArray("<key>k</key>") << QVariantMap();
    QTest::newRow("key right behind a key")
        << QByteArray("<key>a</key><key>k</key><integer>1</integer>") << QVariantMap{{k, 1}};
    QTest::newRow("comments and text between")
        << QByteArray("<!-- c --><key>k</key>text<!-- c --><integer>1</integer>") << QVariantMap{{k, 1}};
    QTest::newRow("comments and text behind the value")
        << QByteArray("<key>k</key><integer>1</integer>text<!-- c -->") << QVariantMap{{k, 1}};
    QTest::newRow("keys with blanks, other case and markup")
        << QByteArray("<key> K </key><true/><key>&lt;b&gt;%1</key><false/>")
        << QVariantMap{{QStringLiteral(" K "), true}, {QStringLiteral("<b>%1"), false}};
    QTest::newRow("unknown value is an invalid entry")
        << QByteArray("<key>k</key><uid/>") << QVariantMap{{k, QVariant()}};
    QTest::newRow("dict in a dict") << QByteArray("<key>k</key><dict><key>k</key><true/></dict>")
                                    << QVariantMap{{k, QVariantMap{{k, true}}}};
}

void tst_PListParser::dict()
{
    QFETCH(QByteArray, baInner);
    const QVariant value = ParseValue("<dict>" + baInner + "</dict>");
    QCOMPARE(value.type(), QVariant::Map);
    QTEST(value.toMap(), "mapExpected");
}

void tst_PListParser::array_data()
{
    QTest::addColumn<QByteArray>("baInner");
    QTest::addColumn<QVariantList>("listExpected");
    QTest::newRow("document order") << QByteArray(
        "<integer>3</integer><integer>1</integer><integer>2</integer>")
                                    << QVariantList{3, 1, 2};
    QTest::newRow("comments and text between are skipped")
        << QByteArray("text<integer>1</integer><!-- c -->text<integer>2</integer>") << QVariantList{1, 2};
    QTest::newRow("arrays inside stay entries")
        << QByteArray("<array><integer>1</integer></array><array/>")
        << QVariantList{QVariant(QVariantList{1}), QVariant(QVariantList())};
    QTest::newRow("mixed types") << QByteArray("<string>1</string><integer>1</integer><true/>")
                                 << QVariantList{QStringLiteral("1"), 1, true};
}

void tst_PListParser::array()
{
    QFETCH(QByteArray, baInner);
    const QVariant value = ParseValue("<array>" + baInner + "</array>");
    QCOMPARE(value.type(), QVariant::List);
    QTEST(value.toList(), "listExpected");
}

void tst_PListParser::version_data()
{
    QTest::addColumn<QByteArray>("baTop");
    QTest::addColumn<bool>("bKnown");
    QTest::newRow("1.0") << QByteArray("plist version=\"1.0\"") << true;
    QTest::newRow("missing") << QByteArray("plist") << false;
    QTest::newRow("empty") << QByteArray("plist version=\"\"") << false;
    QTest::newRow("1.00") << QByteArray("plist version=\"1.00\"") << false;
    QTest::newRow("blank in front") << QByteArray("plist version=\" 1.0\"") << false;
    QTest::newRow("2.0") << QByteArray("plist version=\"2.0\"") << false;
    QTest::newRow("the top element's name is not checked") << QByteArray("list version=\"1.0\"") << true;
}

void tst_PListParser::version()
{
    QFETCH(QByteArray, baTop);
    QFETCH(bool, bKnown);
    CLogCapture capture;
    const QByteArray baName = baTop.split(' ').first();
    QCOMPARE(Parse("<" + baTop + "><string>a</string></" + baName + ">"), QVariant(QStringLiteral("a")));
    QCOMPARE(capture.Lines(), bKnown ? QStringList() : QStringList{QString::fromLatin1(UNKNOWN_VERSION)});
}

void tst_PListParser::firstChild_data()
{
    QTest::addColumn<QByteArray>("baInner");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("what follows the first value is ignored")
        << QByteArray("<integer>1</integer><integer>2</integer>") << QVariant(1);
    QTest::newRow("blanks before it are no child") << QByteArray(" \n\t<integer>1</integer>") << QVariant(1);
    QTest::newRow("comment first") << QByteArray("<!-- c --><integer>1</integer>") << QVariant();
    QTest::newRow("comment behind") << QByteArray("<integer>1</integer><!-- c -->") << QVariant(1);
}

void tst_PListParser::firstChild()
{
    QFETCH(QByteArray, baInner);
    QFETCH(QVariant, expected);
    CLogCapture capture;
    QCOMPARE(ParseValue(baInner), expected);
    QCOMPARE(capture.Lines(),
             expected.isValid() ? QStringList()
                                : QStringList{QStringLiteral("PListParser Warning: Invalid tag found: ")});
}

void tst_PListParser::malformed_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blanks") << QByteArray("  \n ");
    QTest::newRow("plain text") << QByteArray("Could not find disk: /dev/sdz");
    QTest::newRow("binary property list") << QByteArray("bplist00\xd1\x01\x02", 11);
    QTest::newRow("cut short") << QByteArray("<plist version=\"1.0\"><dict><key>BusProt");
    QTest::newRow("wrong end") << QByteArray("<plist><dict></plist></dict>");
    QTest::newRow("two tops") << QByteArray("<plist/><plist/>");
    QTest::newRow("bare ampersand") << QByteArray("<plist><string>a & b</string></plist>");
    QTest::newRow("unknown entity end") << QByteArray("<plist><string>&a</string></plist>");
    QTest::newRow("attribute without quotes") << QByteArray("<plist version=1.0><string/></plist>");
    QTest::newRow("open quote") << QByteArray("<plist version=\"1.0><string/></plist>");
    QTest::newRow("open comment") << QByteArray("<plist><!-- <string/></plist>");
    QTest::newRow("lone bracket") << QByteArray("<");
    QTest::newRow("text around it") << QByteArray(
        "Warning: slow disk\n<plist version=\"1.0\"><true/></plist>");
}

void tst_PListParser::malformed()
{
    QFETCH(QByteArray, baText);
    QDomDocument document;
    QString strMessage;
    int nLine = 0;
    int nColumn = 0;
    QBuffer buffer(&baText);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    QVERIFY(!document.setContent(&buffer, false, &strMessage, &nLine, &nColumn));

    CLogCapture capture;
    QVERIFY(!Parse(baText).isValid());
    QCOMPARE(capture.Lines(),
             (QStringList{QString::fromLatin1(NO_PARSE), QStringLiteral("Error message: ") + strMessage,
                          QStringLiteral("Error line: ") + QString::number(nLine),
                          QStringLiteral("Error column: ") + QString::number(nColumn)}));
}

void tst_PListParser::devices()
{
    const QByteArray baText("<plist version=\"1.0\"><string>a</string></plist>");
    QBuffer buffer;
    buffer.setData(baText);
    QCOMPARE(PListParser::parsePList(&buffer), QVariant(QStringLiteral("a")));

    QTemporaryFile file;
    QVERIFY(file.open());
    QCOMPARE(file.write(baText), qint64(baText.size()));
    QVERIFY(file.seek(0));
    QCOMPARE(PListParser::parsePList(&file), QVariant(QStringLiteral("a")));

    CLogCapture capture;
    QVERIFY(!PListParser::parsePList(nullptr).isValid());
    QFile missing(QStringLiteral("/nowhere/list.plist"));
    QVERIFY(!PListParser::parsePList(&missing).isValid());
    QCOMPARE(capture.Lines().filter(QString::fromLatin1(NO_PARSE)).size(), 2);
    QCOMPARE(capture.Lines().size(), 8);
}

void tst_PListParser::encodings_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strExpected");
    const QString strText = QStringLiteral("<plist version=\"1.0\"><string>ü中</string></plist>");
    const auto utf16 = [&strText](bool bBig) {
        QByteArray baText = bBig ? QByteArray("\xFE\xFF") : QByteArray("\xFF\xFE");
        for (const QChar ch : strText) {
            baText += char(bBig ? ch.row() : ch.cell());
            baText += char(bBig ? ch.cell() : ch.row());
        }
        return baText;
    };
    QTest::newRow("UTF-8, not declared") << strText.toUtf8() << QStringLiteral("ü中");
    QTest::newRow("UTF-8 with byte-order mark") << "\xEF\xBB\xBF" + strText.toUtf8() << QStringLiteral("ü中");
    QTest::newRow("UTF-16, big end first") << utf16(true) << QStringLiteral("ü中");
    QTest::newRow("UTF-16, little end first") << utf16(false) << QStringLiteral("ü中");
    QTest::newRow("Latin-1, declared")
        << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist version=\"1.0\">"
                      "<string>\xFC</string></plist>")
        << QStringLiteral("ü");
    QTest::newRow("no such encoding") << QByteArray(
        "<?xml version='1.0' encoding='x-none'?><plist version=\"1.0\"><string>ü</string></plist>")
                                      << QStringLiteral("ü");
    QTest::newRow("bytes that are no UTF-8") << QByteArray("<plist version=\"1.0\"><string>a\xFF"
                                                           "b</string></plist>")
                                             << QStringLiteral("a\uFFFDb");
}

void tst_PListParser::encodings()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strExpected);
    CLogCapture capture;
    QCOMPARE(Parse(baText), QVariant(strExpected));
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParser::nesting_data()
{
    QTest::addColumn<QByteArray>("baElement");
    QTest::addColumn<int>("nDepth");
    QTest::newRow("256 arrays are read") << Nested("array", 256) << 256;
    QTest::newRow("255 arrays with a value are read") << Nested("array", 255, "<true/>") << 255;
    QTest::newRow("257 arrays are not") << Nested("array", 257) << 0;
    QTest::newRow("256 arrays with a value are not") << Nested("array", 256, "<true/>") << 0;
    QTest::newRow("257 unknown elements are not") << Nested("x", 257) << 0;
    QTest::newRow("deep inside a string") << Nested("string", 257) << 0;
    QTest::newRow("far too deep") << Nested("array", 100000) << 0;
    QTest::newRow("deep dicts") << Nested("dict", 1000) << 0;
    QTest::newRow("deep behind an empty element with a slash in a quote")
        << QByteArray("<array><a b='/>'></a>") + Nested("array", 256) + "</array>" << 0;
    QTest::newRow("deep behind a comment") << QByteArray("<!-- > -->") + Nested("array", 257) << 0;
}

void tst_PListParser::nesting()
{
    QFETCH(QByteArray, baElement);
    QFETCH(int, nDepth);
    CLogCapture capture;
    const QVariant value = ParseValue(baElement);
    QCOMPARE(value.isValid(), nDepth > 0);
    if (nDepth > 0) {
        QCOMPARE(Depth(value), nDepth);
        QCOMPARE(capture.Lines(), QStringList());
        return;
    }
    QCOMPARE(capture.Lines().size(), 4);
    QCOMPARE(capture.Lines().at(0), QString::fromLatin1(NO_PARSE));
    QCOMPARE(capture.Lines().at(1), QStringLiteral("Error message: nested deeper than 256 elements"));
    QCOMPARE(capture.Lines().at(2), QStringLiteral("Error line: 4"));
}

void tst_PListParser::markupThatIsNoNesting_data()
{
    QTest::addColumn<QByteArray>("baInner");
    QTest::newRow("siblings") << QByteArray("<string>a</string>").repeated(1000);
    QTest::newRow("empty elements") << QByteArray("<true/>").repeated(1000);
    QTest::newRow("empty elements with attributes") << QByteArray("<true a='>' b=\"/\" />").repeated(1000);
    QTest::newRow("tags in comments") << "<!--" + QByteArray("<array>").repeated(1000) + "-->";
    QTest::newRow("tags in CDATA") << "<string><![CDATA[" + QByteArray("<array>").repeated(1000)
            + "]]></string>";
    QTest::newRow("declarations in CDATA")
        << QByteArray("<string><![CDATA[<!DOCTYPE a [<!ENTITY b 'c'>]>]]></string>");
    QTest::newRow("instructions") << QByteArray("<?array <a> ?>").repeated(1000);
    QTest::newRow("quotes in text") << QByteArray("<string>it's 5\" long</string>").repeated(1000);
}

void tst_PListParser::markupThatIsNoNesting()
{
    QFETCH(QByteArray, baInner);
    CLogCapture capture;
    QCOMPARE(ParseValue("<array>" + baInner + "</array>").type(), QVariant::List);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParser::declarations_data()
{
    QTest::addColumn<QByteArray>("baText");
    const QByteArray baList("<plist version=\"1.0\"><string>&a;</string></plist>");
    QTest::newRow("entity") << "<!DOCTYPE plist [<!ENTITY a \"b\">]>" + baList;
    QTest::newRow("entity from a file")
        << "<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>" + baList;
    QTest::newRow("parameter entity") << "<!DOCTYPE plist [<!ENTITY % a \"b\"> %a;]>" + baList;
    QTest::newRow("content model") << "<!DOCTYPE plist [<!ELEMENT plist (string)>]>" + baList;
    QTest::newRow("behind the public name")
        << "<!DOCTYPE plist PUBLIC \"a[b\" 'c>d' [<!ENTITY a \"b\">]>" + baList;
    QTest::newRow("behind a comment") << "<!-- <! --><?a ?>\n<!DOCTYPE plist [ ]>" + baList;
}

void tst_PListParser::declarations()
{
    QFETCH(QByteArray, baText);
    CLogCapture capture;
    QVERIFY(!Parse(baText).isValid());
    QCOMPARE(capture.Lines().size(), 4);
    QCOMPARE(capture.Lines().at(0), QString::fromLatin1(NO_PARSE));
    QCOMPARE(capture.Lines().at(1),
             QStringLiteral("Error message: declarations inside the document are not read"));
}

void tst_PListParser::size_data()
{
    QTest::addColumn<int>("nBytes");
    QTest::addColumn<bool>("bRead");
    QTest::newRow("4 MiB are read") << 4 * 1024 * 1024 << true;
    QTest::newRow("one byte more is not") << 4 * 1024 * 1024 + 1 << false;
}

void tst_PListParser::size()
{
    QFETCH(int, nBytes);
    QFETCH(bool, bRead);
    const QByteArray baBegin("<plist version=\"1.0\"><string>");
    const QByteArray baEnd("</string></plist>");
    const int nFill = nBytes - baBegin.size() - baEnd.size();
    CLogCapture capture;
    QCOMPARE(Parse(baBegin + QByteArray(nFill, 'a') + baEnd).toString().size(), bRead ? nFill : 0);
    QCOMPARE(capture.Lines(),
             bRead ? QStringList()
                   : (QStringList{QString::fromLatin1(NO_PARSE),
                                  QStringLiteral("Error message: larger than 4194304 bytes"),
                                  QStringLiteral("Error line: 1"), QStringLiteral("Error column: 1")}));
}

void tst_PListParser::hostileInputIsAnsweredAtOnce_data()
{
    QTest::addColumn<QByteArray>("baText");
    static const int MEGABYTES = 20 * 1000 * 1000;
    static const int MOST = 4 * 1024 * 1024 - 100;
    const QByteArray baBegin("<plist version=\"1.0\">");
    QTest::newRow("letters") << QByteArray(MEGABYTES, 'A');
    QTest::newRow("zero bytes") << QByteArray(MEGABYTES, '\0');
    QTest::newRow("brackets") << QByteArray(MEGABYTES, '<');
    QTest::newRow("one long text") << baBegin + "<string>" + QByteArray(MEGABYTES, 'A') + "</string></plist>";
    QTest::newRow("open arrays") << QByteArray("<array>").repeated(MEGABYTES / 7);
    // What is just small enough to be looked at.
    QTest::newRow("brackets, within the bound") << QByteArray(MOST, '<');
    QTest::newRow("open arrays, within the bound") << QByteArray("<array>").repeated(MOST / 7);
    QTest::newRow("ends, within the bound") << QByteArray("</a>").repeated(MOST / 4);
    QTest::newRow("open comments, within the bound") << baBegin + QByteArray("<!-- ").repeated(MOST / 6);
    QTest::newRow("open CDATA, within the bound") << baBegin + QByteArray("<![CDATA[").repeated(MOST / 10);
    QTest::newRow("open quotes, within the bound") << baBegin + QByteArray("<a b='<").repeated(MOST / 8);
    QTest::newRow("attributes, within the bound") << "<plist" + QByteArray(" a='b'").repeated(MOST / 7);
    QTest::newRow("unknown siblings, within the bound") << baBegin + QByteArray("<a/>").repeated(MOST / 4);
    QByteArray baLaughs("<!DOCTYPE plist [<!ENTITY a0 \"ha\">");
    for (int i = 1; i < 10; ++i) {
        const QByteArray baReference = "&a" + QByteArray::number(i - 1) + ";";
        baLaughs += "<!ENTITY a" + QByteArray::number(i) + " \"" + baReference.repeated(10) + "\">";
    }
    QTest::newRow("a billion laughs") << baLaughs + "]>" + baBegin + "<string>&a9;</string></plist>";
    QTest::newRow("one long entity, many times") << "<!DOCTYPE plist [<!ENTITY a \"" + QByteArray(4000, 'x')
            + "\">]>" + baBegin + "<string>" + QByteArray("&a;").repeated(1000000) + "</string></plist>";
    QTest::newRow("content model without end") << "<!DOCTYPE plist [<!ELEMENT plist "
            + QByteArray(1000000, '(') + "]>" + baBegin + "<true/></plist>";
}

void tst_PListParser::hostileInputIsAnsweredAtOnce()
{
    QFETCH(QByteArray, baText);
    CLogCapture capture;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!Parse(baText).isValid());
    // Some tenths of a second here; the bound leaves room for sanitizers and busy machines.
    QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
    QVERIFY(capture.Has(QString::fromLatin1(NO_PARSE)));
    QCOMPARE(capture.Lines().size(), 4);
}

QTEST_GUILESS_MAIN(tst_PListParser)
#include "tst_PListParser.moc"
