// JSON as it is read from requests and written into responses.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>

namespace tiepoint::workbench {

/// What requests hold; members are looked up by name.
using Json = nlohmann::json;
/// What responses hold; members are written in the order in which they came.
using OrderedJson = nlohmann::ordered_json;

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
inline constexpr int deepestNesting = 64;

/// Throws NotJson and TooDeep. A number that is too great for a double is JSON too: it becomes a
/// value that no parameter takes, so that whoever reads it can name it.
Json parseJson(const std::string& text);

/// On one line, without blanks. A double is written with the fewest digits that read back as the
/// same double, and can be told from a whole number; it must be finite. Bytes of a text that
/// aren't UTF-8 become U+FFFD.
std::string writeJson(const OrderedJson& value);

/// Adds a member to an object that is known not to have it.
void addMember(OrderedJson& object, std::string name, OrderedJson value);

}  // namespace tiepoint::workbench
