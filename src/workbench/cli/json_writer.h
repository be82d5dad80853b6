// A large JSON object as text, without ever standing in memory as a whole.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "workbench/cli/json_parts.h"

namespace tiepoint::workbench::cli {

/// Takes text piece after piece.
using TextSink = std::function<void(const std::string&)>;

/// Writes an object member by member. The text is the one that `jsonText` gives of the whole object.
class JsonObjectWriter {
 public:
  /// `sink` gets pieces of some size. What it throws passes through.
  explicit JsonObjectWriter(TextSink sink);

  void add(const std::string& key, const Json& value);
  /// An array of so many elements; each is made when its turn comes.
  void addArray(const std::string& key, std::size_t count, const std::function<Json(std::size_t)>& element);
  /// Closes the object. Nothing can be added after it.
  void end();

 private:
  void addKey(const std::string& key);
  void addIndented(const Json& value, std::size_t depth);
  void passOn(std::size_t smallest);

  TextSink sink;
  std::string pending;
  bool isEmpty = true;
};

}  // namespace tiepoint::workbench::cli
