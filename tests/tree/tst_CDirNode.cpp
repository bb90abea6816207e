#include "HostileNames.h"
#include "files/CFileNameCodec.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "tree/CDirNode.h"

#include <QApplication>
#include <QTest>

#include <cerrno>
#include <memory>

// The memory checkers have an allocator of their own, which tells nothing.
#if defined(__GLIBC__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#include <malloc.h>

static qint64 HeapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return qint64(info.uordblks) + qint64(info.hblkhd);
}
#else
static qint64 HeapBytes() { return -1; }
#endif

static QStringList ChildNames(const CDirNode& node)
{
    QStringList listName;
    for (const CDirNode* pChild : node.m_listChild) {
        listName += pChild->m_strName;
    }
    return listName;
}

/** A node that frees what was listed below it. */
struct STOwnedNode
{
    explicit STOwnedNode(const QString& strPath)
        : m_node(QFileInfo(strPath), nullptr)
    {
    }
    ~STOwnedNode() { m_node.RemoveAllBelow(); }

    CDirNode m_node;
};

static CDirNode* ChildNamed(const CDirNode& node, const QString& strName)
{
    const int nRow = ChildNames(node).indexOf(strName);
    return nRow < 0 ? nullptr : node.m_listChild.at(nRow);
}

class tst_CDirNode : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { CFileNameCodec::Install(); }

    void defaultNode();
    void nodeOfEntry_data();
    void nodeOfEntry();
    void appendSetsParentAndOrder();
    void childAtRow_data();
    void childAtRow();
    void indexOfChild();
    void removeAt_data();
    void removeAt();
    void removeAllEmpties();
    void destructorLeavesChildren();
    void prefixes_data();
    void prefixes();
    void prefixesAtEveryDepth();
    void onlySkippedEntriesStayUnloaded();
    void loadedChild();
    void loadAppendsToWhatIsThere();
    void stateOfNewChildren_data();
    void stateOfNewChildren();
    void folderThatCannotBeListed_data();
    void folderThatCannotBeListed();
    void errorIsForgottenOnSuccess();
    void linkToFolderIsAFolder();
    void linksThatLeadBackEnd();
    void hostileNameIsShownAndRead_data() { AddHostileNames(); }
    void hostileNameIsShownAndRead();
    void memory();
};

void tst_CDirNode::defaultNode()
{
    CDirNode node;
    QVERIFY(node.m_fileInfo.filePath().isEmpty());
    QVERIFY(node.m_icon.isNull());
    QCOMPARE(node.m_chkState, 0);
    QCOMPARE(node.m_bDir, false);
    QVERIFY(node.m_strName.isEmpty());
    QVERIFY(!node.m_strName.isNull());
    QVERIFY(!node.m_pParent);
    QVERIFY(node.m_listChild.isEmpty());
    QCOMPARE(node.m_nListError, 0);
}

void tst_CDirNode::nodeOfEntry_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("folder");
    QTest::newRow("file") << "file.txt" << false;
    QTest::newRow("folder") << "folder" << true;
    QTest::newRow("link to a folder") << "to folder" << true;
    QTest::newRow("link to a file") << "to file" << false;
    QTest::newRow("broken link") << "broken" << false;
    QTest::newRow("nothing") << "gone" << false;
}

void tst_CDirNode::nodeOfEntry()
{
    CTempTree tree;
    tree.Write("file.txt");
    tree.MkDir("folder");
    tree.Link("to folder", "folder");
    tree.Link("to file", "file.txt");
    tree.Link("broken", "nowhere");

    QFETCH(QString, entry);
    CDirNode parent;
    const CDirNode node(QFileInfo(tree.Path(entry)), &parent);
    QCOMPARE(node.m_fileInfo.absoluteFilePath(), tree.Path(entry));
    QCOMPARE(node.m_strName, entry);
    QTEST(node.m_bDir, "folder");
    QCOMPARE(node.m_chkState, 0);
    QCOMPARE(node.m_pParent, &parent);
    QVERIFY(parent.m_listChild.isEmpty());
    QVERIFY(!node.m_icon.isNull());
}

void tst_CDirNode::appendSetsParentAndOrder()
{
    CDirNode parent;
    auto* pFirst = new CDirNode;
    auto* pSecond = new CDirNode;
    parent.AppendChild(pFirst);
    parent.AppendChild(pSecond);
    QCOMPARE(pFirst->m_pParent, &parent);
    QCOMPARE(parent.m_listChild, QList<CDirNode*>({pFirst, pSecond}));
    parent.RemoveAll();
}

void tst_CDirNode::childAtRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("there");
    QTest::newRow("least integer") << std::numeric_limits<int>::min() << false;
    QTest::newRow("-1") << -1 << false;
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last") << 2 << true;
    QTest::newRow("count") << 3 << false;
    QTest::newRow("greatest integer") << std::numeric_limits<int>::max() << false;
}

void tst_CDirNode::childAtRow()
{
    QFETCH(int, row);
    QFETCH(bool, there);
    CDirNode parent;
    for (int i = 0; i < 3; ++i) {
        parent.AppendChild(new CDirNode);
    }
    QCOMPARE(parent.Child(row), there ? parent.m_listChild.at(row) : nullptr);
    parent.RemoveAll();
}

void tst_CDirNode::indexOfChild()
{
    CDirNode parent;
    CDirNode stranger;
    for (int i = 0; i < 3; ++i) {
        parent.AppendChild(new CDirNode);
    }
    QCOMPARE(parent.ChildIndex(parent.Child(0)), 0);
    QCOMPARE(parent.ChildIndex(parent.Child(2)), 2);
    QCOMPARE(parent.ChildIndex(&stranger), -1);
    QCOMPARE(parent.ChildIndex(nullptr), -1);
    parent.RemoveAll();
}

void tst_CDirNode::removeAt_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("-1") << -1 << QStringList({"a", "b", "c"});
    QTest::newRow("first") << 0 << QStringList({"b", "c"});
    QTest::newRow("middle") << 1 << QStringList({"a", "c"});
    QTest::newRow("last") << 2 << QStringList({"a", "b"});
    QTest::newRow("count") << 3 << QStringList({"a", "b", "c"});
}

void tst_CDirNode::removeAt()
{
    CTempTree tree;
    for (const char* pszName : {"a", "b", "c"}) {
        tree.Write(pszName);
    }
    STOwnedNode owned(tree.Path());
    owned.m_node.LoadChild();
    QFETCH(int, row);
    owned.m_node.RemoveAt(row);
    QTEST(ChildNames(owned.m_node), "left");
}

void tst_CDirNode::removeAllEmpties()
{
    CDirNode parent;
    parent.RemoveAll();
    parent.AppendChild(new CDirNode);
    parent.AppendChild(new CDirNode);
    parent.RemoveAll();
    QVERIFY(parent.m_listChild.isEmpty());
}

void tst_CDirNode::destructorLeavesChildren()
{
    const std::unique_ptr<CDirNode> pChild(new CDirNode);
    {
        CDirNode parent;
        parent.AppendChild(pChild.get());
    }
    // Still alive: writing to it would be caught by a memory checker, deleting it twice by any C library.
    pChild->m_strName = "alive";
    QCOMPARE(pChild->m_strName, QString("alive"));
}

void tst_CDirNode::prefixes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("kept");
    QTest::newRow("dev") << "dev" << false;
    QTest::newRow("development") << "development" << false;
    QTest::newRow("devices") << "devices" << false;
    QTest::newRow("home") << "home" << false;
    QTest::newRow("homework") << "homework" << false;
    QTest::newRow("Dev") << "Dev" << true;
    QTest::newRow("Home") << "Home" << true;
    QTest::newRow("de") << "de" << true;
    QTest::newRow("mydev") << "mydev" << true;
    QTest::newRow(".home") << ".home" << true;
    QTest::newRow("Volumes") << "Volumes" << true;
    QTest::newRow("Volumes2") << "Volumes2" << true;
}

void tst_CDirNode::prefixes()
{
    QFETCH(QString, name);
    QFETCH(bool, kept);
    for (const bool bFolder : {false, true}) {
        CTempTree tree;
        bFolder ? tree.MkDir(name) : tree.Write(name);
        STOwnedNode owned(tree.Path());
        owned.m_node.LoadChild();
        QCOMPARE(ChildNames(owned.m_node), kept ? QStringList(name) : QStringList());
    }
}

void tst_CDirNode::prefixesAtEveryDepth()
{
    CTempTree tree;
    tree.Write("a/b/development");
    tree.Write("a/b/kept");
    STOwnedNode owned(tree.Path("a/b"));
    owned.m_node.LoadChild();
    QCOMPARE(ChildNames(owned.m_node), QStringList("kept"));
}

void tst_CDirNode::onlySkippedEntriesStayUnloaded()
{
    CTempTree tree;
    tree.Write("dev");
    tree.MkDir("homework");
    STOwnedNode owned(tree.Path());
    owned.m_node.LoadChild();
    QVERIFY(owned.m_node.m_listChild.isEmpty());
    QCOMPARE(owned.m_node.m_nListError, 0);
}

void tst_CDirNode::loadedChild()
{
    CTempTree tree;
    tree.Write("b.txt", "12345");
    tree.MkDir("A");
    STOwnedNode owned(tree.Path());
    owned.m_node.LoadChild();
    QCOMPARE(ChildNames(owned.m_node), QStringList({"A", "b.txt"}));
    const CDirNode& folder = *owned.m_node.Child(0);
    const CDirNode& file = *owned.m_node.Child(1);
    QCOMPARE(folder.m_pParent, &owned.m_node);
    QVERIFY(folder.m_bDir);
    QVERIFY(folder.m_listChild.isEmpty());
    QVERIFY(!file.m_bDir);
    QCOMPARE(file.m_fileInfo.absoluteFilePath(), tree.Path("b.txt"));
    QCOMPARE(file.m_fileInfo.size(), qint64(5));
    QVERIFY(folder.m_icon.cacheKey() != file.m_icon.cacheKey());
}

void tst_CDirNode::loadAppendsToWhatIsThere()
{
    CTempTree tree;
    tree.Write("a");
    STOwnedNode owned(tree.Path());
    owned.m_node.LoadChild();
    owned.m_node.LoadChild();
    QCOMPARE(ChildNames(owned.m_node), QStringList({"a", "a"}));
}

void tst_CDirNode::stateOfNewChildren_data()
{
    QTest::addColumn<int>("parent");
    QTest::addColumn<int>("child");
    QTest::newRow("unchecked") << 0 << 0;
    QTest::newRow("partially checked") << 1 << 0;
    QTest::newRow("checked") << 2 << 2;
}

void tst_CDirNode::stateOfNewChildren()
{
    CTempTree tree;
    tree.Write("file");
    tree.MkDir("folder");
    STOwnedNode owned(tree.Path());
    QFETCH(int, parent);
    owned.m_node.m_chkState = parent;
    owned.m_node.LoadChild();
    QCOMPARE(owned.m_node.m_listChild.size(), 2);
    QTEST(owned.m_node.Child(0)->m_chkState, "child");
    QTEST(owned.m_node.Child(1)->m_chkState, "child");
    QCOMPARE(owned.m_node.m_chkState, parent);
}

void tst_CDirNode::folderThatCannotBeListed_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("error");
    QTest::newRow("vanished") << "gone" << ENOENT;
    QTest::newRow("a file by now") << "file" << ENOTDIR;
}

void tst_CDirNode::folderThatCannotBeListed()
{
    CTempTree tree;
    tree.Write("file");
    QFETCH(QString, entry);
    STOwnedNode owned(tree.Path(entry));
    owned.m_node.m_bDir = true;
    owned.m_node.m_chkState = Qt::Checked;
    owned.m_node.LoadChild();
    QVERIFY(owned.m_node.m_listChild.isEmpty());
    QTEST(owned.m_node.m_nListError, "error");
}

void tst_CDirNode::errorIsForgottenOnSuccess()
{
    CTempTree tree;
    STOwnedNode owned(tree.Path("later"));
    owned.m_node.LoadChild();
    QCOMPARE(owned.m_node.m_nListError, ENOENT);
    tree.Write("later/file");
    owned.m_node.LoadChild();
    QCOMPARE(ChildNames(owned.m_node), QStringList("file"));
    QCOMPARE(owned.m_node.m_nListError, 0);
}

void tst_CDirNode::linkToFolderIsAFolder()
{
    CTempTree tree;
    tree.Write("real/inside");
    tree.Link("link", "real");
    STOwnedNode owned(tree.Path());
    QCOMPARE(CNodeTree::ListAll(&owned.m_node), 4);
    QCOMPARE(ChildNames(*ChildNamed(owned.m_node, "link")), QStringList("inside"));
}

void tst_CDirNode::linksThatLeadBackEnd()
{
    CTempTree tree;
    tree.Link("everything", "/");
    tree.Write("a/file a");
    tree.Write("b/file b");
    tree.Link("a/x", "../b");
    tree.Link("b/y", "../a");
    tree.Link("b/self", ".");
    STOwnedNode owned(tree.Path());
    // The top holds 3 entries, of which "everything" is not listed. In a there are 2,
    // of which x leads to the 3 of b, where self and y end; in b there are 3, of
    // which y leads to the 2 of a, where x ends.
    QCOMPARE(CNodeTree::ListAll(&owned.m_node), 3 + (2 + 3) + (3 + 2));
    const CDirNode& through = *ChildNamed(*ChildNamed(owned.m_node, "a"), "x");
    QCOMPARE(ChildNames(through), QStringList({"self", "y", "file b"}));
    const CDirNode& back = *ChildNamed(through, "y");
    QVERIFY(back.m_bDir);
    QVERIFY(back.m_listChild.isEmpty());
    QCOMPARE(back.m_nListError, ELOOP);
    QCOMPARE(ChildNamed(owned.m_node, "everything")->m_nListError, ELOOP);
}

void tst_CDirNode::hostileNameIsShownAndRead()
{
    QFETCH(QByteArray, name);
    CTempTree tree;
    tree.WriteBytesName(name, "content");
    STOwnedNode owned(tree.Path());
    owned.m_node.LoadChild();
    QCOMPARE(owned.m_node.m_listChild.size(), 1);
    const CDirNode& node = *owned.m_node.Child(0);
    QCOMPARE(QFile::encodeName(node.m_strName), name);
    QFile file(node.m_fileInfo.absoluteFilePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("content"));
}

void tst_CDirNode::memory()
{
    if (HeapBytes() < 0) {
        QSKIP("the memory in use cannot be asked for here");
    }
    CTempTree tree;
    const int nFiles = 3000;
    qint64 nNameBytes = 0;
    for (int i = 0; i < nFiles; ++i) {
        const QString strName = QStringLiteral("document %1.txt").arg(i, 4, 10, QLatin1Char('0'));
        tree.Write("folder/" + strName);
        nNameBytes += 2 * strName.size();
    }
    STOwnedNode owned(tree.Path("folder"));
    const qint64 nBefore = HeapBytes();
    owned.m_node.LoadChild();
    for (CDirNode* pChild : qAsConst(owned.m_node.m_listChild)) {
        QCOMPARE(pChild->m_fileInfo.size(), qint64(0));
    }
    const qint64 nEach = (HeapBytes() - nBefore - nNameBytes) / nFiles;
    QCOMPARE(owned.m_node.m_listChild.size(), nFiles);
    QVERIFY2(nEach <= 700, qPrintable(QString::number(nEach)));
}

QTEST_MAIN(tst_CDirNode)
#include "tst_CDirNode.moc"
