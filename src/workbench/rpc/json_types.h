// JSON in memory.
#pragma once

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
  object.get_ref<OrderedJson::object_t&>().emplace_back(std::move(name), std::move(value));
}

}  // namespace tiepoint::workbench
