// What came of a reading, as one line for a table of expectations.
#pragma once

#include <sstream>
#include <string>

#include "workbench/reading/encodings.h"
#include "workbench/reading/read_survey.h"

namespace tiepoint::testing {

inline std::string columnsText(const workbench::Columns& columns) {
  const char* const names[] = {"name", "x", "y", "z", "w", "-"};
  std::string text;
  for (const workbench::ColumnRole role : columns.roles) {
    text += (text.empty() ? "" : ",") + std::string(names[static_cast<int>(role)]);
  }
  return columns.openEnded ? text + ",..." : text;
}

inline const char* separatorText(workbench::Separator separator) {
  const char* const names[] = {"semicolon", "tab", "comma", "blank", "mixed"};
  return names[static_cast<int>(separator)];
}

inline std::string readingText(const workbench::LineReading& reading) {
  return std::string(separatorText(reading.separator)) +
         (reading.decimal == workbench::DecimalMark::comma ? " decimal-comma " : " ") + columnsText(reading.columns);
}

inline std::string faultText(const workbench::ReadingFault& fault) {
  const char* const kinds[] = {"count",        "empty-name",   "separator-in-name", "no-number",        "thousands",
                               "not-finite",   "out-of-range", "open-quote",        "text-after-quote", "zero-byte",
                               "bad-encoding", "too-long"};
  std::ostringstream text;
  text << fault.line;
  if (fault.column > 0) text << "." << fault.column;
  text << " " << kinds[static_cast<int>(fault.kind)];
  if (!fault.found.empty()) text << " '" << fault.found << "'";
  if (!fault.expected.empty()) text << " not " << fault.expected;
  return text.str();
}

inline std::string noneText(const workbench::NoReading& none) {
  const char* const kinds[] = {"no lines", "binary", "columns", "too few fields", "too many fields", "nothing fits"};
  const char* const troubles[] = {"unknown words", "no x",       "no y",
                                  "no z",          "doubled",    "name unclear",
                                  "unknown word",  "bad number", "word not in header"};
  std::string text = kinds[static_cast<int>(none.kind)];
  if (none.line > 0) text += " in line " + std::to_string(none.line);
  if (none.count > 0) text += ": " + std::to_string(none.count);
  if (none.kind == workbench::NoReading::Kind::nothingFits) text += ": " + faultText(none.fault);
  if (none.kind != workbench::NoReading::Kind::columns) return text;
  text += ": " + std::string(troubles[static_cast<int>(none.columns.trouble)]);
  for (const std::string& word : none.columns.words) text += " '" + word + "'";
  return text;
}

inline std::string pointsText(const workbench::ReadSurvey& survey) {
  std::ostringstream text;
  text.precision(17);
  for (const workbench::SurveyPoint& point : survey.points) {
    text << " | " << point.name << " " << point.x << " " << point.y << " " << point.z;
    if (point.w != 1.0) text << " w" << point.w;
  }
  return text.str();
}

inline std::string outcomeText(const workbench::ReadSurvey& survey) {
  using workbench::ReadStatus;
  std::string text;
  switch (survey.status) {
    case ReadStatus::read:
      return std::string(workbench::encodingName(survey.reading.encoding)) + " " + readingText(survey.reading.lines) +
             pointsText(survey);
    case ReadStatus::empty:
      return "empty";
    case ReadStatus::noReading:
      return "none: " + noneText(survey.none);
    case ReadStatus::faulty:
      text = "faulty " + std::to_string(survey.faultCount) + ":";
      for (const workbench::ReadingFault& fault : survey.faults) text += " " + faultText(fault);
      return text;
    case ReadStatus::ambiguousColumns:
      text = "ambiguous:";
      for (const workbench::CandidateReading& candidate : survey.candidates) text += " " + readingText(candidate.lines);
      return text;
    case ReadStatus::ambiguousCommas:
      return "ambiguous commas";
    case ReadStatus::ambiguousEncoding:
      text = "ambiguous encoding:";
      for (const workbench::TextEncoding encoding : survey.encodings) {
        text += " " + std::string(workbench::encodingName(encoding));
      }
      return text;
    case ReadStatus::contradictedEncoding:
      return "contradicted";
  }
  return text;
}

}  // namespace tiepoint::testing
