// The ends of lines in files that people open.
#pragma once

#include <string>

namespace tiepoint::workbench {

/// The text with the line ends of this system, as a stream in text mode writes them: what ends in a line feed
/// alone ends on Windows in a carriage return and a line feed.
std::string withSystemLineEnds(const std::string& text);

}  // namespace tiepoint::workbench
