#include "workbench/io/stand_in_names.h"

#include <boost/locale/utf.hpp>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string_view>

#include "platform/sdk/od_code_page.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;
using Wide = boost::locale::utf::utf_traits<wchar_t>;
using boost::locale::utf::code_point;

constexpr std::size_t minDigits = 4;
constexpr std::size_t maxDigits = 6;

bool isHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); }

std::size_t countHexDigits(std::string_view text) {
  std::size_t count = 0;
  while (count < text.size() && isHexDigit(text[count])) ++count;
  return count;
}

/// Whether what follows an underline could be read as the inside of an escape. What follows four
/// digits doesn't matter: an escape behind them would bring the closing underline along.
bool looksEscaped(std::string_view behindUnderline) {
  return !behindUnderline.empty() && behindUnderline.front() == 'x' &&
         countHexDigits(behindUnderline.substr(1)) >= minDigits;
}

bool hasNarrowForm(code_point c) {
  std::wstring wide;
  Wide::encode(c, std::back_inserter(wide));
  return odHasNarrowForm(wide);
}

bool isControl(code_point c) { return c < 0x20 || c == 0x7F; }

/// A character that a point's name can't carry: the import would end the name there.
bool breaksPointName(code_point c) { return c == ' ' || c == ',' || c == ';'; }

bool isCarried(code_point c) { return !isControl(c) && hasNarrowForm(c); }

void appendEscape(std::string& text, code_point c) {
  char escape[16];
  std::snprintf(escape, sizeof escape, "_x%04lX_", static_cast<unsigned long>(c));
  text += escape;
}

template <class Carries>
std::string standIn(const std::string& utf8, Carries carries) {
  wideFromUtf8(utf8);
  std::string text;
  for (auto at = utf8.begin(); at != utf8.end();) {
    const auto start = at;
    const code_point c = Utf8::decode(at, utf8.end());
    const std::string_view rest = std::string_view(utf8).substr(static_cast<std::size_t>(at - utf8.begin()));
    if (c == '_' ? looksEscaped(rest) : !carries(c)) {
      appendEscape(text, c);
    } else {
      text.append(start, at);
    }
  }
  return text;
}

struct Escape {
  code_point character;
  std::size_t length;
};

/// The escape with which the text begins. Only what a stand-in would have escaped is one, so that
/// names of other origin stay as they are.
std::optional<Escape> escapeAt(std::string_view text) {
  if (text.substr(0, 2) != "_x") return std::nullopt;
  const std::size_t digits = countHexDigits(text.substr(2));
  if (digits < minDigits || digits > maxDigits) return std::nullopt;
  if (text.size() <= 2 + digits || text[2 + digits] != '_') return std::nullopt;
  const auto c = static_cast<code_point>(std::stoul(std::string(text.substr(2, digits)), nullptr, 16));
  if (!boost::locale::utf::is_valid_codepoint(c)) return std::nullopt;
  if (c != '_' && isCarried(c) && !breaksPointName(c)) return std::nullopt;
  std::string canonical;
  appendEscape(canonical, c);
  if (canonical.size() != digits + 3) return std::nullopt;
  return Escape{c, digits + 3};
}

}  // namespace

std::string standInName(const std::string& utf8) {
  return standIn(utf8, [](code_point c) { return isCarried(c) && !breaksPointName(c); });
}

std::string standInGroupName(const std::string& utf8) { return standIn(utf8, isCarried); }

std::string nameOfStandIn(const std::string& utf8) {
  std::string name;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto escape = escapeAt(std::string_view(utf8).substr(i));
    if (escape) {
      Utf8::encode(escape->character, std::back_inserter(name));
      i += escape->length;
    } else {
      name += utf8[i++];
    }
  }
  return name;
}

std::string moduleName(const std::string& utf8) { return nameFromUtf8(standInName(utf8)); }

std::string moduleGroupName(const std::string& utf8) { return nameFromUtf8(standInGroupName(utf8)); }

std::string nameOfModule(const std::string& narrow) { return nameOfStandIn(utf8FromName(narrow)); }

}  // namespace tiepoint::workbench
