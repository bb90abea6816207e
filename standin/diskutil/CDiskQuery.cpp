#include "diskutil/CDiskQuery.h"

#include "diskutil/CMountSize.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

static constexpr std::chrono::milliseconds SIZE_TIME{700};

/** Bus of a mount that no disk is behind. */
static std::string BusOfMount(const std::string& strType)
{
    static const char* const s_network[] = {
        "nfs",  "nfs4",       "cifs",           "smb3",        "smbfs",      "ncpfs", "afs",           "9p",
        "ceph", "fuse.sshfs", "fuse.glusterfs", "fuse.rclone", "fuse.davfs", "davfs", "fuse.smbnetfs",
    };
    const bool bNetwork
        = std::find(std::begin(s_network), std::end(s_network), strType) != std::end(s_network);
    return bNetwork ? "Network" : "Virtual Interface";
}

static bool IsOneOf(const std::string& strText, const std::vector<std::string>& listText)
{
    return std::find(listText.begin(), listText.end(), strText) != listText.end();
}

static bool IsInternalBus(const std::string& strBus)
{
    return IsOneOf(strBus, {"SATA", "PCI-Express", "PCI", "SAS", "SCSI", "Secure Digital"});
}

static bool IsEjectableBus(const std::string& strBus)
{
    return IsOneOf(strBus, {"USB", "FireWire", "Secure Digital", "Disk Image"});
}

/** Adds what the mounted file system tells. */
static void AddMount(STDiskInfo& info, const STMount& mount)
{
    info.strMountPoint = mount.strPoint;
    const std::string strLast = mount.strPoint.substr(mount.strPoint.rfind('/') + 1);
    info.strVolumeName = strLast.empty() ? mount.strPoint : strLast;
    info.strFilesystem = mount.strType;
    info.bWritable = !mount.bReadOnly;
    // A disk that does not answer has the size that sysfs tells.
    const std::uint64_t nSize = CMountSize::Of(mount.strPoint, SIZE_TIME);
    info.nTotalSize = nSize > 0 ? nSize : info.nTotalSize;
}

CDiskQuery::CDiskQuery(CSysBlock sys, CMountList mounts)
    : m_sys(std::move(sys))
    , m_mounts(std::move(mounts))
{
}

std::optional<STDiskInfo> CDiskQuery::Describe(const std::string& strNode) const
{
    fs::path device = m_sys.Find(strNode);
    const STMount* pMount = FindMount(strNode, device);
    if (device.empty() && pMount == nullptr) {
        return std::nullopt;
    }
    if (device.empty()) {
        // A source such as "/dev/root" names no device, but its mount has the number of one.
        device = m_sys.FindNumber(pMount->strNumber);
    }
    STDiskInfo info;
    info.strIdentifier = device.empty() ? strNode : CSysBlock::Name(device);
    info.strNode = device.empty() ? strNode : "/dev/" + info.strIdentifier;
    info.strBus = device.empty() ? BusOfMount(pMount->strType) : m_sys.Bus(device);
    info.nTotalSize = device.empty() ? 0 : CSysBlock::Size(device);
    info.bInternal = IsInternalBus(info.strBus);
    info.bEjectable = IsEjectableBus(info.strBus) || (!device.empty() && CSysBlock::IsRemovable(device));
    if (pMount != nullptr) {
        AddMount(info, *pMount);
    }
    return info;
}

const STMount* CDiskQuery::FindMount(const std::string& strNode, const fs::path& device) const
{
    std::vector<std::string> listSource = {strNode};
    if (!device.empty()) {
        listSource.push_back("/dev/" + CSysBlock::Name(device));
        const std::string strMapped = CSysBlock::MapperName(device);
        if (!strMapped.empty()) {
            listSource.push_back("/dev/mapper/" + strMapped);
        }
    }
    const STMount* pMount = m_mounts.FindSource(listSource);
    return pMount != nullptr || device.empty() ? pMount : m_mounts.FindNumber(CSysBlock::Number(device));
}
