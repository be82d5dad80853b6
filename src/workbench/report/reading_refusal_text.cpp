#include "workbench/report/reading_refusal_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/report/plain_text.h"
#include "workbench/report/reading_text.h"

namespace tiepoint::workbench {

namespace {

/// What stands between the fields, the decimal mark, the columns.
std::string linesText(const LineReading& lines) {
  return fmt::format("{} divided at {}{}", columnsText(lines.columns), separatorText(lines.separator),
                     lines.decimal == DecimalMark::comma ? " with decimal commas" : "");
}

std::string waysText(const std::vector<CandidateReading>& candidates) {
  std::vector<std::string> ways;
  for (const CandidateReading& candidate : candidates) ways.push_back(linesText(candidate.lines));
  return joined(ways);
}

std::string ambiguousColumns(const ReadingOutcome& survey, FieldNames nameOf) {
  const auto& candidates = survey.candidates;
  const auto isSameColumns = [&](const CandidateReading& c) {
    return c.lines.columns == candidates.front().lines.columns;
  };
  const bool onlyMarks = std::all_of(candidates.begin(), candidates.end(), isSameColumns);
  const std::string remedy =
      onlyMarks ? fmt::format("{0} point or {0} comma", nameOf(Field::decimal))
                : fmt::format("{} {}", nameOf(Field::columns), columnsText(candidates.front().lines.columns));
  return fmt::format("ambiguous: it reads as {}; say which is meant, such as {}", waysText(candidates), remedy);
}

std::string ambiguousEncoding(const ReadingOutcome& survey, FieldNames nameOf) {
  std::vector<std::string> ways;
  for (std::size_t i = 0; i < survey.encodings.size(); ++i) {
    ways.push_back(
        fmt::format("{} ({})", encodingName(survey.encodings[i]), "\"" + printable(survey.samples[i]) + "\""));
  }
  return fmt::format("ambiguous: its names read as {}; say which is meant, such as {} {}", joined(ways),
                     nameOf(Field::encoding), encodingName(survey.encodings.front()));
}

std::string faultsText(const ReadingOutcome& survey, FieldNames nameOf) {
  std::string text = fmt::format("{} can't be read", plural(survey.faultCount, "line"));
  const char* between = ": ";
  for (const ReadingFault& fault : survey.faults) {
    text += between + readingFaultText(fault, nameOf);
    between = "; ";
  }
  const std::uint64_t more = survey.faultCount - survey.faults.size();
  return more > 0 ? fmt::format("{}; and {} more", text, more) : text;
}

std::string noReadingText(const NoReading& none, FieldNames nameOf) {
  const std::string remedy =
      fmt::format("say what the columns are: {} name,x,y,z, with - for those to be skipped", nameOf(Field::columns));
  switch (none.kind) {
    case NoReading::Kind::noLines:
      return "no reference points found";
    case NoReading::Kind::binary:
      return fmt::format("line {} holds a zero byte, so the file isn't plain text", none.line);
    case NoReading::Kind::columns:
      return (none.line > 0 ? fmt::format("the header in line {}: ", none.line) : "") + columnsFaultText(none.columns) +
             "; " + remedy;
    case NoReading::Kind::tooFewFields:
      return fmt::format("no reference points found: line {} has {}, and a point needs 3 at least", none.line,
                         plural(none.count, "field"));
    case NoReading::Kind::tooManyFields:
      return fmt::format("line {} has {}, more than is known without a header; {}", none.line,
                         plural(none.count, "field"), remedy);
    case NoReading::Kind::nothingFits:
      return fmt::format("no reference points found: {}; {}", readingFaultText(none.fault, nameOf), remedy);
  }
  return "";
}

}  // namespace

std::string readingRefusalText(const ReadingOutcome& outcome, FieldNames nameOf) {
  switch (outcome.status) {
    case ReadStatus::read:
      return "";
    case ReadStatus::empty:
      return "the file is empty";
    case ReadStatus::noReading:
      return noReadingText(outcome.none, nameOf);
    case ReadStatus::faulty:
      return faultsText(outcome, nameOf);
    case ReadStatus::ambiguousColumns:
      return ambiguousColumns(outcome, nameOf);
    case ReadStatus::ambiguousCommas:
      return fmt::format(
          "ambiguous: every decimal comma could stand between thousands, as in 1,234; say {} comma if it "
          "doesn't",
          nameOf(Field::decimal));
    case ReadStatus::ambiguousEncoding:
      return ambiguousEncoding(outcome, nameOf);
    case ReadStatus::contradictedEncoding:
      return fmt::format("its byte-order mark says another encoding; leave {} out", nameOf(Field::encoding));
  }
  return "";
}

}  // namespace tiepoint::workbench
