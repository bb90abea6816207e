#pragma once

#include "copy/STCopyAccount.h"
#include "copy/STCopyOutcome.h"

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <mutex>

/** What is known at the end of a copy beside its items. */
struct STCopyEnd
{
    bool bStopped = false; ///< told to stop before its end
    bool bGone = false; ///< the destination was lost on the way
    ENCopyFlush enFlush = ENCopyFlush::NOT_NEEDED;
    qint64 nMs = 0; ///< time spent copying, pauses left out
    QString strReport = {}; ///< path of the report beside the copy; empty when there is none
    bool bReportMissing = false; ///< the report was needed and could not be written
};

/**
 * Book-keeping of one copy: what was copied, and one log line for each item
 * that was not copied whole. Any thread; once it is closed nothing is booked.
 */
class CCopyReport
{
public:
    /** Forgets the previous copy. */
    void Reset();

    /** Logs the line with which a copy begins: from where, to where, and how many bytes at most. */
    void WriteBegin(const QStringList& listSource, const QString& strDest, qint64 nTotalSize) const;

    /**
     * Books a file: its bytes, and whether it is whole, not whole or the one in which
     * a stop was noticed. False when the copy is closed.
     */
    bool AddFile(const STCopyOutcome& stOutcome);

    /**
     * Takes back that a file has all its bytes, which was booked so: books and logs it as one
     * that was not copied whole. False when the copy is closed.
     */
    bool TakeBack(const STCopyOutcome& stBooked, const STCopyReason& stReason);

    /** Books a link that was made again; nothing when the copy is closed. */
    void AddLink();

    /** Books and logs an item that was not copied whole, but not its bytes. False when the copy is closed. */
    bool AddProblem(const STCopyOutcome& stOutcome);

    /** Books and logs a word about an item that is whole. False when the copy is closed. */
    bool AddNote(const STCopyOutcome& stOutcome);

    /** Ends the copy with its one last line in the log; false when somebody has done it already. */
    bool Close(const STCopyEnd& stEnd);

    /** The same, with one item more that was not copied whole. */
    bool CloseWith(const STCopyOutcome& stOutcome, const STCopyEnd& stEnd);

    /** Whether somebody has ended the copy. */
    bool IsClosed() const;

    /** Logs the one line that ends a copy; nMs is the time spent copying. */
    void WriteSummary(bool bStopped, qint64 nMs) const;

    /** What is booked so far, as the window is told it. */
    STCopyAccount Account() const;

    /** The same, as it is when the copy ends so. */
    STCopyAccount AccountWith(const STCopyEnd& stEnd) const;

    /** Tells what has become known of the closed copy: whether it is on the disk, and where its report is. */
    void SetEnd(const STCopyAccount& stAccount);

    /** Number of files copied whole. */
    qint64 Files() const;

    /** Number of bytes that reached the destination. */
    qint64 Bytes() const;

    /** Number of problem lines written. */
    qint64 Problems() const;

    /** The item as the window is told it. */
    static STCopyItem Item(const STCopyOutcome& stOutcome);

    /**
     * The text in quotation marks on one line: control characters, line
     * separators, quotation marks, backslashes and bytes that are no text are
     * written as escapes.
     */
    static QString Quoted(const QString& strName);

    /** The text as it stands where it is plain, else Quoted(). */
    static QString Shown(const QString& strName);

private:
    struct STBooks
    {
        STCopyAccount stAccount;
        qint64 nFiles = 0; // whole with their times
        qint64 nProblems = 0; // lines in the log
        QString strHalfCopied; // the file in which a stop was noticed
        int nListedNotes = 0; // in the account's list
        bool bClosed = false;
    };

    STBooks Books() const;
    static void Apply(const STCopyEnd& stEnd, STCopyAccount& stAccount);
    void EndBooks(const STCopyEnd& stEnd);
    void BookItem(const STCopyItem& stItem);
    void TakeNoteFromList();
    bool BookProblem(const STCopyOutcome& stOutcome);

    mutable std::mutex m_mutex;
    STBooks m_stBooks; // guarded by the mutex
};
