#include "disk/CForbiddenCall.h"
#include "disk/CLeftoverFolder.h"
#include "files/CFileNameCodec.h"
#include "support/CTempTree.h"
#include "support/CVolume.h"

#include <QDir>
#include <QtTest>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

/** What a clean-up may remove: nothing but empty folders. */
class tst_CLeftoverFolder : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void EmptyFolder();
    void EmptyFoldersInFolders();
    void FolderThatIsAMountPointItself();
    void RefusesAnEntry_data();
    void RefusesAnEntry();
    void RefusesAFileDeepInside();
    void RefusesAnEmptyMountPoint();
    void RefusesAMountPointInAnEmptyFolder();
    void RefusesAFolderMountedInsideItself();
    void RefusesAMountPointWhenGivenThroughALink();
    void RefusesALinkAsTheFolder_data();
    void RefusesALinkAsTheFolder();
    void RefusesAMissingFolder();
    void RefusesAFile();
    void RefusesAnUnreadableFolder();
    void RefusesAFolderThatCannotBeReadToItsEnd();
    void RefusesAVolumeThatTheTableDoesNotShowYet();
    void RefusesWhatIsNestedTooDeeply();
    void LivesWithoutARequestForTheReason();
    void OtherVolumesMayStandBesideTheFolder();
};

/** The reason for which a folder must stay, empty when it may go. */
static QString Reason(const QString& strFolder)
{
    return CLeftoverFolder::Obstacle(strFolder).value_or(QString());
}

void tst_CLeftoverFolder::EmptyFolder()
{
    CTempTree tree;
    QVERIFY(!CLeftoverFolder::Obstacle(tree.MkDir(QStringLiteral("left"))).has_value());
    QCOMPARE(Reason(tree.Path()), QString());
}

void tst_CLeftoverFolder::EmptyFoldersInFolders()
{
    CTempTree tree;
    tree.MkDir(QStringLiteral("STICK/a/b/c"));
    tree.MkDir(QStringLiteral("STICK/.hidden"));
    tree.MkDir(QStringLiteral("OTHER"));
    QVERIFY(!CLeftoverFolder::Obstacle(tree.Path()).has_value());
    QVERIFY(!CLeftoverFolder::Obstacle(tree.Path() + QLatin1Char('/')).has_value());
}

void tst_CLeftoverFolder::FolderThatIsAMountPointItself()
{
    NEEDS_VOLUMES();
    QVERIFY(QDir().mkpath(QStringLiteral("/Volumes/STICK")));
    QCOMPARE(Reason(QStringLiteral("/Volumes")), QString());
}

void tst_CLeftoverFolder::RefusesAnEntry_data()
{
    QTest::addColumn<QString>("strKind");
    QTest::addColumn<QString>("strEnd");
    QTest::newRow("file") << QStringLiteral("file") << QStringLiteral("/STICK/entry\" is a file");
    QTest::newRow("hidden file") << QStringLiteral("hidden") << QStringLiteral("/STICK/.entry\" is a file");
    QTest::newRow("pipe") << QStringLiteral("pipe") << QStringLiteral("/STICK/entry\" is a file");
    QTest::newRow("link to a folder") << QStringLiteral("link") << QStringLiteral("/STICK/entry\" is a link");
    QTest::newRow("link to nothing") << QStringLiteral("broken")
                                     << QStringLiteral("/STICK/entry\" is a link");
}

static void MakeEntry(CTempTree* pTree, const QString& strKind)
{
    if (strKind == QLatin1String("pipe")) {
        pTree->MkDir(QStringLiteral("STICK"));
        QCOMPARE(::mkfifo(QFile::encodeName(pTree->Path(QStringLiteral("STICK/entry"))).constData(), 0600),
                 0);
    } else if (strKind == QLatin1String("link")) {
        pTree->MkDir(QStringLiteral("STICK"));
        pTree->Link(QStringLiteral("STICK/entry"), QStringLiteral("/"));
    } else if (strKind == QLatin1String("broken")) {
        pTree->MkDir(QStringLiteral("STICK"));
        pTree->Link(QStringLiteral("STICK/entry"), QStringLiteral("nowhere"));
    } else {
        pTree->Write(strKind == QLatin1String("hidden") ? QStringLiteral("STICK/.entry")
                                                        : QStringLiteral("STICK/entry"));
    }
}

void tst_CLeftoverFolder::RefusesAnEntry()
{
    QFETCH(QString, strKind);
    QFETCH(QString, strEnd);
    CTempTree tree;
    MakeEntry(&tree, strKind);
    QVERIFY(CLeftoverFolder::Obstacle(tree.Path()).has_value());
    QVERIFY2(Reason(tree.Path()).endsWith(strEnd), qPrintable(Reason(tree.Path())));
}

void tst_CLeftoverFolder::RefusesAFileDeepInside()
{
    CTempTree tree;
    tree.MkDir(QStringLiteral("A/b/c"));
    tree.MkDir(QStringLiteral("Z/y/x"));
    const QString strFile = tree.Write(QStringLiteral("M/n/o/p/%1 last.txt"), "the only copy");
    QCOMPARE(Reason(tree.Path()), QStringLiteral("\"") + strFile + QStringLiteral("\" is a file"));
    QVERIFY(tree.Has(QStringLiteral("M/n/o/p/%1 last.txt")));
}

void tst_CLeftoverFolder::RefusesAnEmptyMountPoint()
{
    NEEDS_VOLUMES();
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK A"));
    QCOMPARE(Reason(QStringLiteral("/Volumes")), QStringLiteral("\"/Volumes/STICK A\" is a mount point"));
    QVERIFY(CVolume::Unmount("/Volumes/STICK A"));
    QCOMPARE(Reason(QStringLiteral("/Volumes")), QString());
}

void tst_CLeftoverFolder::RefusesAMountPointInAnEmptyFolder()
{
    NEEDS_VOLUMES();
    CTempTree tree;
    const QByteArray baPoint = QFile::encodeName(tree.MkDir(QStringLiteral("STICK/a#b\nc")));
    QVERIFY(CVolume::Mount("/dev/disk7s1", baPoint));
    QVERIFY(Reason(tree.Path()).endsWith(QStringLiteral("/STICK/a#b\nc\" is a mount point")));
    QVERIFY(CVolume::Unmount(baPoint));
}

/** Device numbers do not show this one. */
void tst_CLeftoverFolder::RefusesAFolderMountedInsideItself()
{
    NEEDS_VOLUMES();
    CTempTree tree;
    const QByteArray baFrom = QFile::encodeName(tree.MkDir(QStringLiteral("from")));
    const QByteArray baPoint = QFile::encodeName(tree.MkDir(QStringLiteral("left/point")));
    QVERIFY(CVolume::Bind(baFrom, baPoint));
    QVERIFY(
        Reason(tree.Path(QStringLiteral("left"))).endsWith(QStringLiteral("/left/point\" is a mount point")));
    QVERIFY(CVolume::Unmount(baPoint));
}

void tst_CLeftoverFolder::RefusesAMountPointWhenGivenThroughALink()
{
    NEEDS_VOLUMES();
    CTempTree tree;
    const QByteArray baFrom = QFile::encodeName(tree.MkDir(QStringLiteral("from")));
    const QByteArray baPoint = QFile::encodeName(tree.MkDir(QStringLiteral("real/left/point")));
    tree.Link(QStringLiteral("alias"), QStringLiteral("real"));
    QVERIFY(CVolume::Bind(baFrom, baPoint));
    QVERIFY(CLeftoverFolder::Obstacle(tree.Path(QStringLiteral("alias/left"))).has_value());
    QVERIFY(CVolume::Unmount(baPoint));
}

void tst_CLeftoverFolder::RefusesALinkAsTheFolder_data()
{
    QTest::addColumn<QString>("strSuffix");
    QTest::newRow("plain") << QString();
    QTest::newRow("closing slash") << QStringLiteral("/");
    QTest::newRow("closing dot") << QStringLiteral("/.");
}

void tst_CLeftoverFolder::RefusesALinkAsTheFolder()
{
    QFETCH(QString, strSuffix);
    CTempTree tree;
    tree.MkDir(QStringLiteral("real"));
    tree.Link(QStringLiteral("link"), QStringLiteral("real"));
    const QString strLink = tree.Path(QStringLiteral("link")) + strSuffix;
    QVERIFY(CLeftoverFolder::Obstacle(strLink).has_value());
    QVERIFY(Reason(strLink).startsWith(QStringLiteral("\"") + tree.Path(QStringLiteral("link"))));
}

void tst_CLeftoverFolder::RefusesAMissingFolder()
{
    CTempTree tree;
    QCOMPARE(Reason(tree.Path(QStringLiteral("gone"))),
             QStringLiteral("\"%1\" cannot be looked at: No such file or directory")
                 .arg(tree.Path(QStringLiteral("gone"))));
    QVERIFY(CLeftoverFolder::Obstacle(QString()).has_value());
}

void tst_CLeftoverFolder::RefusesAFile()
{
    CTempTree tree;
    QVERIFY(CLeftoverFolder::Obstacle(tree.Write(QStringLiteral("file"), "x")).has_value());
}

/** Takes from this thread, for as long as it lives, the right to read what its permissions forbid. */
class CWithoutOverride
{
public:
    CWithoutOverride() { Apply(~(1U << CAP_DAC_OVERRIDE) & ~(1U << CAP_DAC_READ_SEARCH)); }
    ~CWithoutOverride() { Apply(~0U); }

private:
    /** Leaves those of the permitted rights in effect. */
    static void Apply(unsigned nMask)
    {
        __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
        __user_cap_data_struct listRight[_LINUX_CAPABILITY_U32S_3];
        ::syscall(SYS_capget, &header, listRight);
        listRight[0].effective = listRight[0].permitted & nMask;
        ::syscall(SYS_capset, &header, listRight);
    }
};

void tst_CLeftoverFolder::RefusesAnUnreadableFolder()
{
    CTempTree tree;
    const QString strLocked = tree.MkDir(QStringLiteral("STICK/locked"));
    QVERIFY(::chmod(QFile::encodeName(strLocked).constData(), 0) == 0);
    const CWithoutOverride user;
    QCOMPARE(Reason(tree.Path()),
             QStringLiteral("\"%1\" cannot be looked at: Permission denied").arg(strLocked));
}

void tst_CLeftoverFolder::RefusesAFolderThatCannotBeReadToItsEnd()
{
    CTempTree tree;
    bool bForbidden = false;
    QString strReason;
    std::thread thread([&tree, &bForbidden, &strReason] {
        bForbidden = ForbidCall(__NR_getdents64, EIO);
        strReason = Reason(tree.Path());
    });
    thread.join();
    if (!bForbidden) {
        QSKIP("reading cannot be forbidden here");
    }
    QCOMPARE(strReason, QStringLiteral("\"%1\" cannot be looked at: Input/output error").arg(tree.Path()));
}

/** As if it were mounted after the table was read: the table is that of the main thread. */
void tst_CLeftoverFolder::RefusesAVolumeThatTheTableDoesNotShowYet()
{
    NEEDS_VOLUMES();
    CTempTree tree;
    const QByteArray baPoint = QFile::encodeName(tree.MkDir(QStringLiteral("STICK")));
    bool bMounted = false;
    QString strReason;
    std::thread thread([&tree, &baPoint, &bMounted, &strReason] {
        bMounted = ::unshare(CLONE_NEWNS) == 0 && CVolume::Mount("/dev/disk7s1", baPoint);
        strReason = Reason(tree.Path());
    });
    thread.join();
    QVERIFY(bMounted);
    QCOMPARE(strReason, QStringLiteral("\"%1\" is on another volume").arg(QFile::decodeName(baPoint)));
    QCOMPARE(Reason(tree.Path()), QString());
}

void tst_CLeftoverFolder::RefusesWhatIsNestedTooDeeply()
{
    CTempTree tree;
    const QString strTwenty = QStringLiteral("d/").repeated(20);
    tree.MkDir(strTwenty);
    QVERIFY(!CLeftoverFolder::Obstacle(tree.Path()).has_value());
    tree.MkDir(strTwenty.repeated(5));
    QVERIFY(Reason(tree.Path()).endsWith(QStringLiteral("is nested too deeply")));
}

void tst_CLeftoverFolder::LivesWithoutARequestForTheReason()
{
    CTempTree tree;
    tree.Write(QStringLiteral("STICK/file"));
    QVERIFY(CLeftoverFolder::Obstacle(tree.Path()).has_value());
}

void tst_CLeftoverFolder::OtherVolumesMayStandBesideTheFolder()
{
    NEEDS_VOLUMES();
    QVERIFY(CVolume::Mount("/dev/disk7s1", "/Volumes/STICK 2"));
    QVERIFY(QDir().mkpath(QStringLiteral("/Volumes/STICK")));
    QCOMPARE(Reason(QStringLiteral("/Volumes/STICK")), QString());
}

QTEST_GUILESS_MAIN(tst_CLeftoverFolder)
#include "tst_CLeftoverFolder.moc"
