#include "copy/CCopyReportText.h"

#include "copy/CCopyReport.h"
#include "copy/CCopyText.h"
#include "log/CClock.h"

#include <QLocale>

#include <numeric>

static const int SOURCES_NAMED = 3;

// Characters of a name in the head; fewer where the head would not hold them.
static const int NAME_LENGTH = 200;
static const int LEAST_NAME_LENGTH = 20;

/** At most nMost characters, with the middle left out. */
static QString Shortened(const QString& strText, int nMost)
{
    if (strText.size() <= nMost) {
        return strText;
    }
    QString strLeft = strText.left(nMost / 2);
    QString strRight = strText.right(nMost / 2);
    if (strLeft.at(strLeft.size() - 1).isHighSurrogate()) {
        strLeft.chop(1);
    }
    if (strRight.at(0).isLowSurrogate()) {
        strRight.remove(0, 1);
    }
    return strLeft + QChar(0x2026) + strRight;
}

static QString Name(const QString& strPath, int nMost)
{
    return Shortened(CCopyReport::Quoted(strPath), nMost);
}

static QString Names(const QStringList& listPath, int nMost)
{
    QStringList listName;
    for (const QString& strPath : listPath.mid(0, SOURCES_NAMED)) {
        listName.append(Name(strPath, nMost));
    }
    if (listPath.count() > SOURCES_NAMED) {
        listName.append(QString(QChar(0x2026)));
    }
    return listName.join(QLatin1String(", "));
}

static QString Time(const QDateTime& dateTime)
{
    const QLocale locale;
    return locale.toString(dateTime.date(), QLocale::LongFormat) + ' '
        + locale.toString(dateTime.time(), QLocale::ShortFormat);
}

/** What has become of it, and what to do. */
static QStringList State(const STCopyAccount* pAccount)
{
    if (pAccount == nullptr) {
        return {
            CCopyReportText::tr("This copy has not come to its end."),
            CCopyReportText::tr("If no copy is running any more, it broke off: the program was ended, the "
                                "disk was removed or the power failed. Files are missing that are not named "
                                "below. Copy everything again."),
            QString(), CCopyReportText::tr("Not copied whole so far:")};
    }
    const QString strSummary = CCopyText::Summary(*pAccount);
    const QString strList = CCopyReportText::tr("Items that are missing, not whole or worth a note:");
    if (pAccount->enFlush == ENCopyFlush::FAILED) {
        return {strSummary, CCopyReportText::tr("Copy everything again, best onto another disk."), QString(),
                strList};
    }
    if (pAccount->bStopped) {
        return {strSummary,
                CCopyReportText::tr("What had not been copied by then is missing and is not named below."),
                QString(), strList};
    }
    if (pAccount->nProblems == 0) {
        return {strSummary, CCopyReportText::tr("Everything is whole. The items below are worth a note."),
                QString(), strList};
    }
    return {strSummary,
            CCopyReportText::tr(
                "Try to copy the items below again. If the disk is full, or its file system takes "
                "no large files, use another disk. Keep this list with the copy until you have "
                "them all."),
            QString(), strList};
}

static QStringList Lines(const STCopyBeginning& stBeginning, const STCopyAccount* pAccount,
                         const QDateTime& dateTimeEnd, int nMost)
{
    QStringList listLine{CCopyReportText::tr("Report on a copy of files"), QString()};
    listLine.append(CCopyReportText::tr("From: %1").arg(Names(stBeginning.listSource, nMost)));
    listLine.append(CCopyReportText::tr("To: %1").arg(Name(stBeginning.strDest, nMost)));
    listLine.append(CCopyReportText::tr("Begun: %1").arg(Time(stBeginning.dateTime)));
    if (pAccount == nullptr) {
        listLine.append(
            CCopyReportText::tr("To be copied: at most %1").arg(CCopyText::Bytes(stBeginning.nTotalSize)));
    } else {
        listLine.append(CCopyReportText::tr("Ended: %1").arg(Time(dateTimeEnd)));
        listLine.append(CCopyReportText::tr("Whole: %1, %2")
                            .arg(CCopyText::Files(pAccount->nFiles), CCopyText::Bytes(pAccount->nBytes)));
        listLine.append(CCopyReportText::tr("Not whole: %1").arg(QLocale().toString(pAccount->nProblems)));
    }
    return listLine + QStringList{QString()} + State(pAccount);
}

static int Size(const QList<QByteArray>& listLine)
{
    return std::accumulate(listLine.cbegin(), listLine.cend(), listLine.count(),
                           [](int nSum, const QByteArray& baLine) { return nSum + baLine.size(); });
}

static QList<QByteArray> Encoded(const QStringList& listLine)
{
    QList<QByteArray> listEncoded;
    for (const QString& strLine : listLine) {
        listEncoded.append(strLine.toUtf8());
    }
    return listEncoded;
}

/** The blanks are spread over the lines: behind one of them they would be an empty page. */
static QByteArray Filled(const QList<QByteArray>& listLine)
{
    const int nBlanks = CCopyReportText::HEAD_SIZE - Size(listLine);
    QByteArray baHead;
    baHead.reserve(CCopyReportText::HEAD_SIZE);
    for (int nLine = 0; nLine < listLine.count(); ++nLine) {
        const int nBefore = int(qint64(nBlanks) * nLine / listLine.count());
        const int nAfter = int(qint64(nBlanks) * (nLine + 1) / listLine.count());
        baHead += listLine.at(nLine) + QByteArray(nAfter - nBefore, ' ') + '\n';
    }
    return baHead;
}

static QByteArray Head(const STCopyBeginning& stBeginning, const STCopyAccount* pAccount)
{
    const QDateTime dateTimeEnd = CClock::Now();
    int nMost = NAME_LENGTH;
    QList<QByteArray> listLine = Encoded(Lines(stBeginning, pAccount, dateTimeEnd, nMost));
    while (Size(listLine) > CCopyReportText::HEAD_SIZE && nMost > LEAST_NAME_LENGTH) {
        nMost /= 2;
        listLine = Encoded(Lines(stBeginning, pAccount, dateTimeEnd, nMost));
    }
    return Filled(listLine);
}

QByteArray CCopyReportText::HeadAtBegin(const STCopyBeginning& stBeginning)
{
    return Head(stBeginning, nullptr);
}

QByteArray CCopyReportText::HeadAtEnd(const STCopyBeginning& stBeginning, const STCopyAccount& stAccount)
{
    return Head(stBeginning, &stAccount);
}

QByteArray CCopyReportText::Line(const STCopyItem& stItem)
{
    QString strLine = CCopyReport::Quoted(stItem.strPath) + ": " + CCopyText::Reason(stItem);
    const QString strAmount = CCopyText::Amount(stItem);
    if (!strAmount.isEmpty()) {
        strLine += " (" + strAmount + ')';
    }
    return strLine.toUtf8() + '\n';
}

QByteArray CCopyReportText::LineOfOthers(qint64 nItems)
{
    return tr("And %1 more, for which there was no room.").arg(QLocale().toString(nItems)).toUtf8() + '\n';
}
