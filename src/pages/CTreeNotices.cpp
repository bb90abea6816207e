#include "pages/CTreeNotices.h"

#include "copy/CCopyText.h"
#include "pages/CNoticeLine.h"
#include "tree/CFileTreeView.h"
#include "tree/STFolderFacts.h"

#include <QFileInfo>
#include <QLocale>

#include <cerrno>

CTreeNotices::CTreeNotices(const CFileTreeView* pTree, CNoticeLine* pNotice, QObject* pParent)
    : QObject(pParent)
    , m_pTree(pTree)
    , m_pNotice(pNotice)
{
    connect(pTree, &CFileTreeView::SignalFolderOpened, this, &CTreeNotices::OnFolderOpened);
}

void CTreeNotices::Update()
{
    m_pNotice->Set(ENNotice::UNLISTED,
                   m_pTree->HasUnlistedFolder()
                       ? tr("Only opened folders of a fully ticked volume are copied.")
                       : QString());
}

void CTreeNotices::OnFolderOpened(const STFolderFacts& stFacts)
{
    m_pNotice->Set(ENNotice::FOLDER, FolderText(stFacts));
    Update();
}

static QString ErrorText(const STFolderFacts& stFacts)
{
    STCopyItem stItem;
    stItem.enProblem = stFacts.nError == ELOOP ? ENCopyProblem::LEADS_BACK : ENCopyProblem::FOLDER_READ;
    stItem.nError = stFacts.nError == ELOOP ? 0 : stFacts.nError;
    return CCopyText::Reason(stItem);
}

QString CTreeNotices::FolderText(const STFolderFacts& stFacts) const
{
    const QString strName = QFileInfo(stFacts.strPath).fileName();
    if (stFacts.bNoAnswer) {
        return m_pNotice->NoAnswerText(strName);
    }
    if (stFacts.nError != 0) {
        return m_pNotice->TextOf(strName, ErrorText(stFacts));
    }
    if (stFacts.nLeftOut > 0) {
        return tr("Entries left out of %1 because of their names: %2")
            .arg(m_pNotice->Shortened(strName), QLocale().toString(stFacts.nLeftOut));
    }
    return QString();
}
