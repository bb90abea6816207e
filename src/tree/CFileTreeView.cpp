#include "tree/CFileTreeView.h"

#include "tree/CDirDelegate.h"
#include "tree/CDirModel.h"
#include "tree/CDirNode.h"
#include "tree/CNodeLoan.h"

#include <QFocusEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>
#include <iterator>
#include <utility>

// Right of the rows, as much as the frame around the view leaves free on their left.
static const int ROW_GAP = 9;
// Rows looked at for the deepest one: those on the screen and many more, but never all.
static const int MEASURED_ROWS = 1000;
// With what CDirModel::AskKinds waits, 1.5 seconds: the window is to be there soon.
static const std::chrono::milliseconds START_PATIENCE(1000);
// Whoever looks for disks again is at work with those that are there: what takes longer is shown later.
static const std::chrono::milliseconds ADDED_PATIENCE(100);
// The bar before the current row.
static const int MARK_WIDTH = 3;
static const int MARK_MARGIN = 6;
static const QRgb MARK_COLOUR = qRgb(0xff, 0x7e, 0x17);

namespace {

/** Shows that the program is busy, from its making to its end. */
class CWaitCursor
{
public:
    CWaitCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~CWaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;
};

}

CFileTreeView::CFileTreeView(QWidget* parent)
    : QTreeView(parent)
{
    InitData();
    InitConnect();
    InitView();
}

CFileTreeView::~CFileTreeView() { m_pDirModel->SetHeld(false); }

void CFileTreeView::InitData()
{
    m_pDirModel = CDirModel::GetInstence();
    setModel(m_pDirModel);
}

void CFileTreeView::InitConnect()
{
    connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
        // The model lists on this thread, and a large folder or a slow disk takes its time.
        {
            const CWaitCursor cursor;
            m_pDirModel->SlotExpanded(index);
        }
        TellFolder(index);
    });
    connect(m_pDirModel, &CDirModel::SignalListedLate, this, [this](const QModelIndex& index) {
        if (isExpanded(index)) {
            TellFolder(index);
        }
    });
    connect(this, &QTreeView::collapsed, m_pDirModel, &CDirModel::SlotCollapsed);
    connect(
        this, &QTreeView::clicked, this,
        [this](const QModelIndex& index) {
            KeysGoOnFrom(index);
            emit SignalItemClicked();
            TellRefusal(index);
        },
        Qt::DirectConnection);
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
    if (m_pLoan) {
        m_listLateRoot = roots;
        return;
    }
    if (!m_listRoot.isEmpty()) {
        return;
    }
    const CWaitCursor cursor;
    m_listRoot = roots;
    m_pDirModel->AskKinds(m_listRoot);
    for (const QString& strPath : qAsConst(m_listRoot)) {
        m_pDirModel->Parse(strPath);
    }
    m_pDirModel->LoadGrandChild(m_pDirModel->parent(m_pDirModel->index(0, 0)), START_PATIENCE);
    if (hasFocus()) {
        EnsureCurrentRow();
    }
}

void CFileTreeView::AddRoots(const QStringList& roots)
{
    if (m_pLoan || !isVisible()) {
        m_listAddLater = roots;
        return;
    }
    QStringList listNew;
    std::copy_if(roots.begin(), roots.end(), std::back_inserter(listNew),
                 [this](const QString& strPath) { return !m_listRoot.contains(strPath); });
    m_listRoot += listNew;
    m_pDirModel->AskKinds(listNew);
    for (const QString& strPath : qAsConst(listNew)) {
        m_pDirModel->ParseLate(strPath);
    }
    QVector<QModelIndex> listEmpty;
    for (int nRow = 0; nRow < m_pDirModel->rowCount(); ++nRow) {
        const QModelIndex index = m_pDirModel->index(nRow, 0);
        if (m_pDirModel->rowCount(index) == 0) {
            listEmpty.append(index);
        }
    }
    m_pDirModel->LoadGrandChild(QModelIndex(), ADDED_PATIENCE);
    for (const QModelIndex& index : qAsConst(listEmpty)) {
        m_pDirModel->ChangeChildChkState(index, Qt::CheckState(index.data(Qt::CheckStateRole).toInt()));
    }
    emit SignalRootsAdded();
}

void CFileTreeView::AddPutOff()
{
    const QStringList listRoot = std::exchange(m_listAddLater, QStringList());
    if (!listRoot.isEmpty()) {
        AddRoots(listRoot);
    }
}

void CFileTreeView::LendNodes(bool bLent)
{
    if (bLent == (m_pLoan != nullptr)) {
        return;
    }
    if (bLent) {
        {
            const CWaitCursor cursor;
            m_pDirModel->AwaitListings();
        }
        m_bUnlistedAtLoan = HasUnlistedFolder();
        m_bTickedAtLoan = HasTickedVolume();
        m_bInPartAtLoan = IsToldFolderTickedInPart();
        m_pLoan = std::make_unique<CNodeLoan>(this, m_pDirModel);
        return;
    }
    m_pLoan->Return();
    m_pLoan.reset();
    if (!m_listLateRoot.isEmpty()) {
        Parse(m_listLateRoot);
        m_listLateRoot.clear();
    }
    // Not now: a copy of what was counted may be about to begin, and hides the view.
    QMetaObject::invokeMethod(
        this, [this] { AddPutOff(); }, Qt::QueuedConnection);
}

void CFileTreeView::ToggleTick(const QModelIndex& index)
{
    if (m_pLoan || !index.isValid()) {
        return;
    }
    scrollTo(index);
    model()->setData(index, CDirDelegate::NextState(index.data(Qt::CheckStateRole).toInt()),
                     Qt::CheckStateRole);
    emit SignalItemClicked();
    TellRefusal(index);
}

bool CFileTreeView::HasUnlistedFolder() const
{
    return m_pLoan ? m_bUnlistedAtLoan : m_pDirModel->HasUnlistedFolder();
}

bool CFileTreeView::HasTickedVolume() const
{
    return m_pLoan ? m_bTickedAtLoan : m_pDirModel->HasTickedVolume();
}

bool CFileTreeView::IsToldFolderTickedInPart() const
{
    return m_pLoan ? m_bInPartAtLoan : m_toldFolder.data(Qt::CheckStateRole).toInt() == Qt::PartiallyChecked;
}

void CFileTreeView::TellFolder(const QModelIndex& index)
{
    m_toldFolder = index;
    const CDirNode* pNode = m_pDirModel->nodeFromIndex(index);
    STFolderFacts stFacts;
    stFacts.strPath = pNode->m_fileInfo.absoluteFilePath();
    stFacts.nLeftOut = pNode->m_nLeftOut;
    stFacts.nError = pNode->m_nListError;
    stFacts.bNoAnswer = pNode->m_enListed == ENListed::OVERDUE;
    emit SignalFolderOpened(stFacts);
}

// A folder that could not be listed has no arrow, so whoever wants to look into it
// presses on its name.
void CFileTreeView::TellRefusal(const QModelIndex& index)
{
    if (m_pLoan || !index.isValid()) {
        return;
    }
    const CDirNode* pNode = m_pDirModel->nodeFromIndex(index);
    if (pNode->m_nListError != 0 || pNode->m_enListed == ENListed::OVERDUE) {
        TellFolder(index);
    }
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
    if (!m_pLoan && !currentIndex().isValid()) {
        selectionModel()->setCurrentIndex(m_pDirModel->index(0, 0), QItemSelectionModel::NoUpdate);
    }
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
    pPainter->setBrush(QColor(MARK_COLOUR));
    pPainter->drawRoundedRect(rect, MARK_WIDTH / 2.0, MARK_WIDTH / 2.0);
    pPainter->restore();
}

void CFileTreeView::dataChanged(const QModelIndex&, const QModelIndex&, const QVector<int>&)
{
    // A tick on a folder tells of every row below it. Looking each up among the
    // rows shown, as the base class does, would cost seconds; one repaint of what
    // is on the screen shows them all.
    viewport()->update();
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
    // By itself it does so a turn later, and a bar that is not needed any more is seen until then.
    updateGeometries();
}

void CFileTreeView::showEvent(QShowEvent* pEvent)
{
    QTreeView::showEvent(pEvent);
    m_pDirModel->SetHeld(false);
    AddPutOff();
}

void CFileTreeView::hideEvent(QHideEvent* pEvent)
{
    QTreeView::hideEvent(pEvent);
    m_pDirModel->SetHeld(true);
}

void CFileTreeView::keyPressEvent(QKeyEvent* pEvent)
{
    if (m_pLoan) {
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
}

// The two below leave out QTreeView's own part, which tells readers of rows by
// numbers that count the header as a row. There is no other difference.

void CFileTreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    emit SignalCurrentChanged(current);
}

void CFileTreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
    emit SignalSelectionChanged(selected, deselected);
}
