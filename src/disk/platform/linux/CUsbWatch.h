#pragma once

#include "disk/platform/linux/CUsbDisks.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>

struct udev;
struct udev_device;
struct udev_monitor;

/** Releases udev's objects. */
struct STUdevRelease
{
    void operator()(udev* pUdev) const;
    void operator()(udev_device* pDevice) const;
    void operator()(udev_monitor* pMonitor) const;
};

/**
 * Reports disks that are plugged in and pulled. Whole storage devices, not
 * their partitions: one event for each stick.
 *
 * Lives on one thread, which runs an event loop; everything is reported there.
 */
class CUsbWatch
{
public:
    using FnDeliver = std::function<void(const STDiskEvent&)>;

    /** Which events are reported. */
    enum ENScope
    {
        SCOPE_USB_DISKS, ///< USB disks that come (with the device's path) and go (with "USB")
        SCOPE_ALL_REMOVALS ///< disks on any bus that go (with "USB")
    };

    CUsbWatch(ENScope enScope, FnDeliver fnDeliver);
    ~CUsbWatch();
    CUsbWatch(const CUsbWatch&) = delete;
    CUsbWatch& operator=(const CUsbWatch&) = delete;

    /** Starts; disks that are present are not reported. False when the system gives no device events. */
    bool Start();

private:
    bool OpenMonitor();
    void RememberPresent();
    void OnDeviceEvents();
    void Deliver(udev_device* pDevice);

    const ENScope m_enScope;
    const FnDeliver m_fnDeliver;
    CUsbDisks m_disks;
    std::unique_ptr<udev, STUdevRelease> m_pUdev;
    std::unique_ptr<udev_monitor, STUdevRelease> m_pMonitor;
    std::unique_ptr<QSocketNotifier> m_pNotifier;
};
