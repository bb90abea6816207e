#pragma once

class CDiskListener;

/**
 * Looks at the table of mounts every two seconds, on the calling thread's event loop and
 * until the process ends, and reports the volumes that came or went and that no notice
 * has told. What is mounted already is not reported. Once per process; false when
 * there is no table.
 */
bool WatchMounts(CDiskListener* pListener);
