#include "copy/CBelongings.h"

#include "copy/CCopyControl.h"
#include "copy/CFileAttributes.h"
#include "files/CFileName.h"

#include <cerrno>
#include <sys/stat.h>

CBelongings::CBelongings(CCopyControl& control)
    : m_control(control)
{
}

void CBelongings::GiveToFile(const QString& strSource, const STFileState& stSource, const QString& strTarget)
{
    const std::optional<QVector<QByteArray>> listName = AttributesOf(strSource);
    const QString strFolder = strTarget.left(strTarget.lastIndexOf('/'));
    const bool bNoAttributes = listName && listName->isEmpty();
    // Files that are made alike in one folder get the same permissions, and one was looked at.
    if (bNoAttributes && strFolder == m_strFolder
        && (!m_bPermissions || stSource.nPermissions == m_nNewPermissions)) {
        m_nPermissionsLost += stSource.nPermissions == m_nNewPermissions ? 0 : 1;
        return;
    }
    const std::optional<STFileState> stBefore = TargetState(strTarget);
    if (!stBefore) {
        return;
    }
    m_strFolder = strFolder;
    m_nNewPermissions = stBefore->nPermissions;
    // The attributes come first: who may not write to the file may not set them.
    GiveAttributes(strSource, listName, strTarget);
    const bool bTried = GivePermissions(stSource, *stBefore, strTarget);
    const std::optional<STFileState> stAfter = !bNoAttributes || bTried ? TargetState(strTarget) : stBefore;
    if (!stAfter) {
        return;
    }
    BookPermissions(stSource, *stAfter, bTried);
    if (stAfter->nModifiedSec != stBefore->nModifiedSec
        || stAfter->nModifiedNsec != stBefore->nModifiedNsec) {
        CCopyPlatform::SetTimes(strTarget, *stBefore);
    }
}

void CBelongings::GiveToFolder(const QString& strSource, const STFileState& stSource,
                               const QString& strTarget)
{
    const std::optional<STFileState> stBefore = TargetState(strTarget);
    if (!stBefore) {
        return;
    }
    m_control.KeepFolderMetadata(strSource, strTarget);
    GiveAttributes(strSource, AttributesOf(strSource), strTarget);
    const bool bTried = GivePermissions(stSource, *stBefore, strTarget);
    const bool bTimes = CCopyPlatform::SetTimes(strTarget, stSource);
    m_control.KeepFolderLast(strSource, strTarget);
    const std::optional<STFileState> stAfter = TargetState(strTarget);
    if (!stAfter) {
        return;
    }
    BookPermissions(stSource, *stAfter, bTried);
    m_nTimesLost += bTimes && CCopyPlatform::IsModifiedAlike(stSource, *stAfter) ? 0 : 1;
}

void CBelongings::GiveToLink(const STFileState& stSource, const QString& strTarget)
{
    m_control.StepBegins(ENCopyStep::WRITING);
    CCopyPlatform::SetTimes(strTarget, stSource);
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

/** The names of its attributes; nothing when they cannot be read. */
std::optional<QVector<QByteArray>> CBelongings::AttributesOf(const QString& strSource)
{
    m_control.StepBegins(ENCopyStep::READING);
    return CFileAttributes::Names(CFileName::Encode(strSource));
}

void CBelongings::GiveAttributes(const QString& strSource, const std::optional<QVector<QByteArray>>& listName,
                                 const QString& strTarget)
{
    const QByteArray baSource = CFileName::Encode(strSource);
    const QByteArray baTarget = CFileName::Encode(strTarget);
    bool bAll = listName.has_value();
    for (const QByteArray& baName : listName.value_or(QVector<QByteArray>())) {
        bAll = GiveOne(baSource, baTarget, baName) && bAll;
    }
    m_nAttributesLost += bAll ? 0 : 1;
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
    chmod(CFileName::Encode(strTarget).constData(), mode_t(stSource.nPermissions));
    return true;
}

void CBelongings::BookPermissions(const STFileState& stSource, const STFileState& stTarget, bool bTried)
{
    const bool bLost = stSource.nPermissions != stTarget.nPermissions;
    m_nPermissionsLost += bLost ? 1 : 0;
    // A disk that did not do it once is not asked for each of a million files.
    m_bPermissions = m_bPermissions && !(bLost && bTried);
}
