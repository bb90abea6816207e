#include "diskutil/CMountList.h"

#include <QTest>

static CMountList Table(const QByteArray& baText)
{
    return CMountList(CMountTable::Parse(baText.toStdString()));
}

static QByteArray Point(const STMount* pMount)
{
    return pMount == nullptr ? QByteArray("(none)") : QByteArray::fromStdString(pMount->strPoint);
}

class tst_CMountList : public QObject
{
    Q_OBJECT

private slots:
    void bestMount_data();
    void bestMount();
    void findsByAnyOfTheSources();
};

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
    QCOMPARE(Point(table.FindSource({"vault", "/dev/dm-0", "/dev/mapper/vault"})), "/b");
    QCOMPARE(Point(table.FindSource({"/dev/sda"})), "(none)");
    QCOMPARE(Point(table.FindSource({})), "(none)");
    QCOMPARE(Point(table.FindNumber("8:10")), "(none)");
}

QTEST_APPLESS_MAIN(tst_CMountList)
#include "tst_CMountList.moc"
