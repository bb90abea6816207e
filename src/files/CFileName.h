#pragma once

#include <QByteArray>
#include <QString>

/**
 * Names and paths of files as the system's calls take them, and as the program keeps them.
 * What a folder's listing gave goes back to the system as the bytes that came. Any thread.
 *
 * Not what QFile does on every system: on a Mac it puts letters together and takes
 * them apart again, and some do not come back the same.
 */
class CFileName
{
public:
    /** The bytes of a name or path. */
    static QByteArray Encode(const QString& strName);

    /** The name or path of these bytes, whatever they are. */
    static QString Decode(const QByteArray& baName);
};
