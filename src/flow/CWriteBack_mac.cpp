#include "flow/CWriteBack.h"

#include <unistd.h>

bool CWriteBack::Start(int /*nDescriptor*/, qint64 /*nFrom*/, qint64 /*nBytes*/)
{
    // There is no way to begin without waiting here; the system begins soon by itself.
    return true;
}

bool CWriteBack::Wait(int nDescriptor, qint64 /*nFrom*/, qint64 /*nBytes*/)
{
    return fsync(nDescriptor) == 0;
}
