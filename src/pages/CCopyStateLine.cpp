#include "pages/CCopyStateLine.h"

#include "copy/CCopyText.h"

#include <QLocale>

static const double BYTES_A_MEGABYTE = 1e6;
static const double EXACT_BELOW = 10; // megabytes a second

void CCopyStateLine::Begin() { *this = CCopyStateLine(); }

void CCopyStateLine::Stop() { m_bStopping = true; }

void CCopyStateLine::Look(const STCopySample& stSample, qint64 nNowMs)
{
    m_stSample = stSample;
    TakeSpeed(stSample, nNowMs);
    // A flush is one call to the system that may take long on a slow disk that is well.
    if (stSample.bFlushing) {
        m_enState = ENCopyState::FLUSHING;
    } else if (stSample.nSinceProgressMs >= NO_ANSWER_MS) {
        m_enState = ENCopyState::NO_ANSWER;
    } else if (m_bStopping) {
        m_enState = ENCopyState::STOPPING;
    } else if (!m_listPoint.isEmpty() && nNowMs - m_listPoint.first().nMs >= LEAST_MS) {
        m_enState = ENCopyState::FIGURES;
    } else if (!stSample.bPaused) {
        m_enState = ENCopyState::NOTHING;
    }
}

// The time of a pause is no part of the speed, so it begins anew afterwards.
void CCopyStateLine::TakeSpeed(const STCopySample& stSample, qint64 nNowMs)
{
    if (stSample.bPaused) {
        m_listPoint.clear();
        return;
    }
    m_listPoint.append({nNowMs, stSample.nBytes});
    while (m_listPoint.size() > 2 && nNowMs - m_listPoint.at(1).nMs >= WINDOW_MS) {
        m_listPoint.removeFirst();
    }
}

ENCopyState CCopyStateLine::State() const { return m_enState; }

QString CCopyStateLine::FiguresText() const
{
    if (m_listPoint.size() < 2) {
        return tr("%1 so far").arg(CCopyText::Files(m_stSample.nFiles));
    }
    const STPoint& stFirst = m_listPoint.first();
    const STPoint& stLast = m_listPoint.last();
    const double dSpeed
        = double(stLast.nBytes - stFirst.nBytes) / BYTES_A_MEGABYTE * 1000 / double(stLast.nMs - stFirst.nMs);
    const QString strSpeed = QLocale().toString(dSpeed, 'f', dSpeed < EXACT_BELOW ? 1 : 0);
    return tr("%1, %2").arg(CCopyText::Files(m_stSample.nFiles), tr("%1 MB/s").arg(strSpeed));
}

QString CCopyStateLine::Text() const
{
    switch (m_enState) {
    case ENCopyState::NOTHING:
        return QString();
    case ENCopyState::FIGURES:
        return FiguresText();
    case ENCopyState::STOPPING:
        return tr("The copy is being stopped…");
    case ENCopyState::FLUSHING:
        return tr("The last bytes are being written to the disk…");
    case ENCopyState::NO_ANSWER:
        break;
    }
    return tr("The disk has not answered for %1 seconds: %2")
        .arg(QLocale().toString(m_stSample.nSinceProgressMs / 1000), m_stSample.strPath);
}
