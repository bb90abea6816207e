#include "files/CAsideQuestion.h"
#include "log/CClock.h"
#include "log/CLogTarnwick.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"
#include "support/TestFiles.h"

#include <QProcess>
#include <QTextCodec>
#include <QtTest>

#include <fcntl.h>
#include <memory>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

static const char SUB_FOLDER[] = "tst_Log/Inner";
static const QString CURRENT = "TarnwickMacPE_20261116.log";
static const QString OLD = "TarnwickMacPE_20200101.log";

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

    void initFolderRefuses();
    void initFolderMakesParentsAndNamesTheFile_data();
    void initFolderMakesParentsAndNamesTheFile();
    void initFolderAgainMovesTheLog();

    void currDate_data();
    void currDate();
    void lineFormat();
    void lineFormatInAnyLanguage();
    void logWritesMessageAlone();

    void earlyLinesAreDropped();
    void earlyLinesAreKeptOnRequest();
    void earlyLinesHaveAnEnd();
    void fileThatCannotBeOpenedLosesTheLine();
    void whatIsNoFileHoldsNobody_data();
    void whatIsNoFileHoldsNobody();
    void closeOnDemand();

    void sizeLimit_data();
    void sizeLimit();
    void setAside();
    void setAsideNameTakenGoesOnGrowing();
    void midnightKeepsTheFile();
    void midnightAndLimitStartTheNewDay();

    void retention_data();
    void retention();
    void retentionOfAFolder();
    void retentionRunsOnce();
    void retentionNeedsInitFolder();
    void retentionWithoutDays_data();
    void retentionWithoutDays();
    void retentionReportsFailedRemoval();
    void backUp_data();
    void backUp();

    void linesOfManyThreadsStayWhole();
    void workersLineLeavesNothingForTheEventLoop();

private:
    void SetNow(int nDay, const QTime& time);
    bool Init(int nLimit = 5242880);
    QString Path(const QString& strName) const { return m_strFolder + '/' + strName; }
    void Write(const QString& strName, const QByteArray& baContent = "old\n");
    QByteArray Read(const QString& strName = CURRENT) const { return Content(Path(strName)); }
    QStringList Lines() const;
    QStringList Names() const;

    QString m_strFolder;
    std::unique_ptr<CLogTarnwick> m_pLog;
};

void tst_CLogTarnwick::initTestCase()
{
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    m_strFolder = QCoreApplication::applicationDirPath() + "/tst_Log/Inner";
}

void tst_CLogTarnwick::init()
{
    QDir(QCoreApplication::applicationDirPath() + "/tst_Log").removeRecursively();
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

void tst_CLogTarnwick::Write(const QString& strName, const QByteArray& baContent)
{
    WriteFile(Path(strName), baContent);
}

// Lines of the current file without the time.
QStringList tst_CLogTarnwick::Lines() const
{
    QStringList listLine;
    const QStringList listRaw = QString::fromUtf8(Read()).split('\n', Qt::SkipEmptyParts);
    for (const QString& strLine : listRaw) {
        listLine.append(strLine.mid(25));
    }
    return listLine;
}

QStringList tst_CLogTarnwick::Names() const
{
    return QDir(m_strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

void tst_CLogTarnwick::initFolderRefuses()
{
    QVERIFY(Init());
    for (const char* pSubFolder : {static_cast<const char*>(nullptr), ""}) {
        QVERIFY(!m_pLog->InitFolder(pSubFolder, 2000, "Other", ".txt"));
    }
    m_pLog->LogExt("goes on");
    QCOMPARE(Names(), QStringList{CURRENT});
}

void tst_CLogTarnwick::initFolderMakesParentsAndNamesTheFile_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::addColumn<QByteArray>("baExtension");
    QTest::addColumn<QString>("strFile");
    QTest::newRow("as start-up names it")
        << QByteArray("TarnwickMacPE") << QByteArray(".log") << "TarnwickMacPE_20261116.log";
    QTest::newRow("null name") << QByteArray() << QByteArray(".log") << "_20261116.log";
    QTest::newRow("null extension") << QByteArray("A") << QByteArray() << "A_20261116";
    QTest::newRow("both null") << QByteArray() << QByteArray() << "_20261116";
    QTest::newRow("UTF-8") << QByteArray("Protokoll für") << QByteArray(".log")
                           << "Protokoll für_20261116.log";
}

void tst_CLogTarnwick::initFolderMakesParentsAndNamesTheFile()
{
    QFETCH(QByteArray, baName);
    QFETCH(QByteArray, baExtension);
    QFETCH(QString, strFile);
    QVERIFY(!QFileInfo::exists(m_strFolder));
    QVERIFY(m_pLog->InitFolder(SUB_FOLDER, 2000, baName.isNull() ? nullptr : baName.constData(),
                               baExtension.isNull() ? nullptr : baExtension.constData()));
    QVERIFY(QFileInfo(m_strFolder).isDir());
    QCOMPARE(Names(), QStringList());
    m_pLog->LogExt("line");
    QCOMPARE(Names(), QStringList{strFile});
}

void tst_CLogTarnwick::initFolderAgainMovesTheLog()
{
    QVERIFY(Init());
    m_pLog->Log("first");
    QVERIFY(m_pLog->InitFolder(SUB_FOLDER, 2000, "Second", ".txt"));
    m_pLog->Log("second");
    QCOMPARE(Read(), "first\n");
    QCOMPARE(Read("Second_20261116.txt"), "second\n");
}

void tst_CLogTarnwick::currDate_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("strDate");
    QTest::newRow("two digits each") << QDate(2026, 11, 16) << "20261116";
    QTest::newRow("zeros in front") << QDate(2027, 1, 2) << "20270102";
    QTest::newRow("leap day") << QDate(2028, 2, 29) << "20280229";
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
    m_pLog->LogExt("message: with %1 and  blanks ");
    QCOMPARE(Read(), "2026-11-16 09:05:07.008: message: with %1 and  blanks \n");
}

void tst_CLogTarnwick::lineFormatInAnyLanguage()
{
    // Under these languages a date is written with other digits or years unless told otherwise.
    for (const char* pLanguage : {"ar_EG.UTF-8", "fa_IR.UTF-8", "th_TH.UTF-8", "ne_NP.UTF-8"}) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("LC_ALL", QLatin1String(pLanguage));
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {"lineFormat", "retention"});
        QVERIFY(process.waitForFinished());
        QVERIFY2(process.exitCode() == 0, process.readAllStandardOutput().constData());
    }
}

void tst_CLogTarnwick::logWritesMessageAlone()
{
    QVERIFY(Init());
    const QString strText = "Müller 文件 ملف 🗂 e\u0301";
    m_pLog->Log(strText);
    m_pLog->WriteLog("straight");
    QCOMPARE(QString::fromUtf8(Read()), strText + "\nstraight\n");
}

void tst_CLogTarnwick::earlyLinesAreDropped()
{
    CLogCapture capture;
    m_pLog->LogExt("too early");
    m_pLog->Log("too early");
    QCOMPARE(capture.Lines(), QStringList());
    QVERIFY(Init());
    m_pLog->Log("in time");
    QCOMPARE(Read(), "in time\n");
}

void tst_CLogTarnwick::earlyLinesAreKeptOnRequest()
{
    m_pLog->KeepEarlyLines();
    m_pLog->LogExt("early");
    m_pLog->Log("as it is");
    SetNow(16, QTime(13, 0));
    QVERIFY(Init());
    m_pLog->Log("begin");
    QCOMPARE(Read(), "begin\n");
    m_pLog->WriteEarlyLines();
    const QByteArray baAll = "begin\n2026-11-16 12:30:45.678: early\nas it is\n";
    QCOMPARE(Read(), baAll);
    m_pLog->WriteEarlyLines();
    QCOMPARE(Read(), baAll);
}

void tst_CLogTarnwick::earlyLinesHaveAnEnd()
{
    m_pLog->KeepEarlyLines();
    for (int n = 1; n <= CLogTarnwick::MOST_EARLY_LINES + 2; ++n) {
        m_pLog->Log(QString::number(n));
    }
    QVERIFY(Init());
    m_pLog->WriteEarlyLines();
    const QList<QByteArray> listLine = Read().split('\n');
    QCOMPARE(listLine.size(), CLogTarnwick::MOST_EARLY_LINES + 2);
    QCOMPARE(listLine.at(CLogTarnwick::MOST_EARLY_LINES - 1), "1000");
    QCOMPARE(listLine.at(CLogTarnwick::MOST_EARLY_LINES),
             "lines that found no room before the log was there: 2");
}

void tst_CLogTarnwick::whatIsNoFileHoldsNobody_data()
{
    QTest::addColumn<QString>("strLinkTo");
    QTest::newRow("pipe") << QString();
    QTest::newRow("device") << "/dev/full";
    QTest::newRow("terminal") << "/dev/tty";
}

void tst_CLogTarnwick::whatIsNoFileHoldsNobody()
{
    QFETCH(QString, strLinkTo);
    QVERIFY(Init());
    const QByteArray baPath = QFile::encodeName(Path(CURRENT));
    if (strLinkTo.isEmpty()) {
        QCOMPARE(mkfifo(baPath.constData(), 0600), 0);
    } else {
        QVERIFY(QFile::link(strLinkTo, Path(CURRENT)));
    }
    // On a thread of its own, so that a line that waits fails this test and no more.
    const auto done = CAsideQuestion<bool>::Ask(std::chrono::seconds(10), [pLog = m_pLog.get()] {
        pLog->Log("lost");
        return true;
    });
    const int nReader = open(baPath.constData(), O_RDONLY | O_NONBLOCK); // lets it go on
    QVERIFY(done);
    char ch = 0;
    QVERIFY(!strLinkTo.isEmpty() || read(nReader, &ch, 1) == 0);
    close(nReader);
    QVERIFY(QFile::remove(Path(CURRENT)));
    m_pLog->Log("back again");
    QCOMPARE(Read(), "back again\n");
}

void tst_CLogTarnwick::fileThatCannotBeOpenedLosesTheLine()
{
    QVERIFY(Init());
    CLogCapture capture;
    QVERIFY(QDir(m_strFolder).mkdir(CURRENT));
    m_pLog->LogExt("lost");
    QCOMPARE(Names(), QStringList{CURRENT});
    QVERIFY(QDir(m_strFolder).removeRecursively());
    m_pLog->LogExt("lost");
    QVERIFY(!QFileInfo::exists(m_strFolder));
    QVERIFY(QDir().mkpath(m_strFolder));
    m_pLog->Log("back again");
    QCOMPARE(Read(), "back again\n");
    QCOMPARE(capture.Lines(), QStringList());
}

void tst_CLogTarnwick::closeOnDemand()
{
    CLogCapture capture;
    m_pLog->Close();
    QVERIFY(Init());
    m_pLog->Log("one");
    m_pLog->Close();
    m_pLog->Log("two");
    QCOMPARE(Read(), "one\ntwo\n");
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
    Write(CURRENT, QByteArray(nSize, 'x'));
    m_pLog->Log("line");
    QTEST(Names().size() == 2, "bSetAside");
    QTEST(Read() == "line\n", "bSetAside");
}

void tst_CLogTarnwick::setAside()
{
    QVERIFY(Init(2000));
    const QString strBefore = QDateTime::currentDateTime().toString("yyyyMMddhhmmss");
    Write(CURRENT, QByteArray(2000, 'x'));
    const QString strAfter = QDateTime::currentDateTime().toString("yyyyMMddhhmmss");
    m_pLog->Log("above the limit by one line");
    QCOMPARE(Names().size(), 1);
    SetNow(16, QTime(3, 4, 5, 999));
    m_pLog->Log("fresh");
    QCOMPARE(Read(), "fresh\n");
    const QStringList listBak = Names().filter(".bak");
    QCOMPARE(listBak.size(), 1);
    QCOMPARE(Read(listBak[0]), QByteArray(2000, 'x') + "above the limit by one line\n");
    const QRegularExpression pattern("^TarnwickMacPE_([0-9]{14})_20261116030405\\.log\\.bak$");
    const QString strCreated = pattern.match(listBak[0]).captured(1);
    QVERIFY2(strCreated >= strBefore && strCreated <= strAfter, qPrintable(listBak[0]));
}

void tst_CLogTarnwick::setAsideNameTakenGoesOnGrowing()
{
    QVERIFY(Init(2000));
    Write(CURRENT, QByteArray(2001, 'x'));
    const QFileInfo info(Path(CURRENT));
    if (!info.birthTime().isValid()) {
        QSKIP("this file system knows no creation time");
    }
    const QString strTaken
        = QString("TarnwickMacPE_%1_20261116123045.log.bak").arg(info.birthTime().toString("yyyyMMddhhmmss"));
    Write(strTaken, "taken");
    m_pLog->Log("line");
    QCOMPARE(Read(strTaken), "taken");
    QCOMPARE(Read(), QByteArray(2001, 'x') + "line\n");
    QCOMPARE(Names().size(), 2);
}

void tst_CLogTarnwick::midnightKeepsTheFile()
{
    SetNow(16, QTime(23, 59, 59, 999));
    QVERIFY(Init(2000));
    m_pLog->LogExt("before");
    SetNow(17, QTime(0, 0, 0, 0));
    m_pLog->LogExt("after");
    QCOMPARE(Names(), QStringList{CURRENT});
    QCOMPARE(Read(), "2026-11-16 23:59:59.999: before\n2026-11-17 00:00:00.000: after\n");
}

void tst_CLogTarnwick::midnightAndLimitStartTheNewDay()
{
    QVERIFY(Init(2000));
    Write(CURRENT, QByteArray(2001, 'x'));
    SetNow(17, QTime(0, 0, 1));
    m_pLog->Log("new day");
    m_pLog->Log("still");
    QCOMPARE(Read("TarnwickMacPE_20261117.log"), "new day\nstill\n");
    QVERIFY(!QFileInfo::exists(Path(CURRENT)));
    QCOMPARE(Names().filter("_20261117000001.log.bak").size(), 1);
}

void tst_CLogTarnwick::retention_data()
{
    QTest::addColumn<QString>("strFile");
    QTest::addColumn<bool>("bKept");
    QTest::newRow("seven days old") << "TarnwickMacPE_20261109.log" << true;
    QTest::newRow("eight days old") << "TarnwickMacPE_20261108.log" << false;
    QTest::newRow("years old") << "TarnwickMacPE_20191231.log" << false;
    QTest::newRow("tomorrow") << "TarnwickMacPE_20261117.log" << true;
    QTest::newRow("set aside, created long ago, closed today")
        << "TarnwickMacPE_20261101080000_20261116080000.log.bak" << false;
    QTest::newRow("set aside, created seven days ago")
        << "TarnwickMacPE_20261109080000_20261110080000.log.bak" << true;
    QTest::newRow("shorter than name and date") << "TarnwickMacPE_202001" << true;
    QTest::newRow("as long as name and date, one digit missing") << "TarnwickMacPE_2020010" << true;
    QTest::newRow("date and nothing behind it") << "TarnwickMacPE_20200101" << false;
    QTest::newRow("other base name of the same length") << "AnotherName12_20200101.log" << false;
    QTest::newRow("other separator") << "TarnwickMacPEx20200101.log" << false;
    QTest::newRow("other base name, longer") << "AnotherName123_20200101.log" << true;
    QTest::newRow("no such month") << "TarnwickMacPE_20201301.log" << true;
    QTest::newRow("no such day") << "TarnwickMacPE_20250229.log" << true;
    QTest::newRow("no digits") << "TarnwickMacPE_yyyyMMdd.log" << true;
    QTest::newRow("dashes in the date") << "TarnwickMacPE_2020-01-01.log" << true;
    QTest::newRow("hidden") << ".arnwickMacPE_20200101.log" << true;
    QTest::newRow("not a log at all") << "photo of the house, 20200101.png" << true;
}

void tst_CLogTarnwick::retention()
{
    QFETCH(QString, strFile);
    QFETCH(bool, bKept);
    QVERIFY(Init());
    Write(strFile);
    m_pLog->KeepDays(7, QString());
    QCOMPARE(QFileInfo::exists(Path(strFile)), bKept);
    QCOMPARE(Lines().contains("No Backup delete outdate file(" + strFile + "):(true)"), !bKept);
}

void tst_CLogTarnwick::retentionOfAFolder()
{
    QVERIFY(Init());
    for (int nDay = 1; nDay <= 16; ++nDay) {
        Write(QString("TarnwickMacPE_202611%1.log").arg(nDay, 2, 10, QLatin1Char('0')));
    }
    Write(CURRENT, ""); // the lines are to be the first in it
    Write("TarnwickMacPE_20200101 %1 %2.log");
    QVERIFY(QDir(m_strFolder).mkdir("TarnwickMacPE_20200102.log"));
    m_pLog->KeepDays(7, QString());
    QVERIFY(Read().startsWith("2026-11-16 12:30:45.678: Process"));
    QCOMPARE(Lines().first(), "Process KeepDays(7), begin....");
    QVERIFY(Lines().contains("No Backup delete outdate file(TarnwickMacPE_20200101 %1 %2.log):(true)"));
    QCOMPARE(Lines().filter("No Backup delete outdate file").size(), 9);
    QCOMPARE(Lines().last(), "Process KeepDays end.");
    QCOMPARE(Lines().size(), 11);
    QCOMPARE(Names().mid(0, 2), QStringList({"TarnwickMacPE_20200102.log", "TarnwickMacPE_20261109.log"}));
    QCOMPARE(Names().size(), 9);
}

void tst_CLogTarnwick::retentionRunsOnce()
{
    QVERIFY(Init());
    QVERIFY(!m_pLog->ClearLogFolder(QString()));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Lines().size(), 2);
    Write(OLD);
    m_pLog->KeepDays(7, QString());
    QVERIFY(!m_pLog->ClearLogFolder(QString()));
    QCOMPARE(Lines().size(), 2);
    QVERIFY(QFileInfo::exists(Path(OLD)));
}

void tst_CLogTarnwick::retentionNeedsInitFolder()
{
    m_pLog->KeepDays(7, QString());
    QVERIFY(Init());
    Write(OLD);
    QVERIFY(!m_pLog->ClearLogFolder(QString()));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Names(), QStringList{CURRENT});
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
    Write(OLD);
    m_pLog->KeepDays(nDays, QString());
    QCOMPARE(Lines(),
             QStringList({QString("Process KeepDays(%1), begin....").arg(nDays), "Process KeepDays end."}));
    QVERIFY(QFileInfo::exists(Path(OLD)));
    m_pLog->KeepDays(7, QString());
    QCOMPARE(Lines().size(), 2 + nLinesOfSecondCall);
}

void tst_CLogTarnwick::retentionReportsFailedRemoval()
{
    QVERIFY(Init());
    Write(OLD);
    Write("TarnwickMacPE_20200102.log");
    // A file that something is mounted on cannot be removed, not even by root.
    const QByteArray baStuck = QFile::encodeName(Path(OLD));
    if (mount(baStuck.constData(), baStuck.constData(), nullptr, MS_BIND, nullptr) != 0) {
        QSKIP("cannot mount here");
    }
    m_pLog->KeepDays(7, QString());
    QCOMPARE(umount(baStuck.constData()), 0);
    QVERIFY(Lines().contains("No Backup delete outdate file(TarnwickMacPE_20200101.log):(false)"));
    QVERIFY(Lines().contains("No Backup delete outdate file(TarnwickMacPE_20200102.log):(true)"));
}

void tst_CLogTarnwick::backUp_data()
{
    QTest::addColumn<QStringList>("listTaken");
    QTest::addColumn<QString>("strFolder");
    QTest::addColumn<QString>("strCopy"); // where the file stands afterwards
    QTest::addColumn<QStringList>("listLine");
    const QString strSecond = OLD + "2026-11-16 12:30:45";
    const QString strFirstCopy = "First Backup copy outdate file(" + OLD + "):";
    const QString strFirstDelete = "First Backup delete outdate file(" + OLD + "):(true)";
    const QString strSecondCopy = "Sencond Backup copy outdate file(" + OLD + "):";
    const QString strSecondDelete = "Sencond Backup delete outdate file(" + OLD + "):(true)";
    const QStringList listOnce{strFirstCopy + "(true)", strFirstDelete};
    const QStringList listTwice{strFirstCopy + "(false)", strSecondCopy + "(true)", strSecondDelete};
    // The source goes whatever the second copy gave.
    const QStringList listLost{strFirstCopy + "(false)", strSecondCopy + "(false)", strSecondDelete};
    QTest::newRow("to a new folder") << QStringList() << "new/backup"
                                     << "new/backup/" + OLD << listOnce;
    QTest::newRow("the name is taken") << QStringList{OLD} << "" << strSecond << listTwice;
    QTest::newRow("both names are taken") << QStringList{OLD, strSecond} << ""
                                          << "" << listLost;
    QTest::newRow("the folder cannot be made") << QStringList{"file"} << "file/backup"
                                               << "" << listLost;
}

void tst_CLogTarnwick::backUp()
{
    QFETCH(QStringList, listTaken);
    QFETCH(QString, strFolder);
    QFETCH(QString, strCopy);
    CTempTree tree;
    for (const QString& strTaken : listTaken) {
        tree.Write(strTaken, "earlier");
    }
    QVERIFY(Init());
    Write(OLD, "content");
    Write("TarnwickMacPE_20200102.log");
    m_pLog->KeepDays(7, tree.Path(strFolder));
    QCOMPARE(Names(), QStringList{CURRENT});
    QTEST(Lines().filter(OLD), "listLine");
    QVERIFY(strCopy.isEmpty() || tree.Read(strCopy) == "content");
    for (const QString& strTaken : listTaken) {
        QCOMPARE(tree.Read(strTaken), "earlier");
    }
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
                const QString strText = QString("<%1/%2/%3>").arg(nThread).arg(nLine).arg(QString(40, 'y'));
                nLine % 2 == 0 ? m_pLog->LogExt(strText) : m_pLog->Log(strText);
            }
        });
    }
    for (std::thread& thread : listThread) {
        thread.join();
    }
    const QRegularExpression whole("^(2026-11-1[0-9] [0-9:.]{12}: )?<([0-9])/([0-9]+)/y{40}>$");
    QSet<QString> setSeen;
    for (const QString& strName : Names()) {
        const QStringList listLine = QString::fromUtf8(Read(strName)).split('\n', Qt::SkipEmptyParts);
        for (const QString& strLine : listLine) {
            const QRegularExpressionMatch match = whole.match(strLine);
            QVERIFY2(match.hasMatch(), qPrintable(strLine));
            setSeen.insert(match.captured(2) + '/' + match.captured(3));
        }
    }
    QCOMPARE(setSeen.size(), THREADS * LINES);
    QVERIFY(Names().filter(".bak").size() > 1);
}

void tst_CLogTarnwick::workersLineLeavesNothingForTheEventLoop()
{
    QVERIFY(Init());
    CDeferredCalls calls;
    std::thread([this] {
        m_pLog->LogExt("one");
        m_pLog->LogExt("two");
    }).join();
    const int nBefore = calls.m_nCalls;
    QCoreApplication::sendPostedEvents();
    QCOMPARE(calls.m_nCalls, nBefore);
    QCOMPARE(Lines(), QStringList({"one", "two"}));
}

QTEST_GUILESS_MAIN(tst_CLogTarnwick)
#include "tst_CLogTarnwick.moc"
