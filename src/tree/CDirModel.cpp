#include "tree/CDirModel.h"

#include "files/CAsideQuestion.h"
#include "tree/CDirListing.h"
#include "tree/CDirNode.h"
#include "tree/CFolderOpening.h"

#include <QThread>

#include <algorithm>

// "Volumes" too is left out here, so that a start-up volume, whose folder of
// mount points leads to every other volume, does not show them all again.
// As with the node's own listing, "Volumes2" and "devices" go with them.
static const std::initializer_list<QLatin1String> SKIPPED
    = {QLatin1String("dev"), QLatin1String("home"), QLatin1String("Volumes")};

// So often a look is taken for disks that do not answer.
static const int OVERDUE_LOOK_MS = 500;

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Whose disk was asked shortly before the end of the time has not had it yet.
static const milliseconds LEAST_OVERDUE(400);

CDirModel* CDirModel::s_pDirModel = nullptr;

/** The tick that the children of `node` make together; unchecked when there are none. */
static Qt::CheckState StateOfChildren(const CDirNode& node)
{
    int nUnchecked = 0;
    int nChecked = 0;
    for (const CDirNode* pChild : node.m_listChild) {
        nUnchecked += pChild->m_chkState == Qt::Unchecked ? 1 : 0;
        nChecked += pChild->m_chkState == Qt::Checked ? 1 : 0;
    }
    if (nUnchecked == node.m_listChild.size()) {
        return Qt::Unchecked;
    }
    return nChecked == node.m_listChild.size() ? Qt::Checked : Qt::PartiallyChecked;
}

CDirModel::CDirModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_pRoot(new CDirNode(QFileInfo(), nullptr))
{
    m_pRoot->m_bDir = true;
    m_overdueTimer.setInterval(OVERDUE_LOOK_MS);
    connect(&m_overdueTimer, &QTimer::timeout, this, &CDirModel::LookForOverdue);
}

CDirModel::~CDirModel()
{
    AssertOwned();
    DropListings();
    beginResetModel();
    m_pRoot->RemoveAllBelow();
    delete m_pRoot;
    m_pRoot = nullptr;
    endResetModel();
}

CDirModel* CDirModel::GetInstence()
{
    if (!s_pDirModel) {
        s_pDirModel = new CDirModel;
    }
    return s_pDirModel;
}

CDirNode* CDirModel::GetRootNode() const { return m_pRoot; }

void CDirModel::SetComplete(bool bComplete)
{
    AssertOwned();
    m_pRoot->m_bComplete = bComplete;
}

bool CDirModel::IsComplete() const { return m_pRoot->m_bComplete; }

bool CDirModel::HasCheckedEntry() const { return nodeFromIndex(QModelIndex())->m_chkState != Qt::Unchecked; }

bool CDirModel::HasUnlistedFolder() const
{
    const QList<CDirNode*>& listVolume = nodeFromIndex(QModelIndex())->m_listChild;
    return std::any_of(listVolume.begin(), listVolume.end(), [](const CDirNode* pVolume) {
        return pVolume->m_chkState == Qt::Checked && pVolume->CountUnlisted() > 0;
    });
}

bool CDirModel::HasTickedVolume() const
{
    const QList<CDirNode*>& listVolume = nodeFromIndex(QModelIndex())->m_listChild;
    return std::any_of(listVolume.begin(), listVolume.end(),
                       [](const CDirNode* pVolume) { return pVolume->m_chkState == Qt::Checked; });
}

void CDirModel::SetLent(bool bLent)
{
    Q_ASSERT_X(!bLent || !m_bLent, "CDirModel", "the nodes are lent already");
    m_bLent = bLent;
    TakeLateSoon();
}

void CDirModel::SetHeld(bool bHeld)
{
    m_bHeld = bHeld;
    TakeLateSoon();
}

// Whatever reads, ticks or lists a node for the GUI thread comes through here.
void CDirModel::AssertOwned() const
{
    Q_ASSERT_X(QThread::currentThread() == thread(), "CDirModel", "workers have no business with the model");
    Q_ASSERT_X(!m_bLent, "CDirModel", "the nodes belong to a worker");
}

CDirNode* CDirModel::nodeFromIndex(const QModelIndex& index) const
{
    AssertOwned();
    return index.isValid() ? static_cast<CDirNode*>(index.internalPointer()) : m_pRoot;
}

QModelIndex CDirModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || !m_pRoot || !hasIndex(row, column, parent)) {
        return QModelIndex();
    }
    CDirNode* pChild = nodeFromIndex(parent)->Child(row);
    return pChild ? createIndex(row, column, pChild) : QModelIndex();
}

QModelIndex CDirModel::parent(const QModelIndex& child) const
{
    const CDirNode* pNode = nodeFromIndex(child);
    if (!pNode || !pNode->m_pParent || !pNode->m_pParent->m_pParent) {
        return QModelIndex();
    }
    CDirNode* pParent = pNode->m_pParent;
    return createIndex(pParent->m_pParent->ChildIndex(pParent), 0, pParent);
}

int CDirModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0) {
        return 0;
    }
    const CDirNode* pNode = nodeFromIndex(parent);
    return pNode ? pNode->m_listChild.size() : 0;
}

int CDirModel::columnCount(const QModelIndex&) const { return 1; }

QVariant CDirModel::data(const QModelIndex& index, int role) const
{
    const CDirNode* pNode = nodeFromIndex(index);
    if (index.column() != 0 || !pNode) {
        return QVariant();
    }
    switch (role) {
    case Qt::DisplayRole:
        return pNode->m_strName;
    case Qt::DecorationRole:
        return pNode->m_icon;
    case Qt::CheckStateRole:
        return int(pNode->m_chkState);
    default:
        return QVariant();
    }
}

bool CDirModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role == Qt::CheckStateRole && index.column() == 0) {
        const int nState = value.toInt();
        nodeFromIndex(index)->m_chkState = nState;
        ChangeChildChkState(index, Qt::CheckState(nState));
        ChangeParentChkState(index);
        emit dataChanged(index, index);
    }
    // The base class says false, and so does this, also after a change: whoever
    // ticks learns of it from dataChanged and nobody looks at the result.
    return QAbstractItemModel::setData(index, value, role);
}

void CDirModel::ChangeChildChkState(const QModelIndex& index, Qt::CheckState state)
{
    if (state == Qt::PartiallyChecked) {
        return;
    }
    const CDirNode* pNode = nodeFromIndex(index);
    for (int i = 0; i < pNode->m_listChild.size(); ++i) {
        CDirNode* pChild = pNode->m_listChild.at(i);
        const QModelIndex child = createIndex(i, 0, pChild);
        pChild->m_chkState = state;
        if (!pChild->m_listChild.isEmpty()) {
            ChangeChildChkState(child, state);
        }
        emit dataChanged(child, child);
    }
}

void CDirModel::ChangeParentChkState(const QModelIndex& index)
{
    const QModelIndex parent = index.parent();
    CDirNode* pParent = nodeFromIndex(parent);
    pParent->m_chkState = StateOfChildren(*pParent);
    if (!parent.isValid()) {
        return;
    }
    ChangeParentChkState(parent);
    emit dataChanged(parent, parent);
}

Qt::CheckState CDirModel::GetParentChkState(const QModelIndex& index)
{
    return StateOfChildren(*nodeFromIndex(index));
}

void CDirModel::LoadChild(const QModelIndex& index)
{
    CDirNode* pNode = nodeFromIndex(index);
    if (pNode->m_listChild.isEmpty()) {
        ListFolders({{pNode, index.row()}}, false, steady_clock::now() + PATIENCE);
    }
}

void CDirModel::AppendListing(const QModelIndex& index, const STDirListing& stListing)
{
    CDirNode* pNode = nodeFromIndex(index);
    pNode->NoteListing(stListing);
    for (int i = 0; i < stListing.listEntry.size(); ++i) {
        auto* pChild = new CDirNode(stListing.listEntry.at(i), pNode);
        // Announces one row more than comes. Nothing points at rows behind the new
        // one, so no index is shifted; the program's view takes the extra row off again.
        beginInsertRows(index, i, i + 1);
        pNode->AppendChild(pChild);
        endInsertRows();
    }
}

void CDirModel::LoadGrandChild(const QModelIndex& index, milliseconds wait)
{
    const steady_clock::time_point end = steady_clock::now() + wait;
    CDirNode* pNode = nodeFromIndex(index);
    if (!pNode->m_listChild.isEmpty() || ListFolders({{pNode, index.row()}}, true, end)) {
        ListBelow(pNode, end);
    }
}

// A file has no entries. Asking the disk for those of 100,000 files takes a second,
// and the user waits for it each time the folder is opened.
void CDirModel::ListBelow(CDirNode* pNode, steady_clock::time_point end)
{
    QVector<STFolderRow> listRow;
    for (int i = 0; i < pNode->m_listChild.size(); ++i) {
        CDirNode* pChild = pNode->m_listChild.at(i);
        if (pChild->m_bDir && pChild->m_listChild.isEmpty()) {
            listRow.append({pChild, i});
        }
    }
    ListFolders(listRow, false, end);
}

// True when all are listed; else the rest comes late, and with bBelow what is in it.
bool CDirModel::ListFolders(const QVector<STFolderRow>& listRow, bool bBelow, steady_clock::time_point end)
{
    const auto wait = std::chrono::duration_cast<milliseconds>(end - steady_clock::now());
    auto pOpening = std::make_unique<CFolderOpening>(listRow, SKIPPED);
    while (!pOpening->IsDone()) {
        for (const STListedRow& stListed : pOpening->Take(end)) {
            AppendListing(IndexOf(stListed.stRow), stListed.stListing);
        }
        if (steady_clock::now() >= end) {
            break;
        }
    }
    if (pOpening->IsDone()) {
        return true;
    }
    MarkOverdue(*pOpening, std::max(wait / 2, LEAST_OVERDUE));
    pOpening->GoOnLater([this] {
        QMetaObject::invokeMethod(
            this, [this] { TakeLate(); }, Qt::QueuedConnection);
    });
    m_listLate.push_back({std::move(pOpening), bBelow ? listRow.first().pNode : nullptr});
    m_overdueTimer.start();
    return false;
}

QModelIndex CDirModel::IndexOf(const STFolderRow& stRow) const
{
    return stRow.pNode == m_pRoot ? QModelIndex() : createIndex(stRow.nRow, 0, stRow.pNode);
}

void CDirModel::AwaitListings(milliseconds wait)
{
    const steady_clock::time_point end = steady_clock::now() + wait;
    for (size_t n = 0; n < m_listLate.size(); ++n) {
        CFolderOpening& opening = *m_listLate.at(n).pOpening;
        while (opening.IsComing() && steady_clock::now() < end) {
            TakeLate(opening, end);
        }
    }
    TakeLate();
}

void CDirModel::DropListings()
{
    m_listLate.clear();
    m_overdueTimer.stop();
}

void CDirModel::TakeLateSoon()
{
    if (IsOwned() && !m_listLate.empty()) {
        QMetaObject::invokeMethod(
            this, [this] { TakeLate(); }, Qt::QueuedConnection);
    }
}

void CDirModel::TakeLate()
{
    if (!IsOwned()) {
        return;
    }
    // What is begun here is late as well, and has its turn when it comes.
    for (size_t n = m_listLate.size(); n > 0; --n) {
        TakeLate(*m_listLate.at(n - 1).pOpening, steady_clock::now());
        if (!m_listLate.at(n - 1).pOpening->IsDone()) {
            continue;
        }
        CDirNode* pListBelow = m_listLate.at(n - 1).pListBelow;
        m_listLate.erase(m_listLate.begin() + std::ptrdiff_t(n - 1));
        if (pListBelow) {
            ListBelow(pListBelow, steady_clock::now());
        }
    }
    if (m_listLate.empty()) {
        m_overdueTimer.stop();
    }
}

void CDirModel::TakeLate(CFolderOpening& opening, steady_clock::time_point end)
{
    for (const STListedRow& stListed : opening.Take(end)) {
        const QModelIndex index = IndexOf(stListed.stRow);
        AppendListing(index, stListed.stListing);
        if (stListed.stRow.pNode->m_chkState == Qt::Checked) {
            ChangeChildChkState(index, Qt::Checked);
        }
        emit dataChanged(index, index);
        emit SignalListedLate(index);
    }
}

void CDirModel::LookForOverdue()
{
    for (size_t n = 0; IsOwned() && n < m_listLate.size(); ++n) {
        MarkOverdue(*m_listLate.at(n).pOpening, PATIENCE);
    }
}

void CDirModel::MarkOverdue(CFolderOpening& opening, milliseconds time)
{
    for (const STFolderRow& stRow : opening.MarkOverdue(time)) {
        const QModelIndex index = IndexOf(stRow);
        emit dataChanged(index, index);
    }
}

void CDirModel::ClearGrandChild(const QModelIndex& index)
{
    if (index.isValid()) {
        for (int i = 0; i < rowCount(index); ++i) {
            RemoveAllChild(this->index(i, 0, index));
        }
    }
    emit layoutChanged();
}

void CDirModel::RemoveAllChild(const QModelIndex& index)
{
    const int nRows = index.isValid() ? rowCount(index) : 0;
    if (nRows == 0) {
        return;
    }
    const CDirNode* pNode = nodeFromIndex(index);
    const auto fnIsBelow = [pNode](const STLate& stLate) { return stLate.pOpening->IsBelow(pNode); };
    m_listLate.erase(std::remove_if(m_listLate.begin(), m_listLate.end(), fnIsBelow), m_listLate.end());
    beginRemoveRows(index, 0, nRows - 1);
    for (int i = 0; i < nRows; ++i) {
        const QModelIndex child = this->index(i, 0, index);
        if (child.isValid()) {
            RemoveAllChild(child);
        }
    }
    nodeFromIndex(index)->RemoveAll();
    endRemoveRows();
    emit layoutChanged();
}

void CDirModel::AskKinds(const QStringList& listPath)
{
    using Question = CAsideQuestion<STEntryKind>;
    std::vector<std::unique_ptr<Question>> listQuestion;
    for (const QString& strPath : listPath) {
        listQuestion.push_back(
            std::make_unique<Question>([strPath] { return CDirListing::KindOf(strPath); }));
    }
    const steady_clock::time_point end = steady_clock::now() + KIND_PATIENCE;
    for (int i = 0; i < listPath.size(); ++i) {
        const Question& question = *listQuestion.at(size_t(i));
        question.Wait(std::chrono::duration_cast<milliseconds>(end - steady_clock::now()));
        m_hashKind.insert(listPath.at(i), question.Get().value_or(STEntryKind()));
    }
}

void CDirModel::AppendRoot(const QString& strPath, int nFirst, int nLast)
{
    AssertOwned();
    if (!m_hashKind.contains(strPath)) {
        AskKinds({strPath});
    }
    const STEntryKind stKind = m_hashKind.take(strPath);
    beginInsertRows(QModelIndex(), nFirst, nLast);
    const STDirEntry stEntry{CNodeFileInfo(QFileInfo(strPath)), strPath, stKind.bDir, stKind.bLink};
    m_pRoot->AppendChild(new CDirNode(stEntry, m_pRoot));
    endInsertRows();
}

// Rows 0 and 1 are announced whatever the count is. These roots are all added before
// anything is shown or selected, so no view holds an index that the wrong range could shift.
void CDirModel::Parse(QString path) { AppendRoot(path, 0, 1); }

void CDirModel::ParseLate(const QString& strPath)
{
    AppendRoot(strPath, rowCount(), rowCount());
    ChangeParentChkState(index(rowCount() - 1, 0));
}

void CDirModel::SlotExpanded(QModelIndex index)
{
    LoadGrandChild(index);
    ChangeChildChkState(index, Qt::CheckState(nodeFromIndex(index)->m_chkState));
}

void CDirModel::SlotCollapsed(QModelIndex) { }
