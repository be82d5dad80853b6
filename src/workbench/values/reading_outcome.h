// What came of reading a survey file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "workbench/values/file_reading.h"
#include "workbench/values/reading_fault.h"

namespace tiepoint::workbench {

enum class ColumnsTrouble {
  /// No word is known.
  unknownWords,
  missingX,
  missingY,
  missingZ,
  /// Two columns claim to be the same.
  doubled,
  /// No column is called a name, and one that isn't known might be it.
  nameUnclear,
  /// A word is none that can be asked for.
  unknownWord,
  /// A column's number isn't one, or two of them are the same.
  badNumber,
  /// The file has no header, or none with that word.
  wordNotInHeader,
};

struct ColumnsFault {
  ColumnsTrouble trouble = ColumnsTrouble::unknownWords;
  /// Those that it is about.
  std::vector<std::string> words;
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
  ReadingFault fault;
};

enum class ReadStatus {
  read,
  /// The file has no byte.
  empty,
  /// See `none`.
  noReading,
  /// See `faults`.
  faulty,
  /// Several readings come to different points: see `candidates`.
  ambiguousColumns,
  /// Every decimal comma could stand between thousands.
  ambiguousCommas,
  /// The names could be in several encodings: see `encodings`.
  ambiguousEncoding,
  /// The encoding that was named isn't that of the byte-order mark.
  contradictedEncoding,
};

struct ReadingOutcome {
  ReadStatus status = ReadStatus::noReading;
  FileReading reading;
  /// The first of them, ascending.
  std::vector<ReadingFault> faults;
  std::uint64_t faultCount = 0;
  std::vector<CandidateReading> candidates;
  /// Those that the names could be in, and the first name beyond ASCII as each of them reads it, UTF-8.
  std::vector<TextEncoding> encodings;
  std::vector<std::string> samples;
  NoReading none;
};

}  // namespace tiepoint::workbench
