#pragma once

#include "disk/platform/linux/STDiskEvent.h"

#include <QByteArray>
#include <QVector>

/** One line of the kernel's table of mounts, escapes resolved. */
struct STMount
{
    qint64 nId = 0;
    /** The mount that this one is mounted on. */
    qint64 nParentId = 0;
    /** "major:minor" of the file system. */
    QByteArray baNumber;
    QByteArray baPoint;
    /** The device node text, "tmpfs" and the like without one. */
    QByteArray baSource;
};

/** The kernel's table of mounts: reading, understanding and comparing it. No state; any thread. */
class CMountTable
{
public:
    /** The file that holds the table, and that signals its changes to poll(). */
    static const char* FileName();

    /** Reads the table's text in one consistent piece; false when it cannot be read. */
    static bool Read(QByteArray* pText);

    /** The mounts of such a text in its order; lines that are none are left out. */
    static QVector<STMount> Parse(const QByteArray& baText);

    /**
     * What happened to the volumes of a folder between two tables: first those
     * that went, then those that came, each in the order of its table.
     *
     * A volume is what is mounted directly in the folder and is not covered by
     * another mount on the same point. A volume that is moved, or replaced by
     * another, went and came; one that is only mounted with other options did
     * neither.
     */
    static QVector<STDiskEvent> Compare(const QVector<STMount>& listBefore, const QVector<STMount>& listAfter,
                                        const QByteArray& baFolder);
};
