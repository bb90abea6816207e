#pragma once

/** What draws windows on the screen, as far as a translucent window has to know it. */
class CCompositor
{
public:
    /**
     * True when translucent parts of a window let through what lies behind it.
     * Without that they are drawn black. GUI thread, with a QApplication.
     */
    static bool IsRunning();

    /** True when a window can be cut to a shape other than a rectangle. GUI thread, with a QApplication. */
    static bool CanClip();

    /**
     * True when there is a desktop behind the windows. Where they are alone on the screen, what
     * stood there before them stays beside them. GUI thread, with a QApplication.
     */
    static bool HasDesktop();
};
