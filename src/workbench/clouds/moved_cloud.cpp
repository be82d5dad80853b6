#include "workbench/clouds/moved_cloud.h"

#include <fmt/format.h>

#include <array>
#include <boost/filesystem.hpp>
#include <boost/filesystem/fstream.hpp>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <system_error>

#include "workbench/io/durable_file.h"

namespace tiepoint::workbench {

namespace fs = boost::filesystem;

namespace {

/// Where a number stands in a line.
struct FoundNumber {
  std::size_t begin = 0;
  std::size_t end = 0;
  double value = 0.0;
};

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isSeparator(char c) { return isBlank(c) || c == ',' || c == ';' || c == '\r'; }

/// A finite number that begins at `begin` and ends at a separator or the line's end.
std::optional<FoundNumber> numberAt(std::string_view line, std::size_t begin) {
  FoundNumber found;
  found.begin = begin;
  const std::size_t digits = begin < line.size() && line[begin] == '+' ? begin + 1 : begin;
  const auto [end, error] = std::from_chars(line.data() + digits, line.data() + line.size(), found.value);
  if (error != std::errc{} || !std::isfinite(found.value)) return std::nullopt;
  found.end = static_cast<std::size_t>(end - line.data());
  if (found.end < line.size() && !isSeparator(line[found.end])) return std::nullopt;
  return found;
}

std::optional<std::array<FoundNumber, 3>> leadingCoordinates(std::string_view line) {
  std::array<FoundNumber, 3> coordinates;
  std::size_t at = 0;
  while (at < line.size() && isBlank(line[at])) ++at;
  for (FoundNumber& coordinate : coordinates) {
    const auto number = numberAt(line, at);
    if (!number) return std::nullopt;
    coordinate = *number;
    at = number->end;
    while (at < line.size() && isSeparator(line[at])) ++at;
  }
  return coordinates;
}

std::string shown(const fs::path& path) { return path.string(); }

void refuseReplacing(const fs::path& source, const fs::path& target, bool replace) {
  boost::system::error_code error;
  if (!fs::exists(target, error)) return;
  if (fs::equivalent(source, target, error)) {
    throw CloudFileError(shown(target) + ": this is the cloud's own file; choose another folder");
  }
  if (!fs::is_regular_file(target, error)) {
    throw CloudFileError(shown(target) + ": not an ordinary file; choose another folder");
  }
  if (!replace) throw CloudFileError(shown(target) + ": the file exists; --force replaces it");
}

}  // namespace

bool moveLine(std::string& line, const OdGeMatrix3d& motion) {
  const auto found = leadingCoordinates(line);
  if (!found) return false;
  const auto& [x, y, z] = *found;
  OdGePoint3d point(x.value, y.value, z.value);
  point.p_transform(motion);
  line = fmt::format("{}{}{}{}{}{}{}", line.substr(0, x.begin), point.x, line.substr(x.end, y.begin - x.end), point.y,
                     line.substr(y.end, z.begin - y.end), point.z, line.substr(z.end));
  return true;
}

namespace {

MovedCloud copyMoved(std::istream& in, const std::string& source, const OdGeMatrix3d& motion, WholeFile& copy) {
  MovedCloud moved;
  for (std::string line; std::getline(in, line);) {
    const bool hasLineFeed = !in.eof();
    if (line.find('\0') != std::string::npos) {
      throw CloudFileError(source + ": not a text cloud (one point per line: x y z and any further columns)");
    }
    ++(moveLine(line, motion) ? moved.points : moved.otherLines);
    copy.write(hasLineFeed ? line + "\n" : line);
  }
  if (in.bad()) throw CloudFileError(source + ": the cloud's file can't be read completely");
  if (moved.points == 0) throw CloudFileError(source + ": no line begins with three numbers; nothing to move");
  return moved;
}

}  // namespace

MovedCloud writeMovedCloud(const std::string& source, const std::string& target, const OdGeMatrix3d& motion,
                           bool replace) {
  const fs::path from(source);
  refuseReplacing(from, fs::path(target), replace);
  fs::ifstream in(from, std::ios::binary);
  if (!in || !fs::is_regular_file(from)) throw CloudFileError(source + ": the cloud's file can't be read");
  try {
    WholeFile copy(target);
    const MovedCloud moved = copyMoved(in, source, motion, copy);
    copy.putInPlace();
    return moved;
  } catch (const std::system_error& error) {
    throw CloudFileError(target + ": the file can't be written: " + error.code().message());
  }
}

}  // namespace tiepoint::workbench
