#include "files/CCloudFile.h"

bool CCloudFile::IsOnlyInCloud(const struct stat& /*stRaw*/) { return false; }

int CCloudFile::StopFetching() { return 0; }
