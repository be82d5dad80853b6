// The host's door to a registration session.
#pragma once

#include "module/export.h"
#include "session/i_multi_registrator.h"

namespace ZOR::reg {

/// A new session that the caller owns and ends by deleting it; null when there is no memory for it
/// and the new handler returns, std::bad_alloc when there is no handler.
TSL_REGISTRATION_EXPORT iMultiRegistrator* GetMultiRegistrator();

}  // namespace ZOR::reg
