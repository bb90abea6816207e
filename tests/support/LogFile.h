#pragma once

#include <QStringList>

/**
 * Points the program's log at a fresh, empty file beside the test executable;
 * returns its folder.
 */
QString UseLogFile();

/** The lines of that file, time stamps cut off. */
QStringList LogLines();
