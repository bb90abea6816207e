#include "support/CCopyBed.h"
#include "support/CMadeMac.h"
#include "support/CToolCompare.h"

#include <QDir>
#include <QFile>
#include <QtTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/** Copies of a folder that is ticked as a whole, listed or not. */
class tst_CDiskCopy : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Clear(); }

    void aWholeVolumeIsTheSameAfterwards();
    void whatIsThereStaysAsItIs_data();
    void whatIsThereStaysAsItIs();
    void itemsOfOneFolderShareIt();
    void foldersAboveWhoseNamesAreTaken();
    void whatBelongsToAFileAndAFolder();
    void whatBelongsToTheFoldersAbove();
    void theFolderOfTheCopyIsNotCopiedIntoItself();
    void onlyThePermissionsForOwnerGroupAndOthersAreGiven();
    void namesThatAreNoText();
    void pathThatIsTooLongForTheDestination();
    void whatIsNoFileIsBooked();
    void progressEndsAtAHundred();
    void aFileWithoutBytesTellsNothing();
    void aStopEndsIt();
    void aPauseHoldsIt();
    void theItemAtWorkIsTold();

private:
    /** Ticks "src/" + strName as a whole; the tree knows nothing of what is in it. */
    void Tick(const QString& strName) { m_pNodes->Add(Source(strName), Qt::Checked, m_pVolume); }

    /** Writes "src/" + strName without a node. */
    void Write(const QString& strName, const QByteArray& baContent = {})
    {
        m_pTree->Write("src/" + strName, baContent);
    }

    /** Where the copy of "src/" + strName is below the folder of the copy. */
    QString Place(const QString& strName) const { return Source(strName).mid(1); }

    QStringList Items() const;

    CDirNode* m_pVolume = nullptr; // "src"
};

static struct stat Status(const QString& strPath)
{
    struct stat stRaw = {};
    if (lstat(QFile::encodeName(strPath).constData(), &stRaw) != 0) {
        qFatal("not there: %s", qPrintable(strPath));
    }
    return stRaw;
}

static void SetMode(const QString& strPath, mode_t nMode)
{
    if (chmod(QFile::encodeName(strPath).constData(), nMode) != 0) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
}

static void SetTime(const QString& strPath, qint64 nSec)
{
    const timespec listTime[2] = {{time_t(nSec), 0}, {time_t(nSec), 123456789}};
    if (utimensat(AT_FDCWD, QFile::encodeName(strPath).constData(), listTime, AT_SYMLINK_NOFOLLOW) != 0) {
        qFatal("fixture failed: %s", qPrintable(strPath));
    }
}

/** Permissions and time of the last change. */
static QString Belongings(const QString& strPath)
{
    const struct stat stRaw = Status(strPath);
    return QString::asprintf("%04o %lld.%09ld", stRaw.st_mode & 07777, qint64(stRaw.st_mtim.tv_sec),
                             stRaw.st_mtim.tv_nsec);
}

void tst_CDiskCopy::init()
{
    Make();
    m_pNodes->Root()->m_bComplete = true;
    m_pVolume = m_pNodes->Add(m_pTree->MkDir("src"), Qt::PartiallyChecked);
}

/** The lines of the account, as "place: kind detail". */
QStringList tst_CDiskCopy::Items() const
{
    QStringList listItem;
    for (const STCopyItem& stItem : Account().listItem) {
        listItem.append(
            QString("%1: %2 %3").arg(stItem.strPath).arg(int(stItem.enProblem)).arg(stItem.strDetail));
    }
    return listItem;
}

void tst_CDiskCopy::aWholeVolumeIsTheSameAfterwards()
{
    NEEDS_COMPARE_TOOLS();
    CMadeMac mac(m_pTree->MkDir("src/Mac"), CMadeMac::LEAST_FILES);
    mac.PlantLinksOut();
    Tick("Mac");
    Run(mac.Made().nBytes);
    QCOMPARE(Items(), QStringList());
    QCOMPARE(Account().nBytes, mac.Made().nBytes);
    QCOMPARE(Account().nFiles, mac.Made().nFiles);
    QCOMPARE(Account().nLinks, mac.Made().nLinks);
    QCOMPARE(CToolCompare::RsyncDifferences(Source("Mac"), Copy("Mac"), mac.Made().bAttributes),
             QStringList());
    QCOMPARE(CToolCompare::DiffDifferences(Source("Mac"), Copy("Mac")), QStringList());
}

void tst_CDiskCopy::whatIsThereStaysAsItIs_data()
{
    QTest::addColumn<QString>("strThere"); // kind of what has the name already
    for (const char* pszKind : {"file", "unreadable file", "folder", "link to nowhere", "link to a file"}) {
        QTest::newRow(pszKind) << pszKind;
    }
}

void tst_CDiskCopy::whatIsThereStaysAsItIs()
{
    QFETCH(QString, strThere);
    Write("file.txt", "new");
    Write("folder/in it", "new");
    m_pTree->Link("src/link", "text");
    const QString strOld = m_pTree->Write("old", "old");
    for (const QString strName : {"file.txt", "folder", "link"}) {
        const QString strPath = "dst" + Source(strName);
        if (strThere == "folder") {
            m_pTree->Write(strPath + "/old", "old");
        } else if (strThere.startsWith("link")) {
            m_pTree->Link(strPath, strThere == "link to nowhere" ? QString("nowhere") : strOld);
        } else {
            m_pTree->Write(strPath, "old");
            SetMode(m_pTree->Path(strPath), strThere == "file" ? 0644 : 0);
        }
    }
    const QString strBefore = CToolCompare::Digest(m_strDest);
    Tick("file.txt");
    Tick("folder");
    Tick("link");
    Run(6);
    QCOMPARE(Copied("file_1txt"), QByteArray("new"));
    QCOMPARE(Copied("folder_1/in it"), QByteArray("new"));
    QCOMPARE(QFile::symLinkTarget(Copy("link_1")), QFileInfo(Copy("text")).absoluteFilePath());
    const QString strLine = "%1: " + QString::number(int(ENCopyProblem::NAME_CHANGED)) + " %2";
    QCOMPARE(Items(),
             (QStringList{strLine.arg(Source("file.txt"), Place("file_1txt")),
                          strLine.arg(Source("folder"), Place("folder_1")),
                          strLine.arg(Source("link"), Place("link_1"))}));
    QCOMPARE(Account().nNotes, 3);
    QCOMPARE(Content(strOld), QByteArray("old"));
    QVERIFY(QFile::remove(Copy("file_1txt")) && QFile::remove(Copy("link_1")));
    QVERIFY(QDir(Copy("folder_1")).removeRecursively());
    QCOMPARE(CToolCompare::Digest(m_strDest), strBefore);
}

void tst_CDiskCopy::itemsOfOneFolderShareIt()
{
    Write("folder/one", "1");
    Write("folder/two/in it", "2");
    Write("folder/not ticked", "3");
    Tick("folder/one");
    Tick("folder/two");
    Run(2);
    QCOMPARE(Items(), QStringList());
    QCOMPARE(QDir(Copy("folder")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             (QStringList{"one", "two"}));
    QCOMPARE(Copied("folder/two/in it"), QByteArray("2"));
}

void tst_CDiskCopy::foldersAboveWhoseNamesAreTaken()
{
    Write("folder/one", "1");
    Write("folder/two", "2");
    m_pTree->Write("dst" + Source("folder"), "a file");
    Tick("folder/one");
    Tick("folder/two");
    Run(2);
    QCOMPARE(Content(Copy("folder")), QByteArray("a file"));
    QCOMPARE(Copied("folder_1/one") + Copied("folder_1/two"), QByteArray("12"));
    const QString strLine = "%1: " + QString::number(int(ENCopyProblem::NAME_CHANGED)) + " %2";
    QCOMPARE(Items(), QStringList{strLine.arg(Source("folder"), Place("folder_1"))});
}

void tst_CDiskCopy::whatBelongsToAFileAndAFolder()
{
    Write("folder/read only/empty");
    Write("folder/read only/file", "1");
    m_pTree->Link("src/folder/link", "read only");
    SetMode(Source("folder/read only/empty"), 0400);
    SetMode(Source("folder/read only/file"), 0751);
    const QStringList listName{"folder/read only/empty", "folder/read only/file", "folder/read only",
                               "folder/link", "folder"};
    for (const QString& strName : listName) {
        SetTime(Source(strName), 1000000000 + strName.size());
    }
    SetMode(Source("folder/read only"), 0555);
    SetMode(Source("folder"), 0700);
    Tick("folder");
    Run(1);
    QCOMPARE(Items(), QStringList());
    for (const QString& strName : listName) {
        QCOMPARE(Belongings(Copy(strName)), Belongings(Source(strName)));
    }
}

void tst_CDiskCopy::whatBelongsToTheFoldersAbove()
{
    Write("above/in it/file", "1");
    m_pTree->Link("src/link", "above/in it");
    SetMode(Source("above"), 0711);
    SetMode(Source("above/in it"), 0555);
    SetTime(Source("above/in it"), 1000000001);
    SetTime(Source("above"), 1000000000);
    SetTime(Source("link"), 1000000002);
    Tick("above/in it/file");
    Tick("link/file");
    Run(1);
    for (const QString strName : {"above", "above/in it"}) {
        QCOMPARE(Belongings(Copy(strName)), Belongings(Source(strName)));
    }
    // What was made for the link is a folder.
    const struct stat stLink = Status(Copy("link"));
    QVERIFY(stLink.st_mtim.tv_sec != 1000000002 && (stLink.st_mode & 07777) != 0777);
}

void tst_CDiskCopy::theFolderOfTheCopyIsNotCopiedIntoItself()
{
    Write("folder/file", "1");
    m_strDest = Source("folder/rescue");
    m_pTree->Write("src/folder/rescue/old", "2");
    Tick("folder");
    Run(1);
    const QString strPlace = m_strDest + Source("folder");
    QCOMPARE(Content(strPlace + "/file"), QByteArray("1"));
    QVERIFY(!QFileInfo::exists(strPlace + "/rescue"));
    QCOMPARE(Account().nProblems, 0);
    QVERIFY2(LogLines().contains("Note: \"" + m_strDest + "\": it is the folder that is copied into"),
             qPrintable(LogLines().join('\n')));
}

void tst_CDiskCopy::onlyThePermissionsForOwnerGroupAndOthersAreGiven()
{
    Write("folder/file", "1");
    SetMode(Source("folder/file"), 06755);
    SetMode(Source("folder"), 01777);
    Tick("folder");
    Run(1);
    QCOMPARE(Items(), QStringList());
    QCOMPARE(int(Status(Copy("folder/file")).st_mode & 07777), 0755);
    QCOMPARE(int(Status(Copy("folder")).st_mode & 07777), 0777);
}

void tst_CDiskCopy::namesThatAreNoText()
{
    const QString strName = QFile::decodeName("a\xff\n\"b");
    Write("folder/" + strName, "1");
    m_pTree->Write("dst" + Source("folder/" + strName), "old");
    Tick("folder/" + strName);
    Run(1);
    QCOMPARE(Copied("folder/" + strName + "_1"), QByteArray("1"));
    QCOMPARE(Account().listItem.value(0).strDetail, '"' + Place("folder/") + "a\\xff\\n\\\"b_1\"");
}

void tst_CDiskCopy::pathThatIsTooLongForTheDestination()
{
    QString strDeep = "deep";
    while (Source(strDeep).size() < 3900) {
        strDeep += '/' + QString(200, 'd');
    }
    Write(strDeep + "/last/file", "1");
    Write("deep/other", "2");
    m_strDest = m_pTree->Path("dst/" + QString(150, 'x') + '/' + QString(100, 'y'));
    Tick("deep");
    Run(2);
    QCOMPARE(Copied("deep/other"), QByteArray("2"));
    QVERIFY(Account().nProblems > 0);
    const STCopyItem stLast = Account().listItem.last();
    QCOMPARE(stLast.strPath, Source(strDeep + "/last/file"));
    QCOMPARE(stLast.nError, ENAMETOOLONG);
    QCOMPARE(Account().nFiles, 1);
    QCOMPARE(Told(*m_pProgress).constLast(), QString("file 100"));
}

void tst_CDiskCopy::whatIsNoFileIsBooked()
{
    Write("folder/file", "1");
    QCOMPARE(mkfifo(QFile::encodeName(Source("folder/pipe")).constData(), 0600), 0);
    Tick("folder");
    Run(1);
    QCOMPARE(Problems(), QStringList{"folder/pipe: a pipe, socket or device (0 of unknown bytes copied)"});
    QVERIFY(!QFileInfo::exists(Copy("folder/pipe")));
    QCOMPARE(Copied("folder/file"), QByteArray("1"));
}

void tst_CDiskCopy::progressEndsAtAHundred()
{
    Write("folder/1", Pattern(2500000));
    Write("folder/2/2", Pattern(500000));
    Tick("folder");
    Run(3000000);
    QCOMPARE(Told(*m_pProgress), (QStringList{"1 34", "1 69", "1 83", "2 100"}));
    QCOMPARE(Account().nBytes, 3000000);
}

void tst_CDiskCopy::aFileWithoutBytesTellsNothing()
{
    Write("folder/empty");
    m_pTree->Link("src/folder/link", "empty");
    Tick("folder");
    Run(1);
    QCOMPARE(m_pProgress->count(), 0);
    QCOMPARE(Account().nFiles, 1);
    QCOMPARE(Account().nLinks, 1);
    QCOMPARE(QFileInfo(Copy("folder/empty")).size(), 0);
}

void tst_CDiskCopy::aStopEndsIt()
{
    Write("folder/1", Pattern(3000000));
    Write("folder/2/2", "2");
    Tick("folder");
    AfterChunk("1", 2, [this] { m_pWorker->SetCopyStatus(COPY_STATUS_STOP); });
    Run(3000001);
    QCOMPARE(Problems(), QStringList{"folder/1: the copy was stopped (2097152 of 3000000 bytes copied)"});
    QVERIFY(Account().bStopped);
    QVERIFY(!QFileInfo::exists(Copy("folder/2")));
}

void tst_CDiskCopy::aPauseHoldsIt()
{
    // Folders and links alone, which have no chunk after which to look.
    Write("folder/1", "1");
    for (int i = 0; i < 100; ++i) {
        m_pTree->MkDir(QString("src/folder/in/%1").arg(i));
    }
    Tick("folder");
    AfterChunk("1", 1, [this] { m_pWorker->SetCopyStatus(COPY_STATUS_PAUSE); });
    Start(1);
    QTRY_COMPARE(int(m_pWorker->CurrentStep()), int(ENCopyStep::PAUSED));
    QVERIFY(!QFileInfo::exists(Copy("folder/in")));
    m_pWorker->SetCopyStatus(COPY_STATUS_RUN);
    QVERIFY(WaitForEnd());
    QCOMPARE(Items(), QStringList());
    QCOMPARE(QDir(Copy("folder/in")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).count(), 100);
}

void tst_CDiskCopy::theItemAtWorkIsTold()
{
    Write("folder/1", "1");
    QString strPath;
    AfterChunk("1", 1, [&] { strPath = m_pWorker->CurrentPath(); });
    Tick("folder");
    Run(1);
    QCOMPARE(strPath, Source("folder/1"));
}

QTEST_GUILESS_MAIN(tst_CDiskCopy)
#include "tst_CDiskCopy.moc"
