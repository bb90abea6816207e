#include "pages/CTreeNotices.h"

#include "copy/CCopyText.h"
#include "pages/CSelFileForm.h"
#include "tree/CDirModel.h"

#include <QFileInfo>
#include <QLocale>

#include <cerrno>

CTreeNotices::CTreeNotices(const CSelFileForm* pForm, QObject* pParent)
    : QObject(pParent)
    , m_pTree(pForm->m_pFileTree)
    , m_pNotice(pForm->m_pNoticeLine)
    , m_strLink(pForm->m_pCompleteBox->text())
{
    connect(m_pTree, &CFileTreeView::SignalFolderOpened, this, &CTreeNotices::OnFolderOpened);
    connect(m_pTree, &CFileTreeView::SignalRootsAdded, this, &CTreeNotices::Update);
}

void CTreeNotices::Update()
{
    m_pNotice->Set(ENNotice::UNLISTED, VolumeText(), m_strLink);
    m_pNotice->Set(ENNotice::FOLDER, FolderText());
}

void CTreeNotices::OnFolderOpened(const STFolderFacts& stFacts)
{
    m_stFacts = stFacts;
    Update();
}

static bool IsEverythingMeant() { return CDirModel::GetInstence()->IsComplete(); }

QString CTreeNotices::VolumeText() const
{
    if (IsEverythingMeant()) {
        return QString();
    }
    if (m_pTree->HasUnlistedFolder()) {
        return tr("Only opened folders of a fully ticked volume are copied.");
    }
    return m_pTree->HasTickedVolume() ? tr("Entries that are not in the list are not copied.") : QString();
}

static QString ErrorText(const STFolderFacts& stFacts)
{
    STCopyItem stItem;
    stItem.enProblem = stFacts.nError == ELOOP ? ENCopyProblem::LEADS_BACK : ENCopyProblem::FOLDER_READ;
    stItem.nError = stFacts.nError == ELOOP ? 0 : stFacts.nError;
    return CCopyText::Reason(stItem);
}

QString CTreeNotices::FolderText() const
{
    const QString strName = QFileInfo(m_stFacts.strPath).fileName();
    if (m_stFacts.bNoAnswer) {
        return m_pNotice->NoAnswerText(strName);
    }
    if (m_stFacts.nError != 0) {
        return m_pNotice->TextOf(strName, ErrorText(m_stFacts));
    }
    const bool bLeftOut = !IsEverythingMeant() || m_pTree->IsToldFolderTickedInPart();
    if (m_stFacts.nLeftOut > 0 && bLeftOut) {
        return tr("Entries left out of %1 because of their names: %2")
            .arg(m_pNotice->Shortened(strName), QLocale().toString(m_stFacts.nLeftOut));
    }
    return QString();
}
