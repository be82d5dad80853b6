#include "workbench/values/point_reason.h"

namespace tiepoint::workbench {

const char* reasonKey(Reason reason) {
  switch (reason) {
    case Reason::excluded:
      return "excluded";
    case Reason::weightZero:
      return "weight-zero";
    case Reason::unnamed:
      return "unnamed";
    case Reason::loneName:
      return "lone-name";
    case Reason::partnersOut:
      return "partners-out";
    case Reason::thinGroup:
      return "thin-group";
    case Reason::baseNotShared:
      return "base-not-shared";
    case Reason::thinBase:
      return "thin-base";
    case Reason::nothingToJoin:
      return "nothing-to-join";
    case Reason::nameAgain:
      return "name-again";
    case Reason::negativeWeight:
      return "negative-weight";
  }
  return "";
}

}  // namespace tiepoint::workbench
