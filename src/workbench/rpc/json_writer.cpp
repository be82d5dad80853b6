#include "workbench/rpc/json_writer.h"

#include <algorithm>
#include <charconv>

namespace tiepoint::workbench {

namespace {

void writeDouble(double value, std::string& text) {
  char digits[32];
  const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, value);
  text.append(digits, end.ptr);
  if (std::none_of(digits, end.ptr, [](char c) { return c == '.' || c == 'e'; })) text += ".0";
}

bool needsNoEscape(const std::string& value) {
  return std::all_of(value.begin(), value.end(), [](char c) { return c >= ' ' && c <= '~' && c != '"' && c != '\\'; });
}

void writeString(const std::string& value, std::string& text) {
  if (needsNoEscape(value)) {
    text += '"';
    text += value;
    text += '"';
  } else {
    text += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
  }
}

void write(const OrderedJson& value, std::string& text);

void writeArray(const OrderedJson& array, std::string& text) {
  text += '[';
  for (const OrderedJson& element : array) {
    write(element, text);
    text += ',';
  }
  if (text.back() == ',') text.pop_back();
  text += ']';
}

void writeObject(const OrderedJson& object, std::string& text) {
  text += '{';
  for (const auto& [name, member] : object.items()) {
    writeString(name, text);
    text += ':';
    write(member, text);
    text += ',';
  }
  if (text.back() == ',') text.pop_back();
  text += '}';
}

void write(const OrderedJson& value, std::string& text) {
  switch (value.type()) {
    case OrderedJson::value_t::array:
      return writeArray(value, text);
    case OrderedJson::value_t::object:
      return writeObject(value, text);
    case OrderedJson::value_t::string:
      return writeString(value.get_ref<const std::string&>(), text);
    case OrderedJson::value_t::number_float:
      return writeDouble(value.get<double>(), text);
    default:
      text += value.dump();
  }
}

}  // namespace

std::string writeJson(const OrderedJson& value) {
  std::string text;
  write(value, text);
  return text;
}

}  // namespace tiepoint::workbench
