#pragma once

/**
 * Counts the threads that nobody waits for any more, because the disk that they
 * asked does not answer. They touch nothing of the program when they go on.
 *
 * A process that ends with such a thread ends by _exit: destroying what is static
 * under a thread that may wake up at any moment is no orderly end.
 */
class CLeftBehind
{
public:
    /** One more is left behind. Any thread. */
    static void Add();

    /** One that was left behind has ended after all. Any thread. */
    static void Remove();

    /** Whether there is one at present. Any thread. */
    static bool Any();
};
