// What a word above a column says of it, in English, German and Russian.
#pragma once

#include <string>

namespace tiepoint::workbench {

/// East is the x of the result and north its y. A letter such as N means one thing beside E and
/// another beside X: it is settled by the words around it.
enum class HeaderMeaning {
  unknown,
  name,
  x,
  y,
  z,
  weight,
  east,
  north,
  height,
  /// A column that the reading has no use for: a code, a remark, a standard deviation.
  other,
  /// "N": north beside E, a number beside X and Y.
  letterN,
  /// "H": the height, but Hochwert beside R and a further height.
  letterH,
  /// "R": Rechtswert beside H.
  letterR,
  /// The word and what stands in brackets behind it say different things: "Northing (X)".
  contradiction,
};

/// `word` is UTF-8. Case, blanks, points, dashes and underlines don't count, nor does a unit in
/// brackets.
HeaderMeaning meaningOfHeaderWord(const std::string& word);

/// The word without what doesn't count.
std::string plainHeaderWord(const std::string& word);

}  // namespace tiepoint::workbench
