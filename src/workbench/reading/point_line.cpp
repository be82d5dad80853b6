#include "workbench/reading/point_line.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "workbench/reading/numbers.h"

namespace tiepoint::workbench {

namespace {

constexpr std::size_t longestExcerpt = 60;

bool isBlankText(const std::string& text) { return std::all_of(text.begin(), text.end(), isWhite); }

/// Commas that stand between two digits beside other separators, as in `A;100;200,5`: where a mixture
/// divides, each could as well be a decimal comma.
std::size_t countLikelyDecimals(const std::string& line) {
  constexpr const char* otherSeparators = "; \t\v\f";
  std::size_t count = 0;
  for (std::size_t start = line.find_first_not_of(otherSeparators); start != std::string::npos;) {
    const std::size_t end = std::min(line.find_first_of(otherSeparators, start), line.size());
    const ReadNumber number = readNumber(std::string_view(line).substr(start, end - start), DecimalMark::comma);
    count += number.isNumber && number.hasComma;
    start = line.find_first_not_of(otherSeparators, end);
  }
  return count;
}

bool isUtf8Continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0u) == 0x80u; }

}  // namespace

std::string excerpt(const std::string& text) {
  if (text.size() <= longestExcerpt) return text;
  std::size_t end = longestExcerpt;
  while (end + 4 > longestExcerpt && isUtf8Continuation(text[end])) --end;
  return text.substr(0, end) + "...";
}

LineKind kindOfLine(const std::string& line, Separator separator) {
  const auto isNothing = [](char c) { return isWhite(c) || c == ',' || c == ';'; };
  if (std::all_of(line.begin(), line.end(), isNothing)) return LineKind::blank;
  const std::size_t first =
      static_cast<std::size_t>(std::find_if_not(line.begin(), line.end(), isWhite) - line.begin());
  const char c = line[first];
  if (c == '#' || c == '%' || c == '!' || line.compare(first, 2, "//") == 0) return LineKind::comment;
  const bool mayDivide = separator == Separator::semicolon || separator == Separator::mixed;
  return c == ';' && !mayDivide ? LineKind::comment : LineKind::text;
}

PointLine::PointLine(LineReading reading_) : lineReading(std::move(reading_)) {}

ReadingFault PointLine::faultAt(ReadingFaultKind kind, std::size_t column) const {
  ReadingFault fault;
  fault.kind = kind;
  fault.column = column + 1;
  fault.found = excerpt(fields[column].text);
  if (column < lineReading.columns.roles.size()) fault.role = lineReading.columns.roles[column];
  return fault;
}

std::optional<ReadingFault> PointLine::readName(std::size_t column, SurveyPoint& point) const {
  const LineField& field = fields[column];
  if (isBlankText(field.text)) return faultAt(ReadingFaultKind::emptyName, column);
  const bool mayHoldMarks = lineReading.separator != Separator::blank || field.isQuoted;
  if (!mayHoldMarks && field.text.find_first_of(",;") != std::string::npos) {
    return faultAt(ReadingFaultKind::separatorInName, column);
  }
  point.name = field.text;
  return std::nullopt;
}

std::optional<ReadingFault> PointLine::readNumberOf(std::size_t column, double& value) {
  const ReadNumber number = readNumber(fields[column].text, lineReading.decimal);
  if (!number.isNumber) return faultAt(number.fault, column);
  commaEvidence.any = commaEvidence.any || number.hasComma;
  commaEvidence.certain = commaEvidence.certain || (number.hasComma && !number.couldBeThousands);
  value = number.value;
  return std::nullopt;
}

std::optional<ReadingFault> PointLine::readFields(SurveyPoint& point) {
  const std::vector<ColumnRole>& roles = lineReading.columns.roles;
  for (std::size_t i = 0; i < roles.size(); ++i) {
    std::optional<ReadingFault> fault;
    switch (roles[i]) {
      case ColumnRole::name:
        fault = readName(i, point);
        break;
      case ColumnRole::x:
        fault = readNumberOf(i, point.x);
        break;
      case ColumnRole::y:
        fault = readNumberOf(i, point.y);
        break;
      case ColumnRole::z:
        fault = readNumberOf(i, point.z);
        break;
      case ColumnRole::weight:
        fault = readNumberOf(i, point.w);
        break;
      case ColumnRole::skipped:
        break;
    }
    if (fault) return fault;
  }
  return std::nullopt;
}

/// A mixture leaves no field empty: what ends in a separator may lack its last coordinate.
std::optional<ReadingFault> PointLine::faultOfCount(const std::string& line) const {
  const bool isMixed = lineReading.separator == Separator::mixed;
  const std::size_t wanted = lineReading.columns.roles.size();
  const std::size_t most = isMixed ? fields.size() : fields.sizeWithoutEmptyEnd();
  const std::size_t decimals = isMixed ? countLikelyDecimals(line) : 0;
  const bool isTooLong = !lineReading.columns.openEnded && most > wanted;
  if (fields.size() >= wanted && !isTooLong && decimals == 0) return std::nullopt;
  ReadingFault fault;
  fault.kind = ReadingFaultKind::fieldCount;
  fault.found = std::to_string(fields.size() - decimals);
  fault.expected = std::to_string(wanted);
  return fault;
}

std::optional<ReadingFault> PointLine::read(const std::string& line, SurveyPoint& point) {
  if (line.find('\0') != std::string::npos)
    return ReadingFault{ReadingFaultKind::zeroByte, 0, 0, {}, {}, ColumnRole::skipped};
  const QuoteTrouble trouble = splitFields(line, lineReading.separator, fields);
  if (trouble != QuoteTrouble::none) {
    return faultAt(trouble == QuoteTrouble::openQuote ? ReadingFaultKind::openQuote : ReadingFaultKind::textAfterQuote,
                   fields.size() - 1);
  }
  if (auto fault = faultOfCount(line)) return fault;
  point.name = "?";
  point.w = 1.0;
  return readFields(point);
}

}  // namespace tiepoint::workbench
