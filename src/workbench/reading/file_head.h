// A bounded look at the beginning of a file.
#pragma once

#include <string>
#include <vector>

#include "workbench/reading/find_reading.h"
#include "workbench/reading/text_lines.h"

namespace tiepoint::workbench {

/// Lines that may be data, and their bytes, after which the look ends.
inline constexpr std::size_t mostHeadLines = 1000;
inline constexpr std::size_t mostHeadBytes = 1u << 18;

struct LookedAt {
  FileHead head;
  std::uint64_t commentCount = 0;
  std::uint64_t blankCount = 0;
};

/// Reads lines until enough of them may be data. Comments on the way aren't kept, but for the last
/// before the first line that is data whatever divides its fields.
LookedAt lookAtHead(TextLines& lines);

}  // namespace tiepoint::workbench
