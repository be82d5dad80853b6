#include "workbench/picture/picture_request.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tiepoint::workbench::picture {

namespace {

constexpr std::size_t endingLength = 4;

char smallLetter(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// Nothing unless the whole of the text is one number of digits alone.
std::optional<int> wholeNumber(const std::string& text) {
  const bool isDigits =
      !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!isDigits) return std::nullopt;
  int number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc()) return std::nullopt;
  return number;
}

}  // namespace

std::optional<Format> formatOfPath(const std::string& path) {
  if (path.size() <= endingLength) return std::nullopt;
  std::string ending = path.substr(path.size() - endingLength);
  std::transform(ending.begin(), ending.end(), ending.begin(), smallLetter);
  if (ending == ".png") return Format::png;
  if (ending == ".svg") return Format::svg;
  if (ending == ".pdf") return Format::pdf;
  return std::nullopt;
}

std::optional<Size> parseSize(const std::string& text) {
  const std::size_t cross = text.find('x');
  if (cross == std::string::npos) return std::nullopt;
  const std::optional<int> width = wholeNumber(text.substr(0, cross));
  const std::optional<int> height = wholeNumber(text.substr(cross + 1));
  if (!width || !height) return std::nullopt;
  const bool isWithin = *width >= smallestSize.width && *width <= largestSize.width && *height >= smallestSize.height &&
                        *height <= largestSize.height;
  if (!isWithin) return std::nullopt;
  return Size{*width, *height};
}

std::optional<Direction> directionByName(const std::string& name) {
  constexpr std::array<std::pair<const char*, Direction>, 5> names{{{"top", Direction::top},
                                                                    {"front", Direction::front},
                                                                    {"side", Direction::side},
                                                                    {"iso", Direction::iso},
                                                                    {"fit", Direction::fit}}};
  for (const auto& [known, direction] : names) {
    if (name == known) return direction;
  }
  return std::nullopt;
}

}  // namespace tiepoint::workbench::picture
