#pragma once

#include <QString>
#include <QtGlobal>

/**
 * Book-keeping of one copy: what was copied, and one log line for each item
 * that was not copied whole. Used on the thread that copies.
 */
class CCopyReport
{
public:
    /** For m_nExpected when nobody has measured the item. */
    static constexpr qint64 UNKNOWN_SIZE = -1;

    /** Forgets the previous copy. */
    void Reset();

    /** Counts bytes that reached the destination, whole file or not. */
    void AddBytes(qint64 nBytes);

    /** Counts a file that was copied whole. */
    void AddFile();

    /** Logs an item that was not copied whole; nExpected may be UNKNOWN_SIZE. */
    void AddProblem(const QString& strPath, const QString& strReason, qint64 nCopied, qint64 nExpected);

    /** Like AddProblem for the file in which a stop was noticed; the summary names it. */
    void AddStopped(const QString& strPath, qint64 nCopied, qint64 nExpected);

    /** Logs the one line that ends a copy; nMs is the time spent copying. */
    void WriteSummary(bool bStopped, qint64 nMs) const;

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
    QString m_strHalfCopied;
};
