// Files of results.
#pragma once

#include <functional>
#include <string>

#include "workbench/values/refusal.h"

namespace tiepoint::workbench {

/// A file to be written, and the part of the request that asks for it. UTF-8.
struct OutputTarget {
  OutputTarget(Field field_, std::string path_, std::string given_ = {})
      : field(field_), path(std::move(path_)), given(std::move(given_)) {}

  Field field;
  std::string path;
  /// What the field holds, where that isn't the path itself.
  std::string given;
};

/// A file and what it shall hold, made when its turn to be written has come.
struct OutputFile {
  OutputTarget target;
  std::function<std::string()> content;
};

}  // namespace tiepoint::workbench
