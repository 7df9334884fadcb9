#include "app/Signals.h"

#include <csignal>

namespace app
{

void ignoreSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace app
