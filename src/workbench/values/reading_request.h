// How a user wants survey files to be read.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/file_reading.h"

namespace tiepoint::workbench {

/// Columns that a user asks for.
struct ColumnRequest {
  /// In the order of the file; when `places` is empty.
  Columns columns;
  /// Each role with the number of its column, from 1, or the word above it.
  struct Place {
    ColumnRole role = ColumnRole::skipped;
    std::size_t number = 0;
    std::string word;
  };
  std::vector<Place> places;
};

/// What isn't said is found out from the file.
struct ReadingRequest {
  std::optional<ColumnRequest> columns;
  std::optional<DecimalMark> decimal;
  std::optional<TextEncoding> encoding;
  /// The coordinates come out in metres.
  std::optional<LengthUnit> unit;
};

}  // namespace tiepoint::workbench
