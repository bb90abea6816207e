#pragma once

/**
 * Waits as long as the file named by TARNWICK_HANG holds a line "CALL PATH" with this
 * call and the beginning of this path; at once for a path that is on no volume.
 */
void HangOnPath(const char* pCall, const char* pPath);

/** The same for the file that is open by that descriptor. */
void HangOnDescriptor(const char* pCall, int nDescriptor);
