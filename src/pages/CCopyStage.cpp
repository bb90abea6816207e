#include "pages/CCopyStage.h"

bool CCopyStage::Begin()
{
    if (IsWorkerBusy()) {
        m_enWorker = ENWorker::OF_EARLIER_COPY;
        m_enStage = ENCopyStage::WAITING;
        return false;
    }
    StartWorker();
    return true;
}

bool CCopyStage::Finish()
{
    if (IsWorkerOfEarlierCopy()) {
        return false;
    }
    if (m_enStage != ENCopyStage::REMOVED) {
        m_enStage = ENCopyStage::ENDED;
    }
    return true;
}

bool CCopyStage::WorkerEnded()
{
    m_enWorker = ENWorker::FREE;
    if (m_enStage == ENCopyStage::WAITING) {
        StartWorker();
        return true;
    }
    if (m_enStage == ENCopyStage::COPYING) {
        m_enStage = ENCopyStage::REFUSED;
    }
    return false;
}

bool CCopyStage::LeaveWorker()
{
    if (m_enStage == ENCopyStage::COPYING) {
        m_enStage = ENCopyStage::ENDED;
    }
    return WorkerEnded();
}

bool CCopyStage::Stop()
{
    if (m_enStage != ENCopyStage::WAITING && m_enStage != ENCopyStage::REFUSED) {
        return false;
    }
    m_enStage = ENCopyStage::ENDED;
    return true;
}

bool CCopyStage::Remove()
{
    if (m_enStage == ENCopyStage::REMOVED) {
        return false;
    }
    m_enStage = ENCopyStage::REMOVED;
    return true;
}

ENCopyStage CCopyStage::Stage() const { return m_enStage; }

bool CCopyStage::IsWorkerBusy() const { return m_enWorker != ENWorker::FREE; }

bool CCopyStage::IsWorkerOfEarlierCopy() const { return m_enWorker == ENWorker::OF_EARLIER_COPY; }

void CCopyStage::StartWorker()
{
    m_enWorker = ENWorker::OF_THIS_COPY;
    m_enStage = ENCopyStage::COPYING;
}
