#include "workbench/host/document_manager.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tiepoint::workbench {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<int> numbersOf(const std::vector<Document*>& documents) {
  std::vector<int> numbers;
  numbers.reserve(documents.size());
  for (const Document* document : documents) numbers.push_back(document->number());
  return numbers;
}

/// Writes down what it is told, and which document is active meanwhile: "added 2, active 2".
class Listener : public HostApDocManagerReactor {
 public:
  explicit Listener(DocumentManager& manager_) : manager(manager_) { manager.addReactor(this); }
  ~Listener() override { manager.removeReactor(this); }

  void documentAdded(HostDocument* document) override {
    note("added", document);
    if (throwsWhenAdded) throw std::runtime_error("no room");
  }
  void documentToBeRemoved(HostDocument* document) override { note("to be removed", document); }
  void documentActivated(HostDocument* document) override { note("activated", document); }

  std::vector<std::string> events;
  bool throwsWhenAdded = false;

 private:
  void note(const std::string& event, HostDocument* document) {
    const std::string number = std::to_string(static_cast<Document*>(document)->number());
    const std::string active = manager.active() ? std::to_string(manager.active()->number()) : "none";
    events.push_back(event + " " + number + ", active " + active);
  }

  DocumentManager& manager;
};

TEST(DocumentManager, HasNoActiveDocumentAtFirst) {
  const DocumentManager manager;
  EXPECT_EQ(manager.active(), nullptr);
  EXPECT_THROW(manager.requireActive(), NoDocument);
  EXPECT_THAT(manager.all(), IsEmpty());
}

TEST(DocumentManager, CountsDocumentsFromOneAndActivatesTheNewest) {
  DocumentManager manager;
  EXPECT_EQ(manager.add(Drawing::temporary()).number(), 1);
  EXPECT_EQ(manager.add(Drawing::temporary()).number(), 2);
  EXPECT_EQ(manager.requireActive().number(), 2);
  EXPECT_THAT(numbersOf(manager.all()), ElementsAre(1, 2));
}

TEST(DocumentManager, NeverUsesANumberTwice) {
  DocumentManager manager;
  manager.add(Drawing::temporary());
  manager.close(1);
  EXPECT_EQ(manager.add(Drawing::temporary()).number(), 2);
  EXPECT_THROW(manager.require(1), NoDocument);
}

TEST(DocumentManager, ActivatesTheNewestOfThoseStillOpenWhenTheActiveOneGoes) {
  DocumentManager manager;
  for (int i = 0; i < 4; ++i) manager.add(Drawing::temporary());
  manager.close(3);
  manager.activate(1);
  manager.close(1);
  EXPECT_EQ(manager.requireActive().number(), 4);
  manager.close(4);
  EXPECT_EQ(manager.requireActive().number(), 2);
  manager.close(2);
  EXPECT_EQ(manager.active(), nullptr);
}

TEST(DocumentManager, KeepsTheActiveOneWhenAnotherGoes) {
  DocumentManager manager;
  for (int i = 0; i < 3; ++i) manager.add(Drawing::temporary());
  manager.activate(1);
  manager.close(2);
  EXPECT_EQ(manager.requireActive().number(), 1);
}

TEST(DocumentManager, RefusesNumbersThatNameNoDocument) {
  DocumentManager manager;
  manager.add(Drawing::temporary());
  EXPECT_THROW(manager.close(2), NoDocument);
  EXPECT_THROW(manager.activate(0), NoDocument);
  EXPECT_EQ(manager.requireActive().number(), 1);
}

TEST(DocumentManager, TellsOfADocumentThatIsActiveByThen) {
  DocumentManager manager;
  Listener listener(manager);
  manager.add(Drawing::temporary());
  EXPECT_THAT(listener.events, ElementsAre("added 1, active 1", "activated 1, active 1"));
}

TEST(DocumentManager, TellsOfADocumentThatGoesWhileItStands) {
  DocumentManager manager;
  manager.add(Drawing::temporary());
  manager.add(Drawing::temporary());
  Listener listener(manager);
  manager.close(2);
  EXPECT_THAT(listener.events, ElementsAre("to be removed 2, active 2", "activated 1, active 1"));
}

TEST(DocumentManager, TellsOfAnActivationOnlyWhereSomethingChanges) {
  DocumentManager manager;
  manager.add(Drawing::temporary());
  manager.add(Drawing::temporary());
  Listener listener(manager);
  manager.activate(2);
  manager.activate(1);
  EXPECT_THAT(listener.events, ElementsAre("activated 1, active 1"));
}

TEST(DocumentManager, TellsAllReactorsInTheOrderInWhichTheyCame) {
  DocumentManager manager;
  Listener first(manager);
  Listener second(manager);
  manager.add(Drawing::temporary());
  EXPECT_EQ(first.events.size(), 2u);
  EXPECT_EQ(second.events.size(), 2u);
}

TEST(DocumentManager, TellsAReactorNoMoreOnceItIsRemoved) {
  DocumentManager manager;
  Listener listener(manager);
  manager.removeReactor(&listener);
  manager.add(Drawing::temporary());
  EXPECT_THAT(listener.events, IsEmpty());
}

TEST(DocumentManager, SkipsAReactorThatGoesWhileOthersAreTold) {
  /// Takes the other one out as soon as it hears of a document.
  class Remover : public HostApDocManagerReactor {
   public:
    Remover(DocumentManager& manager_, HostApDocManagerReactor* other_) : manager(manager_), other(other_) {}
    void documentAdded(HostDocument*) override { manager.removeReactor(other); }

   private:
    DocumentManager& manager;
    HostApDocManagerReactor* other;
  };
  DocumentManager manager;
  Listener listener(manager);
  Remover remover(manager, &listener);
  manager.removeReactor(&listener);
  manager.addReactor(&remover);
  manager.addReactor(&listener);
  manager.add(Drawing::temporary());
  manager.removeReactor(&remover);
  EXPECT_THAT(listener.events, IsEmpty());
}

TEST(DocumentManager, TakesADocumentBackWhenAReactorThrows) {
  DocumentManager manager;
  manager.add(Drawing::temporary());
  Listener listener(manager);
  listener.throwsWhenAdded = true;
  EXPECT_THROW(manager.add(Drawing::temporary()), std::runtime_error);
  EXPECT_THAT(numbersOf(manager.all()), ElementsAre(1));
  EXPECT_EQ(manager.requireActive().number(), 1);
  EXPECT_THAT(listener.events, ElementsAre("added 2, active 2", "to be removed 2, active 2"));
}

TEST(DocumentManager, ClosesAllDocumentsAtItsEnd) {
  DocumentManager manager;
  manager.add(Drawing::temporary());
  manager.add(Drawing::temporary());
  Listener listener(manager);
  manager.closeAll();
  EXPECT_THAT(manager.all(), IsEmpty());
  EXPECT_EQ(manager.active(), nullptr);
  EXPECT_THAT(listener.events, ElementsAre("to be removed 1, active 2", "to be removed 2, active 2"));
}

}  // namespace
}  // namespace tiepoint::workbench
