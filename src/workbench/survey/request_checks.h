// What a request alone shows to be wrong.
#pragma once

#include "workbench/values/registration_request.h"

namespace tiepoint::workbench {

/// Throws Refused of the class `usage`: parts that don't go together, lengths and weights that can't be.
void checkRequest(const RegistrationRequest& request);

}  // namespace tiepoint::workbench
