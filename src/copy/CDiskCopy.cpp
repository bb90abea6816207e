#include "copy/CDiskCopy.h"

#include "copy/CCopyWork.h"
#include "copy/CDiskWalk.h"

#include <utility>

CDiskCopy::CDiskCopy(const CDirNode& root, CCopyWork& work, QString strDest)
    : m_work(work)
    , m_strDest(std::move(strDest))
    , m_listItem(CTickedItems::Of(root, [&work] { return work.IsStopped(); }))
{
}

QStringList CDiskCopy::Sources() { return CTickedItems::Volumes(m_listItem); }

void CDiskCopy::Walk() { CDiskWalk(m_listItem, *this).Walk(); }

bool CDiskCopy::GoesOn() { return !m_work.IsStopped(); }

void CDiskCopy::BeginItem(const STTickedItem& /*stItem*/) { }

bool CDiskCopy::BeginFolder(const STDiskEntry& /*stFolder*/) { return true; }

void CDiskCopy::EndFolder(const STDiskEntry& /*stFolder*/) { }

void CDiskCopy::File(const STDiskEntry& /*stFile*/) { }

void CDiskCopy::Link(const STDiskEntry& /*stLink*/, const QByteArray& /*baTarget*/) { }

void CDiskCopy::LeftOut(const QString& strPath, const STCopyReason& stReason)
{
    m_work.BookProblem(STCopyOutcome::Missing(strPath, stReason));
}
