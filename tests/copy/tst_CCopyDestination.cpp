#include "copy/CCopyDestination.h"
#include "files/CFileNameCodec.h"
#include "support/CAnotherUser.h"
#include "support/CTempTree.h"

#include <QFile>
#include <QtTest>

#include <sys/stat.h>

class tst_CCopyDestination : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void freeName_data();
    void freeName();
    void nameOfAnUnreadableFileIsFree();
    void nameOfAPipeIsTaken();
};

void tst_CCopyDestination::freeName_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<QStringList>("listExisting");
    QTest::addColumn<QString>("strFree");
    QTest::newRow("free") << "a.txt" << QStringList{"other"} << "a.txt";
    QTest::newRow("suffix without its point") << "report.pdf" << QStringList{"report.pdf"} << "report_1pdf";
    QTest::newRow("two suffixes") << "archive.tar.gz" << QStringList{"archive.tar.gz"} << "archive.tar_1gz";
    QTest::newRow("no suffix") << "README" << QStringList{"README"} << "README_1";
    QTest::newRow("first number taken") << "a.txt" << QStringList{"a.txt", "a_1txt"} << "a_2txt";
    QTest::newRow("number with a point is another name")
        << "a.txt" << QStringList{"a.txt", "a_1.txt"} << "a_1txt";
    QTest::newRow("first gap") << "a.txt" << QStringList{"a.txt", "a_1txt", "a_3txt"} << "a_2txt";
    QTest::newRow("two digits") << "n" << QString("n n_1 n_2 n_3 n_4 n_5 n_6 n_7 n_8 n_9").split(' ')
                                << "n_10";
    QTest::newRow("hidden") << ".profile" << QStringList{".profile"} << "_1profile";
    QTest::newRow("trailing point") << "name." << QStringList{"name."} << "name._1";
    QTest::newRow("placeholder in the name") << "%1.txt" << QStringList{"%1.txt"} << "%1_1txt";
    QTest::newRow("placeholder in the suffix") << "a.%1" << QStringList{"a.%1"} << "a_1%1";
    QTest::newRow("blank") << "a b.txt " << QStringList{"a b.txt "} << "a b_1txt ";
}

void tst_CCopyDestination::freeName()
{
    QFETCH(QString, strName);
    QFETCH(QStringList, listExisting);
    QFETCH(QString, strFree);
    CTempTree tree;
    for (const QString& strExisting : qAsConst(listExisting)) {
        tree.Write("dst/" + strExisting, "old");
    }
    const QFileInfo source(tree.Write("src/" + strName, "new"));
    QCOMPARE(CCopyDestination::FreeName(tree.Path("dst/" + strName), tree.Path("dst"), source),
             tree.Path("dst/" + strFree));
}

void tst_CCopyDestination::nameOfAnUnreadableFileIsFree()
{
    CTempTree tree;
    const QFileInfo source(tree.Write("src/a.txt", "new"));
    const QString strUnreadable = tree.Write("dst/a.txt", "old");
    const QString strReadable = tree.Write("dst/b.txt", "old");
    QCOMPARE(chmod(QFile::encodeName(strUnreadable).constData(), 0200), 0);
    QCOMPARE(chmod(QFile::encodeName(tree.Path()).constData(), 0755), 0);
    const CAnotherUser user;
    if (!user.IsValid()) {
        QSKIP("cannot look at files as another user here");
    }
    QCOMPARE(CCopyDestination::FreeName(strUnreadable, tree.Path("dst"), source), strUnreadable);
    QCOMPARE(CCopyDestination::FreeName(strReadable, tree.Path("dst"), source), tree.Path("dst/a_1txt"));
}

void tst_CCopyDestination::nameOfAPipeIsTaken()
{
    CTempTree tree;
    tree.MkDir("dst");
    QCOMPARE(mkfifo(QFile::encodeName(tree.Path("dst/a.txt")).constData(), 0600), 0);
    const QFileInfo source(tree.Write("src/a.txt", "new"));
    QCOMPARE(CCopyDestination::FreeName(tree.Path("dst/a.txt"), tree.Path("dst"), source),
             tree.Path("dst/a_1txt"));
}

QTEST_GUILESS_MAIN(tst_CCopyDestination)
#include "tst_CCopyDestination.moc"
