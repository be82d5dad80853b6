#include "workbench/rpc/json_parser.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace tiepoint::workbench {

namespace {

/// A number that is too great for a double.
struct NumberOverflow {};

/// Builds the value from the events of the library's parser. It takes time in proportion to the
/// text, and ends by an exception what the library's own builder would let pass: two members of
/// one name, and nesting without bounds.
class JsonBuilder : public nlohmann::json_sax<Json> {
 public:
  Json take() { return std::move(root); }

  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  bool number_unsigned(number_unsigned_t value) override { return add(value); }
  bool number_float(number_float_t value, const string_t&) override { return add(value); }
  bool string(string_t& value) override { return add(std::move(value)); }
  bool binary(binary_t& value) override { return add(std::move(value)); }

  bool start_object(std::size_t) override { return open(Json::object()); }
  bool end_object() override { return closeInnermost(); }
  bool start_array(std::size_t) override { return open(Json::array()); }
  bool end_array() override { return closeInnermost(); }

  bool key(string_t& name) override {
    auto& members = containers.back()->get_ref<Json::object_t&>();
    const auto [member, isNew] = members.emplace(std::move(name), nullptr);
    if (!isNew) throw NotJson("an object has two members named " + Json(member->first).dump());
    memberToCome = &member->second;
    return true;
  }

  bool parse_error(std::size_t, const std::string&, const Json::exception& error) override {
    constexpr int numberOverflow = 406;
    if (error.id == numberOverflow) throw NumberOverflow{};
    throw NotJson(error.what());
  }

 private:
  bool add(Json value) {
    put(std::move(value));
    return true;
  }

  bool open(Json container) {
    if (containers.size() == deepestNesting) {
      throw TooDeep("more than " + std::to_string(deepestNesting) + " levels of nesting");
    }
    containers.push_back(&put(std::move(container)));
    return true;
  }

  bool closeInnermost() {
    containers.pop_back();
    return true;
  }

  /// Puts the value where the text has it, and gives it there.
  Json& put(Json value) {
    if (containers.empty()) return root = std::move(value);
    Json& container = *containers.back();
    if (container.is_object()) return *memberToCome = std::move(value);
    container.push_back(std::move(value));
    return container.back();
  }

  Json root;
  /// The arrays and objects that are open, the innermost last. None of them moves meanwhile: what
  /// holds it grows no more before it is closed.
  std::vector<Json*> containers;
  /// The value of the member whose name has just come.
  Json* memberToCome = nullptr;
};

Json build(const std::string& text) {
  JsonBuilder builder;
  Json::sax_parse(text, &builder);
  return builder.take();
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

/// Throws NotJson for what begins like a number and is none.
bool isTooGreat(const std::string& number) {
  try {
    return !build(number).is_number();
  } catch (const NumberOverflow&) {
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

}  // namespace

Json parseJson(const std::string& text) {
  // The parser takes a zero byte for the end of the text.
  if (text.find('\0') != std::string::npos) throw NotJson("the text holds a zero byte");
  try {
    return build(text);
  } catch (const NumberOverflow&) {
    return build(withoutOverflowingNumbers(text));
  }
}

}  // namespace tiepoint::workbench
