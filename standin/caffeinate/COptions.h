#pragma once

#include <cstdint>
#include <optional>
#include <string>

/** What the command was asked to hold, and how long. */
struct STOptions
{
    std::string strWhat; ///< what the login manager keeps from happening, for example "sleep:idle"
    std::optional<std::uint32_t> seconds; ///< without a time it lasts as long as the asker
};

/** Reads the arguments of the command. */
class COptions
{
public:
    /** The request; nothing when the arguments are not understood. */
    static std::optional<STOptions> Parse(int argc, char* const argv[]);
};
