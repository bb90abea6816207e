#include "app/CProgramEnd.h"

#include "app/CEndSignals.h"
#include "app/CEndWatch.h"
#include "app/CTarnwickMacPE.h"
#include "disk/CDestinationDiscovery.h"
#include "files/CLeftBehind.h"
#include "log/CLogTarnwick.h"

#include <QApplication>
#include <QThread>

#include <atomic>
#include <cstdlib>
#include <mutex>

// How long a copy that is stopped has for its block, before its page waits in turn.
static const int COPY_MS = 1000;

// How long it has where there is no page that waits, for its last bytes and its account as well.
static const int COPY_WITHOUT_PAGE_MS = 3000;

// How long threads that nobody waits for have to end by themselves, and how often that is looked at.
static const int SLOW_MS = 400;
static const int LOOK_MS = 10;

// As shells tell of a process that a signal has ended.
static const int SIGNAL_STATUS = 128;

static const int DISPLAY_LOST_STATUS = 1;

static const int NOT_ASKED = -1;

static CTarnwickMacPE* s_pWindow = nullptr;
static std::atomic<int> s_nAsked{NOT_ASKED}; // the status that a signal asks for
static std::atomic<bool> s_bLeaving{false};

// Guards the application object against an end that comes from two sides.
static std::mutex s_mutexApplication;

// Modal boxes run event loops of their own; the exit ends all of them, without an answer.
static void LeaveEventLoops(int nStatus)
{
    // Without a window the start goes on and finds the status.
    if (s_pWindow != nullptr) {
        s_pWindow->EndCopy(0);
    }
    QCoreApplication::exit(nStatus);
}

/** On the thread that waits for signals: the GUI thread may hang, or be busy with the start. */
static void EndBySignal(int nSignal)
{
    const int nStatus = SIGNAL_STATUS + nSignal;
    CEndWatch::Begin(nStatus);
    s_nAsked = nStatus;
    g_TarnwickLog.LogExt(QStringLiteral("ended by signal %1 (%2)")
                             .arg(nSignal)
                             .arg(QLatin1String(CEndSignals::Name(nSignal))));
    CDestinationDiscovery::EndScans();
    const std::lock_guard<std::mutex> lock(s_mutexApplication);
    if (!s_bLeaving) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [nStatus] { LeaveEventLoops(nStatus); }, Qt::QueuedConnection);
    }
}

/**
 * Whoever calls exit() runs this: it is what the connection to the display does when it
 * breaks, in the middle of the event loop. Windows cannot be asked for anything any more.
 */
static void EndByExit()
{
    if (s_bLeaving) {
        return;
    }
    CEndWatch::Begin(DISPLAY_LOST_STATUS);
    g_TarnwickLog.LogExt(QStringLiteral("ended by the loss of the display"));
    CDestinationDiscovery::EndScans();
    if (!s_pWindow->EndCopy(COPY_WITHOUT_PAGE_MS)) {
        s_pWindow->CloseCopy();
    }
    CEndWatch::EndNow(DISPLAY_LOST_STATUS);
}

void CProgramEnd::Prepare() { CEndSignals::Install(&EndBySignal); }

void CProgramEnd::SetWindow(CTarnwickMacPE* pWindow) { s_pWindow = pWindow; }

int CProgramEnd::Exec()
{
    std::atexit(&EndByExit);
    return s_nAsked == NOT_ASKED ? QApplication::exec() : s_nAsked.load();
}

void CProgramEnd::Leave(int nStatus)
{
    CEndWatch::Begin(nStatus);
    {
        const std::lock_guard<std::mutex> lock(s_mutexApplication);
        s_bLeaving = true;
    }
    s_pWindow->EndCopy(COPY_MS);
    s_pWindow = nullptr;
}

/** A disk that is only slow has let go of its thread after a moment. */
static bool IsSomethingLeft()
{
    for (int nMs = 0; nMs < SLOW_MS && CLeftBehind::Any(); nMs += LOOK_MS) {
        QThread::msleep(LOOK_MS);
    }
    return CLeftBehind::Any();
}

int CProgramEnd::Finish(int nStatus)
{
    if (IsSomethingLeft()) {
        g_TarnwickLog.LogExt(QStringLiteral("something that does not answer is left behind"));
        CEndWatch::EndNow(nStatus);
    }
    return nStatus;
}
