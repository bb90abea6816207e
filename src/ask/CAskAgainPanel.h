#pragma once

#include "ask/CAskPanel.h"

/** Says that the program has ended by itself, and asks whether it is to start again. */
class CAskAgainPanel : public CAskPanel
{
    Q_OBJECT

public:
    /** Exit statuses of the answers. */
    static constexpr int STATUS_AGAIN = 0;
    static constexpr int STATUS_RESTART = 1;

    CAskAgainPanel();

    QWidget* FirstFocus() const override;

private:
    QPushButton* m_pAgainBtn = nullptr;
};
