#include "ask/CAskAgainPanel.h"

#include <QPushButton>

CAskAgainPanel::CAskAgainPanel()
    : CAskPanel(tr("Tarnwick stopped unexpectedly"))
{
    AddText(
        tr("Files that were copied before are still on the disk. If a copy was running, start again and copy "
           "everything once more."));
    QPushButton* pRestartBtn = AddButton(tr("Restart the computer"), false);
    m_pAgainBtn = AddButton(tr("Start again"), true);
    connect(pRestartBtn, &QPushButton::clicked, this, [this] { Answer({STATUS_RESTART, {}}); });
    connect(m_pAgainBtn, &QPushButton::clicked, this, [this] { Answer({STATUS_AGAIN, {}}); });
}

QWidget* CAskAgainPanel::FirstFocus() const { return m_pAgainBtn; }
