#include "workbench/report/plain_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <boost/locale/utf.hpp>
#include <sstream>

namespace tiepoint::workbench {

std::string printable(const std::string& utf8) {
  using Utf8 = boost::locale::utf::utf_traits<char>;
  std::string text;
  text.reserve(utf8.size());
  for (auto at = utf8.begin(); at != utf8.end();) {
    const auto start = at;
    const boost::locale::utf::code_point c = Utf8::decode(at, utf8.end());
    const bool isText = c != boost::locale::utf::illegal && c != boost::locale::utf::incomplete;
    if (isText && c >= 0x20 && !(c >= 0x7F && c < 0xA0)) {
      text.append(start, at);
    } else {
      text += '?';
    }
  }
  return text;
}

std::size_t columnsOf(const std::string& utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0u) != 0x80u; }));
}

std::string joined(const std::vector<std::string>& items, std::size_t most) {
  std::string text;
  for (std::size_t i = 0; i < items.size() && i < most; ++i) text += (i == 0 ? "" : ", ") + items[i];
  return items.size() > most ? fmt::format("{} and {} more", text, items.size() - most) : text;
}

std::string joinedWithin(const std::vector<std::string>& items, std::size_t width) {
  std::size_t most = 12;
  std::string text = joined(items, most);
  while (most > 1 && columnsOf(text) > width) text = joined(items, --most);
  return text;
}

std::string plural(std::size_t count, const char* noun) {
  return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

std::string wrapped(const std::string& utf8, std::size_t width, std::size_t indent) {
  std::string text;
  std::size_t column = 0;
  std::istringstream words(utf8);
  for (std::string word; words >> word;) {
    const std::size_t length = columnsOf(word);
    if (column > 0 && column + 1 + length > width) {
      text += "\n" + std::string(indent, ' ');
      column = indent;
    } else if (column > 0) {
      text += " ";
      ++column;
    }
    text += word;
    column += length;
  }
  return text;
}

std::vector<std::size_t> TextTable::widths() const {
  std::vector<std::size_t> widest;
  for (const auto& row : rows) {
    if (widest.size() < row.size()) widest.resize(row.size(), 0);
    for (std::size_t i = 0; i < row.size(); ++i) widest[i] = std::max(widest[i], columnsOf(row[i]));
  }
  return widest;
}

std::string TextTable::text() const {
  const std::vector<std::size_t> widest = widths();
  std::string all;
  for (const auto& row : rows) {
    std::string line;
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string padding(widest[i] - columnsOf(row[i]), ' ');
      const bool right = i < sides.size() && sides[i] == Side::right;
      line += right ? "  " + padding + row[i] : "  " + row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    all += line + "\n";
  }
  return all;
}

}  // namespace tiepoint::workbench
