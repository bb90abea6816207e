#pragma once

#include "tree/STFolderFacts.h"

#include <QObject>
#include <QString>

class CFileTreeView;
class CNoticeLine;
class CSelFileForm;

/**
 * Says in the line of notices what the tree does not show and what therefore is not
 * copied: folders of a ticked volume that were never opened, entries that are left
 * out for their names, a folder that cannot be read. Where a tick means everything the
 * first is copied, and so is the second where its folder is ticked as a whole. GUI thread only.
 */
class CTreeNotices : public QObject
{
    Q_OBJECT

public:
    /** Follows the folders that are opened in the form's tree; the form has to live as long. */
    CTreeNotices(const CSelFileForm* pForm, QObject* pParent);

    /** Looks once more at the ticks and at what they mean. */
    void Update();

private:
    void OnFolderOpened(const STFolderFacts& stFacts);
    QString VolumeText() const;
    QString FolderText() const;

    const CFileTreeView* m_pTree;
    CNoticeLine* m_pNotice;
    const QString m_strLink; // to what copies everything
    STFolderFacts m_stFacts; // of the folder that was opened last
};
