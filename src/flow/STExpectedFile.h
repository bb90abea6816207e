#pragma once

#include <QByteArray>
#include <QtGlobal>

/** A file that a copy will come to, or a folder with all that is in it: its files before its folders. */
struct STExpectedFile
{
    QByteArray baPath = {}; ///< absolute path at the source, in the bytes of the disk
    qint64 nSize = -1; ///< bytes; -1 when nobody knows without asking the disk
    bool bFolder = false;
};
