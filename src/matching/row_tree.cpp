#include "matching/row_tree.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "matching/row_distance.h"

namespace ZOR::reg {

namespace {

constexpr std::size_t leafSize = 16;

std::array<double, 3> valuesOf(const PlacedRow& row) { return {row.x, row.y, row.z}; }

double distanceOf(const std::array<double, 3>& d) { return rowDistance(d[0], d[1], d[2]); }

}  // namespace

RowTree::RowTree(const std::vector<PlacedRow>& placed, std::size_t count) : rows(&placed), order(count) {
  std::iota(order.begin(), order.end(), Index{0});
  if (count > 0) build(0, count);
}

RowTree::NodeNumber RowTree::build(std::size_t begin, std::size_t end) {
  const NodeNumber number = nodes.size();
  Node& node = nodes.emplace_back();
  node.begin = begin;
  node.end = end;
  describe(node);
  if (node.size() <= leafSize) return number;

  std::size_t widest = 0;
  const auto halfWidth = [&node](std::size_t axis) { return node.highest[axis] / 2 - node.lowest[axis] / 2; };
  for (const std::size_t axis : {1U, 2U}) {
    if (halfWidth(axis) > halfWidth(widest)) widest = axis;
  }
  const std::size_t middle = begin + (end - begin) / 2;
  const auto at = [this](std::size_t i) { return order.begin() + static_cast<std::ptrdiff_t>(i); };
  std::nth_element(at(begin), at(middle), at(end), [this, widest](Index a, Index b) {
    return valuesOf((*rows)[a])[widest] < valuesOf((*rows)[b])[widest];
  });
  build(begin, middle);
  const NodeNumber right = build(middle, end);
  nodes[number].right = right;
  return number;
}

void RowTree::describe(Node& node) const {
  node.lowest = node.highest = valuesOf((*rows)[order[node.begin]]);
  for (std::size_t i = node.begin; i < node.end; ++i) {
    const Index index = order[i];
    const Corner values = valuesOf((*rows)[index]);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      node.lowest[axis] = std::min(node.lowest[axis], values[axis]);
      node.highest[axis] = std::max(node.highest[axis], values[axis]);
    }
    Samples& samples = node.samples;
    const auto isOfTag = [&](Index sample) { return !tagsDiffer(sample, index); };
    const auto known = samples.indices.begin() + static_cast<std::ptrdiff_t>(samples.count);
    if (samples.count < samples.indices.size() && std::none_of(samples.indices.begin(), known, isOfTag)) {
      samples.indices[samples.count++] = index;
    }
  }
}

bool RowTree::haveOneTag(const Node& a, const Node& b) const {
  return a.samples.count == 1 && b.samples.count == 1 && !tagsDiffer(a.samples.indices[0], b.samples.indices[0]);
}

void RowTree::tieCloseRows(double linkThreshold, LinkForest& links) {
  threshold = linkThreshold;
  forest = &links;
  if (!nodes.empty()) joinInside(0);
}

void RowTree::joinInside(NodeNumber number) {
  Node& node = nodes[number];
  if (node.isTied || haveOneTag(node, node)) return;
  Corner across{};
  for (std::size_t axis = 0; axis < 3; ++axis) across[axis] = node.highest[axis] - node.lowest[axis];
  if (!(distanceOf(across) >= threshold)) {
    tieToSamples(node, node.samples);
  } else if (node.isLeaf()) {
    for (std::size_t i = node.begin; i < node.end; ++i) {
      for (std::size_t j = i + 1; j < node.end; ++j) comparePair(order[i], order[j]);
    }
  } else {
    joinInside(number + 1);
    joinInside(node.right);
    joinBetween(number + 1, node.right);
  }
  noteTied(node);
}

void RowTree::joinBetween(NodeNumber numberOfA, NodeNumber numberOfB) {
  Node& a = nodes[numberOfA];
  Node& b = nodes[numberOfB];
  if (haveOneTag(a, b) || areTied(a, b)) return;
  Corner least{};
  Corner greatest{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    least[axis] = std::max({a.lowest[axis] - b.highest[axis], b.lowest[axis] - a.highest[axis], 0.0});
    greatest[axis] = std::max(a.highest[axis] - b.lowest[axis], b.highest[axis] - a.lowest[axis]);
  }
  if (distanceOf(least) >= threshold) return;
  if (!(distanceOf(greatest) >= threshold)) {
    tieToSamples(a, b.samples);
    tieToSamples(b, a.samples);
  } else if (a.isLeaf() && b.isLeaf()) {
    for (std::size_t i = a.begin; i < a.end; ++i) {
      for (std::size_t j = b.begin; j < b.end; ++j) comparePair(order[i], order[j]);
    }
  } else if (b.isLeaf() || (!a.isLeaf() && a.size() >= b.size())) {
    passDown(a);
    joinBetween(numberOfA + 1, numberOfB);
    joinBetween(a.right, numberOfB);
  } else {
    passDown(b);
    joinBetween(numberOfA, numberOfB + 1);
    joinBetween(numberOfA, b.right);
  }
  noteTied(a);
  noteTied(b);
}

/// All rows of the node are close to the samples. Two nodes that are close to one another are tied as
/// a whole by tying each to the other's samples: those tie each other, unless both have the same two
/// tags; then they make two sets, which only a row of a third tag could join, and does.
void RowTree::tieToSamples(const Node& node, const Samples& samples) {
  for (std::size_t i = node.begin; i < node.end; ++i) {
    for (std::size_t k = 0; k < samples.count; ++k) {
      if (tagsDiffer(order[i], samples.indices[k])) forest->tie(order[i], samples.indices[k]);
    }
  }
}

void RowTree::comparePair(Index a, Index b) {
  if (!tagsDiffer(a, b) || forest->areTied(a, b)) return;
  const PlacedRow& first = (*rows)[a];
  const PlacedRow& second = (*rows)[b];
  if (!(rowDistance(first, second) >= threshold)) forest->tie(a, b);
}

bool RowTree::areTied(const Node& a, const Node& b) {
  return a.isTied && b.isTied && forest->areTied(order[a.begin], order[b.begin]);
}

/// What is tied once stays so.
void RowTree::noteTied(Node& node) {
  if (node.isTied) return;
  if (node.isLeaf()) {
    node.isTied = std::all_of(order.begin() + static_cast<std::ptrdiff_t>(node.begin),
                              order.begin() + static_cast<std::ptrdiff_t>(node.end),
                              [&](Index index) { return forest->areTied(order[node.begin], index); });
  } else {
    const Node& left = nodes[static_cast<NodeNumber>(&node - nodes.data()) + 1];
    node.isTied = areTied(left, nodes[node.right]);
  }
}

void RowTree::passDown(const Node& node) {
  if (!node.isTied) return;
  nodes[static_cast<NodeNumber>(&node - nodes.data()) + 1].isTied = true;
  nodes[node.right].isTied = true;
}

}  // namespace ZOR::reg
