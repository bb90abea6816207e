#pragma once

#include <QString>

// What the program says to its user, in English.

inline const QString TEXT_COMPLETED = "Copy file completed!";
inline const QString TEXT_STOP
    = "Your data might not be copied completely, are you sure to stop the copying process?";
inline const QString TEXT_EXIT
    = "Your computer will restart if you exit the program. Are you sure you want to exit?";
inline const QString TEXT_REMOVED = "The destination storage device has been removed! Please check and "
                                    "connect the storage device then try again.";
inline const QString TEXT_READ_ONLY = "Your drive may be damaged and Tarnwick can not write to this drive, "
                                      "please change another one and retry.";
inline const QString TEXT_NO_SPACE = "No enough space, please select other Hard Disk or USB flash drive.";
inline const QString TEXT_PROMPT = "Select Destination Disk:";
