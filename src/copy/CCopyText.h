#pragma once

#include "copy/STCopyAccount.h"

#include <QCoreApplication>
#include <QString>

/**
 * What the window and the report on the destination say of a copy, in the
 * window's language, as plain text. Any thread; no name of a file stands in these texts
 * but the detail of an item, as it was given.
 */
class CCopyText
{
    Q_DECLARE_TR_FUNCTIONS(CCopyText)

public:
    /** Why the item is not whole, or what is to be said of it, in one or two sentences. */
    static QString Reason(const STCopyItem& stItem);

    /** How much of the item is on the disk, "1.20 MB of 3.40 MB"; empty when nothing is known of it. */
    static QString Amount(const STCopyItem& stItem);

    /** A number of bytes in decimal units, "3.20 GB". */
    static QString Bytes(qint64 nBytes);

    /** A number of files, "1,204 files". */
    static QString Files(qint64 nFiles);

    /** What became of the copy, in one line: the most serious comes first. */
    static QString Summary(const STCopyAccount& stAccount);

    /** For a copy whose report was needed and could not be written. */
    static QString ReportMissing();
};
