#include "workbench/survey/staged_file.h"

#include <algorithm>
#include <boost/filesystem/fstream.hpp>

#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/reading/read_survey.h"
#include "workbench/reading/staged_form.h"
#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

namespace fs = boost::filesystem;

namespace {

bool asksForReading(const ReadingRequest& request) {
  const bool converts = request.unit.value_or(LengthUnit::metre) != LengthUnit::metre;
  return request.columns || request.decimal || request.encoding || converts;
}

/// The columns of a layout of the module.
ColumnRequest columnsOf(Layout layout) {
  using Roles = std::vector<ColumnRole>;
  constexpr auto name = ColumnRole::name;
  constexpr auto x = ColumnRole::x;
  constexpr auto y = ColumnRole::y;
  constexpr auto z = ColumnRole::z;
  constexpr auto weight = ColumnRole::weight;
  ColumnRequest request;
  switch (layout) {
    case Layout::nxyz:
      request.columns.roles = Roles{name, x, y, z};
      break;
    case Layout::xyz:
      request.columns.roles = Roles{x, y, z};
      break;
    case Layout::xyzw:
      request.columns.roles = Roles{x, y, z, weight};
      break;
    case Layout::nxyzw:
      request.columns.roles = Roles{name, x, y, z, weight};
      break;
  }
  return request;
}

bool groupNeedsStandIn(const SurveyFile& file) { return standInGroupName(file.group) != file.group; }

/// Without a named layout, what users mean by "#" and by quotation marks is what they get.
bool hasCommentsOrQuotes(const SurveyFile& file) {
  return !file.layoutIsNamed && (file.survey.hasComments || file.survey.hasQuotes);
}

/// A look at the bytes; whether names are at stake only their reading tells.
bool mayLoseLetters(const SurveyFile& file) {
  return file.survey.isBeyondAscii || file.survey.mark != ByteOrderMark::none || file.survey.mayHoldStandIns ||
         groupNeedsStandIn(file) || hasCommentsOrQuotes(file);
}

/// The module would take other names than the file has.
bool losesLetters(const SurveyFile& file, const ReadSurvey& survey) {
  if (survey.status != ReadStatus::read) return false;
  const TextEncoding encoding = survey.reading.encoding;
  if (groupNeedsStandIn(file) || survey.reading.hasMark || hasCommentsOrQuotes(file)) return true;
  if (encoding != TextEncoding::ascii && encoding != TextEncoding::windows1251) return true;
  return std::any_of(survey.points.begin(), survey.points.end(),
                     [](const SurveyPoint& point) { return standInName(point.name) != point.name; });
}

ReadSurvey readAs(const SurveyFile& file, ReadingRequest request) {
  if (!request.columns && (file.moduleReadsAll || file.layoutIsNamed)) request.columns = columnsOf(file.layout);
  return readSurvey(bytesOfFile(file.path), request);
}

bool hasSamePoints(const ReadSurvey& one, const ReadSurvey& other) {
  return std::equal(one.points.begin(), one.points.end(), other.points.begin(), other.points.end(),
                    [](const SurveyPoint& a, const SurveyPoint& b) {
                      return a.name == b.name && a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
                    });
}

/// The module divides fields at any run of separators, so that it may read a decimal comma as two numbers
/// and step over an empty field without a word. Gives why the file is refused, if it is to be.
std::optional<ReadSurvey> objection(const SurveyFile& file, const ReadingRequest& request) {
  if (file.layoutIsNamed || !(file.survey.mayHoldDecimalCommas || file.survey.mayHoldEmptyFields)) return std::nullopt;
  ReadSurvey found = readSurvey(bytesOfFile(file.path), request);
  if (found.status != ReadStatus::read) return found;
  const ReadSurvey ofModule = readAs(file, request);
  if (ofModule.status == ReadStatus::read && hasSamePoints(found, ofModule)) return std::nullopt;
  found.status = ReadStatus::ambiguousColumns;
  found.candidates.resize(2);
  found.candidates[0].lines = {Separator::mixed, DecimalMark::point, columnsOf(file.layout).columns};
  found.candidates[1].lines = found.reading.lines;
  return found;
}

/// Nothing when the file goes to the module as it is.
std::optional<ReadSurvey> readingNeeded(const SurveyFile& file, const ReadingRequest& request) {
  if (asksForReading(request)) return readAs(file, request);
  if (file.moduleReadsAll) {
    if (auto against = objection(file, request)) return against;
    if (!mayLoseLetters(file)) return std::nullopt;
    ReadSurvey survey = readAs(file, request);
    if (losesLetters(file, survey)) return survey;
    return std::nullopt;
  }
  if (file.layoutIsNamed) return std::nullopt;
  return readAs(file, request);
}

RefusalKind refusalOf(ReadStatus status) {
  switch (status) {
    case ReadStatus::empty:
      return RefusalKind::fileEmpty;
    case ReadStatus::ambiguousColumns:
    case ReadStatus::ambiguousCommas:
    case ReadStatus::ambiguousEncoding:
      return RefusalKind::fileAmbiguous;
    default:
      return RefusalKind::fileNotRead;
  }
}

[[noreturn]] void refuse(const SurveyFile& file, const ReadingOutcome& outcome) {
  Refusal refusal{refusalOf(outcome.status), Field::files, file.path};
  refusal.reading = outcome;
  throw Refused(std::move(refusal));
}

void writeStaged(const std::string& path, const std::vector<SurveyPoint>& points, bool withWeights,
                 const std::string& source) {
  fs::ofstream out(fs::path(wideFromUtf8(path)), std::ios::binary);
  for (const SurveyPoint& point : points) out << stagedLine(point, withWeights);
  out.close();
  if (!out) throw Refused({RefusalKind::pointsNotTaken, Field::files, source});
}

}  // namespace

std::optional<StagedFile> stageSurvey(const SurveyFile& file, const ReadingRequest& request,
                                      std::shared_ptr<StagingFolder>& folder) {
  const std::optional<ReadSurvey> survey = readingNeeded(file, request);
  if (!survey) return std::nullopt;
  if (survey->status != ReadStatus::read) refuse(file, *survey);
  if (!folder) folder = std::make_shared<StagingFolder>();
  const bool withWeights = needWeights(survey->points);
  StagedFile staged;
  staged.path = folder->file(standInGroupName(file.group) + ".txt");
  staged.layout = withWeights ? Layout::nxyzw : Layout::nxyz;
  staged.reading = survey->reading;
  writeStaged(staged.path, survey->points, withWeights, file.path);
  return staged;
}

}  // namespace tiepoint::workbench
