#pragma once

class CTarnwickMacPE;

/**
 * The ways in which the program ends: the window is closed, a signal asks for it, the
 * display is lost. Each stops a running copy, so that its files are closed and its
 * account is written, and none takes longer than CEndWatch allows.
 */
class CProgramEnd
{
public:
    /** Listens to signals from now on. GUI thread, once, after the application object. */
    static void Prepare();

    /** Names the window whose copy is stopped at the end; it has to live until Leave has run. GUI thread. */
    static void SetWindow(CTarnwickMacPE* pWindow);

    /** Runs the event loop, unless a signal has come before; the exit status. With a window named. */
    static int Exec();

    /** After the event loop: stops the copy and waits a moment for its end. GUI thread. */
    static void Leave(int nStatus);

    /** After everything else: ends the process here where an orderly end could hang or crash. GUI thread. */
    static int Finish(int nStatus);
};
