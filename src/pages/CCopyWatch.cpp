#include "pages/CCopyWatch.h"

#include "copy/CCopyFileThread.h"
#include "kit/CSkinMgr.h"
#include "kit/SkinColor.h"
#include "log/CClock.h"
#include "pages/CElidedLabel.h"

#include <QAccessible>
#include <QColor>

static const int LOOK_MS = 500;
static const int LOOK_AT_END_MS = 100;

CCopyWatch::CCopyWatch(CElidedLabel* pLabel)
    : QObject(pLabel)
    , m_pLabel(pLabel)
{
    connect(&m_timer, &QTimer::timeout, this, &CCopyWatch::Look);
}

void CCopyWatch::Begin(const CCopyFileThread* pWorker)
{
    m_line.Begin();
    m_bShown = true;
    m_nStopMs.reset();
    Start(pWorker, LOOK_MS);
}

void CCopyWatch::Stop()
{
    m_line.Stop();
    m_nStopMs = CClock::SteadyMs();
    Start(m_pWorker, LOOK_AT_END_MS);
}

void CCopyWatch::Await(const CCopyFileThread* pWorker)
{
    m_bShown = false;
    m_nStopMs = CClock::SteadyMs();
    Start(pWorker, LOOK_AT_END_MS);
}

void CCopyWatch::Start(const CCopyFileThread* pWorker, int nIntervalMs)
{
    m_pWorker = pWorker;
    m_timer.start(nIntervalMs);
    Look();
}

void CCopyWatch::End()
{
    m_timer.stop();
    m_bShown = false;
    m_line.Begin();
    ShowLine(*m_pLabel, m_line);
}

bool CCopyWatch::IsGivenUp(qint64 nStopMs, qint64 nSinceProgressMs, bool bFlushing)
{
    return nStopMs >= STOP_MS && nSinceProgressMs >= (bFlushing ? FLUSH_MS : STOP_MS);
}

void CCopyWatch::Look()
{
    if (!m_pWorker || !m_pWorker->isRunning()) {
        return; // its end is on its way
    }
    const ENCopyStep enStep = m_pWorker->CurrentStep();
    STCopySample stSample;
    stSample.nFiles = m_pWorker->FilesDone();
    stSample.nBytes = m_pWorker->BytesDone();
    stSample.nSinceProgressMs = m_pWorker->SinceProgressMs();
    stSample.bFlushing = enStep == ENCopyStep::FLUSHING;
    stSample.bPaused = enStep == ENCopyStep::PAUSED;
    stSample.strPath = m_pWorker->CurrentPath();
    Show(stSample);
    // One that is paused ends as soon as somebody lets it, whatever its disk does.
    if (!m_nStopMs || m_pWorker->GetCopyStatus() != COPY_STATUS_STOP) {
        return;
    }
    // The user has seen that the last bytes take their time; an earlier copy has none any more.
    const bool bFlushing = stSample.bFlushing && m_bShown;
    if (IsGivenUp(CClock::SteadyMs() - *m_nStopMs, stSample.nSinceProgressMs, bFlushing)) {
        m_timer.stop();
        emit SignalGivenUp();
    }
}

void CCopyWatch::Show(const STCopySample& stSample)
{
    if (!m_bShown) {
        return;
    }
    const ENCopyState enBefore = m_line.State();
    m_line.Look(stSample, CClock::SteadyMs());
    if (m_line.State() == enBefore) {
        m_pLabel->setText(m_line.Text());
        return;
    }
    ShowLine(*m_pLabel, m_line);
    if (m_line.State() > ENCopyState::FIGURES) {
        QAccessibleEvent event(m_pLabel, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

void CCopyWatch::ShowLine(CElidedLabel& label, const CCopyStateLine& line)
{
    label.setText(line.Text());
    // An empty one would be read out as a text without words.
    label.setVisible(!label.text().isEmpty());
    const bool bWarning = line.State() == ENCopyState::NO_ANSWER;
    label.setStyleSheet(bWarning ? QStringLiteral("color: %1;").arg(QColor(SkinColor::WARNING).name())
                                 : CSkinMgr::GetColorStyle(CSkinMgr::COLOR_STYLE_GREY_120));
}
