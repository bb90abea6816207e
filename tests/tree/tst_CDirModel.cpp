#include "files/CFileNameCodec.h"
#include "support/CLogCapture.h"
#include "support/CNodeTree.h"
#include "support/CTempTree.h"
#include "tree/CDirModel.h"
#include "tree/TreeRows.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QThread>
#include <QTreeView>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <functional>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

/** A model over one volume, made of the given entries; those that end in "/" are folders. */
class CModelOfTree
{
public:
    explicit CModelOfTree(const QStringList& listEntry)
    {
        m_tree.Fill(listEntry);
        m_model.Parse(m_tree.Path());
        m_model.LoadGrandChild(QModelIndex());
    }

    /** The index of an entry by its path below the volume; "." is the volume itself. */
    QModelIndex At(const QString& strPath) const
    {
        const QModelIndex index = RowBelow(m_model.index(0, 0), strPath);
        if (!index.isValid()) {
            qFatal("no entry %s", qPrintable(strPath));
        }
        return index;
    }

    CDirNode* Node(const QString& strPath) const { return m_model.nodeFromIndex(At(strPath)); }
    QStringList Names(const QString& strPath) const { return RowNames(m_model, At(strPath)); }

    void Tick(const QString& strPath, int nState)
    {
        m_model.setData(At(strPath), nState, Qt::CheckStateRole);
    }

    /** Opens the folders one after the other. */
    void Expand(const QStringList& listPath)
    {
        for (const QString& strPath : listPath) {
            m_model.SlotExpanded(At(strPath));
        }
    }

    /** Path and state of every node, sorted; "/" is the invisible root. */
    QStringList AllStates() const
    {
        const QDir volume(m_tree.Path());
        QStringList listState{"/ " + QString::number(m_model.GetRootNode()->m_chkState)};
        CNodeTree::Walk(m_model.GetRootNode(), [&](const CDirNode* pNode) {
            const QString strPath = volume.relativeFilePath(pNode->m_fileInfo.absoluteFilePath());
            listState += strPath + ' ' + QString::number(pNode->m_chkState);
        });
        listState.sort();
        return listState;
    }

    CTempTree m_tree;
    CDirModel m_model;
};

/** Gives the tests what only a model may make: an index in a second column. */
class CModelWithColumns : public CDirModel
{
public:
    QModelIndex InColumn(const QModelIndex& index, int nColumn) const
    {
        return createIndex(index.row(), nColumn, index.internalPointer());
    }
};

class tst_CDirModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void freshModel();
    void parseShowsThePathAsGiven_data();
    void parseShowsThePathAsGiven();
    void parseAnnouncesTwoRows();
    void indexOutOfRange_data();
    void indexOutOfRange();
    void nodesAndParents();
    void columns();
    void dataByRole_data();
    void dataByRole();
    void setDataIsAlwaysFalse_data();
    void setDataIsAlwaysFalse();
    void setDataTellsOfEveryChange();
    void stateOfChildren_data();
    void stateOfChildren();
    void namesThatAreLeftOut_data();
    void namesThatAreLeftOut();
    void unlistedFoldersOfTickedVolumes();
    void volumesThatAreFullyTicked();
    void sameEntriesAsTheNodes();
    void loadAnnouncesOneRowTooMany();
    void loadOfAVanishedFolder();
    void loadOfLinksThatLeadBack();
    void loadOfTheBareRoot();
    void clearGrandChild();
    void removeAllChild();
    void destructorResets();
    void scenario_data();
    void scenario();
    void randomTrees();
    void withARealView();
#ifndef QT_NO_DEBUG
    void lentNodesAreOutOfBounds_data();
    void lentNodesAreOutOfBounds();
#endif
};

void tst_CDirModel::initTestCase()
{
    CFileNameCodec::Install();
    qRegisterMetaType<QList<QPersistentModelIndex>>();
    qRegisterMetaType<QAbstractItemModel::LayoutChangeHint>();
}

void tst_CDirModel::freshModel()
{
    CDirModel model;
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(model.GetRootNode()->m_bDir);
    QVERIFY(!model.GetRootNode()->m_pParent);
    QVERIFY(!model.HasCheckedEntry());
    // The program's is one for ever.
    CDirModel* pModel = CDirModel::GetInstence();
    QVERIFY(pModel && pModel != &model);
    QCOMPARE(CDirModel::GetInstence(), pModel);
    QVERIFY(!static_cast<QObject*>(pModel)->parent());
}

void tst_CDirModel::parseShowsThePathAsGiven_data()
{
    QTest::addColumn<QString>("strPath");
    QTest::newRow("mount point") << "/Volumes/Macintosh HD";
    QTest::newRow("slash at the end") << "/tmp/";
    QTest::newRow("the system") << "/";
    QTest::newRow("blank at the end") << "/tmp/x ";
    QTest::newRow("nothing there") << "/no/such/volume";
}

void tst_CDirModel::parseShowsThePathAsGiven()
{
    QFETCH(QString, strPath);
    CDirModel model;
    model.Parse(strPath);
    QCOMPARE(RowNames(model, QModelIndex()), QStringList(strPath));
    const CDirNode& node = *model.GetRootNode()->Child(0);
    QCOMPARE(node.m_fileInfo.filePath(), strPath);
    QCOMPARE(node.m_pParent, model.GetRootNode());
    QCOMPARE(node.m_chkState, 0);
}

void tst_CDirModel::parseAnnouncesTwoRows()
{
    CDirModel model;
    QSignalSpy spy(&model, &CDirModel::rowsInserted);
    model.Parse("/one");
    model.Parse("/two");
    QCOMPARE(spy.count(), 2);
    for (const QList<QVariant>& listArgument : qAsConst(spy)) {
        QVERIFY(!listArgument.at(0).toModelIndex().isValid());
        QCOMPARE(listArgument.mid(1), QVariantList({0, 1}));
    }
    QCOMPARE(RowNames(model, QModelIndex()), QStringList({"/one", "/two"}));
}

void tst_CDirModel::indexOutOfRange_data()
{
    QTest::addColumn<int>("nRow");
    QTest::addColumn<int>("nColumn");
    QTest::addColumn<bool>("bValid");
    QTest::newRow("first") << 0 << 0 << true;
    QTest::newRow("last") << 1 << 0 << true;
    QTest::newRow("row -1") << -1 << 0 << false;
    QTest::newRow("row count") << 2 << 0 << false;
    QTest::newRow("column -1") << 0 << -1 << false;
    QTest::newRow("column 1") << 0 << 1 << false;
}

void tst_CDirModel::indexOutOfRange()
{
    CModelOfTree tree({"a", "b"});
    QFETCH(int, nRow);
    QFETCH(int, nColumn);
    const QModelIndex index = tree.m_model.index(nRow, nColumn, tree.At("."));
    QTEST(index.isValid(), "bValid");
    if (index.isValid()) {
        QCOMPARE(index.internalPointer(), static_cast<void*>(tree.Node(".")->Child(nRow)));
        QCOMPARE(index.row(), nRow);
        QCOMPARE(index.column(), nColumn);
    }
}

void tst_CDirModel::nodesAndParents()
{
    CModelOfTree tree({"a", "f/inner"});
    tree.Expand({"."});
    QCOMPARE(tree.m_model.nodeFromIndex(QModelIndex()), tree.m_model.GetRootNode());
    QCOMPARE(tree.m_model.nodeFromIndex(tree.At("a")), tree.Node(".")->Child(1));
    QVERIFY(!tree.m_model.parent(QModelIndex()).isValid());
    QVERIFY(!tree.m_model.parent(tree.At(".")).isValid());
    QCOMPARE(tree.m_model.parent(tree.At("a")), tree.At("."));
    QCOMPARE(tree.m_model.parent(tree.At("f/inner")), tree.At("f"));
    QCOMPARE(tree.m_model.parent(tree.At("f/inner")).row(), 0);
}

void tst_CDirModel::columns()
{
    CTempTree tree;
    tree.Write("a");
    CModelWithColumns model;
    model.Parse(tree.Path());
    model.LoadGrandChild(QModelIndex());
    const QModelIndex volume = model.index(0, 0);
    const QModelIndex second = model.InColumn(volume, 1);
    QCOMPARE(model.columnCount(), 1);
    QCOMPARE(model.columnCount(volume), 1);
    QCOMPARE(model.columnCount(second), 1);
    QCOMPARE(model.rowCount(volume), 1);
    QCOMPARE(model.rowCount(second), 0);
    QVERIFY(!model.data(second, Qt::DisplayRole).isValid());
}

void tst_CDirModel::dataByRole_data()
{
    QTest::addColumn<int>("nRole");
    QTest::addColumn<int>("nType");
    QTest::newRow("display") << int(Qt::DisplayRole) << int(QMetaType::QString);
    QTest::newRow("decoration") << int(Qt::DecorationRole) << int(QMetaType::QIcon);
    QTest::newRow("check state") << int(Qt::CheckStateRole) << int(QMetaType::Int);
    QTest::newRow("edit") << int(Qt::EditRole) << int(QMetaType::UnknownType);
    QTest::newRow("tool tip") << int(Qt::ToolTipRole) << int(QMetaType::UnknownType);
    QTest::newRow("size") << int(Qt::SizeHintRole) << int(QMetaType::UnknownType);
    QTest::newRow("user") << int(Qt::UserRole) << int(QMetaType::UnknownType);
}

void tst_CDirModel::dataByRole()
{
    CModelOfTree tree({"name"});
    QFETCH(int, nRole);
    QTEST(tree.At("name").data(nRole).userType(), "nType");
    QVERIFY(!tree.m_model.data(QModelIndex(), nRole).isValid());
    QCOMPARE(tree.At("name").data(Qt::DisplayRole).toString(), QString("name"));
    tree.Tick("name", Qt::Checked);
    QCOMPARE(tree.At("name").data(Qt::CheckStateRole).toInt(), 2);
}

void tst_CDirModel::setDataIsAlwaysFalse_data()
{
    QTest::addColumn<int>("nRole");
    QTest::addColumn<int>("nState");
    QTest::newRow("check state, which changes the tick") << int(Qt::CheckStateRole) << 2;
    QTest::newRow("name, which changes nothing") << int(Qt::EditRole) << 0;
    QTest::newRow("display, which changes nothing") << int(Qt::DisplayRole) << 0;
}

void tst_CDirModel::setDataIsAlwaysFalse()
{
    CModelOfTree tree({"name"});
    QFETCH(int, nRole);
    QSignalSpy spy(&tree.m_model, &CDirModel::dataChanged);
    QCOMPARE(tree.m_model.setData(tree.At("name"), 2, nRole), false);
    QTEST(tree.Node("name")->m_chkState, "nState");
    QCOMPARE(spy.isEmpty(), nRole != Qt::CheckStateRole);
    QCOMPARE(tree.At("name").data().toString(), QString("name"));
    QCOMPARE(tree.m_model.setData(QModelIndex(), 2, nRole), false);
}

void tst_CDirModel::setDataTellsOfEveryChange()
{
    CModelOfTree tree({"f/a", "f/b"});
    tree.Expand({"."});
    QSignalSpy spy(&tree.m_model, &CDirModel::dataChanged);
    tree.Tick("f", Qt::Checked);
    QList<QModelIndex> listTold;
    for (const QList<QVariant>& listArgument : qAsConst(spy)) {
        QCOMPARE(listArgument.at(0), listArgument.at(1));
        listTold += listArgument.at(0).toModelIndex();
    }
    QCOMPARE(listTold, QList<QModelIndex>({tree.At("f/a"), tree.At("f/b"), tree.At("."), tree.At("f")}));
}

void tst_CDirModel::stateOfChildren_data()
{
    QTest::addColumn<QList<int>>("listChild");
    QTest::addColumn<int>("nState");
    QTest::newRow("none") << QList<int>() << 0;
    QTest::newRow("0") << QList<int>({0}) << 0;
    QTest::newRow("1") << QList<int>({1}) << 1;
    QTest::newRow("2") << QList<int>({2}) << 2;
    QTest::newRow("0 0") << QList<int>({0, 0}) << 0;
    QTest::newRow("0 1") << QList<int>({0, 1}) << 1;
    QTest::newRow("0 2") << QList<int>({0, 2}) << 1;
    QTest::newRow("1 1") << QList<int>({1, 1}) << 1;
    QTest::newRow("1 2") << QList<int>({1, 2}) << 1;
    QTest::newRow("2 2") << QList<int>({2, 2}) << 2;
    QTest::newRow("2 2 1") << QList<int>({2, 2, 1}) << 1;
    QTest::newRow("2 2 0") << QList<int>({2, 2, 0}) << 1;
    QTest::newRow("0 0 1") << QList<int>({0, 0, 1}) << 1;
}

void tst_CDirModel::stateOfChildren()
{
    QFETCH(QList<int>, listChild);
    CDirModel model;
    auto* pFolder = new CDirNode;
    model.GetRootNode()->AppendChild(pFolder);
    for (const int nState : qAsConst(listChild)) {
        auto* pChild = new CDirNode;
        pChild->m_chkState = nState;
        pFolder->AppendChild(pChild);
    }
    // Asking changes nothing.
    pFolder->m_chkState = 7;
    QTEST(int(model.GetParentChkState(model.index(0, 0))), "nState");
    QCOMPARE(pFolder->m_chkState, 7);
    if (!listChild.isEmpty()) {
        model.ChangeParentChkState(model.index(0, 0, model.index(0, 0)));
        QTEST(pFolder->m_chkState, "nState");
        QTEST(model.GetRootNode()->m_chkState, "nState");
    }
}

void tst_CDirModel::namesThatAreLeftOut_data()
{
    QTest::addColumn<QString>("strName");
    QTest::addColumn<bool>("bInNode"); // what CDirNode::LoadChild lists
    QTest::addColumn<bool>("bInModel");
    for (const char* pszName : {"dev", "development", "devices", "home", "homework"}) {
        QTest::newRow(pszName) << QString(pszName) << false << false;
    }
    for (const char* pszName : {"Volumes", "Volumes2"}) {
        QTest::newRow(pszName) << QString(pszName) << true << false;
    }
    for (const char* pszName : {"Dev", "Home", "volumes", "My Volumes", "de", "mydev", ".home"}) {
        QTest::newRow(pszName) << QString(pszName) << true << true;
    }
}

void tst_CDirModel::namesThatAreLeftOut()
{
    QFETCH(QString, strName);
    QFETCH(bool, bInNode);
    QFETCH(bool, bInModel);
    for (const QString& strEntry : {strName, strName + "/"}) {
        // At every depth, and files as well as folders.
        CModelOfTree tree({strEntry, "deep/" + strEntry});
        tree.Expand({"."});
        QCOMPARE(tree.Names(".").contains(strName), bInModel);
        QCOMPARE(tree.Names("deep"), bInModel ? QStringList(strName) : QStringList());
        CDirNode node(QFileInfo(tree.m_tree.Path("deep")), nullptr);
        node.LoadChild();
        QCOMPARE(node.m_listChild.size(), bInNode ? 1 : 0);
        QCOMPARE(node.m_nListError, 0);
        QCOMPARE(int(node.m_nLeftOut), bInNode ? 0 : 1);
        QCOMPARE(int(tree.Node("deep")->m_nLeftOut), bInModel ? 0 : 1);
        QCOMPARE(int(tree.Node(".")->m_nLeftOut), bInModel ? 0 : 1);
        node.RemoveAll();
    }
}

void tst_CDirModel::unlistedFoldersOfTickedVolumes()
{
    CModelOfTree tree({"a/inner/file", "b/file"});
    QVERIFY(!tree.m_model.HasUnlistedFolder());
    tree.Tick(".", 2);
    QVERIFY(tree.m_model.HasUnlistedFolder());
    tree.Expand({"."});
    QVERIFY(tree.m_model.HasUnlistedFolder());
    tree.Expand({"a"});
    QVERIFY(!tree.m_model.HasUnlistedFolder());
    // Of a volume that is ticked in part the folders that were never opened are counted and copied.
    tree.m_model.ClearGrandChild(tree.At("."));
    QVERIFY(tree.m_model.HasUnlistedFolder());
    tree.Tick("b", 0);
    QVERIFY(!tree.m_model.HasUnlistedFolder());
}

void tst_CDirModel::volumesThatAreFullyTicked()
{
    CModelOfTree tree({"a/inner/file", "b/file"});
    QVERIFY(!tree.m_model.HasTickedVolume());
    tree.Tick("a", 2);
    QVERIFY(!tree.m_model.HasTickedVolume());
    tree.Tick("b", 2); // the last of it
    QVERIFY(tree.m_model.HasTickedVolume());
    tree.Tick("a", 0);
    QVERIFY(!tree.m_model.HasTickedVolume());
    tree.Tick(".", 2);
    QVERIFY(tree.m_model.HasTickedVolume());
}

void tst_CDirModel::sameEntriesAsTheNodes()
{
    CModelOfTree tree({"f/Zebra", "f/apple", "f/.hidden", "f/Box/", "f/dev", "f/beta/", "f/caf\u00e9"});
    tree.m_tree.Link("f/link", "Box");
    tree.m_tree.Link("f/broken", "nowhere");
    tree.Expand({"."});
    CDirNode node(QFileInfo(tree.m_tree.Path("f")), nullptr);
    node.LoadChild();
    QStringList listName;
    for (const CDirNode* pChild : qAsConst(node.m_listChild)) {
        listName += pChild->m_strName;
    }
    node.RemoveAll();
    QCOMPARE(listName.size(), 8);
    QCOMPARE(tree.Names("f"), listName);
}

void tst_CDirModel::loadAnnouncesOneRowTooMany()
{
    CTempTree tree;
    tree.Fill({"a", "b", "c", "dev", "homes"});
    CDirModel model;
    model.Parse(tree.Path());
    QSignalSpy spyBefore(&model, &CDirModel::rowsAboutToBeInserted);
    QSignalSpy spy(&model, &CDirModel::rowsInserted);
    model.LoadChild(model.index(0, 0));
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spyBefore.count(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(spy.at(i), QVariantList({model.index(0, 0), i, i + 1}));
    }
}

void tst_CDirModel::loadOfAVanishedFolder()
{
    CModelOfTree tree({"f/"});
    QVERIFY(QDir(tree.m_tree.Path()).rmdir("f"));
    tree.Expand({"f"});
    QCOMPARE(tree.Names("f"), QStringList());
    QCOMPARE(tree.Node("f")->m_nListError, ENOENT);
}

void tst_CDirModel::loadOfLinksThatLeadBack()
{
    CModelOfTree tree({"a/", "b/"});
    tree.m_tree.Link("a/x", "../b");
    tree.m_tree.Link("b/y", "../a");
    tree.m_tree.Link("b/system", "/");
    tree.Expand({".", "a", "a/x", "a/x/y", "a/x/system"});
    QCOMPARE(tree.Names("a/x"), QStringList({"system", "y"}));
    QCOMPARE(tree.Names("a/x/y"), QStringList());
    QCOMPARE(tree.Names("a/x/system"), QStringList());
    QCOMPARE(tree.Node("a/x/y")->m_nListError, ELOOP);
}

void tst_CDirModel::loadOfTheBareRoot()
{
    // Without top-level entries there is no folder to list, above all not the one
    // that the program was started in.
    CDirModel model;
    model.LoadGrandChild(QModelIndex());
    QCOMPARE(model.rowCount(), 0);
}

void tst_CDirModel::clearGrandChild()
{
    CModelOfTree tree({"f/a/x", "f/b", "g/c", "file"});
    tree.Expand({".", "f"});
    const QStringList listBefore = tree.AllStates();
    QSignalSpy spy(&tree.m_model, &CDirModel::layoutChanged);
    tree.m_model.ClearGrandChild(QModelIndex());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(tree.AllStates(), listBefore);
    tree.m_model.ClearGrandChild(tree.At("."));
    QCOMPARE(tree.Names("."), QStringList({"f", "g", "file"}));
    QCOMPARE(tree.Names("f"), QStringList());
    QCOMPARE(tree.Names("g"), QStringList());
    // One more for each of f/a, f and g, which had children, and the one at the end.
    QCOMPARE(spy.count(), 1 + 4);
}

void tst_CDirModel::removeAllChild()
{
    CModelOfTree tree({"f/a/x", "f/b"});
    tree.Expand({".", "f"});
    QSignalSpy spy(&tree.m_model, &CDirModel::rowsRemoved);
    QSignalSpy spyLayout(&tree.m_model, &CDirModel::layoutChanged);
    tree.m_model.RemoveAllChild(tree.At("f/b"));
    tree.m_model.RemoveAllChild(QModelIndex());
    QVERIFY(spy.isEmpty());
    QVERIFY(spyLayout.isEmpty());
    tree.m_model.RemoveAllChild(tree.At("f"));
    QCOMPARE(tree.Names("f"), QStringList());
    // From the bottom up: the one row of f/a, then the two of f.
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).mid(1), QVariantList({0, 0}));
    QCOMPARE(spy.at(1), QVariantList({tree.At("f"), 0, 1}));
    QCOMPARE(spyLayout.count(), 2);
}

void tst_CDirModel::destructorResets()
{
    auto pTree = std::make_unique<CModelOfTree>(QStringList{"f/a/b"});
    pTree->Expand({"."});
    QSignalSpy spyBefore(&pTree->m_model, &CDirModel::modelAboutToBeReset);
    QSignalSpy spy(&pTree->m_model, &CDirModel::modelReset);
    pTree.reset();
    QCOMPARE(spyBefore.count(), 1);
    QCOMPARE(spy.count(), 1);
}

void tst_CDirModel::scenario_data()
{
    QTest::addColumn<QString>("strFile");
    const QDir folder(QFINDTESTDATA("scenarios"));
    const QStringList listFile = folder.entryList({"*.txt"}, QDir::Files, QDir::Name);
    QVERIFY(!listFile.isEmpty());
    for (const QString& strFile : listFile) {
        QTest::newRow(qPrintable(strFile)) << folder.filePath(strFile);
    }
}

/** One action of a scenario, and path and state of each node that it is to leave behind. */
struct STStep
{
    QString strLine;
    QStringList listState;
};

struct STScenario
{
    QStringList listEntry;
    QList<STStep> listStep;
};

/**
 * Reads a scenario: "tree" is followed by indented entries, an action with a path by
 * an indented state and path for each node there then is.
 */
static STScenario ReadScenario(const QString& strFile)
{
    STScenario stScenario;
    QFile file(strFile);
    if (!file.open(QIODevice::ReadOnly)) {
        return stScenario;
    }
    const QStringList listLine = QString::fromUtf8(file.readAll()).split('\n');
    for (const QString& strLine : listLine) {
        const QString strText = strLine.trimmed();
        if (strText.isEmpty() || strText.startsWith('#') || strText == "tree") {
            continue;
        }
        if (!strLine.startsWith(' ')) {
            stScenario.listStep.append({strText, {}});
        } else if (stScenario.listStep.isEmpty()) {
            stScenario.listEntry += strText;
        } else {
            stScenario.listStep.last().listState += strText.mid(2) + ' ' + strText.at(0);
        }
    }
    return stScenario;
}

void tst_CDirModel::scenario()
{
    QFETCH(QString, strFile);
    const STScenario stScenario = ReadScenario(strFile);
    QVERIFY(!stScenario.listStep.isEmpty());
    CModelOfTree tree(stScenario.listEntry);
    const QHash<QString, std::function<void(const QString&)>> hashAction{
        {"tick", [&](const QString& strPath) { tree.Tick(strPath, Qt::Checked); }},
        {"untick", [&](const QString& strPath) { tree.Tick(strPath, Qt::Unchecked); }},
        {"tick-partially", [&](const QString& strPath) { tree.Tick(strPath, Qt::PartiallyChecked); }},
        {"expand", [&](const QString& strPath) { tree.Expand({strPath}); }},
        {"collapse", [&](const QString& strPath) { tree.m_model.SlotCollapsed(tree.At(strPath)); }},
        {"load", [&](const QString& strPath) { tree.m_model.LoadChild(tree.At(strPath)); }},
        {"write", [&](const QString& strPath) { tree.m_tree.Write(strPath); }},
    };
    for (const STStep& stStep : stScenario.listStep) {
        const auto fnAction = hashAction.value(stStep.strLine.section(' ', 0, 0));
        QVERIFY2(fnAction, qPrintable(stStep.strLine));
        fnAction(stStep.strLine.section(' ', 1));
        QStringList listExpected = stStep.listState;
        listExpected.sort();
        QVERIFY2(tree.AllStates() == listExpected,
                 qPrintable(QString("after \"%1\":\n%2\ninstead of:\n%3")
                                .arg(stStep.strLine, tree.AllStates().join('\n'), listExpected.join('\n'))));
        QCOMPARE(tree.m_model.HasCheckedEntry(), !listExpected.contains("/ 0"));
    }
}

/**
 * The rule told in another way: what counts are the nodes without children. A
 * node is checked when all of those at or below it are, unchecked when none is,
 * and else partially checked; ticking a node ticks those at or below it.
 */
class CReference
{
public:
    explicit CReference(CDirNode* pRoot) { Note(pRoot); }

    void Tick(const CDirNode* pNode, bool bTicked)
    {
        for (const CDirNode* pLeaf : qAsConst(m_hashLeaves[pNode])) {
            m_hashTicked[pLeaf] = bTicked;
        }
    }

    int State(const CDirNode* pNode) const
    {
        const QList<const CDirNode*> listLeaf = m_hashLeaves.value(pNode);
        const int nTicked
            = int(std::count_if(listLeaf.begin(), listLeaf.end(),
                                [this](const CDirNode* pLeaf) { return m_hashTicked.value(pLeaf); }));
        return nTicked == 0 ? 0 : nTicked == listLeaf.size() ? 2 : 1;
    }

private:
    QList<const CDirNode*> Note(const CDirNode* pNode)
    {
        QList<const CDirNode*> listLeaf;
        for (const CDirNode* pChild : pNode->m_listChild) {
            listLeaf += Note(pChild);
        }
        if (listLeaf.isEmpty()) {
            listLeaf += pNode;
        }
        m_hashLeaves[pNode] = listLeaf;
        return listLeaf;
    }

    QHash<const CDirNode*, QList<const CDirNode*>> m_hashLeaves;
    QHash<const CDirNode*, bool> m_hashTicked;
};

static void AddRandomChildren(CDirNode* pNode, int nDepth, QRandomGenerator& random)
{
    const int nChildren = nDepth == 0 ? random.bounded(1, 4) : random.bounded(0, 5);
    for (int i = 0; nDepth < 5 && i < nChildren; ++i) {
        auto* pChild = new CDirNode;
        pNode->AppendChild(pChild);
        AddRandomChildren(pChild, nDepth + 1, random);
    }
}

static QModelIndex IndexOf(const CDirModel& model, CDirNode* pNode)
{
    if (!pNode->m_pParent) {
        return QModelIndex();
    }
    return model.index(pNode->m_pParent->ChildIndex(pNode), 0, IndexOf(model, pNode->m_pParent));
}

void tst_CDirModel::randomTrees()
{
    for (int nTree = 0; nTree < 3000; ++nTree) {
        QRandomGenerator random{quint32(nTree)};
        CDirModel model;
        AddRandomChildren(model.GetRootNode(), 0, random);
        QList<CDirNode*> listNode;
        CNodeTree::Walk(model.GetRootNode(), [&listNode](CDirNode* pNode) { listNode += pNode; });
        CReference reference(model.GetRootNode());
        for (int nTick = 0; nTick < 12; ++nTick) {
            CDirNode* pNode = listNode.at(random.bounded(listNode.size()));
            const bool bTicked = random.bounded(2) == 1;
            model.setData(IndexOf(model, pNode), bTicked ? 2 : 0, Qt::CheckStateRole);
            reference.Tick(pNode, bTicked);
            bool bSame = model.GetRootNode()->m_chkState == reference.State(model.GetRootNode());
            for (const CDirNode* pOther : qAsConst(listNode)) {
                bSame = bSame && pOther->m_chkState == reference.State(pOther);
            }
            QVERIFY2(bSame, qPrintable(QStringLiteral("tree %1, tick %2").arg(nTree).arg(nTick)));
        }
    }
}

void tst_CDirModel::withARealView()
{
    CLogCapture capture;
    CTempTree first;
    CTempTree second;
    first.FillNumbered("folder %1/inner/file", 1, 40);
    second.FillNumbered("file %1", 1, 40);
    CDirModel model;
    QTreeView view;
    view.setModel(&model);
    connect(&view, &QTreeView::expanded, &model, &CDirModel::SlotExpanded);
    view.resize(300, 300);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    model.Parse(first.Path());
    model.Parse(second.Path());
    model.LoadGrandChild(QModelIndex());
    const QModelIndex volume = model.index(0, 0);
    view.expand(volume);
    for (int i = 0; i < model.rowCount(volume); ++i) {
        view.expand(model.index(i, 0, volume));
        view.expand(model.index(0, 0, model.index(i, 0, volume)));
    }
    view.setCurrentIndex(model.index(39, 0, volume));
    view.scrollToBottom();
    view.grab();
    // 1 volume with 40 folders of one folder with one file, and the second volume.
    QModelIndex last = volume;
    int nRows = 1;
    while (view.indexBelow(last).isValid()) {
        last = view.indexBelow(last);
        ++nRows;
    }
    QCOMPARE(nRows, 1 + 3 * 40 + 1);
    QCOMPARE(last, model.index(1, 0));
    const QPersistentModelIndex kept(model.index(39, 0, volume));
    const QPersistentModelIndex dropped(model.index(0, 0, kept));
    model.ClearGrandChild(volume);
    view.grab();
    QVERIFY(kept.isValid());
    QVERIFY(!dropped.isValid());
    QCOMPARE(view.currentIndex(), QModelIndex(kept));
    view.collapse(volume);
    view.expand(volume);
    view.expand(kept);
    view.grab();
    QCOMPARE(model.rowCount(kept), 1);
    model.RemoveAllChild(volume);
    view.grab();
    QVERIFY(!kept.isValid());
    QCOMPARE(capture.Lines(), QStringList());
}

#ifndef QT_NO_DEBUG

/** Whether the work ends its process by an assertion. */
static bool IsAsserted(const std::function<void()>& fnWork)
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        // Without the test's own handlers, which would write into its report.
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        std::signal(SIGABRT, SIG_DFL);
        fnWork();
        _exit(EXIT_SUCCESS);
    }
    int nStatus = 0;
    return waitpid(nChild, &nStatus, 0) == nChild && WIFSIGNALED(nStatus) && WTERMSIG(nStatus) == SIGABRT;
}

using Work = std::function<void(CDirModel&, const QModelIndex&)>;
Q_DECLARE_METATYPE(Work)

void tst_CDirModel::lentNodesAreOutOfBounds_data()
{
    QTest::addColumn<Work>("fnWork");
    QTest::addColumn<bool>("bAllowedWhenLent");
    QTest::addColumn<bool>("bAllowedElse");
    const auto fnRow = [](const char* pszName, const Work& fnWork, bool bWhenLent = false,
                          bool bElse = true) { QTest::newRow(pszName) << fnWork << bWhenLent << bElse; };
    fnRow("look at a row", [](CDirModel&, const QModelIndex& index) { index.data(); });
    fnRow("tick",
          [](CDirModel& model, const QModelIndex& index) { model.setData(index, 2, Qt::CheckStateRole); });
    fnRow("list", [](CDirModel& model, const QModelIndex& index) { model.LoadChild(index); });
    fnRow("add a volume", [](CDirModel& model, const QModelIndex&) { model.Parse("/"); });
    fnRow("is anything ticked", [](CDirModel& model, const QModelIndex&) { model.HasCheckedEntry(); });
    fnRow("lend", [](CDirModel& model, const QModelIndex&) { model.SetLent(true); });
    fnRow("end", [](CDirModel& model, const QModelIndex&) { model.~CDirModel(); });
    fnRow(
        "ask for the root", [](CDirModel& model, const QModelIndex&) { model.GetRootNode(); }, true);
    fnRow(
        "look on another thread",
        [](CDirModel& model, const QModelIndex& index) {
            QThread thread;
            model.moveToThread(&thread);
            index.data();
        },
        false, false);
}

void tst_CDirModel::lentNodesAreOutOfBounds()
{
    QFETCH(Work, fnWork);
    CModelOfTree tree({"a"});
    const QModelIndex index = tree.At(".");
    const auto fnTry = [&] { fnWork(tree.m_model, index); };
    QTEST(!IsAsserted(fnTry), "bAllowedElse");
    tree.m_model.SetLent(true);
    QTEST(!IsAsserted(fnTry), "bAllowedWhenLent");
    tree.m_model.SetLent(false);
}

#endif

QTEST_MAIN(tst_CDirModel)
#include "tst_CDirModel.moc"
