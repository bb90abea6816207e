#include "copy/CDamagedFiles.h"

#include <utility>

CDamagedFiles::CDamagedFiles(CCopyWork& work, Done fnDone)
    : m_work(work)
    , m_fnDone(std::move(fnDone))
{
}

void CDamagedFiles::Add(const STDamagedFile& stFile) { m_listFile.append(stFile); }

void CDamagedFiles::Finish()
{
    for (const STDamagedFile& stFile : qAsConst(m_listFile)) {
        m_fnDone(stFile, stFile.stOutcome);
    }
    m_listFile.clear();
}
