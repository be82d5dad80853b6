#include "workbench/analysis/sparse_inverse.h"

#include <gtest/gtest.h>
#include <Eigen/Dense>
#include <Eigen/SparseCholesky>

#include <stdexcept>

#include "workbench/analysis/random_networks.h"

namespace tiepoint::workbench::analysis::testing {
namespace {

/// A sparse definite matrix of random blocks.
struct RandomMatrix {
  explicit RandomMatrix(std::uint64_t seed) : random(seed) {
    for (int node = 0; node < nodes; ++node) widths.push_back(1 + static_cast<int>(random() % 6));
    for (int node = 1; node < nodes; ++node)
      neighbours.emplace_back(node, static_cast<int>(random() % static_cast<std::uint64_t>(node)));
    for (int extra = 0; extra < 12; ++extra) {
      neighbours.emplace_back(static_cast<int>(random() % nodes), static_cast<int>(random() % nodes));
    }
  }

  Block block(int rows, int columns) {
    Block result(rows, columns);
    for (int r = 0; r < rows; ++r) {
      for (int c = 0; c < columns; ++c) result(r, c) = uniform(random, -1.0, 1.0);
    }
    return result;
  }

  BlockMatrix make() {
    BlockMatrix matrix(widths, neighbours);
    for (int node = 0; node < nodes; ++node) {
      matrix.add(node, node, 40.0 * Block::Identity(widths[index(node)], widths[index(node)]));
    }
    for (const auto& [one, other] : neighbours) {
      if (one != other) matrix.add(one, other, block(widths[index(one)], widths[index(other)]));
    }
    return matrix;
  }

  static std::size_t index(int node) { return static_cast<std::size_t>(node); }
  static constexpr int nodes = 20;
  std::mt19937_64 random;
  std::vector<int> widths;
  std::vector<std::pair<int, int>> neighbours;
};

TEST(SparseInverse, IsTheDenseInverseAtThePlacesOfTheFactor) {
  for (std::uint64_t seed = 0; seed < 30; ++seed) {
    RandomMatrix random(seed);
    const BlockMatrix matrix = random.make();
    SparseFactor factor(matrix);
    ASSERT_TRUE(factor.factorize(matrix));
    const SparseInverse inverse(matrix, factor);
    const Eigen::MatrixXd lower = matrix.lower();
    const Eigen::MatrixXd whole = lower.selfadjointView<Eigen::Lower>();
    const Eigen::MatrixXd wanted = whole.inverse();
    random.neighbours.emplace_back(3, 3);
    for (const auto& [one, other] : random.neighbours) {
      const Block found = inverse.block(one, other);
      const Block there =
          wanted.block(matrix.offset(one), matrix.offset(other), matrix.width(one), matrix.width(other));
      ASSERT_EQ(found.rows(), there.rows());
      EXPECT_LT((found - there).cwiseAbs().maxCoeff(), 1e-14);
    }
  }
}

TEST(SparseInverse, RefusesPlacesThatTheFactorLeavesEmpty) {
  BlockMatrix matrix({2, 2, 2}, {{0, 1}});
  for (int node = 0; node < 3; ++node) matrix.add(node, node, Block::Identity(2, 2));
  SparseFactor factor(matrix);
  ASSERT_TRUE(factor.factorize(matrix));
  const SparseInverse inverse(matrix, factor);
  EXPECT_THROW(inverse.block(0, 2), std::logic_error);
}

TEST(SparseFactor, IsThatOfOneColumnAfterAnother) {
  for (std::uint64_t seed = 0; seed < 30; ++seed) {
    RandomMatrix random(seed);
    BlockMatrix matrix = random.make();
    // Every third one is indefinite.
    if (seed % 3 == 0) matrix.addDiagonal(Eigen::VectorXd::Constant(matrix.size(), -38.0));
    SparseFactor factor(matrix);
    ASSERT_TRUE(factor.factorize(matrix));
    const Eigen::SimplicialLDLT<Eigen::SparseMatrix<double>, Eigen::Lower, Eigen::NaturalOrdering<int>> plain(
        matrix.lower());
    const Eigen::VectorXd pivots = plain.vectorD();
    EXPECT_LT((factor.pivots() - pivots).cwiseQuotient(pivots).cwiseAbs().maxCoeff(), 1e-7);
    EXPECT_EQ(factor.negativePivots(), (pivots.array() < 0.0).count());
    const Eigen::MatrixXd side = Eigen::MatrixXd::Identity(matrix.size(), 3);
    const Eigen::MatrixXd wanted = plain.solve(side);
    EXPECT_LT((factor.solve(side) - wanted).norm(), 1e-7 * wanted.norm());
    EXPECT_GE(factor.filled(), static_cast<std::size_t>(plain.matrixL().nestedExpression().nonZeros()));
  }
}

TEST(SparseFactor, OfAWideFrontIsThatOfOneColumnAfterAnother) {
  // All nodes are neighbours: one supernode of several panels.
  const int nodes = 40;
  std::vector<std::pair<int, int>> all;
  for (int a = 0; a < nodes; ++a) {
    for (int b = 0; b < a; ++b) all.emplace_back(a, b);
  }
  BlockMatrix matrix(std::vector<int>(nodes, 6), all);
  RandomMatrix random(3);
  for (const auto& [one, other] : all) matrix.add(one, other, random.block(6, 6));
  matrix.addDiagonal(Eigen::VectorXd::Constant(matrix.size(), 300.0));
  SparseFactor factor(matrix);
  ASSERT_TRUE(factor.factorize(matrix));
  EXPECT_EQ(factor.supernodes().size(), 1u);
  const Eigen::MatrixXd lower = matrix.lower();
  const Eigen::MatrixXd whole = lower.selfadjointView<Eigen::Lower>();
  const Eigen::VectorXd side = Eigen::VectorXd::LinSpaced(matrix.size(), -1.0, 1.0);
  EXPECT_LT((whole * factor.solve(side) - side).norm(), 1e-12);
}

TEST(SparseFactor, OfASingularMatrixSaysSo) {
  BlockMatrix matrix({2, 2}, {{0, 1}});
  matrix.add(0, 0, Block::Identity(2, 2));
  SparseFactor factor(matrix);
  EXPECT_FALSE(factor.factorize(matrix));
}

TEST(SparseFactor, CountsNegativePivots) {
  BlockMatrix matrix({2, 3}, {{0, 1}});
  Block one = Block::Identity(2, 2), other = -Block::Identity(3, 3);
  matrix.add(0, 0, one);
  matrix.add(1, 1, other);
  SparseFactor factor(matrix);
  ASSERT_TRUE(factor.factorize(matrix));
  EXPECT_EQ(factor.negativePivots(), 3);
}

}  // namespace
}  // namespace tiepoint::workbench::analysis::testing
