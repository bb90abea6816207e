#pragma once

#include <cstdint>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/types.h>
#include <vector>

/**
 * Waits until the time is over, a signal asks for the end, or the program that
 * asked is gone, however it went.
 *
 * The asker is known in two ways. The standard output leads to it when it is a
 * pipe or a socket, and reports when nobody can read any more. And it is the
 * parent process, or, as a command is mostly run by a shell, the parent of the
 * parent; both are watched.
 */
class CAskerWatch
{
public:
    /** Starts to watch who has started this process; SIGTERM, SIGINT and SIGHUP are a wish to end. */
    CAskerWatch();
    ~CAskerWatch();
    CAskerWatch(const CAskerWatch&) = delete;
    CAskerWatch& operator=(const CAskerWatch&) = delete;

    /** Returns when it is time to end. Without a time only the asker and the signals count. */
    void Wait(std::optional<std::uint32_t> seconds);

    /** True for the name of a program that runs commands for others, also with the "-" of a login shell. */
    static bool IsShell(const std::string& strName);

    /** Parent in the text of /proc/PID/stat; 0 when it is not there. A name may hold blanks and brackets. */
    static pid_t ParentOf(const std::string& strStat);

private:
    void WatchOutput();
    void WatchSignals();
    void WatchProcess(pid_t nProcess);
    void Add(int nDescriptor, short nEvents);

    std::vector<pollfd> m_listWatched;
    std::vector<int> m_listOwned;
    bool m_bGone = false;
};
