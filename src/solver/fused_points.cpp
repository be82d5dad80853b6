#include "solver/fused_points.h"

#include <algorithm>

#include "solver/selection_matrix.h"

namespace ZOR::reg {

namespace {

/// The mean by weights that are both not 0.0.
OdGePoint3d blend(const OdGePoint3d& a, double weightA, const OdGePoint3d& b, double weightB) {
  const double sum = weightA + weightB;
  return {(weightA * a.x + weightB * b.x) / sum, (weightA * a.y + weightB * b.y) / sum,
          (weightA * a.z + weightB * b.z) / sum};
}

/// A point at the origin stands for an absent one: the motion doesn't reach it.
OdGePoint3d moveIfPresent(const RigidTransform& transform, const OdGePoint3d& p) {
  return isPresentByLength(p.x, p.y, p.z) ? apply(transform, p) : OdGePoint3d();
}

}  // namespace

FusedPoints::FusedPoints(const GroupRows& group) {
  points.reserve(group.rows.size());
  placeOfRow.reserve(group.rows.size());
  for (std::size_t i = 0; i < group.rows.size(); ++i) {
    const auto line = static_cast<Eigen::Index>(i);
    const auto& p = group.positions;
    points.push_back({group.rows[i], {p(line, 0), p(line, 1), p(line, 2)}, group.weights[line]});
    placeOfRow.emplace(group.rows[i], i);
  }
}

void FusedPoints::absorb(const FusedPoints& absorbed) {
  const RigidTransform absorbedToThis = fitToThis(absorbed);
  for (const WeightedPoint& point : absorbed.points) {
    blendIn({point.row, moveIfPresent(absorbedToThis, point.position), point.weight});
  }
}

void FusedPoints::copyTo(PointMatrix& positions, Eigen::VectorXd& weights) const {
  for (const WeightedPoint& point : points) {
    positions.row(point.row) << point.position.x, point.position.y, point.position.z;
    weights[point.row] = point.weight;
  }
}

const FusedPoints::WeightedPoint* FusedPoints::find(Eigen::Index row) const {
  const auto found = placeOfRow.find(row);
  return found == placeOfRow.end() ? nullptr : &points[found->second];
}

RigidTransform FusedPoints::fitToThis(const FusedPoints& absorbed) const {
  struct Pair {
    const WeightedPoint* target;
    const WeightedPoint* source;
  };
  std::vector<Pair> pairs;
  for (const WeightedPoint& source : absorbed.points) {
    const WeightedPoint* target = find(source.row);
    if (target != nullptr && target->weight > 0.0 && source.weight > 0.0) pairs.push_back({target, &source});
  }
  // The fit adds in the order of the rows, whatever the order in which they were gathered.
  std::sort(pairs.begin(), pairs.end(), [](const Pair& a, const Pair& b) { return a.source->row < b.source->row; });

  PointMatrix target(static_cast<Eigen::Index>(pairs.size()), 3);
  PointMatrix source(static_cast<Eigen::Index>(pairs.size()), 3);
  Eigen::Index k = 0;
  for (const Pair& pair : pairs) {
    target.row(k) << pair.target->position.x, pair.target->position.y, pair.target->position.z;
    source.row(k) << pair.source->position.x, pair.source->position.y, pair.source->position.z;
    ++k;
  }
  return fitRigidTransform(target, source);
}

void FusedPoints::blendIn(const WeightedPoint& moved) {
  if (moved.weight == 0.0) return;
  const auto [place, isNew] = placeOfRow.try_emplace(moved.row, points.size());
  if (isNew) {
    points.push_back(moved);
    return;
  }
  WeightedPoint& own = points[place->second];
  if (own.weight == 0.0) {
    own = moved;
    return;
  }
  own.position = blend(own.position, own.weight, moved.position, moved.weight);
  own.weight = (own.weight + moved.weight) * 0.5;
}

}  // namespace ZOR::reg
