#pragma once

#include <QPixmap>
#include <QString>

/**
 * Pictures of the bundle at the resolution of the screen: beside each picture
 * lies one of twice its size, which a plain load would never choose. GUI thread.
 */
class CSkinPicture
{
public:
    /**
     * The picture as it is to be shown: as large as the file at strPath in the
     * window's units, in as many pixels as the screen has for that. A missing
     * file gives a null pixmap.
     */
    static QPixmap Pixmap(const QString& strPath);

    /** Path of the animation to show for strPath: its double on a finer screen, if there is one. */
    static QString MoviePath(const QString& strPath);
};
