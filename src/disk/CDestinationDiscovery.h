#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <atomic>
#include <functional>

/** What a mounted volume is to the copy. */
enum ENVolumeRole
{
    VOLUME_ROLE_SOURCE, ///< its files are offered for copying
    VOLUME_ROLE_DESTINATION, ///< a USB volume that may receive the copy
    VOLUME_ROLE_OWN_MEDIUM ///< the USB medium that the program itself runs from: neither of the two
};

/** One mounted volume, as found by a scan. */
struct STVolume
{
    QString strPath; ///< full path, an entry of the folder of volumes
    QString strName; ///< display name: the path's last component
    QByteArray baDevice; ///< device node text, as CVolumeInfo::DeviceOf tells it; empty when not known
    ENVolumeRole enRole = VOLUME_ROLE_SOURCE;
};

/** What a search for disks waits for at the moment. */
struct STDiskWait
{
    QString strName; ///< the volume's display name
    qint64 nMs = 0; ///< since the command was started for it
};

/** Finds out which of the mounted volumes may receive the copy. */
class CDestinationDiscovery
{
public:
    /** The folder in which the system mounts volumes: "/Volumes". */
    static QString VolumesFolder();

    /** The command that knows a volume's bus: "diskutil". */
    static QString InfoCommand();

    /** The arguments that make the command describe one device node. */
    static QStringList InfoArguments(const QString& strDeviceNode);

    /** How long the command may take to print and, after that, to end: 30000 ms each. */
    static int CommandTimeoutMs();

    /** Changes that time, so that a test need not wait; 0 or less brings the default back. Any thread. */
    static void SetCommandTimeoutMs(int nTimeoutMs);

    /**
     * Lists the folder of volumes in the order of its listing, asks the command
     * for each volume's bus and calls fnFound for each in turn. Each is also
     * written to the log. Whatever goes wrong with the command makes the volume
     * a source.
     *
     * As soon as one answer takes longer than 2 s the volumes that are left are
     * asked for side by side; what is told keeps its order.
     *
     * Runs on the calling thread and blocks it for up to twice the command's
     * time; needs no event loop. Once bCancelled turns true it ends
     * within about 100 ms, leaves no child process behind and returns false;
     * otherwise true. No volume itself is touched.
     */
    static bool Scan(const std::function<void(const STVolume&)>& fnFound,
                     const std::atomic<bool>& bCancelled);

    /**
     * Has fnWaiter called about 20 times a second by each search while it waits for the
     * command, on the searching thread; an empty function ends that. While no search runs.
     */
    static void SetWaiter(std::function<void(const STDiskWait&)> fnWaiter);

    /** Cancels every search, also those that have not begun yet: the program ends. Any thread. */
    static void EndScans();

    /** The bus that the command's output names; empty without one, or without property list. Any thread. */
    static QString BusProtocol(const QByteArray& baPList);

    /**
     * The role of a volume on that bus ("USB" in exactly this spelling makes a
     * destination), given the volume's and the program's own device node.
     */
    static ENVolumeRole RoleOf(const QString& strBusProtocol, const QByteArray& baDevice,
                               const QByteArray& baOwnDevice);
};
