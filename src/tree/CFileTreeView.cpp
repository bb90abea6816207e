#include "tree/CFileTreeView.h"

#include "tree/CDirDelegate.h"
#include "tree/CDirModel.h"
#include "tree/CFileTreeAccess.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>

// Right of the rows, as much as the frame around the view leaves free on their left.
static const int ROW_GAP = 9;
// Rows looked at for the deepest one: those on the screen and many more, but never all.
static const int MEASURED_ROWS = 1000;
// The bar before the current row.
static const int MARK_WIDTH = 3;
static const int MARK_MARGIN = 6;

/** Lies over the view while its nodes are lent, shows what it last looked like and swallows the mouse. */
class CViewPicture : public QWidget
{
public:
    CViewPicture(const QPixmap& pixmap, QWidget* parent)
        : QWidget(parent)
        , m_pixmap(pixmap)
    {
        setAttribute(Qt::WA_NoMousePropagation);
        setAttribute(Qt::WA_OpaquePaintEvent);
        setGeometry(parent->rect());
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().base());
        painter.drawPixmap(0, 0, m_pixmap);
    }

private:
    const QPixmap m_pixmap;
};

/** Shows that the program is busy, from its making to its end. */
class CWaitCursor
{
public:
    CWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};

static void CollectExpanded(const QTreeView& view, const QModelIndex& parent,
                            QVector<QPersistentModelIndex>& listExpanded)
{
    const QAbstractItemModel& model = *view.model();
    for (int i = 0; i < model.rowCount(parent); ++i) {
        const QModelIndex index = model.index(i, 0, parent);
        if (!model.hasChildren(index)) {
            continue;
        }
        if (view.isExpanded(index)) {
            listExpanded.append(index);
        }
        // Folders below a closed one may be open too, and are so again once it is opened.
        CollectExpanded(view, index, listExpanded);
    }
}

CFileTreeView::CFileTreeView(QWidget* parent)
    : QTreeView(parent)
{
    CFileTreeAccess::Install();
    InitData();
    InitConnect();
    InitView();
}

CFileTreeView::~CFileTreeView() = default;

void CFileTreeView::InitData()
{
    m_pDirModel = CDirModel::GetInstence();
    setModel(m_pDirModel);
}

void CFileTreeView::InitConnect()
{
    // The model lists on this thread, and a large folder or a slow disk takes its
    // time: the pointer says so. Slots are called in the order of their connection.
    connect(this, &QTreeView::expanded, this, [this] { m_pWaitCursor = std::make_unique<CWaitCursor>(); });
    connect(this, &QTreeView::expanded, m_pDirModel, &CDirModel::SlotExpanded);
    connect(this, &QTreeView::expanded, this, [this] { m_pWaitCursor.reset(); });
    connect(this, &QTreeView::collapsed, m_pDirModel, &CDirModel::SlotCollapsed);
    connect(
        this, &QTreeView::clicked, this,
        [this](const QModelIndex& index) {
            KeysGoOnFrom(index);
            emit SignalItemClicked();
        },
        Qt::DirectConnection);
    const auto fnTell = [this](const QModelIndex& index) {
        if (const CFileTreeAccess* pAccess = Reader()) {
            pAccess->TellExpanded(index);
        }
    };
    connect(this, &QTreeView::expanded, this, fnTell);
    connect(this, &QTreeView::collapsed, this, fnTell);
}

void CFileTreeView::InitView()
{
    header()->setStretchLastSection(true);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    header()->setStretchLastSection(false);
    setItemDelegate(new CDirDelegate(this));
    setHeaderHidden(true);
    resizeColumnToContents(0);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // All rows are one line high; told so, the view measures one row instead of 200,000.
    setUniformRowHeights(true);
    setTextElideMode(Qt::ElideMiddle);
    viewport()->setAttribute(Qt::WA_Hover);
}

void CFileTreeView::Parse(QStringList roots)
{
    if (m_bLent) {
        m_listLateRoot = roots;
        return;
    }
    if (!m_listRoot.isEmpty()) {
        return;
    }
    const CWaitCursor cursor;
    m_listRoot = roots;
    for (const QString& strPath : qAsConst(m_listRoot)) {
        m_pDirModel->Parse(strPath);
    }
    m_pDirModel->LoadGrandChild(m_pDirModel->parent(m_pDirModel->index(0, 0)));
    if (hasFocus()) {
        EnsureCurrentRow();
    }
}

void CFileTreeView::LendNodes(bool bLent)
{
    if (bLent == m_bLent) {
        return;
    }
    m_bLent = bLent;
    if (bLent) {
        DetachModel();
        return;
    }
    AttachModel();
    if (!m_listLateRoot.isEmpty()) {
        Parse(m_listLateRoot);
        m_listLateRoot.clear();
    }
}

void CFileTreeView::ToggleTick(const QModelIndex& index)
{
    if (m_bLent || !index.isValid()) {
        return;
    }
    scrollTo(index);
    model()->setData(index, CDirDelegate::NextState(index.data(Qt::CheckStateRole).toInt()),
                     Qt::CheckStateRole);
    emit SignalItemClicked();
}

// All rows are of one height, so places and heights are the same thing.

int CFileTreeView::ShownPlace(const QModelIndex& index) const
{
    if (!model() || index.model() != model()) {
        return -1;
    }
    const QRect rect = visualRect(index);
    return rect.height() > 0 ? (rect.top() + verticalOffset()) / rect.height() : -1;
}

QModelIndex CFileTreeView::ShownAt(int nPlace) const
{
    const int nHeight = model() ? rowHeight(model()->index(0, 0)) : 0;
    if (nPlace < 0 || nHeight <= 0) {
        return QModelIndex();
    }
    return indexAt(QPoint(columnViewportPosition(0), nPlace * nHeight - verticalOffset()));
}

int CFileTreeView::ShownCount() const
{
    if (!model()) {
        return 0;
    }
    QModelIndex last;
    for (int nRows = model()->rowCount(); nRows > 0; nRows = isExpanded(last) ? model()->rowCount(last) : 0) {
        last = model()->index(nRows - 1, 0, last);
    }
    return ShownPlace(last) + 1;
}

void CFileTreeView::EnsureCurrentRow()
{
    if (!m_bLent && !currentIndex().isValid()) {
        selectionModel()->setCurrentIndex(m_pDirModel->index(0, 0), QItemSelectionModel::NoUpdate);
    }
}

void CFileTreeView::DetachModel()
{
    m_pPicture = new CViewPicture(grab(), this);
    m_pPicture->show();
    m_nScrollX = horizontalScrollBar()->value();
    m_nScrollY = verticalScrollBar()->value();
    m_listExpanded.clear();
    CollectExpanded(*this, QModelIndex(), m_listExpanded);
    // A view without model can read no node, whatever makes it look: a repaint,
    // a resize, a key, the pointer, a screen reader, a late layout.
    m_pSelection = selectionModel();
    ExchangeModel(nullptr);
}

void CFileTreeView::ExchangeModel(QAbstractItemModel* pModel)
{
    setModel(pModel);
    // The header makes itself a selection model each time, takes the view's
    // instead at once, and leaves its own lying about.
    const auto listOwn = header()->findChildren<QItemSelectionModel*>(QString(), Qt::FindDirectChildrenOnly);
    for (QItemSelectionModel* pOwn : listOwn) {
        if (pOwn != header()->selectionModel()) {
            delete pOwn;
        }
    }
}

void CFileTreeView::AttachModel()
{
    delete selectionModel();
    ExchangeModel(m_pDirModel);
    {
        // The folders were listed and ticked when the user opened them. They are
        // open before the current row is back: the view would open those above it.
        const QSignalBlocker blocker(this);
        for (const QPersistentModelIndex& index : qAsConst(m_listExpanded)) {
            setExpanded(index, true);
        }
        if (m_pSelection) {
            delete selectionModel();
            setSelectionModel(m_pSelection);
        }
    }
    m_listExpanded.clear();
    doItemsLayout();
    horizontalScrollBar()->setValue(m_nScrollX);
    verticalScrollBar()->setValue(m_nScrollY);
    delete m_pPicture;
}

int CFileTreeView::sizeHintForColumn(int nColumn) const
{
    if (nColumn != 0 || !model()) {
        return QTreeView::sizeHintForColumn(nColumn);
    }
    // As wide as the view, so that a row's ground reaches across it and a long
    // name is elided instead of widening everything; wider only when the folders
    // are nested so deep that their names would not be readable otherwise.
    int nDeepest = 0;
    QModelIndex index = indexAt(QPoint(0, 0));
    for (int n = 0; n < MEASURED_ROWS && index.isValid(); ++n) {
        nDeepest = qMax(nDeepest, visualRect(index).left() - columnViewportPosition(0));
        index = indexBelow(index);
    }
    return qMax(viewport()->width() - ROW_GAP, nDeepest + CDirDelegate::LEAST_WIDTH);
}

void CFileTreeView::drawRow(QPainter* pPainter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    QTreeView::drawRow(pPainter, option, index);
    if (!m_bKeysUsed || !hasFocus() || index != currentIndex()) {
        return;
    }
    // The current row need not be the selected one, and the selection's ground
    // stays when the keys have gone elsewhere: where they go takes a mark of its own.
    const QRect rect(0, option.rect.top() + MARK_MARGIN, MARK_WIDTH, option.rect.height() - 2 * MARK_MARGIN);
    pPainter->save();
    pPainter->setRenderHint(QPainter::Antialiasing);
    pPainter->setPen(Qt::NoPen);
    pPainter->setBrush(QColor(QStringLiteral("#ff7e17")));
    pPainter->drawRoundedRect(rect, MARK_WIDTH / 2.0, MARK_WIDTH / 2.0);
    pPainter->restore();
}

void CFileTreeView::dataChanged(const QModelIndex&, const QModelIndex&, const QVector<int>&)
{
    // A tick on a folder tells of every row below it. Looking each up among the
    // rows shown, as the base class does, would cost seconds, and so would an
    // event for each to a screen reader; one repaint of what is on the screen
    // shows them all, and one look at it later tells what has changed there.
    viewport()->update();
    TellTicksSoon();
}

void CFileTreeView::rowsInserted(const QModelIndex& parent, int nStart, int nEnd)
{
    // The model announces one row more than it inserts. Taken at its word, a
    // folder with a single entry would not get its arrow.
    QTreeView::rowsInserted(parent, nStart, qMax(nStart, nEnd - 1));
}

bool CFileTreeView::event(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::KeyPress) {
        MarkCurrentRow(true);
    } else if (pEvent->type() == QEvent::FocusIn) {
        const Qt::FocusReason enReason = static_cast<QFocusEvent*>(pEvent)->reason();
        MarkCurrentRow(m_bKeysUsed || enReason == Qt::TabFocusReason || enReason == Qt::BacktabFocusReason);
    }
    return QTreeView::event(pEvent);
}

bool CFileTreeView::viewportEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::MouseButtonPress) {
        MarkCurrentRow(false);
    }
    return QTreeView::viewportEvent(pEvent);
}

// A click on a box selects nothing, but whoever takes to the keys after it expects
// them to go on from there. The row stays where it is under the pointer.
void CFileTreeView::KeysGoOnFrom(const QModelIndex& index)
{
    const bool bScrolls = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    setAutoScroll(bScrolls);
}

// Who works with the mouse is not to wonder at a mark on a row that was not clicked.
void CFileTreeView::MarkCurrentRow(bool bMark)
{
    if (bMark != m_bKeysUsed) {
        m_bKeysUsed = bMark;
        viewport()->update();
    }
}

void CFileTreeView::resizeEvent(QResizeEvent* pEvent)
{
    QTreeView::resizeEvent(pEvent);
    resizeColumnToContents(0);
    if (m_pPicture) {
        m_pPicture->setGeometry(rect());
    }
}

void CFileTreeView::keyPressEvent(QKeyEvent* pEvent)
{
    if (m_bLent) {
        return;
    }
    switch (pEvent->key()) {
    case Qt::Key_Space:
        // A key held down would tick and untick as fast as it repeats.
        if (!pEvent->isAutoRepeat()) {
            ToggleTick(currentIndex());
        }
        return;
    case Qt::Key_Asterisk:
        // Opening everything below a row would list a whole volume at once, on
        // this thread. A letter like any other, it looks for a name.
        QAbstractItemView::keyPressEvent(pEvent); // NOLINT(bugprone-parent-virtual-call)
        return;
    default:
        QTreeView::keyPressEvent(pEvent);
    }
}

void CFileTreeView::focusInEvent(QFocusEvent* pEvent)
{
    QTreeView::focusInEvent(pEvent);
    EnsureCurrentRow();
    // Qt tells readers of the whole tree when this returns; the row is to be the last word.
    QMetaObject::invokeMethod(this, &CFileTreeView::TellCurrentRow, Qt::QueuedConnection);
}

void CFileTreeView::scrollContentsBy(int nX, int nY)
{
    QTreeView::scrollContentsBy(nX, nY);
    TellTicksSoon();
}

// The two below leave out QTreeView's own part, which tells readers of rows by
// numbers that count the header as a row. There is no other difference.

void CFileTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    TellCurrentRow();
}

void CFileTreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
    const CFileTreeAccess* pAccess = Reader();
    if (!pAccess) {
        return;
    }
    // One row at most is selected.
    pAccess->TellSelected(deselected.indexes().value(0), false);
    pAccess->TellSelected(selected.indexes().value(0), true);
}

// What screen readers are told through; null while there is none to listen.
CFileTreeAccess* CFileTreeView::Reader()
{
    return QAccessible::isActive() ? CFileTreeAccess::Of(this) : nullptr;
}

void CFileTreeView::TellCurrentRow()
{
    const CFileTreeAccess* pAccess = Reader();
    if (pAccess && hasFocus()) {
        pAccess->TellFocus(currentIndex());
    }
}

void CFileTreeView::TellTicksSoon()
{
    if (!m_bTicksToTell && QAccessible::isActive()) {
        m_bTicksToTell = true;
        QMetaObject::invokeMethod(this, &CFileTreeView::TellTicks, Qt::QueuedConnection);
    }
}

void CFileTreeView::TellTicks()
{
    m_bTicksToTell = false;
    const CFileTreeAccess* pAccess = model() ? CFileTreeAccess::Of(this) : nullptr;
    if (!pAccess) {
        return;
    }
    const QRect rect = viewport()->rect();
    for (QModelIndex index = indexAt(QPoint(columnViewportPosition(0), 0));
         index.isValid() && visualRect(index).top() <= rect.bottom(); index = indexBelow(index)) {
        pAccess->TellTick(index);
    }
}
