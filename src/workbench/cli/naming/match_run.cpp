#include "workbench/cli/naming/match_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <tuple>
#include <utility>

#include "workbench/cli/exit_status.h"
#include "workbench/cli/naming/point_reasons.h"
#include "workbench/cli/spinner.h"
#include "workbench/geometry/station_shapes.h"
#include "workbench/naming/naming_search.h"
#include "workbench/naming/naming_session.h"
#include "workbench/report/plain_text.h"
#include "workbench/session/solved_transforms.h"

namespace tiepoint::workbench::cli {

using namespace ZOR::reg;

namespace {

/// The largest discrepancy that auto accepts unless it is told another: 2 cm, ten times the noise of
/// a good scanner's targets. Metres.
constexpr double usualLimit = 0.02;
constexpr double usualMinSideDifference = 0.1;
constexpr double noteworthyRisk = 1e-4;

double metre(const RegisterOptions& options) { return options.unit == "mm" ? 1000.0 : 1.0; }

NamingLimits limitsOf(const RegisterOptions& options) {
  NamingLimits limits;
  limits.discrepancy = options.matchLimit.value_or(usualLimit * metre(options));
  limits.side = options.sideTolerance.value_or(limits.discrepancy);
  limits.minSideDifference = options.minSideDifference.value_or(usualMinSideDifference * metre(options));
  limits.closeness = options.tolerance.value_or(limits.discrepancy);
  return limits;
}

void countNames(const SessionState& state, MatchReport& report) {
  for (const SessionPoint& point : state.points) {
    report.named += point.record.named && point.record.autoNamed ? 1 : 0;
    report.unnamed += point.record.named ? 0 : 1;
  }
}

void matchTriangles(NamingSession& naming, const RegisterOptions& options, MatchReport& report) {
  NamingStep step;
  step.groups = naming.groups();
  naming.driven().operations().getTriangleMatchTolerances(step.tolerance, step.minSideDifference);
  step.tolerance = options.sideTolerance.value_or(step.tolerance);
  step.minSideDifference = options.minSideDifference.value_or(step.minSideDifference);
  const SessionState before = naming.state();
  step.named = naming.matchByTriangles(step.groups, step.tolerance, step.minSideDifference);
  if (step.named == 0) {
    report.reasons.push_back(whyNoTriangles(before, step.groups, step.tolerance, step.minSideDifference));
  }
  report.steps.push_back(step);
}

std::map<GroupId, OdGeMatrix3d> motionsOf(Workbench& workbench, NamingSession& naming) {
  const GroupIdSet& groups = naming.groups();
  return solvedMotions(workbench, naming.driven().operations(), {groups.begin(), groups.end()});
}

/// The groups that can be joined by the names that there are; which, the session decides.
void matchCloseness(Workbench& workbench, NamingSession& naming, const RegisterOptions& options, MatchReport& report) {
  DrivenSession& session = naming.driven();
  NamingStep step;
  step.kind = NamingKind::closeness;
  session.operations().getMatchDistanceTolerance(step.tolerance);
  step.tolerance = options.tolerance.value_or(step.tolerance);
  const SessionState before = naming.state();
  std::map<GroupId, OdGeMatrix3d> motions;
  if (session.registerPairwise()) {
    motions = motionsOf(workbench, naming);
    step.named = naming.matchByCloseness(step.tolerance);
  }
  if (step.named == 0) report.reasons.push_back(whyNothingClose(before, motions, step.tolerance));
  report.steps.push_back(step);
  naming.finish();
}

std::string namesOf(const SessionState& state, const std::vector<UnplacedStation>& stations) {
  std::vector<std::string> names;
  for (const UnplacedStation& station : stations) names.push_back(state.group(station.group).name);
  return joined(names);
}

/// Stations that all have the trouble of the first.
MatchReason reasonFor(const SessionState& state, const std::vector<UnplacedStation>& stations,
                      const NamingLimits& limits) {
  const std::string names = namesOf(state, stations);
  const UnplacedStation& station = stations.front();
  switch (station.trouble) {
    case StationTrouble::tooFewPoints:
      return {"too-few-points", fmt::format("{}: fewer than 3 points to use", names)};
    case StationTrouble::alone:
      return {"one-group", fmt::format("{}: no other station has 3 points to use", names)};
    case StationTrouble::noEqualTriangle:
      return {"no-equal-triangles",
              fmt::format("{}: no triangle that another station has too, with sides that agree within {:g}", names,
                          limits.side)};
    case StationTrouble::mirrored:
      return {"mirrored", fmt::format("{}: the mirror image fits another station in {} points; exchange two columns or "
                                      "turn the sign of one",
                                      names, station.points)};
    case StationTrouble::ambiguous:
      return {
          "ambiguous",
          fmt::format("{}: several ways of laying a station onto the others explain {} points each, as the layout is "
                      "symmetric; name some of these points, measure one more target, or leave stations out "
                      "(--exclude)",
                      names, station.points)};
    case StationTrouble::threePoints:
      return {"three-points",
              fmt::format("{}: only three points fit the others, and chance may do that among so many", names)};
    case StationTrouble::aboveLimit:
      return {"above-limit", fmt::format("{}: whatever is named leaves a discrepancy of {:g} at least, above the limit "
                                         "of {:g} (--match-limit)",
                                         names, station.discrepancy, limits.discrepancy)};
    case StationTrouble::contradiction:
      return {"contradiction", fmt::format("{}: triangles that other stations have too contradict one another at every "
                                           "tolerance up to {:g}",
                                           names, limits.side)};
  }
  return {};
}

/// One reason for all stations that have it.
void addStationReasons(const SessionState& state, const NamingPlan& plan, MatchReport& report) {
  std::map<std::tuple<StationTrouble, std::size_t, double>, std::vector<UnplacedStation>> alike;
  for (const UnplacedStation& station : plan.unplaced) {
    alike[{station.trouble, station.points, station.discrepancy}].push_back(station);
  }
  const NamingLimits& limits = *report.limits;
  for (const auto& [trouble, stations] : alike) report.reasons.push_back(reasonFor(state, stations, limits));
  for (const auto& [first, second] : plan.openLoops) {
    report.reasons.push_back(
        {"open-loop", fmt::format("{} and {} share more points than could be named with discrepancies below the limit "
                                  "of {:g} (--match-limit)",
                                  state.group(first).name, state.group(second).name, limits.discrepancy)});
  }
}

/// Three points don't check one another; where chance was small it isn't worth a word.
void addRisks(const SessionState& state, const NamingPlan& plan, MatchReport& report) {
  for (const auto& [group, risk] : plan.risks) {
    if (risk < noteworthyRisk) continue;
    report.reasons.push_back(
        {"weak-link", fmt::format("{}: joined by three points alone, as chance would do in one of {:.0f} surveys like "
                                  "this; one more shared target would make it certain",
                                  state.group(group).name, 1.0 / risk)});
  }
}

/// Twins matter only where they may have kept a station out, or all but three of its points.
void addReasons(const SessionState& state, const NamingPlan& plan, MatchReport& report) {
  const auto add = [&](const std::vector<MatchReason>& reasons) {
    report.reasons.insert(report.reasons.end(), reasons.begin(), reasons.end());
  };
  const bool isShort = !plan.unplaced.empty() || !plan.risks.empty();
  const Stations stations = isShort ? stationsOf(state) : Stations();
  if (!plan.unplaced.empty()) add(spanReasons(state, stations, *report.limits));
  addStationReasons(state, plan, report);
  add(notFiniteReasons(state));
  if (isShort) add(twinReasons(state, stations, report.limits->side));
}

bool isAmbiguous(const NamingPlan& plan) {
  return std::any_of(plan.unplaced.begin(), plan.unplaced.end(),
                     [](const UnplacedStation& station) { return station.trouble == StationTrouble::ambiguous; });
}

void searchAndMatch(Workbench& workbench, NamingSession& naming, const RegisterOptions& options, MatchReport& report) {
  report.limits = limitsOf(options);
  const auto isNamed = [](const SessionPoint& point) { return point.record.named; };
  const auto& points = naming.state().points;
  if (std::all_of(points.begin(), points.end(), isNamed)) {
    report.reasons.push_back({"nothing-unnamed", "every point has a name already"});
    return;
  }
  NamingPlan plan;
  {
    const Spinner spinner(stderr, "looking for names", options.quiet);
    plan = searchNames(workbench, naming.state(), *report.limits);
  }
  addReasons(naming.state(), plan, report);
  report.isRefused = plan.placed.empty() || isAmbiguous(plan);
  if (report.isRefused) return;
  addRisks(naming.state(), plan, report);
  naming.become(std::move(**plan.named));
  naming.finish();
  report.steps = plan.steps;
}

void requireLength(const std::optional<double>& value, const char* option, bool zeroToo) {
  if (!value || (std::isfinite(*value) && (*value > 0.0 || (zeroToo && *value >= 0.0)))) return;
  throw CommandError(ExitStatus::usage, fmt::format("{} {}: a length {}0, in drawing units", option, *value,
                                                    zeroToo ? "of at least " : "above "));
}

void refuseBeside(bool isGiven, const char* option, const char* modes) {
  if (isGiven) throw CommandError(ExitStatus::usage, fmt::format("{} goes with {}", option, modes));
}

}  // namespace

void checkMatch(const RegisterOptions& options) {
  const std::string& mode = options.match;
  if (!mode.empty() && mode != "triangles" && mode != "distance" && mode != "auto") {
    throw CommandError(ExitStatus::usage,
                       fmt::format("--match {}: no such way; choose auto, triangles or distance", mode));
  }
  const bool byTriangles = mode == "triangles" || mode == "auto";
  refuseBeside(options.sideTolerance && !byTriangles, "--side-tolerance", "--match triangles or auto");
  refuseBeside(options.minSideDifference && !byTriangles, "--min-side-difference", "--match triangles or auto");
  refuseBeside(options.tolerance && mode != "distance" && mode != "auto", "--tolerance", "--match distance or auto");
  refuseBeside(options.matchLimit && mode != "auto", "--match-limit", "--match auto");
  requireLength(options.sideTolerance, "--side-tolerance", false);
  requireLength(options.minSideDifference, "--min-side-difference", true);
  requireLength(options.tolerance, "--tolerance", false);
  requireLength(options.matchLimit, "--match-limit", false);
}

MatchReport matchPoints(Workbench& workbench, DrivenSession& session, const RegisterOptions& options) {
  MatchReport report;
  report.mode = options.match;
  NamingSession naming(session);
  if (report.mode == "triangles") matchTriangles(naming, options, report);
  if (report.mode == "distance") matchCloseness(workbench, naming, options, report);
  if (report.mode == "auto") searchAndMatch(workbench, naming, options, report);
  countNames(session.state(), report);
  return report;
}

void checkDiscrepancies(const SessionState& state, MatchReport& report) {
  if (!report.limits || report.steps.empty() || isSound(state, report.limits->discrepancy)) return;
  report.isRefused = true;
  report.reasons.push_back(
      {"above-limit", fmt::format("the solve leaves a discrepancy of {:g}, above the limit of {:g} "
                                  "(--match-limit)",
                                  largestDiscrepancy(state), report.limits->discrepancy)});
}

}  // namespace tiepoint::workbench::cli
