#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

/**
 * The block devices as sysfs describes them.
 *
 * Nothing but sysfs is needed to know a disk: its node in /dev may be missing.
 * A device is named by its folder in sysfs; an empty path stands for no device.
 */
class CSysBlock
{
public:
    /** Describes the disks below another folder than /sys when one is given. */
    explicit CSysBlock(std::filesystem::path root = "/sys");

    /**
     * Device of a node: "sdb1", "/dev/sdb1", "/dev/mapper/NAME" or a link to one.
     * A path of any other file names no device.
     */
    std::filesystem::path Find(const std::string& strNode) const;

    /** Device of a number "MAJOR:MINOR". */
    std::filesystem::path FindNumber(const std::string& strNumber) const;

    /**
     * Word for the bus that the disk is attached to. A USB device anywhere above
     * it makes it "USB", whatever protocol the disk itself speaks. A view of the boot
     * medium, through which its disk cannot be written, is a virtual one.
     */
    std::string Bus(const std::filesystem::path& device) const;

    /** Kernel's name of the device, for example "sdb1". */
    static std::string Name(const std::filesystem::path& device);

    /** Number "MAJOR:MINOR". */
    static std::string Number(const std::filesystem::path& device);

    /** Name that a mapped device has below /dev/mapper; empty for other devices. */
    static std::string MapperName(const std::filesystem::path& device);

    /** Size in bytes, 0 when unknown. */
    static std::uint64_t Size(const std::filesystem::path& device);

    /** True when the medium can be taken out of its drive. */
    static bool IsRemovable(const std::filesystem::path& device);

private:
    std::filesystem::path Entry(const std::string& strFolder, const std::string& strName) const;
    std::filesystem::path FindMapped(const std::string& strName) const;
    std::filesystem::path FindPath(const std::filesystem::path& node) const;
    std::string BusOf(const std::filesystem::path& device, int nDepth) const;
    std::string BusOfParts(const std::filesystem::path& whole, int nDepth) const;
    std::string BusOfParents(const std::filesystem::path& whole) const;

    std::filesystem::path m_root;
};
