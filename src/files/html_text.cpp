#include "files/html_text.h"

#include <algorithm>
#include <boost/locale/encoding.hpp>
#include <locale>

namespace ZOR::reg {

namespace {

constexpr const char* nameEncoding = "windows-1251";
/// The code page leaves this byte free, and a name counts it as the control character of its number.
/// Boost.Locale drops it on some systems.
constexpr char freeByte = '\x98';
constexpr wchar_t freeByteCharacter = 0x98;

std::wstring wideName(const std::string& name) {
  std::wstring wide;
  for (std::size_t begin = 0;;) {
    const std::size_t end = std::min(name.find(freeByte, begin), name.size());
    wide += boost::locale::conv::to_utf<wchar_t>(name.data() + begin, name.data() + end, nameEncoding);
    if (end == name.size()) return wide;
    wide += freeByteCharacter;
    begin = end + 1;
  }
}

}  // namespace

HtmlText::HtmlText() { out.imbue(std::locale::classic()); }

void HtmlText::head(bool fontForAll) {
  out << L"<!DOCTYPE html>" << L"<html>" << L"<head>" << L"<meta charset='utf-8'>" << L"<style>"
      << L"table { border-collapse: collapse; }"
      << L"table, th, td { border: 1px solid black; font-family : Consolas, Courier New, Arial, Calibri, Verdana; }";
  if (fontForAll) out << L"* { font-family : Consolas, Courier New, Arial, Calibri, Verdana; }";
  out << L"</style>" << L"</head>" << L"<body>";
}

WideNames::WideNames(const NamedIdList& table) {
  for (const NamedId& entry : table) narrow.emplace(entry.id, &entry.name);
}

const std::wstring& WideNames::operator[](std::uint64_t id) {
  static const std::wstring none;
  const auto known = narrow.find(id);
  if (known == narrow.end()) return none;
  const auto [name, isNew] = wide.try_emplace(id);
  if (isNew) name->second = wideName(*known->second);
  return name->second;
}

}  // namespace ZOR::reg
