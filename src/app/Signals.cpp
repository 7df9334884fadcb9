#include "app/Signals.h"

#include <csignal>

void app::ignoreSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
