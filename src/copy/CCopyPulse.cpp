#include "copy/CCopyPulse.h"

#include "log/CClock.h"

void CCopyPulse::Begin(const QString& strDest)
{
    m_nFiles = 0;
    m_nBytes = 0;
    BeginItem(strDest);
    BeginStep(ENCopyStep::WRITING);
}

void CCopyPulse::End() { m_enStep = ENCopyStep::IDLE; }

void CCopyPulse::BeginItem(const QString& strPath)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_strPath = strPath;
}

void CCopyPulse::BeginStep(ENCopyStep enStep)
{
    // The time first: who sees the step after a pause must not count from before it.
    m_nLastMs = CClock::SteadyMs();
    m_enStep = enStep;
}

void CCopyPulse::AddBytes(qint64 nBytes) { m_nBytes += nBytes; }

void CCopyPulse::AddFile() { ++m_nFiles; }

void CCopyPulse::TakeFile() { --m_nFiles; }

qint64 CCopyPulse::SinceProgressMs() const
{
    const ENCopyStep enStep = m_enStep;
    if (enStep == ENCopyStep::IDLE || enStep == ENCopyStep::PAUSED) {
        return 0;
    }
    return qMax<qint64>(0, CClock::SteadyMs() - m_nLastMs);
}

QString CCopyPulse::Path() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_strPath;
}

ENCopyStep CCopyPulse::Step() const { return m_enStep; }

qint64 CCopyPulse::Files() const { return m_nFiles; }

qint64 CCopyPulse::Bytes() const { return m_nBytes; }
