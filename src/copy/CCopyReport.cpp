#include "copy/CCopyReport.h"

#include "files/CFileName.h"
#include "files/CUtf8.h"
#include "log/CLogTarnwick.h"

static QString BytesText(qint64 nCopied, qint64 nExpected)
{
    const QString strExpected
        = nExpected == STCopyOutcome::UNKNOWN_SIZE ? QStringLiteral("unknown") : QString::number(nExpected);
    return QString::number(nCopied) + QStringLiteral(" of ") + strExpected + QStringLiteral(" bytes copied");
}

static QString ReasonText(const STCopyReason& stReason)
{
    QString strText = stReason.strText;
    if (stReason.nError != 0) {
        strText += ": " + qt_error_string(stReason.nError);
    }
    if (!stReason.strTarget.isEmpty()) {
        strText += ", " + CCopyReport::Quoted(stReason.strTarget);
    }
    return strText;
}

static QString HexEscape(const char* pszFormat, uint nCode) { return QString::asprintf(pszFormat, nCode); }

static QString Escaped(uint nCode)
{
    switch (nCode) {
    case '\n':
        return QStringLiteral("\\n");
    case '"':
    case '\\':
        return QLatin1Char('\\') + QChar(nCode);
    case QChar::ByteOrderMark:
        return HexEscape("\\u%04x", nCode);
    default:
        break;
    }
    switch (QChar::category(nCode)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return HexEscape("\\u%04x", nCode);
    default:
        return QString::fromUcs4(&nCode, 1);
    }
}

static void LogProblem(const STCopyOutcome& stOutcome)
{
    g_TarnwickLog.LogExt("Not copied whole: " + CCopyReport::Quoted(stOutcome.strPath) + ": "
                         + ReasonText(stOutcome.stReason) + " ("
                         + BytesText(stOutcome.nCopied, stOutcome.nExpected) + ')');
}

void CCopyReport::Reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stBooks = STBooks();
}

void CCopyReport::WriteBegin(const QStringList& listSource, const QString& strDest, qint64 nTotalSize) const
{
    QStringList listName;
    for (const QString& strSource : listSource) {
        listName.append(Quoted(strSource));
    }
    g_TarnwickLog.LogExt("Copy begins: from " + listName.join(QLatin1String(", ")) + " to " + Quoted(strDest)
                         + ", bytes at most " + QString::number(nTotalSize));
}

bool CCopyReport::AddFile(const STCopyOutcome& stOutcome)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_stBooks.bClosed) {
            return false;
        }
        m_stBooks.stAccount.nBytes += stOutcome.nCopied;
        if (stOutcome.enEnd == ENCopyEnd::WHOLE) {
            ++m_stBooks.nFiles;
            ++m_stBooks.stAccount.nFiles;
            return true;
        }
        if (stOutcome.enEnd == ENCopyEnd::STOPPED) {
            m_stBooks.strHalfCopied = stOutcome.strPath;
        }
    }
    return AddProblem(stOutcome);
}

bool CCopyReport::TakeBack(const STCopyOutcome& stBooked, const STCopyReason& stReason)
{
    STCopyOutcome stOutcome = stBooked;
    stOutcome.enEnd = ENCopyEnd::NOT_WHOLE;
    stOutcome.stReason = stReason;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!BookProblem(stOutcome)) {
            return false;
        }
        --m_stBooks.stAccount.nFiles;
        m_stBooks.nFiles -= stBooked.enEnd == ENCopyEnd::WHOLE ? 1 : 0;
    }
    LogProblem(stOutcome);
    return true;
}

void CCopyReport::AddLink()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stBooks.stAccount.nLinks += m_stBooks.bClosed ? 0 : 1;
}

bool CCopyReport::AddProblem(const STCopyOutcome& stOutcome)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!BookProblem(stOutcome)) {
            return false;
        }
    }
    LogProblem(stOutcome);
    return true;
}

bool CCopyReport::AddNote(const STCopyOutcome& stOutcome)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_stBooks.bClosed) {
            return false;
        }
        BookItem(Item(stOutcome));
    }
    g_TarnwickLog.LogExt("Note: " + Quoted(stOutcome.strPath) + ": " + ReasonText(stOutcome.stReason));
    return true;
}

bool CCopyReport::Close(const STCopyEnd& stEnd)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_stBooks.bClosed) {
            return false;
        }
        EndBooks(stEnd);
    }
    WriteSummary(stEnd.bStopped, stEnd.nMs);
    return true;
}

bool CCopyReport::CloseWith(const STCopyOutcome& stOutcome, const STCopyEnd& stEnd)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!BookProblem(stOutcome)) {
            return false;
        }
        EndBooks(stEnd);
    }
    LogProblem(stOutcome);
    WriteSummary(stEnd.bStopped, stEnd.nMs);
    return true;
}

void CCopyReport::Apply(const STCopyEnd& stEnd, STCopyAccount& stAccount)
{
    stAccount.bStopped = stEnd.bStopped;
    stAccount.bGone = stEnd.bGone;
    stAccount.enFlush = stEnd.enFlush;
    stAccount.nMs = stEnd.nMs;
    stAccount.strReport = stEnd.strReport;
    stAccount.bReportMissing = stEnd.bReportMissing;
}

/** Under the lock. */
void CCopyReport::EndBooks(const STCopyEnd& stEnd)
{
    Apply(stEnd, m_stBooks.stAccount);
    m_stBooks.bClosed = true;
}

/** Under the lock; false when the copy is closed. */
bool CCopyReport::BookProblem(const STCopyOutcome& stOutcome)
{
    if (m_stBooks.bClosed) {
        return false;
    }
    ++m_stBooks.nProblems;
    BookItem(Item(stOutcome));
    return true;
}

/** Under the lock. */
void CCopyReport::BookItem(const STCopyItem& stItem)
{
    STCopyAccount& stAccount = m_stBooks.stAccount;
    ++(stItem.bNote ? stAccount.nNotes : stAccount.nProblems);
    // All its bytes are there.
    stAccount.nFiles += stItem.enProblem == ENCopyProblem::TIME_LOST ? 1 : 0;
    if (stAccount.listItem.count() == STCopyAccount::LISTED_ITEMS && !stItem.bNote
        && m_stBooks.nListedNotes > 0) {
        TakeNoteFromList();
    }
    if (stAccount.listItem.count() < STCopyAccount::LISTED_ITEMS) {
        stAccount.listItem.append(stItem);
        m_stBooks.nListedNotes += stItem.bNote ? 1 : 0;
    }
}

/** Under the lock: makes room in the list, as a note can be done without where an item is missing. */
void CCopyReport::TakeNoteFromList()
{
    QVector<STCopyItem>& listItem = m_stBooks.stAccount.listItem;
    int nRow = listItem.count() - 1;
    while (nRow > 0 && !listItem.at(nRow).bNote) {
        --nRow;
    }
    listItem.remove(nRow);
    --m_stBooks.nListedNotes;
}

/** Whether an item with that problem has all its bytes at the destination, or is none that has any. */
static bool IsNote(ENCopyProblem enProblem)
{
    switch (enProblem) {
    case ENCopyProblem::TIME_LOST: // the log calls it not whole; whoever misses bytes does not
    case ENCopyProblem::LEAVES_VOLUME:
    case ENCopyProblem::ENTERED_BEFORE:
    case ENCopyProblem::LINK_LOST:
    case ENCopyProblem::NAME_CHANGED:
    case ENCopyProblem::PERMISSIONS_LOST:
    case ENCopyProblem::ATTRIBUTES_LOST:
    case ENCopyProblem::FOLDER_TIMES_LOST:
    case ENCopyProblem::FORKS_LOST:
    case ENCopyProblem::FINDER_LOST:
    case ENCopyProblem::ACCESS_LISTS_LOST:
    case ENCopyProblem::CREATION_DATES_LOST:
    case ENCopyProblem::LOCKS_LOST:
        return true;
    default:
        return false;
    }
}

STCopyItem CCopyReport::Item(const STCopyOutcome& stOutcome)
{
    STCopyItem stItem;
    stItem.strPath = stOutcome.strPath;
    stItem.enProblem = stOutcome.stReason.enProblem;
    stItem.nError = stOutcome.stReason.nError;
    stItem.nCopied = stOutcome.nCopied;
    stItem.nExpected = stOutcome.nExpected;
    stItem.strDetail = stOutcome.stReason.strDetail;
    stItem.bNote = IsNote(stItem.enProblem);
    return stItem;
}

void CCopyReport::WriteSummary(bool bStopped, qint64 nMs) const
{
    const STBooks stBooks = Books();
    QString strLine = bStopped ? QStringLiteral("Copy stopped: ") : QStringLiteral("Copy completed: ");
    strLine += QString::asprintf("files %lld, bytes %lld, seconds %lld.%03lld, problems %lld", stBooks.nFiles,
                                 stBooks.stAccount.nBytes, nMs / 1000, nMs % 1000, stBooks.nProblems);
    if (!stBooks.strHalfCopied.isEmpty()) {
        strLine += QStringLiteral(", half-copied ") + Quoted(stBooks.strHalfCopied);
    }
    g_TarnwickLog.LogExt(strLine);
}

CCopyReport::STBooks CCopyReport::Books() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_stBooks;
}

bool CCopyReport::IsClosed() const { return Books().bClosed; }

STCopyAccount CCopyReport::Account() const { return Books().stAccount; }

STCopyAccount CCopyReport::AccountWith(const STCopyEnd& stEnd) const
{
    STCopyAccount stAccount = Account();
    Apply(stEnd, stAccount);
    return stAccount;
}

void CCopyReport::SetEnd(const STCopyAccount& stAccount)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stBooks.stAccount.enFlush = stAccount.enFlush;
    m_stBooks.stAccount.strReport = stAccount.strReport;
    m_stBooks.stAccount.bReportMissing = stAccount.bReportMissing;
}

qint64 CCopyReport::Files() const { return Books().nFiles; }

qint64 CCopyReport::Bytes() const { return Books().stAccount.nBytes; }

qint64 CCopyReport::Problems() const { return Books().nProblems; }

QString CCopyReport::Quoted(const QString& strName)
{
    // The bytes on the disk are what a reader of the log needs to find the file
    // again, so a name that is no valid text shows them instead of a substitute.
    const QByteArray baName = CFileName::Encode(strName);
    QString strResult(QLatin1Char('"'));
    for (int nPos = 0; nPos < baName.size();) {
        const STUtf8Character stChar = CUtf8::First(baName.constData() + nPos, size_t(baName.size() - nPos));
        strResult
            += stChar.nLength == 0 ? HexEscape("\\x%02x", uchar(baName.at(nPos))) : Escaped(stChar.nCode);
        nPos += qMax(stChar.nLength, 1);
    }
    return strResult + QLatin1Char('"');
}

QString CCopyReport::Shown(const QString& strName)
{
    QString strQuoted = Quoted(strName);
    return strQuoted == '"' + strName + '"' ? strName : strQuoted;
}
