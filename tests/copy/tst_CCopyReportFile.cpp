#include "copy/CCopyPlatform.h"
#include "copy/CCopyReportFile.h"
#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QtTest>

#include <cerrno>
#include <csignal>
#include <functional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

static const int HEAD = CCopyReportText::HEAD_SIZE;
static const QString NOT_ENDED = "This copy has not come to its end.";

static STCopyItem Item(const QString& strPath)
{
    STCopyItem stItem;
    stItem.strPath = strPath;
    stItem.enProblem = ENCopyProblem::TARGET_WRITE;
    stItem.nError = ENOSPC;
    stItem.nCopied = 5;
    stItem.nExpected = 9;
    return stItem;
}

static QString Line(const QString& strPath)
{
    return '"' + strPath + "\": The disk is full. (5 bytes of 9 bytes)";
}

/** An account with that many items that are not whole. */
static STCopyAccount Account(qint64 nProblems)
{
    STCopyAccount stAccount;
    stAccount.nFiles = 4;
    stAccount.nBytes = 1200000;
    stAccount.nProblems = nProblems;
    stAccount.enFlush = ENCopyFlush::DONE;
    return stAccount;
}

class tst_CCopyReportFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void isThereFromTheBeginning();
    void linesComeAsTheyHappen();
    void namesCannotForgeLines();
    void headIsCompletedInPlace_data();
    void headIsCompletedInPlace();
    void longNamesLeaveTheHeadItsSize();
    void goesWhenThereIsNothingToSay();
    void staysForANote();
    void overwritesNothing_data();
    void overwritesNothing();
    void strangerInItsPlaceStays_data();
    void strangerInItsPlaceStays();
    void endTwiceIsTheSame();
    void withoutBeginNothingIsMade();
    void destinationThatIsGoneIsNotTouched();
    void folderThatComesLater();
    void folderThatCannotBeWritten();
    void moreItemsThanAnybodyKeeps();

    void holdsRoom();
    void givesUpRoomAndThenItself();
    void keepsWhatCannotHelp();
    void isWrittenAgainAtTheEnd();
    void isMissingWithoutRoom();
    void lineWithoutRoomComesLater();

    void killLeavesItUnfinished();

private:
    /** Lines of the report, without the blanks at their ends. */
    QStringList Lines(const QString& strPath = QString()) const;

    /** The lines below the head. */
    QStringList Items() const;

    void Begin();
    qint64 Blocks() const;

    /** Writes a file into the volume until nothing more fits. */
    void Fill(const QString& strName) const;

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CVolume> m_pVolume;
    std::unique_ptr<CCopyReportFile> m_pFile;
    QString m_strFolder; // of the copy
    QString m_strPath; // of the report
};

void tst_CCopyReportFile::initTestCase()
{
    CFileNameCodec::Install();
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

void tst_CCopyReportFile::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_strFolder = m_pTree->Path("Tarnwick  20261116  at  1230");
    m_strPath = m_strFolder + ".txt";
    m_pFile = std::make_unique<CCopyReportFile>(m_strFolder);
}

void tst_CCopyReportFile::cleanup()
{
    m_pFile.reset();
    m_pVolume.reset();
    m_pTree.reset();
}

void tst_CCopyReportFile::Begin()
{
    const QString strParent = m_strFolder.left(m_strFolder.lastIndexOf('/'));
    const STCopyBeginning stBeginning{QDateTime(QDate(2026, 11, 16), QTime(12, 30)),
                                      {"/Volumes/Macintosh HD", "/Volumes/a\nb"},
                                      m_strFolder,
                                      3200000000};
    m_pFile->Begin(std::make_shared<const CDescriptor>(CCopyPlatform::OpenFolder(strParent)), stBeginning);
}

QStringList tst_CCopyReportFile::Lines(const QString& strPath) const
{
    QStringList listLine;
    for (const QByteArray& baLine : Content(strPath.isEmpty() ? m_strPath : strPath).split('\n')) {
        listLine.append(QString::fromUtf8(baLine).trimmed());
    }
    return listLine;
}

QStringList tst_CCopyReportFile::Items() const
{
    const QByteArray baItems = Content(m_strPath).mid(HEAD);
    return QString::fromUtf8(baItems).split('\n', Qt::SkipEmptyParts);
}

qint64 tst_CCopyReportFile::Blocks() const
{
    struct stat stFile = {};
    stat(QFile::encodeName(m_strPath).constData(), &stFile);
    return stFile.st_blocks * 512;
}

void tst_CCopyReportFile::Fill(const QString& strName) const
{
    QFile file(m_pVolume->Path(strName));
    QVERIFY(file.open(QIODevice::Append | QIODevice::Unbuffered));
    while (file.write(QByteArray(4096, 'f')) == 4096) { }
}

// ---- what it says

void tst_CCopyReportFile::isThereFromTheBeginning()
{
    Begin();
    const QByteArray baContent = Content(m_strPath);
    QCOMPARE(baContent.size(), HEAD);
    QVERIFY(baContent.endsWith(" \n"));
    const QStringList listLine = Lines();
    QCOMPARE(listLine.at(0), QString("Report on a copy of files"));
    QVERIFY(listLine.contains("From: \"/Volumes/Macintosh HD\", \"/Volumes/a\\nb\""));
    QVERIFY(listLine.contains("To: \"" + m_strFolder + '"'));
    QVERIFY(listLine.contains("Begun: Monday, November 16, 2026 12:30 PM"));
    QVERIFY(listLine.contains("To be copied: at most 3.20 GB"));
    QVERIFY(listLine.contains(NOT_ENDED));
}

void tst_CCopyReportFile::linesComeAsTheyHappen()
{
    Begin();
    m_pFile->Add(Item("/a"));
    QCOMPARE(Items(), QStringList{Line("/a")});
    m_pFile->Add(Item("/b"));
    QCOMPARE(Items(), (QStringList{Line("/a"), Line("/b")}));
    QVERIFY(Lines().contains(NOT_ENDED));
}

void tst_CCopyReportFile::namesCannotForgeLines()
{
    Begin();
    m_pFile->Add(Item("/a\": all is well\n\"/b"));
    QCOMPARE(Items(), QStringList{Line(R"(/a\": all is well\n\"/b)")});
}

void tst_CCopyReportFile::headIsCompletedInPlace_data()
{
    QTest::addColumn<bool>("bStopped");
    QTest::addColumn<int>("nFlush");
    QTest::addColumn<QString>("strState");
    QTest::addColumn<QString>("strAdvice"); // its beginning
    QTest::newRow("not whole") << false << int(ENCopyFlush::DONE) << "1 of 5 items was not copied whole."
                               << "Try to copy the items below again.";
    QTest::newRow("stopped") << true << int(ENCopyFlush::DONE)
                             << "The copy was stopped. 4 files, 1.20 MB are on the disk."
                             << "What had not been copied by then is missing and is not named below.";
    QTest::newRow("not confirmed")
        << false << int(ENCopyFlush::FAILED)
        << "The disk did not confirm that everything is on it. Do not rely on this copy."
        << "Copy everything again, best onto another disk.";
}

void tst_CCopyReportFile::headIsCompletedInPlace()
{
    QFETCH(bool, bStopped);
    QFETCH(int, nFlush);
    QFETCH(QString, strState);
    QFETCH(QString, strAdvice);
    Begin();
    m_pFile->Add(Item("/a"));
    STCopyAccount stAccount = Account(1);
    stAccount.bStopped = bStopped;
    stAccount.enFlush = ENCopyFlush(nFlush);
    const STReportEnd stEnd = m_pFile->End(stAccount);
    QCOMPARE(stEnd.strPath, m_strPath);
    QVERIFY(!stEnd.bMissing);
    const QStringList listLine = Lines();
    QVERIFY(!listLine.contains(NOT_ENDED));
    const int nState = listLine.indexOf(strState);
    QVERIFY(nState > 0);
    QVERIFY(listLine.at(nState + 1).startsWith(strAdvice));
    QVERIFY(listLine.contains("Whole: 4 files, 1.20 MB"));
    QVERIFY(listLine.contains("Not whole: 1"));
    QCOMPARE(Items(), QStringList{Line("/a")});
    QCOMPARE(Content(m_strPath).at(HEAD - 1), '\n');
}

void tst_CCopyReportFile::longNamesLeaveTheHeadItsSize()
{
    STCopyBeginning stBeginning;
    for (const QChar character : {QChar('a'), QChar(0x3042), QChar(1), QChar(0xd83d)}) {
        stBeginning.listSource.append('/' + QString(4000, character));
    }
    stBeginning.strDest = stBeginning.listSource.at(1);
    QCOMPARE(CCopyReportText::HeadAtBegin(stBeginning).size(), HEAD);
    QCOMPARE(CCopyReportText::HeadAtEnd(stBeginning, Account(1)).size(), HEAD);
    QVERIFY(CCopyReportText::HeadAtBegin(stBeginning).endsWith(" \n"));
}

// ---- when it is there

void tst_CCopyReportFile::goesWhenThereIsNothingToSay()
{
    Begin();
    const STReportEnd stEnd = m_pFile->End(Account(0));
    QVERIFY(stEnd.strPath.isEmpty());
    QVERIFY(!stEnd.bMissing);
    QVERIFY(QDir(m_pTree->Path()).isEmpty());
}

void tst_CCopyReportFile::staysForANote()
{
    Begin();
    STCopyItem stNote = Item("/a");
    stNote.enProblem = ENCopyProblem::LEAVES_VOLUME;
    stNote.nError = 0;
    stNote.bNote = true;
    m_pFile->Add(stNote);
    STCopyAccount stAccount = Account(0);
    stAccount.nNotes = 1;
    QCOMPARE(m_pFile->End(stAccount).strPath, m_strPath);
    QVERIFY(Lines().contains("Everything is whole. The items below are worth a note."));
    QCOMPARE(Items(), QStringList{"\"/a\": It is a link to another disk. What it leads to was copied."});
}

void tst_CCopyReportFile::overwritesNothing_data()
{
    QTest::addColumn<bool>("bLink");
    QTest::newRow("file") << false;
    QTest::newRow("link to nothing yet") << true;
}

void tst_CCopyReportFile::overwritesNothing()
{
    QFETCH(bool, bLink);
    const QString strName = QFileInfo(m_strPath).fileName();
    if (bLink) {
        m_pTree->Link(strName, m_pTree->Path("elsewhere"));
    } else {
        m_pTree->Write(strName, "mine");
    }
    m_pTree->Write(QFileInfo(m_strFolder).fileName() + "_1.txt", "mine, too");
    Begin();
    const STReportEnd stEnd = m_pFile->End(Account(1));
    QCOMPARE(stEnd.strPath, m_strFolder + "_2.txt");
    QCOMPARE(Content(stEnd.strPath).size(), HEAD);
    QCOMPARE(Content(m_strFolder + "_1.txt"), QByteArray("mine, too"));
    QVERIFY(!m_pTree->Has("elsewhere"));
    QCOMPARE(bLink || Content(m_strPath) == "mine", true);
}

void tst_CCopyReportFile::strangerInItsPlaceStays_data()
{
    QTest::addColumn<int>("nProblems");
    QTest::newRow("nothing to say") << 0;
    QTest::newRow("an item to tell") << 1;
}

void tst_CCopyReportFile::strangerInItsPlaceStays()
{
    QFETCH(int, nProblems);
    Begin();
    if (nProblems > 0) {
        m_pFile->Add(Item("/a"));
    }
    QVERIFY(QFile::remove(m_strPath));
    m_pTree->Write(QFileInfo(m_strPath).fileName(), "mine");
    const STReportEnd stEnd = m_pFile->End(Account(nProblems));
    QVERIFY(!stEnd.bMissing);
    QCOMPARE(Content(m_strPath), QByteArray("mine"));
    QCOMPARE(stEnd.strPath, nProblems > 0 ? m_strFolder + "_1.txt" : QString());
    m_strPath = stEnd.strPath;
    QCOMPARE(nProblems > 0 ? Items() : QStringList(),
             nProblems > 0 ? QStringList{Line("/a")} : QStringList());
}

void tst_CCopyReportFile::endTwiceIsTheSame()
{
    Begin();
    QCOMPARE(m_pFile->End(Account(1)).strPath, m_strPath);
    const QByteArray baContent = Content(m_strPath);
    QCOMPARE(m_pFile->End(Account(0)).strPath, m_strPath);
    m_pFile->Add(Item("/late"));
    QVERIFY(!m_pFile->GiveUpRoom(0));
    QVERIFY(Content(m_strPath) == baContent);
}

void tst_CCopyReportFile::withoutBeginNothingIsMade()
{
    const STReportEnd stEnd = m_pFile->End(Account(1));
    QVERIFY(stEnd.strPath.isEmpty());
    QVERIFY(!stEnd.bMissing);
    QVERIFY(QDir(m_pTree->Path()).isEmpty());
}

void tst_CCopyReportFile::destinationThatIsGoneIsNotTouched()
{
    Begin();
    const QByteArray baContent = Content(m_strPath);
    STCopyAccount stAccount = Account(1);
    stAccount.bGone = true;
    const STReportEnd stEnd = m_pFile->End(stAccount);
    QVERIFY(stEnd.strPath.isEmpty());
    QVERIFY(stEnd.bMissing);
    QVERIFY(Content(m_strPath) == baContent);
}

void tst_CCopyReportFile::folderThatComesLater()
{
    m_strFolder = m_pTree->Path("new/copy");
    m_strPath = m_strFolder + ".txt";
    m_pFile = std::make_unique<CCopyReportFile>(m_strFolder);
    m_pFile->Begin(nullptr, STCopyBeginning());
    m_pFile->Add(Item("/a"));
    m_pTree->MkDir("new");
    QCOMPARE(m_pFile->End(Account(1)).strPath, m_strPath);
    QCOMPARE(Items(), QStringList{Line("/a")});
}

void tst_CCopyReportFile::folderThatCannotBeWritten()
{
    m_pVolume = std::make_unique<CVolume>("Stick", "/dev/disk8s4", 1);
    if (!m_pVolume->IsValid() || !m_pVolume->MakeReadOnly()) {
        QSKIP("no volumes here");
    }
    m_strFolder = m_pVolume->Path("copy");
    m_pFile = std::make_unique<CCopyReportFile>(m_strFolder);
    Begin();
    m_pFile->Add(Item("/a"));
    QVERIFY(!m_pFile->GiveUpRoom(0));
    const STReportEnd stEnd = m_pFile->End(Account(1));
    QVERIFY(stEnd.strPath.isEmpty());
    QVERIFY(stEnd.bMissing);
}

void tst_CCopyReportFile::moreItemsThanAnybodyKeeps()
{
    const int nItems = STCopyAccount::LISTED_ITEMS + 500;
    Begin();
    for (int nItem = 0; nItem < nItems; ++nItem) {
        m_pFile->Add(Item(QString::number(nItem)));
    }
    QVERIFY(!m_pFile->End(Account(nItems)).bMissing);
    const QStringList listItem = Items();
    QCOMPARE(listItem.count(), nItems);
    QCOMPARE(listItem.last(), Line(QString::number(nItems - 1)));
}

// ---- its room

void tst_CCopyReportFile::holdsRoom()
{
    Begin();
    QVERIFY(Blocks() >= HEAD + 64 * 1024);
    QCOMPARE(QFileInfo(m_strPath).size(), qint64(HEAD));
    m_pFile->Add(Item("/a"));
    m_pFile->End(Account(1));
    QVERIFY2(Blocks() <= 2 * 4096, "the reserve stays behind");
}

void tst_CCopyReportFile::givesUpRoomAndThenItself()
{
    Begin();
    m_pFile->Add(Item("/a"));
    const QByteArray baContent = Content(m_strPath);
    QVERIFY(m_pFile->GiveUpRoom(0));
    QVERIFY(Content(m_strPath) == baContent);
    QVERIFY(Blocks() <= 2 * 4096);
    QVERIFY(m_pFile->GiveUpRoom(0));
    QVERIFY(!QFileInfo::exists(m_strPath));
    QVERIFY(!m_pFile->GiveUpRoom(0));
}

void tst_CCopyReportFile::keepsWhatCannotHelp()
{
    Begin();
    QVERIFY(!m_pFile->GiveUpRoom(HEAD + 64 * 1024 + 1));
    QVERIFY(Blocks() >= HEAD + 64 * 1024);
    QVERIFY(m_pFile->GiveUpRoom(HEAD + 64 * 1024));
    QVERIFY(!m_pFile->GiveUpRoom(HEAD + 64 * 1024));
    QVERIFY(QFileInfo::exists(m_strPath));
}

void tst_CCopyReportFile::isWrittenAgainAtTheEnd()
{
    const int nItems = STCopyAccount::LISTED_ITEMS + 2;
    Begin();
    for (int nItem = 0; nItem < nItems; ++nItem) {
        if (nItem == 5) {
            QVERIFY(m_pFile->GiveUpRoom(0));
            QVERIFY(m_pFile->GiveUpRoom(0));
        }
        m_pFile->Add(Item(QString::number(nItem)));
    }
    QVERIFY(!QFileInfo::exists(m_strPath));
    const STReportEnd stEnd = m_pFile->End(Account(nItems));
    QCOMPARE(stEnd.strPath, m_strPath);
    QVERIFY2(stEnd.bMissing, "two items have no line anywhere");
    const QStringList listItem = Items();
    QCOMPARE(listItem.count(), STCopyAccount::LISTED_ITEMS + 1);
    QCOMPARE(listItem.first(), Line("0"));
    QCOMPARE(listItem.last(), QString("And 2 more, for which there was no room."));
}

void tst_CCopyReportFile::isMissingWithoutRoom()
{
    m_pVolume = std::make_unique<CVolume>("Stick", "/dev/disk8s4", 1);
    if (!m_pVolume->IsValid()) {
        QSKIP("no volumes here");
    }
    m_strFolder = m_pVolume->Path("copy");
    m_strPath = m_strFolder + ".txt";
    m_pFile = std::make_unique<CCopyReportFile>(m_strFolder);
    Begin();
    Fill("a");
    QVERIFY(m_pFile->GiveUpRoom(0));
    QVERIFY(m_pFile->GiveUpRoom(0));
    Fill("b");
    m_pFile->Add(Item("/a"));
    const STReportEnd stEnd = m_pFile->End(Account(1));
    QVERIFY(stEnd.bMissing);
    QVERIFY(stEnd.strPath.isEmpty());
    QVERIFY(!QFileInfo::exists(m_strPath));
}

void tst_CCopyReportFile::lineWithoutRoomComesLater()
{
    m_pVolume = std::make_unique<CVolume>("Stick", "/dev/disk8s4", 1);
    if (!m_pVolume->IsValid()) {
        QSKIP("no volumes here");
    }
    m_strFolder = m_pVolume->Path("copy");
    m_strPath = m_strFolder + ".txt";
    m_pFile = std::make_unique<CCopyReportFile>(m_strFolder);
    Begin();
    Fill("a");
    QVERIFY(m_pFile->GiveUpRoom(0));
    Fill("b");
    // Two lines that need a page, which is not there yet.
    const QString strLong(2000, 'x');
    m_pFile->Add(Item(strLong));
    m_pFile->Add(Item("/b"));
    QCOMPARE(Items(), QStringList{});
    QCOMPARE(QFileInfo(m_strPath).size(), qint64(HEAD));
    QVERIFY(QFile::remove(m_pVolume->Path("b")));
    m_pFile->Add(Item("/c"));
    QCOMPARE(Items(), (QStringList{Line(strLong), Line("/b"), Line("/c")}));
}

// ---- a copy that breaks off

void tst_CCopyReportFile::killLeavesItUnfinished()
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        Begin();
        m_pFile->Add(Item("/a"));
        kill(getpid(), SIGKILL);
    }
    int nStatus = 0;
    QCOMPARE(waitpid(nChild, &nStatus, 0), nChild);
    QVERIFY(WIFSIGNALED(nStatus));
    QVERIFY(Lines().contains(NOT_ENDED));
    QVERIFY(Lines().contains("Not copied whole so far:"));
    QCOMPARE(Items(), QStringList{Line("/a")});
}

QTEST_GUILESS_MAIN(tst_CCopyReportFile)
#include "tst_CCopyReportFile.moc"
