#include "workbench/analysis/normal_equations.h"

#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

std::vector<std::size_t> movingStations(const Survey& survey) {
  std::vector<std::size_t> moving;
  for (std::size_t s = 0; s < survey.stations.size(); ++s) {
    if (survey.stations[s].moves()) moving.push_back(s);
  }
  return moving;
}

std::vector<int> nodesOf(const Survey& survey) {
  std::vector<int> nodes(survey.stations.size(), -1);
  int next = 0;
  for (std::size_t s = 0; s < nodes.size(); ++s) {
    if (survey.stations[s].moves()) nodes[s] = next++;
  }
  return nodes;
}

std::vector<int> widthsOf(const Survey& survey, const std::vector<std::size_t>& stations) {
  std::vector<int> widths;
  for (const std::size_t s : stations) widths.push_back(survey.stations[s].width());
  return widths;
}

/// Stations that share a target.
std::vector<std::pair<int, int>> neighboursOf(const Survey& survey, const std::vector<int>& nodes) {
  std::vector<std::pair<int, int>> neighbours;
  for (const SurveyTarget& target : survey.targets) {
    for (std::size_t a = 0; a < target.sightings.size(); ++a) {
      const int one = nodes[survey.sightings[target.sightings[a]].station];
      for (std::size_t b = 0; b < a; ++b) {
        const int other = nodes[survey.sightings[target.sightings[b]].station];
        if (one >= 0 && other >= 0) neighbours.emplace_back(one, other);
      }
    }
  }
  return neighbours;
}

}  // namespace

NormalEquations::NormalEquations(const Survey& survey_)
    : survey(survey_),
      nodes(nodesOf(survey)),
      stations(movingStations(survey)),
      normals(widthsOf(survey, stations), neighboursOf(survey, nodes)),
      slope(Eigen::VectorXd::Zero(normals.size())) {}

void NormalEquations::build(const Placements& placements, const Elimination& elimination, Curvature wanted) {
  curvature = wanted;
  normals.setZero();
  slope.setZero();
  for (std::size_t t = 0; t < survey.targets.size(); ++t) addTarget(t, placements, elimination);
}

std::vector<NormalEquations::MovingRow> NormalEquations::movingRows(const SurveyTarget& target,
                                                                    const Placements& placements,
                                                                    const Elimination& elimination) const {
  std::vector<MovingRow> moving;
  for (const std::size_t s : target.sightings) {
    const Sighting& seen = survey.sightings[s];
    if (nodes[seen.station] < 0) continue;
    // What the others know of the target is summed up anew: a difference of large numbers would lose it.
    double others = 0.0;
    for (const std::size_t o : target.sightings) others += o == s ? 0.0 : survey.sightings[o].information;
    const bool isLevelled = survey.stations[seen.station].levelled;
    Eigen::Vector3d arm = armOf(survey, placements, elimination, s);
    if (curvature == Curvature::whole) arm += elimination.residuals[s];
    moving.push_back({nodes[seen.station], s, seen.information, others, pointRows(arm, isLevelled)});
  }
  return moving;
}

void NormalEquations::addTarget(std::size_t t, const Placements& placements, const Elimination& elimination) {
  const SurveyTarget& target = survey.targets[t];
  const Eigen::Matrix3d& cofactor = elimination.targets[t].cofactor;
  const bool isHeld = target.kind == TargetKind::held;
  const Eigen::Matrix3d unit = Eigen::Matrix3d::Identity();
  const std::vector<MovingRow> moving = movingRows(target, placements, elimination);
  for (std::size_t a = 0; a < moving.size(); ++a) {
    const MovingRow& one = moving[a];
    slope.segment(normals.offset(one.node), one.rows.cols()) +=
        one.rows.transpose() * (one.information * elimination.residuals[one.sighting]);
    Eigen::Matrix3d own = one.information * unit;
    if (!isHeld) own *= (target.information + one.others * unit) * cofactor;
    normals.add(one.node, one.node, one.rows.transpose() * own * one.rows);
    if (curvature == Curvature::whole) addBending(one, placements, elimination);
    for (std::size_t b = 0; b < a && !isHeld; ++b) {
      const MovingRow& other = moving[b];
      const Eigen::Matrix3d shared = -(one.information * other.information) * cofactor;
      normals.add(one.node, other.node, one.rows.transpose() * shared * other.rows);
    }
  }
}

/// A point on the arm q turns to q + omega x q + omega x (omega x q) / 2; the residual v sees the last term.
void NormalEquations::addBending(const MovingRow& row, const Placements& placements, const Elimination& elimination) {
  const Eigen::Vector3d& v = elimination.residuals[row.sighting];
  const Eigen::Vector3d q = armOf(survey, placements, elimination, row.sighting) + v;
  const Eigen::Matrix3d outer = 0.5 * (v * q.transpose() + q * v.transpose());
  const Eigen::Matrix3d bending = row.information * (outer - v.dot(q) * Eigen::Matrix3d::Identity());
  const Eigen::Index width = row.rows.cols();
  Eigen::MatrixXd block = Eigen::MatrixXd::Zero(width, width);
  if (width == 6) {
    block.topLeftCorner<3, 3>() = bending;
  } else {
    block(0, 0) = bending(2, 2);
  }
  normals.add(row.node, row.node, block);
}

StationVector NormalEquations::partOf(const Eigen::VectorXd& unknowns, std::size_t station) const {
  const int width = survey.stations[station].width();
  if (nodes[station] < 0) return StationVector::Zero(width);
  return unknowns.segment(normals.offset(nodes[station]), width);
}

Eigen::VectorXd NormalEquations::unitFreeScale() const {
  Eigen::VectorXd scale(normals.size());
  for (const std::size_t s : stations) {
    const SurveyStation& station = survey.stations[s];
    const double ofShift = 1.0 / std::sqrt(station.information);
    auto part = scale.segment(normals.offset(nodes[s]), station.width());
    part.setConstant(ofShift);
    // Points that coincide have no lever, and their station's rotation no weight whatever its scale.
    if (station.lever > 0.0) part.head(station.width() - 3) /= station.lever;
  }
  return scale;
}

}  // namespace tiepoint::workbench::analysis
