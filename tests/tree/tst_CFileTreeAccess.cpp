#include "tree/CFileRowAccess.h"
#include "tree/CFileTreeAccess.h"
#include "tree/CTreeBed.h"

#include <QAccessible>
#include <QHeaderView>
#include <QScrollBar>

#include <functional>

namespace {

/** What a reader was told, in order: the kind of event and the name of what it is about. */
struct STTold
{
    QAccessible::Event enType;
    QString strName;
    QAccessible::State changed; // of a change of state
};

QList<STTold> s_listTold;

void Note(QAccessibleEvent* pEvent)
{
    QAccessibleInterface* pInterface = pEvent->accessibleInterface();
    STTold told{pEvent->type(), pInterface ? pInterface->text(QAccessible::Name) : QString(), {}};
    if (pEvent->type() == QAccessible::StateChanged) {
        told.changed = static_cast<QAccessibleStateChangeEvent*>(pEvent)->changedStates();
    }
    s_listTold.append(told);
}

/** The names of what matches, in order. */
QStringList Told(const std::function<bool(const STTold&)>& fnMatches)
{
    QStringList listName;
    for (const STTold& told : qAsConst(s_listTold)) {
        if (fnMatches(told)) {
            listName.append(told.strName);
        }
    }
    return listName;
}

QStringList ToldOf(QAccessible::Event enType)
{
    return Told([enType](const STTold& told) { return told.enType == enType; });
}

QStringList ToldTicks()
{
    return Told([](const STTold& told) { return told.changed.checked && told.changed.checkStateMixed; });
}

QStringList ToldExpanded()
{
    return Told([](const STTold& told) { return told.changed.expanded; });
}

/** Whether nothing can be learnt of a row and nothing done with it. */
bool IsGone(QAccessibleInterface* pRow)
{
    pRow->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    return !pRow->isValid() && pRow->state().invalid && pRow->rect() == QRect()
        && pRow->text(QAccessible::Name).isNull() && pRow->text(QAccessible::Description).isNull()
        && pRow->actionInterface()->actionNames().isEmpty();
}

}

/** The tree as a screen reader finds it. */
class tst_CFileTreeAccess : public CTreeBed
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { Make(); }
    void cleanup() { Clear(); }

    void treeIsATree();
    void treeIsMadeUnderAReader();
    void readerThatComesLateIsTold();
    void rowsFromTopToBottom();
    void placesHoldWhenScrolled();
    void nameAndPath();
    void ticks_data();
    void ticks();
    void foldersAndFiles();
    void focusAndSelection();
    void rectAndHit();
    void actions();
    void focusIsTold();
    void ticksAreToldWhenInSight();
    void oneTickIsToldOnce();
    void hugeFoldersTickAtOnce();
    void closedFolderTakesItsRows();
    void removedRowsAreInvalid();
    void rowOfAShiftedIndexIsMadeAnew();
    void lentTreeHasNoRows();
    void viewGoesFirst();

private:
    QAccessibleInterface* Tree() const { return QAccessible::queryAccessibleInterface(m_pView.get()); }
    QAccessibleInterface* Row(const QString& strPath) const;
    QStringList Names() const;
    void Open(const QStringList& listEntry = {});
    void Settle();
};

void tst_CFileTreeAccess::initTestCase()
{
    Prepare();
    QTRY_VERIFY2(QAccessible::isActive(), "there is no accessibility bus");
    QAccessible::installUpdateHandler(Note);
}

QAccessibleInterface* tst_CFileTreeAccess::Row(const QString& strPath) const
{
    return CFileTreeAccess::Of(m_pView.get())->Row(At(strPath));
}

QStringList tst_CFileTreeAccess::Names() const
{
    QStringList listName;
    for (int i = 0; i < Tree()->childCount(); ++i) {
        listName.append(Tree()->child(i)->text(QAccessible::Name));
    }
    return listName;
}

/** Shows the view with the volume open, the focus and its first row current. */
void tst_CFileTreeAccess::Open(const QStringList& listEntry)
{
    CTreeBed::Open(listEntry);
    m_pView->setFocus();
    Settle();
}

/** Lets everything that is still to be told be told, and forgets it. */
void tst_CFileTreeAccess::Settle()
{
    QApplication::processEvents();
    QApplication::processEvents();
    s_listTold.clear();
}

void tst_CFileTreeAccess::treeIsATree()
{
    m_pView->setAccessibleName("Files");
    QVERIFY(dynamic_cast<CFileTreeAccess*>(Tree()));
    QVERIFY(Tree()->isValid());
    QCOMPARE(Tree()->role(), QAccessible::Tree);
    QCOMPARE(Tree()->text(QAccessible::Name), QString("Files"));
    QCOMPARE(Tree()->object(), m_pView.get());
    QCOMPARE(Tree()->childCount(), 0);
    QVERIFY(!Tree()->child(0));
    QVERIFY(!Tree()->state().busy);
}

void tst_CFileTreeAccess::treeIsMadeUnderAReader()
{
    // With a reader at work Qt asks for interfaces from inside the base classes'
    // constructors and keeps what it gets.
    QWidget window;
    auto* pView = new CFileTreeView(&window);
    QVERIFY(CFileTreeAccess::Of(pView));
}

void tst_CFileTreeAccess::readerThatComesLateIsTold()
{
    Open({"a"});
    // Nobody has asked for the tree before.
    QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(Tree()));
    QAccessible::setActive(true);
    Press(Qt::Key_Down);
    QCOMPARE(ToldOf(QAccessible::Focus), QStringList("a"));
}

void tst_CFileTreeAccess::rowsFromTopToBottom()
{
    Open({"a/aa/aaa", "b/bb", "c"});
    QCOMPARE(Names(), QStringList({m_pTree->Path(), "a", "b", "c"}));
    for (const char* pszPath : {"a", "b", "a/aa"}) {
        m_pView->expand(At(pszPath));
    }
    QCOMPARE(Names(), QStringList({m_pTree->Path(), "a", "aa", "aaa", "b", "bb", "c"}));
    for (int i = 0; i < Tree()->childCount(); ++i) {
        QAccessibleInterface* pRow = Tree()->child(i);
        QVERIFY(pRow->isValid());
        QCOMPARE(pRow->role(), QAccessible::TreeItem);
        QCOMPARE(Tree()->indexOfChild(pRow), i);
        QCOMPARE(pRow->parent(), Tree());
        QCOMPARE(pRow->childCount(), 0);
        QVERIFY(!pRow->object());
        QCOMPARE(pRow->window(), m_pView->window()->windowHandle());
        // Whoever asks again gets the same one.
        QCOMPARE(Tree()->child(i), pRow);
    }
    QVERIFY(!Tree()->child(-1));
    QVERIFY(!Tree()->child(7));
    QCOMPARE(Tree()->indexOfChild(Tree()), -1);
    m_pView->collapse(At("a"));
    QCOMPARE(Names(), QStringList({m_pTree->Path(), "a", "b", "bb", "c"}));
    m_pView->collapse(At("."));
    QCOMPARE(Names(), QStringList(m_pTree->Path()));
}

void tst_CFileTreeAccess::placesHoldWhenScrolled()
{
    m_pTree->FillNumbered("folder %1/" + QString(90, 'w') + "/x", 100, 199);
    Open();
    for (int i = 100; i < 110; ++i) {
        m_pView->expand(At(QStringLiteral("folder %1").arg(i)));
    }
    QCOMPARE(Tree()->childCount(), 111);
    m_pView->grab();
    for (const int nY : {0, 1, 50, 95}) {
        m_pView->verticalScrollBar()->setValue(nY);
        m_pView->horizontalScrollBar()->setValue(nY);
        for (const int nPlace : {0, 1, 2, 49, 110}) {
            QCOMPARE(m_pView->ShownPlace(m_pView->ShownAt(nPlace)), nPlace);
        }
        QVERIFY(!m_pView->ShownAt(111).isValid());
        QCOMPARE(Tree()->child(110)->text(QAccessible::Name), QString("folder 199"));
    }
}

void tst_CFileTreeAccess::nameAndPath()
{
    Open({"a\nb <i>c 100%1"});
    QAccessibleInterface* pRow = Tree()->child(1);
    QVERIFY(pRow->text(QAccessible::Name).contains("<i>c 100%1"));
    QVERIFY(!pRow->text(QAccessible::Name).contains('\n'));
    QCOMPARE(pRow->text(QAccessible::Description), m_pTree->Path("a\nb <i>c 100%1"));
    QCOMPARE(Tree()->child(0)->text(QAccessible::Name), m_pTree->Path());
    pRow->setText(QAccessible::Name, "other");
    QVERIFY(pRow->text(QAccessible::Name).contains("100%1"));
}

void tst_CFileTreeAccess::ticks_data()
{
    QTest::addColumn<int>("nTick");
    QTest::addColumn<bool>("bChecked");
    QTest::addColumn<bool>("bMixed");
    QTest::newRow("unchecked") << 0 << false << false;
    QTest::newRow("partial") << 1 << false << true;
    QTest::newRow("checked") << 2 << true << false;
}

void tst_CFileTreeAccess::ticks()
{
    QFETCH(int, nTick);
    Open({"a/b"});
    m_pModel->setData(At("a"), nTick, Qt::CheckStateRole);
    const QAccessible::State state = Row("a")->state();
    QVERIFY(state.checkable);
    QTEST(bool(state.checked), "bChecked");
    QTEST(bool(state.checkStateMixed), "bMixed");
    // The delegate must not be led to tick by itself.
    QVERIFY(!(m_pModel->flags(At("a")) & Qt::ItemIsUserCheckable));
}

void tst_CFileTreeAccess::foldersAndFiles()
{
    Open({"a/b", "f"});
    QAccessible::State state = Row("f")->state();
    QVERIFY(!state.expandable && !state.collapsed && !state.expanded);
    QAccessibleInterface* pRow = Row("a");
    for (const bool bOpen : {true, false}) {
        s_listTold.clear();
        m_pView->setExpanded(At("a"), bOpen);
        QCOMPARE(ToldExpanded(), QStringList("a"));
        state = pRow->state();
        QVERIFY(state.expandable);
        QCOMPARE(bool(state.expanded), bOpen);
        QCOMPARE(bool(state.collapsed), !bOpen);
    }
}

void tst_CFileTreeAccess::focusAndSelection()
{
    Open({"a", "b"});
    m_pView->setCurrentIndex(At("b"));
    s_listTold.clear();
    m_pView->setCurrentIndex(At("a"));
    QCOMPARE(ToldOf(QAccessible::SelectionAdd), QStringList("a"));
    QCOMPARE(ToldOf(QAccessible::SelectionRemove), QStringList("b"));
    QVERIFY(Row("a")->state().focusable && Row("a")->state().selectable);
    QVERIFY(Row("a")->state().focused && Row("a")->state().selected);
    QVERIFY(!Row("b")->state().focused && !Row("b")->state().selected);
    QCOMPARE(Tree()->focusChild(), Row("a"));
    QVERIFY(Tree()->state().focused);
    m_pView->clearFocus();
    QVERIFY(!Row("a")->state().focused);
    QVERIFY(Row("a")->state().selected);
    QVERIFY(!Tree()->focusChild());
}

void tst_CFileTreeAccess::rectAndHit()
{
    m_pTree->FillNumbered("file %1", 10, 59);
    Open();
    m_pView->verticalScrollBar()->setValue(5);
    const QRect rect = Row("file 15")->rect();
    QCOMPARE(rect.topLeft(), m_pView->viewport()->mapToGlobal(m_pView->visualRect(At("file 15")).topLeft()));
    QCOMPARE(rect.size(), m_pView->visualRect(At("file 15")).size());
    const QPoint pt = rect.topLeft() + QPoint(3, 3);
    QCOMPARE(Tree()->childAt(pt.x(), pt.y()), Row("file 15"));
    QVERIFY(!Row("file 15")->state().offscreen);
    QVERIFY(!Row("file 15")->state().invisible);
    // A row that is scrolled away is no hit, nor is the place that it would have.
    const QPoint ptAway = Row("file 10")->rect().topLeft() + QPoint(3, 3);
    QVERIFY(!Tree()->childAt(ptAway.x(), ptAway.y()));
    QVERIFY(Row("file 10")->state().offscreen);
    QVERIFY(Row("file 10")->state().invisible);
    QVERIFY(!Tree()->childAt(-5000, -5000));
}

void tst_CFileTreeAccess::actions()
{
    Open({"a/b", "f"});
    QAccessibleActionInterface* pFolder = Row("a")->actionInterface();
    QAccessibleActionInterface* pFile = Row("f")->actionInterface();
    const QString strToggle = QAccessibleActionInterface::toggleAction();
    const QString strPress = QAccessibleActionInterface::pressAction();
    const QString strFocus = QAccessibleActionInterface::setFocusAction();
    QCOMPARE(pFolder->actionNames(), QStringList({strToggle, strFocus, strPress}));
    QCOMPARE(pFile->actionNames(), QStringList({strToggle, strFocus}));
    int nClicks = 0;
    connect(m_pView.get(), &CFileTreeView::SignalItemClicked, this, [&] { ++nClicks; });
    pFile->doAction(strToggle);
    QCOMPARE(Node("f")->m_chkState, 2);
    QCOMPARE(Node(".")->m_chkState, 1);
    QCOMPARE(nClicks, 1);
    pFile->doAction(strToggle);
    QCOMPARE(Node("f")->m_chkState, 0);
    pFolder->doAction(strPress);
    QVERIFY(m_pView->isExpanded(At("a")));
    pFolder->doAction(strPress);
    QVERIFY(!m_pView->isExpanded(At("a")));
    pFile->doAction(strPress);
    QVERIFY(!m_pView->isExpanded(At("f")));
    m_pView->clearFocus();
    pFile->doAction(strFocus);
    QVERIFY(m_pView->hasFocus());
    QCOMPARE(m_pView->currentIndex(), At("f"));
    pFile->doAction("no such thing");
    // Out of sight, as during a copy, there is nothing to be done with a row.
    m_pView->hide();
    QVERIFY(pFolder->actionNames().isEmpty());
    pFile->doAction(strToggle);
    QCOMPARE(Node("f")->m_chkState, 0);
    QCOMPARE(nClicks, 2);
}

void tst_CFileTreeAccess::focusIsTold()
{
    Open({"a", "b"});
    m_pView->setAccessibleName("Files");
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    Press(Qt::Key_Up);
    QCOMPARE(ToldOf(QAccessible::Focus), QStringList({"a", "b", "a"}));
    m_pView->clearFocus();
    Settle();
    m_pView->setCurrentIndex(At("b"));
    QCOMPARE(ToldOf(QAccessible::Focus), QStringList());
    // Of the tree first, which is Qt's, and the row has the last word.
    m_pView->setFocus();
    QApplication::processEvents();
    QCOMPARE(ToldOf(QAccessible::Focus), QStringList({"Files", "b"}));
}

void tst_CFileTreeAccess::ticksAreToldWhenInSight()
{
    m_pTree->FillNumbered("file %1", 10, 59);
    Open();
    QCOMPARE(Names().size(), 51);
    Settle();
    m_pModel->setData(At("."), Qt::Checked, Qt::CheckStateRole);
    QVERIFY(ToldTicks().isEmpty());
    QApplication::processEvents();
    QStringList listInSight;
    for (int i = 0; i < Tree()->childCount(); ++i) {
        if (!Tree()->child(i)->state().offscreen) {
            listInSight.append(Tree()->child(i)->text(QAccessible::Name));
        }
    }
    QVERIFY(listInSight.size() > 5 && listInSight.size() < 20);
    QCOMPARE(ToldTicks(), listInSight);
    QVERIFY(!listInSight.contains("file 59"));
    m_pView->scrollTo(At("file 59"));
    QApplication::processEvents();
    QCOMPARE(ToldTicks().count("file 59"), 1);
}

void tst_CFileTreeAccess::oneTickIsToldOnce()
{
    Open({"a", "b"});
    m_pView->setCurrentIndex(At("a"));
    QCOMPARE(Names().size(), 3);
    Settle();
    Press(Qt::Key_Space);
    // A reader that looks before it has been told is told all the same.
    QVERIFY(Row("a")->state().checked);
    QApplication::processEvents();
    QCOMPARE(ToldTicks(), QStringList({m_pTree->Path(), "a"}));
    s_listTold.clear();
    emit m_pModel->dataChanged(At("a"), At("a"));
    QApplication::processEvents();
    QVERIFY(ToldTicks().isEmpty());
}

void tst_CFileTreeAccess::hugeFoldersTickAtOnce()
{
    // 200,000 shown rows. Every single one announced, or looked up among the rest, would take minutes.
    Open({"file"});
    CDirNode* pVolume = Node(".");
    m_pView->LendNodes(true);
    const int nMany = 200000;
    for (int i = 0; i < nMany; ++i) {
        auto* pNode = new CDirNode;
        pNode->m_strName = QString::number(i);
        pVolume->AppendChild(pNode);
    }
    m_pView->LendNodes(false);
    QCOMPARE(Tree()->childCount(), nMany + 2);
    QCOMPARE(Tree()->child(nMany + 1)->text(QAccessible::Name), QString::number(nMany - 1));
    for (int i = 0; i < 20; ++i) {
        QVERIFY(Tree()->child(i)->isValid());
    }
    Settle();
    m_pModel->setData(At("."), Qt::Checked, Qt::CheckStateRole);
    QApplication::processEvents();
    const int nTold = ToldTicks().size();
    QVERIFY2(nTold > 5 && nTold <= 20, qPrintable(QString::number(nTold)));
    QVERIFY(Tree()->child(nMany + 1)->state().checked);
}

void tst_CFileTreeAccess::closedFolderTakesItsRows()
{
    Open({"a/b/c"});
    m_pView->expand(At("a"));
    QAccessibleInterface* pRow = Row("a/b");
    QVERIFY(pRow->isValid());
    m_pView->collapse(At("a"));
    QVERIFY(IsGone(pRow));
    QCOMPARE(Node("a/b")->m_chkState, 0);
    QCOMPARE(Tree()->indexOfChild(pRow), -1);
    QVERIFY(!Row("a/b"));
    m_pView->expand(At("a"));
    QVERIFY(pRow->isValid());
    QCOMPARE(Row("a/b"), pRow);
}

void tst_CFileTreeAccess::removedRowsAreInvalid()
{
    Open({"a/b"});
    const QAccessible::Id nFolder = QAccessible::uniqueId(Row("a"));
    for (int i = 0; i < 20; ++i) {
        // The allocator likes to give a new node the place of one that has just been freed.
        m_pModel->LoadChild(At("a"));
        m_pView->expand(At("a"));
        QVERIFY(Row("a/b"));
        QCOMPARE(Row("a/b")->text(QAccessible::Name), QString("b"));
        const QAccessible::Id nFile = QAccessible::uniqueId(Row("a/b"));
        m_pModel->RemoveAllChild(At("a"));
        QVERIFY(!QAccessible::accessibleInterface(nFile));
    }
    QVERIFY(QAccessible::accessibleInterface(nFolder)->isValid());
    QCOMPARE(Tree()->childCount(), 2);
    QVERIFY(!Row("a")->state().expandable);
}

void tst_CFileTreeAccess::rowOfAShiftedIndexIsMadeAnew()
{
    Open({"a"});
    QCOMPARE(Tree()->child(0)->text(QAccessible::Name), m_pTree->Path());
    // A new top-level entry is announced in front, though it comes last, and so
    // leads every index that was kept astray.
    m_pModel->Parse(m_pTree->Path("a"));
    QCOMPARE(Tree()->child(0)->text(QAccessible::Name), m_pTree->Path());
    QVERIFY(Tree()->child(0)->isValid());
    QCOMPARE(Tree()->indexOfChild(Tree()->child(0)), 0);
}

void tst_CFileTreeAccess::lentTreeHasNoRows()
{
    Open({"a/b"});
    m_pView->setCurrentIndex(At("a"));
    QAccessibleInterface* pRow = Row("a");
    const QPoint pt = pRow->rect().topLeft() + QPoint(3, 3);
    m_pView->LendNodes(true);
    QVERIFY(IsGone(pRow));
    QCOMPARE(Tree()->childCount(), 0);
    QVERIFY(!Tree()->child(0));
    QVERIFY(!Tree()->childAt(pt.x(), pt.y()));
    QCOMPARE(Tree()->focusChild(), Tree());
    QVERIFY(Tree()->state().busy);
    m_pView->LendNodes(false);
    QVERIFY(!Tree()->state().busy);
    QCOMPARE(Node("a")->m_chkState, 0);
    QVERIFY(pRow->isValid());
    QCOMPARE(Row("a"), pRow);
    QVERIFY(pRow->state().focused);
}

void tst_CFileTreeAccess::viewGoesFirst()
{
    Open({"a"});
    const QAccessible::Id nRow = QAccessible::uniqueId(Row("a"));
    CFileRowAccess own(m_pView.get(), At("a"));
    QVERIFY(own.isValid());
    m_pView.reset();
    QVERIFY(!QAccessible::accessibleInterface(nRow));
    QVERIFY(!own.isValid());
    QVERIFY(!own.parent());
    QVERIFY(!own.window());
    QCOMPARE(own.rect(), QRect());
}

QTEST_MAIN(tst_CFileTreeAccess)
#include "tst_CFileTreeAccess.moc"
