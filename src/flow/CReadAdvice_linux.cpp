#include "flow/CReadAdvice.h"

#include <fcntl.h>

bool CReadAdvice::WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    return posix_fadvise(nDescriptor, nFrom, nBytes, POSIX_FADV_WILLNEED) == 0;
}
