#include "workbench/report/reading_text.h"

#include <fmt/format.h>

#include "workbench/report/plain_text.h"

namespace tiepoint::workbench {

namespace {

const char* roleText(ColumnRole role) {
  switch (role) {
    case ColumnRole::name:
      return "name";
    case ColumnRole::x:
      return "x";
    case ColumnRole::y:
      return "y";
    case ColumnRole::z:
      return "z";
    case ColumnRole::weight:
      return "w";
    case ColumnRole::skipped:
      return "-";
  }
  return "";
}

std::string quoted(const std::string& text) { return "\"" + printable(text) + "\""; }

std::string columnAndFound(const ReadingFault& fault) {
  return fmt::format("line {}: {} in column {} ({})", fault.line, quoted(fault.found), fault.column,
                     roleText(fault.role));
}

std::string quotedAll(const std::vector<std::string>& words) {
  std::vector<std::string> all;
  for (const std::string& word : words) all.push_back(quoted(word));
  return joined(all);
}

}  // namespace

std::string separatorText(Separator separator) {
  switch (separator) {
    case Separator::semicolon:
      return "semicolons";
    case Separator::tab:
      return "tabs";
    case Separator::comma:
      return "commas";
    case Separator::blank:
      return "blanks";
    case Separator::mixed:
      return "mixed separators";
  }
  return "";
}

std::string columnsText(const Columns& columns) {
  std::string text;
  for (const ColumnRole role : columns.roles) text += (text.empty() ? "" : ",") + std::string(roleText(role));
  return text;
}

std::string readingLine(const FileReading& reading) {
  std::string text = encodingName(reading.encoding);
  if (reading.hasMark) text += " with a byte-order mark";
  text += ", " + separatorText(reading.lines.separator);
  if (reading.lines.decimal == DecimalMark::comma) text += ", decimal comma";
  text += "; columns " + columnsText(reading.lines.columns);
  if (!reading.header.empty()) {
    text += fmt::format("; header{} {}", reading.headerIsComment ? " in a comment" : "", quotedAll(reading.header));
  }
  if (reading.unit != LengthUnit::metre) text += fmt::format("; {} converted to m", lengthUnitName(reading.unit));
  if (reading.commentCount > 0) text += "; " + plural(reading.commentCount, "comment") + " skipped";
  if (reading.blankCount > 0) text += "; " + plural(reading.blankCount, "blank line") + " skipped";
  return text;
}

std::string readingFaultText(const ReadingFault& fault, FieldNames nameOf) {
  switch (fault.kind) {
    case ReadingFaultKind::fieldCount:
      return fmt::format("line {} has {} field{}, expected {}", fault.line, fault.found, fault.found == "1" ? "" : "s",
                         fault.expected);
    case ReadingFaultKind::emptyName:
      return fmt::format("line {}: the name in column {} is empty; write ? for a point without a name", fault.line,
                         fault.column);
    case ReadingFaultKind::separatorInName:
      return fmt::format("line {}: the name {} holds a separator; put it in quotation marks", fault.line,
                         quoted(fault.found));
    case ReadingFaultKind::notANumber:
      return columnAndFound(fault) + " isn't a number";
    case ReadingFaultKind::thousandsSeparator:
      return columnAndFound(fault) + " may have a mark between thousands; write it without";
    case ReadingFaultKind::notFinite:
      return columnAndFound(fault) + " isn't a finite number";
    case ReadingFaultKind::outOfRange:
      return columnAndFound(fault) + " is out of range";
    case ReadingFaultKind::openQuote:
      return fmt::format("line {}: the quotation mark in column {} isn't closed", fault.line, fault.column);
    case ReadingFaultKind::textAfterQuote:
      return fmt::format("line {}: text follows the closing quotation mark in column {}", fault.line, fault.column);
    case ReadingFaultKind::zeroByte:
      return fmt::format("line {} holds a zero byte", fault.line);
    case ReadingFaultKind::badEncoding:
      return fmt::format("line {}: the name {} isn't text in the file's encoding; name another with {}", fault.line,
                         quoted(fault.found), nameOf(Field::encoding));
    case ReadingFaultKind::lineTooLong:
      return fmt::format("line {} is longer than {} bytes, so this isn't a survey file", fault.line, longestLine);
  }
  return "";
}

std::string columnsFaultText(const ColumnsFault& fault) {
  const std::string words = quotedAll(fault.words);
  switch (fault.trouble) {
    case ColumnsTrouble::unknownWords:
      return fmt::format("none of {} is known as a column", words);
    case ColumnsTrouble::missingX:
      return fmt::format("none of {} is x or easting", words);
    case ColumnsTrouble::missingY:
      return fmt::format("none of {} is y or northing", words);
    case ColumnsTrouble::missingZ:
      return fmt::format("none of {} is z or a height", words);
    case ColumnsTrouble::doubled:
      return words + (fault.words.size() == 1 ? " names two different columns" : " name the same column");
    case ColumnsTrouble::nameUnclear:
      return fmt::format("no column is known as the name, and {} might be it", words);
    case ColumnsTrouble::unknownWord:
      return fmt::format("{} is no column; choose from name, x, y, z, e, n, h, w and - to skip", words);
    case ColumnsTrouble::badNumber:
      return fmt::format("{} must name a column of its own, by its number from 1 on or its header", words);
    case ColumnsTrouble::wordNotInHeader:
      return fmt::format("the file has no column {}", words);
  }
  return "";
}

}  // namespace tiepoint::workbench
