#include "workbench/analysis/supernodes.h"

#include <algorithm>

namespace tiepoint::workbench::analysis {

namespace {

std::size_t index(int place) { return static_cast<std::size_t>(place); }

/// For each node of the matrix, in the order of elimination, the later places that its columns fill.
std::vector<std::vector<int>> filledPlaces(const BlockMatrix& matrix, const std::vector<int>& placeOfRow) {
  const int nodes = matrix.nodes();
  const auto& lower = matrix.lower();
  std::vector<std::vector<int>> filled(index(nodes)), children(index(nodes));
  std::vector<int> mark(index(nodes), -1);
  for (int k = 0; k < nodes; ++k) {
    auto& own = filled[index(k)];
    const auto fill = [&](int place) {
      if (place <= k || mark[index(place)] == k) return;
      mark[index(place)] = k;
      own.push_back(place);
    };
    const int column = matrix.offset(matrix.order()[index(k)]);
    for (int entry = lower.outerIndexPtr()[column]; entry < lower.outerIndexPtr()[column + 1]; ++entry) {
      fill(placeOfRow[index(lower.innerIndexPtr()[entry])]);
    }
    for (const int child : children[index(k)])
      std::for_each(filled[index(child)].begin(), filled[index(child)].end(), fill);
    std::sort(own.begin(), own.end());
    if (!own.empty()) children[index(own.front())].push_back(k);
  }
  return filled;
}

std::vector<int> placesOfRows(const BlockMatrix& matrix) {
  std::vector<int> places(index(matrix.size()));
  for (int k = 0; k < matrix.nodes(); ++k) {
    const int node = matrix.order()[index(k)];
    for (int row = 0; row < matrix.width(node); ++row) places[index(matrix.offset(node) + row)] = k;
  }
  return places;
}

/// The rows of the nodes at these places.
std::vector<int> rowsOf(const BlockMatrix& matrix, const std::vector<int>& places) {
  std::vector<int> rows;
  for (const int place : places) {
    const int node = matrix.order()[index(place)];
    for (int row = 0; row < matrix.width(node); ++row) rows.push_back(matrix.offset(node) + row);
  }
  return rows;
}

}  // namespace

std::vector<Supernode> supernodesOf(const BlockMatrix& matrix) {
  const std::vector<int> placeOfRow = placesOfRows(matrix);
  const auto filled = filledPlaces(matrix, placeOfRow);
  std::vector<Supernode> supernodes;
  std::vector<int> supernodeOfPlace(filled.size());
  for (std::size_t k = 0; k < filled.size(); ++k) {
    const int node = matrix.order()[k];
    // A column goes with the one before it where that one fills this one and nothing else beside.
    const bool continues =
        k > 0 && filled[k - 1].size() == filled[k].size() + 1 && filled[k - 1].front() == static_cast<int>(k);
    if (!continues) {
      supernodes.emplace_back();
      supernodes.back().first = matrix.offset(node);
    }
    supernodes.back().width += matrix.width(node);
    supernodeOfPlace[k] = static_cast<int>(supernodes.size()) - 1;
    const bool ends = k + 1 == filled.size() || filled[k].empty() || filled[k].front() != static_cast<int>(k) + 1 ||
                      filled[k].size() != filled[k + 1].size() + 1;
    if (ends) supernodes.back().below = rowsOf(matrix, filled[k]);
  }
  for (std::size_t s = 0; s < supernodes.size(); ++s) {
    if (supernodes[s].below.empty()) continue;
    supernodes[s].parent = supernodeOfPlace[index(placeOfRow[index(supernodes[s].below.front())])];
    supernodes[index(supernodes[s].parent)].children.push_back(static_cast<int>(s));
  }
  return supernodes;
}

void markRows(const Supernode& supernode, std::vector<int>& placeOfRow) {
  for (int row = 0; row < supernode.width; ++row) placeOfRow[index(supernode.first + row)] = row;
  int place = supernode.width;
  for (const int row : supernode.below) placeOfRow[index(row)] = place++;
}

}  // namespace tiepoint::workbench::analysis
