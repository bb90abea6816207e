#pragma once

#include "ask/STMissingVolume.h"

#include <QByteArray>
#include <QVector>

/** The list of what cannot be shown, as the session writes it. Any thread. */
class CMissingList
{
public:
    /**
     * One volume a line: why, name, bytes, model, with tabs between. A line that is not whole, or
     * has a word that is not known, counts with what it has; empty ones do not.
     */
    static QVector<STMissingVolume> Parse(const QByteArray& baLines);
};
