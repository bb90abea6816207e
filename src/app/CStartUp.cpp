#include "app/CStartUp.h"

#include "app/CCommandPath.h"
#include "app/CFontFallback.h"
#include "app/CGetScreenPixel.h"
#include "app/CMessageRelay.h"
#include "app/CProgramEnd.h"
#include "app/CScreenGround.h"
#include "app/CSmallScreen.h"
#include "app/CStartSplash.h"
#include "app/CTarnwickMacPE.h"
#include "disk/CDestinationDiscovery.h"
#include "files/CCloudFile.h"
#include "files/CFileNameCodec.h"
#include "files/CWriteSignals.h"
#include "log/CLogTarnwick.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QFile>
#include <QScreen>

static const int LOG_SIZE_LIMIT = 0x500000;
static const int LOG_KEEP_DAYS = 7;

STScale CStartUp::ChooseScale(int nWidth)
{
    // That 3500 itself is not scaled, and the attribute set in one band alone, is
    // kept: docs/behaviour.md.
    if (nWidth > 2500 && nWidth < 3500) {
        return {true, "1.5"};
    }
    if (nWidth > 3500) {
        return {false, "2"};
    }
    return {};
}

STScale CStartUp::ApplyScale(int nWidth)
{
    const STScale scale = ChooseScale(nWidth);
    if (scale.bHighDpiAttribute) {
        QApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    }
    if (!scale.baFactor.isEmpty()) {
        qputenv("QT_SCALE_FACTOR", scale.baFactor);
    }
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    return scale;
}

QString CStartUp::StyleSheetText(const QByteArray& baContent)
{
    // Ends at the first zero byte by itself.
    return QString::fromLatin1(baContent);
}

QPoint CStartUp::CentredPosition(const QSize& sizeDesktop, const QSize& sizeWindow, const QPoint& ptNow)
{
    if (sizeDesktop.width() <= 0 || sizeDesktop.height() <= 0) {
        return ptNow;
    }
    return {(sizeDesktop.width() - sizeWindow.width()) / 2, (sizeDesktop.height() - sizeWindow.height()) / 2};
}

static void StartLog()
{
    g_TarnwickLog.InitFolder("Log", LOG_SIZE_LIMIT, "TarnwickMacPE", ".log");
    g_TarnwickLog.KeepDays(LOG_KEEP_DAYS, QString());
    g_TarnwickLog.LogExt(QStringLiteral("==========================start TarnwickMacPE=================="));
    g_TarnwickLog.WriteEarlyLines();
}

static void FitWindow(CTarnwickMacPE& window)
{
    if (const QScreen* pScreen = QGuiApplication::primaryScreen()) {
        window.FitScreen(pScreen->availableSize());
    }
}

static void CentreWindow(QWidget& window)
{
    if (const QWidget* pDesktop = QApplication::desktop()) {
        window.move(CStartUp::CentredPosition(pDesktop->geometry().size(), window.size(), window.pos()));
    }
}

static QString StyleSheet()
{
    QFile file(QStringLiteral(":/res/TarnwickMacPE.qss"));
    file.open(QIODevice::ReadOnly);
    return CStartUp::StyleSheetText(file.readAll());
}

/** The window's life; the status that the process is to have. */
static int RunWindow()
{
    const std::unique_ptr<CScreenGround> pGround = CScreenGround::Lay();
    CStartSplash splash;
    CDestinationDiscovery::SetWaiter([&splash](const STDiskWait& wait) { splash.Wait(wait); });
    CTarnwickMacPE window(nullptr);
    CDestinationDiscovery::SetWaiter({});
    CProgramEnd::SetWindow(&window);
    StartLog();
    FitWindow(window);
    CentreWindow(window);
    window.show();
    splash.hide();
    const int nStatus = CProgramEnd::Exec();
    CProgramEnd::Leave(nStatus);
    return nStatus;
}

/** Before there is a second thread, so that it holds for all. */
static void StopFetching()
{
    if (const int nError = CCloudFile::StopFetching()) {
        g_TarnwickLog.LogExt(QStringLiteral("The system may fetch what is only in iCloud: ")
                             + qt_error_string(nError));
    }
}

/** Before there is an application object, which takes the factors from its environment. */
static void DropSmallFactors()
{
    for (const char* pName : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) {
        if (CSmallScreen::IsBelowOne(qgetenv(pName))) {
            qWarning("%s is below 1 and not followed; a small screen scrolls", pName);
            qunsetenv(pName);
        }
    }
}

int CStartUp::Run(int& nArgc, char** ppArgv)
{
    CFileNameCodec::Install();
    g_TarnwickLog.KeepEarlyLines();
    StopFetching();
    CWriteSignals::Ignore();
    CMessageRelay::Install();
    // Never deleted: it is asked once, before there is an application to own it.
    auto* pScreenPixel = new CGetScreenPixel;
    DropSmallFactors();
    ApplyScale(pScreenPixel->GetScreen());
    QApplication application(nArgc, ppArgv);
    CFontFallback::Install();
    CCommandPath::Append();

    application.setStyleSheet(StyleSheet());
    CProgramEnd::Prepare();
    return CProgramEnd::Finish(RunWindow());
}
