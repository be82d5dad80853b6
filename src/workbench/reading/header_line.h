// A line of headings.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "workbench/values/file_reading.h"

namespace tiepoint::workbench {

struct HeaderLine {
  /// UTF-8.
  std::vector<std::string> words;
  /// Where words beyond ASCII are known in one encoding alone.
  std::optional<TextEncoding> encoding;
};

/// The words of the line when it can be a header: at least three of them hold something, and none is
/// a number. Units in brackets that blanks divide from their words are left out. `said` is the
/// encoding where it is known.
std::optional<HeaderLine> headerLine(const std::string& line, Separator separator, std::optional<TextEncoding> said);

}  // namespace tiepoint::workbench
