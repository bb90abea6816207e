#pragma once

#include <QByteArray>

/** A file that was made. */
struct STFreeFile
{
    int nDescriptor = -1; ///< open for writing; -1 when it could not be made, with the reason in errno
    QByteArray baName = {}; ///< in the folder
};

/** Files beside others, which they never replace. */
class CFreeFile
{
public:
    /**
     * Makes a file under the first free one of the names "stem.suffix", "stem_1.suffix" and so
     * on, a hundred of them at most.
     */
    static STFreeFile Create(int nFolder, const QByteArray& baStem, const char* pszSuffix);
};
