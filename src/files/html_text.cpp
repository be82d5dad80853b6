#include "files/html_text.h"

#include <boost/locale/encoding.hpp>
#include <locale>

namespace ZOR::reg {

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
  if (isNew) name->second = boost::locale::conv::to_utf<wchar_t>(*known->second, "windows-1251");
  return name->second;
}

}  // namespace ZOR::reg
