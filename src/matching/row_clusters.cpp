#include "matching/row_clusters.h"

#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/connected_components.hpp>

#include <algorithm>
#include <utility>

#include "matching/row_links.h"

namespace ZOR::reg {

namespace {

/// An undirected graph as its edges in both directions: two blocks of memory, whatever its size,
/// where an adjacency list takes three for every edge.
using LinkGraph = boost::compressed_sparse_row_graph<boost::directedS>;

/// Row i is vertex i; the rows behind the last that has a link have no vertex.
LinkGraph graphOf(const std::vector<RowLink>& links) {
  std::vector<std::pair<std::size_t, std::size_t>> edges;
  edges.reserve(2 * links.size());
  std::size_t vertexCount = 0;
  for (const RowLink& link : links) {
    edges.emplace_back(link.a, link.b);
    edges.emplace_back(link.b, link.a);
    vertexCount = std::max({vertexCount, link.a + 1, link.b + 1});
  }
  return LinkGraph(boost::edges_are_unsorted_multi_pass, edges.begin(), edges.end(), vertexCount);
}

/// Components come numbered in the order of their lowest vertex, and the rows are gone through
/// upwards, so both orders of the clusters come by themselves.
void gatherClusters(const std::vector<std::size_t>& componentOf, std::size_t componentCount, RowClusters& clusters) {
  std::vector<std::size_t> sizes(componentCount, 0);
  for (const std::size_t component : componentOf) ++sizes[component];

  std::vector<std::size_t> clusterOf(componentCount, 0);
  for (std::size_t component = 0; component < componentCount; ++component) {
    if (sizes[component] < 2) continue;
    clusterOf[component] = clusters.size();
    clusters.emplace_back().reserve(sizes[component]);
  }
  for (std::size_t row = 0; row < componentOf.size(); ++row) {
    const std::size_t component = componentOf[row];
    if (sizes[component] >= 2) clusters[clusterOf[component]].push_back(row);
  }
}

void clusterByLinks(const std::vector<RowLink>& links, RowClusters& clusters) {
  if (links.empty()) return;
  const LinkGraph graph = graphOf(links);
  std::vector<std::size_t> componentOf(boost::num_vertices(graph));
  const auto numbers = boost::make_iterator_property_map(componentOf.begin(), boost::get(boost::vertex_index, graph));
  const std::size_t componentCount = boost::connected_components(graph, numbers);
  gatherClusters(componentOf, componentCount, clusters);
}

}  // namespace

void clusterRows(const RowTable& rows, double threshold, RowClusters& clusters) {
  clusters.clear();
  clusterByLinks(linkRows(rows, threshold), clusters);
}

void clusterRowsByTag(const RowTable& rows, const std::vector<std::uint64_t>& tags, double threshold,
                      RowClusters& clusters) {
  clusters.clear();
  clusterByLinks(linkRowsByTag(rows, tags, threshold), clusters);
}

}  // namespace ZOR::reg
