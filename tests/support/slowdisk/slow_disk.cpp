// A disk with a head: what it is asked takes the time that a real one takes.
//
//     slow_disk IMAGE FOLDER SEEK_US BYTES_PER_SECOND
//
// shows in FOLDER, until that is unmounted or who started it has ended, three files:
//
//     disk         the bytes of the file IMAGE, for a loop device
//     model        "SEEK_US BYTES_PER_SECOND"; what is written there holds from the next
//                  request on, "0 0" for one that takes no time
//     statistics   what there was so far, a line "name value" each
//
// There is one head. Requests are served one by one, in the order in which they come. One that
// does not begin where the last one ended takes a seek, and each takes its bytes. A flush takes
// nothing: the head has no cache. Each answer is given at its time, which follows from that of
// the request before it, so that delays of the machine do not add up.

#define FUSE_USE_VERSION 312

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <deque>
#include <fcntl.h>
#include <fuse3/fuse_lowlevel.h>
#include <mutex>
#include <sched.h>
#include <sstream>
#include <string>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

static const fuse_ino_t DISK = 2;
static const fuse_ino_t MODEL = 3;
static const fuse_ino_t STATISTICS = 4;
static const long long NS_PER_S = 1000000000;
static const long long NS_PER_US = 1000;
static const unsigned LARGEST_REQUEST = 1024 * 1024;
static const unsigned MANY_REQUESTS = 256;

namespace {

/** What the head has done in one direction. */
struct STWork
{
    long long nRequests = 0;
    long long nSeeks = 0;
    long long nBytes = 0;
    long long nBusyNs = 0;
};

/** Where the head stands and when it is free again. */
class CHead
{
public:
    /** The cost of a seek, and the bytes of a second; 0 for what takes no time. */
    void SetModel(long long nSeekUs, long long nBytesPerSecond)
    {
        m_nSeekUs = nSeekUs;
        m_nBytesPerSecond = nBytesPerSecond;
    }

    std::string Model() const
    {
        return std::to_string(m_nSeekUs) + ' ' + std::to_string(m_nBytesPerSecond) + '\n';
    }

    /** Takes on a request that has come now; returns when it will be done. */
    long long Take(bool bWrite, long long nFrom, long long nBytes, long long nNow)
    {
        STWork& stWork = bWrite ? m_stWrites : m_stReads;
        long long nCost = m_nBytesPerSecond > 0 ? nBytes * NS_PER_S / m_nBytesPerSecond : 0;
        if (nFrom != m_nPosition) {
            nCost += m_nSeekUs * NS_PER_US;
            ++stWork.nSeeks;
        }
        m_nPosition = nFrom + nBytes;
        m_nFreeAt = std::max(m_nFreeAt, nNow) + nCost;
        ++stWork.nRequests;
        stWork.nBytes += nBytes;
        stWork.nBusyNs += nCost;
        return m_nFreeAt;
    }

    std::string Statistics() const { return Lines("read", m_stReads) + Lines("write", m_stWrites); }

private:
    static std::string Lines(const std::string& strName, const STWork& stWork)
    {
        std::ostringstream lines;
        lines << strName << "-requests " << stWork.nRequests << '\n'
              << strName << "-seeks " << stWork.nSeeks << '\n'
              << strName << "-bytes " << stWork.nBytes << '\n'
              << strName << "-busy-us " << stWork.nBusyNs / NS_PER_US << '\n';
        return lines.str();
    }

    long long m_nSeekUs = 0;
    long long m_nBytesPerSecond = 0;
    long long m_nPosition = -1; // where the last request ended
    long long m_nFreeAt = 0; // in ns
    STWork m_stReads;
    STWork m_stWrites;
};

/** A request that the head has taken on. */
struct STRequest
{
    fuse_req_t pRequest = nullptr;
    bool bWrite = false;
    size_t nSize = 0;
    off_t nFrom = 0;
    long long nDoneAt = 0;
    int nError = 0;
};

/** The requests in their order, from who receives them to who answers. */
class CWaiting
{
public:
    void Add(const STRequest& stRequest)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_listRequest.push_back(stRequest);
        m_more.notify_one();
    }

    STRequest Next()
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_more.wait(lock, [this] { return !m_listRequest.empty(); });
        const STRequest stRequest = m_listRequest.front();
        m_listRequest.pop_front();
        return stRequest;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_more;
    std::deque<STRequest> m_listRequest;
};

}

static int s_nImage = -1;
static CHead s_head; // of the thread that receives
static CWaiting s_waiting;

static long long Now()
{
    timespec stNow = {};
    clock_gettime(CLOCK_MONOTONIC, &stNow);
    return stNow.tv_sec * NS_PER_S + stNow.tv_nsec;
}

static void SleepUntil(long long nWhen)
{
    const timespec stWhen = {time_t(nWhen / NS_PER_S), long(nWhen % NS_PER_S)};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &stWhen, nullptr) == EINTR) { }
}

/** A disk needs no processor: what else runs on this machine is not to delay its answers. */
static void BeUrgent()
{
    sched_param stParam = {};
    stParam.sched_priority = 1;
    sched_setscheduler(0, SCHED_FIFO, &stParam);
}

static void Answer(const STRequest& stRequest, std::vector<char>& listBuffer)
{
    ssize_t nDone = stRequest.nError == 0 ? ssize_t(stRequest.nSize) : -1;
    if (!stRequest.bWrite) {
        listBuffer.resize(std::max(listBuffer.size(), stRequest.nSize));
        nDone = pread(s_nImage, listBuffer.data(), stRequest.nSize, stRequest.nFrom);
    }
    const int nError = stRequest.bWrite ? stRequest.nError : errno;
    SleepUntil(stRequest.nDoneAt);
    if (nDone < 0) {
        fuse_reply_err(stRequest.pRequest, nError);
    } else if (stRequest.bWrite) {
        fuse_reply_write(stRequest.pRequest, size_t(nDone));
    } else {
        fuse_reply_buf(stRequest.pRequest, listBuffer.data(), size_t(nDone));
    }
}

static void AnswerInTime()
{
    BeUrgent();
    std::vector<char> listBuffer;
    for (STRequest stRequest = s_waiting.Next(); stRequest.pRequest != nullptr;
         stRequest = s_waiting.Next()) {
        Answer(stRequest, listBuffer);
    }
}

static struct stat StatusOf(fuse_ino_t nFile)
{
    struct stat stStatus = {};
    if (nFile == DISK) {
        fstat(s_nImage, &stStatus);
    }
    stStatus.st_ino = nFile;
    stStatus.st_nlink = 1;
    stStatus.st_mode = nFile == FUSE_ROOT_ID ? S_IFDIR | 0755 : S_IFREG | 0644;
    return stStatus;
}

static void GetAttr(fuse_req_t pRequest, fuse_ino_t nFile, fuse_file_info*)
{
    const struct stat stStatus = StatusOf(nFile);
    fuse_reply_attr(pRequest, &stStatus, 0);
}

static void SetAttr(fuse_req_t pRequest, fuse_ino_t nFile, struct stat*, int, fuse_file_info* pFile)
{
    GetAttr(pRequest, nFile, pFile); // a shell empties what it writes to
}

static void Lookup(fuse_req_t pRequest, fuse_ino_t, const char* pszName)
{
    const std::string strName = pszName;
    fuse_entry_param stEntry = {};
    stEntry.ino = strName == "disk" ? DISK : strName == "model" ? MODEL : STATISTICS;
    if (stEntry.ino == STATISTICS && strName != "statistics") {
        fuse_reply_err(pRequest, ENOENT);
        return;
    }
    stEntry.attr = StatusOf(stEntry.ino);
    fuse_reply_entry(pRequest, &stEntry);
}

static void Open(fuse_req_t pRequest, fuse_ino_t, fuse_file_info* pFile)
{
    pFile->direct_io = 1; // what the system keeps of the disk it keeps above the loop device
    fuse_reply_open(pRequest, pFile);
}

static void Read(fuse_req_t pRequest, fuse_ino_t nFile, size_t nSize, off_t nFrom, fuse_file_info*)
{
    if (nFile == DISK) {
        const long long nDoneAt = s_head.Take(false, nFrom, (long long)nSize, Now());
        s_waiting.Add({pRequest, false, nSize, nFrom, nDoneAt, 0});
        return;
    }
    const std::string strText = nFile == MODEL ? s_head.Model() : s_head.Statistics();
    const size_t nSkipped = std::min(size_t(nFrom), strText.size());
    fuse_reply_buf(pRequest, strText.data() + nSkipped, std::min(nSize, strText.size() - nSkipped));
}

static void Write(fuse_req_t pRequest, fuse_ino_t nFile, const char* pBytes, size_t nSize, off_t nFrom,
                  fuse_file_info*)
{
    if (nFile == DISK) {
        const long long nDoneAt = s_head.Take(true, nFrom, (long long)nSize, Now());
        const bool bWritten = pwrite(s_nImage, pBytes, nSize, nFrom) == ssize_t(nSize);
        s_waiting.Add({pRequest, true, nSize, nFrom, nDoneAt, bWritten ? 0 : EIO});
        return;
    }
    long long nSeekUs = 0;
    long long nBytesPerSecond = 0;
    if (nFile != MODEL || !(std::istringstream({pBytes, nSize}) >> nSeekUs >> nBytesPerSecond)) {
        fuse_reply_err(pRequest, EINVAL);
        return;
    }
    s_head.SetModel(nSeekUs, nBytesPerSecond);
    fuse_reply_write(pRequest, nSize);
}

static void Sync(fuse_req_t pRequest, fuse_ino_t, int, fuse_file_info*) { fuse_reply_err(pRequest, 0); }

static void Init(void*, fuse_conn_info* pConnection)
{
    pConnection->max_write = LARGEST_REQUEST;
    pConnection->max_background = MANY_REQUESTS;
    pConnection->congestion_threshold = MANY_REQUESTS;
}

static fuse_lowlevel_ops Operations()
{
    fuse_lowlevel_ops operations = {};
    operations.init = Init;
    operations.lookup = Lookup;
    operations.getattr = GetAttr;
    operations.setattr = SetAttr;
    operations.open = Open;
    operations.read = Read;
    operations.write = Write;
    operations.fsync = Sync;
    return operations;
}

/** Serves the files until the folder is unmounted. */
static bool Serve(const char* pszFolder)
{
    const char* const listArg[] = {"slow_disk", "-o", "fsname=slow_disk,subtype=slow_disk"};
    fuse_args stArgs = FUSE_ARGS_INIT(3, const_cast<char**>(listArg));
    const fuse_lowlevel_ops stOperations = Operations();
    fuse_session* pSession = fuse_session_new(&stArgs, &stOperations, sizeof stOperations, nullptr);
    if (pSession == nullptr || fuse_set_signal_handlers(pSession) != 0
        || fuse_session_mount(pSession, pszFolder) != 0) {
        return false;
    }
    std::thread answers(AnswerInTime);
    BeUrgent();
    const bool bServed = fuse_session_loop(pSession) >= 0;
    s_waiting.Add({});
    answers.join();
    fuse_session_unmount(pSession);
    fuse_session_destroy(pSession);
    return bServed;
}

int main(int nArgc, char** ppArgv)
{
    if (nArgc != 5) {
        std::fprintf(stderr, "slow_disk IMAGE FOLDER SEEK_US BYTES_PER_SECOND\n");
        return 2;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    s_nImage = open(ppArgv[1], O_RDWR | O_CLOEXEC);
    if (s_nImage == -1) {
        std::perror(ppArgv[1]);
        return 1;
    }
    s_head.SetModel(std::atoll(ppArgv[3]), std::atoll(ppArgv[4]));
    return Serve(ppArgv[2]) ? 0 : 1;
}
