#include "workbench/reading/staged_form.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"
#include "workbench/reading/numbers.h"

namespace tiepoint::workbench {

namespace {

/// The grammar keeps digits in 64 bits, and before the point no more than so many.
constexpr int mostDigits = 19;
constexpr int mostWholeDigits = 17;
/// How far from the decimal text itself to look, in doubles: each of the two steps is off by half a
/// unit in the last place at most.
constexpr int farthestStep = 4;

/// digits times 10 to the power.
struct Decimal {
  std::uint64_t digits = 0;
  int power = 0;
};

/// As the grammar computes it.
double asRead(const Decimal& decimal) {
  static const auto powers = [] {
    std::array<double, 309> table{};
    for (int i = 0; i < 309; ++i)
      table[static_cast<std::size_t>(i)] = std::strtod(("1e" + std::to_string(i)).c_str(), nullptr);
    return table;
  }();
  const double digits = static_cast<double>(decimal.digits);
  const double power = powers[static_cast<std::size_t>(std::abs(decimal.power))];
  return decimal.power < 0 ? digits / power : digits * power;
}

/// The value in that many digits; the shortest text that a correct reader takes for it with none.
Decimal decimalOf(double value, int digits) {
  std::array<char, 64> text;
  const auto end =
      digits > 0
          ? std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific, digits - 1)
          : std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::scientific);
  Decimal decimal;
  int behindPoint = 0;
  bool isBehind = false;
  const char* at = text.data();
  for (; *at != 'e'; ++at) {
    if (*at == '.') {
      isBehind = true;
      continue;
    }
    decimal.digits = decimal.digits * 10 + static_cast<std::uint64_t>(*at - '0');
    behindPoint += isBehind;
  }
  at += at[1] == '+' ? 2 : 1;
  std::from_chars(at, end.ptr, decimal.power);
  decimal.power -= behindPoint;
  return decimal;
}

/// Keeps of several decimals the one that is read as the double nearest to the value.
class NearestDecimal {
 public:
  explicit NearestDecimal(double value_) : value(value_) {}

  bool isExact() const { return distance == 0.0; }
  const Decimal& decimal() const { return nearest; }

  void take(const Decimal& candidate) {
    const double far = std::fabs(asRead(candidate) - value);
    if (!(far < distance)) return;
    nearest = candidate;
    distance = far;
  }

  /// Digits that are the same double are read the same, so the steps to both sides are doubles.
  void takeAround(const Decimal& start) {
    take(start);
    double above = static_cast<double>(start.digits);
    double below = above;
    for (int step = 0; step < farthestStep && !isExact(); ++step) {
      above = std::nextafter(above, HUGE_VAL);
      below = std::nextafter(below, 0.0);
      take({static_cast<std::uint64_t>(above), start.power});
      take({static_cast<std::uint64_t>(below), start.power});
    }
  }

 private:
  double value;
  Decimal nearest;
  double distance = HUGE_VAL;
};

/// With the point in it where that is no longer than an exponent.
std::string textOf(const Decimal& decimal) {
  std::string digits = std::to_string(decimal.digits);
  if (decimal.power == 0) return digits;
  const int size = static_cast<int>(digits.size());
  const int behind = -decimal.power;
  if (decimal.power > 0 || behind > size + 6) {
    if (size <= mostWholeDigits) return digits + "e" + std::to_string(decimal.power);
    return digits.insert(1, 1, '.') + "e" + std::to_string(decimal.power + size - 1);
  }
  if (behind >= size) return "0." + std::string(static_cast<std::size_t>(behind - size), '0') + digits;
  return digits.insert(static_cast<std::size_t>(size - behind), 1, '.');
}

}  // namespace

std::string stagedNumber(double value) {
  const double size = std::fabs(value);
  const std::string sign = std::signbit(value) ? "-" : "";
  if (size == 0.0) return sign + "0";
  if (!(size >= closestNumber && size <= farthestNumber)) return {};
  NearestDecimal nearest(size);
  nearest.take(decimalOf(size, 0));
  for (int digits = 17; digits <= mostDigits && !nearest.isExact(); ++digits) {
    nearest.takeAround(decimalOf(size, digits));
  }
  return sign + textOf(nearest.decimal());
}

bool needWeights(const std::vector<SurveyPoint>& points) {
  return std::any_of(points.begin(), points.end(), [](const SurveyPoint& point) { return point.w != 1.0; });
}

std::string stagedLine(const SurveyPoint& point, bool withWeight) {
  std::string line = nameFromUtf8(standInName(point.name));
  for (const double value : {point.x, point.y, point.z}) line += " " + stagedNumber(value);
  if (withWeight) line += " " + stagedNumber(point.w);
  return line + "\n";
}

}  // namespace tiepoint::workbench
