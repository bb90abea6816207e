#include "files/CUtf8.h"

#include <QTest>

class tst_CUtf8 : public QObject
{
    Q_OBJECT

private slots:
    void first_data();
    void first();
    void everyPairOfBytes();
};

void tst_CUtf8::first_data()
{
    QTest::addColumn<QByteArray>("baBytes");
    QTest::addColumn<int>("nLength");
    QTest::addColumn<uint>("nCode");
    const auto row = [](const char* pszName, const QByteArray& baBytes, int nLength, uint nCode = 0) {
        QTest::newRow(pszName) << baBytes << nLength << nCode;
    };
    row("nothing", "", 0);
    row("zero", QByteArray(1, '\0'), 1, 0);
    row("last of one byte", "\x7f", 1, 0x7f);
    row("what follows is left alone", "a\xff", 1, 'a');
    row("lone continuation", "\x80z", 0);
    row("overlong form of a slash", "\xc0\xaf", 0);
    row("last overlong form of two bytes", "\xc1\xbf", 0);
    row("first of two bytes", "\xc2\x80", 2, 0x80);
    row("last of two bytes", "\xdf\xbf", 2, 0x7ff);
    row("a letter in place of the second", "\xc3(", 0);
    row("the first byte of another in its place", "\xc3\xc3", 0);
    row("overlong form of three bytes", "\xe0\x9f\xbf", 0);
    row("first of three bytes", "\xe0\xa0\x80", 3, 0x800);
    row("a letter in place of the third", "\xe4\xb8z", 0);
    row("end behind the first of three", "\xe4", 0);
    row("end behind the second of three", "\xe4\xb8", 0);
    row("last before the surrogates", "\xed\x9f\xbf", 3, 0xd7ff);
    row("first surrogate", "\xed\xa0\x80", 0);
    row("last surrogate", "\xed\xbf\xbf", 0);
    row("first behind the surrogates", "\xee\x80\x80", 3, 0xe000);
    row("byte order mark", "\xef\xbb\xbf", 3, 0xfeff);
    row("last of three bytes", "\xef\xbf\xbf", 3, 0xffff);
    row("overlong form of four bytes", "\xf0\x8f\xbf\xbf", 0);
    row("first of four bytes", "\xf0\x90\x80\x80", 4, 0x10000);
    row("a letter in place of the fourth", "\xf0\x90\x80z", 0);
    row("end behind the third of four", "\xf0\x90\x80", 0);
    row("last of all", "\xf4\x8f\xbf\xbf", 4, 0x10ffff);
    row("above the last", "\xf4\x90\x80\x80", 0);
    row("far above the last", "\xf5\x80\x80\x80", 0);
    row("no byte of UTF-8", "\xff", 0);
}

void tst_CUtf8::first()
{
    QFETCH(QByteArray, baBytes);
    const STUtf8Character stChar = CUtf8::First(baBytes.constData(), size_t(baBytes.size()));
    QTEST(stChar.nLength, "nLength");
    QTEST(stChar.nCode, "nCode");
    // What is behind the end does not count, though the character would be whole with it.
    for (int nLeft = 0; nLeft < stChar.nLength; ++nLeft) {
        QCOMPARE(CUtf8::First(baBytes.constData(), size_t(nLeft)).nLength, 0);
    }
}

/** Against Qt's decoder, which puts U+FFFD where something is not valid. */
void tst_CUtf8::everyPairOfBytes()
{
    for (int nPair = 0; nPair < 0x10000; ++nPair) {
        // A letter in front, since Qt drops the mark of the byte order at the beginning.
        const char szBytes[] = {'a', char(nPair >> 8), char(nPair), char(0xbf), char(0xbf)};
        const STUtf8Character stChar = CUtf8::First(szBytes + 1, 4);
        const QVector<uint> listCode = QString::fromUtf8(szBytes, sizeof(szBytes)).toUcs4();
        const bool bValid = listCode.at(1) != QChar::ReplacementCharacter || stChar.nCode == 0xfffd;
        if ((stChar.nLength != 0) != bValid || (bValid && stChar.nCode != listCode.at(1))) {
            QFAIL(QByteArray(szBytes, sizeof(szBytes)).toHex().constData());
        }
    }
}

QTEST_APPLESS_MAIN(tst_CUtf8)
#include "tst_CUtf8.moc"
