#include "workbench/session/common_points_text.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/io/stand_in_names.h"
#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

std::string asField(const std::string& name) {
  if (name.find_first_of(" \t,;\"") == std::string::npos) return name;
  std::string field = "\"";
  for (const char c : name) field += c == '"' ? "\"\"" : std::string(1, c);
  return field + "\"";
}

}  // namespace

std::string commonPointsText(const std::string& content) {
  const std::string utf8 = utf8FromName(content);
  if (nameOfStandIn(utf8) == utf8) return content;
  std::string text;
  for (std::size_t at = 0; at < utf8.size();) {
    const std::size_t end = std::min(utf8.find('\n', at), utf8.size());
    const std::size_t nameEnd = std::min(utf8.find(' ', at), end);
    const std::string name = utf8.substr(at, nameEnd - at);
    const std::string shown = nameOfStandIn(name);
    text += (shown == name ? name : asField(shown)) + utf8.substr(nameEnd, end - nameEnd) + "\n";
    at = end + 1;
  }
  return text;
}

std::string commonPointsText(const std::vector<MergedTarget>& targets) {
  std::string content;
  for (const MergedTarget& target : targets) {
    const OdGePoint3d& p = target.position;
    content += moduleName(target.name) + fmt::format(" {:.6f} {:.6f} {:.6f} {:.2f}\n", p.x, p.y, p.z, target.weight);
  }
  return commonPointsText(content);
}

}  // namespace tiepoint::workbench
