#pragma once

#include "copy/STCopyAccount.h"

class CCopyFileThread;

/** What is done with a copy's worker that does not end, because its disk does not answer. */
class CStuckWorker
{
public:
    /**
     * Stops the worker, ends its account, waiting up to nWaitMs for the report, and
     * leaves it behind: nobody hears of it any more, and it deletes itself should it
     * ever end. Gives the account. GUI thread only.
     */
    static STCopyAccount LeaveBehind(CCopyFileThread* pWorker, int nWaitMs);
};
