#include "ask/CAskEndPanel.h"

#include <QLabel>
#include <QPushButton>

static const int SECOND_MS = 1000;

CAskEndPanel::CAskEndPanel(bool bReadsMedium)
    : CAskPanel(tr("You can unplug your disks now"))
{
    AddText(tr("Tarnwick has ended, and nothing is written to a disk any more."));
    if (bReadsMedium) {
        AddText(tr("Leave the stick that you started from in its place until the screen goes dark."));
    }
    m_pSecondsLab = AddText(QString());
    m_pSecondsLab->setObjectName(QStringLiteral("m_pSecondsLab"));
    QPushButton* pOffBtn = AddButton(tr("Power off"), false);
    m_pRestartBtn = AddButton(tr("Restart"), true);
    connect(pOffBtn, &QPushButton::clicked, this, [this] { emit SignalAnswer({STATUS_POWER_OFF, {}}); });
    connect(m_pRestartBtn, &QPushButton::clicked, this, [this] { emit SignalAnswer({STATUS_RESTART, {}}); });
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
    emit SignalAnswer({STATUS_RESTART, {}});
}
