#pragma once

#include <QByteArray>
#include <QString>

/** Writes a file and the folders that lead to it; ends the test run when it cannot. */
void WriteFile(const QString& strPath, const QByteArray& baContent = {});

/** Content of a file; "<cannot be read>" where there is none that can be read. */
QByteArray Content(const QString& strPath);

/** Content that shows a swapped, lost or repeated piece. */
QByteArray Pattern(qint64 nSize);

/** A path below the build folder. */
QString BuildPath(const QString& strRelative);
