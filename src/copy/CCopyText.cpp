#include "copy/CCopyText.h"

#include <QLocale>

#include <algorithm>
#include <cerrno>

static QString Number(qint64 nNumber) { return QLocale().toString(nNumber); }

/** Whether what the system gave as the reason says all there is to say. */
static bool SpeaksForItself(const STCopyItem& stItem)
{
    switch (stItem.nError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
    case EROFS:
    case ENAMETOOLONG:
        return true;
    default:
        return false;
    }
}

static QString ProblemText(ENCopyProblem enProblem)
{
    switch (enProblem) {
    case ENCopyProblem::TARGET_FOLDER:
        return CCopyText::tr("Its folder cannot be created.");
    case ENCopyProblem::TARGET_CREATE:
        return CCopyText::tr("It cannot be created on the disk.");
    case ENCopyProblem::TARGET_WRITE:
        return CCopyText::tr("It cannot be written to the disk.");
    case ENCopyProblem::TARGET_CLOSE:
        return CCopyText::tr("The disk did not take all of it.");
    case ENCopyProblem::SOURCE_OPEN:
        return CCopyText::tr("It cannot be opened.");
    case ENCopyProblem::SOURCE_READ:
        return CCopyText::tr("It cannot be read.");
    case ENCopyProblem::SOURCE_SHORTER:
        return CCopyText::tr("It became shorter while it was copied.");
    case ENCopyProblem::SOURCE_CHANGED:
        return CCopyText::tr("It changed while it was copied.");
    case ENCopyProblem::SOURCE_REMOVED:
        return CCopyText::tr("It was removed while it was copied.");
    case ENCopyProblem::SOURCE_REPLACED:
        return CCopyText::tr("Something else has taken its place.");
    case ENCopyProblem::SPECIAL_FILE:
        return CCopyText::tr("It is not a file, but a pipe, a socket or a device.");
    case ENCopyProblem::NOT_LISTED:
        return CCopyText::tr("The folder was not opened, so its contents were not copied.");
    case ENCopyProblem::LEFT_OUT:
        return CCopyText::tr("It was not in the list, so it was not copied.");
    case ENCopyProblem::LEADS_BACK:
        return CCopyText::tr("It is a link to a folder that it lies in.");
    case ENCopyProblem::FOLDER_READ:
        return CCopyText::tr("The folder cannot be read.");
    case ENCopyProblem::TIME_LOST:
        return CCopyText::tr("It was copied whole, but its date could not be kept.");
    case ENCopyProblem::DESTINATION_GONE:
        return CCopyText::tr("The disk was removed.");
    case ENCopyProblem::STOPPED:
        return CCopyText::tr("The copy was stopped.");
    case ENCopyProblem::NO_MEMORY:
        return CCopyText::tr("There was not enough memory.");
    case ENCopyProblem::NOT_FLUSHED:
        return CCopyText::tr("The disk did not confirm that everything is on it.");
    case ENCopyProblem::LEAVES_VOLUME:
        return CCopyText::tr("It is a link to another disk. What it leads to was copied.");
    case ENCopyProblem::NO_ANSWER:
        return CCopyText::tr("The disk does not answer.");
    case ENCopyProblem::TOO_LARGE:
        return CCopyText::tr("Too large for the file system of this disk.");
    case ENCopyProblem::DAMAGED:
        return CCopyText::tr("Parts of it cannot be read; zeros stand for the bytes %1.");
    case ENCopyProblem::OTHER_FILE_SYSTEM:
        return CCopyText::tr("Another disk is mounted here. What is on it was not copied.");
    case ENCopyProblem::ENTERED_BEFORE:
        return CCopyText::tr("It is the same folder as another one in this copy, or the copy itself.");
    case ENCopyProblem::LINK_LOST:
        return CCopyText::tr("It is a link to %1, and this disk cannot hold links.");
    case ENCopyProblem::NAME_CHANGED:
        return CCopyText::tr("The disk does not take its name. There it is called %1.");
    case ENCopyProblem::PERMISSIONS_LOST:
        return CCopyText::tr("Items whose permissions this disk cannot hold: %1");
    case ENCopyProblem::ATTRIBUTES_LOST:
        return CCopyText::tr("Items whose extended attributes this disk cannot hold: %1");
    case ENCopyProblem::FOLDER_TIMES_LOST:
        return CCopyText::tr("Folders whose dates this disk cannot hold: %1");
    case ENCopyProblem::FORK_READ:
        return CCopyText::tr("Its resource fork, a part of it, cannot be read.");
    case ENCopyProblem::FORK_NEEDED:
        return CCopyText::tr("Its contents are in its resource fork, and this disk cannot hold that.");
    case ENCopyProblem::FORKS_LOST:
        return CCopyText::tr("Items whose resource forks this disk cannot hold: %1");
    case ENCopyProblem::FINDER_LOST:
        return CCopyText::tr("Items whose Finder tags and icons this disk cannot hold: %1");
    case ENCopyProblem::ACCESS_LISTS_LOST:
        return CCopyText::tr("Items whose access lists this disk cannot hold: %1");
    case ENCopyProblem::CREATION_DATES_LOST:
        return CCopyText::tr("Items whose creation dates this disk cannot hold: %1");
    case ENCopyProblem::LOCKS_LOST:
        return CCopyText::tr("Locked items whose copies are not locked: %1");
    case ENCopyProblem::ONLY_IN_CLOUD:
        return CCopyText::tr("Its contents are only in iCloud, not on this Mac.");
    }
    return QString();
}

/** What is told beside the problem; a number as the user's language writes it. */
static QString Detail(const STCopyItem& stItem)
{
    switch (stItem.enProblem) {
    case ENCopyProblem::PERMISSIONS_LOST:
    case ENCopyProblem::ATTRIBUTES_LOST:
    case ENCopyProblem::FOLDER_TIMES_LOST:
    case ENCopyProblem::FORKS_LOST:
    case ENCopyProblem::FINDER_LOST:
    case ENCopyProblem::ACCESS_LISTS_LOST:
    case ENCopyProblem::CREATION_DATES_LOST:
    case ENCopyProblem::LOCKS_LOST:
        return Number(stItem.strDetail.toLongLong());
    default:
        return stItem.strDetail;
    }
}

static QString ProblemWithDetail(const STCopyItem& stItem)
{
    const QString strText = ProblemText(stItem.enProblem);
    return strText.contains(QLatin1String("%1")) ? strText.arg(Detail(stItem)) : strText;
}

static QString ErrorText(const STCopyItem& stItem)
{
    switch (stItem.nError) {
    case ENOSPC:
    case EDQUOT:
        return CCopyText::tr("The disk is full.");
    case EFBIG:
        return CCopyText::tr("Too large for the file system of this disk.");
    case EACCES:
    case EPERM:
        return CCopyText::tr("Access is not permitted.");
    case EROFS:
        return CCopyText::tr("The disk is write-protected.");
    case EIO:
        return CCopyText::tr("The disk reports an error.");
    case ENOENT:
        return CCopyText::tr("It is not there any more.");
    case ENAMETOOLONG:
        return CCopyText::tr("Its name or path is too long.");
    case ENODEV:
    case ENXIO:
    case ENOTCONN:
    case ESTALE:
        return CCopyText::tr("The disk is not connected any more.");
    case EDEADLK: // a Mac is not to fetch what it keeps elsewhere
        return CCopyText::tr("Its contents are only in iCloud, not on this Mac.");
    case EEXIST:
    case ENOTDIR:
        return CCopyText::tr("Something else of that name is in its place.");
    case EINVAL:
    case EILSEQ:
        if (stItem.enProblem == ENCopyProblem::TARGET_CREATE
            || stItem.enProblem == ENCopyProblem::TARGET_FOLDER) {
            return CCopyText::tr("The file system of this disk does not allow its name.");
        }
        break;
    default:
        break;
    }
    return qt_error_string(stItem.nError);
}

static QString Joined(const QString& strFirst, const QString& strSecond)
{
    //: Two sentences, one behind the other.
    return CCopyText::tr("%1 %2").arg(strFirst, strSecond);
}

QString CCopyText::Reason(const STCopyItem& stItem)
{
    if (SpeaksForItself(stItem)) {
        return ErrorText(stItem);
    }
    const QString strProblem = ProblemWithDetail(stItem);
    return stItem.nError == 0 ? strProblem : Joined(strProblem, ErrorText(stItem));
}

QString CCopyText::Amount(const STCopyItem& stItem)
{
    if (stItem.bNote || (stItem.nExpected <= 0 && stItem.nCopied <= 0)) {
        return QString();
    }
    if (stItem.nExpected < 0) {
        return Bytes(stItem.nCopied);
    }
    return tr("%1 of %2").arg(Bytes(stItem.nCopied), Bytes(stItem.nExpected));
}

QString CCopyText::Bytes(qint64 nBytes)
{
    if (nBytes == 1) {
        return tr("1 byte");
    }
    if (nBytes < 1000) {
        return tr("%1 bytes").arg(Number(nBytes));
    }
    const QString listUnit[] = {tr("%1 KB"), tr("%1 MB"), tr("%1 GB"), tr("%1 TB")};
    const QString* pUnit = std::begin(listUnit);
    double dNumber = double(nBytes) / 1000;
    // 999,995 KB and more would be shown as 1,000.00.
    while (dNumber >= 999.995 && pUnit + 1 != std::end(listUnit)) {
        dNumber /= 1000;
        ++pUnit;
    }
    return pUnit->arg(QLocale().toString(dNumber, 'f', 2));
}

QString CCopyText::Files(qint64 nFiles)
{
    return nFiles == 1 ? tr("1 file") : tr("%1 files").arg(Number(nFiles));
}

static QString NotWhole(const STCopyAccount& stAccount)
{
    const QString strAll = Number(stAccount.nFiles + stAccount.nLinks + stAccount.nProblems);
    if (stAccount.nProblems == 1) {
        return CCopyText::tr("1 of %1 items was not copied whole.").arg(strAll);
    }
    return CCopyText::tr("%1 of %2 items were not copied whole.").arg(Number(stAccount.nProblems), strAll);
}

static QString Stopped(const STCopyAccount& stAccount)
{
    const QString strStopped
        = CCopyText::tr("The copy was stopped. %1, %2 are on the disk.")
              .arg(CCopyText::Files(stAccount.nFiles), CCopyText::Bytes(stAccount.nBytes));
    // The file at which it was stopped is no surprise; anything else is.
    const auto fnIsProblem = [](const STCopyItem& stItem) {
        return !stItem.bNote && stItem.enProblem != ENCopyProblem::STOPPED;
    };
    const bool bProblem = std::any_of(stAccount.listItem.cbegin(), stAccount.listItem.cend(), fnIsProblem);
    return bProblem ? Joined(strStopped, NotWhole(stAccount)) : strStopped;
}

QString CCopyText::Summary(const STCopyAccount& stAccount)
{
    if (stAccount.enFlush == ENCopyFlush::FAILED) {
        return tr("The disk did not confirm that everything is on it. Do not rely on this copy.");
    }
    if (stAccount.nFiles + stAccount.nLinks == 0) {
        return tr("Nothing was copied.");
    }
    if (stAccount.bStopped) {
        return Stopped(stAccount);
    }
    if (stAccount.nProblems > 0) {
        return NotWhole(stAccount);
    }
    return tr("%1, %2 are on the disk. It can be unplugged now.")
        .arg(Files(stAccount.nFiles), Bytes(stAccount.nBytes));
}

QString CCopyText::ReportMissing() { return tr("The list could not be saved on the disk."); }
