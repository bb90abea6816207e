#pragma once

#include "disk/platform/STDiskEvent.h"

#include <QByteArray>
#include <QSet>

#include <optional>

/** What the kernel says about one disk that comes, goes or changes. */
struct STDeviceEvent
{
    QByteArray baAction; ///< "add", "remove" and others
    QByteArray baPath; ///< of the device in the kernel's tree of devices
    bool bUsbParent = false; ///< a USB device was found among the device's parents
};

/**
 * Decides which device events are arrivals and removals of USB disks.
 *
 * The device's parents tell, not the bus that it claims: USB disks that answer
 * as ATA would be missed. When a disk is removed its parents are often gone
 * already, so the USB disks that were seen are remembered. One thread.
 */
class CUsbDisks
{
public:
    /** Keeps in mind a USB disk that was there from the start. */
    void Remember(const QByteArray& baPath);

    /** The event to report: an arrival with the device's path, or a removal with "USB"; or none. */
    std::optional<STDiskEvent> OnEvent(const STDeviceEvent& event);

    /** True when the path leads through a USB bus ("/usb" and a number). */
    static bool LeadsThroughUsb(const QByteArray& baPath);

private:
    QSet<QByteArray> m_setSeen;
};
