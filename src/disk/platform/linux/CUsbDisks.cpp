#include "disk/platform/linux/CUsbDisks.h"

#include <algorithm>

void CUsbDisks::Remember(const QByteArray& baPath) { m_setSeen.insert(baPath); }

std::optional<STDiskEvent> CUsbDisks::OnEvent(const STDeviceEvent& event)
{
    if (event.baAction == "add" && event.bUsbParent) {
        m_setSeen.insert(event.baPath);
        return STDiskEvent{DISK_EVENT_APPEARED, event.baPath};
    }
    if (event.baAction != "remove") {
        return std::nullopt;
    }
    const bool bSeen = m_setSeen.remove(event.baPath);
    if (!bSeen && !event.bUsbParent && !LeadsThroughUsb(event.baPath)) {
        return std::nullopt;
    }
    // As on the other system the removal does not say which disk it was: the
    // unmount does, with the volume's path.
    return STDiskEvent{DISK_EVENT_DISAPPEARED, QByteArrayLiteral("USB")};
}

static bool IsUsbBus(const QByteArray& baComponent)
{
    const QByteArray baNumber = baComponent.mid(3);
    return baComponent.startsWith("usb") && !baNumber.isEmpty()
        && std::all_of(baNumber.cbegin(), baNumber.cend(), [](char ch) { return ch >= '0' && ch <= '9'; });
}

bool CUsbDisks::LeadsThroughUsb(const QByteArray& baPath)
{
    const QList<QByteArray> listComponent = baPath.split('/');
    return std::any_of(listComponent.cbegin(), listComponent.cend(), IsUsbBus);
}
