#include "files/CMountTable.h"
#include "support/CVolume.h"
#include "support/VolumeNames.h"

#include <QTest>

#include <algorithm>

static std::vector<STMount> Parsed(const QByteArray& baText)
{
    return CMountTable::Parse(baText.toStdString());
}

class tst_CMountTable : public QObject
{
    Q_OBJECT

private slots:
    void fieldsOfALine();
    void fieldsAreFound_data();
    void fieldsAreFound();
    void escapes_data();
    void escapes();
    void readOnly_data();
    void readOnly();
    void linesThatAreNoMounts_data();
    void linesThatAreNoMounts();
    void tableOfThisProcess();
    void namesAsTheKernelWritesThem_data() { AddVolumeNames(); }
    void namesAsTheKernelWritesThem();
};

void tst_CMountTable::fieldsOfALine()
{
    const std::vector<STMount> listMount
        = Parsed("36 35 98:0 /mnt1 /mnt2 rw,noatime master:1 propagate_from:2 - ext3 /dev/root rw\n"
                 "37 36 0:50 / /mnt3 ro - tmpfs memory rw");
    QCOMPARE(listMount.size(), size_t(2));
    const STMount& mount = listMount[0];
    QCOMPARE(mount.nId, 36);
    QCOMPARE(mount.nParentId, 35);
    QCOMPARE(mount.strNumber, "98:0");
    QCOMPARE(mount.strRoot, "/mnt1");
    QCOMPARE(mount.strPoint, "/mnt2");
    QCOMPARE(mount.strType, "ext3");
    QCOMPARE(mount.strSource, "/dev/root");
    QCOMPARE(mount.bReadOnly, false);
    QCOMPARE(listMount[1].nParentId, 36);
    QCOMPARE(listMount[1].strSource, "memory");
    QCOMPARE(listMount[1].bReadOnly, true);
}

void tst_CMountTable::fieldsAreFound_data()
{
    QTest::addColumn<QByteArray>("baLine");
    QTest::addColumn<QByteArray>("baType");
    QTest::addColumn<QByteArray>("baSource");
    const auto row
        = [](const char* pszName, const char* pszLine, const char* pszType, const char* pszSource) {
              QTest::newRow(pszName) << QByteArray(pszLine) << QByteArray(pszType) << QByteArray(pszSource);
          };
    row("no optional field", "1 2 8:1 / /a rw - vfat /dev/sda1 rw", "vfat", "/dev/sda1");
    row("three optional fields", "1 2 8:1 / /a rw shared:7 master:8 unbindable - vfat /dev/sda1 rw", "vfat",
        "/dev/sda1");
    row("empty source", "1 2 0:9 / /a rw - tmpfs  rw", "tmpfs", "");
    row("a dash as source", "1 2 0:9 / /a rw - tmpfs - rw", "tmpfs", "-");
    row("a dash as root folder", "1 2 0:9 - /a rw - tmpfs x rw", "tmpfs", "x");
    row("a dash as options", "1 2 0:9 / /a - - tmpfs x -", "tmpfs", "x");
    row("type with a part", "1 2 0:9 / /a rw - fuse.sshfs user@host:/a rw", "fuse.sshfs", "user@host:/a");
}

void tst_CMountTable::fieldsAreFound()
{
    QFETCH(QByteArray, baLine);
    const std::vector<STMount> listMount = Parsed(baLine);
    QCOMPARE(listMount.size(), size_t(1));
    QTEST(QByteArray::fromStdString(listMount[0].strType), "baType");
    QTEST(QByteArray::fromStdString(listMount[0].strSource), "baSource");
}

void tst_CMountTable::escapes_data()
{
    QTest::addColumn<QByteArray>("baWritten");
    QTest::addColumn<QByteArray>("baName");
    const auto row = [](const char* pszName, const QByteArray& baWritten, const QByteArray& baName) {
        QTest::newRow(pszName) << baWritten << baName;
    };
    row("none", "/Volumes/A", "/Volumes/A");
    row("blank", "/Volumes/My\\040Stick", "/Volumes/My Stick");
    row("all that the kernel escapes", "a\\040b\\011c\\012d\\134e\\043f", "a b\tc\nd\\e#f");
    row("at both ends", "\\040a\\040", " a ");
    row("one behind the other", "\\040\\040\\134\\134", "  \\\\");
    row("a name with the letters of an escape", "a\\134040b", "a\\040b");
    row("the same, twice over", "a\\134134040b", "a\\134040b");
    row("a name with the end of one", "\\134\\060", "\\0");
    row("bytes that are no UTF-8", "a\xff\xe4", "a\xff\xe4");
    row("highest byte", "a\\377", "a\xff");
    row("more than a byte", "a\\400b\\777", "a\\400b\\777");
    row("zero byte", "a\\000b", "a\\000b");
    row("too few digits", "a\\04", "a\\04");
    row("backslash at the end", "a\\", "a\\");
    row("digits that are not octal", "a\\048\\9", "a\\048\\9");
    row("letters among the digits", "a\\0x4\\n", "a\\0x4\\n");
    row("an escape behind a backslash that begins none", "a\\\\040", "a\\ ");
}

void tst_CMountTable::escapes()
{
    QFETCH(QByteArray, baWritten);
    const std::vector<STMount> listMount
        = Parsed("1 2 8:1 " + baWritten + " " + baWritten + " rw - ext4 " + baWritten + " rw\n");
    QCOMPARE(listMount.size(), size_t(1));
    QTEST(QByteArray::fromStdString(listMount[0].strRoot), "baName");
    QTEST(QByteArray::fromStdString(listMount[0].strPoint), "baName");
    QTEST(QByteArray::fromStdString(listMount[0].strSource), "baName");
}

void tst_CMountTable::readOnly_data()
{
    QTest::addColumn<QByteArray>("baMount");
    QTest::addColumn<QByteArray>("baFileSystem");
    QTest::addColumn<bool>("bReadOnly");
    const auto row = [](const char* pszMount, const char* pszFileSystem, bool bReadOnly) {
        QTest::addRow("%s and %s", pszMount, pszFileSystem)
            << QByteArray(pszMount) << QByteArray(pszFileSystem) << bReadOnly;
    };
    row("rw,nosuid", "rw,size=1", false);
    row("ro,nosuid", "rw", true);
    row("rw", "size=1,ro", true);
    row("ro", "ro", true);
    row("rw,prot", "rw,errors=remount-ro,root=ro1", false);
}

void tst_CMountTable::readOnly()
{
    QFETCH(QByteArray, baMount);
    QFETCH(QByteArray, baFileSystem);
    const std::vector<STMount> listMount
        = Parsed("1 2 8:1 / /a " + baMount + " - ext4 /dev/sda1 " + baFileSystem);
    QTEST(listMount.at(0).bReadOnly, "bReadOnly");
}

void tst_CMountTable::linesThatAreNoMounts_data()
{
    QTest::addColumn<QByteArray>("baText");
    const auto row = [](const char* pszName, const QByteArray& baText) { QTest::newRow(pszName) << baText; };
    row("nothing", "");
    row("blank lines", "\n \n\n");
    row("other words", "this is not a table of mounts at all\n");
    row("megabytes of blanks", QByteArray(1000000, ' '));
    row("no dash", "1 2 8:1 / /a rw vfat /dev/sda1 rw");
    row("dash too early", "1 2 8:1 / - vfat /dev/sda1 rw");
    row("cut before the dash", "1 2 8:1 / /a rw shared:7");
    row("cut behind the dash", "1 2 8:1 / /a rw -");
    row("cut behind the type", "1 2 8:1 / /a rw - vfat");
    row("cut behind the source", "1 2 8:1 / /a rw - vfat /dev/sda1");
    row("no number", "x 2 8:1 / /a rw - vfat /dev/sda1 rw");
    row("no parent's number", "1  8:1 / /a rw - vfat /dev/sda1 rw");
    row("letters behind a number", "1 2x 8:1 / /a rw - vfat /dev/sda1 rw");
    row("a number beyond 64 bits", "99999999999999999999 2 8:1 / /a rw - vfat /dev/sda1 rw");
}

void tst_CMountTable::linesThatAreNoMounts()
{
    QFETCH(QByteArray, baText);
    QCOMPARE(Parsed(baText).size(), size_t(0));
    const std::vector<STMount> listMount = Parsed(baText + "\n1 2 8:9 / /last rw - ext4 /dev/sda9 rw\n");
    QCOMPARE(listMount.size(), size_t(1));
    QCOMPARE(listMount[0].strPoint, "/last");
}

void tst_CMountTable::tableOfThisProcess()
{
    const std::optional<std::vector<STMount>> listMount = CMountTable::Mounts();
    QVERIFY(listMount.has_value());
    for (const char* pszPoint : {"/", "/proc"}) {
        QVERIFY(std::any_of(listMount->begin(), listMount->end(),
                            [pszPoint](const STMount& mount) { return mount.strPoint == pszPoint; }));
    }
    QFile file(CMountTable::FileName());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(int(listMount->size()), file.readAll().count('\n'));
}

void tst_CMountTable::namesAsTheKernelWritesThem()
{
    QFETCH(QByteArray, baName);
    NEEDS_VOLUMES();
    QVERIFY(CVolume::Mount(baName, "/Volumes/" + baName));
    const std::vector<STMount> listMount = CMountTable::Mounts().value();
    QCOMPARE(QByteArray::fromStdString(listMount.back().strPoint), "/Volumes/" + baName);
    QCOMPARE(QByteArray::fromStdString(listMount.back().strSource), baName);
    QCOMPARE(listMount.back().strType, "tmpfs");
}

QTEST_GUILESS_MAIN(tst_CMountTable)
#include "tst_CMountTable.moc"
