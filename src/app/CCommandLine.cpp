#include "app/CCommandLine.h"

#include <string_view>

static constexpr char VERSION[] = "TarnwickMacPE " TARNWICK_VERSION "\n";
static constexpr char HELP[]
    = "Usage: TarnwickMacPE [OPTION]...\n"
      "Rescues files from a computer that no longer starts: opens a window in which they are\n"
      "ticked and copied to a USB disk.\n"
      "\n"
      "  -h, --help     write this and end\n"
      "  -v, --version  write the version and end\n"
      "\n"
      "Other options are those of Qt. \"man TarnwickMacPE\" tells the rest.\n";

static const char* TextFor(std::string_view argument)
{
    if (argument == "--version" || argument == "-v") {
        return VERSION;
    }
    return argument == "--help" || argument == "-h" ? HELP : nullptr;
}

std::optional<int> CCommandLine::Answer(int nArgc, const char* const* ppArgv, std::FILE* pOut)
{
    for (int n = 1; n < nArgc; ++n) {
        if (const char* pText = TextFor(ppArgv[n])) {
            return std::fputs(pText, pOut) < 0 || std::fflush(pOut) != 0 ? 1 : 0;
        }
    }
    return std::nullopt;
}
