#include "workbench/rpc/json_values.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "workbench/io/text_encoding.h"

namespace tiepoint::workbench {

namespace {

/// Runs a conversion of text; a text without a form in the encoding is a bad value.
template <class Convert>
auto encoded(Convert convert) {
  try {
    return convert();
  } catch (const EncodingError& error) {
    throw BadValue(std::string("can't be encoded: ") + error.what());
  }
}

BadValue notWhole() { return BadValue("must be a whole number from 0 to " + std::to_string(greatestWhole)); }

const Json& arrayOf(const Json& value, const char* elements) {
  if (!value.is_array()) throw BadValue(std::string("must be an array of ") + elements);
  return value;
}

}  // namespace

Layout layoutFromJson(const Json& value) {
  const auto isNamed = [&](const LayoutInfo& info) { return value == info.name; };
  const auto layout = std::find_if(allLayouts.begin(), allLayouts.end(), isNamed);
  if (layout == allLayouts.end()) throw BadValue("must be \"NXYZ\", \"XYZ\", \"XYZW\" or \"NXYZW\"");
  return layout->layout;
}

std::uint64_t wholeFromJson(const Json& value) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number > greatestWhole) throw notWhole();
    return number;
  }
  if (value.is_number_float()) {
    const auto number = value.get<double>();
    if (!(number >= 0.0 && number <= static_cast<double>(greatestWhole) && std::trunc(number) == number)) {
      throw notWhole();
    }
    return static_cast<std::uint64_t>(number);
  }
  throw notWhole();
}

double doubleFromJson(const Json& value) {
  if (value.is_number()) return value.get<double>();
  if (value == "nan") return std::numeric_limits<double>::quiet_NaN();
  if (value == "inf") return std::numeric_limits<double>::infinity();
  if (value == "-inf") return -std::numeric_limits<double>::infinity();
  throw BadValue("must be a number, \"nan\", \"inf\" or \"-inf\"");
}

bool boolFromJson(const Json& value) {
  if (!value.is_boolean()) throw BadValue("must be true or false");
  return value.get<bool>();
}

std::string textFromJson(const Json& value) {
  if (!value.is_string()) throw BadValue("must be a string");
  return value.get<std::string>();
}

std::wstring wideTextFromJson(const Json& value) {
  return encoded([&] { return wideFromUtf8(textFromJson(value)); });
}

std::string nameFromJson(const Json& value) {
  return encoded([&] { return nameFromUtf8(textFromJson(value)); });
}

std::string pathFromJson(const Json& value) {
  std::string path = textFromJson(value);
  if (path.find('\0') != std::string::npos) throw BadValue("must be a path without a zero byte");
  return path;
}

std::set<std::uint64_t> idsFromJson(const Json& value) {
  std::set<std::uint64_t> ids;
  for (const Json& element : arrayOf(value, "ids")) ids.insert(wholeFromJson(element));
  return ids;
}

std::vector<double> doublesFromJson(const Json& value, std::size_t count) {
  if (arrayOf(value, "numbers").size() != count) {
    throw BadValue("must be an array of " + std::to_string(count) + " numbers");
  }
  std::vector<double> numbers;
  for (const Json& element : value) numbers.push_back(doubleFromJson(element));
  return numbers;
}

OrderedJson toJson(bool value) { return value; }

OrderedJson toJson(std::uint64_t value) { return value; }

OrderedJson toJson(double value) {
  if (std::isnan(value)) return "nan";
  if (std::isinf(value)) return value > 0.0 ? "inf" : "-inf";
  return value;
}

OrderedJson toJson(const std::string& name) { return utf8FromName(name); }

OrderedJson toJson(const std::wstring& text) { return utf8FromWide(text); }

OrderedJson toJson(const OdGePoint3d& point) {
  return OrderedJson::array({toJson(point.x), toJson(point.y), toJson(point.z)});
}

OrderedJson toJson(const OdGeVector3d& vector) {
  return OrderedJson::array({toJson(vector.x), toJson(vector.y), toJson(vector.z)});
}

OrderedJson toJson(const ZOR::reg::RefPoint& point) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "id", toJson(point.id));
  addMember(object, "groupId", toJson(point.groupId));
  addMember(object, "commonId", toJson(point.commonId));
  addMember(object, "position", toJson(point.position));
  addMember(object, "weight", toJson(point.weight));
  addMember(object, "included", toJson(point.included));
  addMember(object, "active", toJson(point.active));
  addMember(object, "inBase", toJson(point.inBase));
  addMember(object, "named", toJson(point.named));
  addMember(object, "autoNamed", toJson(point.autoNamed));
  return object;
}

OrderedJson toJson(const ZOR::reg::NamedId& entry) {
  OrderedJson object = OrderedJson::object();
  addMember(object, "id", toJson(entry.id));
  addMember(object, "name", toJson(entry.name));
  return object;
}

}  // namespace tiepoint::workbench
