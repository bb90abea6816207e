#pragma once

/** The signals by which the system ends a process for a write that cannot be done. */
class CWriteSignals
{
public:
    /**
     * From now on such a write only fails, with its errno value: EFBIG beyond a limit
     * of sizes, EPIPE where nobody reads. Main thread, before there is another.
     */
    static void Ignore();
};
