#include "workbench/rpc/json_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <set>
#include <utility>
#include <vector>

namespace tiepoint::workbench {

namespace {

/// Looks at each step of the parser, and ends it by an exception when the text goes wrong in a way
/// that the parser would let pass.
class ParserGuard {
 public:
  bool operator()(int depth, Json::parse_event_t event, const Json& parsed) {
    switch (event) {
      case Json::parse_event_t::object_start:
        requireDepth(depth);
        names.emplace_back();
        break;
      case Json::parse_event_t::array_start:
        requireDepth(depth);
        break;
      case Json::parse_event_t::key:
        if (!names.back().insert(parsed.get_ref<const std::string&>()).second) {
          throw NotJson("an object has two members of the name " + parsed.dump());
        }
        break;
      case Json::parse_event_t::object_end:
        names.pop_back();
        break;
      default:
        break;
    }
    return true;
  }

 private:
  static void requireDepth(int depth) {
    if (depth >= deepestNesting) throw TooDeep("more than " + std::to_string(deepestNesting) + " levels of nesting");
  }

  /// The names that each open object has so far.
  std::vector<std::set<std::string>> names;
};

Json parseGuarded(const std::string& text) {
  ParserGuard guard;
  return Json::parse(
      text, [&](int depth, Json::parse_event_t event, const Json& parsed) { return guard(depth, event, parsed); });
}

/// What stands for a number that is too great: neither a number nor a text, nor an array of either.
constexpr const char* overflowMark = "[[]]";

/// The end of the string literal that starts at `at`.
std::size_t endOfLiteral(const std::string& text, std::size_t at) {
  for (++at; at < text.size() && text[at] != '"'; ++at) {
    if (text[at] == '\\') ++at;
  }
  return std::min(at + 1, text.size());
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The end of the number that starts at `at`, as long as it is one.
std::size_t endOfNumber(const std::string& text, std::size_t at) {
  const auto skip = [&](const char* characters) {
    if (at < text.size() && std::strchr(characters, text[at])) ++at;
  };
  const auto skipDigits = [&] {
    while (at < text.size() && isDigit(text[at])) ++at;
  };
  skip("-");
  if (text.compare(at, 1, "0") == 0) {
    ++at;
  } else {
    skipDigits();
  }
  skip(".");
  skipDigits();
  skip("eE");
  skip("+-");
  skipDigits();
  return at;
}

/// Throws Json::parse_error for what begins like a number and is none.
bool isTooGreat(const std::string& number) {
  try {
    return !Json::parse(number).is_number();
  } catch (const Json::out_of_range&) {
    return true;
  }
}

/// The text with overflowMark for each number that the parser refuses as too great.
std::string withoutOverflowingNumbers(const std::string& text) {
  std::string marked;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t start = at;
    if (text[at] == '-' || isDigit(text[at])) {
      at = endOfNumber(text, at);
      const std::string number = text.substr(start, at - start);
      marked += isTooGreat(number) ? overflowMark : number;
    } else {
      at = text[at] == '"' ? endOfLiteral(text, at) : at + 1;
      marked.append(text, start, at - start);
    }
  }
  return marked;
}

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

Json parseJson(const std::string& text) {
  // The parser takes a zero byte for the end of the text.
  if (text.find('\0') != std::string::npos) throw NotJson("the text holds a zero byte");
  try {
    try {
      return parseGuarded(text);
    } catch (const Json::out_of_range&) {
      return parseGuarded(withoutOverflowingNumbers(text));
    }
  } catch (const Json::exception& error) {
    throw NotJson(error.what());
  }
}

std::string writeJson(const OrderedJson& value) {
  std::string text;
  write(value, text);
  return text;
}

void addMember(OrderedJson& object, std::string name, OrderedJson value) {
  // Past the object's own insertion, which looks through all members for the name first.
  object.get_ref<OrderedJson::object_t&>().emplace_back(std::move(name), std::move(value));
}

}  // namespace tiepoint::workbench
