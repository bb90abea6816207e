#pragma once

class CDiskListener;

/**
 * The watches of the registry of storage devices: one for arrivals, one for
 * removals. Both stay on the calling thread's run loop, in its common modes,
 * until the process ends. What is present already is not reported.
 */

/** Starts the watch for arrivals; false when the system refuses it. */
bool WatchDeviceArrivals(CDiskListener* pListener);

/** Starts the watch for removals; false when the system refuses it. */
bool WatchDeviceRemovals(CDiskListener* pListener);

/**
 * What the system calls for a batch of devices that arrived: reports each that
 * is connected by USB with its path in the plane of USB devices. pContext is the
 * CDiskListener; null does nothing. Runs on the thread that started the watch.
 */
void iAttached(void* pContext, unsigned int nIterator);

/** The same for a batch of devices that went away, each reported with the path "USB". */
void iDetached(void* pContext, unsigned int nIterator);
