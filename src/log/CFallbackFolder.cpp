#include "log/CFallbackFolder.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static const mode_t OURS_ALONE = S_IRWXU;

/** Makes the folder, or takes the one that this user has made before. */
static bool TakeFolder(const char* pszPath)
{
    if (mkdir(pszPath, OURS_ALONE) == 0) {
        return true;
    }
    const int nFolder = errno == EEXIST ? open(pszPath, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC) : -1;
    if (nFolder == -1) {
        return false;
    }
    struct stat stFolder;
    const bool bTaken
        = fstat(nFolder, &stFolder) == 0 && stFolder.st_uid == geteuid() && fchmod(nFolder, OURS_ALONE) == 0;
    close(nFolder);
    return bTaken;
}

// Of a folder that is not there Qt makes the topmost one.
static QString TempFolder()
{
    const QString strTemp = QDir::tempPath();
    return strTemp.isEmpty() || strTemp == QLatin1String("/") ? QStringLiteral("/tmp") : strTemp;
}

QString CFallbackFolder::Make()
{
    const QString strPath = TempFolder() + QStringLiteral("/Tarnwick Log");
    QByteArray baPath = QFile::encodeName(strPath);
    if (TakeFolder(baPath.constData())) {
        return strPath;
    }
    baPath += ".XXXXXX";
    return mkdtemp(baPath.data()) != nullptr ? QFile::decodeName(baPath) : QString();
}
