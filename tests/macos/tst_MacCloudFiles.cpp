#include "app/CStartUp.h"
#include "copy/CCopyText.h"
#include "copy/CMadeRescue.h"
#include "files/CCloudFile.h"
#include "flow/CReadAdvice.h"
#include "log/CLogTarnwick.h"
#include "macos/CFakeFiles.h"
#include "macos/COpenWatch.h"
#include "tree/CFolderTrouble.h"

#include <QApplication>
#include <QProcess>

#include <cerrno>

static const unsigned DATALESS = 0x40000000;
static const char POLICY[] = "setiopolicy_np 3 0 1";
static const char START[] = "TARNWICK_TRY_START"; // what the policy is to be answered with

/** What a Mac keeps in iCloud alone is not fetched, not made empty, and named. */
class tst_MacCloudFiles : public CMadeRescue
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void isNamedAndNotCopied_data();
    void isNamedAndNotCopied();
    void tickedFileAlone_data();
    void tickedFileAlone();
    void folderAloneIsNamed_data();
    void folderAloneIsNamed();
    void copyOpensNoSuchFolder_data();
    void copyOpensNoSuchFolder();
    void largestFileNeedsNoRoom();
    void treeSaysIt();
    void refusedListingSaysIt();
    void nothingIsReadAhead();
    void policyOfTheProcess();
    void startSetsThePolicy_data();
    void startSetsThePolicy();

private:
    void Plant(const QString& strEntry, const QByteArray& baContent);
    QStringList Told() const;
    void VerifyProgressIsWhole() const;
};

void tst_MacCloudFiles::init()
{
    NEEDS_VOLUMES();
    CFakeFiles::Reset();
    MakeDisks(50);
    WriteFile(m_pSource->Path("not ticked"));
}

void tst_MacCloudFiles::cleanup() { ClearVolume(); }

/** A file as the system shows one that it would have to fetch: with the size that it has there. */
void tst_MacCloudFiles::Plant(const QString& strEntry, const QByteArray& baContent)
{
    WriteFile(m_pSource->Path(strEntry), baContent);
    CFakeFiles::SetFlags(m_pSource->Path(strEntry), DATALESS);
}

/** The account's items as "path below the volume: kind bytes", in order of their paths. */
QStringList tst_MacCloudFiles::Told() const
{
    QStringList listTold;
    for (const STCopyItem& stItem : Account().listItem) {
        listTold.append(QString("%1: %2 %3")
                            .arg(stItem.strPath.mid(m_pSource->Path().size() + 1), CCopyText::Reason(stItem),
                                 QString::number(stItem.nExpected)));
    }
    listTold.sort();
    return listTold;
}

void tst_MacCloudFiles::VerifyProgressIsWhole() const
{
    QVERIFY(!m_pProgress->isEmpty());
    QCOMPARE(m_pProgress->last().at(1).toInt(), 100);
}

static void AddChoices()
{
    QTest::addColumn<bool>("bComplete");
    QTest::addColumn<int>("nOpened");
    QTest::newRow("ticked, never opened") << false << 1;
    QTest::newRow("ticked, opened") << false << 3;
    QTest::newRow("everything") << true << 1;
}

static const QString SENTENCE = "Its contents are only in iCloud, not on this Mac.";

void tst_MacCloudFiles::isNamedAndNotCopied_data() { AddChoices(); }

void tst_MacCloudFiles::isNamedAndNotCopied()
{
    QFETCH(bool, bComplete);
    QFETCH(int, nOpened);
    WriteFile(m_pSource->Path("photos/here.jpg"), Pattern(100000));
    Plant("photos/away.jpg", Pattern(3000000));
    WriteFile(m_pSource->Path("photos/album/inside.jpg"), "never seen");
    CFakeFiles::SetFlags(m_pSource->Path("photos/album"), DATALESS);
    COpenWatch file(m_pSource->Path("photos/away.jpg"));
    COpenWatch inside(m_pSource->Path("photos/album/inside.jpg"));
    COpenWatch whole(m_pSource->Path("photos/here.jpg"));
    Tick({"photos"}, nOpened);
    CountAndCopy(bComplete);

    QVERIFY(!file.WasOpened());
    QVERIFY(!inside.WasOpened());
    QVERIFY(whole.WasOpened());
    QCOMPARE(m_nCounted, 100000);
    QVERIFY2(m_nRoom < 200000, qPrintable(QString::number(m_nRoom)));
    QCOMPARE(Told(),
             QStringList({"photos/album: " + SENTENCE + " -1", "photos/away.jpg: " + SENTENCE + " 0"}));
    QVERIFY(!Account().IsWhole());
    QCOMPARE(Account().nProblems, 2);
    QCOMPARE(Account().nFiles, 1);
    QCOMPARE(Content(Arrived("photos/here.jpg")), Pattern(100000));
    QVERIFY(!QFileInfo::exists(Arrived("photos/away.jpg")));
    QVERIFY(!QFileInfo::exists(Arrived("photos/album/inside.jpg")));
    VerifyProgressIsWhole();
    QStringList listLogged = ProblemLines();
    listLogged.sort();
    QCOMPARE(
        listLogged,
        QStringList({Problem(m_pSource->Path("photos/album"), "only in iCloud (0 of unknown bytes copied)"),
                     Problem(m_pSource->Path("photos/away.jpg"), "only in iCloud (0 of 0 bytes copied)")}));
}

void tst_MacCloudFiles::tickedFileAlone_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::addColumn<QString>("strTicked");
    QTest::newRow("ticked") << false << "away";
    QTest::newRow("ticked, by a link") << false << "link";
    QTest::newRow("everything") << true << "away";
    QTest::newRow("everything, by a link") << true << "link";
}

void tst_MacCloudFiles::tickedFileAlone()
{
    QFETCH(bool, bComplete);
    QFETCH(QString, strTicked);
    Plant("folder/away", Pattern(1000000));
    QVERIFY(QFile::link("away", m_pSource->Path("folder/link")));
    COpenWatch file(m_pSource->Path("folder/away"));
    Tick({"folder/" + strTicked}, 1);
    CountAndCopy(bComplete);
    QVERIFY(!file.WasOpened());
    QCOMPARE(m_nCounted, 0);
    QCOMPARE(Account().nProblems, 1);
    QCOMPARE(Account().nFiles, 0);
    QCOMPARE(Account().listItem.at(0).enProblem, ENCopyProblem::ONLY_IN_CLOUD);
    QVERIFY(!QFileInfo::exists(Arrived("folder/" + strTicked)));
}

void tst_MacCloudFiles::folderAloneIsNamed_data() { AddChoices(); }

void tst_MacCloudFiles::folderAloneIsNamed()
{
    QFETCH(bool, bComplete);
    QFETCH(int, nOpened);
    WriteFile(m_pSource->Path("album/inside.jpg"), "never seen");
    CFakeFiles::SetFlags(m_pSource->Path("album"), DATALESS);
    Tick({"album"}, nOpened);
    CountAndCopy(bComplete);
    QCOMPARE(Told(), QStringList{"album: " + SENTENCE + " -1"});
    QCOMPARE(m_nCounted, 0);
}

void tst_MacCloudFiles::copyOpensNoSuchFolder_data()
{
    QTest::addColumn<bool>("bComplete");
    QTest::newRow("ticked") << false;
    QTest::newRow("everything") << true;
}

/** It may be there that the system does not refuse it, but fetches. */
void tst_MacCloudFiles::copyOpensNoSuchFolder()
{
    QFETCH(bool, bComplete);
    WriteFile(m_pSource->Path("album/inside.jpg"), "never seen");
    CFakeFiles::SetFlags(m_pSource->Path("album"), DATALESS);
    Tick({"album"}, 2);
    m_pNodes->Root()->m_bComplete = bComplete;
    COpenWatch folder(m_pSource->Path("album"));
    Start(1);
    QVERIFY(WaitForEnd(WAIT_MS));
    QVERIFY(!folder.WasOpened());
    QCOMPARE(Told(), QStringList{"album: " + SENTENCE + " -1"});
}

/** More than the stick holds, or its file system in one file. */
void tst_MacCloudFiles::largestFileNeedsNoRoom()
{
    CFakeFiles::SetVolume("msdos");
    WriteFile(m_pSource->Path("films/away.mov"));
    QVERIFY(QFile::resize(m_pSource->Path("films/away.mov"), 5000000000));
    CFakeFiles::SetFlags(m_pSource->Path("films/away.mov"), DATALESS);
    Tick({"films"}, 1);
    CountAndCopy(true);
    QCOMPARE(m_nCounted, 0);
    QVERIFY2(m_nRoom < 100000, qPrintable(QString::number(m_nRoom)));
    QCOMPARE(Told(), QStringList{"films/away.mov: " + SENTENCE + " 0"});
}

void tst_MacCloudFiles::treeSaysIt()
{
    WriteFile(m_pSource->Path("album/inside.jpg"), "never seen");
    CFakeFiles::SetFlags(m_pSource->Path("album"), DATALESS);
    CDirNode node(QFileInfo(m_pSource->Path("album")), nullptr);
    node.LoadChild();
    QCOMPARE(node.m_listChild.size(), 0);
    QCOMPARE(CFolderTrouble::Text(node), "This folder cannot be read: " + SENTENCE);
}

/** Where the folder did not say it before. */
void tst_MacCloudFiles::refusedListingSaysIt()
{
    for (const bool bBegun : {false, true}) {
        QCOMPARE(STCopyReason::CannotList(bBegun, EDEADLK).enProblem, ENCopyProblem::ONLY_IN_CLOUD);
        QCOMPARE(STCopyReason::CannotList(bBegun, EIO).enProblem, ENCopyProblem::FOLDER_READ);
    }
}

void tst_MacCloudFiles::nothingIsReadAhead()
{
    Plant("photos/away.jpg", "away");
    WriteFile(m_pSource->Path("photos/here.jpg"), "here");
    const auto fnPath = [this](const char* pszEntry) { return m_pSource->Path(pszEntry).toUtf8(); };
    const quint64 nDevice = CCopyPlatform::GetPathState(m_pSource->Path())->nDevice;
    COpenWatch file(m_pSource->Path("photos/away.jpg"));
    QCOMPARE(CReadAdvice::Open(fnPath("photos/away.jpg"), nDevice).nDescriptor, -1);
    QVERIFY(!file.WasOpened());
    const STSourceFile stHere = CReadAdvice::Open(fnPath("photos/here.jpg"), nDevice);
    QVERIFY(stHere.nDescriptor != -1);
    CReadAdvice::Close(stHere.nDescriptor);

    QCOMPARE(CReadAdvice::List(fnPath("photos"), nDevice, 10).listFile.size(), 2);
    CFakeFiles::SetFlags(m_pSource->Path("photos"), DATALESS);
    COpenWatch folder(m_pSource->Path("photos"));
    QCOMPARE(CReadAdvice::List(fnPath("photos"), nDevice, 10).listFile.size(), 0);
    QVERIFY(!folder.WasOpened());
}

void tst_MacCloudFiles::policyOfTheProcess()
{
    QCOMPARE(CCloudFile::StopFetching(), 0);
    QCOMPARE(CFakeFiles::TakeCalls(), QStringList{POLICY});
    CFakeFiles::Fail("setiopolicy_np", "3 0 1", EINVAL);
    QCOMPARE(CCloudFile::StopFetching(), EINVAL);
}

void tst_MacCloudFiles::startSetsThePolicy_data()
{
    QTest::addColumn<int>("nError");
    QTest::addColumn<QStringList>("listLogged");
    QTest::newRow("taken") << 0 << QStringList();
    QTest::newRow("a system before 10.15")
        << EINVAL << QStringList{"The system may fetch what is only in iCloud: " + qt_error_string(EINVAL)};
}

/** The program, up to where it has an application object. */
void tst_MacCloudFiles::startSetsThePolicy()
{
    QFETCH(int, nError);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(START, QString::number(nError));
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), QStringList());
    QVERIFY(process.waitForFinished(WAIT_MS));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    const QStringList listLine
        = QString::fromUtf8(process.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
    QCOMPARE(listLine.mid(0, 1), QStringList{POLICY});
    QTEST(QStringList(listLine.mid(1)), "listLogged");
}

/** Prints what was done before there was an application object, and ends. */
static void TellOfTheStart()
{
    QByteArray baTold = CFakeFiles::TakeCalls().filter("setiopolicy_np").join('\n').toUtf8() + '\n';
    UseLogFile();
    g_TarnwickLog.WriteEarlyLines();
    baTold += LogLines().filter("iCloud").join('\n').toUtf8();
    fwrite(baTold.constData(), 1, size_t(baTold.size()), stdout);
    fflush(stdout);
    _exit(0);
}

int main(int nArgc, char** ppArgv)
{
    if (qEnvironmentVariableIsSet(START)) {
        CFakeFiles::Fail("setiopolicy_np", "3 0 1", qEnvironmentVariableIntValue(START));
        qAddPreRoutine(TellOfTheStart);
        return CStartUp::Run(nArgc, ppArgv);
    }
    QApplication application(nArgc, ppArgv);
    tst_MacCloudFiles test;
    return QTest::qExec(&test, nArgc, ppArgv);
}

#include "tst_MacCloudFiles.moc"
