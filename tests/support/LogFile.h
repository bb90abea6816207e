#pragma once

#include <QStringList>

/**
 * Points the program's log at a fresh, empty file beside the test executable;
 * returns its folder.
 */
QString UseLogFile();

/** The lines of that file, time stamps cut off. */
QStringList LogLines();

/** The line of an item that was not copied whole; strRest is what follows its name. */
QString Problem(const QString& strPath, const QString& strRest);

/** All such lines of that file. */
QStringList ProblemLines();

/** The last line of that file, which sums a copy up. */
QString Summary();
