#include "copy/CFreeFile.h"

#include <cerrno>
#include <fcntl.h>

static const mode_t MODE = 0666; // the user's mask takes from it
static const int NAMES_TRIED = 100;

STFreeFile CFreeFile::Create(int nFolder, const QByteArray& baStem, const char* pszSuffix)
{
    STFreeFile stFile;
    for (int nNumber = 0; nNumber < NAMES_TRIED && stFile.nDescriptor == -1; ++nNumber) {
        stFile.baName
            = baStem + (nNumber == 0 ? QByteArray() : '_' + QByteArray::number(nNumber)) + pszSuffix;
        stFile.nDescriptor
            = openat(nFolder, stFile.baName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, MODE);
        if (stFile.nDescriptor == -1 && errno != EEXIST) {
            break;
        }
    }
    return stFile;
}
