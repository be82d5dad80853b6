// Lengths and factors that a person can read off.
#pragma once

#include <string>

namespace tiepoint::workbench::picture {

/// The largest of 1, 2 and 5 times a power of ten that isn't above `limit`, which must be positive
/// and finite.
double roundNumberUpTo(double limit);

/// A number of `roundNumberUpTo` in digits: "0.002", "500", and with an exponent only where
/// no length of a survey is.
std::string plainNumber(double number);

}  // namespace tiepoint::workbench::picture
