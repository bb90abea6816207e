#include "ask/CAskEndPanel.h"

#include "ask/STAskRequest.h"

#include <QLabel>
#include <QPushButton>

static const int SECOND_MS = 1000;

static QString TitleOf(const STAskRequest& stRequest)
{
    return stRequest.bUnsaved ? CAskEndPanel::tr("A disk did not answer")
                              : CAskEndPanel::tr("You can unplug your disks now");
}

CAskEndPanel::CAskEndPanel(const STAskRequest& stRequest)
    : CAskPanel(TitleOf(stRequest))
{
    AddText(stRequest.bUnsaved
                ? tr("Not everything may be on it yet. Wait while its light flashes, and check the copied "
                     "files on another computer.")
                : tr("Tarnwick has ended, and nothing is written to a disk any more."));
    if (stRequest.bReadsMedium) {
        AddText(tr("Leave the stick that you started from in its place until the screen goes dark."));
    }
    QPushButton* pOffBtn = AddButton(tr("Power off"), false);
    m_pRestartBtn = AddButton(tr("Restart"), true);
    connect(pOffBtn, &QPushButton::clicked, this, [this] { Answer({STATUS_POWER_OFF, {}}); });
    connect(m_pRestartBtn, &QPushButton::clicked, this, [this] { Answer({STATUS_RESTART, {}}); });
    // A restart takes from a slow disk what it has not written yet: only a person decides on that.
    if (!stRequest.bUnsaved) {
        CountDown();
    }
}

void CAskEndPanel::CountDown()
{
    m_pSecondsLab = AddText(QString());
    m_pSecondsLab->setObjectName(QStringLiteral("m_pSecondsLab"));
    connect(&m_timer, &QTimer::timeout, this, &CAskEndPanel::Tick);
    m_timer.start(SECOND_MS);
    TellSeconds();
}

QWidget* CAskEndPanel::FirstFocus() const { return m_pRestartBtn; }

void CAskEndPanel::TellSeconds()
{
    m_pSecondsLab->setText(tr("The computer restarts by itself. Seconds left: %1").arg(m_nLeft));
}

void CAskEndPanel::Tick()
{
    --m_nLeft;
    if (m_nLeft > 0) {
        TellSeconds();
        return;
    }
    m_timer.stop();
    Answer({STATUS_RESTART, {}});
}
