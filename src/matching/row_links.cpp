#include "matching/row_links.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "matching/link_forest.h"
#include "matching/row_columns.h"
#include "matching/row_distance.h"
#include "matching/row_tree.h"

namespace ZOR::reg {

namespace {

using Index = LinkForest::Index;

/// The square of anything smaller may be rounded to less than it is, or to nothing.
constexpr double shortestReach = 1.5e-154;
/// The square of anything larger is infinite, and an infinite distance never links.
constexpr double longestReach = 2e154;
/// What the rounding of squares, sums and roots may take from a distance, many times over.
constexpr double reachMargin = 1.0 + 1e-9;

/// So many pairs within reach for each row, and the tree is quicker than the comparison of all of them.
constexpr std::size_t crowdedPairsPerRow = 64;

/// Rows that differ by more in any column are too far apart for a link, whatever the other columns.
double reachOf(double threshold) { return std::max(std::min(threshold, longestReach) * reachMargin, shortestReach); }

bool hasNotANumber(const PlacedRow& row) { return std::isnan(row.x) || std::isnan(row.y) || std::isnan(row.z); }
bool isFinite(const PlacedRow& row) { return std::isfinite(row.x) && std::isfinite(row.y) && std::isfinite(row.z); }

/// Rows by what can be said of their distances.
struct SortedRows {
  std::vector<PlacedRow> finite;
  std::vector<PlacedRow> infinite;
  std::vector<PlacedRow> notANumber;

  void add(const PlacedRow& row) {
    if (isFinite(row)) {
      finite.push_back(row);
    } else if (hasNotANumber(row)) {
      notANumber.push_back(row);
    } else {
      infinite.push_back(row);
    }
  }
};

template <typename TagOf>
SortedRows sortedRows(const RowTable& rows, TagOf tagOf) {
  SortedRows sorted;
  const auto count = static_cast<std::size_t>(rows.rows());
  sorted.finite.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const auto row = static_cast<Eigen::Index>(i);
    sorted.add({rows(row, 0), rows(row, 1), rows(row, 2), i, tagOf(i)});
  }
  return sorted;
}

/// Finds the links of one table. An index is the number of a row here: first the rows in the columns,
/// then their twins, then the infinite rows, then those that hold not-a-number.
class LinkSearch {
 public:
  LinkSearch(const SortedRows& sorted, double linkThreshold);

  std::vector<RowLink> run();

 private:
  void append(const std::vector<PlacedRow>& rows) { placed.insert(placed.end(), rows.begin(), rows.end()); }
  bool tagsDiffer(Index a, Index b) const { return placed[a].tag != placed[b].tag; }
  bool isCrowded() const { return pairsInReach > crowdedPairsPerRow * firstTwin; }
  void tieIfClose(Index a, Index b);

  void tieAcrossTags(const std::vector<Index>& indices);
  void tieToAllOfOtherTags(Index index);
  void tieNotANumbers();
  void tieInfinite(double PlacedRow::*column, double infinity);
  void tieAllInfinite();
  void sweepColumns();
  void sweepInside(const RowColumn& column);
  void sweepBetween(const RowColumn& column, const RowColumn& neighbour);
  void tieTwins();
  std::vector<RowLink> linksToLowest();

  double threshold;
  double reach;
  RowColumns inColumns;
  std::vector<PlacedRow> placed;
  Index firstTwin = 0;
  Index firstInfinite = 0;
  Index firstNotANumber = 0;
  LinkForest forest;
  std::size_t pairsInReach = 0;
};

LinkSearch::LinkSearch(const SortedRows& sorted, double linkThreshold)
    : threshold(linkThreshold),
      reach(reachOf(linkThreshold)),
      inColumns(sortIntoColumns(sorted.finite, reach)),
      placed(std::move(inColumns.rows)),
      forest(sorted.finite.size() + sorted.infinite.size() + sorted.notANumber.size()) {
  firstTwin = placed.size();
  for (const TwinRow& twin : inColumns.twins) placed.push_back(twin.row);
  firstInfinite = placed.size();
  append(sorted.infinite);
  firstNotANumber = placed.size();
  append(sorted.notANumber);
}

std::vector<RowLink> LinkSearch::run() {
  tieNotANumbers();
  tieAllInfinite();
  // No distance is below zero, and zero isn't below itself.
  if (threshold > 0 && !forest.allAreTied()) {
    sweepColumns();
    if (isCrowded()) RowTree(placed, firstTwin).tieCloseRows(threshold, forest);
    tieTwins();
  }
  return linksToLowest();
}

/// Upwards in the rows, so that whoever follows the links goes through memory in order.
std::vector<RowLink> LinkSearch::linksToLowest() {
  std::vector<std::uint64_t> lowestOfSet(placed.size(), placed.size());
  for (Index index = 0; index < placed.size(); ++index) {
    std::uint64_t& lowest = lowestOfSet[forest.rootOf(index)];
    lowest = std::min(lowest, placed[index].row);
  }
  std::vector<std::uint64_t> lowestOfRow(placed.size());
  for (Index index = 0; index < placed.size(); ++index) {
    lowestOfRow[placed[index].row] = lowestOfSet[forest.rootOf(index)];
  }
  std::vector<RowLink> links;
  for (std::uint64_t row = 0; row < lowestOfRow.size(); ++row) {
    if (lowestOfRow[row] != row) links.push_back({lowestOfRow[row], row});
  }
  return links;
}

void LinkSearch::tieIfClose(Index a, Index b) {
  if (tagsDiffer(a, b) && !(rowDistance(placed[a], placed[b]) >= threshold)) forest.tie(a, b);
}

/// Among `indices` any two of different tags are linked: with two tags that joins all of them.
void LinkSearch::tieAcrossTags(const std::vector<Index>& indices) {
  if (indices.empty()) return;
  const Index first = indices.front();
  const auto other =
      std::find_if(indices.begin(), indices.end(), [&](Index index) { return tagsDiffer(first, index); });
  if (other == indices.end()) return;
  for (const Index index : indices) forest.tie(tagsDiffer(first, index) ? first : *other, index);
}

void LinkSearch::tieToAllOfOtherTags(Index index) {
  for (Index other = 0; other < placed.size(); ++other) {
    if (tagsDiffer(index, other)) forest.tie(index, other);
  }
}

/// A row that holds not-a-number is linked to every row of another tag.
void LinkSearch::tieNotANumbers() {
  if (firstNotANumber == placed.size()) return;
  tieToAllOfOtherTags(firstNotANumber);
  for (Index index = firstNotANumber + 1; index < placed.size(); ++index) {
    if (!tagsDiffer(firstNotANumber, index)) continue;
    // What has the tag of the first is linked to this one: together they reach every row.
    tieToAllOfOtherTags(index);
    return;
  }
  Index other = 0;
  while (other < firstNotANumber && !tagsDiffer(firstNotANumber, other)) ++other;
  if (other == firstNotANumber) return;
  for (Index index = firstNotANumber; index < placed.size(); ++index) forest.tie(other, index);
}

/// An infinity less itself is not a number, which links; less anything else it is infinite, which
/// doesn't.
void LinkSearch::tieInfinite(double PlacedRow::*column, double infinity) {
  std::vector<Index> indices;
  for (Index index = firstInfinite; index < firstNotANumber; ++index) {
    if (placed[index].*column == infinity) indices.push_back(index);
  }
  tieAcrossTags(indices);
}

void LinkSearch::tieAllInfinite() {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const auto column : {&PlacedRow::x, &PlacedRow::y, &PlacedRow::z}) {
    tieInfinite(column, infinity);
    tieInfinite(column, -infinity);
  }
}

/// Each column against itself and its neighbours with a higher key; against the others those come
/// when it's their turn. Gives up, with what is tied so far, when the rows crowd.
void LinkSearch::sweepColumns() {
  const std::vector<RowColumn>& columns = inColumns.columns;
  std::size_t ahead = 0;
  for (std::size_t k = 0; k < columns.size() && !isCrowded(); ++k) {
    sweepInside(columns[k]);
    const std::uint64_t key = columns[k].key;
    if (k + 1 < columns.size() && columns[k + 1].key == key + 1) sweepBetween(columns[k], columns[k + 1]);
    const std::uint64_t across = key + CellGrid::stepInX;
    while (ahead < columns.size() && columns[ahead].key < across - 1) ++ahead;
    for (std::size_t m = ahead; m < columns.size() && columns[m].key <= across + 1; ++m) {
      sweepBetween(columns[k], columns[m]);
    }
  }
}

void LinkSearch::sweepInside(const RowColumn& column) {
  for (Index a = column.begin; a < column.end && !isCrowded(); ++a) {
    Index b = a + 1;
    for (; b < column.end && !(placed[b].z - placed[a].z > reach); ++b) tieIfClose(a, b);
    pairsInReach += b - a;
  }
}

void LinkSearch::sweepBetween(const RowColumn& column, const RowColumn& neighbour) {
  Index lowest = neighbour.begin;
  for (Index a = column.begin; a < column.end && !isCrowded(); ++a) {
    const double z = placed[a].z;
    while (lowest < neighbour.end && z - placed[lowest].z > reach) ++lowest;
    Index b = lowest;
    for (; b < neighbour.end && !(placed[b].z - z > reach); ++b) tieIfClose(a, b);
    pairsInReach += b - lowest;
  }
}

/// A twin is close to whatever its original is close to. If the original is tied at all, something
/// of another tag is close to it; whatever ties it without being close ties the twin as well.
void LinkSearch::tieTwins() {
  if (inColumns.twins.empty()) return;
  std::vector<bool> isTied(placed.size(), false);
  for (Index index = 0; index < placed.size(); ++index) {
    const Index root = forest.rootOf(index);
    if (root != index) isTied[root] = isTied[index] = true;
  }
  Index twinIndex = firstTwin;
  for (const TwinRow& twin : inColumns.twins) {
    if (isTied[twin.original]) forest.tie(twin.original, twinIndex);
    ++twinIndex;
  }
}

/// No threshold to compare with: every two rows of different tags are linked, which joins all rows
/// once there are two tags.
template <typename TagOf>
std::vector<RowLink> linkAll(std::size_t count, TagOf tagOf) {
  std::vector<RowLink> links;
  std::size_t other = 1;
  while (other < count && tagOf(other) == tagOf(0)) ++other;
  if (other >= count) return links;
  for (std::size_t row = 1; row < count; ++row) links.push_back({0, row});
  return links;
}

template <typename TagOf>
std::vector<RowLink> findLinks(const RowTable& rows, double threshold, TagOf tagOf) {
  if (std::isnan(threshold)) return linkAll(static_cast<std::size_t>(rows.rows()), tagOf);
  return LinkSearch(sortedRows(rows, tagOf), threshold).run();
}

}  // namespace

std::vector<RowLink> linkRows(const RowTable& rows, double threshold) {
  return findLinks(rows, threshold, [](std::size_t row) -> std::uint64_t { return row; });
}

std::vector<RowLink> linkRowsByTag(const RowTable& rows, const std::vector<std::uint64_t>& tags, double threshold) {
  return findLinks(rows, threshold, [&tags](std::size_t row) { return tags[row]; });
}

}  // namespace ZOR::reg
