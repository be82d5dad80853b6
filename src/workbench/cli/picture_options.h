// Which picture a command is asked for.
#pragma once

#include <optional>

#include "workbench/cli/options.h"
#include "workbench/picture/picture.h"

namespace tiepoint::workbench::cli {

/// By which options a command takes them.
struct PictureOptionNames {
  const char* file;
  const char* size;
  const char* view;
};

inline constexpr PictureOptionNames registerPictureNames{"--picture", "--picture-size", "--picture-view"};
inline constexpr PictureOptionNames renderPictureNames{"--output", "--size", "--view"};

/// Nothing when no file is given. Throws CommandError(usage) for an ending, a size or a view that there
/// isn't, and for a size or a view without a file.
std::optional<picture::Request> pictureRequest(const PictureOptions& options, const PictureOptionNames& names);

}  // namespace tiepoint::workbench::cli
