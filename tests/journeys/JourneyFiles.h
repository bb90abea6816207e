#pragma once

#include <QByteArray>
#include <QString>

/** A path below the build folder. */
QString BuildPath(const QString& strRelative);

/** Writes a file and the folders that lead to it; ends the test run when it cannot. */
void WriteFile(const QString& strPath, const QByteArray& baContent);
