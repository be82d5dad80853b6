#include "workbench/report/matching_text.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"
#include "workbench/values/link_report.h"

namespace tiepoint::workbench {

namespace {

std::string contradictionText(const Finding& f) {
  const std::string where =
      f.groups.size() < 2 ? "" : fmt::format(": a triangle of {} matches several in {}", f.groups[0], f.groups[1]);
  return fmt::format(
      "congruent triangles contradict one another{}, and one contradiction voids the whole matching; the "
      "layout repeats itself, or a tolerance of {:g} is too wide or too tight",
      where, f.limit);
}

std::string conflictText(const Finding& f) {
  const char* how = f.value > 0.0 ? "are chained by points in between that are all" : "are";
  return fmt::format(
      "the points {} and {} {} within {:g} of one another, but the files give them different names; one such "
      "conflict voids the whole matching",
      f.points.at(0), f.points.at(1), how, f.limit);
}

/// Of all points together.
std::string wholeText(const Finding& f) {
  switch (f.kind) {
    case FindingKind::fewPoints:
      return fmt::format("there are {} points; at least {} are needed", f.count, f.atLeast);
    case FindingKind::oneGroup:
      return "there is only one group, and nothing to compare it with";
    case FindingKind::nothingUnnamed:
      return "every point has a name already";
    case FindingKind::noUsableTriangle:
      return fmt::format("fewer than two groups have a triangle whose sides all differ by more than {:g}", f.limit);
    case FindingKind::noEqualTriangles:
      return fmt::format("no two groups have triangles whose sides agree within {:g}", f.limit);
    case FindingKind::onlyNamed:
      return fmt::format("no triangle with an unnamed corner matches one in another group within {:g}", f.limit);
    case FindingKind::contradiction:
      return contradictionText(f);
    case FindingKind::conflict:
      return conflictText(f);
    case FindingKind::notSolved:
      return "no group is registered yet; matching by distance needs names that join some of the groups";
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
          "{}: some coordinates aren't finite numbers; as long as they are there, no point is named for being close "
          "to another",
          joined(f.groups));
    case FindingKind::twinPoints:
      return fmt::format(
          "{}: two points lie within {:g} of one another, so triangles with one can't be told from triangles with the "
          "other; keep only one of them",
          joined(f.groups), f.limit);
    case FindingKind::nearOneAnother:
    case FindingKind::farApart:
      return fmt::format(
          "{}: the points are too {} for a limit of {:g} drawing units (--match-limit); are they in the unit that "
          "--unit gives?",
          joined(f.groups), f.kind == FindingKind::farApart ? "far apart" : "close together", f.limit);
    default:
      return "";
  }
}

/// Names settle a symmetric layout once they fix a station by themselves: three, not all on one line.
std::string namingAdvice(std::size_t shared) {
  if (shared == 0) return fmt::format("name {} of these points in the files, not all on one line", namesThatLink);
  const std::size_t lacking = shared < namesThatLink ? namesThatLink - shared : 1;
  return fmt::format(
      "the {} shared by the files {} settle which is right: name {} more in the files, off the line "
      "through the others",
      plural(shared, "name"), shared == 1 ? "doesn't" : "don't", lacking);
}

std::string ambiguousText(const Finding& f) {
  return fmt::format(
      "{}: {} the others in several ways, each matching {} points, as the layout is symmetric; {}, or measure one more "
      "target off the symmetry, or leave stations out (--exclude)",
      joined(f.groups), f.groups.size() == 1 ? "the station fits" : "each fits", f.count, namingAdvice(f.atLeast));
}

/// Of stations that weren't joined.
std::string stationText(const Finding& f) {
  const std::string names = joined(f.groups);
  switch (f.kind) {
    case FindingKind::stationFewPoints:
      return fmt::format("{}: fewer than {} usable points", names, namesThatLink);
    case FindingKind::stationAlone:
      return fmt::format("{}: no other station has {} usable points", names, namesThatLink);
    case FindingKind::stationNoEqualTriangles:
      return fmt::format("{}: no triangle matches one of another station within {:g}", names, f.limit);
    case FindingKind::stationMirrored:
      return fmt::format(
          "{}: only the mirror image fits another station, in {} points; swap two columns or change the sign of one",
          names, f.count);
    case FindingKind::stationAmbiguous:
      return ambiguousText(f);
    case FindingKind::stationThreePoints:
      return fmt::format("{}: only three points fit the other stations, and among so many points that may be chance",
                         names);
    case FindingKind::stationAboveLimit:
      return fmt::format(
          "{}: every naming leaves a discrepancy of at least {:g}, above the limit of {:g} (--match-limit)", names,
          f.value, f.limit);
    case FindingKind::stationContradiction:
      return fmt::format(
          "{}: the triangles that match other stations contradict one another at every tolerance up to {:g}", names,
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
          "{} and {} share more points than could be named with discrepancies within the limit of {:g} (--match-limit)",
          f.groups.at(0), f.groups.at(1), f.limit);
    case FindingKind::weakLink:
      return fmt::format(
          "{}: joined by only three points; chance alone would do this in about 1 in {:.0f} such surveys; one more "
          "shared target would make it certain",
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
