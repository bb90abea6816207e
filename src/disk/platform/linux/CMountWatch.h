#pragma once

#include "disk/platform/linux/CMountChanges.h"

#include <QFile>
#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <optional>

/**
 * Reports volumes that are mounted in one folder or unmounted from it, with
 * their mount point. Mounts elsewhere are none of this program's volumes and
 * say nothing, since each event makes the destinations' list choose anew.
 *
 * Lives on one thread, which runs an event loop; everything is reported there.
 */
class CMountWatch
{
public:
    using FnDeliver = std::function<void(const STDiskEvent&)>;

    /**
     * Watches baFolder, an absolute path without a closing slash. It may be a
     * link: the table of mounts knows real paths only, but volumes are reported
     * as entries of baFolder.
     */
    CMountWatch(QByteArray baFolder, FnDeliver fnDeliver);
    CMountWatch(const CMountWatch&) = delete;
    CMountWatch& operator=(const CMountWatch&) = delete;

    /** Starts; what is mounted now is not reported. False when the system shows no table of mounts. */
    bool Start();

private:
    std::optional<std::vector<STMount>> Volumes() const;
    void OnTableChanged();
    void DeliverPending();

    const QByteArray m_baFolder;
    const FnDeliver m_fnDeliver;
    QFile m_fileSignal;
    std::unique_ptr<QSocketNotifier> m_pNotifier;
    std::vector<STMount> m_listVolume; // as far as events were told or are pending
    QVector<STDiskEvent> m_listPending;
};
