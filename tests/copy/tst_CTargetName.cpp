#include "copy/CTargetName.h"

#include <QSet>
#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

/** The names of one folder of a disk that is choosy. */
class CDisk
{
public:
    /** Puts an entry there that the copy has not made. */
    void Put(const QByteArray& baName) { m_setName.insert(Kept(baName)); }

    STMadeEntry Make(const QByteArray& baName)
    {
        return m_name.Make("/dst", baName, [this](const QByteArray& baPath) { return MakeOne(baPath); });
    }

    /** What has become of it: its name, "=" before it where it is the source's own, or the error. */
    QByteArray Name(const QByteArray& baName)
    {
        const STMadeEntry stMade = Make(baName);
        if (stMade.nError != 0) {
            return "error " + QByteArray::number(stMade.nError);
        }
        return (stMade.bRenamed ? QByteArray() : QByteArray("=")) + stMade.baPath.mid(int(qstrlen("/dst/")));
    }

    CTargetName m_name;
    QByteArray m_baForbidden; // letters that it does not take
    QByteArray m_baKept; // a name that it does not take either
    int m_nForbidden = EINVAL; // what it says then
    bool m_bText = false; // it takes UTF-8 only
    bool m_bAscii = false;
    bool m_bNoEndDots = false;
    bool m_bSmall = false; // it takes large letters for small ones
    int m_nMostBytes = 0; // of a name, if not 0
    int m_nMostUtf16 = 0;
    int m_nTooLong = ENAMETOOLONG; // what it says then
    int m_nMostPath = 4096;
    int m_nTries = 0;
    QSet<QByteArray> m_setName;

private:
    QByteArray Kept(const QByteArray& baName) const { return m_bSmall ? baName.toLower() : baName; }

    int Refusal(const QByteArray& baName) const
    {
        const auto fnForbidden = [this](char c) { return m_baForbidden.contains(c); };
        if (baName == m_baKept || std::any_of(baName.cbegin(), baName.cend(), fnForbidden)) {
            return m_nForbidden;
        }
        if (m_bText && QString::fromUtf8(baName).toUtf8() != baName) {
            return EILSEQ;
        }
        if (m_bAscii && std::any_of(baName.cbegin(), baName.cend(), [](char c) { return uchar(c) > 0x7f; })) {
            return EILSEQ;
        }
        if (m_bNoEndDots && (baName.endsWith('.') || baName.endsWith(' '))) {
            return EINVAL;
        }
        const bool bTooLong = (m_nMostBytes != 0 && baName.size() > m_nMostBytes)
            || (m_nMostUtf16 != 0 && QString::fromUtf8(baName).size() > m_nMostUtf16);
        return bTooLong ? m_nTooLong : 0;
    }

    int MakeOne(const QByteArray& baPath)
    {
        ++m_nTries;
        const QByteArray baName = baPath.mid(int(qstrlen("/dst/")));
        const int nError = baPath.size() >= m_nMostPath ? ENAMETOOLONG : Refusal(baName);
        if (nError != 0) {
            return nError;
        }
        if (m_setName.contains(Kept(baName))) {
            return EEXIST;
        }
        m_setName.insert(Kept(baName));
        return 0;
    }
};

} // namespace

/** Names that are taken, refused or too long, on disks that are choosy in different ways. */
class tst_CTargetName : public QObject
{
    Q_OBJECT

private slots:
    void ownNameWhereItIsFree();
    void numberWhereItIsTaken_data();
    void numberWhereItIsTaken();
    void caseAloneIsNoDifferenceToSomeDisks();
    void aThousandAlikeAreNotTriedEachTime();
    void forbiddenLetters_data();
    void forbiddenLetters();
    void lettersOfOtherScripts_data();
    void lettersOfOtherScripts();
    void oneThatTheSystemKeepsForItself();
    void tooLong_data();
    void tooLong();
    void tooLongWithItsNumber();
    void tooLongByAnyError_data();
    void tooLongByAnyError();
    void pathThatIsTooLong();
    void errorsThatNoNameCures_data();
    void errorsThatNoNameCures();
    void whatIsKnownOfTheDisk_data();
    void whatIsKnownOfTheDisk();
    void aDiskThatHasEveryNameIsGivenUp();
};

void tst_CTargetName::ownNameWhereItIsFree()
{
    CDisk disk;
    for (const QByteArray baName : {"report.pdf", " a", "a.", "\xff\xfe", ":?*", ".hidden"}) {
        QCOMPARE(disk.Name(baName), '=' + baName);
    }
    QCOMPARE(disk.m_nTries, 6);
}

void tst_CTargetName::numberWhereItIsTaken_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baSecond");
    const auto fnRow = [](const char* pszName, const char* pszSecond) {
        QTest::newRow(pszName) << QByteArray(pszName) << QByteArray(pszSecond);
    };
    fnRow("report.pdf", "report_1pdf");
    fnRow("archive.tar.gz", "archive.tar_1gz");
    fnRow("README", "README_1");
    fnRow(".hidden", "_1hidden");
    fnRow("a.", "a._1");
}

void tst_CTargetName::numberWhereItIsTaken()
{
    QFETCH(QByteArray, baName);
    QFETCH(QByteArray, baSecond);
    CDisk disk;
    disk.Put(baName);
    QCOMPARE(disk.Name(baName), baSecond);
    disk.Put(CTargetName::Numbered(baName, 2));
    QCOMPARE(disk.Name(baName), CTargetName::Numbered(baName, 3));
}

void tst_CTargetName::caseAloneIsNoDifferenceToSomeDisks()
{
    CDisk disk;
    disk.m_bSmall = true;
    QCOMPARE(disk.Name("photos"), QByteArray("=photos"));
    QCOMPARE(disk.Name("Photos"), QByteArray("Photos_1"));
    QCOMPARE(disk.Name("PHOTOS"), QByteArray("PHOTOS_2"));
}

void tst_CTargetName::aThousandAlikeAreNotTriedEachTime()
{
    CDisk disk;
    disk.m_baForbidden = "?";
    for (int i = 0; i < 1000; ++i) {
        QCOMPARE(disk.Make("?").nError, 0);
    }
    QVERIFY(disk.m_setName.contains("__999"));
    QVERIFY2(disk.m_nTries < 4000, qPrintable(QString::number(disk.m_nTries)));
}

void tst_CTargetName::forbiddenLetters_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EINVAL, EILSEQ, ENOENT, EIO, EPERM, EACCES}) {
        QTest::newRow(strerror(nError)) << nError;
    }
}

void tst_CTargetName::forbiddenLetters()
{
    CDisk disk;
    disk.m_baForbidden = QByteArray("\"*:<>?\\|\x01\x1f\x7f");
    QFETCH(int, nError);
    disk.m_nForbidden = nError;
    disk.m_bNoEndDots = true;
    QCOMPARE(disk.Name("12:30 <a>?.txt"), QByteArray("12_30 _a__.txt"));
    QCOMPARE(disk.Name("12|30 <a>*.txt"), QByteArray("12_30 _a___1txt"));
    QCOMPARE(disk.Name("a\x01\x1f\x7f"), QByteArray("a___"));
    QCOMPARE(disk.Name("\"\\\""), QByteArray("___"));
    QCOMPARE(disk.Name("etc. . "), QByteArray("etc____"));
    QCOMPARE(disk.Name(" a.b"), QByteArray("= a.b"));
    QCOMPARE(disk.Name("\xc3\xa4:"), QByteArray("\xc3\xa4_"));
}

void tst_CTargetName::lettersOfOtherScripts_data()
{
    QTest::addColumn<bool>("bAscii");
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baTaken");
    const QByteArray baUmlaut = "\xc3\xa4";
    QTest::newRow("no text") << false << QByteArray("a\xff\xfe.b") << QByteArray("a__.b");
    QTest::newRow("no text beside text") << false << baUmlaut + "\xe4" << baUmlaut + "_";
    QTest::newRow("half a character") << false << QByteArray("a\xc3") << QByteArray("a_");
    QTest::newRow("half a pair") << false << QByteArray("\xed\xa0\x80") << QByteArray("___");
    QTest::newRow("a zero in two bytes") << false << QByteArray("\xc0\x80") << QByteArray("__");
    QTest::newRow("text for ASCII") << true << baUmlaut + "b" << QByteArray("_b");
    QTest::newRow("four bytes for ASCII")
        << true << QByteArray("\xf0\x9f\x98\x80.jpg") << QByteArray("_.jpg");
}

void tst_CTargetName::lettersOfOtherScripts()
{
    QFETCH(bool, bAscii);
    QFETCH(QByteArray, baName);
    CDisk disk;
    disk.m_bText = true;
    disk.m_bAscii = bAscii;
    QTEST(disk.Name(baName), "baTaken");
}

void tst_CTargetName::oneThatTheSystemKeepsForItself()
{
    CDisk disk;
    disk.m_baKept = "CON";
    QCOMPARE(disk.Name("CON"), QByteArray("_CON"));
    QCOMPARE(disk.Name("CON"), QByteArray("_CON_1"));
    // Any other disk that cannot make a plain name is asked once.
    disk.m_nForbidden = EIO;
    disk.m_nTries = 0;
    QCOMPARE(disk.Make("CON").nError, EIO);
    QCOMPARE(disk.m_nTries, 1);
}

void tst_CTargetName::tooLong_data()
{
    QTest::addColumn<int>("nMostBytes");
    QTest::addColumn<int>("nMostUtf16");
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baTaken");
    const QByteArray baUmlaut = "\xc3\xa4";
    const QByteArray baFace = "\xf0\x9f\x98\x80";
    QTest::newRow("256 letters") << 255 << 0 << QByteArray(256, 'a') << QByteArray(255, 'a');
    QTest::newRow("with a suffix") << 255 << 0 << QByteArray(255, 'a') + ".jpeg"
                                   << QByteArray(250, 'a') + ".jpeg";
    QTest::newRow("at a character") << 255 << 0 << baUmlaut.repeated(128) << baUmlaut.repeated(127);
    QTest::newRow("units of UTF-16") << 0 << 255 << baUmlaut.repeated(300) + ".x"
                                     << baUmlaut.repeated(253) + ".x";
    QTest::newRow("two units each") << 0 << 255 << baFace.repeated(128) << baFace.repeated(127);
    QTest::newRow("less room than most")
        << 143 << 0 << QByteArray(200, 'a') + ".b" << QByteArray(141, 'a') + ".b";
    QTest::newRow("no suffix, a sentence")
        << 255 << 0 << "a." + QByteArray(300, 'b') << "a." + QByteArray(126, 'b');
    QTest::newRow("no blank at the end")
        << 255 << 0 << QByteArray(250, 'a') + "      b" << QByteArray(250, 'a');
}

void tst_CTargetName::tooLong()
{
    QFETCH(QByteArray, baName);
    CDisk disk;
    QFETCH(int, nMostBytes);
    disk.m_nMostBytes = nMostBytes;
    QFETCH(int, nMostUtf16);
    disk.m_nMostUtf16 = nMostUtf16;
    QTEST(disk.Name(baName), "baTaken");
    // Another one that is the same so far arrives as well.
    QVERIFY(disk.Make(baName).nError == 0);
    QCOMPARE(disk.m_setName.count(), 2);
}

void tst_CTargetName::tooLongWithItsNumber()
{
    CDisk disk;
    disk.m_nMostBytes = 255;
    const QByteArray baName = QByteArray(251, 'a') + ".jpg";
    disk.Put(baName);
    QCOMPARE(disk.Name(baName), QByteArray(250, 'a') + "_1jpg");
    QCOMPARE(disk.Name(baName), QByteArray(250, 'a') + "_2jpg");
    for (int i = 3; i < 10; ++i) {
        QCOMPARE(disk.Make(baName).nError, 0);
    }
    QCOMPARE(disk.Name(baName), QByteArray(249, 'a') + "_10jpg");
}

void tst_CTargetName::tooLongByAnyError_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {EPERM, EINVAL, EIO}) {
        QTest::newRow(strerror(nError)) << nError;
    }
}

void tst_CTargetName::tooLongByAnyError()
{
    QFETCH(int, nError);
    CDisk disk;
    disk.m_nMostBytes = 255;
    disk.m_nTooLong = nError;
    const QByteArray baName(255, 'a');
    disk.Put(baName);
    QCOMPARE(disk.Make(baName).nError, 0);
    QCOMPARE(disk.m_setName.count(), 2);
}

void tst_CTargetName::pathThatIsTooLong()
{
    CDisk disk;
    disk.m_nMostPath = 60; // "/dst/" and 54 letters
    QCOMPARE(disk.Name(QByteArray(100, 'a') + ".jpg"), QByteArray(28, 'a') + ".jpg");
    disk.m_nMostPath = 10;
    QCOMPARE(disk.Make(QByteArray(100, 'a') + ".jpg").nError, ENAMETOOLONG);
    QCOMPARE(disk.Make("letters").nError, ENAMETOOLONG);
}

void tst_CTargetName::errorsThatNoNameCures_data()
{
    QTest::addColumn<int>("nError");
    for (const int nError : {ENOSPC, EROFS, ENOTCONN, EMFILE, EINVAL, EIO, ENOENT}) {
        QTest::newRow(strerror(nError)) << nError;
    }
}

void tst_CTargetName::errorsThatNoNameCures()
{
    QFETCH(int, nError);
    CTargetName name;
    int nTries = 0;
    const STMadeEntry stMade = name.Make("/dst", "a:\xc3\xa4\xff", [&](const QByteArray& /*baPath*/) {
        ++nTries;
        return nError;
    });
    QCOMPARE(stMade.nError, nError);
    QCOMPARE(stMade.baPath, QByteArray("/dst/a:\xc3\xa4\xff")); // the one that is told
    QVERIFY(nTries <= 5);
}

void tst_CTargetName::whatIsKnownOfTheDisk_data()
{
    QTest::addColumn<bool>("bTextNames");
    QTest::addColumn<bool>("bDropsDots");
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baFirst"); // that is tried
    QTest::newRow("nothing") << false << false << QByteArray("a\xff. ") << QByteArray("a\xff. ");
    QTest::newRow("text only") << true << false << QByteArray("a\xff. ") << QByteArray("a_. ");
    QTest::newRow("text only, a half pair")
        << true << false << QByteArray("\xed\xb0\x80") << QByteArray("___");
    QTest::newRow("drops dots") << false << true << QByteArray("a\xff. ") << QByteArray("a\xff__");
    QTest::newRow("both") << true << true << QByteArray("a\xff...") << QByteArray("a____");
    QTest::newRow("a good name") << true << true << QByteArray(" .a:?") << QByteArray(" .a:?");
}

void tst_CTargetName::whatIsKnownOfTheDisk()
{
    QFETCH(QByteArray, baName);
    CTargetName name;
    STDiskRules stRules;
    QFETCH(bool, bTextNames);
    stRules.bTextNames = bTextNames;
    QFETCH(bool, bDropsDots);
    stRules.bDropsDots = bDropsDots;
    name.SetRules(stRules);
    QByteArray baFirst;
    const STMadeEntry stMade = name.Make("/dst", baName, [&](const QByteArray& baPath) {
        baFirst = baPath.mid(int(qstrlen("/dst/")));
        return 0;
    });
    QTEST(baFirst, "baFirst");
    QCOMPARE(stMade.bRenamed, baFirst != baName);
}

void tst_CTargetName::aDiskThatHasEveryNameIsGivenUp()
{
    CTargetName name;
    const STMadeEntry stMade
        = name.Make("/dst", "a", [](const QByteArray& /*baPath*/) { return int(EEXIST); });
    QCOMPARE(stMade.nError, EEXIST);
}

QTEST_APPLESS_MAIN(tst_CTargetName)
#include "tst_CTargetName.moc"
