#include "diskutil/CMountList.h"

#include <QtTest>

static CMountList Table(const QByteArray& baText) { return CMountList(baText.toStdString()); }

static QByteArray Point(const STMount* pMount)
{
    return pMount == nullptr ? QByteArray("(none)") : QByteArray::fromStdString(pMount->strPoint);
}

class tst_CMountList : public QObject
{
    Q_OBJECT

private slots:
    void fields();
    void names_data();
    void names();
    void linesThatAreNone_data();
    void linesThatAreNone();
    void readOnly_data();
    void readOnly();
    void bestMount_data();
    void bestMount();
    void findsByAnyOfTheSources();
    void ownTable();
};

void tst_CMountList::fields()
{
    const CMountList table
        = Table("36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 propagate_from:2 - ext3 /dev/root "
                "rw,errors=continue\n"
                "37 35 0:50 / /mnt3 rw - tmpfs tmpfs rw");
    QCOMPARE(table.Mounts().size(), size_t(2));
    const STMount& mount = table.Mounts().front();
    QCOMPARE(mount.strNumber, std::string("98:0"));
    QCOMPARE(mount.strRoot, std::string("/mnt1"));
    QCOMPARE(mount.strPoint, std::string("/mnt2"));
    QCOMPARE(mount.strType, std::string("ext3"));
    QCOMPARE(mount.strSource, std::string("/dev/root"));
    QVERIFY(!mount.bReadOnly);
    QCOMPARE(table.Mounts().back().strSource, std::string("tmpfs"));
}

void tst_CMountList::names_data()
{
    QTest::addColumn<QByteArray>("baWritten");
    QTest::addColumn<QByteArray>("baPoint");
    QTest::newRow("plain") << QByteArray("/Volumes/A") << QByteArray("/Volumes/A");
    QTest::newRow("blank") << QByteArray("/Volumes/My\\040Stick") << QByteArray("/Volumes/My Stick");
    QTest::newRow("tab, line end, backslash")
        << QByteArray("/a\\011b\\012c\\134d") << QByteArray("/a\tb\nc\\d");
    QTest::newRow("backslash before digits") << QByteArray("/a\\134040") << QByteArray("/a\\040");
    QTest::newRow("at the end") << QByteArray("/a\\040") << QByteArray("/a ");
    QTest::newRow("no octal number") << QByteArray("/a\\04x\\999\\4") << QByteArray("/a\\04x\\999\\4");
    QTest::newRow("bytes that are no UTF-8") << QByteArray("/a\xFF\xE4") << QByteArray("/a\xFF\xE4");
    QTest::newRow("highest byte") << QByteArray("/a\\377") << QByteArray("/a\xFF");
}

void tst_CMountList::names()
{
    QFETCH(QByteArray, baWritten);
    const CMountList table = Table("1 2 8:1 / " + baWritten + " rw - ext4 " + baWritten + " rw\n");
    QCOMPARE(table.Mounts().size(), size_t(1));
    QTEST(QByteArray::fromStdString(table.Mounts().front().strPoint), "baPoint");
    QTEST(QByteArray::fromStdString(table.Mounts().front().strSource), "baPoint");
}

void tst_CMountList::linesThatAreNone_data()
{
    QTest::addColumn<QByteArray>("baLine");
    QTest::addColumn<int>("nMounts");
    QTest::newRow("empty table") << QByteArray() << 0;
    QTest::newRow("empty line") << QByteArray("\n\n") << 0;
    QTest::newRow("no dash") << QByteArray("1 2 8:1 / /a rw ext4 /dev/sda1 rw") << 0;
    QTest::newRow("dash too early") << QByteArray("1 2 8:1 / - ext4 /dev/sda1 rw") << 0;
    QTest::newRow("nothing behind the source") << QByteArray("1 2 8:1 / /a rw - ext4 /dev/sda1") << 0;
    QTest::newRow("empty source") << QByteArray("1 2 0:1 / /a rw - tmpfs  rw") << 1;
    QTest::newRow("junk") << QByteArray(100000, ' ') << 0;
}

void tst_CMountList::linesThatAreNone()
{
    QFETCH(QByteArray, baLine);
    QTEST(int(Table(baLine).Mounts().size()), "nMounts");
    const CMountList table = Table(baLine + "\n1 2 8:9 / /last rw - ext4 /dev/sda9 rw\n");
    QCOMPARE(Point(table.FindNumber("8:9")), QByteArray("/last"));
}

void tst_CMountList::readOnly_data()
{
    QTest::addColumn<QByteArray>("baMount");
    QTest::addColumn<QByteArray>("baFileSystem");
    QTest::addColumn<bool>("bReadOnly");
    QTest::newRow("both writable") << QByteArray("rw,nosuid") << QByteArray("rw,size=1") << false;
    QTest::newRow("mount read-only") << QByteArray("ro,nosuid") << QByteArray("rw") << true;
    QTest::newRow("file system read-only") << QByteArray("rw") << QByteArray("size=1,ro") << true;
    QTest::newRow("only looks so") << QByteArray("rw,prot") << QByteArray("rw,errors=remount-ro,root=ro1")
                                   << false;
}

void tst_CMountList::readOnly()
{
    QFETCH(QByteArray, baMount);
    QFETCH(QByteArray, baFileSystem);
    const CMountList table = Table("1 2 8:1 / /a " + baMount + " - ext4 /dev/sda1 " + baFileSystem);
    QTEST(table.FindNumber("8:1")->bReadOnly, "bReadOnly");
}

void tst_CMountList::bestMount_data()
{
    QTest::addColumn<QList<QByteArray>>("listRootAndPoint");
    QTest::addColumn<QByteArray>("baPoint");
    const auto row = [](const char* pName, const QList<QByteArray>& listRootAndPoint, const char* pPoint) {
        QTest::newRow(pName) << listRootAndPoint << QByteArray(pPoint);
    };
    row("none", {}, "(none)");
    row("the first of equals", {"/ /a", "/ /b"}, "/a");
    row("a volume before others", {"/ /a", "/ /Volumes/B"}, "/Volumes/B");
    row("a volume before others, whatever the order", {"/ /Volumes/B", "/ /a"}, "/Volumes/B");
    row("a whole file system before a folder of one", {"/sub /a", "/ /b"}, "/b");
    row("a folder of one when there is nothing else", {"/sub /a"}, "/a");
    row("a folder shown as a volume before all", {"/ /a", "/sub /Volumes/B"}, "/Volumes/B");
    row("the folder of volumes is none itself", {"/ /a", "/ /Volumes"}, "/a");
}

void tst_CMountList::bestMount()
{
    QFETCH(QList<QByteArray>, listRootAndPoint);
    QByteArray baText("1 2 8:2 / /Volumes/Other rw - ext4 /dev/sda2 rw\n");
    for (const QByteArray& baRootAndPoint : listRootAndPoint) {
        baText += "1 2 8:1 " + baRootAndPoint + " rw - ext4 /dev/sda1 rw\n";
    }
    const CMountList table = Table(baText);
    QTEST(Point(table.FindSource({"/dev/sda1"})), "baPoint");
    QTEST(Point(table.FindNumber("8:1")), "baPoint");
}

void tst_CMountList::findsByAnyOfTheSources()
{
    const CMountList table = Table("1 2 8:1 / /a rw - ext4 /dev/sda1 rw\n"
                                   "1 2 254:0 / /b rw - ext4 /dev/mapper/vault rw\n");
    QCOMPARE(Point(table.FindSource({"vault", "/dev/dm-0", "/dev/mapper/vault"})), QByteArray("/b"));
    QCOMPARE(Point(table.FindSource({"/dev/sda"})), QByteArray("(none)"));
    QCOMPARE(Point(table.FindSource({})), QByteArray("(none)"));
    QCOMPARE(Point(table.FindNumber("8:10")), QByteArray("(none)"));
}

void tst_CMountList::ownTable()
{
    const CMountList table = CMountList::OfProcess();
    QVERIFY(!table.Mounts().empty());
    const bool bRoot = std::any_of(table.Mounts().begin(), table.Mounts().end(),
                                   [](const STMount& mount) { return mount.strPoint == "/"; });
    QVERIFY(bRoot);
}

QTEST_GUILESS_MAIN(tst_CMountList)
#include "tst_CMountList.moc"
