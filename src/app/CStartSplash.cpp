#include "app/CStartSplash.h"

#include "app/CTarnwickMacPE.h"
#include "disk/CDestinationDiscovery.h"
#include "kit/CSkinPicture.h"
#include "kit/SkinFont.h"
#include "pages/CElidedLabel.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QVBoxLayout>

static const QSize SIZE(420, 132);
static const QMargins MARGINS(24, 24, 24, 20);
static const int LINE_SPACING = 12;
static const int LOGO_SPACING = 8;

/** Logo and name as in the window's title strip. */
static QLayout* NameRow()
{
    auto* pLogo = new QLabel;
    pLogo->setPixmap(CSkinPicture::Pixmap(QStringLiteral(":/res/Title/tarnwick_logo_34.png")));
    auto* pName = new QLabel(CTarnwickMacPE::tr("Kelvane Tarnwick"));
    pName->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_16));
    pName->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_72));
    auto* pRow = new QHBoxLayout;
    pRow->setSpacing(LOGO_SPACING);
    pRow->addStretch();
    pRow->addWidget(pLogo);
    pRow->addWidget(pName);
    pRow->addStretch();
    return pRow;
}

CStartSplash::CStartSplash()
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint)
    , m_pText(new CElidedLabel)
{
    setObjectName(QStringLiteral("CStartSplash"));
    // Its end is not the program's.
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_StyledBackground);
    setStyleSheet(
        QStringLiteral("QWidget#CStartSplash{background-color:white;border:1px solid rgb(224,224,224);}"));
    m_pText->setObjectName(QStringLiteral("label_wait"));
    m_pText->setAlignment(Qt::AlignCenter);
    m_pText->setFont(SkinFont(CSkinMgr::FONT_STYLE_PX_13));
    m_pText->setStyleSheet(CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_120));
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(MARGINS);
    pLayout->setSpacing(LINE_SPACING);
    pLayout->addLayout(NameRow());
    pLayout->addWidget(m_pText);
    setFixedSize(SIZE);
    m_timer.start();
}

QString CStartSplash::Text(const STDiskWait& wait)
{
    return wait.nMs < NAME_AFTER_MS ? tr("Searching for disks…") : tr("Waiting for %1…").arg(wait.strName);
}

void CStartSplash::PutInPlace()
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    if (pScreen) {
        move(pScreen->geometry().center() - rect().center());
    }
}

void CStartSplash::Wait(const STDiskWait& wait)
{
    if (!isVisible() && m_timer.elapsed() < SHOW_AFTER_MS) {
        return;
    }
    m_pText->setText(Text(wait));
    if (!isVisible()) {
        PutInPlace();
        show();
    }
    // The window is being built: nobody may click or type into it yet.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}
