#include "workbench/reading/numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <system_error>

namespace tiepoint::workbench {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

std::size_t countDigits(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isDigit) - text.begin());
}

std::string_view withoutSign(std::string_view text) {
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
  return text;
}

/// What stands between thousands: point, comma, apostrophe, underline, blank; no-break blanks and the
/// typographic apostrophe, whose bytes depend on the encoding.
constexpr std::array<std::string_view, 10> groupMarks{
    ".", ",", "'", "_", " ", "\xC2\xA0", "\xE2\x80\xAF", "\xE2\x80\x99", "\xA0", "\x92"};

std::size_t groupMarkAt(std::string_view text) {
  for (const std::string_view mark : groupMarks) {
    if (text.substr(0, mark.size()) == mark) return mark.size();
  }
  return 0;
}

/// Up to three digits, then groups of three with a mark before each, then maybe a decimal part.
bool hasThousands(std::string_view text) {
  text = withoutSign(text);
  const std::size_t first = countDigits(text);
  if (first == 0 || first > 3) return false;
  text.remove_prefix(first);
  int groups = 0;
  while (true) {
    const std::size_t mark = groupMarkAt(text);
    if (mark == 0 || countDigits(text.substr(mark)) != 3) break;
    text.remove_prefix(mark + 3);
    ++groups;
  }
  if (groups > 0 && !text.empty() && (text.front() == '.' || text.front() == ',')) {
    text.remove_prefix(1 + countDigits(text.substr(1)));
  }
  return groups > 0 && text.empty();
}

std::string lowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool isNotFiniteWord(std::string_view text) {
  text = withoutSign(text);
  if (text.size() > 4 && text.back() == ')') return lowerCase(text.substr(0, 4)) == "nan(";
  const std::string word = lowerCase(text.substr(0, 9));
  return word == "nan" || word == "inf" || word == "infinity";
}

ReadingFaultKind faultOf(std::string_view text) {
  if (isNotFiniteWord(text)) return ReadingFaultKind::notFinite;
  return hasThousands(text) ? ReadingFaultKind::thousandsSeparator : ReadingFaultKind::notANumber;
}

/// An exponent, or nothing.
bool isExponent(std::string_view text) {
  if (text.empty()) return true;
  if (text.front() != 'e' && text.front() != 'E') return false;
  text = withoutSign(text.substr(1));
  return !text.empty() && countDigits(text) == text.size();
}

struct Shape {
  bool isNumber = false;
  std::size_t before = 0;
  std::size_t behind = 0;
  bool hasMark = false;
  bool hasExponent = false;
};

Shape shapeOf(std::string_view text, char mark) {
  Shape shape;
  shape.before = countDigits(text);
  text.remove_prefix(shape.before);
  shape.hasMark = !text.empty() && text.front() == mark;
  if (shape.hasMark) {
    text.remove_prefix(1);
    shape.behind = countDigits(text);
    text.remove_prefix(shape.behind);
  }
  shape.hasExponent = !text.empty();
  const bool hasDigits = shape.before + shape.behind > 0;
  const bool commaIsBare = shape.hasMark && mark == ',' && (shape.before == 0 || shape.behind == 0);
  shape.isNumber = hasDigits && !commaIsBare && isExponent(text);
  return shape;
}

ReadNumber refused(ReadingFaultKind fault) {
  ReadNumber number;
  number.fault = fault;
  return number;
}

/// `digits` has no sign and a point as its mark.
ReadNumber valueOf(std::string_view digits, bool isNegative) {
  ReadNumber number;
  const std::from_chars_result result = std::from_chars(digits.data(), digits.data() + digits.size(), number.value);
  const double size = std::fabs(number.value);
  if (result.ec != std::errc() || size > farthestNumber || (size > 0.0 && size < closestNumber)) {
    return refused(ReadingFaultKind::outOfRange);
  }
  number.isNumber = true;
  if (isNegative) number.value = -number.value;
  return number;
}

}  // namespace

ReadNumber readNumber(std::string_view text, DecimalMark decimal) {
  const char mark = decimal == DecimalMark::comma ? ',' : '.';
  const std::string_view digits = withoutSign(text);
  const Shape shape = shapeOf(digits, mark);
  if (!shape.isNumber) return refused(faultOf(text));
  const bool isNegative = text.front() == '-';
  if (!shape.hasMark || mark == '.') return valueOf(digits, isNegative);
  std::string pointed(digits);
  pointed[shape.before] = '.';
  ReadNumber number = valueOf(pointed, isNegative);
  number.hasComma = true;
  number.couldBeThousands = shape.before <= 3 && shape.behind == 3 && digits.front() != '0' && !shape.hasExponent;
  return number;
}

}  // namespace tiepoint::workbench
