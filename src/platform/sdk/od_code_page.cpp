#include "platform/sdk/od_code_page.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/sdk/od_error.h"

namespace {

// windows-1251 from 0x80 to 0xBF. Below stands ASCII, above the alphabet in one run. 0x98 is free in
// the code page and stands for the control character of its number, so that no byte is lost.
constexpr std::array<wchar_t, 64> middleOf1251 = {
    0x0402, 0x0403, 0x201A, 0x0453, 0x201E, 0x2026, 0x2020, 0x2021, 0x20AC, 0x2030, 0x0409, 0x2039, 0x040A,
    0x040C, 0x040B, 0x040F, 0x0452, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0459, 0x203A, 0x045A, 0x045C, 0x045B, 0x045F, 0x00A0, 0x040E, 0x045E, 0x0408, 0x00A4, 0x0490, 0x00A6,
    0x00A7, 0x0401, 0x00A9, 0x0404, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x0407, 0x00B0, 0x00B1, 0x0406, 0x0456,
    0x0491, 0x00B5, 0x00B6, 0x00B7, 0x0451, 0x2116, 0x0454, 0x00BB, 0x0458, 0x0405, 0x0455, 0x0457};
constexpr unsigned middleByte = 0x80;
constexpr unsigned alphabetByte = 0xC0;
constexpr wchar_t alphabetBegin = 0x0410;
constexpr wchar_t alphabetEnd = 0x0450;

void requireKnown(OdCodePageId codePage) {
  if (codePage != CP_UNDEFINED && codePage != CP_ANSI_1251) throw OdError(eInvalidInput, "Unknown code page");
}

wchar_t wideOf(unsigned char byte) {
  if (byte < middleByte) return static_cast<wchar_t>(byte);
  if (byte < alphabetByte) return middleOf1251[byte - middleByte];
  return static_cast<wchar_t>(alphabetBegin + (byte - alphabetByte));
}

std::optional<char> byteOf(wchar_t character) {
  const auto asChar = [](unsigned byte) { return static_cast<char>(static_cast<unsigned char>(byte)); };
  if (static_cast<std::uint32_t>(character) < middleByte) return asChar(static_cast<unsigned>(character));
  if (character >= alphabetBegin && character < alphabetEnd) {
    return asChar(alphabetByte + static_cast<unsigned>(character - alphabetBegin));
  }
  const auto* place = std::find(middleOf1251.begin(), middleOf1251.end(), character);
  if (place == middleOf1251.end()) return std::nullopt;
  return asChar(middleByte + static_cast<unsigned>(place - middleOf1251.begin()));
}

// Where wide text is UTF-16, two units may be one character.
bool isSurrogatePair(std::wstring_view text, std::size_t at) {
  return at + 1 < text.size() && text[at] >= 0xD800 && text[at] < 0xDC00 && text[at + 1] >= 0xDC00 &&
         text[at + 1] < 0xE000;
}

}  // namespace

std::wstring odToWide(std::string_view bytes, OdCodePageId codePage) {
  requireKnown(codePage);
  std::wstring wide;
  wide.reserve(bytes.size());
  for (const char byte : bytes) wide.push_back(wideOf(static_cast<unsigned char>(byte)));
  return wide;
}

std::string odToNarrow(std::wstring_view text, OdCodePageId codePage) {
  requireKnown(codePage);
  std::string narrow;
  narrow.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    narrow.push_back(byteOf(text[at]).value_or('?'));
    if (isSurrogatePair(text, at)) ++at;
  }
  return narrow;
}

bool odHasNarrowForm(std::wstring_view text, OdCodePageId codePage) {
  requireKnown(codePage);
  return std::all_of(text.begin(), text.end(), [](wchar_t character) { return byteOf(character).has_value(); });
}
