#include "caffeinate/CAskerWatch.h"
#include "caffeinate/CInhibitor.h"
#include "caffeinate/COptions.h"

#include <cstdio>
#include <optional>
#include <string>

int main(int argc, char* argv[])
{
    const std::optional<STOptions> options = COptions::Parse(argc, argv);
    if (!options) {
        std::fputs("Usage: caffeinate [-dimsu] [-t SECONDS]\n", stderr);
        return 1;
    }
    CAskerWatch watch;
    CInhibitor inhibitor;
    const std::string strFailure = inhibitor.Take(options->strWhat);
    if (!strFailure.empty()) {
        std::fprintf(stderr, "caffeinate: %s\n", strFailure.c_str());
        return 1;
    }
    watch.Wait(options->seconds);
    return 0;
}
