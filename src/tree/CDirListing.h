#pragma once

#include "tree/CNodeFileInfo.h"

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>
#include <initializer_list>

/** One entry of a listed folder. */
struct STDirEntry
{
    CNodeFileInfo fileInfo; ///< absolute path; nothing of the file has been read yet
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

/** A folder to list, in copies, so that whoever lists it needs nothing of the tree. */
struct STFolderToList
{
    QString strPath; ///< absolute
    QStringList listAbove; ///< paths of the folders that it lies in as the tree shows it, from the nearest on
};

/** What kind of entry a path is; without an answer it counts as a folder. */
struct STEntryKind
{
    bool bDir = true; ///< a folder, or a link to one
    bool bLink = false; ///< a symbolic link, of whatever target
};

/** Is told of a file while its folder is listed: the folder's descriptor, the name in the disk's bytes. */
using PFNListedFile = std::function<void(int nFolder, const char* pszName)>;

/** Reads folders for the tree. Safe on any thread; puts nothing on the screen and opens no file. */
class CDirListing
{
public:
    /**
     * The entries of a folder, hidden and special ones included, but not those whose
     * name begins with one of `listSkip` (upper and lower case differ). Folders come
     * first, then the rest, each by lower-cased name; names that differ only in case
     * are in the order of their characters. Each that is no folder is told to fnFile, in
     * the order of the disk, while its folder is open.
     */
    static STDirListing List(const QString& strFolder, std::initializer_list<QLatin1String> listSkip,
                             const PFNListedFile& fnFile = {});

    /** The same; a link that leads back is refused with ELOOP. */
    static STDirListing List(const STFolderToList& stFolder, std::initializer_list<QLatin1String> listSkip,
                             const PFNListedFile& fnFile = {});

    /** The kind of the entry; neither when there is none. */
    static STEntryKind KindOf(const QString& strPath);

    /**
     * Whether a folder is a symbolic link whose target is, or contains, one of the
     * folders that it lies in: listing it would go round for ever.
     */
    static bool LeadsBack(const STFolderToList& stFolder);
};
