#include "copy/CBelongings.h"

#include "copy/CCopyControl.h"
#include "copy/CFileAttributes.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

// The coarsest times that file systems keep are even seconds; they lose no date.
static const qint64 TIME_STEP_SEC = 2;

static bool SetTimes(const QString& strPath, const STFileState& stState)
{
    const struct timespec listTime[2] = {
        {time_t(stState.nAccessedSec), long(stState.nAccessedNsec)},
        {time_t(stState.nModifiedSec), long(stState.nModifiedNsec)},
    };
    return utimensat(AT_FDCWD, QFile::encodeName(strPath).constData(), listTime, AT_SYMLINK_NOFOLLOW) == 0;
}

static bool IsModifiedAlike(const STFileState& stOne, const STFileState& stOther)
{
    return qAbs(stOne.nModifiedSec - stOther.nModifiedSec) <= TIME_STEP_SEC;
}

CBelongings::CBelongings(CCopyControl& control)
    : m_control(control)
{
}

void CBelongings::GiveToFile(const QString& strSource, const STFileState& stSource, const QString& strTarget)
{
    const std::optional<STFileState> stBefore = TargetState(strTarget);
    if (!stBefore) {
        return;
    }
    // The attributes come first: who may not write to the file may not set them.
    const bool bChanged = GiveAttributes(strSource, strTarget);
    const bool bTried = GivePermissions(stSource, *stBefore, strTarget);
    const std::optional<STFileState> stAfter = bChanged || bTried ? TargetState(strTarget) : stBefore;
    if (!stAfter) {
        return;
    }
    BookPermissions(stSource, *stAfter, bTried);
    if (stAfter->nModifiedSec != stBefore->nModifiedSec
        || stAfter->nModifiedNsec != stBefore->nModifiedNsec) {
        SetTimes(strTarget, *stBefore);
    }
}

void CBelongings::GiveToFolder(const QString& strSource, const STFileState& stSource,
                               const QString& strTarget)
{
    const std::optional<STFileState> stBefore = TargetState(strTarget);
    if (!stBefore) {
        return;
    }
    GiveAttributes(strSource, strTarget);
    const bool bTried = GivePermissions(stSource, *stBefore, strTarget);
    const bool bTimes = SetTimes(strTarget, stSource);
    const std::optional<STFileState> stAfter = TargetState(strTarget);
    if (!stAfter) {
        return;
    }
    BookPermissions(stSource, *stAfter, bTried);
    m_nTimesLost += bTimes && IsModifiedAlike(stSource, *stAfter) ? 0 : 1;
}

void CBelongings::GiveToLink(const STFileState& stSource, const QString& strTarget)
{
    m_control.StepBegins(ENCopyStep::WRITING);
    SetTimes(strTarget, stSource);
}

QVector<STCopyReason> CBelongings::Lost() const
{
    QVector<STCopyReason> listLost;
    const auto fnAdd = [&listLost](ENCopyProblem enProblem, const char* pszText, qint64 nItems) {
        if (nItems > 0) {
            STCopyReason stReason{enProblem, QLatin1String(pszText) + QString::number(nItems)};
            stReason.strDetail = QString::number(nItems);
            listLost.append(stReason);
        }
    };
    fnAdd(ENCopyProblem::PERMISSIONS_LOST,
          "items whose permissions the disk cannot hold: ", m_nPermissionsLost);
    fnAdd(ENCopyProblem::ATTRIBUTES_LOST,
          "items whose extended attributes the disk cannot hold: ", m_nAttributesLost);
    fnAdd(ENCopyProblem::FOLDER_TIMES_LOST, "folders whose times the disk cannot hold: ", m_nTimesLost);
    return listLost;
}

std::optional<STFileState> CBelongings::TargetState(const QString& strTarget)
{
    m_control.StepBegins(ENCopyStep::WRITING);
    return CCopyPlatform::GetEntryState(strTarget);
}

/** Whether anything was done to the target. */
bool CBelongings::GiveAttributes(const QString& strSource, const QString& strTarget)
{
    const QByteArray baSource = QFile::encodeName(strSource);
    const QByteArray baTarget = QFile::encodeName(strTarget);
    m_control.StepBegins(ENCopyStep::READING);
    const std::optional<QVector<QByteArray>> listName = CFileAttributes::Names(baSource);
    if (listName && listName->isEmpty()) {
        return false;
    }
    bool bAll = listName.has_value();
    for (const QByteArray& baName : listName.value_or(QVector<QByteArray>())) {
        bAll = GiveOne(baSource, baTarget, baName) && bAll;
    }
    m_nAttributesLost += bAll ? 0 : 1;
    return true;
}

bool CBelongings::GiveOne(const QByteArray& baSource, const QByteArray& baTarget, const QByteArray& baName)
{
    if (!m_bAttributes) {
        return false;
    }
    m_control.StepBegins(ENCopyStep::READING);
    const std::optional<QByteArray> baValue = CFileAttributes::Value(baSource, baName);
    if (!baValue) {
        return false;
    }
    m_control.StepBegins(ENCopyStep::WRITING);
    const bool bSet = CFileAttributes::Set(baTarget, CFileAttributes::NameOfCopy(baName), *baValue);
    m_bAttributes = bSet || (errno != ENOTSUP && errno != ENOSYS);
    return bSet;
}

/** Whether anything was tried. */
bool CBelongings::GivePermissions(const STFileState& stSource, const STFileState& stTarget,
                                  const QString& strTarget)
{
    if (!m_bPermissions || stSource.nPermissions == stTarget.nPermissions) {
        return false;
    }
    m_control.StepBegins(ENCopyStep::WRITING);
    chmod(QFile::encodeName(strTarget).constData(), mode_t(stSource.nPermissions));
    return true;
}

void CBelongings::BookPermissions(const STFileState& stSource, const STFileState& stTarget, bool bTried)
{
    const bool bLost = stSource.nPermissions != stTarget.nPermissions;
    m_nPermissionsLost += bLost ? 1 : 0;
    // A disk that did not do it once is not asked for each of a million files.
    m_bPermissions = m_bPermissions && !(bLost && bTried);
}
