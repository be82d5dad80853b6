// A survey file as points.
//
// Nothing is guessed: where two ways of reading a file come to different points, the answer is both
// ways. A file with a line that can't be read is refused, with all such lines.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workbench/reading/file_reading.h"
#include "workbench/reading/find_reading.h"
#include "workbench/reading/line_fault.h"
#include "workbench/reading/point_line.h"
#include "workbench/reading/text_lines.h"

namespace tiepoint::workbench {

/// Faults that are told one by one; the others are counted.
inline constexpr std::size_t mostFaults = 20;

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

struct ReadSurvey {
  ReadStatus status = ReadStatus::noReading;
  FileReading reading;
  /// Names in UTF-8, coordinates in metres when the request names a unit. Empty unless `read`.
  std::vector<SurveyPoint> points;
  /// The first of them, ascending.
  std::vector<LineFault> faults;
  std::uint64_t faultCount = 0;
  std::vector<CandidateReading> candidates;
  std::vector<TextEncoding> encodings;
  /// The first name beyond ASCII, in the bytes of the file.
  std::string sampleName;
  NoReading none;
};

/// Reads to the end, line by line, in memory for the points and a bounded number of lines. What
/// `source` throws goes through.
ReadSurvey readSurvey(const ByteSource& source, const ReadingRequest& request);

}  // namespace tiepoint::workbench
