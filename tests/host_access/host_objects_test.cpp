#include "host_access/host_objects.h"

#include <gtest/gtest.h>

#include "host_access/host_of_test.h"

namespace tiepoint::testing {
namespace {

class DocumentOfTest final : public HostDocument {
 public:
  OdDbDatabasePtr database() override { return drawing; }
  HostTransientService* transientService() override { return nullptr; }
  bool isReady() const override { return true; }

  OdDbDatabasePtr drawing;
};

class ApplicationOfTest final : public HostApplication {
 public:
  HostDocument* activeDocument() override { return document; }
  void addReactor(HostApDocManagerReactor*) override {}
  void removeReactor(HostApDocManagerReactor*) override {}
  HostMessageLine* messageLine() override { return nullptr; }
  HostFileDialog* fileDialog() override { return nullptr; }

  HostDocument* document = nullptr;
};

class HostObjects : public ::testing::Test {
 protected:
  HostObjects() { HostOfTest::renew(); }

  HostOfTest& host = HostOfTest::current();
  ApplicationOfTest application;
  DocumentOfTest document;
};

TEST_F(HostObjects, AHostWithoutTheEntryHasNoApplicationAndNoDocument) {
  host.hasApplicationEntry = false;
  EXPECT_EQ(ZOR::reg::hostApplication(), nullptr);
  EXPECT_EQ(ZOR::reg::activeDocument(), nullptr);
  EXPECT_TRUE(ZOR::reg::activeDatabase().isNull());
}

TEST_F(HostObjects, AHostWithoutAnApplicationObjectHasNoDocument) {
  EXPECT_EQ(ZOR::reg::hostApplication(), nullptr);
  EXPECT_EQ(ZOR::reg::activeDocument(), nullptr);
  EXPECT_TRUE(ZOR::reg::activeDatabase().isNull());
}

TEST_F(HostObjects, AnApplicationWithoutADocumentHasNoDatabase) {
  host.application = &application;
  EXPECT_EQ(ZOR::reg::hostApplication(), &application);
  EXPECT_EQ(ZOR::reg::activeDocument(), nullptr);
  EXPECT_TRUE(ZOR::reg::activeDatabase().isNull());
}

TEST_F(HostObjects, TheActiveDocumentGivesItsDatabaseWithOneReferenceMore) {
  host.application = &application;
  application.document = &document;
  document.drawing = OdDbDatabasePtr(new OdDbDatabase);
  EXPECT_EQ(ZOR::reg::activeDocument(), &document);
  {
    const OdDbDatabasePtr database = ZOR::reg::activeDatabase();
    EXPECT_EQ(database, document.drawing);
    EXPECT_EQ(document.drawing->numRefs(), 2);
  }
  EXPECT_EQ(document.drawing->numRefs(), 1);
}

TEST_F(HostObjects, ARefreshCallsTheHostWithZero) {
  ZOR::reg::refreshViews();
  EXPECT_EQ(host.refreshes, 1);
  EXPECT_EQ(host.lastRefreshArgument, 0);
}

TEST_F(HostObjects, ARefreshIsSkippedOnAHostWithoutTheEntry) {
  host.hasRefreshEntry = false;
  ZOR::reg::refreshViews();
  EXPECT_EQ(host.refreshes, 0);
}

}  // namespace
}  // namespace tiepoint::testing
