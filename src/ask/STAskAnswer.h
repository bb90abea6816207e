#pragma once

#include <QByteArray>

/** What the program ends with. */
struct STAskAnswer
{
    int nStatus = 0; ///< exit status
    QByteArray baOutput; ///< what goes to the standard output, without a line's end
};
