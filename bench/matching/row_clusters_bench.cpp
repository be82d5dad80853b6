// The clusters of rows spread evenly in space, beside the comparison of all pairs and a k-d tree.
#include "matching/row_clusters.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>

#include "matching/plain_row_clusters.h"

#ifdef TIEPOINT_HAS_NANOFLANN
#include <nanoflann.hpp>
#endif

namespace {

using ZOR::reg::RowClusters;
using ZOR::reg::RowTable;

/// Rows in a cube of this side, in drawing units.
constexpr double side = 100.0;
constexpr double neighboursPerRow = 3.0;
/// So long that a million rows are clustered several times: one hiccup of the machine is no figure.
constexpr double secondsEach = 3.0;

RowTable evenRows(std::int64_t count) {
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> place(0.0, side);
  RowTable rows(count, 3);
  for (Eigen::Index row = 0; row < count; ++row) {
    for (Eigen::Index column = 0; column < 3; ++column) rows(row, column) = place(random);
  }
  return rows;
}

/// The radius of the ball that holds so many rows on average.
double thresholdFor(std::int64_t count) {
  const double pi = std::acos(-1.0);
  const double volume = neighboursPerRow * side * side * side / static_cast<double>(count);
  return std::cbrt(volume * 3.0 / (4.0 * pi));
}

/// Four tags in turn.
std::vector<std::uint64_t> tagsFor(std::int64_t count) {
  std::vector<std::uint64_t> tags(static_cast<std::size_t>(count));
  for (std::size_t row = 0; row < tags.size(); ++row) tags[row] = row % 4;
  return tags;
}

template <typename Find>
void run(benchmark::State& state, double threshold, Find find) {
  const RowTable rows = evenRows(state.range(0));
  RowClusters clusters;
  for (auto _ : state) {
    find(rows, threshold, clusters);
    benchmark::DoNotOptimize(clusters);
  }
  state.counters["clusters"] = static_cast<double>(clusters.size());
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Find>
void run(benchmark::State& state, Find find) {
  run(state, thresholdFor(state.range(0)), find);
}

void ours(benchmark::State& state) { run(state, ZOR::reg::clusterRows); }

void oursByTag(benchmark::State& state) {
  const std::vector<std::uint64_t> tags = tagsFor(state.range(0));
  run(state, [&](const RowTable& rows, double threshold, RowClusters& clusters) {
    ZOR::reg::clusterRowsByTag(rows, tags, threshold, clusters);
  });
}

void plain(benchmark::State& state) {
  run(state, [](const RowTable& rows, double threshold, RowClusters& clusters) {
    clusters = tiepoint::testing::clusterRowsPlainly(rows, threshold);
  });
}

/// Each row within the threshold of a good part of the others.
void oursCrowded(benchmark::State& state) { run(state, side / 4, ZOR::reg::clusterRows); }

void plainCrowded(benchmark::State& state) {
  run(state, side / 4, [](const RowTable& rows, double threshold, RowClusters& clusters) {
    clusters = tiepoint::testing::clusterRowsPlainly(rows, threshold);
  });
}

BENCHMARK(oursCrowded)->Arg(1000)->Arg(30000)->Arg(1000000)->MinTime(secondsEach)->Unit(benchmark::kMillisecond);
BENCHMARK(plainCrowded)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ours)->Arg(1000)->Arg(30000)->Arg(1000000)->MinTime(secondsEach)->Unit(benchmark::kMillisecond);
BENCHMARK(oursByTag)->Arg(1000)->Arg(30000)->Arg(1000000)->MinTime(secondsEach)->Unit(benchmark::kMillisecond);
BENCHMARK(plain)->Arg(1000)->Arg(30000)->Unit(benchmark::kMillisecond);

#ifdef TIEPOINT_HAS_NANOFLANN

/// Each row as three numbers side by side, as the tree reads them fastest.
struct TreeRows {
  explicit TreeRows(const RowTable& rows) : values(static_cast<std::size_t>(rows.rows())) {
    for (std::size_t row = 0; row < values.size(); ++row) {
      for (std::size_t column = 0; column < 3; ++column) {
        values[row][column] = rows(static_cast<Eigen::Index>(row), static_cast<Eigen::Index>(column));
      }
    }
  }
  std::size_t kdtree_get_point_count() const { return values.size(); }
  double kdtree_get_pt(std::size_t row, std::size_t column) const { return values[row][column]; }
  template <typename Box>
  bool kdtree_get_bbox(Box& /*box*/) const {
    return false;
  }

  std::vector<std::array<double, 3>> values;
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, TreeRows, double, std::size_t>,
                                                 TreeRows, 3, std::size_t>;

std::size_t rootOf(std::vector<std::size_t>& parents, std::size_t row) {
  while (parents[row] != row) row = parents[row] = parents[parents[row]];
  return row;
}

/// The parent of a row in one of disjoint sets, each with its lowest row as root.
std::vector<std::size_t> joinedByTree(const RowTable& table, double threshold) {
  const TreeRows rows(table);
  const Tree tree(3, rows, nanoflann::KDTreeSingleIndexAdaptorParams(10));
  std::vector<std::size_t> parents(rows.values.size());
  std::iota(parents.begin(), parents.end(), std::size_t{0});
  nanoflann::SearchParams parameters;
  parameters.sorted = false;
  std::vector<std::pair<std::size_t, double>> found;
  for (std::size_t row = 0; row < rows.values.size(); ++row) {
    tree.radiusSearch(rows.values[row].data(), threshold * threshold, found, parameters);
    for (const auto& neighbour : found) {
      const std::size_t a = rootOf(parents, row);
      const std::size_t b = rootOf(parents, neighbour.first);
      parents[std::max(a, b)] = std::min(a, b);
    }
  }
  return parents;
}

void clusterByTree(const RowTable& table, double threshold, RowClusters& clusters) {
  std::vector<std::size_t> parents = joinedByTree(table, threshold);
  std::vector<std::size_t> sizes(parents.size(), 0);
  for (std::size_t row = 0; row < parents.size(); ++row) ++sizes[rootOf(parents, row)];
  std::vector<std::size_t> clusterOf(parents.size(), 0);
  clusters.clear();
  for (std::size_t row = 0; row < parents.size(); ++row) {
    const std::size_t root = rootOf(parents, row);
    if (sizes[root] < 2) continue;
    if (root == row) {
      clusterOf[row] = clusters.size();
      clusters.emplace_back().reserve(sizes[row]);
    }
    clusters[clusterOf[root]].push_back(row);
  }
}

void kdTree(benchmark::State& state) { run(state, clusterByTree); }
BENCHMARK(kdTree)->Arg(1000)->Arg(30000)->Arg(1000000)->MinTime(secondsEach)->Unit(benchmark::kMillisecond);

#endif

}  // namespace
