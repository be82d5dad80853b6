#include "workbench/survey/adjusted_outcomes.h"

#include <set>
#include <utility>

#include "workbench/geometry/point_spread.h"
#include "workbench/geometry/pose_matrix.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/session/base_targets.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

OdGePoint3d pointOf(const Eigen::Vector3d& v) { return {v.x(), v.y(), v.z()}; }
Eigen::Vector3d vectorOf(const OdGePoint3d& p) { return {p.x, p.y, p.z}; }
OdGeVector3d offsetOf(const Eigen::Vector3d& v) { return {v.x(), v.y(), v.z()}; }

/// Of each observation: its station has measured the target again, further down.
std::vector<bool> earlierTwins(const analysis::Network& network) {
  std::vector<bool> earlier(network.observations.size());
  std::set<std::pair<std::size_t, std::size_t>> seen;
  for (std::size_t o = earlier.size(); o-- > 0;) {
    earlier[o] = !seen.emplace(network.observations[o].station, network.observations[o].target).second;
  }
  return earlier;
}

void describePoint(const AdjustedSurvey& survey, std::size_t index, const SessionPoint& point, const BaseTargets& base,
                   PointOutcome& row) {
  const std::size_t station = row.group;
  const bool held = survey.network.stations[station].held;
  if (const auto& pose = survey.result.poses[station]; pose && !held) {
    row.registered = row.position;
    row.registered->p_transform(matrixOf(*pose));
  }
  const analysis::AdjustedObservation* const adjusted = survey.ofPoint(index);
  if (!adjusted) return;
  row.discrepancy = adjusted->residual.norm();
  row.residual = offsetOf(adjusted->residual);
  const auto target = held ? std::nullopt : base.at(point.record.commonId);
  if (target && row.registered) row.atBase = (vectorOf(*row.registered) - vectorOf(*target)).norm();
}

/// Positions of the measurements in use by target, but for those of bases.
std::vector<std::vector<Eigen::Vector3d>> registeredByTarget(const AdjustedSurvey& survey) {
  std::vector<std::vector<Eigen::Vector3d>> places(survey.targetNames.size());
  for (std::size_t o = 0; o < survey.network.observations.size(); ++o) {
    const analysis::Observation& observation = survey.network.observations[o];
    if (!survey.result.observations[o] || survey.network.stations[observation.station].held) continue;
    const analysis::Pose& pose = *survey.result.poses[observation.station];
    places[observation.target].emplace_back(pose.rotation * observation.place + pose.shift);
  }
  return places;
}

/// A target weighs what its measurements weigh on average.
std::vector<double> targetWeights(const AdjustedSurvey& survey) {
  std::vector<double> sums(survey.targetNames.size()), counts(survey.targetNames.size());
  for (std::size_t o = 0; o < survey.network.observations.size(); ++o) {
    if (!survey.result.observations[o]) continue;
    const analysis::Observation& observation = survey.network.observations[o];
    sums[observation.target] += observation.weight;
    counts[observation.target] += 1.0;
  }
  for (std::size_t t = 0; t < sums.size(); ++t) sums[t] = counts[t] > 0.0 ? sums[t] / counts[t] : 1.0;
  return sums;
}

std::vector<MergedTarget> adjustedTargets(const AdjustedSurvey& survey) {
  const std::vector<double> weights = targetWeights(survey);
  std::vector<MergedTarget> targets;
  for (std::size_t t = 0; t < survey.targetNames.size(); ++t) {
    const auto& adjusted = survey.result.targets[t];
    if (!adjusted) continue;
    const std::string& name = survey.targetNames[t];
    targets.push_back(
        {name, pointOf(adjusted->position), weights[t], standInName(name), adjusted->sightings, adjusted->covariance});
  }
  return targets;
}

}  // namespace

SessionState adjustedState(const SessionState& session, const AdjustedSurvey& survey) {
  SessionState state = session;
  state.discrepancies.clear();
  state.registeredGroups.clear();
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    RefPoint& record = state.points[i].record;
    record.active = survey.usesPoint(i);
    if (const auto* adjusted = survey.ofPoint(i)) state.discrepancies[record.id] = adjusted->residual.norm();
  }
  for (std::size_t s = 0; s < state.groups.size(); ++s) {
    if (survey.result.poses[s] && !state.groups[s].inBase) state.registeredGroups.insert(state.groups[s].id);
  }
  return state;
}

Outcomes adjustedRows(const SessionState& state, const AdjustedSurvey& survey) {
  Outcomes rows = outcomesOf(state);
  const std::vector<bool> isEarlier = earlierTwins(survey.network);
  for (std::size_t i = 0; i < rows.points.size(); ++i) {
    const auto& observation = survey.observationOf[i];
    if (observation && isEarlier[*observation]) rows.points[i].reason = Reason::nameAgain;
    if (isEligible(state.points[i].record) && rows.points[i].weight < 0.0) {
      rows.points[i].reason = Reason::negativeWeight;
    }
  }
  return rows;
}

Results adjustedResults(const SessionState& state, const AdjustedSurvey& survey) {
  const BaseTargets base(state);
  Results results;
  results.rows = adjustedRows(state, survey);
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    describePoint(survey, i, state.points[i], base, results.rows.points[i]);
  }
  for (std::size_t s = 0; s < results.rows.groups.size(); ++s) {
    const auto& pose = survey.result.poses[s];
    if (pose && !survey.network.stations[s].held) results.rows.groups[s].toCommon = matrixOf(*pose);
  }
  results.spread = spreadOf(registeredByTarget(survey));
  results.targets = adjustedTargets(survey);
  summarise(results);
  return results;
}

std::optional<Outlier> suspectedPoint(const AdjustedSurvey& survey, const Registered& registered,
                                      const std::vector<PointOutcome>& points) {
  const auto& suspect = survey.result.suspect;
  if (!suspect || suspect->isControl) return std::nullopt;
  std::optional<Outlier> outlier = standOut(registered, points, survey.pointOf[suspect->index]);
  const auto& adjusted = survey.result.observations[suspect->index];
  if (outlier && adjusted->leftOut) outlier->leftOut = offsetOf(adjusted->leftOut->error);
  return outlier;
}

}  // namespace tiepoint::workbench
