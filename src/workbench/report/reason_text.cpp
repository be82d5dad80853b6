#include "workbench/report/reason_text.h"

namespace tiepoint::workbench {

const char* reasonText(Reason reason) {
  switch (reason) {
    case Reason::excluded:
      return "excluded";
    case Reason::weightZero:
      return "weight 0";
    case Reason::unnamed:
      return "no name yet (\"?\")";
    case Reason::loneName:
      return "no other group has this name";
    case Reason::partnersOut:
      return "the other groups that have this name are out";
    case Reason::thinGroup:
      return "the group is left with fewer than 3 shared points";
    case Reason::baseNotShared:
      return "base point that no other group has";
    case Reason::thinBase:
      return "the base is left with fewer than 3 shared points";
    case Reason::nothingToJoin:
      return "there is no second group to join it with";
  }
  return "";
}

}  // namespace tiepoint::workbench
