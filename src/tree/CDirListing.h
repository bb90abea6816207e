#pragma once

#include <QFileInfo>
#include <QString>
#include <QVector>

#include <initializer_list>

/** One entry of a listed folder. */
struct STDirEntry
{
    QFileInfo fileInfo; ///< absolute path; nothing of the file has been read yet
    QString strName; ///< file name
    bool bDir = false; ///< a folder, or a link to one
    bool bLink = false; ///< a symbolic link, of whatever target
};

/** What a listing came to. */
struct STDirListing
{
    QVector<STDirEntry> listEntry; ///< in the order in which they are shown
    int nLeftOut = 0; ///< entries that are not in the list for their names
    int nError = 0; ///< the errno value that refused the listing or cut it short; 0 when all was well
};

/** Reads folders for the tree. Safe on any thread; puts nothing on the screen and opens no file. */
class CDirListing
{
public:
    /**
     * The entries of a folder, hidden and special ones included, but not those whose
     * name begins with one of `listSkip` (upper and lower case differ). Folders come
     * first, then the rest, each by lower-cased name; names that differ only in case
     * are in the order of their characters.
     */
    static STDirListing List(const QString& strFolder, std::initializer_list<QLatin1String> listSkip);
};
