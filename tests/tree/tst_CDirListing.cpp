#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "tree/CDirListing.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <functional>
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
    void sameAsQtOnRandomFolders_data();
    void sameAsQtOnRandomFolders();
    void skipsByPrefix();
    void filesAreToldWhileTheFolderIsOpen();
    void refused_data();
    void refused();
    void refusedForItsLength();
    void rootFolder();
};

void tst_CDirListing::orderOfNames()
{
    CTempTree tree;
    tree.Fill({"b.txt", "A.txt", "_x", ".hidden", "Zeta", "10", "9", "zoo/", "Box/", ".git/"});
    tree.Fill({"name", "NAME", "Name", "nAME", "naMe"});
    tree.Link("link to Box", "Box");
    tree.Link("broken", "nowhere");
    const QStringList listExpected{".git", "Box",  "link to Box", "zoo",   ".hidden", "10",
                                   "9",    "_x",   "A.txt",       "b.txt", "broken",  "NAME",
                                   "Name", "nAME", "naMe",        "name",  "Zeta"};
    QCOMPARE(Names(CDirListing::List(tree.Path(), {})), listExpected);
}

void tst_CDirListing::sameAsQtOnRandomFolders_data()
{
    QTest::addColumn<uint>("nSeed");
    for (uint nSeed = 1; nSeed <= 60; ++nSeed) {
        QTest::addRow("folder %u", nSeed) << nSeed;
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
    const std::function<void()> fnMake[] = {
        [&] { tree.MkDir(strName); },
        [&] { tree.Link(strName, ".."); },
        [&] { tree.Link(strName, "nowhere at all"); },
        [&] { MakePipe(tree.Path(strName)); },
        [&] { MakeSocket(tree.Path(strName)); },
        [&] { tree.Write(strName); },
    };
    fnMake[random.bounded(6)]();
}

void tst_CDirListing::sameAsQtOnRandomFolders()
{
    QFETCH(uint, nSeed);
    QRandomGenerator random(nSeed);
    CTempTree tree;
    for (int i = 0; i < 80; ++i) {
        const QString strName = RandomName(random);
        if (strName != "." && strName != ".." && !tree.Has(strName)) {
            MakeRandomEntry(tree, strName, random);
        }
    }
    const STDirListing stListing = CDirListing::List(tree.Path(), {});
    // With the filter and the order that the tree is to have.
    const QFileInfoList listQt
        = QDir(tree.Path())
              .entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDir::Name | QDir::DirsFirst | QDir::IgnoreCase);
    QCOMPARE(stListing.listEntry.size(), listQt.size());
    QStringList listOurPaths;
    QStringList listQtPaths;
    for (int i = 0; i < listQt.size(); ++i) {
        const STDirEntry& stEntry = stListing.listEntry.at(i);
        // Among names that differ only in case Qt's order changes from call to
        // call, so the order is compared without regard to case and the names by themselves.
        QCOMPARE(stEntry.strName.toLower(), listQt.at(i).fileName().toLower());
        QCOMPARE(stEntry.bDir, listQt.at(i).isDir());
        QCOMPARE(stEntry.bDir, stEntry.fileInfo.isDir());
        QCOMPARE(stEntry.bLink, stEntry.fileInfo.isSymLink());
        listOurPaths += stEntry.fileInfo.absoluteFilePath();
        listQtPaths += listQt.at(i).absoluteFilePath();
    }
    listOurPaths.sort();
    listQtPaths.sort();
    QCOMPARE(listOurPaths, listQtPaths);
}

void tst_CDirListing::skipsByPrefix()
{
    CTempTree tree;
    tree.Fill({"dev", "device", "Dev", "mydev", "home", "Home"});
    const STDirListing stListing
        = CDirListing::List(tree.Path(), {QLatin1String("dev"), QLatin1String("home")});
    QCOMPARE(Names(stListing), QStringList({"Dev", "Home", "mydev"}));
}

void tst_CDirListing::filesAreToldWhileTheFolderIsOpen()
{
    CTempTree tree;
    tree.Fill({"dev", "folder/file"});
    tree.Write("one", "1");
    tree.Write("three", "333");
    tree.Link("to three", "three");
    tree.Link("to folder", "folder");
    tree.Link("broken", "nowhere");
    QMap<QByteArray, qint64> mapSize;
    const auto fnFile = [&mapSize](int nFolder, const char* pszName) {
        struct stat status;
        mapSize[pszName] = fstatat(nFolder, pszName, &status, 0) == 0 ? status.st_size : -1;
    };
    const STDirListing stListing = CDirListing::List(tree.Path(), {QLatin1String("dev")}, fnFile);
    QCOMPARE(stListing.listEntry.size(), 6);
    QCOMPARE(mapSize, (QMap<QByteArray, qint64>{{"broken", -1}, {"one", 1}, {"three", 3}, {"to three", 3}}));
    const STDirListing stRefused
        = CDirListing::List({tree.Path("to folder"), {tree.Path("folder")}}, {}, fnFile);
    QCOMPARE(stRefused.nError, ELOOP);
    QCOMPARE(mapSize.size(), 4);
}

void tst_CDirListing::refused_data()
{
    QTest::addColumn<QString>("strEntry");
    QTest::addColumn<int>("nError");
    QTest::newRow("vanished folder") << "gone" << ENOENT;
    QTest::newRow("file taken for a folder") << "file" << ENOTDIR;
    QTest::newRow("link to itself") << "itself" << ELOOP;
}

void tst_CDirListing::refused()
{
    CTempTree tree;
    tree.Write("file");
    tree.Link("itself", "itself");
    QFETCH(QString, strEntry);
    const STDirListing stListing = CDirListing::List(tree.Path(strEntry), {});
    QVERIFY(stListing.listEntry.isEmpty());
    QTEST(stListing.nError, "nError");
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
    const STDirListing stNear = CDirListing::List(strLast, {});
    const STDirListing stBeyond = CDirListing::List(strPath, {});
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
    const STDirListing stListing = CDirListing::List("/", {});
    QCOMPARE(stListing.nError, 0);
    QVERIFY(!stListing.listEntry.isEmpty());
    for (const STDirEntry& stEntry : stListing.listEntry) {
        QCOMPARE(stEntry.fileInfo.absoluteFilePath(), "/" + stEntry.strName);
    }
}

QTEST_GUILESS_MAIN(tst_CDirListing)
#include "tst_CDirListing.moc"
