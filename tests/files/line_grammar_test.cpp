#include "files/line_grammar.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <boost/regex.hpp>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <locale>
#include <string>
#include <vector>

namespace ZOR::reg {
namespace {

enum Layout { nxyz, xyz, xyzw, nxyzw };

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

bool parse(Layout layout, const std::string& line, ParsedPoint& point) {
  switch (layout) {
    case nxyz:
      return parseLineNXYZ(line, point);
    case xyz:
      return parseLineXYZ(line, point);
    case xyzw:
      return parseLineXYZW(line, point);
    default:
      return parseLineNXYZW(line, point);
  }
}

bool matches(Layout layout, const std::string& line) {
  ParsedPoint point;
  return parse(layout, line, point);
}

bool isSame(double a, double b) {
  return (std::isnan(a) && std::isnan(b)) || (a == b && std::signbit(a) == std::signbit(b));
}

// --- One table: a line, its layout, and the point that it gives or that it gives none.

struct Row {
  /// The sentence that the row pins.
  std::string sentence;
  Layout layout;
  std::string line;
  bool matches;
  ParsedPoint point;
};

Row gives(std::string sentence, Layout layout, std::string line, ParsedPoint point) {
  return {std::move(sentence), layout, std::move(line), true, std::move(point)};
}

Row refused(std::string sentence, Layout layout, std::string line) {
  return {std::move(sentence), layout, std::move(line), false, {}};
}

std::vector<Row> rows() {
  using namespace std::string_literals;
  return {
      // Fields and separators.
      gives("BlanksSeparateFields", nxyz, "P1 1 2 3", {"P1", 1, 2, 3, 1}),
      gives("CommasWithBlanksSeparateFields", nxyz, "P1, 1, 2, 3", {"P1", 1, 2, 3, 1}),
      refused("ACommaAtTheEndIsNoMatch", nxyz, "P1 1 2 3,"),
      refused("ASemicolonAtTheEndIsNoMatch", nxyz, "P1 1 2 3;"),
      refused("ACommaBehindClosingBlanksIsNoMatch", nxyz, "P1 1 2 3 ,"),
      refused("ACommaAtTheBeginningIsNoMatch", nxyz, ",P1 1 2 3"),
      refused("ASemicolonBehindOpeningBlanksIsNoMatch", nxyz, "  ;P1 1 2 3"),
      refused("ACommaBeforeTheFirstNumberIsNoMatch", xyz, ",1 2 3"),
      gives("AnyMixtureIsOneSeparator", nxyz, "P;;;1 ,, 2\t3", {"P", 1, 2, 3, 1}),
      gives("EveryWhiteSpaceSeparates", nxyzw, "P\t1\v2\f3\r4", {"P", 1, 2, 3, 4}),
      gives("ALineFeedInsideTheLineIsWhiteSpace", nxyz, "P\n1\n2\n3\n", {"P", 1, 2, 3, 1}),
      gives("WhiteSpaceLeadsAndEndsTheLine", nxyz, " \t\v\f\r\nP 1 2 3 \t\v\f\r\n", {"P", 1, 2, 3, 1}),
      gives("AClosingCarriageReturnIsSkipped", nxyz, "P1 1 2 3\r", {"P1", 1, 2, 3, 1}),
      gives("AClosingCarriageReturnIsSkippedWithoutAName", xyzw, "1 2 3 4\r", {"?", 1, 2, 3, 4}),

      // The number of fields is exact.
      refused("ThreeFieldsAreTooFewForAName", nxyz, "1 2 3"),
      gives("ANumberMayBeTheName", nxyz, "1 2 3 4", {"1", 2, 3, 4, 1}),
      gives("AnyWeightIsTaken", xyzw, "1 2 3 4", {"?", 1, 2, 3, 4}),
      gives("ANegativeWeightIsTaken", nxyzw, "T 1 2 3 -7.5", {"T", 1, 2, 3, -7.5}),
      gives("AnEndlessWeightIsTaken", xyzw, "1 2 3 inf", {"?", 1, 2, 3, infinity}),
      gives("WithoutNameAndWeightBothHaveTheirDefaults", xyz, "1 2 3", {"?", 1, 2, 3, 1}),
      refused("AFourthNumberIsTooManyForNXYZ", nxyz, "P 1 2 3 4"),
      refused("AFourthNumberIsTooManyForXYZ", xyz, "1 2 3 4"),
      refused("AFifthNumberIsTooManyForXYZW", xyzw, "1 2 3 4 5"),
      refused("AFifthNumberIsTooManyForNXYZW", nxyzw, "P 1 2 3 4 5"),
      refused("ThreeNumbersAreTooFewForXYZW", xyzw, "1 2 3"),
      refused("ThreeNumbersAreTooFewForNXYZW", nxyzw, "P 1 2 3"),
      refused("ANameBeforeXYZIsNoMatch", xyz, "P 1 2 3"),
      refused("ANameBeforeXYZWIsNoMatch", xyzw, "P 1 2 3 4"),
      refused("TextBehindTheLastFieldIsNoMatch", nxyz, "P 1 2 3 comment"),
      refused("ACommentBehindTheLastFieldIsNoMatch", xyz, "1 2 3 # comment"),
      refused("AnEmptyLineIsNoMatchForNXYZ", nxyz, ""),
      refused("AnEmptyLineIsNoMatchForXYZ", xyz, ""),
      refused("AnEmptyLineIsNoMatchForXYZW", xyzw, ""),
      refused("AnEmptyLineIsNoMatchForNXYZW", nxyzw, ""),
      refused("ALineOfBlanksIsNoMatch", xyz, " \t\r"),
      refused("AHeaderIsNoMatch", nxyz, "name x y z"),

      // Names.
      refused("ANameHoldsNoBlank", nxyz, "P 1 1 2 3"),
      refused("ANameHoldsNoComma", nxyz, "P,1 1 2 3"),
      refused("ANameHoldsNoSemicolon", nxyz, "P;1 1 2 3"),
      gives("ANameHoldsBytesAsTheyStand", nxyz, "\xCF\xF2\xA0\xFF 1 2 3", {"\xCF\xF2\xA0\xFF", 1, 2, 3, 1}),
      gives("ANameHoldsANull", nxyz, "A\0B 1 2 3"s, {"A\0B"s, 1, 2, 3, 1}),
      gives("ANameHoldsPunctuation", nxyz, "\"P-1.a(b)#?\" 1 2 3", {"\"P-1.a(b)#?\"", 1, 2, 3, 1}),
      gives("TheNameMayBeAQuestionMark", nxyzw, "? 1 2 3 0.5", {"?", 1, 2, 3, 0.5}),
      gives("AByteOrderMarkJoinsTheName", nxyz, "\xEF\xBB\xBFP1 1 2 3", {"\xEF\xBB\xBFP1", 1, 2, 3, 1}),
      gives("AByteOrderMarkJoinsTheNameBeforeAWeight", nxyzw, "\xEF\xBB\xBFP1 1 2 3 4", {"\xEF\xBB\xBFP1", 1, 2, 3, 4}),
      refused("AByteOrderMarkFailsTheFirstNumberOfXYZ", xyz,
              "\xEF\xBB\xBF"
              "1 2 3"),
      refused("AByteOrderMarkFailsTheFirstNumberOfXYZW", xyzw,
              "\xEF\xBB\xBF"
              "1 2 3 4"),

      // Numbers.
      gives("DigitsWithAPointAtAnyPlaceAreNumbers", xyzw, "1 1. .5 1.5", {"?", 1, 1, 0.5, 1.5}),
      refused("ALonePointIsNoNumber", xyz, "1 2 ."),
      refused("ALonePlusIsNoNumber", nxyz, "P 1 2 +"),
      refused("ALoneMinusIsNoNumber", nxyz, "P 1 2 -"),
      refused("TwoSignsAreNoNumber", xyz, "1 2 +-3"),
      refused("ASignApartFromItsDigitsIsNoNumber", xyz, "1 2 - 3"),
      refused("TwoPointsAreNoNumber", xyz, "1 2 3.4.5"),
      gives("SignsLeadNumbers", xyzw, "+1 -2 +.5 -.5", {"?", 1, -2, 0.5, -0.5}),
      gives("AMinusZeroKeepsItsSign", xyz, "-0 0 -0.0", {"?", -0.0, 0.0, -0.0, 1}),
      gives("ExponentsOfEitherCaseAndSign", xyzw, "1e2 1E+2 25e-2 -.5E1", {"?", 100, 100, 0.25, -5}),
      gives("AnExponentBehindAClosingPoint", xyz, "1.e2 2 3", {"?", 100, 2, 3, 1}),
      refused("AnExponentWithoutDigitsEndsTheNumber", nxyz, "P 1 2 3e"),
      refused("AnExponentWithASignAlone", nxyz, "P 1 2 3e+"),
      refused("AnExponentWithAPoint", xyz, "1 2 3e1.5"),
      refused("AnExponentAlone", xyz, "1 2 e5"),
      refused("HexadecimalDigitsAreNoNumber", xyz, "1 2 0x10"),
      refused("AUnitBehindANumberIsNoMatch", xyz, "1m 2m 3m"),
      gives("ACommaIsNoDecimalMark", xyzw, "1,5 2 3", {"?", 1, 5, 2, 3}),
      gives("ANotANumberIsANumber", nxyz, "P 1 2 nan", {"P", 1, 2, notANumber, 1}),
      gives("TheWordsComeInAnyMixOfCase", xyzw, "NaN InF INFINITY iNfInItY",
            {"?", notANumber, infinity, infinity, infinity}),
      gives("TheWordsTakeASign", xyzw, "-nan -inf +inf -infinity", {"?", -notANumber, -infinity, infinity, -infinity}),
      gives("ANotANumberTakesTextInParentheses", xyz, "nan(any text, 1;2) 2 nan()",
            {"?", notANumber, 2, notANumber, 1}),
      refused("AParenthesisLeftOpenIsNoMatch", xyz, "1 2 nan(3"),
      refused("AnInfinityTakesNoParentheses", xyz, "1 2 inf(3)"),
      refused("HalfAWordIsNoMatch", xyz, "1 2 infin"),
      refused("AWordAndDigitsAreNoMatch", xyz, "1 2 nan3"),

      // Numbers at the edges of the range.
      gives("TheLargestNumberIsTaken", xyz, "1.7976931348623157e308 2 3", {"?", 1.7976931348623157e308, 2, 3, 1}),
      gives("TheSmallestNumberIsTaken", xyz, "5e-324 2 3", {"?", 5e-324, 2, 3, 1}),
      gives("TooSmallANumberIsZero", xyz, "1e-400 2 3", {"?", 0.0, 2, 3, 1}),
      refused("AnExponentOutOfRangeIsNoMatch", xyz, "1e400 2 3"),
      refused("ATinyExponentOutOfRangeIsNoMatch", xyz, "1e-700 2 3"),
      refused("AnExponentOutOfRangeIsNoMatchForZero", xyz, "0e999 2 3"),
      refused("TheLargestExponentIsNoMatch", xyz, "12345678901234567890123e2147483647 2 3"),
      refused("TheSmallestExponentIsNoMatch", xyz, "0.1e-2147483648 2 3"),
      refused("AnExponentOfManyDigitsIsNoMatch", xyz, "1e99999999999 2 3"),
      gives("DigitsBeyondADoubleAreTaken", xyz, "12345678901234567890123 2 3",
            {"?", 12345678901234567890123.0, 2, 3, 1}),
      refused("FourHundredNinesAreNoMatch", xyz, std::string(400, '9') + " 2 3"),
      gives("SevenHundredZerosBehindThePointEndNothing", xyz, "0." + std::string(700, '0') + "1 2 3",
            {"?", 1.0000000000000001e-307, 2, 3, 1}),

      // Whole lines as they come from an instrument.
      gives("AMixedLine", nxyz, "P1 1023.417, 88.2;-4.5e-1", {"P1", 1023.417, 88.2, -0.45, 1}),
      gives("BlanksBeforeAWeight", nxyzw, "T1 10.0 20.0 30.0 1", {"T1", 10, 20, 30, 1}),
      gives("CommasBeforeAWeight", nxyzw, "T2,11.5,21.5,31.5,0.5", {"T2", 11.5, 21.5, 31.5, 0.5}),
      gives("SemicolonsBehindOpeningBlanks", nxyzw, "  T3;12;22;32;0.25", {"T3", 12, 22, 32, 0.25}),
      gives("NumbersAlone", xyz, "100.000 200.000 50.125", {"?", 100, 200, 50.125, 1}),
      gives("NumbersWithAWeight", xyzw, "100.000,200.000,50.125,0.75", {"?", 100, 200, 50.125, 0.75}),
  };
}

class LineGrammar : public testing::TestWithParam<Row> {};

TEST_P(LineGrammar, ReadsTheLine) {
  const Row& row = GetParam();
  ParsedPoint point;
  ASSERT_EQ(parse(row.layout, row.line, point), row.matches);
  if (!row.matches) return;
  EXPECT_EQ(point.name, row.point.name);
  EXPECT_PRED2(isSame, point.x, row.point.x);
  EXPECT_PRED2(isSame, point.y, row.point.y);
  EXPECT_PRED2(isSame, point.z, row.point.z);
  EXPECT_PRED2(isSame, point.w, row.point.w);
}

INSTANTIATE_TEST_SUITE_P(Table, LineGrammar, testing::ValuesIn(rows()),
                         [](const testing::TestParamInfo<Row>& row) { return row.param.sentence; });

// --- One record for all lines of a file.

TEST(LineGrammarRecord, NothingOfTheLineBeforeStaysInTheName) {
  ParsedPoint point;
  ASSERT_TRUE(parseLineNXYZ("LongName 1 2 3", point));
  ASSERT_TRUE(parseLineNXYZ("P 4 5 6", point));
  EXPECT_EQ(point.name, "P");
  ASSERT_TRUE(parseLineXYZ("7 8 9", point));
  EXPECT_EQ(point.name, "?");
}

TEST(LineGrammarRecord, TheWeightOfTheLineBeforeIsReplacedByTheDefault) {
  ParsedPoint point;
  ASSERT_TRUE(parseLineNXYZW("P 1 2 3 0.25", point));
  ASSERT_TRUE(parseLineNXYZ("P 1 2 3", point));
  EXPECT_EQ(point.w, 1.0);
  ASSERT_TRUE(parseLineXYZW("1 2 3 0.25", point));
  ASSERT_TRUE(parseLineXYZ("1 2 3", point));
  EXPECT_EQ(point.w, 1.0);
}

// --- Every byte in every place.

bool isWhiteSpace(int byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }
bool isSeparator(int byte) { return isWhiteSpace(byte) || byte == ',' || byte == ';'; }

TEST(LineGrammarBytes, EveryByteButTheSeparatorsIsAName) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string name(1, static_cast<char>(byte));
    ParsedPoint point;
    ASSERT_EQ(parseLineNXYZ(name + " 1 2 3", point), !isSeparator(byte)) << byte;
    if (isSeparator(byte)) continue;
    EXPECT_EQ(point.name, name) << byte;
  }
}

TEST(LineGrammarBytes, OnlyWhiteSpaceCommaAndSemicolonSeparate) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string separator(1, static_cast<char>(byte));
    EXPECT_EQ(matches(nxyz, "P" + separator + "1 2 3"), isSeparator(byte)) << byte;
  }
}

TEST(LineGrammarBytes, OnlyWhiteSpaceAndMoreOfTheNumberMayEndTheLine) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool goesOn = (byte >= '0' && byte <= '9') || byte == '.';
    EXPECT_EQ(matches(nxyz, "P 1 2 3" + std::string(1, static_cast<char>(byte))), goesOn || isWhiteSpace(byte)) << byte;
  }
}

class CommaForPoint : public std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
};

TEST(LineGrammarLocale, ThePointIsTheDecimalMarkWhateverTheLocale) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaForPoint));
  ParsedPoint point;
  const bool matched = parseLineXYZ("1.5 2,3", point);
  std::locale::global(before);
  ASSERT_TRUE(matched);
  EXPECT_EQ(point.x, 1.5);
  EXPECT_EQ(point.y, 2.0);
  EXPECT_EQ(point.z, 3.0);
}

// Some systems count 0xA0 as a blank in such a locale; "C" is there everywhere.
TEST(LineGrammarLocale, NoByteAbove0x7FIsABlankWhateverTheLocale) {
  for (const char* name : {"C", "C.UTF-8", "ru_RU.CP1251", ".1251", ".1252"}) {
    if (!std::setlocale(LC_ALL, name)) continue;
    for (int byte = 0x80; byte < 256; ++byte) {
      const std::string text(1, static_cast<char>(byte));
      EXPECT_TRUE(matches(nxyz, text + " 1 2 3")) << name << ' ' << byte;
      EXPECT_FALSE(matches(nxyz, "P" + text + "1 2 3")) << name << ' ' << byte;
    }
  }
  std::setlocale(LC_ALL, "C");
}

// --- Laws.

/// The same grammar by other means: one regular expression for the whole line.
class Oracle {
 public:
  explicit Oracle(Layout layout) : hasName(layout == nxyz || layout == nxyzw) {
    const std::string separator = "[\\s,;]+";
    const std::string number = "([+-]?(?:nan(?:\\([^)]*\\))?|infinity|inf|(?:\\d+\\.?\\d*|\\.\\d+)(?:e[+-]?\\d+)?))";
    const int numbers = layout == nxyz || layout == xyz ? 3 : 4;
    std::string text = hasName ? "([^\\s,;]+)" : number;
    for (int i = hasName ? 0 : 1; i < numbers; ++i) text += separator + number;
    pattern = boost::regex("\\s*" + text + "\\s*", boost::regex::icase);
  }

  /// The fields in their order; none when the line doesn't match.
  std::vector<std::string> fields(const std::string& line) const {
    boost::smatch match;
    if (!boost::regex_match(line, match, pattern)) return {};
    return std::vector<std::string>(match.begin() + 1, match.end());
  }

  const bool hasName;

 private:
  boost::regex pattern;
};

bool hasLongExponent(const std::string& line) {
  static const boost::regex pattern("e[+-]?\\d{3}", boost::regex::icase);
  return boost::regex_search(line, pattern);
}

/// The library scales by a power of ten after it has gathered the digits, so that the last place may
/// differ from the nearest double.
constexpr double numberTolerance = 4 * std::numeric_limits<double>::epsilon();

bool isNumber(double read, const std::string& field) {
  if (std::tolower(static_cast<unsigned char>(field.back())) == ')') return std::isnan(read);
  const double expected = std::strtod(field.c_str(), nullptr);
  if (!std::isfinite(expected)) return std::isnan(expected) ? std::isnan(read) : read == expected;
  return std::abs(read - expected) <= numberTolerance * std::abs(expected);
}

void holdAgainstOracle(Layout layout, const std::string& line) {
  static const Oracle oracles[] = {Oracle(nxyz), Oracle(xyz), Oracle(xyzw), Oracle(nxyzw)};
  RC_PRE(!hasLongExponent(line));
  const Oracle& oracle = oracles[layout];
  const std::vector<std::string> fields = oracle.fields(line);
  ParsedPoint point;
  RC_ASSERT(parse(layout, line, point) == !fields.empty());
  if (fields.empty()) return;
  RC_ASSERT(point.name == (oracle.hasName ? fields[0] : "?"));
  const std::size_t first = oracle.hasName ? 1 : 0;
  RC_ASSERT(isNumber(point.x, fields[first]));
  RC_ASSERT(isNumber(point.y, fields[first + 1]));
  RC_ASSERT(isNumber(point.z, fields[first + 2]));
  if (fields.size() == first + 4) RC_ASSERT(isNumber(point.w, fields[first + 3]));
}

rc::Gen<Layout> anyLayout() { return rc::gen::element(nxyz, xyz, xyzw, nxyzw); }

/// A line of pieces of the grammar, in any order: close enough to a match to reach every branch.
rc::Gen<std::string> lineOfPieces() {
  const auto piece = rc::gen::weightedOneOf<std::string>(
      {{4, rc::gen::element<std::string>("1", "-2.5", "+.5", "7.", "3e2", "4E-1", "12345.678")},
       {3, rc::gen::element<std::string>(" ", ",", ";", " , ", "\t")},
       {1, rc::gen::element<std::string>("nan", "-INF", "Infinity", "nan(a b)", "P", "P1", "\xD2", "\r", "e", "e5", "+",
                                         ".", "(", ")", "x", "#")}});
  return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece), [](const std::vector<std::string>& pieces) {
    std::string line;
    for (const std::string& text : pieces) line += text;
    return line;
  });
}

/// Fields with separators between them, as a good file has them.
rc::Gen<std::string> goodLine(Layout layout) {
  const auto number = rc::gen::element<std::string>("1", "-2.5", "+.5", "7.", "3e2", "nan", "-inf", "4500123.1234");
  const auto separator = rc::gen::element<std::string>(" ", ",", ";", " , ", "\t;", "  ");
  return rc::gen::exec([=] {
    const bool hasName = layout == nxyz || layout == nxyzw;
    const int numbers = layout == nxyz || layout == xyz ? 3 : 4;
    std::string line = hasName ? *rc::gen::element<std::string>("P1", "?", "\xD2\xF7", "7") : *number;
    for (int i = hasName ? 0 : 1; i < numbers; ++i) line += *separator + *number;
    return line;
  });
}

RC_GTEST_PROP(LineGrammarLaw, AgreesWithARegularExpressionOnLinesOfPieces, ()) {
  holdAgainstOracle(*anyLayout(), *lineOfPieces());
}

RC_GTEST_PROP(LineGrammarLaw, AgreesWithARegularExpressionOnGoodLines, ()) {
  const Layout layout = *anyLayout();
  const std::string line = *goodLine(layout);
  RC_ASSERT(matches(layout, line));
  holdAgainstOracle(layout, line);
}

RC_GTEST_PROP(LineGrammarLaw, AgreesWithARegularExpressionOnRandomBytes, (const std::string& line)) {
  holdAgainstOracle(*anyLayout(), line);
}

RC_GTEST_PROP(LineGrammarLaw, NeverAcceptsTheBeginningOfALine, ()) {
  const Layout layout = *anyLayout();
  const std::string line = *goodLine(layout);
  const std::string rest = *rc::gen::element<std::string>(",", " ;", " 1", ";x", "\t#", "x");
  RC_ASSERT(matches(layout, line));
  RC_ASSERT(!matches(layout, line + rest));
}

RC_GTEST_PROP(LineGrammarLaw, EveryOtherLayoutOfTheSameKindRefusesALine, ()) {
  const std::string three = *goodLine(xyz);
  const std::string four = *goodLine(nxyzw);
  RC_ASSERT(!matches(xyzw, three));
  RC_ASSERT(!matches(nxyz, four));
}

/// Whole numbers below 2^53 divided by a power of ten up to 10^9 are within what the library scales
/// with a single rounding, so that text and number agree to the last bit.
RC_GTEST_PROP(LineGrammarLaw, CoordinatesOfUpToFifteenDigitsComeBackExactly, ()) {
  const auto digits = *rc::gen::inRange<long long>(-999'999'999'999'999, 1'000'000'000'000'000);
  const int decimals = *rc::gen::inRange(0, 10);
  std::string magnitude = std::to_string(std::abs(digits));
  magnitude.insert(0, magnitude.size() <= 9 ? 10 - magnitude.size() : 0, '0');
  if (decimals > 0) magnitude.insert(magnitude.size() - static_cast<std::size_t>(decimals), ".");
  const std::string text = (digits < 0 ? "-" : "") + magnitude;
  ParsedPoint point;
  RC_ASSERT(parseLineNXYZW("P " + text + " 0 0 " + text, point));
  RC_ASSERT(point.x == std::strtod(text.c_str(), nullptr));
  RC_ASSERT(point.w == point.x);
}

}  // namespace
}  // namespace ZOR::reg
