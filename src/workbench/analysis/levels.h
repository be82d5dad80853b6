// Critical values of the tests, and the errors that they find with a given power.
#pragma once

#include <optional>

#include "workbench/values/adjustment_result.h"

namespace tiepoint::workbench::analysis {

/// The noncentrality at which a chi-square of so many degrees exceeds the critical value of `alpha` with
/// probability `power`: Baarda's lambda0.
double noncentrality(double degrees, double alpha, double power);

/// Without the number of tests.
TestLevels testLevels(double alpha, double power, VarianceScale scale, std::size_t redundancy);

/// That one of so many tests rejects by chance shall have 5 % (Sidak).
double familyAlpha(std::size_t tests);

/// The probability of a statistic of three axes as large as this one. None with an estimated variance and
/// a redundancy of 3 or less: the measurement alone would then be the variance.
std::optional<double> probabilityOf(double statistic, VarianceScale scale, std::size_t redundancy);

GlobalTest globalTest(double sumOfSquares, std::size_t redundancy);

}  // namespace tiepoint::workbench::analysis
