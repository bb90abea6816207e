#include "ask/CAskSourcePanel.h"

#include "ask/CChoiceButton.h"

#include <QVBoxLayout>

CAskSourcePanel::CAskSourcePanel(const STAskRequest& stRequest)
    : CAskPanel(tr("What is this USB disk for?"))
{
    AddDisk(stRequest, stRequest.strSystems.isEmpty() ? QString() : tr("Holds %1").arg(stRequest.strSystems));
    m_pRescueBtn
        = AddChoice(tr("Rescue files from it"),
                    tr("Its files are listed to be copied. Nothing on it is changed."), STATUS_RESCUE);
    AddChoice(tr("Copy files to it"), tr("Files of other disks can be copied to it, beside what it holds."),
              STATUS_COPY_TO);
}

QWidget* CAskSourcePanel::FirstFocus() const { return m_pRescueBtn; }

CChoiceButton* CAskSourcePanel::AddChoice(const QString& strTitle, const QString& strMeaning, int nStatus)
{
    auto* pButton = new CChoiceButton(strTitle, strMeaning);
    connect(pButton, &QPushButton::clicked, this, [this, nStatus] { Answer({nStatus, {}}); });
    Body()->addWidget(pButton);
    return pButton;
}
