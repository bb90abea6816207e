#include "copy/CMadeRescue.h"

#include <QCryptographicHash>

#include <sys/stat.h>

static const int FILES = 300;
static const char CONTAINERS[] = "Users/anna/Library/Containers";

/** What a copy of the ticked nodes makes of the made volume, beside what it has always made of it. */
class tst_CopyWithoutChoice : public CMadeRescue
{
    Q_OBJECT

private slots:
    void initTestCase() { umask(022); }
    void init();
    void cleanup() { ClearVolume(); }

    void resultIsAsItWas_data();
    void resultIsAsItWas();

private:
    QString Result() const;
};

void tst_CopyWithoutChoice::init()
{
    NEEDS_VOLUMES();
    NEEDS_COMPARE_TOOLS();
}

/** What was copied and said, in one line. */
QString tst_CopyWithoutChoice::Result() const
{
    const STToolCount stCount = CToolCompare::Count(m_strDest);
    const STCopyAccount stAccount = Account();
    QStringList listItem;
    for (const STCopyItem& stItem : stAccount.listItem) {
        listItem.append(
            QString("%1 %2 %3").arg(stItem.strPath).arg(int(stItem.enProblem)).arg(stItem.nCopied));
    }
    const QByteArray baItems
        = QCryptographicHash::hash(listItem.join('\n').toUtf8(), QCryptographicHash::Md5).toHex();
    return QString("counted %1; %2 files, %3 folders, %4 bytes, %5; whole %6, not whole %7, notes %8, %9")
        .arg(m_nCounted)
        .arg(stCount.nFiles)
        .arg(stCount.nFolders)
        .arg(stCount.nBytes)
        .arg(CToolCompare::Digest(m_strDest))
        .arg(stAccount.nFiles)
        .arg(stAccount.nProblems)
        .arg(stAccount.nNotes)
        .arg(QString::fromLatin1(baItems));
}

/**
 * The lines are what the program copied and said before there was the choice. Whoever
 * changes the made volume takes them anew from a copy without the choice.
 */
void tst_CopyWithoutChoice::resultIsAsItWas_data()
{
    const QString strLink = QString(CONTAINERS) + "/com.example.app00000/Data/Documents";
    QTest::addColumn<QStringList>("listEntry");
    QTest::addColumn<int>("nOpened");
    QTest::addColumn<QString>("strResult");
    QTest::newRow("whole volume, never opened")
        << QStringList{""} << 0
        << "counted 419430400; 0 files, 1 folders, 0 bytes, 01d76c8a2a19223405b855d92be69cca; whole 0, not "
           "whole 1, notes 0, 9583d0553e5d6a91dd9c4cc6ac7d9531";
    QTest::newRow("whole volume, opened two levels")
        << QStringList{""} << 2
        << "counted 419430400; 4 files, 12 folders, 41 bytes, 9060ef4c738c2e74c7e6f14baff1aff1; whole 4, not "
           "whole 8, notes 0, d6e14633667c439d4a0f2a7361550a3d";
    QTest::newRow("all that it shows")
        << QStringList{"*"} << 1
        << "counted 419430400; 0 files, 8 folders, 0 bytes, d7de31cb8d51d58693d989b18f2759a7; whole 0, not "
           "whole 11, notes 0, ffb32622db6ff965c4097158d21b963e";
    QTest::newRow("a home")
        << QStringList{"Users/anna"} << 0
        << "counted 1921024; 3809 files, 476 folders, 1921024 bytes, 0fef5e6a3cc208354a807b016566a3d4; whole "
           "3718, not whole 166, notes 0, 7a35fbc680354bdcfa40ac6db5427966";
    QTest::newRow("a folder that links lead to")
        << QStringList{"Users/anna/Documents"} << 0
        << "counted 1527; 148 files, 11 folders, 1527 bytes, 6f01a776ae0ad7e426dd6bf21af9632d; whole 148, "
           "not whole 4, notes 0, a17bc151fc1966c4af76a9f8fb364b3c";
    QTest::newRow("a link")
        << QStringList{strLink} << 0
        << "counted 1527; 148 files, 15 folders, 1527 bytes, 699b8b670546f2cc96a544f3f43da113; whole 148, "
           "not whole 4, notes 0, 1cf85504cffcc4ef2280f4414681520f";
    QTest::newRow("parts of the tree")
        << QStringList{"Applications", "Users/anna/Documents", "Users/Shared/Kinds", strLink} << 0
        << "counted 33138; 308 files, 41 folders, 33138 bytes, 433ded85bf5312fe3111c0550acf9b72; whole 308, "
           "not whole 8, notes 0, d4c8d9ef17d0ad773cc0855fed6fccbe";
}

void tst_CopyWithoutChoice::resultIsAsItWas()
{
    QFETCH(QStringList, listEntry);
    QFETCH(int, nOpened);
    MakeVolume(FILES);
    m_pMac->PlantSpecials();
    QVERIFY(m_pMac->PlantMount());
    Tick(listEntry, nOpened);
    CountAndCopy(false);
    QTEST(Result(), "strResult");
}

QTEST_GUILESS_MAIN(tst_CopyWithoutChoice)
#include "tst_CopyWithoutChoice.moc"
