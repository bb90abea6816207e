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
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QByteArray("") << QString("");
    QTest::newRow("ascii") << QByteArray("a b.txt") << QString("a b.txt");
    QTest::newRow("two bytes, least") << QByteArray("\xc2\x80") << QString(QChar(0x80));
    QTest::newRow("two bytes, greatest") << QByteArray("\xdf\xbf") << QString(QChar(0x7ff));
    QTest::newRow("three bytes, least") << QByteArray("\xe0\xa0\x80") << QString(QChar(0x800));
    QTest::newRow("below the surrogates") << QByteArray("\xed\x9f\xbf") << QString(QChar(0xd7ff));
    QTest::newRow("above the surrogates") << QByteArray("\xee\x80\x80") << QString(QChar(0xe000));
    QTest::newRow("three bytes, greatest") << QByteArray("\xef\xbf\xbf") << QString(QChar(0xffff));
    QTest::newRow("byte order mark stays") << QByteArray("\xef\xbb\xbfx") << QString(QChar(0xfeff)) + "x";
    QTest::newRow("four bytes, least")
        << QByteArray("\xf0\x90\x80\x80") << QString::fromUcs4(U"\U00010000", 1);
    QTest::newRow("four bytes, greatest")
        << QByteArray("\xf4\x8f\xbf\xbf") << QString::fromUcs4(U"\U0010ffff", 1);
    QTest::newRow("pair with an escape's low half")
        << QByteArray("\xf0\x90\x82\x80") << QString::fromUcs4(U"\U00010080", 1);
    QTest::newRow("lone continuation") << QByteArray("\x80") << QString(QChar(0xdc80));
    QTest::newRow("last byte") << QByteArray("\xff") << QString(QChar(0xdcff));
    QTest::newRow("latin 1") << QByteArray("caf\xe9.txt") << "caf" + QString(QChar(0xdce9)) + ".txt";
    QTest::newRow("overlong two") << QByteArray("\xc1\xbf") << QString(QChar(0xdcc1)) + QChar(0xdcbf);
    QTest::newRow("overlong three") << QByteArray("\xe0\x9f\xbf")
                                    << QString(QChar(0xdce0)) + QChar(0xdc9f) + QChar(0xdcbf);
    QTest::newRow("overlong four") << QByteArray("\xf0\x8f\xbf\xbf")
                                   << QString(QChar(0xdcf0)) + QChar(0xdc8f) + QChar(0xdcbf) + QChar(0xdcbf);
    QTest::newRow("surrogate") << QByteArray("\xed\xa0\x80")
                               << QString(QChar(0xdced)) + QChar(0xdca0) + QChar(0xdc80);
    QTest::newRow("above the last character")
        << QByteArray("\xf4\x90\x80\x80")
        << QString(QChar(0xdcf4)) + QChar(0xdc90) + QChar(0xdc80) + QChar(0xdc80);
    QTest::newRow("cut off after two of three")
        << QByteArray("a\xe6\xbc") << "a" + QString(QChar(0xdce6)) + QChar(0xdcbc);
    QTest::newRow("cut off by a letter") << QByteArray("\xe6\xbc"
                                                       "a")
                                         << QString(QChar(0xdce6)) + QChar(0xdcbc) + "a";
}

void tst_CFileNameCodec::bytesAndText()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(QFile::decodeName(bytes), text);
    QCOMPARE(QFile::encodeName(text), bytes);
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
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("lone high half") << "a" + QString(QChar(0xd800)) + "b" << QByteArray("a?b");
    QTest::newRow("high half at the end") << "a" + QString(QChar(0xdbff)) << QByteArray("a?");
    QTest::newRow("low half that is no byte") << QString(QChar(0xdc7f)) << QByteArray("?");
    QTest::newRow("low half above the bytes") << QString(QChar(0xdd00)) << QByteArray("?");
}

void tst_CFileNameCodec::brokenText()
{
    QFETCH(QString, text);
    QTEST(QFile::encodeName(text), "bytes");
}

void tst_CFileNameCodec::nothingIsInvalidForQt_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("ascii") << QByteArray("plain");
    QTest::newRow("latin 1") << QByteArray("caf\xe9");
    QTest::newRow("cut off") << QByteArray("end\xe6\xbc");
}

void tst_CFileNameCodec::nothingIsInvalidForQt()
{
    QFETCH(QByteArray, bytes);
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    state.remainingChars = 3;
    const QString strName = QTextCodec::codecForLocale()->toUnicode(bytes.constData(), bytes.size(), &state);
    QCOMPARE(state.invalidChars, 0);
    QCOMPARE(state.remainingChars, 0);
    QCOMPARE(strName, QFile::decodeName(bytes));

    QTextCodec::ConverterState back(QTextCodec::IgnoreHeader);
    back.remainingChars = 3;
    QCOMPARE(QTextCodec::codecForLocale()->fromUnicode(strName.constData(), strName.size(), &back), bytes);
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
