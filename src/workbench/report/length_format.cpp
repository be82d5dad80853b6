#include "workbench/report/length_format.h"

#include <fmt/format.h>

namespace tiepoint::workbench {

namespace {

/// Fixed decimals, and no minus sign before a zero.
std::string fixed(double value, int decimals) {
  std::string text = fmt::format("{:.{}f}", value, decimals);
  if (text.find_first_not_of("-0.") == std::string::npos && text.front() == '-') text.erase(0, 1);
  return text;
}

}  // namespace

LengthFormat::LengthFormat(Unit unit) {
  if (unit == Unit::unknown) return;
  const bool metres = unit == Unit::metre;
  positions = metres ? "m" : "mm";
  residuals = "mm";
  positionDecimals = metres ? 6 : 3;
  residualDecimals = 3;
  residualFactor = metres ? 1000.0 : 1.0;
  leverLength = metres ? 10.0 : 10'000.0;
  leverName = "10 m";
}

std::string LengthFormat::position(double length) const { return fixed(length, positionDecimals); }

std::string LengthFormat::residual(double length) const { return fixed(length * residualFactor, residualDecimals); }

}  // namespace tiepoint::workbench
