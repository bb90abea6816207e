#pragma once

#include "ask/STAskRequest.h"

#include <QStringList>

#include <optional>

/** What a command line asks for. */
struct STParsedRequest
{
    std::optional<STAskRequest> stRequest; ///< nothing when the line cannot be understood
    QString strError; ///< why, in one line
};

/** The command line of the program. Any thread. */
class CAskRequest
{
public:
    /** How often a password may be tried. */
    static constexpr int MOST_TRIES = 3;

    /** Reads the arguments without the program's own name. */
    static STParsedRequest Parse(const QStringList& listArgument);
};
