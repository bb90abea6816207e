#include "CCallCounter.h"

#include <cerrno>
#include <csignal>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

static const int NOT_WATCHED = 77; // exit code of a child that nobody may watch

/** The child: does its work while its parent looks on. */
[[noreturn]] static void BeWatched(const std::function<bool()>& fnWork)
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) {
        _exit(NOT_WATCHED);
    }
    raise(SIGSTOP);
    _exit(fnWork() ? EXIT_SUCCESS : EXIT_FAILURE);
}

/** Waits until the child stops or ends, and says what has become of it. */
static int Await(pid_t nChild)
{
    int nStatus = 0;
    while (waitpid(nChild, &nStatus, 0) == -1 && errno == EINTR) { }
    return nStatus;
}

/** The call that the stopped child begins with; -1 when it has just ended one. */
static long CallBegun(pid_t nChild)
{
    __ptrace_syscall_info stInfo = {};
    ptrace(PTRACE_GET_SYSCALL_INFO, nChild, sizeof(stInfo), &stInfo);
    return stInfo.op == PTRACE_SYSCALL_INFO_ENTRY ? long(stInfo.entry.nr) : -1;
}

std::optional<CCallCounter::Calls> CCallCounter::Count(const std::function<bool()>& fnWork)
{
    const pid_t nChild = fork();
    if (nChild == 0) {
        BeWatched(fnWork);
    }
    int nStatus = nChild == -1 ? 0 : Await(nChild);
    if (!WIFSTOPPED(nStatus)
        || ptrace(PTRACE_SETOPTIONS, nChild, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) != 0) {
        return std::nullopt;
    }
    Calls mapCalls;
    int nSignal = 0;
    while (WIFSTOPPED(nStatus)) {
        ptrace(PTRACE_SYSCALL, nChild, nullptr, nSignal);
        nStatus = Await(nChild);
        const bool bCall = WIFSTOPPED(nStatus) && WSTOPSIG(nStatus) == (SIGTRAP | 0x80);
        const long nCall = bCall ? CallBegun(nChild) : -1;
        if (nCall != -1) {
            ++mapCalls[nCall];
        }
        nSignal = bCall || !WIFSTOPPED(nStatus) ? 0 : WSTOPSIG(nStatus);
    }
    if (!WIFEXITED(nStatus) || WEXITSTATUS(nStatus) != EXIT_SUCCESS) {
        qFatal("the work whose calls are counted has failed");
    }
    return mapCalls;
}
