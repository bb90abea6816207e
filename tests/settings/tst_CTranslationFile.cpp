#include "settings/CLanguageSetting.h"
#include "settings/CTranslationFile.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QTest>
#include <QTranslator>
#include <QtEndian>

#include <sys/stat.h>

/** The program's own translation files, whole and with all kinds of damage. */
class tst_CTranslationFile : public QObject
{
    Q_OBJECT

private slots:
    void wholeFilesAreTaken();
    void damage_data();
    void damage();
    void cutFilesAreRefused();
    void changedBytesNeverCrash_data();
    void changedBytesNeverCrash();
    void onlyRegularFilesAreRead();
    void damagedFileIsToldAndLeftAlone();
};

static QString Folder() { return BuildPath("bin/Language"); }

static QByteArray German() { return Content(Folder() + "/TarnwickMacPE_German.qm"); }

/** Looks each text up that the file may have, and some that it has not. */
static void LookUp(const QByteArray& baFile)
{
    QTranslator translator;
    translator.load(reinterpret_cast<const uchar*>(baFile.constData()), baFile.size());
    for (const char* pContext :
         {"CSelFileWidget", "CSelFileForm", "CCopyFileWidget", "CTarnwickMacPE", "C"}) {
        for (const char* pText :
             {"Copy", "Cancel", "Source", "Destination", "Yes", "OK", " at ", "Copy Progress",
              "Calculating...", "Select Destination Disk:", "Copy file completed!", "Remaining Time: %1",
              "Kelvane Tarnwick", "nothing of the kind"}) {
            translator.translate(pContext, pText, nullptr, -1);
            translator.translate(pContext, pText, "comment", 1);
        }
    }
}

void tst_CTranslationFile::wholeFilesAreTaken()
{
    const QStringList listFile = QDir(Folder()).entryList({"*.qm"}, QDir::Files);
    QCOMPARE(listFile.size(), 10);
    for (const QString& strFile : listFile) {
        const std::optional<QByteArray> baFile = CTranslationFile::Read(Folder() + '/' + strFile);
        QVERIFY(baFile);
        QCOMPARE(CTranslationFile::Damage(*baFile).value_or("whole"), "whole");
    }
}

static QByteArray Number(int nNumber)
{
    QByteArray baNumber(4, '\0');
    qToBigEndian(quint32(nNumber), baNumber.data());
    return baNumber;
}

static QByteArray Piece(char chTag, const QByteArray& baContent)
{
    return chTag + Number(baContent.size()) + baContent;
}

void tst_CTranslationFile::damage_data()
{
    QTest::addColumn<QByteArray>("baFile");
    QTest::addColumn<QString>("strDamage");
    const QByteArray baMagic = German().left(16);
    const QByteArray baText = Piece('\x03', QByteArray("\0T", 2));
    const QByteArray baMessages = Piece('\x69', baText + '\x01');
    const QByteArray baHashes = Piece('\x42', Number(7) + Number(0));
    const auto row = [](const char* pName, const QByteArray& baFile, const char* pDamage) {
        QTest::newRow(pName) << baFile << QString(pDamage);
    };
    const char* const pSections = "its sections are damaged";
    const char* const pTexts = "its texts are damaged";
    row("smallest", baMagic + baHashes + baMessages, "whole");
    row("plural rules", baMagic + baHashes + baMessages + Piece('\x88', "\x01\x01"), "whole");
    row("empty", QByteArray(), "it is no translation file");
    row("some text", "this is no translation", "it is no translation file");
    row("no section", baMagic, pTexts);
    row("no texts", baMagic + baHashes, pTexts);
    row("no table", baMagic + baMessages, pTexts);
    row("bytes behind the end", baMagic + baHashes + baMessages + "x", pSections);
    row("unknown section", baMagic + baHashes + baMessages + Piece('\x11', "x"), pSections);
    row("table of contexts", baMagic + baHashes + baMessages + Piece('\x2f', Number(0)), pSections);
    row("other files", baMagic + baHashes + baMessages + Piece(char(0x96), "x"), pSections);
    row("section twice", baMagic + baHashes + baHashes + baMessages, pSections);
    row("section without content", baMagic + Piece('\x42', "") + baMessages, pSections);
    row("length beyond the file", baMagic + baHashes + '\x69' + Number(5000) + baText, pSections);
    row("length beyond all", baMagic + baHashes + '\x69' + Number(-1) + baText, pSections);
    row("half an entry", baMagic + Piece('\x42', Number(7)) + baMessages, pTexts);
    row("hashes not in order",
        baMagic + Piece('\x42', Number(7) + Number(0) + Number(6) + Number(0)) + baMessages, pTexts);
    row("offset beyond the texts", baMagic + Piece('\x42', Number(7) + Number(8)) + baMessages, pTexts);
    row("offset into a text", baMagic + Piece('\x42', Number(7) + Number(5)) + baMessages, pTexts);
    row("text without end", baMagic + baHashes + Piece('\x69', baText), pTexts);
    row("text longer than all texts", baMagic + baHashes + Piece('\x69', '\x03' + Number(90) + '\x01'),
        pTexts);
    row("half a character", baMagic + baHashes + Piece('\x69', Piece('\x03', "T") + '\x01'), pTexts);
    row("unknown piece", baMagic + baHashes + Piece('\x69', baText + Piece('\x05', "T") + '\x01'), pTexts);
}

void tst_CTranslationFile::damage()
{
    QFETCH(QByteArray, baFile);
    QTEST(CTranslationFile::Damage(baFile).value_or("whole"), "strDamage");
}

void tst_CTranslationFile::cutFilesAreRefused()
{
    const QByteArray baFile = German();
    // The plural rules may be missing, but nothing else.
    const QByteArray baWithoutRules = baFile.chopped(7);
    for (int nSize = 0; nSize < baFile.size(); ++nSize) {
        const QByteArray baCut = baFile.left(nSize);
        if (!CTranslationFile::Damage(baCut)) {
            QCOMPARE(baCut, baWithoutRules);
        }
    }
}

void tst_CTranslationFile::changedBytesNeverCrash_data()
{
    QTest::addColumn<int>("nValue");
    QTest::newRow("none") << 0x00;
    QTest::newRow("all") << 0xff;
    QTest::newRow("highest bit") << 0x80;
    QTest::newRow("one") << 0x01;
}

void tst_CTranslationFile::changedBytesNeverCrash()
{
    QFETCH(int, nValue);
    const QByteArray baFile = German();
    int nRefused = 0;
    for (int nByte = 0; nByte < baFile.size(); ++nByte) {
        QByteArray baChanged = baFile;
        baChanged[nByte] = char(nValue == 0x00 || nValue == 0xff ? nValue : baFile[nByte] ^ nValue);
        if (CTranslationFile::Damage(baChanged)) {
            ++nRefused;
        } else {
            LookUp(baChanged);
        }
    }
    QVERIFY2(nRefused > 400, qPrintable(QString::number(nRefused)));
}

void tst_CTranslationFile::onlyRegularFilesAreRead()
{
    const CTempTree tree;
    const QString strPipe = tree.Path("pipe");
    QCOMPARE(mkfifo(QFile::encodeName(strPipe).constData(), 0600), 0);
    QVERIFY(!CTranslationFile::Read(strPipe)); // or hangs
    QVERIFY(!CTranslationFile::Read(tree.Path("missing")));
    QVERIFY(!CTranslationFile::Read(tree.Path()));
    QVERIFY(!CTranslationFile::Read("/dev/zero"));
}

void tst_CTranslationFile::damagedFileIsToldAndLeftAlone()
{
    const QString strFile = QCoreApplication::applicationDirPath() + "/Language/TarnwickMacPE_German.qm";
    WriteFile(strFile, German());
    CLanguageSetting::GetInstance().SetLanguage("German");
    QCOMPARE(QCoreApplication::translate("CCopyFileWidget", "Cancel"), "Abbrechen");
    const CLogCapture capture;
    WriteFile(strFile, German().left(1000));
    CLanguageSetting::GetInstance().SetLanguage("German");
    QVERIFY(capture.Has("Translation not used, its sections are damaged: \"" + strFile + "\""));
    QCOMPARE(QCoreApplication::translate("CCopyFileWidget", "Cancel"), "Abbrechen");
    QVERIFY(QFile::remove(strFile));
}

QTEST_GUILESS_MAIN(tst_CTranslationFile)
#include "tst_CTranslationFile.moc"
