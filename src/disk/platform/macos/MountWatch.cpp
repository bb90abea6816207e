#include "disk/platform/macos/MountWatch.h"

#include "disk/CDestinationDiscovery.h"
#include "disk/CDiskListener.h"
#include "disk/CMountLook.h"
#include "disk/platform/CVolumeInfo.h"
#include "files/CFileName.h"

#include <QCoreApplication>
#include <QTimer>

static const int LOOK_MS = 2000;

/**
 * The receiver may open a dialog, whose event loop brings the next look in here. It
 * then finds the rest of the earlier events still pending, and hands them out
 * before its own.
 */
static void TellChanges(CDiskListener* pListener)
{
    static QVector<STDiskEvent> s_listPending;
    if (const std::optional<QByteArrayList> listPoint = CVolumeInfo::MountPoints()) {
        s_listPending += CMountLook::GetInstance().Look(*listPoint);
    }
    while (!s_listPending.isEmpty()) {
        const STDiskEvent event = s_listPending.takeFirst();
        pListener->OnDiskChanged(event.enType, event.baPath.constData());
    }
}

bool WatchMounts(CDiskListener* pListener)
{
    const std::optional<QByteArrayList> listPoint = CVolumeInfo::MountPoints();
    if (!listPoint) {
        return false;
    }
    CMountLook::GetInstance().Begin(CFileName::Encode(CDestinationDiscovery::VolumesFolder()), *listPoint);
    auto* pTimer = new QTimer(QCoreApplication::instance());
    pTimer->setObjectName(QStringLiteral("MountLook"));
    pTimer->setSingleShot(true);
    QObject::connect(pTimer, &QTimer::timeout, pTimer, [pTimer, pListener] {
        // Started anew before anything is told: one that is still being served does not fire in a dialog's
        // loop.
        pTimer->start();
        TellChanges(pListener);
    });
    pTimer->start(LOOK_MS);
    return true;
}
