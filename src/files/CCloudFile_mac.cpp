#include "files/CCloudFile.h"

#include <cerrno>
#include <sys/resource.h>
#include <sys/stat.h>

bool CCloudFile::IsOnlyInCloud(const struct stat& stRaw) { return (stRaw.st_flags & SF_DATALESS) != 0; }

int CCloudFile::StopFetching()
{
    // Systems before 10.15 do not know the policy, and fetch nothing by themselves.
    const int nResult = setiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_PROCESS,
                                       IOPOL_MATERIALIZE_DATALESS_FILES_OFF);
    return nResult == 0 ? 0 : errno;
}
