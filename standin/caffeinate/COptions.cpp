#include "caffeinate/COptions.h"

#include <cerrno>
#include <cstdlib>
#include <limits>
#include <unistd.h>

// What "-u" means when no time is given: the user was there just now.
static const std::uint32_t USER_SECONDS = 5;

/** A whole number of seconds, at least one; nothing for any other text. */
static std::optional<std::uint32_t> Seconds(const std::string& strText)
{
    if (strText.empty() || strText.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    errno = 0;
    const unsigned long long nSeconds = std::strtoull(strText.c_str(), nullptr, 10);
    if (errno != 0 || nSeconds == 0 || nSeconds > std::numeric_limits<std::uint32_t>::max()) {
        return std::nullopt;
    }
    return std::uint32_t(nSeconds);
}

/** What the login manager is asked for. Display, system and disk are one kind of idling to it. */
static std::string What(bool bUser, bool bSleep, bool bIdle)
{
    if (bUser || (bSleep && bIdle)) {
        return "sleep:idle";
    }
    return bSleep ? "sleep" : "idle";
}

std::optional<STOptions> COptions::Parse(int argc, char* const argv[])
{
    std::string strFlags;
    STOptions options;
    optind = 0;
    opterr = 0;
    for (int nOption = 0; (nOption = getopt(argc, argv, "+dimsut:")) != -1;) {
        strFlags += char(nOption);
        if (nOption == 't') {
            options.seconds = Seconds(optarg);
        }
        if (nOption == '?' || (nOption == 't' && !options.seconds)) {
            return std::nullopt;
        }
    }
    if (optind != argc) {
        return std::nullopt;
    }
    const auto has
        = [&strFlags](const char* pFlags) { return strFlags.find_first_of(pFlags) != std::string::npos; };
    if (has("u") && !options.seconds) {
        options.seconds = USER_SECONDS;
    }
    options.strWhat = What(has("u"), has("s"), has("dim"));
    return options;
}
