// Hosts whose documents come and go while the module is at work.
#pragma once

#include <string>

#include "host.h"
#include "options.h"

namespace foreign {

/// The active document is closed while the import command's dialog is open: without a session, with
/// one, and with a second document that is active afterwards. The figures of a survey after that.
std::string playCloseInDialog(Host& host, const Options& options);

/// A second document comes in during a session, and either of them goes. The figures of the session
/// that saw it.
std::string playTwoDocuments(Host& host, const Options& options);

}  // namespace foreign
