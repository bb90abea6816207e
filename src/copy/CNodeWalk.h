#pragma once

#include "copy/CCopyWalk.h"
#include "copy/STCopyOutcome.h"
#include "flow/STExpectedFile.h"

#include <QVector>

#include <optional>

class CCopyWork;
class CDirNode;

/**
 * The walk through the ticked nodes: what is not in the tree is not copied, and
 * said. Once a stop is noticed the nodes are the GUI's again, so every look at one
 * comes after a look at the status.
 */
class CNodeWalk : public CCopyWalk
{
public:
    CNodeWalk(CDirNode& root, CCopyWork& work, QString strDest);

    QStringList Sources() override;
    void Walk() override;

    /** Copies the ticked children of the node, at any depth. */
    void CopyBelow(CDirNode& node);

private:
    /** A place among the children of a node. */
    struct STPlace
    {
        CDirNode* pNode = nullptr;
        int nRow = 0;
    };

    void CopyChild(CDirNode& child);
    void TellAhead();
    bool IsAhead() const;
    void BeginToTell();
    QVector<STExpectedFile> NextFiles(int nMost);
    std::optional<STCopyReason> LookAtFolder(const CDirNode& node);
    void ReportUnlisted(const CDirNode& node);
    void ReportBranch(CDirNode& node, const STCopyReason& stReason);

    CDirNode& m_root;
    CCopyWork& m_work;
    const QString m_strDest;
    QVector<STPlace> m_listAt; // the way to what is copied
    QVector<STPlace> m_listNext; // the way to what is told next, each row behind the one that was gone into
    bool m_bAllTold = false;
};
