// Text for a terminal: no control characters, columns that line up.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace tiepoint::workbench {

/// Columns of a terminal, and of a page: no line of a summary is longer, but for long names.
inline constexpr std::size_t textWidth = 100;

/// The text with "?" for every control character and every byte that isn't UTF-8, so that a name
/// can't steer a terminal.
std::string printable(const std::string& utf8);

/// How many characters the UTF-8 text has. Every character of a name takes one column.
std::size_t columnsOf(const std::string& utf8);

/// `items` joined by ", ", the first `most` of them: what is left out is counted.
std::string joined(const std::vector<std::string>& items, std::size_t most = 12);

/// The same with as many of the first 12 as fit into `width` columns; at least one.
std::string joinedWithin(const std::vector<std::string>& items, std::size_t width);

/// A count and what is counted, such as "1 point" or "3 points".
std::string plural(std::size_t count, const char* noun);

/// The text in lines of at most `width` columns, broken at blanks; every line but the first begins
/// with `indent` blanks.
std::string wrapped(const std::string& utf8, std::size_t width, std::size_t indent);

/// Rows of cells, printed as columns that line up.
class TextTable {
 public:
  enum class Side { left, right };

  /// One side for each column; cells beyond are on the left.
  explicit TextTable(std::vector<Side> sides_) : sides(std::move(sides_)) {}

  void add(std::vector<std::string> row) { rows.push_back(std::move(row)); }
  bool isEmpty() const { return rows.empty(); }

  /// Two blanks before each row and between columns, none at the end of a line.
  std::string text() const;

 private:
  std::vector<std::size_t> widths() const;
  std::vector<Side> sides;
  std::vector<std::vector<std::string>> rows;
};

}  // namespace tiepoint::workbench
