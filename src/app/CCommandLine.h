#pragma once

#include <cstdio>
#include <optional>

/** What the program answers on the command line without opening a window. */
class CCommandLine
{
public:
    /**
     * Writes the answer to "--version" ("-v") or "--help" ("-h") to pOut and returns the
     * process's exit status, 1 when it could not be written; nothing where neither is among
     * the arguments, which are then Qt's. Needs no display and no application object.
     */
    static std::optional<int> Answer(int nArgc, const char* const* ppArgv, std::FILE* pOut);
};
