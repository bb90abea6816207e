#pragma once

struct stat;

/**
 * Files and folders that the system shows although what is in them lies on a network only,
 * from where it would fetch it as soon as somebody reads them. Any thread.
 */
class CCloudFile
{
public:
    /** Whether what was asked for is such a file or folder. */
    static bool IsOnlyInCloud(const struct stat& stRaw);

    /**
     * From now on nothing is fetched for this process and those that it starts: what would
     * have to be fails at once. The errno value where the system refuses that, else 0.
     */
    static int StopFetching();
};
