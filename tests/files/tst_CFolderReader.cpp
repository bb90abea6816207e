#include "files/CFolderReader.h"
#include "support/CTempTree.h"
#include "support/CWithoutOverride.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <cerrno>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** What stands in front of the C library's readdir() does. */
struct STReading
{
    bool bHideTypes = false; ///< as file systems do that keep no types in their folders
    int nLeft = -1; ///< entries to be read before an error comes; -1 for no error
};

STReading s_stReading;

enum class ENWay
{
    PATH, ///< CFolderReader(path)
    ENTRY, ///< CFolderReader(descriptor, name)
};

} // namespace

Q_DECLARE_METATYPE(ENWay)

extern "C" dirent* readdir(DIR* pFolder)
{
    using PFNRead = dirent* (*)(DIR*);
    static const PFNRead s_pfnRead = reinterpret_cast<PFNRead>(dlsym(RTLD_NEXT, "readdir"));
    if (s_stReading.nLeft == 0) {
        errno = EIO;
        return nullptr;
    }
    s_stReading.nLeft -= s_stReading.nLeft > 0 ? 1 : 0;
    dirent* const pEntry = s_pfnRead(pFolder);
    if (pEntry != nullptr && s_stReading.bHideTypes) {
        pEntry->d_type = DT_UNKNOWN;
    }
    return pEntry;
}

static CFolderReader Opened(ENWay enWay, const QByteArray& baPath)
{
    return enWay == ENWay::PATH ? CFolderReader(baPath.constData())
                                : CFolderReader(AT_FDCWD, baPath.constData());
}

static QList<QByteArray> Names(CFolderReader& folder)
{
    QList<QByteArray> listName;
    while (folder.Next()) {
        listName += folder.Name();
    }
    std::sort(listName.begin(), listName.end());
    return listName;
}

static int OpenDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
}

class tst_CFolderReader : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_pTree = std::make_unique<CTempTree>(); }
    void cleanup() { s_stReading = STReading(); }

    void namesAreTheBytesOfTheDisk_data() { AddWays(); }
    void namesAreTheBytesOfTheDisk();
    void kindOfEntry_data();
    void kindOfEntry();
    void folderThatTheListTells_data();
    void folderThatTheListTells();
    void refused_data();
    void refused();
    void readingThatEndsEarly();
    void descriptorIsTheFoldersOwn_data() { AddWays(); }
    void descriptorIsTheFoldersOwn();
    void entryOfAnOpenFolder();

private:
    static void AddWays()
    {
        QTest::addColumn<ENWay>("enWay");
        QTest::newRow("by path") << ENWay::PATH;
        QTest::newRow("by entry") << ENWay::ENTRY;
    }

    QByteArray Path(const char* pszRelative = "") const
    {
        return QFile::encodeName(m_pTree->Path(pszRelative));
    }

    std::unique_ptr<CTempTree> m_pTree;
};

void tst_CFolderReader::namesAreTheBytesOfTheDisk()
{
    QFETCH(ENWay, enWay);
    QList<QByteArray> listName
        = {"...", "..a", ".hidden", "-rf", " ", "two\nlines", "caf\xe9", QByteArray(255, 'n')};
    for (const QByteArray& baName : qAsConst(listName)) {
        m_pTree->WriteBytesName(baName);
    }
    std::sort(listName.begin(), listName.end());
    CFolderReader folder = Opened(enWay, Path());
    errno = EIO; // what was left behind by somebody else is no error of the folder
    QCOMPARE(Names(folder), listName);
    QCOMPARE(folder.Error(), 0);
    QVERIFY(!folder.Next());
    QVERIFY(folder.IsOpen());
}

void tst_CFolderReader::kindOfEntry_data()
{
    QTest::addColumn<bool>("bHideTypes");
    QTest::newRow("told by the folder") << false;
    QTest::newRow("asked of the file system") << true;
}

void tst_CFolderReader::kindOfEntry()
{
    QFETCH(bool, bHideTypes);
    m_pTree->Write("file");
    m_pTree->MkDir("folder");
    QCOMPARE(mkfifo(Path("pipe").constData(), 0600), 0);
    m_pTree->Link("to file", "file");
    m_pTree->Link("to folder", "folder");
    m_pTree->Link("to nothing", "nowhere");
    s_stReading.bHideTypes = bHideTypes;
    QByteArrayList listSeen;
    for (CFolderReader folder(Path().constData()); folder.Next();) {
        const QByteArray baLink = folder.IsLink() ? ", a link" : "";
        listSeen += folder.Name() + baLink + (folder.IsFolder() ? ", a folder" : "");
    }
    std::sort(listSeen.begin(), listSeen.end());
    const QByteArrayList listExpected{"file",
                                      "folder, a folder",
                                      "pipe",
                                      "to file, a link",
                                      "to folder, a link, a folder",
                                      "to nothing, a link"};
    QCOMPARE(listSeen, listExpected);
}

void tst_CFolderReader::folderThatTheListTells_data()
{
    QTest::addColumn<bool>("bHideTypes");
    QTest::addColumn<QByteArrayList>("listKnown");
    QTest::newRow("with types") << false << QByteArrayList{"folder"};
    QTest::newRow("without types") << true << QByteArrayList{};
}

void tst_CFolderReader::folderThatTheListTells()
{
    QFETCH(bool, bHideTypes);
    m_pTree->Write("file");
    m_pTree->MkDir("folder");
    m_pTree->Link("to folder", "folder");
    s_stReading.bHideTypes = bHideTypes;
    QByteArrayList listKnown;
    for (CFolderReader folder(Path().constData()); folder.Next();) {
        if (folder.IsKnownFolder()) {
            listKnown += folder.Name();
        }
    }
    QTEST(listKnown, "listKnown");
}

void tst_CFolderReader::refused_data()
{
    QTest::addColumn<ENWay>("enWay");
    QTest::addColumn<QString>("strName");
    QTest::addColumn<int>("nError");
    const auto row = [](const char* pszName, int nByPath, int nByEntry) {
        QTest::addRow("%s, by path", pszName) << ENWay::PATH << pszName << nByPath;
        QTest::addRow("%s, by entry", pszName) << ENWay::ENTRY << pszName << nByEntry;
    };
    row("folder", 0, 0);
    row("missing", ENOENT, ENOENT);
    row("file", ENOTDIR, ENOTDIR);
    row("locked", EACCES, EACCES);
    row("link", 0, ENOTDIR);
    row("broken", ENOENT, ENOTDIR);
    row("circle", ELOOP, ENOTDIR);
}

void tst_CFolderReader::refused()
{
    QFETCH(ENWay, enWay);
    QFETCH(QString, strName);
    QFETCH(int, nError);
    m_pTree->Write("file");
    m_pTree->Write("folder/inner");
    m_pTree->Link("link", "folder");
    m_pTree->Link("broken", "nowhere");
    m_pTree->Link("circle", "circle");
    QCOMPARE(chmod(QFile::encodeName(m_pTree->MkDir("locked")).constData(), 0), 0);
    const CWithoutOverride user;
    const int nOpen = OpenDescriptors();
    {
        CFolderReader folder = Opened(enWay, QFile::encodeName(m_pTree->Path(strName)));
        QCOMPARE(folder.IsOpen(), nError == 0);
        QCOMPARE(folder.Error(), nError);
        QCOMPARE(folder.Descriptor() != -1, nError == 0);
        QCOMPARE(folder.Next(), nError == 0);
        QCOMPARE(folder.Error(), nError);
    }
    QCOMPARE(OpenDescriptors(), nOpen);
}

void tst_CFolderReader::readingThatEndsEarly()
{
    for (const char* pszName : {"a", "b", "c", "d", "e"}) {
        m_pTree->Write(pszName);
    }
    s_stReading.nLeft = 4; // two of them may be "." and ".."
    CFolderReader folder(Path().constData());
    const int nFound = Names(folder).size();
    QVERIFY2(nFound >= 2 && nFound <= 4, qPrintable(QString::number(nFound)));
    QCOMPARE(folder.Error(), EIO);
    QVERIFY(folder.IsOpen());
}

void tst_CFolderReader::descriptorIsTheFoldersOwn()
{
    QFETCH(ENWay, enWay);
    const CFolderReader folder = Opened(enWay, Path());
    struct stat stOpen;
    struct stat stPath;
    QCOMPARE(fstat(folder.Descriptor(), &stOpen), 0);
    QCOMPARE(stat(Path().constData(), &stPath), 0);
    QVERIFY(stOpen.st_ino == stPath.st_ino && stOpen.st_dev == stPath.st_dev);
    QVERIFY((fcntl(folder.Descriptor(), F_GETFD) & FD_CLOEXEC) != 0);
}

void tst_CFolderReader::entryOfAnOpenFolder()
{
    m_pTree->Write("folder/inner");
    CFolderReader outer(Path().constData());
    QVERIFY(outer.Next());
    // The name alone would lead elsewhere: what counts is the folder that is open.
    QVERIFY(!QFileInfo::exists("folder"));
    CFolderReader inner(outer.Descriptor(), outer.Name());
    QCOMPARE(Names(inner), QList<QByteArray>{"inner"});
}

QTEST_GUILESS_MAIN(tst_CFolderReader)
#include "tst_CFolderReader.moc"
