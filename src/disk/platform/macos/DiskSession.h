#pragma once

class CDiskListener;
struct __DADisk;

/**
 * Watches every disk for its removal, on the calling thread's run loop in the
 * default mode, until the process ends. False when the system gives no session.
 */
bool WatchDisks(CDiskListener* pListener);

/**
 * What the system calls for a disk that went away: reports the path "USB".
 * pContext is the CDiskListener; null does nothing. Runs on the thread of the watch.
 */
void DiskDisappearedCallback(__DADisk* pDisk, void* pContext);

/**
 * The same for a disk that appeared, reported with its BSD name. Nothing
 * registers it: the registry of devices and the workspace tell of arrivals, and
 * a session would first report every disk that is there already.
 */
void DiskAppearedCallback(__DADisk* pDisk, void* pContext);
