#include "settings/PListParser.h"
#include "settings/PListSerializer.h"
#include "support/CLogCapture.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QDomDocument>
#include <QRandomGenerator>
#include <QTextCodec>
#include <QTimeZone>
#include <QtTest>

#include <limits>
#include <unistd.h>

static const char PREFERENCES[] = "/Library/Preferences";
static const QByteArray BEGIN = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                "<!DOCTYPE plist PUBLIC '-//Apple//DTD PLIST 1.0//EN' "
                                "'http://www.apple.com/DTDs/PropertyList-1.0.dtd'>\n"
                                "<plist version=\"1.0\">\n";

// The value's element as text on one line; empty for a null element.
static QString ElementText(const QVariant& value)
{
    QDomDocument doc;
    const QDomElement element = PListSerializer::serializeElement(doc, value);
    if (element.isNull()) {
        return QString();
    }
    doc.appendChild(element);
    return doc.toString(-1);
}

// Types and values at every level, so that an int is not taken for an equal float.
static QString Describe(const QVariant& value)
{
    if (!value.isValid()) {
        return "invalid";
    }
    QString strText;
    if (value.type() == QVariant::Map) {
        const QVariantMap map = value.toMap();
        for (auto it = map.cbegin(); it != map.cend(); ++it) {
            strText += '"' + it.key() + "\": " + Describe(it.value()) + ", ";
        }
        return '{' + strText + '}';
    }
    if (value.type() == QVariant::List) {
        for (const QVariant& item : value.toList()) {
            strText += Describe(item) + ", ";
        }
        return '[' + strText + ']';
    }
    if (value.type() == QVariant::DateTime) {
        const QDateTime time = value.toDateTime();
        strText = time.toString(Qt::ISODateWithMs) + QString(" %1").arg(time.timeSpec());
    } else if (value.type() == QVariant::ByteArray) {
        strText = QString::fromLatin1(value.toByteArray().toHex());
    } else {
        strText = value.toString();
    }
    return QLatin1String(value.typeName()) + QString("(%1)").arg(strText);
}

class tst_PListSerializer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void element_data();
    void element();

    void document_data();
    void document();
    void encodingIsTheLocales();

    void roundTrip_data();
    void roundTrip();
    void roundTripOfRandomValues();
    void notTheSameAfterwards_data();
    void notTheSameAfterwards();

    void fileIsReplaced();
    void missingFolder();
    void folderInTheWay();
    void paths_data();
    void paths();

private:
    QVariant ThereAndBack(const QVariant& value);

    QTemporaryDir m_dir;
    QString m_strPath;
    bool m_bMounted = false;
};

void tst_PListSerializer::initTestCase()
{
    QVERIFY(m_dir.isValid());
    m_strPath = m_dir.filePath("list.plist");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

void tst_PListSerializer::init() { QFile::remove(m_strPath); }

void tst_PListSerializer::cleanup()
{
    if (m_bMounted) {
        m_bMounted = !CVolume::Unmount(PREFERENCES);
    }
}

QVariant tst_PListSerializer::ThereAndBack(const QVariant& value)
{
    PListSerializer::WriteRecordPList(value, m_strPath);
    QFile file(m_strPath);
    return PListParser::parsePList(&file);
}

void tst_PListSerializer::element_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("strElement");
    const auto row = [](const char* pName, const QVariant& value, const QString& strElement) {
        QTest::newRow(pName) << value << strElement;
    };
    row("empty map", QVariantMap(), "<dict/>");
    row("map", QVariantMap{{"k", 1}}, "<dict><key>k</key><integer>1</integer></dict>");
    row("keys in order", QVariantMap{{"b", 1}, {"a", 2}, {"B", 3}},
        "<dict><key>B</key><integer>3</integer><key>a</key><integer>2</integer>"
        "<key>b</key><integer>1</integer></dict>");
    row("a key without value stays behind", QVariantMap{{"a", QVariant()}, {"b", 1}},
        "<dict><key>a</key><key>b</key><integer>1</integer></dict>");
    row("empty list", QVariantList(), "<array/>");
    row("list", QVariantList{true, "a"}, "<array><true/><string>a</string></array>");
    row("list in a list", QVariantList{QVariant(QVariantList{1, 2})},
        "<array><array><integer>1</integer><integer>2</integer></array></array>");
    row("a list leaves out what has no element", QVariantList{1, QVariant(), QPoint(), 2},
        "<array><integer>1</integer><integer>2</integer></array>");
    row("true", true, "<true/>");
    row("false", false, "<false/>");
    row("date", QDate(2026, 11, 16), "<date>2026-11-16</date>");
    row("date and time of the locale", QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9, 678)),
        "<date>2026-11-16T14:05:09</date>");
    row("date and time in UTC", QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9), Qt::UTC),
        "<date>2026-11-16T14:05:09Z</date>");
    row("date and time with an offset",
        QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9), Qt::OffsetFromUTC, 5400),
        "<date>2026-11-16T14:05:09+01:30</date>");
    row("invalid date", QDate(), "<date></date>");
    row("bytes", QByteArray("\x00\xFF\x10", 3), "<data>AP8Q</data>");
    row("100 bytes on one line of 136 letters", QByteArray(100, 'x'),
        "<data>" + QString("eHh4").repeated(33) + "eA==</data>");
    row("no bytes", QByteArray(), "<data></data>");
    row("string", "Ünï 日本 😀", "<string>Ünï 日本 😀</string>");
    row("empty string", QString(), "<string></string>");
    row("marks of XML", "<a href=\"b\">&amp;</a> ]]>",
        "<string>&lt;a href=\"b\">&amp;amp;&lt;/a> ]]&gt;</string>");
    row("characters that XML cannot hold", QString("a\u0001b\u001Fc\uFFFEd\uFFFF") + QChar(0xD800) + 'e',
        "<string>abcd\uFFFDe</string>");
    row("int", 42, "<integer>42</integer>");
    row("least int", std::numeric_limits<int>::min(), "<integer>-2147483648</integer>");
    row("greatest int", std::numeric_limits<int>::max(), "<integer>2147483647</integer>");
    row("qint64 1 is a real", qint64(1), "<real>1</real>");
    row("qint64 5000000000", qint64(5000000000), "<real>5e+09</real>");
    row("unsigned", 7U, "<real>7</real>");
    row("quint64", quint64(1234567), "<real>1.23457e+06</real>");
    row("short", QVariant::fromValue<short>(3), "<real>3</real>");
    row("double", 3.14159265, "<real>3.14159</real>");
    row("float", 0.5F, "<real>0.5</real>");
    row("very small double", 1.5e-300, "<real>1.5e-300</real>");
    row("invalid", QVariant(), "");
    row("string list is not a list", QStringList{"a"}, "");
    row("hash is not a map", QVariantHash{{"a", 1}}, "");
    row("time without date", QTime(1, 2, 3), "");
    row("point", QPoint(1, 2), "");
}

void tst_PListSerializer::element()
{
    QFETCH(QVariant, value);
    QTEST(ElementText(value), "strElement");
}

void tst_PListSerializer::document_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("baInside");
    QTest::newRow("empty map") << QVariant(QVariantMap()) << QByteArray(" <dict/>\n");
    QTest::newRow("string") << QVariant("日") << QByteArray(" <string>日</string>\n");
    QTest::newRow("indented") << QVariant(QVariantMap{{"a", QVariantList{1}}})
                              << QByteArray(" <dict>\n  <key>a</key>\n  <array>\n   <integer>1</integer>\n"
                                            "  </array>\n </dict>\n");
}

void tst_PListSerializer::document()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, baInside);
    PListSerializer::WriteRecordPList(value, m_strPath);
    QCOMPARE(Content(m_strPath), BEGIN + baInside + "</plist>\n");
}

void tst_PListSerializer::encodingIsTheLocales()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO-8859-1"));
    PListSerializer::WriteRecordPList("ü", m_strPath);
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QVERIFY2(Content(m_strPath).contains("<string>\xFC</string>"), Content(m_strPath).constData());
}

void tst_PListSerializer::roundTrip_data()
{
    QTest::addColumn<QVariant>("value");
    const auto row = [](const char* pName, const QVariant& value) { QTest::newRow(pName) << value; };
    row("empty map", QVariantMap());
    row("empty list", QVariantList());
    row("true", true);
    row("false", false);
    row("empty string", QString(""));
    row("blanks around", "  a  ");
    row("line breaks", "a\r\nb\nc\rd\te");
    row("marks of XML", "<string>&lt;</string><!-- --> ]]> \"'");
    row("every script", "ß Ж Ω 繁 简 日本 한 ع 😀");
    row("key with marks", QVariantMap{{"<key>&", 1}});
    row("int", -5);
    row("least int", std::numeric_limits<int>::min());
    row("greatest int", std::numeric_limits<int>::max());
    row("float of six digits", 123.456F);
    row("float of a huge size", 1.5e30F);
    row("bytes", QByteArray("\x00\x01\xFE\xFF", 4));
    row("no bytes", QByteArray());
    row("UTC", QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9), Qt::UTC));
    row("offset", QDateTime(QDate(2026, 11, 16), QTime(14, 5, 9), Qt::OffsetFromUTC, -3600));
    row("local time", QDateTime(QDate(2026, 11, 16), QTime(12, 0)));
    row("year 1", QDateTime(QDate(1, 1, 1), QTime(0, 0), Qt::UTC));
}

void tst_PListSerializer::roundTrip()
{
    QFETCH(QVariant, value);
    CLogCapture capture;
    QCOMPARE(Describe(ThereAndBack(value)), Describe(value));
    QCOMPARE(capture.Lines(), QStringList());
}

/** Random values of the kinds that both sides can express. */
class CRandomValue
{
public:
    explicit CRandomValue(quint32 nSeed)
        : m_random(nSeed)
    {
    }

    QVariant Value(int nLevels)
    {
        const QVariant leaves[]
            = {Below(2) == 1, int(m_random.generate()), Below(2000) - 1000, Float(), Bytes(), Time(), Text(0),
               Text(0)};
        const int nKind = Below(nLevels > 0 ? 12 : 8);
        if (nKind < 8) {
            return leaves[nKind];
        }
        return nKind < 10 ? List(nLevels) : Map(nLevels);
    }

private:
    int Below(int nBound) { return int(m_random.bounded(nBound)); }

    // Six decimal digits: what is written, and what a float keeps.
    float Float()
    {
        const QString strDigits
            = QString("%1e%2").arg(QString::number(Below(1999999) - 999999), QString::number(Below(60) - 30));
        return strDigits.toFloat();
    }

    QByteArray Bytes()
    {
        QByteArray baBytes(Below(40), '\0');
        for (char& ch : baBytes) {
            ch = char(Below(256));
        }
        return baBytes;
    }

    QDateTime Time()
    {
        const QDate date = QDate(1, 1, 1).addDays(Below(3652058));
        const QTime time = QTime(0, 0).addSecs(Below(86400));
        return Below(2) == 0 ? QDateTime(date, time, Qt::UTC)
                             : QDateTime(date, time, Qt::OffsetFromUTC, (Below(1680) - 840) * 60);
    }

    // At least one letter unless it may be empty: the reader drops a text of blanks alone.
    QString Text(int nLeast)
    {
        static const QString s_letters = "abcXYZ019 _-.<>&\"'\n\r\téßЖ日繁简한";
        const int nLength = nLeast + Below(12);
        QString strText;
        for (int n = 0; n < nLength; ++n) {
            strText += Below(20) == 0 ? "😀" : QString(s_letters.at(Below(s_letters.size())));
        }
        return strText.trimmed().isEmpty() && !strText.isEmpty() ? "x" : strText;
    }

    QVariant List(int nLevels)
    {
        QVariantList list;
        for (int n = Below(5); n > 0; --n) {
            list.append(Value(nLevels - 1));
        }
        return list;
    }

    QVariant Map(int nLevels)
    {
        QVariantMap map;
        for (int n = Below(5); n > 0; --n) {
            map.insert(Text(1), Value(nLevels - 1));
        }
        return map;
    }

    QRandomGenerator m_random;
};

void tst_PListSerializer::roundTripOfRandomValues()
{
    CLogCapture capture;
    int nNested = 0;
    for (quint32 nSeed = 1; nSeed <= 5000; ++nSeed) {
        const QVariant value = CRandomValue(nSeed).Value(5);
        nNested += value.type() == QVariant::Map || value.type() == QVariant::List ? 1 : 0;
        const QString strBack = Describe(ThereAndBack(value));
        QVERIFY2(strBack == Describe(value),
                 qPrintable(
                     QString("seed %1: %2 became %3").arg(QString::number(nSeed), Describe(value), strBack)));
    }
    QVERIFY(nNested > 1000);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListSerializer::notTheSameAfterwards_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("expected");
    const auto row = [](const char* pName, const QVariant& value, const QVariant& expected) {
        QTest::newRow(pName) << value << expected;
    };
    const auto map = [](const QVariant& value) { return QVariantMap{{"k", value}}; };
    row("qint64 becomes a float", qint64(1), 1.0F);
    row("large qint64 loses digits", qint64(1234567890123), 1.23457e12F);
    row("unsigned becomes a float", 7U, 7.0F);
    row("double becomes a float", 0.5, 0.5F);
    row("double loses digits", 3.14159265358979, 3.14159F);
    row("float keeps six digits", 1.2345678F, 1.23457F);
    row("double outside a float's range", 1e300, std::numeric_limits<float>::infinity());
    row("date becomes its midnight", QDate(2026, 11, 16), QDateTime(QDate(2026, 11, 16), QTime(0, 0)));
    row("milliseconds are dropped", QDateTime(QDate(2026, 11, 16), QTime(1, 2, 3, 456), Qt::UTC),
        QDateTime(QDate(2026, 11, 16), QTime(1, 2, 3), Qt::UTC));
    row("time zone becomes its offset",
        QDateTime(QDate(2026, 11, 16), QTime(1, 2, 3), QTimeZone("Europe/Berlin")),
        QDateTime(QDate(2026, 11, 16), QTime(1, 2, 3), Qt::OffsetFromUTC, 3600));
    row("invalid value", QVariant(), QVariant());
    row("bare key vanishes", map(QVariant()), QVariantMap());
    row("bare key of a string list vanishes", map(QStringList{"en"}), QVariantMap());
    row("value behind a bare key is not its own", QVariantMap{{"a", QVariant()}, {"b", 1}},
        QVariantMap{{"b", 1}});
    row("empty key is dropped", QVariantMap{{QString(), 1}}, QVariantMap());
    row("unsupported list items vanish", QVariantList{1, QVariant(), 2}, QVariantList{1, 2});
    row("blanks alone are dropped", "  \n", QString());
    row("null string becomes an empty one", QString(), QString(""));
    row("control characters vanish", "a\u0007b", "ab");
}

void tst_PListSerializer::notTheSameAfterwards()
{
    QFETCH(QVariant, value);
    QFETCH(QVariant, expected);
    QCOMPARE(Describe(ThereAndBack(value)), Describe(expected));
}

void tst_PListSerializer::fileIsReplaced()
{
    PListSerializer::WriteRecordPList(QString(1000, 'x'), m_strPath);
    const QString strOtherName = m_dir.filePath("other.plist");
    QCOMPARE(::link(QFile::encodeName(m_strPath).constData(), QFile::encodeName(strOtherName).constData()),
             0);
    PListSerializer::WriteRecordPList(true, m_strPath);
    QCOMPARE(Content(m_strPath), BEGIN + " <true/>\n</plist>\n");
    // Emptied and written again, not taken away: its owner, its rights and its other names stay.
    QCOMPARE(Content(strOtherName), Content(m_strPath));
    QVERIFY(QFile::remove(strOtherName));
}

void tst_PListSerializer::missingFolder()
{
    CLogCapture capture;
    PListSerializer::WriteRecordPList(true, m_dir.filePath("missing/list.plist"));
    QVERIFY(!QFileInfo::exists(m_dir.filePath("missing")));
    QCOMPARE(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_PListSerializer::folderInTheWay()
{
    QVERIFY(QDir().mkpath(m_strPath));
    PListSerializer::WriteRecordPList(true, m_strPath);
    QVERIFY(QFileInfo(m_strPath).isDir());
    QVERIFY(QDir().rmdir(m_strPath));
}

void tst_PListSerializer::paths_data()
{
    QTest::addColumn<QString>("strName");
    QTest::newRow("language") << "com.Kelvane.Brisalo.language.plist";
    QTest::newRow("key language") << "com.Kelvane.Brisalo.key.language.plist";
    QTest::newRow("any other") << "list.plist";
}

void tst_PListSerializer::paths()
{
    QFETCH(QString, strName);
    if (!CVolume::Mount("preferences", PREFERENCES)) {
        QSKIP("mounts are not possible here");
    }
    m_bMounted = true;
    const QString strPath = PREFERENCES + ('/' + strName);
    const auto write = [&strName, &strPath](const QVariant& value) {
        if (strName == "list.plist") {
            PListSerializer::WriteRecordPList(value, strPath);
        } else if (strName.contains("key")) {
            PListSerializer::WriteKeyLanguageToPList(value);
        } else {
            PListSerializer::WriteLanguageToPList(value);
        }
    };
    write(QVariantMap{{"AppleLanguages", QVariantList{"zh-Hant-TW"}}});
    const QByteArray baWritten = BEGIN
        + " <dict>\n  <key>AppleLanguages</key>\n  <array>\n   <string>zh-Hant-TW</string>\n"
          "  </array>\n </dict>\n</plist>\n";
    QCOMPARE(Content(strPath), baWritten);
    QCOMPARE(QDir(PREFERENCES).entryList(QDir::Files), QStringList{strName});

    QVERIFY(CVolume::MakeReadOnly(PREFERENCES));
    CLogCapture capture;
    write(true);
    QCOMPARE(Content(strPath), baWritten);
    QCOMPARE(capture.Lines(), QStringList());
}

QTEST_GUILESS_MAIN(tst_PListSerializer)
#include "tst_PListSerializer.moc"
