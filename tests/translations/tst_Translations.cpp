#include "support/TestFiles.h"
#include "translations/CTranslations.h"

#include <QDir>
#include <QFile>
#include <QTranslator>
#include <QtTest>

Q_DECLARE_METATYPE(STEntry)

static void AddLanguages()
{
    QTest::addColumn<QString>("strLanguage");
    for (const QString& strLanguage : CTranslations::Languages()) {
        QTest::newRow(qPrintable(strLanguage)) << strLanguage;
    }
}

/** The translation sources against the program's code, and the built files against them. */
class tst_Translations : public QObject
{
    Q_OBJECT

private slots:
    void tenLanguages();
    void everyTextOfTheCodeHasASoundEntry_data();
    void everyTextOfTheCodeHasASoundEntry();
    void builtFileHasEveryText_data();
    void builtFileHasEveryText();
    void languagesDiffer();

    void checkFindsTheMistake_data();
    void checkFindsTheMistake();
    void updateFindsTheMistake_data();
    void updateFindsTheMistake();

private:
    QTemporaryDir m_dir;
};

void tst_Translations::tenLanguages()
{
    QStringList listSource;
    QStringList listBuilt;
    for (const QString& strLanguage : CTranslations::Languages()) {
        listSource.append(QFileInfo(CTranslations::SourcePath(strLanguage)).fileName());
        listBuilt.append(QFileInfo(CTranslations::BuiltPath(strLanguage)).fileName());
    }
    const QDir dirSource(QFileInfo(CTranslations::SourcePath("English")).path());
    const QDir dirBuilt(QFileInfo(CTranslations::BuiltPath("English")).path());
    QCOMPARE(dirSource.entryList({"*.ts"}), listSource);
    QCOMPARE(dirBuilt.entryList(QDir::Files), listBuilt);
}

void tst_Translations::everyTextOfTheCodeHasASoundEntry_data() { AddLanguages(); }

void tst_Translations::everyTextOfTheCodeHasASoundEntry()
{
    QFETCH(QString, strLanguage);
    const QString strPath = m_dir.filePath(strLanguage + ".ts");
    QVERIFY(QFile::copy(CTranslations::SourcePath(strLanguage), strPath));
    QCOMPARE(CTranslations::Update(strPath), QString());
    QVERIFY(CTranslations::Entries(strPath).size() > 30);
    // A text without an entry comes out as unfinished, an entry without a text as vanished.
    QCOMPARE(CTranslations::Problems(CTranslations::Entries(strPath), strLanguage), QStringList());
    QCOMPARE(Content(strPath), Content(CTranslations::SourcePath(strLanguage)));
}

void tst_Translations::builtFileHasEveryText_data() { AddLanguages(); }

void tst_Translations::builtFileHasEveryText()
{
    QFETCH(QString, strLanguage);
    QTranslator translator;
    QVERIFY(translator.load(CTranslations::BuiltPath(strLanguage)));
    for (const STEntry& entry : CTranslations::Entries(CTranslations::SourcePath(strLanguage))) {
        QCOMPARE(
            translator.translate(entry.strContext.toUtf8().constData(), entry.strSource.toUtf8().constData()),
            entry.strTranslation);
    }
}

void tst_Translations::languagesDiffer()
{
    // The exit question; a file that was copied and not translated shows here.
    QStringList listText;
    for (const QString& strLanguage : CTranslations::Languages()) {
        for (const STEntry& entry : CTranslations::Entries(CTranslations::SourcePath(strLanguage))) {
            if (entry.strSource.startsWith("Your computer")) {
                listText.append(entry.strTranslation);
            }
        }
    }
    QCOMPARE(listText.size(), 10);
    QCOMPARE(listText.removeDuplicates(), 0);
}

void tst_Translations::checkFindsTheMistake_data()
{
    QTest::addColumn<STEntry>("entry");
    QTest::addColumn<QString>("strLanguage");
    QTest::addColumn<QString>("strMistake");
    const auto row = [](const char* pName, const char* pSource, const char* pText, const char* pMistake,
                        const char* pLanguage = "German", const char* pType = "") {
        QTest::newRow(pName) << STEntry{"C", pSource, pText, pType} << pLanguage << pMistake;
    };
    row("sound", "Copy", "Kopieren", "");
    row("unfinished", "Copy", "Kopieren", "is unfinished", "German", "unfinished");
    row("obsolete", "Copy", "Kopieren", "is vanished", "German", "vanished");
    row("empty", "Copy", "", "is empty");
    row("blank", "Copy", "  ", "is empty");
    row("placeholder missing", "Time %1", "Zeit", "has other placeholders or marks");
    row("placeholder of another number", "Time %1", "Zeit %2", "has other placeholders or marks");
    row("placeholder twice", "Time %1", "Zeit %1 %1", "has other placeholders or marks");
    row("placeholders in another order", "%1 to %2", "auf %2 %1", "");
    row("span missing", "<span style=\"a\">%1</span>", "%1", "has other placeholders or marks");
    row("span of another look", "<span style=\"a\">%1</span>", "<span style=\"b\">%1</span>",
        "has other placeholders or marks");
    row("span not closed", "<span style=\"a\">%1</span>", "<span style=\"a\">%1",
        "has other placeholders or marks");
    row("placeholder outside its span", "<span style=\"a\">%1</span>", "%1<span style=\"a\"></span>",
        "has other placeholders or marks");
    row("product renamed", "Tarnwick can not", "Tarnwich kann nicht", "changes the product's name");
    row("product left out", "Tarnwick can not", "kann nicht", "changes the product's name");
    row("name translated", "Kelvane Tarnwick", "Tarnwick von Kelvane", "is not left as it is");
    row("window renamed", "NotFoundOrNoItemView", "Nichts", "is not left as it is");
    row("English improved", "No enough space", "Not enough space", "is not left as it is", "English");
    row("sentence not translated", "Searching, please wait", "Searching, please wait", "is still English");
    row("word that is the same", "Logo", "Logo", "");
    row("colon lost", "Select:", "Auswahl", "has lost its colon");
    row("wide colon", "Select:", "选择：", "", "Chinese");
    row("line break", "Copy", "Ko\npieren", "has other line breaks or a tab");
    row("lost line break", "No disk.\nConnect one.", "Kein Laufwerk. Eines anschlie\u00dfen.",
        "has other line breaks or a tab");
    row("folder piece, one blank lost", " at ", " um", "has lost its blanks");
    row("folder piece, blank of another kind", " at ", "\u00a0um ", "has lost its blanks");
    row("folder piece, two blanks", " at ", "  um ", "has lost its blanks");
    row("folder piece, colon", " at ", " Zeit: ", "has a character that no file name may have");
    row("folder piece, slash", " at ", " / ", "has a character that no file name may have");
    row("folder piece, not composed", " at ", " a\u0300 ", "is not composed", "French");
}

void tst_Translations::checkFindsTheMistake()
{
    QFETCH(STEntry, entry);
    QFETCH(QString, strLanguage);
    QFETCH(QString, strMistake);
    const QStringList listProblem = CTranslations::Problems({entry}, strLanguage);
    const QString strExpected = QString("C: \"%1\" %2").arg(entry.strSource, strMistake);
    if (strMistake.isEmpty()) {
        QCOMPARE(listProblem, QStringList());
    } else {
        QVERIFY2(listProblem.contains(strExpected), qPrintable(listProblem.join('\n')));
    }
}

void tst_Translations::updateFindsTheMistake_data()
{
    QTest::addColumn<QByteArray>("baOld");
    QTest::addColumn<QByteArray>("baNew");
    QTest::addColumn<QString>("strProblem");
    QTest::newRow("text of the code without an entry")
        << QByteArray("<source>Destination</source>") << QByteArray("<source>Destinations</source>")
        << "CSelFileWidget: \"Destination\" is unfinished";
    QTest::newRow("entry without a text of the code")
        << QByteArray("<source>Destination</source>") << QByteArray("<source>Another</source>")
        << "CSelFileWidget: \"Another\" is vanished";
    QTest::newRow("entry in a context that is not its own")
        << QByteArray("<name>CSelFileWidget</name>") << QByteArray("<name>CSelectFileWidget</name>")
        << "CSelFileWidget: \"Copy\" is unfinished";
    QTest::newRow("unfinished entry stays unfinished")
        << QByteArray("<translation>Kopieren</translation>")
        << QByteArray("<translation type=\"unfinished\">Kopieren</translation>")
        << "CSelFileWidget: \"Copy\" is unfinished";
}

void tst_Translations::updateFindsTheMistake()
{
    QFETCH(QByteArray, baOld);
    QFETCH(QByteArray, baNew);
    QFETCH(QString, strProblem);
    const QString strPath = m_dir.filePath("broken.ts");
    QByteArray baContent = Content(CTranslations::SourcePath("German"));
    QCOMPARE(baContent.count(baOld), 1);
    WriteFile(strPath, baContent.replace(baOld, baNew));
    QCOMPARE(CTranslations::Update(strPath), QString());
    const QStringList listProblem = CTranslations::Problems(CTranslations::Entries(strPath), "German");
    QVERIFY2(listProblem.contains(strProblem), qPrintable(listProblem.join('\n')));
}

QTEST_GUILESS_MAIN(tst_Translations)
#include "tst_Translations.moc"
