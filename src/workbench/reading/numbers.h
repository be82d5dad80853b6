// Numbers as surveyors' programs write them.
#pragma once

#include <string_view>

#include "workbench/values/file_reading.h"
#include "workbench/values/reading_fault.h"

namespace tiepoint::workbench {

/// Measurements lie between these; what doesn't is a slip, and the module couldn't read it exactly.
inline constexpr double farthestNumber = 1e200;
inline constexpr double closestNumber = 1e-200;

struct ReadNumber {
  bool isNumber = false;
  /// Of `notANumber`, `thousandsSeparator`, `notFinite` and `outOfRange`, when it is no number.
  ReadingFaultKind fault = ReadingFaultKind::notANumber;
  /// The double that is nearest to the text.
  double value = 0.0;
  /// The number is written with a decimal comma.
  bool hasComma = false;
  /// It could as well be a whole number with a comma between its thousands: 1,234.
  bool couldBeThousands = false;
};

/// A sign, digits, the mark, digits, an exponent: `-12.5e3`. With the point either side may lack its
/// digits (`.5`, `5.`), with the comma neither.
ReadNumber readNumber(std::string_view text, DecimalMark decimal);

}  // namespace tiepoint::workbench
