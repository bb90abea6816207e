#include "diskutil/CDiskQuery.h"
#include "diskutil/CPListText.h"

#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <unistd.h>

// Whoever asks waits for the answer, and asks for one disk after the other: whatever
// hangs, the system ends this process after that many seconds.
static const unsigned MOST_SECONDS = 2;

static int Fail(const char* pText, const char* pDetail)
{
    std::fprintf(stderr, "%s%s\n", pText, pDetail);
    return 1;
}

int main(int argc, char* argv[])
{
    if (argc != 4 || std::strcmp(argv[1], "info") != 0 || std::strcmp(argv[2], "-plist") != 0) {
        return Fail("Usage: diskutil info -plist DEVICENODE", "");
    }
    alarm(MOST_SECONDS);
    // Without a table the disk is described as one that is not mounted.
    const CDiskQuery query(CSysBlock(), CMountList(CMountTable::Mounts().value_or(std::vector<STMount>())));
    const std::optional<STDiskInfo> info = query.Describe(argv[3]);
    if (!info) {
        return Fail("Could not find disk: ", argv[3]);
    }
    const std::string strText = CPListText::OfDisk(*info);
    const bool bWritten = std::fwrite(strText.data(), 1, strText.size(), stdout) == strText.size();
    if (std::fflush(stdout) != 0 || !bWritten) {
        return Fail("Could not write the answer", "");
    }
    return 0;
}
