// A survey file as points.
//
// Nothing is guessed: where two ways of reading a file come to different points, the answer is both
// ways. A file with a line that can't be read is refused, with all such lines.
#pragma once

#include <vector>

#include "workbench/reading/point_line.h"
#include "workbench/reading/text_lines.h"
#include "workbench/values/reading_outcome.h"
#include "workbench/values/reading_request.h"

namespace tiepoint::workbench {

/// Faults that are told one by one; the others are counted.
inline constexpr std::size_t mostFaults = 20;

struct ReadSurvey : ReadingOutcome {
  /// Names in UTF-8, coordinates in metres when the request names a unit. Empty unless `read`.
  std::vector<SurveyPoint> points;
};

/// Reads to the end, line by line, in memory for the points and a bounded number of lines. What
/// `source` throws goes through.
ReadSurvey readSurvey(const ByteSource& source, const ReadingRequest& request);

}  // namespace tiepoint::workbench
