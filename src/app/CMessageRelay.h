#pragma once

/** Sends what qDebug and its sisters write to the program's log as well. */
class CMessageRelay
{
public:
    /**
     * Installs the relay once; the lines still go where they went before.
     * A line that is written while the log itself is at work is not logged,
     * so that a failing log cannot wait for itself. Lines come from any thread.
     */
    static void Install();
};
