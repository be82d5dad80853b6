#include "workbench/cli/picture_options.h"

#include <fmt/format.h>

#include "workbench/cli/exit_status.h"

namespace tiepoint::workbench::cli {

namespace {

void requireFile(const std::string& value, const char* option, const char* fileOption) {
  if (value.empty()) return;
  throw CommandError(ExitStatus::usage, fmt::format("{} needs {} FILE", option, fileOption));
}

picture::Format format(const std::string& file, const char* option) {
  if (const auto known = picture::formatOfPath(file)) return *known;
  throw CommandError(ExitStatus::usage, fmt::format("{} {}: the file must end in .png, .svg or .pdf", option, file));
}

picture::Size size(const std::string& text, const char* option) {
  if (text.empty()) return {};
  if (const auto size = picture::parseSize(text)) return *size;
  throw CommandError(ExitStatus::usage, fmt::format("{} {}: must have the form WxH, from {}x{} to {}x{} pixels", option,
                                                    text, picture::smallestSize.width, picture::smallestSize.height,
                                                    picture::largestSize.width, picture::largestSize.height));
}

picture::Direction direction(const std::string& name, const char* option) {
  if (name.empty()) return picture::Direction::top;
  if (const auto known = picture::directionByName(name)) return *known;
  throw CommandError(ExitStatus::usage,
                     fmt::format("{} {}: unknown; choose top, front, side, iso or fit", option, name));
}

}  // namespace

std::optional<picture::Request> pictureRequest(const PictureOptions& options, const PictureOptionNames& names) {
  if (options.file.empty()) {
    requireFile(options.size, names.size, names.file);
    requireFile(options.view, names.view, names.file);
    return std::nullopt;
  }
  return picture::Request{format(options.file, names.file), size(options.size, names.size),
                          direction(options.view, names.view)};
}

}  // namespace tiepoint::workbench::cli
