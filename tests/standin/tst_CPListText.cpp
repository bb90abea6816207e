#include "diskutil/CDiskQuery.h"
#include "diskutil/CPListText.h"
#include "settings/PListParser.h"
#include "support/CLogCapture.h"

#include <QBuffer>
#include <QTest>

static QVariant Parse(const std::string& strText)
{
    QByteArray baText = QByteArray::fromStdString(strText);
    QBuffer buffer(&baText);
    buffer.open(QIODevice::ReadOnly);
    return PListParser::parsePList(&buffer);
}

class tst_CPListText : public QObject
{
    Q_OBJECT

private slots:
    void escape_data();
    void escape();
    void everyByteIsReadable();
    void wholeList();
    void flagsAreFlags_data();
    void flagsAreFlags();
};

void tst_CPListText::escape_data()
{
    QTest::addColumn<QByteArray>("baText");
    QTest::addColumn<QByteArray>("baExpected");
    const QByteArray baBad("\xEF\xBF\xBD");
    const auto row = [](const char* pName, const QByteArray& baText, const QByteArray& baExpected) {
        QTest::newRow(pName) << baText << baExpected;
    };
    row("plain", "My Stick-1_ü中🗂", "My Stick-1_ü中🗂");
    row("empty", "", "");
    row("markup", "<b>&amp;\"'", "&lt;b&gt;&amp;amp;&quot;'");
    row("CDATA end", "]]>", "]]&gt;");
    row("line ends and tab", "a\nb\rc\td", "a&#10;b&#13;c&#9;d");
    row("zero byte", QByteArray("a\0b", 3), "a" + baBad + "b");
    row("control character", "a\x01\x1F", "a" + baBad + baBad);
    row("delete is allowed", "a\x7F", "a\x7F");
    row("lone byte", "a\xFFz", "a" + baBad + "z");
    row("cut short", "a\xE4\xB8", "a" + baBad + baBad);
    row("too long a form of a slash", "\xC0\xAF", baBad + baBad);
    row("surrogate", "\xED\xA0\x80", baBad + baBad + baBad);
    row("no character FFFE", "\xEF\xBF\xBE", baBad);
    row("no character FFFF", "\xEF\xBF\xBF", baBad);
    row("last character", "\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF");
    row("above the last character", "\xF4\x90\x80\x80", baBad + baBad + baBad + baBad);
}

void tst_CPListText::escape()
{
    QFETCH(QByteArray, baText);
    QTEST(QByteArray::fromStdString(CPListText::Escape(baText.toStdString())), "baExpected");
}

void tst_CPListText::everyByteIsReadable()
{
    CLogCapture capture;
    for (int nByte = 0; nByte < 256; ++nByte) {
        STDiskInfo info;
        info.strVolumeName = "a" + std::string(1, char(nByte)) + "z";
        const QString strName = Parse(CPListText::OfDisk(info)).toMap().value("VolumeName").toString();
        QCOMPARE(strName.size(), 3);
        const bool bKept = nByte < 0x80 && (nByte >= 0x20 || nByte == '\t' || nByte == '\n' || nByte == '\r');
        QCOMPARE(strName.at(1), bKept ? QChar(nByte) : QChar(QChar::ReplacementCharacter));
    }
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CPListText::wholeList()
{
    STDiskInfo info;
    info.strNode = "/dev/sdb1";
    info.strIdentifier = "sdb1";
    info.strMountPoint = "/Volumes/<b>\n";
    info.strVolumeName = "<b>\n";
    info.strFilesystem = "vfat";
    info.strBus = "USB";
    info.nTotalSize = 15931539456;
    info.bEjectable = true;
    info.bWritable = true;
    const std::string strText = CPListText::OfDisk(info);
    QVERIFY(strText.find("<integer>15931539456</integer>") != std::string::npos);
    QVERIFY(strText.find("<plist version=\"1.0\">") != std::string::npos);
    info.nTotalSize = 1048576;
    CLogCapture capture;
    const QVariantMap expected = {
        {"BusProtocol", "USB"},           {"DeviceIdentifier", "sdb1"},
        {"DeviceNode", "/dev/sdb1"},      {"Ejectable", true},
        {"FilesystemType", "vfat"},       {"Internal", false},
        {"MountPoint", "/Volumes/<b>\n"}, {"TotalSize", 1048576},
        {"VolumeName", "<b>\n"},          {"WritableVolume", true},
    };
    QCOMPARE(Parse(CPListText::OfDisk(info)).toMap(), expected);
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CPListText::flagsAreFlags_data()
{
    QTest::addColumn<bool>("bInternal");
    QTest::addColumn<bool>("bEjectable");
    QTest::addColumn<bool>("bWritable");
    QTest::newRow("internal") << true << false << false;
    QTest::newRow("ejectable") << false << true << false;
    QTest::newRow("writable") << false << false << true;
}

void tst_CPListText::flagsAreFlags()
{
    STDiskInfo info;
    QFETCH(bool, bInternal);
    QFETCH(bool, bEjectable);
    QFETCH(bool, bWritable);
    info.bInternal = bInternal;
    info.bEjectable = bEjectable;
    info.bWritable = bWritable;
    const QVariantMap map = Parse(CPListText::OfDisk(info)).toMap();
    QCOMPARE(map.value("Internal"), QVariant(bInternal));
    QCOMPARE(map.value("Ejectable"), QVariant(bEjectable));
    QCOMPARE(map.value("WritableVolume"), QVariant(bWritable));
}

QTEST_GUILESS_MAIN(tst_CPListText)
#include "tst_CPListText.moc"
