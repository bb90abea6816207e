#include "disk/platform/linux/CSysBlock.h"

#include "files/CAsideQuestion.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <system_error>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

// A disk made of disks made of disks: real stacks have three or four layers.
static const int MOST_LAYERS = 16;
static const int MOST_LINKS = 8;

static constexpr std::chrono::milliseconds NODE_TIME{700};

static const char BUS_USB[] = "USB";
static const char BUS_VIRTUAL[] = "Virtual Interface";

// How the boot medium names what it puts between a disk and its file systems, so that
// nothing is written to the disk: never one to copy to, whatever bus it is on.
static const char VIEW[] = "tarnwick-view-";

/** First line of a small file; empty when it cannot be read. */
static std::string ReadLine(const fs::path& path)
{
    std::ifstream file(path);
    std::string strLine;
    std::getline(file, strLine);
    return strLine;
}

static bool StartsWith(const std::string& strText, const char* pBegin)
{
    return strText.rfind(pBegin, 0) == 0;
}

/** True for the text followed by a number, for example "ata" and "ata12". */
static bool IsNumbered(const std::string& strText, const std::string& strBegin)
{
    return strText.size() > strBegin.size() && StartsWith(strText, strBegin.c_str())
        && std::all_of(strText.begin() + long(strBegin.size()), strText.end(),
                       [](unsigned char ch) { return std::isdigit(ch) != 0; });
}

/** What a link to a device node leads to; unlike a resolved path, the node may be missing. */
static fs::path FollowLinks(const std::string& strNode)
{
    fs::path path = fs::path(strNode).lexically_normal();
    for (int i = 0; i < MOST_LINKS; ++i) {
        std::error_code error;
        const fs::path target = fs::read_symlink(path, error);
        if (error) {
            break;
        }
        path = (path.parent_path() / target).lexically_normal();
    }
    return path;
}

namespace {

/** What a path leads to. */
struct STNode
{
    bool bNoDevice = false; ///< something is there that is no block device
    std::string strNumber; ///< "MAJOR:MINOR"; empty without a node
    fs::path target; ///< where its links lead
};

} // namespace

/** Waits for the disk that the path lies on, which need not be the one that it names. */
static STNode LookAt(const std::string& strNode)
{
    STNode node;
    struct stat status = {};
    if (stat(strNode.c_str(), &status) == 0) {
        node.bNoDevice = !S_ISBLK(status.st_mode);
        node.strNumber = std::to_string(major(status.st_rdev)) + ":" + std::to_string(minor(status.st_rdev));
    }
    node.target = FollowLinks(strNode);
    return node;
}

/** Entries of a folder; none when it cannot be read. */
static std::vector<fs::path> EntriesOf(const fs::path& folder)
{
    std::vector<fs::path> listEntry;
    std::error_code error;
    for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error)) {
        listEntry.push_back(it->path());
    }
    return listEntry;
}

static std::string Subsystem(const fs::path& device)
{
    std::error_code error;
    return fs::read_symlink(device / "subsystem", error).filename().string();
}

/** The disk that a partition lies on; a whole disk is its own. */
static fs::path Whole(const fs::path& device)
{
    std::error_code error;
    return fs::exists(device / "partition", error) ? device.parent_path() : device;
}

/** Word of the bus that one device of the chain above a disk belongs to; empty when it tells nothing. */
static std::string BusOfParent(const std::string& strSubsystem, const std::string& strName)
{
    static const std::pair<const char*, const char*> s_subsystems[] = {
        {"nvme", "PCI-Express"},        {"nvme-subsystem", "PCI-Express"}, {"mmc", "Secure Digital"},
        {"mmc_host", "Secure Digital"}, {"virtio", BUS_VIRTUAL},           {"vmbus", BUS_VIRTUAL},
        {"xen", BUS_VIRTUAL},           {"firewire", "FireWire"},
    };
    for (const auto& [pSubsystem, pBus] : s_subsystems) {
        if (strSubsystem == pSubsystem) {
            return pBus;
        }
    }
    // These transports have devices of their own in the chain, but no subsystem.
    if (IsNumbered(strName, "ata")) {
        return "SATA";
    }
    if (IsNumbered(strName, "session")) {
        return "iSCSI";
    }
    if (StartsWith(strName, "end_device-")) {
        return "SAS";
    }
    return StartsWith(strName, "rport-") ? "Fibre Channel Interface" : "";
}

/** Word for a disk above which nothing telling stands. */
static std::string BusOfNothing(const fs::path& whole, bool bScsi, bool bPci)
{
    const std::string strName = whole.filename().string();
    if (whole.string().find("/devices/virtual/") != std::string::npos) {
        const bool bNetwork = IsNumbered(strName, "nbd") || IsNumbered(strName, "drbd");
        return bNetwork ? "Network" : BUS_VIRTUAL;
    }
    if (bScsi) {
        return "SCSI";
    }
    return bPci ? "PCI" : "Unknown";
}

CSysBlock::CSysBlock(fs::path root)
    : m_root(std::move(root))
{
    std::error_code error;
    const fs::path canonical = fs::canonical(m_root, error);
    m_root = error ? m_root : canonical;
}

fs::path CSysBlock::Find(const std::string& strNode) const
{
    if (strNode.find('/') == std::string::npos) {
        return Entry("class/block", strNode);
    }
    const std::optional<STNode> node
        = CAsideQuestion<STNode>::Ask(NODE_TIME, [strNode] { return LookAt(strNode); });
    if (!node || node->bNoDevice) {
        return {};
    }
    const fs::path device = FindNumber(node->strNumber);
    return device.empty() ? FindPath(node->target) : device;
}

fs::path CSysBlock::FindNumber(const std::string& strNumber) const { return Entry("dev/block", strNumber); }

std::string CSysBlock::Bus(const fs::path& device) const { return BusOf(device, 0); }

std::string CSysBlock::Name(const fs::path& device)
{
    // sysfs writes the slash of names such as "cciss/c0d0" as "!".
    std::string strName = device.filename().string();
    std::replace(strName.begin(), strName.end(), '!', '/');
    return strName;
}

std::string CSysBlock::Number(const fs::path& device) { return ReadLine(device / "dev"); }

std::string CSysBlock::MapperName(const fs::path& device) { return ReadLine(device / "dm" / "name"); }

std::uint64_t CSysBlock::Size(const fs::path& device)
{
    // sysfs counts in sectors of 512 bytes whatever the sectors of the disk are.
    return std::strtoull(ReadLine(device / "size").c_str(), nullptr, 10) * 512;
}

bool CSysBlock::IsRemovable(const fs::path& device) { return ReadLine(Whole(device) / "removable") == "1"; }

/** Device that an entry of a folder of links stands for. */
fs::path CSysBlock::Entry(const std::string& strFolder, const std::string& strName) const
{
    if (strName.empty() || strName == "." || strName == "..") {
        return {};
    }
    std::error_code error;
    const fs::path device = fs::canonical(m_root / strFolder / strName, error);
    return error ? fs::path() : device;
}

fs::path CSysBlock::FindMapped(const std::string& strName) const
{
    for (const fs::path& entry : EntriesOf(m_root / "class/block")) {
        if (!strName.empty() && MapperName(entry) == strName) {
            return Entry("class/block", entry.filename().string());
        }
    }
    return {};
}

fs::path CSysBlock::FindPath(const fs::path& node) const
{
    static const std::string s_strFolder = "/dev/";
    if (!StartsWith(node.string(), s_strFolder.c_str())) {
        return {};
    }
    std::string strName = node.string().substr(s_strFolder.size());
    if (StartsWith(strName, "mapper/")) {
        return FindMapped(node.filename().string());
    }
    std::replace(strName.begin(), strName.end(), '/', '!');
    return Entry("class/block", strName);
}

std::string CSysBlock::BusOf(const fs::path& device, int nDepth) const
{
    const fs::path whole = Whole(device);
    if (IsNumbered(whole.filename().string(), "loop")) {
        return "Disk Image";
    }
    if (StartsWith(MapperName(whole), VIEW)) {
        return BUS_VIRTUAL;
    }
    const std::string strBus = BusOfParts(whole, nDepth);
    return strBus.empty() ? BusOfParents(whole) : strBus;
}

/** Bus of the disks that a disk is made of: a virtual one when they differ; empty when there are none. */
std::string CSysBlock::BusOfParts(const fs::path& whole, int nDepth) const
{
    std::vector<std::string> listBus;
    for (const fs::path& entry : EntriesOf(whole / "slaves")) {
        std::error_code error;
        const fs::path part = fs::canonical(entry, error);
        if (!error && nDepth < MOST_LAYERS) {
            listBus.push_back(BusOf(part, nDepth + 1));
        }
    }
    if (listBus.empty()) {
        return "";
    }
    const bool bSame = std::count(listBus.begin(), listBus.end(), listBus.front()) == long(listBus.size());
    return bSame ? listBus.front() : BUS_VIRTUAL;
}

std::string CSysBlock::BusOfParents(const fs::path& whole) const
{
    std::string strBus;
    bool bScsi = false;
    bool bPci = false;
    // The nearest device that tells something counts, but USB further up counts
    // more: a bridge lets the disk behind it answer as ATA or SCSI.
    for (fs::path parent = whole; parent != m_root && parent != parent.root_path();
         parent = parent.parent_path()) {
        const std::string strSubsystem = Subsystem(parent);
        if (strSubsystem == "usb") {
            return BUS_USB;
        }
        if (strBus.empty()) {
            strBus = BusOfParent(strSubsystem, parent.filename().string());
        }
        bScsi = bScsi || strSubsystem == "scsi";
        bPci = bPci || strSubsystem == "pci";
    }
    return strBus.empty() ? BusOfNothing(whole, bScsi, bPci) : strBus;
}
