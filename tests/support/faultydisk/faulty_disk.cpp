// A file system that does what broken disks do, told by a file of rules:
//
//     faulty_disk FOLDER RULES POINT DEVICE
//
// shows FOLDER at POINT, as a mount whose device node text is DEVICE. Each line of
// RULES is "CALL WHAT NUMBER END": while it stands there, the call does WHAT for
// each path that ends with END (any path when there is none):
//
//     error N    fails with the errno value N
//     full N     writes and reserves fail for want of room once N bytes were written
//     hang 0     does not come back until the line is gone
//     silent 0   says that all is well and does nothing
//     direct 0   of open: reads go past the system's cache
//
// Beside them stand lines "sectors WHAT FROM BYTES END":
//
//     bad        reads of these bytes fail; one that begins before them ends early when it goes
//                past the cache, and fails as a whole when it is the cache's. Each sector at which
//                one has failed is a line "FROM PATH" in the file RULES.failed
//     slow       each of these sectors takes 100 ms more
//
// The calls are named as below. Rules are read anew at each call.

#define FUSE_USE_VERSION 312

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <fstream>
#include <fuse3/fuse.h>
#include <mutex>
#include <sstream>
#include <string>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <vector>

static std::string s_strFolder;
static std::string s_strRules;
static std::mutex s_mutex;
static long long s_nWritten = 0;

namespace {

struct STRule
{
    std::string strWhat; ///< empty when no rule stands for the call
    long long nNumber = 0;
};

/** Bytes of a file, from the first to before the last. */
struct STSectors
{
    long long nFrom = 0;
    long long nEnd = 0;
};

}

static const long long SECTOR = 4096;
static const useconds_t SLOW_US = 100000;

static bool EndsWith(const std::string& strText, const std::string& strEnd)
{
    return strText.size() >= strEnd.size()
        && strText.compare(strText.size() - strEnd.size(), strEnd.size(), strEnd) == 0;
}

static STRule RuleFor(const std::string& strCall, const std::string& strPath)
{
    std::ifstream rules(s_strRules);
    for (std::string strLine; std::getline(rules, strLine);) {
        std::istringstream line(strLine);
        std::string strRuleCall;
        STRule stRule;
        std::string strEnd;
        line >> strRuleCall >> stRule.strWhat >> stRule.nNumber;
        std::getline(line >> std::ws, strEnd);
        if (strRuleCall == strCall && EndsWith(strPath, strEnd)) {
            return stRule;
        }
    }
    return {};
}

/** Those sectors of the file for which a rule says strWhat. */
static std::vector<STSectors> SectorsOf(const std::string& strPath, const std::string& strWhat)
{
    std::vector<STSectors> listSectors;
    std::ifstream rules(s_strRules);
    for (std::string strLine; std::getline(rules, strLine);) {
        std::istringstream line(strLine);
        std::string strCall;
        std::string strRuleWhat;
        std::string strEnd;
        long long nFrom = 0;
        long long nBytes = 0;
        line >> strCall >> strRuleWhat >> nFrom >> nBytes;
        std::getline(line >> std::ws, strEnd);
        if (strCall == "sectors" && strRuleWhat == strWhat && EndsWith(strPath, strEnd)) {
            listSectors.push_back({nFrom, nFrom + nBytes});
        }
    }
    return listSectors;
}

static void NoteFailure(const std::string& strPath, long long nFrom)
{
    std::ofstream failed(s_strRules + ".failed", std::ios::app);
    failed << std::to_string(nFrom / SECTOR * SECTOR) + " " + strPath + "\n" << std::flush;
}

/** How many bytes of a read the disk gives, or a negative errno value. */
static long long MeetSectors(const char* pszPath, long long nFrom, long long nBytes, bool bDirect)
{
    const std::string strPath = pszPath != nullptr ? pszPath : "";
    for (const STSectors& stSlow : SectorsOf(strPath, "slow")) {
        const long long nMet = std::min(stSlow.nEnd, nFrom + nBytes) - std::max(stSlow.nFrom, nFrom);
        for (long long nDone = 0; nDone < nMet; nDone += SECTOR) {
            usleep(SLOW_US);
        }
    }
    long long nStop = nFrom + nBytes;
    for (const STSectors& stBad : SectorsOf(strPath, "bad")) {
        if (stBad.nFrom < nStop && stBad.nEnd > nFrom) {
            nStop = std::max(stBad.nFrom, nFrom);
        }
    }
    const bool bFails = nStop < nFrom + nBytes && (nStop == nFrom || !bDirect);
    if (bFails) {
        const std::lock_guard<std::mutex> lock(s_mutex);
        NoteFailure(strPath, nStop);
    }
    return bFails ? -EIO : nStop - nFrom;
}

/** 0 when the call goes on, a negative errno value when it fails, 1 when it does nothing. */
static int Meet(const char* pszCall, const char* pszPathOrNull)
{
    // A file that is open and removed has no path any more.
    const char* pszPath = pszPathOrNull != nullptr ? pszPathOrNull : "";
    STRule stRule = RuleFor(pszCall, pszPath);
    while (stRule.strWhat == "hang") {
        usleep(20000);
        stRule = RuleFor(pszCall, pszPath);
    }
    if (stRule.strWhat == "error") {
        return -int(stRule.nNumber);
    }
    if (stRule.strWhat == "full") {
        const std::lock_guard<std::mutex> lock(s_mutex);
        return s_nWritten >= stRule.nNumber ? -ENOSPC : 0;
    }
    return stRule.strWhat == "silent" ? 1 : 0;
}

static std::string Real(const char* pszPath) { return s_strFolder + (pszPath != nullptr ? pszPath : ""); }

static int Result(long nResult) { return nResult == -1 ? -errno : int(nResult); }

/** Runs the call on the real folder unless a rule says something else. */
template <typename Call> static int Do(const char* pszCall, const char* pszPath, Call call)
{
    const int nMet = Meet(pszCall, pszPath);
    if (nMet != 0) {
        return nMet < 0 ? nMet : 0;
    }
    return Result(call(Real(pszPath).c_str()));
}

static int GetAttr(const char* pszPath, struct stat* pStatus, fuse_file_info* pFile)
{
    return Do("getattr", pszPath, [=](const char* pszReal) {
        return pszPath == nullptr ? fstat(int(pFile->fh), pStatus) : lstat(pszReal, pStatus);
    });
}

static int ReadLink(const char* pszPath, char* pBuf, size_t nSize)
{
    return Do("readlink", pszPath, [=](const char* pszReal) {
        const ssize_t nLength = readlink(pszReal, pBuf, nSize - 1);
        if (nLength >= 0) {
            pBuf[nLength] = 0;
        }
        return nLength < 0 ? -1 : 0;
    });
}

static int OpenDir(const char* pszPath, fuse_file_info*)
{
    return Do("opendir", pszPath, [](const char*) { return 0; });
}

static int ReadDir(const char* pszPath, void* pBuf, fuse_fill_dir_t pfnFill, off_t, fuse_file_info*,
                   fuse_readdir_flags)
{
    return Do("readdir", pszPath, [=](const char* pszReal) {
        DIR* pDir = opendir(pszReal);
        if (pDir == nullptr) {
            return -1;
        }
        while (const dirent* pEntry = readdir(pDir)) {
            struct stat status = {};
            status.st_ino = pEntry->d_ino;
            status.st_mode = mode_t(pEntry->d_type) << 12;
            pfnFill(pBuf, pEntry->d_name, &status, 0, fuse_fill_dir_flags(0));
        }
        closedir(pDir);
        return 0;
    });
}

static int MakeDir(const char* pszPath, mode_t nMode)
{
    return Do("mkdir", pszPath, [=](const char* pszReal) { return mkdir(pszReal, nMode); });
}

static int Unlink(const char* pszPath)
{
    return Do("unlink", pszPath, [](const char* pszReal) { return unlink(pszReal); });
}

static int RemoveDir(const char* pszPath)
{
    return Do("rmdir", pszPath, [](const char* pszReal) { return rmdir(pszReal); });
}

static int Keep(fuse_file_info* pFile, int nDescriptor)
{
    pFile->fh = uint64_t(nDescriptor);
    return nDescriptor < 0 ? -1 : 0;
}

static int Open(const char* pszPath, fuse_file_info* pFile)
{
    pFile->direct_io = RuleFor("open", pszPath).strWhat == "direct" ? 1 : 0;
    return Do("open", pszPath,
              [=](const char* pszReal) { return Keep(pFile, open(pszReal, pFile->flags & ~O_DIRECT)); });
}

static int Create(const char* pszPath, mode_t nMode, fuse_file_info* pFile)
{
    return Do("create", pszPath,
              [=](const char* pszReal) { return Keep(pFile, open(pszReal, pFile->flags | O_CREAT, nMode)); });
}

static int Read(const char* pszPath, char* pBuf, size_t nSize, off_t nOffset, fuse_file_info* pFile)
{
    const bool bDirect = RuleFor("open", pszPath != nullptr ? pszPath : "").strWhat == "direct";
    const long long nGiven = MeetSectors(pszPath, nOffset, (long long)nSize, bDirect);
    if (nGiven < 0) {
        return int(nGiven);
    }
    return Do("read", pszPath,
              [=](const char*) { return pread(int(pFile->fh), pBuf, size_t(nGiven), nOffset); });
}

static int Write(const char* pszPath, const char* pBuf, size_t nSize, off_t nOffset, fuse_file_info* pFile)
{
    const int nMet = Meet("write", pszPath);
    if (nMet != 0) {
        return nMet < 0 ? nMet : int(nSize);
    }
    const int nResult = Result(pwrite(int(pFile->fh), pBuf, nSize, nOffset));
    const std::lock_guard<std::mutex> lock(s_mutex);
    s_nWritten += nResult > 0 ? nResult : 0;
    return nResult;
}

static int Truncate(const char* pszPath, off_t nSize, fuse_file_info* pFile)
{
    return Do("truncate", pszPath, [=](const char* pszReal) {
        return pszPath == nullptr ? ftruncate(int(pFile->fh), nSize) : truncate(pszReal, nSize);
    });
}

static int Reserve(const char* pszPath, int nMode, off_t nOffset, off_t nSize, fuse_file_info* pFile)
{
    return Do("fallocate", pszPath,
              [=](const char*) { return fallocate(int(pFile->fh), nMode, nOffset, nSize); });
}

/** What close() waits for and returns. */
static int Flush(const char* pszPath, fuse_file_info*)
{
    return Do("close", pszPath, [](const char*) { return 0; });
}

static int Release(const char*, fuse_file_info* pFile)
{
    close(int(pFile->fh));
    return 0;
}

static int Sync(const char* pszPath, int, fuse_file_info* pFile)
{
    return Do("fsync", pszPath, [=](const char*) { return fsync(int(pFile->fh)); });
}

static int SyncDir(const char* pszPath, int, fuse_file_info*)
{
    return Do("fsync", pszPath, [](const char*) { return 0; });
}

static int Space(const char* pszPath, struct statvfs* pStatus)
{
    return Do("statfs", pszPath, [=](const char* pszReal) { return statvfs(pszReal, pStatus); });
}

static int SetTimes(const char* pszPath, const timespec listTime[2], fuse_file_info*)
{
    return Do("utimens", pszPath, [=](const char* pszReal) {
        return utimensat(AT_FDCWD, pszReal, listTime, AT_SYMLINK_NOFOLLOW);
    });
}

static int SetMode(const char* pszPath, mode_t nMode, fuse_file_info*)
{
    return Do("chmod", pszPath, [=](const char* pszReal) { return chmod(pszReal, nMode); });
}

static int Access(const char* pszPath, int nMask)
{
    return Do("access", pszPath, [=](const char* pszReal) { return access(pszReal, nMask); });
}

static void* Init(fuse_conn_info*, fuse_config* pConfig)
{
    // Every question reaches the rules.
    pConfig->entry_timeout = 0;
    pConfig->attr_timeout = 0;
    pConfig->negative_timeout = 0;
    pConfig->use_ino = 1;
    // A file that is open is removed at once, without being renamed before.
    pConfig->hard_remove = 1;
    return nullptr;
}

static fuse_operations Operations()
{
    fuse_operations operations = {};
    operations.init = Init;
    operations.getattr = GetAttr;
    operations.readlink = ReadLink;
    operations.opendir = OpenDir;
    operations.readdir = ReadDir;
    operations.mkdir = MakeDir;
    operations.unlink = Unlink;
    operations.rmdir = RemoveDir;
    operations.open = Open;
    operations.create = Create;
    operations.read = Read;
    operations.write = Write;
    operations.truncate = Truncate;
    operations.fallocate = Reserve;
    operations.flush = Flush;
    operations.release = Release;
    operations.fsync = Sync;
    operations.fsyncdir = SyncDir;
    operations.statfs = Space;
    operations.utimens = SetTimes;
    operations.chmod = SetMode;
    operations.access = Access;
    return operations;
}

int main(int nArgc, char** ppArgv)
{
    if (nArgc != 5) {
        std::fprintf(stderr, "faulty_disk FOLDER RULES POINT DEVICE\n");
        return 2;
    }
    s_strFolder = ppArgv[1];
    s_strRules = ppArgv[2];
    umask(0);
    const std::string strName = std::string("fsname=") + ppArgv[4];
    const char* const listArg[]
        = {"faulty_disk", "-o", strName.c_str(), "-o", "allow_other,default_permissions"};
    fuse_args stArgs = FUSE_ARGS_INIT(5, const_cast<char**>(listArg));
    const fuse_operations stOperations = Operations();
    fuse* pFuse = fuse_new(&stArgs, &stOperations, sizeof stOperations, nullptr);
    if (pFuse == nullptr || fuse_mount(pFuse, ppArgv[3]) != 0) {
        return 1;
    }
    // One thread for each call that hangs, and enough for the others.
    fuse_loop_config* pConfig = fuse_loop_cfg_create();
    fuse_loop_cfg_set_max_threads(pConfig, 100);
    return fuse_loop_mt(pFuse, pConfig);
}
