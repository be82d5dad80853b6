#include "workbench/picture/text_fit.h"

#include <algorithm>

namespace tiepoint::workbench::picture {

namespace {

constexpr const char* ellipsis = "\xE2\x80\xA6";

/// Bytes of UTF-8 after the first of a character.
bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

void dropLastCharacter(std::string& text) {
  while (!text.empty() && isContinuation(text.back())) text.pop_back();
  if (!text.empty()) text.pop_back();
}

std::vector<std::string> words(const std::string& text) {
  std::vector<std::string> all;
  std::size_t begin = 0;
  while (begin < text.size()) {
    const std::size_t end = std::min(text.find(' ', begin), text.size());
    if (end > begin) all.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return all;
}

}  // namespace

std::string shortened(const std::string& text, double width, const TextRuler& ruler) {
  if (ruler(text) <= width) return text;
  std::string kept = text;
  do {
    dropLastCharacter(kept);
  } while (!kept.empty() && ruler(kept + ellipsis) > width);
  return kept + ellipsis;
}

std::vector<std::string> wrapped(const std::string& text, double width, const TextRuler& ruler) {
  std::vector<std::string> lines;
  for (const std::string& word : words(text)) {
    const std::string longer = lines.empty() ? "" : lines.back() + " " + word;
    if (!lines.empty() && ruler(longer) <= width) {
      lines.back() = longer;
    } else {
      lines.push_back(shortened(word, width, ruler));
    }
  }
  return lines;
}

}  // namespace tiepoint::workbench::picture
