// How the lines of a file are to be read, from a look at its first ones.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/reading/header_columns.h"
#include "workbench/reading/line_fault.h"
#include "workbench/reading/point_line.h"

namespace tiepoint::workbench {

struct NumberedLine {
  std::uint64_t number = 0;
  std::string text;
};

/// The first lines of a file.
struct FileHead {
  /// Neither blank nor sure to be comments.
  std::vector<NumberedLine> lines;
  /// The comment directly before the first of them, without its mark.
  std::optional<std::string> commentBefore;
  /// By a first line such as `sep=;`.
  std::optional<Separator> saidSeparator;
};

/// What the user has said.
struct ReadingRequest {
  std::optional<ColumnRequest> columns;
  std::optional<DecimalMark> decimal;
  std::optional<TextEncoding> encoding;
  LengthUnit unit = LengthUnit::metre;
};

struct CandidateReading {
  LineReading lines;
  /// The words of the header, UTF-8; empty without one.
  std::vector<std::string> header;
  bool headerIsComment = false;
  /// The one encoding in which the header's words are known, if they tell.
  std::optional<TextEncoding> headerEncoding;
  /// The first of the head's lines that is data.
  std::size_t firstData = 0;
};

/// Why no reading was found.
struct NoReading {
  enum class Kind {
    /// Nothing but blank lines and comments.
    noLines,
    /// There are zero bytes: it isn't text.
    binary,
    /// The header, or the columns that were asked for: see `columns`.
    columns,
    /// Lines have `count` fields, which is too few, or more than without a header can be told.
    tooFewFields,
    tooManyFields,
    /// No way of reading fits half of the lines; `fault` is what is wrong with the first.
    nothingFits,
  };
  Kind kind = Kind::noLines;
  std::uint64_t line = 0;
  std::size_t count = 0;
  ColumnsFault columns;
  LineFault fault;
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
