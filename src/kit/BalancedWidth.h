#pragma once

#include <QLabel>

/**
 * The least width, from nLeast up to nMost pixels, at which the label's text takes no
 * more lines than at nMost. A last line of a single word would look like an accident.
 * GUI thread only.
 */
inline int BalancedWidth(const QLabel& label, int nLeast, int nMost)
{
    const int nHeight = label.heightForWidth(nMost);
    int nTaken = qMax(label.minimumSizeHint().width(), nLeast);
    while (nTaken < nMost && label.heightForWidth(nTaken) > nHeight) {
        ++nTaken;
    }
    return qMin(nTaken, nMost);
}
