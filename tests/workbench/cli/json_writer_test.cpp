#include "workbench/cli/json_writer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace tiepoint::workbench::cli {
namespace {

/// The members of an object one by one, and its arrays element by element.
std::string written(const Json& object) {
  std::string text;
  JsonObjectWriter writer([&](const std::string& piece) { text += piece; });
  for (const auto& [key, value] : object.items()) {
    const Json& member = value;
    if (member.is_array()) {
      writer.addArray(key, member.size(), [&](std::size_t i) { return member[i]; });
    } else {
      writer.add(key, member);
    }
  }
  writer.end();
  return text;
}

Json parsed(const char* text) { return Json::parse(text); }

TEST(JsonObjectWriter, WritesWhatTheWholeObjectGives) {
  const Json object = parsed(R"({"a": 1, "b": {"c": [1, 2.5], "d": {}}, "e": [{"f": null, "g": [[1], []]}, "x", []],
                                 "h": [], "i": "text"})");
  EXPECT_EQ(written(object), jsonText(object));
}

TEST(JsonObjectWriter, WritesAnObjectWithoutMembers) { EXPECT_EQ(written(Json::object()), "{}\n"); }

TEST(JsonObjectWriter, KeepsLineFeedsAndWrongBytesWithinTextsAsTheWholeObjectDoes) {
  Json object;
  object["two\nlines"] = "a\nb\r\n";
  object["list"] = Json::array({"\n", Json{{"k\n", "v\n"}}, "\xFF wrong", "\xE2\x82"});
  EXPECT_EQ(written(object), jsonText(object));
}

TEST(JsonObjectWriter, PassesALargeArrayOnInPieces) {
  std::size_t pieces = 0, longest = 0;
  JsonObjectWriter writer([&](const std::string& piece) {
    ++pieces;
    longest = std::max(longest, piece.size());
  });
  writer.addArray("list", 100000, [](std::size_t i) { return Json(i); });
  writer.end();
  EXPECT_GT(pieces, 10u);
  EXPECT_LT(longest, 100000u);
}

rc::Gen<Json> anyJson(int depth) {
  const auto text = rc::gen::map(rc::gen::arbitrary<std::string>(), [](const std::string& t) { return Json(t); });
  const auto number = rc::gen::map(rc::gen::arbitrary<double>(), [](double d) { return jsonNumber(d); });
  if (depth == 0) return rc::gen::oneOf(text, number);
  const auto array = rc::gen::map(rc::gen::container<std::vector<Json>>(anyJson(depth - 1)),
                                  [](const std::vector<Json>& items) { return Json(items); });
  const auto object = rc::gen::map(
      rc::gen::container<std::map<std::string, Json>>(rc::gen::arbitrary<std::string>(), anyJson(depth - 1)),
      [](const std::map<std::string, Json>& members) {
        Json made = Json::object();
        for (const auto& [key, value] : members) made[key] = value;
        return made;
      });
  return rc::gen::oneOf(text, number, array, object);
}

RC_GTEST_PROP(JsonObjectWriter, WritesWhatAnyWholeObjectGives, ()) {
  Json object = Json::object();
  for (const auto& key : *rc::gen::scale(0.1, rc::gen::arbitrary<std::set<std::string>>())) {
    object[key] = *rc::gen::scale(0.05, anyJson(3));
  }
  RC_ASSERT(written(object) == jsonText(object));
}

}  // namespace
}  // namespace tiepoint::workbench::cli
