#include "workbench/naming/match_run.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

#include "workbench/geometry/station_shapes.h"
#include "workbench/naming/match_reasons.h"
#include "workbench/naming/naming_search.h"
#include "workbench/naming/naming_session.h"
#include "workbench/naming/point_reasons.h"
#include "workbench/session/solved_transforms.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// The largest discrepancy that auto accepts by default: 2 cm, ten times the noise of
/// a good scanner's targets. Metres.
constexpr double usualLimit = 0.02;
constexpr double usualMinSideDifference = 0.1;
constexpr double noteworthyRisk = 1e-4;

NamingLimits limitsOf(const NamingRequest& request, Unit unit) {
  const double metre = unit == Unit::millimetre ? 1000.0 : 1.0;
  NamingLimits limits;
  limits.discrepancy = request.limit.value_or(usualLimit * metre);
  limits.side = request.sideTolerance.value_or(limits.discrepancy);
  limits.minSideDifference = request.minSideDifference.value_or(usualMinSideDifference * metre);
  limits.closeness = request.closeness.value_or(limits.discrepancy);
  return limits;
}

void countNames(const SessionState& state, NamingReport& report) {
  for (const SessionPoint& point : state.points) {
    report.named += point.record.named && point.record.autoNamed ? 1 : 0;
    report.unnamed += point.record.named ? 0 : 1;
  }
}

void matchTriangles(NamingSession& naming, const NamingRequest& request, NamingReport& report) {
  NamingStep step;
  step.groups = naming.groups();
  naming.driven().operations().getTriangleMatchTolerances(step.tolerance, step.minSideDifference);
  step.tolerance = request.sideTolerance.value_or(step.tolerance);
  step.minSideDifference = request.minSideDifference.value_or(step.minSideDifference);
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

/// For the groups that the present names connect; the session decides which.
void matchCloseness(Workbench& workbench, NamingSession& naming, const NamingRequest& request, NamingReport& report) {
  DrivenSession& session = naming.driven();
  NamingStep step;
  step.kind = NamingKind::closeness;
  session.operations().getMatchDistanceTolerance(step.tolerance);
  step.tolerance = request.closeness.value_or(step.tolerance);
  const SessionState before = naming.state();
  std::map<GroupId, OdGeMatrix3d> motions;
  if (session.registerPairwise()) {
    motions = motionsOf(workbench, naming);
    step.named = naming.matchByCloseness(step.tolerance);
  }
  if (step.named == 0) report.reasons.push_back(reasonNothingClose(before, motions, step.tolerance));
  report.steps.push_back(step);
  naming.finish();
}

FindingKind kindOf(StationTrouble trouble) {
  switch (trouble) {
    case StationTrouble::tooFewPoints:
      return FindingKind::stationFewPoints;
    case StationTrouble::alone:
      return FindingKind::stationAlone;
    case StationTrouble::noEqualTriangle:
      return FindingKind::stationNoEqualTriangles;
    case StationTrouble::mirrored:
      return FindingKind::stationMirrored;
    case StationTrouble::ambiguous:
      return FindingKind::stationAmbiguous;
    case StationTrouble::threePoints:
      return FindingKind::stationThreePoints;
    case StationTrouble::aboveLimit:
      return FindingKind::stationAboveLimit;
    case StationTrouble::contradiction:
      return FindingKind::stationContradiction;
  }
  return FindingKind::stationContradiction;
}

/// Stations that all have the trouble of the first.
Finding reasonFor(const SessionState& state, const std::vector<UnplacedStation>& stations, const NamingLimits& limits) {
  const UnplacedStation& first = stations.front();
  Finding reason{kindOf(first.trouble), Severity::note};
  for (const UnplacedStation& station : stations) reason.groups.push_back(state.group(station.group).name);
  reason.count = first.points;
  reason.atLeast = first.sharedNames;
  reason.value = first.discrepancy;
  reason.limit = first.trouble == StationTrouble::aboveLimit ? limits.discrepancy : limits.side;
  return reason;
}

/// One reason for all stations that have it.
void addStationReasons(const SessionState& state, const NamingPlan& plan, NamingReport& report) {
  std::map<std::tuple<StationTrouble, std::size_t, double, std::size_t>, std::vector<UnplacedStation>> alike;
  for (const UnplacedStation& station : plan.unplaced) {
    alike[{station.trouble, station.points, station.discrepancy, station.sharedNames}].push_back(station);
  }
  const NamingLimits& limits = *report.limits;
  for (const auto& [trouble, stations] : alike) report.reasons.push_back(reasonFor(state, stations, limits));
  for (const auto& [first, second] : plan.openLoops) {
    Finding loop{FindingKind::openLoop, Severity::note};
    loop.groups = {state.group(first).name, state.group(second).name};
    loop.limit = limits.discrepancy;
    report.reasons.push_back(std::move(loop));
  }
}

/// Three points leave no check; where chance was small that isn't worth reporting.
void addRisks(const SessionState& state, const NamingPlan& plan, NamingReport& report) {
  for (const auto& [group, risk] : plan.risks) {
    if (risk < noteworthyRisk) continue;
    Finding weak{FindingKind::weakLink, Severity::note};
    weak.groups = {state.group(group).name};
    weak.value = risk;
    report.reasons.push_back(std::move(weak));
  }
}

/// Twins matter only where they may have kept a station out, or all but three of its points.
void addReasons(const SessionState& state, const NamingPlan& plan, NamingReport& report) {
  const auto add = [&](const std::vector<Finding>& reasons) {
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

void searchAndMatch(Workbench& workbench, NamingSession& naming, Progress& progress, NamingReport& report) {
  const auto isNamed = [](const SessionPoint& point) { return point.record.named; };
  const auto& points = naming.state().points;
  if (std::all_of(points.begin(), points.end(), isNamed)) {
    report.reasons.push_back({FindingKind::nothingUnnamed, Severity::note});
    return;
  }
  NamingPlan plan;
  {
    const StageScope stage(progress, Stage::naming);
    plan = searchNames(workbench, naming.state(), *report.limits, progress);
  }
  addReasons(naming.state(), plan, report);
  report.isRefused = plan.placed.empty() || isAmbiguous(plan);
  if (report.isRefused) return;
  addRisks(naming.state(), plan, report);
  naming.become(std::move(**plan.named));
  naming.finish();
  report.steps = plan.steps;
}

}  // namespace

NamingReport namePoints(Workbench& workbench, DrivenSession& session, const NamingRequest& request, Unit unit,
                        Progress& progress) {
  NamingReport report;
  report.how = request.how;
  NamingSession naming(session);
  if (report.how == Naming::triangles) matchTriangles(naming, request, report);
  if (report.how == Naming::closeness) matchCloseness(workbench, naming, request, report);
  if (report.how == Naming::automatic) {
    report.limits = limitsOf(request, unit);
    searchAndMatch(workbench, naming, progress, report);
  }
  countNames(session.state(), report);
  return report;
}

void checkDiscrepancies(const SessionState& state, NamingReport& report) {
  if (!report.limits || report.steps.empty() || isSound(state, report.limits->discrepancy)) return;
  report.isRefused = true;
  Finding above{FindingKind::solveAboveLimit, Severity::refusal};
  above.value = largestDiscrepancy(state);
  above.limit = report.limits->discrepancy;
  report.reasons.push_back(std::move(above));
}

}  // namespace tiepoint::workbench
