#include "copy/CDamagedFiles.h"

CDamagedFiles::CDamagedFiles(CCopyControl& control)
    : m_control(control)
{
}

void CDamagedFiles::Add(const STDamagedFile& stFile) { m_listFile.append(stFile); }

void CDamagedFiles::Finish(const std::function<void(const STDamagedFile&, const STCopyOutcome&)>& fnDone)
{
    for (const STDamagedFile& stFile : qAsConst(m_listFile)) {
        fnDone(stFile, stFile.stOutcome);
    }
    m_listFile.clear();
}
