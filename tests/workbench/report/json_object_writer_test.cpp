#include "workbench/report/json_object_writer.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace tiepoint::workbench {
namespace {

/// The members of an object one by one, those of its objects too, and its arrays element by element.
void describe(const OrderedJson& object, JsonMembers& members) {
  for (const auto& [key, value] : object.items()) {
    const OrderedJson& member = value;
    if (member.is_array()) {
      members.addArray(key, member.size(), [&](std::size_t i) { return member[i]; });
    } else if (member.is_object()) {
      members.addObject(key, [&](JsonMembers& inner) { describe(member, inner); });
    } else {
      members.add(key, member);
    }
  }
}

std::string written(const OrderedJson& object) {
  std::string text;
  JsonObjectWriter writer([&](const std::string& piece) { text += piece; });
  describe(object, writer);
  writer.end();
  return text;
}

OrderedJson parsed(const char* text) { return OrderedJson::parse(text); }

TEST(JsonObjectWriter, WritesWhatTheWholeObjectGives) {
  const OrderedJson object =
      parsed(R"({"a": 1, "b": {"c": [1, 2.5], "d": {}}, "e": [{"f": null, "g": [[1], []]}, "x", []],
                                 "h": [], "i": "text"})");
  EXPECT_EQ(written(object), jsonText(object));
}

TEST(JsonObjectWriter, WritesObjectsWithinObjects) {
  EXPECT_EQ(written(parsed(R"({"a": {"b": {}, "c": {"d": [1], "e": 2}}, "f": 3})")), R"({
  "a": {
    "b": {},
    "c": {
      "d": [
        1
      ],
      "e": 2
    }
  },
  "f": 3
}
)");
}

TEST(JsonObjectTree, KeepsWhatIsDescribed) {
  const OrderedJson object = parsed(R"({"a": {"b": {}, "c": {"d": [1], "e": 2}}, "f": 3, "g": []})");
  JsonObjectTree tree;
  describe(object, tree);
  EXPECT_EQ(tree.object, object);
}

TEST(JsonObjectWriter, WritesAnObjectWithoutMembers) { EXPECT_EQ(written(OrderedJson::object()), "{}\n"); }

TEST(JsonObjectWriter, KeepsLineFeedsAndWrongBytesWithinTextsAsTheWholeObjectDoes) {
  OrderedJson object;
  object["two\nlines"] = "a\nb\r\n";
  object["list"] = OrderedJson::array({"\n", OrderedJson{{"k\n", "v\n"}}, "\xFF wrong", "\xE2\x82"});
  EXPECT_EQ(written(object), jsonText(object));
}

TEST(JsonObjectWriter, PassesALargeArrayOnInPieces) {
  std::size_t pieces = 0, longest = 0;
  JsonObjectWriter writer([&](const std::string& piece) {
    ++pieces;
    longest = std::max(longest, piece.size());
  });
  writer.addArray("list", 100000, [](std::size_t i) { return OrderedJson(i); });
  writer.end();
  EXPECT_GT(pieces, 10u);
  EXPECT_LT(longest, 100000u);
}

rc::Gen<OrderedJson> anyJson(int depth) {
  const auto text =
      rc::gen::map(rc::gen::arbitrary<std::string>(), [](const std::string& t) { return OrderedJson(t); });
  const auto number = rc::gen::map(rc::gen::arbitrary<double>(), [](double d) { return jsonNumber(d); });
  if (depth == 0) return rc::gen::oneOf(text, number);
  const auto array = rc::gen::map(rc::gen::container<std::vector<OrderedJson>>(anyJson(depth - 1)),
                                  [](const std::vector<OrderedJson>& items) { return OrderedJson(items); });
  const auto object = rc::gen::map(
      rc::gen::container<std::map<std::string, OrderedJson>>(rc::gen::arbitrary<std::string>(), anyJson(depth - 1)),
      [](const std::map<std::string, OrderedJson>& members) {
        OrderedJson made = OrderedJson::object();
        for (const auto& [key, value] : members) made[key] = value;
        return made;
      });
  return rc::gen::oneOf(text, number, array, object);
}

RC_GTEST_PROP(JsonObjectWriter, WritesWhatAnyWholeObjectGives, ()) {
  OrderedJson object = OrderedJson::object();
  for (const auto& key : *rc::gen::scale(0.1, rc::gen::arbitrary<std::set<std::string>>())) {
    object[key] = *rc::gen::scale(0.05, anyJson(3));
  }
  RC_ASSERT(written(object) == jsonText(object));
}

}  // namespace
}  // namespace tiepoint::workbench
