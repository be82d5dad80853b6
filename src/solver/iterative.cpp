#include "solver/iterative.h"

#include <algorithm>
#include <cmath>

#include "solver/finish_solve.h"
#include "solver/model_to_base.h"
#include "solver/selection_matrix.h"
#include "solver/solve_input.h"
#include "solver/solve_tables.h"

namespace ZOR::reg {

namespace {

/// Below this a coordinate of the base counts as zero; a target with three such ones isn't pinned.
constexpr double pinTolerance = 1e-12;

/// One row a target, each in one place in memory, since the loop goes from row to row.
using ModelRows = Eigen::Matrix<double, Eigen::Dynamic, 3, Eigen::RowMajor>;

/// The part of a group that moves: its points that are present by coordinates.
struct MovingGroup {
  /// Rows of the model, ascending.
  std::vector<Eigen::Index> rows;
  Eigen::VectorXd weights;
  PointMatrix positions;
  /// Room for the model's rows, kept from pass to pass.
  PointMatrix target;
};

MovingGroup movingGroupOf(const GroupRows& group) {
  const SelectionMatrix present = selectByCoordinates(group.positions);
  MovingGroup moving;
  moving.rows = present.among(group.rows).selectedRows();
  moving.positions = present.pick(group.positions);
  moving.weights.resize(present.count());
  Eigen::Index k = 0;
  for (const Eigen::Index line : present.selectedRows()) moving.weights[k++] = group.weights[line];
  moving.target.resize(present.count(), 3);
  return moving;
}

/// Sums over the groups, one value for each row of the model.
struct WeightSums {
  Eigen::VectorXd inverse;
  /// The mean weight of the groups that have the point.
  Eigen::VectorXd mean;
};

WeightSums sumWeights(const SolveTables& tables) {
  Eigen::VectorXd sum = Eigen::VectorXd::Zero(tables.commonRows());
  Eigen::VectorXd count = Eigen::VectorXd::Zero(tables.commonRows());
  for (const GroupRows& group : tables.groups) {
    for (std::size_t line = 0; line < group.rows.size(); ++line) {
      const double weight = group.weights[static_cast<Eigen::Index>(line)];
      sum[group.rows[line]] += weight;
      if (weight != 0.0) count[group.rows[line]] += 1.0;
    }
  }
  return {sum.cwiseInverse(), sum.cwiseQuotient(count)};
}

class AlternatingLoop {
 public:
  AlternatingLoop(const SolveTables& tables, std::optional<std::size_t> baseGroup)
      : base(baseGroup),
        model(ModelRows::Zero(tables.commonRows(), 3)),
        previousModel(ModelRows::Zero(tables.commonRows(), 3)) {
    groups.reserve(tables.groups.size());
    for (const GroupRows& group : tables.groups) groups.push_back(movingGroupOf(group));
    WeightSums sums = sumWeights(tables);
    weightSumInverse = std::move(sums.inverse);
    modelWeights = std::move(sums.mean);
  }

  IterationEnd run(const IterationLimits& limits) {
    double movement = 0.0;
    std::uint64_t lastPass = 0;
    for (std::uint64_t passes = 0;;) {
      lastPass = passes;
      meanOfGroups();
      pinToBase();
      for (MovingGroup& group : groups) moveOntoModel(group);
      movement = largestMovement();
      previousModel = model;
      ++passes;
      if (passes > limits.maxIterations || !(movement > limits.convergenceCriteria)) break;
    }
    return {lastPass, movement};
  }

  SolveModel result() const { return {model, modelWeights}; }

 private:
  void meanOfGroups() {
    model.setZero();
    for (const MovingGroup& group : groups) {
      for (std::size_t k = 0; k < group.rows.size(); ++k) {
        const auto line = static_cast<Eigen::Index>(k);
        model.row(group.rows[k]) += group.weights[line] * group.positions.row(line);
      }
    }
    for (Eigen::Index row = 0; row < model.rows(); ++row) model.row(row) *= weightSumInverse[row];
  }

  void pinToBase() {
    if (!base) return;
    const MovingGroup& pins = groups[*base];
    for (std::size_t k = 0; k < pins.rows.size(); ++k) {
      const auto line = static_cast<Eigen::Index>(k);
      if (!(pins.positions.row(line).array().abs() > pinTolerance).any()) continue;
      model.row(pins.rows[k]) = pins.positions.row(line);
      modelWeights[pins.rows[k]] = pins.weights[line];
    }
  }

  void moveOntoModel(MovingGroup& group) const {
    Eigen::Index line = 0;
    for (const Eigen::Index row : group.rows) group.target.row(line++) = model.row(row);
    const RigidTransform toModel = fitRigidTransform(group.target, group.positions);
    for (line = 0; line < group.positions.rows(); ++line) {
      const OdGePoint3d moved =
          apply(toModel, {group.positions(line, 0), group.positions(line, 1), group.positions(line, 2)});
      group.positions.row(line) << moved.x, moved.y, moved.z;
    }
  }

  /// The first pass is measured from zero.
  double largestMovement() const {
    double largest = 0.0;
    for (Eigen::Index row = 0; row < model.rows(); ++row) {
      largest = std::max(largest, (model.row(row) - previousModel.row(row)).norm());
    }
    return largest;
  }

  std::optional<std::size_t> base;
  std::vector<MovingGroup> groups;
  Eigen::VectorXd weightSumInverse;
  Eigen::VectorXd modelWeights;
  ModelRows model;
  ModelRows previousModel;
};

}  // namespace

std::optional<IterationEnd> solveIterative(const RefPointList& workingPoints, const IterationLimits& limits,
                                           const RefPointList& sessionPoints, SolveResults& results,
                                           PointDiscrepancies& pointDiscrepancies) {
  const SolveTables tables = buildSolveTables(workingPoints);
  if (tables.groupIndex.size() < 2) return std::nullopt;
  const std::optional<GroupId> baseGroup = baseGroupOf(workingPoints);
  const auto baseRow = baseGroup ? rowOf(tables.groupIndex, *baseGroup) : std::nullopt;

  AlternatingLoop loop(tables, baseRow);
  const IterationEnd end = loop.run(limits);
  SolveModel model = loop.result();
  results.registrationMethod = methodIterative;
  if (baseRow) {
    moveModelToBase(tables.groups[*baseRow], model.positions);
    results.registrationMethod = methodIterativeWithBase;
  }
  std::vector<RigidTransform> records;
  finishSolve(model, tables, {SelectionTest::byLength, basePointsOf(workingPoints), baseGroup}, sessionPoints, records,
              results, pointDiscrepancies);
  return end;
}

}  // namespace ZOR::reg
