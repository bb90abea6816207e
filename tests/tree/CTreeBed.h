#pragma once

#include "files/CFileNameCodec.h"
#include "pages/CPageTree.h"
#include "support/CTempTree.h"
#include "tree/CFileTreeView.h"

#include <QApplication>
#include <QFile>
#include <QTest>

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
        QFile file(":/res/TarnwickMacPE.qss");
        QVERIFY(file.open(QIODevice::ReadOnly));
        qApp->setStyleSheet(QString::fromUtf8(file.readAll()));
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

    /** The index of an entry below the test's own volume; "." is the volume. */
    QModelIndex At(const QString& strPath) const
    {
        QModelIndex index = m_pModel->index(m_pModel->rowCount() - 1, 0);
        if (strPath == ".") {
            return index;
        }
        for (const QString& strPart : strPath.split('/')) {
            const QModelIndexList listFound
                = m_pModel->match(m_pModel->index(0, 0, index), Qt::DisplayRole, strPart, 1,
                                  Qt::MatchExactly | Qt::MatchCaseSensitive);
            index = listFound.value(0);
        }
        return index;
    }

    CDirNode* Node(const QString& strPath) const { return m_pModel->nodeFromIndex(At(strPath)); }

    CDirModel* m_pModel = nullptr;
    std::unique_ptr<CTempTree> m_pTree;
    std::unique_ptr<CFileTreeView> m_pView;
};
