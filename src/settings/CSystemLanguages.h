#pragma once

#include <QStringList>

/** The languages that the user prefers, as the system's global preferences name them. */
class CSystemLanguages
{
public:
    /** Codes such as "fr-CA", the preferred one first; empty when they cannot be read. Any thread. */
    static QStringList Read();
};
