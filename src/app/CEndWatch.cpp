#include "app/CEndWatch.h"

#include "files/CAsideQuestion.h"
#include "log/CLogTarnwick.h"

#include <atomic>
#include <chrono>
#include <system_error>
#include <thread>
#include <unistd.h>

// The log may lie on what hangs.
static constexpr std::chrono::milliseconds LOG_TIME{200};

static void EndLate(int nStatus)
{
    std::this_thread::sleep_for(std::chrono::milliseconds(CEndWatch::PATIENCE_MS));
    CAsideQuestion<bool>::Ask(LOG_TIME, [] {
        g_TarnwickLog.LogExt(QStringLiteral("ended although something does not answer"));
        return true;
    });
    CEndWatch::EndNow(nStatus);
}

void CEndWatch::Begin(int nStatus)
{
    static std::atomic<bool> s_bBegun{false};
    if (s_bBegun.exchange(true)) {
        return;
    }
    try {
        std::thread([nStatus] { EndLate(nStatus); }).detach();
    } catch (const std::system_error&) {
        // The system's own watch, which ends the process without a line.
        alarm(PATIENCE_MS / 1000);
    }
}

void CEndWatch::EndNow(int nStatus) { _exit(nStatus); }
