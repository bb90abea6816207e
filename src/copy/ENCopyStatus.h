#pragma once

#include <QtGlobal>

/** What a copy is told to do; shared by the page that steers it and the worker that does it. */
enum ENCopyStatus : qint32
{
    COPY_STATUS_RUN = 0, ///< copying
    COPY_STATUS_PAUSE = 1, ///< paused, waiting for COPY_STATUS_RUN or COPY_STATUS_STOP
    COPY_STATUS_STOP = 2 ///< told to stop, or stopped because its parameters were bad
};
