#include "workbench/analysis/rigid_fit.h"

#include "workbench/analysis/placement.h"

namespace tiepoint::workbench::analysis {

Pose fitRigid(const std::vector<FitPair>& pairs, bool levelled) {
  if (pairs.empty()) return {};
  const Eigen::Vector3d firstFrom = pairs.front().from, firstTo = pairs.front().to;
  Eigen::Vector3d from = Eigen::Vector3d::Zero(), to = Eigen::Vector3d::Zero();
  double weight = 0.0;
  for (const FitPair& pair : pairs) {
    from += pair.weight * (pair.from - firstFrom);
    to += pair.weight * (pair.to - firstTo);
    weight += pair.weight;
  }
  from = firstFrom + from / weight;
  to = firstTo + to / weight;
  Eigen::Matrix3d moments = Eigen::Matrix3d::Zero();
  for (const FitPair& pair : pairs) moments += pair.weight * (pair.to - to) * (pair.from - from).transpose();
  Pose pose;
  pose.rotation = levelled ? nearestLevelRotation(moments) : nearestRotation(moments);
  pose.shift = to - pose.rotation * from;
  return pose;
}

double sumOfSquares(const std::vector<FitPair>& pairs, const Pose& motion) {
  double sum = 0.0;
  for (const FitPair& pair : pairs) {
    sum += pair.weight * (motion.rotation * pair.from + motion.shift - pair.to).squaredNorm();
  }
  return sum;
}

Pose composed(const Pose& first, const Pose& second) {
  return {first.rotation * second.rotation, first.rotation * second.shift + first.shift};
}

Pose inverted(const Pose& pose) { return {pose.rotation.transpose(), -(pose.rotation.transpose() * pose.shift)}; }

}  // namespace tiepoint::workbench::analysis
