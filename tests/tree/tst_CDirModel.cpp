#include "files/CFileNameCodec.h"
#include "support/CLogCapture.h"
#include "support/CTempTree.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <cerrno>

using States = QMap<QString, int>;

/** A model over one volume, made of the given entries; those that end in "/" are folders. */
class CModelOfTree
{
public:
    explicit CModelOfTree(const QStringList& listEntry)
    {
        for (const QString& strEntry : listEntry) {
            strEntry.endsWith('/') ? m_tree.MkDir(strEntry) : m_tree.Write(strEntry);
        }
        m_model.Parse(m_tree.Path());
        m_model.LoadGrandChild(QModelIndex());
    }

    /** The index of an entry by its path below the volume; "." is the volume itself. */
    QModelIndex At(const QString& strPath) const
    {
        QModelIndex index = m_model.index(0, 0);
        if (strPath == ".") {
            return index;
        }
        const QStringList listPart = strPath.split('/', Qt::SkipEmptyParts);
        for (const QString& strPart : listPart) {
            index = ChildNamed(index, strPart);
        }
        return index;
    }

    CDirNode* Node(const QString& strPath) const { return m_model.nodeFromIndex(At(strPath)); }

    bool Tick(const QString& strPath, int nState)
    {
        return m_model.setData(At(strPath), nState, Qt::CheckStateRole);
    }

    void Expand(const QString& strPath) { m_model.SlotExpanded(At(strPath)); }

    /** The state of every node by its path; "/" is the invisible root. */
    States AllStates() const
    {
        States states{{"/", m_model.GetRootNode()->m_chkState}};
        Collect(m_model.index(0, 0), ".", states);
        return states;
    }

    CTempTree m_tree;
    CDirModel m_model;

private:
    QModelIndex ChildNamed(const QModelIndex& parent, const QString& strName) const
    {
        for (int i = 0; i < m_model.rowCount(parent); ++i) {
            const QModelIndex child = m_model.index(i, 0, parent);
            if (child.data().toString() == strName) {
                return child;
            }
        }
        qFatal("no entry %s", qPrintable(strName));
    }

    void Collect(const QModelIndex& index, const QString& strPath, States& states) const
    {
        states.insert(strPath, index.data(Qt::CheckStateRole).toInt());
        for (int i = 0; i < m_model.rowCount(index); ++i) {
            const QModelIndex child = m_model.index(i, 0, index);
            const QString strName = child.data().toString();
            Collect(child, strPath == "." ? strName : strPath + '/' + strName, states);
        }
    }
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

static QStringList Names(const CDirModel& model, const QModelIndex& parent)
{
    QStringList listName;
    for (int i = 0; i < model.rowCount(parent); ++i) {
        listName += model.index(i, 0, parent).data().toString();
    }
    return listName;
}

static QString Text(const States& states)
{
    QString strText;
    for (auto it = states.begin(); it != states.end(); ++it) {
        strText += QStringLiteral("%1 %2\n").arg(it.value()).arg(it.key());
    }
    return strText;
}

class tst_CDirModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void freshModel();
    void oneInstance();
    void parseShowsThePathAsGiven_data();
    void parseShowsThePathAsGiven();
    void parseAnnouncesTwoRows();
    void indexOutOfRange_data();
    void indexOutOfRange();
    void nodeAndIndex();
    void parentOfLevels();
    void columns();
    void dataByRole_data();
    void dataByRole();
    void setDataIsAlwaysFalse_data();
    void setDataIsAlwaysFalse();
    void setDataTellsOfEveryChange();
    void partialIsNotPassedOn();
    void partialChildrenMakeAPartialFolder();
    void emptyFolderIsUncheckedWhenRecomputed();
    void stateOfChildren_data();
    void stateOfChildren();
    void checkedEntry();
    void loadLeavesOutPrefixes_data();
    void loadLeavesOutPrefixes();
    void loadAnnouncesOneRowTooMany();
    void loadListsOnce();
    void loadListsAnEmptyFolderAgain();
    void loadLeavesNewEntriesUnchecked();
    void loadOfAVanishedFolder();
    void loadOfLinksThatLeadBack();
    void loadOfTheBareRoot();
    void sameEntriesAsTheNodes();
    void expandedListsTwoLevels();
    void expandedCheckedFolder();
    void collapsedKeepsAll();
    void clearGrandChild();
    void clearGrandChildOfNothing();
    void removeAllChild();
    void destructorResets();
    void scenario_data();
    void scenario();
    void randomTrees();
    void withARealView();
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
}

void tst_CDirModel::oneInstance()
{
    CDirModel* pModel = CDirModel::GetInstence();
    QVERIFY(pModel);
    QCOMPARE(CDirModel::GetInstence(), pModel);
    QVERIFY(!static_cast<QObject*>(pModel)->parent());
}

void tst_CDirModel::parseShowsThePathAsGiven_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("mount point") << "/Volumes/Macintosh HD";
    QTest::newRow("slash at the end") << "/tmp/";
    QTest::newRow("the system") << "/";
    QTest::newRow("blank at the end") << "/tmp/x ";
    QTest::newRow("nothing there") << "/no/such/volume";
}

void tst_CDirModel::parseShowsThePathAsGiven()
{
    QFETCH(QString, path);
    CDirModel model;
    model.Parse(path);
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.index(0, 0).data().toString(), path);
    QCOMPARE(model.GetRootNode()->Child(0)->m_fileInfo.filePath(), path);
    QCOMPARE(model.GetRootNode()->Child(0)->m_pParent, model.GetRootNode());
    QCOMPARE(model.GetRootNode()->Child(0)->m_chkState, 0);
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
        QCOMPARE(listArgument.at(1).toInt(), 0);
        QCOMPARE(listArgument.at(2).toInt(), 1);
    }
    QCOMPARE(Names(model, QModelIndex()), QStringList({"/one", "/two"}));
}

void tst_CDirModel::indexOutOfRange_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("valid");
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
    QFETCH(int, row);
    QFETCH(int, column);
    const QModelIndex index = tree.m_model.index(row, column, tree.At("."));
    QTEST(index.isValid(), "valid");
    if (index.isValid()) {
        QCOMPARE(index.internalPointer(), static_cast<void*>(tree.Node(".")->Child(row)));
        QCOMPARE(index.row(), row);
        QCOMPARE(index.column(), column);
    }
}

void tst_CDirModel::nodeAndIndex()
{
    CModelOfTree tree({"a", "b"});
    QCOMPARE(tree.m_model.nodeFromIndex(QModelIndex()), tree.m_model.GetRootNode());
    QCOMPARE(tree.m_model.nodeFromIndex(tree.At("b")), tree.Node(".")->Child(1));
}

void tst_CDirModel::parentOfLevels()
{
    CModelOfTree tree({"a", "f/inner"});
    tree.Expand(".");
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
    QCOMPARE(model.columnCount(), 1);
    QCOMPARE(model.columnCount(volume), 1);
    QCOMPARE(model.columnCount(model.InColumn(volume, 1)), 1);
    QCOMPARE(model.rowCount(volume), 1);
    QCOMPARE(model.rowCount(model.InColumn(volume, 1)), 0);
    QVERIFY(!model.data(model.InColumn(volume, 1), Qt::DisplayRole).isValid());
}

void tst_CDirModel::dataByRole_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<int>("type");
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
    QFETCH(int, role);
    QTEST(tree.At("name").data(role).userType(), "type");
    QVERIFY(!tree.m_model.data(QModelIndex(), role).isValid());
    QCOMPARE(tree.At("name").data(Qt::DisplayRole).toString(), QString("name"));
}

void tst_CDirModel::setDataIsAlwaysFalse_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<int>("state");
    QTest::newRow("check state, which changes the tick") << int(Qt::CheckStateRole) << 2;
    QTest::newRow("name, which changes nothing") << int(Qt::EditRole) << 0;
    QTest::newRow("display, which changes nothing") << int(Qt::DisplayRole) << 0;
}

void tst_CDirModel::setDataIsAlwaysFalse()
{
    CModelOfTree tree({"name"});
    QFETCH(int, role);
    QSignalSpy spy(&tree.m_model, &CDirModel::dataChanged);
    QCOMPARE(tree.m_model.setData(tree.At("name"), 2, role), false);
    QTEST(tree.Node("name")->m_chkState, "state");
    QCOMPARE(spy.isEmpty(), role != Qt::CheckStateRole);
    QCOMPARE(tree.At("name").data().toString(), QString("name"));
    QCOMPARE(tree.m_model.setData(QModelIndex(), 2, role), false);
}

void tst_CDirModel::setDataTellsOfEveryChange()
{
    CModelOfTree tree({"f/a", "f/b"});
    tree.Expand(".");
    QSignalSpy spy(&tree.m_model, &CDirModel::dataChanged);
    tree.Tick("f", Qt::Checked);
    QList<QModelIndex> listTold;
    for (const QList<QVariant>& listArgument : qAsConst(spy)) {
        QCOMPARE(listArgument.at(0).toModelIndex(), listArgument.at(1).toModelIndex());
        listTold += listArgument.at(0).toModelIndex();
    }
    QCOMPARE(listTold, QList<QModelIndex>({tree.At("f/a"), tree.At("f/b"), tree.At("."), tree.At("f")}));
}

void tst_CDirModel::partialIsNotPassedOn()
{
    CModelOfTree tree({"f/a", "f/b", "g"});
    tree.Expand(".");
    tree.Tick("f/a", Qt::Checked);
    tree.Tick("f", Qt::PartiallyChecked);
    QCOMPARE(Text(tree.AllStates()), Text({{"/", 1}, {".", 1}, {"f", 1}, {"f/a", 2}, {"f/b", 0}, {"g", 0}}));
    tree.Tick("f", Qt::Checked);
    tree.Tick("f", Qt::PartiallyChecked);
    QCOMPARE(Text(tree.AllStates()), Text({{"/", 1}, {".", 1}, {"f", 1}, {"f/a", 2}, {"f/b", 2}, {"g", 0}}));
}

void tst_CDirModel::partialChildrenMakeAPartialFolder()
{
    CModelOfTree tree({"f/a", "f/b", "g/a", "g/b"});
    tree.Expand(".");
    tree.Tick("f/a", Qt::Checked);
    tree.Tick("g/a", Qt::Checked);
    QCOMPARE(tree.Node("f")->m_chkState, 1);
    QCOMPARE(tree.Node("g")->m_chkState, 1);
    QCOMPARE(tree.Node(".")->m_chkState, 1);
    QCOMPARE(tree.m_model.GetParentChkState(tree.At(".")), Qt::PartiallyChecked);
}

void tst_CDirModel::emptyFolderIsUncheckedWhenRecomputed()
{
    CModelOfTree tree({"f/", "g"});
    tree.Tick("f", Qt::Checked);
    QCOMPARE(tree.Node("f")->m_chkState, 2);
    QCOMPARE(tree.m_model.GetParentChkState(tree.At("f")), Qt::Unchecked);
    // Asking changes nothing.
    QCOMPARE(tree.Node("f")->m_chkState, 2);
}

void tst_CDirModel::stateOfChildren_data()
{
    QTest::addColumn<QList<int>>("children");
    QTest::addColumn<int>("state");
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
    QFETCH(QList<int>, children);
    CDirModel model;
    for (int nState : qAsConst(children)) {
        auto* pChild = new CDirNode;
        pChild->m_chkState = nState;
        model.GetRootNode()->AppendChild(pChild);
    }
    QTEST(int(model.GetParentChkState(QModelIndex())), "state");
    model.GetRootNode()->m_chkState = 7;
    model.ChangeParentChkState(model.index(0, 0));
    QTEST(model.GetRootNode()->m_chkState, "state");
}

void tst_CDirModel::checkedEntry()
{
    CModelOfTree tree({"f/a", "f/b"});
    tree.Expand(".");
    QVERIFY(!tree.m_model.HasCheckedEntry());
    tree.Tick("f/a", Qt::Checked);
    QVERIFY(tree.m_model.HasCheckedEntry());
    tree.Tick("f/b", Qt::Checked);
    QVERIFY(tree.m_model.HasCheckedEntry());
    tree.Tick(".", Qt::Unchecked);
    QVERIFY(!tree.m_model.HasCheckedEntry());
}

void tst_CDirModel::loadLeavesOutPrefixes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("kept");
    QTest::newRow("dev") << "dev" << false;
    QTest::newRow("devices") << "devices" << false;
    QTest::newRow("home") << "home" << false;
    QTest::newRow("homework") << "homework" << false;
    QTest::newRow("Volumes") << "Volumes" << false;
    QTest::newRow("Volumes2") << "Volumes2" << false;
    QTest::newRow("Dev") << "Dev" << true;
    QTest::newRow("Home") << "Home" << true;
    QTest::newRow("volumes") << "volumes" << true;
    QTest::newRow("My Volumes") << "My Volumes" << true;
}

void tst_CDirModel::loadLeavesOutPrefixes()
{
    QFETCH(QString, name);
    QFETCH(bool, kept);
    CModelOfTree tree({"deep/" + name, name + "2/"});
    tree.Expand(".");
    QCOMPARE(Names(tree.m_model, tree.At("deep")), kept ? QStringList(name) : QStringList());
    QCOMPARE(Names(tree.m_model, tree.At(".")).contains(name + "2"), kept);
}

void tst_CDirModel::loadAnnouncesOneRowTooMany()
{
    CTempTree tree;
    for (const char* pszName : {"a", "b", "c", "dev", "homes"}) {
        tree.Write(pszName);
    }
    CDirModel model;
    model.Parse(tree.Path());
    QSignalSpy spyBefore(&model, &CDirModel::rowsAboutToBeInserted);
    QSignalSpy spy(&model, &CDirModel::rowsInserted);
    model.LoadChild(model.index(0, 0));
    QCOMPARE(spy.count(), 3);
    QCOMPARE(spyBefore.count(), 3);
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(spy.at(i).at(0).toModelIndex(), model.index(0, 0));
        QCOMPARE(spy.at(i).at(1).toInt(), i);
        QCOMPARE(spy.at(i).at(2).toInt(), i + 1);
    }
}

void tst_CDirModel::loadListsOnce()
{
    CModelOfTree tree({"a"});
    tree.m_tree.Write("late");
    tree.m_model.LoadChild(tree.At("."));
    QCOMPARE(Names(tree.m_model, tree.At(".")), QStringList("a"));
}

void tst_CDirModel::loadListsAnEmptyFolderAgain()
{
    CModelOfTree tree({"f/"});
    tree.m_model.LoadChild(tree.At("f"));
    QCOMPARE(tree.m_model.rowCount(tree.At("f")), 0);
    tree.m_tree.Write("f/late");
    tree.m_model.LoadChild(tree.At("f"));
    QCOMPARE(Names(tree.m_model, tree.At("f")), QStringList("late"));
}

void tst_CDirModel::loadLeavesNewEntriesUnchecked()
{
    CModelOfTree tree({"f/a"});
    tree.Tick("f", Qt::Checked);
    tree.m_model.LoadChild(tree.At("f"));
    QCOMPARE(tree.Node("f/a")->m_chkState, 0);
    QCOMPARE(tree.Node("f")->m_chkState, 2);
}

void tst_CDirModel::loadOfAVanishedFolder()
{
    CModelOfTree tree({"f/"});
    QVERIFY(QDir(tree.m_tree.Path()).rmdir("f"));
    tree.Expand("f");
    QCOMPARE(tree.m_model.rowCount(tree.At("f")), 0);
    QCOMPARE(tree.Node("f")->m_nListError, ENOENT);
}

void tst_CDirModel::loadOfLinksThatLeadBack()
{
    CModelOfTree tree({"a/", "b/"});
    tree.m_tree.Link("a/x", "../b");
    tree.m_tree.Link("b/y", "../a");
    tree.m_tree.Link("b/system", "/");
    for (const char* pszPath : {".", "a", "a/x", "a/x/y", "a/x/system"}) {
        tree.Expand(pszPath);
    }
    QCOMPARE(Names(tree.m_model, tree.At("a/x")), QStringList({"system", "y"}));
    QCOMPARE(tree.m_model.rowCount(tree.At("a/x/y")), 0);
    QCOMPARE(tree.m_model.rowCount(tree.At("a/x/system")), 0);
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

void tst_CDirModel::sameEntriesAsTheNodes()
{
    CModelOfTree tree({"f/Zebra", "f/apple", "f/.hidden", "f/Box/", "f/dev", "f/beta/", "f/caf\u00e9"});
    tree.m_tree.Link("f/link", "Box");
    tree.m_tree.Link("f/broken", "nowhere");
    tree.Expand(".");
    CDirNode node(QFileInfo(tree.m_tree.Path("f")), nullptr);
    node.LoadChild();
    QStringList listName;
    for (const CDirNode* pChild : qAsConst(node.m_listChild)) {
        listName += pChild->m_strName;
    }
    node.RemoveAll();
    QCOMPARE(listName.size(), 8);
    QCOMPARE(Names(tree.m_model, tree.At("f")), listName);
}

void tst_CDirModel::expandedListsTwoLevels()
{
    CModelOfTree tree({"a/b/c/d"});
    tree.Expand("a");
    QCOMPARE(tree.m_model.rowCount(tree.At("a")), 1);
    QCOMPARE(tree.m_model.rowCount(tree.At("a/b")), 1);
    QCOMPARE(tree.m_model.rowCount(tree.At("a/b/c")), 0);
}

void tst_CDirModel::expandedCheckedFolder()
{
    CModelOfTree tree({"f/a", "f/g/b"});
    tree.Tick("f", Qt::Checked);
    tree.Expand("f");
    const States expected{{"/", 2}, {".", 2}, {"f", 2}, {"f/a", 2}, {"f/g", 2}, {"f/g/b", 2}};
    QCOMPARE(Text(tree.AllStates()), Text(expected));
    QSignalSpy spy(&tree.m_model, &CDirModel::rowsInserted);
    tree.m_tree.Write("f/late");
    tree.Expand("f");
    QVERIFY(spy.isEmpty());
    QCOMPARE(Text(tree.AllStates()), Text(expected));
}

void tst_CDirModel::collapsedKeepsAll()
{
    CModelOfTree tree({"f/a", "f/b"});
    tree.Expand(".");
    tree.Tick("f/a", Qt::Checked);
    const QString strBefore = Text(tree.AllStates());
    tree.m_model.SlotCollapsed(tree.At("f"));
    tree.m_model.SlotCollapsed(QModelIndex());
    QCOMPARE(Text(tree.AllStates()), strBefore);
}

void tst_CDirModel::clearGrandChild()
{
    CModelOfTree tree({"f/a/x", "f/b", "g/c", "file"});
    tree.Expand(".");
    tree.Expand("f");
    QSignalSpy spy(&tree.m_model, &CDirModel::layoutChanged);
    tree.m_model.ClearGrandChild(tree.At("."));
    QCOMPARE(Names(tree.m_model, tree.At(".")), QStringList({"f", "g", "file"}));
    QCOMPARE(tree.m_model.rowCount(tree.At("f")), 0);
    QCOMPARE(tree.m_model.rowCount(tree.At("g")), 0);
    // One for each of f/a, f and g, which had children, and the one at the end.
    QCOMPARE(spy.count(), 4);
}

void tst_CDirModel::clearGrandChildOfNothing()
{
    CModelOfTree tree({"f/a"});
    QSignalSpy spy(&tree.m_model, &CDirModel::layoutChanged);
    const QString strBefore = Text(tree.AllStates());
    tree.m_model.ClearGrandChild(QModelIndex());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(Text(tree.AllStates()), strBefore);
}

void tst_CDirModel::removeAllChild()
{
    CModelOfTree tree({"f/a/x", "f/b"});
    tree.Expand(".");
    tree.Expand("f");
    QSignalSpy spy(&tree.m_model, &CDirModel::rowsRemoved);
    QSignalSpy spyLayout(&tree.m_model, &CDirModel::layoutChanged);
    tree.m_model.RemoveAllChild(tree.At("f/b"));
    tree.m_model.RemoveAllChild(QModelIndex());
    QVERIFY(spy.isEmpty());
    QVERIFY(spyLayout.isEmpty());
    tree.m_model.RemoveAllChild(tree.At("f"));
    QCOMPARE(tree.m_model.rowCount(tree.At("f")), 0);
    // From the bottom up: the one row of f/a, then the two of f.
    QCOMPARE(spy.count(), 2);
    QCOMPARE(spy.at(0).at(2).toInt(), 0);
    QCOMPARE(spy.at(1).at(0).toModelIndex(), tree.At("f"));
    QCOMPARE(spy.at(1).at(1).toInt(), 0);
    QCOMPARE(spy.at(1).at(2).toInt(), 1);
    QCOMPARE(spyLayout.count(), 2);
}

void tst_CDirModel::destructorResets()
{
    CTempTree tree;
    tree.Write("f/a/b");
    auto* pModel = new CDirModel;
    pModel->Parse(tree.Path());
    pModel->LoadGrandChild(QModelIndex());
    pModel->SlotExpanded(pModel->index(0, 0));
    QSignalSpy spyBefore(pModel, &CDirModel::modelAboutToBeReset);
    QSignalSpy spy(pModel, &CDirModel::modelReset);
    delete pModel;
    QCOMPARE(spyBefore.count(), 1);
    QCOMPARE(spy.count(), 1);
}

void tst_CDirModel::scenario_data()
{
    QTest::addColumn<QString>("file");
    const QDir folder(QFINDTESTDATA("scenarios"));
    const QStringList listFile = folder.entryList({"*.txt"}, QDir::Files, QDir::Name);
    QVERIFY(!listFile.isEmpty());
    for (const QString& strFile : listFile) {
        QTest::newRow(qPrintable(strFile)) << folder.filePath(strFile);
    }
}

/** One action of a scenario and the states that it is to leave behind. */
struct STStep
{
    QString m_strLine;
    States m_states;
};

struct STScenario
{
    QStringList m_listEntry;
    QList<STStep> m_listStep;
};

/**
 * Reads a scenario: "tree" is followed by indented entries, "expand", "tick" and
 * "untick" with a path by an indented state and path for each node there then is.
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
            stScenario.m_listStep.append({strText, {}});
        } else if (stScenario.m_listStep.isEmpty()) {
            stScenario.m_listEntry += strText;
        } else {
            stScenario.m_listStep.last().m_states.insert(strText.mid(2), strText.at(0).digitValue());
        }
    }
    return stScenario;
}

void tst_CDirModel::scenario()
{
    QFETCH(QString, file);
    const STScenario stScenario = ReadScenario(file);
    QVERIFY(!stScenario.m_listStep.isEmpty());
    CModelOfTree tree(stScenario.m_listEntry);
    for (const STStep& stStep : stScenario.m_listStep) {
        const QString strAction = stStep.m_strLine.section(' ', 0, 0);
        const QString strPath = stStep.m_strLine.section(' ', 1);
        if (strAction == "expand") {
            tree.Expand(strPath);
        } else {
            QVERIFY2(strAction == "tick" || strAction == "untick", qPrintable(strAction));
            tree.Tick(strPath, strAction == "tick" ? Qt::Checked : Qt::Unchecked);
        }
        QVERIFY2(Text(tree.AllStates()) == Text(stStep.m_states),
                 qPrintable("after \"" + stStep.m_strLine + "\":\n" + Text(tree.AllStates()) + "instead of:\n"
                            + Text(stStep.m_states)));
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

static void AddRandomChildren(CDirNode* pNode, int nDepth, QRandomGenerator& random,
                              QList<CDirNode*>& listNode)
{
    const int nChildren = nDepth == 0 ? random.bounded(1, 4) : random.bounded(0, 5);
    for (int i = 0; nDepth < 5 && i < nChildren; ++i) {
        auto* pChild = new CDirNode;
        pNode->AppendChild(pChild);
        listNode += pChild;
        AddRandomChildren(pChild, nDepth + 1, random, listNode);
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
        QList<CDirNode*> listNode;
        AddRandomChildren(model.GetRootNode(), 0, random, listNode);
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
    for (int i = 0; i < 40; ++i) {
        first.Write(QStringLiteral("folder %1/inner/file").arg(i));
        second.Write(QStringLiteral("file %1").arg(i));
    }
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

QTEST_MAIN(tst_CDirModel)
#include "tst_CDirModel.moc"
