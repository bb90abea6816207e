#include "support/CLogCapture.h"
#include "tree/CDirDelegate.h"
#include "tree/CTreeBed.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>

#include <atomic>
#include <thread>

// Right of the rows, as wide as what the frame leaves free on their left less its edge.
static const int ROW_GAP = 9;

/** Whether something darker than the ground of a row is drawn in `rect`. */
static bool HasInk(const QImage& image, const QRect& rect)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            if (qGray(image.pixel(x, y)) < 128) {
                return true;
            }
        }
    }
    return false;
}

class tst_CFileTreeView : public CTreeBed
{
    Q_OBJECT

private slots:
    void initTestCase() { Prepare(); }
    void init() { Make(); }
    void cleanup() { Clear(); }

    void howItIsSetUp();
    void initDataAgain();
    void parseListsTheFirstLevel();
    void parseWorksOnce();
    void parseOfAnEmptyListIsNotTheOne();
    void rowsAreThirtyHigh();
    void rowsOfHostileNamesAreAsHigh();
    void rowsReachAcrossTheView();
    void longNamesDoNotWidenTheColumn();
    void deepRowsScrollSideways();
    void keysMarkTheCurrentRow();
    void expandingListsTwoLevels();
    void arrowsOfFolders_data();
    void arrowsOfFolders();
    void expandingACheckedFolder();
    void pressOnTheBoxTicks_data();
    void pressOnTheBoxTicks();
    void pressOnTheNameSelects();
    void doubleClickOnTheBox();
    void everyClickIsTold();
    void keysGoOnFromTheTickedRow();
    void spaceTicks_data();
    void spaceTicks();
    void spaceWithoutARow();
    void heldSpaceTicksOnce();
    void spaceAfterALetterTicks();
    void spaceBringsTheRowIntoSight();
    void arrowsOpenAndClose();
    void plusAndMinusOpenAndClose();
    void starListsNothing();
    void firstFocusHasARow();
    void rowsThatComeLaterHaveACurrentOne();
    void tickingRepaintsEveryRow();
    void hugeFoldersTickAtOnce();
    void lentViewHasNothingToRead();
    void lentViewShowsItsPicture();
    void lentViewTakesNoInput();
    void lentViewStaysAsItWas();
    void lentViewStaysScrolledWithoutSelection();
    void lentTwice();
    void lentBeforeShown();
    void returnedShowsWhatWasListed();
    void returnedDoesNotTickAnew();
    void parseWhileLentComesLater();
    void workerAndEventsTogether();
    void destroyedWhileLent();
    void waitCursorWhileListing_data();
    void waitCursorWhileListing();
    void waitCursorWhileRootsAreListed();
    void expandingLaysOutAsOftenForManyAsForFew();
    void rowsHaveNoWidgets();

private:
    /** Clicks at `nX` pixels from the left edge of a row. */
    void Click(const QString& strPath, int nX);
    /** Shows the view with the test's volume opened. */
    void Open();
};

void tst_CFileTreeView::Click(const QString& strPath, int nX)
{
    const QRect rect = m_pView->visualRect(At(strPath));
    QTest::mouseClick(m_pView->viewport(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(rect.left() + nX, rect.center().y()));
}

void tst_CFileTreeView::Open()
{
    m_pView->Parse({m_pTree->Path()});
    m_pView->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pView.get()));
    m_pView->expand(At("."));
    m_pView->scrollTo(At("."), QAbstractItemView::PositionAtTop);
}

void tst_CFileTreeView::howItIsSetUp()
{
    QCOMPARE(m_pView->model(), static_cast<QAbstractItemModel*>(m_pModel));
    QVERIFY(m_pView->isHeaderHidden());
    QCOMPARE(m_pView->header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QVERIFY(!m_pView->header()->stretchLastSection());
    QVERIFY(qobject_cast<CDirDelegate*>(m_pView->itemDelegate()));
    QCOMPARE(m_pView->itemDelegate()->parent(), m_pView.get());
    QCOMPARE(m_pView->horizontalScrollBarPolicy(), Qt::ScrollBarAsNeeded);
    QVERIFY(m_pView->uniformRowHeights());
}

void tst_CFileTreeView::initDataAgain()
{
    m_pView->InitData();
    QCOMPARE(m_pView->model(), static_cast<QAbstractItemModel*>(m_pModel));
}

void tst_CFileTreeView::parseListsTheFirstLevel()
{
    m_pTree->Write("folder/inside");
    m_pTree->Write("file");
    const QString strGiven = m_pTree->Path() + "/";
    m_pView->Parse({strGiven});
    QCOMPARE(At(".").data().toString(), strGiven);
    QCOMPARE(m_pModel->rowCount(At(".")), 2);
    QCOMPARE(m_pModel->rowCount(At("folder")), 0);
    QVERIFY(!m_pView->isExpanded(At(".")));
}

void tst_CFileTreeView::parseWorksOnce()
{
    m_pTree->Write("a/file");
    m_pTree->Write("b/file");
    m_pView->Parse({m_pTree->Path("a"), m_pTree->Path("b")});
    const int nRows = m_pModel->rowCount();
    QCOMPARE(m_pModel->index(nRows - 2, 0).data().toString(), m_pTree->Path("a"));
    QCOMPARE(m_pModel->index(nRows - 1, 0).data().toString(), m_pTree->Path("b"));
    QSignalSpy spy(m_pModel, &CDirModel::rowsInserted);
    m_pView->Parse({m_pTree->Path()});
    m_pView->Parse({});
    QCOMPARE(m_pModel->rowCount(), nRows);
    QVERIFY(spy.isEmpty());
}

void tst_CFileTreeView::parseOfAnEmptyListIsNotTheOne()
{
    const int nRows = m_pModel->rowCount();
    m_pView->Parse({});
    QCOMPARE(m_pModel->rowCount(), nRows);
    m_pView->Parse({m_pTree->Path()});
    QCOMPARE(m_pModel->rowCount(), nRows + 1);
}

void tst_CFileTreeView::rowsAreThirtyHigh()
{
    m_pTree->Write("file");
    Open();
    QCOMPARE(m_pView->visualRect(At("file")).height(), 30);
    QCOMPARE(m_pView->visualRect(At("file")).top() - m_pView->visualRect(At(".")).top(), 30);
}

void tst_CFileTreeView::rowsOfHostileNamesAreAsHigh()
{
    m_pTree->WriteBytesName("1\n2\n3\n4");
    m_pTree->WriteBytesName("<h1>2<br>x");
    m_pTree->WriteBytesName("3 \xff\xfe");
    Open();
    for (int i = 0; i < 3; ++i) {
        const QModelIndex index = m_pModel->index(i, 0, At("."));
        QCOMPARE(m_pView->visualRect(index).height(), 30);
        QCOMPARE(m_pView->visualRect(index).top(), m_pView->visualRect(At(".")).top() + 30 * (i + 1));
    }
    m_pView->grab();
}

void tst_CFileTreeView::rowsReachAcrossTheView()
{
    m_pTree->Write("file");
    Open();
    for (const int nWidth : {700, 500, 900}) {
        m_pView->resize(nWidth, 300);
        QCOMPARE(m_pView->columnWidth(0), m_pView->viewport()->width() - ROW_GAP);
        QCOMPARE(m_pView->visualRect(At("file")).right(), m_pView->columnWidth(0) - 1);
    }
}

void tst_CFileTreeView::longNamesDoNotWidenTheColumn()
{
    m_pTree->Write(QString(250, 'W'));
    m_pTree->Write("b");
    Open();
    m_pView->resize(600, 300);
    QCOMPARE(m_pView->columnWidth(0), m_pView->viewport()->width() - ROW_GAP);
    QCOMPARE(m_pView->horizontalScrollBar()->maximum(), 0);
    // Elided in the middle: both ends of the row show letters, the very edge does not.
    const QImage image = m_pView->viewport()->grab(m_pView->visualRect(At(QString(250, 'W')))).toImage();
    QVERIFY(HasInk(image, QRect(image.width() - 30, 0, 30, image.height())));
}

void tst_CFileTreeView::deepRowsScrollSideways()
{
    QString strPath("a");
    for (int n = 0; n < 12; ++n) {
        strPath += "/a";
    }
    m_pTree->Write(strPath + "/file");
    Open();
    m_pView->resize(600, 300);
    QString strOpen("a");
    for (int n = 0; n < 13; ++n) {
        m_pView->expand(At(strOpen));
        strOpen += "/a";
    }
    const QModelIndex deepest = At(strPath + "/file");
    QVERIFY(deepest.isValid());
    QCOMPARE(m_pView->visualRect(deepest).width(), 450);
    QVERIFY(m_pView->horizontalScrollBar()->maximum() > 0);
    m_pView->collapse(At("a"));
    QCOMPARE(m_pView->columnWidth(0), m_pView->viewport()->width() - ROW_GAP);
}

void tst_CFileTreeView::keysMarkTheCurrentRow()
{
    m_pTree->Write("file");
    Open();
    m_pView->activateWindow();
    m_pView->setFocus();
    QTRY_VERIFY(m_pView->hasFocus());
    const auto IsMarked = [this](const QModelIndex& index) {
        const QRect rect = m_pView->visualRect(index);
        const QImage image = m_pView->viewport()->grab().toImage();
        return image.pixelColor(1, rect.center().y()) == QColor("#ff7e17");
    };
    QVERIFY(!IsMarked(m_pView->currentIndex()));
    QTest::keyClick(m_pView.get(), Qt::Key_Down);
    QCOMPARE(m_pView->currentIndex(), At("file"));
    QVERIFY(IsMarked(At("file")));
    QVERIFY(!IsMarked(At(".")));
    Click(".", 7);
    QVERIFY(!IsMarked(At("file")));
    QVERIFY(!IsMarked(At(".")));
    QTest::keyClick(m_pView.get(), Qt::Key_Up);
    QVERIFY(IsMarked(At(".")));
    m_pView->clearFocus();
    QVERIFY(!IsMarked(At(".")));
    m_pView->setFocus(Qt::TabFocusReason);
    QVERIFY(IsMarked(At(".")));
}

void tst_CFileTreeView::expandingListsTwoLevels()
{
    m_pTree->Write("a/b/c/d");
    Open();
    QCOMPARE(m_pModel->rowCount(At("a")), 1);
    QCOMPARE(m_pModel->rowCount(At("a/b")), 0);
    m_pView->expand(At("a"));
    QCOMPARE(m_pModel->rowCount(At("a/b")), 1);
    QCOMPARE(m_pModel->rowCount(At("a/b/c")), 0);
    m_pView->collapse(At("a"));
    QCOMPARE(m_pModel->rowCount(At("a/b")), 1);
}

void tst_CFileTreeView::arrowsOfFolders_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<bool>("arrow");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("one") << 1 << true;
    QTest::newRow("two") << 2 << true;
    QTest::newRow("three") << 3 << true;
}

void tst_CFileTreeView::arrowsOfFolders()
{
    QFETCH(int, entries);
    m_pTree->MkDir("folder");
    for (int i = 0; i < entries; ++i) {
        m_pTree->Write(QStringLiteral("folder/%1").arg(i));
    }
    m_pTree->Write("plain");
    Open();
    // Left of the row's own rectangle, where the arrow is, a plain file shows nothing.
    const auto fnArrow = [this](const QString& strPath) {
        const QRect row = m_pView->visualRect(At(strPath));
        return m_pView->viewport()->grab(QRect(row.left() - 20, row.top(), 20, row.height())).toImage();
    };
    QTEST(fnArrow("folder") != fnArrow("plain"), "arrow");
}

void tst_CFileTreeView::expandingACheckedFolder()
{
    m_pTree->Write("a/b/c");
    Open();
    Click("a", 7);
    m_pView->expand(At("a"));
    QCOMPARE(Node("a/b")->m_chkState, 2);
    QCOMPARE(Node("a/b/c")->m_chkState, 2);
}

void tst_CFileTreeView::pressOnTheBoxTicks_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("state");
    QTest::newRow("left edge") << 0 << 0;
    QTest::newRow("one in") << 1 << 2;
    QTest::newRow("middle") << 7 << 2;
    QTest::newRow("fifteen in") << 15 << 2;
    QTest::newRow("sixteen in") << 16 << 0;
    QTest::newRow("icon") << 25 << 0;
    QTest::newRow("name") << 60 << 0;
}

void tst_CFileTreeView::pressOnTheBoxTicks()
{
    m_pTree->Write("a/b");
    Open();
    QFETCH(int, x);
    Click("a", x);
    QTEST(Node("a")->m_chkState, "state");
    QTEST(Node("a/b")->m_chkState, "state");
    QTEST(Node(".")->m_chkState, "state");
    QCOMPARE(m_pModel->HasCheckedEntry(), Node("a")->m_chkState != 0);
}

void tst_CFileTreeView::pressOnTheNameSelects()
{
    m_pTree->Write("a");
    Open();
    Click("a", 80);
    QVERIFY(m_pView->selectionModel()->isSelected(At("a")));
    QCOMPARE(Node("a")->m_chkState, 0);
}

void tst_CFileTreeView::doubleClickOnTheBox()
{
    m_pTree->Write("a/b");
    Open();
    QList<bool> listTold;
    connect(m_pView.get(), &CFileTreeView::SignalItemClicked, this,
            [&] { listTold += m_pModel->HasCheckedEntry(); });
    QWidget* pViewport = m_pView->viewport();
    const QRect rect = m_pView->visualRect(At("a"));
    const QPoint pos(rect.left() + 7, rect.center().y());
    QTest::mousePress(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
    QTest::mouseRelease(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
    QCOMPARE(Node("a")->m_chkState, 2);
    QMouseEvent event(QEvent::MouseButtonDblClick, pos, pViewport->mapToGlobal(pos), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pViewport, &event);
    QTest::mouseRelease(pViewport, Qt::LeftButton, Qt::NoModifier, pos);
    QCOMPARE(Node("a")->m_chkState, 0);
    QVERIFY(!m_pView->isExpanded(At("a")));
    // Whoever listens was told of both, each time with the new tick in place.
    QCOMPARE(listTold, QList<bool>({true, false}));
}

void tst_CFileTreeView::everyClickIsTold()
{
    m_pTree->Write("a");
    Open();
    QSignalSpy spy(m_pView.get(), &CFileTreeView::SignalItemClicked);
    Click("a", 7);
    QCOMPARE(spy.count(), 1);
    Click("a", 80);
    QCOMPARE(spy.count(), 2);
    QTest::mouseClick(m_pView->viewport(), Qt::LeftButton, Qt::NoModifier,
                      m_pView->viewport()->rect().bottomLeft());
    QCOMPARE(spy.count(), 2);
}

void tst_CFileTreeView::keysGoOnFromTheTickedRow()
{
    for (int i = 10; i < 40; ++i) {
        m_pTree->Write(QStringLiteral("%1").arg(i));
    }
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
    QTest::keyClick(m_pView.get(), Qt::Key_Up);
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    QCOMPARE(Node(QString::number(10 + nRows - 2))->m_chkState, 2);
    // Afterwards the view scrolls along with the keys again.
    QVERIFY(m_pView->hasAutoScroll());
}

void tst_CFileTreeView::spaceTicks_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("unchecked") << 0 << 2;
    QTest::newRow("partial") << 1 << 2;
    QTest::newRow("checked") << 2 << 0;
    QTest::newRow("unknown") << 7 << 0;
}

void tst_CFileTreeView::spaceTicks()
{
    m_pTree->Write("a/b");
    m_pTree->Write("c");
    Open();
    QFETCH(int, before);
    QFETCH(int, after);
    Node("a")->m_chkState = before;
    m_pView->setCurrentIndex(At("a"));
    QList<int> listTold;
    connect(m_pView.get(), &CFileTreeView::SignalItemClicked, this,
            [&] { listTold += Node("a")->m_chkState; });
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    QCOMPARE(listTold, QList<int>({after}));
    QCOMPARE(Node("a/b")->m_chkState, after);
    QCOMPARE(Node(".")->m_chkState, after == 2 ? 1 : 0);
    QCOMPARE(Node("c")->m_chkState, 0);
    QCOMPARE(m_pView->currentIndex(), At("a"));
}

void tst_CFileTreeView::spaceWithoutARow()
{
    QSignalSpy spy(m_pView.get(), &CFileTreeView::SignalItemClicked);
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    QVERIFY(spy.isEmpty());
    QVERIFY(!m_pModel->HasCheckedEntry());
}

void tst_CFileTreeView::heldSpaceTicksOnce()
{
    m_pTree->Write("a");
    Open();
    m_pView->setCurrentIndex(At("a"));
    QSignalSpy spy(m_pView.get(), &CFileTreeView::SignalItemClicked);
    for (int i = 0; i < 4; ++i) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ", i > 0);
        QApplication::sendEvent(m_pView.get(), &event);
        QCOMPARE(Node("a")->m_chkState, 2);
    }
    QCOMPARE(spy.count(), 1);
}

void tst_CFileTreeView::spaceAfterALetterTicks()
{
    for (const char* pName : {"alpha", "beta", "beta two"}) {
        m_pTree->Write(pName);
    }
    Open();
    m_pView->setCurrentIndex(At("alpha"));
    QTest::keyClicks(m_pView.get(), "beta");
    QCOMPARE(m_pView->currentIndex(), At("beta"));
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    QCOMPARE(m_pView->currentIndex(), At("beta"));
    QCOMPARE(Node("beta")->m_chkState, 2);
    QCOMPARE(Node("beta two")->m_chkState, 0);
}

void tst_CFileTreeView::spaceBringsTheRowIntoSight()
{
    for (int i = 0; i < 60; ++i) {
        m_pTree->Write(QStringLiteral("file %1").arg(i));
    }
    Open();
    m_pView->setCurrentIndex(At("file 9"));
    m_pView->scrollToTop();
    QVERIFY(!m_pView->viewport()->rect().intersects(m_pView->visualRect(At("file 9"))));
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    const QRect row = m_pView->visualRect(At("file 9"));
    QVERIFY(row.top() >= 0 && row.bottom() < m_pView->viewport()->height());
    QCOMPARE(Node("file 9")->m_chkState, 2);
}

void tst_CFileTreeView::arrowsOpenAndClose()
{
    m_pTree->Write("a/b/c");
    Open();
    m_pView->setCurrentIndex(At("a"));
    QTest::keyClick(m_pView.get(), Qt::Key_Right);
    QVERIFY(m_pView->isExpanded(At("a")));
    QCOMPARE(m_pModel->rowCount(At("a/b")), 1);
    QTest::keyClick(m_pView.get(), Qt::Key_Right);
    QCOMPARE(m_pView->currentIndex(), At("a/b"));
    QTest::keyClick(m_pView.get(), Qt::Key_Left);
    QCOMPARE(m_pView->currentIndex(), At("a"));
    QTest::keyClick(m_pView.get(), Qt::Key_Left);
    QVERIFY(!m_pView->isExpanded(At("a")));
    QTest::keyClick(m_pView.get(), Qt::Key_Left);
    QCOMPARE(m_pView->currentIndex(), At("."));
}

void tst_CFileTreeView::plusAndMinusOpenAndClose()
{
    m_pTree->Write("a/b");
    Open();
    m_pView->setCurrentIndex(At("a"));
    QTest::keyClick(m_pView.get(), Qt::Key_Plus);
    QVERIFY(m_pView->isExpanded(At("a")));
    QTest::keyClick(m_pView.get(), Qt::Key_Minus);
    QVERIFY(!m_pView->isExpanded(At("a")));
}

void tst_CFileTreeView::starListsNothing()
{
    m_pTree->Write("a/b/c/d/e");
    m_pTree->Write("z*");
    m_pTree->Write("* star");
    Open();
    m_pView->setCurrentIndex(At("a"));
    QSignalSpy spy(m_pModel, &CDirModel::rowsInserted);
    QTest::keyClick(m_pView.get(), Qt::Key_Asterisk);
    QVERIFY(spy.isEmpty());
    QVERIFY(!m_pView->isExpanded(At("a")));
    QCOMPARE(m_pView->currentIndex(), At("* star"));
}

void tst_CFileTreeView::firstFocusHasARow()
{
    m_pTree->Write("a");
    Open();
    QWidget window;
    window.resize(500, 400);
    QPushButton button(&window);
    m_pView->setParent(&window);
    m_pView->setCurrentIndex(QModelIndex());
    button.setFocus();
    window.show();
    m_pView->show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(!m_pView->currentIndex().isValid());
    QTest::keyClick(&button, Qt::Key_Tab);
    QVERIFY(m_pView->hasFocus());
    QCOMPARE(m_pView->currentIndex(), m_pModel->index(0, 0));
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    QCOMPARE(m_pModel->nodeFromIndex(m_pModel->index(0, 0))->m_chkState, 2);
    m_pView->setParent(nullptr);
}

void tst_CFileTreeView::rowsThatComeLaterHaveACurrentOne()
{
    m_pTree->Write("a");
    m_pView->show();
    m_pView->setFocus();
    m_pView->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_pView.get()));
    QVERIFY(m_pView->hasFocus());
    QVERIFY(!m_pView->currentIndex().isValid());
    m_pView->Parse({m_pTree->Path()});
    QCOMPARE(m_pView->currentIndex(), At("."));
}

/** What the row shows where its box is. */
static QImage BoxOf(const CFileTreeView& view, const QModelIndex& index)
{
    const QRect row = view.visualRect(index);
    return const_cast<CFileTreeView&>(view)
        .viewport()
        ->grab(QRect(row.left(), row.top() + 8, 14, 14))
        .toImage();
}

void tst_CFileTreeView::tickingRepaintsEveryRow()
{
    m_pTree->Write("a/b");
    Open();
    m_pView->expand(At("a"));
    const QImage unchecked = BoxOf(*m_pView, At("a/b"));
    struct CPaintCount : QObject
    {
        bool eventFilter(QObject*, QEvent* pEvent) override
        {
            if (pEvent->type() == QEvent::Paint) {
                m_region += static_cast<QPaintEvent*>(pEvent)->region();
            }
            return false;
        }
        QRegion m_region;
    } count;
    // What is still to be painted for other reasons comes first.
    m_pView->viewport()->installEventFilter(&count);
    do {
        count.m_region = QRegion();
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    } while (!count.m_region.isEmpty());
    m_pModel->setData(At("."), Qt::Checked, Qt::CheckStateRole);
    QTRY_VERIFY(count.m_region.contains(m_pView->visualRect(At("a/b"))));
    QVERIFY(count.m_region.contains(m_pView->visualRect(At("."))));
    m_pView->viewport()->removeEventFilter(&count);
    QVERIFY(BoxOf(*m_pView, At("a/b")) != unchecked);
    QCOMPARE(BoxOf(*m_pView, At("a/b")), BoxOf(*m_pView, At(".")));
}

void tst_CFileTreeView::hugeFoldersTickAtOnce()
{
    // 2,000 open rows and 40,000 entries below them: looking each up among the rows would take seconds.
    m_pTree->Write("file");
    Open();
    m_pView->LendNodes(true);
    CDirNode* pVolume = m_pModel->GetRootNode()->Child(0);
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

void tst_CFileTreeView::lentViewHasNothingToRead()
{
    m_pTree->Write("a/b");
    Open();
    m_pView->LendNodes(true);
    QVERIFY(!m_pView->model());
    m_pView->LendNodes(false);
    QCOMPARE(m_pView->model(), static_cast<QAbstractItemModel*>(m_pModel));
}

void tst_CFileTreeView::lentViewShowsItsPicture()
{
    for (int i = 0; i < 50; ++i) {
        m_pTree->Write(QStringLiteral("file %1").arg(i));
    }
    Open();
    m_pView->expand(At("."));
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

void tst_CFileTreeView::lentViewTakesNoInput()
{
    m_pTree->Write("a/b");
    Open();
    const QRect row = m_pView->visualRect(At("a"));
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
        QTest::keyClick(m_pView.get(), enKey);
    }
    m_pView->LendNodes(false);
    QVERIFY(spyClick.isEmpty());
    QVERIFY(spyExpand.isEmpty());
    QCOMPARE(Node("a")->m_chkState, 0);
    QVERIFY(!m_pView->isExpanded(At("a")));
    m_pView->setCurrentIndex(At("a"));
    m_pView->LendNodes(true);
    m_pView->ToggleTick(At("a"));
    QTest::keyClick(m_pView.get(), Qt::Key_Space);
    m_pView->LendNodes(false);
    QVERIFY(spyClick.isEmpty());
    QCOMPARE(Node("a")->m_chkState, 0);
    Click("a", 7);
    QCOMPARE(Node("a")->m_chkState, 2);
    QCOMPARE(spyClick.count(), 1);
}

void tst_CFileTreeView::lentViewStaysAsItWas()
{
    for (int i = 0; i < 60; ++i) {
        m_pTree->Write(QStringLiteral("folder %1/inner/file").arg(i));
    }
    Open();
    // Narrower than the least width of a row, so that there is something to scroll sideways.
    m_pView->resize(400, 300);
    m_pView->expand(At("folder 10"));
    m_pView->expand(At("folder 50"));
    m_pView->expand(m_pModel->index(0, 0, At("folder 50")));
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
    QVERIFY(m_pView->isExpanded(m_pModel->index(0, 0, At("folder 50"))));
    QCOMPARE(m_pView->selectionModel(), pSelection);
    QCOMPARE(m_pView->currentIndex(), At("folder 7"));
    QCOMPARE(m_pView->selectionModel()->selectedIndexes(), QModelIndexList({At("folder 7")}));
    QCOMPARE(m_pView->verticalScrollBar()->value(), 15);
    QCOMPARE(m_pView->horizontalScrollBar()->value(), 40);
    QCOMPARE(m_pView->grab().toImage(), before);
    // None of the selection models made on the way is left behind.
    QCOMPARE(m_pView->findChildren<QItemSelectionModel*>().size(), 1);
}

void tst_CFileTreeView::lentViewStaysScrolledWithoutSelection()
{
    for (int i = 0; i < 60; ++i) {
        m_pTree->Write(QStringLiteral("file %1").arg(i));
    }
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

void tst_CFileTreeView::lentTwice()
{
    m_pTree->Write("a");
    Open();
    const int nChildren = m_pView->children().size();
    for (int i = 0; i < 2; ++i) {
        m_pView->LendNodes(true);
        m_pView->LendNodes(true);
        QVERIFY(!m_pView->model());
        m_pView->LendNodes(false);
        m_pView->LendNodes(false);
        QVERIFY(m_pView->isExpanded(At(".")));
    }
    QCOMPARE(m_pView->children().size(), nChildren);
}

void tst_CFileTreeView::lentBeforeShown()
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

void tst_CFileTreeView::returnedShowsWhatWasListed()
{
    m_pTree->Write("a/b/c/d");
    Open();
    m_pView->expand(At("a"));
    Click("a", 7);
    QCOMPARE(m_pModel->rowCount(At("a/b/c")), 0);
    m_pView->LendNodes(true);
    Node("a/b/c")->LoadChild();
    m_pView->LendNodes(false);
    m_pView->expand(At("a/b"));
    m_pView->expand(At("a/b/c"));
    QVERIFY(m_pView->visualRect(At("a/b/c/d")).isValid());
    QCOMPARE(Node("a/b/c/d")->m_chkState, 2);
    QCOMPARE(m_pView->indexBelow(At("a/b/c")), At("a/b/c/d"));
}

void tst_CFileTreeView::returnedDoesNotTickAnew()
{
    m_pTree->Write("a/b");
    Open();
    m_pView->expand(At("a"));
    Click("a/b", 7);
    // A state that only the worker's side knows: handing ticks down again would wipe it out.
    m_pView->LendNodes(true);
    Node("a/b")->m_chkState = Qt::Unchecked;
    m_pView->LendNodes(false);
    QCOMPARE(Node("a")->m_chkState, 2);
    QCOMPARE(Node("a/b")->m_chkState, 0);
}

void tst_CFileTreeView::parseWhileLentComesLater()
{
    const int nRows = m_pModel->rowCount();
    m_pView->LendNodes(true);
    m_pView->Parse({m_pTree->Path()});
    QCOMPARE(m_pModel->rowCount(), nRows);
    m_pView->LendNodes(false);
    QCOMPARE(m_pModel->rowCount(), nRows + 1);
    QCOMPARE(At(".").data().toString(), m_pTree->Path());
    m_pView->Parse({m_pTree->Path("other")});
    QCOMPARE(m_pModel->rowCount(), nRows + 1);
}

/** Lists every folder below `pNode`, as the size worker does. */
static void ListAll(CDirNode* pNode)
{
    if (pNode->m_bDir && pNode->m_listChild.isEmpty()) {
        pNode->LoadChild();
    }
    for (CDirNode* pChild : qAsConst(pNode->m_listChild)) {
        ListAll(pChild);
    }
}

void tst_CFileTreeView::workerAndEventsTogether()
{
    for (int i = 0; i < 100; ++i) {
        m_pTree->Write(QStringLiteral("folder %1/a/b/c").arg(i));
    }
    CLogCapture capture;
    Open();
    Click(".", 7);
    m_pView->LendNodes(true);
    // Not a QThread: the race checker knows that what a std::thread did comes before its join.
    std::atomic<bool> bRunning{true};
    std::thread worker([this, &bRunning] {
        ListAll(m_pModel->GetRootNode());
        bRunning = false;
    });
    int nTurn = 0;
    while (bRunning || nTurn < 20) {
        ++nTurn;
        m_pView->resize(500 + nTurn % 7, 400 + nTurn % 5);
        QTest::mouseMove(m_pView.get(), QPoint(30 + nTurn % 50, 30 + nTurn % 90));
        QTest::keyClick(m_pView.get(), nTurn % 2 ? Qt::Key_Down : Qt::Key_Right);
        m_pView->update();
        m_pView->viewport()->update();
        m_pView->setFont(QFont("Sans", 10 + nTurn % 2));
        QApplication::processEvents();
    }
    worker.join();
    m_pView->LendNodes(false);
    m_pView->grab();
    QCOMPARE(Node("folder 99/a/b/c")->m_chkState, 2);
    const QStringList listLine = capture.Lines().filter("QAbstractItemModel");
    QCOMPARE(listLine, QStringList());
}

void tst_CFileTreeView::destroyedWhileLent()
{
    m_pTree->Write("a/b");
    Open();
    Click("a", 80);
    m_pView->LendNodes(true);
    m_pView.reset();
    QCOMPARE(m_pModel->rowCount(At("a")), 1);
}

/** The pointer's shape that stands above all others now; a plain arrow when there is none. */
static Qt::CursorShape OverrideShape()
{
    const QCursor* pCursor = QGuiApplication::overrideCursor();
    return pCursor ? pCursor->shape() : Qt::ArrowCursor;
}

void tst_CFileTreeView::waitCursorWhileListing_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("something to list") << "a";
    QTest::newRow("nothing to list") << "files";
}

void tst_CFileTreeView::waitCursorWhileListing()
{
    m_pTree->Write("a/b/c");
    m_pTree->Write("files/file");
    Open();
    QFETCH(QString, folder);
    QList<Qt::CursorShape> listShape;
    const auto fnNote = [&] { listShape += OverrideShape(); };
    // An opened folder hands its tick down after the listing, whatever was listed.
    connect(m_pModel, &CDirModel::rowsInserted, this, fnNote);
    connect(m_pModel, &CDirModel::dataChanged, this, fnNote);
    m_pView->expand(At(folder));
    disconnect(m_pModel, nullptr, this, nullptr);
    QVERIFY(!listShape.isEmpty());
    QCOMPARE(listShape.count(Qt::WaitCursor), listShape.size());
    QVERIFY(!QGuiApplication::overrideCursor());
    m_pView->collapse(At(folder));
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_CFileTreeView::waitCursorWhileRootsAreListed()
{
    m_pTree->Write("a");
    QList<Qt::CursorShape> listShape;
    connect(m_pModel, &CDirModel::rowsInserted, this, [&] { listShape += OverrideShape(); });
    m_pView->Parse({m_pTree->Path()});
    disconnect(m_pModel, nullptr, this, nullptr);
    QCOMPARE(listShape, QList<Qt::CursorShape>({Qt::WaitCursor, Qt::WaitCursor}));
    QVERIFY(!QGuiApplication::overrideCursor());
    m_pView->Parse({m_pTree->Path()});
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_CFileTreeView::expandingLaysOutAsOftenForManyAsForFew()
{
    class CCountingView : public CFileTreeView
    {
    public:
        void doItemsLayout() override
        {
            ++m_nLayouts;
            CFileTreeView::doItemsLayout();
        }
        int m_nLayouts = 0;
    };
    for (int i = 0; i < 500; ++i) {
        m_pTree->Write(QStringLiteral("outer/many/folder %1/file").arg(i));
    }
    m_pTree->Write("outer/few/folder/file");
    m_pView.reset();
    auto pView = std::make_unique<CCountingView>();
    pView->resize(500, 400);
    pView->Parse({m_pTree->Path()});
    pView->show();
    QVERIFY(QTest::qWaitForWindowExposed(pView.get()));
    pView->expand(At("."));
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
    QVERIFY(pView->visualRect(At("outer/many/folder 0")).isValid());
}

void tst_CFileTreeView::rowsHaveNoWidgets()
{
    for (int i = 0; i < 200; ++i) {
        m_pTree->Write(QStringLiteral("a/file %1").arg(i));
    }
    Open();
    const int nBefore = m_pView->viewport()->findChildren<QObject*>().size();
    m_pView->expand(At("a"));
    QApplication::processEvents();
    m_pView->grab();
    QCOMPARE(m_pView->viewport()->findChildren<QObject*>().size(), nBefore);
    QCOMPARE(nBefore, 0);
}

QTEST_MAIN(tst_CFileTreeView)
#include "tst_CFileTreeView.moc"
