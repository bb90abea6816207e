#include "ask/CAskProgram.h"

#include "app/CEndSignals.h"
#include "app/CFontFallback.h"
#include "app/CGetScreenPixel.h"
#include "app/CStartUp.h"
#include "ask/CAskAgainPanel.h"
#include "ask/CAskEndPanel.h"
#include "ask/CAskGround.h"
#include "ask/CAskMissingPanel.h"
#include "ask/CAskPasswordPanel.h"
#include "ask/CAskRequest.h"
#include "ask/CAskSourcePanel.h"
#include "ask/CAskWaitPanel.h"
#include "ask/CMissingList.h"
#include "files/CFileNameCodec.h"
#include "settings/CLanguageSetting.h"

#include <QApplication>
#include <QFile>
#include <QStyleHints>

#include <chrono>
#include <cstdio>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

// As shells tell of a process that a signal has ended.
static const int SIGNAL_STATUS = 128;

static constexpr std::chrono::seconds END_PATIENCE(1);

std::unique_ptr<CAskPanel> CAskProgram::MakePanel(const STAskRequest& stRequest)
{
    switch (stRequest.enScreen) {
    case ENAskScreen::PASSWORD:
        return std::make_unique<CAskPasswordPanel>(stRequest);
    case ENAskScreen::MISSING:
        return std::make_unique<CAskMissingPanel>(stRequest.listMissing);
    case ENAskScreen::SOURCE:
        return std::make_unique<CAskSourcePanel>(stRequest);
    case ENAskScreen::END:
        return std::make_unique<CAskEndPanel>(stRequest);
    case ENAskScreen::AGAIN:
        return std::make_unique<CAskAgainPanel>();
    default:
        return std::make_unique<CAskWaitPanel>();
    }
}

static int Complain(const QString& strError, int nStatus)
{
    fprintf(stderr, "TarnwickAsk: %s\n", qPrintable(strError));
    return nStatus;
}

// An answer may be a password, and what a crash leaves behind may be read by others.
static void LeaveNoCore()
{
    const struct rlimit stNone = {0, 0};
    setrlimit(RLIMIT_CORE, &stNone);
}

static bool WriteOut(const QByteArray& baOutput)
{
    qint64 nDone = 0;
    while (nDone < baOutput.size()) {
        const ssize_t nWritten
            = write(STDOUT_FILENO, baOutput.constData() + nDone, size_t(baOutput.size() - nDone));
        if (nWritten <= 0) {
            return false;
        }
        nDone += nWritten;
    }
    return true;
}

/** False when nothing is missing. */
static bool TakeMissing(STAskRequest& stRequest)
{
    QFile file;
    if (file.open(stdin, QIODevice::ReadOnly)) {
        stRequest.listMissing = CMissingList::Parse(file.readAll());
    }
    return !stRequest.listMissing.isEmpty();
}

static QString StyleSheet()
{
    QFile file(QStringLiteral(":/res/TarnwickMacPE.qss"));
    file.open(QIODevice::ReadOnly);
    return CStartUp::StyleSheetText(file.readAll());
}

/**
 * After the application object, which has handlers of its own on a screen without a window system. An
 * orderly end gives the console its keyboard back; nothing of a question is worth waiting longer for it.
 */
static void EndOnSignals()
{
    CEndSignals::Install([](int nSignal) {
        const int nStatus = SIGNAL_STATUS + nSignal;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [nStatus] { QCoreApplication::exit(nStatus); },
            Qt::QueuedConnection);
        std::this_thread::sleep_for(END_PATIENCE);
        _exit(nStatus);
    });
}

static int Ask(const STAskRequest& stRequest)
{
    CAskGround ground(CAskProgram::MakePanel(stRequest).release());
    const auto fnAnswer = [](const STAskAnswer& stAnswer) {
        QCoreApplication::exit(WriteOut(stAnswer.baOutput) ? stAnswer.nStatus : CAskProgram::STATUS_FAILED);
    };
    QObject::connect(ground.Panel(), &CAskPanel::SignalAnswer, &ground, fnAnswer);
    if (!ground.Cover()) {
        return Complain(QStringLiteral("there is no screen"), CAskProgram::STATUS_FAILED);
    }
    return QApplication::exec();
}

int CAskProgram::Run(int& nArgc, char** ppArgv)
{
    LeaveNoCore();
    CFileNameCodec::Install();
    QStringList listArgument;
    for (int n = 1; n < nArgc; ++n) {
        listArgument.append(QString::fromLocal8Bit(ppArgv[n]));
    }
    STParsedRequest stParsed = CAskRequest::Parse(listArgument);
    if (!stParsed.stRequest) {
        return Complain(stParsed.strError, STATUS_USAGE);
    }
    if (stParsed.stRequest->enScreen == ENAskScreen::MISSING && !TakeMissing(*stParsed.stRequest)) {
        return CAskMissingPanel::STATUS_CONTINUE;
    }
    CStartUp::ApplyScale(CGetScreenPixel().GetScreen());
    // The arguments are ours alone; the names of disks among them are no options of the toolkit.
    int nOne = 1;
    const QApplication application(nOne, ppArgv);
    EndOnSignals();
    CFontFallback::Install();
    CLanguageSetting::GetInstance();
    qApp->setStyleSheet(StyleSheet());
    QGuiApplication::styleHints()->setTabFocusBehavior(Qt::TabFocusAllControls);
    return Ask(*stParsed.stRequest);
}
