#include "flow/CWriteSpeed.h"

static const double KNOWN_MS = 100; // what was seen in less time tells too little
static const double MEMORY_MS = 3000;

void CWriteSpeed::Done(qint64 nBytes, qint64 nNowMs)
{
    m_dBytes += double(nBytes);
    m_dMs += double(nNowMs - m_nSinceMs);
    m_nSinceMs = nNowMs;
    if (m_dMs > MEMORY_MS) {
        m_dBytes *= MEMORY_MS / m_dMs;
        m_dMs = MEMORY_MS;
    }
}

std::optional<qint64> CWriteSpeed::BytesIn(qint64 nMs) const
{
    if (m_dMs < KNOWN_MS) {
        return std::nullopt;
    }
    return qint64(m_dBytes / m_dMs * double(nMs));
}
