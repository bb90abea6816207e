#include "copy/CUnlistedEntries.h"
#include "files/CFileNameCodec.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"

#include <QDir>
#include <QtTest>

class tst_CUnlistedEntries : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }
    void everythingListedTellsNothing();
    void entriesMissingInTheTreeAreTold();
    void folderThatWasNeverListedIsToldOnce();
    void folderThatCannotBeListedIsTold();
    void linkThatLeadsBackIsTold();
};

/** What is told of "src", each in one line from there, sorted. */
static QStringList Told(const CTempTree& tree, const CDirNode* pNode)
{
    CUnlistedEntries entries(*pNode);
    QStringList listTold;
    while (const std::optional<STCopyOutcome> stOutcome = entries.Next()) {
        const STCopyReason stReason = stOutcome->stReason;
        listTold.append(
            QString("%1: %2, %3").arg(stOutcome->strPath, stReason.strText).arg(stOutcome->nExpected));
        listTold.last() += stReason.nError == 0 ? QString() : ", " + qt_error_string(stReason.nError);
    }
    listTold.sort();
    return listTold.replaceInStrings(tree.Path("src"), "src");
}

void tst_CUnlistedEntries::everythingListedTellsNothing()
{
    CTempTree tree;
    tree.Write("src/known/f", "1");
    tree.MkDir("src/empty");
    tree.WriteBytesName("src/a\xff", "2");
    CNodeTree nodes;
    const CDirNode* pNode = nodes.AddListed(tree.Path("src"));
    QCOMPARE(Told(tree, pNode), QStringList{});
    QCOMPARE(Told(tree, nodes.Add(tree.Path("src/empty"))), QStringList{});
}

void tst_CUnlistedEntries::entriesMissingInTheTreeAreTold()
{
    CTempTree tree;
    tree.Write("src/known", "1");
    tree.Write("src/developer.txt", "12345");
    tree.Write("src/homes/f", "1");
    CNodeTree nodes;
    const CDirNode* pNode = nodes.AddListed(tree.Path("src"));
    tree.Write("src/new\nfile", "123");
    const QString strReason = ": not in the tree: left out for its name, or newer than the list, ";
    QCOMPARE(Told(tree, pNode),
             (QStringList{"src/developer.txt" + strReason + '5', "src/homes" + strReason + "-1",
                          "src/new\nfile" + strReason + '3'}));
}

void tst_CUnlistedEntries::folderThatWasNeverListedIsToldOnce()
{
    CTempTree tree;
    tree.Write("src/f", "1");
    tree.Write("src/g", "1");
    CNodeTree nodes;
    QCOMPARE(Told(tree, nodes.Add(tree.Path("src"))), QStringList{"src: its contents were never listed, -1"});
}

void tst_CUnlistedEntries::folderThatCannotBeListedIsTold()
{
    CTempTree tree;
    CNodeTree nodes;
    const CDirNode* pNode = nodes.Add(tree.MkDir("src"));
    QVERIFY(QDir().rmdir(tree.Path("src")));
    QCOMPARE(Told(tree, pNode),
             QStringList{"src: its contents cannot be listed, -1, No such file or directory"});
}

void tst_CUnlistedEntries::linkThatLeadsBackIsTold()
{
    CTempTree tree;
    tree.MkDir("src");
    tree.Link("src/back", tree.Path("src"));
    CNodeTree nodes;
    const CDirNode* pNode = nodes.AddListed(tree.Path("src"))->m_listChild.at(0);
    QCOMPARE(Told(tree, pNode),
             QStringList{"src/back: a link to a folder that it lies in, not followed, -1"});
}

QTEST_GUILESS_MAIN(tst_CUnlistedEntries)
#include "tst_CUnlistedEntries.moc"
