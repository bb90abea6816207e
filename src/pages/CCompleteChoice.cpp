#include "pages/CCompleteChoice.h"

#include "log/CLogTarnwick.h"
#include "pages/CNoticeLine.h"
#include "tree/CDirModel.h"

#include <QCheckBox>

static void Log(bool bOn)
{
    g_TarnwickLog.LogExt(bOn ? QStringLiteral("Complete rescue: on")
                             : QStringLiteral("Complete rescue: off"));
}

CCompleteChoice::CCompleteChoice(QCheckBox* pBox, CNoticeLine* pNotice, QObject* pParent)
    : QObject(pParent)
    , m_pBox(pBox)
{
    // A boot medium that is made for whole disks sets it.
    pBox->setChecked(qgetenv("TARNWICK_COMPLETE_RESCUE") == "1");
    if (pBox->isChecked()) {
        Log(true);
    }
    CDirModel::GetInstence()->SetComplete(pBox->isChecked());
    connect(pBox, &QCheckBox::toggled, this, &CCompleteChoice::OnToggled);
    connect(pNotice, &CNoticeLine::SignalLink, this, [this](ENNotice enNotice) {
        if (enNotice == ENNotice::UNLISTED) {
            OnLink();
        }
    });
}

bool CCompleteChoice::IsOn() const { return m_pBox->isChecked(); }

void CCompleteChoice::OnToggled(bool bOn)
{
    Log(bOn);
    CDirModel::GetInstence()->SetComplete(bOn);
    emit SignalChanged(bOn);
}

void CCompleteChoice::OnLink()
{
    if (!m_pBox->isEnabled()) {
        return; // a worker has the tree
    }
    // The link goes with its notice, and hands the focus on to what is next, which is the box.
    m_pBox->setChecked(true);
}
