// From text to JSON.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

#include "workbench/rpc/json_types.h"

namespace tiepoint::workbench {

/// Text that isn't JSON, or holds an object with two members of one name.
class NotJson : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Arrays and objects within one another beyond `deepestNesting`.
class TooDeep : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A request is four levels deep, in a batch five; the rest is room.
inline constexpr std::size_t deepestNesting = 64;

/// Throws NotJson and TooDeep. A number that is too great for a double is JSON too: it becomes a
/// value that no parameter takes, so that whoever reads it can name it.
Json parseJson(const std::string& text);

}  // namespace tiepoint::workbench
