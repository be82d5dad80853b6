// The forms of values in JSON, from and to what the host and the module take.
#pragma once

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/sdk/od_ge_point3d.h"
#include "records/tables.h"
#include "workbench/rpc/json_types.h"
#include "workbench/values/layouts.h"

namespace tiepoint::workbench {

/// A value of the wrong type, or out of its type's range; what() says what it must be.
class BadValue : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The greatest id, count or number in a request: every whole number up to it has a double of its
/// own.
inline constexpr std::uint64_t greatestWhole = (std::uint64_t{1} << 53) - 1;

// --- From JSON. All throw BadValue.

/// A layout's name, in capitals.
Layout layoutFromJson(const Json& value);
/// From 0 to greatestWhole; 3.0 is a whole number too.
std::uint64_t wholeFromJson(const Json& value);
/// A number, or one of the texts "nan", "inf", "-inf".
double doubleFromJson(const Json& value);
bool boolFromJson(const Json& value);
/// UTF-8.
std::string textFromJson(const Json& value);
std::wstring wideTextFromJson(const Json& value);
/// windows-1251.
std::string nameFromJson(const Json& value);
/// UTF-8, without a zero.
std::string pathFromJson(const Json& value);
/// In any order, duplicates taken as one.
std::set<std::uint64_t> idsFromJson(const Json& value);
/// Exactly `count` doubles.
std::vector<double> doublesFromJson(const Json& value, std::size_t count);

// --- To JSON.

OrderedJson toJson(bool value);
OrderedJson toJson(std::uint64_t value);
/// A number, or one of the texts "nan", "inf", "-inf".
OrderedJson toJson(double value);
/// A name, windows-1251.
OrderedJson toJson(const std::string& name);
OrderedJson toJson(const std::wstring& text);
OrderedJson toJson(const OdGePoint3d& point);
OrderedJson toJson(const OdGeVector3d& vector);
OrderedJson toJson(const ZOR::reg::RefPoint& point);
OrderedJson toJson(const ZOR::reg::NamedId& entry);

template <class Sequence>
OrderedJson arrayJson(const Sequence& sequence) {
  OrderedJson array = OrderedJson::array();
  for (const auto& element : sequence) array.push_back(toJson(element));
  return array;
}

inline OrderedJson toJson(const std::set<std::uint64_t>& ids) { return arrayJson(ids); }
inline OrderedJson toJson(const std::list<ZOR::reg::RefPoint>& points) { return arrayJson(points); }
inline OrderedJson toJson(const std::list<ZOR::reg::NamedId>& entries) { return arrayJson(entries); }
inline OrderedJson toJson(const std::vector<std::uint64_t>& numbers) { return arrayJson(numbers); }
inline OrderedJson toJson(const std::vector<double>& numbers) { return arrayJson(numbers); }

/// Keys in decimal, in ascending numeric order.
template <class Value>
OrderedJson toJson(const std::map<std::uint64_t, Value>& map) {
  OrderedJson object = OrderedJson::object();
  for (const auto& [key, value] : map) addMember(object, std::to_string(key), toJson(value));
  return object;
}

}  // namespace tiepoint::workbench
