#include "workbench/report/json_object_writer.h"

#include <utility>

namespace tiepoint::workbench {

namespace {

constexpr std::size_t pieceSize = 1u << 16;
constexpr std::size_t indent = 2;

std::string dumped(const OrderedJson& value) {
  return value.dump(static_cast<int>(indent), ' ', false, nlohmann::json::error_handler_t::replace);
}

}  // namespace

void JsonObjectTree::addArray(const std::string& key, std::size_t count,
                              const std::function<OrderedJson(std::size_t)>& element) {
  OrderedJson& array = object[key] = OrderedJson::array();
  for (std::size_t i = 0; i < count; ++i) array.push_back(element(i));
}

void JsonObjectTree::addObject(const std::string& key, const std::function<void(JsonMembers&)>& describe) {
  JsonObjectTree inner;
  describe(inner);
  object[key] = std::move(inner.object);
}

JsonObjectWriter::JsonObjectWriter(TextSink sink_) : sink(std::move(sink_)) {}

void JsonObjectWriter::add(const std::string& key, const OrderedJson& value) {
  addKey(key);
  addIndented(value, depth);
}

void JsonObjectWriter::addArray(const std::string& key, std::size_t count,
                                const std::function<OrderedJson(std::size_t)>& element) {
  if (count == 0) return add(key, OrderedJson::array());
  addKey(key);
  pending += '[';
  for (std::size_t i = 0; i < count; ++i) {
    pending += (i == 0 ? "\n" : ",\n") + std::string((depth + 1) * indent, ' ');
    addIndented(element(i), depth + 1);
  }
  pending += "\n" + std::string(depth * indent, ' ') + "]";
}

void JsonObjectWriter::addObject(const std::string& key, const std::function<void(JsonMembers&)>& describe) {
  addKey(key);
  ++depth;
  isEmpty = true;
  describe(*this);
  close();
  isEmpty = false;
}

void JsonObjectWriter::end() {
  close();
  pending += '\n';
  passOn(0);
}

void JsonObjectWriter::addKey(const std::string& key) {
  pending += (isEmpty ? "{\n" : ",\n") + std::string(depth * indent, ' ') + dumped(key) + ": ";
  isEmpty = false;
}

void JsonObjectWriter::close() {
  --depth;
  pending += isEmpty ? "{}" : "\n" + std::string(depth * indent, ' ') + "}";
}

/// A line feed within a text is written as an escape, so that each one here begins a line.
void JsonObjectWriter::addIndented(const OrderedJson& value, std::size_t valueDepth) {
  const std::string text = dumped(value);
  std::size_t begin = 0;
  for (std::size_t feed = text.find('\n'); feed != std::string::npos; feed = text.find('\n', begin)) {
    pending.append(text, begin, feed + 1 - begin).append(valueDepth * indent, ' ');
    begin = feed + 1;
  }
  pending.append(text, begin, std::string::npos);
  passOn(pieceSize);
}

void JsonObjectWriter::passOn(std::size_t smallest) {
  if (pending.size() < smallest) return;
  sink(pending);
  pending.clear();
}

}  // namespace tiepoint::workbench
