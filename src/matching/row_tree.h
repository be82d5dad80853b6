// Rows in a tree of boxes, for tables in which many rows crowd within the threshold of one another.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "matching/link_forest.h"
#include "matching/row_columns.h"

namespace ZOR::reg {

/// Finite rows, halved along the longest side of their box until few are left. Two boxes that lie
/// apart, or that are tied together already, are passed over as a whole, and two boxes that lie
/// within the threshold are tied as a whole: so a crowd costs little more than its rows.
///
/// Rounding changes no decision, because it never turns an order round: the distance of two rows,
/// as it is computed, lies between the least and the greatest distance of their boxes as those are
/// computed.
class RowTree {
 public:
  using Index = LinkForest::Index;

  /// Over the indices [0, count) of `placed`, which must outlive the tree.
  RowTree(const std::vector<PlacedRow>& placed, std::size_t count);

  /// Ties what links between all pairs of rows of different tags would tie.
  void tieCloseRows(double linkThreshold, LinkForest& links);

 private:
  using Corner = std::array<double, 3>;
  /// Two rows of different tags, so that a row of any tag differs from one of them; one row where
  /// there is one tag.
  struct Samples {
    std::array<Index, 2> indices{};
    std::size_t count = 0;
  };
  struct Node {
    Corner lowest{};
    Corner highest{};
    std::size_t begin = 0;
    std::size_t end = 0;
    /// The left half follows its node; a leaf has no right half.
    std::size_t right = 0;
    Samples samples;
    bool isTied = false;

    std::size_t size() const { return end - begin; }
    bool isLeaf() const { return right == 0; }
  };
  using NodeNumber = std::size_t;

  NodeNumber build(std::size_t begin, std::size_t end);
  void describe(Node& node) const;
  bool haveOneTag(const Node& a, const Node& b) const;
  bool tagsDiffer(Index a, Index b) const { return (*rows)[a].tag != (*rows)[b].tag; }

  void joinInside(NodeNumber number);
  void joinBetween(NodeNumber a, NodeNumber b);
  void tieToSamples(const Node& node, const Samples& samples);
  void comparePair(Index a, Index b);
  bool areTied(const Node& a, const Node& b);
  void noteTied(Node& node);
  void passDown(const Node& node);

  const std::vector<PlacedRow>* rows;
  std::vector<Index> order;
  std::vector<Node> nodes;
  double threshold = 0.0;
  LinkForest* forest = nullptr;
};

}  // namespace ZOR::reg
