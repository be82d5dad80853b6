// Any bytes as a line of a reference point file, in each of the four layouts.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "files/line_grammar.h"

namespace {

using ZOR::reg::ParsedPoint;
using LineParser = bool (*)(const std::string&, ParsedPoint&);

bool isNameByte(char c) { return std::string(" \t\n\v\f\r,;").find(c) == std::string::npos; }

void require(bool rule) {
  if (!rule) std::abort();
}

/// What holds for every line that matches.
void checkMatch(LineParser parse, const std::string& line, bool hasName, bool hasWeight) {
  ParsedPoint point;
  if (!parse(line, point)) return;
  if (hasName) {
    require(!point.name.empty());
    for (const char c : point.name) require(isNameByte(c));
    require(line.find(point.name) != std::string::npos);
  } else {
    require(point.name == "?");
  }
  if (!hasWeight) require(point.w == 1.0);

  // White space at both ends changes nothing; a separator that is none does.
  ParsedPoint again;
  require(parse(" \t" + line + "\r", again));
  require(again.name == point.name);
  require(!parse(line + ",", again));
  require(!parse(";" + line, again));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string line(reinterpret_cast<const char*>(data), size);
  checkMatch(ZOR::reg::parseLineNXYZ, line, true, false);
  checkMatch(ZOR::reg::parseLineXYZ, line, false, false);
  checkMatch(ZOR::reg::parseLineXYZW, line, false, true);
  checkMatch(ZOR::reg::parseLineNXYZW, line, true, true);
  return 0;
}
