#include "workbench/report/matching_text.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

std::string contradictionText(const Finding& f) {
  const std::string where =
      f.groups.size() < 2 ? ""
                          : fmt::format(": a triangle of {} has the sides of several in {}", f.groups[0], f.groups[1]);
  return fmt::format(
      "equal triangles contradict one another{}, and one contradiction voids the whole matching; the "
      "layout repeats itself, or {:g} is too wide or too narrow a tolerance",
      where, f.limit);
}

std::string conflictText(const Finding& f) {
  const char* how = f.value > 0.0 ? "lie on one spot, as points between them lie" : "lie";
  return fmt::format(
      "the points {} and {} {} within {:g} of one another, but their names come from the "
      "files and differ; one such spot voids the whole matching",
      f.points.at(0), f.points.at(1), how, f.limit);
}

/// Of all points together.
std::string wholeText(const Finding& f) {
  switch (f.kind) {
    case FindingKind::fewPoints:
      return fmt::format("there are {} points; {} at least are needed", f.count, f.atLeast);
    case FindingKind::oneGroup:
      return "there is one group only, and nothing to compare it with";
    case FindingKind::nothingUnnamed:
      return "every point has a name already";
    case FindingKind::noUsableTriangle:
      return fmt::format("fewer than two groups have a triangle whose sides all differ by more than {:g}", f.limit);
    case FindingKind::noEqualTriangles:
      return fmt::format("no two groups have triangles whose sides agree within {:g}", f.limit);
    case FindingKind::onlyNamed:
      return fmt::format("no triangle with an unnamed corner has the sides of one in another group within {:g}",
                         f.limit);
    case FindingKind::contradiction:
      return contradictionText(f);
    case FindingKind::conflict:
      return conflictText(f);
    case FindingKind::notSolved:
      return "no group is registered yet: closeness needs names that join some groups";
    case FindingKind::namedByFiles:
      return "every point of the registered groups has a name from its file";
    case FindingKind::nothingClose:
      return fmt::format("no point without a name lies within {:g} of another", f.limit);
    default:
      return "";
  }
}

/// In the points of some groups.
std::string pointsText(const Finding& f) {
  switch (f.kind) {
    case FindingKind::notFinite:
      return fmt::format(
          "{}: points with coordinates that aren't finite numbers; while they are there, no point is named because it "
          "lies on the spot of another",
          joined(f.groups));
    case FindingKind::twinPoints:
      return fmt::format(
          "{}: two points lie within {:g} of one another, and triangles with the one can't be told from triangles with "
          "the other; keep one of the two",
          joined(f.groups), f.limit);
    case FindingKind::nearOneAnother:
    case FindingKind::farApart:
      return fmt::format(
          "{}: the points lie too {} for a limit of {:g} drawing units (--match-limit); is their unit the one that "
          "--unit says?",
          joined(f.groups), f.kind == FindingKind::farApart ? "far apart" : "near one another", f.limit);
    default:
      return "";
  }
}

std::string ambiguousText(const Finding& f) {
  return fmt::format(
      "{}: several ways of laying a station onto the others explain {} points each, as the layout is symmetric; name "
      "some of these points, measure one more target, or leave stations out (--exclude)",
      joined(f.groups), f.count);
}

/// Of stations that weren't joined.
std::string stationText(const Finding& f) {
  const std::string names = joined(f.groups);
  switch (f.kind) {
    case FindingKind::stationFewPoints:
      return fmt::format("{}: fewer than 3 points to use", names);
    case FindingKind::stationAlone:
      return fmt::format("{}: no other station has 3 points to use", names);
    case FindingKind::stationNoEqualTriangles:
      return fmt::format("{}: no triangle that another station has too, with sides that agree within {:g}", names,
                         f.limit);
    case FindingKind::stationMirrored:
      return fmt::format(
          "{}: the mirror image fits another station in {} points; exchange two columns or turn the sign of one", names,
          f.count);
    case FindingKind::stationAmbiguous:
      return ambiguousText(f);
    case FindingKind::stationThreePoints:
      return fmt::format("{}: only three points fit the others, and chance may do that among so many", names);
    case FindingKind::stationAboveLimit:
      return fmt::format(
          "{}: whatever is named leaves a discrepancy of {:g} at least, above the limit of {:g} (--match-limit)", names,
          f.value, f.limit);
    case FindingKind::stationContradiction:
      return fmt::format(
          "{}: triangles that other stations have too contradict one another at every tolerance up to {:g}", names,
          f.limit);
    default:
      return "";
  }
}

/// Of stations that were.
std::string joinedText(const Finding& f) {
  switch (f.kind) {
    case FindingKind::openLoop:
      return fmt::format(
          "{} and {} share more points than could be named with discrepancies below the limit of {:g} (--match-limit)",
          f.groups.at(0), f.groups.at(1), f.limit);
    case FindingKind::weakLink:
      return fmt::format(
          "{}: joined by three points alone, as chance would do in one of {:.0f} surveys like this; one more shared "
          "target would make it certain",
          joined(f.groups), 1.0 / f.value);
    case FindingKind::solveAboveLimit:
      return fmt::format("the solve leaves a discrepancy of {:g}, above the limit of {:g} (--match-limit)", f.value,
                         f.limit);
    default:
      return "";
  }
}

}  // namespace

std::string matchingText(const Finding& finding) {
  if (finding.kind <= FindingKind::nothingClose) return wholeText(finding);
  if (finding.kind <= FindingKind::farApart) return pointsText(finding);
  if (finding.kind <= FindingKind::stationContradiction) return stationText(finding);
  return joinedText(finding);
}

}  // namespace tiepoint::workbench
