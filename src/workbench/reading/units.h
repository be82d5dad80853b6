// Units of length of survey files.
#pragma once

#include <optional>
#include <string>

#include "workbench/reading/file_reading.h"

namespace tiepoint::workbench {

/// By its short name: m, mm, ft (the international foot, 0.3048 m) or usft (the US survey foot,
/// 1200/3937 m).
std::optional<LengthUnit> lengthUnitByName(const std::string& name);
const char* lengthUnitName(LengthUnit unit);

/// A length in that unit, in metres.
double metresOf(double length, LengthUnit unit);

}  // namespace tiepoint::workbench
