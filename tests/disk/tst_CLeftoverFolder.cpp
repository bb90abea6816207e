#include "disk/CForbiddenCall.h"
#include "disk/CLeftoverFolder.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"
#include "support/CWithoutOverride.h"

#include <QDir>
#include <QTest>

#include <sys/stat.h>
#include <thread>

/** What a clean-up may remove: nothing but empty folders. */
class tst_CLeftoverFolder : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_pTree = std::make_unique<CTempTree>(); }

    void emptyFolders_data();
    void emptyFolders();
    void folderThatIsAMountPointItself();
    void otherVolumesMayStandBesideTheFolder();
    void entryInTheWay_data();
    void entryInTheWay();
    void fileDeepInside();
    void emptyMountPoint();
    void mountPointInAnEmptyFolder();
    void folderMountedInsideItself_data();
    void folderMountedInsideItself();
    void volumeThatTheTableDoesNotShowYet();
    void linkAsTheFolder_data();
    void linkAsTheFolder();
    void whatIsNoFolder_data();
    void whatIsNoFolder();
    void unreadableFolder();
    void folderThatCannotBeReadToItsEnd();
    void nestedTooDeeply();

private:
    QString Path(const QString& strRelative = QString()) const { return m_pTree->Path(strRelative); }

    std::unique_ptr<CTempTree> m_pTree;
};

/** What stands in the way of removing the folder; empty when nothing does. */
static QString Obstacle(const QString& strFolder)
{
    return CLeftoverFolder::Obstacle(strFolder).value_or(QString());
}

static QString Told(const QString& strPath, const char* pszWhat) { return '"' + strPath + "\" " + pszWhat; }

void tst_CLeftoverFolder::emptyFolders_data()
{
    QTest::addColumn<QStringList>("listFolder");
    QTest::newRow("none") << QStringList();
    QTest::newRow("one") << QStringList{"left"};
    QTest::newRow("hidden, nested, several") << QStringList{"STICK/a/b/c", "STICK/.hidden", "OTHER"};
    QTest::newRow("twenty deep") << QStringList{QString("d/").repeated(20)};
}

void tst_CLeftoverFolder::emptyFolders()
{
    QFETCH(QStringList, listFolder);
    for (const QString& strFolder : listFolder) {
        m_pTree->MkDir(strFolder);
    }
    QCOMPARE(Obstacle(Path()), QString());
    QCOMPARE(Obstacle(Path() + '/'), QString());
    QVERIFY(!CLeftoverFolder::Obstacle(Path()).has_value());
}

void tst_CLeftoverFolder::folderThatIsAMountPointItself()
{
    NEEDS_VOLUMES();
    QVERIFY(QDir().mkpath("/Volumes/STICK"));
    QCOMPARE(Obstacle("/Volumes"), QString());
}

void tst_CLeftoverFolder::otherVolumesMayStandBesideTheFolder()
{
    NEEDS_VOLUMES();
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK 2"));
    QVERIFY(QDir().mkpath("/Volumes/STICK"));
    QCOMPARE(Obstacle("/Volumes/STICK"), QString());
}

void tst_CLeftoverFolder::entryInTheWay_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strKind");
    QTest::newRow("file") << "entry"
                          << "is a file";
    QTest::newRow("hidden file") << ".entry"
                                 << "is a file";
    QTest::newRow("pipe") << "pipe"
                          << "is a file";
    QTest::newRow("link to a folder") << "link to /"
                                      << "is a link";
    QTest::newRow("link to nothing") << "link to nowhere"
                                     << "is a link";
}

void tst_CLeftoverFolder::entryInTheWay()
{
    QFETCH(QString, strName);
    QFETCH(QString, strKind);
    m_pTree->MkDir("STICK");
    const QString strPath = Path("STICK/") + strName.section(" to ", 0, 0);
    if (strName.startsWith("link")) {
        QVERIFY(QFile::link(strName.section(" to ", 1), strPath));
    } else if (strName == "pipe") {
        QCOMPARE(mkfifo(QFile::encodeName(strPath).constData(), 0600), 0);
    } else {
        m_pTree->Write("STICK/" + strName);
    }
    QCOMPARE(Obstacle(Path()), Told(strPath, qPrintable(strKind)));
}

void tst_CLeftoverFolder::fileDeepInside()
{
    m_pTree->MkDir("A/b/c");
    m_pTree->MkDir("Z/y/x");
    const QString strFile = m_pTree->Write("M/n/o/p/%1 last.txt", "the only copy");
    QCOMPARE(Obstacle(Path()), Told(strFile, "is a file"));
    QVERIFY(m_pTree->Has("M/n/o/p/%1 last.txt"));
}

void tst_CLeftoverFolder::emptyMountPoint()
{
    NEEDS_VOLUMES();
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK A"));
    QCOMPARE(Obstacle("/Volumes"), Told("/Volumes/STICK A", "is a mount point"));
    QVERIFY(CVolume::Unmount("/Volumes/STICK A"));
    QCOMPARE(Obstacle("/Volumes"), QString());
}

void tst_CLeftoverFolder::mountPointInAnEmptyFolder()
{
    NEEDS_VOLUMES();
    const QString strPoint = m_pTree->MkDir("STICK/a#b\nc");
    QVERIFY(CVolume::Mount("/dev/disk7s1", QFile::encodeName(strPoint)));
    QCOMPARE(Obstacle(Path()), Told(strPoint, "is a mount point"));
    QVERIFY(CVolume::Unmount(QFile::encodeName(strPoint)));
}

void tst_CLeftoverFolder::folderMountedInsideItself_data()
{
    QTest::addColumn<QString>("strFolder");
    QTest::newRow("by its path") << "real/left";
    QTest::newRow("through a link") << "alias/left";
}

/** Device numbers do not show this one. */
void tst_CLeftoverFolder::folderMountedInsideItself()
{
    NEEDS_VOLUMES();
    QFETCH(QString, strFolder);
    const QByteArray baFrom = QFile::encodeName(m_pTree->MkDir("from"));
    const QByteArray baPoint = QFile::encodeName(m_pTree->MkDir("real/left/point"));
    m_pTree->Link("alias", "real");
    QVERIFY(CVolume::Bind(baFrom, baPoint));
    QCOMPARE(Obstacle(Path(strFolder)), Told(Path("real/left/point"), "is a mount point"));
    QVERIFY(CVolume::Unmount(baPoint));
}

/** As if it were mounted after the table was read: the table is that of the main thread. */
void tst_CLeftoverFolder::volumeThatTheTableDoesNotShowYet()
{
    NEEDS_VOLUMES();
    const QString strPoint = m_pTree->MkDir("STICK");
    bool bMounted = false;
    QString strObstacle;
    std::thread thread([&] {
        bMounted = unshare(CLONE_NEWNS) == 0 && CVolume::Mount("/dev/disk7s1", QFile::encodeName(strPoint));
        strObstacle = Obstacle(Path());
    });
    thread.join();
    QVERIFY(bMounted);
    QCOMPARE(strObstacle, Told(strPoint, "is on another volume"));
    QCOMPARE(Obstacle(Path()), QString());
}

void tst_CLeftoverFolder::linkAsTheFolder_data()
{
    QTest::addColumn<QString>("strSuffix");
    for (const char* pszSuffix : {"", "/", "/."}) {
        QTest::addRow("with \"%s\"", pszSuffix) << pszSuffix;
    }
}

void tst_CLeftoverFolder::linkAsTheFolder()
{
    QFETCH(QString, strSuffix);
    m_pTree->MkDir("real");
    m_pTree->Link("link", "real");
    QVERIFY(Obstacle(Path("link") + strSuffix).startsWith(Told(Path("link"), "cannot be looked at: ")));
}

void tst_CLeftoverFolder::whatIsNoFolder_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QString>("strError");
    QTest::newRow("missing") << "gone"
                             << "No such file or directory";
    QTest::newRow("file") << "file"
                          << "Not a directory";
}

void tst_CLeftoverFolder::whatIsNoFolder()
{
    QFETCH(QString, strName);
    QFETCH(QString, strError);
    m_pTree->Write("file", "x");
    QCOMPARE(Obstacle(Path(strName)), Told(Path(strName), "cannot be looked at: ") + strError);
    QVERIFY(CLeftoverFolder::Obstacle(QString()).has_value());
}

void tst_CLeftoverFolder::unreadableFolder()
{
    const QString strLocked = m_pTree->MkDir("STICK/locked");
    QCOMPARE(chmod(QFile::encodeName(strLocked).constData(), 0), 0);
    const CWithoutOverride user;
    QCOMPARE(Obstacle(Path()), Told(strLocked, "cannot be looked at: Permission denied"));
}

void tst_CLeftoverFolder::folderThatCannotBeReadToItsEnd()
{
    bool bForbidden = false;
    QString strObstacle;
    std::thread thread([&] {
        bForbidden = ForbidCall(__NR_getdents64, EIO);
        strObstacle = Obstacle(Path());
    });
    thread.join();
    if (!bForbidden) {
        QSKIP("reading cannot be forbidden here");
    }
    QCOMPARE(strObstacle, Told(Path(), "cannot be looked at: Input/output error"));
}

void tst_CLeftoverFolder::nestedTooDeeply()
{
    m_pTree->MkDir(QString("d/").repeated(100));
    QVERIFY(Obstacle(Path()).endsWith("is nested too deeply"));
}

QTEST_GUILESS_MAIN(tst_CLeftoverFolder)
#include "tst_CLeftoverFolder.moc"
