// Texts that keep within a width.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tiepoint::workbench::picture {

/// The width of a text in the font that it will have.
using TextRuler = std::function<double(const std::string&)>;

/// The text, or as much of its beginning as fits, followed by "…". UTF-8.
std::string shortened(const std::string& text, double width, const TextRuler& ruler);

/// The text in lines, broken at its blanks. A word that is wider than a line is shortened.
std::vector<std::string> wrapped(const std::string& text, double width, const TextRuler& ruler);

}  // namespace tiepoint::workbench::picture
