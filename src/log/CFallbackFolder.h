#pragma once

#include <QString>

/** The folder for the log where its own place cannot be written. */
class CFallbackFolder
{
public:
    /**
     * Makes "Tarnwick Log" in the temporary folder, for this user alone. Where something of
     * somebody else has the name, a link above all, it gets another one. Empty when no
     * folder can be made. Any thread.
     */
    static QString Make();
};
