#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QVector>

/** What the registry says of a device's connection. */
enum ENFakeProperties
{
    PROPERTIES_COMPLETE,
    PROPERTIES_REFUSED,
    PROPERTIES_WITHOUT_PROTOCOL,
    PROPERTIES_PROTOCOL_IS_TEXT,
    PROPERTIES_WITHOUT_BUS,
    PROPERTIES_BUS_IS_NUMBER
};

/** A storage device. */
struct STFakeDevice
{
    QByteArray baName;
    QByteArray baPlanePath; ///< in the plane of USB devices; empty for a device that is not in it
    QByteArray baBus;
    ENFakeProperties enProperties = PROPERTIES_COMPLETE;
};

/** A mounted volume. */
struct STFakeMount
{
    QByteArray baPoint;
    QByteArray baDevice;
};

/** An entry of the registry of devices. */
struct STFakeEntry
{
    QByteArray baClass;
    STFakeDevice device;
};

/** The run loop's modes that the tests run it in. */
enum ENFakeMode
{
    MODE_DEFAULT,
    MODE_TRACKING ///< while a menu or a window is dragged: one of the common modes
};

/**
 * The tests' side of the fakes of IOKit, DiskArbitration, Core Foundation and
 * AppKit: what happens to the machine, and what the program made of it.
 *
 * What happens is only noted; it reaches the program when the run loop of the
 * thread is run, if the program has arranged for that. Mounts are the exception:
 * the notification centre delivers at once. One thread at a time.
 */
class CFakeMac
{
public:
    /** Devices arrive together, or go away together. */
    static void Plug(const QVector<STFakeDevice>& listDevice);
    static void Unplug(const QVector<STFakeDevice>& listDevice);

    /** The arbitration session sees a disk go. */
    static void LoseDisk();

    /** The workspace posts its notice; a null path gives one without "NSDevicePath". */
    static void Mount(const char* pPath);
    static void Unmount(const char* pPath);

    /** Gives notices of a mount and an unmount to an observer that was never told a listener. */
    static void NotifyLonelyObserver();

    /** Runs the calling thread's run loop until it has nothing more to deliver. */
    static void RunLoop(ENFakeMode enMode = MODE_DEFAULT);

    /** All that is mounted; nothing at all where the table cannot be read. At the start there is "/". */
    static void SetMounts(const QVector<STFakeMount>& listMount);

    /** The media of this name in the registry, and what stands above it, upwards. */
    static void SetMedia(const QByteArray& baBsdName, const QVector<STFakeEntry>& listEntry);

    /** From now on registrations of this kind of notification fail. */
    static void Refuse(const QByteArray& baKind);

    /** From now on there are no arbitration sessions. */
    static void RefuseSessions();

    /** The main screen's width in points, or no screen at all. */
    static void SetScreen(double fWidth);
    static void RemoveScreen();

    /** A disk of this name as the arbitration session hands it out; null for one without a name. */
    static struct __DADisk* Disk(const char* pBsdName);

    /** A view that a widget may have. */
    static unsigned long long View();

    /** Kind and class of each notification that was registered, "kind class". */
    static QStringList Registrations();

    /** How many objects of each kind the program holds: references it was given and has not released. */
    static QMap<QString, int> Held();

    /** Uses of objects that were released or never made, one line each. */
    static QStringList Problems();

    /** Objects that the frameworks have left to a pool, and that no pool has freed. */
    static int LeftToPools();

    /** The lines of the platform's log since the last call, without time and process. */
    static QStringList TakeLog();

    /** Files the workspace was asked to open, and how often a view was asked for its window. */
    static QStringList OpenedFiles();
    static int WindowQuestions();

    /** Objective-C objects of this class that live; of any class for null. Counted from the first call. */
    static int Alive(const char* pClass);
};
