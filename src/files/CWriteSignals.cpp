#include "files/CWriteSignals.h"

#include <csignal>

void CWriteSignals::Ignore()
{
    std::signal(SIGXFSZ, SIG_IGN);
    std::signal(SIGPIPE, SIG_IGN);
}
