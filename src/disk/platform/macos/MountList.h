#pragma once

#include <QByteArray>
#include <QVector>

#include <optional>

/** What is mounted. */
struct STMountedVolume
{
    QByteArray baPoint; ///< absolute path, in the system's own bytes
    QByteArray baDevice; ///< device node such as "/dev/disk2s1", else what the system says is mounted
};

/** The kernel's table of mounts; no disk is asked. Nothing when it cannot be read. Any thread. */
std::optional<QVector<STMountedVolume>> MountList();

/**
 * The device node in what the table says is mounted, which a driver in user space gives
 * as "msdos://disk2s1/NAME/"; what names no disk stays as it is.
 */
QByteArray DeviceNode(const QByteArray& baMounted);
