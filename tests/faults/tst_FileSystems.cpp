#include "copy/CCopyReport.h"
#include "support/CCopyBed.h"
#include "support/CFaultyDisk.h"
#include "support/CImageDisk.h"
#include "support/CVolume.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QVector>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using ENKind = CImageDisk::ENKind;
Q_DECLARE_METATYPE(ENKind)

static const qint64 SECTOR = 4096;
static const qint64 OLD_SEC = 1100000000;

/** Path by content: each file of the tests has a content of its own. */
using Contents = QMap<QByteArray, QByteArray>;

/** Complete copies to disks with the file systems that sticks and drives have. */
class tst_FileSystems : public CCopyBed
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void everyNameArrives_data() { Kinds(); }
    void everyNameArrives();
    void secondCopyTouchesNothingOfTheFirst_data() { Kinds(); }
    void secondCopyTouchesNothingOfTheFirst();
    void links_data() { Kinds(); }
    void links();
    void belongings_data() { Kinds(); }
    void belongings();
    void damagedFile_data();
    void damagedFile();

private:
    static void Kinds();
    QByteArray Top() const { return QFile::encodeName(m_strDest + Source("All")); }
    QVector<STCopyItem> Items(ENCopyProblem enProblem) const;

    std::unique_ptr<CImageDisk> m_pStick;
};

/** Names that a Mac's disk or another one may hold, in bytes. */
static QVector<QByteArray> Names()
{
    QVector<QByteArray> listName{"plain.txt",
                                 "a:b",
                                 "a*b",
                                 "a?b",
                                 "a\"b",
                                 "a<b",
                                 "a>b",
                                 "a|b",
                                 "a\\b",
                                 "a_b",
                                 "blank behind ",
                                 "dot behind.",
                                 "dots behind...",
                                 " blank",
                                 ". .",
                                 ".hidden",
                                 "..two",
                                 "Case.txt",
                                 "case.txt",
                                 "CASE.TXT",
                                 "caf\xc3\xa9",
                                 "cafe\xcc\x81",
                                 "bad\xff.txt",
                                 "bad\xfe.txt",
                                 "\xc3(",
                                 "new\nline",
                                 "tab\there",
                                 "\x01one",
                                 "del\x7f",
                                 "CON",
                                 "NUL.txt",
                                 "aux",
                                 "com1",
                                 "LPT1.doc",
                                 "~$letter.doc",
                                 "percent%20;",
                                 "photo \xf0\x9f\x98\x80.png",
                                 "$it's"};
    listName.append(QByteArray(255, 'x'));
    listName.append(QByteArray(255, 'X'));
    listName.append(QByteArray(251, 'y') + ".jpg");
    listName.append(QByteArray(251, 'Y') + ".jpg");
    listName.append(QByteArray("\xe5\x86\x99").repeated(85));
    listName.append(QByteArray("\xc3\xa9").repeated(127) + ' ');
    return listName;
}

static QByteArray ContentOf(const QByteArray& baName) { return "content of " + baName.toHex(); }

/** All files below a folder; one that is there twice has a word behind its content. */
static Contents ContentsBelow(const QByteArray& baFolder)
{
    Contents mapPath;
    DIR* pFolder = opendir(baFolder.constData());
    while (const dirent* pEntry = pFolder != nullptr ? readdir(pFolder) : nullptr) {
        const QByteArray baPath = baFolder + '/' + pEntry->d_name;
        struct stat status = {};
        if (qstrcmp(pEntry->d_name, ".") == 0 || qstrcmp(pEntry->d_name, "..") == 0
            || lstat(baPath.constData(), &status) != 0) {
            continue;
        }
        if (S_ISDIR(status.st_mode)) {
            const Contents mapBelow = ContentsBelow(baPath);
            for (auto it = mapBelow.cbegin(); it != mapBelow.cend(); ++it) {
                mapPath.insert(mapPath.contains(it.key()) ? it.key() + " again" : it.key(), it.value());
            }
        } else if (S_ISREG(status.st_mode)) {
            QByteArray baContent(int(status.st_size), '\0');
            const int nDescriptor = open(baPath.constData(), O_RDONLY);
            const ssize_t nRead = read(nDescriptor, baContent.data(), size_t(baContent.size()));
            close(nDescriptor);
            baContent.truncate(int(qMax<ssize_t>(0, nRead)));
            mapPath.insert(mapPath.contains(baContent) ? baContent + " again" : baContent, baPath);
        }
    }
    if (pFolder != nullptr) {
        closedir(pFolder);
    }
    return mapPath;
}

static void SetOld(const QString& strPath)
{
    const timespec listTime[2] = {{OLD_SEC, 0}, {OLD_SEC, 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(strPath).constData(), listTime, 0), 0);
}

static qint64 ModifiedSec(const QByteArray& baPath)
{
    struct stat status = {};
    return stat(baPath.constData(), &status) == 0 ? qint64(status.st_mtim.tv_sec) : -1;
}

void tst_FileSystems::Kinds()
{
    QTest::addColumn<ENKind>("enKind");
    QTest::newRow("exFAT") << ENKind::EXFAT;
    QTest::newRow("NTFS") << ENKind::NTFS;
    QTest::newRow("FAT") << ENKind::FAT;
}

void tst_FileSystems::init()
{
    NEEDS_VOLUMES();
    QFETCH(ENKind, enKind);
    const QString strMissing = CImageDisk::Missing(enKind);
    if (!strMissing.isEmpty()) {
        QSKIP(qPrintable(strMissing));
    }
    Make();
    m_pStick = std::make_unique<CImageDisk>(enKind, "STICK", 64);
    QVERIFY(m_pStick->IsValid());
    m_strDest = m_pStick->Path("Tarnwick");
    m_pNodes->Root()->m_bComplete = true;
    m_pTree->MkDir("src/All");
}

void tst_FileSystems::cleanup()
{
    Clear();
    m_pStick.reset();
}

QVector<STCopyItem> tst_FileSystems::Items(ENCopyProblem enProblem) const
{
    QVector<STCopyItem> listItem;
    for (const STCopyItem& stItem : Account().listItem) {
        if (stItem.enProblem == enProblem) {
            listItem.append(stItem);
        }
    }
    return listItem;
}

void tst_FileSystems::everyNameArrives()
{
    const QByteArray baSource = QFile::encodeName(Source("All"));
    for (const QByteArray& baName : Names()) {
        WriteFile(QFile::decodeName(baSource + '/' + baName), ContentOf(baName));
    }
    m_pNodes->Add(Source("All"));
    Run();
    const STCopyAccount stAccount = Account();
    QCOMPARE(Problems(), QStringList());
    QCOMPARE(stAccount.nProblems, 0);
    QCOMPARE(stAccount.nFiles, Names().count());
    QVERIFY(m_pStick->MountAnew());
    const Contents mapPath = ContentsBelow(Top());
    QCOMPARE(mapPath.count(), Names().count());
    QMap<QString, QString> mapTold;
    for (const STCopyItem& stItem : Items(ENCopyProblem::NAME_CHANGED)) {
        mapTold.insert(stItem.strPath, stItem.strDetail);
    }
    QMap<QString, QString> mapChanged;
    for (const QByteArray& baName : Names()) {
        const QByteArray baPath = mapPath.value(ContentOf(baName));
        QVERIFY2(!baPath.isEmpty(), baName.constData());
        if (baPath != Top() + '/' + baName) {
            const QString strBelow = QFile::decodeName(baPath).mid(m_strDest.size() + 1);
            mapChanged.insert(QFile::decodeName(baSource + '/' + baName), CCopyReport::Shown(strBelow));
        }
    }
    QCOMPARE(mapTold, mapChanged);
    QVERIFY(!mapTold.isEmpty());
}

void tst_FileSystems::secondCopyTouchesNothingOfTheFirst()
{
    m_pTree->Write("src/All/sub/photo.jpg", "first");
    m_pTree->Write("src/All/notes.txt", "notes");
    m_pNodes->Add(Source("All"));
    Run();
    m_pTree->Write("src/All/sub/photo.jpg", "second");
    Run();
    QCOMPARE(Account().nProblems, 0);
    QVERIFY(m_pStick->MountAnew());
    const Contents mapPath = ContentsBelow(QFile::encodeName(m_strDest));
    QCOMPARE(mapPath.value("first"), Top() + "/sub/photo.jpg");
    QVERIFY(!mapPath.value("second").isEmpty());
    QCOMPARE(mapPath.value("notes").isEmpty(), false);
    QCOMPARE(mapPath.value("notes again").isEmpty(), false);
}

void tst_FileSystems::links()
{
    QFETCH(ENKind, enKind);
    m_pTree->Write("src/All/folder/file", "linked once");
    m_pTree->Link("src/All/to a file", "folder/file");
    m_pTree->Link("src/All/to a folder", "folder");
    m_pTree->Link("src/All/to nothing", "nowhere");
    m_pNodes->Add(Source("All"));
    Run();
    QCOMPARE(Account().nProblems, 0);
    QVERIFY(m_pStick->MountAnew());
    QCOMPARE(ContentsBelow(Top()).keys(), QList<QByteArray>{"linked once"});
    QMap<QString, QString> mapLost;
    for (const STCopyItem& stItem : Items(ENCopyProblem::LINK_LOST)) {
        mapLost.insert(QFileInfo(stItem.strPath).fileName(), stItem.strDetail);
    }
    QMap<QString, QString> mapMade;
    for (const QString strName : {"to a file", "to a folder", "to nothing"}) {
        char szText[100] = {};
        if (readlink((Top() + '/' + QFile::encodeName(strName)).constData(), szText, sizeof(szText) - 1)
            > 0) {
            mapMade.insert(strName, szText);
        }
    }
    const QMap<QString, QString> mapAll{
        {"to a file", "folder/file"}, {"to a folder", "folder"}, {"to nothing", "nowhere"}};
    QCOMPARE(enKind == ENKind::NTFS ? mapMade : mapLost, mapAll);
    QCOMPARE(enKind == ENKind::NTFS ? mapLost : mapMade, (QMap<QString, QString>()));
}

void tst_FileSystems::belongings()
{
    QFETCH(ENKind, enKind);
    const QString strFile = m_pTree->Write("src/All/folder/file", "file");
    QCOMPARE(chmod(QFile::encodeName(strFile).constData(), 0640), 0);
    const bool bAttributes
        = setxattr(QFile::encodeName(strFile).constData(), "user.comment", "mine", 4, 0) == 0;
    SetOld(strFile);
    SetOld(Source("All/folder"));
    m_pNodes->Add(Source("All"));
    Run();
    QCOMPARE(Account().nProblems, 0);
    QVERIFY(m_pStick->MountAnew());
    QVERIFY(qAbs(ModifiedSec(Top() + "/folder/file") - OLD_SEC) <= 2);
    const bool bFolderTime = qAbs(ModifiedSec(Top() + "/folder") - OLD_SEC) <= 2;
    QCOMPARE(Items(ENCopyProblem::FOLDER_TIMES_LOST).isEmpty(), bFolderTime);
    QVERIFY(bFolderTime || enKind == ENKind::FAT);
    struct stat status = {};
    QCOMPARE(stat((Top() + "/folder/file").constData(), &status), 0);
    QCOMPARE(Items(ENCopyProblem::PERMISSIONS_LOST).isEmpty(), (status.st_mode & 0777U) == 0640U);
    char szValue[10] = {};
    const bool bKept
        = getxattr((Top() + "/folder/file").constData(), "user.comment", szValue, sizeof(szValue)) == 4;
    QCOMPARE(Items(ENCopyProblem::ATTRIBUTES_LOST).isEmpty(), bKept || !bAttributes);
    QVERIFY(!bAttributes || bKept == (enKind == ENKind::NTFS));
}

void tst_FileSystems::damagedFile_data()
{
    // The driver for FAT spoils what is opened for writing once more, whoever does that.
    QTest::addColumn<ENKind>("enKind");
    QTest::newRow("exFAT") << ENKind::EXFAT;
    QTest::newRow("NTFS") << ENKind::NTFS;
}

void tst_FileSystems::damagedFile()
{
    CFaultyDisk source("Macintosh HD", "/dev/nvme0n1p1", 32);
    QVERIFY(source.IsValid());
    const int nSize = 5 * 1024 * 1024 + 77;
    WriteFile(source.Behind("film.mov"), Pattern(nSize));
    WriteFile(source.Behind("photo.jpg"), "photo");
    source.BadSectors(100 * SECTOR, SECTOR, "film.mov");
    source.BadSectors(nSize / SECTOR * SECTOR, SECTOR, "film.mov"); // so that zeros are its end
    const timespec listTime[2] = {{OLD_SEC, 0}, {OLD_SEC, 0}};
    QCOMPARE(utimensat(AT_FDCWD, QFile::encodeName(source.Behind("film.mov")).constData(), listTime, 0), 0);
    m_pNodes->Add(source.Path());
    Run();
    source.Heal();
    QVERIFY(m_pStick->MountAnew());
    QByteArray baExpected = Pattern(nSize);
    baExpected.replace(100 * int(SECTOR), int(SECTOR), QByteArray(int(SECTOR), '\0'));
    baExpected.replace(nSize - 77, 77, QByteArray(77, '\0'));
    const QByteArray baFilm = QFile::encodeName(m_strDest) + "/Macintosh HD/film.mov";
    QVERIFY(Content(QFile::decodeName(baFilm)) == baExpected);
    QCOMPARE(Items(ENCopyProblem::DAMAGED).value(0).strDetail, QString("409600-413695, 5242880-5242956"));
    QCOMPARE(Account().nProblems, 1);
    QVERIFY(qAbs(ModifiedSec(baFilm) - OLD_SEC) <= 2);
}

QTEST_GUILESS_MAIN(tst_FileSystems)
#include "tst_FileSystems.moc"
