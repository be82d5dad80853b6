#include "workbench/report/refusal_text.h"

#include <fmt/format.h>

#include "workbench/report/file_refusal_text.h"
#include "workbench/report/line_fault_text.h"
#include "workbench/report/plain_text.h"
#include "workbench/report/suggestion.h"
#include "workbench/values/adjustment_request.h"

namespace tiepoint::workbench {

namespace {

/// The field's name and what it holds, as the user wrote them.
std::string asGiven(const Refusal& r, FieldNames nameOf) { return fmt::format("{} {}", nameOf(r.field), r.given); }

/// The same of a choice; a weight and a sigma may stand in a file too.
std::string choiceOf(const Refusal& r, FieldNames nameOf) {
  const bool isOfFile = r.field == Field::weight || r.field == Field::sigma;
  return isOfFile ? fmt::format("{} {}", fieldKey(r.field), r.given) : asGiven(r, nameOf);
}

/// Which values of the other field a field goes with.
const char* valuesFor(Field field) {
  switch (field) {
    case Field::sideTolerance:
    case Field::minSideDifference:
      return "triangles or auto";
    case Field::closeness:
      return "distance or auto";
    case Field::namingLimit:
      return "auto";
    case Field::matrixFormat:
      return "FOLDER";
    case Field::reportKind:
      return "FILE";
    case Field::maxIterations:
    case Field::convergence:
      return "iterative";
    default:
      return "adjust";
  }
}

std::string lengthText(const Refusal& r, FieldNames nameOf) {
  if (r.field == Field::maxIterations) return fmt::format("{} 0: must be at least 1", nameOf(r.field));
  const std::string ofWhat = r.given.empty() ? "" : r.given + "=";
  if (r.field == Field::sigma && r.value > 0.0) {
    return fmt::format("{} {}{}: no standard deviation; it must lie between {:g} and {:g}", nameOf(r.field), ofWhat,
                       *r.value, smallestSigma, largestSigma);
  }
  return fmt::format("{} {}{}: must be a length {}0, in drawing units", nameOf(r.field), ofWhat, r.value.value_or(0.0),
                     r.kind == RefusalKind::notALength ? "of at least " : "above ");
}

std::string clusterText(const Refusal& r, FieldNames nameOf) {
  if (r.kind == RefusalKind::noClusters)
    return fmt::format("{} {}: no two groups are connected", nameOf(r.field), r.given);
  return fmt::format("{} {}: the clusters are 0 to {}", nameOf(r.field), r.given, r.count);
}

/// Unknown names, and values that can't be used.
std::string choiceText(const Refusal& r, FieldNames nameOf) {
  switch (r.kind) {
    case RefusalKind::noSuchGroup:
      return fmt::format("{}: there is no group \"{}\"{}", choiceOf(r, nameOf), r.name, suggestion(r.name, r.known));
    case RefusalKind::noSuchPoint:
      return fmt::format("{}: group \"{}\" has no point \"{}\"{}", choiceOf(r, nameOf), r.name, r.point,
                         suggestion(r.point, r.known));
    case RefusalKind::weightOutOfRange:
      return fmt::format("{}: the weight must be a number from 0 to 1", asGiven(r, nameOf));
    case RefusalKind::goesWith:
      return fmt::format("{} needs {} {}", nameOf(r.field), nameOf(r.otherField), valuesFor(r.field));
    case RefusalKind::notALength:
    case RefusalKind::notAboveZero:
      return lengthText(r, nameOf);
    case RefusalKind::notAShare:
      return fmt::format("{} {}: must be between 0 and 1", nameOf(r.field), r.value.value_or(0.0));
    case RefusalKind::noSuchCluster:
    case RefusalKind::noClusters:
      return clusterText(r, nameOf);
    case RefusalKind::groupTwice:
      return fmt::format("{} and {}: both become the group \"{}\"; rename one of them", r.given, r.other, r.name);
    case RefusalKind::cloudTwice:
      return fmt::format("{}: this cloud is given twice", asGiven(r, nameOf));
    default:
      return "";
  }
}

/// Of the request as a whole.
std::string requestText(const Refusal& r, FieldNames nameOf) {
  switch (r.kind) {
    case RefusalKind::emptyPath:
      return "a file name is empty; is a shell variable unset?";
    case RefusalKind::nothingToRegister:
      return fmt::format("nothing to register; name files of reference points, or a drawing with {} FILE",
                         nameOf(Field::document));
    case RefusalKind::drawingEmpty:
      return "the drawing holds no reference points; name files to import";
    case RefusalKind::keepClusterNeedsPairwise:
      return fmt::format(
          "{} needs {} adjust or pairwise; the iterative method registers all groups: leave some out with {} GROUP",
          nameOf(Field::keepCluster), nameOf(Field::method), nameOf(Field::exclude));
    case RefusalKind::profileLimits:
      return fmt::format(
          "the profile limits the run to {} iterations and a criterion of {}; both must be above 0 ({} and {} override "
          "them)",
          r.count, r.value.value_or(0.0), nameOf(Field::maxIterations), nameOf(Field::convergence));
    case RefusalKind::inputUnitGivesMetres:
      return fmt::format("{} {}: the points come out in metres; leave --unit mm out", nameOf(r.field), r.given);
    case RefusalKind::inputUnitLeavesClouds:
      return fmt::format(
          "{} {}: clouds aren't converted, and would move by metres; give the points in the clouds' unit",
          nameOf(r.field), r.given);
    case RefusalKind::movedNeedsApply:
      return fmt::format("{} needs {}: it writes the clouds that were moved", nameOf(Field::moved),
                         nameOf(Field::apply));
    default:
      return choiceText(r, nameOf);
  }
}

std::string notFiniteText(const Refusal& r, FieldNames nameOf) {
  return fmt::format(
      "point {} of {} has a coordinate that isn't a finite number; correct it, or leave the point out with {} {}:{}",
      r.point, r.name, nameOf(Field::exclude), r.name, r.point);
}

std::string storeText(const Refusal& r, FieldNames nameOf) {
  return fmt::format("{}: {}", asGiven(r, nameOf),
                     r.kind == RefusalKind::storeNameTaken
                         ? "the drawing already has a group of this name; choose another"
                         : "a group can't have this name (none of <>/\\*|?:\". and no device name)");
}

/// What the data don't allow.
std::string dataText(const Refusal& r, FieldNames nameOf) {
  switch (r.kind) {
    case RefusalKind::notFinite:
      return notFiniteText(r, nameOf);
    case RefusalKind::notRigid:
      return fmt::format("the transformation of {} isn't a rigid motion; are its coordinates far too large?", r.name);
    case RefusalKind::storeNameTaken:
    case RefusalKind::storeNameForbidden:
      return storeText(r, nameOf);
    case RefusalKind::cloudTaken:
      return fmt::format("the drawing already has a cloud {}, from {}", r.name, r.other);
    case RefusalKind::cloudMovedBefore:
      return fmt::format("cloud {} was moved before; --force moves it again", r.name);
    case RefusalKind::cancelled:
      return "cancelled";
    default:
      return r.cause;
  }
}

}  // namespace

std::string refusalText(const Refusal& refusal, FieldNames nameOf) {
  if (refusal.kind <= RefusalKind::cloudTwice) return requestText(refusal, nameOf);
  if (refusal.kind <= RefusalKind::noTemporaryFolder) return fileRefusalText(refusal, nameOf);
  return dataText(refusal, nameOf);
}

}  // namespace tiepoint::workbench
