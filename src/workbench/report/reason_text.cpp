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
      return "the other groups with this name aren't used";
    case Reason::thinGroup:
      return "the group has fewer than 3 shared points left";
    case Reason::baseNotShared:
      return "base point that no other group has";
    case Reason::thinBase:
      return "the base has fewer than 3 shared points left";
    case Reason::nothingToJoin:
      return "no second group to join it with";
    case Reason::nameAgain:
      return "the group has this name again, further down";
    case Reason::negativeWeight:
      return "weight below 0";
  }
  return "";
}

}  // namespace tiepoint::workbench
