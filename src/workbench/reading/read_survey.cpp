#include "workbench/reading/read_survey.h"

#include <algorithm>
#include <utility>

#include "workbench/reading/encodings.h"
#include "workbench/reading/file_head.h"
#include "workbench/reading/units.h"

namespace tiepoint::workbench {

namespace {

/// Takes the lines of a file by one reading.
class SurveyReader {
 public:
  SurveyReader(const CandidateReading& candidate_, const ReadingRequest& request_)
      : candidate(candidate_),
        request(request_),
        unit(request_.unit.value_or(LengthUnit::metre)),
        pointLine(candidate_.lines) {
    result.reading.lines = candidate.lines;
    result.reading.header = candidate.header;
    result.reading.headerIsComment = candidate.headerIsComment;
    result.reading.unit = unit;
  }

  void takeHead(const LookedAt& seen) {
    result.reading.commentCount = seen.commentCount;
    result.reading.blankCount = seen.blankCount;
    for (std::size_t i = 0; i < seen.head.lines.size(); ++i) {
      const NumberedLine& line = seen.head.lines[i];
      const bool isHeader = i + 1 == candidate.firstData && !candidate.header.empty() && !candidate.headerIsComment;
      if (!isHeader) take(line.number, line.text);
    }
  }

  void take(std::uint64_t number, const std::string& line) {
    switch (kindOfLine(line, candidate.lines.separator)) {
      case LineKind::blank:
        ++result.reading.blankCount;
        break;
      case LineKind::comment:
        ++result.reading.commentCount;
        break;
      case LineKind::text:
        takePoint(number, line);
        break;
    }
  }

  void takeTooLong(std::uint64_t number) {
    ReadingFault fault;
    fault.kind = ReadingFaultKind::lineTooLong;
    fault.line = number;
    note(std::move(fault));
  }

  ReadSurvey finish(const TextLines& lines) {
    result.reading.lineCount = lines.number();
    result.reading.hasMark = lines.hasMark();
    const bool isDecided = decideEncoding(lines.encoding());
    if (isDecided) decodeNames();
    decodeFaults();
    result.status = statusOf(isDecided);
    if (result.status == ReadStatus::read) {
      result.reading.pointCount = result.points.size();
      toMetres();
    } else {
      result.points.clear();
    }
    return std::move(result);
  }

 private:
  void takePoint(std::uint64_t number, const std::string& line) {
    SurveyPoint point;
    auto fault = pointLine.read(line, point);
    if (fault) {
      fault->line = number;
      note(std::move(*fault));
      return;
    }
    point.line = number;
    evidence.take(point.name);
    if (sampleName.empty() && !isAscii(point.name)) sampleName = excerpt(point.name);
    result.points.push_back(std::move(point));
  }

  void note(ReadingFault fault) {
    ++result.faultCount;
    if (result.faults.size() < mostFaults) result.faults.push_back(std::move(fault));
  }

  /// By the mark or the pattern, the user, the header or the names, in that order.
  bool decideEncoding(std::optional<TextEncoding> known) {
    if (known) {
      result.reading.encoding = *known;
      return true;
    }
    result.encodings = evidence.possible();
    const auto& possible = result.encodings;
    const auto said = candidate.headerEncoding;
    if (said && (possible.front() == TextEncoding::ascii ||
                 std::find(possible.begin(), possible.end(), *said) != possible.end())) {
      result.encodings = {*said};
    }
    for (const TextEncoding encoding : result.encodings) result.samples.push_back(shownText(sampleName, encoding));
    result.reading.encoding = result.encodings.front();
    return result.encodings.size() == 1;
  }

  void decodeNames() {
    for (SurveyPoint& point : result.points) {
      auto name = decodedText(point.name, result.reading.encoding);
      if (name) {
        point.name = std::move(*name);
        continue;
      }
      ReadingFault fault;
      fault.kind = ReadingFaultKind::badEncoding;
      fault.line = point.line;
      fault.role = ColumnRole::name;
      fault.found = excerpt(point.name);
      note(std::move(fault));
    }
  }

  void decodeFaults() {
    for (ReadingFault& fault : result.faults) fault.found = shownText(fault.found, result.reading.encoding);
    std::stable_sort(result.faults.begin(), result.faults.end(),
                     [](const ReadingFault& a, const ReadingFault& b) { return a.line < b.line; });
  }

  ReadStatus statusOf(bool encodingIsDecided) const {
    if (result.faultCount > 0) return ReadStatus::faulty;
    const CommaEvidence& commas = pointLine.commas();
    if (commas.any && !commas.certain && !request.decimal) return ReadStatus::ambiguousCommas;
    return encodingIsDecided ? ReadStatus::read : ReadStatus::ambiguousEncoding;
  }

  /// Weights have no unit.
  void toMetres() {
    for (SurveyPoint& point : result.points) {
      for (double* value : {&point.x, &point.y, &point.z}) *value = metresOf(*value, unit);
    }
  }

  const CandidateReading& candidate;
  const ReadingRequest& request;
  LengthUnit unit;
  PointLine pointLine;
  NameEvidence evidence;
  /// The first name beyond ASCII, in the bytes of the file.
  std::string sampleName;
  ReadSurvey result;
};

ReadSurvey withStatus(ReadStatus status) {
  ReadSurvey survey;
  survey.status = status;
  return survey;
}

/// A line that is too long for a look at it is what is wrong with the file, whatever came before.
ReadSurvey tooLongAtOnce(const TextLines& lines) {
  ReadSurvey survey = withStatus(ReadStatus::faulty);
  ReadingFault fault;
  fault.kind = ReadingFaultKind::lineTooLong;
  fault.line = lines.number();
  survey.faults.push_back(fault);
  survey.faultCount = 1;
  return survey;
}

ReadSurvey withoutReading(FoundReadings found) {
  ReadSurvey survey = withStatus(found.candidates.empty() ? ReadStatus::noReading : ReadStatus::ambiguousColumns);
  survey.candidates = std::move(found.candidates);
  survey.none = std::move(found.none);
  return survey;
}

}  // namespace

ReadSurvey readSurvey(const ByteSource& source, const ReadingRequest& request) {
  TextLines lines(source, request.encoding);
  const LookedAt seen = lookAtHead(lines);
  if (lines.isEmpty()) return withStatus(ReadStatus::empty);
  if (lines.contradictsMark()) return withStatus(ReadStatus::contradictedEncoding);
  if (lines.isTooLong()) return tooLongAtOnce(lines);
  FoundReadings found = findReadings(seen.head, request);
  if (found.candidates.size() != 1) return withoutReading(std::move(found));
  SurveyReader reader(found.candidates.front(), request);
  reader.takeHead(seen);
  for (std::string line; lines.next(line);) reader.take(lines.number(), line);
  if (lines.isTooLong()) reader.takeTooLong(lines.number());
  return reader.finish(lines);
}

}  // namespace tiepoint::workbench
