#include "workbench/picture/round_number.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdlib>
#include <string>

namespace tiepoint::workbench::picture {

namespace {

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

std::string plainNumber(double number) { return fmt::format("{:.6g}", number); }

}  // namespace tiepoint::workbench::picture
