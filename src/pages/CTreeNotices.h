#pragma once

#include <QObject>

class CFileTreeView;
class CNoticeLine;
struct STFolderFacts;

/**
 * Says in the line of notices what the tree does not show and what therefore is not
 * copied: folders of a ticked volume that were never opened, entries that are left
 * out for their names, a folder that cannot be read. GUI thread only.
 */
class CTreeNotices : public QObject
{
    Q_OBJECT

public:
    /** Follows the folders that are opened. Neither of the two is owned; they have to live as long. */
    CTreeNotices(const CFileTreeView* pTree, CNoticeLine* pNotice, QObject* pParent);

    /** Looks at the ticks once more. */
    void Update();

private:
    void OnFolderOpened(const STFolderFacts& stFacts);
    QString FolderText(const STFolderFacts& stFacts) const;

    const CFileTreeView* m_pTree;
    CNoticeLine* m_pNotice;
};
