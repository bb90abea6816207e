#include "caffeinate/CAskerWatch.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/timerfd.h>
#include <unistd.h>

static std::string ReadFile(const std::string& strPath)
{
    std::ifstream file(strPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

static std::string ProcFile(pid_t nProcess, const char* pName)
{
    return ReadFile("/proc/" + std::to_string(nProcess) + "/" + pName);
}

static std::string NameOf(pid_t nProcess)
{
    std::string strName = ProcFile(nProcess, "comm");
    strName.erase(std::remove(strName.begin(), strName.end(), '\n'), strName.end());
    return strName;
}

CAskerWatch::CAskerWatch()
{
    // First of all, before another descriptor can take the number of a closed output.
    WatchOutput();
    WatchSignals();
    const pid_t nParent = getppid();
    const pid_t nGrandparent = ParentOf(ProcFile(nParent, "stat"));
    const bool bShell = IsShell(NameOf(nParent));
    WatchProcess(nParent);
    if (bShell) {
        WatchProcess(nGrandparent);
    }
    // Asked again now that they are watched: a process that ended in between has
    // left its number to another and its children to somebody else.
    m_bGone
        = m_bGone || getppid() != nParent || (bShell && ParentOf(ProcFile(nParent, "stat")) != nGrandparent);
}

CAskerWatch::~CAskerWatch()
{
    for (const int nDescriptor : m_listOwned) {
        close(nDescriptor);
    }
}

void CAskerWatch::Wait(std::optional<std::uint32_t> seconds)
{
    if (seconds) {
        // A clock that goes on while the machine sleeps after all.
        const int nTimer = timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC);
        itimerspec time = {};
        time.it_value.tv_sec = time_t(*seconds);
        timerfd_settime(nTimer, 0, &time, nullptr);
        Add(nTimer, POLLIN);
    }
    while (!m_bGone) {
        const int nReady = poll(m_listWatched.data(), nfds_t(m_listWatched.size()), -1);
        m_bGone = nReady > 0 || (nReady < 0 && errno != EINTR);
    }
}

bool CAskerWatch::IsShell(const std::string& strName)
{
    static const char* const s_shells[] = {"sh", "bash", "dash", "ash", "ksh", "zsh", "busybox"};
    const std::string strBare = strName.substr(strName.rfind('-', 0) == 0 ? 1 : 0);
    return std::find(std::begin(s_shells), std::end(s_shells), strBare) != std::end(s_shells);
}

pid_t CAskerWatch::ParentOf(const std::string& strStat)
{
    // "PID (NAME) STATE PARENT …"
    const size_t nName = strStat.rfind(") ");
    if (nName == std::string::npos || strStat.size() < nName + 5) {
        return 0;
    }
    return pid_t(std::strtol(strStat.c_str() + nName + 4, nullptr, 10));
}

void CAskerWatch::WatchOutput()
{
    struct stat status = {};
    if (fstat(STDOUT_FILENO, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode))) {
        // No event is asked for: that the reader has gone is always reported.
        m_listWatched.push_back({STDOUT_FILENO, 0, 0});
    }
}

void CAskerWatch::WatchSignals()
{
    sigset_t set = {};
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGINT);
    sigaddset(&set, SIGHUP);
    sigprocmask(SIG_BLOCK, &set, nullptr);
    Add(signalfd(-1, &set, SFD_CLOEXEC), POLLIN);
}

/** A parent of 0 is one outside this view of the processes and cannot be watched. */
void CAskerWatch::WatchProcess(pid_t nProcess)
{
    if (nProcess <= 0) {
        return;
    }
    const int nDescriptor = int(syscall(SYS_pidfd_open, nProcess, 0));
    if (nDescriptor >= 0) {
        Add(nDescriptor, POLLIN);
    } else if (errno == ESRCH) {
        m_bGone = true;
    }
}

void CAskerWatch::Add(int nDescriptor, short nEvents)
{
    m_listOwned.push_back(nDescriptor);
    m_listWatched.push_back({nDescriptor, nEvents, 0});
}
