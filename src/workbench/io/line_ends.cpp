#include "workbench/io/line_ends.h"

namespace tiepoint::workbench {

std::string withSystemLineEnds(const std::string& text) {
#ifdef _WIN32
  std::string result;
  for (const char c : text) {
    if (c == '\n') result += '\r';
    result += c;
  }
  return result;
#else
  return text;
#endif
}

}  // namespace tiepoint::workbench
