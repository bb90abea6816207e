#include "copy/CCopyReport.h"

#include "log/CLogTarnwick.h"

#include <QFile>

static QString BytesText(qint64 nCopied, qint64 nExpected)
{
    const QString strExpected
        = nExpected == CCopyReport::UNKNOWN_SIZE ? QStringLiteral("unknown") : QString::number(nExpected);
    return QString::number(nCopied) + QStringLiteral(" of ") + strExpected + QStringLiteral(" bytes copied");
}

static QString HexEscape(const char* pszFormat, uint nCode) { return QString::asprintf(pszFormat, nCode); }

/** Length of the UTF-8 sequence that begins at nPos, 0 when the byte there begins none. */
static int SequenceLength(const QByteArray& baText, int nPos)
{
    const uchar nFirst = uchar(baText.at(nPos));
    const int nLength = nFirst < 0x80 ? 1 : nFirst < 0xc2 ? 0 : nFirst < 0xe0 ? 2 : nFirst < 0xf0 ? 3 : 4;
    if (nLength < 2) {
        return nLength;
    }
    // Decoding and encoding again gives the same bytes for a valid sequence only.
    const QByteArray baPart = baText.mid(nPos, nLength);
    return QString::fromUtf8(baPart).toUtf8() == baPart ? nLength : 0;
}

static QString EscapedPart(const QString& strPart)
{
    const QChar character = strPart.at(0);
    if (character == QLatin1Char('\n')) {
        return QStringLiteral("\\n");
    }
    if (character == QLatin1Char('"') || character == QLatin1Char('\\')) {
        return QLatin1Char('\\') + strPart;
    }
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return HexEscape("\\u%04x", character.unicode());
    default:
        return strPart;
    }
}

void CCopyReport::Reset() { *this = CCopyReport(); }

void CCopyReport::AddBytes(qint64 nBytes) { m_nBytes += nBytes; }

void CCopyReport::AddFile() { ++m_nFiles; }

void CCopyReport::AddProblem(const QString& strPath, const QString& strReason, qint64 nCopied,
                             qint64 nExpected)
{
    ++m_nProblems;
    g_TarnwickLog.LogExt(QStringLiteral("Not copied whole: ") + Quoted(strPath) + QStringLiteral(": ")
                         + strReason + QStringLiteral(" (") + BytesText(nCopied, nExpected)
                         + QLatin1Char(')'));
}

void CCopyReport::AddStopped(const QString& strPath, qint64 nCopied, qint64 nExpected)
{
    m_strHalfCopied = strPath;
    AddProblem(strPath, QStringLiteral("the copy was stopped"), nCopied, nExpected);
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
        const int nLength = SequenceLength(baName, nPos);
        if (nLength == 0) {
            strResult += HexEscape("\\x%02x", uchar(baName.at(nPos)));
            ++nPos;
            continue;
        }
        strResult += EscapedPart(QString::fromUtf8(baName.constData() + nPos, nLength));
        nPos += nLength;
    }
    return strResult + QLatin1Char('"');
}
