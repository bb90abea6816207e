#pragma once

#include "copy/STCopyAccount.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDateTime>
#include <QString>
#include <QStringList>

/** What is known of a copy when it begins. */
struct STCopyBeginning
{
    QDateTime dateTime;
    QStringList listSource; ///< paths of the volumes that something is copied from
    QString strDest; ///< folder that is copied into
    qint64 nTotalSize = 0; ///< bytes to expect at most
};

/**
 * The text of the report beside a copy: UTF-8, a line end of one byte, in the
 * window's language. Its head has the same size in each state, so that it can be
 * written over in place; the items stand below it, one line each. Any thread.
 */
class CCopyReportText
{
    Q_DECLARE_TR_FUNCTIONS(CCopyReportText)

public:
    /** Size of each head in bytes; its lines are filled up with blanks. */
    static constexpr int HEAD_SIZE = 4096;

    /** The head of a copy that has not ended yet, or has broken off. */
    static QByteArray HeadAtBegin(const STCopyBeginning& stBeginning);

    /** The head of a copy that has ended. */
    static QByteArray HeadAtEnd(const STCopyBeginning& stBeginning, const STCopyAccount& stAccount);

    /** The line of an item; its name cannot break it. */
    static QByteArray Line(const STCopyItem& stItem);

    /** The line that stands for items of which there is no line. */
    static QByteArray LineOfOthers(qint64 nItems);
};
