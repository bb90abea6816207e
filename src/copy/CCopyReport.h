#pragma once

#include "copy/STCopyAccount.h"
#include "copy/STCopyOutcome.h"

#include <QString>
#include <QtGlobal>

/**
 * Book-keeping of one copy: what was copied, and one log line for each item
 * that was not copied whole. Used on the thread that copies.
 */
class CCopyReport
{
public:
    /** Forgets the previous copy. */
    void Reset();

    /** Books a file: its bytes, and whether it is whole, not whole or the one in which a stop was noticed. */
    void AddFile(const STCopyOutcome& stOutcome);

    /** Logs an item that was not copied whole; its bytes are not counted. */
    void AddProblem(const STCopyOutcome& stOutcome);

    /** Logs the one line that ends a copy; nMs is the time spent copying. */
    void WriteSummary(bool bStopped, qint64 nMs) const;

    /** What is booked so far, as the window is told it; nMs is the time spent copying. */
    STCopyAccount Account(bool bStopped, qint64 nMs) const;

    /** Number of files copied whole. */
    qint64 Files() const;

    /** Number of bytes that reached the destination. */
    qint64 Bytes() const;

    /** Number of problem lines written. */
    qint64 Problems() const;

    /**
     * The text in quotation marks on one line: control characters, line
     * separators, quotation marks, backslashes and bytes that are no text are
     * written as escapes.
     */
    static QString Quoted(const QString& strName);

private:
    qint64 m_nFiles = 0;
    qint64 m_nBytes = 0;
    qint64 m_nProblems = 0;
    QString m_strHalfCopied; // the file in which a stop was noticed
};
