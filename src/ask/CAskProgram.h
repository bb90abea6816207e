#pragma once

#include "ask/STAskAnswer.h"
#include "ask/STAskRequest.h"

#include <memory>

class CAskPanel;

/** The program that asks one question on the whole screen and ends with the answer. Main thread. */
class CAskProgram
{
public:
    /** Exit status for a command line that cannot be understood; a line on the standard error says why. */
    static constexpr int STATUS_USAGE = 2;

    /** Exit status when there is no screen to ask on, or nobody to tell the answer to. */
    static constexpr int STATUS_FAILED = 4;

    /** Asks what the command line says; the exit status. */
    static int Run(int& nArgc, char** ppArgv);

    /** The panel of a question; the language has to be installed before. */
    static std::unique_ptr<CAskPanel> MakePanel(const STAskRequest& stRequest);
};
