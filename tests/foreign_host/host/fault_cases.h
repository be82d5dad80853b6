// Hosts that fail once.
#pragma once

#include <string>

#include "host.h"
#include "options.h"

namespace foreign {

/// Spoils the first call of the module, then the second, and so on to the last, each in a survey of
/// its own from the loading of the module to its end. The module may do less after that, but it
/// must end, hold to the host's rules and leave nothing behind; the next survey must have the
/// figures of a host that never failed. Says on standard error how many calls there were and how
/// many of them the module survived.
std::string playFaults(Host& host, const Options& options, Fault fault);

}  // namespace foreign
