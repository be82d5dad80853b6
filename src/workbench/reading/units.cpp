#include "workbench/reading/units.h"

#include <array>

namespace tiepoint::workbench {

namespace {

struct UnitInfo {
  LengthUnit unit;
  const char* name;
};
constexpr std::array<UnitInfo, 4> units{{{LengthUnit::metre, "m"},
                                         {LengthUnit::millimetre, "mm"},
                                         {LengthUnit::foot, "ft"},
                                         {LengthUnit::usSurveyFoot, "usft"}}};

}  // namespace

std::optional<LengthUnit> lengthUnitByName(const std::string& name) {
  for (const UnitInfo& info : units) {
    if (name == info.name) return info.unit;
  }
  return std::nullopt;
}

const char* lengthUnitName(LengthUnit unit) {
  for (const UnitInfo& info : units) {
    if (unit == info.unit) return info.name;
  }
  return "";
}

double metresOf(double length, LengthUnit unit) {
  switch (unit) {
    case LengthUnit::metre:
      return length;
    case LengthUnit::millimetre:
      return length / 1000.0;
    case LengthUnit::foot:
      return length * 0.3048;
    case LengthUnit::usSurveyFoot:
      return length * 1200.0 / 3937.0;
  }
  return length;
}

}  // namespace tiepoint::workbench
