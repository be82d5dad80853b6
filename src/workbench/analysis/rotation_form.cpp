#include "workbench/analysis/rotation_form.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::analysis {

namespace {

/// Of the variances: what rounding leaves of a multiple of the identity.
constexpr double roundWithin = 1e-12;

bool hasDirection(const Eigen::Matrix3d& covariance) {
  const double variance = covariance(0, 0);
  return (covariance - variance * Eigen::Matrix3d::Identity()).cwiseAbs().maxCoeff() > roundWithin * variance;
}

double meanLever(const Survey& survey) {
  double squares = 0.0;
  for (const SurveyStation& station : survey.stations) squares += station.lever * station.lever;
  const double mean = std::sqrt(squares / static_cast<double>(survey.stations.size()));
  return mean > 0.0 ? mean : 1.0;
}

std::vector<int> widthsOf(const Bodies& bodies) {
  std::vector<int> widths;
  for (const Body& body : bodies.rows) widths.push_back(body.ownColumns() + (body.hasShift ? 1 : 0));
  if (bodies.hasVertical) widths.push_back(1);
  return widths;
}

/// Nodes that share a target, the vertical with all that see a target of one of its bodies.
std::vector<std::pair<int, int>> neighboursOf(const Survey& survey, const Bodies& bodies) {
  std::vector<std::pair<int, int>> neighbours;
  const int vertical = static_cast<int>(bodies.rows.size());
  for (const SurveyTarget& target : survey.targets) {
    std::vector<int> nodes;
    for (const std::size_t s : target.sightings) {
      nodes.push_back(static_cast<int>(bodies.ofStation[survey.sightings[s].station]));
    }
    if (target.kind != TargetKind::adjusted) nodes.push_back(static_cast<int>(*bodies.held));
    const auto sharesVertical = [&](int node) { return bodies.rows[static_cast<std::size_t>(node)].sharesVertical; };
    if (std::any_of(nodes.begin(), nodes.end(), sharesVertical)) nodes.push_back(vertical);
    for (std::size_t a = 0; a < nodes.size(); ++a) {
      for (std::size_t b = 0; b < a; ++b) neighbours.emplace_back(nodes[a], nodes[b]);
    }
  }
  return neighbours;
}

}  // namespace

std::optional<RotationForm> RotationForm::of(const Survey& survey) {
  for (const SurveyTarget& target : survey.targets) {
    if (target.kind == TargetKind::controlled && hasDirection(target.covariance)) return std::nullopt;
  }
  return RotationForm(survey);
}

RotationForm::RotationForm(const Survey& survey_)
    : survey(&survey_),
      bodies(survey_),
      lengthUnit(meanLever(survey_)),
      form(widthsOf(bodies), neighboursOf(survey_, bodies)) {
  for (std::size_t t = 0; t < survey->targets.size(); ++t) addTarget(t);
  for (std::size_t b = 0; b < bodies.rows.size(); ++b) {
    for (int column = 0; column < bodies.rows[b].ownColumns(); ++column) {
      rotations.push_back(form.offset(static_cast<int>(b)) + column);
    }
  }
  if (bodies.hasVertical) rotations.push_back(form.offset(verticalNode()));
}

RotationForm::Row RotationForm::rowOf(std::size_t b, const Eigen::Vector3d& place) const {
  const Body& body = bodies.rows[b];
  Coefficients own(body.ownColumns() + (body.hasShift ? 1 : 0));
  own.head(body.ownColumns()) = place.head(body.ownColumns()) / lengthUnit;
  if (body.hasShift) own(body.ownColumns()) = 1.0;
  Row row{{static_cast<int>(b), own}};
  if (body.sharesVertical) row.push_back({verticalNode(), Coefficients::Constant(1, place.z() / lengthUnit)});
  return row;
}

RotationForm::Row RotationForm::sightingRow(std::size_t sighting) const {
  const Sighting& seen = survey->sightings[sighting];
  const SurveyStation& station = survey->stations[seen.station];
  // The held body's points count from the survey's origin, a station's from its middle.
  const Eigen::Vector3d middle =
      station.held ? Eigen::Vector3d(station.middle - survey->origin) : Eigen::Vector3d::Zero();
  return rowOf(bodies.ofStation[seen.station], seen.local + middle);
}

void RotationForm::addTarget(std::size_t t) {
  const SurveyTarget& target = survey->targets[t];
  std::vector<Row> rows;
  std::vector<double> weights;
  for (const std::size_t s : target.sightings) {
    rows.push_back(sightingRow(s));
    weights.push_back(survey->sightings[s].information);
  }
  if (target.kind == TargetKind::controlled) {
    rows.push_back(rowOf(*bodies.held, target.place));
    weights.push_back(target.information(0, 0));
  }
  if (target.kind == TargetKind::held) {
    const Row there = rowOf(*bodies.held, target.place);
    for (std::size_t a = 0; a < rows.size(); ++a) {
      addSquare(rows[a], weights[a]);
      addSquare(there, weights[a]);
      addCross(rows[a], there, -weights[a]);
    }
    return;
  }
  double sum = 0.0;
  for (const double weight : weights) sum += weight;
  for (std::size_t a = 0; a < rows.size(); ++a) {
    double others = 0.0;
    for (std::size_t b = 0; b < rows.size(); ++b) others += b == a ? 0.0 : weights[b];
    addSquare(rows[a], weights[a] * others / sum);
    for (std::size_t b = 0; b < a; ++b) addCross(rows[a], rows[b], -weights[a] * weights[b] / sum);
  }
}

/// Both products of the two rows.
void RotationForm::addCross(const Row& one, const Row& other, double factor) {
  for (const Part& a : one) {
    for (const Part& b : other) {
      Block block = factor * a.coefficients * b.coefficients.transpose();
      if (a.node == b.node) block += block.transpose().eval();
      form.add(a.node, b.node, block);
    }
  }
}

void RotationForm::addSquare(const Row& row, double factor) {
  for (std::size_t a = 0; a < row.size(); ++a) {
    for (std::size_t b = 0; b <= a; ++b) {
      form.add(row[a].node, row[b].node, factor * row[a].coefficients * row[b].coefficients.transpose());
    }
  }
}

Eigen::Matrix3d RotationForm::rotationOf(const Placements& placements, std::size_t body) const {
  const auto& station = bodies.rows[body].station;
  return station ? placements[*station].rotation : Eigen::Matrix3d::Identity();
}

Eigen::MatrixXd RotationForm::rotationsOf(const Placements& placements) const {
  Eigen::MatrixXd rows(rotations.size(), 3);
  Eigen::Index row = 0;
  for (std::size_t b = 0; b < bodies.rows.size(); ++b) {
    const Eigen::Matrix3d rotation = rotationOf(placements, b);
    for (int c = 0; c < bodies.rows[b].ownColumns(); ++c) rows.row(row++) = rotation.col(c).transpose();
  }
  if (bodies.hasVertical) rows.row(row) = Eigen::RowVector3d::UnitZ();
  return rows;
}

std::vector<Eigen::Matrix3d> RotationForm::slopes(const Elimination& elimination) const {
  std::vector<Eigen::Matrix3d> result(bodies.rows.size(), Eigen::Matrix3d::Zero());
  const double square = lengthUnit * lengthUnit;
  for (std::size_t o = 0; o < survey->sightings.size(); ++o) {
    const Sighting& seen = survey->sightings[o];
    const SurveyStation& station = survey->stations[seen.station];
    const SurveyTarget& target = survey->targets[seen.target];
    const Eigen::Vector3d middle =
        station.held ? Eigen::Vector3d(station.middle - survey->origin) : Eigen::Vector3d::Zero();
    const Eigen::RowVector3d pull = seen.information / square * elimination.residuals[o].transpose();
    result[bodies.ofStation[seen.station]] += (seen.local + middle) * pull;
    if (target.kind == TargetKind::held) result[*bodies.held] -= target.place * pull;
  }
  for (std::size_t t = 0; t < survey->targets.size(); ++t) {
    const SurveyTarget& target = survey->targets[t];
    if (target.kind != TargetKind::controlled) continue;
    const double weight = target.information(0, 0) / square;
    result[*bodies.held] += weight * target.place * elimination.controlResiduals[t].transpose();
  }
  return result;
}

void RotationForm::subtractMultiplier(const Placements& placements, const Elimination& elimination,
                                      BlockMatrix& from) const {
  const std::vector<Eigen::Matrix3d> slope = slopes(elimination);
  double ofVertical = 0.0;
  for (std::size_t b = 0; b < bodies.rows.size(); ++b) {
    const Body& body = bodies.rows[b];
    const int node = static_cast<int>(b), own = body.ownColumns(), width = from.width(node);
    const Eigen::Matrix3d multiplier = slope[b] * rotationOf(placements, b);
    Block block = Block::Zero(width, width);
    block.topLeftCorner(own, own) = -0.5 * (multiplier + multiplier.transpose()).topLeftCorner(own, own);
    from.add(node, node, block);
    if (!body.sharesVertical) continue;
    Block besideVertical = Block::Zero(width, 1);
    besideVertical.topRows(2) = -multiplier.topRightCorner<2, 1>();
    from.add(node, verticalNode(), besideVertical);
    ofVertical += slope[b](2, 2);
  }
  if (bodies.hasVertical) from.add(verticalNode(), verticalNode(), Block::Constant(1, 1, -ofVertical));
}

Eigen::VectorXd RotationForm::onRotations(double number) const {
  return embedded(Eigen::VectorXd::Constant(static_cast<Eigen::Index>(rotations.size()), number));
}

Eigen::VectorXd RotationForm::embedded(const Eigen::VectorXd& ofRotations) const {
  Eigen::VectorXd whole = Eigen::VectorXd::Zero(form.size());
  for (std::size_t r = 0; r < rotations.size(); ++r) whole(rotations[r]) = ofRotations(static_cast<Eigen::Index>(r));
  return whole;
}

Eigen::VectorXd RotationForm::rotationPart(const Eigen::VectorXd& whole) const {
  Eigen::VectorXd part(rotations.size());
  for (std::size_t r = 0; r < rotations.size(); ++r) part(static_cast<Eigen::Index>(r)) = whole(rotations[r]);
  return part;
}

Eigen::Matrix3d RotationForm::columnsOf(const Eigen::MatrixXd& rows, std::size_t b) const {
  const int own = bodies.rows[b].ownColumns();
  Eigen::Matrix3d columns;
  columns.leftCols(own) = rows.middleRows(form.offset(static_cast<int>(b)), own).transpose();
  if (own == 2) columns.col(2) = rows.row(form.offset(verticalNode())).transpose();
  return columns;
}

Placements RotationForm::placementsNear(const Eigen::MatrixXd& rows) const {
  // The first body is the held one where there is one; its orthogonal matrix may be a reflection.
  std::size_t reference = 0;
  for (std::size_t b = 0; b < bodies.rows.size() && !bodies.held; ++b) {
    if (survey->stations[*bodies.rows[b].station].frame) reference = b;
  }
  const Eigen::JacobiSVD<Eigen::Matrix3d> svd(columnsOf(rows, reference), Eigen::ComputeFullU | Eigen::ComputeFullV);
  const Eigen::Matrix3d back = (svd.matrixU() * svd.matrixV().transpose()).transpose();
  Placements placements(survey->stations.size());
  for (std::size_t b = 0; b < bodies.rows.size(); ++b) {
    const Body& body = bodies.rows[b];
    if (!body.station) continue;
    Placement& placement = placements[*body.station];
    const Eigen::Matrix3d rotation = back * columnsOf(rows, b);
    placement.rotation = body.sharesVertical ? nearestLevelRotation(rotation) : nearestRotation(rotation);
    if (!body.hasShift) continue;
    placement.centre = lengthUnit * (back * rows.row(form.offset(static_cast<int>(b)) + body.ownColumns()).transpose());
  }
  return placements;
}

}  // namespace tiepoint::workbench::analysis
