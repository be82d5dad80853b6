// The clusters of rows by comparing every row with every other.
#pragma once

#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/connected_components.hpp>

#include <cmath>
#include <map>

#include "matching/row_clusters.h"

namespace tiepoint::testing {

inline double plainRowDistance(const ZOR::reg::RowTable& rows, Eigen::Index i, Eigen::Index j) {
  const double dx = rows(i, 0) - rows(j, 0);
  const double dy = rows(i, 1) - rows(j, 1);
  const double dz = rows(i, 2) - rows(j, 2);
  return std::sqrt(dx * dx + (dy * dy + dz * dz));
}

/// `mayLink` says of two row numbers whether a link between them counts.
template <typename MayLink>
ZOR::reg::RowClusters clusterRowsPlainly(const ZOR::reg::RowTable& rows, double threshold, MayLink mayLink) {
  boost::adjacency_list<boost::vecS, boost::vecS, boost::undirectedS> graph;
  for (Eigen::Index i = 0; i < rows.rows(); ++i) {
    for (Eigen::Index j = i + 1; j < rows.rows(); ++j) {
      const auto a = static_cast<std::size_t>(i);
      const auto b = static_cast<std::size_t>(j);
      if (mayLink(a, b) && !(plainRowDistance(rows, i, j) >= threshold)) boost::add_edge(a, b, graph);
    }
  }
  std::vector<std::size_t> componentOf(boost::num_vertices(graph));
  if (!componentOf.empty()) boost::connected_components(graph, componentOf.data());
  std::map<std::size_t, std::vector<std::uint64_t>> components;
  for (std::size_t row = 0; row < componentOf.size(); ++row) components[componentOf[row]].push_back(row);
  ZOR::reg::RowClusters clusters;
  for (const auto& entry : components) {
    if (entry.second.size() >= 2) clusters.push_back(entry.second);
  }
  return clusters;
}

inline ZOR::reg::RowClusters clusterRowsPlainly(const ZOR::reg::RowTable& rows, double threshold) {
  return clusterRowsPlainly(rows, threshold, [](std::size_t, std::size_t) { return true; });
}

inline ZOR::reg::RowClusters clusterRowsByTagPlainly(const ZOR::reg::RowTable& rows,
                                                     const std::vector<std::uint64_t>& tags, double threshold) {
  return clusterRowsPlainly(rows, threshold, [&tags](std::size_t a, std::size_t b) { return tags[a] != tags[b]; });
}

}  // namespace tiepoint::testing
