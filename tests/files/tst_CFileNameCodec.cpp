#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

class tst_CFileNameCodec : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }

    void installedOnce();
    void bytesAndText_data();
    void bytesAndText();
    void everySingleByteSurvives();
    void everyCharacterIsUtf8();
    void randomBytesSurvive();
    void doesNotReadBeyondTheEnd();
    void brokenText_data();
    void brokenText();
    void nothingIsInvalidForQt_data();
    void nothingIsInvalidForQt();
    void qtListsAndOpensSuchNames();
};

void tst_CFileNameCodec::installedOnce()
{
    QTextCodec* pFirst = QTextCodec::codecForLocale();
    QCOMPARE(pFirst->name(), QByteArray("TarnwickFileNames"));
    QVERIFY(pFirst->mibEnum() != 106);
    CFileNameCodec::Install();
    QCOMPARE(QTextCodec::codecForLocale(), pFirst);
}

void tst_CFileNameCodec::bytesAndText_data()
{
    QTest::addColumn<QByteArray>("baBytes");
    QTest::addColumn<QString>("strText");
    const auto row = [](const char* pszName, const char* pszBytes, const QVector<uint>& listCode) {
        QString strText;
        for (const uint nCode : listCode) {
            strText
                += QChar::requiresSurrogates(nCode) ? QString::fromUcs4(&nCode, 1) : QString(QChar(nCode));
        }
        QTest::newRow(pszName) << QByteArray(pszBytes) << strText;
    };
    row("empty", "", {});
    row("ascii", "a b.txt", {'a', ' ', 'b', '.', 't', 'x', 't'});
    row("two bytes", "\xc2\x80", {0x80});
    row("three bytes", "\xef\xbf\xbf", {0xffff});
    row("byte order mark stays", "\xef\xbb\xbfx", {0xfeff, 'x'});
    row("four bytes", "\xf4\x8f\xbf\xbf", {0x10ffff});
    row("pair with an escape's low half", "\xf0\x90\x82\x80", {0x10080});
    row("lone continuation", "\x80", {0xdc80});
    row("last byte", "\xff", {0xdcff});
    row("latin 1", "caf\xe9.t", {'c', 'a', 'f', 0xdce9, '.', 't'});
    row("overlong", "\xe0\x9f\xbf", {0xdce0, 0xdc9f, 0xdcbf});
    row("surrogate", "\xed\xa0\x80", {0xdced, 0xdca0, 0xdc80});
    row("above the last character", "\xf4\x90\x80\x80", {0xdcf4, 0xdc90, 0xdc80, 0xdc80});
    row("cut off after two of three", "a\xe6\xbc", {'a', 0xdce6, 0xdcbc});
    row("cut off by a letter", "\xe6\xbcz", {0xdce6, 0xdcbc, 'z'});
}

void tst_CFileNameCodec::bytesAndText()
{
    QFETCH(QByteArray, baBytes);
    QFETCH(QString, strText);
    QCOMPARE(QFile::decodeName(baBytes), strText);
    QCOMPARE(QFile::encodeName(strText), baBytes);
}

void tst_CFileNameCodec::everySingleByteSurvives()
{
    for (int nByte = 1; nByte < 256; ++nByte) {
        const QByteArray baName(1, char(nByte));
        const QString strName = QFile::decodeName(baName);
        QCOMPARE(strName.size(), 1);
        QCOMPARE(QFile::encodeName(strName), baName);
    }
}

void tst_CFileNameCodec::everyCharacterIsUtf8()
{
    for (uint nChar = 1; nChar <= 0x10ffff; ++nChar) {
        if (QChar::isSurrogate(nChar)) {
            continue;
        }
        const QString strName = QString::fromUcs4(&nChar, 1);
        const QByteArray baName = QFile::encodeName(strName);
        if (baName != strName.toUtf8() || QFile::decodeName(baName) != strName) {
            QFAIL(qPrintable(QStringLiteral("U+%1").arg(nChar, 4, 16)));
        }
    }
}

void tst_CFileNameCodec::randomBytesSurvive()
{
    QRandomGenerator random(20260101);
    // Bytes that begin or continue a character come up often, so that nearly valid sequences do too.
    const QByteArray baFavourites("\x80\xbf\x9f\xa0\x8f\x90\xc2\xe0\xed\xef\xf0\xf4\xff"
                                  "az");
    for (int i = 0; i < 50000; ++i) {
        QByteArray baName;
        const int nLength = random.bounded(1, 40);
        for (int j = 0; j < nLength; ++j) {
            baName += random.bounded(3) == 0 ? char(random.bounded(1, 256))
                                             : baFavourites.at(random.bounded(baFavourites.size()));
        }
        const QString strName = QFile::decodeName(baName);
        if (QFile::encodeName(strName) != baName) {
            QFAIL(baName.toHex().constData());
        }
    }
}

void tst_CFileNameCodec::doesNotReadBeyondTheEnd()
{
    // The character would be whole if the bytes behind the end belonged to it.
    const char szBuffer[] = "a\xe6\xbc\xa2";
    const QString strExpected = "a" + QString(QChar(0xdce6)) + QChar(0xdcbc);
    QCOMPARE(QTextCodec::codecForLocale()->toUnicode(szBuffer, 3), strExpected);
}

void tst_CFileNameCodec::brokenText_data()
{
    QTest::addColumn<QString>("strText");
    QTest::addColumn<QByteArray>("baBytes");
    QTest::newRow("lone high half") << "a" + QString(QChar(0xd800)) + "b" << QByteArray("a?b");
    QTest::newRow("high half at the end") << "a" + QString(QChar(0xdbff)) << QByteArray("a?");
    QTest::newRow("low half that is no byte") << QString(QChar(0xdc7f)) << QByteArray("?");
    QTest::newRow("low half above the bytes") << QString(QChar(0xdd00)) << QByteArray("?");
}

void tst_CFileNameCodec::brokenText()
{
    QFETCH(QString, strText);
    QTEST(QFile::encodeName(strText), "baBytes");
}

void tst_CFileNameCodec::nothingIsInvalidForQt_data()
{
    QTest::addColumn<QByteArray>("baBytes");
    QTest::newRow("ascii") << QByteArray("plain");
    QTest::newRow("latin 1") << QByteArray("caf\xe9");
    QTest::newRow("cut off") << QByteArray("end\xe6\xbc");
}

void tst_CFileNameCodec::nothingIsInvalidForQt()
{
    QFETCH(QByteArray, baBytes);
    const QTextCodec* const pCodec = QTextCodec::codecForLocale();
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    state.remainingChars = 3;
    const QString strName = pCodec->toUnicode(baBytes.constData(), baBytes.size(), &state);
    QCOMPARE(state.invalidChars, 0);
    QCOMPARE(state.remainingChars, 0);
    QCOMPARE(strName, QFile::decodeName(baBytes));

    QTextCodec::ConverterState back(QTextCodec::IgnoreHeader);
    back.remainingChars = 3;
    QCOMPARE(pCodec->fromUnicode(strName.constData(), strName.size(), &back), baBytes);
    QCOMPARE(back.invalidChars, 0);
    QCOMPARE(back.remainingChars, 0);
}

void tst_CFileNameCodec::qtListsAndOpensSuchNames()
{
    CTempTree tree;
    const QByteArray baName("r\xe9sum\xe9 \xff.doc");
    tree.WriteBytesName(baName, "content");
    const QFileInfoList listEntry = QDir(tree.Path()).entryInfoList(QDir::Files);
    QCOMPARE(listEntry.size(), 1);
    QCOMPARE(QFile::encodeName(listEntry.first().fileName()), baName);
    QFile file(listEntry.first().absoluteFilePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("content"));
}

QTEST_GUILESS_MAIN(tst_CFileNameCodec)
#include "tst_CFileNameCodec.moc"
