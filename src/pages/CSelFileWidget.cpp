#include "pages/CSelFileWidget.h"

#include "copy/CGetFileSizeThread.h"
#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeInfo.h"
#include "kit/CClickableLabelAccess.h"
#include "kit/CSkinPicture.h"
#include "kit/KvMessageBox.h"
#include "log/CClock.h"
#include "log/CLogTarnwick.h"
#include "pages/CDiskSpace.h"
#include "pages/CDropDownList.h"
#include "pages/CSearchWaitView.h"
#include "pages/CSelFileForm.h"
#include "pages/CSelectionCount.h"
#include "tree/CFileTreeAccess.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QLocale>
#include <QMovie>
#include <QStorageInfo>
#include <QThread>
#include <QtConcurrent>

#include <algorithm>
#include <utility>

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
    for (QFuture<void>& rescan : m_listRescan) {
        rescan.waitForFinished();
    }
    m_pSizeThread->requestInterruption();
    m_pSizeThread->wait();
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
    m_pCount = std::make_unique<CSelectionCount>(m_pForm->m_pFileTree, m_pSizeThread, m_pWaitView);
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
    connect(m_pListWidget, &CDropDownList::SignalOpen, this, &CSelFileWidget::SlotShowListWidget);
    connect(m_pListWidget, &CDropDownList::SignalChosen, this, &CSelFileWidget::SlotListWidgetItemClick);
    connect(m_pForm->m_pUSBTitleLab, &CClickableLabel::SignalLabelClicked, this,
            &CSelFileWidget::SlotShowListWidget);
    connect(m_pSizeThread, &CGetFileSizeThread::SignalGetSizeFinish, this,
            &CSelFileWidget::SlotGetFileSizeFinish);
    connect(m_pForm->m_pFileTree, &CFileTreeView::SignalItemClicked, this,
            &CSelFileWidget::SlotCheckFileSelected);
    connect(
        m_pForm->RefreshLab, &CClickableLabel::SignalLabelClicked, this, [this]() { OnRefreshClicked(); },
        Qt::DirectConnection);
    connect(
        this, &CSelFileWidget::SignalStopMovie, this, [this]() { OnStopMovie(); }, Qt::QueuedConnection);
}

// ---------------------------------------------------------------- disks

void CSelFileWidget::OnRefreshClicked()
{
    if (m_pCount->IsRunning()) {
        return;
    }
    ++m_nMovieRuns;
    m_pRefreshMovie->start();
    const auto fnIsOver = [](const QFuture<void>& rescan) { return rescan.isFinished(); };
    m_listRescan.erase(std::remove_if(m_listRescan.begin(), m_listRescan.end(), fnIsOver),
                       m_listRescan.end());
    m_listRescan.append(QtConcurrent::run(this, &CSelFileWidget::SlotRefreshUSB));
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
    RunOnGui([this, search]() {
        // Until the end of the search the drop-down still shows the disks from
        // before, which cannot be copied to meanwhile.
        if (m_disks.Begin(search)) {
            UpdateCopyBtn();
        }
    });
    QStringList listSource;
    const auto fnFound = [this, search, &listSource](const STVolume& volume) {
        if (volume.enRole == VOLUME_ROLE_SOURCE) {
            listSource.append(volume.strPath);
        } else if (volume.enRole == VOLUME_ROLE_DESTINATION) {
            RunOnGui([this, search, volume]() {
                m_disks.Found(search, volume.strPath, volume.strName, volume.baDevice);
            });
        }
    };
    CDestinationDiscovery::Scan(fnFound, *search.pReplaced);
    RunOnGui([this, search, listSource]() { EndSearch(search, listSource); });
}

void CSelFileWidget::EndSearch(const STDiskSearch& search, const QStringList& listSource)
{
    if (m_disks.End(search)) {
        m_pForm->m_pFileTree->Parse(listSource);
        OnRefreshUSB();
    }
    emit SignalStopMovie();
}

void CSelFileWidget::AddDisk(const QFileInfo& volume)
{
    const QString strPath = volume.filePath();
    m_disks.Arrived(strPath, volume.fileName(), CVolumeInfo::DeviceOf(strPath));
}

void CSelFileWidget::RemoveDisk(const QString& strPath) { m_disks.Removed(strPath); }

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
    m_pForm->ShowDisk(strName, m_disks.PathOf(strName));
    UpdateCopyBtn();
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
    m_pForm->ShowSpace(strName, m_disks.PathOf(strName));
}

void CSelFileWidget::SlotCheckFileSelected()
{
    m_pForm->ShowTicked(m_pCount->IsSomethingTicked());
    UpdateCopyBtn();
}

void CSelFileWidget::UpdateCopyBtn()
{
    EnableCopyBtn(!m_pCount->IsRunning() && !GetUsbPath().isEmpty() && m_pCount->IsSomethingTicked());
}

// A button that is disabled while it has the focus hands it on to the next
// widget in the order, which is the window's close button: one more press of
// Space would ask whether to leave.
void CSelFileWidget::EnableCopyBtn(bool bEnable)
{
    if (!bEnable && window()->focusWidget() == m_pForm->m_pCopyBtn) {
        m_pForm->m_pFileTree->setFocus();
    }
    m_pForm->m_pCopyBtn->setEnabled(bEnable);
}

// ---------------------------------------------------------------- from Copy to the start of the copy

qint64 CSelFileWidget::GetTotalSize() const { return m_nTotalSize; }

QString CSelFileWidget::GetDstFolder() const { return m_strDstFolder; }

void CSelFileWidget::SlotCopyBtnClick()
{
    if (m_target) {
        return; // the press before is still being dealt with
    }
    m_target = ChosenDisk();
    if (LoseTarget()) {
        WarnOfSpace();
        m_target.reset();
        return;
    }
    if (QStorageInfo(m_target->strPath).isReadOnly()) {
        WarnUser(tr(
            "Your drive may be damaged and Tarnwick can not write to this drive, please change another one "
            "and retry."));
        m_target.reset();
        return;
    }
    m_nTotalSize = 0;
    m_strDstFolder.clear();
    BeginCounting();
}

void CSelFileWidget::BeginCounting()
{
    m_bFocusAtClick = window()->focusWidget() == m_pForm->m_pCopyBtn;
    m_pListWidget->hide();
    m_pCount->Begin(tr("Calculating files size..."));
    EnableCopyBtn(false);
}

void CSelFileWidget::EndCounting()
{
    if (!m_pCount->End()) {
        return;
    }
    UpdateCopyBtn();
    if (m_bFocusAtClick && window()->focusWidget() == m_pForm->m_pFileTree) {
        m_pForm->m_pCopyBtn->setFocus();
    }
}

void CSelFileWidget::SlotGetFileSizeFinish(qint64 nSize)
{
    EndCounting();
    if (!m_target) {
        m_target = ChosenDisk();
    }
    if (ShowUsbNoEnoughDlg(nSize)) {
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
    if (!LoseTarget() && CDiskSpace::FreeBytes(m_target ? m_target->strPath : GetUsbPath()) >= nSize) {
        return false;
    }
    WarnOfSpace();
    return true;
}

STCopyTarget CSelFileWidget::ChosenDisk() const
{
    return m_disks.Target(GetUsbName(), CVolumeInfo::DeviceOf(GetUsbPath()));
}

// True when the target has gone. One that nobody has told to be removed leaves the list, too.
bool CSelFileWidget::LoseTarget()
{
    if (!m_target) {
        return false;
    }
    const QString strPath = m_target->strPath;
    const QByteArray baDevice = CVolumeInfo::DeviceOf(strPath);
    if (!m_disks.IsGone(*m_target, baDevice)) {
        return false;
    }
    g_TarnwickLog.LogExt(QStringLiteral("the chosen disk is gone: %1").arg(strPath));
    if (m_disks.RemoveIfMoved(strPath, baDevice)) {
        OnRefreshUSB();
    }
    return true;
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

void CSelFileWidget::WarnOfSpace()
{
    WarnUser(tr("No enough space, please select other Hard Disk or USB flash drive."));
}

void CSelFileWidget::WarnUser(const QString& strText)
{
    qDebug().noquote() << strText;
    // The box's one button is its cancel button, which says "OK".
    KvMessageBox box(strText, Style_Cancel, this);
    box.SetBtnText(Style_Cancel, tr("OK"));
    box.setIcon(QStringLiteral(":/res/Tip/tips.png"));
    box.exec();
}
