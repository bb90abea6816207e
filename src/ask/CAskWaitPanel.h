#pragma once

#include "ask/CAskPanel.h"

/** Says that the disks are being looked for; answers nothing. */
class CAskWaitPanel : public CAskPanel
{
    Q_OBJECT

public:
    CAskWaitPanel();
};
