#pragma once

/** Sees to it that a process which has begun to leave is gone in time, whatever hangs. */
class CEndWatch
{
public:
    /** How long leaving may take, in ms. */
    static constexpr int PATIENCE_MS = 4500;

    /**
     * Begins to count: when the process is still there PATIENCE_MS later, it ends with
     * that status and a line in the log. The first call counts. Any thread.
     */
    static void Begin(int nStatus);

    /**
     * Ends the process at once, without the destructors of what is static: with a
     * thread left behind that may still use it. Any thread.
     */
    [[noreturn]] static void EndNow(int nStatus);
};
