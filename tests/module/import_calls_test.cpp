// What the import command asks of its host, in which order, and how it becomes known there.
#include <gtest/gtest.h>

#include "fake_host/library.h"
#include "module/import_command.h"
#include "platform/sdk/od_db_dictionary.h"
#include "support/recording_host.h"
#include "support/temporary_folder.h"

namespace {

using namespace tiepoint::testing;
using Calls = std::vector<std::string>;

class ImportCalls : public ::testing::Test {
 protected:
  /// The calls of the command when the user chooses files of these names.
  Calls callsFor(const std::vector<std::string>& chosen) {
    host.dialogAnswer.accepted = true;
    host.dialogAnswer.filterIndex = 1;
    for (const std::string& name : chosen) host.dialogAnswer.paths.push_back((folder.path() / name).wstring());
    return host.calls.during([] { ZOR::reg::importReferencePoints(); });
  }

  TemporaryFolder folder;
  RecordingHost host;
};

TEST_F(ImportCalls, AsksForTheDialogThenForTheDocumentOfThatMomentThenPrints) {
  folder.write("good.txt", "P1 1 2 3\n");
  folder.write("empty.txt", "");
  const Calls expected{"GetMainDllInstance",
                       "get_host_funcptr(2)",
                       "application",
                       "fileDialog",
                       "dialog.open",
                       "GetMainDllInstance",
                       "get_host_funcptr(2)",
                       "application",
                       "activeDocument",
                       "document.database",
                       "document.isReady",
                       "messageLine",
                       "messageLine.print(Found 3 files)",
                       "messageLine.print(Warning: reference points are not found in the file empty)",
                       "messageLine.print(Warning: don't open file missing)",
                       "messageLine.print(Command complite. 1 groups of reference points loaded in document)"};
  EXPECT_EQ(callsFor({"good.txt", "empty.txt", "missing.txt"}), expected);
  EXPECT_EQ(host.document().storedGroup("good").size(), 1u);
}

TEST_F(ImportCalls, EndWithTheDialogThatTheUserCancels) {
  const Calls expected{"GetMainDllInstance", "get_host_funcptr(2)", "application", "fileDialog", "dialog.open"};
  EXPECT_EQ(host.calls.during([] { ZOR::reg::importReferencePoints(); }), expected);
}

TEST_F(ImportCalls, EndWithADocumentThatIsNotReady) {
  host.documentsAreReady = false;
  const Calls calls = callsFor({"a.txt"});
  ASSERT_EQ(calls.size(), 11u);
  EXPECT_EQ(calls.back(), "document.isReady");
}

TEST_F(ImportCalls, EndWithoutAnActiveDocument) {
  host.closeDocument();
  const Calls calls = callsFor({"a.txt"});
  ASSERT_EQ(calls.size(), 9u);
  EXPECT_EQ(calls.back(), "activeDocument");
}

TEST_F(ImportCalls, EndWithADocumentThatGivesNoDatabase) {
  host.calls.failAt(10, Fault::givesNull);
  const Calls calls = callsFor({"a.txt"});
  ASSERT_EQ(calls.size(), 10u);
  EXPECT_EQ(calls.back(), "document.database");
}

TEST_F(ImportCalls, LeaveTheViewsAlone) {
  folder.write("good.txt", "P1 1 2 3\n");
  for (const std::string& call : callsFor({"good.txt"})) EXPECT_EQ(call.find("refresh"), std::string::npos);
}

TEST(ModulesCommandInARecordingHost, IsRegisteredWhileTheModuleIsBeingLoadedAndImports) {
  RecordingHost host;
  const tiepoint::os::ModuleHandle module = loadLibrary(MODULE_FILE);
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(host.calls.words(), (Calls{"GetMainDllNameW", "new_ICmdFactory",
                                       "addCommand(CLOUD_REGISTRATION, TSL_REG_IMPORT_REFS, TSL_REG_IMPORT_REFS, 4, "
                                       "body)",
                                       "factory.release"}));
  ASSERT_EQ(host.commands().size(), 1u);
  EXPECT_EQ(host.livingObjects(), 0u);
  const HostCommandBody body = host.commands().front().body;
  EXPECT_EQ(host.calls.during(body),
            (Calls{"GetMainDllInstance", "get_host_funcptr(2)", "application", "fileDialog", "dialog.open"}));
  unloadLibrary(module);
}

}  // namespace
