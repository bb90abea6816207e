#pragma once

#include "copy/CCopyWalk.h"
#include "copy/CDiskVisitor.h"
#include "copy/CTickedItems.h"

#include <QVector>

/**
 * The walk that copies everything in what is ticked: over the disk, whatever the
 * tree knows of it, each entry to a name that the destination takes, with what belongs
 * to it. Reads no node after it was made.
 */
class CDiskCopy : public CCopyWalk, private CDiskVisitor
{
public:
    CDiskCopy(const CDirNode& root, CCopyWork& work, QString strDest);

    QStringList Sources() override;
    void Walk() override;

private:
    bool GoesOn() override;
    void BeginItem(const STTickedItem& stItem) override;
    bool BeginFolder(const STDiskEntry& stFolder) override;
    void EndFolder(const STDiskEntry& stFolder) override;
    void File(const STDiskEntry& stFile) override;
    void Link(const STDiskEntry& stLink, const QByteArray& baTarget) override;
    void LeftOut(const QString& strPath, const STCopyReason& stReason) override;

    CCopyWork& m_work;
    const QString m_strDest;
    const QVector<STTickedItem> m_listItem;
};
