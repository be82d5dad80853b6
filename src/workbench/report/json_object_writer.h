// A large JSON object as text, without ever standing in memory as a whole.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "workbench/report/json_parts.h"

namespace tiepoint::workbench {

/// Takes text piece after piece.
using TextSink = std::function<void(const std::string&)>;

/// An object that is described member by member.
class JsonMembers {
 public:
  virtual ~JsonMembers() = default;

  virtual void add(const std::string& key, const OrderedJson& value) = 0;
  /// An array of so many elements; each is made when its turn comes.
  virtual void addArray(const std::string& key, std::size_t count,
                        const std::function<OrderedJson(std::size_t)>& element) = 0;
  /// An object that is described member by member in its turn.
  virtual void addObject(const std::string& key, const std::function<void(JsonMembers&)>& describe) = 0;
};

/// Keeps the object in memory.
class JsonObjectTree : public JsonMembers {
 public:
  void add(const std::string& key, const OrderedJson& value) override { object[key] = value; }
  void addArray(const std::string& key, std::size_t count,
                const std::function<OrderedJson(std::size_t)>& element) override;
  void addObject(const std::string& key, const std::function<void(JsonMembers&)>& describe) override;

  OrderedJson object = OrderedJson::object();
};

/// Writes the object member by member. The text is the one that `jsonText` gives of the whole object.
class JsonObjectWriter : public JsonMembers {
 public:
  /// `sink` gets pieces of some size. What it throws passes through.
  explicit JsonObjectWriter(TextSink sink);

  void add(const std::string& key, const OrderedJson& value) override;
  void addArray(const std::string& key, std::size_t count,
                const std::function<OrderedJson(std::size_t)>& element) override;
  void addObject(const std::string& key, const std::function<void(JsonMembers&)>& describe) override;
  /// Closes the object. Nothing can be added after it.
  void end();

 private:
  void addKey(const std::string& key);
  void addIndented(const OrderedJson& value, std::size_t valueDepth);
  void close();
  void passOn(std::size_t smallest);

  TextSink sink;
  std::string pending;
  /// Of the members of the object that is open.
  std::size_t depth = 1;
  /// It has no members yet.
  bool isEmpty = true;
};

}  // namespace tiepoint::workbench
