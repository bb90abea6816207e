#pragma once

#include <QString>
#include <QtGlobal>

/**
 * The small hidden file ".photo.jpg.icloud" that macOS before version 14 leaves in the place of "photo.jpg"
 * when it keeps that in iCloud alone: a property list with no byte of the picture in it.
 */
class CCloudStandIn
{
public:
    /** The name of the file that one of that name and size may stand for; empty when it stands for none. */
    static QString NameOf(const QString& strName, qint64 nBytes);

    /** Whether a file that may stand for another one does, by its first nBytes bytes. */
    static bool IsOne(const char* pBytes, qint64 nBytes);
};
