#pragma once

#include "ask/CAskPanel.h"
#include "ask/STAskRequest.h"

class CChoiceButton;

/** Asks whether a disk on USB that holds a system is to be rescued from or copied to. */
class CAskSourcePanel : public CAskPanel
{
    Q_OBJECT

public:
    /** Exit statuses of the answers. */
    static constexpr int STATUS_RESCUE = 0;
    static constexpr int STATUS_COPY_TO = 1;

    explicit CAskSourcePanel(const STAskRequest& stRequest);

    QWidget* FirstFocus() const override;

private:
    CChoiceButton* AddChoice(const QString& strTitle, const QString& strMeaning, int nStatus);

    QWidget* m_pRescueBtn = nullptr;
};
