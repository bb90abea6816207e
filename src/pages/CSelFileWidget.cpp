#include "pages/CSelFileWidget.h"

#include "copy/CCopyText.h"
#include "copy/CGetFileSizeThread.h"
#include "kit/CClickableLabelAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/KvMessageBox.h"
#include "log/CClock.h"
#include "log/CLogTarnwick.h"
#include "pages/CAsideSearches.h"
#include "pages/CCompleteChoice.h"
#include "pages/CDestinationPanel.h"
#include "pages/CDropDownList.h"
#include "pages/CLastCopyNotice.h"
#include "pages/CLogNotice.h"
#include "pages/CNoticeLine.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileForm.h"
#include "pages/CSelectionCount.h"
#include "pages/CSourceNotice.h"
#include "pages/CTreeNotices.h"
#include "tree/CFileTreeAccess.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QDebug>
#include <QFileInfo>
#include <QLocale>
#include <QMovie>
#include <QShowEvent>
#include <QThread>

#include <utility>

// What the end of the page waits for its workers, in all.
static const int LAST_WAIT_MS = 1000;

CSelFileWidget::CSelFileWidget(QWidget* parent)
    : QWidget(parent)
    , m_pForm(std::make_unique<CSelFileForm>())
{
    CFileTreeAccess::Install();
    CClickableLabelAccess::Install();
    m_pForm->setupUi(this);
    InitData();
    InitView();
    InitConnect();
}

CSelFileWidget::~CSelFileWidget()
{
    m_disks.Close();
    const QDeadlineTimer deadline(LAST_WAIT_MS);
    m_pSearches->Wait(deadline);
    m_pCount->Abandon(std::chrono::milliseconds(deadline.remainingTime()));
}

void CSelFileWidget::InitData()
{
    m_pListWidget = new CDropDownList(tr("No USB disk was found.\nConnect one, and it appears here."),
                                      m_pForm->m_pDropBtn);
    m_pRefreshMovie
        = new QMovie(CSkinPicture::MoviePath(QStringLiteral(":/res/Gif/refalsh.gif")), QByteArray(), this);
    m_pForm->RefreshLab->setMovie(m_pRefreshMovie);
    // A movie that has never run shows nothing; this leaves its first frame.
    m_pRefreshMovie->start();
    m_pRefreshMovie->stop();

    m_pSizeThread = new CGetFileSizeThread(this);
    // Not modal: the page takes no input while it counts, but the window can be closed.
    m_pWaitView = new CSearchWaitView(this);
    const auto fnGivenUp = [this] {
        EndCounting();
        m_target.reset();
    };
    m_pCount = std::make_unique<CSelectionCount>(m_pForm->m_pFileTree, m_pSizeThread, m_pWaitView,
                                                 m_pForm->m_pNoticeLine, fnGivenUp);
    m_pDestination = new CDestinationPanel(m_pForm.get(), m_pForm->m_pNoticeLine, this);
    m_pSearches = new CAsideSearches(
        [this](const STDiskSearch& search, const QVector<STVolume>& listVolume) {
            EndSearch(search, listVolume, ENSources::MORE);
        },
        this);
    m_pSourceNotice = new CSourceNotice(m_pForm->m_pNoticeLine, this);
    new CLogNotice(m_pForm->m_pNoticeLine, this);
    m_pLastCopy = new CLastCopyNotice(m_pForm->m_pNoticeLine, this);
    m_pTreeNotices = new CTreeNotices(m_pForm.get(), this);
    m_pComplete = new CCompleteChoice(m_pForm->m_pCompleteBox, m_pForm->m_pNoticeLine, this);
    m_pDestination->SetComplete(m_pComplete->IsOn());
}

void CSelFileWidget::InitView()
{
    m_pForm->Dress();
    m_pListWidget->setAccessibleName(m_pForm->m_pDropBtn->accessibleName());
    setFocusProxy(m_pForm->m_pFileTree);
    SlotRefreshUSB();
}

void CSelFileWidget::InitConnect()
{
    connect(m_pForm->m_pCopyBtn, &QPushButton::clicked, this, &CSelFileWidget::SlotCopyBtnClick);
    connect(m_pForm->m_pDropBtn, &QPushButton::clicked, this, &CSelFileWidget::SlotShowListWidget);
    connect(m_pComplete, &CCompleteChoice::SignalChanged, m_pDestination, &CDestinationPanel::SetComplete);
    connect(m_pComplete, &CCompleteChoice::SignalChanged, m_pTreeNotices, &CTreeNotices::Update);
    connect(m_pListWidget, &CDropDownList::SignalOpen, this, &CSelFileWidget::SlotShowListWidget);
    connect(m_pListWidget, &CDropDownList::SignalChosen, this, &CSelFileWidget::SlotListWidgetItemClick);
    connect(m_pForm->m_pUSBTitleLab, &CClickableLabel::SignalLabelClicked, this,
            &CSelFileWidget::SlotShowListWidget);
    connect(
        m_pDestination, &CDestinationPanel::SignalAnswered, this,
        [this](const QString& strPath, const STDiskState& state) { m_disks.Told(strPath, state.baDevice); });
    connect(m_pSizeThread, &CGetFileSizeThread::SignalGetSizeFinish, this,
            &CSelFileWidget::SlotGetFileSizeFinish);
    connect(m_pForm->m_pFileTree, &CFileTreeView::SignalItemClicked, this,
            &CSelFileWidget::SlotCheckFileSelected);
    connect(m_pForm->RefreshLab, &CClickableLabel::SignalLabelClicked, this,
            &CSelFileWidget::OnRefreshClicked, Qt::DirectConnection);
    connect(this, &CSelFileWidget::SignalStopMovie, this, &CSelFileWidget::OnStopMovie, Qt::QueuedConnection);
}

// ---------------------------------------------------------------- disks

void CSelFileWidget::OnRefreshClicked()
{
    if (m_pCount->IsRunning() || m_pSearches->IsFull()) {
        return;
    }
    const std::optional<STDiskSearch> search = m_disks.NewSearch();
    if (!search) {
        return;
    }
    ++m_nMovieRuns;
    m_pRefreshMovie->start();
    BeginSearch(*search);
    m_pSearches->Begin(*search);
}

void CSelFileWidget::OnStopMovie()
{
    m_nMovieRuns = qMax(0, m_nMovieRuns - 1);
    if (m_nMovieRuns > 0) {
        return; // another search is still on
    }
    m_pRefreshMovie->stop();
    m_pRefreshMovie->jumpToFrame(0);
}

void CSelFileWidget::RunOnGui(std::function<void()> fnStep)
{
    if (QThread::currentThread() == thread()) {
        fnStep();
        return;
    }
    QMetaObject::invokeMethod(this, std::move(fnStep), Qt::QueuedConnection);
}

void CSelFileWidget::SlotRefreshUSB()
{
    const std::optional<STDiskSearch> begun = m_disks.NewSearch();
    if (!begun) {
        return;
    }
    const STDiskSearch& search = *begun;
    RunOnGui([this, search]() { BeginSearch(search); });
    const QVector<STVolume> listVolume = CAsideSearches::Volumes(search);
    RunOnGui([this, search, listVolume]() { EndSearch(search, listVolume, ENSources::FIRST); });
}

// Until the end of the search the drop-down still shows the disks from before,
// which cannot be copied to meanwhile.
void CSelFileWidget::BeginSearch(const STDiskSearch& search)
{
    if (m_disks.Begin(search)) {
        m_pSourceNotice->Forget();
        UpdateControls();
    }
}

void CSelFileWidget::EndSearch(const STDiskSearch& search, const QVector<STVolume>& listVolume,
                               ENSources enSources)
{
    QStringList listSource;
    for (const STVolume& volume : listVolume) {
        if (volume.enRole == VOLUME_ROLE_SOURCE) {
            listSource.append(volume.strPath);
        } else if (volume.enRole == VOLUME_ROLE_DESTINATION) {
            m_disks.Found(search, volume.strPath, volume.strName, volume.baDevice);
        }
    }
    if (m_disks.End(search)) {
        m_pForm->m_pFileTree->Parse(listSource);
        if (enSources == ENSources::MORE) {
            m_pForm->m_pFileTree->AddRoots(listSource);
        }
        OnRefreshUSB();
        m_pSourceNotice->Look(listVolume);
    }
    emit SignalStopMovie();
}

void CSelFileWidget::AddDisk(const QFileInfo& volume)
{
    const QString strPath = volume.filePath();
    const std::optional<STDiskState> state = m_pDestination->Glance(strPath);
    m_disks.Arrived(strPath, volume.fileName(),
                    state ? std::optional<QByteArray>(state->baDevice) : std::nullopt);
}

void CSelFileWidget::RemoveDisk(const QString& strPath)
{
    m_pDestination->Forget(strPath);
    m_pSourceNotice->Removed(strPath);
    m_disks.Removed(strPath);
}

void CSelFileWidget::NoteNewSource(const QString& strPath) { m_pSourceNotice->Came(strPath); }

QString CSelFileWidget::GetUsbPath() const { return m_disks.PathOf(GetUsbName()); }

QString CSelFileWidget::GetUsbName() const { return m_pForm->m_pUSBTitleLab->text(); }

void CSelFileWidget::OnRefreshUSB()
{
    QStringList listName;
    for (const QPair<QString, QString>& disk : qAsConst(m_listUsbDisk)) {
        qDebug().noquote() << disk.second;
        listName.append(disk.second);
    }
    m_pListWidget->SetNames(listName);
    qDebug() << "FFFFFFFFFFFFFFFFFFF" << listName;

    // Every rebuild chooses the first disk again, whatever was chosen before:
    // after a change of disks the user is to look at the choice again.
    ShowDisk(listName.isEmpty() ? tr("Select Destination Disk:") : listName.first());
}

void CSelFileWidget::ShowDisk(const QString& strName)
{
    m_pDestination->Show(strName, m_disks.PathOf(strName));
    UpdateControls();
}

void CSelFileWidget::showEvent(QShowEvent* pEvent)
{
    QWidget::showEvent(pEvent);
    if (!pEvent->spontaneous()) {
        m_pDestination->Refresh();
    }
}

// ---------------------------------------------------------------- the user's choices

void CSelFileWidget::SlotShowListWidget()
{
    if (m_pCount->IsRunning()) {
        return;
    }
    const QPoint ptAnchor = m_pForm->m_pUSBWidget->mapToGlobal(m_pForm->m_pUSBPicFrame->pos());
    m_pListWidget->Open(ptAnchor + QPoint(1, 0), GetUsbName());
}

void CSelFileWidget::SlotListWidgetItemClick(QListWidgetItem* pItem)
{
    if (m_pCount->IsRunning() || !pItem) {
        return;
    }
    const QString strName = pItem->text();
    m_pListWidget->hide();
    m_pDestination->Choose(strName, m_disks.PathOf(strName));
}

void CSelFileWidget::SlotCheckFileSelected()
{
    m_pForm->ShowTicked(m_pCount->IsSomethingTicked());
    m_pTreeNotices->Update();
    UpdateControls();
}

void CSelFileWidget::UpdateControls()
{
    const bool bIdle = !m_pCount->IsRunning();
    Enable(m_pForm->m_pCopyBtn, bIdle && !GetUsbPath().isEmpty() && m_pCount->IsSomethingTicked());
    Enable(m_pForm->m_pCompleteBox, bIdle);
}

// A button that is disabled while it has the focus hands it on to the next
// widget in the order, which is the window's close button: one more press of
// Space would ask whether to leave.
void CSelFileWidget::Enable(QWidget* pControl, bool bEnable)
{
    if (!bEnable && window()->focusWidget() == pControl) {
        m_pForm->m_pFileTree->setFocus();
    }
    pControl->setEnabled(bEnable);
}

// ---------------------------------------------------------------- from Copy to the start of the copy

qint64 CSelFileWidget::GetTotalSize() const { return m_nTotalSize; }
QString CSelFileWidget::GetDstFolder() const { return m_strDstFolder; }

void CSelFileWidget::SlotCopyBtnClick()
{
    if (m_target) {
        return; // the press before is still being dealt with
    }
    m_pForm->m_pNoticeLine->Clear(ENNotice::LAST_COPY);
    m_pDestination->Accept();
    const std::optional<STDiskState> state = m_pDestination->Insist(GetUsbName(), GetUsbPath());
    if (!state) {
        return;
    }
    m_target = m_disks.Target(GetUsbName(), state->baDevice);
    if (LoseTarget(*state)) {
        WarnOfSpace();
        m_target.reset();
        return;
    }
    if (!state->bWritable) {
        WarnUser(tr(
            "Your drive may be damaged and Tarnwick can not write to this drive, please change another one "
            "and retry."));
        m_target.reset();
        return;
    }
    m_nTotalSize = 0;
    m_strDstFolder.clear();
    BeginCounting(state->stRules);
}

void CSelFileWidget::BeginCounting(const STDiskRules& stRules)
{
    QWidget* pFocus = window()->focusWidget();
    m_pListWidget->hide();
    m_pCount->Begin(tr("Calculating files size..."), stRules);
    UpdateControls();
    m_pFocusAtClick = pFocus == window()->focusWidget() ? nullptr : pFocus;
}

bool CSelFileWidget::EndCounting()
{
    if (!m_pCount->End()) {
        return false;
    }
    UpdateControls();
    if (m_pFocusAtClick && window()->focusWidget() == m_pForm->m_pFileTree) {
        m_pFocusAtClick->setFocus();
    }
    return true;
}

void CSelFileWidget::SlotGetFileSizeFinish(qint64 nSize)
{
    const qint64 nRoom = EndCounting() ? m_pSizeThread->RoomNeeded() : nSize;
    if (!m_target) {
        const auto state = m_pDestination->Insist(GetUsbName(), GetUsbPath());
        m_target = m_disks.Target(GetUsbName(), state.value_or(STDiskState()).baDevice);
    }
    if (ShowUsbNoEnoughDlg(nRoom)) {
        m_target.reset();
        return;
    }
    m_nTotalSize = nSize;
    m_strDstFolder = DestinationFolder(m_target->strPath, CClock::Now());
    // A change of disks during the count may have chosen another one; whoever
    // asks for the chosen disk now must hear the one that the copy goes to.
    if (GetUsbName() != m_target->strName) {
        ShowDisk(m_target->strName);
    }
    m_target.reset();
    emit SignalCopyFile();
}

bool CSelFileWidget::ShowUsbNoEnoughDlg(qint64 nSize)
{
    const auto state = m_target ? m_pDestination->Insist(m_target->strName, m_target->strPath)
                                : m_pDestination->Insist(GetUsbName(), GetUsbPath());
    if (!state) {
        return true; // the notice tells
    }
    const bool bLost = LoseTarget(*state);
    if (!bLost && state->nFreeBytes >= nSize) {
        return false;
    }
    // Of a disk that has gone, nobody knows what is free there.
    const bool bKnown = !bLost && state->nFreeBytes >= 0;
    WarnOfSpace(bKnown ? tr("%1 are needed, %2 are free.")
                             .arg(CCopyText::Bytes(nSize), CCopyText::Bytes(state->nFreeBytes))
                       : QString());
    return true;
}

// True when the target has gone. One that nobody has told to be removed leaves the list, too.
bool CSelFileWidget::LoseTarget(const STDiskState& state)
{
    if (!m_target || !m_disks.IsGone(*m_target, state.baDevice)) {
        return false;
    }
    const QString strPath = m_target->strPath;
    g_TarnwickLog.LogExt(QStringLiteral("the chosen disk is gone: %1").arg(strPath));
    if (m_disks.RemoveIfMoved(strPath, state.baDevice)) {
        OnRefreshUSB();
    }
    return true;
}

void CSelFileWidget::ShowLastCopy(const STCopyAccount& stAccount, const QString& strUsbName)
{
    m_pLastCopy->Show(stAccount, strUsbName);
}

QString CSelFileWidget::DestinationFolder(const QString& strUsbPath, const QDateTime& time)
{
    // " at " brings blanks of its own, so there are two on either side of it
    // (docs/behaviour.md). The C locale keeps the digits the same in every language.
    const QLocale locale = QLocale::c();
    return QStringLiteral("%1/%2 %3 %4 %5")
        .arg(strUsbPath, tr("Tarnwick"), locale.toString(time, QStringLiteral("yyyy-MM-dd")), tr(" at "),
             locale.toString(time, QStringLiteral("hh.mm.ss")));
}

void CSelFileWidget::WarnOfSpace(const QString& strDetail)
{
    WarnUser(tr("No enough space, please select other Hard Disk or USB flash drive."), strDetail);
}

void CSelFileWidget::WarnUser(const QString& strText, const QString& strDetail)
{
    qDebug().noquote() << strText;
    // The box's one button is its cancel button, which says "OK".
    KvMessageBox box(strText, Style_Cancel, this);
    box.SetBtnText(Style_Cancel, tr("OK"));
    box.setIcon(QStringLiteral(":/res/Tip/tips.png"));
    box.SetDetail(strDetail, ENDetail::PLAIN);
    box.exec();
}
