#include "pages/CSelFileWidget.h"

#include "copy/CGetFileSizeThread.h"
#include "disk/CDestinationDiscovery.h"
#include "kit/CDecorationAccess.h"
#include "kit/CSkinMgr.h"
#include "kit/CSkinPicture.h"
#include "kit/KvMessageBox.h"
#include "kit/SkinFont.h"
#include "log/CClock.h"
#include "log/CLogTarnwick.h"
#include "pages/CDropDownAccess.h"
#include "pages/CDropDownKeys.h"
#include "pages/CElidedLabel.h"
#include "pages/CEmptyHint.h"
#include "pages/CPopupCloser.h"
#include "pages/CSearchWaitView.h"
#include "tree/CDirModel.h"
#include "ui_CSelFileWidget.h"

#include <QDateTime>
#include <QDebug>
#include <QFileInfo>
#include <QListWidget>
#include <QLocale>
#include <QMovie>
#include <QSet>
#include <QStorageInfo>
#include <QThread>
#include <QtConcurrent>

#include <algorithm>
#include <utility>

static const int LIST_WIDTH = 332;
static const int LIST_HEIGHT = 180;

// The open list covers the upper part of the disk's picture, so it needs an
// edge below; its names stand under the name in the title line.
static const char LIST_STYLE[] = "QListWidget { border-radius: 0px; border-bottom: 1px solid #e0e0e0; }"
                                 "QListWidget::item { border: 0px; padding: 0px 12px; }";

// The bytes that a user without special rights can still write. The file
// system's own count of free blocks can be larger, and a copy that was admitted
// by it would run full.
static qint64 FreeBytes(const QString& strPath) { return QStorageInfo(strPath).bytesAvailable(); }

CSelFileWidget::CSelFileWidget(QWidget* parent)
    : QWidget(parent)
    , m_pForm(std::make_unique<Ui_CSelFileWidget>())
{
    m_pForm->setupUi(this);
    InitData();
    InitView();
    InitConnect();
}

CSelFileWidget::~CSelFileWidget()
{
    m_bEnding = true;
    if (const auto pCancel = std::atomic_load(&m_pCancelRescan)) {
        *pCancel = true;
    }
    for (QFuture<void>& rescan : m_listRescan) {
        rescan.waitForFinished();
    }
    m_pSizeThread->requestInterruption();
    m_pSizeThread->wait();
}

void CSelFileWidget::InitData()
{
    // A child of its button, which is where screen readers look for it.
    m_pListWidget = new QListWidget(m_pForm->m_pDropBtn);
    m_pListWidget->setWindowFlags(Qt::Popup | Qt::FramelessWindowHint);
    m_pListWidget->setFixedSize(LIST_WIDTH, LIST_HEIGHT);
    m_pListWidget->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    m_pListWidget->setStyleSheet(QLatin1String(LIST_STYLE));
    m_pListWidget->setTextElideMode(Qt::ElideMiddle);
    m_pListWidget->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    new CPopupCloser(m_pListWidget);
    m_pDropDownKeys = new CDropDownKeys(m_pForm->m_pDropBtn, m_pListWidget);

    m_pRefreshMovie
        = new QMovie(CSkinPicture::MoviePath(QStringLiteral(":/res/Gif/refalsh.gif")), QByteArray(), this);
    m_pForm->RefreshLab->setMovie(m_pRefreshMovie);
    // A movie that has never run shows nothing; this leaves its first frame.
    m_pRefreshMovie->start();
    m_pRefreshMovie->stop();

    m_pSizeThread = new CGetFileSizeThread(this);
    // Not modal: the page takes no input while it counts, but the window can be closed.
    m_pWaitView = new CSearchWaitView(this);
}

void CSelFileWidget::InitView()
{
    InitNames();
    InitTexts();
    InitAccess();
    ShowTicked(false);
    m_pForm->m_pUSBPicLab->setPixmap(CSkinPicture::Pixmap(QStringLiteral(":/res/Label/usb_unselect.png")));
    m_pForm->m_pCopyBtn->setEnabled(false);
    setFocusProxy(m_pForm->m_pFileTree);
    SlotRefreshUSB();
}

// These names are the style sheet's: several widgets share one look.
void CSelFileWidget::InitNames()
{
    m_pForm->m_pMacWidget->setObjectName(QStringLiteral("driveWidget"));
    m_pForm->m_pUSBWidget->setObjectName(QStringLiteral("driveWidget"));
    m_pForm->m_pLine1Lab->setObjectName(QStringLiteral("m_pLineLab"));
    m_pForm->m_pLine2Lab->setObjectName(QStringLiteral("m_pLineLab"));
    m_pForm->m_pUSBBottomLab->setObjectName(QStringLiteral("bottomLab"));
    m_pForm->m_pCopyBtn->setObjectName(QStringLiteral("toolBtn"));
}

void CSelFileWidget::InitTexts()
{
    const QString strColor = CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72);
    const auto fnSet = [&strColor](QLabel* pLabel, const QString& strText, CSkinMgr::FontStyle enFont) {
        pLabel->setText(strText);
        pLabel->setFont(SkinFont(enFont));
        pLabel->setStyleSheet(strColor);
    };
    fnSet(m_pForm->m_pSrcLab, tr("Source"), CSkinMgr::FONT_STYLE_PX_15_BOLD);
    fnSet(m_pForm->m_pDstLab, tr("Destination"), CSkinMgr::FONT_STYLE_PX_15_BOLD);
    fnSet(m_pForm->m_pMacTitleLab, tr("Select File to Copy:"), CSkinMgr::FONT_STYLE_PX_14);
    fnSet(m_pForm->m_pUSBTitleLab, tr("Select Destination Disk:"), CSkinMgr::FONT_STYLE_PX_14);
    fnSet(m_pForm->m_pUSBBottomLab, tr("Select Destination Disk:"), CSkinMgr::FONT_STYLE_PX_13);
    m_pForm->m_pCopyBtn->setText(tr("Copy"));
    m_pForm->m_pCopyBtn->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13_BOLD));
    new CEmptyHint(tr("No disk to copy files from was found."), m_pForm->m_pFileTree);
    new CEmptyHint(tr("No USB disk was found.\nConnect one, and it appears here."), m_pListWidget);
}

// A prompt as the name of what it stands at.
static QString WithoutColon(QString strText)
{
    while (strText.endsWith(QLatin1Char(':')) || strText.endsWith(QChar(0xff1a))
           || (!strText.isEmpty() && strText.at(strText.size() - 1).isSpace())) {
        strText.chop(1);
    }
    return strText;
}

// What screen readers say of that which has no text of its own.
void CSelFileWidget::InitAccess()
{
    const QString strDisk = WithoutColon(tr("Select Destination Disk:"));
    m_pForm->m_pFileTree->setAccessibleName(WithoutColon(tr("Select File to Copy:")));
    m_pForm->m_pDropBtn->setAccessibleName(strDisk);
    m_pListWidget->setAccessibleName(strDisk);
    CDropDownAccess::Install(m_pForm->m_pDropBtn);
    m_pForm->RefreshLab->setAccessibleName(tr("Refresh List of Disks"));
    // The picture of the disk says what the name above it says.
    CDecorationAccess::Mark({m_pForm->m_pLine1Lab, m_pForm->m_pLine2Lab, m_pForm->m_pUSBPicLab});
}

void CSelFileWidget::InitConnect()
{
    connect(m_pForm->m_pCopyBtn, &QPushButton::clicked, this, &CSelFileWidget::SlotCopyBtnClick);
    connect(m_pForm->m_pDropBtn, &QPushButton::clicked, this, &CSelFileWidget::SlotShowListWidget);
    connect(m_pListWidget, &QListWidget::itemClicked, this, &CSelFileWidget::SlotListWidgetItemClick);
    connect(m_pDropDownKeys, &CDropDownKeys::SignalOpen, this, &CSelFileWidget::SlotShowListWidget);
    connect(m_pDropDownKeys, &CDropDownKeys::SignalChosen, this, &CSelFileWidget::SlotListWidgetItemClick);
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
    if (m_bCounting) {
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
    const STRescan stRescan{++m_nRescan, m_nDiskEvent.load()};
    // A later search answers the same question with fresher news, so an earlier
    // one that is still asking gives up.
    const auto pCancel = std::make_shared<std::atomic<bool>>(false);
    if (const auto pEarlier = std::atomic_exchange(&m_pCancelRescan, pCancel)) {
        *pEarlier = true;
    }
    // Read after the exchange: the destructor sets it before it looks for the
    // flag to cancel, so one of the two always notices the other.
    if (m_bEnding) {
        return;
    }
    RunOnGui([this, stRescan]() { BeginRescan(stRescan); });
    QStringList listSource;
    const auto fnFound = [this, stRescan, &listSource](const STVolume& stVolume) {
        if (stVolume.enRole == VOLUME_ROLE_SOURCE) {
            listSource.append(stVolume.strPath);
        } else if (stVolume.enRole == VOLUME_ROLE_DESTINATION) {
            RunOnGui(
                [this, stRescan, stVolume]() { AddFoundDisk(stRescan, stVolume.strPath, stVolume.strName); });
        }
    };
    CDestinationDiscovery::Scan(fnFound, *pCancel);
    RunOnGui([this, stRescan, listSource]() { EndRescan(stRescan, listSource); });
}

// Forgets the disks, but for those that arrived after the search had begun:
// whether it will come across them nobody knows.
void CSelFileWidget::BeginRescan(const STRescan& stRescan)
{
    if (stRescan.nNumber != m_nRescan) {
        return;
    }
    for (int i = m_listUsbDisk.size() - 1; i >= 0; --i) {
        if (!HasEventSince(m_listUsbDisk.at(i).first, stRescan.nFirstEvent, true)) {
            m_listUsbDisk.removeAt(i);
        }
    }
    // Until the end of the search the drop-down still shows the disks from
    // before, which cannot be copied to meanwhile.
    UpdateCopyBtn();
}

void CSelFileWidget::AddFoundDisk(const STRescan& stRescan, const QString& strPath, const QString& strName)
{
    const bool bOld = stRescan.nNumber != m_nRescan;
    if (bOld || IsListed(strPath) || HasEventSince(strPath, stRescan.nFirstEvent, false)) {
        return;
    }
    m_listUsbDisk.append(qMakePair(strPath, strName));
}

void CSelFileWidget::EndRescan(const STRescan& stRescan, const QStringList& listSource)
{
    if (stRescan.nNumber == m_nRescan) {
        RemoveDuplicates();
        m_pForm->m_pFileTree->Parse(listSource);
        OnRefreshUSB();
    }
    emit SignalStopMovie();
}

void CSelFileWidget::NoteDiskEvent(const QString& strPath, bool bArrived)
{
    m_hashLastEvent.insert(strPath, STDiskEvent{++m_nDiskEvent, bArrived});
}

// True when the last thing that happened to the path after that event was an
// arrival (bArrived) or a removal.
bool CSelFileWidget::HasEventSince(const QString& strPath, quint64 nFirstEvent, bool bArrived) const
{
    const auto it = m_hashLastEvent.constFind(strPath);
    return it != m_hashLastEvent.constEnd() && it->nNumber > nFirstEvent && it->bArrived == bArrived;
}

bool CSelFileWidget::IsListed(const QString& strPath) const
{
    return std::any_of(m_listUsbDisk.constBegin(), m_listUsbDisk.constEnd(),
                       [&strPath](const QPair<QString, QString>& disk) { return disk.first == strPath; });
}

// A stick that arrives during a search is found by it and reported by an event.
void CSelFileWidget::RemoveDuplicates()
{
    QSet<QString> setPath;
    for (int i = 0; i < m_listUsbDisk.size(); ++i) {
        const QString strPath = m_listUsbDisk.at(i).first;
        if (setPath.contains(strPath)) {
            m_listUsbDisk.removeAt(i--);
        }
        setPath.insert(strPath);
    }
}

void CSelFileWidget::AddDisk(const QFileInfo& volume)
{
    m_listUsbDisk.append(qMakePair(volume.filePath(), volume.fileName()));
    NoteDiskEvent(volume.filePath(), true);
}

void CSelFileWidget::RemoveDisk(const QString& strPath)
{
    NoteDiskEvent(strPath, false);
    for (int i = 0; i < m_listUsbDisk.size(); ++i) {
        if (m_listUsbDisk.at(i).first == strPath) {
            m_listUsbDisk.removeAt(i--);
        }
    }
}

QString CSelFileWidget::GetUsbPath() const
{
    const QString strName = GetUsbName();
    for (const QPair<QString, QString>& disk : m_listUsbDisk) {
        if (disk.second == strName) {
            return disk.first;
        }
    }
    return QString();
}

QString CSelFileWidget::GetUsbName() const { return m_pForm->m_pUSBTitleLab->text(); }

void CSelFileWidget::OnRefreshUSB()
{
    QStringList listName;
    for (const QPair<QString, QString>& disk : qAsConst(m_listUsbDisk)) {
        qDebug().noquote() << disk.second;
        listName.append(disk.second);
    }
    m_pListWidget->clear();
    m_pListWidget->insertItems(m_pListWidget->count(), listName);
    for (int i = 0; i < listName.size(); ++i) {
        m_pListWidget->item(i)->setToolTip(CElidedLabel::ToolTipText(listName.at(i)));
    }
    qDebug() << "FFFFFFFFFFFFFFFFFFF" << listName;

    // Every rebuild chooses the first disk again, whatever was chosen before:
    // after a change of disks the user is to look at the choice again.
    ShowDisk(listName.isEmpty() ? tr("Select Destination Disk:") : m_pListWidget->item(0)->text());
}

void CSelFileWidget::ShowDisk(const QString& strName)
{
    m_pForm->m_pUSBTitleLab->setText(strName);
    const QString strPath = GetUsbPath();
    ShowSpace(strPath);
    m_pForm->m_pUSBPicLab->setPixmap(
        CSkinPicture::Pixmap(strPath.isEmpty() ? QStringLiteral(":/res/Label/usb_unselect.png")
                                               : QStringLiteral(":/res/Label/usb_select.png")));
    UpdateCopyBtn();
}

void CSelFileWidget::ShowSpace(const QString& strPath)
{
    m_pForm->m_pDropBtn->setAccessibleDescription(strPath.isEmpty() ? QString() : GetUsbName());
    if (strPath.isEmpty()) {
        m_pForm->m_pUSBBottomLab->setText(tr("Select Destination Disk:"));
        return;
    }
    const QStorageInfo storage(strPath);
    m_pForm->m_pUSBBottomLab->setText(
        tr("<span style=\"color:#ff7e17;\">%1GB</span> Available, "
           "<span style=\"color:#ff7e17;\">%2GB</span> Total")
            .arg(GigabyteText(storage.bytesAvailable()), GigabyteText(storage.bytesTotal())));
}

QString CSelFileWidget::GigabyteText(qint64 nBytes)
{
    // Single precision is enough for two decimals and is what the figures have
    // always been computed in; a wider type would round some of them otherwise.
    const float fGigabytes = static_cast<float>(qMax<qint64>(0, nBytes)) / 1e9F;
    return QString::number(static_cast<double>(fGigabytes), 'f', 2);
}

bool CSelFileWidget::IsSomethingChecked() const
{
    return m_bCounting ? m_bCheckedAtClick : CDirModel::GetInstence()->HasCheckedEntry();
}

void CSelFileWidget::UpdateCopyBtn()
{
    EnableCopyBtn(!m_bCounting && !GetUsbPath().isEmpty() && IsSomethingChecked());
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

// ---------------------------------------------------------------- the user's choices

void CSelFileWidget::SlotShowListWidget()
{
    if (m_bCounting) {
        return;
    }
    const QList<QListWidgetItem*> listItem
        = m_pListWidget->findItems(GetUsbName(), Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_pListWidget->setCurrentItem(listItem.isEmpty() ? nullptr : listItem.first());
    MarkChosenDisk();
    m_pListWidget->move(m_pForm->m_pUSBWidget->mapToGlobal(m_pForm->m_pUSBPicFrame->pos()) + QPoint(1, 0));
    m_pListWidget->show();
    // The list takes the pointer from the button without telling it.
    m_pForm->m_pDropBtn->setAttribute(Qt::WA_UnderMouse, false);
    m_pForm->m_pDropBtn->update();
    // A popup gets the keys without the focus, but a screen reader follows the focus.
    m_pListWidget->setFocus(Qt::PopupFocusReason);
}

// The entry under the pointer has the same ground as the current one, so the
// chosen disk is told by its letters.
void CSelFileWidget::MarkChosenDisk()
{
    for (int i = 0; i < m_pListWidget->count(); ++i) {
        QListWidgetItem* pItem = m_pListWidget->item(i);
        QFont font = m_pListWidget->font();
        font.setBold(pItem == m_pListWidget->currentItem());
        pItem->setFont(font);
    }
}

void CSelFileWidget::SlotListWidgetItemClick(QListWidgetItem* pItem)
{
    if (m_bCounting || !pItem) {
        return;
    }
    m_pForm->m_pUSBTitleLab->setText(pItem->text());
    m_pListWidget->hide();
    ShowSpace(GetUsbPath());
}

void CSelFileWidget::SlotCheckFileSelected()
{
    ShowTicked(IsSomethingChecked());
    UpdateCopyBtn();
}

void CSelFileWidget::ShowTicked(bool bTicked)
{
    QLabel* pLabel = m_pForm->m_pCopyLab;
    pLabel->setPixmap(CSkinPicture::Pixmap(bTicked ? QStringLiteral(":/res/Label/allow.png")
                                                   : QStringLiteral(":/res/Label/allow_deft.png")));
    pLabel->setAccessibleName(bTicked ? tr("Files selected") : tr("No files selected"));
}

// ---------------------------------------------------------------- from Copy to the start of the copy

qint64 CSelFileWidget::GetTotalSize() const { return m_nTotalSize; }

QString CSelFileWidget::GetDstFolder() const { return m_strDstFolder; }

void CSelFileWidget::SlotCopyBtnClick()
{
    if (m_target) {
        return; // the press before is still being dealt with
    }
    const QString strPath = GetUsbPath();
    const QStorageInfo storage(strPath);
    m_target = STTarget{strPath, GetUsbName(), storage.device(), m_nDiskEvent.load()};
    if (storage.isReadOnly()) {
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

// From here to EndCounting the nodes belong to the size worker: nothing on this
// thread reads one.
void CSelFileWidget::BeginCounting()
{
    CDirModel* pModel = CDirModel::GetInstence();
    m_bCheckedAtClick = pModel->HasCheckedEntry();
    m_bCounting = true;
    m_bFocusAtClick = window()->focusWidget() == m_pForm->m_pCopyBtn;
    m_pForm->m_pFileTree->LendNodes(true);
    EnableCopyBtn(false);
    m_pListWidget->hide();

    m_pWaitView->SetText(tr("Calculating files size..."), QString());
    m_pWaitView->ChangeGifStatus(true);
    m_pWaitView->show();

    m_pSizeThread->SetRootNode(pModel->GetRootNode());
    m_pSizeThread->start();
}

void CSelFileWidget::EndCounting()
{
    // The worker sends its result before it ends; the next count must not find
    // it still running.
    m_pSizeThread->wait();
    m_pWaitView->ChangeGifStatus(false);
    m_pWaitView->hide();
    if (!m_bCounting) {
        return;
    }
    m_bCounting = false;
    m_pForm->m_pFileTree->LendNodes(false);
    UpdateCopyBtn();
    if (m_bFocusAtClick && window()->focusWidget() == m_pForm->m_pFileTree) {
        m_pForm->m_pCopyBtn->setFocus();
    }
}

void CSelFileWidget::SlotGetFileSizeFinish(qint64 nSize)
{
    EndCounting();
    if (!m_target) {
        m_target
            = STTarget{GetUsbPath(), GetUsbName(), QStorageInfo(GetUsbPath()).device(), m_nDiskEvent.load()};
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
    const qint64 nFree = IsTargetGone() ? -1 : FreeBytes(m_target ? m_target->strPath : GetUsbPath());
    if (nFree >= nSize) {
        return false;
    }
    WarnUser(tr("No enough space, please select other Hard Disk or USB flash drive."));
    return true;
}

// A disk that is pulled can leave its mount point behind as a plain folder of
// the disk below, which would take the copy; another disk may also have come in
// its place.
bool CSelFileWidget::IsTargetGone() const
{
    if (!m_target || m_target->strPath.isEmpty()) {
        return false;
    }
    const bool bGone = HasEventSince(m_target->strPath, m_target->nFirstEvent, false)
        || QStorageInfo(m_target->strPath).device() != m_target->baDevice;
    if (bGone) {
        g_TarnwickLog.LogExt(QStringLiteral("the chosen disk is gone: %1").arg(m_target->strPath));
    }
    return bGone;
}

QString CSelFileWidget::DestinationFolder(const QString& strUsbPath, const QDateTime& time)
{
    // " at " brings blanks of its own, so there are two on either side of it;
    // people find their rescues by this name and it stays as it is. The C
    // locale keeps the digits the same in every language.
    const QLocale locale = QLocale::c();
    return QStringLiteral("%1/%2 %3 %4 %5")
        .arg(strUsbPath, tr("Tarnwick"), locale.toString(time, QStringLiteral("yyyy-MM-dd")), tr(" at "),
             locale.toString(time, QStringLiteral("hh.mm.ss")));
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
