#include "copy/CDiskSize.h"

#include "copy/CDiskWalk.h"

#include <limits>

CDiskSize::CDiskSize(const STDiskRules& stRules, const STWatch& stWatch)
    : m_stRules(stRules)
    , m_stWatch(stWatch)
{
}

STDiskSize CDiskSize::Of(const QVector<STTickedItem>& listItem, const STDiskRules& stRules,
                         const STWatch& stWatch)
{
    CDiskSize size(stRules, stWatch);
    CDiskWalk(listItem, size).Walk();
    return size.m_stSize;
}

/** Files with holes may claim more than a disk can hold. */
static void Add(qint64& nSum, qint64 nBytes)
{
    nSum += qMin(nBytes, std::numeric_limits<qint64>::max() - nSum);
}

bool CDiskSize::GoesOn() { return m_stWatch.fnGoesOn(); }

void CDiskSize::BeginItem(const STTickedItem& stItem) { m_stWatch.fnVolume(stItem.strVolume); }

bool CDiskSize::BeginFolder(const STDiskEntry& /*stFolder*/)
{
    Add(m_stSize.nRoom, m_stRules.nBlockBytes);
    return true;
}

void CDiskSize::EndFolder(const STDiskEntry& /*stFolder*/) { }

void CDiskSize::File(const STDiskEntry& stFile)
{
    if (stFile.stState.bOnlyInCloud) {
        return;
    }
    const qint64 nBytes = qMax<qint64>(0, stFile.stState.nSize);
    if (nBytes > m_stRules.nMostFileBytes) {
        ++m_stSize.nTooLarge;
        return;
    }
    const qint64 nRest = nBytes % m_stRules.nBlockBytes;
    Add(m_stSize.nBytes, nBytes);
    Add(m_stSize.nRoom, nBytes);
    Add(m_stSize.nRoom, nRest == 0 ? 0 : m_stRules.nBlockBytes - nRest);
}

void CDiskSize::Link(const STDiskEntry& /*stLink*/, const QByteArray& /*baTarget*/)
{
    Add(m_stSize.nRoom, m_stRules.nBlockBytes);
}

void CDiskSize::LeftOut(const QString& /*strPath*/, const STCopyReason& /*stReason*/) { }
