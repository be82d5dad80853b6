// Any bytes as a survey file, under each kind of request. What is read must be what the module reads
// of the form that is made for it.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "files/line_grammar.h"
#include "workbench/io/stand_in_names.h"
#include "workbench/reading/read_survey.h"
#include "workbench/reading/staged_form.h"

namespace {

using namespace tiepoint::workbench;

void require(bool rule) {
  if (!rule) std::abort();
}

ByteSource sourceOf(const std::string& bytes, std::size_t piece) {
  return [&bytes, piece, at = std::size_t{0}](char* into, std::size_t size) mutable {
    std::size_t count = bytes.size() - at;
    if (count > size) count = size;
    if (count > piece) count = piece;
    std::memcpy(into, bytes.data() + at, count);
    at += count;
    return count;
  };
}

void checkPoint(const SurveyPoint& point) {
  require(!point.name.empty());
  require(nameOfStandIn(standInName(point.name)) == point.name);
  std::string line = stagedLine(point, true);
  require(!line.empty() && line.back() == '\n');
  line.pop_back();
  ZOR::reg::ParsedPoint parsed;
  require(ZOR::reg::parseLineNXYZW(line, parsed));
  require(parsed.name == moduleName(point.name));
  require(parsed.x >= std::nextafter(point.x, -HUGE_VAL) && parsed.x <= std::nextafter(point.x, HUGE_VAL));
}

void checkReading(const std::string& bytes, const ReadingRequest& request) {
  const ReadSurvey survey = readSurvey(sourceOf(bytes, 1u << 16), request);
  const bool isRead = survey.status == ReadStatus::read;
  require(isRead == !survey.points.empty());
  require((survey.status == ReadStatus::faulty) == (survey.faultCount > 0));
  require((survey.status == ReadStatus::ambiguousColumns) == (survey.candidates.size() > 1));
  require(survey.faults.size() <= mostFaults && survey.faults.size() <= survey.faultCount);
  for (const LineFault& fault : survey.faults) require(fault.line > 0);
  for (const SurveyPoint& point : survey.points) checkPoint(point);

  // The pieces in which a file comes don't matter.
  const ReadSurvey again = readSurvey(sourceOf(bytes, 3), request);
  require(again.status == survey.status && again.points.size() == survey.points.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  ReadingRequest request;
  const unsigned choice = data[0];
  if (choice & 1u) request.columns = std::get<ColumnRequest>(columnRequestOf("name,n,e,h"));
  if (choice & 2u) request.columns = std::get<ColumnRequest>(columnRequestOf("name=1,x=3,y=2,z=4"));
  if (choice & 4u) request.decimal = DecimalMark::comma;
  if (choice & 8u) request.encoding = TextEncoding::windows1252;
  if (choice & 16u) request.encoding = TextEncoding::utf16LittleEndian;
  if (choice & 32u) request.unit = LengthUnit::foot;
  checkReading(bytes, request);
  return 0;
}
