#pragma once

#include <QFileInfo>
#include <QString>
#include <QVector>

#include <initializer_list>

class CDirNode;

/** One entry of a listed folder. */
struct STDirEntry
{
    /** Absolute path; nothing of the file has been read yet. */
    QFileInfo m_fileInfo;
    /** File name. */
    QString m_strName;
    /** A folder, or a link to one. */
    bool m_bDir = false;
    /** A symbolic link, of whatever target. */
    bool m_bLink = false;
};

/** What a listing came to. */
struct STDirListing
{
    /** The entries in the order in which they are shown. */
    QVector<STDirEntry> m_listEntry;
    /** The errno value that refused the listing or cut it short; ELOOP for a link that leads back; else 0. */
    int m_nError = 0;
};

/** Reads folders for the tree. Safe on any thread; puts nothing on the screen and opens no file. */
class CDirListing
{
public:
    /**
     * The entries of the folder of `node`, hidden and special ones included, but
     * not those whose name begins with one of `listSkip` (upper and lower case
     * differ). Folders come first, then the rest, each by lower-cased name; names
     * that differ only in case are in the order of their characters.
     */
    static STDirListing List(const CDirNode& node, std::initializer_list<QLatin1String> listSkip);

    /**
     * Whether `node` is a symbolic link below another node whose target is, or
     * contains, one of the folders that the node lies in: listing it would go
     * round for ever. A top-level entry never leads back, since it lies in none.
     */
    static bool LeadsBack(const CDirNode& node);
};
