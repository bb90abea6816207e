#include "copy/CDamagedFiles.h"

#include "copy/CCopyWork.h"
#include "copy/CSpotCopy.h"

#include <utility>

CDamagedFiles::CDamagedFiles(CCopyWork& work, Done fnDone, const STDamageRules& stRules)
    : m_work(work)
    , m_fnDone(std::move(fnDone))
    , m_stRules(stRules)
{
}

void CDamagedFiles::Add(const STDamagedFile& stFile)
{
    m_work.StepBegins(ENCopyStep::WRITING);
    const STAside stAside = {stFile, CCopyPlatform::GetEntryState(stFile.strTarget)};
    if (m_listAside.count() < m_stRules.nMostAside) {
        m_listAside.append(stAside);
    } else {
        FinishOne(stAside);
    }
}

void CDamagedFiles::Finish()
{
    for (const STAside& stAside : qAsConst(m_listAside)) {
        FinishOne(stAside);
    }
    m_listAside.clear();
}

void CDamagedFiles::FinishOne(const STAside& stAside)
{
    if (m_work.IsStopped()) {
        m_fnDone(stAside.stFile, stAside.stFile.stOutcome);
        return;
    }
    m_work.ItemBegins(stAside.stFile.stOutcome.strPath);
    const qint64 nMs = qMin(m_stRules.nFileMs, m_stRules.nAllMs - m_nBadMs);
    CSpotCopy copy(m_work, stAside.stFile, stAside.stTarget,
                   {nMs, m_bDiskInDoubt, m_nBadMs < 2 * m_stRules.nAllMs});
    const STCopyOutcome stOutcome = copy.Finish();
    m_nBadMs += copy.BadMs();
    m_bDiskInDoubt = copy.IsDiskInDoubt();
    m_fnDone(stAside.stFile, stOutcome);
}
