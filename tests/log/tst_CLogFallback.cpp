#include "log/CClock.h"
#include "log/CLogTarnwick.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QtTest>

#include <cerrno>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

static const QString CURRENT = "/TarnwickMacPE_20261116.log";
static const QString OLD = "/TarnwickMacPE_20200101.log";

/** The log where its own place cannot be written. */
class tst_CLogFallback : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void placeThatCanBeWrittenIsTheOnlyOne();
    void fileInThePlaceOfTheFolder();
    void readOnlyMedium();
    void diskThatRunsFull();
    void daysAreKeptThereToo_data();
    void daysAreKeptThereToo();
    void sizeIsKeptThereToo();
    void plantedLinkIsNotFollowed();
    void folderOfAnotherUserIsNotTaken();
    void ownFolderIsClosedToOthers();
    void nowhere();
    void watcherIsToldOnce();

private:
    bool Init(int nLimit = 5242880);
    void BlockOwnPlace();
    QString Fallback() const { return m_pTemp->Path("Tarnwick Log"); }
    QStringList Lines(const QString& strFile) const;

    QString m_strOwn; // the log's own folder
    std::unique_ptr<CTempTree> m_pTemp; // the temporary folder of the program
    std::unique_ptr<CLogTarnwick> m_pLog;
    QByteArray m_baTempBefore;
};

void tst_CLogFallback::init()
{
    m_strOwn = QCoreApplication::applicationDirPath() + "/tst_Log";
    QDir(m_strOwn).removeRecursively();
    QFile::remove(m_strOwn);
    m_pTemp = std::make_unique<CTempTree>();
    m_baTempBefore = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(m_pTemp->Path()));
    const qint64 nMs = QDateTime(QDate(2026, 11, 16), QTime(12, 30)).toMSecsSinceEpoch();
    CClock::SetSource([nMs] { return nMs; });
    m_pLog = std::make_unique<CLogTarnwick>();
}

void tst_CLogFallback::cleanup()
{
    m_pLog.reset();
    CClock::SetSource({});
    qputenv("TMPDIR", m_baTempBefore);
    m_pTemp.reset();
    QFile::remove(m_strOwn);
}

bool tst_CLogFallback::Init(int nLimit)
{
    return m_pLog->InitFolder("tst_Log", nLimit, "TarnwickMacPE", ".log");
}

void tst_CLogFallback::BlockOwnPlace() { WriteFile(m_strOwn, "a file"); }

// Without the time, and without the line that tells why the file is there.
QStringList tst_CLogFallback::Lines(const QString& strFile) const
{
    QStringList listLine;
    for (const QString& strLine : QString::fromUtf8(Content(strFile)).split('\n', Qt::SkipEmptyParts)) {
        listLine.append(strLine.mid(25));
    }
    const bool bReason
        = !listLine.isEmpty() && listLine.takeFirst().startsWith("the log is written here, since");
    return bReason ? listLine : QStringList("no reason");
}

void tst_CLogFallback::placeThatCanBeWrittenIsTheOnlyOne()
{
    QVERIFY(Init());
    m_pLog->LogExt("line");
    QCOMPARE(m_pLog->FallbackFile(), QString());
    QVERIFY(!m_pLog->HasLostLines());
    QVERIFY(QFileInfo::exists(m_strOwn + CURRENT));
    QVERIFY(!QFileInfo::exists(Fallback()));
}

void tst_CLogFallback::fileInThePlaceOfTheFolder()
{
    BlockOwnPlace();
    m_pLog->KeepEarlyLines();
    m_pLog->LogExt("early");
    QVERIFY(Init());
    QVERIFY(!QFileInfo::exists(Fallback())); // not before there is something to write
    m_pLog->LogExt("start");
    m_pLog->WriteEarlyLines();
    m_pLog->LogExt("late");
    QCOMPARE(m_pLog->FallbackFile(), Fallback() + CURRENT);
    QCOMPARE(Lines(m_pLog->FallbackFile()), QStringList({"start", "early", "late"}));
    QVERIFY(Content(m_pLog->FallbackFile()).contains(QFile::encodeName(m_strOwn + CURRENT)));
    QVERIFY(!m_pLog->HasLostLines());
    QCOMPARE(Content(m_strOwn), "a file");
    // It is tried again for each line.
    QVERIFY(QFile::remove(m_strOwn));
    QVERIFY(QDir().mkpath(m_strOwn));
    m_pLog->Log("back");
    QCOMPARE(Content(m_strOwn + CURRENT), "back\n");
    QCOMPARE(m_pLog->FallbackFile(), Fallback() + CURRENT); // some lines are there
}

void tst_CLogFallback::readOnlyMedium()
{
    QVERIFY(QDir().mkpath(m_strOwn));
    if (!CVolume::Mount("medium", QFile::encodeName(m_strOwn))) {
        QSKIP("cannot mount here");
    }
    QVERIFY(CVolume::MakeReadOnly(QFile::encodeName(m_strOwn)));
    const bool bInit = Init();
    m_pLog->LogExt("line");
    QVERIFY(CVolume::Unmount(QFile::encodeName(m_strOwn)));
    QVERIFY(bInit);
    QCOMPARE(Lines(Fallback() + CURRENT), QStringList("line"));
    QVERIFY(Content(Fallback() + CURRENT).contains(strerror(EROFS)));
}

void tst_CLogFallback::diskThatRunsFull()
{
    QVERIFY(QDir().mkpath(m_strOwn));
    if (!CVolume::Mount("small", QFile::encodeName(m_strOwn), "size=64k")) {
        QSKIP("cannot mount here");
    }
    QVERIFY(Init());
    m_pLog->LogExt("before");
    QFile filler(m_strOwn + "/filler");
    QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    while (filler.write(QByteArray(4096, 'x')) > 0) { }
    filler.close();
    const QString strLong(8000, 'l'); // longer than what is left of the file's last block
    m_pLog->LogExt(strLong);
    const QStringList listThere = Lines(m_pLog->FallbackFile());
    QVERIFY(filler.remove());
    m_pLog->LogExt("after");
    const QByteArray baOwn = Content(m_strOwn + CURRENT);
    QVERIFY(CVolume::Unmount(QFile::encodeName(m_strOwn)));
    QCOMPARE(listThere, QStringList(strLong));
    QVERIFY(baOwn.contains("before\n"));
    QVERIFY(baOwn.endsWith("after\n"));
}

void tst_CLogFallback::daysAreKeptThereToo_data()
{
    QTest::addColumn<bool>("bLater");
    QTest::newRow("from the beginning") << false;
    QTest::newRow("when it is needed later") << true;
}

void tst_CLogFallback::daysAreKeptThereToo()
{
    QFETCH(bool, bLater);
    WriteFile(Fallback() + OLD);
    WriteFile(Fallback() + "/TarnwickMacPE_20261115.log");
    if (!bLater) {
        BlockOwnPlace();
    }
    QVERIFY(Init());
    m_pLog->KeepDays(7, QString());
    QCOMPARE(QFileInfo::exists(Fallback() + OLD), bLater);
    QDir(m_strOwn).removeRecursively();
    m_pLog->LogExt("line");
    QVERIFY(!QFileInfo::exists(Fallback() + OLD));
    QVERIFY(QFileInfo::exists(Fallback() + "/TarnwickMacPE_20261115.log"));
    const QStringList listLine = Lines(Fallback() + CURRENT);
    QCOMPARE(listLine.last(), "line");
    QVERIFY(listLine.contains("No Backup delete outdate file(TarnwickMacPE_20200101.log):(true)"));
}

void tst_CLogFallback::sizeIsKeptThereToo()
{
    BlockOwnPlace();
    QVERIFY(Init(2000));
    m_pLog->Log(QString(3000, 'x'));
    m_pLog->Log("next");
    QCOMPARE(Content(Fallback() + CURRENT), "next\n");
    QCOMPARE(QDir(Fallback()).entryList({"*.bak"}).size(), 1);
}

void tst_CLogFallback::plantedLinkIsNotFollowed()
{
    const CTempTree other;
    m_pTemp->Link("Tarnwick Log", other.Path());
    BlockOwnPlace();
    QVERIFY(Init());
    m_pLog->LogExt("line");
    QCOMPARE(QDir(other.Path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
    const QString strFile = m_pLog->FallbackFile();
    QVERIFY2(strFile.startsWith(Fallback() + '.'), qPrintable(strFile));
    QCOMPARE(Lines(strFile), QStringList("line"));
    QCOMPARE(QFileInfo(strFile).absolutePath(), QFileInfo(strFile).canonicalPath());
}

void tst_CLogFallback::folderOfAnotherUserIsNotTaken()
{
    m_pTemp->MkDir("Tarnwick Log");
    if (chown(QFile::encodeName(Fallback()).constData(), 4321, 4321) != 0) {
        QSKIP("only root gives a folder away");
    }
    BlockOwnPlace();
    QVERIFY(Init());
    m_pLog->LogExt("line");
    QVERIFY(!QFileInfo::exists(Fallback() + CURRENT));
    QCOMPARE(Lines(m_pLog->FallbackFile()), QStringList("line"));
}

void tst_CLogFallback::ownFolderIsClosedToOthers()
{
    m_pTemp->MkDir("Tarnwick Log");
    QCOMPARE(chmod(QFile::encodeName(Fallback()).constData(), 0777), 0);
    BlockOwnPlace();
    QVERIFY(Init());
    m_pLog->LogExt("line");
    QCOMPARE(m_pLog->FallbackFile(), Fallback() + CURRENT);
    struct stat stFolder;
    QCOMPARE(stat(QFile::encodeName(Fallback()).constData(), &stFolder), 0);
    QCOMPARE(stFolder.st_mode & 0777, mode_t(0700));
}

void tst_CLogFallback::nowhere()
{
    const QByteArray baTemp = QFile::encodeName(m_pTemp->Path());
    if (!CVolume::Mount("temp", baTemp)) {
        QSKIP("cannot mount here");
    }
    QVERIFY(CVolume::MakeReadOnly(baTemp));
    BlockOwnPlace();
    QVERIFY(Init());
    m_pLog->LogExt("lost");
    const bool bLost = m_pLog->HasLostLines();
    const QString strFile = m_pLog->FallbackFile();
    // As soon as there is a place it is taken.
    QVERIFY(CVolume::Unmount(baTemp));
    m_pLog->LogExt("line");
    QVERIFY(bLost);
    QCOMPARE(strFile, QString());
    QCOMPARE(Lines(Fallback() + CURRENT), QStringList("line"));
    // A new beginning forgets it.
    QVERIFY(QFile::remove(m_strOwn));
    QVERIFY(Init());
    QVERIFY(!m_pLog->HasLostLines());
    QCOMPARE(m_pLog->FallbackFile(), QString());
}

void tst_CLogFallback::watcherIsToldOnce()
{
    int nTold = 0;
    m_pLog->SetPlaceWatcher([&nTold] { ++nTold; });
    QVERIFY(Init());
    m_pLog->LogExt("line");
    QCOMPARE(nTold, 0);
    QDir(m_strOwn).removeRecursively();
    m_pLog->LogExt("line");
    m_pLog->LogExt("line");
    QCOMPARE(nTold, 1);
    m_pLog->SetPlaceWatcher({});
    QVERIFY(Init());
    QDir(m_strOwn).removeRecursively();
    m_pLog->LogExt("line");
    QCOMPARE(nTold, 1);
}

QTEST_GUILESS_MAIN(tst_CLogFallback)
#include "tst_CLogFallback.moc"
