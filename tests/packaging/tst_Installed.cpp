#include "journeys/CJourneyBed.h"
#include "settings/PListSerializer.h"
#include "translations/CTranslations.h"

#include <QDirIterator>

#include <unistd.h>

static const QString PREFERENCES = "/Library/Preferences/.GlobalPreferences.plist";
static const QString PROGRAM = "lib/tarnwick/TarnwickMacPE";
static const QString LINK = "bin/TarnwickMacPE";

/** What "cmake --install" leaves below its prefix, and the program started from there. */
class tst_Installed : public CJourneyBed
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void everythingStandsWhereItBelongs();
    void linkHoldsWhereverThePrefixIs();
    void startedByTheLinkItFindsWhatIsBesideIt();

private:
    static QString Prefix(const QString& strRelative = QString());
    static QStringList Below(const QString& strFolder);
};

QString tst_Installed::Prefix(const QString& strRelative)
{
    return BuildPath("tests/tst_Installed/prefix/") + strRelative;
}

// Everything but folders, by its path below that one.
QStringList tst_Installed::Below(const QString& strFolder)
{
    QStringList listFound;
    QDirIterator it(Prefix(strFolder), QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        it.next();
        if (it.fileInfo().isSymLink() || !it.fileInfo().isDir()) {
            listFound.append(QDir(Prefix()).relativeFilePath(it.filePath()));
        }
    }
    listFound.sort();
    return listFound;
}

void tst_Installed::initTestCase()
{
    QDir(Prefix()).removeRecursively();
    QCOMPARE(QProcess::execute(TARNWICK_CMAKE, {"--install", BuildPath(""), "--prefix", Prefix()}), 0);
}

void tst_Installed::init()
{
    Make("installed");
    PListSerializer::WriteRecordPList(QVariantMap{{"AppleLanguages", QVariantList{"de"}}}, PREFERENCES);
}

void tst_Installed::cleanup()
{
    if (QTest::currentTestFailed()) {
        m_pJourney->Picture("failed");
        qWarning().noquote() << m_pJourney->Errors();
    }
    Clear();
}

void tst_Installed::cleanupTestCase() { QDir(Prefix()).removeRecursively(); }

void tst_Installed::everythingStandsWhereItBelongs()
{
    QStringList listProgram{PROGRAM, "lib/tarnwick/TarnwickAsk", "lib/tarnwick/caffeinate",
                            "lib/tarnwick/diskutil"};
    for (const QString& strLanguage : CTranslations::Languages()) {
        listProgram.append(QString("lib/tarnwick/Language/TarnwickMacPE_%1.qm").arg(strLanguage));
    }
    listProgram.sort();
    QCOMPARE(Below("lib"), listProgram);
    QCOMPARE(Below("bin"), QStringList{LINK});
    QCOMPARE(Below("").size(), listProgram.size() + 1 + Below("share").size());
    for (const char* pName : {"applications/org.kelvane.tarnwick.desktop", "man/man1/TarnwickMacPE.1",
                              "metainfo/org.kelvane.tarnwick.metainfo.xml"}) {
        QVERIFY2(QFileInfo(Prefix("share/") + pName).isFile(), pName);
    }
}

void tst_Installed::linkHoldsWhereverThePrefixIs()
{
    char target[256] = {};
    QVERIFY(readlink(QFile::encodeName(Prefix(LINK)), target, sizeof(target) - 1) > 0);
    QCOMPARE(QByteArray(target), "../" + PROGRAM.toUtf8());
}

void tst_Installed::startedByTheLinkItFindsWhatIsBesideIt()
{
    QVERIFY(m_pJourney->Start(Prefix(LINK)));
    QCOMPARE(m_pJourney->Text("m_pSrcLab"), QString("Quelle"));
    // Each stick is known as one, and the volume as none: the command has answered.
    QStringList listDisk = m_pJourney->ListTexts();
    listDisk.sort();
    QCOMPARE(listDisk, (QStringList{"LARGE", "SMALL"}));
    QVERIFY(m_pJourney->Row(m_listVolume).value("visible").toBool());
    QVERIFY(!QDir(Prefix("lib/tarnwick/Log")).isEmpty());
    QVERIFY(!QFile::exists(Prefix("bin/Log")));
}

QTEST_MAIN(tst_Installed)
#include "tst_Installed.moc"
