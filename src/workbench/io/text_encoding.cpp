#include "workbench/io/text_encoding.h"

#include <boost/filesystem/path.hpp>
#include <boost/locale/utf.hpp>
#include <cstdint>
#include <cstdio>

#include "platform/sdk/od_code_page.h"

namespace tiepoint::workbench {

namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;
using Wide = boost::locale::utf::utf_traits<wchar_t>;
using boost::locale::utf::code_point;

constexpr code_point replacementCharacter = 0xFFFD;

bool isWrong(code_point c) { return c == boost::locale::utf::illegal || c == boost::locale::utf::incomplete; }

std::string invalidUtf8(const std::string& utf8, std::size_t offset) {
  char text[64];
  std::snprintf(text, sizeof text, "the byte 0x%02X at offset %zu isn't UTF-8",
                static_cast<unsigned>(static_cast<unsigned char>(utf8[offset])), offset);
  return text;
}

std::string withoutNarrowForm(code_point c) {
  char number[16];
  std::snprintf(number, sizeof number, "U+%04lX", static_cast<unsigned long>(c));
  std::string character;
  Utf8::encode(c, std::back_inserter(character));
  return "the character \"" + character + "\" (" + number + ") isn't in windows-1251";
}

/// Calls `use(code point, its wide text)` for each character; what is none becomes U+FFFD.
template <class Use>
void forEachCharacter(const std::wstring& wide, Use use) {
  for (auto at = wide.begin(); at != wide.end();) {
    const auto start = at;
    const code_point c = Wide::decode(at, wide.end());
    // What is wrong is one unit: the decoder of UTF-16 has read the next one too.
    if (isWrong(c)) at = start + 1;
    use(isWrong(c) ? replacementCharacter : c, std::wstring(start, at));
  }
}

}  // namespace

std::wstring wideFromUtf8(const std::string& utf8) {
  std::wstring wide;
  wide.reserve(utf8.size());
  for (auto at = utf8.begin(); at != utf8.end();) {
    const auto start = at;
    const code_point c = Utf8::decode(at, utf8.end());
    if (isWrong(c)) throw EncodingError(invalidUtf8(utf8, static_cast<std::size_t>(start - utf8.begin())));
    Wide::encode(c, std::back_inserter(wide));
  }
  return wide;
}

std::string utf8FromWide(const std::wstring& wide) {
  std::string utf8;
  utf8.reserve(wide.size());
  forEachCharacter(wide, [&](code_point c, const std::wstring&) { Utf8::encode(c, std::back_inserter(utf8)); });
  return utf8;
}

std::string nameFromUtf8(const std::string& utf8) {
  const std::wstring wide = wideFromUtf8(utf8);
  if (!odHasNarrowForm(wide)) {
    forEachCharacter(wide, [](code_point c, const std::wstring& text) {
      if (!odHasNarrowForm(text)) throw EncodingError(withoutNarrowForm(c));
    });
  }
  return odToNarrow(wide);
}

std::string utf8FromName(const std::string& name) { return utf8FromWide(odToWide(name)); }

std::string joinedPath(const std::string& folder, const std::string& file) {
  using boost::filesystem::path;
  return (path(wideFromUtf8(folder)) / path(wideFromUtf8(file))).string();
}

}  // namespace tiepoint::workbench
