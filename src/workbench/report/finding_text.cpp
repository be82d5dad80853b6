#include "workbench/report/finding_text.h"

#include <fmt/format.h>

#include "workbench/report/line_fault_text.h"
#include "workbench/report/matching_text.h"
#include "workbench/report/plain_text.h"
#include "workbench/values/link_report.h"

namespace tiepoint::workbench {

namespace {

/// A warning stays one line.
constexpr std::size_t maxNames = 5;

const std::string& first(const std::vector<std::string>& names) {
  static const std::string none;
  return names.empty() ? none : names.front();
}

std::string readingStoppedText(const Finding& f) {
  return fmt::format("{}: reading stopped after {}: line {} of {} {}", f.path, plural(f.count, "point"), f.fault->line,
                     f.atLeast, lineFaultText(*f.fault));
}

std::string clusterKeptText(const Finding& f) {
  return fmt::format("cluster {} is kept; left out: {}", f.count, joined(f.groups));
}

std::string notConnectedText(const Finding& f) {
  std::string components;
  for (const std::vector<std::string>& component : f.components)
    components += (components.empty() ? "" : " | ") + joined(component);
  return fmt::format(
      "the groups aren't connected: {}; the iterative method goes on, but these sets share fewer than {} names "
      "with one another, so how they lie to one another means little",
      components, namesThatLink);
}

std::string otherUnitText(const Finding& f) {
  const std::string times = f.value < 100.0 ? fmt::format("{:.3g}", f.value) : fmt::format("{:.0f}", f.value);
  return fmt::format(
      "the targets that {} and {} share are {} times as far apart in {}; are both files in the same unit?",
      f.groups.at(0), f.groups.at(1), times, f.groups.at(f.count));
}

std::string oddWeightsText(const Finding& f) {
  return fmt::format("{}: {} in use ha{} a weight outside 0 to 1; a point with a weight below 0 takes part in no fit",
                     first(f.groups), plural(f.count, "point"), f.count == 1 ? "s" : "ve");
}

std::string controlNotSeenText(const Finding& f) {
  const bool isOne = f.points.size() == 1;
  return fmt::format("{}no station measured the control {} {}; {} spelled as in the stations' files?",
                     f.path.empty() ? "" : f.path + ": ", isOne ? "target" : "targets", joined(f.points, maxNames),
                     isOne ? "is it" : "are they");
}

/// Of files that were read.
std::string fileText(const Finding& f) {
  switch (f.kind) {
    case FindingKind::markInName:
      // Where several files have it, these join all the same.
      return fmt::format("{}: a byte-order mark became part of the first point's name{}; save the file without it",
                         f.path, f.count > 1 ? "" : ", which joins nothing now");
    case FindingKind::namesInUtf8:
      return fmt::format(
          "{}: names are taken as windows-1251, but the file is UTF-8: they join all the same, and "
          "are shown wrongly; save the file as windows-1251",
          f.path);
    case FindingKind::groupNameBeyondNarrow:
      return fmt::format(
          "{}: the group's name has characters outside windows-1251, which the module shows as "
          "\"?\"; rename the file",
          f.path);
    case FindingKind::readingStopped:
      return readingStoppedText(f);
    case FindingKind::groupThereAlready:
      return fmt::format("{}: the drawing has a group \"{}\" already; the file was not taken in", f.path,
                         first(f.groups));
    default:
      return "";
  }
}

/// Of the groups that were solved, and how.
std::string solveText(const Finding& f) {
  switch (f.kind) {
    case FindingKind::clusterKept:
      return clusterKeptText(f);
    case FindingKind::clusterNotNeeded:
      return "the groups are connected as they are; --keep-cluster changed nothing";
    case FindingKind::notConnected:
      return notConnectedText(f);
    case FindingKind::baseTakesNoPart:
      return fmt::format("{} isn't used as a base; see the points not used", first(f.groups));
    case FindingKind::groupNotRegistered:
      return fmt::format("{} isn't registered; see the points not used", first(f.groups));
    case FindingKind::nameTwice:
      return fmt::format(
          "{} has {} more than once; only the last point of each name is used in the fit: remove the others from the "
          "file",
          first(f.groups), joined(f.points, maxNames));
    case FindingKind::pointsOnOneLine:
      return fmt::format("the points of {} in use lie on one line, so its rotation about that line is undetermined",
                         first(f.groups));
    case FindingKind::oddWeights:
      return oddWeightsText(f);
    case FindingKind::otherUnit:
      return otherUnitText(f);
    case FindingKind::mirrorImages:
      return fmt::format("{} and {} fit only as mirror images; are two columns swapped in one of the files?",
                         f.groups.at(0), f.groups.at(1));
    case FindingKind::controlNotSeen:
      return controlNotSeenText(f);
    case FindingKind::courseUnknown:
      return "the report doesn't say how the iterations ended, so it isn't known whether they converged";
    case FindingKind::notConverged:
      return fmt::format(
          "not converged: stopped by the limit of {} iterations; see the summary, raise --max-iterations, or use "
          "the pairwise method",
          f.count);
    default:
      return "";
  }
}

}  // namespace

std::string findingText(const Finding& finding) {
  if (finding.kind <= FindingKind::groupThereAlready) return fileText(finding);
  if (finding.kind <= FindingKind::notConverged) return solveText(finding);
  return matchingText(finding);
}

}  // namespace tiepoint::workbench
