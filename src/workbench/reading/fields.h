// A line in fields.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/values/file_reading.h"

namespace tiepoint::workbench {

struct LineField {
  std::string text;
  bool isQuoted = false;
};

enum class QuoteTrouble { none, openQuote, textAfterQuote };

/// Fields of a line; their texts' memory is used again from line to line.
class FieldList {
 public:
  std::size_t size() const { return count; }
  const LineField& operator[](std::size_t i) const { return fields[i]; }
  void clear() { count = 0; }
  LineField& add();
  /// Up to the last field that holds something.
  std::size_t sizeWithoutEmptyEnd() const;

 private:
  std::vector<LineField> fields;
  std::size_t count = 0;
};

/// White space of the classic locale.
inline bool isWhite(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// Divides a line. White space around a field doesn't count. A field that begins with a quotation
/// mark goes on to the next one, and holds what stands between them, with "" for one mark; a
/// separator must follow. On trouble the last field is the one that has it.
QuoteTrouble splitFields(std::string_view line, Separator separator, FieldList& fields);

}  // namespace tiepoint::workbench
