#include "disk/CDestinationDiscovery.h"
#include "disk/CDiskListener.h"
#include "disk/platform/DiskMonitors.h"
#include "disk/platform/IDiskEventSource.h"
#include "disk/platform/linux/CMountWatch.h"
#include "disk/platform/linux/CUsbWatch.h"
#include "files/CFileName.h"
#include "log/CLogTarnwick.h"

#include <QDebug>
#include <QTimer>

#include <vector>

static std::function<void(const STDiskEvent&)> DeliverTo(CDiskListener& listener)
{
    return [&listener](const STDiskEvent& event) {
        listener.OnDiskChanged(event.enType, event.baPath.constData());
    };
}

static void ReportLeftOut(const QString& strWhat)
{
    qWarning().noquote() << strWhat;
    // Disks are watched before the log has its file, and an early line would be lost.
    QTimer::singleShot(0, [strWhat] { g_TarnwickLog.LogExt(strWhat); });
}

namespace {

/** Devices from udev, volumes from the kernel's table of mounts; either works without the other. */
class CLinuxDiskEventSource : public IDiskEventSource
{
public:
    void Start(CDiskListener& listener) override
    {
        m_pUsbWatch = std::make_unique<CUsbWatch>(CUsbWatch::SCOPE_USB_DISKS, DeliverTo(listener));
        if (!m_pUsbWatch->Start()) {
            m_pUsbWatch.reset();
            ReportLeftOut(QStringLiteral("No device events: USB disks are noticed when they are mounted"));
        }
        m_pMountWatch = std::make_unique<CMountWatch>(
            CFileName::Encode(CDestinationDiscovery::VolumesFolder()), DeliverTo(listener));
        if (!m_pMountWatch->Start()) {
            m_pMountWatch.reset();
            ReportLeftOut(QStringLiteral("No table of mounts: volumes that come or go are not noticed"));
        }
    }

private:
    std::unique_ptr<CUsbWatch> m_pUsbWatch;
    std::unique_ptr<CMountWatch> m_pMountWatch;
};

} // namespace

std::unique_ptr<IDiskEventSource> IDiskEventSource::Create()
{
    return std::make_unique<CLinuxDiskEventSource>();
}

static void WatchOnThisThread(void* pContext, CUsbWatch::ENScope enScope)
{
    if (pContext == nullptr) {
        return;
    }
    auto pWatch = std::make_unique<CUsbWatch>(enScope, DeliverTo(*static_cast<CDiskListener*>(pContext)));
    if (!pWatch->Start()) {
        ReportLeftOut(QStringLiteral("No device events on this thread"));
        return;
    }
    // The watch belongs to this thread and stays as long as it does.
    static thread_local std::vector<std::unique_ptr<CUsbWatch>> s_listWatch;
    s_listWatch.push_back(std::move(pWatch));
}

bool USBMonitor(void* pContext)
{
    WatchOnThisThread(pContext, CUsbWatch::SCOPE_USB_DISKS);
    return true;
}

void DAMonitor(void* pContext) { WatchOnThisThread(pContext, CUsbWatch::SCOPE_ALL_REMOVALS); }
