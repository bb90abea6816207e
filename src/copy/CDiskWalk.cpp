#include "copy/CDiskWalk.h"

#include <utility>

CDiskWalk::CDiskWalk(QVector<STTickedItem> listItem, CDiskVisitor& visitor)
    : m_listItem(std::move(listItem))
    , m_visitor(visitor)
{
}

void CDiskWalk::Walk() { }
