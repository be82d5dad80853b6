#include "workbench/picture/round_number.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

namespace tiepoint::workbench::picture {

namespace {

/// What is beyond them is no length of a survey, and nobody counts its zeros.
constexpr double smallestInDigits = 1e-9;
constexpr double largestInDigits = 1e12;
/// Behind the first one: more than a number of one digit needs, whatever its logarithm is rounded to.
constexpr int digits = 5;

/// As the decimal text says it, so that 0.2 is the double that "0.2" means. Infinite where no number
/// is so large.
double decimal(int digit, int exponent) { return std::strtod(fmt::format("{}e{}", digit, exponent).c_str(), nullptr); }

}  // namespace

double roundNumberUpTo(double limit) {
  // The logarithm of a number beside a power of ten may be rounded to either side of it.
  const int exponent = static_cast<int>(std::floor(std::log10(limit)));
  for (const int power : {exponent + 1, exponent}) {
    for (const int digit : {5, 2, 1}) {
      if (const double number = decimal(digit, power); number <= limit) return number;
    }
  }
  return decimal(5, exponent - 1);
}

std::string plainNumber(double number) {
  if (number < smallestInDigits || number > largestInDigits) return fmt::format("{:.6g}", number);
  const int exponent = static_cast<int>(std::floor(std::log10(number)));
  std::string text = fmt::format("{:.{}f}", number, std::max(0, digits - exponent));
  if (text.find('.') != std::string::npos) text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

}  // namespace tiepoint::workbench::picture
