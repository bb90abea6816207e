#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/**
 * The tests' side of macOS's calls on what belongs to files beside their bytes. Like those
 * of CFakeFiles they work on this system's files; each is noted there, the attributes with
 * their names: "fsetxattr com.apple.FinderInfo /a/b 0+32". Any thread.
 *
 * Where a disk does not hold attributes the system keeps them in a second file, "._b" beside
 * "b", as macOS does.
 */
class CFakeMetadata
{
public:
    /** No file has anything, and each disk holds all. */
    static void Reset();

    /** What the disk holds on which the paths lie that have this part. */
    static void SetHolds(const QString& strPart, bool bAttributes, bool bAccessLists, bool bDates = true,
                         bool bPermissions = true);

    /** What the file has that has the path now, as long as it exists. */
    static void SetAttribute(const QString& strPath, const QByteArray& baName, const QByteArray& baValue);
    static QByteArray Attribute(const QString& strPath, const QByteArray& baName);
    static QStringList Attributes(const QString& strPath);

    /** Seconds since the epoch; 0 when it has none. */
    static void SetCreated(const QString& strPath, qint64 nSec);
    static qint64 Created(const QString& strPath);

    /**
     * An access list, as a text ("anna allow read; everyone deny delete,writeattr"); empty when it has
     * none. "deny writeattr" in it forbids what it says.
     */
    static void SetAccessList(const QString& strPath, const QByteArray& baList);
    static QByteArray AccessList(const QString& strPath);

    /** Its "st_flags". */
    static unsigned Flags(const QString& strPath);
};
