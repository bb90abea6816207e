#pragma once

#include "disk/ENDiskEventType.h"

#include <QString>
#include <QStringList>

/**
 * One disk event, as it is handed to the callback. It lives only for the
 * duration of the callback: receivers copy what they keep.
 */
struct STDiskNotication
{
    QString strDevicePath; ///< device path or mount point, the source's bytes taken as Latin-1
    ENDiskEventType enType = DISK_EVENT_APPEARED;
    qint32 nHasPath = 1; ///< 1, but 0 for a disappearance that names no disk (path "USB")
};

/**
 * The path of an event as names of files are read everywhere in the program, so
 * that it compares with an entry of a folder whatever its bytes are. The path of
 * a volume leads through CDestinationDiscovery::VolumesFolder(), also where that
 * is a link and the event names the real folder.
 */
QString DiskEventPath(const STDiskNotication& stNotication);

/**
 * The one of the listed paths that the event's path stands for: itself, or else the first that
 * the system takes for the same. A path for which none stands is given back. A listing and an
 * event may write the letters of one name in different ways.
 */
QString ListedDiskPath(const QString& strPath, const QStringList& listPath);

/** Receives each disk event, with the context given at registration. */
using PFNDiskCallback = void (*)(STDiskNotication*, void*);

/**
 * The process-wide source of disk arrivals and removals: it turns what the
 * platform reports into one record per event and hands that record to the one
 * callback of its owner, synchronously and on the thread that started it (the
 * GUI thread). There is no stop: the sources stay until the process ends.
 *
 * One stick usually gives several events, so receivers tolerate duplicates and
 * paths that match no volume.
 */
class CDiskListener
{
public:
    /** The one instance; safe to call on any thread. */
    static CDiskListener& GetInstance();

    CDiskListener(const CDiskListener&) = delete;
    CDiskListener& operator=(const CDiskListener&) = delete;

    /**
     * Registers the callback and installs the platform's sources on the calling
     * thread, which needs a running event loop for events to arrive. What is
     * already present is not reported. Always true; a second call changes
     * nothing. A source that the system does not offer is left out.
     */
    bool StartListener(PFNDiskCallback pfnCallback, void* pContext);

    /**
     * What every source calls for each event, on the thread that started the
     * source: builds the record and runs the callback before it returns. Does
     * nothing for a null path or while no callback is registered.
     */
    void OnDiskChanged(ENDiskEventType enType, const char* pDevicePath);

private:
    CDiskListener() = default;

    PFNDiskCallback m_pfnCallback = nullptr;
    bool m_bStarted = false;
    void* m_pContext = nullptr;
};
