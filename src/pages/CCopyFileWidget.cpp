#include "pages/CCopyFileWidget.h"

#include "copy/CCopyFileThread.h"
#include "disk/CLeftoverFolder.h"
#include "kit/CDecorationAccess.h"
#include "kit/CSkinMgr.h"
#include "kit/CSkinPicture.h"
#include "kit/KvMessageBox.h"
#include "kit/SkinFont.h"
#include "log/CLogTarnwick.h"
#include "pages/CCopyEndBox.h"
#include "pages/CCopyWatch.h"
#include "pages/CEarlyPressGuard.h"
#include "pages/CStuckWorker.h"
#include "tree/CDirModel.h"
#include "ui_CCopyFileWidget.h"

#include <QMovie>
#include <QTimer>

#include <utility>

// Screens show 60 pictures a second.
static const int FRAME_MS = 16;

// When the page goes, the program is ending: its user waits.
static const unsigned long WAIT_AT_END_MS = 1000;
static const unsigned long WAIT_FOR_FLUSH_MS = 2000; // more, for the last bytes
static const int WAIT_FOR_REPORT_MS = 300;

static const qint64 SECONDS_A_DAY = 86400;
static const qint64 SECONDS_AN_HOUR = 3600;
static const qint64 SECONDS_A_MINUTE = 60;

CCopyFileWidget::CCopyFileWidget(QWidget* parent)
    : QWidget(parent)
    , m_pForm(std::make_unique<Ui_CCopyFileWidget>())
{
    m_pForm->setupUi(this);
    InitData();
    InitView();
    InitConnect();
}

CCopyFileWidget::~CCopyFileWidget()
{
    m_pCopyThread->SetCopyStatus(COPY_STATUS_STOP);
    bool bEnded = m_pCopyThread->wait(WAIT_AT_END_MS);
    if (!bEnded && m_pCopyThread->CurrentStep() == ENCopyStep::FLUSHING) {
        bEnded = m_pCopyThread->wait(WAIT_FOR_FLUSH_MS);
    }
    if (!bEnded) {
        CStuckWorker::LeaveBehind(m_pCopyThread, WAIT_FOR_REPORT_MS);
    }
}

void CCopyFileWidget::InitData()
{
    MakeWorker();
    m_pWatch = new CCopyWatch(m_pForm->m_pStateLab);
    m_pPressGuard = new CEarlyPressGuard(m_pForm->m_pCancelBtn);
    m_pMovie = new QMovie(CSkinPicture::MoviePath(QStringLiteral(":/res/Gif/copy.gif")), QByteArray(), this);
    m_pForm->m_pGifLab->setMovie(m_pMovie);
    m_pFrameTimer = new QTimer(this);
    m_pFrameTimer->setObjectName(QStringLiteral("m_pFrameTimer"));
    m_pFrameTimer->setSingleShot(true);
    m_pFrameTimer->setInterval(FRAME_MS);
}

void CCopyFileWidget::InitView()
{
    // The names are the style sheet's: the frame looks like the panels of the
    // selection page, the button like its main button.
    m_pForm->m_pCopyFrame->setObjectName(QStringLiteral("driveWidget"));
    m_pForm->m_pCancelBtn->setObjectName(QStringLiteral("toolBtn"));
    m_pForm->m_pCancelBtn->setText(tr("Cancel"));
    m_pForm->m_pCancelBtn->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13_BOLD));

    const QString strColor = CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72);
    m_pForm->m_pCopyTitleLab->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_14));
    m_pForm->m_pCopyTitleLab->setStyleSheet(strColor);
    m_pForm->m_pTimeLab->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    m_pForm->m_pTimeLab->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_120));
    m_pForm->m_pStateLab->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    QSizePolicy policy = m_pForm->m_pStateLab->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_pForm->m_pStateLab->setSizePolicy(policy);
    CCopyWatch::ShowLine(*m_pForm->m_pStateLab, CCopyStateLine());
    ShowTime(tr("Calculating..."));

    setAccessibleName(tr("Copy Progress"));
    m_pForm->m_pProgress->setAccessibleName(tr("Copy Progress"));
    CDecorationAccess::Mark({m_pForm->m_pGifLab});
}

// What a worker that was left behind had still to say is on its way when its
// connections end, so who speaks is looked at on arrival.
template <typename Signal, typename Slot> void CCopyFileWidget::Hear(Signal fnSignal, Slot fnSlot)
{
    const auto fnHear = [this, pWorker = m_pCopyThread, fnSlot](const auto&... values) {
        if (pWorker == m_pCopyThread) {
            (this->*fnSlot)(values...);
        }
    };
    connect(m_pCopyThread, fnSignal, this, fnHear);
}

void CCopyFileWidget::MakeWorker()
{
    m_pCopyThread = new CCopyFileThread(this);
    Hear(&CCopyFileThread::SignalCopyCopyInfo, &CCopyFileWidget::SlotGetCopyInfo);
    Hear(&CCopyFileThread::SignalRemainTime, &CCopyFileWidget::SlotCopyRemainTime);
    Hear(&CCopyFileThread::SignalCopyAccount, &CCopyFileWidget::SlotCopyAccount);
    Hear(&CCopyFileThread::SignalCopyFinish, &CCopyFileWidget::SlotCopyFinish);
    connect(m_pCopyThread, &QThread::finished, this, &CCopyFileWidget::OnWorkerFinished);
}

void CCopyFileWidget::InitConnect()
{
    connect(m_pWatch, &CCopyWatch::SignalGivenUp, this, &CCopyFileWidget::LeaveWorkerBehind);
    connect(m_pFrameTimer, &QTimer::timeout, this, &CCopyFileWidget::LetPaint);
    connect(m_pForm->m_pCancelBtn, &QPushButton::clicked, this, &CCopyFileWidget::SlotCancelBtnClick);
}

void CCopyFileWidget::OnCopyFile(qint64 totalSize, QString destPath, QString usbName)
{
    m_enStatus = m_bExitQuestion ? COPY_STATUS_PAUSE : COPY_STATUS_RUN;
    m_strUsbName = std::move(usbName);
    m_order = {totalSize, std::move(destPath)};
    m_stAccount.reset();

    // It is about the copy before.
    CloseQuestion();
    m_pMovie->start();
    m_pForm->m_pProgress->setValue(0);
    m_pForm->m_pCopyTitleLab->clear();
    ShowTime(tr("Calculating..."));
    m_pForm->m_pCancelBtn->setEnabled(true);
    m_pPressGuard->Begin();

    m_pWatch->End();
    if (m_stage.Begin()) {
        StartWorker();
    } else {
        m_pWatch->Await(m_pCopyThread);
    }
}

void CCopyFileWidget::StartWorker()
{
    // Whatever an earlier worker had to say has arrived by now, so a removal
    // that found no worker running must not silence the end of this copy.
    m_bExtract = false;
    // A copy that has waited may have been paused meanwhile.
    m_pCopyThread->SetCopyParam(m_order.nTotalSize, CDirModel::GetInstence()->GetRootNode(),
                                m_order.strDestPath, m_enStatus);
    m_pCopyThread->start(QThread::TimeCriticalPriority);
    m_pWatch->Begin(m_pCopyThread);
}

// Arrives after every other signal of that run.
void CCopyFileWidget::OnWorkerFinished()
{
    m_pWatch->End();
    if (m_stage.WorkerEnded()) {
        StartWorker();
    }
}

// Its disk does not answer, and nobody knows whether it ever will.
void CCopyFileWidget::LeaveWorkerBehind()
{
    const bool bEndsCopy = m_stage.Stage() == ENCopyStage::COPYING;
    const STCopyAccount stAccount = CStuckWorker::LeaveBehind(m_pCopyThread, WAIT_FOR_REPORT_MS);
    SlotCopyAccount(stAccount);
    MakeWorker();
    m_pWatch->End();
    if (m_stage.LeaveWorker()) {
        StartWorker();
        return;
    }
    if (bEndsCopy) {
        m_pMovie->stop();
        emit SignalCopyFileFinish();
    }
}

void CCopyFileWidget::SetCopyStatus(int nStatus)
{
    // The exit question pauses and resumes without knowing that the user, or a
    // removed disk, has stopped the copy already, or that its stop is being asked about.
    const bool bBehindQuestion = m_pQuestion && nStatus == COPY_STATUS_RUN;
    if (!IsStopping() && !bBehindQuestion) {
        ApplyStatus(static_cast<ENCopyStatus>(nStatus));
    }
}

void CCopyFileWidget::SetExitQuestion(bool bOpen) { m_bExitQuestion = bOpen; }

// Stopped, and the worker has not come to it yet.
bool CCopyFileWidget::IsStopping() const { return m_stage.IsWorkerBusy() && m_enStatus == COPY_STATUS_STOP; }

int CCopyFileWidget::GetCopyStatus() const { return m_enStatus; }

QString CCopyFileWidget::GetCopyUsbName() const { return m_strUsbName; }

void CCopyFileWidget::ApplyStatus(ENCopyStatus enStatus)
{
    m_enStatus = enStatus;
    if (!m_stage.IsWorkerOfEarlierCopy()) {
        m_pCopyThread->SetCopyStatus(enStatus);
    }
}

QString CCopyFileWidget::RemainTimeText(qint64 nSeconds)
{
    // Days are dropped on purpose: the label has room for hours, and an
    // estimate of more than a day is far too rough to be read in days.
    const qint64 nHours = nSeconds % SECONDS_A_DAY / SECONDS_AN_HOUR;
    const qint64 nMinutes = nSeconds % SECONDS_AN_HOUR / SECONDS_A_MINUTE;
    return QString::asprintf("%02lld:%02lld:%02lld", nHours, nMinutes, nSeconds % SECONDS_A_MINUTE);
}

void CCopyFileWidget::ShowTime(const QString& strTime)
{
    m_pForm->m_pTimeLab->setText(tr("Remaining Time: %1").arg(strTime));
}

void CCopyFileWidget::SlotGetCopyInfo(const QString& strFileName, int nPercent)
{
    if (m_stage.IsWorkerOfEarlierCopy()) {
        return;
    }
    HoldPainting();
    m_pForm->m_pCopyTitleLab->setText(tr("Copying files to (%1): %2").arg(m_strUsbName, strFileName));
    m_pForm->m_pProgress->setValue(qBound(0, nPercent, 100));
}

// Thousands of small files a second are told one by one. The texts follow each of
// them, but painting more of them than the screen can show would take half a
// processor from the copy.
void CCopyFileWidget::HoldPainting()
{
    if (m_pFrameTimer->isActive()) {
        m_pForm->m_pCopyTitleLab->setUpdatesEnabled(false);
        return;
    }
    m_pFrameTimer->start();
}

void CCopyFileWidget::LetPaint()
{
    if (m_pForm->m_pCopyTitleLab->updatesEnabled()) {
        return;
    }
    m_pForm->m_pCopyTitleLab->setUpdatesEnabled(true);
    // At once: a repaint that waits for its turn would be held back by the next file.
    m_pForm->m_pCopyTitleLab->repaint();
    m_pFrameTimer->start();
}

void CCopyFileWidget::SlotCopyRemainTime(qint64 nSeconds)
{
    if (m_stage.IsWorkerOfEarlierCopy() || nSeconds <= 0) {
        return;
    }
    ShowTime(RemainTimeText(nSeconds));
}

STCopyAccount CCopyFileWidget::LastAccount() const { return m_stAccount.value_or(STCopyAccount()); }

// The worker was told to stop and may not have touched the removed disk since.
static void TakeForLost(STCopyAccount& stAccount)
{
    stAccount.bGone = true;
    stAccount.enFlush = ENCopyFlush::FAILED;
}

void CCopyFileWidget::SlotCopyAccount(const STCopyAccount& stAccount)
{
    if (m_stage.IsWorkerOfEarlierCopy()) {
        return;
    }
    m_stAccount = stAccount;
    if (m_stage.Stage() == ENCopyStage::REMOVED && !stAccount.IsWhole()) {
        TakeForLost(*m_stAccount);
    }
}

void CCopyFileWidget::SlotCopyFinish()
{
    if (m_bExtract || !m_stage.Finish()) {
        m_bExtract = false;
        return;
    }
    m_pMovie->stop();
    m_pWatch->End();
    CloseQuestion();
    ShowTime(QStringLiteral("00:00:00"));

    if (!m_pFinishBox) {
        m_pFinishBox = new CCopyEndBox(this);
    }
    m_pFinishBox->SetAccount(m_stAccount);
    m_pFinishBox->exec();

    if (m_bExtract) {
        // The disk was pulled while the box was open: the removal has taken the
        // box away, has told the user and has ended the copy.
        m_bExtract = false;
        return;
    }
    emit SignalCopyFileFinish();
}

bool CCopyFileWidget::SlotCancelBtnClick()
{
    if (IsStopping()) {
        return true;
    }
    ApplyStatus(COPY_STATUS_PAUSE);
    m_pMovie->setPaused(true);

    const std::optional<int> nAnswer = AskStop();
    if (!nAnswer) {
        return true; // the copy has ended while the question was open
    }
    switch (*nAnswer) {
    case 0: // closed from the title bar
    case Style_No:
    case Style_Cancel:
        ApplyStatus(m_bExitQuestion ? COPY_STATUS_PAUSE : COPY_STATUS_RUN);
        m_pMovie->setPaused(false);
        return false;
    case Style_Yes:
    case Style_Ok:
        StopByUser();
        return true;
    default:
        return true;
    }
}

// Nothing when the question was taken away.
std::optional<int> CCopyFileWidget::AskStop()
{
    KvMessageBox box(
        tr("Your data might not be copied completely, are you sure to stop the copying process?"),
        Style_Yes | Style_Cancel, this);
    box.SetButtonText(tr("Yes"), QString(), QString(), tr("Cancel"));
    box.setIcon(QStringLiteral(":/res/Tip/tips_mark.png"));
    m_pQuestion = &box;
    box.exec();
    if (!m_pQuestion) {
        return std::nullopt;
    }
    m_pQuestion = nullptr;
    return box.GetClickedBtn();
}

void CCopyFileWidget::StopByUser()
{
    ApplyStatus(COPY_STATUS_STOP);
    if (!m_stage.Stop()) {
        ShowStopping();
        return;
    }
    m_stAccount.emplace().bStopped = true;
    g_TarnwickLog.LogExt(QStringLiteral("copy ended before it began"));
    m_pMovie->stop();
    emit SignalCopyFileFinish();
}

// The worker comes to its end when its disks let it.
void CCopyFileWidget::ShowStopping()
{
    m_pWatch->Stop();
    // The page, so that the next key goes to none of the window's own buttons.
    if (window()->focusWidget() == m_pForm->m_pCancelBtn) {
        setFocus();
    }
    m_pForm->m_pCancelBtn->setEnabled(false);
}

// Takes the question away without an answer.
void CCopyFileWidget::CloseQuestion()
{
    if (m_pQuestion) {
        m_pQuestion->hide();
        m_pQuestion = nullptr;
    }
}

void CCopyFileWidget::USBExtract()
{
    const bool bWhole = m_pFinishBox && m_pFinishBox->SaysAllIsOnTheDisk();
    if (!m_stage.Remove()) {
        return; // told already, or the user is still reading it
    }
    m_bExtract = true;
    ApplyStatus(COPY_STATUS_STOP);
    m_pMovie->stop();
    CloseOfRemoval();
    CLeftoverFolder::CleanMountPoint(m_strUsbName);

    KvMessageBox box(
        tr("The destination storage device has been removed! Please check and connect the storage "
           "device then try again."),
        Style_Ok, this);
    box.SetBtnText(Style_Ok, tr("OK"));
    box.setIcon(QStringLiteral(":/res/Tip/tips.png"));
    if (bWhole) {
        box.SetDetail(tr("Everything was on the disk before it was removed."), ENDetail::GOOD);
    }
    box.exec();
    emit SignalCopyFileFinish();
}

// What was said or asked before is out of date.
void CCopyFileWidget::CloseOfRemoval()
{
    CloseQuestion();
    if (m_pFinishBox) {
        m_pFinishBox->TakeAway();
    }
    if (!m_stAccount) {
        TakeForLost(m_stAccount.emplace());
    }
    if (!m_stage.IsWorkerBusy() || m_stage.IsWorkerOfEarlierCopy()) {
        return;
    }
    m_stAccount->nFiles = m_pCopyThread->FilesDone();
    m_stAccount->nBytes = m_pCopyThread->BytesDone();
    m_pWatch->Stop();
}
