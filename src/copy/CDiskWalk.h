#pragma once

#include "copy/CDiskVisitor.h"
#include "copy/CTickedItems.h"

#include <QVector>

/**
 * Goes over the disk below what is ticked and hands each entry to a visitor: all
 * names, hidden ones included, each folder once, no other file system. Links are not
 * followed, unless they lead to something of the same volume that is not ticked itself.
 * Memory is needed for the folders, not for the files. One object, one walk, one thread.
 */
class CDiskWalk
{
public:
    CDiskWalk(QVector<STTickedItem> listItem, CDiskVisitor& visitor);

    /** Walks to the end, or until the visitor does not go on. */
    void Walk();

private:
    const QVector<STTickedItem> m_listItem;
    CDiskVisitor& m_visitor;
};
