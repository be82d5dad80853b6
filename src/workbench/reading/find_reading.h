// How the lines of a file are to be read, from a look at its first ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/reading_outcome.h"
#include "workbench/values/reading_request.h"

namespace tiepoint::workbench {

struct NumberedLine {
  std::uint64_t number = 0;
  std::string text;
};

/// The first lines of a file.
struct FileHead {
  /// Neither blank nor sure to be comments.
  std::vector<NumberedLine> lines;
  /// The last of the sure comments above the points, with its mark. Lines that begin with a semicolon
  /// may stand before it in `lines`.
  std::optional<NumberedLine> comment;
  /// By a first line such as `sep=;`.
  std::optional<Separator> saidSeparator;
};

/// One candidate: the reading. Several: it is ambiguous. None: `none` says why.
struct FoundReadings {
  std::vector<CandidateReading> candidates;
  NoReading none;
};

/// Tries every separator, decimal mark and order of columns that the request allows, and keeps those
/// that read every line of the head; of those that come to the same points, one. Single separators
/// come before blanks, and blanks before a mixture. When none reads every line, the one that reads
/// most of them, if that is half at least or its columns are known from a header or the request: what
/// it can't read are faults then.
FoundReadings findReadings(const FileHead& head, const ReadingRequest& request);

}  // namespace tiepoint::workbench
