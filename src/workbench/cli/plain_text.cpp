#include "workbench/cli/plain_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace tiepoint::workbench::cli {

std::string printable(const std::string& utf8) {
  std::string text;
  text.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    const auto next = i + 1 < utf8.size() ? static_cast<unsigned char>(utf8[i + 1]) : 0u;
    if (byte < 0x20 || byte == 0x7F) {
      text += '?';
    } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {  // U+0080 to U+009F
      text += '?';
      ++i;
    } else {
      text += utf8[i];
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

}  // namespace tiepoint::workbench::cli
