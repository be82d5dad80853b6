#include "workbench/session/results.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <unordered_map>

namespace tiepoint::workbench {

using namespace ZOR::reg;

namespace {

/// With normally distributed errors the length at three times the median is passed by one point in
/// some ten thousand, and a few hundred points of unequal stations reach it now and then; at four
/// times a mistake is likelier than chance.
constexpr double standsOutBeyond = 4.0;
/// Fewer values have no median worth the name.
constexpr std::size_t fewestForMedian = 6;

double distance(const OdGePoint3d& a, const OdGePoint3d& b) { return std::hypot(a.x - b.x, a.y - b.y, a.z - b.z); }

/// Where the base has each target: the weighted mean of the base points in use of that name.
class BaseTargets {
 public:
  explicit BaseTargets(const SessionState& state) {
    for (const SessionPoint& point : state.points) {
      if (point.record.active && point.record.inBase) add(point.record);
    }
  }

  std::optional<OdGePoint3d> at(CommonPointId name) const {
    const auto found = sums.find(name);
    if (found == sums.end()) return std::nullopt;
    const Sum& s = found->second;
    return OdGePoint3d(s.x / s.weight, s.y / s.weight, s.z / s.weight);
  }

 private:
  struct Sum {
    double x = 0.0, y = 0.0, z = 0.0, weight = 0.0;
  };
  void add(const RefPoint& p) {
    Sum& s = sums[p.commonId];
    s.x += p.weight * p.position.x;
    s.y += p.weight * p.position.y;
    s.z += p.weight * p.position.z;
    s.weight += p.weight;
  }
  std::unordered_map<CommonPointId, Sum> sums;
};

PointResult describePoint(const SessionPoint& point, const SessionState& state, const SolvedTransforms& solved,
                          const BaseTargets& base) {
  PointResult result;
  const RefPoint& record = point.record;
  const auto known = state.discrepancies.find(record.id);
  const auto motion = solved.toCommon.find(record.groupId);
  if (known != state.discrepancies.end()) result.discrepancy = known->second;
  if (motion == solved.toCommon.end()) return result;

  result.registered = record.position;
  result.registered->p_transform(motion->second);
  if (!record.active || record.inBase) return result;
  // A weight below zero keeps a point out of every fit; then nothing is known of it.
  if (!result.discrepancy && record.weight > 0.0) result.discrepancy = 0.0;
  if (const auto target = base.at(record.commonId)) result.atBase = distance(*result.registered, *target);
  return result;
}

/// The RMS of the values that are there; nothing when there are none.
class RmsSum {
 public:
  void add(const std::optional<double>& value) {
    if (!value) return;
    ++rms.count;
    squares += *value * *value;
    // Written so that a value that is no number stays seen.
    if (!(*value <= rms.largest)) rms.largest = *value;
  }
  std::optional<Rms> result() const {
    if (rms.count == 0) return std::nullopt;
    return Rms{rms.count, std::sqrt(squares / static_cast<double>(rms.count)), rms.largest};
  }

 private:
  Rms rms;
  double squares = 0.0;
};

struct RmsPair {
  RmsSum discrepancies, atBase;
  void add(const PointResult& point) {
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

void findLargest(Results& results) {
  std::vector<double> values;
  for (std::size_t i = 0; i < results.points.size(); ++i) {
    const auto& value = results.points[i].discrepancy;
    if (!value || !std::isfinite(*value)) continue;
    values.push_back(*value);
    if (!results.largest || *value > *results.points[*results.largest].discrepancy) results.largest = i;
  }
  if (values.size() < fewestForMedian) return;
  const double median = medianOf(values);
  const double largest = *results.points[*results.largest].discrepancy;
  if (median > 0.0 && largest > standsOutBeyond * median) results.standOut = {*results.largest, largest / median};
}

}  // namespace

Results describeResults(const SessionState& state, const SolvedTransforms& solved) {
  const BaseTargets base(state);
  Results results;
  RmsPair overall;
  std::unordered_map<GroupId, RmsPair> byGroup;
  for (const SessionPoint& point : state.points) {
    results.points.push_back(describePoint(point, state, solved, base));
    overall.add(results.points.back());
    byGroup[point.record.groupId].add(results.points.back());
  }
  for (const SessionGroup& group : state.groups) {
    const auto motion = solved.toCommon.find(group.id);
    GroupResult result;
    if (motion != solved.toCommon.end()) result.toCommon = motion->second;
    result.discrepancies = byGroup[group.id].discrepancies.result();
    result.atBase = byGroup[group.id].atBase.result();
    results.groups.push_back(result);
  }
  results.discrepancies = overall.discrepancies.result();
  results.atBase = overall.atBase.result();
  results.spread = solved.spread;
  findLargest(results);
  return results;
}

}  // namespace tiepoint::workbench
