#pragma once

#include <dirent.h>
#include <memory>

/**
 * Reads the names in one folder, in the order of the file system, "." and ".."
 * left out:
 *
 *     CFolderReader folder(CFileName::Encode(strPath));
 *     while (folder.Next()) {
 *         Use(folder.Name());
 *     }
 *     if (folder.Error() != 0) … // refused, or not read to its end
 *
 * Holds the folder open, by a descriptor that child processes do not inherit.
 * One object belongs to one thread; opens no file.
 */
class CFolderReader
{
public:
    /** Opens the folder, also through a link. */
    explicit CFolderReader(const char* pszPath);

    /**
     * Opens the entry pszName of an open folder, or of the current one for AT_FDCWD. A
     * link is refused, and so is all else that is no folder.
     */
    CFolderReader(int nParent, const char* pszName);

    /** False when the folder cannot be read; Error() says why. */
    bool IsOpen() const;

    /** The folder's descriptor, for calls such as fstatat() on its entries; -1 when it is not open. */
    int Descriptor() const;

    /** Goes to the next entry; false at the end, and when the folder cannot be read (any further). */
    bool Next();

    /** The errno value that refused the folder or ended the reading early; 0 while all is well. */
    int Error() const;

    /** Name of the entry, in the bytes of the disk. Until the next Next(), as are the four below. */
    const char* Name() const;

    /** Whether the entry is a symbolic link. The file system is asked only where the folder does not tell. */
    bool IsLink() const;

    /** Whether it is said in the list itself that the entry is a folder; the file system is not asked. */
    bool IsKnownFolder() const;

    /** Whether the entry is a file, or the list does not tell its kind; the file system is not asked. */
    bool MayBeFile() const;

    /** Whether the entry is a folder or a link to one; links make the file system be asked. */
    bool IsFolder() const;

private:
    struct STClose
    {
        void operator()(DIR* pFolder) const { closedir(pFolder); }
    };

    std::unique_ptr<DIR, STClose> m_pFolder;
    const dirent* m_pEntry = nullptr; // belongs to the open folder
    int m_nError = 0;
};
