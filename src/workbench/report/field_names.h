// What the parts of a request are called.
#pragma once

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

/// By which option of `tiepoint register` a field is given, such as "--exclude".
const char* optionOf(Field field);

/// A face's own names for fields.
using FieldNames = const char* (*)(Field);

}  // namespace tiepoint::workbench
