// Why points take no part, in words.
#pragma once

#include "workbench/values/point_reason.h"

namespace tiepoint::workbench {

/// A clause, such as `no other group has this name`.
const char* reasonText(Reason reason);

}  // namespace tiepoint::workbench
