#include "settings/PListParser.h"
#include "support/CLogCapture.h"

#include <QBuffer>
#include <QDomDocument>
#include <QTemporaryFile>
#include <QtTest>

static const QByteArray HEAD = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n";
static const QString NO_PARSE = "PListParser Warning: Could not parse PList file!";
static const QString UNKNOWN_VERSION
    = "PListParser Warning: plist is using an unknown format version, parsing might fail unexpectedly";
static const QString INVALID_TAG = "PListParser Warning: Invalid tag found: ";

static QVariant Parse(QByteArray baText)
{
    QBuffer buffer(&baText);
    buffer.open(QIODevice::ReadOnly);
    return PListParser::parsePList(&buffer);
}

// A whole property list around one element, which begins on line 4.
static QByteArray List(const QByteArray& baElement)
{
    return HEAD + "<plist version=\"1.0\">\n" + baElement + "\n</plist>\n";
}

static QByteArray Nested(const QByteArray& baTag, int nLevels, const QByteArray& baInner = QByteArray())
{
    return QByteArray("<" + baTag + ">").repeated(nLevels) + baInner
        + QByteArray("</" + baTag + ">").repeated(nLevels);
}

// What so many arrays in one another are read as.
static QVariant InLists(int nLevels, const QVariantList& listInner)
{
    QVariantList list = listInner;
    for (; nLevels > 1; --nLevels) {
        list = QVariantList{QVariant(list)};
    }
    return list;
}

class tst_PListParser : public QObject
{
    Q_OBJECT

private slots:
    void values_data();
    void values();
    void diskutilAnswer();
    void version_data();
    void version();
    void devices();
    void encodings_data();
    void encodings();
    void markupThatIsNoNesting_data();
    void markupThatIsNoNesting();

    void malformed_data();
    void malformed();
    void refused_data();
    void refused();
    void size();
};

// The element, its value with its type, and the name that is warned of, if any.
void tst_PListParser::values_data()
{
    QTest::addColumn<QByteArray>("baElement");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<QStringList>("listUnknown");
    const auto row = [](const char* pName, const QByteArray& baElement, const QVariant& expected,
                        const QStringList& listUnknown = {}) {
        QTest::newRow(pName) << baElement << expected << listUnknown;
    };
    const auto dict = [row](const char* pName, const QByteArray& baInner, const QVariantMap& map,
                            const QStringList& listUnknown = {}) {
        row(pName, "<dict>" + baInner + "</dict>", map, listUnknown);
    };
    const auto array = [row](const char* pName, const QByteArray& baInner, const QVariantList& list,
                             const QStringList& listUnknown = {}) {
        row(pName, "<array>" + baInner + "</array>", list, listUnknown);
    };

    row("string", "<string>USB</string>", "USB");
    row("string, empty", "<string/>", QString());
    row("string, escaped", "<string>&lt;b&gt; &amp; &#x4E2D;&#10;x</string>", "<b> & 中\nx");
    row("string, blanks kept", "<string> a  b </string>", " a  b ");
    row("string, CDATA", "<string><![CDATA[<b>]]></string>", "<b>");
    row("data", "<data>aGVsbG8=</data>", QByteArray("hello"));
    row("data, wrapped", "<data>\n\taGVs\n\tbG8=\n</data>", QByteArray("hello"));
    row("data, invalid Base64", "<data>a!b?%c=</data>", QByteArray::fromBase64("a!b?%c="));
    row("data, empty", "<data/>", QByteArray());
    row("integer", "<integer>42</integer>", 42);
    row("integer, negative", "<integer>-42</integer>", -42);
    row("integer, largest", "<integer>2147483647</integer>", 2147483647);
    row("integer, one too large", "<integer>2147483648</integer>", 0);
    row("integer, 4294967296", "<integer>4294967296</integer>", 0);
    row("integer, blanks around", "<integer> 7 </integer>", 7);
    row("integer, base 10 only", "<integer>0x10</integer>", 0);
    row("integer, leading zero is not octal", "<integer>010</integer>", 10);
    row("integer, no number", "<integer>seven</integer>", 0);
    row("integer, empty", "<integer/>", 0);
    row("real", "<real>2.5</real>", 2.5F);
    row("real, single precision", "<real>0.1234567890123</real>", 0.1234567890123F);
    row("real, exponent", "<real>1e3</real>", 1000.0F);
    row("real, decimal comma", "<real>1,5</real>", 0.0F);
    row("real, no number", "<real>pi</real>", 0.0F);
    row("true", "<true/>", true);
    row("false", "<false/>", false);
    row("date", "<date>2026-11-16T12:30:45Z</date>",
        QDateTime(QDate(2026, 11, 16), QTime(12, 30, 45), Qt::UTC));
    row("date, day alone", "<date>2026-11-16</date>", QDateTime(QDate(2026, 11, 16), QTime(0, 0)));
    row("date, none", "<date>yesterday</date>", QDateTime());

    row("other name", "<uid>3</uid>", QVariant(), {"uid"});
    row("other case", "<String>a</String>", QVariant(), {"String"});
    row("key outside a dict", "<key>a</key>", QVariant(), {"key"});
    row("prefix", "<p:string>a</p:string>", QVariant(), {"p:string"});
    row("nothing", "", QVariant(), {""});
    row("text", "USB", QVariant(), {""});
    row("what follows the first value is ignored", "<integer>1</integer><integer>2</integer>", 1);
    row("blanks before it are no child", " \n\t<integer>1</integer>", 1);
    row("comment first", "<!-- c --><integer>1</integer>", QVariant(), {""});
    row("comment behind", "<integer>1</integer><!-- c -->", 1);

    dict("dict", "<key>k</key><string>v</string>", {{"k", "v"}});
    row("dict, empty", "<dict/>", QVariantMap());
    dict("value before the first key, two values for one key",
         "<string>a</string><key>k</key><integer>1</integer><integer>2</integer>", {{"k", 2}});
    dict("repeated key keeps the last value",
         "<key>k</key><integer>1</integer><key>k</key><integer>2</integer>", {{"k", 2}});
    dict("value behind an empty key is dropped",
         "<key>k</key><integer>1</integer><key></key><integer>2</integer>", {{"k", 1}});
    dict("key without value", "<key>k</key>", {});
    dict("key right behind a key", "<key>a</key><key>k</key><integer>1</integer>", {{"k", 1}});
    dict("comments and text between", "<!-- c --><key>k</key>text<!-- c --><integer>1</integer>", {{"k", 1}});
    dict("comments and text behind the value", "<key>k</key><integer>1</integer>text<!-- c -->", {{"k", 1}});
    dict("keys with blanks, other case and markup", "<key> K </key><true/><key>&lt;b&gt;%1</key><false/>",
         {{" K ", true}, {"<b>%1", false}});
    dict("unknown value is an invalid entry", "<key>k</key><uid/>", {{"k", QVariant()}}, {"uid"});
    dict("dict in a dict", "<key>k</key><dict><key>k</key><true/></dict>", {{"k", QVariantMap{{"k", true}}}});

    row("array, empty", "<array></array>", QVariantList());
    array("document order", "<integer>3</integer><integer>1</integer><integer>2</integer>", {3, 1, 2});
    array("comments and text between are skipped",
          "text<integer>1</integer><!-- c -->text<integer>2</integer>", {1, 2});
    array("arrays inside stay entries", "<array><integer>1</integer></array><array/>",
          {QVariant(QVariantList{1}), QVariant(QVariantList())});
    array("mixed types", "<string>1</string><integer>1</integer><true/>", {"1", 1, true});
    array("unknown tag is an entry", "<string>a</string><uid/><true/>", {"a", QVariant(), true}, {"uid"});
    row("256 arrays are read", Nested("array", 256), InLists(256, {}));
    row("255 arrays with a value are read", Nested("array", 255, "<true/>"), InLists(255, {true}));
}

void tst_PListParser::values()
{
    QFETCH(QByteArray, baElement);
    QFETCH(QVariant, expected);
    QFETCH(QStringList, listUnknown);
    CLogCapture capture;
    const QVariant value = Parse(List(baElement));
    QCOMPARE(int(value.type()), int(expected.type()));
    QCOMPARE(value, expected);
    QCOMPARE(capture.Lines(), listUnknown.replaceInStrings(QRegularExpression("^"), INVALID_TAG));
}

void tst_PListParser::diskutilAnswer()
{
    CLogCapture capture;
    const QVariantMap map
        = Parse(List("<dict>\n\t<key>BusProtocol</key>\n\t<string>USB</string>\n"
                     "\t<key>Ejectable</key>\n\t<true/>\n"
                     "\t<key>TotalSize</key>\n\t<integer>15931539456</integer>\n"
                     "\t<key>SMARTStatus</key>\n\t<dict>\n\t\t<key>a</key>\n\t\t<array/>\n\t</dict>\n"
                     "</dict>"))
              .toMap();
    QCOMPARE(map.keys(), QStringList({"BusProtocol", "Ejectable", "SMARTStatus", "TotalSize"}));
    QCOMPARE(map.value("BusProtocol").toString(), "USB");
    QCOMPARE(map.value("Ejectable"), QVariant(true));
    QCOMPARE(map.value("SMARTStatus"), QVariant(QVariantMap{{"a", QVariantList()}}));
    QCOMPARE(map.value("TotalSize"), QVariant(0));
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParser::version_data()
{
    QTest::addColumn<QByteArray>("baVersion");
    QTest::addColumn<bool>("bKnown");
    QTest::newRow("1.0") << QByteArray(" version=\"1.0\"") << true;
    QTest::newRow("missing") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray(" version=\"\"") << false;
    QTest::newRow("1.00") << QByteArray(" version=\"1.00\"") << false;
    QTest::newRow("blank in front") << QByteArray(" version=\" 1.0\"") << false;
    QTest::newRow("2.0") << QByteArray(" version=\"2.0\"") << false;
}

void tst_PListParser::version()
{
    QFETCH(QByteArray, baVersion);
    QFETCH(bool, bKnown);
    // The top element's name is not checked.
    for (const QByteArray baName : {"plist", "list"}) {
        CLogCapture capture;
        QCOMPARE(Parse("<" + baName + baVersion + "><string>a</string></" + baName + ">"), QVariant("a"));
        QCOMPARE(capture.Lines(), bKnown ? QStringList() : QStringList{UNKNOWN_VERSION});
    }
}

void tst_PListParser::devices()
{
    const QByteArray baText("<plist version=\"1.0\"><string>a</string></plist>");
    QBuffer buffer;
    buffer.setData(baText);
    QCOMPARE(PListParser::parsePList(&buffer), QVariant("a"));

    QTemporaryFile file;
    QVERIFY(file.open());
    QCOMPARE(file.write(baText), qint64(baText.size()));
    QVERIFY(file.seek(0));
    QCOMPARE(PListParser::parsePList(&file), QVariant("a"));

    CLogCapture capture;
    QVERIFY(!PListParser::parsePList(nullptr).isValid());
    QFile missing("/nowhere/list.plist");
    QVERIFY(!PListParser::parsePList(&missing).isValid());
    QCOMPARE(capture.Lines().filter(NO_PARSE).size(), 2);
    QCOMPARE(capture.Lines().size(), 8);
}

void tst_PListParser::encodings_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strExpected");
    const QString strText = "<plist version=\"1.0\"><string>ü中</string></plist>";
    const auto utf16 = [&strText](bool bBig) {
        QByteArray baText = bBig ? QByteArray("\xFE\xFF") : QByteArray("\xFF\xFE");
        for (const QChar ch : strText) {
            baText += char(bBig ? ch.row() : ch.cell());
            baText += char(bBig ? ch.cell() : ch.row());
        }
        return baText;
    };
    QTest::newRow("UTF-8, not declared") << strText.toUtf8() << "ü中";
    QTest::newRow("UTF-8 with byte-order mark") << "\xEF\xBB\xBF" + strText.toUtf8() << "ü中";
    QTest::newRow("UTF-16, big end first") << utf16(true) << "ü中";
    QTest::newRow("UTF-16, little end first") << utf16(false) << "ü中";
    QTest::newRow("Latin-1, declared")
        << QByteArray("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><plist version=\"1.0\">"
                      "<string>\xFC</string></plist>")
        << "ü";
    QTest::newRow("no such encoding") << QByteArray(
        "<?xml version='1.0' encoding='x-none'?><plist version=\"1.0\"><string>ü</string></plist>")
                                      << "ü";
    QTest::newRow("bytes that are no UTF-8") << QByteArray("<plist version=\"1.0\"><string>a\xFF"
                                                           "b</string></plist>")
                                             << "a\uFFFDb";
}

void tst_PListParser::encodings()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strExpected);
    CLogCapture capture;
    QCOMPARE(Parse(baText), QVariant(strExpected));
    QCOMPARE(capture.Lines(), QStringList());
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
    QCOMPARE(Parse(List("<array>" + baInner + "</array>")).type(), QVariant::List);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListParser::malformed_data()
{
    QTest::addColumn<QByteArray>("baText");
    const auto row = [](const char* pName, const QByteArray& baText) { QTest::newRow(pName) << baText; };
    row("empty", QByteArray());
    row("blanks", "  \n ");
    row("plain text", "Could not find disk: /dev/sdz");
    row("binary property list", QByteArray("bplist00\xd1\x01\x02", 11));
    row("cut short", "<plist version=\"1.0\"><dict><key>BusProt");
    row("wrong end", "<plist><dict></plist></dict>");
    row("two tops", "<plist/><plist/>");
    row("bare ampersand", "<plist><string>a & b</string></plist>");
    row("unknown entity end", "<plist><string>&a</string></plist>");
    row("attribute without quotes", "<plist version=1.0><string/></plist>");
    row("open quote", "<plist version=\"1.0><string/></plist>");
    row("open comment", "<plist><!-- <string/></plist>");
    row("lone bracket", "<");
    row("two documents", "<plist version=\"1.0\"><true/></plist><plist version=\"1.0\"><true/></plist>");
    row("overlapping elements", "<plist><array><string></array></string></plist>");
    row("text behind the end", "<plist version=\"1.0\"><true/></plist>Segmentation fault");
    row("JSON", "{\"AppleLanguages\": [\"de\"]}");
    row("old-style property list", "{ AppleLanguages = (de, en); }");
    row("half of a UTF-16 character", QByteArray("\xFF\xFE<\0p", 5));
    row("text around it", "Warning: slow disk\n<plist version=\"1.0\"><true/></plist>");
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
             QStringList({NO_PARSE, "Error message: " + strMessage, "Error line: " + QString::number(nLine),
                          "Error column: " + QString::number(nColumn)}));
}

void tst_PListParser::refused_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QString>("strMessage");
    QTest::addColumn<int>("nLine");
    const auto deep = [](const char* pName, const QByteArray& baElement) {
        QTest::newRow(pName) << List(baElement) << "nested deeper than 256 elements" << 4;
    };
    deep("257 arrays", Nested("array", 257));
    deep("256 arrays with a value", Nested("array", 256, "<true/>"));
    deep("257 unknown elements", Nested("x", 257));
    deep("deep inside a string", Nested("string", 257));
    deep("deep dicts", Nested("dict", 1000));
    for (const char* pTag : {"array", "x", "string", "dict"}) {
        deep(pTag, Nested(pTag, 100000));
    }
    deep("dicts with keys", QByteArray("<dict><key>a</key>").repeated(100000));
    deep("deep behind an empty element with a slash in a quote",
         "<array><a b='/>'></a>" + Nested("array", 256) + "</array>");
    deep("deep behind a comment", "<!-- > -->" + Nested("array", 257));

    const auto declared = [](const char* pName, const QByteArray& baHead, int nLine = 1) {
        QTest::newRow(pName) << baHead + "<plist version=\"1.0\"><string>&a;</string></plist>"
                             << "declarations inside the document are not read" << nLine;
    };
    declared("entity", "<!DOCTYPE plist [<!ENTITY a \"b\">]>");
    declared("entity from a file", "<!DOCTYPE plist [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>");
    declared("parameter entity", "<!DOCTYPE plist [<!ENTITY % a \"b\"> %a;]>");
    declared("content model", "<!DOCTYPE plist [<!ELEMENT plist (string)>]>");
    declared("behind the public name", "<!DOCTYPE plist PUBLIC \"a[b\" 'c>d' [<!ENTITY a \"b\">]>");
    declared("behind a comment", "<!-- <! --><?a ?>\n<!DOCTYPE plist [ ]>", 2);
}

void tst_PListParser::refused()
{
    QFETCH(QByteArray, baText);
    QFETCH(QString, strMessage);
    QFETCH(int, nLine);
    CLogCapture capture;
    QVERIFY(!Parse(baText).isValid());
    QCOMPARE(capture.Lines().mid(0, 3),
             QStringList({NO_PARSE, "Error message: " + strMessage, QString("Error line: %1").arg(nLine)}));
    QCOMPARE(capture.Lines().size(), 4);
}

void tst_PListParser::size()
{
    const QByteArray baBegin("<plist version=\"1.0\"><string>");
    const QByteArray baEnd("</string></plist>");
    const QByteArray baMost(4 * 1024 * 1024 - baBegin.size() - baEnd.size(), 'a');
    CLogCapture capture;
    QCOMPARE(Parse(baBegin + baMost + baEnd).toString().size(), baMost.size());
    QCOMPARE(capture.Lines(), QStringList());
    QVERIFY(!Parse(baBegin + baMost + 'a' + baEnd).isValid());
    QCOMPARE(capture.Lines(),
             QStringList(
                 {NO_PARSE, "Error message: larger than 4194304 bytes", "Error line: 1", "Error column: 1"}));
}

QTEST_GUILESS_MAIN(tst_PListParser)
#include "tst_PListParser.moc"
