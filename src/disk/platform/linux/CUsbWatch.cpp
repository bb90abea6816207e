#include "disk/platform/linux/CUsbWatch.h"

#include <libudev.h>
#include <unistd.h>
#include <utility>

static const char* const SUBSYSTEM = "block";
static const char* const WHOLE_DISK = "disk";

using DevicePtr = std::unique_ptr<udev_device, STUdevRelease>;

void STUdevRelease::operator()(udev* pUdev) const { udev_unref(pUdev); }

void STUdevRelease::operator()(udev_device* pDevice) const { udev_device_unref(pDevice); }

void STUdevRelease::operator()(udev_monitor* pMonitor) const { udev_monitor_unref(pMonitor); }

static bool HasUsbParent(udev_device* pDevice)
{
    // The parent belongs to the device and is released with it.
    return udev_device_get_parent_with_subsystem_devtype(pDevice, "usb", "usb_device") != nullptr;
}

static bool IsWholeDisk(udev_device* pDevice)
{
    return qstrcmp(udev_device_get_devtype(pDevice), WHOLE_DISK) == 0;
}

/**
 * The device manager passes events on when a device is ready. A rescue system
 * may run without one; the kernel's own events then serve as well, since
 * nothing is asked of a device but its place in the tree.
 */
static const char* EventOrigin() { return ::access("/run/udev/control", F_OK) == 0 ? "udev" : "kernel"; }

CUsbWatch::CUsbWatch(ENScope enScope, FnDeliver fnDeliver)
    : m_enScope(enScope)
    , m_fnDeliver(std::move(fnDeliver))
{
}

CUsbWatch::~CUsbWatch() = default;

bool CUsbWatch::Start()
{
    if (!OpenMonitor()) {
        return false;
    }
    RememberPresent();
    m_pNotifier
        = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(m_pMonitor.get()), QSocketNotifier::Read);
    QObject::connect(m_pNotifier.get(), &QSocketNotifier::activated, m_pNotifier.get(),
                     [this] { OnDeviceEvents(); });
    return true;
}

bool CUsbWatch::OpenMonitor()
{
    m_pUdev.reset(udev_new());
    if (!m_pUdev) {
        return false;
    }
    m_pMonitor.reset(udev_monitor_new_from_netlink(m_pUdev.get(), EventOrigin()));
    return m_pMonitor
        && udev_monitor_filter_add_match_subsystem_devtype(m_pMonitor.get(), SUBSYSTEM, WHOLE_DISK) >= 0
        && udev_monitor_enable_receiving(m_pMonitor.get()) >= 0;
}

void CUsbWatch::RememberPresent()
{
    udev_enumerate* const pEnumerate = udev_enumerate_new(m_pUdev.get());
    if (pEnumerate == nullptr) {
        return;
    }
    udev_enumerate_add_match_subsystem(pEnumerate, SUBSYSTEM);
    udev_enumerate_scan_devices(pEnumerate);
    for (udev_list_entry* pEntry = udev_enumerate_get_list_entry(pEnumerate); pEntry != nullptr;
         pEntry = udev_list_entry_get_next(pEntry)) {
        const DevicePtr pDevice(
            udev_device_new_from_syspath(m_pUdev.get(), udev_list_entry_get_name(pEntry)));
        if (pDevice && IsWholeDisk(pDevice.get()) && HasUsbParent(pDevice.get())) {
            m_disks.Remember(udev_device_get_syspath(pDevice.get()));
        }
    }
    udev_enumerate_unref(pEnumerate);
}

void CUsbWatch::OnDeviceEvents()
{
    while (udev_device* const pReceived = udev_monitor_receive_device(m_pMonitor.get())) {
        const DevicePtr pDevice(pReceived);
        Deliver(pDevice.get());
    }
}

void CUsbWatch::Deliver(udev_device* pDevice)
{
    const STDeviceEvent device{udev_device_get_action(pDevice), udev_device_get_syspath(pDevice),
                               m_enScope == SCOPE_ALL_REMOVALS || HasUsbParent(pDevice)};
    const std::optional<STDiskEvent> event = m_disks.OnEvent(device);
    const bool bWanted = m_enScope == SCOPE_USB_DISKS || (event && event->enType == DISK_EVENT_DISAPPEARED);
    if (event && bWanted) {
        m_fnDeliver(*event);
    }
}
