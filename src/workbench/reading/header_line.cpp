#include "workbench/reading/header_line.h"

#include <algorithm>
#include <array>

#include "workbench/reading/encodings.h"
#include "workbench/reading/fields.h"
#include "workbench/reading/header_words.h"
#include "workbench/reading/numbers.h"

namespace tiepoint::workbench {

namespace {

constexpr std::size_t fewestWords = 3;

bool isNumberLike(const std::string& text) {
  for (const DecimalMark mark : {DecimalMark::point, DecimalMark::comma}) {
    const ReadNumber number = readNumber(text, mark);
    if (number.isNumber || number.fault != ReadingFaultKind::notANumber) return true;
  }
  return false;
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// No heading begins with a digit or holds a number with decimals: that is a line of points, divided
/// at the wrong places.
bool holdsNumber(const std::string& text) {
  if (!text.empty() && isDigit(text.front())) return true;
  for (std::size_t i = 1; i + 1 < text.size(); ++i) {
    if ((text[i] == '.' || text[i] == ',') && isDigit(text[i - 1]) && isDigit(text[i + 1])) return true;
  }
  return false;
}

bool isBracketed(const std::string& text) {
  return text.size() >= 2 &&
         ((text.front() == '[' && text.back() == ']') || (text.front() == '(' && text.back() == ')'));
}

std::vector<std::string> decoded(const std::vector<std::string>& words, TextEncoding encoding) {
  std::vector<std::string> texts;
  for (const std::string& word : words) texts.push_back(decodedText(word, encoding).value_or(std::string()));
  return texts;
}

std::ptrdiff_t countKnown(const std::vector<std::string>& words) {
  return std::count_if(words.begin(), words.end(), [](const std::string& word) {
    return !isAscii(word) && meaningOfHeaderWord(word) != HeaderMeaning::unknown;
  });
}

HeaderLine inKnownEncoding(const std::vector<std::string>& words) {
  constexpr std::array<TextEncoding, 3> encodings{TextEncoding::utf8, TextEncoding::windows1251,
                                                  TextEncoding::windows1252};
  HeaderLine best{decoded(words, encodings.front()), std::nullopt};
  std::ptrdiff_t most = 0;
  for (const TextEncoding encoding : encodings) {
    const std::vector<std::string> texts = decoded(words, encoding);
    const std::ptrdiff_t known = countKnown(texts);
    if (known <= most) continue;
    most = known;
    best = {texts, encoding};
  }
  return best;
}

bool isAllAscii(const std::vector<std::string>& words) {
  return std::all_of(words.begin(), words.end(), [](const std::string& word) { return isAscii(word); });
}

}  // namespace

std::optional<HeaderLine> headerLine(const std::string& line, Separator separator, std::optional<TextEncoding> said) {
  FieldList fields;
  if (splitFields(line, separator, fields) != QuoteTrouble::none) return std::nullopt;
  const bool dividesUnits = separator == Separator::blank || separator == Separator::mixed;
  std::vector<std::string> words;
  std::size_t filled = 0;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const std::string& text = fields[i].text;
    if (isNumberLike(text) || holdsNumber(text)) return std::nullopt;
    if (dividesUnits && isBracketed(text)) continue;
    filled += !text.empty();
    words.push_back(text);
  }
  if (filled < fewestWords) return std::nullopt;
  if (isAllAscii(words)) return HeaderLine{words, std::nullopt};
  return said ? HeaderLine{decoded(words, *said), std::nullopt} : inKnownEncoding(words);
}

}  // namespace tiepoint::workbench
