#include "workbench/survey/adjusting.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "workbench/analysis/adjustment.h"
#include "workbench/geometry/pose_matrix.h"
#include "workbench/geometry/rigid_motion.h"
#include "workbench/session/points_in_use.h"
#include "workbench/survey/survey_network.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

using Motions = std::map<GroupId, OdGeMatrix3d>;

void findUnseenControl(const AdjustedSurvey& survey, Findings& findings) {
  if (survey.unseenControl.empty()) return;
  Finding finding{FindingKind::controlNotSeen};
  for (const ControlTarget& control : survey.unseenControl) finding.points.push_back(control.name);
  findings.add(std::move(finding));
}

/// Levelled stations are joined to a base by two names.
bool usesLevelledBase(const AdjustedSurvey& survey, const AdjustmentRequest& request) {
  if (!request.allLevelled && request.levelled.empty()) return false;
  for (std::size_t o = 0; o < survey.used.size(); ++o) {
    if (survey.used[o] && survey.network.stations[survey.network.observations[o].station].held) return true;
  }
  return false;
}

bool usesControl(const AdjustedSurvey& survey) {
  for (std::size_t o = 0; o < survey.used.size(); ++o) {
    if (survey.used[o] && survey.network.targets[survey.network.observations[o].target].control) return true;
  }
  return false;
}

bool canBeAdjusted(const AdjustedSurvey& survey, const ResolvedRequest& resolved, Solve started) {
  // Without its base the system would be another one than was asked for, unless control gives it.
  if (started == Solve::baseNotShared) {
    return usesControl(survey) || usesLevelledBase(survey, resolved.request.adjustment);
  }
  return started == Solve::registered || hangsTogether(survey.network);
}

/// The determinants of squares of larger coordinates leave the range of numbers, and with them every motion.
constexpr double largestCoordinate = 1e50;

/// The station of a coordinate that is too large.
std::optional<std::size_t> unboundedStation(const analysis::Network& network) {
  for (const analysis::Observation& observation : network.observations) {
    if (observation.place.cwiseAbs().maxCoeff() > largestCoordinate) return observation.station;
  }
  return std::nullopt;
}

void requireBounded(const analysis::Network& network, const SessionState& state) {
  const auto station = unboundedStation(network);
  if (station) throw Refused({RefusalKind::notRigid, Field::none, "", state.groups[*station].name});
}

void startFrom(const Motions& motions, const SessionState& state, analysis::Network& network) {
  for (std::size_t s = 0; s < state.groups.size(); ++s) {
    const auto motion = motions.find(state.groups[s].id);
    if (motion != motions.end() && isRigid(motion->second)) network.stations[s].start = poseOf(motion->second);
  }
}

void startFrom(const std::vector<StationPose>& poses, const SessionState& state, analysis::Network& network) {
  std::unordered_map<std::string, std::size_t> stationOf;
  for (std::size_t s = 0; s < state.groups.size(); ++s) stationOf.emplace(state.groups[s].name, s);
  for (const StationPose& pose : poses) {
    const auto station = stationOf.find(sessionName(pose.group));
    if (station != stationOf.end()) network.stations[station->second].start = pose.pose;
  }
}

Motions motionsOf(Workbench& workbench, DrivenSession& session) {
  std::vector<GroupId> groups;
  for (const SessionGroup& group : session.state().groups) groups.push_back(group.id);
  return solvedMotions(workbench, session.operations(), groups);
}

/// The pairwise result with the last station in use as its root. It errs elsewhere than the first did.
std::vector<std::vector<analysis::Pose>> startsFromLastStation(Workbench& workbench, const SessionState& state) {
  MirroredSession mirrored(workbench.newSession());
  DrivenSession session(mirrored);
  takePointsInUse(session, state);
  GroupIdSet active;
  for (const SessionPoint& point : session.state().points) active.insert(point.record.groupId);
  if (active.empty()) return {};
  session.setBase({*active.rbegin()});
  if (!session.registerPairwise()) return {};
  const Motions motions = motionsOf(workbench, session);
  std::vector<analysis::Pose> poses(state.groups.size());
  for (std::size_t s = 0; s < poses.size(); ++s) {
    const auto motion = motions.find(state.groups[s].id);
    if (motion != motions.end() && isRigid(motion->second)) poses[s] = poseOf(motion->second);
  }
  return {std::move(poses)};
}

/// Statistics that differ by rounding alone, as those of the two measurements of a target that has no third.
constexpr double sameStatistic = 1e-9;

/// Of measurements that are suspect alike the first by names is accused, in whatever order the stations stand.
void accuseByName(const SessionState& state, AdjustedSurvey& survey) {
  auto& suspect = survey.result.suspect;
  if (!suspect || suspect->isControl) return;
  const auto nameOf = [&](std::size_t o) {
    const analysis::Observation& observation = survey.network.observations[o];
    return std::pair(survey.targetNames[observation.target], state.groups[observation.station].name);
  };
  const double largest = *survey.result.observations[suspect->index]->statistic;
  for (std::size_t o = 0; o < survey.network.observations.size(); ++o) {
    const auto& told = survey.result.observations[o];
    if (!told || !told->statistic || std::abs(*told->statistic - largest) > sameStatistic * largest) continue;
    if (nameOf(o) < nameOf(suspect->index)) suspect = analysis::Suspect{false, o, *told->p};
  }
}

Solve solveOf(const analysis::Adjustment& adjustment) {
  switch (adjustment.outcome) {
    case analysis::AdjustmentOutcome::adjusted:
      return Solve::registered;
    case analysis::AdjustmentOutcome::undetermined:
      return Solve::undetermined;
    case analysis::AdjustmentOutcome::nothingToAdjust:
      break;
  }
  return Solve::notConnected;
}

}  // namespace

Solve adjustSession(Workbench& workbench, DrivenSession& session, const ResolvedRequest& resolved, Solve started,
                    Registration& registration, Findings& findings, Progress& progress) {
  if (started == Solve::notNamed) return started;
  const SessionState& state = session.state();
  AdjustedSurvey survey = surveyNetwork(state, resolved);
  findUnseenControl(survey, findings);
  if (!canBeAdjusted(survey, resolved, started)) return started;
  requireBounded(survey.network, state);
  survey.startWasGiven = !resolved.request.adjustment.startFile.empty();
  if (survey.startWasGiven) {
    startFrom(resolved.start, state, survey.network);
  } else if (started == Solve::registered) {
    startFrom(motionsOf(workbench, session), state, survey.network);
  }
  analysis::AdjustmentOptions options = adjustmentOptions(state, resolved, survey);
  options.triesOtherStarts = !survey.startWasGiven;
  options.otherStarts = [&] { return startsFromLastStation(workbench, state); };
  const StageScope stage(progress, Stage::adjusting);
  step(progress, 0, 0);
  survey.result = analysis::adjust(survey.network, options);
  accuseByName(state, survey);
  const Solve solved = solveOf(survey.result);
  if (solved != Solve::notConnected) registration.adjustment = std::move(survey);
  return solved;
}

AdjustedSurvey judgeMeasurements(const SessionState& state, const SolvedTransforms& solved) {
  SessionState inUse = state;
  for (SessionPoint& point : inUse.points) point.record.included = point.record.active;
  AdjustedSurvey survey = surveyNetwork(inUse, {});
  if (unboundedStation(survey.network)) return survey;
  startFrom(solved.toCommon, state, survey.network);
  analysis::AdjustmentOptions options;
  options.scale = analysis::VarianceScale::aPosteriori;
  options.measurementsAlone = true;
  survey.result = analysis::adjust(survey.network, options);
  accuseByName(state, survey);
  return survey;
}

}  // namespace tiepoint::workbench
