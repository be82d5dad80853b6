// JSON in memory.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

namespace tiepoint::workbench {

/// What requests hold; members are looked up by name.
using Json = nlohmann::json;
/// What responses hold; members are written in the order in which they came.
using OrderedJson = nlohmann::ordered_json;

/// Adds a member to an object that is known not to have it: past the object's own insertion, which
/// looks through all its members for the name first.
inline void addMember(OrderedJson& object, std::string name, OrderedJson value) {
  // An object that outgrows its room copies its members, and whole arrays with them. Only maps,
  // whose members are small, have more than this.
  constexpr std::size_t usualMembers = 11;
  auto& members = object.get_ref<OrderedJson::object_t&>();
  if (members.empty()) members.reserve(usualMembers);
  members.emplace_back(std::move(name), std::move(value));
}

}  // namespace tiepoint::workbench
