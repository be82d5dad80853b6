#include "workbench/reading/units.h"

namespace tiepoint::workbench {

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
