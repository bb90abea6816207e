#pragma once

#include <QString>

/** The key of 48 digits that opens a BitLocker volume whose password is not known. Any thread. */
class CRecoveryKey
{
public:
    /**
     * What was typed in the form that opens the volume: eight groups of six digits with
     * dashes between, whatever stood between the digits. What is no such key, because it
     * holds another number of digits or anything else, comes back as it is: it is a password.
     */
    static QString Cleaned(const QString& strTyped);
};
