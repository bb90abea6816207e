#include "pages/CDestinationPanel.h"

#include "copy/CCopyText.h"
#include "pages/CNoticeLine.h"
#include "pages/CSelFileForm.h"

#include <QGuiApplication>
#include <QTimer>

#include <limits>

using namespace std::chrono_literals;

// An ordinary disk answers in much less: its space is there with its name.
static const auto GLANCE = 300ms;
// What a user may be kept waiting.
static const auto PATIENCE = 5s;

CDestinationPanel::CDestinationPanel(CSelFileForm* pForm, CNoticeLine* pNotice, QObject* pParent)
    : QObject(pParent)
    , m_pForm(pForm)
    , m_pNotice(pNotice)
{
    connect(&m_questions, &CDiskQuestions::SignalAnswered, this, &CDestinationPanel::OnAnswered);
}

void CDestinationPanel::Show(const QString& strName, const QString& strPath)
{
    m_strName = strName;
    m_strPath = strPath;
    m_pForm->ShowDisk(strName, !strPath.isEmpty());
    ShowSpace();
    NoticeOther();
}

void CDestinationPanel::Choose(const QString& strName, const QString& strPath)
{
    m_strName = strName;
    m_strPath = strPath;
    m_pForm->ShowName(strName, !strPath.isEmpty());
    ShowSpace();
    Accept();
}

void CDestinationPanel::Refresh() { ShowSpace(); }

void CDestinationPanel::Accept()
{
    m_strKnown = m_strPath;
    NoticeOther();
}

std::optional<STDiskState> CDestinationPanel::Glance(const QString& strPath)
{
    // One that keeps somebody waiting already is not waited for again.
    return m_questions.IsOpen(strPath) ? std::nullopt : m_questions.Ask(strPath, GLANCE);
}

std::optional<STDiskState> CDestinationPanel::Insist(const QString& strName, const QString& strPath)
{
    if (strPath.isEmpty()) {
        return STDiskState();
    }
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const std::optional<STDiskState> state = m_questions.Ask(strPath, PATIENCE);
    QGuiApplication::restoreOverrideCursor();
    if (state) {
        m_pNotice->Clear(ENNotice::NO_ANSWER);
    } else {
        NoticeNoAnswer(strName);
    }
    return state;
}

void CDestinationPanel::Forget(const QString& strPath) { m_questions.Forget(strPath); }

void CDestinationPanel::SetComplete(bool bComplete)
{
    m_bComplete = bComplete;
    TakeRules(m_stRules);
}

void CDestinationPanel::ShowSpace()
{
    m_pNotice->Clear(ENNotice::NO_ANSWER);
    const std::optional<STDiskState> state = m_strPath.isEmpty() ? std::nullopt : Glance(m_strPath);
    if (state) {
        TakeState(*state);
        return;
    }
    TakeRules(STDiskRules());
    if (m_strPath.isEmpty()) {
        return;
    }
    m_pForm->HideSpace();
    QTimer::singleShot(PATIENCE, this, [this, strPath = m_strPath] {
        if (strPath == m_strPath && m_questions.IsOpen(strPath)) {
            NoticeNoAnswer(m_strName);
        }
    });
}

void CDestinationPanel::OnAnswered(const QString& strPath, const STDiskState& state)
{
    if (strPath == m_strPath) {
        TakeState(state);
        m_pNotice->Clear(ENNotice::NO_ANSWER);
    }
    emit SignalAnswered(strPath, state);
}

void CDestinationPanel::TakeState(const STDiskState& state)
{
    m_pForm->ShowSpace(state.nFreeBytes, state.nTotalBytes);
    TakeRules(state.stRules);
}

void CDestinationPanel::TakeRules(const STDiskRules& stRules)
{
    m_stRules = stRules;
    const bool bLimited = stRules.nMostFileBytes < std::numeric_limits<qint64>::max();
    m_pNotice->Set(ENNotice::LARGE_FILES,
                   m_bComplete && bLimited ? tr("%1 cannot hold a file of %2 or more.")
                                                 .arg(m_pNotice->Shortened(m_strName),
                                                      CCopyText::Bytes(stRules.nMostFileBytes + 1))
                                           : QString());
}

// Without a disk the prompt stands, and the next one that comes is another one.
void CDestinationPanel::NoticeOther()
{
    if (m_strKnown.isEmpty()) {
        m_strKnown = m_strPath;
    }
    const bool bOther = !m_strPath.isEmpty() && m_strPath != m_strKnown;
    m_pNotice->Set(ENNotice::DESTINATION,
                   bOther ? tr("The destination is now %1").arg(m_pNotice->Shortened(m_strName)) : QString());
}

void CDestinationPanel::NoticeNoAnswer(const QString& strName)
{
    m_pNotice->Set(ENNotice::NO_ANSWER, m_pNotice->NoAnswerText(strName));
}
