// Whatever a program may write, it is read back the same, or its ambiguity is told.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <vector>

#include "workbench/io/text_encoding.h"
#include "workbench/reading/byte_sources.h"
#include "workbench/reading/outcome_text.h"
#include "workbench/reading/staged_form.h"

namespace {

using namespace tiepoint::workbench;
using tiepoint::testing::bytesInPieces;
using tiepoint::testing::outcomeText;

using Names = std::vector<std::string>;

/// Letters of one script, as UTF-8.
const std::array<Names, 3> alphabets{{{"A", "B", "p", "z", "T", "5", "0", "-", "_"},
                                      {"П", "у", "н", "к", "т", "Ё", "я", "1", "-"},
                                      {"H", "ö", "h", "e", "ß", "Ä", "3", "T", "-"}}};

/// How a program writes its points.
struct Style {
  int encoding = 0;
  int separator = 0;
  bool comma = false;
  int header = 0;
  int lineEnd = 0;
  int layout = 0;
  int alphabet = 0;
  bool quotes = false;
  bool blanksInNames = false;
};

struct Written {
  Style style;
  std::vector<SurveyPoint> points;
};

constexpr int encodings = 6;
constexpr std::array<const char*, 4> separators{" ", "\t", ",", ";"};
constexpr std::array<const char*, 3> lineEnds{"\n", "\r\n", "\r"};

bool hasName(const Style& style) { return style.layout == 0 || style.layout == 3; }
bool hasWeight(const Style& style) { return style.layout >= 2; }

rc::Gen<std::string> aName(const Style& style) {
  return rc::gen::exec([style] {
    const auto letters =
        *rc::gen::container<Names>(rc::gen::elementOf(alphabets[static_cast<std::size_t>(style.alphabet)]));
    std::string name;
    for (const std::string& letter : letters) name += letter;
    if (style.blanksInNames && !name.empty()) name += " " + name;
    return name.empty() ? "T" : name;
  });
}

rc::Gen<double> aCoordinate() {
  return rc::gen::oneOf(rc::gen::map(rc::gen::inRange(-9000000, 9000000), [](int i) { return static_cast<double>(i); }),
                        rc::gen::map(rc::gen::inRange(-900000000, 900000000), [](int i) { return i / 1000.0; }),
                        rc::gen::map(rc::gen::inRange(-900000000, 900000000), [](int i) { return i / 7.0; }));
}

rc::Gen<Written> aSurvey() {
  return rc::gen::exec([] {
    Written written;
    Style& style = written.style;
    style.encoding = *rc::gen::inRange(0, encodings);
    style.separator = *rc::gen::inRange(0, 4);
    style.comma = *rc::gen::arbitrary<bool>();
    style.header = *rc::gen::inRange(0, 4);
    style.lineEnd = *rc::gen::inRange(0, 3);
    style.layout = *rc::gen::inRange(0, 4);
    style.alphabet = style.encoding == 4 ? 1 : (style.encoding == 5 ? 2 : *rc::gen::inRange(0, 3));
    style.quotes = *rc::gen::arbitrary<bool>();
    style.blanksInNames = style.separator > 0 && *rc::gen::arbitrary<bool>();
    const int count = *rc::gen::inRange(1, 12);
    for (int i = 0; i < count; ++i) {
      SurveyPoint point;
      point.name = hasName(style) ? *aName(style) : "?";
      for (double* value : {&point.x, &point.y, &point.z}) *value = *aCoordinate();
      if (hasWeight(style)) point.w = *rc::gen::map(rc::gen::inRange(0, 101), [](int p) { return p / 100.0; });
      written.points.push_back(point);
    }
    return written;
  });
}

std::string numberText(double value, const Style& style) {
  std::array<char, 64> text;
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
  std::string number(text.data(), end.ptr);
  const std::size_t mark = number.find('.');
  if (style.comma && mark != std::string::npos) number[mark] = ',';
  return style.quotes || (style.comma && style.separator == 2) ? '"' + number + '"' : number;
}

/// In the order of the style's layout; geodetic headers put the y first.
Names fieldsOf(const SurveyPoint& point, const Style& style) {
  Names fields;
  if (hasName(style)) fields.push_back(style.quotes ? '"' + point.name + '"' : point.name);
  const bool northFirst = style.header == 2;
  fields.push_back(numberText(northFirst ? point.y : point.x, style));
  fields.push_back(numberText(northFirst ? point.x : point.y, style));
  fields.push_back(numberText(point.z, style));
  if (hasWeight(style)) fields.push_back(numberText(point.w, style));
  return fields;
}

Names headerOf(const Style& style) {
  Names fields;
  if (hasName(style)) fields.push_back(style.header == 2 ? "Pt" : "Name");
  const std::array<Names, 4> words{{{}, {"X", "Y", "Z"}, {"N", "E", "H"}, {"Rechtswert", "Hochwert", "Hoehe"}}};
  for (const std::string& word : words[static_cast<std::size_t>(style.header)]) fields.push_back(word);
  if (hasWeight(style)) fields.push_back("Weight");
  return fields;
}

std::string lineOf(const Names& fields, const Style& style) {
  std::string line;
  for (const std::string& field : fields) {
    line += (line.empty() ? "" : separators[static_cast<std::size_t>(style.separator)]) + field;
  }
  return line + lineEnds[static_cast<std::size_t>(style.lineEnd)];
}

/// windows-1252, for the letters that the alphabet has.
std::string westernBytes(const std::string& utf8) {
  std::string bytes;
  for (const wchar_t c : wideFromUtf8(utf8)) bytes += static_cast<char>(c);
  return bytes;
}

std::string wideBytes(const std::string& utf8, bool bigEndian) {
  std::string bytes;
  for (const wchar_t c : wideFromUtf8(utf8)) {
    const char low = static_cast<char>(c & 0xFF);
    const char high = static_cast<char>((c >> 8) & 0xFF);
    bytes += bigEndian ? std::string{high, low} : std::string{low, high};
  }
  return bytes;
}

std::string encoded(const std::string& utf8, int encoding) {
  switch (encoding) {
    case 1:
      return "\xEF\xBB\xBF" + utf8;
    case 2:
      return "\xFF\xFE" + wideBytes(utf8, false);
    case 3:
      return "\xFE\xFF" + wideBytes(utf8, true);
    case 4:
      return nameFromUtf8(utf8);
    case 5:
      return westernBytes(utf8);
    default:
      return utf8;
  }
}

std::string fileOf(const Written& written) {
  std::string text;
  if (written.style.header > 0) text += lineOf(headerOf(written.style), written.style);
  for (const SurveyPoint& point : written.points) text += lineOf(fieldsOf(point, written.style), written.style);
  return encoded(text, written.style.encoding);
}

bool isSame(const std::vector<SurveyPoint>& read, const std::vector<SurveyPoint>& written) {
  return std::equal(read.begin(), read.end(), written.begin(), written.end(),
                    [](const SurveyPoint& a, const SurveyPoint& b) {
                      return a.name == b.name && a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
                    });
}

bool isAmbiguous(const ReadSurvey& survey) {
  return survey.status == ReadStatus::ambiguousColumns || survey.status == ReadStatus::ambiguousCommas ||
         survey.status == ReadStatus::ambiguousEncoding;
}

RC_GTEST_PROP(ReadingLaws, APointIsReadBackTheSameOrItsFileIsAmbiguous, ()) {
  for (int i = 0; i < 20; ++i) {
    const Written written = *aSurvey();
    const std::string bytes = fileOf(written);
    RC_LOG() << bytes << "\n";
    const ReadSurvey survey = readSurvey(bytesInPieces(bytes, 7), {});
    RC_LOG() << outcomeText(survey) << "\n";
    RC_TAG(static_cast<int>(survey.status));
    RC_ASSERT(isAmbiguous(survey) || (survey.status == ReadStatus::read && isSame(survey.points, written.points)));
  }
}

RC_GTEST_PROP(ReadingLaws, NothingIsAmbiguousUnderAHeaderOnceTheMarkAndTheEncodingAreSaid, ()) {
  Written written = *aSurvey();
  if (written.style.header == 0) written.style.header = 1;
  ReadingRequest request;
  request.decimal = written.style.comma ? DecimalMark::comma : DecimalMark::point;
  const std::array<TextEncoding, encodings> said{
      TextEncoding::utf8,           TextEncoding::utf8,        TextEncoding::utf16LittleEndian,
      TextEncoding::utf16BigEndian, TextEncoding::windows1251, TextEncoding::windows1252};
  request.encoding = said[static_cast<std::size_t>(written.style.encoding)];
  const std::string bytes = fileOf(written);
  RC_LOG() << bytes << "\n";
  const ReadSurvey survey = readSurvey(bytesInPieces(bytes, 7), request);
  RC_LOG() << outcomeText(survey) << "\n";
  RC_ASSERT(survey.status == ReadStatus::read);
  RC_ASSERT(isSame(survey.points, written.points));
}

RC_GTEST_PROP(ReadingLaws, AnyBytesComeToAnEnd, (const std::string& bytes)) {
  const ReadSurvey survey = readSurvey(bytesInPieces(bytes, 3), {});
  RC_ASSERT((survey.status == ReadStatus::read) == !survey.points.empty());
}

}  // namespace
