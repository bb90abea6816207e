#include "copy/CDiskWalk.h"
#include "files/CFileNameCodec.h"
#include "support/CAnotherUser.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/CWalkRecorder.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QtTest>

#include <climits>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

// As of a file system that keeps no kinds of entries in its folders.
static bool s_bHideTypes = false;

extern "C" dirent* readdir(DIR* pFolder)
{
    using PFNRead = dirent* (*)(DIR*);
    static const PFNRead s_pfnRead = reinterpret_cast<PFNRead>(dlsym(RTLD_NEXT, "readdir"));
    dirent* const pEntry = s_pfnRead(pFolder);
    if (pEntry != nullptr && s_bHideTypes) {
        pEntry->d_type = DT_UNKNOWN;
    }
    return pEntry;
}

static const QString AGAIN = ": the same folder as another one, which is copied";
static const QString OTHER = ": another file system is mounted there, not entered";

class tst_CDiskWalk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void init();
    void cleanup() { s_bHideTypes = false; }

    void items_data();
    void items();
    void links_data();
    void links();
    void kindsThatTheFolderDoesNotTell();
    void folderEndsAfterWhatIsInIt();
    void folderThatIsRefusedIsLeftAlone();
    void volumeMayBeALink();
    void volumeThatIsGone();
    void nameThatIsNoUtf8();
    void specialFiles();
    void folderThatCannotBeRead();
    void volumeThatCannotBeRead();
    void mountedFileSystemIsNotEntered();
    void tickedFolderOfAnotherFileSystemIsEntered();
    void volumeThatIsTickedItselfIsEnteredThere();
    void folderMountedTwiceIsEnteredOnce();
    void deepTreeNeedsFewDescriptors();
    void folderThatIsMovedOnTheWay();
    void folderThatIsLostOnTheWay();
    void deeperThanAnyPath();
    void endsAtEachStep();

private:
    QString Volume(const QString& strEntry = QString()) const;
    void Fill(const QStringList& listEntry);
    void Walk(const QStringList& listItem = {QString()});
    QStringList Entries(const QStringList& listItem = {QString()});

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CWalkRecorder> m_pRecorder;
};

void tst_CDiskWalk::init()
{
    m_pTree = std::make_unique<CTempTree>();
    m_pTree->MkDir("V");
    m_pRecorder = std::make_unique<CWalkRecorder>(Volume());
}

/** A path of the volume; the volume's own without name. */
QString tst_CDiskWalk::Volume(const QString& strEntry) const
{
    return m_pTree->Path(strEntry.isEmpty() ? "V" : "V/" + strEntry);
}

/** Makes "folder/", "file" and "link -> text" on the volume. */
void tst_CDiskWalk::Fill(const QStringList& listEntry)
{
    for (const QString& strEntry : listEntry) {
        const QStringList listPart = strEntry.split(" -> ");
        const QString strPath = "V/" + listPart.at(0);
        if (listPart.size() > 1) {
            m_pTree->MkDir(QFileInfo(strPath).path());
            m_pTree->Link(strPath, listPart.at(1));
        } else {
            m_pTree->Fill({strPath});
        }
    }
}

/** Walks over these items; the empty one is the volume. */
void tst_CDiskWalk::Walk(const QStringList& listItem)
{
    QVector<STTickedItem> listTicked;
    for (const QString& strItem : listItem) {
        listTicked.append({Volume(strItem), Volume()});
    }
    CDiskWalk(listTicked, *m_pRecorder).Walk();
}

QStringList tst_CDiskWalk::Entries(const QStringList& listItem)
{
    Walk(listItem);
    return m_pRecorder->Entries();
}

void tst_CDiskWalk::items_data()
{
    QTest::addColumn<QStringList>("listEntry");
    QTest::addColumn<QStringList>("listItem");
    QTest::addColumn<QStringList>("listExpected");

    QTest::newRow("nothing") << QStringList{"a"} << QStringList{} << QStringList{};
    QTest::newRow("all of the volume")
        << QStringList{"a", "sub/b", "sub/deep/c", "empty/"} << QStringList{""}
        << QStringList{"V/", "V/a", "V/empty/", "V/sub/", "V/sub/b", "V/sub/deep/", "V/sub/deep/c"};
    QTest::newRow("names that the tree leaves out")
        << QStringList{"dev/a", "home/b", "homework", "Volumes/c", ".hidden", "sub/.x/y", "sub/devices"}
        << QStringList{""} << QStringList{"V/",        "V/.hidden",  "V/Volumes/",   "V/Volumes/c", "V/dev/",
                                          "V/dev/a",   "V/home/",    "V/home/b",     "V/homework",  "V/sub/",
                                          "V/sub/.x/", "V/sub/.x/y", "V/sub/devices"};
    QTest::newRow("folder and file") << QStringList{"a", "b", "sub/c", "sub/d/e"} << QStringList{"a", "sub/d"}
                                     << QStringList{"a", "sub/d/", "sub/d/e"};
    QTest::newRow("item that is gone")
        << QStringList{"a"} << QStringList{"gone", "a", "a/in a file", "no/way"}
        << QStringList{"a", "left out /a/in a file: it cannot be looked at, Not a directory",
                       "left out /gone: it cannot be looked at, No such file or directory",
                       "left out /no/way: it cannot be looked at, No such file or directory"};
    QTest::newRow("folder ticked twice") << QStringList{"sub/a"} << QStringList{"sub", "sub"}
                                         << QStringList{"left out /sub" + AGAIN, "sub/", "sub/a"};
}

void tst_CDiskWalk::items()
{
    QFETCH(QStringList, listEntry);
    QFETCH(QStringList, listItem);
    Fill(listEntry);
    QTEST(Entries(listItem), "listExpected");
    QCOMPARE(m_pRecorder->m_listWrong, QStringList());
}

void tst_CDiskWalk::links_data()
{
    QTest::addColumn<QStringList>("listEntry");
    QTest::addColumn<QStringList>("listItem");
    QTest::addColumn<QStringList>("listExpected");
    const QStringList listT{"T"};

    const auto fnStays = [&](const char* pszRow, const QString& strText, QStringList listOther = {}) {
        QTest::newRow(pszRow) << listOther + QStringList{"T/a/f", "T/l -> " + strText} << listT
                              << QStringList{"T/", "T/a/", "T/a/f", "T/l -> " + strText};
    };
    fnStays("to a folder in the item", "a");
    fnStays("to a file in the item", "a/f");
    fnStays("to a folder in the item, by its full path", "/T/a");
    fnStays("to the item itself", "../T");
    fnStays("to the folder around the item", "..");
    fnStays("to the volume", "/");
    fnStays("to nothing", "b");
    fnStays("to nothing below a file", "a/f/g");
    fnStays("to a file as if it were a folder", "../x/", {"x"});
    fnStays("to itself", "l");
    fnStays("in a circle", "../m", {"m -> n", "n -> T/l"});
    fnStays("to the running system", "/etc/passwd");
    fnStays("to another volume", "/Volumes/Other/x", {"Volumes/Other/x", "x"});
    fnStays("through a link to another volume", "../m/x", {"m -> /Volumes/Other", "Volumes/Other/x"});
    fnStays("up to another volume", "../../../../Other/x", {"x"});

    const auto fnFollowed = [&](const char* pszRow, const QString& strText, QStringList listOther = {}) {
        QTest::newRow(pszRow) << listOther + QStringList{"x/f", "T/l -> " + strText} << listT
                              << QStringList{"T/", "T/l/", "T/l/f"};
    };
    fnFollowed("to an unticked folder", "../x");
    fnFollowed("with a separator at the end", "../x/");
    fnFollowed("with too many separators", "..//.//x//.");
    fnFollowed("down and up again", "../x/../x");
    fnFollowed("from the root of its own system", "/x");
    fnFollowed("from its own volume's mount point", "/Volumes/V/x");
    fnFollowed("from its own volume's mount point, in other letters", "/Volumes/v/x");
    fnFollowed("up beyond the root", "../../../../x");
    fnFollowed("through a link to a folder", "../m/x", {"m -> .."});
    fnFollowed("to a link to a folder", "/m", {"m -> n", "n -> /Volumes/V/T/../x"});

    QTest::newRow("to an unticked file")
        << QStringList{"x", "T/l -> ../x"} << listT << QStringList{"T/", "T/l"};
    QTest::newRow("to a file behind a link")
        << QStringList{"x/f", "m -> x", "T/l -> ../m/f"} << listT << QStringList{"T/", "T/l"};
    QTest::newRow("in a volume that is ticked")
        << QStringList{"x/f", "T/l -> ../x", "T/m -> gone"} << QStringList{""}
        << QStringList{"V/", "V/T/", "V/T/l -> ../x", "V/T/m -> gone", "V/x/", "V/x/f"};
    QTest::newRow("to another item, a folder")
        << QStringList{"x/f", "T/l -> ../x/f", "T/m -> ../x"} << QStringList{"T", "x"}
        << QStringList{"T/", "T/l -> ../x/f", "T/m -> ../x", "x/", "x/f"};
    QTest::newRow("to another item, a file") << QStringList{"x/f", "T/l -> ../x/f"} << QStringList{"T", "x/f"}
                                             << QStringList{"T/", "T/l -> ../x/f", "x/f"};
    QTest::newRow("around another item")
        << QStringList{"x/f", "x/in/g", "T/l -> ../x"} << QStringList{"T", "x/in"}
        << QStringList{"T/", "T/l/", "T/l/f", "left out /x/in" + AGAIN, "x/in/", "x/in/g"};
    QTest::newRow("two to one folder")
        << QStringList{"x/f", "T/l -> ../x", "U/m -> ../x", "U/n -> ../x/f"} << QStringList{"T", "U"}
        << QStringList{"T/", "T/l/", "T/l/f", "U/", "U/m -> ../x", "U/n -> ../x/f"};
    QTest::newRow("two to one file") << QStringList{"x", "T/l -> ../x", "U/m -> ../x"}
                                     << QStringList{"T", "U"}
                                     << QStringList{"T/", "T/l", "U/", "U/m -> ../x"};
    QTest::newRow("to a folder around one that was followed")
        << QStringList{"x/f", "x/in/g", "T/l -> ../x/in", "U/m -> ../x"} << QStringList{"T", "U"}
        << QStringList{"T/", "T/l/", "T/l/g", "U/", "U/m/", "U/m/f", "left out /x/in" + AGAIN};
    QTest::newRow("in a folder that is followed")
        << QStringList{"x/self -> .", "x/up -> ..", "x/back -> ../T", "x/on -> ../y", "y/f", "T/l -> ../x"}
        << listT << QStringList{"T/",       "T/l/",          "T/l/back -> ../T", "T/l/on/",
                                "T/l/on/f", "T/l/self -> .", "T/l/up -> .."};
    QTest::newRow("to a folder around one that is followed")
        << QStringList{"p/x/f", "p/x/up -> ..", "T/l -> ../p/x"} << listT
        << QStringList{"T/", "T/l/", "T/l/f", "T/l/up -> .."};
    QTest::newRow("to a folder around the link that was followed")
        << QStringList{"a/T/l -> ../../x", "x/m -> ../a", "x/n -> /"} << QStringList{"a/T"}
        << QStringList{"a/T/", "a/T/l/", "a/T/l/m -> ../a", "a/T/l/n -> /"};
    QTest::newRow("versions of a bundle")
        << QStringList{"T/B/Versions/A/bin", "T/B/Versions/Current -> A", "T/B/bin -> Versions/Current/bin"}
        << listT
        << QStringList{"T/",
                       "T/B/",
                       "T/B/Versions/",
                       "T/B/Versions/A/",
                       "T/B/Versions/A/bin",
                       "T/B/Versions/Current -> A",
                       "T/B/bin -> Versions/Current/bin"};

    QTest::newRow("ticked, to an unticked folder")
        << QStringList{"x/f", "l -> x"} << QStringList{"l"} << QStringList{"l/", "l/f"};
    QTest::newRow("ticked, to an unticked file")
        << QStringList{"x/f", "a/l -> ../x/f"} << QStringList{"a/l"} << QStringList{"a/l"};
    QTest::newRow("ticked, to a ticked folder")
        << QStringList{"x/f", "l -> x"} << QStringList{"l", "x"} << QStringList{"l -> x", "x/", "x/f"};
    QTest::newRow("ticked, to the folder that it lies in")
        << QStringList{"x/l -> .", "x/m -> /"} << QStringList{"x/l", "x/m"}
        << QStringList{"x/l -> .", "x/m -> /"};
    QTest::newRow("ticked, to nothing") << QStringList{"l -> x"} << QStringList{"l"} << QStringList{"l -> x"};
    QTest::newRow("ticked, to another volume")
        << QStringList{"l -> /Volumes/Other"} << QStringList{"l"} << QStringList{"l -> /Volumes/Other"};
    QTest::newRow("ticked folder behind a link")
        << QStringList{"x/sub/f", "m -> x"} << QStringList{"m/sub"} << QStringList{"m/sub/", "m/sub/f"};
    QTest::newRow("ticked folder behind a link to another volume")
        << QStringList{"m -> /Volumes/Other"} << QStringList{"m/sub"}
        << QStringList{"left out /m/sub: a link above it leads out of its volume"};
    QTest::newRow("ticked folder behind a circle")
        << QStringList{"m -> n", "n -> m"} << QStringList{"m/sub"}
        << QStringList{"left out /m/sub: it cannot be looked at, Too many levels of symbolic links"};
}

void tst_CDiskWalk::links()
{
    QFETCH(QStringList, listEntry);
    QFETCH(QStringList, listItem);
    // What the running system would find above the volume.
    m_pTree->Write("x/wrong");
    m_pTree->Write("Other/x/wrong");
    Fill(listEntry);
    QTEST(Entries(listItem), "listExpected");
    QCOMPARE(m_pRecorder->m_listWrong, QStringList());
}

void tst_CDiskWalk::kindsThatTheFolderDoesNotTell()
{
    Fill({"T/f", "T/a/g", "T/l -> a", "T/m -> ../x", "x/h"});
    s_bHideTypes = true;
    QCOMPARE(Entries({"T"}), (QStringList{"T/", "T/a/", "T/a/g", "T/f", "T/l -> a", "T/m/", "T/m/h"}));
}

void tst_CDiskWalk::folderEndsAfterWhatIsInIt()
{
    Fill({"T/a/f", "T/g", "x/h", "T/l -> ../x"});
    Walk({"T"});
    QStringList listOpen;
    for (const QString& strLine : qAsConst(m_pRecorder->m_listLine)) {
        if (strLine.endsWith("/ ends")) {
            QCOMPARE(listOpen.takeLast() + " ends", strLine);
            continue;
        }
        QVERIFY2(listOpen.isEmpty() || strLine.startsWith(listOpen.constLast()), qPrintable(strLine));
        if (strLine.endsWith('/')) {
            listOpen.append(strLine);
        }
    }
    QCOMPARE(listOpen, QStringList());
    QCOMPARE(m_pRecorder->m_listLine.count("T/l/h"), 1);
    QCOMPARE(m_pRecorder->m_listWrong, QStringList());
}

void tst_CDiskWalk::folderThatIsRefusedIsLeftAlone()
{
    Fill({"T/a/f", "T/b/g"});
    m_pRecorder->m_listRefused = QStringList{"T/a/"};
    QCOMPARE(Entries({"T"}), (QStringList{"T/", "T/a/", "T/b/", "T/b/g"}));
    QVERIFY(!m_pRecorder->m_listLine.contains("T/a/ ends"));
}

void tst_CDiskWalk::volumeMayBeALink()
{
    m_pTree->Write("real/T/f");
    m_pTree->Write("real/x/g");
    m_pTree->Link("real/T/l", "/Volumes/Mac/x");
    const QString strVolume = m_pTree->Link("Mac", "real");
    CWalkRecorder all(strVolume);
    CDiskWalk({{strVolume, strVolume}}, all).Walk();
    QCOMPARE(all.Entries(),
             (QStringList{"Mac/", "Mac/T/", "Mac/T/f", "Mac/T/l -> /Volumes/Mac/x", "Mac/x/", "Mac/x/g"}));
    CWalkRecorder item(strVolume);
    CDiskWalk({{strVolume + "/T", strVolume}}, item).Walk();
    QCOMPARE(item.Entries(), (QStringList{"T/", "T/f", "T/l/", "T/l/g"}));
    QCOMPARE(item.m_listWrong, QStringList());
}

void tst_CDiskWalk::volumeThatIsGone()
{
    QVERIFY(QDir().rmdir(Volume()));
    const QString strWhy = ": it cannot be looked at, No such file or directory";
    QCOMPARE(Entries({"", "a"}), (QStringList{"left out /a" + strWhy, "left out " + strWhy}));
    QCOMPARE(m_pRecorder->m_listProblem.at(0), ENCopyProblem::SOURCE_OPEN);
}

void tst_CDiskWalk::nameThatIsNoUtf8()
{
    CTempTree names;
    names.WriteBytesName("\xff\xfe.jpg", "x");
    CWalkRecorder recorder(names.Path());
    CDiskWalk({{names.Path(), names.Path()}}, recorder).Walk();
    QCOMPARE(recorder.Entries().size(), 2);
    QCOMPARE(recorder.m_listWrong, QStringList());
}

void tst_CDiskWalk::specialFiles()
{
    Fill({"T/f", "x/", "T/link -> ../x/pipe", "T/other -> ../x/other"});
    for (const char* pszPipe : {"T/pipe", "x/pipe", "x/other"}) {
        QCOMPARE(mkfifo(QFile::encodeName(Volume(pszPipe)).constData(), 0600), 0);
    }
    const QString strWhy = ": a pipe, socket or device";
    QCOMPARE(Entries({"T", "x/pipe"}),
             (QStringList{"T/", "T/f", "T/link -> ../x/pipe", "T/other -> ../x/other",
                          "left out /T/pipe" + strWhy, "left out /x/pipe" + strWhy}));
    QCOMPARE(m_pRecorder->m_listProblem.at(0), ENCopyProblem::SPECIAL_FILE);
}

void tst_CDiskWalk::folderThatCannotBeRead()
{
    Fill({"T/a/f", "T/b/g"});
    QCOMPARE(chmod(QFile::encodeName(Volume("T/a")).constData(), 0), 0);
    QCOMPARE(chmod(QFile::encodeName(m_pTree->Path()).constData(), 0755), 0);
    const CAnotherUser user;
    if (!user.IsValid()) {
        QSKIP("the system has no user without privileges");
    }
    QCOMPARE(Entries({"T"}),
             (QStringList{"T/", "T/a/", "T/b/", "T/b/g",
                          "left out /T/a: its contents cannot be listed, Permission denied"}));
    QCOMPARE(m_pRecorder->m_listLine.count("T/a/ ends"), 1);
    QCOMPARE(m_pRecorder->m_listProblem, QVector<ENCopyProblem>{ENCopyProblem::FOLDER_READ});
}

void tst_CDiskWalk::volumeThatCannotBeRead()
{
    Fill({"T/f"});
    QCOMPARE(chmod(QFile::encodeName(Volume()).constData(), 0111), 0);
    QCOMPARE(chmod(QFile::encodeName(m_pTree->Path()).constData(), 0755), 0);
    const CAnotherUser user;
    if (!user.IsValid()) {
        QSKIP("the system has no user without privileges");
    }
    QCOMPARE(Entries({""}),
             (QStringList{"V/", "left out : its contents cannot be listed, Permission denied"}));
    QCOMPARE(m_pRecorder->m_listLine.constLast(), "V/ ends");
    QCOMPARE(m_pRecorder->m_listWrong, QStringList());
}

void tst_CDiskWalk::mountedFileSystemIsNotEntered()
{
    NEEDS_VOLUMES();
    Fill({"T/f", "T/mnt/", "mnt/", "U/l -> ../mnt/x", "U/m -> ../mnt"});
    const QByteArray baInside = QFile::encodeName(Volume("T/mnt"));
    const QByteArray baBeside = QFile::encodeName(Volume("mnt"));
    QVERIFY(CVolume::Mount("other", baInside) && CVolume::Mount("other", baBeside));
    Fill({"T/mnt/x", "mnt/x"});
    const QStringList listFound = Entries({"T", "U"});
    QVERIFY(CVolume::Unmount(baInside) && CVolume::Unmount(baBeside));
    QCOMPARE(listFound,
             (QStringList{"T/", "T/f", "T/mnt/", "U/", "U/l -> ../mnt/x", "U/m -> ../mnt",
                          "left out /T/mnt" + OTHER}));
    QCOMPARE(m_pRecorder->m_listLine.count("T/mnt/ ends"), 1);
    QCOMPARE(m_pRecorder->m_listProblem, QVector<ENCopyProblem>{ENCopyProblem::OTHER_FILE_SYSTEM});
}

void tst_CDiskWalk::tickedFolderOfAnotherFileSystemIsEntered()
{
    NEEDS_VOLUMES();
    Fill({"mnt/", "T/l -> ../mnt/x/f", "T/m -> ../mnt/y"});
    const QByteArray baPoint = QFile::encodeName(Volume("mnt"));
    QVERIFY(CVolume::Mount("other", baPoint));
    m_pTree->Fill({"V/mnt/x/f", "V/mnt/y/g"});
    const QStringList listEntry = {"T/", "T/l -> ../mnt/x/f", "T/m -> ../mnt/y", "mnt/x/", "mnt/x/f"};
    const QStringList listFound = Entries({"T", "mnt/x"});
    m_pRecorder = std::make_unique<CWalkRecorder>(Volume());
    const QStringList listMount = Entries({"mnt"});
    QVERIFY(CVolume::Unmount(baPoint));
    QCOMPARE(listFound, listEntry);
    QCOMPARE(listMount, (QStringList{"mnt/", "mnt/x/", "mnt/x/f", "mnt/y/", "mnt/y/g"}));
}

void tst_CDiskWalk::volumeThatIsTickedItselfIsEnteredThere()
{
    NEEDS_VOLUMES();
    Fill({"f", "mnt/"});
    const QByteArray baPoint = QFile::encodeName(Volume("mnt"));
    QVERIFY(CVolume::Mount("other", baPoint));
    m_pTree->Write("V/mnt/x");
    CDiskWalk({{Volume(), Volume()}, {Volume("mnt"), Volume("mnt")}}, *m_pRecorder).Walk();
    const QStringList listFound = m_pRecorder->Entries();
    QVERIFY(CVolume::Unmount(baPoint));
    QCOMPARE(listFound, (QStringList{"V/", "V/f", "left out /mnt" + AGAIN, "mnt/", "mnt/x"}));
}

void tst_CDiskWalk::folderMountedTwiceIsEnteredOnce()
{
    NEEDS_VOLUMES();
    Fill({"T/f", "U/"});
    const QByteArray baPoint = QFile::encodeName(Volume("U"));
    QVERIFY(CVolume::Bind(QFile::encodeName(Volume("T")), baPoint));
    const QStringList listFound = Entries({"T", "U"});
    QVERIFY(CVolume::Unmount(baPoint));
    QCOMPARE(listFound, (QStringList{"T/", "T/f", "left out /U" + AGAIN}));
}

/** Folders in each other, "0/1/2…", each with a file and with a folder beside the next one on both sides. */
static QStringList DeepEntries(int nFirst, int nLast)
{
    QString strFolder = "deep";
    QStringList listEntry;
    for (int nLevel = nFirst; nLevel <= nLast; ++nLevel) {
        listEntry << strFolder + "/file" << strFolder + "/a/f" << strFolder + "/z/f";
        strFolder += "/n" + QString::number(nLevel);
    }
    return listEntry;
}

static int OpenDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

void tst_CDiskWalk::deepTreeNeedsFewDescriptors()
{
    const QStringList listEntry = DeepEntries(0, 199);
    Fill(listEntry);
    const int nBefore = OpenDescriptors();
    int nMost = 0;
    m_pRecorder->m_fnEntry = [&nMost](const QString&) { nMost = qMax(nMost, OpenDescriptors()); };
    Walk({"deep"});
    for (const QString& strEntry : listEntry) {
        QCOMPARE(m_pRecorder->m_listLine.count(strEntry), 1);
    }
    QVERIFY2(nMost - nBefore <= 40, qPrintable(QString::number(nMost - nBefore)));
    QCOMPARE(OpenDescriptors(), nBefore);
    QCOMPARE(m_pRecorder->m_listProblem.size(), 0);
    QCOMPARE(m_pRecorder->m_listWrong, QStringList());
}

void tst_CDiskWalk::folderThatIsMovedOnTheWay()
{
    const QStringList listEntry = DeepEntries(0, 60);
    Fill(listEntry);
    const QString strDeepest = listEntry.at(listEntry.size() - 3);
    m_pRecorder->m_fnEntry = [&](const QString& strLine) {
        if (strLine == strDeepest) {
            QVERIFY(QFile::rename(Volume("deep/n0/n1/n2"), Volume("elsewhere")));
        }
    };
    Walk({"deep"});
    for (const QString& strEntry : listEntry) {
        QCOMPARE(m_pRecorder->m_listLine.count(strEntry), 1);
    }
    QCOMPARE(m_pRecorder->m_listProblem.size(), 0);
}

void tst_CDiskWalk::folderThatIsLostOnTheWay()
{
    const QStringList listEntry = DeepEntries(0, 60);
    Fill(listEntry);
    const QString strDeepest = listEntry.at(listEntry.size() - 3);
    m_pRecorder->m_fnEntry = [&](const QString& strLine) {
        if (strLine == strDeepest) {
            QVERIFY(QFile::rename(Volume("deep/n0/n1/n2"), Volume("elsewhere")));
            QVERIFY(QFile::rename(Volume("deep/n0/n1"), Volume("away")));
        }
    };
    Walk({"deep"});
    QCOMPARE(m_pRecorder->m_listLine.count("left out /deep/n0/n1: its contents cannot be listed to the end, "
                                           "Stale file handle"),
             1);
    QCOMPARE(m_pRecorder->m_listProblem, QVector<ENCopyProblem>{ENCopyProblem::FOLDER_READ});
    QCOMPARE(m_pRecorder->m_listLine.constLast(), "deep/ ends");
}

void tst_CDiskWalk::deeperThanAnyPath()
{
    const QByteArray baName(200, 'n');
    int nFolder = open(QFile::encodeName(Volume()).constData(), O_RDONLY | O_DIRECTORY);
    for (int nLength = 0; nLength < PATH_MAX + 1000; nLength += 201) {
        QCOMPARE(mkdirat(nFolder, baName.constData(), 0755), 0);
        const int nNext = openat(nFolder, baName.constData(), O_RDONLY | O_DIRECTORY);
        close(nFolder);
        nFolder = nNext;
        close(openat(nFolder, "file", O_CREAT | O_WRONLY, 0644));
    }
    close(nFolder);
    Walk();
    QCOMPARE(QProcess::execute("rm", {"-rf", Volume()}), 0);
    const QStringList listLeftOut = m_pRecorder->m_listLine.filter("left out");
    QCOMPARE(listLeftOut.size(), 1);
    QVERIFY2(listLeftOut.at(0).endsWith(": its contents cannot be listed, File name too long"),
             qPrintable(listLeftOut.at(0).right(60)));
    QVERIFY(listLeftOut.at(0).size() > PATH_MAX - 250);
    QCOMPARE(m_pRecorder->m_listWrong, QStringList());
}

void tst_CDiskWalk::endsAtEachStep()
{
    Fill({"T/a/f", "T/g", "x/h", "T/l -> ../x", "T/m -> a"});
    Walk({"T", "x/h"});
    const qint64 nSteps = m_pRecorder->m_nSteps;
    const QStringList listLine = m_pRecorder->m_listLine;
    QVERIFY(nSteps > listLine.size());
    for (qint64 nMost = 0; nMost < nSteps; ++nMost) {
        CWalkRecorder recorder(Volume());
        recorder.m_nMostSteps = nMost;
        CDiskWalk({{Volume("T"), Volume()}, {Volume("x/h"), Volume()}}, recorder).Walk();
        QCOMPARE(recorder.m_nSteps, nMost + 1);
        QCOMPARE(recorder.m_nAfterEnd, 0);
        QCOMPARE(recorder.m_listLine, QStringList(listLine.mid(0, recorder.m_listLine.size())));
    }
}

QTEST_GUILESS_MAIN(tst_CDiskWalk)
#include "tst_CDiskWalk.moc"
