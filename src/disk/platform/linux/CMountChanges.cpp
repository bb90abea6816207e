#include "disk/platform/linux/CMountChanges.h"

#include <algorithm>
#include <iterator>

static bool IsDirectlyIn(const std::string& strFolder, const STMount& mount)
{
    const std::string strPrefix = strFolder + '/';
    return mount.strPoint.size() > strPrefix.size()
        && mount.strPoint.compare(0, strPrefix.size(), strPrefix) == 0
        && mount.strPoint.find('/', strPrefix.size()) == std::string::npos;
}

static bool IsSameVolume(const STMount& first, const STMount& second)
{
    return first.nId == second.nId && first.strPoint == second.strPoint && first.strNumber == second.strNumber
        && first.strSource == second.strSource;
}

static void AppendThoseMissingIn(const std::vector<STMount>& listOther,
                                 const std::vector<STMount>& listVolume, ENDiskEventType enType,
                                 QVector<STDiskEvent>& listEvent)
{
    for (const STMount& volume : listVolume) {
        const bool bThere = std::any_of(listOther.begin(), listOther.end(), [&volume](const STMount& other) {
            return IsSameVolume(other, volume);
        });
        if (!bThere) {
            listEvent.append({enType, QByteArray::fromStdString(volume.strPoint)});
        }
    }
}

std::vector<STMount> CMountChanges::VolumesIn(const std::string& strFolder,
                                              const std::vector<STMount>& listMount)
{
    std::vector<STMount> listVolume;
    for (const STMount& mount : listMount) {
        const auto fnCovers = [&mount](const STMount& other) {
            return other.nParentId == mount.nId && other.strPoint == mount.strPoint;
        };
        if (IsDirectlyIn(strFolder, mount) && std::none_of(listMount.begin(), listMount.end(), fnCovers)) {
            listVolume.push_back(mount);
        }
    }
    return listVolume;
}

QVector<STDiskEvent> CMountChanges::Between(const std::vector<STMount>& listBefore,
                                            const std::vector<STMount>& listAfter)
{
    QVector<STDiskEvent> listEvent;
    AppendThoseMissingIn(listAfter, listBefore, DISK_EVENT_DISAPPEARED, listEvent);
    AppendThoseMissingIn(listBefore, listAfter, DISK_EVENT_APPEARED, listEvent);
    return listEvent;
}
