#pragma once

#include <QIcon>

/** The kinds of entry that have an icon of their own. */
enum class ENEntryKind
{
    FILE,
    FOLDER,
    VOLUME,
    FILE_LINK,
    FOLDER_LINK
};

/**
 * The icons of the tree, one per kind of entry. Asking the desktop for the icon
 * of each file would cost a pixmap and a look into the file for every node.
 */
class CEntryIcon
{
public:
    /**
     * The shared icon of `enKind`. The icons are made at the first call on the GUI
     * thread and live as long as the QApplication; any thread may take copies
     * of them. Null before that, and without a QApplication.
     */
    static QIcon Of(ENEntryKind enKind);

    /**
     * Makes the icon of `enKind` anew: the platform's own where it has icons for
     * files, else pictures of the program. GUI thread, with a QApplication.
     */
    static QIcon Make(ENEntryKind enKind);
};
