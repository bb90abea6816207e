#include "flow/CReadAhead.h"

#include "files/CFileName.h"
#include "flow/CReadHelper.h"

#include <system_error>
#include <thread>

CReadAhead::CReadAhead()
    : m_pPlan(std::make_shared<CReadPlan>())
{
}

CReadAhead::~CReadAhead()
{
    if (m_bStarted) {
        m_pPlan->End(END_MS);
    }
}

void CReadAhead::Expect(const QVector<STExpectedFile>& listFile, bool bAnew)
{
    m_pPlan->Expect(listFile, bAnew);
}

void CReadAhead::SourceOpened(const QString& strPath, quint64 nDevice, int nDescriptor)
{
    if (nDevice == m_nLeftAlone) {
        return;
    }
    if (!m_pPlan->IsKnown(nDevice)) {
        m_pPlan->AddDisk(nDevice, {CReadAdvice::DiskOf(nDevice), CReadAdvice::IsThere(nDescriptor, 0)});
    }
    const std::optional<STAskedFile> stAsked = m_pPlan->Opened(CFileName::Encode(strPath), nDevice);
    m_nLeftAlone = m_pPlan->MayHelp() ? 0 : nDevice;
    if (m_nLeftAlone != 0) {
        return;
    }
    Start();
    if (!stAsked || stAsked->nAdvised == 0) {
        return;
    }
    const ENThere enThere = CReadAdvice::IsThere(nDescriptor, 0);
    if (enThere != ENThere::UNKNOWN) {
        m_pPlan->NoteThere(*stAsked, enThere == ENThere::YES);
    }
    if (stAsked->bWhole) {
        CReadAdvice::StopReadAhead(nDescriptor);
    }
}

void CReadAhead::SourceRead(qint64 nResult, qint64 nUs)
{
    if (m_nLeftAlone == 0) {
        m_pPlan->NoteRead(nResult, nUs);
    }
}

void CReadAhead::Start()
{
    if (m_bStarted) {
        return;
    }
    try {
        std::thread([pPlan = m_pPlan] {
            CReadHelper(pPlan).Run();
            pPlan->NoteEnded();
        }).detach();
        m_bStarted = true;
    } catch (const std::system_error&) {
        m_pPlan->EndDisk();
    }
}
