#include "log/CClock.h"
#include "log/CLogTarnwick.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"

#include <QProcess>
#include <QTextCodec>
#include <QtTest>

#include <memory>
#include <sys/mount.h>
#include <vector>

static const char SUB_FOLDER[] = "tst_Log/Inner";
static const char CURRENT[] = "TarnwickMacPE_20261116.log";

/** Counts the calls that were put off until this thread's event loop runs. */
class CDeferredCalls : public QObject
{
public:
    CDeferredCalls() { QCoreApplication::instance()->installEventFilter(this); }
    ~CDeferredCalls() override { QCoreApplication::instance()->removeEventFilter(this); }
    int m_nCalls = 0;

protected:
    bool eventFilter(QObject* pObject, QEvent* pEvent) override
    {
        m_nCalls += pEvent->type() == QEvent::MetaCall ? 1 : 0;
        return QObject::eventFilter(pObject, pEvent);
    }
};

class tst_CLogTarnwick : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void initFolderRefuses_data();
    void initFolderRefuses();
    void initFolderMakesParents();
    void initFolderNamesTheFile_data();
    void initFolderNamesTheFile();
    void initFolderAgainMovesTheLog();

    void currDate_data();
    void currDate();
    void lineFormat();
    void lineFormatInAnyLanguage();
    void logWritesMessageAlone();
    void textsOfAnyScript();

    void earlyLinesAreDropped();
    void missingFolderLosesTheLine();
    void unopenableFileLosesTheLine();
    void closeOnDemand();

    void sizeLimit_data();
    void sizeLimit();
    void exactLimitIsWrittenOnceMore();
    void setAsideName();
    void setAsideNameTakenGoesOnGrowing();
    void midnightKeepsTheFile();
    void midnightAndLimitStartTheNewDay();

    void retention_data();
    void retention();
    void retentionLines();
    void retentionOfSeveralFiles();
    void retentionRunsOnce();
    void retentionNeedsInitFolder();
    void retentionWithoutDays_data();
    void retentionWithoutDays();
    void retentionReportsFailedRemoval();
    void backUpFirstCopy();
    void backUpSecondCopy();
    void backUpSecondCopyFails();
    void backUpFolderCannotBeMade();

    void linesOfManyThreadsStayWhole();
    void workersLineLeavesNothingForTheEventLoop();

private:
    void SetNow(int nDay, const QTime& time);
    bool Init(int nLimit = 5242880);
    QString Path(const QString& strName) const;
    void Write(const QString& strName, const QByteArray& baContent = "old\n");
    QByteArray Read(const QString& strName) const;
    QStringList Lines() const;
    QStringList Names() const;

    QString m_strFolder;
    std::unique_ptr<CLogTarnwick> m_pLog;
};

void tst_CLogTarnwick::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    m_strFolder = QCoreApplication::applicationDirPath() + QStringLiteral("/tst_Log/Inner");
}

void tst_CLogTarnwick::init()
{
    QDir(QCoreApplication::applicationDirPath() + QStringLiteral("/tst_Log")).removeRecursively();
    SetNow(16, QTime(12, 30, 45, 678));
    m_pLog = std::make_unique<CLogTarnwick>();
}

void tst_CLogTarnwick::cleanup()
{
    m_pLog.reset();
    CClock::SetSource({});
}

void tst_CLogTarnwick::SetNow(int nDay, const QTime& time)
{
    const qint64 nMs = QDateTime(QDate(2026, 11, nDay), time).toMSecsSinceEpoch();
    CClock::SetSource([nMs] { return nMs; });
}

bool tst_CLogTarnwick::Init(int nLimit)
{
    return m_pLog->InitFolder(SUB_FOLDER, nLimit, "TarnwickMacPE", ".log");
}

QString tst_CLogTarnwick::Path(const QString& strName) const
{
    return m_strFolder + QLatin1Char('/') + strName;
}

void tst_CLogTarnwick::Write(const QString& strName, const QByteArray& baContent)
{
    QFile file(Path(strName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(baContent), qint64(baContent.size()));
}

QByteArray tst_CLogTarnwick::Read(const QString& strName) const
{
    QFile file(Path(strName));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

/** Lines of the current file without the time. */
QStringList tst_CLogTarnwick::Lines() const
{
    QStringList listLine;
    const QStringList listRaw
        = QString::fromUtf8(Read(QString::fromLatin1(CURRENT))).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& strLine : listRaw) {
        listLine.append(strLine.mid(25));
    }
    return listLine;
}

QStringList tst_CLogTarnwick::Names() const
{
    return QDir(m_strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

void tst_CLogTarnwick::initFolderRefuses_data()
{
    QTest::addColumn<bool>("bNull");
    QTest::newRow("null sub-folder") << true;
    QTest::newRow("empty sub-folder") << false;
}

void tst_CLogTarnwick::initFolderRefuses()
{
    QFETCH(bool, bNull);
    QVERIFY(Init());
    QVERIFY(!m_pLog->InitFolder(bNull ? nullptr : "", 2000, "Other", ".txt"));
    m_pLog->LogExt(QStringLiteral("goes on"));
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
}

void tst_CLogTarnwick::initFolderMakesParents()
{
    QVERIFY(!QFileInfo::exists(m_strFolder));
    QVERIFY(Init());
    QVERIFY(QFileInfo(m_strFolder).isDir());
    QCOMPARE(Names(), QStringList());
}

void tst_CLogTarnwick::initFolderNamesTheFile_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baExtension");
    QTest::addColumn<QString>("strFile");
    QTest::newRow("as start-up names it")
        << QByteArray("TarnwickMacPE") << QByteArray(".log") << QStringLiteral("TarnwickMacPE_20261116.log");
    QTest::newRow("null name") << QByteArray() << QByteArray(".log") << QStringLiteral("_20261116.log");
    QTest::newRow("null extension") << QByteArray("A") << QByteArray() << QStringLiteral("A_20261116");
    QTest::newRow("both null") << QByteArray() << QByteArray() << QStringLiteral("_20261116");
    QTest::newRow("UTF-8") << QByteArray("Protokoll für") << QByteArray(".log")
                           << QStringLiteral("Protokoll für_20261116.log");
}

void tst_CLogTarnwick::initFolderNamesTheFile()
{
    QFETCH(QByteArray, baName);
    QFETCH(QByteArray, baExtension);
    QFETCH(QString, strFile);
    QVERIFY(m_pLog->InitFolder(SUB_FOLDER, 2000, baName.isNull() ? nullptr : baName.constData(),
                               baExtension.isNull() ? nullptr : baExtension.constData()));
    m_pLog->LogExt(QStringLiteral("line"));
    QCOMPARE(Names(), QStringList{strFile});
}

void tst_CLogTarnwick::initFolderAgainMovesTheLog()
{
    QVERIFY(Init());
    m_pLog->Log(QStringLiteral("first"));
    QVERIFY(m_pLog->InitFolder(SUB_FOLDER, 2000, "Second", ".txt"));
    m_pLog->Log(QStringLiteral("second"));
    QCOMPARE(Read(QString::fromLatin1(CURRENT)), QByteArray("first\n"));
    QCOMPARE(Read(QStringLiteral("Second_20261116.txt")), QByteArray("second\n"));
}

void tst_CLogTarnwick::currDate_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("strDate");
    QTest::newRow("two digits each") << QDate(2026, 11, 16) << QStringLiteral("20261116");
    QTest::newRow("zeros in front") << QDate(2027, 1, 2) << QStringLiteral("20270102");
    QTest::newRow("leap day") << QDate(2028, 2, 29) << QStringLiteral("20280229");
}

void tst_CLogTarnwick::currDate()
{
    QFETCH(QDate, date);
    const qint64 nMs = QDateTime(date, QTime(23, 59, 59, 999)).toMSecsSinceEpoch();
    CClock::SetSource([nMs] { return nMs; });
    QTEST(m_pLog->GetCurrDate(), "strDate");
}

void tst_CLogTarnwick::lineFormat()
{
    SetNow(16, QTime(9, 5, 7, 8));
    QVERIFY(Init());
    m_pLog->LogExt(QStringLiteral("message: with %1 and  blanks "));
    QCOMPARE(Read(QString::fromLatin1(CURRENT)),
             QByteArray("2026-11-16 09:05:07.008: message: with %1 and  blanks \n"));
}

void tst_CLogTarnwick::lineFormatInAnyLanguage()
{
    // Under these languages a date is written with other digits or years unless told otherwise.
    for (const char* pLanguage : {"ar_EG.UTF-8", "fa_IR.UTF-8", "th_TH.UTF-8", "ne_NP.UTF-8"}) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("LC_ALL"), QLatin1String(pLanguage));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("lineFormat"), QStringLiteral("retention")});
        QVERIFY(process.waitForFinished());
        QVERIFY2(process.exitCode() == 0, process.readAllStandardOutput().constData());
    }
}

void tst_CLogTarnwick::logWritesMessageAlone()
{
    QVERIFY(Init());
    m_pLog->Log(QStringLiteral("as it is"));
    m_pLog->WriteLog(QStringLiteral("straight"));
    QCOMPARE(Read(QString::fromLatin1(CURRENT)), QByteArray("as it is\nstraight\n"));
}

void tst_CLogTarnwick::textsOfAnyScript()
{
    QVERIFY(Init());
    const QString strText = QStringLiteral("Müller 文件 ملف 🗂 e\u0301");
    m_pLog->Log(strText);
    QCOMPARE(QString::fromUtf8(Read(QString::fromLatin1(CURRENT))), strText + QLatin1Char('\n'));
}

void tst_CLogTarnwick::earlyLinesAreDropped()
{
    CLogCapture capture;
    m_pLog->LogExt(QStringLiteral("too early"));
    m_pLog->Log(QStringLiteral("too early"));
    QCOMPARE(capture.Lines(), QStringList());
    QVERIFY(Init());
    m_pLog->Log(QStringLiteral("in time"));
    QCOMPARE(Read(QString::fromLatin1(CURRENT)), QByteArray("in time\n"));
}

void tst_CLogTarnwick::missingFolderLosesTheLine()
{
    QVERIFY(Init());
    QVERIFY(QDir(m_strFolder).removeRecursively());
    CLogCapture capture;
    m_pLog->LogExt(QStringLiteral("lost"));
    QVERIFY(!QFileInfo::exists(m_strFolder));
    QCOMPARE(capture.Lines(), QStringList());
    QVERIFY(QDir().mkpath(m_strFolder));
    m_pLog->Log(QStringLiteral("back again"));
    QCOMPARE(Read(QString::fromLatin1(CURRENT)), QByteArray("back again\n"));
}

void tst_CLogTarnwick::unopenableFileLosesTheLine()
{
    QVERIFY(Init());
    QVERIFY(QDir(m_strFolder).mkdir(QString::fromLatin1(CURRENT)));
    CLogCapture capture;
    m_pLog->LogExt(QStringLiteral("lost"));
    QCOMPARE(capture.Lines(), QStringList());
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
}

void tst_CLogTarnwick::closeOnDemand()
{
    CLogCapture capture;
    m_pLog->Close();
    QVERIFY(Init());
    m_pLog->Log(QStringLiteral("one"));
    m_pLog->Close();
    m_pLog->Log(QStringLiteral("two"));
    QCOMPARE(Read(QString::fromLatin1(CURRENT)), QByteArray("one\ntwo\n"));
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CLogTarnwick::sizeLimit_data()
{
    QTest::addColumn<int>("nLimit");
    QTest::addColumn<int>("nSize");
    QTest::addColumn<bool>("bSetAside");
    QTest::newRow("a limit of 100 is 1024: 1024 bytes stay") << 100 << 1024 << false;
    QTest::newRow("a limit of 100 is 1024: 1025 bytes go") << 100 << 1025 << true;
    QTest::newRow("a limit of 0 is 1024: 1024 bytes stay") << 0 << 1024 << false;
    QTest::newRow("a negative limit is 1024: 1024 bytes stay") << -7 << 1024 << false;
    QTest::newRow("a negative limit is 1024: 1025 bytes go") << -7 << 1025 << true;
    QTest::newRow("limit 1023 is 1024") << 1023 << 1024 << false;
    QTest::newRow("limit 1024: 1025 bytes go") << 1024 << 1025 << true;
    QTest::newRow("limit 1025: 1025 bytes stay") << 1025 << 1025 << false;
    QTest::newRow("start-up's limit: 5242880 bytes stay") << 5242880 << 5242880 << false;
    QTest::newRow("start-up's limit: 5242881 bytes go") << 5242880 << 5242881 << true;
}

void tst_CLogTarnwick::sizeLimit()
{
    QFETCH(int, nLimit);
    QFETCH(int, nSize);
    QVERIFY(Init(nLimit));
    Write(QString::fromLatin1(CURRENT), QByteArray(nSize, 'x'));
    m_pLog->Log(QStringLiteral("line"));
    QTEST(Names().size() == 2, "bSetAside");
    QTEST(Read(QString::fromLatin1(CURRENT)) == "line\n", "bSetAside");
}

void tst_CLogTarnwick::exactLimitIsWrittenOnceMore()
{
    QVERIFY(Init(2000));
    Write(QString::fromLatin1(CURRENT), QByteArray(2000, 'x'));
    m_pLog->Log(QStringLiteral("above the limit by one line"));
    QCOMPARE(Names().size(), 1);
    m_pLog->Log(QStringLiteral("fresh"));
    const QStringList listBak = Names().filter(QStringLiteral(".bak"));
    QCOMPARE(listBak.size(), 1);
    QCOMPARE(Read(listBak.first()), QByteArray(2000, 'x') + "above the limit by one line\n");
    QCOMPARE(Read(QString::fromLatin1(CURRENT)), QByteArray("fresh\n"));
}

void tst_CLogTarnwick::setAsideName()
{
    QVERIFY(Init(2000));
    const QString strBefore = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    Write(QString::fromLatin1(CURRENT), QByteArray(2001, 'x'));
    const QString strAfter = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss"));
    SetNow(16, QTime(3, 4, 5, 999));
    m_pLog->Log(QStringLiteral("fresh"));
    const QStringList listBak = Names().filter(QStringLiteral(".bak"));
    QCOMPARE(listBak.size(), 1);
    const QRegularExpression pattern(
        QStringLiteral("^TarnwickMacPE_([0-9]{14})_20261116030405\\.log\\.bak$"));
    const QString strCreated = pattern.match(listBak.first()).captured(1);
    QVERIFY2(strCreated >= strBefore && strCreated <= strAfter, qPrintable(listBak.first()));
}

void tst_CLogTarnwick::setAsideNameTakenGoesOnGrowing()
{
    QVERIFY(Init(2000));
    const QString strCurrent = QString::fromLatin1(CURRENT);
    Write(strCurrent, QByteArray(2001, 'x'));
    const QFileInfo info(Path(strCurrent));
    if (!info.birthTime().isValid()) {
        QSKIP("this file system knows no creation time");
    }
    const QString strTaken = QStringLiteral("TarnwickMacPE_%1_20261116123045.log.bak")
                                 .arg(info.birthTime().toString(QStringLiteral("yyyyMMddhhmmss")));
    Write(strTaken, "taken");
    m_pLog->Log(QStringLiteral("line"));
    QCOMPARE(Read(strTaken), QByteArray("taken"));
    QCOMPARE(Read(strCurrent), QByteArray(2001, 'x') + "line\n");
    QCOMPARE(Names().size(), 2);
}

void tst_CLogTarnwick::midnightKeepsTheFile()
{
    SetNow(16, QTime(23, 59, 59, 999));
    QVERIFY(Init(2000));
    m_pLog->LogExt(QStringLiteral("before"));
    SetNow(17, QTime(0, 0, 0, 0));
    m_pLog->LogExt(QStringLiteral("after"));
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
    QCOMPARE(Read(QString::fromLatin1(CURRENT)),
             QByteArray("2026-11-16 23:59:59.999: before\n2026-11-17 00:00:00.000: after\n"));
}

void tst_CLogTarnwick::midnightAndLimitStartTheNewDay()
{
    QVERIFY(Init(2000));
    Write(QString::fromLatin1(CURRENT), QByteArray(2001, 'x'));
    SetNow(17, QTime(0, 0, 1));
    m_pLog->Log(QStringLiteral("new day"));
    m_pLog->Log(QStringLiteral("still"));
    QCOMPARE(Read(QStringLiteral("TarnwickMacPE_20261117.log")), QByteArray("new day\nstill\n"));
    QVERIFY(!QFileInfo::exists(Path(QString::fromLatin1(CURRENT))));
    QCOMPARE(Names().filter(QStringLiteral("_20261117000001.log.bak")).size(), 1);
}

void tst_CLogTarnwick::retention_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<bool>("bKept");
    QTest::newRow("seven days old") << QStringLiteral("TarnwickMacPE_20261109.log") << true;
    QTest::newRow("eight days old") << QStringLiteral("TarnwickMacPE_20261108.log") << false;
    QTest::newRow("years old") << QStringLiteral("TarnwickMacPE_20191231.log") << false;
    QTest::newRow("tomorrow") << QStringLiteral("TarnwickMacPE_20261117.log") << true;
    QTest::newRow("set aside, created long ago, closed today")
        << QStringLiteral("TarnwickMacPE_20261101080000_20261116080000.log.bak") << false;
    QTest::newRow("set aside, created seven days ago")
        << QStringLiteral("TarnwickMacPE_20261109080000_20261110080000.log.bak") << true;
    QTest::newRow("shorter than name and date") << QStringLiteral("TarnwickMacPE_202001") << true;
    QTest::newRow("as long as name and date, one digit missing")
        << QStringLiteral("TarnwickMacPE_2020010") << true;
    QTest::newRow("date and nothing behind it") << QStringLiteral("TarnwickMacPE_20200101") << false;
    QTest::newRow("other base name of the same length")
        << QStringLiteral("AnotherName12_20200101.log") << false;
    QTest::newRow("other separator") << QStringLiteral("TarnwickMacPEx20200101.log") << false;
    QTest::newRow("other base name, longer") << QStringLiteral("AnotherName123_20200101.log") << true;
    QTest::newRow("no such month") << QStringLiteral("TarnwickMacPE_20201301.log") << true;
    QTest::newRow("no such day") << QStringLiteral("TarnwickMacPE_20250229.log") << true;
    QTest::newRow("no digits") << QStringLiteral("TarnwickMacPE_yyyyMMdd.log") << true;
    QTest::newRow("dashes in the date") << QStringLiteral("TarnwickMacPE_2020-01-01.log") << true;
    QTest::newRow("hidden") << QStringLiteral(".arnwickMacPE_20200101.log") << true;
    QTest::newRow("not a log at all") << QStringLiteral("photo of the house, 20200101.png") << true;
}

void tst_CLogTarnwick::retention()
{
    QFETCH(QString, strFile);
    QFETCH(bool, bKept);
    QVERIFY(Init());
    Write(strFile);
    m_pLog->KeepDays(7, QString());
    QCOMPARE(QFileInfo::exists(Path(strFile)), bKept);
    const QString strLine
        = QStringLiteral("No Backup delete outdate file(") + strFile + QStringLiteral("):(true)");
    QCOMPARE(Lines().contains(strLine), !bKept);
}

void tst_CLogTarnwick::retentionLines()
{
    QVERIFY(Init());
    const QString strFile = QStringLiteral("TarnwickMacPE_20200101 %1 %2.log");
    Write(strFile);
    QVERIFY(QDir(m_strFolder).mkdir(QStringLiteral("TarnwickMacPE_20200102.log")));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Lines(),
             (QStringList{QStringLiteral("Process KeepDays(7), begin...."),
                          QStringLiteral("No Backup delete outdate file(TarnwickMacPE_20200101 %1 "
                                         "%2.log):(true)"),
                          QStringLiteral("Process KeepDays end.")}));
    QVERIFY(Read(QString::fromLatin1(CURRENT)).startsWith("2026-11-16 12:30:45.678: Process"));
    QVERIFY(QFileInfo(Path(QStringLiteral("TarnwickMacPE_20200102.log"))).isDir());
}

void tst_CLogTarnwick::retentionOfSeveralFiles()
{
    QVERIFY(Init());
    for (int nDay = 1; nDay <= 16; ++nDay) {
        Write(QStringLiteral("TarnwickMacPE_202611%1.log").arg(nDay, 2, 10, QLatin1Char('0')));
    }
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Names().size(), 8);
    QCOMPARE(Names().first(), QStringLiteral("TarnwickMacPE_20261109.log"));
    QCOMPARE(Lines().filter(QStringLiteral("):(true)")).size(), 8);
}

void tst_CLogTarnwick::retentionRunsOnce()
{
    QVERIFY(Init());
    QVERIFY(!m_pLog->ClearLogFolder(QString()));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Lines().size(), 2);
    Write(QStringLiteral("TarnwickMacPE_20200101.log"));
    m_pLog->KeepDays(7, QString());
    QVERIFY(!m_pLog->ClearLogFolder(QString()));
    QCOMPARE(Lines().size(), 2);
    QVERIFY(QFileInfo::exists(Path(QStringLiteral("TarnwickMacPE_20200101.log"))));
}

void tst_CLogTarnwick::retentionNeedsInitFolder()
{
    m_pLog->KeepDays(7, QString());
    QVERIFY(Init());
    Write(QStringLiteral("TarnwickMacPE_20200101.log"));
    QVERIFY(!m_pLog->ClearLogFolder(QString()));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
}

void tst_CLogTarnwick::retentionWithoutDays_data()
{
    QTest::addColumn<int>("nDays");
    QTest::addColumn<int>("nLinesOfSecondCall");
    QTest::newRow("zero days can be followed by more") << 0 << 3;
    QTest::newRow("negative days count as having run") << -3 << 0;
}

void tst_CLogTarnwick::retentionWithoutDays()
{
    QFETCH(int, nDays);
    QFETCH(int, nLinesOfSecondCall);
    QVERIFY(Init());
    Write(QStringLiteral("TarnwickMacPE_20200101.log"));
    m_pLog->KeepDays(nDays, QString());
    QCOMPARE(Lines(),
             (QStringList{QStringLiteral("Process KeepDays(%1), begin....").arg(nDays),
                          QStringLiteral("Process KeepDays end.")}));
    QVERIFY(QFileInfo::exists(Path(QStringLiteral("TarnwickMacPE_20200101.log"))));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Lines().size(), 2 + nLinesOfSecondCall);
}

void tst_CLogTarnwick::retentionReportsFailedRemoval()
{
    QVERIFY(Init());
    const QString strStuck = QStringLiteral("TarnwickMacPE_20200101.log");
    Write(strStuck);
    Write(QStringLiteral("TarnwickMacPE_20200102.log"));
    // A file that something is mounted on cannot be removed, not even by root.
    const QByteArray baStuck = QFile::encodeName(Path(strStuck));
    if (mount(baStuck.constData(), baStuck.constData(), nullptr, MS_BIND, nullptr) != 0) {
        QSKIP("cannot mount here");
    }
    m_pLog->KeepDays(7, QString());
    QCOMPARE(umount(baStuck.constData()), 0);
    QVERIFY(Lines().contains(
        QStringLiteral("No Backup delete outdate file(TarnwickMacPE_20200101.log):(false)")));
    QVERIFY(
        Lines().contains(QStringLiteral("No Backup delete outdate file(TarnwickMacPE_20200102.log):(true)")));
}

void tst_CLogTarnwick::backUpFirstCopy()
{
    CTempTree tree;
    QVERIFY(Init());
    Write(QStringLiteral("TarnwickMacPE_20200101.log"), "content");
    m_pLog->KeepDays(7, tree.Path(QStringLiteral("new/backup")));
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
    QCOMPARE(tree.Read(QStringLiteral("new/backup/TarnwickMacPE_20200101.log")), QByteArray("content"));
    QCOMPARE(
        Lines().mid(1, 2),
        (QStringList{QStringLiteral("First Backup copy outdate file(TarnwickMacPE_20200101.log):(true)"),
                     QStringLiteral("First Backup delete outdate file(TarnwickMacPE_20200101.log):(true)")}));
    QCOMPARE(Lines().size(), 4);
}

void tst_CLogTarnwick::backUpSecondCopy()
{
    CTempTree tree;
    tree.Write(QStringLiteral("TarnwickMacPE_20200101.log"), "earlier");
    QVERIFY(Init());
    Write(QStringLiteral("TarnwickMacPE_20200101.log"), "content");
    m_pLog->KeepDays(7, tree.Path());
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
    QCOMPARE(tree.Read(QStringLiteral("TarnwickMacPE_20200101.log")), QByteArray("earlier"));
    QCOMPARE(tree.Read(QStringLiteral("TarnwickMacPE_20200101.log2026-11-16 12:30:45")),
             QByteArray("content"));
    QCOMPARE(Lines().mid(1, 3),
             (QStringList{
                 QStringLiteral("First Backup copy outdate file(TarnwickMacPE_20200101.log):(false)"),
                 QStringLiteral("Sencond Backup copy outdate file(TarnwickMacPE_20200101.log):(true)"),
                 QStringLiteral("Sencond Backup delete outdate file(TarnwickMacPE_20200101.log):(true)")}));
    QCOMPARE(Lines().size(), 5);
}

void tst_CLogTarnwick::backUpSecondCopyFails()
{
    CTempTree tree;
    tree.Write(QStringLiteral("TarnwickMacPE_20200101.log"), "earlier");
    tree.Write(QStringLiteral("TarnwickMacPE_20200101.log2026-11-16 12:30:45"), "also earlier");
    QVERIFY(Init());
    Write(QStringLiteral("TarnwickMacPE_20200101.log"), "content");
    m_pLog->KeepDays(7, tree.Path());
    // The source goes whatever the second copy gave.
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
    QCOMPARE(Lines().mid(2, 2),
             (QStringList{
                 QStringLiteral("Sencond Backup copy outdate file(TarnwickMacPE_20200101.log):(false)"),
                 QStringLiteral("Sencond Backup delete outdate file(TarnwickMacPE_20200101.log):(true)")}));
}

void tst_CLogTarnwick::backUpFolderCannotBeMade()
{
    CTempTree tree;
    tree.Write(QStringLiteral("file"), "not a folder");
    QVERIFY(Init());
    Write(QStringLiteral("TarnwickMacPE_20200101.log"));
    Write(QStringLiteral("TarnwickMacPE_20200102.log"));
    m_pLog->KeepDays(7, tree.Path(QStringLiteral("file/backup")));
    QCOMPARE(Names(), QStringList{QString::fromLatin1(CURRENT)});
    QCOMPARE(Lines().filter(QStringLiteral("copy outdate")).filter(QStringLiteral("(false)")).size(), 4);
    QCOMPARE(tree.Read(QStringLiteral("file")), QByteArray("not a folder"));
}

void tst_CLogTarnwick::linesOfManyThreadsStayWhole()
{
    static const int THREADS = 8;
    static const int LINES = 300;
    // Small enough that files are set aside while the threads write. Each file gets
    // a time of its own, or the name to set it aside under would be taken.
    std::atomic<qint64> nMs(QDateTime(QDate(2026, 11, 16), QTime(0, 0)).toMSecsSinceEpoch());
    CClock::SetSource([&nMs] { return nMs += 1000; });
    QVERIFY(Init(20000));
    std::vector<std::thread> listThread;
    for (int nThread = 0; nThread < THREADS; ++nThread) {
        listThread.emplace_back([this, nThread] {
            for (int nLine = 0; nLine < LINES; ++nLine) {
                const QString strText
                    = QStringLiteral("<%1/%2/%3>").arg(nThread).arg(nLine).arg(QString(40, QLatin1Char('y')));
                nLine % 2 == 0 ? m_pLog->LogExt(strText) : m_pLog->Log(strText);
            }
        });
    }
    for (std::thread& thread : listThread) {
        thread.join();
    }
    const QRegularExpression whole(
        QStringLiteral("^(2026-11-1[0-9] [0-9:.]{12}: )?<([0-9])/([0-9]+)/y{40}>$"));
    QSet<QString> setSeen;
    for (const QString& strName : Names()) {
        const QStringList listLine
            = QString::fromUtf8(Read(strName)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& strLine : listLine) {
            const QRegularExpressionMatch match = whole.match(strLine);
            QVERIFY2(match.hasMatch(), qPrintable(strLine));
            setSeen.insert(match.captured(2) + QLatin1Char('/') + match.captured(3));
        }
    }
    QCOMPARE(setSeen.size(), THREADS * LINES);
    QVERIFY(Names().filter(QStringLiteral(".bak")).size() > 1);
}

void tst_CLogTarnwick::workersLineLeavesNothingForTheEventLoop()
{
    QVERIFY(Init());
    CDeferredCalls calls;
    std::thread([this] {
        m_pLog->LogExt(QStringLiteral("one"));
        m_pLog->LogExt(QStringLiteral("two"));
    }).join();
    const int nBefore = calls.m_nCalls;
    QCoreApplication::sendPostedEvents();
    QCOMPARE(calls.m_nCalls, nBefore);
    QCOMPARE(Lines(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
}

QTEST_GUILESS_MAIN(tst_CLogTarnwick)
#include "tst_CLogTarnwick.moc"
