#pragma once

#include <QImage>
#include <QSize>

/**
 * A frame buffer in memory: for the whole process "/dev/fb0" is this one. A test that lists this
 * source and exports its symbols (ENABLE_EXPORTS) is drawn by the platform "linuxfb" into it.
 */
class CFakeFrameBuffer
{
public:
    /** Gives it that size and a colour that the system's start has left. Before the application. */
    static void Make(const QSize& size, QRgb nLeftOver);

    /** What it shows now. */
    static QImage Picture();
};
