#include "flow/CWriteBack.h"

#include <fcntl.h>

bool CWriteBack::Start(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    return sync_file_range(nDescriptor, nFrom, nBytes, SYNC_FILE_RANGE_WRITE) == 0;
}

bool CWriteBack::Wait(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    const unsigned nFlags = SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE | SYNC_FILE_RANGE_WAIT_AFTER;
    return sync_file_range(nDescriptor, nFrom, nBytes, nFlags) == 0;
}
