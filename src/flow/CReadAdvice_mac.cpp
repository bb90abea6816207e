#include "flow/CReadAdvice.h"

#include <fcntl.h>

bool CReadAdvice::WillNeed(int nDescriptor, qint64 nFrom, qint64 nBytes)
{
    struct radvisory stAdvice = {nFrom, int(nBytes)};
    return fcntl(nDescriptor, F_RDADVISE, &stAdvice) != -1;
}
