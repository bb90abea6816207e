#pragma once

#include "files/CDescriptor.h"

#include <QString>

#include <chrono>
#include <memory>

/**
 * The log beside a copy. Where the program cannot write it beside itself it lies in the
 * temporary folder, which most often goes when the machine restarts.
 */
class CCopyLogFile
{
public:
    /**
     * Writes the log as it is now into pParent, which holds the copy's folder, under the name
     * of that folder with ".log" behind it, and brings it to the disk. Does nothing while the
     * log lies where it belongs, unless the environment has TARNWICK_LOG_BESIDE_COPY=1: on the
     * boot medium that place is gone with the end of the session, too. A failure is a line in the log, and
     * leaves no file. A disk that does not answer is waited for as long as told below, and no longer.
     */
    static void Save(const std::shared_ptr<const CDescriptor>& pParent, const QString& strFolder);

    /** 10 seconds. */
    static std::chrono::milliseconds Patience();

    /** Changes that time, so that a test need not wait. While nothing is saved. */
    static void SetPatience(std::chrono::milliseconds patience);
};
