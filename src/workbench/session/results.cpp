#include "workbench/session/results.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include "workbench/session/base_targets.h"
#include "workbench/session/reasons.h"
#include "workbench/session/residuals.h"

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// Of what the points span: 0.6 micrometres in 60 m. No instrument tells so little; what a survey without
/// noise leaves is the rounding of its numbers, and no point of it is worth a look.
constexpr double finestShare = 1e-8;

double distance(const OdGePoint3d& a, const OdGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

/// Where the points were to come to.
struct Targets {
  BaseTargets base;
  FittedTargets fitted;
};

/// A base stays where it is. Its points have a discrepancy where several base points bear one name: to
/// their mean.
void describeBasePoint(const RefPoint& record, const Targets& targets, PointOutcome& result) {
  const auto target = targets.base.at(record.commonId);
  if (result.discrepancy && target) result.residual = record.position - *target;
}

/// The session keeps no discrepancy of exactly zero. What took no part in the fit has none either: points
/// of a weight below zero, and all but the last of one name in a group. Those lie beside their target.
void describeFit(const RefPoint& record, const Targets& targets, PointOutcome& result) {
  result.residual = targets.fitted.residual(result.name, *result.registered, result.discrepancy.value_or(0.0));
  if (!result.discrepancy && result.residual && record.weight > 0.0) result.discrepancy = 0.0;
  if (!result.discrepancy) result.residual.reset();
}

/// Into the row of a point what the solve found of it.
void describePoint(const RefPoint& record, const SessionState& state, const SolvedTransforms& solved,
                   const Targets& targets, PointOutcome& result) {
  const auto known = state.discrepancies.find(record.id);
  const auto motion = solved.toCommon.find(record.groupId);
  if (known != state.discrepancies.end()) result.discrepancy = known->second;
  if (record.active && record.inBase) describeBasePoint(record, targets, result);
  if (motion == solved.toCommon.end()) return;

  result.registered = record.position;
  result.registered->p_transform(motion->second);
  if (!record.active || record.inBase) return;
  describeFit(record, targets, result);
  if (const auto target = targets.base.at(record.commonId)) result.atBase = distance(*result.registered, *target);
}

/// The RMS and the mean of the values that are there; nothing when there are none.
class RmsSum {
 public:
  void add(const std::optional<double>& value) {
    if (!value) return;
    ++rms.count;
    sum += *value;
    squares += *value * *value;
    // A value that is no number stays seen.
    if (!std::isnan(rms.largest) && !(*value <= rms.largest)) rms.largest = *value;
  }
  std::optional<Rms> result() const {
    if (rms.count == 0) return std::nullopt;
    const double count = static_cast<double>(rms.count);
    return Rms{rms.count, std::sqrt(squares / count), rms.largest, sum / count};
  }

 private:
  Rms rms;
  double sum = 0.0;
  double squares = 0.0;
};

struct RmsPair {
  RmsSum discrepancies, atBase;
  void add(const PointOutcome& point) {
    discrepancies.add(point.discrepancy);
    atBase.add(point.atBase);
  }
};

double medianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  if (values.size() % 2 == 1) return *middle;
  return (*middle + *std::max_element(values.begin(), middle)) / 2.0;
}

/// The diagonal of the box that holds the registered points.
double spanOf(const std::vector<PointOutcome>& points) {
  constexpr double far = std::numeric_limits<double>::infinity();
  OdGePoint3d low(far, far, far), high(-far, -far, -far);
  for (const PointOutcome& point : points) {
    if (!point.registered) continue;
    const OdGePoint3d& p = *point.registered;
    low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
  }
  return low.x <= high.x ? distance(low, high) : 0.0;
}

void findLargest(Results& results) {
  const std::vector<PointOutcome>& points = results.rows.points;
  std::optional<std::size_t> largest;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto& value = points[i].discrepancy;
    if (!value || !std::isfinite(*value)) continue;
    if (!largest || *value > *points[*largest].discrepancy) largest = i;
  }
  if (!largest || *points[*largest].discrepancy <= finestShare * spanOf(points)) return;
  results.largest = largest;
}

void findProtocol(Results& results) {
  if (!results.discrepancies) return;
  const std::vector<GroupOutcome>& groups = results.rows.groups;
  const auto stations = std::count_if(groups.begin(), groups.end(),
                                      [](const GroupOutcome& group) { return group.discrepancies.has_value(); });
  results.protocol = {*results.discrepancies, static_cast<std::size_t>(stations)};
}

void countPoints(const SessionState& state, Outcomes& rows) {
  std::unordered_map<GroupId, std::size_t> indexOf;
  for (std::size_t i = 0; i < rows.groups.size(); ++i) indexOf.emplace(rows.groups[i].id, i);
  for (std::size_t i = 0; i < rows.points.size(); ++i) {
    rows.points[i].group = indexOf.at(state.points[i].record.groupId);
    GroupOutcome& group = rows.groups[rows.points[i].group];
    ++group.points;
    group.active += rows.points[i].active ? 1 : 0;
  }
}

}  // namespace

Outcomes outcomesOf(const SessionState& state) {
  Outcomes rows;
  for (const SessionGroup& group : state.groups) {
    GroupOutcome& row = rows.groups.emplace_back();
    row.id = group.id;
    row.name = group.name;
    row.inBase = group.inBase;
  }
  const std::vector<std::optional<Reason>> reasons = reasonsOut(state);
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    const RefPoint& record = state.points[i].record;
    PointOutcome& row = rows.points.emplace_back();
    row.id = record.id;
    row.name = state.points[i].name;
    row.position = record.position;
    row.weight = record.weight;
    row.active = record.active;
    row.named = record.named;
    row.reason = reasons[i];
  }
  countPoints(state, rows);
  return rows;
}

Results describeResults(const SessionState& state, const SolvedTransforms& solved) {
  const Targets targets{BaseTargets(state), FittedTargets(solved.fitted)};
  Results results;
  results.rows = outcomesOf(state);
  for (std::size_t i = 0; i < state.points.size(); ++i) {
    describePoint(state.points[i].record, state, solved, targets, results.rows.points[i]);
  }
  for (GroupOutcome& row : results.rows.groups) {
    const auto motion = solved.toCommon.find(row.id);
    if (motion != solved.toCommon.end()) row.toCommon = motion->second;
  }
  results.spread = solved.spread;
  results.targets = solved.targets;
  summarise(results);
  return results;
}

void summarise(Results& results) {
  RmsPair overall;
  std::vector<RmsPair> byGroup(results.rows.groups.size());
  for (const PointOutcome& row : results.rows.points) {
    overall.add(row);
    byGroup[row.group].add(row);
  }
  for (std::size_t i = 0; i < byGroup.size(); ++i) {
    results.rows.groups[i].discrepancies = byGroup[i].discrepancies.result();
    results.rows.groups[i].atBase = byGroup[i].atBase.result();
  }
  results.discrepancies = overall.discrepancies.result();
  results.atBase = overall.atBase.result();
  findLargest(results);
  findProtocol(results);
}

std::optional<Outlier> standOut(const Registered& registered, const std::vector<PointOutcome>& points,
                                std::size_t point) {
  if (!registered.largest || !points[point].discrepancy) return std::nullopt;
  std::vector<double> values;
  for (const PointOutcome& row : points) {
    if (row.discrepancy && std::isfinite(*row.discrepancy)) values.push_back(*row.discrepancy);
  }
  const double median = values.empty() ? 0.0 : medianOf(values);
  return Outlier{point, median > 0.0 ? std::optional(*points[point].discrepancy / median) : std::nullopt};
}

}  // namespace tiepoint::workbench
