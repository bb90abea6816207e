#pragma once

#include <QString>

#include <optional>

/** The bus that a mounted volume lies on, as the system knows it without asking the disk. */
class CVolumeBus
{
public:
    /**
     * Whether what is mounted at the path lies on a USB disk; nothing when the system
     * does not know. Any thread; waits as long as the system takes.
     */
    static std::optional<bool> IsOnUsb(const QString& strPath);
};
