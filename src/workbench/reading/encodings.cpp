#include "workbench/reading/encodings.h"

#include <algorithm>
#include <array>
#include <boost/locale/utf.hpp>
#include <iterator>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;
using boost::locale::utf::code_point;

constexpr code_point replacementCharacter = 0xFFFD;

/// 0x80 to 0x9F of windows-1252; 0 for the five bytes that have no character.
constexpr std::array<code_point, 32> high1252{0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                              0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

bool isUtf8(std::string_view bytes) {
  for (auto at = bytes.begin(); at != bytes.end();) {
    const code_point c = Utf8::decode(at, bytes.end());
    if (c == boost::locale::utf::illegal || c == boost::locale::utf::incomplete) return false;
  }
  return true;
}

std::optional<std::string> from1252(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const code_point character = byte >= 0x80 && byte < 0xA0 ? high1252[byte - 0x80u] : byte;
    if (character == 0 && byte != 0) return std::nullopt;
    Utf8::encode(character, std::back_inserter(text));
  }
  return text;
}

bool isLatinAscii(code_point c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool isCyrillic(code_point c) { return c >= 0x400 && c < 0x530; }
bool isLatinBeyondAscii(code_point c) { return (c >= 0xC0 && c < 0x250 && c != 0xD7 && c != 0xF7) || c == 0x1E9E; }

/// Marks that people do write in names: degree, numero, powers, dashes, quotes, no-break blank.
bool isNameMark(code_point c) {
  constexpr std::array<code_point, 22> marks{0xA0,   0xA7,   0xAA,   0xAB,   0xB0,   0xB1,  0xB2,   0xB3,
                                             0xB4,   0xB5,   0xB7,   0xB9,   0xBA,   0xBB,  0x2013, 0x2014,
                                             0x2018, 0x2019, 0x201C, 0x201D, 0x201E, 0x2116};
  return std::binary_search(marks.begin(), marks.end(), c);
}

/// No language of windows-1252 strings so many of its accented letters together, and in
/// windows-1251 every Russian word of that length looks so.
constexpr int fewestAccentsTooMany = 3;

/// Whether the text can be a name in that code page: every word of letters keeps to one script.
bool isPlausible(const std::optional<std::string>& text, bool (*isLetterBeyondAscii)(code_point), bool mixesWithAscii,
                 int accentsTooMany) {
  if (!text) return false;
  bool ascii = false;
  int accents = 0;
  bool beyond = false;
  for (auto at = text->begin(); at != text->end();) {
    const code_point c = Utf8::decode(at, text->end());
    if (isLatinAscii(c)) {
      ascii = true;
      accents = 0;
    } else if (isLetterBeyondAscii(c)) {
      beyond = true;
      ++accents;
    } else {
      if (c >= 0x80 && !isNameMark(c)) return false;
      ascii = beyond = false;
      accents = 0;
    }
    if (!mixesWithAscii && ascii && beyond) return false;
    if (accentsTooMany > 0 && accents >= accentsTooMany) return false;
  }
  return true;
}

/// In windows-1251 a capital and a numero sign or a small io, such as in a benchmark's name, are two
/// bytes that UTF-8 could have, too.
bool couldBe1251(std::string_view utf8) {
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) continue;
    const auto next = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0u;
    if (byte > 0xDF || (next != 0xB9 && next != 0xB8)) return false;
    ++i;
  }
  return true;
}

}  // namespace

bool isAscii(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::optional<std::string> decodedText(std::string_view bytes, TextEncoding encoding) {
  if (isAscii(bytes)) return std::string(bytes);
  switch (encoding) {
    case TextEncoding::ascii:
      return std::nullopt;
    case TextEncoding::windows1251:
      return utf8FromName(std::string(bytes));
    case TextEncoding::windows1252:
      return from1252(bytes);
    default:
      return isUtf8(bytes) ? std::optional<std::string>(bytes) : std::nullopt;
  }
}

std::string shownText(std::string_view bytes, TextEncoding encoding) {
  if (const auto text = decodedText(bytes, encoding)) return *text;
  std::string shown;
  for (auto at = bytes.begin(); at != bytes.end();) {
    const auto start = at;
    const code_point c = Utf8::decode(at, bytes.end());
    const bool isWrong = c == boost::locale::utf::illegal || c == boost::locale::utf::incomplete;
    if (isWrong) at = start + 1;
    Utf8::encode(isWrong ? replacementCharacter : c, std::back_inserter(shown));
  }
  return shown;
}

void NameEvidence::take(std::string_view name) {
  if (isAscii(name)) return;
  beyondAscii = true;
  const bool utf8 = isUtf8(name);
  someNotUtf8 = someNotUtf8 || !utf8;
  certainUtf8 = certainUtf8 || (utf8 && !couldBe1251(name));
  takeSingleBytes(name);
}

void NameEvidence::takeSingleBytes(std::string_view name) {
  const auto as1251 = decodedText(name, TextEncoding::windows1251);
  const auto as1252 = decodedText(name, TextEncoding::windows1252);
  fits1251 = fits1251 && isPlausible(as1251, isCyrillic, false, 0);
  fits1252 = fits1252 && isPlausible(as1252, isLatinBeyondAscii, true, fewestAccentsTooMany);
  differs = differs || as1251 != as1252;
}

std::vector<TextEncoding> NameEvidence::possible() const {
  using Encodings = std::vector<TextEncoding>;
  const Encodings single{TextEncoding::windows1251, TextEncoding::windows1252};
  if (!beyondAscii) return {TextEncoding::ascii};
  if (!someNotUtf8) {
    if (certainUtf8) return {TextEncoding::utf8};
    return fits1251 ? Encodings{TextEncoding::utf8, TextEncoding::windows1251} : Encodings{TextEncoding::utf8};
  }
  // Some names are UTF-8 beyond doubt, and others aren't: no encoding reads them all.
  if (certainUtf8) return {TextEncoding::utf8, TextEncoding::windows1251, TextEncoding::windows1252};
  if (!differs) return {TextEncoding::windows1251};
  if (fits1251 == fits1252) return single;
  return {fits1251 ? TextEncoding::windows1251 : TextEncoding::windows1252};
}

}  // namespace tiepoint::workbench
