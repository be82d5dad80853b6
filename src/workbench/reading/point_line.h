// One line of a survey file as a point.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "workbench/reading/fields.h"
#include "workbench/values/file_reading.h"
#include "workbench/values/reading_fault.h"

namespace tiepoint::workbench {

struct SurveyPoint {
  /// In the bytes of its file while the lines are read, and UTF-8 when the file has been; "?" without
  /// a column of names.
  std::string name;
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double w = 1.0;
  std::uint64_t line = 0;
};

/// Whether decimal commas were met, and whether one can't stand between thousands.
struct CommaEvidence {
  bool any = false;
  bool certain = false;
};

enum class LineKind { blank, comment, text };

/// A line of nothing but white space and separators is blank. A comment begins with `#`, `//`, `%` or
/// `!`; with `;` too, where no semicolon can divide fields.
LineKind kindOfLine(const std::string& line, Separator separator);

/// Reads lines by one reading; memory is used again from line to line.
class PointLine {
 public:
  explicit PointLine(LineReading reading_);

  const LineReading& reading() const { return lineReading; }
  /// Fills `point` but for its line's number, and gives nothing; else what is wrong, the first thing
  /// from the left. Texts of the fault are bytes of the file.
  std::optional<ReadingFault> read(const std::string& line, SurveyPoint& point);
  const CommaEvidence& commas() const { return commaEvidence; }
  /// Of the line that was read last, empty ones included.
  std::size_t fieldCount() const { return fields.size(); }

 private:
  std::optional<ReadingFault> readName(std::size_t column, SurveyPoint& point) const;
  std::optional<ReadingFault> readNumberOf(std::size_t column, double& value);
  std::optional<ReadingFault> readFields(SurveyPoint& point);
  std::optional<ReadingFault> faultOfCount(const std::string& line) const;
  ReadingFault faultAt(ReadingFaultKind kind, std::size_t column) const;

  LineReading lineReading;
  FieldList fields;
  CommaEvidence commaEvidence;
};

/// At most its first 60 bytes, not cut inside a character of UTF-8.
std::string excerpt(const std::string& text);

}  // namespace tiepoint::workbench
