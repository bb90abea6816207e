#include "app/CTarnwickMacPE.h"

#include "app/CSmallScreen.h"
#include "copy/CCopyFileThread.h"
#include "disk/CDestinationDiscovery.h"
#include "disk/platform/CVolumeBus.h"
#include "disk/platform/CVolumeFolder.h"
#include "files/CAsideQuestion.h"
#include "kit/CDecorationAccess.h"
#include "kit/CSkinMgr.h"
#include "kit/CSkinPicture.h"
#include "kit/KvMessageBox.h"
#include "kit/SkinFont.h"
#include "log/CLogTarnwick.h"
#include "settings/CLanguageSetting.h"
#include "ui_CTarnwickMacPE.h"

#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStyleHints>

#include <algorithm>

static const int PAGE_SELECT = 0;
static const int PAGE_COPY = 1;
static const int AWAKE_SECONDS = 2592000;
static const int START_TIMEOUT_MS = 30000;
static const int REPORT_WAIT_MS = 300;
// The system tells a bus from its own books, at once.
static const std::chrono::milliseconds BUS_WAIT(300);

CTarnwickMacPE::CTarnwickMacPE(QWidget* pParent)
    : QMainWindow(pParent)
    , m_pUi(std::make_unique<Ui::CTarnwickMacPE>())
{
    CLanguageSetting::GetInstance();
    m_pUi->setupUi(this);
    InitData();
    InitView();
    InitConnect();
    ProhibitSleep();
}

CTarnwickMacPE::~CTarnwickMacPE() = default;

void CTarnwickMacPE::InitData()
{
    if (!m_pDiskEvent) {
        m_pDiskEvent = std::make_unique<STDiskNotication>();
    }
    CDiskListener::GetInstance().StartListener(&CTarnwickMacPE::DiskChange, this);
}

void CTarnwickMacPE::InitView()
{
    setWindowFlags(windowFlags() | Qt::FramelessWindowHint);
    setAttribute(Qt::WA_TranslucentBackground, false);
    m_pUi->m_pTitleWidget->setBackgroundImage(QStringLiteral(":/res/Title/bg40.png"));
    m_pUi->m_pTitleWidget->setEnabledMouseDrag(this, QPoint(0, 0), true);
    m_pUi->m_pLogoLab->setPixmap(CSkinPicture::Pixmap(QStringLiteral(":/res/Title/tarnwick_logo_34.png")));
    m_pUi->m_pTitleLab->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_16));
    m_pUi->m_pTitleLab->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72));
    m_pUi->m_pTitleLab->setText(tr("Kelvane Tarnwick"));
    // The window's title is for tools; people know the program by this name.
    setAccessibleName(tr("Kelvane Tarnwick"));
    CDecorationAccess::Mark({m_pUi->m_pLogoLab, m_pUi->m_pLineLab});
    m_pUi->m_pStackWidget->setCurrentIndex(PAGE_SELECT);
    // macOS leaves buttons out of the Tab order unless its user has asked for
    // them, which nobody has in the boot environment, mouse or no mouse.
    QGuiApplication::styleHints()->setTabFocusBehavior(Qt::TabFocusAllControls);
    // The first key goes to the tree, not to the close button, which comes first in the order.
    m_pUi->m_pSelFilePage->setFocus();
}

void CTarnwickMacPE::InitConnect()
{
    connect(m_pUi->m_pCloseBtn, &QPushButton::clicked, this, &QWidget::close);
    connect(this, &CTarnwickMacPE::SignalDiskChange, this, &CTarnwickMacPE::SlotDiskChange);
    connect(m_pUi->m_pSelFilePage, &CSelFileWidget::SignalCopyFile, this,
            &CTarnwickMacPE::SlotStackPageChange);
    connect(m_pUi->m_pCopyFilePage, &CCopyFileWidget::SignalCopyFileFinish, this,
            &CTarnwickMacPE::SlotStackPageChange);
}

void CTarnwickMacPE::ProhibitSleep()
{
    // Never deleted: it has to live as long as the program does.
    auto* pProcess = new QProcess;
    pProcess->start(QStringLiteral("bash"), QStringList());
    pProcess->waitForStarted(START_TIMEOUT_MS);
    pProcess->write(QStringLiteral("caffeinate -u -t %1  \n").arg(AWAKE_SECONDS).toUtf8());
    pProcess->closeWriteChannel();
}

void CTarnwickMacPE::DiskChange(STDiskNotication* pNotication, void* pUser)
{
    if (!pNotication || !pUser || pNotication->strDevicePath.isEmpty()) {
        return;
    }
    static_cast<CTarnwickMacPE*>(pUser)->OnDiskChange(pNotication);
}

void CTarnwickMacPE::OnDiskChange(STDiskNotication* pNotication)
{
    *m_pDiskEvent = *pNotication;
    emit SignalDiskChange();
}

/** The path of the pending event as it is known; a volume that has gone may be listed no more. */
QString CTarnwickMacPE::PendingPath(const QStringList& listName) const
{
    const QString strVolumes = CDestinationDiscovery::VolumesFolder() + QLatin1Char('/');
    QStringList listPath;
    if (m_pDiskEvent->enType == DISK_EVENT_DISAPPEARED) {
        listPath = m_pUi->m_pSelFilePage->DiskPaths();
        listPath.append(strVolumes + m_pUi->m_pCopyFilePage->GetCopyUsbName());
    }
    for (const QString& strName : listName) {
        listPath.append(strVolumes + strName);
    }
    return ListedDiskPath(DiskEventPath(*m_pDiskEvent), listPath);
}

/** True for a volume that is certainly not on USB, such as an internal one that is unlocked now. */
static bool IsOnOtherBus(const QString& strPath)
{
    using Question = CAsideQuestion<std::optional<bool>>;
    const auto bUsb = Question::Ask(BUS_WAIT, [strPath] { return CVolumeBus::IsOnUsb(strPath); });
    return bUsb && !bUsb->value_or(true);
}

/** Offers a volume that has come, or says that the next search makes it a source. */
void CTarnwickMacPE::Receive(const QString& strPath)
{
    if (!IsOnOtherBus(strPath)) {
        m_pUi->m_pSelFilePage->AddDisk(QFileInfo(strPath));
        return;
    }
    g_TarnwickLog.LogExt(QStringLiteral("not on USB, no destination: ") + strPath);
    m_pUi->m_pSelFilePage->NoteNewSource(strPath);
}

void CTarnwickMacPE::SlotDiskChange()
{
    // A message box below runs an event loop, in which the next disk event may
    // overwrite the pending one: work on what this call was made for.
    const ENDiskEventType enType = m_pDiskEvent->enType;
    const QString strVolumes = CDestinationDiscovery::VolumesFolder();
    const QStringList listName = CVolumeFolder::Names(strVolumes);
    const QString strPath = PendingPath(listName);
    // A removal is told once for every volume that is left; both receivers bear the repetition.
    for (const QString& strName : listName) {
        if (enType != DISK_EVENT_DISAPPEARED) {
            if (strVolumes + QLatin1Char('/') + strName == strPath) {
                Receive(strPath);
            }
            continue;
        }
        if (IsCopyPageShown()
            && strVolumes + QLatin1Char('/') + m_pUi->m_pCopyFilePage->GetCopyUsbName() == strPath) {
            m_pUi->m_pCopyFilePage->USBExtract();
        }
        m_pUi->m_pSelFilePage->RemoveDisk(strPath);
    }
    m_pUi->m_pSelFilePage->OnRefreshUSB();
}

void CTarnwickMacPE::SlotStackPageChange()
{
    if (sender() == m_pUi->m_pSelFilePage) {
        const CSelFileWidget* pSelect = m_pUi->m_pSelFilePage;
        m_pUi->m_pStackWidget->setCurrentIndex(PAGE_COPY);
        // The page, not its button: the key that has pressed Copy must not press Cancel.
        m_pUi->m_pCopyFilePage->setFocus();
        m_pUi->m_pCopyFilePage->OnCopyFile(pSelect->GetTotalSize(), pSelect->GetDstFolder(),
                                           pSelect->GetUsbName());
    } else if (sender() == m_pUi->m_pCopyFilePage) {
        m_pUi->m_pSelFilePage->ShowLastCopy(m_pUi->m_pCopyFilePage->LastAccount(),
                                            m_pUi->m_pCopyFilePage->GetCopyUsbName());
        m_pUi->m_pStackWidget->setCurrentIndex(PAGE_SELECT);
        m_pUi->m_pSelFilePage->setFocus();
    }
}

void CTarnwickMacPE::FitScreen(const QSize& sizeScreen)
{
    CSmallScreen::Fit(*this, m_pUi->m_pStackWidget, sizeScreen);
}

bool CTarnwickMacPE::EndCopy(int nWaitMs)
{
    m_pUi->m_pCopyFilePage->SetCopyStatus(COPY_STATUS_STOP);
    const QDeadlineTimer deadline(nWaitMs);
    const auto listWorker = m_pUi->m_pCopyFilePage->findChildren<CCopyFileThread*>();
    return std::all_of(listWorker.begin(), listWorker.end(),
                       [&deadline](CCopyFileThread* pWorker) { return pWorker->wait(deadline); });
}

void CTarnwickMacPE::CloseCopy()
{
    const auto listWorker = m_pUi->m_pCopyFilePage->findChildren<CCopyFileThread*>();
    for (CCopyFileThread* pWorker : listWorker) {
        if (pWorker->isRunning()) {
            pWorker->CloseAccount(REPORT_WAIT_MS);
        }
    }
}

bool CTarnwickMacPE::IsCopyPageShown() const { return m_pUi->m_pStackWidget->currentIndex() == PAGE_COPY; }

void CTarnwickMacPE::closeEvent(QCloseEvent* pEvent)
{
    m_pUi->m_pCopyFilePage->SetExitQuestion(true);
    if (IsCopyPageShown()) {
        m_pUi->m_pCopyFilePage->SetCopyStatus(COPY_STATUS_PAUSE);
    }
    KvMessageBox box(tr("Your computer will restart if you exit the program. Are you sure you want to exit?"),
                     Style_Yes | Style_Cancel, this);
    box.SetButtonText(tr("Yes"), QString(), QString(), tr("Cancel"));
    box.setIcon(QStringLiteral(":/res/Tip/tips_mark.png"));
    box.exec();
    m_pUi->m_pCopyFilePage->SetExitQuestion(false);
    switch (box.GetClickedBtn()) {
    case Style_Yes:
    case Style_Ok:
        pEvent->accept();
        break;
    case 0:
    case Style_No:
    case Style_Cancel:
        pEvent->ignore();
        if (IsCopyPageShown()) {
            m_pUi->m_pCopyFilePage->SetCopyStatus(COPY_STATUS_RUN);
        }
        break;
    default:
        break;
    }
}
