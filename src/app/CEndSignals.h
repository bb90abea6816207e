#pragma once

#include <functional>

/** The signals that ask the program to end. */
class CEndSignals
{
public:
    /**
     * From now on the first SIGTERM, SIGINT or SIGHUP runs fnEnd with its number, on a
     * thread of its own, so that it is heard whatever hangs; later ones change nothing.
     * A signal that was ignored when the program was started stays so. Call it once.
     */
    static void Install(std::function<void(int)> fnEnd);

    /** What the log says of a program that such a signal has ended. */
    static const char* Name(int nSignal);
};
