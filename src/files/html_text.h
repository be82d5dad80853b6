// What the three HTML documents have in common.
#pragma once

#include <cstdint>
#include <sstream>
#include <string>
#include <unordered_map>

#include "records/tables.h"

namespace ZOR::reg {

/// A wide stream with the default number format of the classic locale: six significant digits.
class HtmlText {
 public:
  HtmlText();

  /// Everything up to "<body>". Two of the documents set the font for all elements.
  void head(bool fontForAll);
  template <class Value>
  HtmlText& operator<<(const Value& value) {
    out << value;
    return *this;
  }
  std::wstring text() const { return out.str(); }

 private:
  std::wostringstream out;
};

/// Names as wide text by id, each converted when it is first asked for. A missing id has an empty
/// name; one that stands twice has its first. Valid as long as the table isn't changed.
class WideNames {
 public:
  explicit WideNames(const NamedIdList& table);
  const std::wstring& operator[](std::uint64_t id);

 private:
  std::unordered_map<std::uint64_t, const std::string*> narrow;
  std::unordered_map<std::uint64_t, std::wstring> wide;
};

}  // namespace ZOR::reg
