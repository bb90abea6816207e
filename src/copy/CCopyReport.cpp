#include "copy/CCopyReport.h"

#include "files/CUtf8.h"
#include "log/CLogTarnwick.h"

#include <QFile>

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

void CCopyReport::Reset() { *this = CCopyReport(); }

void CCopyReport::AddFile(const STCopyOutcome& stOutcome)
{
    m_nBytes += stOutcome.nCopied;
    if (stOutcome.enEnd == ENCopyEnd::WHOLE) {
        ++m_nFiles;
        return;
    }
    if (stOutcome.enEnd == ENCopyEnd::STOPPED) {
        m_strHalfCopied = stOutcome.strPath;
    }
    AddProblem(stOutcome);
}

void CCopyReport::AddProblem(const STCopyOutcome& stOutcome)
{
    ++m_nProblems;
    g_TarnwickLog.LogExt("Not copied whole: " + Quoted(stOutcome.strPath) + ": "
                         + ReasonText(stOutcome.stReason) + " ("
                         + BytesText(stOutcome.nCopied, stOutcome.nExpected) + ')');
}

void CCopyReport::WriteSummary(bool bStopped, qint64 nMs) const
{
    QString strLine = bStopped ? QStringLiteral("Copy stopped: ") : QStringLiteral("Copy completed: ");
    strLine += QString::asprintf("files %lld, bytes %lld, seconds %lld.%03lld, problems %lld", m_nFiles,
                                 m_nBytes, nMs / 1000, nMs % 1000, m_nProblems);
    if (!m_strHalfCopied.isEmpty()) {
        strLine += QStringLiteral(", half-copied ") + Quoted(m_strHalfCopied);
    }
    g_TarnwickLog.LogExt(strLine);
}

STCopyAccount CCopyReport::Account(bool bStopped, qint64 nMs) const
{
    STCopyAccount stAccount;
    stAccount.nFiles = m_nFiles;
    stAccount.nBytes = m_nBytes;
    stAccount.nProblems = m_nProblems;
    stAccount.nMs = nMs;
    stAccount.bStopped = bStopped;
    return stAccount;
}

qint64 CCopyReport::Files() const { return m_nFiles; }

qint64 CCopyReport::Bytes() const { return m_nBytes; }

qint64 CCopyReport::Problems() const { return m_nProblems; }

QString CCopyReport::Quoted(const QString& strName)
{
    // The bytes on the disk are what a reader of the log needs to find the file
    // again, so a name that is no valid text shows them instead of a substitute.
    const QByteArray baName = QFile::encodeName(strName);
    QString strResult(QLatin1Char('"'));
    for (int nPos = 0; nPos < baName.size();) {
        const STUtf8Character stChar = CUtf8::First(baName.constData() + nPos, size_t(baName.size() - nPos));
        strResult
            += stChar.nLength == 0 ? HexEscape("\\x%02x", uchar(baName.at(nPos))) : Escaped(stChar.nCode);
        nPos += qMax(stChar.nLength, 1);
    }
    return strResult + QLatin1Char('"');
}
