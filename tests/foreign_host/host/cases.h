// The kinds of host that this program can be.
#pragma once

#include <string>

#include "options.h"

namespace foreign {

/// Plays the case of `options.caseName`. Gives the figures of its last session; throws
/// std::runtime_error that says what went wrong, or that there is no such case.
std::string playCase(const Options& options);

}  // namespace foreign
