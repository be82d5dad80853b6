// A database with dictionary and store against a plain model, under random scripts.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/sdk/od_test_objects.h"

namespace {

// The plain way: name and value in the order of entry.
using Model = std::vector<std::pair<std::wstring, int>>;

Model::iterator find(Model& model, const std::wstring& name) {
  return std::find_if(model.begin(), model.end(), [&](const auto& entry) { return entry.first == name; });
}

// What a store knows after applying each piece that it is given.
class ModelStore : public OdDbStore {
 public:
  void write(const OdDbDatabase& database, const OdDbChanges& changes) override {
    if (refuses) throw OdError(eFileAccessErr);
    for (const OdDbObject* object : changes.written) {
      if (object->isKindOf(NumberObject::desc())) {
        values[object->objectId().getHandle()] = static_cast<const NumberObject*>(object)->value();
      }
    }
    for (const std::uint64_t handle : changes.erased) RC_ASSERT(values.erase(handle) == 1u);
    const OdDbDictionaryPtr dictionary = openNamedObjects(database, OdDb::kForRead);
    for (const std::uint64_t sequence : dictionary->removedSequences()) entries.erase(sequence);
    for (const auto& [sequence, entry] : dictionary->addedEntries()) entries[sequence] = entry;
  }

  Model kept() const {
    Model result;
    for (const auto& [sequence, entry] : entries) {
      result.emplace_back(entry.name.wideText(), values.at(entry.object.getHandle()));
    }
    return result;
  }

  bool refuses = false;
  std::map<std::uint64_t, OdDbDictionaryEntry> entries;
  std::map<std::uint64_t, int> values;
};

struct Step {
  enum Kind { put, change, remove } kind;
  std::wstring name;
  int value;
};

enum class Ending { keep, abort, refused };

Step drawStep() {
  const int kind = *rc::gen::inRange(0, 3);
  // Few names, so that they meet.
  const wchar_t letter = static_cast<wchar_t>(L'a' + *rc::gen::inRange(0, 5));
  return {static_cast<Step::Kind>(kind), std::wstring(1, letter), *rc::gen::inRange(0, 1000)};
}

void apply(const Step& step, Model& model) {
  const auto place = find(model, step.name);
  if (step.kind == Step::remove) {
    if (place != model.end()) model.erase(place);
  } else if (place != model.end()) {
    place->second = step.value;
  } else if (step.kind == Step::put) {
    model.emplace_back(step.name, step.value);
  }
}

void apply(const Step& step, OdDbDictionary& dictionary) {
  if (step.kind == Step::put) {
    dictionary.setAt(step.name, new NumberObject(step.value));
  } else if (step.kind == Step::remove) {
    dictionary.remove(step.name);
  } else if (const OdDbObjectId id = dictionary.getAt(step.name); id.isValid()) {
    NumberObjectPtr(id.safeOpenObject(OdDb::kForWrite))->setValue(step.value);
  }
}

Model contents(const OdDbDictionary& dictionary) {
  Model result;
  for (const OdDbDictionaryIteratorPtr walk = dictionary.newIterator(OdRx::kDictCollated); !walk->done();
       walk->next()) {
    result.emplace_back(walk->name().wideText(), NumberObjectPtr(walk->getObject())->value());
    RC_ASSERT(dictionary.getAt(walk->name()) == walk->objectId());
  }
  RC_ASSERT(result.size() == dictionary.numEntries());
  return result;
}

void runTransaction(OdDbDatabase& database, ModelStore& store, OdDbDictionary& dictionary, Model& model) {
  Model after = model;
  database.startTransaction();
  for (int steps = *rc::gen::inRange(0, 12); steps > 0; --steps) {
    const Step step = drawStep();
    apply(step, after);
    apply(step, dictionary);
    RC_ASSERT(contents(dictionary) == after);
  }
  const Ending ending = *rc::gen::element(Ending::keep, Ending::abort, Ending::refused);
  store.refuses = ending == Ending::refused;
  if (ending == Ending::abort) {
    database.abortTransaction();
  } else {
    // A refusing store isn't even asked when nothing was changed.
    const OdResult code = codeOf([&] { database.endTransaction(); });
    if (code == eOk) model = after;
  }
}

}  // namespace

RC_GTEST_PROP(OdDbScripts, DrawingStoreAndPlainModelAgreeAfterEveryTransaction, ()) {
  const OdDbDatabasePtr database(new OdDbDatabase);
  ModelStore store;
  database->setStore(&store);
  const OdDbDictionaryPtr dictionary = openNamedObjects(*database, OdDb::kForWrite);
  Model model;
  for (int transactions = *rc::gen::inRange(1, 8); transactions > 0; --transactions) {
    runTransaction(*database, store, *dictionary, model);
    RC_ASSERT(contents(*dictionary) == model);
    RC_ASSERT(store.kept() == model);
    RC_ASSERT(store.values.size() == model.size());
  }
}
