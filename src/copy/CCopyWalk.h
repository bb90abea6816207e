#pragma once

#include <QString>
#include <QStringList>

/**
 * The way of a copy through what the user has ticked. There are two: by default
 * through the ticked nodes, and where the root says that all of it is meant, over the
 * disk below what is ticked. What is done with a file is the same in both.
 * Used on the thread that copies.
 */
class CCopyWalk
{
public:
    virtual ~CCopyWalk() = default;

    /** Paths of the volumes from which something is copied. */
    virtual QStringList Sources() = 0;

    /** Whether it gives the permissions of their sources to what it copies. */
    virtual bool GivesPermissions() const { return false; }

    /** Copies all of it; returns soon after a stop. */
    virtual void Walk() = 0;

    /**
     * Where an item lies below the folder of the copy, from its absolute path at the
     * source: without "/Volumes/", so that the volume's name comes first.
     */
    static QString PlaceOf(QString strPath);
};
