#pragma once

#include <QString>

/** What the user should know of a folder that was opened. */
struct STFolderFacts
{
    QString strPath; ///< absolute
    int nLeftOut = 0; ///< entries that the tree does not show, for their names; 65535 stands for more
    int nError = 0; ///< the errno value that refused its listing or cut it short; 0 when all was well
    bool bNoAnswer = false; ///< its disk has not answered so far; what is in it comes in when it does
};
