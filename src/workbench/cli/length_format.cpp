#include "workbench/cli/length_format.h"

#include <fmt/format.h>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {

LengthFormat::LengthFormat(const std::string& unit) {
  if (unit.empty()) return;
  if (unit != "m" && unit != "mm") {
    throw CommandError(ExitStatus::usage, fmt::format("--unit {}: the unit of the files is m or mm", unit));
  }
  const bool metres = unit == "m";
  positions = metres ? "m" : "mm";
  residuals = "mm";
  positionDecimals = metres ? 6 : 3;
  residualDecimals = 3;
  residualFactor = metres ? 1000.0 : 1.0;
}

std::string LengthFormat::position(double length) const { return fmt::format("{:.{}f}", length, positionDecimals); }

std::string LengthFormat::residual(double length) const {
  return fmt::format("{:.{}f}", length * residualFactor, residualDecimals);
}

}  // namespace tiepoint::workbench::cli
