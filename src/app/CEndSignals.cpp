#include "app/CEndSignals.h"

#include <QDebug>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

// Where the handler writes to; the other end is the waiting thread's.
static int s_nToThread = -1;

// Only what may be done in the middle of anything else.
extern "C" {
static void HandleEndSignal(int nSignal)
{
    const int nError = errno;
    const auto chSignal = char(nSignal);
    static_cast<void>(!write(s_nToThread, &chSignal, 1));
    errno = nError;
}
}

static bool MakePipe(std::array<int, 2>& arrEnd)
{
    if (pipe(arrEnd.data()) != 0) {
        return false;
    }
    // Commands that the program starts have nothing to do with it.
    return fcntl(arrEnd[0], F_SETFD, FD_CLOEXEC) == 0 && fcntl(arrEnd[1], F_SETFD, FD_CLOEXEC) == 0;
}

static void WaitForSignal(int nDescriptor, const std::function<void(int)>& fnEnd)
{
    char chSignal = 0;
    ssize_t nRead = 0;
    do {
        nRead = read(nDescriptor, &chSignal, 1);
    } while (nRead < 0 && errno == EINTR);
    if (nRead == 1) {
        fnEnd(chSignal);
    }
}

static void Handle(int nSignal)
{
    struct sigaction stNow = {};
    if (sigaction(nSignal, nullptr, &stNow) != 0 || stNow.sa_handler == SIG_IGN) {
        return;
    }
    struct sigaction stHandler = {};
    stHandler.sa_handler = &HandleEndSignal;
    stHandler.sa_flags = SA_RESTART;
    sigemptyset(&stHandler.sa_mask);
    sigaction(nSignal, &stHandler, nullptr);
}

void CEndSignals::Install(std::function<void(int)> fnEnd)
{
    std::array<int, 2> arrEnd = {-1, -1};
    if (!MakePipe(arrEnd)) {
        qWarning("No pipe for signals: they end the program at once");
        return;
    }
    s_nToThread = arrEnd[1];
    try {
        std::thread([nDescriptor = arrEnd[0], fnEnd = std::move(fnEnd)] {
            WaitForSignal(nDescriptor, fnEnd);
        }).detach();
    } catch (const std::system_error&) {
        qWarning("No thread for signals: they end the program at once");
        return;
    }
    for (const int nSignal : {SIGTERM, SIGINT, SIGHUP}) {
        Handle(nSignal);
    }
}

const char* CEndSignals::Name(int nSignal)
{
    switch (nSignal) {
    case SIGTERM:
        return "SIGTERM";
    case SIGINT:
        return "SIGINT";
    case SIGHUP:
        return "SIGHUP";
    default:
        return "?";
    }
}
