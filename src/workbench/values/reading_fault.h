// What is wrong with one line of a survey file of any form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "workbench/values/file_reading.h"

namespace tiepoint::workbench {

/// Bytes of a line, its end not counted. No survey has such lines; a file without line ends mustn't
/// fill the memory.
inline constexpr std::size_t longestLine = 1u << 20;

enum class ReadingFaultKind {
  /// `found` and `expected` are counts of fields.
  fieldCount,
  emptyName,
  /// An unquoted name that holds a comma or semicolon where blanks divide the fields.
  separatorInName,
  notANumber,
  /// Digits in groups of three: which mark is the decimal one can't be told.
  thousandsSeparator,
  /// "nan" or "inf".
  notFinite,
  /// Farther from 0, or closer to it, than any measurement.
  outOfRange,
  openQuote,
  textAfterQuote,
  zeroByte,
  /// The name isn't text in the file's encoding.
  badEncoding,
  /// Longer than `longestLine`; the reading ends there.
  lineTooLong,
};

struct ReadingFault {
  ReadingFaultKind kind = ReadingFaultKind::notANumber;
  /// From 1.
  std::uint64_t line = 0;
  /// The field, from 1; 0 for the whole line.
  std::size_t column = 0;
  /// What the field holds, at most its first 60 bytes. UTF-8.
  std::string found;
  /// The count that was expected; else empty.
  std::string expected;
  /// What the column holds.
  ColumnRole role = ColumnRole::skipped;
};

}  // namespace tiepoint::workbench
