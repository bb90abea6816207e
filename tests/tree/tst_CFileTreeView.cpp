#include "tree/CDirDelegate.h"
#include "tree/CTreeBed.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSet>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <cerrno>
#include <functional>

// Right of the rows, as wide as what the frame leaves free on their left less its edge.
static const int ROW_GAP = 9;

/** Counts its layouts and notes what it paints. */
class CWatchedView : public CFileTreeView
{
public:
    void doItemsLayout() override
    {
        ++m_nLayouts;
        CFileTreeView::doItemsLayout();
    }

    void paintEvent(QPaintEvent* pEvent) override
    {
        m_painted += pEvent->region();
        CFileTreeView::paintEvent(pEvent);
    }

    int m_nLayouts = 0;
    QRegion m_painted;
};

class tst_CFileTreeView : public CTreeBed
{
    Q_OBJECT

private slots:
    void initTestCase() { Prepare(); }
    void init() { Make(); }
    void cleanup() { Clear(); }

    void howItIsSetUp();
    void parseListsTheFirstLevel();
    void parseWorksOnce();
    void addedRootsComeBehindTheOthers();
    void rowsAreThirtyHigh();
    void rowsReachAcrossTheView();
    void noBarAtFirstSight();
    void deepRowsScrollSideways();
    void keysMarkTheCurrentRow();
    void expandingListsTwoLevels();
    void openingTellsOfTheFolder();
    void pressTellsOfARefusedFolder();
    void unlistedFoldersDuringALoan();
    void tickedVolumeDuringALoan();
    void arrowsOfFolders_data();
    void arrowsOfFolders();
    void pressOnTheBoxTicks_data();
    void pressOnTheBoxTicks();
    void doubleClickOnTheBox();
    void keysGoOnFromTheTickedRow();
    void spaceTicks_data();
    void spaceTicks();
    void heldSpaceTicksOnce();
    void spaceAfterALetterTicks();
    void spaceBringsTheRowIntoSight();
    void keysOpenAndClose();
    void starListsNothing();
    void firstFocusHasARow();
    void rowsThatComeLaterHaveACurrentOne();
    void tickingRepaintsEveryRow();
    void hugeFoldersTickAtOnce();
    void waitCursorWhileListing();
    void expandingLaysOutAsOftenForManyAsForFew();

private:
    /** The pointer's shapes while the model changes; in the end no wait cursor may be left. */
    QSet<Qt::CursorShape> ShapesDuring(const std::function<void()>& fnWork);
};

QSet<Qt::CursorShape> tst_CFileTreeView::ShapesDuring(const std::function<void()>& fnWork)
{
    QSet<Qt::CursorShape> setShape;
    const auto fnNote = [&setShape] {
        const QCursor* pCursor = QGuiApplication::overrideCursor();
        setShape += pCursor ? pCursor->shape() : Qt::ArrowCursor;
    };
    QObject context;
    connect(m_pModel, &CDirModel::rowsInserted, &context, fnNote);
    connect(m_pModel, &CDirModel::dataChanged, &context, fnNote);
    fnWork();
    if (QGuiApplication::overrideCursor()) {
        setShape += Qt::BlankCursor;
    }
    return setShape;
}

void tst_CFileTreeView::howItIsSetUp()
{
    m_pView->InitData();
    QCOMPARE(m_pView->model(), static_cast<QAbstractItemModel*>(m_pModel));
    QVERIFY(m_pView->isHeaderHidden());
    QCOMPARE(m_pView->header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QVERIFY(!m_pView->header()->stretchLastSection());
    QVERIFY(qobject_cast<CDirDelegate*>(m_pView->itemDelegate()));
    QCOMPARE(m_pView->itemDelegate()->parent(), m_pView.get());
    QCOMPARE(m_pView->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QVERIFY(m_pView->uniformRowHeights());
}

void tst_CFileTreeView::parseListsTheFirstLevel()
{
    m_pTree->Fill({"folder/inside", "file"});
    const QString strGiven = m_pTree->Path() + "/";
    m_pView->Parse({strGiven});
    QCOMPARE(At(".").data().toString(), strGiven);
    QCOMPARE(RowNames(*m_pModel, At(".")), QStringList({"folder", "file"}));
    QCOMPARE(m_pModel->rowCount(At("folder")), 0);
    QVERIFY(!m_pView->isExpanded(At(".")));
}

void tst_CFileTreeView::parseWorksOnce()
{
    m_pTree->Fill({"a/file", "b/file"});
    const QStringList listRoot{m_pTree->Path("a"), m_pTree->Path("b")};
    // An empty list is not the one.
    m_pView->Parse({});
    QCOMPARE(m_pModel->rowCount(), 0);
    m_pView->Parse(listRoot);
    QCOMPARE(RowNames(*m_pModel, QModelIndex()), listRoot);
    QSignalSpy spy(m_pModel, &CDirModel::rowsInserted);
    m_pView->Parse({m_pTree->Path()});
    m_pView->Parse({});
    QCOMPARE(RowNames(*m_pModel, QModelIndex()), listRoot);
    QVERIFY(spy.isEmpty());
}

void tst_CFileTreeView::addedRootsComeBehindTheOthers()
{
    m_pTree->Fill({"a/file", "empty/", "late/folder/file"});
    const QStringList listRoot{m_pTree->Path("a"), m_pTree->Path("empty")};
    m_pView->Parse(listRoot);
    m_pView->AddRoots({m_pTree->Path("late")}); // shown by nobody yet
    QCOMPARE(m_pModel->rowCount(), 2);
    QVERIFY(ShowActive(m_pView.get()));
    QCOMPARE(m_pModel->rowCount(), 3);
    const QModelIndex late = m_pModel->index(2, 0);
    QCOMPARE(RowNames(*m_pModel, late), QStringList("folder"));
    // Rows that are known stay what they were, and those that are ticked get nothing new but what is in them.
    m_pView->expand(late);
    const QPersistentModelIndex folder = m_pModel->index(0, 0, late);
    for (int nRow = 0; nRow < 3; ++nRow) {
        m_pModel->setData(m_pModel->index(nRow, 0), Qt::Checked, Qt::CheckStateRole);
    }
    QCOMPARE(m_pModel->GetRootNode()->m_chkState, int(Qt::Checked));
    m_pTree->Fill({"empty/come", "more/"});
    m_pView->AddRoots(listRoot + QStringList(m_pTree->Path("more")));
    QCOMPARE(m_pModel->rowCount(), 4);
    QCOMPARE(RowNames(*m_pModel, QModelIndex()).last(), m_pTree->Path("more"));
    QCOMPARE(folder.data().toString(), QString("folder"));
    QCOMPARE(m_pView->indexAbove(folder), late);
    QVERIFY(m_pView->isExpanded(late));
    const QModelIndex come = m_pModel->index(0, 0, m_pModel->index(1, 0));
    QCOMPARE(come.data().toString(), QString("come"));
    QCOMPARE(come.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    QCOMPARE(m_pModel->index(3, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QCOMPARE(m_pModel->GetRootNode()->m_chkState, int(Qt::PartiallyChecked));
}

void tst_CFileTreeView::rowsAreThirtyHigh()
{
    for (const char* pszName : {"1\n2\n3\n4", "<h1>2<br>x", "3 \xff\xfe", "plain"}) {
        m_pTree->WriteBytesName(pszName);
    }
    Open();
    const int nTop = m_pView->visualRect(At(".")).top();
    for (int i = 0; i < 4; ++i) {
        const QRect row = m_pView->visualRect(m_pModel->index(i, 0, At(".")));
        QCOMPARE(row.height(), 30);
        QCOMPARE(row.top(), nTop + 30 * (i + 1));
    }
    m_pView->grab();
}

void tst_CFileTreeView::rowsReachAcrossTheView()
{
    const QString strLong(250, 'W');
    Open({strLong, "file"});
    for (const int nWidth : {700, 500, 900, 600}) {
        m_pView->resize(nWidth, 300);
        QCOMPARE(m_pView->columnWidth(0), m_pView->viewport()->width() - ROW_GAP);
        QCOMPARE(m_pView->visualRect(At("file")).right(), m_pView->columnWidth(0) - 1);
        QCOMPARE(m_pView->horizontalScrollBar()->maximum(), 0);
    }
    // Elided in the middle: the end of the row shows letters, too.
    const QRect row = m_pView->visualRect(At(strLong));
    const QImage end = m_pView->viewport()->grab(row.adjusted(row.width() - 30, 0, 0, 0)).toImage();
    QImage blank = end;
    blank.fill(end.pixelColor(0, 0));
    QVERIFY(end != blank);
}

void tst_CFileTreeView::noBarAtFirstSight()
{
    m_pTree->Fill({"folder/file"});
    m_pView->Parse({m_pTree->Path()});
    QWidget page;
    CFileTreeView* pView = m_pView.release();
    // As small as a page is before its window has a size.
    pView->resize(300, 20);
    (new QVBoxLayout(&page))->addWidget(pView);
    page.resize(600, 300);
    page.show();
    QVERIFY(!pView->horizontalScrollBar()->isVisible());
    QCOMPARE(pView->horizontalScrollBar()->maximum(), 0);
}

void tst_CFileTreeView::deepRowsScrollSideways()
{
    QString strFolder("a");
    Open({strFolder + QString("/a").repeated(12) + "/file"});
    m_pView->resize(600, 300);
    for (int n = 0; n < 13; ++n) {
        m_pView->expand(At(strFolder + QString("/a").repeated(n)));
    }
    const QModelIndex deepest = At(strFolder + QString("/a").repeated(12) + "/file");
    QVERIFY(deepest.isValid());
    QCOMPARE(m_pView->visualRect(deepest).width(), 450);
    QVERIFY(m_pView->horizontalScrollBar()->maximum() > 0);
    m_pView->collapse(At("a"));
    QCOMPARE(m_pView->columnWidth(0), m_pView->viewport()->width() - ROW_GAP);
}

void tst_CFileTreeView::keysMarkTheCurrentRow()
{
    Open({"file"});
    m_pView->setFocus();
    QTRY_VERIFY(m_pView->hasFocus());
    const auto fnIsMarked = [this](const QModelIndex& index) {
        const QImage image = m_pView->viewport()->grab().toImage();
        return image.pixelColor(1, m_pView->visualRect(index).center().y()) == QColor("#ff7e17");
    };
    QVERIFY(!fnIsMarked(m_pView->currentIndex()));
    Press(Qt::Key_Down);
    QCOMPARE(m_pView->currentIndex(), At("file"));
    QVERIFY(fnIsMarked(At("file")));
    QVERIFY(!fnIsMarked(At(".")));
    Click(".", 7);
    QVERIFY(!fnIsMarked(At("file")));
    QVERIFY(!fnIsMarked(At(".")));
    Press(Qt::Key_Up);
    QVERIFY(fnIsMarked(At(".")));
    m_pView->clearFocus();
    QVERIFY(!fnIsMarked(At(".")));
    m_pView->setFocus(Qt::TabFocusReason);
    QVERIFY(fnIsMarked(At(".")));
}

void tst_CFileTreeView::expandingListsTwoLevels()
{
    Open({"a/b/c/d"});
    QCOMPARE(m_pModel->rowCount(At("a")), 1);
    QCOMPARE(m_pModel->rowCount(At("a/b")), 0);
    Click("a", 7);
    m_pView->expand(At("a"));
    QCOMPARE(m_pModel->rowCount(At("a/b")), 1);
    QCOMPARE(m_pModel->rowCount(At("a/b/c")), 0);
    // The tick of what is opened goes down with the listing.
    QCOMPARE(Node("a/b")->m_chkState, 2);
    QCOMPARE(Node("a/b/c")->m_chkState, 2);
    m_pView->collapse(At("a"));
    QCOMPARE(m_pModel->rowCount(At("a/b")), 1);
}

void tst_CFileTreeView::openingTellsOfTheFolder()
{
    Open({"a/dev", "a/home/file", "a/kept", "b/file"});
    QList<STFolderFacts> listFacts;
    connect(m_pView.get(), &CFileTreeView::SignalFolderOpened, this,
            [&](const STFolderFacts& stFacts) { listFacts.append(stFacts); });
    for (const char* pszPath : {"a", "b"}) {
        m_pView->expand(At(pszPath));
        Click(pszPath, 7);
    }
    QCOMPARE(listFacts.size(), 2);
    QCOMPARE(listFacts.at(0).strPath, m_pTree->Path("a"));
    QCOMPARE(listFacts.at(0).nLeftOut, 2);
    QCOMPARE(listFacts.at(1).strPath, m_pTree->Path("b"));
    QCOMPARE(listFacts.at(1).nLeftOut, 0);
    QCOMPARE(listFacts.at(1).nError, 0);
}

void tst_CFileTreeView::pressTellsOfARefusedFolder()
{
    m_pTree->MkDir("a");
    m_pTree->Link("a/back", ".");
    Open();
    m_pView->expand(At("a"));
    QList<STFolderFacts> listFacts;
    connect(m_pView.get(), &CFileTreeView::SignalFolderOpened, this,
            [&](const STFolderFacts& stFacts) { listFacts.append(stFacts); });
    Click("a/back", 7);
    Click("a/back", 60);
    m_pView->setCurrentIndex(At("a/back"));
    Press(Qt::Key_Space);
    QCOMPARE(listFacts.size(), 3);
    for (const STFolderFacts& stFacts : qAsConst(listFacts)) {
        QCOMPARE(stFacts.strPath, m_pTree->Path("a/back"));
        QCOMPARE(stFacts.nError, ELOOP);
    }
}

void tst_CFileTreeView::unlistedFoldersDuringALoan()
{
    Open({"a/inner/file"});
    m_pView->expand(At("."));
    Click(".", 7);
    QVERIFY(m_pView->HasUnlistedFolder());
    m_pView->LendNodes(true);
    QVERIFY(m_pView->HasUnlistedFolder());
    m_pView->LendNodes(false);
    m_pView->expand(At("a"));
    QVERIFY(!m_pView->HasUnlistedFolder());
}

void tst_CFileTreeView::tickedVolumeDuringALoan()
{
    Open({"a/inner/file"});
    QVERIFY(!m_pView->HasTickedVolume());
    m_pView->LendNodes(true);
    QVERIFY(!m_pView->HasTickedVolume());
    m_pView->LendNodes(false);
    Click(".", 7);
    m_pView->LendNodes(true);
    QVERIFY(m_pView->HasTickedVolume());
    m_pView->LendNodes(false);
    QVERIFY(m_pView->HasTickedVolume());
}

void tst_CFileTreeView::arrowsOfFolders_data()
{
    QTest::addColumn<int>("nEntries");
    for (const int nEntries : {0, 1, 2, 3}) {
        QTest::addRow("%d", nEntries) << nEntries;
    }
}

void tst_CFileTreeView::arrowsOfFolders()
{
    QFETCH(int, nEntries);
    m_pTree->FillNumbered("folder/%1", 1, nEntries);
    Open({"folder/", "plain"});
    // Left of the row's own rectangle, where the arrow is, a plain file shows nothing.
    const auto fnArrow = [this](const QString& strPath) {
        const QRect row = m_pView->visualRect(At(strPath));
        return m_pView->viewport()->grab(QRect(row.left() - 20, row.top(), 20, row.height())).toImage();
    };
    QCOMPARE(fnArrow("folder") != fnArrow("plain"), nEntries > 0);
}

void tst_CFileTreeView::pressOnTheBoxTicks_data()
{
    QTest::addColumn<int>("nX");
    QTest::addColumn<int>("nState");
    QTest::newRow("left edge") << 0 << 0;
    QTest::newRow("one in") << 1 << 2;
    QTest::newRow("middle") << 7 << 2;
    QTest::newRow("fifteen in") << 15 << 2;
    QTest::newRow("sixteen in") << 16 << 0;
    QTest::newRow("icon") << 25 << 0;
    QTest::newRow("name") << 80 << 0;
}

void tst_CFileTreeView::pressOnTheBoxTicks()
{
    Open({"a/b"});
    QFETCH(int, nX);
    QFETCH(int, nState);
    QSignalSpy spy(m_pView.get(), &CFileTreeView::SignalItemClicked);
    Click("a", nX);
    QTest::mouseClick(m_pView->viewport(), Qt::LeftButton, Qt::NoModifier,
                      m_pView->viewport()->rect().bottomLeft());
    QCOMPARE(spy.count(), 1);
    for (const char* pszPath : {"a", "a/b", "."}) {
        QCOMPARE(Node(pszPath)->m_chkState, nState);
    }
    QCOMPARE(m_pModel->HasCheckedEntry(), nState != 0);
    QCOMPARE(m_pView->selectionModel()->isSelected(At("a")), nState == 0);
}

void tst_CFileTreeView::doubleClickOnTheBox()
{
    Open({"a/b"});
    QList<bool> listTold;
    connect(m_pView.get(), &CFileTreeView::SignalItemClicked, this,
            [&] { listTold += m_pModel->HasCheckedEntry(); });
    Click("a", 7);
    QCOMPARE(Node("a")->m_chkState, 2);
    QWidget* pViewport = m_pView->viewport();
    const QPoint pos = m_pView->visualRect(At("a")).topLeft() + QPoint(7, 15);
    QMouseEvent event(QEvent::MouseButtonDblClick, pos, pViewport->mapToGlobal(pos), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pViewport, &event);
    QTest::mouseRelease(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
    QCOMPARE(Node("a")->m_chkState, 0);
    QVERIFY(!m_pView->isExpanded(At("a")));
    // Whoever listens was told of both, each time with the new tick in place.
    QCOMPARE(listTold, QList<bool>({true, false}));
}

void tst_CFileTreeView::keysGoOnFromTheTickedRow()
{
    m_pTree->FillNumbered("%1", 10, 39);
    Open();
    // A row of which only a part is in sight stays where it is.
    const int nRows = m_pView->viewport()->height() / 30;
    const QString strLast = QString::number(10 + nRows - 1);
    QVERIFY(m_pView->visualRect(At(strLast)).bottom() > m_pView->viewport()->height());
    const int nScroll = m_pView->verticalScrollBar()->value();
    QTest::mouseClick(m_pView->viewport(), Qt::LeftButton, Qt::NoModifier,
                      m_pView->visualRect(At(strLast)).topLeft() + QPoint(7, 3));
    QCOMPARE(Node(strLast)->m_chkState, 2);
    QCOMPARE(m_pView->verticalScrollBar()->value(), nScroll);
    QVERIFY(m_pView->selectionModel()->selectedIndexes().isEmpty());
    Press(Qt::Key_Up);
    Press(Qt::Key_Space);
    QCOMPARE(Node(QString::number(10 + nRows - 2))->m_chkState, 2);
    // Afterwards the view scrolls along with the keys again.
    QVERIFY(m_pView->hasAutoScroll());
}

void tst_CFileTreeView::spaceTicks_data()
{
    QTest::addColumn<int>("nBefore");
    QTest::addColumn<int>("nAfter");
    QTest::newRow("unchecked") << 0 << 2;
    QTest::newRow("partial") << 1 << 2;
    QTest::newRow("checked") << 2 << 0;
    QTest::newRow("unknown") << 7 << 0;
}

void tst_CFileTreeView::spaceTicks()
{
    Open({"a/b", "c"});
    QFETCH(int, nBefore);
    QFETCH(int, nAfter);
    Node("a")->m_chkState = nBefore;
    m_pView->setCurrentIndex(At("a"));
    QList<int> listTold;
    connect(m_pView.get(), &CFileTreeView::SignalItemClicked, this,
            [&] { listTold += Node("a")->m_chkState; });
    Press(Qt::Key_Space);
    QCOMPARE(listTold, QList<int>({nAfter}));
    QCOMPARE(Node("a/b")->m_chkState, nAfter);
    QCOMPARE(Node(".")->m_chkState, nAfter == 2 ? 1 : 0);
    QCOMPARE(Node("c")->m_chkState, 0);
    QCOMPARE(m_pView->currentIndex(), At("a"));
}

void tst_CFileTreeView::heldSpaceTicksOnce()
{
    QSignalSpy spy(m_pView.get(), &CFileTreeView::SignalItemClicked);
    // Without a row there is nothing to tick.
    Press(Qt::Key_Space);
    QVERIFY(spy.isEmpty());
    Open({"a"});
    m_pView->setCurrentIndex(At("a"));
    for (int i = 0; i < 4; ++i) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", i > 0);
        QApplication::sendEvent(m_pView.get(), &event);
        QCOMPARE(Node("a")->m_chkState, 2);
    }
    QCOMPARE(spy.count(), 1);
}

void tst_CFileTreeView::spaceAfterALetterTicks()
{
    Open({"alpha", "beta", "beta two"});
    m_pView->setCurrentIndex(At("alpha"));
    QTest::keyClicks(m_pView.get(), "beta");
    QCOMPARE(m_pView->currentIndex(), At("beta"));
    Press(Qt::Key_Space);
    QCOMPARE(m_pView->currentIndex(), At("beta"));
    QCOMPARE(Node("beta")->m_chkState, 2);
    QCOMPARE(Node("beta two")->m_chkState, 0);
}

void tst_CFileTreeView::spaceBringsTheRowIntoSight()
{
    m_pTree->FillNumbered("file %1", 0, 59);
    Open();
    m_pView->setCurrentIndex(At("file 9"));
    m_pView->scrollToTop();
    QVERIFY(!m_pView->viewport()->rect().intersects(m_pView->visualRect(At("file 9"))));
    Press(Qt::Key_Space);
    const QRect row = m_pView->visualRect(At("file 9"));
    QVERIFY(row.top() >= 0 && row.bottom() < m_pView->viewport()->height());
    QCOMPARE(Node("file 9")->m_chkState, 2);
}

void tst_CFileTreeView::keysOpenAndClose()
{
    struct STStep
    {
        Qt::Key enKey;
        QString strCurrent;
        bool bOpen;
    };
    Open({"a/b/c"});
    m_pView->setCurrentIndex(At("a"));
    const QList<STStep> listStep{
        {Qt::Key_Right, "a", true}, {Qt::Key_Right, "a/b", true}, {Qt::Key_Left, "a", true},
        {Qt::Key_Left, "a", false}, {Qt::Key_Plus, "a", true},    {Qt::Key_Minus, "a", false},
        {Qt::Key_Left, ".", false},
    };
    for (const STStep& stStep : listStep) {
        Press(stStep.enKey);
        QCOMPARE(m_pView->currentIndex(), At(stStep.strCurrent));
        QCOMPARE(m_pView->isExpanded(At("a")), stStep.bOpen);
    }
    QCOMPARE(m_pModel->rowCount(At("a/b")), 1);
}

void tst_CFileTreeView::starListsNothing()
{
    Open({"a/b/c/d/e", "z*", "* star"});
    m_pView->setCurrentIndex(At("a"));
    QSignalSpy spy(m_pModel, &CDirModel::rowsInserted);
    Press(Qt::Key_Asterisk);
    QVERIFY(spy.isEmpty());
    QVERIFY(!m_pView->isExpanded(At("a")));
    QCOMPARE(m_pView->currentIndex(), At("* star"));
}

void tst_CFileTreeView::firstFocusHasARow()
{
    Open({"a"});
    QWidget window;
    window.resize(500, 400);
    QPushButton button(&window);
    m_pView->setParent(&window);
    m_pView->setCurrentIndex(QModelIndex());
    button.setFocus();
    m_pView->show();
    QVERIFY(ShowActive(&window));
    QVERIFY(!m_pView->currentIndex().isValid());
    QTest::keyClick(&button, Qt::Key_Tab);
    QVERIFY(m_pView->hasFocus());
    QCOMPARE(m_pView->currentIndex(), At("."));
    Press(Qt::Key_Space);
    QCOMPARE(Node(".")->m_chkState, 2);
    m_pView->setParent(nullptr);
}

void tst_CFileTreeView::rowsThatComeLaterHaveACurrentOne()
{
    m_pTree->Write("a");
    m_pView->setFocus();
    QVERIFY(ShowActive(m_pView.get()));
    QVERIFY(m_pView->hasFocus());
    QVERIFY(!m_pView->currentIndex().isValid());
    m_pView->Parse({m_pTree->Path()});
    QCOMPARE(m_pView->currentIndex(), At("."));
}

/** What the row shows where its box is. */
static QImage BoxOf(const CFileTreeView& view, const QModelIndex& index)
{
    const QRect row = view.visualRect(index);
    return view.viewport()->grab(QRect(row.left(), row.top() + 8, 14, 14)).toImage();
}

void tst_CFileTreeView::tickingRepaintsEveryRow()
{
    auto* pView = new CWatchedView;
    m_pView.reset(pView);
    Open({"a/b"});
    pView->expand(At("a"));
    const QImage unchecked = BoxOf(*pView, At("a/b"));
    // What is still to be painted for other reasons comes first.
    do {
        pView->m_painted = QRegion();
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    } while (!pView->m_painted.isEmpty());
    m_pModel->setData(At("."), Qt::Checked, Qt::CheckStateRole);
    QTRY_VERIFY(pView->m_painted.contains(pView->visualRect(At("a/b"))));
    QVERIFY(pView->m_painted.contains(pView->visualRect(At("."))));
    QVERIFY(BoxOf(*pView, At("a/b")) != unchecked);
    QCOMPARE(BoxOf(*pView, At("a/b")), BoxOf(*pView, At(".")));
}

void tst_CFileTreeView::hugeFoldersTickAtOnce()
{
    // 2,000 open rows and 40,000 entries below them: looking each up among the rows would take seconds.
    Open({"file"});
    CDirNode* pVolume = Node(".");
    m_pView->LendNodes(true);
    for (int i = 0; i < 2000; ++i) {
        auto* pFolder = new CDirNode;
        pVolume->AppendChild(pFolder);
        for (int j = 0; j < 20; ++j) {
            pFolder->AppendChild(new CDirNode);
        }
    }
    m_pView->LendNodes(false);
    QElapsedTimer timer;
    timer.start();
    m_pModel->setData(At("."), Qt::Checked, Qt::CheckStateRole);
    QApplication::processEvents();
    const qint64 nMs = timer.elapsed();
    QCOMPARE(pVolume->Child(2000)->Child(19)->m_chkState, 2);
    QVERIFY2(nMs < 500, qPrintable(QString::number(nMs)));
}

void tst_CFileTreeView::waitCursorWhileListing()
{
    const QSet<Qt::CursorShape> setWait{Qt::WaitCursor};
    m_pTree->Fill({"a/b/c", "files/file"});
    QCOMPARE(ShapesDuring([this] { m_pView->Parse({m_pTree->Path()}); }), setWait);
    QCOMPARE(ShapesDuring([this] { m_pView->Parse({m_pTree->Path()}); }), {});
    m_pView->expand(At("."));
    // An opened folder hands its tick down after the listing, whatever was listed.
    for (const char* pszFolder : {"a", "files"}) {
        QCOMPARE(ShapesDuring([&] { m_pView->expand(At(pszFolder)); }), setWait);
        QCOMPARE(ShapesDuring([&] { m_pView->collapse(At(pszFolder)); }), {});
    }
}

void tst_CFileTreeView::expandingLaysOutAsOftenForManyAsForFew()
{
    auto* pView = new CWatchedView;
    m_pView.reset(pView);
    pView->resize(500, 400);
    m_pTree->FillNumbered("outer/many/folder %1/file", 1, 500);
    Open({"outer/few/folder/file"});
    pView->expand(At("outer"));
    QApplication::processEvents();
    const auto fnLayouts = [&](const QString& strFolder) {
        pView->m_nLayouts = 0;
        pView->expand(At(strFolder));
        QApplication::processEvents();
        pView->grab();
        return pView->m_nLayouts;
    };
    const int nFew = fnLayouts("outer/few");
    QCOMPARE(fnLayouts("outer/many"), nFew);
    QVERIFY2(nFew <= 1, qPrintable(QString::number(nFew)));
    // Each of the folders was listed while its row was in view, and shows its arrow.
    QVERIFY(pView->visualRect(At("outer/many/folder 1")).isValid());
    // No row has brought a widget along.
    QCOMPARE(pView->viewport()->findChildren<QObject*>(), QObjectList());
}

QTEST_MAIN(tst_CFileTreeView)
#include "tst_CFileTreeView.moc"
