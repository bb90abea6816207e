#pragma once

#include "files/CFileNameCodec.h"
#include "pages/CPageTree.h"
#include "support/CTempTree.h"
#include "support/Widgets.h"
#include "tree/CFileTreeAccess.h"
#include "tree/CFileTreeView.h"
#include "tree/TreeRows.h"

#include <QApplication>

#include <memory>

/**
 * What the tests of the tree view stand on: a view in the program's dress over a
 * temporary tree. The model is one for the whole process, so every test leaves it empty.
 */
class CTreeBed : public QObject
{
protected:
    /** Once, before all tests. */
    void Prepare()
    {
        CFileNameCodec::Install();
        CFileTreeAccess::Install();
        qApp->setStyleSheet(ProgramSheet());
        m_pModel = CDirModel::GetInstence();
    }

    /** Before each test. */
    void Make()
    {
        m_pTree = std::make_unique<CTempTree>();
        m_pView = std::make_unique<CFileTreeView>();
        m_pView->resize(500, 400);
    }

    /** After each test. */
    void Clear()
    {
        m_pView.reset();
        CPageTree::Clear();
        m_pTree.reset();
    }

    /** Makes the entries the test's volume, shows the view and opens the volume. */
    void Open(const QStringList& listEntry = {})
    {
        m_pTree->Fill(listEntry);
        m_pView->Parse({m_pTree->Path()});
        QVERIFY(ShowActive(m_pView.get()));
        m_pView->expand(At("."));
        m_pView->scrollTo(At("."), QAbstractItemView::PositionAtTop);
    }

    /** The index of an entry below the test's own volume; "." is the volume. */
    QModelIndex At(const QString& strPath) const
    {
        return RowBelow(m_pModel->index(m_pModel->rowCount() - 1, 0), strPath);
    }

    CDirNode* Node(const QString& strPath) const { return m_pModel->nodeFromIndex(At(strPath)); }

    /** A click with the left button, nX pixels from the left edge of a row. */
    void Click(const QString& strPath, int nX)
    {
        const QRect rect = m_pView->visualRect(At(strPath));
        QTest::mouseClick(m_pView->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(rect.left() + nX, rect.center().y()));
    }

    void Press(Qt::Key enKey) { QTest::keyClick(m_pView.get(), enKey); }

    CDirModel* m_pModel = nullptr;
    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CFileTreeView> m_pView;
};
