#include "HostileNames.h"
#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "tree/CDirListing.h"
#include "tree/CDirNode.h"

#include <QDir>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

static QStringList Names(const STDirListing& stListing)
{
    QStringList listName;
    for (const STDirEntry& stEntry : stListing.listEntry) {
        listName += stEntry.strName;
    }
    return listName;
}

static STDirListing ListOf(const QString& strFolder)
{
    return CDirNode(QFileInfo(strFolder), nullptr).List({});
}

/** What Qt lists with the filter and the order that the tree is to have. */
static QFileInfoList QtListing(const QString& strFolder)
{
    return QDir(strFolder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System
                                             | QDir::NoDotAndDotDot,
                                         QDir::Name | QDir::DirsFirst | QDir::IgnoreCase);
}

static void MakeSocket(const QString& strPath)
{
    const QByteArray baPath = QFile::encodeName(strPath);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    QVERIFY(size_t(baPath.size()) < sizeof(address.sun_path));
    std::copy(baPath.begin(), baPath.end(), address.sun_path);
    const int nSocket = socket(AF_UNIX, SOCK_STREAM, 0);
    QVERIFY(bind(nSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0);
    close(nSocket);
}

static void MakePipe(const QString& strPath)
{
    QVERIFY(mkfifo(QFile::encodeName(strPath).constData(), 0600) == 0);
}

class tst_CDirListing : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }

    void orderOfNames();
    void kindOfEntry_data();
    void kindOfEntry();
    void sameAsQtOnRandomFolders_data();
    void sameAsQtOnRandomFolders();
    void caseVariantsHaveOneOrder();
    void hostileNameIsListed_data() { AddHostileNames(); }
    void hostileNameIsListed();
    void skipsByPrefix();
    void refused_data();
    void refused();
    void refusedByPermission();
    void refusedForItsLength();
    void rootFolder();
    void pathsAreExact();
    void leadsBack_data();
    void leadsBack();
    void topLevelLinkIsListed();
};

void tst_CDirListing::orderOfNames()
{
    CTempTree tree;
    for (const char* pszName : {"b.txt", "A.txt", "_x", ".hidden", "Zeta", "10", "9"}) {
        tree.Write(pszName);
    }
    tree.MkDir("zoo");
    tree.MkDir("Box");
    tree.MkDir(".git");
    tree.Link("link to Box", "Box");
    tree.Link("broken", "nowhere");
    const QStringList listExpected{".git", "Box", "link to Box", "zoo",   ".hidden", "10",
                                   "9",    "_x",  "A.txt",       "b.txt", "broken",  "Zeta"};
    QCOMPARE(Names(ListOf(tree.Path())), listExpected);
}

void tst_CDirListing::kindOfEntry_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("folder");
    QTest::addColumn<bool>("link");
    QTest::newRow("file") << "file" << false << false;
    QTest::newRow("folder") << "folder" << true << false;
    QTest::newRow("link to a file") << "to file" << false << true;
    QTest::newRow("link to a folder") << "to folder" << true << true;
    QTest::newRow("link to a link to a folder") << "to link" << true << true;
    QTest::newRow("broken link") << "broken" << false << true;
    QTest::newRow("link to itself") << "itself" << false << true;
    QTest::newRow("pipe") << "pipe" << false << false;
    QTest::newRow("socket") << "socket" << false << false;
}

void tst_CDirListing::kindOfEntry()
{
    CTempTree tree;
    tree.Write("file");
    tree.MkDir("folder");
    tree.Link("to file", "file");
    tree.Link("to folder", "folder");
    tree.Link("to link", "to folder");
    tree.Link("broken", "nowhere");
    tree.Link("itself", "itself");
    MakePipe(tree.Path("pipe"));
    MakeSocket(tree.Path("socket"));

    QFETCH(QString, name);
    const STDirListing stListing = ListOf(tree.Path());
    QCOMPARE(stListing.listEntry.size(), 9);
    const int nRow = Names(stListing).indexOf(name);
    QVERIFY(nRow >= 0);
    QTEST(stListing.listEntry.at(nRow).bDir, "folder");
    QTEST(stListing.listEntry.at(nRow).bLink, "link");
    QTEST(stListing.listEntry.at(nRow).fileInfo.isDir(), "folder");
}

void tst_CDirListing::sameAsQtOnRandomFolders_data()
{
    QTest::addColumn<int>("seed");
    for (int nSeed = 1; nSeed <= 60; ++nSeed) {
        QTest::addRow("folder %d", nSeed) << nSeed;
    }
}

static QString RandomName(QRandomGenerator& random)
{
    static const QString strLetters
        = QString::fromUtf8("aAbBzZ09 ._-~\xc3\x84\xc3\xa4\xc3\x9f\xc4\xb0\xc4\xb1"
                            "\xce\xa3\xcf\x82\xe6\xbc\xa2\xd7\x90\xef\xbf\xbd");
    QString strName;
    const int nLength = random.bounded(1, 6);
    for (int i = 0; i < nLength; ++i) {
        strName += random.bounded(12) == 0 ? QString::fromUtf8("\xf0\x9f\x93\x81")
            : random.bounded(12) == 0      ? QString(QChar(0xdc80 + random.bounded(0x80)))
                                           : QString(strLetters.at(random.bounded(strLetters.size())));
    }
    return strName;
}

static void MakeRandomEntry(CTempTree& tree, const QString& strName, QRandomGenerator& random)
{
    switch (random.bounded(8)) {
    case 0:
    case 1:
        tree.MkDir(strName);
        break;
    case 2:
        tree.Link(strName, "..");
        break;
    case 3:
        tree.Link(strName, "nowhere at all");
        break;
    case 4:
        MakePipe(tree.Path(strName));
        break;
    case 5:
        MakeSocket(tree.Path(strName));
        break;
    default:
        tree.Write(strName);
    }
}

void tst_CDirListing::sameAsQtOnRandomFolders()
{
    QFETCH(int, seed);
    QRandomGenerator random{quint32(seed)};
    CTempTree tree;
    for (int i = 0; i < 80; ++i) {
        const QString strName = RandomName(random);
        if (strName != "." && strName != ".." && !tree.Has(strName)) {
            MakeRandomEntry(tree, strName, random);
        }
    }
    const STDirListing stListing = ListOf(tree.Path());
    const QFileInfoList listQt = QtListing(tree.Path());
    QCOMPARE(stListing.listEntry.size(), listQt.size());
    QStringList listOurPaths;
    QStringList listQtPaths;
    for (int i = 0; i < listQt.size(); ++i) {
        const STDirEntry& stEntry = stListing.listEntry.at(i);
        // Among names that differ only in case Qt's order changes from call to
        // call, so the order is compared without regard to case and the names by themselves.
        QCOMPARE(stEntry.strName.toLower(), listQt.at(i).fileName().toLower());
        QCOMPARE(stEntry.bDir, listQt.at(i).isDir());
        listOurPaths += stEntry.fileInfo.absoluteFilePath();
        listQtPaths += listQt.at(i).absoluteFilePath();
    }
    listOurPaths.sort();
    listQtPaths.sort();
    QCOMPARE(listOurPaths, listQtPaths);
}

void tst_CDirListing::caseVariantsHaveOneOrder()
{
    CTempTree tree;
    for (const char* pszName : {"name", "NAME", "Name", "nAME", "naMe"}) {
        tree.Write(pszName);
    }
    QCOMPARE(Names(ListOf(tree.Path())), QStringList({"NAME", "Name", "nAME", "naMe", "name"}));
}

void tst_CDirListing::hostileNameIsListed()
{
    QFETCH(QByteArray, name);
    CTempTree tree;
    tree.WriteBytesName(name, "four");
    const STDirListing stListing = ListOf(tree.Path());
    QCOMPARE(stListing.listEntry.size(), 1);
    const STDirEntry& stEntry = stListing.listEntry.first();
    QCOMPARE(QFile::encodeName(stEntry.strName), name);
    QCOMPARE(QFile::encodeName(stEntry.fileInfo.absoluteFilePath()),
             QFile::encodeName(tree.Path()) + '/' + name);
    QCOMPARE(stEntry.fileInfo.fileName(), stEntry.strName);
    QCOMPARE(stEntry.fileInfo.size(), qint64(4));
}

void tst_CDirListing::skipsByPrefix()
{
    CTempTree tree;
    for (const char* pszName : {"dev", "device", "Dev", "mydev", "home", "Home"}) {
        tree.Write(pszName);
    }
    const CDirNode node(QFileInfo(tree.Path()), nullptr);
    const STDirListing stListing = node.List({QLatin1String("dev"), QLatin1String("home")});
    QCOMPARE(Names(stListing), QStringList({"Dev", "Home", "mydev"}));
    QCOMPARE(Names(node.List({})).size(), 6);
}

void tst_CDirListing::refused_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("error");
    QTest::newRow("vanished folder") << "gone" << ENOENT;
    QTest::newRow("file taken for a folder") << "file" << ENOTDIR;
    QTest::newRow("broken link") << "broken" << ENOENT;
    QTest::newRow("link to itself") << "itself" << ELOOP;
}

void tst_CDirListing::refused()
{
    CTempTree tree;
    tree.Write("file");
    tree.Link("broken", "nowhere");
    tree.Link("itself", "itself");
    QFETCH(QString, entry);
    const STDirListing stListing = ListOf(tree.Path(entry));
    QVERIFY(stListing.listEntry.isEmpty());
    QTEST(stListing.nError, "error");
}

void tst_CDirListing::refusedByPermission()
{
    CTempTree tree;
    tree.Write("closed/file");
    const QByteArray baClosed = QFile::encodeName(tree.Path("closed"));
    QVERIFY(chmod(baClosed.constData(), 0) == 0);
    const uid_t nUser = geteuid();
    const auto guard = qScopeGuard([&] {
        QVERIFY(seteuid(nUser) == 0);
        chmod(baClosed.constData(), 0700);
    });
    // Permissions mean nothing to root, so it becomes somebody else for a moment.
    if (nUser == 0 && seteuid(65534) != 0) {
        QSKIP("runs as root and cannot become another user here");
    }
    const STDirListing stListing = ListOf(tree.Path("closed"));
    QVERIFY(stListing.listEntry.isEmpty());
    QCOMPARE(stListing.nError, EACCES);
}

void tst_CDirListing::refusedForItsLength()
{
    CTempTree tree;
    const QByteArray baPart(250, 'x');
    QVector<int> listFolder{open(QFile::encodeName(tree.Path()).constData(), O_DIRECTORY | O_RDONLY)};
    QString strPath = tree.Path();
    QString strLast;
    while (strPath.size() < 4096) {
        QVERIFY(mkdirat(listFolder.last(), baPart.constData(), 0700) == 0);
        listFolder.append(openat(listFolder.last(), baPart.constData(), O_DIRECTORY | O_RDONLY));
        strLast = strPath;
        strPath += '/' + QString::fromLatin1(baPart);
    }
    const STDirListing stNear = ListOf(strLast);
    const STDirListing stBeyond = ListOf(strPath);
    while (listFolder.size() > 1) {
        close(listFolder.takeLast());
        QVERIFY(unlinkat(listFolder.last(), baPart.constData(), AT_REMOVEDIR) == 0);
    }
    close(listFolder.first());

    // The last folder whose path the system takes is listed; the entry in it is too long to be.
    QCOMPARE(Names(stNear), QStringList(QString::fromLatin1(baPart)));
    QCOMPARE(stNear.nError, 0);
    QVERIFY(stBeyond.listEntry.isEmpty());
    QCOMPARE(stBeyond.nError, ENAMETOOLONG);
}

void tst_CDirListing::rootFolder()
{
    const STDirListing stListing = ListOf("/");
    QCOMPARE(stListing.nError, 0);
    QVERIFY(!stListing.listEntry.isEmpty());
    for (const STDirEntry& stEntry : stListing.listEntry) {
        QCOMPARE(stEntry.fileInfo.absoluteFilePath(), "/" + stEntry.strName);
    }
}

void tst_CDirListing::pathsAreExact()
{
    CTempTree tree;
    tree.Write("inner/file");
    const STDirListing stListing = ListOf(tree.Path() + "//inner/");
    QCOMPARE(stListing.listEntry.size(), 1);
    QCOMPARE(stListing.listEntry.first().fileInfo.filePath(), tree.Path("inner/file"));
}

void tst_CDirListing::leadsBack_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("back");
    QTest::newRow("its own folder") << "top/a/link"
                                    << "." << true;
    QTest::newRow("the folder above") << "top/a/link"
                                      << ".." << true;
    QTest::newRow("above the top") << "top/a/link"
                                   << "../.." << true;
    QTest::newRow("the whole system") << "top/a/link"
                                      << "/" << true;
    QTest::newRow("a folder beside it") << "top/a/link"
                                        << "../b" << false;
    QTest::newRow("a folder below it") << "top/a/link"
                                       << "inner" << false;
    QTest::newRow("a folder whose name begins alike") << "top/ab/link"
                                                      << "../a" << false;
    QTest::newRow("a folder outside the tree") << "top/a/link"
                                               << "../../outside" << false;
    QTest::newRow("nothing") << "top/a/link"
                             << "nowhere" << false;
    QTest::newRow("its folder through another link") << "top/a/link"
                                                     << "../to a" << true;
}

void tst_CDirListing::leadsBack()
{
    QFETCH(QString, link);
    QFETCH(QString, target);
    QFETCH(bool, back);
    CTempTree tree;
    tree.Write("top/a/inner/file");
    tree.Write("top/ab/file");
    tree.Write("top/b/file");
    tree.Write("outside/file");
    tree.Link("top/to a", "a");
    tree.Link(link, target);

    CDirNode top(QFileInfo(tree.Path("top")), nullptr);
    CDirNode folder(QFileInfo(QFileInfo(tree.Path(link)).path()), &top);
    const CDirNode node(QFileInfo(tree.Path(link)), &folder);
    QCOMPARE(node.LeadsBack(), back);
    const STDirListing stListing = node.List({});
    QCOMPARE(stListing.nError == ELOOP, back);
    QCOMPARE(stListing.listEntry.isEmpty(), back || target == "nowhere");
}

void tst_CDirListing::topLevelLinkIsListed()
{
    // A start-up volume is a link to "/", and so to the folder that it lies in.
    CTempTree tree;
    tree.Write("volumes/other/file");
    tree.Link("volumes/start-up", "..");
    CDirNode root;
    CDirNode volume(QFileInfo(tree.Path("volumes/start-up")), &root);
    QVERIFY(!volume.LeadsBack());
    QCOMPARE(Names(volume.List({})), QStringList("volumes"));
    CDirNode folder(QFileInfo(tree.Path("volumes/start-up/volumes")), &volume);
    const CDirNode again(QFileInfo(tree.Path("volumes/start-up/volumes/start-up")), &folder);
    QVERIFY(again.LeadsBack());
}

QTEST_GUILESS_MAIN(tst_CDirListing)
#include "tst_CDirListing.moc"
