#include "files/CFileNameCodec.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "tree/CDirListing.h"

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
    void init();
    void cleanup();

    void defaultNode();
    void nodeOfEntry_data();
    void nodeOfEntry();
    void childrenByRow_data();
    void childrenByRow();
    void removeAt_data();
    void removeAt();
    void removeAllEmpties();
    void destructorLeavesChildren();
    void loadedChild();
    void stateOfNewChildren_data();
    void stateOfNewChildren();
    void errorIsForgottenOnSuccess();
    void unlistedFoldersAreCounted();
    void leftOutAreNoted_data();
    void leftOutAreNoted();
    void sizeOfANode();
    void listedPathsAreExact();
    void leadsBack_data();
    void leadsBack();
    void topLevelLinkIsListed();
    void linksThatLeadBackEnd();
    void hostileNameIsShownAndRead_data();
    void hostileNameIsShownAndRead();
    void memory();
    void memoryBelowALongPath();

private:
    /** The node of an entry of the test's folder, without parent; freed at the end with all below it. */
    CDirNode& Top(const QString& strEntry = QString());
    /** The same, listed. */
    CDirNode& Listed(const QString& strEntry = QString());

    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CDirNode> m_pTop;
};

void tst_CDirNode::init() { m_pTree = std::make_unique<CTempTree>(); }

void tst_CDirNode::cleanup()
{
    if (m_pTop) {
        m_pTop->RemoveAllBelow();
    }
    m_pTop.reset();
    m_pTree.reset();
}

CDirNode& tst_CDirNode::Top(const QString& strEntry)
{
    m_pTop = std::make_unique<CDirNode>(QFileInfo(m_pTree->Path(strEntry)), nullptr);
    return *m_pTop;
}

CDirNode& tst_CDirNode::Listed(const QString& strEntry)
{
    CDirNode& node = Top(strEntry);
    node.LoadChild();
    return node;
}

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
    QTest::addColumn<QString>("strEntry");
    QTest::addColumn<bool>("bFolder");
    QTest::newRow("file") << "file.txt" << false;
    QTest::newRow("folder") << "folder" << true;
    QTest::newRow("link to a folder") << "to folder" << true;
    QTest::newRow("link to a file") << "to file" << false;
    QTest::newRow("broken link") << "broken" << false;
    QTest::newRow("nothing") << "gone" << false;
}

void tst_CDirNode::nodeOfEntry()
{
    m_pTree->Fill({"file.txt", "folder/"});
    m_pTree->Link("to folder", "folder");
    m_pTree->Link("to file", "file.txt");
    m_pTree->Link("broken", "nowhere");

    QFETCH(QString, strEntry);
    CDirNode parent;
    const CDirNode node(QFileInfo(m_pTree->Path(strEntry)), &parent);
    QCOMPARE(node.m_fileInfo.absoluteFilePath(), m_pTree->Path(strEntry));
    QCOMPARE(node.m_strName, strEntry);
    QTEST(node.m_bDir, "bFolder");
    QCOMPARE(node.m_chkState, 0);
    QCOMPARE(node.m_pParent, &parent);
    QVERIFY(parent.m_listChild.isEmpty());
    QVERIFY(!node.m_icon.isNull());
}

void tst_CDirNode::childrenByRow_data()
{
    QTest::addColumn<int>("nRow");
    QTest::addColumn<bool>("bThere");
    QTest::newRow("least integer") << std::numeric_limits<int>::min() << false;
    QTest::newRow("-1") << -1 << false;
    QTest::newRow("first") << 0 << true;
    QTest::newRow("last") << 2 << true;
    QTest::newRow("count") << 3 << false;
    QTest::newRow("greatest integer") << std::numeric_limits<int>::max() << false;
}

void tst_CDirNode::childrenByRow()
{
    QFETCH(int, nRow);
    QFETCH(bool, bThere);
    CDirNode& parent = Top();
    QList<CDirNode*> listChild;
    for (int i = 0; i < 3; ++i) {
        listChild.append(new CDirNode);
        parent.AppendChild(listChild.last());
        QCOMPARE(listChild.last()->m_pParent, &parent);
    }
    QCOMPARE(parent.m_listChild, listChild);
    CDirNode stranger;
    QCOMPARE(parent.Child(nRow), bThere ? listChild.at(nRow) : nullptr);
    QCOMPARE(parent.ChildIndex(bThere ? listChild.at(nRow) : &stranger), bThere ? nRow : -1);
    QCOMPARE(parent.ChildIndex(nullptr), -1);
}

void tst_CDirNode::removeAt_data()
{
    QTest::addColumn<int>("nRow");
    QTest::addColumn<QStringList>("listLeft");
    QTest::newRow("-1") << -1 << QStringList({"a", "b", "c"});
    QTest::newRow("first") << 0 << QStringList({"b", "c"});
    QTest::newRow("middle") << 1 << QStringList({"a", "c"});
    QTest::newRow("last") << 2 << QStringList({"a", "b"});
    QTest::newRow("count") << 3 << QStringList({"a", "b", "c"});
}

void tst_CDirNode::removeAt()
{
    m_pTree->Fill({"a", "b", "c"});
    CDirNode& node = Listed();
    QFETCH(int, nRow);
    node.RemoveAt(nRow);
    QTEST(ChildNames(node), "listLeft");
}

void tst_CDirNode::removeAllEmpties()
{
    m_pTree->Fill({"a/b/c", "d"});
    CDirNode& node = Top();
    node.RemoveAll();
    CNodeTree::ListAll(&node);
    // A memory checker tells whether what lies deeper is freed.
    node.RemoveAllBelow();
    QVERIFY(node.m_listChild.isEmpty());
    node.LoadChild();
    node.RemoveAll();
    QVERIFY(node.m_listChild.isEmpty());
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

void tst_CDirNode::loadedChild()
{
    m_pTree->Write("b.txt", "12345");
    m_pTree->MkDir("A");
    CDirNode& node = Listed();
    QCOMPARE(ChildNames(node), QStringList({"A", "b.txt"}));
    const CDirNode& folder = *node.m_listChild.at(0);
    const CDirNode& file = *node.m_listChild.at(1);
    QCOMPARE(folder.m_pParent, &node);
    QVERIFY(folder.m_bDir);
    QVERIFY(folder.m_listChild.isEmpty());
    QVERIFY(!file.m_bDir);
    QCOMPARE(file.m_fileInfo.absoluteFilePath(), m_pTree->Path("b.txt"));
    QCOMPARE(file.m_fileInfo.size(), qint64(5));
    QVERIFY(folder.m_icon.cacheKey() != file.m_icon.cacheKey());
    // Whoever lists once more gets everything once more.
    node.LoadChild();
    QCOMPARE(ChildNames(node), QStringList({"A", "b.txt", "A", "b.txt"}));
}

void tst_CDirNode::stateOfNewChildren_data()
{
    QTest::addColumn<int>("nParent");
    QTest::addColumn<int>("nChild");
    QTest::newRow("unchecked") << 0 << 0;
    QTest::newRow("partially checked") << 1 << 0;
    QTest::newRow("checked") << 2 << 2;
}

void tst_CDirNode::stateOfNewChildren()
{
    m_pTree->Fill({"file", "folder/"});
    CDirNode& node = Top();
    QFETCH(int, nParent);
    node.m_chkState = nParent;
    node.LoadChild();
    QCOMPARE(node.m_listChild.size(), 2);
    QTEST(node.Child(0)->m_chkState, "nChild");
    QTEST(node.Child(1)->m_chkState, "nChild");
    QCOMPARE(node.m_chkState, nParent);
}

void tst_CDirNode::errorIsForgottenOnSuccess()
{
    CDirNode& node = Top("later");
    node.m_bDir = true;
    node.m_chkState = Qt::Checked;
    node.LoadChild();
    QVERIFY(node.m_listChild.isEmpty());
    QCOMPARE(node.m_nListError, ENOENT);
    m_pTree->Write("later/file");
    node.LoadChild();
    QCOMPARE(ChildNames(node), QStringList("file"));
    QCOMPARE(node.m_nListError, 0);
}

void tst_CDirNode::unlistedFoldersAreCounted()
{
    m_pTree->Fill({"a/inner/deep/file", "b/file", "empty/", "file"});
    CDirNode& top = Top();
    QCOMPARE(top.CountUnlisted(), 1);
    top.LoadChild();
    QCOMPARE(top.CountUnlisted(), 3);
    CDirNode& folder = *ChildNamed(top, "a");
    folder.LoadChild();
    QCOMPARE(folder.CountUnlisted(), 1);
    // An empty folder is none that was never listed.
    ChildNamed(top, "empty")->LoadChild();
    QCOMPARE(top.CountUnlisted(), 2);
    CNodeTree::ListAll(&top);
    QCOMPARE(top.CountUnlisted(), 0);
    top.Child(0)->RemoveAllBelow();
    QCOMPARE(top.CountUnlisted(), 1);
    QCOMPARE(folder.CountUnlisted(), 1);
    top.RemoveAt(0);
    QCOMPARE(top.CountUnlisted(), 0);
    top.RemoveAllBelow();
    QCOMPARE(top.CountUnlisted(), 1);
}

void tst_CDirNode::leftOutAreNoted_data()
{
    QTest::addColumn<int>("nInListing");
    QTest::addColumn<int>("nNoted");
    for (const int nCount : {0, 1, 65534, 65535}) {
        QTest::addRow("%d", nCount) << nCount << nCount;
    }
    QTest::newRow("one more than fits") << 65536 << 65535;
    QTest::newRow("a million") << 1000000 << 65535;
}

void tst_CDirNode::leftOutAreNoted()
{
    QFETCH(int, nInListing);
    CDirNode node;
    STDirListing stListing;
    stListing.nLeftOut = nInListing;
    node.NoteListing(stListing);
    QTEST(int(node.m_nLeftOut), "nNoted");
}

// There may be a million of them.
void tst_CDirNode::sizeOfANode() { QVERIFY(sizeof(CDirNode) <= 7 * sizeof(void*)); }

void tst_CDirNode::listedPathsAreExact()
{
    m_pTree->Write("inner/file");
    const CDirNode& node = Listed("/inner/");
    QCOMPARE(ChildNames(node), QStringList("file"));
    QCOMPARE(node.m_listChild.first()->m_fileInfo.filePath(), m_pTree->Path("inner/file"));
}

void tst_CDirNode::leadsBack_data()
{
    QTest::addColumn<QString>("strLink");
    QTest::addColumn<QString>("strTarget");
    QTest::addColumn<bool>("bBack");
    const auto fnRow = [](const char* pszName, const QString& strTarget, bool bBack) {
        QTest::newRow(pszName) << "top/a/link" << strTarget << bBack;
    };
    fnRow("its own folder", ".", true);
    fnRow("the folder above", "..", true);
    fnRow("above the top", "../..", true);
    fnRow("the whole system", "/", true);
    fnRow("its folder through another link", "../to a", true);
    fnRow("a folder beside it", "../b", false);
    fnRow("a folder below it", "inner", false);
    fnRow("a folder outside the tree", "../../outside", false);
    fnRow("nothing", "nowhere", false);
    QTest::newRow("a folder whose name begins alike") << "top/ab/link" << QString("../a") << false;
}

void tst_CDirNode::leadsBack()
{
    QFETCH(QString, strLink);
    QFETCH(QString, strTarget);
    QFETCH(bool, bBack);
    m_pTree->Fill({"top/a/inner/file", "top/ab/file", "top/b/file", "outside/file"});
    m_pTree->Link("top/to a", "a");
    m_pTree->Link(strLink, strTarget);

    CDirNode folder(QFileInfo(QFileInfo(m_pTree->Path(strLink)).path()), &Top("top"));
    const CDirNode node(QFileInfo(m_pTree->Path(strLink)), &folder);
    QCOMPARE(node.LeadsBack(), bBack);
    const STDirListing stListing = node.List({});
    QCOMPARE(stListing.nError == ELOOP, bBack);
    QCOMPARE(stListing.listEntry.isEmpty(), bBack || strTarget == "nowhere");
}

void tst_CDirNode::topLevelLinkIsListed()
{
    // A start-up volume is a link to "/", and so to the folder that it lies in.
    m_pTree->Write("volumes/other/file");
    m_pTree->Link("volumes/start-up", "..");
    CNodeTree nodes;
    CDirNode* pVolume = nodes.Add(m_pTree->Path("volumes/start-up"));
    QVERIFY(!pVolume->LeadsBack());
    pVolume->LoadChild();
    QCOMPARE(ChildNames(*pVolume), QStringList("volumes"));
    pVolume->Child(0)->LoadChild();
    QVERIFY(ChildNamed(*pVolume->Child(0), "start-up")->LeadsBack());
}

void tst_CDirNode::linksThatLeadBackEnd()
{
    m_pTree->Fill({"a/file a", "b/file b"});
    m_pTree->Link("everything", "/");
    m_pTree->Link("a/x", "../b");
    m_pTree->Link("b/y", "../a");
    m_pTree->Link("b/self", ".");
    const CDirNode& top = Top();
    // The top holds 3 entries, of which "everything" is not listed. In a there are 2,
    // of which x leads to the 3 of b, where self and y end; in b there are 3, of
    // which y leads to the 2 of a, where x ends.
    QCOMPARE(CNodeTree::ListAll(m_pTop.get()), 3 + (2 + 3) + (3 + 2));
    const CDirNode& through = *ChildNamed(*ChildNamed(top, "a"), "x");
    QCOMPARE(ChildNames(through), QStringList({"self", "y", "file b"}));
    const CDirNode& back = *ChildNamed(through, "y");
    QVERIFY(back.m_bDir);
    QVERIFY(back.m_listChild.isEmpty());
    QCOMPARE(back.m_nListError, ELOOP);
    QCOMPARE(ChildNamed(top, "everything")->m_nListError, ELOOP);
}

void tst_CDirNode::hostileNameIsShownAndRead_data()
{
    QTest::addColumn<QByteArray>("baName");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
    QTest::newRow("255 bytes of three-byte characters") << QByteArray("\xe6\xbc\xa2").repeated(85);
    QTest::newRow("line break") << QByteArray("two\nlines");
    QTest::newRow("html") << QByteArray("<b>bold<img src=x>");
    QTest::newRow("percent") << QByteArray("%1 %2 %s %n");
    QTest::newRow("leading dash") << QByteArray("-rf");
    QTest::newRow("trailing blank") << QByteArray("blank ");
    QTest::newRow("leading blank") << QByteArray(" blank");
    QTest::newRow("only a blank") << QByteArray(" ");
    QTest::newRow("three dots") << QByteArray("...");
    QTest::newRow("backslash") << QByteArray("back\\slash");
    QTest::newRow("quotes") << QByteArray("\"'`$(x)");
    QTest::newRow("wildcards") << QByteArray("*[a]?");
    QTest::newRow("colon") << QByteArray(":resource:name");
    QTest::newRow("control characters") << QByteArray("\x01\x1b[31m\x7f");
    QTest::newRow("latin 1") << QByteArray("caf\xe9.txt");
    QTest::newRow("cut-off character") << QByteArray("end\xe6\xbc");
    QTest::newRow("overlong slash") << QByteArray("a\xc0\xaf"
                                                  "b");
    QTest::newRow("surrogate as utf-8") << QByteArray("\xed\xb2\x80");
    QTest::newRow("no utf-8 at all") << QByteArray("\x80\xff\xfe\xa0");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfname");
    QTest::newRow("arabic") << QByteArray("\xd9\x85\xd9\x84\xd9\x81");
    QTest::newRow("beyond 16 bits") << QByteArray("\xf0\x9f\x93\x81");
    QTest::newRow("decomposed") << QByteArray("u\xcc\x88"
                                              "ber");
}

void tst_CDirNode::hostileNameIsShownAndRead()
{
    QFETCH(QByteArray, baName);
    m_pTree->WriteBytesName(baName, "content");
    const CDirNode& node = Listed();
    QCOMPARE(node.m_listChild.size(), 1);
    const CDirNode& child = *node.m_listChild.first();
    QCOMPARE(QFile::encodeName(child.m_strName), baName);
    QCOMPARE(child.m_fileInfo.fileName(), child.m_strName);
    QCOMPARE(child.m_fileInfo.size(), qint64(7));
    QFile file(child.m_fileInfo.absoluteFilePath());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("content"));
}

void tst_CDirNode::memory()
{
    if (HeapBytes() < 0) {
        QSKIP("the memory in use cannot be asked for here");
    }
    const int nFiles = 3000;
    const int nNameBytes = 2 * QString("document 1000.txt").size();
    m_pTree->FillNumbered("folder/document %1.txt", 1000, 1000 + nFiles - 1);
    CDirNode& node = Top("folder");
    const qint64 nBefore = HeapBytes();
    node.LoadChild();
    for (CDirNode* pChild : qAsConst(node.m_listChild)) {
        QCOMPARE(pChild->m_fileInfo.size(), qint64(0));
    }
    const qint64 nEach = (HeapBytes() - nBefore) / nFiles - nNameBytes;
    QCOMPARE(node.m_listChild.size(), nFiles);
    QVERIFY2(nEach <= 700, qPrintable(QString::number(nEach)));
}

// The path of the folder is there once, however many entries it has.
void tst_CDirNode::memoryBelowALongPath()
{
    if (HeapBytes() < 0) {
        QSKIP("the memory in use cannot be asked for here");
    }
    const int nFiles = 20000;
    const int nNameBytes = 2 * QString("document 10000.txt").size();
    const QString strFolder = QString("/a folder with a name of forty characters").repeated(10).mid(1);
    m_pTree->FillNumbered(strFolder + "/document %1.txt", 10000, 10000 + nFiles - 1);
    CDirNode& node = Top(strFolder);
    const qint64 nBefore = HeapBytes();
    node.LoadChild();
    const qint64 nEach = (HeapBytes() - nBefore) / nFiles - nNameBytes;
    QCOMPARE(node.m_listChild.size(), nFiles);
    QVERIFY2(nEach <= 200, qPrintable(QString::number(nEach)));
}

QTEST_MAIN(tst_CDirNode)
#include "tst_CDirNode.moc"
