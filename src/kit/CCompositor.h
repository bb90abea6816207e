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
};
