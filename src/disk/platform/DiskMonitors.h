#pragma once

/**
 * Thread entries for a listener that wants its device events on another thread
 * with an event loop of its own. The program starts neither; its listener has
 * the same watches on the GUI thread.
 *
 * Both take the CDiskListener as context, install their watch on the calling
 * thread for the rest of the process, and do nothing for a null context.
 */

/** Watches USB storage devices that arrive or go away. Always true. */
bool USBMonitor(void* pContext);

/** Watches disks of any kind that go away, each reported with the path "USB". */
void DAMonitor(void* pContext);
