#include "disk/CDiskListener.h"
#include "disk/platform/DiskMonitors.h"
#include "disk/platform/IDiskEventSource.h"
#include "disk/platform/macos/DeviceWatch.h"
#include "disk/platform/macos/DiskSession.h"
#include "disk/platform/macos/MountWatch.h"
#include "disk/platform/macos/USBListen.h"
#include "log/CLogTarnwick.h"

#include <QCoreApplication>
#include <QDebug>

static void ReportLeftOut(const QString& strWhat)
{
    qWarning().noquote() << strWhat;
    // Disks are watched before the log has its file, and an early line would be
    // lost. A monitor's thread need not run Qt's event loop; the program's does.
    if (QCoreApplication* const pApplication = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(
            pApplication, [strWhat] { g_TarnwickLog.LogExt(strWhat); }, Qt::QueuedConnection);
    }
}

static void StartDeviceWatches(CDiskListener* pListener)
{
    if (!WatchDeviceArrivals(pListener)) {
        ReportLeftOut(QStringLiteral("No device arrivals: USB disks are noticed when they are mounted"));
    }
    if (!WatchDeviceRemovals(pListener)) {
        ReportLeftOut(QStringLiteral("No device removals: USB disks are missed when they are unmounted"));
    }
}

static void StartDiskSession(CDiskListener* pListener)
{
    if (!WatchDisks(pListener)) {
        ReportLeftOut(QStringLiteral("No disk session: disks are missed when they are unmounted"));
    }
}

static void StartMountWatch(CDiskListener* pListener)
{
    if (!WatchMounts(pListener)) {
        ReportLeftOut(QStringLiteral("No table of mounts: volumes are noticed by the workspace alone"));
    }
}

namespace {

/**
 * Devices from the registry, disks from the arbitration session, volumes from the workspace;
 * and from the table of mounts where the workspace does not tell of them.
 */
class CMacDiskEventSource : public IDiskEventSource
{
public:
    void Start(CDiskListener& listener) override
    {
        // The window is built before the event loop that brings a pool of its own.
        @autoreleasepool {
            StartDeviceWatches(&listener);
            StartDiskSession(&listener);
            [[USBListen share] listen:&listener];
            StartMountWatch(&listener);
        }
    }
};

} // namespace

std::unique_ptr<IDiskEventSource> IDiskEventSource::Create()
{
    return std::make_unique<CMacDiskEventSource>();
}

bool USBMonitor(void* pContext)
{
    if (pContext != nullptr) {
        @autoreleasepool {
            StartDeviceWatches(static_cast<CDiskListener*>(pContext));
        }
    }
    return true;
}

void DAMonitor(void* pContext)
{
    if (pContext != nullptr) {
        @autoreleasepool {
            StartDiskSession(static_cast<CDiskListener*>(pContext));
        }
    }
}
