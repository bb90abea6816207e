#include "support/CLogCapture.h"
#include "support/CNodeTree.h"
#include "tree/CTreeBed.h"

#include <QScrollBar>
#include <QSignalSpy>

#include <atomic>
#include <thread>

/** The view while its nodes are lent, and afterwards. */
class tst_CNodeLoan : public CTreeBed
{
    Q_OBJECT

private slots:
    void initTestCase() { Prepare(); }
    void init() { Make(); }
    void cleanup() { Clear(); }

    void lentTwice();
    void lentBeforeShown();
    void showsItsPicture();
    void takesNoInput();
    void staysAsItWas();
    void staysScrolledWithoutSelection();
    void showsWhatWasListed();
    void doesNotTickAnew();
    void parseComesLater();
    void workerAndEventsTogether();
    void destroyedMeanwhile();
};

void tst_CNodeLoan::lentTwice()
{
    Open({"a"});
    const int nChildren = m_pView->children().size();
    for (int i = 0; i < 2; ++i) {
        m_pView->LendNodes(true);
        m_pView->LendNodes(true);
        QVERIFY(!m_pView->model());
        m_pView->LendNodes(false);
        m_pView->LendNodes(false);
        QCOMPARE(m_pView->model(), static_cast<QAbstractItemModel*>(m_pModel));
        QVERIFY(m_pView->isExpanded(At(".")));
    }
    QCOMPARE(m_pView->children().size(), nChildren);
}

void tst_CNodeLoan::lentBeforeShown()
{
    m_pTree->Write("a");
    m_pView->Parse({m_pTree->Path()});
    m_pView->LendNodes(true);
    m_pView->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pView.get()));
    m_pView->LendNodes(false);
    m_pView->expand(At("."));
    QVERIFY(m_pView->visualRect(At("a")).isValid());
}

void tst_CNodeLoan::showsItsPicture()
{
    m_pTree->FillNumbered("file %1", 0, 49);
    Open();
    Click("file 1", 7);
    m_pView->verticalScrollBar()->setValue(3);
    const QImage before = m_pView->grab().toImage();
    m_pView->LendNodes(true);
    QCOMPARE(m_pView->grab().toImage(), before);
    m_pView->resize(620, 300);
    QApplication::processEvents();
    const QImage larger = m_pView->grab().toImage();
    QCOMPARE(larger.size(), QSize(620, 300));
    QCOMPARE(m_pView->childAt(610, 100), m_pView->childAt(10, 10));
    QCOMPARE(larger.copy(0, 0, 500, 300), before.copy(0, 0, 500, 300));
    QCOMPARE(larger.pixelColor(610, 100), m_pView->palette().color(QPalette::Base));
    m_pView->resize(500, 400);
    m_pView->LendNodes(false);
    QCOMPARE(m_pView->grab().toImage(), before);
}

void tst_CNodeLoan::takesNoInput()
{
    Open({"a/b"});
    const QModelIndex index = At("a");
    const QRect row = m_pView->visualRect(index);
    m_pView->setCurrentIndex(index);
    QSignalSpy spyClick(m_pView.get(), &CFileTreeView::SignalItemClicked);
    QSignalSpy spyExpand(m_pView.get(), &CFileTreeView::expanded);
    m_pView->LendNodes(true);
    const QPoint pos = m_pView->viewport()->mapTo(m_pView.get(), QPoint(row.left() + 7, row.center().y()));
    QWidget* pUnder = m_pView->childAt(pos);
    QVERIFY(pUnder != m_pView->viewport());
    for (QWidget* pTarget : {pUnder, m_pView->viewport()}) {
        QTest::mouseMove(pTarget, pos);
        QTest::mouseClick(pTarget, Qt::LeftButton, Qt::NoModifier, pos);
        QTest::mouseDClick(pTarget, Qt::LeftButton, Qt::NoModifier, pos);
    }
    for (const Qt::Key enKey : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Space, Qt::Key_A, Qt::Key_Asterisk}) {
        Press(enKey);
    }
    m_pView->ToggleTick(index);
    m_pView->LendNodes(false);
    QVERIFY(spyClick.isEmpty());
    QVERIFY(spyExpand.isEmpty());
    QCOMPARE(Node("a")->m_chkState, 0);
    QVERIFY(!m_pView->isExpanded(At("a")));
    Click("a", 7);
    QCOMPARE(Node("a")->m_chkState, 2);
    QCOMPARE(spyClick.count(), 1);
}

void tst_CNodeLoan::staysAsItWas()
{
    m_pTree->FillNumbered("folder %1/inner/file", 0, 59);
    Open();
    // Narrower than the least width of a row, so that there is something to scroll sideways.
    m_pView->resize(400, 300);
    for (const char* pszPath : {"folder 10", "folder 50", "folder 50/inner"}) {
        m_pView->expand(At(pszPath));
    }
    m_pView->collapse(At("folder 50"));
    m_pView->setCurrentIndex(At("folder 7"));
    m_pView->selectionModel()->select(At("folder 7"), QItemSelectionModel::ClearAndSelect);
    m_pView->grab();
    m_pView->verticalScrollBar()->setValue(15);
    m_pView->horizontalScrollBar()->setValue(40);
    const QItemSelectionModel* pSelection = m_pView->selectionModel();
    const QImage before = m_pView->grab().toImage();

    m_pView->LendNodes(true);
    QApplication::processEvents();
    m_pView->LendNodes(false);

    QVERIFY(m_pView->isExpanded(At(".")));
    QVERIFY(m_pView->isExpanded(At("folder 10")));
    QVERIFY(!m_pView->isExpanded(At("folder 11")));
    QVERIFY(!m_pView->isExpanded(At("folder 50")));
    QVERIFY(m_pView->isExpanded(At("folder 50/inner")));
    QCOMPARE(m_pView->selectionModel(), pSelection);
    QCOMPARE(m_pView->currentIndex(), At("folder 7"));
    QCOMPARE(m_pView->selectionModel()->selectedIndexes(), QModelIndexList({At("folder 7")}));
    QCOMPARE(m_pView->verticalScrollBar()->value(), 15);
    QCOMPARE(m_pView->horizontalScrollBar()->value(), 40);
    QCOMPARE(m_pView->grab().toImage(), before);
    // None of the selection models made on the way is left behind.
    QCOMPARE(m_pView->findChildren<QItemSelectionModel*>().size(), 1);
}

void tst_CNodeLoan::staysScrolledWithoutSelection()
{
    m_pTree->FillNumbered("file %1", 0, 59);
    Open();
    m_pView->selectionModel()->clear();
    m_pView->grab();
    m_pView->verticalScrollBar()->setValue(15);
    m_pView->LendNodes(true);
    m_pView->doItemsLayout();
    QCOMPARE(m_pView->verticalScrollBar()->maximum(), 0);
    m_pView->LendNodes(false);
    QCOMPARE(m_pView->verticalScrollBar()->value(), 15);
}

void tst_CNodeLoan::showsWhatWasListed()
{
    Open({"a/b/c/d"});
    m_pView->expand(At("a"));
    Click("a", 7);
    CDirNode* pNode = Node("a/b/c");
    QVERIFY(pNode->m_listChild.isEmpty());
    m_pView->LendNodes(true);
    pNode->LoadChild();
    m_pView->LendNodes(false);
    m_pView->expand(At("a/b"));
    m_pView->expand(At("a/b/c"));
    QVERIFY(m_pView->visualRect(At("a/b/c/d")).isValid());
    QCOMPARE(Node("a/b/c/d")->m_chkState, 2);
    QCOMPARE(m_pView->indexBelow(At("a/b/c")), At("a/b/c/d"));
}

void tst_CNodeLoan::doesNotTickAnew()
{
    Open({"a/b"});
    m_pView->expand(At("a"));
    Click("a/b", 7);
    // A state that only the worker's side knows: handing ticks down again would wipe it out.
    CDirNode* pNode = Node("a/b");
    m_pView->LendNodes(true);
    pNode->m_chkState = Qt::Unchecked;
    m_pView->LendNodes(false);
    QCOMPARE(Node("a")->m_chkState, 2);
    QCOMPARE(Node("a/b")->m_chkState, 0);
}

void tst_CNodeLoan::parseComesLater()
{
    m_pView->LendNodes(true);
    m_pView->Parse({m_pTree->Path()});
    QVERIFY(m_pModel->GetRootNode()->m_listChild.isEmpty());
    m_pView->LendNodes(false);
    QCOMPARE(RowNames(*m_pModel, QModelIndex()), QStringList(m_pTree->Path()));
    m_pView->Parse({m_pTree->Path("other")});
    QCOMPARE(m_pModel->rowCount(), 1);
}

void tst_CNodeLoan::workerAndEventsTogether()
{
    m_pTree->FillNumbered("folder %1/a/b/c", 0, 99);
    CLogCapture capture;
    Open();
    Click(".", 7);
    m_pView->LendNodes(true);
    // Not a QThread: the race checker knows that what a std::thread did comes before its join.
    std::atomic<bool> bRunning{true};
    std::thread worker([pRoot = m_pModel->GetRootNode(), &bRunning] {
        CNodeTree::ListAll(pRoot);
        bRunning = false;
    });
    int nTurn = 0;
    while (bRunning || nTurn < 20) {
        ++nTurn;
        m_pView->resize(500 + nTurn % 7, 400 + nTurn % 5);
        QTest::mouseMove(m_pView.get(), QPoint(30 + nTurn % 50, 30 + nTurn % 90));
        Press(nTurn % 2 ? Qt::Key_Down : Qt::Key_Right);
        m_pView->update();
        m_pView->viewport()->update();
        m_pView->setFont(QFont("Sans", 10 + nTurn % 2));
        QApplication::processEvents();
    }
    worker.join();
    m_pView->LendNodes(false);
    m_pView->grab();
    QCOMPARE(Node("folder 99/a/b/c")->m_chkState, 2);
    QCOMPARE(capture.Lines().filter("QAbstractItemModel"), QStringList());
}

void tst_CNodeLoan::destroyedMeanwhile()
{
    Open({"a/b"});
    Click("a", 80);
    m_pView->LendNodes(true);
    m_pView.reset();
    // The nodes are the model's again.
    QCOMPARE(m_pModel->rowCount(At("a")), 1);
}

QTEST_MAIN(tst_CNodeLoan)
#include "tst_CNodeLoan.moc"
