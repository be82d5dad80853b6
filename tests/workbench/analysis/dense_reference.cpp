#include "workbench/analysis/dense_reference.h"

#include <algorithm>
#include <cmath>

namespace tiepoint::workbench::analysis::testing {

namespace {

using Real66 = Eigen::Matrix<Real, 6, 6>;

Real33 cross(const Real3& v) {
  Real33 m;
  m << 0, -v.z(), v.y(), v.z(), 0, -v.x(), -v.y(), v.x(), 0;
  return m;
}

/// The exponential by its series, which needs no angle.
Real33 exponential(const Real3& turn) {
  Real33 sum = Real33::Identity(), term = sum;
  for (int k = 1; k < 40; ++k) {
    term = (term * cross(turn) / static_cast<Real>(k)).eval();
    sum += term;
  }
  return sum;
}

Dense pick(const Dense& matrix, const std::vector<int>& rows) {
  Dense picked(rows.size(), rows.size());
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows.size(); ++c) {
      picked(static_cast<Eigen::Index>(r), static_cast<Eigen::Index>(c)) = matrix(rows[r], rows[c]);
    }
  }
  return picked;
}

Dense spread(const Dense& small, const std::vector<int>& rows, Eigen::Index size) {
  Dense whole = Dense::Zero(size, size);
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows.size(); ++c) {
      whole(rows[r], rows[c]) = small(static_cast<Eigen::Index>(r), static_cast<Eigen::Index>(c));
    }
  }
  return whole;
}

}  // namespace

DenseReference::DenseReference(const Network& network_, const std::vector<Pose>& truth)
    : network(network_), frame(network_.stations.size()) {
  for (const Pose& pose : truth) {
    rotations.push_back(pose.rotation.cast<Real>());
    shifts.push_back(pose.shift.cast<Real>());
  }
  centres.resize(truth.size());
  targets.assign(network.targets.size(), Real3::Zero());
  findFrame();
  listEquations();
  iterate();
  state();
}

bool DenseReference::isFree() const {
  const bool held = std::any_of(network.stations.begin(), network.stations.end(), [](const auto& s) { return s.held; });
  const bool isControlled =
      std::any_of(network.targets.begin(), network.targets.end(), [](const auto& t) { return t.control.has_value(); });
  return !held && !isControlled;
}

void DenseReference::findFrame() {
  if (!isFree()) return;
  frame = 0;
  for (std::size_t s = network.stations.size(); s-- > 0;) {
    if (network.stations[s].levelled) frame = s;
  }
}

void DenseReference::listEquations() {
  for (std::size_t o = 0; o < network.observations.size(); ++o) {
    const Observation& seen = network.observations[o];
    const Real variance = static_cast<Real>(seen.sigma) * seen.sigma / seen.weight;
    equations.push_back(
        {static_cast<int>(o), seen.target, Real33::Identity() / variance, variance * Real33::Identity()});
  }
  for (std::size_t t = 0; t < network.targets.size(); ++t) {
    const auto& given = network.targets[t].control;
    if (!given || !given->covariance) continue;
    const Real33 covariance = given->covariance->cast<Real>();
    equations.push_back({-1, t, covariance.inverse(), covariance});
  }
}

Column DenseReference::residuals() const {
  Column v(3 * static_cast<Eigen::Index>(equations.size()));
  for (std::size_t e = 0; e < equations.size(); ++e) {
    Real3 measured;
    if (equations[e].observation < 0) {
      measured = network.targets[equations[e].target].control->place.cast<Real>();
    } else {
      const Observation& seen = network.observations[static_cast<std::size_t>(equations[e].observation)];
      measured = rotations[seen.station] * seen.place.cast<Real>() + shifts[seen.station];
    }
    v.segment<3>(3 * static_cast<Eigen::Index>(e)) = measured - targets[equations[e].target];
  }
  return v;
}

Eigen::Matrix<Real, 3, 6> DenseReference::rowsAt(std::size_t station, const Real3& place) const {
  Eigen::Matrix<Real, 3, 6> rows;
  rows << -cross(place - centres[station]), Real33::Identity();
  return rows;
}

/// Six columns for every station, three for every target.
Dense DenseReference::design() const {
  const auto stations = static_cast<Eigen::Index>(network.stations.size());
  Dense a = Dense::Zero(3 * static_cast<Eigen::Index>(equations.size()),
                        6 * stations + 3 * static_cast<Eigen::Index>(targets.size()));
  for (std::size_t e = 0; e < equations.size(); ++e) {
    const Eigen::Index row = 3 * static_cast<Eigen::Index>(e);
    a.block<3, 3>(row, 6 * stations + 3 * static_cast<Eigen::Index>(equations[e].target)) = -Real33::Identity();
    if (equations[e].observation < 0) continue;
    const std::size_t station = network.observations[static_cast<std::size_t>(equations[e].observation)].station;
    a.block<3, 6>(row, 6 * static_cast<Eigen::Index>(station)) = rowsAt(station, targets[equations[e].target]);
  }
  return a;
}

/// Three rows at a time, times the information of their measurement.
Dense DenseReference::weigh(const Dense& rows) const {
  Dense weighted = rows;
  for (std::size_t e = 0; e < equations.size(); ++e) {
    const Eigen::Index row = 3 * static_cast<Eigen::Index>(e);
    weighted.middleRows<3>(row) = equations[e].information * rows.middleRows<3>(row);
  }
  return weighted;
}

std::vector<int> DenseReference::columns(bool withFrame) const {
  std::vector<int> unknown;
  const int stations = static_cast<int>(network.stations.size());
  for (int s = 0; s < stations; ++s) {
    const Station& station = network.stations[static_cast<std::size_t>(s)];
    if (station.held || (!withFrame && static_cast<std::size_t>(s) == frame)) continue;
    for (int c = station.levelled ? 2 : 0; c < 6; ++c) unknown.push_back(6 * s + c);
  }
  for (int t = 0; t < static_cast<int>(targets.size()); ++t) {
    const auto& given = network.targets[static_cast<std::size_t>(t)].control;
    if (given && !given->covariance) continue;
    for (int c = 0; c < 3; ++c) unknown.push_back(6 * stations + 3 * t + c);
  }
  return unknown;
}

void DenseReference::iterate() {
  for (std::size_t t = 0; t < targets.size(); ++t) {
    if (network.targets[t].control) targets[t] = network.targets[t].control->place.cast<Real>();
  }
  const std::vector<int> unknown = columns(false);
  // The first pass places the targets; the last one no longer shortens the step.
  Real last = 1;
  for (int pass = 0; pass < 60; ++pass) {
    for (std::size_t s = 0; s < centres.size(); ++s) {
      Real3 sum = Real3::Zero();
      Real count = 0;
      for (const Observation& seen : network.observations) {
        if (seen.station != s) continue;
        sum += rotations[s] * seen.place.cast<Real>() + shifts[s];
        count += 1;
      }
      centres[s] = sum / count;
    }
    const Dense a = design();
    const Dense weighted = weigh(a);
    const Dense normal = pick(a.transpose() * weighted, unknown);
    const Column slope = weighted.transpose() * residuals();
    Column side(unknown.size());
    for (std::size_t k = 0; k < unknown.size(); ++k) side(static_cast<Eigen::Index>(k)) = slope(unknown[k]);
    const Column step = -normal.ldlt().solve(side);
    Column whole = Column::Zero(a.cols());
    for (std::size_t k = 0; k < unknown.size(); ++k) whole(unknown[k]) = step(static_cast<Eigen::Index>(k));
    const auto stations = static_cast<Eigen::Index>(network.stations.size());
    for (std::size_t s = 0; s < centres.size(); ++s) {
      const Column part = whole.segment(6 * static_cast<Eigen::Index>(s), 6);
      const Real33 turn = exponential(part.head<3>());
      rotations[s] = (turn * rotations[s]).eval();
      shifts[s] = centres[s] + turn * (shifts[s] - centres[s]) + part.tail<3>();
    }
    for (std::size_t t = 0; t < targets.size(); ++t) {
      targets[t] += whole.segment(6 * stations + 3 * static_cast<Eigen::Index>(t), 3);
    }
    if (pass > 2 && (whole.norm() < 1e-17L || (last < 1e-10L && whole.norm() > last / 2))) break;
    last = whole.norm();
  }
}

/// Of the whole network, in the rows of all columns.
Dense DenseReference::motions() const {
  const bool level =
      std::any_of(network.stations.begin(), network.stations.end(), [](const auto& s) { return s.levelled; });
  const auto stations = static_cast<Eigen::Index>(network.stations.size());
  Dense g = Dense::Zero(6 * stations + 3 * static_cast<Eigen::Index>(targets.size()), 6);
  for (Eigen::Index s = 0; s < stations; ++s) {
    g.block<3, 3>(6 * s, 0).setIdentity();
    g.block<3, 3>(6 * s + 3, 0) = -cross(centres[static_cast<std::size_t>(s)]);
    g.block<3, 3>(6 * s + 3, 3).setIdentity();
  }
  for (std::size_t t = 0; t < targets.size(); ++t) {
    const Eigen::Index row = 6 * stations + 3 * static_cast<Eigen::Index>(t);
    g.block<3, 3>(row, 0) = -cross(targets[t]);
    g.block<3, 3>(row, 3).setIdentity();
  }
  if (!level) return g;
  return g.rightCols(4);
}

Dense DenseReference::cofactors(const Dense& normal) const {
  const std::vector<int> unknown = columns(false);
  const Dense held = spread(pick(normal, unknown).inverse(), unknown, normal.rows());
  if (!isFree()) return held;
  const Dense g = motions();
  Dense b = g;
  b.topRows(6 * static_cast<Eigen::Index>(network.stations.size())).setZero();
  const Dense s = Dense::Identity(g.rows(), g.rows()) - g * (b.transpose() * g).inverse() * b.transpose();
  return s * held * s.transpose();
}

void DenseReference::state() {
  const Dense a = design();
  const Column v = residuals();
  sumOfSquares = v.dot(weigh(v).col(0));
  redundancy = static_cast<int>(3 * equations.size()) - static_cast<int>(columns(false).size());
  const Dense normal = a.transpose() * weigh(a);
  const Dense q = cofactors(normal);
  const auto stations = static_cast<Eigen::Index>(network.stations.size());
  for (Eigen::Index s = 0; s < stations; ++s) stationCofactors.push_back(q.block<6, 6>(6 * s, 6 * s));
  for (Eigen::Index t = 0; t < static_cast<Eigen::Index>(targets.size()); ++t) {
    targetCofactors.push_back(q.block<3, 3>(6 * stations + 3 * t, 6 * stations + 3 * t));
  }
  observations.resize(network.observations.size());
  control.resize(targets.size());
  for (std::size_t e = 0; e < equations.size(); ++e) describe(equations[e], 3 * e, v, a, q);
  soften(normal);
}

void DenseReference::describe(const Equation& equation, std::size_t row, const Column& v, const Dense& a,
                              const Dense& q) {
  DenseObservation told;
  const Dense rows = a.middleRows(static_cast<Eigen::Index>(row), 3);
  const Real33 information = equation.information;
  const Dense reach = q * rows.transpose() * information;
  const Real33 spreadOfAdjusted = rows * q * rows.transpose();
  told.reliability = information - information * spreadOfAdjusted * information;
  told.residual = v.segment<3>(static_cast<Eigen::Index>(row));
  const Real3 pull = information * told.residual;
  told.redundancy = (equation.covariance * told.reliability).diagonal();
  const Real33 root = Eigen::SelfAdjointEigenSolver<Real33>(equation.covariance).operatorSqrt();
  told.leastRedundancy = Eigen::SelfAdjointEigenSolver<Real33>(root * told.reliability * root).eigenvalues()(0);
  for (int axis = 0; axis < 3; ++axis) told.w(axis) = pull(axis) / std::sqrt(told.reliability(axis, axis));
  told.hiddenError = told.reliability.inverse() * pull;
  told.statistic = pull.dot(told.hiddenError);
  for (Eigen::Index s = 0; s < static_cast<Eigen::Index>(network.stations.size()); ++s) {
    told.pull.push_back(reach.middleRows<6>(6 * s));
  }
  if (equation.observation >= 0) {
    observations[static_cast<std::size_t>(equation.observation)] = told;
  } else {
    control[equation.target] = told;
  }
}

Real DenseReference::lever(std::size_t station) const {
  Real squares = 0, count = 0;
  for (const Observation& seen : network.observations) {
    if (seen.station != station) continue;
    const Real3 place = rotations[station] * seen.place.cast<Real>() + shifts[station];
    squares += (place - centres[station]).squaredNorm();
    count += 1;
  }
  return std::sqrt(squares / count);
}

/// Targets out by the Schur complement, then every column made unit-free.
void DenseReference::soften(const Dense& normal) {
  const Eigen::Index poses = 6 * static_cast<Eigen::Index>(network.stations.size());
  std::vector<int> poseColumns, targetColumns;
  for (const int c : columns(false)) (c < poses ? poseColumns : targetColumns).push_back(c);
  Dense scale = Dense::Zero(normal.rows(), normal.rows());
  geometry.resize(network.stations.size());
  for (std::size_t s = 0; s < network.stations.size(); ++s) {
    Real information = 0;
    Real66 own = Real66::Zero();
    for (const Observation& seen : network.observations) {
      if (seen.station != s) continue;
      const Real weight = static_cast<Real>(seen.weight) / (static_cast<Real>(seen.sigma) * seen.sigma);
      information += weight;
      own += weight * rowsAt(s, targets[seen.target]).transpose() * rowsAt(s, targets[seen.target]);
    }
    Real66 unit = Real66::Identity() / std::sqrt(information);
    unit.topLeftCorner<3, 3>() /= lever(s);
    scale.block<6, 6>(6 * static_cast<Eigen::Index>(s), 6 * static_cast<Eigen::Index>(s)) = unit;
    const int rows = network.stations[s].levelled ? 4 : 6;
    const Dense block = (unit * own * unit).bottomRightCorner(rows, rows);
    geometry[s] = Eigen::SelfAdjointEigenSolver<Dense>(block).eigenvalues()(0);
  }
  Dense reduced = normal;
  for (const int t : targetColumns) {
    const Column column = reduced.col(t);
    reduced -= (column * column.transpose() / column(t)).eval();
  }
  stiffness = Eigen::SelfAdjointEigenSolver<Dense>(pick(scale * reduced * scale, poseColumns)).eigenvalues()(0);
}

}  // namespace tiepoint::workbench::analysis::testing
